#include "files/loading_bar.h"

#include "base/exit.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/event_queue.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/program_windows.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "platform/drawing.h"
#include "platform/system.h"
#include "platform/text.h"
#include "views/status_line.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int TexturesBetweenLooks = 8;

/// Ticks until the bar appears, and between two looks at the keyboard.
constexpr long Moment = 50, TicksBetweenLooks = 5;
constexpr std::uint32_t BarColour = 0xE0B070;
constexpr int BarHeight = 19;

long Started, LastLook;
bool BarIsShown = false;
bool WorkIsShown = false;

// A part of 0 or less: there is no bar beside the text.
void DrawBar(double part, const char* text) {
    const WindowScope scope(MainWindow);
    const FrontBufferScope front;
    DrawStatus("", nullptr);
    SetColour(BarColour);
    if (part > 0)
        DrawBox(1, 1, static_cast<int>(part * (CurrentWindow->Width - 2)), BarHeight, ShadeFull);
    gl::cpack(Black);
    gl::font(0);
    gl::cmov2i(6, 6);
    gl::charstr(text);
    BarIsShown = true;
}

// A negative part: how far it is is not known.
void DrawBarOfWork(double part, const char* what) {
    char text[256];
    if (part < 0)
        std::snprintf(text, sizeof text, "%.200s   <ESC>=Cancel", what);
    else
        std::snprintf(text, sizeof text, "%.200s %d%%   <ESC>=Cancel", what, static_cast<int>(part * 100));
    DrawBar(part, text);
}

void Begin() {
    Started = LastLook = ClockTicks();
    BarIsShown = false;
}

void End() {
    if (BarIsShown)
        RefreshStatusLine();
    BarIsShown = false;
}

// Lets the program breathe, shows the bar when it is time, and says whether the user cancels.
template <class Part>
int Look(const char* what, Part part) {
    gl::BreatheAtWork();
    if (EndAsked())
        return 1;
    const long now = ClockTicks();
    if (now < LastLook + TicksBetweenLooks)
        return 0;
    LastLook = now;
    if (now >= Started + Moment)
        DrawBarOfWork(part(), what);
    return TakeWaitingKey(EscapeCharacter);
}

} // namespace

int ShowReadingProgress(double part) {
    if (!MainWindow)
        return 0;
    if (part <= 0) {
        Begin();
        return 0;
    }
    if (part >= 1) {
        End();
        return 0;
    }
    return Look("Loading...", [part] { return part; });
}

int ShowWorkProgress(const char* text, double seconds, double (*part)()) {
    if (!MainWindow)
        return 0;
    if (!WorkIsShown)
        Begin();
    WorkIsShown = true;
    char timed[256];
    std::snprintf(timed, sizeof timed, "%.200s %d s", text, static_cast<int>(seconds));
    return Look(seconds < 2 ? text : timed, part);
}

void EndWorkProgress() {
    if (WorkIsShown)
        End();
    WorkIsShown = false;
}

void ShowTextureProgress(int read, int count) {
    if (!MainWindow)
        return;
    // A bar that is there already tells of the file that the images belong to.
    static bool withinRead;
    if (read == 1)
        withinRead = BarIsShown;
    if (read == 1 && !withinRead)
        Begin();
    // Thousands of images that are missing take less time than looking at the clock for each.
    if (read % TexturesBetweenLooks && read < count)
        return;
    gl::BreatheAtWork();
    const long now = ClockTicks();
    if (read < count && now >= LastLook + TicksBetweenLooks && now >= Started + Moment) {
        LastLook = now;
        char text[80];
        std::snprintf(text, sizeof text, "Loading textures... %d of %d", read, count);
        DrawBar(static_cast<double>(read) / count, text);
    }
    if (read == count && !withinRead)
        End();
}
