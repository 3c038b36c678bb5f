#pragma once

#include "store/records.h"

// The clipboard of vertices. It outlives pastes and changes of the object; a new file empties it.

/// Through Next and Prev; they are part of no object.
extern Vertex* VertexPaste;

/// Copy the selected vertices of the current object in place of what was copied before; CutVertices takes them away,
/// with the polygons that use them. Sub-polygons of these that use none stay, on the next polygon below them that is
/// left. Both tell when none is selected.
void CopyVertices();
void CutVertices();

/// Lets the user place copies with the position gizmo: they are temporary vertices until then. Tells when the clipboard
/// is empty.
void PasteVertices();

void FreeVertexPaste();
