#include "palettes/material_commands.h"

#include "gooey/button.h"
#include "gooey/manual.h"
#include "gooey/messages.h"
#include "gooey/redraw.h"
#include "interaction/tool_guards.h"
#include "interaction/tool_protocol.h"
#include "materials/default_materials.h"
#include "materials/material_definitions.h"
#include "materials/material_usage.h"
#include "materials/materials_file.h"
#include "palettes/material_editor.h"
#include "palettes/material_palette.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "store/storage.h"
#include "views/display_flags.h"

#include <cerrno>
#include <cstring>
#include <string>

int MaterialCopied;

namespace {

constexpr int NothingCopied = 40;

/// What MaterialResetCopy is a copy of; null: of nothing that there is still.
const Material* KeptMaterial;

void FollowDeletions() {
    static const bool following = [] {
        AppearanceSlots listener;
        listener.MaterialFreed = [](Material* material) {
            if (material == KeptMaterial)
                KeptMaterial = nullptr;
        };
        ListenToAppearance(listener);
        return true;
    }();
    static_cast<void>(following);
}

/// A running tool has the model to itself until it is done or cancelled.
bool ModelIsFree() {
    if (!BadStuffDisabled)
        return true;
    TellUserS("Please finish or cancel what you are doing in the model first.");
    return false;
}

void ShowCurrentMaterial() {
    ShowPaletteEntry(MaterialPaletteGrid, CurrentMaterial());
}

/// The current material is another one, or has other values, which all windows show.
void CurrentMaterialChanged() {
    WorkSaved = 0;
    DirtyAllWindows();
    RedrawCurrentSweetie();
    ShowMaterialInEditor();
    DirtyOtherMatThings();
}

void CreateMaterial() {
    Material* const material = NewMaterial();
    AddMaterial(material);
    RenameMaterial(material, "New");
    CurrentMaterial() = nullptr;
    SelectMaterial(material);
    ShowCurrentMaterial();
}

void CopyCurrent() {
    if (!CurrentMaterial())
        return;
    KeepMaterial(MaterialClipboard, CurrentMaterial());
    MaterialCopied = 1;
}

void Paste() {
    if (!MaterialCopied) {
        TellUser(NothingCopied);
        return;
    }
    Material* const material = CurrentMaterial();
    if (!material)
        return;
    KeepForUndo(material);
    KeepMaterial(MaterialUndoCopy, material);
    CopyMaterial(material, MaterialClipboard);
    DefineMaterial(material);
    CurrentMaterialChanged();
}

void UndoChange() {
    Material* const material = CurrentMaterial();
    if (!material || !KeptForUndo(material))
        return;
    CopyMaterial(material, MaterialResetCopy);
    DefineMaterial(material);
    CurrentMaterial() = nullptr;
    SelectMaterial(material);
    CurrentMaterialChanged();
}

/// Runs what may take the current material away.
template <void (*Command)()>
void Delete() {
    if (!ModelIsFree())
        return;
    const Material* const before = CurrentMaterial();
    Command();
    if (CurrentMaterial() != before)
        DirtyOtherMatThings();
}

void FindPolygonsMaterial() {
    if (!APolygonIsSelected())
        return;
    const Polygon* const polygon = FirstSelectedPolygon();
    Material* const found = polygon->Texture && TextureOn ? polygon->TextureMaterial : polygon->Material;
    if (found)
        SelectMaterial(found);
    ShowCurrentMaterial();
}

void SaveAsDefault() {
    if (!SaveDefaultMaterials())
        TellUserS(
            (std::string("Couldn't write material file ") + DefaultMaterialsFile() + "\n\n" + std::strerror(errno))
                .c_str());
}

template <void (*Move)(int places), bool ByRow>
void MoveMaterial() {
    Move(ByRow ? MaterialPaletteGrid.Columns : 1);
    ShowCurrentMaterial();
}

constexpr struct {
    int Command;
    void (*Function)();
} Commands[] = {
    {NewMaterialCommand, CreateMaterial},
    {CopyMaterialCommand, CopyCurrent},
    {PasteMaterialCommand, Paste},
    {UndoMaterialCommand, UndoChange},
    {ManualCommand, [] { OpenManual(MaterialPalettePage); }},
    {SavePaletteCommand, SaveMaterialPalette},
    {LoadPaletteCommand, LoadMaterialPalette},
    {SaveDefaultPaletteCommand, SaveAsDefault},
    {LoadOnNewCommand, [] { LoadMaterialsOnNew = !LoadMaterialsOnNew; }},
    {DeleteMaterialCommand, Delete<DeleteCurrentMaterial>},
    {DeleteUnusedCommand, Delete<DeleteUnusedMaterials>},
    {EditMaterialCommand, OpenMaterialEditor},
    {FindMaterialCommand, FindPolygonsMaterial},
    {UpCharacter, MoveMaterial<MoveMaterialLeft, true>},
    {DownCharacter, MoveMaterial<MoveMaterialRight, true>},
    {LeftCharacter, MoveMaterial<MoveMaterialLeft, false>},
    {RightCharacter, MoveMaterial<MoveMaterialRight, false>},
};

} // namespace

void DoMaterialCommand(int command) {
    for (const auto& entry : Commands)
        if (entry.Command == command) {
            entry.Function();
            return;
        }
}

void ApplyMaterialButton() {
    if (ModelIsFree())
        ApplyToSelectedPolygons(ButtonChoice);
}

void LightGroupButton() {
    if (ModelIsFree())
        ApplyLightGroupToSelectedPolygons(ButtonChoice);
}

void KeepForUndo(const Material* material) {
    FollowDeletions();
    KeptMaterial = material;
    if (material)
        KeepMaterial(MaterialResetCopy, material);
}

int KeptForUndo(const Material* material) {
    return material && material == KeptMaterial;
}
