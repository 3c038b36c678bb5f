#include "structure/plant_objects.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "interaction/picking.h"
#include "interaction/scene_selection.h"
#include "interaction/selection.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "structure/scene_operations.h"
#include "structure/scene_positioning.h"

#include <cstdlib>
#include <vector>

namespace {

constexpr int DeleteLastLabel = 71, BarTitle = 161, EmptyScene = 163;
constexpr std::int16_t Status[] = {162, 99, 0};
constexpr int BarTextY = -23, BarButtonY = -31, BarCheckY = -27;

/// Planted in this run, the newest last.
std::vector<Branch*> PlantList;
int PlantRandomTwist;
bool KeepsThem;

void PlantLeft(View* view) {
    double point[3];
    if (ClickSomewhere(view, nullptr, point, 0)) {
        Branch* branch = GrowBranch(Scene(), "Object");
        branch->Object = CurrentObject();
        branch->Transform = TranslationMatrix(point[0], point[1], point[2]);
        if (PlantRandomTwist)
            MultMatrix(YawMatrix(drand48() * 360), branch->Transform, branch->Transform);
        PlantList.push_back(branch);
        DirtySceneWindows();
    }
    FreeSceneSelectPoly();
}

void DeleteLastPlanted() {
    if (PlantList.empty())
        return;
    PruneBranch(PlantList.back());
    PlantList.pop_back();
    DirtySceneWindows();
}

int PlantKey(View*, int character) {
    if (character != EscapeCharacter && character != BackspaceCharacter)
        return 0;
    DeleteLastPlanted();
    return 1;
}

void BuildBar() {
    AddText(8, BarTextY, msg(BarTitle), 1);
    AddIntButtons(GooeyRight, BarButtonY, 0, ButtonsOfTextWidth | ButtonsSmallFont, 1, &DeleteLastLabel,
                  DeleteLastPlanted, nullptr, nullptr);
    AddCheckBox(GooeyRight, BarCheckY, 0, CheckSmallFont, nullptr, "Random twist", nullptr, &PlantRandomTwist);
}

void Leave() {
    if (!KeepsThem)
        UndoScene();
    FreePlantList();
}

const MenuEntry PlantMenu[] = {
    {"Plant object", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntrySeparated, 1, ' ', nullptr, nullptr},
    ViewEntry,
    LastSettingsEntry,
};

const Tool Planting = {
    .Left = PlantLeft,
    .Menu = PlantMenu,
    .Key = PlantKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .ManualPage = "R_PlantObject",
    .Done = [] { KeepsThem = true; },
    .HoldsWork = [] { return static_cast<int>(!PlantList.empty()); },
    .Leave = Leave,
};

} // namespace

void PlantObject() {
    if (!TellUnless(AnyObjectsInBranch(Scene()), EmptyScene))
        return;
    ShowSceneMode();
    SelectScene(nullptr);
    CopySceneForUndo();
    FreePlantList();
    KeepsThem = false;
    BeginTool(Planting);
}

void FreePlantList() {
    PlantList = {};
}
