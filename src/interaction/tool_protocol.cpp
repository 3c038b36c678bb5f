#include "interaction/tool_protocol.h"

#include "base/debug.h"
#include "base/slots.h"
#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/manual.h"
#include "gooey/menu_session.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/tool_window.h"
#include "interaction/grid_gizmo.h"
#include "interaction/input.h"
#include "interaction/pending_pick.h"
#include "interaction/view_menus.h"
#include "interaction/view_prompt.h"
#include "store/new_vertices.h"
#include "store/undo.h"
#include "views/status_line.h"
#include "views/tool_bar.h"
#include "views/viewports.h"

int BadStuffDisabled;
int DirtyOnTextureChange, DirtyOnLightingChange, DirtyOnMaterialChange;

namespace {

/// Null while none runs, or one that installed its hooks by itself.
const Tool* RunningTool;
/// The snapshot for its undo has not been taken: it has changed nothing yet.
bool UndoPending;

void DoneTool() {
    CallSlot(RunningTool->Done);
    ClearControl();
}

void ToolKey(View* view, int character) {
    SendToolKey(view, character);
}

void ShowToolMenu(View* view) {
    const int choice = DoPopup(RunningTool->Menu);
    if (choice >= FirstSharedItem)
        DealWithPopup(view, choice);
    else if (const int key = KeyOfItem(RunningTool->Menu, choice))
        SendToolKey(view, key);
}

void PressBarButton() {
    if (!RunningTool)
        return;
    const int done = RunningTool->DoneCode, cancel = RunningTool->CancelCode;
    switch (RunningTool->Buttons) {
    case Tool::Bar::DoneAndCancel: {
        const int codes[] = {done, cancel, '?'};
        SendToolKey(nullptr, codes[ButtonChoice]);
        break;
    }
    case Tool::Bar::Cancel:
        SendToolKey(nullptr, ButtonChoice == 0 ? cancel : '?');
        break;
    case Tool::Bar::Done:
        SendToolKey(nullptr, ButtonChoice == 0 ? done : '?');
        break;
    case Tool::Bar::None:
        break;
    }
}

void MakeToolBar(const Tool& tool) {
    switch (tool.Buttons) {
    case Tool::Bar::DoneAndCancel:
        GenerateToolBar(tool.BuildBar, PressBarButton);
        break;
    case Tool::Bar::Cancel:
        GenerateCancelToolBar(tool.BuildBar, PressBarButton);
        break;
    case Tool::Bar::Done:
        GenerateDoneToolBar(tool.BuildBar, PressBarButton);
        break;
    case Tool::Bar::None:
        break;
    }
}

} // namespace

void BeginTool(const Tool& tool) {
    if (RunningTool)
        CancelTool();
    RunningTool = &tool;
    UndoPending = true;
    LeftClickFunc = tool.Left;
    MiddleClickFunc = tool.Middle;
    RightClickFunc = tool.Menu ? ShowToolMenu : tool.Right;
    KeyCheckFunc = ToolKey;
    StatusList = tool.Status;
    MakeToolBar(tool);
    if (!tool.KeepSideWindows)
        DisableBadStuff();
    if (tool.FreezeSmallViewports)
        FreezeSmallWindows();
    DirtyModelWindows();
}

int ToolRuns(const Tool& tool) {
    return RunningTool == &tool;
}

void SetToolStatus(const std::int16_t* status) {
    StatusList = status;
    DirtyWindow(MainWindow);
}

void BeforeToolChange() {
    if (UndoPending)
        CopyCurrentObject();
    UndoPending = false;
}

int ToolHasChanged() {
    return RunningTool && !UndoPending;
}

int ToolHoldsWork() {
    if (!RunningTool)
        return 0;
    return RunningTool->HoldsWork ? RunningTool->HoldsWork() : NewVertices != nullptr;
}

void FinishTool() {
    if (RunningTool)
        DoneTool();
}

void SendToolKey(View* view, int character) {
    if (!RunningTool)
        return;
    if (character == '?' && RunningTool->ManualPage)
        OpenManual(RunningTool->ManualPage);
    else if (character == RunningTool->DoneCode)
        DoneTool();
    else if (character == RunningTool->CancelCode)
        CancelTool();
    else if (!RunningTool->Key || !RunningTool->Key(view, character))
        CheckSafeKeys(view, character);
}

void CancelTool() {
    const bool changed = ToolHasChanged();
    ClearControl();
    if (changed)
        Undo();
}

void ClearControl() {
    GiveUpViewPrompt();
    EndPickOfTool();
    if (const Tool* ending = RunningTool) {
        CallSlot(ending->Leave);
        RunningTool = nullptr;
    }
    StatusList = nullptr;
    LeftClickFunc = RightClickFunc = nullptr;
    MiddleClickFunc = nullptr;
    KeyCheckFunc = nullptr;
    DirtyOnTextureChange = DirtyOnLightingChange = DirtyOnMaterialChange = 0;
    EnableBadStuff();
    ClearToolBar();
    EnableGridGizmo();
    UnfreezeSmallWindows();
    DirtyModelWindows();
    // The tool may have read the keys' releases itself.
    LeftShift = RightShift = LeftAlt = RightAlt = LeftCtrl = RightCtrl = 0;
}

void ClearGridControl() {
    GridStatus = nullptr;
    LeftGridFunc = RightGridFunc = nullptr;
    MiddleGridFunc = nullptr;
    GridKeyFunc = nullptr;
    DirtyModelWindows();
    Trace("Grid control cleared...\n");
}

void DisableBadStuff() {
    if (BadStuffDisabled)
        return;
    BadStuffDisabled = 1;
    DisableToolWindows();
}

void EnableBadStuff() {
    if (!BadStuffDisabled)
        return;
    BadStuffDisabled = 0;
    EnableToolWindows();
}
