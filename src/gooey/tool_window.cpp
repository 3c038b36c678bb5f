#include "gooey/tool_window.h"

#include "base/slots.h"
#include "gooey/manual.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "platform/events.h"
#include "platform/windows.h"

#include <algorithm>
#include <vector>

namespace {

struct Size {
    int Width, Height;
};

std::vector<const ToolWindow*>& Registered() {
    static std::vector<const ToolWindow*> windows;
    return windows;
}

std::vector<const ToolWindow*>& Open() {
    static std::vector<const ToolWindow*> windows;
    return windows;
}

/// The table of the current window.
const ToolWindow* CurrentToolWindow() {
    for (const ToolWindow* tool : Open())
        if (*tool->Handle == CurrentWindow)
            return tool;
    return nullptr;
}

bool CanBeResized(const ToolWindow& tool) {
    const ToolWindowRules& rules = tool.Rules;
    return rules.LeastWidth || rules.LeastHeight || rules.MostWidth || rules.MostHeight || rules.AspectX ||
           rules.StepX || rules.StepY;
}

Size FirstSize(const ToolWindow& tool) {
    Size size = {tool.Width, tool.Height};
    if (tool.Measure)
        tool.Measure(size.Width, size.Height);
    return size;
}

Size LastSize(const ToolWindow& tool) {
    Size size = FirstSize(tool);
    if (tool.Place.Width && *tool.Place.Width > 0)
        size.Width = *tool.Place.Width;
    if (tool.Place.Height && *tool.Place.Height > 0)
        size.Height = *tool.Place.Height;
    return size;
}

void SetRules(const ToolWindow& tool) {
    if (!CanBeResized(tool)) {
        const Size size = FirstSize(tool);
        gl::minsize(size.Width, size.Height);
        gl::maxsize(size.Width, size.Height);
        return;
    }
    const ToolWindowRules& rules = tool.Rules;
    if (rules.LeastWidth || rules.LeastHeight)
        gl::minsize(rules.LeastWidth, rules.LeastHeight);
    if (rules.MostWidth || rules.MostHeight)
        gl::maxsize(rules.MostWidth, rules.MostHeight);
    if (rules.AspectX)
        gl::keepaspect(rules.AspectX, rules.AspectY);
    if (rules.StepX || rules.StepY)
        gl::stepunit(rules.StepX, rules.StepY);
    gl::fudge(rules.FudgeX, rules.FudgeY);
}

// A smaller screen than the last must still show the window, if need be from its upper left corner.
void PlaceWithinScreen(int x, int y, const Size& size) {
    x = std::clamp(x, 0, std::max(0, hres + 1 - size.Width));
    y = std::max(std::min(y, vres + 1 - size.Height), std::min(0, vres + 1 - size.Height));
    gl::prefposition(x, x + size.Width - 1, y, y + size.Height - 1);
}

void SetPlace(const ToolWindow& tool) {
    const ToolWindowPlace& place = tool.Place;
    if (place.Opened && *place.Opened) {
        const Size size = LastSize(tool);
        PlaceWithinScreen(*place.X, place.FromTop ? *place.Y - size.Height : *place.Y, size);
        return;
    }
    const Size size = FirstSize(tool);
    if (tool.AroundPointer)
        WindowAroundMouse(size.Width, size.Height);
    else
        gl::prefsize(size.Width, size.Height);
}

void RememberPlace(const ToolWindow& tool) {
    const ToolWindowPlace& place = tool.Place;
    if (!place.Opened)
        return;
    UpdateWindowGeometry();
    *place.Opened = 1;
    *place.X = CurrentWindow->X;
    *place.Y = CurrentWindow->Y + (place.FromTop ? CurrentWindow->Height : 0);
    if (place.Width)
        *place.Width = CurrentWindow->Width;
    if (place.Height)
        *place.Height = CurrentWindow->Height;
}

void FreeToolWindow() {
    const ToolWindow* tool = CurrentToolWindow();
    if (!tool)
        return;
    RememberPlace(*tool);
    CallSlot(tool->Close);
    *tool->Handle = nullptr;
    std::erase(Open(), tool);
    if (tool->DisablesMain)
        EnableWindow(MainWindow);
    CallSlot(tool->Closed);
}

void TakeEvent(int device, short value) {
    const ToolWindow* tool = CurrentToolWindow();
    if (!tool)
        return;
    if (tool->ManualPage && device == gl::KEYBD && value == '?')
        OpenManual(tool->ManualPage);
    else if (tool->ManualName && device == gl::RIGHTMOUSE && value)
        DoManualPage(tool->ManualPage, tool->ManualName);
    else
        CallSlot(tool->Event, device, value);
}

bool IsEnabled(const ToolWindow& tool) {
    return !tool.Enabled || *tool.Enabled;
}

void Raise(const ToolWindow& tool) {
    WindowScope scope(*tool.Handle);
    gl::winpop();
}

} // namespace

