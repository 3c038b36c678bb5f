#pragma once

#include "store/records.h"

#include <span>

// Normals of polygons and corners, and the bounds of an object.

/// Flag: GenerateNormals is computing the radius. While it is set, ObjectRadius starts no clean-up.
extern int SussingRadius;

/// Flag: GenerateNormals leaves polygons without area alone, because a running tool holds pointers to what it moves and
/// may give them their area back. Whoever clears it clears NormalsOK, too.
extern int KeepPolygonsWithoutArea;

/// Sets the polygon's unit Normal by Newell's method: it points to where the ring is seen counter-clockwise. A ring
/// without area returns 0 and leaves Normal alone, else 1.
int GeneratePolygonNormal(Polygon* polygon);

/// Sets the normals of some polygons of the current object, whose connections are valid, after vertices of theirs have
/// moved; those without area keep theirs. Smooth corners are set with those that they share a vertex with.
void GenerateNormalsOf(std::span<Polygon* const> polygons);

/// Computes all normals, boxes and the radius of the current object, whose connections must be valid. Polygons without
/// area are deleted, with the vertices that only they used; the connections are then made anew and both selections need
/// rebuilding. The box of a sub-object without polygons is empty (see EmptyBox); that of an object without vertices
/// lies at the origin, with radius 10. A corner of a smooth polygon gets the mean normal of the smooth polygons of its
/// light group and sub-object that meet at its vertex at less than 120 degrees to the first of them. Linear in the
/// number of beads.
void GenerateNormals();
