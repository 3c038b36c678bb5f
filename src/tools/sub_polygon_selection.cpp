#include "tools/sub_polygon_selection.h"

#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/selection_lists.h"
#include "store/walks.h"

namespace {

bool Select(Polygon* polygon) {
    if (polygon->Selected)
        return false;
    SetPolygonSelected(CurrentObject(), polygon, 1);
    return true;
}

/// Up to one that is selected already.
bool SelectParents(const Polygon* polygon) {
    bool changed = false;
    for (Polygon* parent = polygon->Parent; parent && Select(parent); parent = parent->Parent)
        changed = true;
    return changed;
}

} // namespace

void SelectAllUnselectedChildren() {
    bool changed = false;
    // Each polygon comes after the one that it lies on.
    for (const SubObject* subObject : EverySubObject(CurrentObject()))
        for (const Polygon* root : EveryTopPolygon(subObject))
            for (Polygon* polygon : EverySubPolygon(root))
                if (polygon->Parent->Selected)
                    changed |= Select(polygon);
    if (changed)
        ConnectSelectedPolygons();
}

void SelectAllUnselectedParents() {
    bool changed = false;
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        if (polygon->Selected)
            changed |= SelectParents(polygon);
    if (changed)
        ConnectSelectedPolygons();
    SelectAllUnselectedChildren();
}

int IsSubPolygonOf(const Polygon* polygon, const Polygon* other) {
    for (const Polygon* parent = other->Parent; parent; parent = parent->Parent)
        if (parent == polygon)
            return 1;
    return 0;
}

int NoParentSelected(const Polygon* polygon) {
    for (const Polygon* parent = polygon->Parent; parent; parent = parent->Parent)
        if (parent->Selected)
            return 0;
    return 1;
}

void MovePolygon(Polygon* polygon, Polygon* parent) {
    const SubObject* const former = polygon->SubObject;
    UnlinkPolygon(polygon);
    LinkPolygon(polygon, parent);
    if (parent)
        polygon->SubObject = parent->SubObject;
    if (polygon->SubObject == former)
        return;
    for (Polygon* child : EverySubPolygon(polygon))
        child->SubObject = polygon->SubObject;
}

std::vector<Polygon*> SelectedPolygons() {
    std::vector<Polygon*> polygons;
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        polygons.push_back(polygon);
    return polygons;
}
