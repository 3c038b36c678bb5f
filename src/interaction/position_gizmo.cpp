#include "interaction/position_gizmo.h"

#include "gooey/label.h"
#include "gooey/message_table.h"
#include "gooey/redraw.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/position_pages.h"
#include "interaction/position_state.h"
#include "interaction/position_views.h"
#include "interaction/tool_protocol.h"
#include "store/accessors.h"
#include "store/new_vertices.h"
#include "views/display_flags.h"
#include "views/moves.h"
#include "views/viewports.h"

#include <utility>

Window* OffsetGizmo;
int OffsetX, OffsetY, OffsetGizmoOpened;

namespace {

constexpr char ManualPage[] = "R_PositionController";

/// How the gizmo ends: nothing chosen counts as Cancel.
bool Accepted;
/// What the views' scale is to stay at while things move.
double OldObjectRadius;
/// The window in which a drag shows itself; null while there is none.
Window* MoveWindow;

void WindowGoes() {
    ClearControl();
}

const ToolWindow PositionWindow = {
    .Title = " Position gizmo",
    .Handle = &OffsetGizmo,
    .Width = PositionGizmoWidth,
    .Height = PositionGizmoHeight,
    .Place = {.Opened = &OffsetGizmoOpened, .X = &OffsetX, .Y = &OffsetY},
    .Build = AddPositionPages,
    .Closed = WindowGoes,
    .ManualPage = ManualPage,
    .ManualName = "Position controller",
};

void BuildBar() {
    AddText(8, -23, msg(OwnerOfPosition().Title), 1);
}

void Accept() {
    Accepted = true;
}

int HoldsWork() {
    return PositionUndoSteps() > 0 || NewVertices;
}

/// However the tool ends.
void EndPosition() {
    const PositionOwner owner = OwnerOfPosition();
    CloseToolWindow(PositionWindow);
    std::exchange(Accepted, false) ? owner.Done() : owner.Cancel();
}

const Tool PositionTool = {
    .Left = PositionLeft,
    .Right = PositionMenu,
    .Key = PositionKey,
    .Status = PositionStatus,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .ManualPage = ManualPage,
    .Done = Accept,
    .HoldsWork = HoldsWork,
    .Leave = EndPosition,
};

} // namespace

void OpenOffsetGizmo(PositionApply apply, PositionEnd cancel, PositionEnd done, PositionCentre centre,
                     PositionTouch touch, int title) {
    if (PositionGizmoIsOpen()) {
        OpenToolWindow(PositionWindow);
        return;
    }
    Accepted = false;
    ResetPosition({apply, cancel, done, centre, touch, title});
    OldObjectRadius = ObjectRadius();
    {
        WindowScope scope(CurrentWindow);
        OpenToolWindow(PositionWindow);
    }
    BeginTool(PositionTool);
    ShowPositionPage();
}

int PositionGizmoIsOpen() {
    return ToolRuns(PositionTool);
}

void DoOffsetMaths(int mode) {
    if (!PositionGizmoIsOpen())
        return;
    ObjectRadius() = OldObjectRadius;
    OwnerOfPosition().Apply(ComposedPosition(), mode);
}

void DoOffsetUpdate(int mode) {
    DoOffsetMaths(mode);
    WindowScope scope(MoveWindow ? MoveWindow : CurrentWindow);
    RedrawModelWindows();
}

void ForceOffsetUpdate() {
    DoOffsetMaths(PositionSettled);
    if (PositionGizmoIsOpen())
        DirtyModelWindows();
}

void StartOffsetMove(int inCurrentWindow) {
    MoveWindow = inCurrentWindow ? CurrentWindow : Viewport[0];
    WindowScope scope(MoveWindow);
    StartMove();
}

void StopOffsetMove() {
    WindowScope scope(std::exchange(MoveWindow, nullptr));
    StopMove();
    // What the last step left is settled now.
    DoOffsetMaths(PositionSettled);
}

void CloseOffsetGizmo(int accept) {
    if (!PositionGizmoIsOpen())
        return;
    Accepted = accept != 0;
    ClearControl();
}
