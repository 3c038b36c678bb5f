#include "tools/move.h"

#include "base/debug.h"
#include "interaction/position_gizmo.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/duplicates.h"
#include "store/polygon_editing.h"
#include "store/undo.h"
#include "store/walks.h"
#include "textures/texture_lock.h"
#include "tools/creation_guards.h"
#include "tools/moving_vertices.h"
#include "tools/sub_polygon_selection.h"
#include "views/viewports.h"

#include <utility>
#include <vector>

namespace {

void Place(const Matrix& matrix, int) {
    TransformMovingVertices(matrix);
    NormalsOK() = 0;
}

void CancelPolygons() {
    EndMove();
    Undo();
}

void FinishPolygons() {
    EndMove();
    DeselectAllPolygons();
    DeleteDuplicateVertices();
    DirtyModelWindows();
}

void PlaceVertices(const Matrix& matrix, int mode) {
    Place(matrix, mode);
    FollowLockedTextures();
}

void SwapPlaces() {
    for (Vertex* vertex = MovingVertices; vertex; vertex = vertex->NextInGroup)
        std::swap(vertex->Position, vertex->SavedPosition);
    SwapLockedTextures();
}

void EndVertices() {
    UnlockTextures();
    EndMove();
}

void CancelVertices() {
    SwapPlaces();
    EndVertices();
    ConnectionsOK() = 0;
    DirtyModelWindows();
}

void FinishVertices() {
    // The snapshot shows the object as it was before.
    SwapPlaces();
    CopyCurrentObject();
    SwapPlaces();
    EndVertices();
    DeselectAllVertices();
    ConnectionsOK() = 0;
    DirtyModelWindows();
}

} // namespace

void MovePolygons() {
    if (!SomePolygonsSelected())
        return;
    CopyCurrentObject();
    SelectAllUnselectedChildren();
    DetachSelectedPolygons();
    CleanUpObject();
    OpenOffsetGizmo(Place, CancelPolygons, FinishPolygons, CentreOfMovingVertices, MovingVerticesToPlane,
                    PositionPolygonsTitle);
}

void SplitLodVertexClashes() {
    CleanUpObject();
    ClearAllPolygonFlags();
    FlagPolygonsInLod(1);
    int clashes = 0;
    std::vector<Vertex*> selected;
    for (Vertex* vertex : Along<&Vertex::NextInSubset>(FirstSelectedVertex()))
        selected.push_back(vertex);
    for (const Vertex* vertex : selected) {
        bool inside = false, outside = false;
        for (const PolygonBead* bead : EveryUse(vertex))
            (bead->Polygon->Mark ? inside : outside) = true;
        if (!inside || !outside)
            continue;
        Vertex* other = AddVertex(vertex->Position[0], vertex->Position[1], vertex->Position[2]);
        for (PolygonBead* bead : EveryUse(vertex))
            if (!bead->Polygon->Mark)
                bead->Vertex = other;
        ++clashes;
    }
    Trace("%d vertex clashes detected\n", clashes);
}

void MoveVertices() {
    if (!SomeVerticesSelected())
        return;
    SplitLodVertexClashes();
    CleanUpObject();
    BeginMove();
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        if (vertex->Selected)
            AddMovingVertex(vertex);
    LockTextures(MovingVertices);
    OpenOffsetGizmo(PlaceVertices, CancelVertices, FinishVertices, CentreOfMovingVertices, MovingVerticesToPlane,
                    PositionVerticesTitle);
}
