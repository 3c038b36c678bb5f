#include "views/tool_bar.h"

#include "gooey/button.h"
#include "gooey/event_queue.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "views/main_window.h"

#include <algorithm>
#include <cstdio>
#include <span>
#include <utility>

namespace {

enum Label { LabelDone = 6, LabelCancel = 5, LabelHelp = 78 };

constexpr int AllButtons[] = {LabelDone, LabelCancel, LabelHelp};
constexpr int CancelButtons[] = {LabelCancel, LabelHelp};
constexpr int DoneButtons[] = {LabelDone, LabelHelp};

// What BasicButtonChoice passes on for the buttons of AllButtons.
constexpr int ButtonKeys[] = {' ', 149, '?'};

constexpr int ButtonsY = -31;
// Between the tool's own gadgets and the buttons.
constexpr int Gap = 16, NarrowGap = 8;
constexpr int ButtonPadding = 24;
// Between the last of them and the window's edge.
constexpr int EdgeGap = 8;

bool Active = false;
// The main window's own gadgets meanwhile.
Gadget* Kept = nullptr;

// Events on their way that remove the bar, and how many of them were meant for the one before.
int ClearsQueued = 0;
int StaleClears = 0;

// The buttons at the right, null when there are none; their width with the window's edge, and where the tool's own
// gadgets end.
Gadget* BarButtons = nullptr;
int BarButtonsWidth, ToolsEnd;

// `margin` is what the buttons take beside their labels.
void AddBarButtons(void (*choice)(), std::span<const int> labels, int margin) {
    int x = -margin, widest = 0;
    for (const int label : labels) {
        x -= SmallWidth(msg(label));
        widest = std::max(widest, SmallWidth(msg(label)));
    }
    const int count = static_cast<int>(labels.size());
    BarButtonsWidth = count * (widest + ButtonPadding) + (count - 1) * NarrowGap + EdgeGap;
    ToolsEnd = GooeyRight;
    BarButtons = AddIntButtons(x, ButtonsY, 0, ButtonsSmallFont, count, labels.data(), choice, nullptr, nullptr);
    PlaceToolBarButtons();
}

void Generate(void (*build)(), void (*choice)(), std::span<const int> labels, int margin) {
    if (Active && ClearsQueued > StaleClears) {
        // The tool that had it has ended; the next one need not wait for the event.
        DoToolClear();
        StaleClears = ClearsQueued;
    }
    if (Active) {
        std::fprintf(stderr, "Toolbar already in use!\a\n");
        return;
    }
    if (!MainWindow)
        return;
    Active = true;
    WindowScope scope(MainWindow);
    Kept = std::exchange(MainWindow->Gadgets, nullptr);
    AddMainDrawing();
    GooeyRight = 0;
    if (build)
        build();
    if (choice)
        AddBarButtons(choice, labels, margin);
    DirtyWindow(MainWindow);
}

} // namespace

void GenerateToolBar(void (*build)(), void (*choice)()) {
    Generate(build, choice, AllButtons, 123);
}

void GenerateCancelToolBar(void (*build)(), void (*choice)()) {
    Generate(build, choice, CancelButtons, 80);
}

void GenerateDoneToolBar(void (*build)(), void (*choice)()) {
    Generate(build, choice, DoneButtons, 75);
}

void PlaceToolBarButtons() {
    if (!BarButtons)
        return;
    // At the right edge, but clear of the tool's own gadgets. Where a long bar would push them out of the window they
    // come closer to it, and at last become narrower.
    const int room = CurrentWindow->Width - ToolsEnd - BarButtonsWidth;
    SetButtonsNarrow(BarButtons, room < NarrowGap);
    SetButtonsMinX(BarButtons, ToolsEnd + (room < Gap ? NarrowGap : Gap));
}

void BasicButtonChoice(KeyHook keyHandler) {
    if (ButtonChoice >= 0 && ButtonChoice < static_cast<int>(std::size(ButtonKeys)))
        keyHandler(nullptr, ButtonKeys[ButtonChoice]);
}

void ClearToolBar() {
    QueueEvent(GOOEY_SPECIAL, ToolBarClearEvent);
    ++ClearsQueued;
}

void HandleToolBarEvent() {
    if (ClearsQueued > 0)
        --ClearsQueued;
    if (StaleClears > 0)
        --StaleClears;
    else
        DoToolClear();
}

void DoToolClear() {
    if (!Active)
        return;
    Active = false;
    BarButtons = nullptr;
    FreeGooeyList(std::exchange(MainWindow->Gadgets, std::exchange(Kept, nullptr)));
    DirtyWindow(MainWindow);
}

int ToolBarActive() {
    return Active;
}
