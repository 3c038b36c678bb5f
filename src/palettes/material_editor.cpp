#include "palettes/material_editor.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/label.h"
#include "gooey/manual.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/redraw.h"
#include "gooey/slider.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"
#include "gooey/window.h"
#include "materials/material_definitions.h"
#include "palettes/colour_mixing.h"
#include "palettes/material_commands.h"
#include "palettes/material_palette.h"
#include "palettes/mixer.h"
#include "palettes/samples.h"
#include "platform/drawing.h"
#include "platform/events.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "store/storage.h"
#include "views/rendering_state.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstring>
#include <utility>

Window* MaterialEditor;
int MateditX, MateditY, MaterialEditorOpened;
int MatEditGang;

namespace {

constexpr char ManualPage[] = "R_MaterialEditor";
constexpr int Width = 586, Height = 450;
constexpr int GenerateLabel = 182, NameLabel = 181, JoinLabel = 62;

// ---- The sliders: number / 10 says what of the material, number % 10 the component of a colour.

constexpr int SliderStep = 32, SliderWidth = 24, SliderRange = 100, SliderTop = SliderRange + SliderThumbHeight;
constexpr int ShineNumber = 40, AlphaNumber = 50;
constexpr float ShininessPerStep = 1.28F;

struct ColourGroup {
    const char* Label;
    const char* Names[3];
    float (Material::*Colour)[3];
    int X, Y;
};

constexpr ColourGroup Groups[] = {
    {"Ambient", {"Ambient red", "Ambient green", "Ambient blue"}, &Material::Ambient, 40, 40},
    {"Diffuse", {"Diffuse red", "Diffuse green", "Diffuse blue"}, &Material::Diffuse, 175, 40},
    {"Specular", {"Specular red", "Specular green", "Specular blue"}, &Material::Specular, 175, 245},
    {"Emission", {"Emission red", "Emission green", "Emission blue"}, &Material::Emission, 310, 40},
};
constexpr int GroupCount = 4, GroupWidth = 2 * SliderStep + SliderWidth;
constexpr int ShineX = 320, AlphaX = 364, SingleY = 245;

constexpr int SampleX = 84, SampleY = 310, SampleRadius = 70, SampleDepth = 10;
constexpr int SpectrumBottom = 191, WireBus = 213;
constexpr int RightColumn = 447, MixerBottom = 230;

/// Bytes of a name that is typed.
constexpr int NameSize = 128;
char Name[NameSize];
/// The material has got a name that is being typed: that was kept for undo when it began.
bool NameIsTyped;
Gadget *NameInput, *ColourSliders[GroupCount][3], *ShineSlider, *AlphaSlider;

/// The components of the colour whose slider is held, as they were when that began.
float GangStart[3];

int NumberOf(int group, int component) {
    return 10 * group + component;
}

bool IsInGroup(int number) {
    return number < 10 * GroupCount;
}

float (&ColourOf(Material* material, int number))[3] {
    return material->*Groups[number / 10].Colour;
}

/// A file may hold any number, and even none.
int SliderPosition(float value) {
    return value > 0 ? static_cast<int>(std::min(value, static_cast<float>(SliderRange))) : 0;
}

int Percent(float value) {
    return SliderPosition(value * 100.0F);
}

int ShinePosition(float shininess) {
    return SliderPosition(shininess / ShininessPerStep);
}

// ---- What changes with the material

void StoreMaterialForUndo() {
    if (CurrentMaterial())
        KeepMaterial(MaterialUndoCopy, CurrentMaterial());
}

void StoreMaterialForReset() {
    KeepForUndo(CurrentMaterial());
}

void GetRGBProps(int group) {
    for (int component = 0; component < 3; ++component)
        ConfigureSlider(ColourSliders[group][component],
                        Percent(ColourOf(CurrentMaterial(), NumberOf(group, component))[component]), 0);
}

/// A name may be longer than what can be typed.
bool ShowsNameOf(const Material* material) {
    return std::strncmp(Name, material->Name, NameSize - 1) == 0;
}

void ShowName() {
    if (CurrentMaterial() && !ShowsNameOf(CurrentMaterial()))
        ChangeText(NameInput, CurrentMaterial()->Name);
}

void GetMaterialProps() {
    const Material* material = CurrentMaterial();
    if (!material)
        return;
    for (int group = 0; group < GroupCount; ++group)
        GetRGBProps(group);
    ConfigureSlider(ShineSlider, ShinePosition(material->Shininess), 0);
    ConfigureSlider(AlphaSlider, Percent(material->Alpha), 0);
    ShowName();
}

/// What is typed stays, and what comes next is a change of its own.
void EndTyping() {
    if (TextIsActive(NameInput))
        DeactivateText(NameInput);
    ShowName();
    NameIsTyped = false;
}

/// During a drag: in the palette and the views at once, the editor being drawn by its slider.
void ShowStep() {
    WorkSaved = 0;
    DefineMaterial(CurrentMaterial());
    RedrawCurrentSweetie();
    RedrawModelWindowsBeside();
}

/// After it: wherever else the material shows.
void ShowEverywhere() {
    DirtyModelWindows();
    RedrawCurrentSweetie();
    DirtyOtherMatThings();
    DirtyToolWindow(MaterialEditorWindow);
}

void PressSlider(GadgetArg arg, int) {
    Material* const material = CurrentMaterial();
    if (!material)
        return;
    if (MatEditGang && IsInGroup(arg.Number))
        std::copy_n(ColourOf(material, arg.Number), 3, GangStart);
    EndTyping();
    StoreMaterialForUndo();
}

void SetComponent(Material* material, int number, float value) {
    float(&colour)[3] = ColourOf(material, number);
    if (!MatEditGang) {
        colour[number % 10] = value;
        return;
    }
    JoinComponents(GangStart, number % 10, value, colour);
    GetRGBProps(number / 10);
}

void MoveSlider(GadgetArg arg, int, int position) {
    Material* const material = CurrentMaterial();
    if (!material)
        return;
    const float value = static_cast<float>(position) / 100.0F;
    if (arg.Number == ShineNumber)
        material->Shininess = static_cast<float>(position) * ShininessPerStep;
    else if (arg.Number == AlphaNumber)
        material->Alpha = value;
    else
        SetComponent(material, arg.Number, value);
    ShowStep();
}

void ReleaseSlider(GadgetArg, int) {
    ShowEverywhere();
}

std::uint32_t ShadeOfComponent(GadgetArg arg) {
    return 0xFFU << 8 * (arg.Number % 10);
}

std::uint32_t WhiteShade(GadgetArg) {
    return White;
}

void PrintShininess(int x, int y, int width, int value, std::uint32_t colour) {
    PrintSlideSmall(x, y, width, value * 128 / 100, colour);
}

// ---- Commands

void GenerateMaterial() {
    Material* const material = CurrentMaterial();
    if (!material)
        return;
    EndTyping();
    StoreMaterialForUndo();
    SpreadColour(material, MixerColour(), ButtonChoice);
    GetMaterialProps();
    WorkSaved = 0;
    DefineMaterial(material);
    ShowEverywhere();
}

void MatUndo() {
    WorkSaved = 0;
    DefineMaterial(CurrentMaterial());
    GetMaterialProps();
    ShowEverywhere();
}

void UndoMat() {
    Material* const material = CurrentMaterial();
    if (!material)
        return;
    EndTyping();
    Material* const former = NewMaterial();
    KeepMaterial(former, MaterialUndoCopy);
    StoreMaterialForUndo();
    CopyMaterial(material, former);
    FreeMaterial(former);
    MatUndo();
}

void ResetMat() {
    if (!KeptForUndo(CurrentMaterial()))
        return;
    EndTyping();
    StoreMaterialForUndo();
    CopyMaterial(CurrentMaterial(), MaterialResetCopy);
    MatUndo();
}

/// A name that is being typed counts at once; an empty one does not.
void TakeName() {
    Material* const material = CurrentMaterial();
    if (!Name[0] && TextReturnReal)
        ShowName();
    if (!material || !Name[0] || ShowsNameOf(material))
        return;
    if (!NameIsTyped)
        StoreMaterialForUndo();
    NameIsTyped = true;
    RenameMaterial(material, Name);
    RedrawCurrentSweetie();
}

// ---- Drawing

std::uint32_t PackedOf(const float (&colour)[3]) {
    std::uint32_t packed = 0;
    for (int i = 0; i < 3; ++i)
        packed |= static_cast<std::uint32_t>(Percent(colour[i]) * 255 / 100) << 8 * i;
    return packed;
}

/// Two pixels wide, corners included.
void DrawWire(int x1, int y1, int x2, int y2, std::uint32_t rgb) {
    gl::cpack(rgb);
    gl::rectfi(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2) + 1, std::max(y1, y2) + 1);
}

