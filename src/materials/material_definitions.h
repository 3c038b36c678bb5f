#pragma once

#include "store/records.h"

// Materials as the graphics layer knows them: numbers 1 to 7 are the interface's own, the model's follow from 8 on in
// list order.

/// Flag: materials must be defined anew before the next drawing. Set by whoever changes values or the list.
extern int MaterialsNeedDefining;

/// Sets the flag: for the slots of those who change materials on lower floors.
void NeedMaterialsDefined();

// Property lists, each ended by 0.
extern const float mat_red_metal[], mat_green_metal[], mat_yellow_metal[], mat_blue_metal[], mat_magenta_metal[],
    mat_cyan_metal[], mat_grey_metal[];
/// Those seven, in the order of their numbers 1 to 7.
extern const float* const InterfaceMaterials[7];
/// The number of the first material of the model.
inline constexpr int FirstModelMaterial = 8;

/// Lighting models (one-sided and two-sided) and lights.
extern const float Lighting[], LightingTwo[], WhiteLight[], GreyLight[];

/// Make and release the scratch materials of the material windows. Making them again does nothing.
void InitMaterials();
void FreeMaterials();
/// What undo, reset and paste give back. Null before InitMaterials and after FreeMaterials; on no list.
extern Material *MaterialUndoCopy, *MaterialResetCopy, *MaterialClipboard;
/// Copies into one of these, which is no change of the model.
void KeepMaterial(Material* scratch, const Material* material);

/// Defines the material under its GLIndex and packs its colour; with it the material of UnlitMaterial.
void DefineMaterial(Material* material);
/// The number of a material that shows PackedColour wherever it is lit: what is recorded with it follows every later
/// definition, as what is recorded in a colour of its own would not. 0 for materials without one: those that come very
/// late in their list.
int UnlitMaterial(const Material* material);
/// Numbers and defines the whole list.
void RedefineMaterials();

/// What changed materials mean to the layers above; each is skipped when null.
struct MaterialSlots {
    void (*MaterialsRedefined)() = nullptr; // palette and editor show them anew
    void (*DirtySolids)() = nullptr;        // solids being made
    void (*RemakeSweep)() = nullptr;        // the sweep being made
    void (*ChangeTextureMaterial)() = nullptr;
    void (*DrawPaletteSlot)(Material* material) = nullptr; // redraws it where the palette shows it
    void (*DirtyModelWindows)() = nullptr;
};

extern MaterialSlots TheMaterialSlots;

/// After a change of materials, or of the lighting: what else shows them.
void DirtyOtherMatThings();
void DirtyOtherLightThings();
