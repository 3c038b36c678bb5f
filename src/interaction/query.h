#pragma once

struct View;

// The tools of scene mode that tell what is under a click. In object mode they do nothing.

/// Tells the name of the placed object that is clicked on, marks it in every view, and offers to edit it.
void QuerySceneObjects();
/// Tells where the vertex that is clicked on lies in the scene; all vertices are marked meanwhile.
void QuerySceneVertices();

/// Overlay of every view: the box of the object, or the marker of the vertex, that a query has found.
void DrawQueryHighlight(View* view);

/// Once at start-up: has the highlight drawn.
void RegisterQueries();
