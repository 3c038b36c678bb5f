#pragma once

#include "store/records.h"

// The scene tree of a file. Children form a sibling list from FirstChild on; only the first of a list has Parent set.

/// Copy of the scene taken before its last edit, or null.
extern Branch* SceneUndo;

/// The scene clipboard, or null.
extern Branch* ScenePaste;

/// What the scene's operations need done above the store; each is skipped when null.
struct SceneSlots {
    void (*DeselectScene)() = nullptr;        // the scene's windows forget their selection; branches are valid
    void (*DevalidateSceneViews)() = nullptr; // the scene views must be made from the defaults again
    void (*DirtySceneBuilder)() = nullptr;    // the tree looks different
    void (*DirtyModelWindows)() = nullptr;    // the model views look different
    void (*SnapshotTaken)() = nullptr;        // of the scene, for its undo
};

extern SceneSlots TheSceneSlots;

/// The place of a new branch relative to a given one.
enum BranchDirection { BranchAsChild = 0, BranchAsSibling = 1 };

/// A new branch as the first child of `branch` (BranchAsChild) or as its next sibling (BranchAsSibling). Any other
/// direction is reported on the standard error stream and gives null.
Branch* AddBranch(Branch* branch, int direction);

/// Inserts a detached branch as the first child of `parent`.
void GraftBranch(Branch* branch, Branch* parent);

/// Takes a branch out of its tree and frees it with its subtree.
void PruneBranch(Branch* branch);

/// Frees a branch, the siblings that follow it, and all their subtrees. Null is ignored.
void FreeUpBranch(Branch* branch);

/// The parent of a branch, found from the first of its siblings; null for a root.
Branch* ParentOfBranch(Branch* branch);

/// Copies name, object and flags, and the transform only of a branch with an object; links the two through Copy.
void CopyBranchInfo(Branch* destination, Branch* source);

/// Copies a branch, the siblings that follow it, and all their subtrees.
Branch* BranchCopier(Branch* branch);

/// Copies a branch and its subtree. Null gives null.
Branch* CopyOfBranch(Branch* branch);

/// Calls `function` with a branch, then with all its descendants: each sibling list in order, children before their
/// parent. The function must not change links.
void ScanScene(Branch* branch, void (*function)(Branch*));

/// The same walk, which ends at the first call that returns non-zero; that one may have changed the tree.
void ScanSceneWithAbort(Branch* branch, int (*function)(Branch*));

/// Takes the scene's undo copy. Scene edits call it before they change the tree.
void CopySceneForUndo();

/// Exchanges the scene with its undo copy, if there is one: a second call redoes.
void UndoScene();

/// Frees the whole tree; the next Scene() makes a fresh root.
void NewScene();

/// Frees the tree; of the main file also its undo copy and the scene clipboard.
void FreeScene();