/// From the sample to the groups, each in its colour; those of the lower row come from a common line.
void DrawWires(Material* material) {
    constexpr int labelTop = 40 + SliderTop + 26, gap = 6;
    constexpr std::uint32_t bus = 0x808080;
    DrawWire(SampleX, SampleY - SampleRadius - gap, SampleX, WireBus, bus);
    DrawWire(SampleX, WireBus, Groups[3].X + GroupWidth / 2, WireBus, bus);
    for (const ColourGroup& group : Groups) {
        const std::uint32_t rgb = PackedOf(material->*group.Colour);
        const int middle = group.X + GroupWidth / 2;
        if (group.Y == SingleY)
            DrawWire(SampleX + SampleRadius + gap, SampleY, group.X - gap, SampleY, rgb);
        else
            DrawWire(middle, labelTop, middle, WireBus - 2, rgb);
    }
}

/// What is seen through a transparent material.
void DrawChecks() {
    constexpr int side = 14, squares = 2 * SampleRadius / side;
    for (int row = 0; row < squares; ++row)
        for (int column = 0; column < squares; ++column) {
            const int x = SampleX - SampleRadius + column * side, y = SampleY - SampleRadius + row * side;
            gl::cpack((row + column) % 2 ? 0xFFB0B0B0 : 0xFF505050);
            gl::rectfi(x, y, x + side - 1, y + side - 1);
        }
}

