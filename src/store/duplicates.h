#pragma once

/// For qsort on an array of Vertex*: by x, y and z as floats, then by Uses; -1, 0 or 1. Coordinates that are not
/// numbers come last.
int VertexCompare(const void* a, const void* b);

/// Merges the current object's vertices that lie at the same place when taken as floats (0 and -0 are the same, what is
/// no number is never the same). At each place one used vertex stays, the one with the fewest uses and of several the
/// first in the list, and one loose vertex, the first in the list. Corners that then repeat are collapsed, the object
/// is checked and its connections are made anew. Linear in the number of vertices and beads.
void DeleteDuplicateVertices();
