#include "materials/material_usage.h"

#include "base/debug.h"
#include "base/slots.h"
#include "gooey/messages.h"
#include "gooey/redraw.h"
#include "materials/material_definitions.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/material_list.h"
#include "store/polygon_editing.h"
#include "store/polygon_scan.h"
#include "store/selection_lists.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace {

using MaterialList = LinkedList<&Material::Next, &Material::Prev>;

/// What the light-group command applies.
int CurrentLightGroup = 0;

bool Shows(const Polygon* polygon, const Material* material) {
    return polygon->Material == material || (polygon->Texture && polygon->TextureMaterial == material);
}

/// Tells which objects use the material.
bool MaterialIsUsed(const Material* material) {
    bool used = false;
    for (const Object* object : EveryObject(*CurrentFile))
        for (const Polygon* polygon : EveryPolygon(object))
            if (Shows(polygon, material)) {
                std::printf("Material used in object: %s\n", object->Name);
                used = true;
                break;
            }
    return used;
}

void MoveCurrentMaterial(int n, Material* Material::*direction) {
    Material* material = CurrentMaterial();
    if (!material)
        return;
    for (; n > 0 && material->*direction; --n) {
        Material* neighbour = material->*direction;
        MaterialList::ExchangeWithNext(FirstMaterial(), direction == &Material::Next ? material : neighbour);
        std::swap(material->PaletteSlot, neighbour->PaletteSlot);
        WorkSaved = 0;
        MaterialsNeedDefining = 1;
        CallSlot(TheMaterialSlots.DrawPaletteSlot, neighbour);
    }
    CallSlot(TheMaterialSlots.DrawPaletteSlot, material);
}

} // namespace

void FlagUsedMaterials() {
    for (Material* material : Along<&Material::Next>(FirstMaterial()))
        material->Used = 0;
    ForEverySinglePolygonEver([](const Polygon* polygon) {
        if (polygon->Material)
            polygon->Material->Used = 1;
        if (polygon->Texture && polygon->TextureMaterial)
            polygon->TextureMaterial->Used = 1;
    });
}

void DeleteUnusedMaterials() {
    FlagUsedMaterials();
    const auto materials = Along<&Material::Next>(FirstMaterial());
    // New polygons need a material.
    if (CurrentMaterial() &&
        std::none_of(materials.begin(), materials.end(), [](const Material* m) { return m->Used; }))
        CurrentMaterial()->Used = 1;
    bool deleted = false;
    for (Material* material : materials)
        if (!material->Used) {
            DeleteMaterial(material);
            deleted = true;
        }
    if (!deleted)
        return;
    MaterialsNeedDefining = 1;
    DirtyAllWindows();
}

void DeleteCurrentMaterial() {
    Material* material = CurrentMaterial();
    if (!material)
        return;
    if (MaterialIsUsed(material)) {
        TellUserS("That material is in use in the database and cannot be deleted!\n");
    } else if (!material->Prev && !material->Next) {
        TellUserS("You must have at least one material in a database!");
    } else {
        // Undo and paste could bring it back.
        DiscardHiddenPolygons();
        DeleteMaterial(material);
        MaterialsNeedDefining = 1;
        CallSlot(TheMaterialSlots.MaterialsRedefined);
    }
}

void MoveMaterialLeft(int n) {
    MoveCurrentMaterial(n, &Material::Prev);
}

void MoveMaterialRight(int n) {
    MoveCurrentMaterial(n, &Material::Next);
}

void ApplyToSelectedPolygons(int application) {
    if (PolygonSelectionChanged())
        ConnectSelectedPolygons();
    const bool lacksMaterial = !CurrentMaterial() && (application == ApplyMaterial || application == ApplyBoth);
    if (!FirstSelectedPolygon() || lacksMaterial)
        return;
    CopyCurrentObject();
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon())) {
        if (application == ApplyMaterial || application == ApplyBoth)
            polygon->Material = CurrentMaterial();
        if (application == ApplyLighting || application == ApplyBoth)
            polygon->Lighting = static_cast<std::uint8_t>(CurrentLighting);
        if (application == ApplyLightGroup)
            polygon->LightGroup = CurrentLightGroup;
        AppearanceChanged(polygon);
    }
    NormalsOK() = 0;
    CallSlot(TheMaterialSlots.DirtyModelWindows);
}

int GenerateLightGroup() {
    std::vector<int> groups;
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        groups.push_back(polygon->LightGroup);
    std::sort(groups.begin(), groups.end());
    int group = 0;
    for (const int used : groups)
        if (used == group)
            ++group;
    // Group 0 is where polygons are lit as usual, even if none is in it.
    if (groups.empty() || groups.back() <= 0)
        group = 1;
    CurrentLightGroup = group;
    Trace("Generated light group: %d\n", group);
    return group;
}

void ApplyLightGroupToSelectedPolygons(int button) {
    if (button == 1)
        CurrentLightGroup = 0;
    else
        GenerateLightGroup();
    ApplyToSelectedPolygons(ApplyLightGroup);
}
