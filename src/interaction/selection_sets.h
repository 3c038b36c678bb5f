#pragma once

#include "store/records.h"

// Selecting without the pointer: whole sets of the current object. All of it goes through the object's selection flags,
// and lists are rebuilt when they are next needed.

// In scene mode these two work on every object of the file.
void DeselectAllPolygons();
void DeselectAllVertices();
void DeselectEverything();

/// The top-level polygons of the selected level of detail, subject to the masks.
void SelectAllPolygons();
/// The vertices of the top-level polygons of the selected level of detail, and the loose ones.
void SelectAllVertices();

/// Adds the vertices of the selected polygons.
void SelectVerticesFromPolygons();
/// Adds every polygon of a visible sub-object that uses a selected vertex.
void SelectPolygonsFromVertices();

/// Its top-level polygons alone, and new polygons go into it.
void SelectSubObject(SubObject* subObject);

/// Set the flag of one record of an object, keeping track of what that changes.
void SetPolygonSelected(Object* object, Polygon* polygon, int selected);
void SetVertexSelected(Object* object, Vertex* vertex, int selected);

/// Clears Mark on every vertex of the current object.
void ClearAllVertexFlags();
