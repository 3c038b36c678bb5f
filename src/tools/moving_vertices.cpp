#include "tools/moving_vertices.h"

#include "geometry/boxes.h"
#include "geometry/planes.h"
#include "interaction/position_gizmo.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/motion.h"
#include "store/normals.h"
#include "store/polygon_editing.h"
#include "store/undo.h"
#include "store/walks.h"

#include <algorithm>
#include <cmath>

Vertex* MovingVertices;

namespace {

/// Where the moving vertices were placed when derived data was made last.
Matrix Settled = IdentityMatrix;

Along<&Vertex::NextInGroup> EveryMovingVertex() {
    return Along<&Vertex::NextInGroup>(MovingVertices);
}

bool UnselectedPolygonsUse(const Vertex* vertex) {
    for (const PolygonBead* bead : EveryUse(vertex))
        if (!bead->Polygon->Selected)
            return true;
    return false;
}

/// The selected polygons that use the vertex get one of their own.
Vertex* PartFromUnselected(Vertex* vertex) {
    Vertex* own = AddVertex(vertex->Position[0], vertex->Position[1], vertex->Position[2]);
    for (PolygonBead* bead : EveryUse(vertex))
        if (bead->Polygon->Selected)
            bead->Vertex = own;
    return own;
}

} // namespace

void BeginMove() {
    MovingVertices = nullptr;
    Settled = IdentityMatrix;
    KeepPolygonsWithoutArea = 1;
}

void EndMove() {
    MovingVertices = nullptr;
    EndMotion();
    if (KeepPolygonsWithoutArea)
        NormalsOK() = 0;
    KeepPolygonsWithoutArea = 0;
}

void AddMovingVertex(Vertex* vertex) {
    std::copy_n(vertex->Position, 3, vertex->SavedPosition);
    vertex->NextInGroup = MovingVertices;
    MovingVertices = vertex;
}

void LetUserPlaceVertices(PositionApply apply, PositionEnd cancel, PositionEnd done, int title) {
    OpenOffsetGizmo(apply, cancel, done, CentreOfMovingVertices, MovingVerticesToPlane, title);
}

void PlaceMovingVertices(const Matrix& matrix, int mode) {
    const bool settled = mode == PositionSettled;
    if (!settled)
        CleanUpObject();
    TransformMovingVertices(matrix);
    if (!settled && StepMotion(MovingVertices, Settled, matrix))
        return;
    EndMotion();
    Settled = matrix;
    NormalsOK() = 0;
}

void UndoMove() {
    EndMove();
    Undo();
}

void TransformMovingVertices(const Matrix& matrix) {
    for (Vertex* vertex : EveryMovingVertex())
        TransformCoordinate(vertex->SavedPosition, matrix, vertex->Position);
}

void CentreOfMovingVertices(double* centre) {
    double min[3], max[3];
    EmptyBox(min, max);
    for (const Vertex* vertex : EveryMovingVertex())
        GrowBox(min, max, vertex->Position);
    for (int axis = 0; axis < 3; ++axis)
        centre[axis] = min[axis] <= max[axis] ? min[axis] / 2 + max[axis] / 2 : 0;
}

int MovingVerticesToPlane(const double* plane, double& distance) {
    bool before = false, behind = false;
    double nearest = INFINITY;
    for (const Vertex* vertex : EveryMovingVertex()) {
        const double signedDistance = DistanceFromPointToPlane(vertex->Position, plane);
        before |= signedDistance >= 0;
        behind |= signedDistance <= 0;
        if (std::fabs(signedDistance) < std::fabs(nearest))
            nearest = signedDistance;
    }
    if (before == behind)
        return 0;
    distance = nearest;
    return 1;
}

void DetachSelectedPolygons() {
    CleanUpObject(); // who uses a vertex must be known
    DeselectAllVertices();
    ClearAllVertexFlags();
    for (const Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        for (const PolygonBead* bead : EveryBead(polygon))
            bead->Vertex->Mark = 1;
    BeginMove();
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        if (vertex->Mark)
            AddMovingVertex(UnselectedPolygonsUse(vertex) ? PartFromUnselected(vertex) : vertex);
}
