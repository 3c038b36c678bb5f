#pragma once

#include "store/view_record.h"

#include <cstdint>

struct Window;

// The grid of a view: a square lattice in the plane z = 0 of the view's GridMatrix.

inline constexpr int GridSquareCount = 24;

/// Flags: the grid is drawn; over the model instead of under it; picked points snap to it.
extern int GridVisible, GridOnTop, GridSnap;
/// Flag: a three-vertex alignment is in progress; the 3D view then has no grid.
extern int AligningToVertices;
/// The window that controls the grid; null while closed. While it is open, the 3D view shows the axis about which the
/// grid can be tilted.
extern Window* GridGizmo;
/// Flag: vertices behind the grid are hidden while a tool runs, and the grid shows its outline only.
extern int HidingVertices;

/// Size of a square, metres: 1, 2, 5 times a power of ten from 0.001 to 50000. Indices beyond the series give its ends.
double GridSquare(int index);
/// Of the scene or the current object.
double OneGridSquare();

/// Index and steps of the scene or the current object; they may come from files, so they may be anything.
std::int32_t& ShownGridIndex();
std::int32_t& ShownGridSteps();
/// The steps that are drawn: 1 to 1000.
int DrawnGridSteps(int steps);
/// From the grid's centre to its edges, metres.
double GridExtent(int index, int steps);

/// Draws the view's grid with the view's matrices loaded.
void DrawGrid(View* view, int steps, int index);

/// Places the grid: of a 2D view so that it faces the eye; of a 3D view by a character: 'y' the x-y plane, 'z' the x-z
/// plane, 'x' the y-z plane. In force, the work area has it in its middle.
void SetGridAxis(View* view, int axis);

/// The grid for a model of this radius: the square of which about ten fit, and how many do.
void FitGrid(double radius, std::int32_t& index, std::int32_t& steps);
