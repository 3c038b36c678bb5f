// The script commands that need no knowledge of gadgets, and the reading of their arguments.
#include "platform/dropped_files.h"
#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/frame_drag.h"
#include "platform/input.h"
#include "platform/screen_windows.h"
#include "platform/script_player.h"
#include "platform/snapshots.h"
#include "platform/windows.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace gl {

namespace {

constexpr int DragSteps = 8;

ScriptResult Refuse(ScriptCall& call, const std::string& reason) {
    call.Error = reason;
    return ScriptResult::Failed;
}

// The outcome of a command whose helpers may have set Error.
ScriptResult Finished(const ScriptCall& call) {
    return call.Error.empty() ? ScriptResult::Done : ScriptResult::Failed;
}

ScreenWindow* AddressedWindow(ScriptCall& call) {
    ScreenWindow* window = FindScreenWindow(call.Window);
    if (!window)
        call.Error = call.Window == 0 ? "no window is open" : "the addressed window is closed";
    return window;
}

// The addressed window where its frame is meant.
ScreenWindow* FramedWindow(ScriptCall& call) {
    ScreenWindow* window = AddressedWindow(call);
    if (window && window->Parent) {
        call.Error = "the addressed window has no frame";
        return nullptr;
    }
    return window;
}

bool AllRead(ScriptCall& call, std::size_t index) {
    if (index >= call.Words.size())
        return true;
    call.Error = "\"" + call.Words[index] + "\" is one word too many";
    return false;
}

ScriptResult In(ScriptCall& call) {
    if (call.Words.size() != 2)
        return Refuse(call, "in needs a title");
    const int id = FindWindowByTitle(call.Words[1]);
    if (id == 0)
        return Refuse(call, "no window is titled \"" + call.Words[1] + "\"");
    AddressWindow(id);
    return ScriptResult::Done;
}

ScriptResult Move(ScriptCall& call) {
    std::size_t index = 1;
    int x = 0, y = 0;
    if (call.ReadPosition(index, x, y) && AllRead(call, index))
        call.Move(call.Window, x, y);
    return Finished(call);
}

ScriptResult PressOrRelease(ScriptCall& call) {
    std::size_t index = 1;
    int button = 0;
    if (!call.ReadButton(index, button) || !AllRead(call, index))
        return ScriptResult::Failed;
    if (call.Words[0] == "press")
        call.Press(button);
    else
        call.Release(button);
    return ScriptResult::Done;
}

ScriptResult Click(ScriptCall& call) {
    std::size_t index = 1;
    int button = 0, x = 0, y = 0;
    if (!call.ReadButton(index, button) || !call.ReadPosition(index, x, y) || !AllRead(call, index))
        return ScriptResult::Failed;
    call.Move(call.Window, x, y);
    for (int clicks = call.Words[0] == "doubleclick" ? 2 : 1; clicks > 0; clicks--) {
        call.Press(button);
        call.Release(button);
    }
    return ScriptResult::Done;
}

// wheel POS UP [RIGHT]: notches, which may be fractions.
ScriptResult Wheel(ScriptCall& call) {
    std::size_t index = 1;
    int x = 0, y = 0;
    double up = 0, right = 0;
    if (!call.ReadPosition(index, x, y) || !call.ReadNumber(index, up) ||
        (index < call.Words.size() && !call.ReadNumber(index, right)) || !AllRead(call, index))
        return ScriptResult::Failed;
    call.Move(call.Window, x, y);
    if (up != 0)
        call.TurnWheel(WHEELY, static_cast<int>(std::lround(up * WHEELNOTCH)));
    if (right != 0)
        call.TurnWheel(WHEELX, static_cast<int>(std::lround(right * WHEELNOTCH)));
    return ScriptResult::Done;
}

ScriptResult Drag(ScriptCall& call) {
    std::size_t index = 1;
    int button = 0, x = 0, y = 0;
    if (!call.ReadButton(index, button) || !call.ReadPosition(index, x, y))
        return ScriptResult::Failed;
    if (index >= call.Words.size())
        return Refuse(call, "drag needs at least two positions");
    call.Move(call.Window, x, y);
    call.Press(button);
    while (index < call.Words.size()) {
        int nextX = 0, nextY = 0;
        if (!call.ReadPosition(index, nextX, nextY))
            return ScriptResult::Failed;
        for (int i = 1; i <= DragSteps; i++)
            call.Move(call.Window, x + static_cast<int>(std::lround((nextX - x) * i / double{DragSteps})),
                      y + static_cast<int>(std::lround((nextY - y) * i / double{DragSteps})));
        x = nextX;
        y = nextY;
    }
    call.Release(button);
    return ScriptResult::Done;
}

ScriptResult TypeKeys(ScriptCall& call) {
    if (call.Words.size() < 2)
        return Refuse(call, "key needs a key");
    for (std::size_t i = 1; i < call.Words.size(); i++)
        call.Key(call.Words[i]);
    return Finished(call);
}

ScriptResult HoldOrLet(ScriptCall& call) {
    if (call.Words.size() != 2)
        return Refuse(call, call.Words[0] + " needs a key");
    AddKeyStep(call.Words[1], call.Words[0] == "hold", call);
    return Finished(call);
}

ScriptResult TypeText(ScriptCall& call) {
    if (call.Words.size() != 2)
        return Refuse(call, "type needs a text");
    call.Type(call.Words[1]);
    return ScriptResult::Done;
}

ScriptResult Puck(ScriptCall& call) {
    std::size_t index = 1;
    double button = 0, x = 0, y = 0;
    if (!call.ReadNumber(index, button) || !call.ReadNumber(index, x) || !call.ReadNumber(index, y) ||
        !AllRead(call, index))
        return ScriptResult::Failed;
    if (button != 0 && button != 1 && button != 2 && button != 3)
        return Refuse(call, "the puck has buttons 0 to 3");
    if (std::abs(x) > 32767 || std::abs(y) > 32767)
        return Refuse(call, "tablet coordinates reach from -32767 to 32767");
    AddPuckStep(BPAD0 + static_cast<int>(button), static_cast<int>(x), static_cast<int>(y));
    return ScriptResult::Done;
}

ScriptResult WaitTicks(ScriptCall& call) {
    std::size_t index = 1;
    double ticks = 0;
    if (!call.ReadNumber(index, ticks) || !AllRead(call, index))
        return ScriptResult::Failed;
    if (ticks < 0 || ticks > 1e9)
        return Refuse(call, "wait needs a number of ticks from 0 up");
    call.Wait(static_cast<long>(ticks));
    return ScriptResult::Done;
}

ScriptResult Close(ScriptCall& call) {
    if (const ScreenWindow* window = FramedWindow(call))
        RequestClose(*window);
    return Finished(call);
}

ScriptResult Quit(ScriptCall&) {
    QuitRequested();
    return ScriptResult::Done;
}

ScriptResult ResizeOrPlace(ScriptCall& call) {
    std::size_t index = 1;
    double first = 0, second = 0;
    if (!call.ReadNumber(index, first) || !call.ReadNumber(index, second) || !AllRead(call, index))
        return ScriptResult::Failed;
    const double limit = LargestSize;
    const int a = static_cast<int>(std::clamp(first, -limit, limit));
    const int b = static_cast<int>(std::clamp(second, -limit, limit));
    if (const ScreenWindow* window = FramedWindow(call)) {
        if (call.Words[0] == "resize")
            ResizeByFrame(window->Id, a, b);
        else
            MoveByFrame(window->Id, a, b);
    }
    return Finished(call);
}

ScriptResult Snapshot(ScriptCall& call) {
    const bool window = call.Words.size() == 3 && call.Words[1] == "window";
    if (call.Words.size() != 2 && !window)
        return Refuse(call, "snapshot needs a file name");
    if (window && !AddressedWindow(call))
        return ScriptResult::Failed;
    std::string error;
    if (!WriteSnapshot(window ? call.Window : 0, call.Words.back(), error))
        return Refuse(call, error);
    return ScriptResult::Done;
}

ScriptResult Drop(ScriptCall& call) {
    if (call.Words.size() != 2)
        return Refuse(call, "drop needs a file name");
    FileWasDropped(call.Words[1]);
    return ScriptResult::Done;
}

ScriptResult Echo(ScriptCall& call) {
    if (call.Words.size() != 2)
        return Refuse(call, "echo needs a text");
    std::printf("%s\n", call.Words[1].c_str());
    std::fflush(stdout);
    return ScriptResult::Done;
}

const struct {
    const char* Name;
    ScriptCommand Function;
} BuiltIn[] = {
    {"in", In},
    {"move", Move},
    {"press", PressOrRelease},
    {"release", PressOrRelease},
    {"click", Click},
    {"doubleclick", Click},
    {"drag", Drag},
    {"wheel", Wheel},
    {"key", TypeKeys},
    {"hold", HoldOrLet},
    {"let", HoldOrLet},
    {"type", TypeText},
    {"puck", Puck},
    {"wait", WaitTicks},
    {"close", Close},
    {"quit", Quit},
    {"resize", ResizeOrPlace},
    {"place", ResizeOrPlace},
    {"snapshot", Snapshot},
    {"echo", Echo},
    {"drop", Drop},
};

} // namespace

