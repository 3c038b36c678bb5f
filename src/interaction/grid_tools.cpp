#include "interaction/grid_tools.h"

#include "gooey/event_loop.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/messages.h"
#include "interaction/grid_gizmo.h"
#include "interaction/grid_placement.h"
#include "interaction/pending_pick.h"
#include "interaction/picking.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/storage.h"
#include "views/grid.h"
#include "views/moves.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <algorithm>
#include <iterator>

double GridAlign[3][3];
int GridAlignIndex;
int GridAxisChoice = -1, GridAlignChoice = -1, GridOffsetChoice = -1;

namespace {

constexpr int VerticesInLine = 41;

constexpr std::int16_t ToVertexStatus[] = {27, 0};
constexpr std::int16_t WithMouseStatus[] = {28, 0};
constexpr std::int16_t ToVerticesStatus[] = {29, 0};
constexpr std::int16_t ToPolygonStatus[] = {30, 0};

const MenuEntry Menu[] = {
    {"Align grid", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Cancel...", MenuEntryLast, 1, 0, nullptr, nullptr},
};

/// An alignment was made; whatever else ends the tool leaves no choice behind.
bool Aligned;

void GridToolMenu(View* view) {
    if (DoPopup(Menu) == 1)
        EndGridTool(view, EscapeCharacter);
}

void FinishGridTool() {
    ClearGridControl();
    GridOffsetChoice = -1;
    if (Aligned)
        SetGridAngle(0);
    else
        GridAlignChoice = -1;
    AligningToVertices = 0;
    GridAlignIndex = 0;
    ShowGrid(1);
    if (ObjectIsolated)
        DeselectAllVertices();
    DirtyModelWindows();
}

/// The grid's centre follows the pointer within the grid's plane.
class GridCentreDrag : public ViewDrag {
  public:
    explicit GridCentreDrag(View* view) : ViewDrag(view), Before(view->GridMatrix) {}

  private:
    bool Step() override {
        double point[3];
        if (!IntersectGrid(Dragged, point))
            return false;
        TransformCoordinate(point, MatrixInverse(ViewMat(Dragged)), point);
        const Matrix former = Dragged->GridMatrix;
        CentreGrid(Dragged, point);
        return Dragged->GridMatrix != former;
    }

    bool Cancel() override {
        Dragged->GridMatrix = Before;
        return true;
    }

    const Matrix Before;
};

PickAnswer TakeVertex(const Picked& picked) {
    if (ObjectIsolated)
        MoveGridPlaneTo(picked.View, picked.Point);
    else
        CentreGrid(picked.View, picked.Point);
    return PickAnswer::Taken;
}

PickAnswer DragCentre(const Picked& picked) {
    return GridCentreDrag(picked.View).Run() ? PickAnswer::Taken : PickAnswer::Ignored;
}

PickAnswer EnterFor3Vertices(View* view) {
    return view->Perspective ? PickAnswer::Taken : PickAnswer::Refused;
}

bool WasPicked(const double* point) {
    return std::any_of(GridAlign, GridAlign + GridAlignIndex,
                       [point](const double(&other)[3]) { return std::equal(point, point + 3, other); });
}

PickAnswer Take3Vertices(const Picked& picked) {
    if (WasPicked(picked.Point))
        return PickAnswer::Refused;
    std::copy_n(picked.Point, 3, GridAlign[GridAlignIndex]);
    if (GridAlignIndex < 2)
        return PickAnswer::Taken;
    Aligned = AlignGridToPoints(picked.View, GridAlign) != 0;
    if (!Aligned)
        TellUser(VerticesInLine);
    return PickAnswer::Taken;
}

PickAnswer EnterForPolygon(View* view) {
    if (view->Perspective)
        return PickAnswer::Taken;
    gl::ringbell();
    return PickAnswer::GivenUp;
}

PickAnswer TakePolygon(const Picked& picked) {
    Aligned = picked.Polygon ? AlignGridToPolygon(picked.View, picked.Polygon) != 0
                             : AlignGridToPolygon(picked.View, picked.ScenePolygon) != 0;
    return PickAnswer::Taken;
}

const PendingPick GridToVertex = {
    .Take = TakeVertex,
    .Missed = PickAnswer::Ignored,
    .Status = {ToVertexStatus},
    .Disables = &GridGizmo,
    .OfGrid = true,
    .Ended = FinishGridTool,
};

const PendingPick GridWithMouse = {
    .Wants = PendingPick::Kind::Press,
    .Take = DragCentre,
    .Status = {WithMouseStatus},
    .Disables = &GridGizmo,
    .OfGrid = true,
    .Ended = FinishGridTool,
};

const PendingPick GridToVertices = {
    .Wanted = 3,
    .Points = GridAlign,
    .Count = &GridAlignIndex,
    .Enter = EnterFor3Vertices,
    .Take = Take3Vertices,
    .Missed = PickAnswer::Ignored,
    .Status = {ToVerticesStatus, ToVerticesStatus, ToVerticesStatus},
    .Disables = &GridGizmo,
    .EscapeTakesBack = true,
    .OfGrid = true,
    .Ended = FinishGridTool,
};

const PendingPick GridToPolygon = {
    .Wants = PendingPick::Kind::Polygon,
    .Enter = EnterForPolygon,
    .Take = TakePolygon,
    .Status = {ToPolygonStatus},
    .Disables = &GridGizmo,
    .OfGrid = true,
    .Ended = FinishGridTool,
};

const PendingPick* const GridTools[] = {&GridToVertex, &GridWithMouse, &GridToVertices, &GridToPolygon};

void Start(const PendingPick& pick) {
    Aligned = false;
    BeginPick(pick);
    RightGridFunc = GridToolMenu;
}

/// The object's only selected polygon; null when there are none or more.
const Polygon* OnlySelectedPolygon() {
    CleanUpObject();
    const Polygon* first = FirstSelectedPolygon();
    return first && !first->NextSelected ? first : nullptr;
}

int AlignToSelectedPolygon() {
    View* const view = ViewOfViewport(0);
    const Polygon* const polygon = ObjectIsolated && view->Perspective ? OnlySelectedPolygon() : nullptr;
    if (!polygon)
        return 0;
    AlignGridToPolygon(view, polygon);
    SetGridAngle(0);
    DirtyModelWindows();
    return 1;
}

} // namespace

void StartGridToVertex() {
    DeselectAllVertices();
    GridAlignChoice = -1;
    Start(GridToVertex);
}

void StartGridWithMouse() {
    GridAlignChoice = -1;
    Start(GridWithMouse);
}

void StartGridToVertices() {
    GridAxisChoice = -1;
    DeselectAllVertices();
    Start(GridToVertices);
    AligningToVertices = 1;
}

void StartGridToPolygon() {
    GridAxisChoice = -1;
    if (AlignToSelectedPolygon())
        return;
    Start(GridToPolygon);
    ShowGrid(0);
}

void EndGridTool(View*, int character) {
    if (character == EscapeCharacter)
        for (const PendingPick* tool : GridTools)
            EndPick(*tool);
}

int GridToolRuns() {
    return std::any_of(std::begin(GridTools), std::end(GridTools),
                       [](const PendingPick* tool) { return PickWaits(*tool) != 0; });
}
