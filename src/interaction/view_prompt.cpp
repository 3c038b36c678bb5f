#include "interaction/view_prompt.h"

#include "gooey/gadget.h"
#include "gooey/label.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "views/main_window.h"
#include "views/status_line.h"
#include "views/viewports.h"

namespace {

bool Asking;
void (*GiveUp)();
Gadget* KeptGadgets;
const std::int16_t* KeptStatus;

/// What a viewport's Disabled is afterwards: small ones may be frozen.
struct {
    Window* Of;
    std::int32_t Disabled;
} Kept[ViewportLimit];

void FreezeAllButViews() {
    for (int i = 0; i < ViewportLimit; ++i)
        if (Viewport[i]) {
            Kept[i] = {Viewport[i], Viewport[i]->Disabled};
            Viewport[i]->Disabled = WindowExemptFromDisabling;
        }
    DisableWindow(MainWindow);
}

void Unfreeze() {
    EnableWindow(MainWindow);
    for (int i = 0; i < ViewportLimit; ++i)
        if (Viewport[i] && Viewport[i] == Kept[i].Of)
            Viewport[i]->Disabled = Kept[i].Disabled;
}

} // namespace

int BeginViewPrompt(const char* text, const std::int16_t* status, void (*giveUp)()) {
    if (Asking)
        return 0;
    Asking = true;
    GiveUp = giveUp;
    FreezeAllButViews();
    {
        WindowScope scope(MainWindow);
        KeptGadgets = MainWindow->Gadgets;
        MainWindow->Gadgets = nullptr;
        AddMainDrawing();
        AddText(12, -23, text, 1);
    }
    KeptStatus = StatusList;
    StatusList = status;
    DirtyModelWindows();
    return 1;
}

void GiveUpViewPrompt() {
    if (Asking)
        GiveUp();
}

void LetViewsAnswer() {
    if (!Asking)
        return;
    for (int i = 0; i < ViewportLimit; ++i)
        if (Viewport[i] && Viewport[i] != Kept[i].Of) {
            // The disabling of the main window goes with it.
            Kept[i] = {Viewport[i], Viewport[i]->Disabled - 1};
            Viewport[i]->Disabled = 0;
            DirtyWindow(Viewport[i]);
        }
}

void EndViewPrompt() {
    if (!Asking)
        return;
    Asking = false;
    StatusList = KeptStatus;
    if (!MainWindow) {
        FreeGooeyList(KeptGadgets);
        return;
    }
    Unfreeze();
    FreeGooeyList(MainWindow->Gadgets);
    MainWindow->Gadgets = KeptGadgets;
    DirtyModelWindows();
}
