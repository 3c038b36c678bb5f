#include "interaction/selection.h"

#include "base/debug.h"
#include "base/slots.h"
#include "gooey/window.h"
#include "interaction/drag_box.h"
#include "interaction/selection_passes.h"
#include "interaction/selection_regions.h"
#include "interaction/selection_rules.h"
#include "platform/events.h"
#include "store/accessors.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/walks.h"
#include "store/work_polygons.h"
#include "views/traversal.h"
#include "views/viewports.h"

#include <algorithm>

int MaskPolygonSelections, MaskTextureSelections;

Branch* ClickedBranch;
Matrixf ClickedBranchMatrix = FloatIDMatrix;

namespace {

/// What SelectScenePolygon found last.
WorkPoly* SceneSelectPoly;

void DeselectKind(int kind) {
    if (kind == SelectKindPolygons)
        DeselectAllPolygons();
    else if (kind == SelectKindVertices)
        DeselectAllVertices();
    else
        SelectScene(nullptr);
}

int FollowBand() {
    return DragBox(0, 0, CurrentWindow->Width, CurrentWindow->Height, 0);
}

void SelectDraggedPolygons(View* view) {
    if (!DragWasClick()) {
        BoxPolygons(view);
        return;
    }
    Polygon* polygon = SelectSinglePolygon(view);
    if (!polygon)
        return;
    if (gl::getbutton(gl::QKEY))
        SelectConnectedRegion(polygon);
    else if (gl::getbutton(gl::TABKEY))
        SelectSmoothingRegion(polygon);
    else
        ApplyPolygonRule(polygon);
}

void SelectDraggedVertices(View* view, int deselect) {
    if (!DragWasClick()) {
        BoxVertices(view, deselect);
        return;
    }
    Vertex* vertex = SelectSingleVertex(view);
    if (!vertex)
        return;
    if (deselect)
        SetVertexSelected(CurrentObject(), vertex, 0);
    else
        ApplyVertexRule(vertex);
}

void SelectDraggedBranches(View* view) {
    ClearAllSceneFlags();
    if (!DragWasClick()) {
        BoxPolygons(view);
    } else if (SelectSingleObject(view)) {
        ApplyBranchRule(ClickedBranch);
    }
    if (AnySceneSelected()) {
        Trace("Some Scene Selected...\n");
        NoSceneSelection = 0;
        SelectedBranch() = nullptr;
    } else {
        Trace("No Scene Selected...\n");
        SelectScene(nullptr);
    }
    DirtyModelWindows();
    CallSlot(TheSceneSlots.DirtySceneBuilder);
}

void SelectOrDeselect(View* view, int kind, int deselect) {
    if (kind == SelectKindPolygons && ShiftAndCtrlHeld()) {
        SelectQstrip(SelectSinglePolygon(view));
        return;
    }
    const bool deselectFirst = !deselect && !AnyModifierHeld();
    if (!FollowBand())
        return;
    if (deselectFirst)
        DeselectKind(kind);
    if (kind == SelectKindPolygons)
        SelectDraggedPolygons(view);
    else if (kind == SelectKindVertices)
        SelectDraggedVertices(view, deselect);
    else
        SelectDraggedBranches(view);
}

PolygonHit PickBranch(View* view) {
    const PolygonHit hit = PickPolygon(view);
    ClickedBranch = hit.Branch;
    if (hit.Branch)
        RealMatrixToFloat(hit.Placement, ClickedBranchMatrix);
    return hit;
}

} // namespace

void SelectThings(View* view, int kind) {
    SelectOrDeselect(view, kind, 0);
}

void DeselectVertices(View* view) {
    SelectOrDeselect(view, SelectKindVertices, 1);
}

Vertex* SelectSingleVertex(View* view) {
    const VertexHit hit = PickVertex(view);
    if (!hit.Vertex || ObjectIsolated)
        return hit.Vertex;
    // Vertices of the scene belong to objects that are placed somewhere else.
    static Vertex placed;
    placed = Vertex{};
    std::copy_n(hit.Place, 3, placed.Position);
    return &placed;
}

Polygon* SelectSinglePolygon(View* view) {
    return PickPolygon(view).Polygon;
}

Object* SelectSingleObject(View* view) {
    return PickBranch(view).Object;
}

WorkPoly* SelectScenePolygon(View* view) {
    FreeSceneSelectPoly();
    const PolygonHit hit = PickBranch(view);
    if (!hit.Polygon)
        return nullptr;
    SceneSelectPoly = NewWorkPoly();
    for (const PolygonBead* bead : EveryBead(hit.Polygon)) {
        double place[3];
        TransformCoordinate(bead->Vertex->Position, hit.Placement, place);
        AddToWorkPoly(SceneSelectPoly, place);
    }
    return SceneSelectPoly;
}

void FreeSceneSelectPoly() {
    if (SceneSelectPoly)
        FreeWorkPoly(SceneSelectPoly);
    SceneSelectPoly = nullptr;
}

void BackfaceCheck(View* view, Polygon* polygon) {
    polygon->Mark = !PolygonShowsFront(view, polygon);
}
