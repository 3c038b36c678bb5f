#pragma once

#include "interaction/picking.h"
#include "store/records.h"

// Points on the grid of a view, under the pointer: temporary vertices of the tools, and points that are dragged.

/// The two axes of model space that the plane of a 2D view shows, by its Direction.
extern const int AxisList[DefaultView2DCount][2];

/// A temporary vertex where the pointer meets the grid. With `drag` it becomes the only selected one of them, and
/// follows the pointer until the left button is released. Null when the pointer meets no grid.
Vertex* MakeVertexOnGrid(View* view, int drag);

/// Moves a point (3 doubles, model space) to where the pointer meets the grid until the button is released; calls
/// `moved` (may be null) after each change and shows it. In a 2D view the coordinate across the view stays. Escape
/// takes the point back to where it was.
void DragCoordAroundGrid(View* view, double* coordinate, int button, void (*moved)());
