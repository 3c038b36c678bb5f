#include "store/material_list.h"

#include "base/memory.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/polygon_scan.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <algorithm>
#include <cstring>

namespace {

using MaterialList = LinkedList<&Material::Next, &Material::Prev>;

TailHint<&Material::Next, &Material::Prev> LastMaterial;

bool SameColour(const float (&a)[3], const float (&b)[3]) {
    return std::equal(a, a + 3, b);
}

} // namespace

void AddMaterial(Material* material) {
    Material*& first = FirstMaterial();
    const bool wasEmpty = !first;
    LastMaterial.Append(first, material);
    if (wasEmpty && !Mergeing)
        CurrentMaterial() = material;
    WorkSaved = 0;
}

void DeleteMaterial(Material* material) {
    if (material == CurrentMaterial())
        CurrentMaterial() = material->Next ? material->Next : material->Prev;
    TakeMaterialOffList(material);
    FreeMaterial(material);
    WorkSaved = 0;
}

void TakeMaterialOffList(Material* material) {
    MaterialList::Remove(FirstMaterial(), material);
    LastMaterial.Forget(material);
}

void FreeAllMaterials() {
    for (Material* material : Along<&Material::Next>(FirstMaterial())) {
        LastMaterial.Forget(material);
        FreeMaterial(material);
    }
    FirstMaterial() = nullptr;
    if (!Mergeing)
        CurrentMaterial() = nullptr;
}

void RenameMaterial(Material* material, const char* name) {
    char* copy = CopyOfString(name ? name : "Unnamed");
    if (material->Name)
        Free(material->Name);
    material->Name = copy;
    WorkSaved = 0;
}

void CopyMaterial(Material* destination, const Material* source) {
    std::memcpy(destination->Ambient, source->Ambient, sizeof source->Ambient);
    std::memcpy(destination->Diffuse, source->Diffuse, sizeof source->Diffuse);
    std::memcpy(destination->Specular, source->Specular, sizeof source->Specular);
    std::memcpy(destination->Emission, source->Emission, sizeof source->Emission);
    destination->Shininess = source->Shininess;
    destination->Alpha = source->Alpha;
    destination->PackedColour = source->PackedColour;
    RenameMaterial(destination, source->Name);
}

int MaterialsAreTheSame(const Material* a, const Material* b) {
    return std::strcmp(a->Name, b->Name) == 0 && SameColour(a->Ambient, b->Ambient) &&
           SameColour(a->Diffuse, b->Diffuse) && SameColour(a->Specular, b->Specular) &&
           SameColour(a->Emission, b->Emission) && a->Shininess == b->Shininess && a->Alpha == b->Alpha;
}

Material* FindMaterial(const Material* material) {
    for (Material* candidate : Along<&Material::Next>(FirstMaterial()))
        if (MaterialsAreTheSame(candidate, material))
            return candidate;
    return nullptr;
}

void SearchAndReplaceMaterial(Material* old, Material* replacement) {
    ForEverySinglePolygonEver([=](Polygon* polygon) {
        if (polygon->Material == old)
            polygon->Material = replacement;
        if (polygon->Texture && polygon->TextureMaterial == old)
            polygon->TextureMaterial = replacement;
    });
    EveryAppearanceChanged();
    WorkSaved = 0;
}
