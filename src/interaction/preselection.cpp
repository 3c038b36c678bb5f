#include "interaction/preselection.h"

#include "gooey/draw.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/modes.h"
#include "interaction/picking.h"
#include "interaction/selection_passes.h"
#include "platform/desktop_place.h"
#include "platform/drawing.h"
#include "platform/events.h"
#include "platform/framebuffer.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/hooks.h"
#include "views/moves.h"
#include "views/status_line.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

int ShowPointedAt = 1, HidePointedAt;

namespace {

constexpr int OutlineIndex = 2;
constexpr int OutlineRed = 255, OutlineGreen = 220, OutlineBlue = 120;
/// Coordinates below are what rounding left of 0.
constexpr double LeastShown = 1e-9;
/// Clock ticks until a pointer that stays where it is counts as resting.
constexpr long RestTicks = 5;
constexpr int VertexFrame = 5;        // pixels from the vertex
constexpr double FarthestPixel = 1e5; // what lies beyond is of no use to the eye

struct Segment {
    std::int32_t From[2], To[2];
};

/// What is outlined now, and in which window.
std::vector<Segment> Outline;
Window* OutlinedIn;

/// Where the pointer was at last, since when, and whether that place has been looked at.
struct {
    const Window* In;
    int X, Y;
    long Since;
    bool Seen;
} Rest;

void DrawOutline(int index) {
    gl::drawmode(gl::PUPDRAW);
    VanillaView();
    gl::mapcolor(OutlineIndex, OutlineRed, OutlineGreen, OutlineBlue);
    gl::color(index);
    for (const Segment& segment : Outline) {
        gl::bgnline();
        gl::v2i(segment.From);
        gl::v2i(segment.To);
        gl::endline();
    }
    gl::drawmode(gl::NORMALDRAW);
}

/// Adds the line between two points of model space; in scene mode of scene space.
void AddLine(View* view, const double* from, const double* to) {
    double a[3], b[3];
    if (!Calc2dOf(view, from, a) || !Calc2dOf(view, to, b))
        return;
    Segment segment;
    for (int axis = 0; axis < 2; ++axis) {
        if (!(std::fabs(a[axis]) < FarthestPixel && std::fabs(b[axis]) < FarthestPixel))
            return;
        segment.From[axis] = static_cast<std::int32_t>(std::lround(a[axis]));
        segment.To[axis] = static_cast<std::int32_t>(std::lround(b[axis]));
    }
    Outline.push_back(segment);
}

void OutlinePolygon(View* view, const Polygon* polygon) {
    const PolygonBead* last = nullptr;
    for (const PolygonBead* bead : EveryBead(polygon))
        last = bead;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        AddLine(view, last->Vertex->Position, bead->Vertex->Position);
        last = bead;
    }
}

void OutlineBox(View* view, const Object* object, const Matrix& placement) {
    auto corner = [&](int number, double* place) {
        for (int axis = 0; axis < 3; ++axis)
            place[axis] = number & (1 << axis) ? object->Max[axis] : object->Min[axis];
        TransformCoordinate(place, placement, place);
    };
    for (int from = 0; from < 8; ++from)
        for (int axis = 0; axis < 3; ++axis)
            if (const int to = from | (1 << axis); to != from) {
                double a[3], b[3];
                corner(from, a);
                corner(to, b);
                AddLine(view, a, b);
            }
}

void OutlineVertex(View* view, const double* place) {
    double point[3];
    if (!Calc2dOf(view, place, point))
        return;
    const auto x = static_cast<std::int32_t>(std::lround(point[0]));
    const auto y = static_cast<std::int32_t>(std::lround(point[1]));
    const std::int32_t left = x - VertexFrame, right = x + VertexFrame;
    const std::int32_t bottom = y - VertexFrame, top = y + VertexFrame;
    Outline = {{{left, bottom}, {right, bottom}},
               {{right, bottom}, {right, top}},
               {{right, top}, {left, top}},
               {{left, top}, {left, bottom}}};
}

/// Only what a plain click would do; a tool's click means something else.
bool ClickSelects() {
    return !LeftCOGFunc && !LeftGridFunc && !WorkAreaLeftFunc && !LeftClickFunc;
}

void OutlineWhatIsPointedAt(View* view) {
    if (!ClickSelects())
        return;
    if (ObjectIsolated && WorkMode) {
        if (const VertexHit hit = PickVertex(view); hit.Vertex)
            OutlineVertex(view, hit.Place);
    } else if (const PolygonHit hit = PickPolygon(view); hit.Polygon) {
        if (ObjectIsolated)
            OutlinePolygon(view, hit.Polygon);
        else
            OutlineBox(view, hit.Object, hit.Placement);
    }
    if (Outline.empty())
        return;
    OutlinedIn = CurrentWindow;
    DrawOutline(OutlineIndex);
}

std::string TextOf(const double* point) {
    auto tidy = [](double value) { return std::fabs(value) < LeastShown ? 0 : value; };
    char text[80];
    std::snprintf(text, sizeof text, "x %.4g   y %.4g   z %.4g", tidy(point[0]), tidy(point[1]), tidy(point[2]));
    return text;
}

void LookAtPointer(View* view) {
    if (ObjectIsolated)
        CleanUpObject();
    SetUpView(view, 0);
    double point[3];
    ShowAtStatusEnd(GridPointUnderPointer(view, point) ? TextOf(point) : "");
    OutlineWhatIsPointedAt(view);
}

bool AnyButtonIsDown() {
    return gl::getbutton(gl::LEFTMOUSE) || gl::getbutton(gl::MIDDLEMOUSE) || gl::getbutton(gl::RIGHTMOUSE);
}

} // namespace

void InitPreselection() {
    ShowPointedAt = !HidePointedAt && gl::ScreenIsOnDesktop();
}

void UpdatePreselection(int idle) {
    if (!idle)
        Rest.Seen = false;
    const int number = ViewportNumber(CurrentWindow);
    if (!ShowPointedAt || number < 0 || CurrentWindow->Disabled || Moving || AnyButtonIsDown()) {
        HidePreselection();
        ShowAtStatusEnd("");
        Rest.In = nullptr;
        return;
    }
    ReadMousePos();
    const long now = ClockTicks();
    if (Rest.In != CurrentWindow || Rest.X != MouseX || Rest.Y != MouseY) {
        HidePreselection();
        Rest = {CurrentWindow, MouseX, MouseY, now, false};
    }
    if (!idle || Rest.Seen || now - Rest.Since < RestTicks)
        return;
    Rest.Seen = true;
    HidePreselection();
    LookAtPointer(ViewOfViewport(number));
}

void HidePreselection() {
    if (Outline.empty())
        return;
    if (WindowIsOpen(OutlinedIn)) {
        const WindowScope scope(OutlinedIn);
        DrawOutline(0);
    }
    Outline.clear();
    Rest.Seen = false;
}
