#include "gooey/toolkit_test.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget_commands.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"

#include "platform/scripts.h"
#include "platform/windows.h"

#include <cstdlib>

std::vector<SeenEvent> ToolkitTest::Events;
std::vector<std::string> ToolkitTest::Shut;
int ToolkitTest::Draws;

namespace {

void StartAnew() {
    EndToolkit();
    CrazyColours = 0;
    WindowInit = nullptr;
    WindowChange = nullptr;
    SpecialEvent = nullptr;
    QuitFunction = nullptr;
    gl::ScriptEnded = [] {};
}

} // namespace

void ToolkitTest::SetUp() {
    setenv("KIRVO_DISPLAY", "headless:800x600", 1);
    unsetenv("KIRVO_SCRIPT");
    UseScale(1);
    InstallGadgetCommands();
    Events.clear();
    Shut.clear();
    Draws = 0;
}

void ToolkitTest::TearDown() {
    StartAnew();
}

void ToolkitTest::UseScale(int scale) {
    setenv("KIRVO_SCALE", std::to_string(scale).c_str(), 1);
    StartAnew();
}

Window* ToolkitTest::Open(const char* title, int x, int y, int width, int height, int flags, Window* parent) {
    gl::prefposition(x, x + width - 1, y, y + height - 1);
    auto draw = [] {
        ++Draws;
        ClearWindow();
        DrawGooeyWindow();
    };
    auto record = [](int device, short value) { Events.push_back({device, value, MouseX, MouseY}); };
    auto note = [] { Shut.push_back(CurrentWindow->Title); };
    return OpenWindow(title, flags, 0, nullptr, draw, record, note, 0, parent);
}

int ToolkitTest::Play(const std::string& script) {
    gl::PlayScript(script, "test");
    while (gl::ScriptIsPlaying())
        if (CheckEvents() == -1)
            return -1;
    return Settle();
}

int ToolkitTest::Settle() {
    for (;;)
        if (int state = CheckEvents(); state != 1)
            return state;
}
