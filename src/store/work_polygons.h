#pragma once

#include "geometry/matrices.h"
#include "store/records.h"

#include <vector>

// Polygons under construction: outlines with corners of their own, on no object. They form trees; every walk takes a
// node's children before the node itself, then goes on with its Next. Records come from the pools and are released with
// FreeWorkPoly.

/// Calls `function` with `first`, the siblings after it and all their descendants, in the order of every walk. The call
/// may change anything but the links of the tree.
template <class Function>
void ForEveryWorkPoly(WorkPoly* first, Function function) {
    std::vector<WorkPoly*> parents; // no nesting is too deep: each clipped corner adds a level
    for (WorkPoly* workPoly = first; workPoly;) {
        for (; workPoly->FirstChild; workPoly = workPoly->FirstChild)
            parents.push_back(workPoly);
        function(workPoly);
        while (!workPoly->Next && !parents.empty()) {
            workPoly = parents.back();
            parents.pop_back();
            function(workPoly);
        }
        workPoly = workPoly->Next;
    }
}

/// Appends a corner at a position (3 doubles; null leaves it at 0, 0, 0) and returns it. Appending again and again to
/// one work polygon is quick; whoever relinks beads of an unfinished one by hand calls ForgetLastWorkPolyBead.
WorkPolyBead* AddToWorkPoly(WorkPoly* workPoly, const double* position);
void ForgetLastWorkPolyBead();

/// The end of the chain that goes on from `bead`.
WorkPolyBead* LastWorkPolyBead(WorkPolyBead* bead);

/// Copies Normal.
void CopyWorkPolyInfo(WorkPoly* destination, const WorkPoly* source);

/// Copies Position and TexCoord.
void CopyWorkPolyBeadInfo(WorkPolyBead* destination, const WorkPolyBead* source);

/// Reverses the ring: the last bead becomes the first. Normal is left alone.
void ReverseWorkPoly(WorkPoly* workPoly);

/// Sets the unit Normal by Newell's method, in floats, and returns 1; a ring without area leaves it alone and gives 0.
int CalcWorkPolyNormal(WorkPoly* workPoly);

/// Sets Normal and the plane (4 doubles) through the first corner; a ring without area leaves both alone and gives 0.
int CalcWorkPolyPlane(WorkPoly* workPoly, double* plane);

/// Number of work polygons in `first`, the siblings after it and all their descendants.
int PolysInWorkPoly(WorkPoly* first);

/// Cuts triangles off next to concave corners until the rest is convex, or none can be cut. Each triangle becomes the
/// first child of the rest, and the parent of the children before. A convex polygon stays whole.
void MakeWorkPolyConvex(WorkPoly* workPoly);

/// Commits a tree to the current object as polygons without parent, each corner with a vertex of its own, transformed
/// by `transform` unless that is null. With a texture (may be null) they are textured by the corners' coordinates; with
/// `doubleSided` each gets a reversed copy on the same vertices.
void AddWorkPolyToModel(WorkPoly* first, Texture* texture, int doubleSided, const Matrix* transform);
