#include "platform/input.h"

#include "platform/clock.h"
#include "platform/compositor.h"
#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/frame_drag.h"
#include "platform/middle_button.h"
#include "platform/pointer_shapes.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>
#include <set>
#include <utility>

namespace gl {

void (*PointerWarped)(int x, int y) = nullptr;

namespace {

struct Limits {
    int Least = std::numeric_limits<int>::min(), Most = std::numeric_limits<int>::max();
};

struct InputState {
    bool PointerKnown = false;
    int X = -1, Y = -1;
    std::map<int, Limits> ValuatorLimits;
    std::set<int> Held; // devices that are down
    int Window = 0;
    bool EmulateMiddle = false;
    int HeldBackX = 0, HeldBackY = 0;
};

InputState Input;

bool IsMouseButton(int device) {
    return device == LEFTMOUSE || device == MIDDLEMOUSE || device == RIGHTMOUSE;
}

// What the program (or a frame) sees of a button.
void LogicalButtonChanged(int button, bool pressed) {
    if (button == LEFTMOUSE && !pressed && FrameIsHeld()) {
        ReleaseFrame(Input.X, Input.Y);
        return;
    }
    if (pressed && !AnyButtonHeld()) {
        UpdateInputWindow();
        if (button == LEFTMOUSE && PressFrame(Input.X, Input.Y))
            return;
    }
    // While a frame is held, or on a frame, the other buttons mean nothing; their releases without a press neither.
    if (pressed) {
        const ScreenWindow* window = TopWindowAt(Input.X, Input.Y);
        const bool onFrame = window && FramePartAt(window->Place, Input.X, Input.Y) != FramePart::Content;
        if (FrameIsHeld() || (onFrame && !AnyButtonHeld()) || !Input.Held.insert(button).second)
            return;
    } else if (Input.Held.erase(button) == 0) {
        return;
    }
    DeviceChanged(button, pressed ? 1 : 0);
}

MiddleButton Emulation(LogicalButtonChanged);

// A valuator's new value, as an event of its own where the program asked for that.
void SetPointerAxis(int valuator, int& axis, int value) {
    if (axis == value)
        return;
    axis = value;
    DeviceChanged(valuator, value);
}

int Limited(int valuator, int value) {
    const auto found = Input.ValuatorLimits.find(valuator);
    return found == Input.ValuatorLimits.end() ? value : std::clamp(value, found->second.Least, found->second.Most);
}

} // namespace

void ResetInput() {
    Input = {};
    Emulation.Reset();
    ResetFrameDrag();
    SetDeviceValue(MOUSEX, -1);
    SetDeviceValue(MOUSEY, -1);
    const char* emulate = std::getenv("KIRVO_EMULATE_MIDDLE");
    Input.EmulateMiddle = emulate && *emulate && std::strcmp(emulate, "0") != 0;
}

void PointerMoved(int x, int y) {
    const ContentSize screen = ScreenSize();
    Input.PointerKnown = true;
    x = Limited(MOUSEX, std::clamp(x, 0, std::max(0, screen.Width - 1)));
    y = Limited(MOUSEY, std::clamp(y, 0, std::max(0, screen.Height - 1)));
    constexpr int Tremble = 3;
    if (Emulation.HoldsBack() && (std::abs(x - Input.HeldBackX) > Tremble || std::abs(y - Input.HeldBackY) > Tremble))
        Emulation.Moved();
    SetPointerAxis(MOUSEX, Input.X, x);
    SetPointerAxis(MOUSEY, Input.Y, y);
    if (FrameIsHeld())
        DragFrame(x, y);
    UpdateInputWindow();
    if (PointerShapeChanged)
        PointerShapeChanged();
}

void ButtonChanged(int button, bool pressed) {
    if (Input.EmulateMiddle) {
        if (pressed && !Emulation.HoldsBack()) {
            Input.HeldBackX = Input.X;
            Input.HeldBackY = Input.Y;
        }
        Emulation.Change(button, pressed, ClockMicroseconds());
    } else {
        LogicalButtonChanged(button, pressed);
    }
    UpdateInputWindow();
}

void WheelTurned(int device, int amount) {
    UpdateInputWindow();
    for (int left = amount; left != 0;) {
        const int part = std::clamp(left, -32767, 32767);
        DeviceChanged(device, part);
        left -= part;
    }
    SetDeviceValue(device, 0);
}

void KeyDeviceChanged(int device, bool pressed) {
    if (device == 0)
        return;
    if (pressed)
        Input.Held.insert(device);
    else if (Input.Held.erase(device) == 0)
        return;
    DeviceChanged(device, pressed ? 1 : 0);
}

void CharacterTyped(char32_t character) {
    if (character == 0 || character > 0x10FFFF)
        return;
    if (character < 128) {
        DeviceChanged(KEYBD, static_cast<int>(character));
    } else if (character < 0x10000) {
        DeviceChanged(KEYBDTEXT, static_cast<int>(character));
    } else {
        DeviceChanged(KEYBDTEXT, static_cast<int>(0xD800 + ((character - 0x10000) >> 10)));
        DeviceChanged(KEYBDTEXT, static_cast<int>(0xDC00 + ((character - 0x10000) & 0x3FF)));
    }
}

void PuckMoved(int x, int y) {
    if (DeviceValue(BPADX) != x)
        DeviceChanged(BPADX, x);
    if (DeviceValue(BPADY) != y)
        DeviceChanged(BPADY, y);
}

void PuckButtonChanged(int button, bool pressed) {
    KeyDeviceChanged(button, pressed);
}

void InputLost() {
    Emulation.Reset();
    ForgetFrameDrag();
    const std::set<int> held = std::exchange(Input.Held, {});
    for (int device : held)
        DeviceChanged(device, 0);
    UpdateInputWindow();
}

void QuitRequested() {
    const std::vector<ScreenWindow*> windows = WindowsByAge();
    if (!windows.empty() && DeviceIsQueued(WINQUIT))
        AppendEvent(WINQUIT, windows.front()->Id);
}

void PassInputTime() {
    Emulation.Pass(ClockMicroseconds());
    if (ArrangementChanged)
        UpdateInputWindow();
}

void UpdateInputWindow() {
    // A closed window cannot keep the input, whatever is held.
    const bool closed = Input.Window != 0 && !FindScreenWindow(Input.Window);
    if (AnyButtonHeld() && !closed)
        return;
    ArrangementChanged = false;
    const ScreenWindow* window = nullptr;
    if (Input.PointerKnown)
        window = InputWindowAt(Input.X, Input.Y);
    else if (!StackingOrder().empty())
        window = StackingOrder().back();
    const int id = window ? window->Id : 0;
    if (id == Input.Window)
        return;
    Input.Window = id;
    AppendEvent(INPUTCHANGE, id);
    while (window && window->Parent)
        window = window->Parent;
    ShowActiveWindow(window ? window->Id : 0);
    if (PointerShapeChanged)
        PointerShapeChanged();
}

int InputWindow() {
    return FindScreenWindow(Input.Window) ? Input.Window : 0;
}

bool AnyButtonHeld() {
    return FrameIsHeld() || std::any_of(Input.Held.begin(), Input.Held.end(), IsMouseButton);
}

bool PointerIsKnown() {
    return Input.PointerKnown;
}

int PointerX() {
    return Input.X;
}

int PointerY() {
    return Input.Y;
}

const PointerShape* ShownPointerShape() {
    if (FrameIsHeld())
        return &ShapeOverFrame(HeldFramePart());
    const ScreenWindow* top = TopWindowAt(Input.X, Input.Y);
    // A drag keeps the shape of the window where it began.
    const ScreenWindow* window = FindScreenWindow(Input.Window);
    if (top && !AnyButtonHeld()) {
        const FramePart part = FramePartAt(top->Place, Input.X, Input.Y);
        if (part != FramePart::Content)
            return &ShapeOverFrame(part);
        window = InputWindowAt(Input.X, Input.Y);
    }
    if (!window)
        return &ShapeOverFrame(FramePart::None);
    return window->CursorHidden ? nullptr : &ShapeOfCursor(window->Cursor);
}

// The public call that moves the pointer.
void setvaluator(int valuator, int value, int minimum, int maximum) {
    const Limits limits{std::min(minimum, maximum), std::max(minimum, maximum)};
    const ContentSize screen = ScreenSize();
    // Limits that let the pointer go everywhere are none: they must not bind it when the screen grows later.
    if (limits.Least <= 0 && limits.Most >= (valuator == MOUSEX ? screen.Width : screen.Height) - 1)
        Input.ValuatorLimits.erase(valuator);
    else
        Input.ValuatorLimits[valuator] = limits;
    value = std::clamp(value, limits.Least, limits.Most);
    if (valuator != MOUSEX && valuator != MOUSEY) {
        SetDeviceValue(valuator, value);
        return;
    }
    const int x = valuator == MOUSEX ? value : std::max(0, Input.X);
    const int y = valuator == MOUSEY ? value : std::max(0, Input.Y);
    PointerMoved(x, y);
    if (PointerWarped)
        PointerWarped(Input.X, Input.Y);
}

} // namespace gl
