#include "tools/move.h"

#include "base/debug.h"
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

void FinishPolygons() {
    EndMove();
    DeselectAllPolygons();
    DeleteDuplicateVertices();
    DirtyModelWindows();
}

void PlaceVertices(const Matrix& matrix, int mode) {
    PlaceMovingVertices(matrix, mode);
    FollowLockedTextures();
}

/// Vertices that were given to polygons of other levels of detail, and those that these used before.
struct LodVertexClash {
    Vertex* Others;
    Vertex* Moving;
};

std::vector<LodVertexClash> LodVertexClashes;

void GiveOthersTheirOwn(LodVertexClash& clash) {
    const double* place = clash.Moving->Position;
    clash.Others = AddVertex(place[0], place[1], place[2]);
    for (PolygonBead* bead : EveryUse(clash.Moving))
        if (!bead->Polygon->Mark)
            bead->Vertex = clash.Others;
}

void SplitLodVertexClashes() {
    CleanUpObject();
    ClearAllPolygonFlags();
    FlagPolygonsInLod(1);
    LodVertexClashes.clear();
    for (Vertex* vertex : Along<&Vertex::NextInSubset>(FirstSelectedVertex())) {
        bool inside = false, outside = false;
        for (const PolygonBead* bead : EveryUse(vertex))
            (bead->Polygon->Mark ? inside : outside) = true;
        if (inside && outside)
            LodVertexClashes.push_back({nullptr, vertex});
    }
    for (LodVertexClash& clash : LodVertexClashes)
        GiveOthersTheirOwn(clash);
    Trace("%d vertex clashes detected\n", static_cast<int>(LodVertexClashes.size()));
}

/// The vertices of the move must be where they were.
void JoinLodVertexClashes() {
    if (LodVertexClashes.empty())
        return;
    CleanUpObject();
    for (const LodVertexClash& clash : LodVertexClashes) {
        for (PolygonBead* bead : EveryUse(clash.Others))
            bead->Vertex = clash.Moving;
        DeleteVertex(clash.Others);
    }
    LodVertexClashes.clear();
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
    JoinLodVertexClashes();
    EndVertices();
    ConnectionsOK() = 0;
    DirtyModelWindows();
}

void FinishVertices() {
    // The snapshot shows the object as it was before.
    SwapPlaces();
    const bool clashed = !LodVertexClashes.empty();
    JoinLodVertexClashes();
    CopyCurrentObject();
    if (clashed)
        SplitLodVertexClashes();
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
    LetUserPlaceVertices(PlaceMovingVertices, UndoMove, FinishPolygons, PositionPolygonsTitle);
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
    LetUserPlaceVertices(PlaceVertices, CancelVertices, FinishVertices, PositionVerticesTitle);
}
