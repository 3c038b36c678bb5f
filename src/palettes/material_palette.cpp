#include "palettes/material_palette.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/menu.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/modal.h"
#include "gooey/pull_down.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/selection.h"
#include "interaction/tool_protocol.h"
#include "materials/default_materials.h"
#include "materials/material_definitions.h"
#include "palettes/lighting_buttons.h"
#include "palettes/material_commands.h"
#include "palettes/material_editor.h"
#include "palettes/samples.h"
#include "platform/events.h"
#include "store/accessors.h"
#include "store/material_list.h"
#include "views/rendering_state.h"
#include "views/viewports.h"

Window* MaterialPalette;
int MatpalX, MatpalY, MatpalW, MatpalH, MaterialPaletteOpened;
int PaletteOpen;

namespace {

constexpr int EntryWidth = 74, EntryHeight = 91;
constexpr int SampleX = 37, SampleY = 54, SampleRadius = 30, SampleDepth = 5;
constexpr int PlateX = 3, PlateY = 6, PlateWidth = 68, PlateHeight = 17, NameY = 9;

constexpr int LeastWidth = 612, LeastHeight = 231;
/// When it is opened for the first time.
constexpr int FirstColumns = 8, FirstRows = 3;

constexpr int EditLabel = 25, RecolourLabel = 172, RelightLabel = 173, BothLabel = 175;
constexpr int LightSeparatelyLabel = 176, LightNormallyLabel = 177, MaskLabel = 3, LightingLabel = 180;
constexpr int EditColumnWidth = 326, LightingColumnX = 334;

/// The entry that is drawn is held down.
bool Pressed;

// ---- The entries

const Material* AsMaterial(const void* entry) {
    return static_cast<const Material*>(entry);
}

/// Under the sample; a name that is too long is cut off at the right.
void DrawName(const char* name, int x, int y) {
    const std::uint32_t background = BackgroundOf(CurrentWindow);
    SetColour(background);
    DrawBox(x + PlateX, y + PlateY, PlateWidth, PlateHeight, ShadeFull);
    const int width = SmallWidth(name);
    const ClipScope plate(x + PlateX, y + PlateY, PlateWidth, PlateHeight);
    SmallText(x + PlateX + (width <= PlateWidth ? (PlateWidth - width) / 2 : 0), y + NameY, name, White);
    SetColour(White);
}

void DrawEntry(void* entry, int x, int y) {
    const Material* material = AsMaterial(entry);
    if (Pressed)
        DimLight();
    BindMaterial(material);
    Sweetie(x + SampleX, y + SampleY, SampleRadius, SampleDepth);
    if (Pressed)
        NormalLight();
    DrawName(material->Name, x, y);
}

const PaletteEntries Entries = {
    .First = []() -> void* { return FirstMaterial(); },
    .Next = [](const void* entry) -> void* { return AsMaterial(entry)->Next; },
    .Current = []() -> void* { return CurrentMaterial(); },
    .SlotOf = [](void* entry) -> std::int32_t& { return static_cast<Material*>(entry)->PaletteSlot; },
    .NameOf = [](const void* entry) -> const char* { return AsMaterial(entry)->Name; },
    .Draw = DrawEntry,
    .Prepare = SetLighting,
};

void RedrawLightingButtons() {
    if (!MaterialPalette)
        return;
    const WindowScope window(MaterialPalette);
    const FrontBufferScope front;
    DrawLightingButtons();
}

// ---- Clicks

Material *Clicked, *CurrentBefore;

/// See DoDoubleClick.
int TakeClick(int released) {
    if (released) {
        RedrawCurrentSweetie();
        return 0;
    }
    Pressed = true;
    RedrawSweetie(Clicked);
    Pressed = false;
    SelectMaterial(Clicked);
    return Clicked != CurrentBefore;
}

void ClickMaterial() {
    Clicked = static_cast<Material*>(PaletteEntryAtPointer(MaterialPaletteGrid));
    if (!Clicked)
        return;
    CurrentBefore = CurrentMaterial();
    if (DoDoubleClick(TakeClick))
        OpenMaterialEditor();
}

// ---- The menus

enum MaterialItem : std::int16_t {
    CopyItem = 21,
    PasteItem = 22,
    UndoItem = 19,
    NewItem = 326,
    LoadItem,
    SaveItem,
    SaveDefaultItem,
    LoadOnNewItem,
    DeleteItem,
    DeleteUnusedItem,
    EditItem,
    FindItem,
    ManualItem
};

std::int32_t LoadOnNewCheck() {
    return SimpleMenuCheck(LoadMaterialsOnNew);
}

constexpr MenuEntry FileMenu[] = {
    {"File", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Create new material", MenuEntrySeparated, NewItem, InsertCharacter, nullptr, nullptr},
    {"Load palette", MenuEntryItem, LoadItem, 0, nullptr, nullptr},
    {"Save palette", MenuEntrySeparated, SaveItem, 0, nullptr, nullptr},
    {"Save as default palette", MenuEntryItem, SaveDefaultItem, 0, nullptr, nullptr},
    {"Load default palette on new", MenuEntrySeparated, LoadOnNewItem, 0, nullptr, LoadOnNewCheck},
    {"Delete selected material", MenuEntryItem, DeleteItem, 0, nullptr, nullptr},
    {"Delete all unused materials", MenuEntryLast, DeleteUnusedItem, 0, nullptr, nullptr},
};

constexpr MenuEntry EditMenu[] = {
    {"Edit", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Edit material", MenuEntrySeparated, EditItem, DoubleClickShortcut, nullptr, nullptr},
    {"Copy material", MenuEntryItem, CopyItem, -'C', nullptr, nullptr},
    {"Paste material", MenuEntrySeparated, PasteItem, -'V', nullptr, nullptr},
    {"Undo", MenuEntryLast, UndoItem, -'Z', nullptr, nullptr},
};

constexpr MenuEntry FindMenu[] = {
    {"Find", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Selected polygon's material", MenuEntryLast, FindItem, 0, nullptr, nullptr},
};

constexpr MenuEntry HelpMenu[] = {
    {"Help", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Read manual", MenuEntryLast, ManualItem, '?', nullptr, nullptr},
};

constexpr struct {
    MaterialItem Item;
    MaterialCommand Command;
} ItemCommands[] = {
    {NewItem, NewMaterialCommand},
    {LoadItem, LoadPaletteCommand},
    {SaveItem, SavePaletteCommand},
    {SaveDefaultItem, SaveDefaultPaletteCommand},
    {LoadOnNewItem, LoadOnNewCommand},
    {DeleteItem, DeleteMaterialCommand},
    {DeleteUnusedItem, DeleteUnusedCommand},
    {EditItem, EditMaterialCommand},
    {CopyItem, CopyMaterialCommand},
    {PasteItem, PasteMaterialCommand},
    {UndoItem, UndoMaterialCommand},
    {FindItem, FindMaterialCommand},
    {ManualItem, ManualCommand},
};

void ChooseItem(int item) {
    for (const auto& entry : ItemCommands)
        if (entry.Item == item)
            DoMaterialCommand(entry.Command);
}

// ---- The window

void AddLabel(int x, int message) {
    constexpr int y = 112;
    AddText(x, y, msg(message), 1);
}

void BuildPalette() {
    static const MenuEntry* const menus[] = {FileMenu, EditMenu, FindMenu, HelpMenu, nullptr};
    static constexpr int applyLabels[] = {RecolourLabel, RelightLabel, BothLabel};
    static constexpr int lightLabels[] = {LightSeparatelyLabel, LightNormallyLabel};
    constexpr int applyY = 75, lightY = 42, maskY = 12, labelX = 8;
    AddBackdrop();
    AddPullDownMenu(menus, ChooseItem);
    AddPaletteGrid(MaterialPaletteGrid);
    AddLabel(labelX, EditLabel);
    AddIntButtons(0, applyY, EditColumnWidth, ButtonsSmallFont, 3, applyLabels, ApplyMaterialButton, nullptr, nullptr);
    AddIntButtons(0, lightY, EditColumnWidth, ButtonsSmallFont, 2, lightLabels, LightGroupButton, nullptr, nullptr);
    AddIntCheck(0, maskY, EditColumnWidth, 0, nullptr, MaskLabel, nullptr, &MaskPolygonSelections);
    AddLabel(LightingColumnX, LightingLabel);
    AddLightingButtons();
    KeepForUndo(CurrentMaterial());
}

void PaletteEvent(int device, short value) {
    if (device == gl::LEFTMOUSE && value)
        ClickMaterial();
    else if (device == gl::KEYBD)
        DoMaterialCommand(value);
}

} // namespace

PaletteGrid MaterialPaletteGrid = {.EntryWidth = EntryWidth, .EntryHeight = EntryHeight, .Entries = &Entries};

const ToolWindow MaterialPaletteWindow = {
    .Title = " Material palette ",
    .Handle = &MaterialPalette,
    .Width = PaletteFudgeX + FirstColumns * EntryWidth,
    .Height = PaletteFudgeY + FirstRows * EntryHeight,
    .Rules = {.LeastWidth = LeastWidth,
              .LeastHeight = LeastHeight,
              .StepX = EntryWidth,
              .StepY = EntryHeight,
              .FudgeX = PaletteFudgeX,
              .FudgeY = PaletteFudgeY},
    .Place = {.Opened = &MaterialPaletteOpened, .X = &MatpalX, .Y = &MatpalY, .Width = &MatpalW, .Height = &MatpalH},
    .OpenAtStart = &PaletteOpen,
    .Build = BuildPalette,
    .Event = PaletteEvent,
    .Close = [] { MaskPolygonSelections = 0; },
    .ManualPage = MaterialPalettePage,
};

void OpenMaterialPalette() {
    OpenToolWindow(MaterialPaletteWindow);
}

void RedrawSweetie(Material* material) {
    RedrawPaletteEntry(MaterialPaletteGrid, material);
}

void RedrawCurrentSweetie() {
    RedrawSweetie(CurrentMaterial());
    RedrawLightingButtons();
}

void SelectMaterial(Material* material) {
    Material* const before = CurrentMaterial();
    if (material == before)
        return;
    CurrentMaterial() = material;
    if (before) {
        MovePaletteHighlight(MaterialPaletteGrid, before, material);
        RedrawLightingButtons();
    } else {
        RedefineMaterials();
        DirtyToolWindow(MaterialPaletteWindow);
    }
    KeepForUndo(material);
    RefreshMaterialEditor();
    if (DirtyOnMaterialChange)
        DirtyModelWindows();
    DirtyOtherMatThings();
}

void MaterialsWereRedefined() {
    DirtyToolWindow(MaterialPaletteWindow);
    if (!KeptForUndo(CurrentMaterial()))
        KeepForUndo(CurrentMaterial());
    RefreshMaterialEditor();
}