ScriptCommand BuiltInCommand(const std::string& name) {
    const auto* found =
        std::find_if(std::begin(BuiltIn), std::end(BuiltIn), [&](const auto& command) { return command.Name == name; });
    return found == std::end(BuiltIn) ? nullptr : found->Function;
}

bool ScriptCall::ReadNumber(std::size_t& index, double& value) {
    if (index >= Words.size()) {
        Error = Words[0] + ": a number is missing";
        return false;
    }
    const std::string& word = Words[index];
    char* end = nullptr;
    value = std::strtod(word.c_str(), &end);
    if (word.empty() || *end != 0 || !std::isfinite(value)) {
        Error = "\"" + word + "\" is not a number";
        return false;
    }
    index++;
    return true;
}

bool ScriptCall::ReadButton(std::size_t& index, int& button) {
    static const struct {
        const char* Name;
        int Device;
    } Buttons[] = {{"left", LEFTMOUSE}, {"middle", MIDDLEMOUSE}, {"right", RIGHTMOUSE}};

    for (const auto& known : Buttons)
        if (index < Words.size() && Words[index] == known.Name) {
            button = known.Device;
            index++;
            return true;
        }
    Error = Words[0] + " needs a button: left, middle or right";
    return false;
}

bool ScriptCall::ReadPosition(std::size_t& index, int& x, int& y) {
    const ScreenWindow* window = AddressedWindow(*this);
    if (!window)
        return false;
    if (index < Words.size() && ScriptPosition) {
        std::string reason;
        if (ScriptPosition(Words[index], Window, x, y, reason)) {
            index++;
            return true;
        }
        if (!reason.empty()) {
            Error = reason;
            return false;
        }
    }
    double across = 0, up = 0;
    if (!ReadNumber(index, across) || !ReadNumber(index, up))
        return false;
    const double limit = LargestSize;
    x = static_cast<int>(std::clamp(across, -limit, limit));
    y = static_cast<int>(std::clamp(up, -limit, limit));
    if (x < 0)
        x += window->Place.Width;
    if (y < 0)
        y += window->Place.Height;
    return true;
}

} // namespace gl