Window* OpenToolWindow(const ToolWindow& tool) {
    if (!IsEnabled(tool))
        return nullptr;
    if (*tool.Handle) {
        Raise(tool);
        return *tool.Handle;
    }
    if (tool.DisablesMain)
        DisableWindow(MainWindow);
    SetPlace(tool);
    SetRules(tool);
    Window* const window = OpenWindow(tool.Title, tool.Flags, 0, tool.Focus, tool.Draw, TakeEvent, FreeToolWindow,
                                      tool.DataSize, tool.Parent ? *tool.Parent : MainWindow);
    SetRules(tool);
    gl::winconstraints();
    UpdateWindowGeometry();
    *tool.Handle = window;
    Open().push_back(&tool);
    CallSlot(tool.Build);
    return window;
}

void CloseToolWindow(const ToolWindow& tool) {
    if (*tool.Handle)
        CloseWindow(*tool.Handle);
}

void DirtyToolWindow(const ToolWindow& tool) {
    if (*tool.Handle)
        DirtyWindow(*tool.Handle);
}

int ToolWindowIsOpen(const ToolWindow& tool) {
    return *tool.Handle != nullptr;
}

void RefitToolWindow(const ToolWindow& tool) {
    if (!*tool.Handle)
        return;
    WindowScope scope(*tool.Handle);
    UpdateWindowGeometry();
    const Size size = FirstSize(tool);
    const int top = CurrentWindow->Y + CurrentWindow->Height;
    gl::prefposition(CurrentWindow->X, CurrentWindow->X + size.Width - 1, top - size.Height, top - 1);
    SetRules(tool);
    gl::winconstraints();
    DirtyCurrentWindow();
}

void RegisterToolWindow(const ToolWindow& tool) {
    if (std::find(Registered().begin(), Registered().end(), &tool) == Registered().end())
        Registered().push_back(&tool);
}

void DisableToolWindows() {
    for (const ToolWindow* tool : Registered()) {
        CallSlot(tool->ToolRuns, 1);
        if (!tool->DisabledByTools)
            continue;
        if (tool->Enabled)
            *tool->Enabled = 0;
        if (*tool->Handle)
            DisableWindow(*tool->Handle);
    }
}

void EnableToolWindows() {
    for (const ToolWindow* tool : Registered()) {
        CallSlot(tool->ToolRuns, 0);
        if (!tool->DisabledByTools)
            continue;
        if (tool->Enabled)
            *tool->Enabled = 1;
        if (*tool->Handle)
            EnableWindow(*tool->Handle);
    }
}

void NoteOpenToolWindows() {
    for (const ToolWindow* tool : Registered())
        if (tool->OpenAtStart)
            *tool->OpenAtStart = ToolWindowIsOpen(*tool);
}

void OpenUserWindows() {
    for (const ToolWindow* tool : Registered())
        if (tool->OpenAtStart && *tool->OpenAtStart) {
            if (tool->OpenAgain)
                tool->OpenAgain();
            else
                OpenToolWindow(*tool);
        }
}
