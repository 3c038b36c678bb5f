#include "structure/scene_operations.h"

#include "base/debug.h"
#include "base/memory.h"
#include "gooey/messages.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/scene_selection.h"
#include "store/accessors.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/scene_extent.h"
#include "store/storage.h"
#include "store/walks.h"
#include "structure/name_prompt.h"
#include "structure/scene_positioning.h"
#include "structure/structure_windows.h"
#include "views/grid.h"
#include "views/scene_views.h"
#include "views/traversal.h"
#include "views/viewports.h"

namespace {

constexpr int NothingToGoAcrossFrom = 44, NothingToGoDownFrom = 45, NothingToAttachTo = 46, CannotGoAcross = 47,
              CannotGoDown = 48, NothingSelected = 49, CannotRename = 54, NothingPlaced = 55;

using Siblings = LinkedList<&Branch::Next, &Branch::Prev>;

void SetName(Branch* branch, const char* name) {
    if (branch->Name)
        Free(branch->Name);
    branch->Name = CopyOfString(name);
}

Branch* Grow(Branch* place, int direction, const char* name) {
    Branch* branch = AddBranch(place, direction);
    SetName(branch, name);
    if (direction == BranchAsChild)
        place->Collapsed = 0;
    return branch;
}

void AddSelectedGroup(int direction) {
    CopySceneForUndo();
    SelectScene(Grow(SelectedBranch(), direction, "Unnamed"));
    DirtySceneWindows();
}

/// Exchanges a branch with its next sibling; only the first of a list knows the parent.
void ExchangeWithNext(Branch* branch) {
    Branch* parent = ParentOfBranch(branch);
    parent->FirstChild->Parent = nullptr;
    Siblings::ExchangeWithNext(parent->FirstChild, branch);
    parent->FirstChild->Parent = parent;
}

void Shuffle(Branch* Branch::*direction) {
    Branch* branch = SelectedBranch();
    if (!TellUnless(branch, NothingSelected) || !(branch->*direction))
        return;
    CopySceneForUndo();
    ExchangeWithNext(direction == &Branch::Next ? branch : branch->Prev);
    DirtyWindow(SceneBuilder);
}

/// Removes the branches below a root that show the object; how many.
int PruneReferences(Branch*& root, const Object* object) {
    if (!root)
        return 0;
    int pruned = 0;
    for (Branch* branch : EveryBranchBelow(root))
        if (branch->Object == object) {
            PruneBranch(branch);
            ++pruned;
        }
    return pruned;
}

bool IsInScene(const Branch* branch) {
    for (const Branch* each : EveryBranch(Scene()))
        if (each == branch)
            return true;
    return false;
}

NameAnswer TakeBranchName(const char* name) {
    if (SelectedBranch())
        ChangeBranchName(name);
    return NameAnswer::Accepted;
}

} // namespace

Branch* GrowBranch(Branch* place, const char* name) {
    return Grow(place, place->Object ? BranchAsSibling : BranchAsChild, name);
}

bool TellUnless(bool condition, int message) {
    if (!condition)
        TellUser(message);
    return condition;
}

void DirtySceneWindows() {
    DirtyModelWindows();
    DirtyWindow(SceneBuilder);
}

void AddBranchAcross() {
    if (TellUnless(SelectedBranch(), NothingToGoAcrossFrom) && TellUnless(!SelectedBranch()->Object, CannotGoAcross))
        AddSelectedGroup(BranchAsChild);
}

void AddBranchDown() {
    if (TellUnless(SelectedBranch(), NothingToGoDownFrom) && TellUnless(SelectedBranch() != Scene(), CannotGoDown))
        AddSelectedGroup(BranchAsSibling);
}

void AttachObjectToBranch(int mustSelect, int viewIndex) {
    Branch* target = SelectedBranch();
    if (!target && !mustSelect)
        target = Scene();
    if (!TellUnless(target, NothingToAttachTo))
        return;
    ShowSceneMode();
    SceneRadius();
    ValidateView(viewIndex);
    CopySceneForUndo();
    Branch* branch = GrowBranch(target, "Object");
    branch->Object = CurrentObject();
    branch->Transform = SceneView[viewIndex].GridMatrix;
    if (!LastSceneRadValid)
        DevalidateSceneViews(); // the first object has them fitted to it
    GridVisible = 1;
    PlaceNewBranch(branch, 0);
}

void AddSceneObject() {
    const int viewport = ViewportNumber(CurrentWindow);
    if (viewport >= 0)
        AttachObjectToBranch(0, viewport);
}

void ReplaceObjectInScene() {
    if (!TellUnless(AnySceneSelected(), NothingSelected) ||
        !TellUnless(CountSceneObjectSelections() > 0, NothingPlaced))
        return;
    CopySceneForUndo();
    for (Branch* branch : EveryBranch(Scene()))
        if (branch->Selected && branch->Object)
            branch->Object = CurrentObject();
    SceneChangedSize = 1;
    DirtySceneWindows();
}

void CentraliseScene() {
    SceneRadius();
    const double *min, *max;
    GetSceneBox(min, max);
    CopySceneForUndo();
    const Matrix move = TranslationMatrix(-(min[0] + max[0]) / 2, -(min[1] + max[1]) / 2, -min[2]);
    for (Branch* branch : EveryBranch(Scene()))
        if (branch->Object)
            MultMatrix(branch->Transform, move, branch->Transform);
    SceneChangedSize = 1;
    DirtySceneWindows();
}

void KillObjectReferences(Object* object) {
    int pruned = PruneReferences(CurrentFile->Scene, object);
    if (CurrentFile->Scene && CurrentFile->Scene->Object == object)
        CurrentFile->Scene->Object = nullptr;
    Trace("%d branches pruned\n", pruned);
    if (pruned && CurrentFile->SelectedBranch && !IsInScene(CurrentFile->SelectedBranch))
        SelectScene(nullptr);
    // Branches may be selected without one that is the selected branch.
    if (pruned)
        NoSceneSelection = !AnySceneSelected();
    FreeUpBranch(SceneUndo);
    SceneUndo = nullptr;
    PruneReferences(ScenePaste, object);
    if (ScenePaste && (ScenePaste->Object == object || (!ScenePaste->Object && !ScenePaste->FirstChild))) {
        FreeUpBranch(ScenePaste);
        ScenePaste = nullptr;
    }
}

void RenameBranch() {
    Branch* branch = SelectedBranch();
    if (TellUnless(branch, NothingSelected) && TellUnless(!branch->Object, CannotRename))
        PromptForName("Enter new name for branch:", branch->Name, nullptr, TakeBranchName, SceneBuilder);
}

void ChangeBranchName(const char* name) {
    CopySceneForUndo();
    SetName(SelectedBranch(), name);
    SelectScene(nullptr);
    DirtySceneWindows();
}

void ShuffleBranchUp() {
    Shuffle(&Branch::Prev);
}

void ShuffleBranchDown() {
    Shuffle(&Branch::Next);
}

void ResetScene() {
    CopySceneForUndo();
    NewScene();
    SelectScene(nullptr);
    DirtySceneWindows();
}
