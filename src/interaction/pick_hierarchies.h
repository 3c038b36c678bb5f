#pragma once

#include "interaction/box_hierarchy.h"
#include "store/records.h"

#include <vector>

// What selections search: the polygons of a sub-object and the vertices of an object, with their boxes. Made when they
// are first asked for and kept until the object has been cleaned up again; the object is cleaned up when they are
// asked for.

struct PolygonHierarchy {
    std::vector<Polygon*> Polygons; // in the sequence of drawing
    BoxHierarchy Boxes;             // of their numbers
};

struct VertexHierarchy {
    std::vector<Vertex*> Vertices; // in the object's order
    BoxHierarchy Boxes;
};

const PolygonHierarchy& PolygonHierarchyOf(const SubObject* subObject);
const VertexHierarchy& VertexHierarchyOf(const Object* object);

/// Makes the next one that a click in object mode will want; nothing when there is none. For moments when there is
/// nothing else to do, so that the first click after a change of a large model need not wait.
void PrepareSelection();
