#pragma once

#include "store/records.h"

// What a hit does to the selection: by the modifier keys that are held, and by the masks.

/// 1 while any of Shift, Ctrl and Alt is held.
int AnyModifierHeld();
/// 1 while Shift and Ctrl of one side are held.
int ShiftAndCtrlHeld();
/// What a hit makes of a flag: Shift toggles it, else Alt clears it, else it is set.
int SelectionByModifiers(int selected);

/// Act on a hit of the current object. A polygon that the masks exclude is left alone.
void ApplyPolygonRule(Polygon* polygon);
void ApplyVertexRule(Vertex* vertex);
/// Acts on a hit of the scene, once until ClearAllSceneFlags.
void ApplyBranchRule(Branch* branch);

/// Clears the scratch mark of every branch of the scene.
void ClearAllSceneFlags();
