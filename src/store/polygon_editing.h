#pragma once

#include "store/records.h"

#include <cstdint>

// Adding, linking, copying and removing vertices, polygons and beads of the current object. These calls keep the lists
// consistent and clear ConnectionsOK; they never redraw, never talk to the user and take no undo snapshot. New vertices
// and polygons go to the head of their lists, beads to the tail of their chain.

/// The lighting that AddPolygon gives to new polygons: a PolygonLighting value.
extern int CurrentLighting;

// Vertices

Vertex* AddVertex(double x, double y, double z);

/// Beads that still refer to the vertex are not touched: remove or redirect them first.
void DeleteVertex(Vertex* vertex);

/// A vertex at the same place, on no list.
Vertex* CopyOfVertex(const Vertex* vertex);

// Polygons

/// Puts a polygon on the object's list, and on its parent's or, with a null parent, on the selected sub-object's.
void LinkPolygon(Polygon* polygon, Polygon* parent);

/// Takes a polygon off those lists; its sub-polygons stay attached to it and its SubObject is kept.
void UnlinkPolygon(Polygon* polygon);

/// The usual way to commit a polygon: with the corners of `beads`, the current material and CurrentLighting, in the
/// selected sub-object. `parent` may be null.
Polygon* AddPolygon(PolygonBead* beads, Polygon* parent);

/// Copies materials, lighting, texture, light group and flags; not selection, normal or links.
void CopyPolygonInfo(Polygon* destination, const Polygon* source);

/// A polygon on no list, without sub-polygons. With `useCopies` its corners are the Copy of the source's vertices,
/// which the caller has made; otherwise the same vertices, whose Uses are incremented.
Polygon* CopyOfPolygon(const Polygon* polygon, int useCopies);

/// Releases a polygon that is on no list, and its beads.
void LosePolygon(Polygon* polygon);

/// Removes a polygon with all its sub-polygons. With `deleteVertices`, vertices whose last use goes are deleted too;
/// that needs valid connections.
void DeletePolygon(Polygon* polygon, int deleteVertices);

/// Reverses the ring, so that the polygon faces the other way: the former last bead becomes the first.
void ReversePolygon(Polygon* polygon);

/// Calls `function` with each sub-polygon, in the order of EverySubPolygon.
void ScanSubPolygons(Polygon* polygon, void (*function)(Polygon*, void*), void* argument);

// Beads. A chain is named by its head, null when empty.

/// Appends a corner. The bead's Polygon is set by AddPolygon or by the caller. Appending again and again to one chain
/// is quick; a caller that relinks an uncommitted chain by hand in between calls ForgetLastBead.
PolygonBead* AddPolygonBead(PolygonBead*& chain, Vertex* vertex);
void ForgetLastBead();

/// Releases the last bead, if any, and with `deleteVertex` its vertex.
void DeleteLastPolygonBead(PolygonBead*& chain, int deleteVertex);

/// Releases a whole chain; with `deleteVertices` also every vertex, whatever else uses it.
void DeletePolygonBeadList(PolygonBead* first, int deleteVertices);

/// Copies the texture coordinates.
void CopyPolygonBeadInfo(PolygonBead* destination, const PolygonBead* source);