void DrawSample() {
    Material* const material = CurrentMaterial();
    if (!material)
        return;
    DrawWires(material);
    SetLighting();
    if (material->Alpha < 1)
        DrawChecks();
    Blending(1);
    BindMaterial(material);
    Sweetie(SampleX, SampleY, SampleRadius, SampleDepth);
    Blending(0);
}

// ---- The window

void AddGroup(int index) {
    const ColourGroup& group = Groups[index];
    constexpr int labelGap = 8;
    for (int component = 0; component < 3; ++component)
        ColourSliders[index][component] = AddSlider({.X = group.X + component * SliderStep,
                                                     .Y = group.Y,
                                                     .Width = SliderWidth,
                                                     .Range = SliderRange,
                                                     .Flags = SliderSmallFont,
                                                     .Name = group.Names[component],
                                                     .Arg = NumberOf(index, component),
                                                     .Pressed = PressSlider,
                                                     .Moved = MoveSlider,
                                                     .Released = ReleaseSlider,
                                                     .Shade = ShadeOfComponent,
                                                     .Print = PrintSlideSmall});
    AddText(group.X + (GroupWidth - StringWidth(group.Label)) / 2, group.Y + SliderTop + labelGap, group.Label, 1);
}

Gadget* AddSingle(int x, const char* label, int number,
                  void (*print)(int x, int y, int width, int value, std::uint32_t colour)) {
    return AddSlider({.X = x,
                      .Y = SingleY,
                      .Width = SliderWidth,
                      .Range = SliderRange,
                      .Flags = SliderSmallFont,
                      .Label = label,
                      .Arg = number,
                      .Pressed = PressSlider,
                      .Moved = MoveSlider,
                      .Released = ReleaseSlider,
                      .Shade = WhiteShade,
                      .Print = print});
}

