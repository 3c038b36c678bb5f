#pragma once

// The scene's clipboard, ScenePaste: one branch with all that hangs below it, or a group that holds several.

/// Copies the branches that are selected with their whole subtrees; then deselects everything, with `deselect`.
void CopyScene(int deselect);

/// Copies them and takes them out of the scene. Of a branch that is only partly selected those parts go that are
/// selected to their ends.
void CutScene();

/// Puts a copy of the clipboard below the selected branch and has it placed (see PlaceNewBranch, which gets `centre`).
/// Without a selected branch below the root, unless `mustSelect` is set.
void PasteScene(int mustSelect, int centre);
