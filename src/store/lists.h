#pragma once

#include <cstddef>
#include <iterator>

/// The class and the link type of a pointer-to-member such as &Vertex::Next.
template <class>
struct LinkTraits;

template <class Record, class Link>
struct LinkTraits<Link Record::*> {
    using RecordType = Record;
};

template <auto Link>
using LinkRecord = typename LinkTraits<decltype(Link)>::RecordType;

/// Operations on a doubly linked list without a header record: the head is a plain pointer, null when empty; the first
/// record's Prev and the last record's Next are null.
template <auto NextLink, auto PrevLink>
struct LinkedList {
    using Record = LinkRecord<NextLink>;

    static void InsertFirst(Record*& head, Record* record) {
        record->*NextLink = head;
        record->*PrevLink = nullptr;
        if (head)
            head->*PrevLink = record;
        head = record;
    }

    static void InsertAfter(Record* place, Record* record) {
        record->*NextLink = place->*NextLink;
        record->*PrevLink = place;
        if (place->*NextLink)
            place->*NextLink->*PrevLink = record;
        place->*NextLink = record;
    }

    /// Appends behind `last`, which must be the last record or null for an empty list, and moves `last` on.
    static void Append(Record*& head, Record*& last, Record* record) {
        record->*NextLink = nullptr;
        record->*PrevLink = last;
        (last ? last->*NextLink : head) = record;
        last = record;
    }

    static void Reverse(Record*& head) {
        Record* rest = head;
        head = nullptr;
        while (rest) {
            Record* record = rest;
            rest = rest->*NextLink;
            InsertFirst(head, record);
        }
    }

    /// Exchanges a record with the one after it, which must exist.
    static void ExchangeWithNext(Record*& head, Record* record) {
        Record* next = record->*NextLink;
        Remove(head, next);
        if (record->*PrevLink)
            InsertAfter(record->*PrevLink, next);
        else
            InsertFirst(head, next);
    }

    /// Takes the record off its list. Its own links are left as they were.
    static void Remove(Record*& head, Record* record) {
        if (record->*PrevLink)
            record->*PrevLink->*NextLink = record->*NextLink;
        else
            head = record->*NextLink;
        if (record->*NextLink)
            record->*NextLink->*PrevLink = record->*PrevLink;
    }
};

/// A walk along one link, for range-based loops: `for (Vertex* vertex : Along<&Vertex::Next>(first))`. The loop may
/// remove or release the current record, not the one after it.
template <auto Link>
class Along {
    using Record = LinkRecord<Link>;

  public:
    explicit Along(Record* first) : First(first) {}

    class Iterator {
      public:
        using value_type = Record*;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::input_iterator_tag;

        Iterator() = default;

        explicit Iterator(Record* record) : Current(record), Following(record ? record->*Link : nullptr) {}

        Record* operator*() const { return Current; }

        Iterator& operator++() {
            Current = Following;
            Following = Current ? Current->*Link : nullptr;
            return *this;
        }

        Iterator operator++(int) {
            Iterator before = *this;
            ++*this;
            return before;
        }

        bool operator==(const Iterator& other) const { return Current == other.Current; }

      private:
        Record* Current = nullptr;
        Record* Following = nullptr;
    };

    Iterator begin() const { return Iterator(First); }

    Iterator end() const { return Iterator(); }

  private:
    Record* First;
};

/// The last record along a link, from `record` on; null for null.
template <auto Link>
LinkRecord<Link>* LastAlong(LinkRecord<Link>* record) {
    while (record && record->*Link)
        record = record->*Link;
    return record;
}

/// Where a list that is appended to again and again ended the last time, so that appending needs no walk. The hint is
/// checked before use; whoever releases a record or moves it to another list says so with Forget.
template <auto NextLink, auto PrevLink>
class TailHint {
    using Record = LinkRecord<NextLink>;

  public:
    void Append(Record*& head, Record* record) {
        Forget(record);
        Record* last = HintHolds(head) ? LastAlong<NextLink>(Last) : LastAlong<NextLink>(head);
        LinkedList<NextLink, PrevLink>::Append(head, last, record);
        Head = head;
        Last = record;
    }

    void Forget(const Record* record) {
        if (record == Last || record == Head)
            Head = Last = nullptr;
    }

  private:
    bool HintHolds(const Record* head) const {
        return Last && head == Head && (Last == head || (Last->*PrevLink && Last->*PrevLink->*NextLink == Last));
    }

    Record* Head = nullptr;
    Record* Last = nullptr;
};
