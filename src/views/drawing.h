#pragma once

#include "store/records.h"

// Drawing of what a view shows: the model or the scene, the selection, markers and outlines. What does not change from
// one drawing to the next is kept in graphics memory (kept_drawings.h).

/// Flag: polygons must be clipped to the work area in software.
extern int SpecialDraw;

/// Draws one view completely, overlays included, into the current window; the buffers are the caller's to swap.
void DrawWorkWindow(View* view);

/// What it consists of. The view has been set up.
void DrawScene(View* view);
/// The current object, in a ShownMode, placed by the matrix unless that is null.
void DrawSingleObject(View* view, int mode, const Matrix* matrix);
/// A sub-object's polygons, filled; textures as the display flags say.
void DrawSubObject(SubObject* subObject);
/// The outlines of the selected polygons of the current object; `wire` 1 when the model is drawn as outlines.
void DrawSelectedPolygonsWire(View* view, const Matrix* matrix, int wire);
/// The edges of the box between two opposite corners (3 doubles each), model space.
void DrawBoundry(const double* min, const double* max);

/// Sets SpecialDraw for the current window.
void SussSpecialDraw();
