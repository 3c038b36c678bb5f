#include "tools/sub_polygon_selection.h"

#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/selection_lists.h"
#include "store/walks.h"

namespace {

/// Widens the selection by what widen(polygon) selects for each polygon selected so far, and rebuilds its list when
/// that was any.
template <class Widen>
void WidenSelection(Widen widen) {
    bool changed = false;
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        if (polygon->Selected)
            changed |= widen(polygon);
    if (changed)
        ConnectSelectedPolygons();
}

bool Select(Polygon* polygon) {
    if (polygon->Selected)
        return false;
    SetPolygonSelected(CurrentObject(), polygon, 1);
    return true;
}

bool SelectChildren(Polygon* polygon) {
    bool changed = false;
    for (Polygon* child : EverySubPolygon(polygon))
        changed |= Select(child);
    return changed;
}

bool SelectParents(Polygon* polygon) {
    bool changed = false;
    for (Polygon* parent = polygon->Parent; parent && Select(parent); parent = parent->Parent)
        changed = true;
    return changed;
}

} // namespace

void SelectAllUnselectedChildren() {
    WidenSelection(SelectChildren);
}

void SelectAllUnselectedParents() {
    WidenSelection(SelectParents);
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
    UnlinkPolygon(polygon);
    LinkPolygon(polygon, parent);
    if (parent)
        polygon->SubObject = parent->SubObject;
    for (Polygon* child : EverySubPolygon(polygon))
        child->SubObject = polygon->SubObject;
}

std::vector<Polygon*> SelectedPolygons() {
    std::vector<Polygon*> polygons;
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        polygons.push_back(polygon);
    return polygons;
}
