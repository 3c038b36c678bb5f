#include "tools/polygon_copies.h"

#include "geometry/planes.h"
#include "interaction/selection_sets.h"
#include "materials/material_usage.h"
#include "store/accessors.h"
#include "store/duplicates.h"
#include "store/polygon_editing.h"
#include "store/undo.h"
#include "store/walks.h"
#include "tools/creation_guards.h"
#include "tools/sub_polygon_selection.h"
#include "views/viewports.h"

namespace {

/// The copies, which their originals know as Copy, get the same tree of sub-polygons, as far as it was copied.
void HangCopiesLikeOriginals(const std::vector<Polygon*>& originals) {
    for (Polygon* polygon : originals)
        if (polygon->Parent && polygon->Parent->Selected)
            MovePolygon(polygon->Copy, polygon->Parent->Copy);
}

Polygon* MirrorImage(const Polygon* polygon, int axis, const double* plane) {
    PolygonBead* beads = nullptr;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        const double* place = bead->Vertex->Position;
        Vertex* image = AddVertex(place[0], place[1], place[2]);
        ReflectVertex(image, axis, plane);
        CopyPolygonBeadInfo(AddPolygonBead(beads, image), bead);
    }
    SelectedSubObject() = polygon->SubObject;
    Polygon* mirrored = AddPolygon(beads, nullptr);
    CopyPolygonInfo(mirrored, polygon);
    ReversePolygon(mirrored);
    return mirrored;
}

} // namespace

void ReflectVertex(Vertex* vertex, int axis, const double* plane) {
    if (axis == MirrorGrid)
        ReflectCoordinateInPlane(vertex->Position, plane, vertex->Position);
    else
        vertex->Position[axis] = -vertex->Position[axis];
}

void MirrorPolygons(View* view, int axis) {
    if (!SomePolygonsSelected())
        return;
    CopyCurrentObject();
    SelectAllUnselectedChildren();
    double plane[4] = {};
    if (axis == MirrorGrid)
        GetPlaneFromTransformation(view->GridMatrix, plane);
    const std::vector<Polygon*> originals = SelectedPolygons();
    SubObject* const selected = SelectedSubObject();
    for (Polygon* polygon : originals)
        polygon->Copy = MirrorImage(polygon, axis, plane);
    SelectedSubObject() = selected;
    HangCopiesLikeOriginals(originals);
    DeleteDuplicateVertices();
    DeselectAllPolygons();
    DirtyModelWindows();
}

void DoublePolygons() {
    if (!SomePolygonsSelected())
        return;
    const int lightGroup = GenerateLightGroup();
    CopyCurrentObject();
    SelectAllUnselectedChildren();
    const std::vector<Polygon*> originals = SelectedPolygons();
    for (Polygon* polygon : originals) {
        Polygon* back = CopyOfPolygon(polygon, 0);
        LinkPolygon(back, nullptr);
        ReversePolygon(back);
        if (back->Lighting == LightingSmooth)
            back->LightGroup = lightGroup;
        polygon->Copy = back;
    }
    HangCopiesLikeOriginals(originals);
    DirtyModelWindows();
}
