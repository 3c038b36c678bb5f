#include "tools/vertex_operations.h"

#include "geometry/planes.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/duplicates.h"
#include "store/integrity.h"
#include "store/polygon_editing.h"
#include "store/undo.h"
#include "store/walks.h"
#include "textures/texture_lock.h"
#include "tools/creation_guards.h"
#include "views/viewports.h"

#include <vector>

namespace {

std::vector<Vertex*> SelectedVertices() {
    std::vector<Vertex*> vertices;
    for (Vertex* vertex : Along<&Vertex::NextInSubset>(FirstSelectedVertex()))
        vertices.push_back(vertex);
    return vertices;
}

} // namespace

void DeleteUnusedVertices() {
    CleanUpObject();
    bool changed = false;
    for (Vertex* vertex : EveryVertex(CurrentObject())) {
        if (vertex->Uses)
            continue;
        if (!changed)
            CopyCurrentObject();
        changed = true;
        DeleteVertex(vertex);
    }
    if (!changed)
        return;
    DirtyModelWindows();
    CheckIntegrity();
}

void MergeDuplicateVertices() {
    CopyCurrentObject();
    DeleteDuplicateVertices();
    DirtyModelWindows();
}

void JoinVertices() {
    if (!SomeVerticesSelected())
        return;
    const std::vector<Vertex*> joined = SelectedVertices();
    if (joined.size() < 2)
        return;
    CopyCurrentObject();
    Vertex* survivor = joined.front();
    double sum[3] = {0, 0, 0};
    for (Vertex* vertex : joined) {
        for (int axis = 0; axis < 3; ++axis)
            sum[axis] += vertex->Position[axis];
        for (PolygonBead* bead : EveryUse(vertex))
            bead->Vertex = survivor;
        if (vertex != survivor)
            DeleteVertex(vertex);
    }
    for (int axis = 0; axis < 3; ++axis)
        survivor->Position[axis] = sum[axis] / static_cast<double>(joined.size());
    SussMinkyPolygons(); // neighbours in a ring may be one now
    ConnectionsOK() = 0;
    DirtyModelWindows();
}

void StickVerticesToGrid(View* view) {
    if (!SomeVerticesSelected())
        return;
    CopyCurrentObject();
    double plane[4];
    GetPlaneFromTransformation(view->GridMatrix, plane);
    const std::vector<Vertex*> vertices = SelectedVertices();
    MoveKeepingTextures(vertices, [&] {
        for (Vertex* vertex : vertices)
            FindNearestPointOnPlane(vertex->Position, plane, vertex->Position);
    });
    for (Vertex* vertex : vertices)
        SetVertexSelected(CurrentObject(), vertex, 0);
    ConnectionsOK() = 0;
    DirtyModelWindows();
}
