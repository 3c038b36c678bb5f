#pragma once

#include "store/curves.h"

struct View;

// Curves as the user edits them: in a view, under the pointer (MouseX, MouseY), or, with a null view, in the curve's
// own coordinates at a point (3 doubles). Tolerances are in pixels or in those coordinates.

/// The control point there, which becomes current; the one that is current already before any other. Null: none.
Ebead* ElistBeadClick(View* view, Elist& list, const double* point, double tolerance);
/// A new control point on the edge between two that lies there; null: none does.
Ebead* ElistEdgeClick(View* view, Elist& list, const double* point);
/// The control point there; else a new one on the edge there; else a new one at the point, beyond the nearer end.
void ElistClick(View* view, Elist& list, const double* point, double tolerance);

/// What all editors of curves type into them: the key that makes the current point a curve point, or a corner.
inline constexpr int CurvePointKey = 260;
inline constexpr int CurveDeleteKey = 127, CurveCutKey = 177;

/// Carries out a key of the curve: 1 when it is one; `changed` tells whether the curve is another one now.
int ElistKey(Elist& list, int key, bool& changed);

/// Draws the curve into the view that is being drawn: its edges, itself, and its control points, the current one with a
/// circle.
void DrawElist(View* view, const Elist& list);
