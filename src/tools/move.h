#pragma once

// Moving what is selected in the current object with the position gizmo.

/// The selected polygons, with their sub-polygons; they part from their neighbours meanwhile.
void MovePolygons();
/// The selected vertices.
void MoveVertices();
