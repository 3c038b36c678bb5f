#pragma once

// Bringing what was picked in the merge file of the store into the main file.

/// Sets or clears MergeMark of every object of the merge file; with 0 its scene is deselected, too.
void PickAllMergeObjects(int pick);

/// Picks the objects of the selected branches of the merge file's scene, and no others.
void PickObjectsOfSelectedBranches();

/// Moves the picked objects into the main file, with the materials and textures that they use: those that the main file
/// has already are shared. A copy of the selected branches is pasted into the main scene, where the position gizmo
/// opens on it. The main file's undo snapshots and its polygon clipboard are discarded. Nothing when nothing is picked.
void MergePickedObjects();
