#include "tools/n_gons.h"

#include "geometry/angles.h"
#include "gooey/event_loop.h"
#include "gooey/inc_dec.h"
#include "gooey/menu.h"
#include "gooey/pointer.h"
#include "interaction/bar_gadgets.h"
#include "interaction/picking.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "store/lists.h"
#include "store/new_vertices.h"
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

/// Follows the pointer until a press or release of the left button finds a ring with a size; Escape gives it up.
class RingDrag : public ViewDrag {
  public:
    RingDrag(View* view, double centreX, double centreY)
        : ViewDrag(view),
          TheRing{centreX, centreY, MouseX, MouseY, 0, 0} {}

    /// Whether the user has ended it, not the program.
    bool Completed = false;

  protected:
    bool Step() override {
        MeasureRing(Dragged, TheRing);
        PlaceRing(Dragged, TheRing);
        return true;
    }

    bool Ends(int device, short) override {
        if (device != gl::LEFTMOUSE)
            return false;
        MeasureRing(Dragged, TheRing);
        Completed = TheRing.Radius > 0;
        return Completed;
    }

    bool Cancel() override { return true; }

  private:
    Ring TheRing;
};

void PolyCircleCreator(View* view) {
    double centre[3];
    if (!GridPlanePoint(view, centre))
        return;
    for (int i = 0; i < CircleSides; ++i)
        EnterPolyVertex(AddNewVertex(0, 0, 0), true);
    RingDrag drag(view, centre[0], centre[1]);
    drag.Run();
    if (drag.Completed)
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
