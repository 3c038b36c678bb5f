#include "interaction/scene_selection.h"

#include "base/slots.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/traversal.h"
#include "views/viewports.h"

namespace {

/// True when the condition holds for the branch and all below it.
template <class Condition>
bool HoldsForSubtree(Branch* branch, Condition condition) {
    if (!condition(branch))
        return false;
    for (const Branch* descendant : EveryBranchBelow(branch))
        if (!condition(descendant))
            return false;
    return true;
}

} // namespace

void SelectScene(Branch* branch) {
    ScanScene(Scene(), SceneDeselector);
    if (branch)
        ScanScene(branch, SceneSelector);
    if (Mergeing)
        return;
    SelectedBranch() = branch;
    NoSceneSelection = branch == nullptr;
    DirtyModelWindows();
    CallSlot(TheSceneSlots.DirtySceneBuilder);
}

void SceneSelector(Branch* branch) {
    branch->Selected = 1;
}

void SceneDeselector(Branch* branch) {
    branch->Selected = 0;
}

int AnySceneSelected() {
    for (const Branch* branch : EveryBranch(Scene()))
        if (branch->Selected)
            return 1;
    return 0;
}

int CountSceneObjectSelections() {
    int count = 0;
    for (const Branch* branch : EveryBranch(Scene()))
        count += branch->Selected && branch->Object;
    return count;
}

int BranchCompletelySelected(Branch* branch) {
    return HoldsForSubtree(branch, [](const Branch* each) { return each->Selected != 0; });
}

int AnyObjectsInBranch(Branch* branch) {
    return !HoldsForSubtree(branch, [](const Branch* each) { return !each->Object; });
}
