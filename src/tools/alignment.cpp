#include "tools/alignment.h"

#include "geometry/boxes.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/undo.h"
#include "store/walks.h"
#include "tools/creation_guards.h"
#include "tools/sub_polygon_selection.h"
#include "views/viewports.h"

double LastAlignOffset[3];

namespace {

/// What a coordinate of the box gives to the offset.
enum class Share { None, Low, Middle, High };

struct Shares {
    Share Of[3];
};

constexpr Share None = Share::None, Low = Share::Low, Middle = Share::Middle, High = Share::High;

/// By Alignment.
constexpr Shares Alignments[] = {
    {{Middle, Middle, Middle}}, {{Middle, Middle, Low}}, {{Low, None, None}},    {{Middle, None, None}},
    {{High, None, None}},       {{None, Low, None}},     {{None, Middle, None}}, {{None, High, None}},
    {{None, None, Low}},        {{None, None, Middle}},  {{None, None, High}},
};

double ShareOf(Share share, double low, double high) {
    switch (share) {
    case Share::Low:
        return low;
    case Share::Middle:
        return (low + high) / 2;
    case Share::High:
        return high;
    case Share::None:
        break;
    }
    return 0;
}

} // namespace

int DoAlign(int alignment) {
    double low[3], high[3];
    EmptyBox(low, high);
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        if (vertex->Mark)
            GrowBox(low, high, vertex->Position);
    if (low[0] > high[0])
        return 0;
    CopyCurrentObject();
    for (int axis = 0; axis < 3; ++axis)
        LastAlignOffset[axis] = ShareOf(Alignments[alignment].Of[axis], low[axis], high[axis]);
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        for (int axis = 0; vertex->Mark && axis < 3; ++axis)
            vertex->Position[axis] -= LastAlignOffset[axis];
    ConnectionsOK() = 0;
    DirtyModelWindows();
    return 1;
}

void AlignPolygons(int alignment) {
    if (!SomePolygonsSelected())
        return;
    ClearAllVertexFlags();
    for (const Polygon* polygon : SelectedPolygons())
        for (PolygonBead* bead : EveryBead(polygon))
            bead->Vertex->Mark = 1;
    DoAlign(alignment);
}

void AlignObject(int alignment) {
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        vertex->Mark = 1;
    if (DoAlign(alignment))
        MovePlacements(LastAlignOffset);
}
