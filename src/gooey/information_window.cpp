#include "gooey/information_window.h"

#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_table.h"
#include "gooey/program_pictures.h"
#include "gooey/program_windows.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "base/debug.h"

#include "platform/capabilities.h"
#include "platform/events.h"
#include "platform/windows.h"

#include <cstdio>

namespace {

constexpr int InfoWidth = 394, InfoHeight = 223;

Window* InfoWindow = nullptr;

void DrawInfo() {
    DrawLogo(CurrentWindow->Width - 375, CurrentWindow->Height - 104);
    char text[256];
    std::snprintf(text, sizeof text, "%s   %s", msg(MsgVersion), msg(MsgReleaseDate));
    DrawCentred(FontOf(false), 0, CurrentWindow->Height - 121, CurrentWindow->Width, text, White);
}

void InfoClosed() {
    InfoWindow = nullptr;
    EnableWindow(MainWindow);
}

void InfoEvent(int device, short value) {
    if (device == gl::KEYBD && (value == ReturnCharacter || value == EscapeCharacter))
        CloseCurrentWindow();
}

void Raise() {
    WindowScope scope(InfoWindow);
    gl::winpop();
}

} // namespace

void ShowProgramInfo() {
    Trace("Showing program info\n");
    if (InfoWindow) {
        Raise();
        return;
    }
    DisableWindow(MainWindow);
    int x = (gl::getgdesc(gl::GD_XPMAX) + 1 - InfoWidth) / 2, y = (gl::getgdesc(gl::GD_YPMAX) + 1 - InfoHeight) / 2;
    gl::prefposition(x, x + InfoWidth - 1, y, y + InfoHeight - 1);
    InfoWindow = OpenWindow("About...", 0, 0, nullptr, nullptr, InfoEvent, InfoClosed, 0, MainWindow);
    AddBackdrop();
    Kirvo_AddGadget(DrawInfo, nullptr);
}

void PopInfoWindow() {
    if (InfoWindow && !QuitWindow)
        Raise();
}
