#include "structure/scene_builder.h"

#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/manual.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/modal.h"
#include "gooey/pull_down.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/window.h"
#include "interaction/position_gizmo.h"
#include "interaction/scene_selection.h"
#include "platform/events.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "structure/scene_clipboard.h"
#include "structure/scene_operations.h"
#include "structure/scene_tree.h"
#include "views/display_flags.h"
#include "views/viewports.h"

#include <cctype>

Window* SceneBuilder;
int SceneBuilderX, SceneBuilderY, SceneBuilderW, SceneBuilderH, SceneBuilderOpened;
int SceneBuilderOpen;

namespace {

constexpr char ManualPage[] = "R_SceneBuilding";
constexpr char HideLabel[] = "Hide chosen branches";
/// Of the hide box, from the right edge, and the least width that leaves it beside the menus.
constexpr int HideBoxX = -172, HideBoxY = -26, RoomForMenus = 284;
/// Stands for the menu's entry that no key has.
constexpr int NewSceneCode = 256;

int SceneBuilderEnabled = 1;
/// The clipboard is shown in place of the scene.
int ShowingScenePaste;
Gadget *Tree, *HideBox;
/// The branch that was selected at the last drawing: another one is scrolled into sight.
const Branch* ShownSelection;

Branch* ShownTree() {
    return ShowingScenePaste ? ScenePaste : Scene();
}

void ConfigureSceneBuilder(Gadget* scroll) {
    int width, height;
    ConfigureScene(ShownTree(), width, height);
    ConfigureScroll(scroll, 0, 0, CurrentWindow->Width, CurrentWindow->Height - PullDownBarHeight, width, height);
    HideBox->Visible = CurrentWindow->Width + HideBoxX >= RoomForMenus;
    Branch* selected = SelectedBranch();
    if (selected && selected != ShownSelection && !ShowingScenePaste)
        ScrollToBranch(scroll, selected);
    ShownSelection = selected;
}

void DrawSceneBuilder(Gadget* scroll) {
    DrawSceneTree(ShownTree(), scroll);
    if (ShowingScenePaste && !ScenePaste)
        SmallText(ScrollOf(scroll).InnerX + 8, ScrollOf(scroll).InnerY + ScrollOf(scroll).InnerH - 20,
                  "The clipboard is empty.", LightGrey);
}

void ListBranches(const Gadget* scroll, std::vector<GadgetItem>& items) {
    ConfigureSceneBuilder(const_cast<Gadget*>(scroll));
    ListSceneItems(ShownTree(), scroll, items);
}

void HideChanged(GadgetArg) {
    DirtySceneWindows();
}

void SceneBuilderClick() {
    RedrawCurrentWindow();
    UseSceneArea(Tree);
    SceneHit = SceneHitNothing;
    if (!SceneSelect(Scene()))
        SelectScene(nullptr);
    // What was clicked is in sight.
    ShownSelection = SelectedBranch();
}

void ShowClipboardWhileHeld() {
    ShowingScenePaste = 1;
    const int x = ScrollOf(Tree).HOffset, y = ScrollOf(Tree).VOffset;
    RedrawCurrentWindow();
    TrackButton(gl::F12KEY, [] {});
    ShowingScenePaste = 0;
    if (!SceneBuilder)
        return;
    ScrollOf(Tree).HOffset = x;
    ScrollOf(Tree).VOffset = y;
    DirtyWindow(SceneBuilder);
}

/// The arrow keys go from branch to branch; to the left and right they also fold and unfold.
void GoTo(Branch* branch) {
    if (branch)
        SelectScene(branch);
}

void GoAlong(int direction) {
    GoTo(SelectedBranch() ? NeighbourInTree(Scene(), SelectedBranch(), direction) : Scene());
}

void SetFolded(Branch* branch, int folded) {
    branch->Collapsed = folded;
    DirtySceneBuilder();
}

void GoLeft() {
    Branch* branch = SelectedBranch();
    if (branch && branch->FirstChild && !branch->Collapsed)
        SetFolded(branch, 1);
    else if (branch)
        GoTo(ParentOfBranch(branch));
}

void GoRight() {
    Branch* branch = SelectedBranch();
    if (branch && branch->FirstChild && branch->Collapsed)
        SetFolded(branch, 0);
    else if (branch)
        GoTo(branch->FirstChild);
}

void SceneBuilderKey(int character) {
    switch (character < 128 ? std::tolower(character) : character) {
    case '?':
        return OpenManual(ManualPage);
    case 'a':
        return AddBranchAcross();
    case 'd':
        return AddBranchDown();
    case 'n':
        return RenameBranch();
    case 'o':
        return AttachObjectToBranch(1, 0);
    case CtrlCharacter('Z'):
        return UndoScene();
    case CtrlCharacter('X'):
        return CutScene();
    case CtrlCharacter('C'):
        return CopyScene(1);
    case CtrlCharacter('V'):
        return PasteScene(1, 0);
    case PageUpCharacter:
        return ShuffleBranchUp();
    case PageDownCharacter:
        return ShuffleBranchDown();
    case UpCharacter:
        return GoAlong(-1);
    case DownCharacter:
        return GoAlong(1);
    case LeftCharacter:
        return GoLeft();
    case RightCharacter:
        return GoRight();
    case F12Character:
        return ShowClipboardWhileHeld();
    case NewSceneCode:
        return ResetScene();
    default:
        break;
    }
}

struct MenuKey {
    int Item, Code;
};

constexpr MenuKey MenuKeys[] = {
    {326, 'a'},
    {327, 'd'},
    {328, 'o'},
    {87, NewSceneCode},
    {19, CtrlCharacter('Z')},
    {20, CtrlCharacter('X')},
    {21, CtrlCharacter('C')},
    {22, CtrlCharacter('V')},
    {329, 'n'},
    {330, PageUpCharacter},
    {331, PageDownCharacter},
    {122, '?'},
};

const MenuEntry CreateMenu[] = {
    {"Create", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Add branch across", MenuEntryItem, 326, 'A', nullptr, nullptr},
    {"Add branch down", MenuEntryItem, 327, 'D', nullptr, nullptr},
    {"Attach object to branch", MenuEntrySeparated, 328, 'O', nullptr, nullptr},
    {"New scene", MenuEntryLast, 87, 0, nullptr, nullptr},
};

const MenuEntry EditMenu[] = {
    {"Edit", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Undo", MenuEntrySeparated, 19, -'Z', nullptr, nullptr},
    {"Cut", MenuEntryItem, 20, -'X', nullptr, nullptr},
    {"Copy", MenuEntryItem, 21, -'C', nullptr, nullptr},
    {"Paste", MenuEntrySeparated, 22, -'V', nullptr, nullptr},
    {"Rename branch", MenuEntryLast, 329, 'N', nullptr, nullptr},
};

const MenuEntry RearrangeMenu[] = {
    {"Rearrange", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Move branch up", MenuEntryItem, 330, PageUpCharacter, nullptr, nullptr},
    {"Move branch down", MenuEntryLast, 331, PageDownCharacter, nullptr, nullptr},
};

const MenuEntry HelpMenu[] = {
    {"Help", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Read manual", MenuEntryLast, 122, '?', nullptr, nullptr},
};

const MenuEntry* const Menus[] = {CreateMenu, EditMenu, RearrangeMenu, HelpMenu, nullptr};

const MenuEntry PopupMenu[] = {
    {"Scene builder", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Create", MenuEntryItem, 0, 0, CreateMenu, nullptr},
    {"Edit", MenuEntryItem, 0, 0, EditMenu, nullptr},
    {"Rearrange", MenuEntrySeparated, 0, 0, RearrangeMenu, nullptr},
    {"Read manual", MenuEntryLast, 122, '?', nullptr, nullptr},
};

void CheckSceneBuilder(int device, short value) {
    if (device == gl::LEFTMOUSE && value == 1)
        SceneBuilderClick();
    else if (device == gl::RIGHTMOUSE && value == 1)
        DealWithSceneBuilderMenu(DoPopup(PopupMenu));
    else if (device == gl::KEYBD)
        SceneBuilderKey(value);
}

void BuildSceneBuilder() {
    AddBackdrop();
    AddMenuChopStart();
    ReserveRightOfBar(AddPullDownMenu(Menus, DealWithSceneBuilderMenu), 4);
    AddMenuChopEnd();
    Tree = AddSceneTree({ConfigureSceneBuilder, DrawSceneBuilder, ListBranches});
    // After the tree, whose configuration decides whether there is room for it.
    HideBox = AddCheckBox(HideBoxX, HideBoxY, 0, CheckSmallFont, nullptr, HideLabel, HideChanged, &HideScene);
    ShownSelection = nullptr;
}

void CloseSceneBuilder() {
    if (!PositionGizmoIsOpen())
        SelectScene(nullptr);
}

} // namespace

const ToolWindow SceneBuilderWindow = {
    .Title = " Scene builder",
    .Handle = &SceneBuilder,
    .Width = 480,
    .Height = 320,
    .Rules = {.LeastWidth = 240, .LeastHeight = 150},
    .Place = {.Opened = &SceneBuilderOpened,
              .X = &SceneBuilderX,
              .Y = &SceneBuilderY,
              .Width = &SceneBuilderW,
              .Height = &SceneBuilderH},
    .DisabledByTools = true,
    .Enabled = &SceneBuilderEnabled,
    .OpenAtStart = &SceneBuilderOpen,
    .Build = BuildSceneBuilder,
    .Event = CheckSceneBuilder,
    .Close = CloseSceneBuilder,
    .ManualPage = ManualPage,
};

void OpenSceneBuilder() {
    OpenToolWindow(SceneBuilderWindow);
}

void DirtySceneBuilder() {
    DirtyToolWindow(SceneBuilderWindow);
}

void DealWithSceneBuilderMenu(int choice) {
    for (const MenuKey& entry : MenuKeys)
        if (entry.Item == choice)
            SceneBuilderKey(entry.Code);
}
