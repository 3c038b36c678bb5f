#pragma once

// The tools that enter polygons corner by corner. Each starts unless polygons cannot be made now, which it tells, and
// runs until Done or Cancel.

/// Polygons on existing vertices.
void CreatePolysByConnecting();
/// Polygons on existing vertices and on new ones, which are put on the grid.
void CreatePolysFreehand();

/// Flag, an option of both: vertices behind the grid are hidden while the tool runs.
extern int HideVertices;
