#pragma once

#include "geometry/matrices.h"
#include "store/records.h"

struct Window;

// The work area: a cube of interest on which every view is centred, magnified and clipped while its window is open.

/// The window that controls it and its view inside; null while closed: the work area is in force exactly while it is
/// open.
extern Window *WorkAreaGizmo, *WorkAreaWindow;

/// Bounds of the cube, model space.
extern double WorkAreaLeft, WorkAreaRight, WorkAreaFront, WorkAreaBack, WorkAreaBottom, WorkAreaTop;

/// Flag: the work area is being set.
extern int SettingWorkArea;

/// The scene's or the current object's work area, set up first if it is not valid.
WorkAreaRecord& CurrentWorkArea();
/// Sets the bounds and the clip planes.
void CalcWorkAreaBox(const WorkAreaRecord& area);
void DefineWorkAreaClipPlanes();
/// Bracket the drawing of the model.
void ClipPlanesOn();
void ClipPlanesOff();

/// While the work area is in force: multiplies its transform onto the matrix, when there is one, and with `load` onto
/// the graphics layer's.
void SetWorkArea(Matrix* matrix, int load);
/// 1 while it is not in force.
double WorkAreaMagnification();
/// How far from its middle the current window's view must reach to show all that it can, where it must reach this far
/// without a work area.
double WorkAreaReach(double radius);
/// 1 while the current window shows only what is inside the bounds: any but the work area's own.
int WorkAreaClips();
/// 1 when the point (model space) is inside the bounds, or the work area is not in force.
int PointInsideWorkArea(const float* point);
/// 0 when the branch's box lies wholly outside the bounds.
int SceneObjectVisible(const Branch* branch);
