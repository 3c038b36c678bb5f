#pragma once

#include "store/records.h"

// Selecting in the scene tree. Whether anything is selected is kept in NoSceneSelection (views/traversal.h).

/// Deselects every branch; then selects the branch, when there is one, with its subtree, and makes it the selected
/// branch of the scene.
void SelectScene(Branch* branch);
/// 1 when some branch of the scene is selected.
int AnySceneSelected();
