#include "materials/material_definitions.h"

#include "base/slots.h"
#include "geometry/colours.h"
#include "platform/lighting.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/pools.h"
#include "store/walks.h"

#include <vector>

using namespace gl;

int MaterialsNeedDefining = 0;
MaterialSlots TheMaterialSlots;
Material* MaterialUndoCopy = nullptr;
Material* MaterialResetCopy = nullptr;
Material* MaterialScratch = nullptr;

// One property a line, each with its values.
// clang-format off

const float mat_red_metal[] = {AMBIENT, 0.3f, 0, 0,
                               DIFFUSE, 0.5f, 0.1f, 0.1f,
                               SPECULAR, 0.8f, 0.3f, 0.3f,
                               SHININESS, 50, LMNULL};

const float mat_green_metal[] = {AMBIENT, 0, 0.3f, 0,
                                 DIFFUSE, 0.1f, 0.5f, 0.1f,
                                 SPECULAR, 0.3f, 0.8f, 0.3f,
                                 SHININESS, 50, LMNULL};

const float mat_yellow_metal[] = {AMBIENT, 0.3f, 0.3f, 0,
                                  DIFFUSE, 0.5f, 0.5f, 0.1f,
                                  SPECULAR, 0.8f, 0.8f, 0.3f,
                                  SHININESS, 50, LMNULL};

const float mat_blue_metal[] = {AMBIENT, 0, 0, 0.3f,
                                DIFFUSE, 0.1f, 0.1f, 0.5f,
                                SPECULAR, 0.3f, 0.3f, 0.8f,
                                SHININESS, 50, LMNULL};

const float mat_magenta_metal[] = {AMBIENT, 0.3f, 0, 0.3f,
                                   DIFFUSE, 0.5f, 0.1f, 0.5f,
                                   SPECULAR, 0.8f, 0.3f, 0.8f,
                                   SHININESS, 50, LMNULL};

const float mat_cyan_metal[] = {AMBIENT, 0, 0.3f, 0.3f,
                                DIFFUSE, 0.1f, 0.5f, 0.5f,
                                SPECULAR, 0.3f, 0.8f, 0.8f,
                                SHININESS, 50, LMNULL};

const float mat_grey_metal[] = {AMBIENT, 0.3f, 0.3f, 0.3f,
                                DIFFUSE, 0.5f, 0.5f, 0.5f,
                                SPECULAR, 0.8f, 0.8f, 0.8f,
                                SHININESS, 50, LMNULL};

const float Lighting[] = {AMBIENT, 0.2f, 0.2f, 0.2f, LMNULL};
const float LightingTwo[] = {AMBIENT, 0.5f, 0.5f, 0.5f, TWOSIDE, 1, LMNULL};

// Both shine from over the viewer's right shoulder.
const float WhiteLight[] = {LCOLOR, 1, 1, 1, POSITION, 1, 1, 1, 0, LMNULL};
const float GreyLight[] = {LCOLOR, 0.5f, 0.5f, 0.5f, POSITION, 1, 1, 1, 0, LMNULL};

// clang-format on

const float* const InterfaceMaterials[7] = {mat_red_metal,     mat_green_metal, mat_yellow_metal, mat_blue_metal,
                                            mat_magenta_metal, mat_cyan_metal,  mat_grey_metal};

void NeedMaterialsDefined() {
    MaterialsNeedDefining = 1;
}

void InitMaterials() {
    for (Material** scratch : {&MaterialUndoCopy, &MaterialResetCopy, &MaterialScratch})
        if (!*scratch)
            *scratch = NewMaterial();
}

void FreeMaterials() {
    for (Material** scratch : {&MaterialUndoCopy, &MaterialResetCopy, &MaterialScratch}) {
        FreeMaterial(*scratch);
        *scratch = nullptr;
    }
}

void DefineMaterial(Material* material) {
    std::vector<float> list;
    const auto add = [&](float token, const auto&... values) { list.insert(list.end(), {token, values...}); };
    const auto addColour = [&](float token, const float(&rgb)[3]) { add(token, rgb[0], rgb[1], rgb[2]); };
    addColour(AMBIENT, material->Ambient);
    addColour(DIFFUSE, material->Diffuse);
    addColour(SPECULAR, material->Specular);
    addColour(EMISSION, material->Emission);
    add(SHININESS, material->Shininess);
    add(ALPHA, material->Alpha);
    list.push_back(LMNULL);
    lmdef(DEFMATERIAL, material->GLIndex, static_cast<int>(list.size()), list.data());

    const float opacity[3] = {material->Alpha};
    material->PackedColour = PackRGB(material->Diffuse) | PackRGB(opacity) << 24;
}

void RedefineMaterials() {
    // A drawing that is kept holds numbers of materials, colours of unlit polygons, and what is transparent.
    bool drawingsAreStale = false;
    int number = FirstModelMaterial;
    for (Material* material : Along<&Material::Next>(FirstMaterial())) {
        const int oldNumber = material->GLIndex;
        const std::uint32_t oldColour = material->PackedColour;
        material->GLIndex = number++;
        DefineMaterial(material);
        drawingsAreStale |= material->GLIndex != oldNumber || material->PackedColour != oldColour;
    }
    if (drawingsAreStale)
        EveryAppearanceChanged();
    CallSlot(TheMaterialSlots.MaterialsRedefined);
}

void DirtyOtherMatThings() {
    DirtyOtherLightThings();
    CallSlot(TheMaterialSlots.ChangeTextureMaterial);
}

void DirtyOtherLightThings() {
    CallSlot(TheMaterialSlots.DirtySolids);
    CallSlot(TheMaterialSlots.RemakeSweep);
}
