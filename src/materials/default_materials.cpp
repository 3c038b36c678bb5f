#include "materials/default_materials.h"

#include "base/debug.h"
#include "base/exit.h"
#include "materials/material_definitions.h"
#include "materials/materials_file.h"
#include "store/accessors.h"
#include "store/lists.h"
#include "store/material_list.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/storage.h"

int LoadMaterialsOnNew = 0;

namespace {

constexpr int AllComponents = 7;

void SetComponent(Material* material, int component, float ambient, float diffuse, float specular) {
    material->Ambient[component] = ambient;
    material->Diffuse[component] = diffuse;
    material->Specular[component] = specular;
    material->Emission[component] = 0;
}

/// The records themselves, not copies.
void TakeLoadedMaterials() {
    for (Material* material : Along<&Material::Next>(LoadedMaterials))
        AddMaterial(material);
    LoadedMaterials = nullptr;
}

} // namespace

void MakeMat(Material* material, int on, int component) {
    if (on)
        SetComponent(material, component, 0.3f, 0.5f, 1.0f);
    else
        SetComponent(material, component, 0.0f, 0.1f, 0.8f);
}

Material* NewColouredMaterial(int colour) {
    static const char* const Names[] = {"Grey", "Red", "Green", "Yellow", "Blue", "Magenta", "Cyan", "Texture"};
    Material* material = NewMaterial();
    RenameMaterial(material, Names[colour]);
    const int bits = colour ? colour : AllComponents;
    for (int component = 0; component < 3; ++component)
        if (colour == TextureColour)
            SetComponent(material, component, 0.8f, 1.0f, 1.0f);
        else
            MakeMat(material, bits >> component & 1, component);
    material->Shininess = 64.0f;
    material->Alpha = 1.0f;
    return material;
}

void MakeDefaultMaterials() {
    if (StartingUp)
        return;
    // What every model starts with is no work to be saved.
    const int workSaved = WorkSaved;
    if (LoadMaterialsOnNew && ReadMaterialsFile(DefaultMaterialsFile()))
        TakeLoadedMaterials();
    else
        for (const int colour : {0, 1, 2, 4})
            AddMaterial(NewColouredMaterial(colour));
    WorkSaved = workSaved;
    MaterialsNeedDefining = 1;
    CurrentMaterial() = FirstMaterial();
    CurrentLighting = LightingSmooth;
    Trace("Default materials made...\n");
}
