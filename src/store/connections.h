#pragma once

#include "store/records.h"

#include <cstddef>

// Which beads use which vertex, repeated corners, and the scratch flag of the polygons; all of the current object.

/// Rebuilds every vertex's Beads and Uses. Each list starts with the bead met last, in the order of the polygons and of
/// their rings. ConnectionsOK is left as it was. Returns the number of vertices.
std::size_t MakeConnections();

/// Collapses corners that follow each other in a ring and use the same vertex, so that none do; a ring keeps its first
/// bead. In a textured polygon the bead that stays gets the mean of both texture coordinates. Rings may end with fewer
/// than three corners. 1 when there was anything to collapse.
int SussMinkyPolygons();

// The Mark of the polygons, with which tools mark sets of them.

void SetAllPolygonFlags();
void ClearAllPolygonFlags();

/// Sets Mark to the value on `first`, the siblings after it and all their sub-polygons. Null is ignored.
void FlagSubPolygons(Polygon* first, int value);

/// Sets Mark to the value on every polygon of the selected level of detail, sub-polygons included. Other polygons keep
/// theirs; without a selected level all do.
void FlagPolygonsInLod(int value);