void AddGenerateButtons() {
    static constexpr const char* labels[] = {"Material", "Emissive", "Specular", "Diffuse", "Ambient"};
    static constexpr int step[] = {36};
    constexpr int bottom = 14, labelY = 200;
    AddText(RightColumn, labelY, msg(GenerateLabel), 1);
    AddButtons(RightColumn, bottom, MixerSize, ButtonsStacked | ButtonsOfGivenWidth, 5, labels, GenerateMaterial,
               nullptr, step);
}

void BuildEditor() {
    constexpr int nameX = 10, nameY = 405, nameWidth = 250, joinX = 290, joinY = 415;
    AddBackdrop();
    Kirvo_AddGadget(DrawSample, nullptr);
    for (int group = 0; group < GroupCount; ++group)
        AddGroup(group);
    ShineSlider = AddSingle(ShineX, "Shine", ShineNumber, PrintShininess);
    AlphaSlider = AddSingle(AlphaX, "Alpha", AlphaNumber, PrintSlideSmall);
    AddSpectrum(SpectrumBottom);
    AddMixer(RightColumn, MixerBottom);
    AddGenerateButtons();
    NameInput = AddTextInput({.X = nameX,
                              .Y = nameY,
                              .Width = nameWidth,
                              .Flags = TextSmallFont | TextReportsChanges | TextReportsDeactivation,
                              .Label = msg(NameLabel),
                              .Buffer = Name,
                              .Size = NameSize,
                              .Filter = PrintableFilter,
                              .Callback = TakeName});
    AddIntCheck(joinX, joinY, 0, CheckSmallFont, nullptr, JoinLabel, nullptr, &MatEditGang);
    RefreshMaterialEditor();
}

enum EditorItem : std::int16_t { UndoItem = 1, ResetItem = 2, ManualItem = 3 };

void DoPopupItem() {
    static constexpr MenuEntry menu[] = {
        {"Material", MenuEntryTitle, 0, 0, nullptr, nullptr},
        {"Undo", MenuEntryItem, UndoItem, -'Z', nullptr, nullptr},
        {"Reset", MenuEntrySeparated, ResetItem, 0, nullptr, nullptr},
        {"Read manual", MenuEntryLast, ManualItem, '?', nullptr, nullptr},
    };
    switch (DoPopup(menu)) {
    case UndoItem:
        return UndoMat();
    case ResetItem:
        return ResetMat();
    case ManualItem:
        return OpenManual(ManualPage);
    default:
        return;
    }
}

void CheckMatEdit(int device, short value) {
    if (device == gl::RIGHTMOUSE && value)
        DoPopupItem();
    else if (device == gl::KEYBD && value == CtrlCharacter('Z'))
        UndoMat();
}

} // namespace

const ToolWindow MaterialEditorWindow = {
    .Title = " Material editor ",
    .Handle = &MaterialEditor,
    .Width = Width,
    .Height = Height,
    .Place = {.Opened = &MaterialEditorOpened, .X = &MateditX, .Y = &MateditY},
    .Parent = &MaterialPalette,
    .Build = BuildEditor,
    .Event = CheckMatEdit,
    .ManualPage = ManualPage,
};

void OpenMaterialEditor() {
    if (!MaterialPalette)
        OpenMaterialPalette();
    OpenToolWindow(MaterialEditorWindow);
}

void RefreshMaterialEditor() {
    if (!MaterialEditor)
        return;
    ShowMaterialInEditor();
    StoreMaterialForUndo();
    StoreMaterialForReset();
}

void ShowMaterialInEditor() {
    if (!MaterialEditor)
        return;
    GetMaterialProps();
    DirtyToolWindow(MaterialEditorWindow);
}
