#include "materials/material_definitions.h"

#include "base/slots.h"
#include "geometry/colours.h"
#include "platform/lighting.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <vector>

using namespace gl;

int MaterialsNeedDefining = 0;
MaterialSlots TheMaterialSlots;
Material* MaterialUndoCopy = nullptr;
Material* MaterialResetCopy = nullptr;
Material* MaterialClipboard = nullptr;

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

namespace {

/// From here on lie the numbers of UnlitMaterial.
constexpr int FirstUnlitMaterial = 1 << 14;

/// A property list that grows.
class PropertyList {
  public:
    void Add(float token, float value) { Floats.insert(Floats.end(), {token, value}); }

    void AddColour(float token, const float (&rgb)[3]) { Floats.insert(Floats.end(), {token, rgb[0], rgb[1], rgb[2]}); }

    void Define(int number) {
        Floats.push_back(LMNULL);
        lmdef(DEFMATERIAL, number, static_cast<int>(Floats.size()), Floats.data());
    }

  private:
    std::vector<float> Floats;
};

} // namespace

void NeedMaterialsDefined() {
    MaterialsNeedDefining = 1;
}

void InitMaterials() {
    for (Material** scratch : {&MaterialUndoCopy, &MaterialResetCopy, &MaterialClipboard})
        if (!*scratch)
            *scratch = NewMaterial();
}

void FreeMaterials() {
    for (Material** scratch : {&MaterialUndoCopy, &MaterialResetCopy, &MaterialClipboard}) {
        FreeMaterial(*scratch);
        *scratch = nullptr;
    }
}

void KeepMaterial(Material* scratch, const Material* material) {
    const int workSaved = WorkSaved;
    CopyMaterial(scratch, material);
    WorkSaved = workSaved;
}

void DefineMaterial(Material* material) {
    PropertyList lit;
    lit.AddColour(AMBIENT, material->Ambient);
    lit.AddColour(DIFFUSE, material->Diffuse);
    lit.AddColour(SPECULAR, material->Specular);
    lit.AddColour(EMISSION, material->Emission);
    lit.Add(SHININESS, material->Shininess);
    lit.Add(ALPHA, material->Alpha);
    lit.Define(material->GLIndex);

    const float opacity[3] = {material->Alpha};
    material->PackedColour = PackRGB(material->Diffuse) | PackRGB(opacity) << 24;

    if (const int number = UnlitMaterial(material)) {
        constexpr float none[3] = {};
        float shown[3];
        UnpackRGB(material->PackedColour, shown);
        PropertyList unlit;
        unlit.AddColour(AMBIENT, none);
        unlit.AddColour(DIFFUSE, none);
        unlit.AddColour(SPECULAR, none);
        unlit.AddColour(EMISSION, shown);
        unlit.Add(ALPHA, static_cast<float>(material->PackedColour >> 24) / 255);
        unlit.Define(number);
    }
}

int UnlitMaterial(const Material* material) {
    return material->GLIndex > 0 && material->GLIndex < FirstUnlitMaterial ? FirstUnlitMaterial + material->GLIndex : 0;
}

void RedefineMaterials() {
    // A drawing that is kept holds numbers of materials.
    bool drawingsAreStale = false;
    int number = FirstModelMaterial;
    for (Material* material : Along<&Material::Next>(FirstMaterial())) {
        const int oldNumber = material->GLIndex;
        material->GLIndex = number++;
        DefineMaterial(material);
        drawingsAreStale |= material->GLIndex != oldNumber;
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
