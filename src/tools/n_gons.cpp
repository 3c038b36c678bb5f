#include "tools/n_gons.h"

#include "geometry/angles.h"
#include "gooey/event_loop.h"
#include "gooey/inc_dec.h"
#include "gooey/menu.h"
#include "gooey/pointer.h"
#include "interaction/picking.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "platform/events.h"
#include "platform/system.h"
#include "store/lists.h"
#include "store/new_vertices.h"
#include "tools/bar_gadgets.h"
#include "tools/creation_guards.h"
#include "tools/polygon_entry.h"
#include "views/display_flags.h"
#include "views/moves.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>

int CircleSides = 4;

namespace {

constexpr int SidesLabel = 116;

constexpr std::int16_t Status[] = {80, 90, 98, 0};

/// The pointer has to move this far, squared, before the polygon has a size.
constexpr int LeastMoveSquared = 10;

/// A polygon that is being dragged out, in the plane of the grid.
struct Ring {
    double CentreX, CentreY;
    int StartX, StartY;   // the pointer
    double Radius, Angle; // to the newest vertex, under the pointer; radians
};

/// Where the pointer meets the grid, in its plane; 0 when it does not.
int GridPlanePoint(View* view, double* point) {
    if (!IntersectGrid(view, point))
        return 0;
    TransformCoordinate(point, MatrixInverse(GridMat(view)), point);
    return 1;
}

void MeasureRing(View* view, Ring& ring) {
    const int dx = MouseX - ring.StartX, dy = MouseY - ring.StartY;
    double point[3];
    if (dx * dx + dy * dy < LeastMoveSquared) {
        ring.Radius = ring.Angle = 0;
    } else if (GridPlanePoint(view, point)) {
        const double x = point[0] - ring.CentreX, y = point[1] - ring.CentreY;
        ring.Radius = std::hypot(x, y);
        ring.Angle = std::atan2(y, x);
    }
}

void PlaceRing(const View* view, const Ring& ring) {
    int corner = 0;
    for (Vertex* vertex : Along<&Vertex::Next>(NewVertices)) {
        const auto [cosine, sine] = TurnBy(ring.Angle * RadiansToDegrees + 360.0 * corner++ / CircleSides);
        const double place[3] = {ring.CentreX + ring.Radius * cosine, ring.CentreY + ring.Radius * sine, 0};
        TransformCoordinate(place, view->GridMatrix, vertex->Position);
    }
}

/// Follows the pointer until a press or release of the left button finds a ring with a size. 0 when the user or the
/// program gave it up.
int DragRing(View* view, Ring& ring) {
    const auto follow = [&] {
        MeasureRing(view, ring);
        PlaceRing(view, ring);
        RedrawModelWindows();
    };
    int shownX = -1, shownY = -1;
    for (;;) {
        ReadMousePos();
        if (MouseX != shownX || MouseY != shownY)
            follow();
        else
            gl::sginap(1);
        shownX = MouseX;
        shownY = MouseY;
        int device;
        short value;
        while (const int state = KeepQueueHappy(device, value)) {
            if (state < 0 || (device == gl::KEYBD && value == EscapeCharacter))
                return 0;
            if (device != gl::LEFTMOUSE)
                continue;
            follow();
            if (ring.Radius > 0)
                return 1;
        }
        if (ModalLoopMustEnd())
            return 0;
    }
}

void PolyCircleCreator(View* view) {
    double centre[3];
    if (!GridPlanePoint(view, centre))
        return;
    Ring ring = {centre[0], centre[1], MouseX, MouseY, 0, 0};
    for (int i = 0; i < CircleSides; ++i)
        EnterPolyVertex(AddNewVertex(0, 0, 0), true);
    StartMove();
    const int complete = DragRing(view, ring);
    StopMove();
    if (complete)
        CompletePolygon(view);
    RemoveAllPolyVertices();
}

int PolyCircleKey(View*, int character) {
    if (character != BackspaceCharacter)
        return 0;
    DeleteLastEnteredPolygon();
    return 1;
}

void ChangeCircleSides(GadgetArg, int) {
    CircleSides = std::clamp(CircleSides, LeastCircleSides, MostCircleSides);
}

const MenuEntry PolyCircleMenu[] = {
    {"Create n-gons", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntrySeparated, 1, ' ', nullptr, nullptr},
    GridControlEntry,
    MaterialsEntry,
    ViewEntry,
    LastSettingsEntry,
};

void PolyCircleToolItems() {
    constexpr int sidesWidth = 100;
    AddBarText(SidesLabel);
    AddIncDec(GooeyRight, BarIncDecY, sidesWidth, 0, nullptr, ChangeCircleSides, &CircleSides);
    AddDeleteLastButton();
}

const Tool NGonTool = {
    .Left = PolyCircleCreator,
    .Menu = PolyCircleMenu,
    .Key = PolyCircleKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = PolyCircleToolItems,
    .CancelCode = PolyCancelCode,
    .ManualPage = "R_CreateN-Gons",
    .Leave = RemoveAllPolyVertices,
};

} // namespace

void CreateCircularPolys() {
    if (!CreationInObjectMode() || !PolygonCreationAllowed())
        return;
    StartPolyCreation(1);
    DeselectEverything();
    ShowVertices = 0;
    BeginTool(NGonTool);
}
