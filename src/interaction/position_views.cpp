#include "interaction/position_views.h"

#include "geometry/planes.h"
#include "gooey/event_loop.h"
#include "gooey/menu_session.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/input.h"
#include "interaction/picking.h"
#include "interaction/position_gizmo.h"
#include "interaction/position_pages.h"
#include "interaction/position_state.h"
#include "interaction/rotate_dial.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "views/labels.h"
#include "views/moves.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>

const std::int16_t PositionStatus[] = {82, 90, 100, 0};
double OffsetVertex[3];
int OffsetVertexIndex;

namespace {

constexpr std::int16_t RotateStatus[] = {82, 89, 90, 100, 0};
constexpr std::int16_t FirstVertexStatus[] = {31, 101, 0};
constexpr std::int16_t SecondVertexStatus[] = {32, 101, 0};
constexpr std::int16_t CentreStatus[] = {84, 101, 0};
constexpr std::int16_t AxisStatus[] = {85, 101, 0};
constexpr int SelectSingleVertexMessage = 43;

constexpr std::uint32_t AxisColour = 0xFF00FFFF;
/// Of the circle that marks an axis towards the viewer, pixels.
constexpr float AxisSpot = 6;

const MenuEntry Menu[] = {
    {"Position", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntryItem, 1, ' ', nullptr, nullptr},
    {"Cancel", MenuEntrySeparated, 2, 0, nullptr, nullptr},
    GridControlEntry,
    ViewEntry,
    LastSettingsEntry,
};

/// The axes of model space that lie in the plane of a view.
std::span<const int> AxesOf(const View* view) {
    static constexpr int all[] = {0, 1, 2};
    static constexpr int shown[3][2] = {{0, 1}, {1, 2}, {0, 2}};
    // A 3D view whose grid was aligned to something lies in no plane of two axes.
    if (view->Direction < 0 || view->Direction >= DefaultView2DCount)
        return all;
    return shown[view->Direction / 2];
}

/// Places what is positioned by the pointer's way over the grid. What it changed is taken back by Escape.
class OffsetDrag : public Drag {
  public:
    OffsetDrag(View* view, const double* press) : Dragged(view) {
        std::copy_n(press, 3, Press);
        std::copy_n(Position.Offset, 3, Before);
    }

  private:
    void Begin() override { StartOffsetMove(1); }

    void End() override {
        if (PositionGizmoIsOpen())
            StopOffsetMove();
        else
            StopMove();
    }

    bool Step() override {
        double point[3], former[3];
        if (!PositionGizmoIsOpen() || !GridPointUnderPointer(Dragged, point))
            return false;
        std::copy_n(Position.Offset, 3, former);
        for (int axis = 0; axis < 3; ++axis)
            ChangeOffset(axis, Before[axis] + point[axis] - Press[axis], 1, 0);
        return !std::equal(former, former + 3, Position.Offset);
    }

    void Show() override { DoOffsetUpdate(PositionTranslating); }

    bool Cancel() override {
        for (int axis = 0; axis < 3; ++axis)
            SetOffset(axis, Before[axis], 0);
        ShowPositionNumbers();
        return true;
    }

    View* const Dragged;
    double Press[3], Before[3];
};

/// The centre of rotation follows the pointer over the grid.
class CentreDrag : public ViewDrag {
  public:
    explicit CentreDrag(View* view) : ViewDrag(view) { std::copy_n(Position.Centre, 3, Before); }

  private:
    bool Step() override {
        double point[3], former[3];
        if (!GridPointUnderPointer(Dragged, point))
            return false;
        std::copy_n(Position.Centre, 3, former);
        for (const int axis : AxesOf(Dragged))
            Position.Centre[axis] = point[axis];
        return !std::equal(former, former + 3, Position.Centre);
    }

    bool Cancel() override {
        std::copy_n(Before, 3, Position.Centre);
        return true;
    }

