#include "store/scene.h"

#include "base/exit.h"
#include "base/memory.h"
#include "base/slots.h"
#include "store/accessors.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <cstdio>
#include <utility>

Branch* SceneUndo;
Branch* ScenePaste;
SceneSlots TheSceneSlots;

namespace {

void DeselectWholeScene() {
    for (Branch* branch : EveryBranch(CurrentFile->Scene))
        branch->Selected = 0;
    CurrentFile->SelectedBranch = nullptr;
    CallSlot(TheSceneSlots.DeselectScene);
}

/// Copies the branches of the tree that starts at `source` up to the end of `source`'s own list, or, without
/// `siblings`, of its subtree alone. No recursion: a tree may be as deep as a file makes it.
Branch* CopyTree(Branch* source, bool siblings) {
    Branch* first = nullptr;
    for (Branch* branch : EveryBranch(source)) {
        if (!siblings && first && branch == source->Next)
            break;
        Branch* copy = NewBranch();
        CopyBranchInfo(copy, branch);
        if (!first) {
            first = copy;
        } else if (branch->Prev && branch != source) {
            copy->Prev = branch->Prev->Copy;
            copy->Prev->Next = copy;
        } else {
            copy->Parent = branch->Parent->Copy;
            copy->Parent->FirstChild = copy;
        }
    }
    return first;
}

} // namespace

Branch* AddBranch(Branch* branch, int direction) {
    if (direction != BranchAsChild && direction != BranchAsSibling) {
        std::fputs("Bad branch direction, returning NULL, crash expected!\n", stderr);
        return nullptr;
    }
    Branch* added = NewBranch();
    if (direction == BranchAsChild)
        GraftBranch(added, branch);
    else
        LinkedList<&Branch::Next, &Branch::Prev>::InsertAfter(branch, added);
    WorkSaved = 0;
    return added;
}

void GraftBranch(Branch* branch, Branch* parent) {
    if (parent->FirstChild)
        parent->FirstChild->Parent = nullptr;
    LinkedList<&Branch::Next, &Branch::Prev>::InsertFirst(parent->FirstChild, branch);
    branch->Parent = parent;
    WorkSaved = 0;
}

void PruneBranch(Branch* branch) {
    if (branch->Parent) {
        branch->Parent->FirstChild = branch->Next;
        if (branch->Next)
            branch->Next->Parent = branch->Parent;
    }
    if (branch->Prev)
        branch->Prev->Next = branch->Next;
    if (branch->Next)
        branch->Next->Prev = branch->Prev;
    branch->Next = nullptr;
    FreeUpBranch(branch);
    WorkSaved = 0;
}

void FreeUpBranch(Branch* branch) {
    // Each branch's children are put in front of what is still to be freed, so that no tree is too deep.
    while (branch) {
        if (Branch* child = branch->FirstChild) {
            LastAlong<&Branch::Next>(child)->Next = branch;
            branch->FirstChild = nullptr;
            branch = child;
            continue;
        }
        Branch* next = branch->Next;
        if (branch->Name)
            Free(branch->Name);
        FreeBranch(branch);
        branch = next;
    }
}

Branch* ParentOfBranch(Branch* branch) {
    while (branch->Prev)
        branch = branch->Prev;
    return branch->Parent;
}

void CopyBranchInfo(Branch* destination, Branch* source) {
    source->Copy = destination;
    destination->Copy = source;
    destination->Name = CopyOfString(source->Name);
    destination->Object = source->Object;
    destination->Visible = source->Visible;
    destination->Collapsed = source->Collapsed;
    if (source->Object)
        destination->Transform = source->Transform;
}

Branch* BranchCopier(Branch* branch) {
    return CopyTree(branch, true);
}

Branch* CopyOfBranch(Branch* branch) {
    return branch ? CopyTree(branch, false) : nullptr;
}

void ScanScene(Branch* branch, void (*function)(Branch*)) {
    if (!branch)
        return;
    function(branch);
    for (Branch* descendant : EveryBranchBelow(branch))
        function(descendant);
}

void ScanSceneWithAbort(Branch* branch, int (*function)(Branch*)) {
    if (!branch || function(branch))
        return;
    for (Branch* descendant : EveryBranchBelow(branch))
        if (function(descendant))
            return;
}

void CopySceneForUndo() {
    WorkSaved = 0;
    FreeUpBranch(SceneUndo);
    SceneUndo = CopyOfBranch(Scene());
    CallSlot(TheSceneSlots.SnapshotTaken);
}

void UndoScene() {
    if (!SceneUndo)
        return;
    std::swap(SceneUndo, Scene());
    DeselectWholeScene();
    SceneChangedSize = 1;
    CallSlot(TheSceneSlots.DirtySceneBuilder);
    CallSlot(TheSceneSlots.DirtyModelWindows);
}

void NewScene() {
    FreeUpBranch(CurrentFile->Scene);
    CurrentFile->Scene = nullptr;
    CurrentFile->SelectedBranch = nullptr;
    SceneChangedSize = 1;
    CallSlot(TheSceneSlots.DevalidateSceneViews);
}

void FreeScene() {
    if (!Mergeing)
        DeselectWholeScene();
    NewScene();
    // Undo and clipboard are the main file's: emptying the file that was merged leaves them.
    if (!Mergeing) {
        FreeUpBranch(SceneUndo);
        FreeUpBranch(ScenePaste);
        SceneUndo = ScenePaste = nullptr;
    }
    if (Quitting)
        FreeSpareBranches();
}
