#include "structure/scene_clipboard.h"

#include "base/memory.h"
#include "interaction/scene_selection.h"
#include "store/accessors.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/walks.h"
#include "structure/scene_operations.h"
#include "structure/scene_positioning.h"

namespace {

constexpr int NothingSelected = 49, CannotDeleteRoot = 50, NothingToPasteOnto = 51, CannotPasteOnto = 52,
              NothingToPaste = 53;

/// Sets Copied of a branch: it and all below it are selected. What hangs below it has its flag.
void FlagWhenComplete(Branch* branch) {
    branch->Copied = branch->Selected;
    for (const Branch* child : Along<&Branch::Next>(branch->FirstChild))
        branch->Copied = branch->Copied && child->Copied;
}

void FlagCompletelySelected() {
    for (Branch* branch : EveryBranchBelow(Scene()))
        FlagWhenComplete(branch);
    FlagWhenComplete(Scene());
}

/// Copies of the topmost flagged branches, in the order of the scene; null when there is none.
Branch* CopiesOfFlagged() {
    Branch *first = nullptr, *last = nullptr;
    // The walk goes on below a branch that was copied, where all are flagged, too.
    for (Branch* branch : EveryBranch(Scene())) {
        if (!branch->Copied)
            continue;
        for (Branch* child : Along<&Branch::Next>(branch->FirstChild))
            child->Copied = 2;
        if (branch->Copied == 1)
            LinkedList<&Branch::Next, &Branch::Prev>::Append(first, last, CopyOfBranch(branch));
    }
    return first;
}

} // namespace

void CopyScene(int deselect) {
    if (!TellUnless(AnySceneSelected(), NothingSelected))
        return;
    FreeUpBranch(ScenePaste);
    FlagCompletelySelected();
    ScenePaste = CopiesOfFlagged();
    if (ScenePaste && ScenePaste->Next) {
        Branch* group = NewBranch();
        group->Name = CopyOfString(Mergeing ? "Merge" : "Paste");
        group->FirstChild = ScenePaste;
        ScenePaste->Parent = group;
        ScenePaste = group;
    }
    if (deselect)
        SelectScene(nullptr);
}

void CutScene() {
    if (!TellUnless(AnySceneSelected(), NothingSelected))
        return;
    CopySceneForUndo();
    CopyScene(0);
    if (!TellUnless(!Scene()->Selected, CannotDeleteRoot))
        return;
    // Children come first: a branch that has some left is not selected with all of them.
    for (Branch* branch : EveryBranchBelow(Scene()))
        if (branch->Selected && !branch->FirstChild)
            PruneBranch(branch);
    SelectScene(nullptr);
}

void PasteScene(int mustSelect, int centre) {
    if (!TellUnless(ScenePaste, NothingToPaste))
        return;
    Branch* target = SelectedBranch();
    if (!target && !mustSelect)
        target = Scene();
    if (!TellUnless(target, NothingToPasteOnto) || !TellUnless(!target->Object, CannotPasteOnto))
        return;
    CopySceneForUndo();
    Branch* branch = CopyOfBranch(ScenePaste);
    GraftBranch(branch, target);
    target->Collapsed = 0;
    PlaceNewBranch(branch, centre);
}
