#include "files/merge_window.h"

#include "files/merge.h"
#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/keyboard_walk.h"
#include "gooey/label.h"
#include "gooey/list_gadget.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/window.h"
#include "interaction/scene_selection.h"
#include "platform/events.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "store/walks.h"
#include "structure/scene_tree.h"
#include "views/traversal.h"

#include <algorithm>
#include <cstdio>

Window* Merge;
int MergeX, MergeY, MergeW, MergeH, MergeOpened;

namespace {

constexpr int FirstWidth = 560, FirstHeight = 400, LeastHeight = 250;
constexpr int ButtonsStrip = 36, ButtonsY = 8, ButtonHeight = 25;
/// The objects get half of the window, up to this width.
constexpr int WidestObjects = 200;

char MergeTitle[160];
int MergeEnabled = 1;
Gadget *ScenePane, *ObjectPane;

/// The merge file is worked on, and shows its selection whatever the main scene's is, for the length of a scope.
class InMergeScene {
  public:
    InMergeScene() : WasNone(NoSceneSelection) {
        PointToMerge(1);
        NoSceneSelection = 0;
    }

    ~InMergeScene() {
        PointToMerge(0);
        NoSceneSelection = WasNone;
    }

    InMergeScene(const InMergeScene&) = delete;
    InMergeScene& operator=(const InMergeScene&) = delete;

  private:
    const int WasNone;
};

int SceneWidth() {
    const int width = CurrentWindow->Width;
    return std::max(width / 2, width - WidestObjects);
}

GadgetBox PlaceOfObjects() {
    const int left = SceneWidth();
    return {left, ButtonsStrip, CurrentWindow->Width - left, CurrentWindow->Height - ButtonsStrip};
}

// ---- the scene
void ConfigureScenePane(Gadget* pane) {
    const InMergeScene merge;
    int width, height;
    ConfigureScene(Scene(), width, height);
    ConfigureScroll(pane, 0, ButtonsStrip, SceneWidth(), CurrentWindow->Height - ButtonsStrip, width, height);
}

void DrawScenePane(Gadget* pane) {
    const InMergeScene merge;
    DrawSceneTree(Scene(), pane);
}

void ListScenePane(const Gadget* pane, std::vector<GadgetItem>& items) {
    ConfigureScenePane(const_cast<Gadget*>(pane));
    const InMergeScene merge;
    ListSceneItems(Scene(), pane, items);
}

/// The first object that is picked comes into sight.
void ShowPickedObject() {
    int row = 0;
    for (const Object* object : EveryObject(MergeFile)) {
        if (object->MergeMark)
            return ShowListRow(ObjectPane, row);
        ++row;
    }
}

void CheckMergeScene() {
    RedrawCurrentWindow();
    UseSceneArea(ScenePane);
    SceneHit = SceneHitNothing;
    {
        const InMergeScene merge;
        SceneSelect(Scene());
        if (SceneHit == SceneHitNothing)
            SelectScene(nullptr);
    }
    // Opening a branch changes no picks.
    if (SceneHit != SceneHitMark) {
        PickObjectsOfSelectedBranches();
        ShowPickedObject();
    }
    DirtyCurrentWindow();
}

// ---- the objects
void FillObjects(std::vector<ListRow>& rows) {
    for (const Object* object : EveryObject(MergeFile))
        rows.push_back({.Label = object->Name, .Record = object, .On = object->MergeMark != 0});
}

void ToggleObject(const ListRow& row) {
    for (Object* object : EveryObject(MergeFile))
        if (object == row.Record)
            object->MergeMark = !object->MergeMark;
    if (row.On) {
        const InMergeScene merge;
        for (Branch* branch : EveryBranch(Scene()))
            if (branch->Object == row.Record)
                branch->Selected = 0;
    }
    DirtyCurrentWindow();
}

std::string NoObjects() {
    return "No objects";
}

// ---- the window
void PickOrUnpickAll() {
    PickAllMergeObjects(ButtonChoice == 0);
    DirtyWindow(Merge);
}

void DoMerge() {
    if (ButtonChoice == 1)
        MergePickedObjects();
    CloseToolWindow(MergeWindow);
}

void CheckMerge(int device, short value) {
    if (device == gl::LEFTMOUSE && value == 1) {
        const ScrollWindow& pane = ScrollOf(ScenePane);
        if (MouseInBox(pane.InnerX, pane.InnerY, pane.InnerW, pane.InnerH))
            CheckMergeScene();
    } else if (device == gl::KEYBD && (value == ReturnCharacter || value == EscapeCharacter)) {
        ButtonChoice = value == ReturnCharacter;
        DoMerge();
    }
}

void BuildMergeWindow() {
    AddBackdrop();
    ScenePane = AddSceneTree({ConfigureScenePane, DrawScenePane, ListScenePane});
    ObjectPane = AddList({.Box = PlaceOfObjects(),
                          .Place = PlaceOfObjects,
                          .SeveralOn = true,
                          .Fill = FillObjects,
                          .Click = ToggleObject,
                          .TextWhenEmpty = NoObjects});
    static constexpr const char* picks[] = {"Select all objects", "Deselect everything"};
    AddButtons(8, ButtonsY, 0, ButtonsOfTextWidth | ButtonsSmallFont, 2, picks, PickOrUnpickAll, nullptr, nullptr);
    static constexpr const char* ends[] = {"Cancel", "Merge"};
    static constexpr int boxes[] = {-184, ButtonsY, 84, ButtonHeight, -92, ButtonsY, 84, ButtonHeight};
    SetDefaultButton(AddButtons(-1, 0, 0, ButtonsOfGivenBoxes | ButtonsSmallFont, 2, ends, DoMerge, nullptr, boxes), 1);
}

/// Nothing of the merge file is left when the window has gone.
void EmptyMergeFile() {
    const int workSaved = WorkSaved;
    PointToMerge(1);
    ResetStorage();
    PointToMerge(0);
    WorkSaved = workSaved;
}

} // namespace

const ToolWindow MergeWindow = {
    .Title = MergeTitle,
    .Handle = &Merge,
    .Width = FirstWidth,
    .Height = FirstHeight,
    .Rules = {.LeastWidth = FirstWidth, .LeastHeight = LeastHeight},
    .Place = {.Opened = &MergeOpened, .X = &MergeX, .Y = &MergeY, .Width = &MergeW, .Height = &MergeH},
    .DisabledByTools = true,
    .Enabled = &MergeEnabled,
    .Build = BuildMergeWindow,
    .Event = CheckMerge,
    .Closed = EmptyMergeFile,
    .ManualPage = "R_Merge",
};

Window* OpenMergeWindow(const char* name) {
    if (!Merge)
        std::snprintf(MergeTitle, sizeof MergeTitle, " Merge - %s", name);
    return OpenToolWindow(MergeWindow);
}
