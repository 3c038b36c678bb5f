#pragma once

#include "store/view_record.h"

// From the pointer to places in the model, for the view in the current window (its size and MouseX, MouseY). Lines are
// origin and direction, 6 doubles; planes 4 doubles.

/// The line under the pointer, eye space.
void CalcEyeLine(const View* view, double* line);
/// The grid's plane, eye space.
void CalcEyePlane(View* view, double* plane);
/// The point of the grid under the pointer, eye space, kept near the grid and snapped with GridSnap; in a 2D view at
/// any depth. 0 when the pointer meets no grid.
int IntersectGrid(View* view, double* point);
/// The same in model space; 3 doubles.
int GridPointUnderPointer(View* view, double* point);
/// The point under the pointer on a polygon, else on the grid when that is allowed; either result may be null. 0 when
/// there is nothing.
int ClickSomewhere(View* view, double* eye, double* model, int gridAllowed);
/// Where a model point appears: x and y in window pixels, and depth. 0 for a point at or behind the eye.
int Calc2dOf(View* view, const double* model, double* point);
/// Size of a pixel, eye units, at an eye depth (which matters in the 3D view only).
void PixelToEye(const View* view, double depth, double& size);
