#include "files/model_mutator.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view Header = "Compatibility: 3.05\n\1";

/// What stands behind a tag, a letter each: b byte, h short, i int, f float, s text, v as many corners as an int says,
/// c as many bytes as a count says. A context of items ended by a tag may follow.
struct Form {
    char Context;
    int Tag;
    const char* Fields;
    char Inside = 0;
};

constexpr char Matrix[] = "ffffffffffffffff";

// Contexts: F file, M materials, m material, T texture, O object, S sub-object, L level, P polygon, C corner, V view,
// B branches.
constexpr Form Forms[] = {
    {'F', 10, "", 'M'},  {'F', 40, "s", 'O'},  {'F', 50, "s", 'B'}, {'F', 60, "bc"},   {'F', 62, "s"},
    {'F', 70, "i", 'V'}, {'F', 80, "is", 'T'}, {'M', 11, "i", 'm'}, {'m', 18, "s"},    {'m', 12, "fff"},
    {'m', 13, "fff"},    {'m', 14, "fff"},     {'m', 15, "fff"},    {'m', 16, "f"},    {'m', 17, "f"},
    {'T', 81, "f"},      {'T', 82, "f"},       {'T', 83, "i"},      {'T', 85, "i"},    {'T', 86, "i"},
    {'O', 44, "i"},      {'O', 48, "i"},       {'O', 46, "i"},      {'O', 47, "i"},    {'O', 26, "v"},
    {'O', 70, "i", 'V'}, {'O', 41, "s", 'S'},  {'O', 42, "s", 'L'}, {'S', 45, "i"},    {'S', 30, "", 'P'},
    {'L', 43, "f"},      {'L', 45, "i"},       {'L', 49, "i"},      {'P', 31, "h"},    {'P', 32, "b"},
    {'P', 33, "fff"},    {'P', 34, "i"},       {'P', 36, "h"},      {'P', 37, "i"},    {'P', 38, "b"},
    {'P', 20, "", 'C'},  {'P', 30, "", 'P'},   {'C', 27, "i"},      {'C', 24, "fff"},  {'C', 23, "ff"},
    {'V', 71, "b"},      {'V', 72, "b"},       {'V', 73, Matrix},   {'V', 74, Matrix}, {'V', 75, Matrix},
    {'V', 76, "f"},      {'V', 77, "fff"},     {'B', 50, "s", 'B'}, {'B', 52, "s"},    {'B', 53, "i"},
    {'B', 55, Matrix},   {'B', 56, "i"},       {'B', 57, "i"},
};

int EndOf(char context) {
    return context == 'B' ? 51 : 0;
}

const Form* FindForm(char context, int tag) {
    for (const Form& form : Forms)
        if (form.Context == context && form.Tag == tag)
            return &form;
    return nullptr;
}

/// A value of one letter of a form, where it stands in the item's own bytes.
struct Field {
    char Kind;
    std::size_t Begin, Size;
};

struct Item {
    const Form* Kind;
    std::string Bytes; // tag and fields
    std::vector<Field> Fields;
    std::vector<Item> Items; // inside
};

std::uint32_t IntAt(std::string_view text, std::size_t place) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(text[place + i]);
    return value;
}

std::string BytesOf(std::uint32_t value, std::size_t count) {
    std::string bytes;
    for (std::size_t i = count; i-- > 0;)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

/// Takes a file apart.
class Parser {
  public:
    explicit Parser(std::string_view text) : Text(text) {}

    /// The items up to the context's end, or to what has no form.
    std::vector<Item> Items(char context, int depth) {
        constexpr int deepest = 200;
        std::vector<Item> items;
        while (Good && Place < Text.size()) {
            const int tag = static_cast<unsigned char>(Text[Place]);
            const Form* form = FindForm(context, tag);
            if (!form || depth > deepest) {
                Good = tag == EndOf(context) && depth <= deepest;
                Place += Good;
                return items;
            }
            Item item{form, std::string(1, Text[Place++]), {}, {}};
            for (const char* kind = form->Fields; *kind && Good; ++kind)
                TakeField(*kind, item);
            if (!Good)
                return items;
            if (form->Inside)
                item.Items = Items(form->Inside, depth + 1);
            items.push_back(std::move(item));
        }
        return items;
    }

  private:
    void TakeField(char kind, Item& item) {
        const std::size_t left = Text.size() - Place;
        std::size_t size = kind == 'b' ? 1 : kind == 'h' ? 2 : 4;
        if (kind == 's')
            size = Text.find('\n', Place) + 1 - Place;
        else if (kind == 'v' && left >= 4)
            size = 4 + std::size_t{12} * IntAt(Text, Place);
        else if (kind == 'c' && left >= 5)
            size = Text[Place] ? 1U + static_cast<unsigned char>(Text[Place]) : 5 + std::size_t{IntAt(Text, Place + 1)};
        Good = size > 0 && size <= left;
        if (!Good)
            return;
        item.Fields.push_back({kind, item.Bytes.size(), size});
        item.Bytes += Text.substr(Place, size);
        Place += size;
    }

    std::string_view Text;
    std::size_t Place = Header.size();
    bool Good = true;
};

void Append(const std::vector<Item>& items, std::string& text) {
    for (const Item& item : items) {
        text += item.Bytes;
        if (!item.Kind->Inside)
            continue;
        Append(item.Items, text);
        text += static_cast<char>(EndOf(item.Kind->Inside));
    }
}

/// A list of items and a place in it.
struct Place {
    std::vector<Item>* List;
    std::size_t Index;
};

void Collect(std::vector<Item>& items, std::vector<Place>& places) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        places.push_back({&items, i});
        Collect(items[i].Items, places);
    }
}

