#include "interaction/position_gizmo.h"

#include "base/slots.h"
#include "gooey/label.h"
#include "gooey/message_table.h"
#include "interaction/position_state.h"
#include "interaction/tool_protocol.h"
#include "store/accessors.h"
#include "views/viewports.h"

#include <utility>

Window* OffsetGizmo;

namespace {

constexpr std::int16_t Status[] = {82, 90, 100, 0};

bool Accepted;
/// The views' scale is to stay while things move.
double OldObjectRadius;

void BuildBar() {
    AddText(8, -23, msg(OwnerOfPosition().Title), 1);
}

void Accept() {
    Accepted = true;
}

void EndPosition() {
    const PositionOwner owner = OwnerOfPosition();
    std::exchange(Accepted, false) ? owner.Done() : owner.Cancel();
}

const Tool PositionTool = {
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .ManualPage = "R_PositionController",
    .Done = Accept,
    .Leave = EndPosition,
};

} // namespace

void OpenOffsetGizmo(PositionApply apply, PositionEnd cancel, PositionEnd done, PositionCentre centre,
                     PositionTouch touch, int title) {
    if (ToolRuns(PositionTool))
        return;
    ResetPosition({apply, cancel, done, centre, touch, title});
    OldObjectRadius = ObjectRadius();
    BeginTool(PositionTool);
}

void DoOffsetMaths(int mode) {
    if (!ToolRuns(PositionTool))
        return;
    ObjectRadius() = OldObjectRadius;
    OwnerOfPosition().Apply(ComposedPosition(), mode);
}

void DoOffsetUpdate(int mode) {
    DoOffsetMaths(mode);
    RedrawModelWindows();
}

void ForceOffsetUpdate() {
    if (!ToolRuns(PositionTool))
        return;
    DoOffsetMaths(PositionSettled);
    DirtyModelWindows();
}

void CloseOffsetGizmo(int accept) {
    if (!ToolRuns(PositionTool))
        return;
    Accepted = accept != 0;
    ClearControl();
}
