#pragma once

#include "store/records.h"

// Polygons as rings of corners, clipped in software: for drawing where the renderer has no clip planes, and for
// selecting. Rings are chains of pooled ClipBeads; a clipper takes a ring and returns what is left of it, null when
// that is nothing. FreeClippedPolygon releases what a caller holds.

/// While DoObjectTransform is 1, rings are made of corners taken through ObjectTransformation (model to scene space).
extern Matrixf ObjectTransformation;
extern int DoObjectTransform;

/// A ring of the polygon's corners: positions, the corners' normals (the polygon's unless it is smooth), and with
/// `withTexture` their texture coordinates, else 0.
ClipBead* MakeClipPolygon(const Polygon* polygon, int withTexture);

/// Against what lies behind the eye: Eye is set, and is cut at z = -0.00001.
ClipBead* ClipPolygonToFrontClipPlane(ClipBead* ring);
/// Against the bounds of the work area where it clips: Position is cut, normals and texture coordinates follow.
ClipBead* ClipPolygonToWorkArea(ClipBead* ring);
