#pragma once

#include "store/records.h"

// Placing branches of the scene with the position gizmo.

/// Opens the gizmo on the selected placed objects; with `takeUndo` the scene's undo copy is taken first, which Cancel
/// goes back to.
void MoveScene(int takeUndo);

/// Selects a new branch and opens the gizmo on what it places; the undo copy has been taken. Before that, with `centre`
/// or while the work area is in force, what it places is moved to the middle of the work area, standing on z = 0. A
/// branch that places nothing is only selected.
void PlaceNewBranch(Branch* branch, int centre);

/// Goes to scene mode, if need be: what is being placed must be seen.
void ShowSceneMode();

// What the gizmo asks about the selected placed objects: the middle of the box around the corners of their boxes, and
// how far they are from a plane (see PositionTouch). 0 when they touch it or lie on both sides of
// it.
void CentreOfSelectedObjects(double* centre);
int TouchOfSelectedObjects(const double* plane, double& distance);
