#include "structure/structure_editor.h"

#include "base/slots.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/label.h"
#include "gooey/list_gadget.h"
#include "gooey/manual.h"
#include "gooey/menu.h"
#include "gooey/numeric_panel.h"
#include "gooey/pointer.h"
#include "gooey/program_pictures.h"
#include "gooey/pull_down.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/text_filters.h"
#include "gooey/window.h"
#include "interaction/selection_sets.h"
#include "platform/events.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/undo.h"
#include "store/walks.h"
#include "structure/lod_setup.h"
#include "structure/structure_operations.h"
#include "structure/structure_slots.h"
#include "structure/structure_windows.h"
#include "views/display_flags.h"
#include "views/traversal.h"
#include "views/viewports.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <string>

Window* StructureEditor;
int StructX, StructY, StructureEditorOpened;
int StructureOpen;

namespace {

constexpr char ManualPage[] = "R_StructureEditor";
constexpr int WindowWidth = 300;
/// Of the window without the field, and what a screen leaves free above and below a window that is higher than it.
constexpr int HeightOfRest = 712, FreeOfScreen = 40;
constexpr int EyeWidth = EyeSize + 2;

int StructureEditorEnabled = 1;
NumericFields DistanceField;
/// What the field shows the distance of.
const Lod* LodInField;

// ---- the menu bar
enum StructureItem {
    NewSubObjectItem = 326,
    RenameSubObjectItem,
    DeleteSubObjectItem,
    AttachItem,
    NewLodItem,
    RenameLodItem,
    DeleteLodItem,
    AddToLodItem,
    RemoveFromLodItem,
    MoveUpItem,
    MoveDownItem,
    SetDistancesItem,
    FindItem,
    ManualItem = 122,
};

std::int32_t NeedsLod() {
    return SelectedLod() ? 0 : MenuDisabled;
}

std::int32_t NeedsMember() {
    return LodBeadOf(SelectedLod(), SelectedSubObject()) ? 0 : MenuDisabled;
}

std::int32_t NeedsOutsider() {
    return SelectedLod() && !LodBeadOf(SelectedLod(), SelectedSubObject()) ? 0 : MenuDisabled;
}

constexpr MenuEntry SubObjectMenu[] = {
    {"Sub object", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"New sub object", MenuEntryItem, NewSubObjectItem, 0, nullptr, nullptr},
    {"Rename sub object", MenuEntryItem, RenameSubObjectItem, 0, nullptr, nullptr},
    {"Delete sub object", MenuEntrySeparated, DeleteSubObjectItem, 0, nullptr, nullptr},
    {"Attach selected polygons", MenuEntryLast, AttachItem, 'P', nullptr, nullptr},
};

constexpr MenuEntry LodMenu[] = {
    {"LOD", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"New LOD", MenuEntryItem, NewLodItem, 0, nullptr, nullptr},
    {"Rename LOD", MenuEntryItem, RenameLodItem, 0, nullptr, NeedsLod},
    {"Delete LOD", MenuEntrySeparated, DeleteLodItem, 0, nullptr, NeedsLod},
    {"Add sub object to LOD", MenuEntryItem, AddToLodItem, 'A', nullptr, NeedsOutsider},
    {"Remove sub object from LOD", MenuEntrySeparated, RemoveFromLodItem, 'R', nullptr, NeedsMember},
    {"Move sub object up", MenuEntryItem, MoveUpItem, PageUpCharacter, nullptr, NeedsMember},
    {"Move sub object down", MenuEntrySeparated, MoveDownItem, PageDownCharacter, nullptr, NeedsMember},
    {"Set switching distances", MenuEntryLast, SetDistancesItem, 0, nullptr, nullptr},
};

constexpr MenuEntry FindMenu[] = {
    {"Find", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Selected polygons subobject", MenuEntryLast, FindItem, 0, nullptr, nullptr},
};

constexpr MenuEntry HelpMenu[] = {
    {"Help", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Read manual", MenuEntryLast, ManualItem, '?', nullptr, nullptr},
};

constexpr const MenuEntry* Menus[] = {SubObjectMenu, LodMenu, FindMenu, HelpMenu, nullptr};

void AttachPolygons() {
    CallSlot(TheStructureSlots.AttachSelectedPolys);
    RedrawStructure();
}

void HandleStructureMenu(int choice) {
    static constexpr void (*operations[])() = {
        AddNewSubObject,
        RenameSubObject,
        DeleteSelectedSubObject,
        AttachPolygons,
        AddNewLod,
        RenameLod,
        DeleteSelectedLod,
        AddSubObjectToLod,
        RemoveSubObjectFromLod,
        ShuffleSubObjectUp,
        ShuffleSubObjectDown,
        DoLodSetup,
        FindSelectedPolygonsSubObject,
    };
    if (choice == ManualItem)
        OpenManual(ManualPage);
    else if (choice >= NewSubObjectItem && choice <= FindItem)
        operations[choice - NewSubObjectItem]();
}

// ---- keys
int StructKey(int character) {
    switch (character < 128 ? std::tolower(character) : character) {
    case '?':
        OpenManual(ManualPage);
        return 1;
    case 'a':
        AddSubObjectToLod();
        return 1;
    case 'p':
        AttachPolygons();
        return 1;
    case 'r':
        RemoveSubObjectFromLod();
        return 1;
    case PageUpCharacter:
        ShuffleSubObjectUp();
        return 1;
    case PageDownCharacter:
        ShuffleSubObjectDown();
        return 1;
    case CtrlCharacter('Z'):
        Undo();
        return 1;
    default:
        return 0;
    }
}

void TakeEvent(int device, short value) {
    if (device == gl::KEYBD)
        StructKey(value);
}

// ---- the three lists
bool ShiftHeld() {
    return LeftShift || RightShift;
}

void FillSubObjects(std::vector<ListRow>& rows) {
    FirstSubObject();
    const SubObject* selected = SelectedSubObject();
    for (const SubObject* subObject : EverySubObject(CurrentObject()))
        rows.push_back({.Label = subObject->Name, .Record = subObject, .On = subObject == selected});
}

/// The record that a row stands for; null: it is gone.
template <class Walk>
auto RecordOf(const ListRow& row, Walk walk) -> decltype(*walk.begin()) {
    for (auto* record : walk)
        if (record == row.Record)
            return record;
    return nullptr;
}

void ChooseSubObject(const ListRow& row) {
    SubObject* subObject = RecordOf(row, EverySubObject(CurrentObject()));
    if (!subObject)
        return;
    if (LodBeadOf(SelectedLod(), subObject) && !ShiftHeld())
        SelectedSubObject() = subObject;
    else
        SelectSubObject(subObject);
    RedrawStructure();
}

void OpenSubObject(const ListRow& row) {
    ChooseSubObject(row);
    RenameSubObject();
}

void FillLods(std::vector<ListRow>& rows) {
    FirstLod();
    ClampLodDistances();
    const Lod* selected = SelectedLod();
    for (const Lod* lod : EveryLod(CurrentObject()))
        rows.push_back({.Label = lod->Name, .Record = lod, .On = lod == selected});
}

void ChooseLod(const ListRow& row) {
    Lod* lod = RecordOf(row, EveryLod(CurrentObject()));
    if (!lod)
        return;
    SelectedLod() = lod;
    DeselectEverything();
    RedrawStructure();
}

void OpenLod(const ListRow& row) {
    ChooseLod(row);
    RenameLod();
}

void FillContents(std::vector<ListRow>& rows) {
    const Lod* lod = SelectedLod();
    if (!lod)
        return;
    const SubObject* selected = SelectedSubObject();
    for (const LodBead* bead : EveryLodBead(lod))
        rows.push_back({.Label = bead->SubObject->Name,
                        .Record = bead,
                        .On = bead->SubObject == selected,
                        .Dim = HideSubObjects && !bead->Shown});
}

LodBead* MemberOf(const ListRow& row) {
    return SelectedLod() ? RecordOf(row, EveryLodBead(SelectedLod())) : nullptr;
}

void ChooseMember(const ListRow& row) {
    const LodBead* bead = MemberOf(row);
    if (!bead)
        return;
    SelectSubObject(bead->SubObject);
    RedrawStructure();
}

void OpenMember(const ListRow& row) {
    ChooseMember(row);
    RenameSubObject();
}

void MoveMember(const ListRow& row, int before) {
    if (LodBead* bead = MemberOf(row))
        MoveLodBead(bead, before);
}

std::string TextWithoutMembers() {
    return SelectedLod() ? "(empty: A adds the sub object)" : "(no level is selected)";
}

void ClickBesideMembers() {
    DeselectAllPolygons();
    RedrawStructure();
}

void DrawEye(const ListRow& row, const GadgetBox& box, std::uint32_t) {
    const auto draw = static_cast<const LodBead*>(row.Record)->Shown ? DrawOpenEye : DrawClosedEye;
    draw(box.X, box.Y + (box.Height - EyeSize) / 2);
}

void ToggleEye(const ListRow& row) {
    LodBead* bead = MemberOf(row);
    if (!bead)
        return;
    bead->Shown = !bead->Shown;
    RedrawStructure();
}

constexpr ListMark Eyes[] = {{.Width = EyeWidth, .Draw = DrawEye, .Label = "eye", .Click = ToggleEye}};

/// Page Up and Down move the sub-object, so that only the arrows walk a list.
int KeyOfStructureList(Gadget* list, int character) {
    const ScrollWindow& s = ScrollOf(list);
    const bool walks = character == UpCharacter || character == DownCharacter;
    return walks && MouseInBox(s.X, s.Y, s.W, s.H) ? MoveInList(list, character) : 0;
}

void AddStructureList(const ListSpec& spec) {
    AddList(spec)->KeyFn = KeyOfStructureList;
}

// ---- the switching distance
const char* DistanceText(int) {
    static char text[NumberTextSize];
    text[0] = '\0';
    if (SelectedLod())
        std::snprintf(text, sizeof text, "%.1f", UsableLodDistance(SelectedLod()->Distance));
    return text;
}

bool ApplyDistance(int, double distance) {
    if (!SelectedLod())
        return false;
    SetLodDistance(distance);
    ShowNumbers(DistanceField, true, true);
    return true;
}

/// Letters are the window's commands while the field is active, too.
int DistanceFilter(int& character, int position, const char* text) {
    if (character == '.' || character == ',' || (character >= '0' && character <= '9'))
        return PositiveFPFilter(character, position, text);
    StructKey(character);
    return 0;
}

void RefuseDistance(int) {
    gl::ringbell();
}

NumberInput DistanceInput[1];

const NumericPanel DistancePanel = {
    .Inputs = DistanceInput,
    .Text = DistanceText,
    .Apply = ApplyDistance,
    .Unreadable = RefuseDistance,
    .Filter = DistanceFilter,
    .Return = AfterReturn::Leave,
    .TextSize = 16,
};

void ShowLodDistance() {
    if (!SelectedLod())
        DeactivateText(DistanceField.Inputs[0]);
    ShowNumbers(DistanceField, SelectedLod() != LodInField, false);
    LodInField = SelectedLod();
}

// ---- the window
int FullHeight() {
    return InputHeight(0) + HeightOfRest;
}

void Measure(int& width, int& height) {
    width = WindowWidth;
    height = std::min(FullHeight(), vres + 1 - FreeOfScreen);
}

void Draw() {
    ShowLodDistance();
    DrawGooeyWindow();
}

void ShowHiding(GadgetArg) {
    RedrawStructure();
}

void Build() {
    // On a low screen the upper and the lower list give way.
    const int missing = FullHeight() - CurrentWindow->Height, upper = missing / 2, lower = missing - upper;
    const int field = 261 - lower, rest = field + InputHeight(0);
    DistanceInput[0] = {.X = 8, .Y = field, .Width = WindowWidth - 12, .Flags = 0, .Label = "LOD switch distance (m):"};
    AddBackdrop();
    AddPullDownMenu(Menus, HandleStructureMenu);
    AddText(8, rest + 394 - upper, "Sub objects defined:", 1);
    AddStructureList({.Box = {0, rest + 136, WindowWidth, 250 - upper},
                      .Fill = FillSubObjects,
                      .Choose = ChooseSubObject,
                      .Open = OpenSubObject});
    AddText(8, rest + 114, "Levels of detail defined:", 1);
    AddStructureList({.Box = {0, rest, WindowWidth, 106}, .Fill = FillLods, .Choose = ChooseLod, .Open = OpenLod});
    AddNumericPanel(DistancePanel, DistanceField);
    AddText(8, field - 26, "Current level of detail contains:", 1);
    AddStructureList({.Box = {0, 25, WindowWidth, 202 - lower},
                      .Fill = FillContents,
                      .Marks = Eyes,
                      .Choose = ChooseMember,
                      .Open = OpenMember,
                      .ClickBeside = ClickBesideMembers,
                      .Move = MoveMember,
                      .TextWhenEmpty = TextWithoutMembers});
    AddCheckBox(4, 4, 0, 0, nullptr, "Hide chosen subobjects", ShowHiding, &HideSubObjects);
    StructureEditorIsOpen = 1;
    DirtyModelWindows();
}

void Close() {
    DistanceField = {};
    LodInField = nullptr;
    StructureEditorIsOpen = 0;
    DirtyModelWindows();
}

} // namespace

const ToolWindow StructureEditorWindow = {
    .Title = " Object Structure",
    .Handle = &StructureEditor,
    .Measure = Measure,
    .Place = {.Opened = &StructureEditorOpened, .X = &StructX, .Y = &StructY},
    .DisabledByTools = true,
    .Enabled = &StructureEditorEnabled,
    .OpenAtStart = &StructureOpen,
    .Build = Build,
    .Draw = Draw,
    .Event = TakeEvent,
    .Close = Close,
    .ManualPage = ManualPage,
};

void OpenStructureEditor() {
    OpenToolWindow(StructureEditorWindow);
}
