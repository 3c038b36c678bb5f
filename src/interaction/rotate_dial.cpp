#include "interaction/rotate_dial.h"

#include "geometry/matrices.h"
#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "platform/drawing.h"
#include "views/rendering_state.h"

#include <cmath>

namespace {

constexpr double RingReach = 1.1;
constexpr int RingSegments = 64;
constexpr std::uint32_t DiscColour = 0xFF404040, LineColour = 0xFFFFFFFF;

struct Place {
    int X, Y;
};

Place CentreOf(const RotateDial& dial) {
    return {AnchoredX(dial.X), AnchoredY(dial.Y)};
}

void DrawRing(int x, int y, int radius) {
    SetLighting();
    BindMaterial(nullptr);
    gl::bgnqstrip();
    for (int i = 0; i <= RingSegments; ++i) {
        const double around = i * 2 * M_PI / RingSegments, c = std::cos(around), s = std::sin(around);
        const double inwards[3] = {-c, -s, 0}, outside[3] = {-0.866 * c, -0.866 * s, 0.5};
        const double inner[2] = {x + radius * c, y + radius * s};
        const double outer[2] = {x + RingReach * radius * c, y + RingReach * radius * s};
        gl::n3d(inwards);
        gl::v2d(inner);
        gl::n3d(outside);
        gl::v2d(outer);
    }
    gl::endqstrip();
}

void DrawDial(Gadget* gadget) {
    const RotateDial& dial = GadgetData<RotateDial>(gadget);
    const Place centre = CentreOf(dial);
    DrawRotateGadget(centre.X, centre.Y, dial.Radius, *dial.Angle);
}

int ClickDial(Gadget* gadget) {
    const RotateDial dial = GadgetData<RotateDial>(gadget);
    const Place centre = CentreOf(dial);
    if (!MouseInCircle(centre.X, centre.Y, dial.Reach))
        return 0;
    Window* const window = CurrentWindow;
    dial.Begin();
    const auto follow = [&] {
        double angle;
        if (WindowIsOpen(window) && DialAngle(MouseX - centre.X, MouseY - centre.Y, angle) && angle != *dial.Angle)
            CallOwner(gadget, [&] { dial.Turn(angle); });
    };
    if (TrackLeftButton(follow))
        follow();
    CallOwner(gadget, [&] { dial.End(); });
    return 1;
}

void DescribeDial(const Gadget* gadget, GadgetDescription& description) {
    const RotateDial& dial = GadgetData<RotateDial>(gadget);
    const Place centre = CentreOf(dial);
    description.Label = dial.Label;
    description.Box = {centre.X - dial.Radius, centre.Y - dial.Radius, 2 * dial.Radius, 2 * dial.Radius};
}

constexpr GadgetKind DialKind = {"custom", DescribeDial, nullptr, nullptr};

} // namespace

void DrawRotateGadget(int x, int y, int radius, double angle) {
    const auto fromCentre = [&](double reach, double degrees) {
        const double radians = degrees * DegreesToRadians;
        const double point[2] = {x + reach * radius * std::cos(radians), y + reach * radius * std::sin(radians)};
        gl::v2d(point);
    };
    const double pointer = 90 - angle;
    const double centre[2] = {static_cast<double>(x), static_cast<double>(y)};
    VanillaView();
    DrawRing(x, y, radius);
    gl::cpack(DiscColour);
    gl::circf(static_cast<float>(x), static_cast<float>(y), static_cast<float>(radius));
    gl::cpack(LineColour);
    LineAntialiasing(1);
    gl::bgnline();
    gl::v2d(centre);
    fromCentre(1, 90);
    gl::endline();
    gl::bgnline();
    gl::v2d(centre);
    fromCentre(1, pointer);
    gl::endline();
    gl::bgnline();
    fromCentre(0.85, pointer - 10);
    fromCentre(1, pointer);
    fromCentre(0.85, pointer + 10);
    gl::endline();
    const int from = static_cast<int>(std::lround(10 * (angle > 0 ? pointer : 90)));
    const int to = static_cast<int>(std::lround(10 * (angle > 0 ? 90 : pointer)));
    if (from != to)
        gl::arc(static_cast<float>(x), static_cast<float>(y), static_cast<float>(radius) / 4, from, to);
    LineAntialiasing(0);
}

Gadget* AddRotateDial(const RotateDial& dial) {
    Gadget* gadget = CreateGadget<RotateDial>();
    GadgetData<RotateDial>(gadget) = dial;
    gadget->DrawFn = DrawDial;
    gadget->ClickFn = ClickDial;
    gadget->Kind = &DialKind;
    return gadget;
}

int DialAngle(int dx, int dy, double& angle) {
    if (dx == 0 || dy == 0)
        return 0;
    angle = NormalisedDialAngle(90 - std::atan2(dy, dx) * RadiansToDegrees);
    return 1;
}

double NormalisedDialAngle(double angle) {
    if (angle > 180)
        angle -= 360;
    if (angle < -180)
        angle += 360;
    // Straight down is 180 degrees, never -180.
    return angle < -179.9 ? -angle : angle;
}
