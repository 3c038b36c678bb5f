#pragma once

#include "store/records.h"

// Operations on the vertices of the current object. Each tells when it needs selected vertices and there are none, and
// takes the undo snapshot before it changes anything.

/// Deletes the vertices that no polygon uses.
void DeleteUnusedVertices();

/// Merges the vertices that lie at the same place.
void MergeDuplicateVertices();

/// Makes one vertex of the selected ones, at their mean position.
void JoinVertices();

/// Moves the selected vertices to the nearest points of the view's grid plane, and deselects them.
void StickVerticesToGrid(View* view);
