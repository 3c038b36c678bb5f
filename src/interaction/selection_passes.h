#pragma once

#include "store/records.h"

// The passes over what a view shows: what lies under the pointer, and what meets the drag box. They work in the current
// window, which shows the view, and on its traversal (views/traversal.h); objects and sub-objects whose boxes miss the
// place are passed over.

/// What a click has hit.
struct PolygonHit {
    ::Polygon* Polygon = nullptr; // null: nothing
    ::Object* Object = nullptr;
    ::Branch* Branch = nullptr; // which places it; null in object mode
    Matrix Placement;           // from model to scene space
};

/// The polygon under the pointer: the one nearest to the eye, of polygons in one plane the narrowest.
PolygonHit PickPolygon(View* view);

/// The vertex nearest to the pointer, within 10 pixels; of those at the same place on the screen the deepest.
struct VertexHit {
    ::Vertex* Vertex = nullptr; // null: nothing
    double Place[3];            // in scene mode in scene space
};

VertexHit PickVertex(View* view);

/// True when the view shows the polygon and its front, whether or not backs are shown.
bool PolygonShowsFront(View* view, const Polygon* polygon);

// What the drag box finds is acted on by the rules of the modifier keys.

/// Polygons, or in scene mode the branches that show them.
void BoxPolygons(View* view);
/// Vertices, or clears them.
void BoxVertices(View* view, int deselect);

/// True when a and b differ by less than a ten-thousandth.
bool FloatsAreVeryClose(double a, double b);
