#pragma once

#include "store/records.h"

// Operations that add copies of the selected polygons, with their sub-polygons, to the current object. Each tells when
// none is selected, and takes the undo snapshot first.

/// Planes of reflection: x = 0, y = 0, z = 0, and the grid of the view.
enum MirrorAxis { MirrorX = 0, MirrorY = 1, MirrorZ = 2, MirrorGrid = 3 };

/// Adds mirror images, in the sub-objects of the originals; vertices that fall on others are joined with them.
void MirrorPolygons(View* view, int axis);

/// Reflects the vertex; for MirrorGrid in the plane (4 doubles).
void ReflectVertex(Vertex* vertex, int axis, const double* plane);

/// Adds copies on the same vertices that face the other way.
void DoublePolygons();
