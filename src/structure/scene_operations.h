#pragma once

#include "store/records.h"

// Changing the scene tree at the user's request. Each change first takes the scene's undo copy; what cannot be done is
// told to the user and changes nothing. The selected branch is SelectedBranch.

// A new group "Unnamed", which is selected: as a child of the selected branch, or as its next sibling.
void AddBranchAcross();
void AddBranchDown();

/// Places the current object on the input grid of scene view 0 to 2: after the selected branch when that places an
/// object, else below it; then the position gizmo opens on it. Without a selected branch below the root, unless
/// `mustSelect` is set.
void AttachObjectToBranch(int mustSelect, int viewIndex);
/// The same for the view in the current window; nothing in other windows.
void AddSceneObject();

/// Every selected branch that places an object now places the current one.
void ReplaceObjectInScene();

/// Moves all that is placed so that the scene's box stands on z = 0 in the middle over the origin.
void CentraliseScene();

/// Removes every branch that shows the object, with what hangs below it, from the scene and the clipboard; the scene's
/// undo copy is discarded.
void KillObjectReferences(Object* object);

/// Asks for another name of the selected group.
void RenameBranch();
/// Gives the selected branch that name.
void ChangeBranchName(const char* name);

// Exchange the selected branch with its previous or next sibling; nothing when there is none.
void ShuffleBranchUp();
void ShuffleBranchDown();

/// An empty scene.
void ResetScene();

/// A new branch of that name, which is seen in the builder at once: below a group, after a branch that places an
/// object.
Branch* GrowBranch(Branch* place, const char* name);

/// A message by its number, unless the condition holds; returns it.
bool TellUnless(bool condition, int message);
/// Draws the builder and the model views again.
void DirtySceneWindows();
