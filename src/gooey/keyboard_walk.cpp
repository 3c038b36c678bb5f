#include "gooey/keyboard_walk.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "platform/events.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::uint32_t WalkColour = 0x40D0FF;
/// From a gadget's box to its frame, and the frame's own, in pixels.
constexpr int FrameDistance = 2, FrameThickness = 2;
/// Gadgets whose middles differ in height by less stand in one row.
constexpr int RowTolerance = 12;

bool Steps(const Gadget* gadget) {
    return gadget->Kind->Wheel && gadget->Kind->Steps;
}

bool CanBeWalkedTo(const Gadget* gadget) {
    return gadget->Kind && (gadget->Kind->Press || gadget->Kind->TakeKeyboard || Steps(gadget));
}

GadgetBox BoxOf(const Gadget* gadget) {
    GadgetDescription description;
    if (gadget->Kind->Describe)
        gadget->Kind->Describe(gadget, description);
    return description.Box;
}

struct Stop {
    Gadget* Place;
    int Middle, X;
};

/// The gadgets of the current window that a walk comes to, row by row from the top, each from the left.
std::vector<Stop> StopsOfWalk() {
    std::vector<Stop> stops;
    for (Gadget* head = CurrentWindow->Gadgets; head; head = head->NextGadget)
        for (Gadget* member = head; member && member->Visible; member = member->Next)
            if (CanBeWalkedTo(member)) {
                const GadgetBox box = BoxOf(member);
                stops.push_back({member, box.Y + box.Height / 2, box.X});
            }
    std::stable_sort(stops.begin(), stops.end(), [](const Stop& a, const Stop& b) { return a.Middle > b.Middle; });
    for (std::size_t i = 1; i < stops.size(); ++i)
        if (stops[i - 1].Middle - stops[i].Middle < RowTolerance)
            stops[i].Middle = stops[i - 1].Middle;
    std::stable_sort(stops.begin(), stops.end(), [](const Stop& a, const Stop& b) {
        return a.Middle != b.Middle ? a.Middle > b.Middle : a.X < b.X;
    });
    return stops;
}

/// The gadget that the walk of the current window stands on, if it is still there to be seen.
Gadget* Walked() {
    if (!CurrentWindow->Walked)
        return nullptr;
    for (const Stop& stop : StopsOfWalk())
        if (stop.Place == CurrentWindow->Walked)
            return stop.Place;
    return nullptr;
}

void GoTo(Gadget* gadget) {
    if (gadget->Kind->TakeKeyboard) {
        CurrentWindow->Walked = nullptr;
        gadget->Kind->TakeKeyboard(gadget);
    } else {
        Window* window = CurrentWindow;
        DeselectOtherNodes(window->Gadgets, gadget);
        if (!WindowIsOpen(window))
            return;
        window->Walked = gadget;
    }
    RedrawCurrentWindow();
}

/// The wheel over the gadget's middle does what an arrow key does.
void StepValue(Gadget* gadget, int direction) {
    const GadgetBox box = BoxOf(gadget);
    const int x = MouseX, y = MouseY;
    MouseX = box.X + box.Width / 2;
    MouseY = box.Y + box.Height / 2;
    Window* window = CurrentWindow;
    CheckGooeyWheel(gadget, 0, direction * gl::WHEELNOTCH);
    MouseX = x;
    MouseY = y;
    if (WindowIsOpen(window))
        RedrawWindow(window);
}

void DrawFrameAround(const GadgetBox& box, std::uint32_t colour) {
    SetColour(colour);
    for (int i = 0; i < FrameThickness; ++i) {
        const int distance = FrameDistance + i;
        DrawFrame(box.X - distance, box.Y - distance, box.Width + 2 * distance, box.Height + 2 * distance, ShadeFull);
    }
}

} // namespace

int WalkFrom(Gadget* gadget, bool back) {
    const std::vector<Stop> stops = StopsOfWalk();
    const auto here =
        std::find_if(stops.begin(), stops.end(), [gadget](const Stop& stop) { return stop.Place == gadget; });
    if (here == stops.end() || stops.size() < 2)
        return 0;
    const std::size_t count = stops.size(), index = static_cast<std::size_t>(here - stops.begin());
    GoTo(stops[(index + (back ? count - 1 : 1)) % count].Place);
    return 1;
}

int KeyInWalk(Window* window, int character) {
    const WindowScope scope(window);
    Gadget* gadget = Walked();
    if (!gadget)
        return 0;
    switch (character) {
    case TabCharacter:
        return WalkFrom(gadget, LeftShift || RightShift);
    case ' ':
    case ReturnCharacter:
        if (!gadget->Kind->Press)
            return 0;
        gadget->Kind->Press(gadget);
        return 1;
    case UpCharacter:
    case RightCharacter:
    case DownCharacter:
    case LeftCharacter:
        if (!Steps(gadget))
            return 0;
        StepValue(gadget, character == UpCharacter || character == RightCharacter ? 1 : -1);
        return 1;
    default:
        return 0;
    }
}

int BeginWalk(Window* window, int character) {
    if (character != TabCharacter)
        return 0;
    const WindowScope scope(window);
    const std::vector<Stop> stops = StopsOfWalk();
    if (stops.empty())
        return 0;
    GoTo(LeftShift || RightShift ? stops.back().Place : stops.front().Place);
    return 1;
}

void EndWalk(Window* window) {
    if (!window->Walked)
        return;
    window->Walked = nullptr;
    RedrawWindow(window);
}

void SetDefaultButton(const Gadget* group, int index) {
    for (group = group->Next; group && index > 0; --index)
        group = group->Next;
    CurrentWindow->DefaultButton = group;
}

void DrawKeyboardFrames() {
    const Gadget* walked = Walked();
    for (const Gadget* head = CurrentWindow->Gadgets; head; head = head->NextGadget)
        for (const Gadget* member = head; member && member->Visible; member = member->Next)
            if (member == CurrentWindow->DefaultButton && member != walked)
                DrawFrameAround(BoxOf(member), Black);
    if (walked)
        DrawFrameAround(BoxOf(walked), WalkColour);
}
