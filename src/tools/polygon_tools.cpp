#include "tools/polygon_tools.h"

#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/menu.h"
#include "gooey/message_gadgets.h"
#include "gooey/pointer.h"
#include "interaction/bar_gadgets.h"
#include "interaction/picking.h"
#include "interaction/selection.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "platform/events.h"
#include "platform/system.h"
#include "store/lists.h"
#include "store/new_vertices.h"
#include "tools/creation_guards.h"
#include "tools/grid_points.h"
#include "tools/polygon_entry.h"
#include "views/display_flags.h"
#include "views/grid.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>

int HideVertices;

namespace {

extern const Tool ConnectTool, FreehandTool;

constexpr std::int16_t ConnectStatus[] = {83, 90, 98, 0};
constexpr std::int16_t ConnectCompleteStatus[] = {83, 90, 98, 104, 0};
constexpr std::int16_t FreehandStatus[] = {127, 90, 98, 0};
constexpr std::int16_t FreehandCompleteStatus[] = {127, 90, 98, 104, 0};

constexpr int ConnectLabel = 113, FreehandLabel = 115, HideLabel = 114;

/// Entered vertices are picked like the model's.
constexpr double PickRadius = 10;

bool CanComplete() {
    return PolyVertexList.size() >= 3;
}

void UpdatePolyStatus() {
    if (ToolRuns(FreehandTool))
        SetToolStatus(CanComplete() ? FreehandCompleteStatus : FreehandStatus);
    else
        SetToolStatus(CanComplete() ? ConnectCompleteStatus : ConnectStatus);
    DirtyModelWindows();
}

/// Pixels from the pointer; infinite for null and for what lies behind the eye.
double PixelsFromPointer(View* view, const Vertex* vertex) {
    double place[3];
    if (!vertex || !Calc2dOf(view, vertex->Position, place))
        return HUGE_VAL;
    return std::hypot(place[0] - MouseX, place[1] - MouseY);
}

Vertex* VertexUnderPointer(View* view) {
    Vertex* nearest = SelectSingleVertex(view);
    double distance = nearest ? PixelsFromPointer(view, nearest) : PickRadius;
    for (Vertex* vertex : Along<&Vertex::Next>(NewVertices))
        if (const double pixels = PixelsFromPointer(view, vertex); pixels < distance) {
            nearest = vertex;
            distance = pixels;
        }
    return nearest;
}

/// Enters the vertex under the pointer, or completes the polygon when that is the first one. 0 when there is none.
int PickPolyVertex(View* view, int bell) {
    Vertex* vertex = VertexUnderPointer(view);
    if (!vertex) {
        if (bell)
            gl::ringbell();
        return 0;
    }
    const auto entered = std::find_if(PolyVertexList.begin(), PolyVertexList.end(),
                                      [&](const EnteredVertex& entry) { return entry.Vertex == vertex; });
    if (entered == PolyVertexList.end())
        EnterPolyVertex(vertex, false);
    else if (entered == PolyVertexList.begin())
        CompletePolygon(view);
    UpdatePolyStatus();
    return 1;
}

void PolyConnectLeft(View* view) {
    PickPolyVertex(view, 1);
}

void PolyCreator(View* view) {
    if (PickPolyVertex(view, 0))
        return;
    Vertex* vertex = MakeVertexOnGrid(view, 0);
    if (!vertex)
        return;
    EnterPolyVertex(vertex, true);
    DragCoordAroundGrid(view, vertex->Position, gl::LEFTMOUSE, nullptr);
    UpdatePolyStatus();
}

void HideAsWanted(GadgetArg) {
    HidingVertices = HideVertices;
    DirtyModelWindows();
}

int PolyCreateKey(View* view, int character) {
    switch (character) {
    case BackspaceCharacter:
        if (PolyVertexList.empty())
            DeleteLastEnteredPolygon();
        else
            RemoveLastPolyVertex();
        break;
    case ReturnCharacter:
        CompletePolygon(view);
        RemoveAllPolyVertices();
        break;
    case 'h':
        HideVertices = !HideVertices;
        HideAsWanted(nullptr);
        break;
    default:
        return 0;
    }
    UpdatePolyStatus();
    return 1;
}

std::int32_t CreatePolyMenuCheck() {
    return CanComplete() ? 0 : MenuHidden;
}

const MenuEntry PolyConMenu[] = {
    {"Create polygons", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Complete polygon", MenuEntryItem, 1, ReturnCharacter, nullptr, CreatePolyMenuCheck},
    {"Done", MenuEntrySeparated, 2, ' ', nullptr, nullptr},
    GridControlEntry,
    MaterialsEntry,
    ViewEntry,
    LastSettingsEntry,
};

void PolyCreateToolItems() {
    AddBarText(ToolRuns(FreehandTool) ? FreehandLabel : ConnectLabel);
    AddDeleteLastButton();
    AddIntCheck(GooeyRight, BarCheckY, 0, CheckSmallFont, nullptr, HideLabel, HideAsWanted, &HideVertices);
}

int SomethingEntered() {
    return !PolyVertexList.empty();
}

void LeavePolyCreation() {
    RemoveAllPolyVertices();
    DeselectAllVertices();
    ShowVertices = HidingVertices = 0;
}

const Tool ConnectTool = {
    .Left = PolyConnectLeft,
    .Menu = PolyConMenu,
    .Key = PolyCreateKey,
    .Status = ConnectStatus,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = PolyCreateToolItems,
    .CancelCode = PolyCancelCode,
    .ManualPage = "R_PolysFromVertices",
    .HoldsWork = SomethingEntered,
    .Leave = LeavePolyCreation,
};

const Tool FreehandTool = {
    .Left = PolyCreator,
    .Menu = PolyConMenu,
    .Key = PolyCreateKey,
    .Status = FreehandStatus,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = PolyCreateToolItems,
    .CancelCode = PolyCancelCode,
    .ManualPage = "R_PolysFreehand",
    .HoldsWork = SomethingEntered,
    .Leave = LeavePolyCreation,
};

void StartEntering(const Tool& tool) {
    if (!CreationInObjectMode() || !PolygonCreationAllowed())
        return;
    StartPolyCreation(0);
    DeselectEverything();
    ShowVertices = 1;
    HidingVertices = HideVertices;
    BeginTool(tool);
}

} // namespace

void CreatePolysByConnecting() {
    StartEntering(ConnectTool);
}

void CreatePolysFreehand() {
    StartEntering(FreehandTool);
}
