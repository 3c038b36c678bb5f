#pragma once

#include "store/records.h"

// Selecting in the scene tree. Whether anything is selected is kept in NoSceneSelection (views/traversal.h).

/// Deselects every branch; then selects the branch, when there is one, with its subtree, and makes it the selected
/// branch of the scene.
void SelectScene(Branch* branch);
/// Set and clear the flag of one branch alone.
void SceneSelector(Branch* branch);
void SceneDeselector(Branch* branch);
/// 1 when some branch of the scene is selected.
int AnySceneSelected();
/// How many branches that place an object are selected.
int CountSceneObjectSelections();
/// 1 when the branch and every branch below it are selected.
int BranchCompletelySelected(Branch* branch);
/// 1 when the branch, or one below it, places an object.
int AnyObjectsInBranch(Branch* branch);
