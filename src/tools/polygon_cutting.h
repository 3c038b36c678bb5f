#pragma once

#include "store/records.h"

#include <vector>

// Cutting a polygon of the current object with a plane (4 doubles, model space). A vertex on the plane counts as lying
// before it. The polygon itself stays.

/// Whether a vertex lies on the side that is wanted.
using SideCheck = bool (*)(const Vertex* vertex, const double* plane);
bool InfrontCheck(const Vertex* vertex, const double* plane);
bool BehindCheck(const Vertex* vertex, const double* plane);

/// The parts of the polygon on the side that `keep` tells, which some of its vertices must lie on and others not: new
/// top-level polygons in the polygon's sub-object, with its looks, on new vertices. A convex polygon gives one; one
/// that crosses the plane several times falls apart into as many as its outline has there. The parts of both sides
/// together have its area.
std::vector<Polygon*> ChopPolygon(const Polygon* polygon, const double* plane, SideCheck keep);

/// A new vertex where the edge between two places, which lie on different sides, meets the plane. Sets ChopFraction.
Vertex* ChopEdge(const double* p0, const double* p1, const double* plane);
/// How far along its edge the last cut was: 0 at p0, 1 at p1.
extern double ChopFraction;
/// The texture coordinates at that place between t0 and t1.
void ChopTexture(const float* t0, const float* t1, float* out);
