#pragma once

#include "store/records.h"

#include <vector>

// What the tools that enter polygons share: the vertices entered so far, the step that makes a polygon of them, and the
// polygons made since the tool started.

/// What "Cancel" stands for in the bars of these tools; no key gives this code.
inline constexpr int PolyCancelCode = 153;

/// A vertex of the polygon that is being entered.
struct EnteredVertex {
    ::Vertex* Vertex;
    /// It is a temporary vertex, owned by this entry: the newest of NewVertices belongs to the last such entry.
    bool IsNew;
};

/// In the order of entry.
extern std::vector<EnteredVertex> PolyVertexList;
/// Flag: the outline of what is entered is shown closed.
extern int PolyOutlineClosed;

/// Forgets the polygons of the tool before.
void StartPolyCreation(int outlineClosed);

void EnterPolyVertex(Vertex* vertex, bool isNew);
/// Both release the temporary vertices.
void RemoveLastPolyVertex();
void RemoveAllPolyVertices();

/// Makes a polygon of the entered vertices, facing the user in the view, which the current window shows, and forgets
/// them. With none it does nothing; fewer than three, or those of a polygon without area, stay, and the user is told.
void CompletePolygon(View* view);
/// Takes back the polygon completed last, with the vertices that were made for it and that nothing else uses.
void DeleteLastEnteredPolygon();

/// Shows the entered vertices: an overlay of the views.
void DrawNewPolygon(View* view);

/// Gives back the memory of the list of polygons; the main window closes.
void FreePolyEnterList();
