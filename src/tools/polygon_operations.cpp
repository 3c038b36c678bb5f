#include "tools/polygon_operations.h"

#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/undo.h"
#include "store/walks.h"
#include "tools/creation_guards.h"
#include "tools/sub_polygon_selection.h"
#include "views/viewports.h"

#include <vector>

namespace {

void ShowChange() {
    CurrentObject()->PolygonSelectionChanged = 1;
    DirtyModelWindows();
}

} // namespace

void DeleteSelectedPolygons(int deleteVertices, int takeUndo) {
    if (takeUndo)
        CopyCurrentObject();
    SelectAllUnselectedChildren();
    std::vector<Polygon*> doomed;
    for (Polygon* polygon : SelectedPolygons())
        if (NoParentSelected(polygon))
            doomed.push_back(polygon);
    for (Polygon* polygon : doomed)
        DeletePolygon(polygon, deleteVertices);
    ShowChange();
}

void DeletePolygons() {
    if (SomePolygonsSelected())
        DeleteSelectedPolygons(0, 1);
}

void ReversePolygons() {
    if (!SomePolygonsSelected())
        return;
    CopyCurrentObject();
    SelectAllUnselectedChildren();
    for (Polygon* polygon : SelectedPolygons()) {
        if (polygon->Parent && !polygon->Parent->Selected)
            MovePolygon(polygon, nullptr);
        ReversePolygon(polygon);
    }
    ShowChange();
}

void AttachSelectedPolys() {
    if (!SomePolygonsSelected())
        return;
    CopyCurrentObject();
    SelectAllUnselectedParents();
    for (Polygon* polygon : SelectedPolygons())
        if (!polygon->Parent)
            MovePolygon(polygon, nullptr);
    ShowChange();
}

void PopPolygon() {
    if (!SomePolygonsSelected())
        return;
    CopyCurrentObject();
    for (Polygon* polygon : SelectedPolygons())
        MovePolygon(polygon, nullptr);
    ShowChange();
}
