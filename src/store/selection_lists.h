#pragma once

// The lists of selected records of the current object, rebuilt from their Selected flags. Each list starts with the
// record that comes last in the object's own list.

/// Flag: the last selection was a strip of quadrilaterals, and the selected-polygon list is in strip order.
extern int LastSelectionWasQstrip;

/// Rebuilds the lists of selected vertices and of loose ones, which are unselected and used by no polygon. Needs valid
/// connections. Clears VertexSelectionChanged.
void ConnectSelectedVertices();

/// Rebuilds the list of selected polygons. Clears PolygonSelectionChanged and LastSelectionWasQstrip.
void ConnectSelectedPolygons();
