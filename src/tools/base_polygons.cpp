#include "tools/base_polygons.h"

#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/walks.h"
#include "tools/sub_polygon_selection.h"
#include "views/display_flags.h"
#include "views/viewports.h"

int CapBottoms;
std::vector<Polygon*> CapList, RemovedCaps;

namespace {

void RemoveCaps() {
    for (Polygon* cap : CapList)
        UnlinkPolygon(cap);
    RemovedCaps = CapList;
}

void RestoreCaps() {
    SubObject* const selected = SelectedSubObject();
    for (auto cap = RemovedCaps.rbegin(); cap != RemovedCaps.rend(); ++cap) {
        SelectedSubObject() = (*cap)->SubObject;
        LinkPolygon(*cap, nullptr);
    }
    SelectedSubObject() = selected;
    RemovedCaps.clear();
}

} // namespace

void SelectAsSolid(Polygon* polygon) {
    polygon->Selected = SelectionsSolid;
    PolygonSelectionChanged() = 1;
}

void CollectCaps() {
    CapList.clear();
    RemovedCaps.clear();
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        if (polygon->Mark)
            CapList.push_back(polygon);
    for (Polygon* cap : CapList) {
        SelectAsSolid(cap);
        if (cap->Parent)
            MovePolygon(cap, nullptr);
        ReversePolygon(cap);
    }
    if (!CapBottoms)
        RemoveCaps();
}

void ChangeCapping() {
    if (CapBottoms && !RemovedCaps.empty())
        RestoreCaps();
    else if (!CapBottoms && RemovedCaps.empty())
        RemoveCaps();
    DirtyModelWindows();
}

void FreeCaps() {
    for (Polygon* cap : RemovedCaps)
        LosePolygon(cap);
    CapList.clear();
    RemovedCaps.clear();
}
