#pragma once

#include "geometry/matrices.h"
#include "interaction/position_gizmo.h"
#include "store/records.h"

// The vertices that an interactive tool moves: those of the current object, or temporary ones. The signatures of what
// moves them are those that the position gizmo calls back.

/// Through NextInGroup, each with its place at the start in SavedPosition.
extern Vertex* MovingVertices;

/// Empties the chain. From here until EndMove no clean-up deletes polygons whose area is gone for the moment.
void BeginMove();
void EndMove();

/// Remembers where the vertex is, and adds it to the chain.
void AddMovingVertex(Vertex* vertex);

/// Lets the user place them with the position gizmo; see OpenOffsetGizmo.
void LetUserPlaceVertices(PositionApply apply, PositionEnd cancel, PositionEnd done, int title);
/// An apply for vertices of the current object. While they are dragged derived data stays as it was; otherwise it is
/// made anew at the next clean-up.
void PlaceMovingVertices(const Matrix& matrix, int mode);
/// A cancel: ends the move, and takes back what has happened since the undo snapshot.
void UndoMove();

/// Places each vertex where the matrix takes its place at the start. The object's flags are the caller's matter.
void TransformMovingVertices(const Matrix& matrix);
/// The centre of their box, 3 doubles; the origin when there are none.
void CentreOfMovingVertices(double* centre);
/// The signed distance of the one nearest to the plane (4 doubles). Returns 0 when they lie on both sides, when one
/// touches the plane, and when there are none; then the distance is left alone.
int MovingVerticesToPlane(const double* plane, double& distance);

/// Begins a move of the selected polygons' vertices. Vertices that unselected polygons use as well stay with these;
/// the selected polygons get vertices of their own in the same places. Deselects all vertices.
void DetachSelectedPolygons();