    double Before[3];
};

void DragOffset(View* view) {
    double press[3];
    if (!GridPointUnderPointer(view, press))
        return;
    PushOffset();
    OffsetDrag(view, press).Run();
    DirtyModelWindows();
    DirtyWindow(OffsetGizmo);
}

void DragCentre(View* view) {
    PushOffset();
    const int formerMode = Position.CentreMode;
    Position.CentreMode = -1;
    if (!CentreDrag(view).Run())
        Position.CentreMode = formerMode;
    DirtyWindow(OffsetGizmo);
}

void TranslateBetween(const double* from, const double* to) {
    PushOffset();
    for (int axis = 0; axis < 3; ++axis)
        SetOffset(axis, Position.Offset[axis] + to[axis] - from[axis], 0);
}

/// 0 when one of the points gives no angle.
int RotateBetween(const double* from, const double* to) {
    double degrees;
    if (!AngleBetweenPoints(from, to, degrees))
        return 0;
    PushOffset();
    RotatePosition(degrees);
    Position.Angle = NormalisedDialAngle(Position.Angle - degrees);
    return 1;
}

void ShowSettled() {
    ShowPositionNumbers();
    ForceOffsetUpdate();
}

PickAnswer TakeDifference(const Picked& picked) {
    if (OffsetVertexIndex > 0) {
        TranslateBetween(OffsetVertex, picked.Point);
        ShowSettled();
    }
    return PickAnswer::Taken;
}

PickAnswer TakeCentre(const Picked& picked) {
    std::copy_n(picked.Point, 3, Position.Centre);
    ShowSettled();
    return PickAnswer::Taken;
}

PickAnswer TakeAxis(const Picked& picked) {
    if (!SetAxisThrough(picked.Point))
        return PickAnswer::Refused;
    ShowSettled();
    return PickAnswer::Taken;
}

PickAnswer TakeAngle(const Picked& picked) {
    if (OffsetVertexIndex == 0)
        return std::equal(picked.Point, picked.Point + 3, Position.Centre) ? PickAnswer::Refused : PickAnswer::Taken;
    if (!RotateBetween(OffsetVertex, picked.Point))
        return PickAnswer::Refused;
    ShowSettled();
    return PickAnswer::Taken;
}

void PickHasEnded() {
    Position.TranslateMode = DragWithMouse;
    PositionPickEnded();
    DirtyWindow(OffsetGizmo);
}

void DrawAxisSpot(double pixel) {
    gl::cpack(AxisColour);
    gl::circf(0, 0, AxisSpot * static_cast<float>(std::fabs(pixel)));
}

} // namespace

void PositionLeft(View* view) {
    if (Position.Page == RotatePage && (LeftShift || RightShift))
        DragCentre(view);
    else
        DragOffset(view);
}

void PositionMenu(View* view) {
    const int choice = DoPopup(Menu);
    if (choice >= FirstSharedItem)
        DealWithPopup(view, choice);
    else if (choice > 0)
        CloseOffsetGizmo(choice == 1);
}

int PositionKey(View*, int character) {
    return character == EscapeCharacter;
}

const PendingPick DifferencePick = {
    .Wanted = 2,
    .Points = &OffsetVertex,
    .Count = &OffsetVertexIndex,
    .Take = TakeDifference,
    .Missed = PickAnswer::Ignored,
    .MissedMessage = SelectSingleVertexMessage,
    .Status = {FirstVertexStatus, SecondVertexStatus},
    .Ended = PickHasEnded,
};

const PendingPick CentrePick = {
    .Take = TakeCentre, .Status = {CentreStatus}, .Disables = &OffsetGizmo, .Ended = PickHasEnded};

const PendingPick AxisPick = {
    .Take = TakeAxis, .Status = {AxisStatus}, .Disables = &OffsetGizmo, .Ended = PickHasEnded};

const PendingPick AnglePick = {
    .Wanted = 2,
    .Points = &OffsetVertex,
    .Count = &OffsetVertexIndex,
    .Take = TakeAngle,
    .Status = {FirstVertexStatus, SecondVertexStatus},
    .Disables = &OffsetGizmo,
    .Ended = PickHasEnded,
};

void ShowPositionStatus() {
    SetToolStatus(Position.Page == RotatePage ? RotateStatus : PositionStatus);
}

void ShowRotationAxis(View* view) {
    if (!PositionGizmoIsOpen() || Position.Page != RotatePage)
        return;
    const double* centre = Position.Centre;
    gl::zbuffer(false);
    double inEye[3];
    RotateVector(Position.Axis, ViewMat(view), inEye);
    const bool towardsViewer = !view->Perspective && std::hypot(inEye[0], inEye[1]) < 1e-6 * std::fabs(inEye[2]);
    if (towardsViewer) {
        DrawDeRotated(view, centre, DrawAxisSpot);
        return;
    }
    double ends[2][3];
    for (int axis = 0; axis < 3; ++axis) {
        const double reach = Position.Axis[axis] * view->Size;
        ends[0][axis] = centre[axis] - reach;
        ends[1][axis] = centre[axis] + reach;
    }
    gl::cpack(AxisColour);
    gl::bgnline();
    gl::v3d(ends[0]);
    gl::v3d(ends[1]);
    gl::endline();
}
