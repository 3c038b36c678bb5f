#pragma once

// Operations on the selected polygons of the current object. Each tells when none is selected, and takes the undo
// snapshot before it changes anything.

/// Deletes them with their sub-polygons; the vertices stay.
void DeletePolygons();
/// The same for other operations: with the vertices that only they use, without the snapshot.
void DeleteSelectedPolygons(int deleteVertices, int takeUndo);

/// Makes them and their sub-polygons face the other way.
void ReversePolygons();

/// Puts them into the selected sub-object, with the polygons that they lie on and all that lies on those.
void AttachSelectedPolys();

/// Makes them top-level polygons; they keep their own sub-polygons.
void PopPolygon();