class Changer {
  public:
    Changer(std::vector<Item>& file, std::mt19937& random) : File(file), Random(random) {}

    void Change() {
        Places.clear();
        Collect(File, Places);
        if (Places.empty())
            return;
        const Place at = OneOf(Places), other = OneOf(Places);
        std::vector<Item>& list = *at.List;
        const auto item = list.begin() + static_cast<std::ptrdiff_t>(at.Index);
        switch (Random() % 8) {
        case 0:
            list.erase(item);
            return;
        case 1: {
            const Item copy = *item;
            list.insert(item, 1 + Random() % 3, copy);
            return;
        }
        case 2: {
            // Mostly where such items may be; anywhere now and then.
            const Item copy = *item;
            if (copy.Kind->Context == (*other.List)[other.Index].Kind->Context || Random() % 8 == 0)
                other.List->insert(other.List->begin() + static_cast<std::ptrdiff_t>(other.Index), copy);
            return;
        }
        case 3: {
            // Into itself.
            Item copy = *item;
            if (FindForm(copy.Kind->Inside, copy.Kind->Tag))
                item->Items.push_back(std::move(copy));
            return;
        }
        case 4:
            std::swap(list[at.Index], list[Random() % list.size()]);
            return;
        default:
            if (!item->Fields.empty())
                ChangeField(*item, Random() % item->Fields.size());
        }
    }

  private:
    template <class T>
    T& OneOf(std::vector<T>& choices) {
        return choices[Random() % choices.size()];
    }

    void ChangeField(Item& item, std::size_t number) {
        const Field field = item.Fields[number];
        const std::string value = ValueFor(field, item.Bytes.substr(field.Begin, field.Size));
        item.Bytes.replace(field.Begin, field.Size, value);
        item.Fields[number].Size = value.size();
        for (std::size_t i = number + 1; i < item.Fields.size(); ++i)
            item.Fields[i].Begin += value.size() - field.Size;
    }

    std::string ValueFor(const Field& field, const std::string& former) {
        switch (field.Kind) {
        case 'f':
            return Float();
        case 's':
            return Text();
        case 'v':
        case 'c': {
            // A number of the block, or the count before it.
            std::string value = former;
            if (field.Kind == 'v' && former.size() > 4 && Random() % 4)
                value.replace(4 + 4 * (Random() % ((former.size() - 4) / 4)), 4, Float());
            else if (field.Kind == 'v')
                value.replace(0, 4, Int(4));
            else
                value[Random() % value.size()] = static_cast<char>(Random());
            return value;
        }
        default:
            return Int(field.Size);
        }
    }

    std::string Int(std::size_t size) {
        static constexpr std::uint32_t ends[] = {
            0, 1, 2, 3, 4, 255, 256, 0x7FFFFFFF, 0x80000000, 0xFFFF, 0x10000, 0xFFFFFFFF, 0xFFFFFFFE, 1000000};
        return BytesOf(Random() % 3 ? ends[Random() % std::size(ends)] : static_cast<std::uint32_t>(Random() % 64),
                       size);
    }

    std::string Float() {
        using Limits = std::numeric_limits<float>;
        static constexpr float ends[] = {
            0,      -0.0F, 1,     -1,   Limits::quiet_NaN(), Limits::infinity(),  -Limits::infinity(),
            1e-30F, 1e30F, 1e-6F, 1e6F, Limits::max(),       Limits::denorm_min()};
        return BytesOf(std::bit_cast<std::uint32_t>(ends[Random() % std::size(ends)]), 4);
    }

    std::string Text() {
        static constexpr std::size_t lengths[] = {0, 1, 79, 80, 127, 128, 4095, 4096, 5000};
        return std::string(lengths[Random() % std::size(lengths)], static_cast<char>(Random() % 2 ? 'x' : 0xFF)) + "\n";
    }

    std::vector<Item>& File;
    std::mt19937& Random;
    std::vector<Place> Places;
};

} // namespace

std::string ModelMutator::Mutate(const std::string& file, std::size_t mostBytes) {
    if (!file.starts_with(Header))
        return file.substr(0, mostBytes);
    std::vector<Item> items = Parser(file).Items('F', 0);
    Changer changer(items, Random);
    for (unsigned changes = 1 + Random() % 4; changes; --changes)
        changer.Change();
    std::string text(Header);
    Append(items, text);
    text += '\0';
    return text.size() <= mostBytes ? text : file.substr(0, mostBytes);
}
