#include "store/sorting.h"

#include "store/accessors.h"
#include "store/storage.h"
#include "store/walks.h"

#include <algorithm>
#include <cstring>
#include <strings.h>
#include <vector>

namespace {

/// Sorts a doubly linked list ascending; records with equal keys change their order round.
template <auto NextLink, auto PrevLink, class Less>
void SortList(LinkRecord<NextLink>*& head, Less less) {
    std::vector<LinkRecord<NextLink>*> records;
    for (auto* record : Along<NextLink>(head))
        records.push_back(record);
    std::reverse(records.begin(), records.end());
    std::stable_sort(records.begin(), records.end(), less);
    head = nullptr;
    LinkRecord<NextLink>* last = nullptr;
    for (auto* record : records)
        LinkedList<NextLink, PrevLink>::Append(head, last, record);
}

} // namespace

void SortObject() {
    SortList<&SubObject::Next, &SubObject::Prev>(
        CurrentObject()->FirstSubObject,
        [](const SubObject* a, const SubObject* b) { return std::strcmp(a->Name, b->Name) < 0; });
    SortLods();
}

void KeepObjectSorted() {
    for (const SubObject* subObject : EverySubObject(CurrentObject()))
        if (subObject->Next && std::strcmp(subObject->Next->Name, subObject->Name) < 0) {
            SortObject();
            return;
        }
    SortLods();
}

int SortLods() {
    Object* object = CurrentObject();
    bool sorted = true;
    for (const Lod* lod : EveryLod(object))
        sorted = sorted && !(lod->Next && lod->Next->Distance < lod->Distance);
    if (sorted)
        return 0;
    SortList<&Lod::Next, &Lod::Prev>(object->FirstLod,
                                     [](const Lod* a, const Lod* b) { return a->Distance < b->Distance; });
    return 1;
}

void SortObjectList() {
    SortList<&Object::Next, &Object::Prev>(
        CurrentFile->FirstObject, [](const Object* a, const Object* b) { return strcasecmp(a->Name, b->Name) < 0; });
}
