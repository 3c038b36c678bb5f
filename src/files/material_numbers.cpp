#include "files/material_numbers.h"

#include "files/fields.h"
#include "files/items.h"
#include "files/reader.h"
#include "store/material_list.h"
#include "store/pools.h"

#include <algorithm>
#include <tuple>

namespace {

/// Highest number that a polygon can give, which it has in a short.
constexpr std::int32_t HighestNumber = 65535;

/// By how much the table grows beyond a number that does not fit.
constexpr std::int32_t Growth = 100;

} // namespace

MaterialNumbers::~MaterialNumbers() {
    for (const Entry& entry : Read)
        FreeMaterial(entry.Record);
}

void MaterialNumbers::ReadSection(FileCursor& file) {
    ++Section;
    ReadItems(file, BadMaterials, [&](int tag) {
        if (tag != TagMaterial)
            return false;
        ReadMaterial(file);
        return true;
    });
}

void MaterialNumbers::ReadMaterial(FileCursor& file) {
    std::int32_t number = 0;
    if (!(FileVersion < IntMaterialsVersion ? ReadFileByte(file, number) : ReadFileInts(file, &number, 1)))
        return;
    if (number < 0) {
        SetError(BadMaterialIndex);
        return;
    }
    Material* material = NewMaterial();
    Read.push_back({Section, number, material});
    ReadItems(file, BadMaterials, [&](int tag) {
        if (tag == TagMaterialName) {
            char name[NameSize];
            if (ReadFileString(file, name))
                RenameMaterial(material, name);
            return true;
        }
        FieldReader field(file, tag, BadMaterials);
        MaterialFields(field, *material);
        return field.Matched();
    });
    material->Used = 0;
    if (number > HighestNumber)
        return;
    if (static_cast<std::size_t>(number) >= ByNumber.size())
        ByNumber.resize(number + Growth);
    ByNumber[number] = {Section, material};
}

Material* MaterialNumbers::Use(int number) {
    if (static_cast<std::size_t>(number) >= ByNumber.size()) {
        SetError(BadMaterialIndex);
        return nullptr;
    }
    const Named& named = ByNumber[number];
    if (named.Section != Section) {
        SetError(BadPolygonMaterial);
        return nullptr;
    }
    named.Record->Used = 1;
    return named.Record;
}

Material* MaterialNumbers::UseFirst() {
    if (Read.empty()) {
        SetError(BadPolygonMaterial);
        return nullptr;
    }
    Read.front().Record->Used = 1;
    return Read.front().Record;
}

void MaterialNumbers::AddToFile() {
    std::stable_sort(Read.begin(), Read.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.Section, a.Number) < std::tie(b.Section, b.Number);
    });
    for (const Entry& entry : Read)
        if (entry.Record->Used || FileVersion >= WideMaterialsVersion)
            AddMaterial(entry.Record);
        else
            FreeMaterial(entry.Record);
    Read.clear();
}
