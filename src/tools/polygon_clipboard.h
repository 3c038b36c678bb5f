#pragma once

#include "store/records.h"

// The clipboard of polygons. It outlives pastes and changes of the object; a new file, and whatever may release the
// materials and textures that its polygons show, empties it.

/// Copies of top-level polygons, through Next, each with its whole tree of sub-polygons; and the vertices that their
/// beads refer to, through Next. They are part of no object.
extern Polygon* PolygonPasteList;
extern Vertex* PolygonPasteVertices;

/// Copy the selected polygons of the current object, with their sub-polygons, in place of what was copied before;
/// CutPolygons takes them away, with the vertices that nothing else uses. Both tell when none is selected.
void CopyPolygons();
void CutPolygons();

/// Adds copies to the selected sub-object, selected, and lets the user place them with the position gizmo: afterwards
/// vertices that fall on others are joined with them. Tells when the clipboard is empty.
void PastePolygons();

void FreePolygonPaste();
