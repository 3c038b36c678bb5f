#include "tools/height_tool.h"

#include "geometry/boxes.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/menu.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/window_stack.h"
#include "interaction/bar_gadgets.h"
#include "interaction/ruler.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/integrity.h"
#include "store/normals.h"
#include "store/walks.h"
#include "tools/base_polygons.h"
#include "views/grid.h"
#include "views/moves.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int RulerLabel = 119, CloseBaseLabel = 122;

constexpr std::int16_t RulerStatus[] = {118, 0};

/// Null while no such tool runs.
const HeightShape* Shape;
/// So that a lower height than before lets the object shrink again.
double OldObjectRadius;

void RenewDerivedData() {
    NormalsOK() = 0;
}

// The tool may be ended by the ruler or by its own bar, menu and keys: whichever comes first ends the other.

void FinishByRuler() {
    if (Shape)
        ClearControl();
}

void CancelByRuler() {
    if (Shape)
        CancelTool();
}

void Leave() {
    const HeightShape* ending = Shape;
    Shape = nullptr;
    CloseRulerWindow(1);
    FreeCaps();
    ending->Release();
    KeepPolygonsWithoutArea = 0;
    ConnectionsOK() = 0;
}

void BuildBar() {
    AddBarText(Shape->Title);
    AddIntCheck(
        GooeyRight, BarCheckY, 0, CheckSmallFont, nullptr, CloseBaseLabel, [](GadgetArg) { ChangeCapping(); },
        &CapBottoms);
}

const MenuEntry Menu[] = {
    {"Peak/Raise", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntrySeparated, 1, ' ', nullptr, nullptr},
    {"View", MenuEntryLast, 0, 0, ViewMenu, nullptr},
};

/// Its page of the manual is that of the shape.
Tool HeightTool = {
    .Left = DummyClickFunc,
    .Menu = Menu,
    .Status = RulerStatus,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .CancelCode = EscapeCharacter,
    .Leave = Leave,
};

/// The object's box and radius reach as far as the boxes of its sub-objects.
void GrowObject() {
    Object* object = CurrentObject();
    double farthest[3] = {0, 0, 0};
    for (const SubObject* subObject : EverySubObject(object)) {
        if (subObject->Min[0] > subObject->Max[0])
            continue;
        GrowBox(object->Min, object->Max, subObject->Min);
        GrowBox(object->Min, object->Max, subObject->Max);
        for (int axis = 0; axis < 3; ++axis)
            farthest[axis] =
                std::max({farthest[axis], std::fabs(subObject->Min[axis]), std::fabs(subObject->Max[axis])});
    }
    ObjectRadius() = OldObjectRadius;
    ChangeObjectRadius(farthest);
}

} // namespace

void ChangeHeight(double squares) {
    if (!Shape)
        return;
    Shape->Update(squares * OneGridSquare());
    RedrawModelWindows();
}

void BeginHeightTool(const HeightShape& shape) {
    HeightTool.ManualPage = shape.ManualPage;
    Shape = &shape;
    BeginTool(HeightTool);
    BeforeToolChange();
    ClearAllPolygonFlags();
    OldObjectRadius = ObjectRadius();
    KeepPolygonsWithoutArea = 1;
}

void LetUserSetHeight() {
    CollectCaps();
    CheckIntegrity();
    WindowScope scope(Viewport[0]);
    OpenRulerGizmo(msg(RulerLabel), ChangeHeight, RenewDerivedData, CancelByRuler, FinishByRuler, 1.0);
    DirtyModelWindows();
}

void PolygonsHaveMoved(const std::vector<Polygon*>& polygons) {
    if (!Moving || !ConnectionsOK()) {
        RenewDerivedData();
        return;
    }
    for (const Polygon* polygon : polygons)
        for (const PolygonBead* bead : EveryBead(polygon))
            GrowBox(polygon->SubObject->Min, polygon->SubObject->Max, bead->Vertex->Position);
    GrowObject();
    AppearanceChanged(CurrentObject());
}
