#include "interaction/flight.h"

#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "interaction/manipulator.h"
#include "platform/events.h"
#include "platform/system.h"
#include "views/moves.h"
#include "views/status_line.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr std::int16_t FlyStatus[] = {198, 199, 0};

constexpr long TimerMicroseconds = 10000;
constexpr double TicksPerSecond = 100;
/// Degrees a second for the square of a pixel off the middle.
constexpr double SteeringRate = 0.0003;
/// What is left of the roll after a tick.
constexpr double RollDecay = 0.98;

/// Where the eye is, and how it flies; angles in degrees.
struct Flight {
    const View* Flown; // null while nobody flies
    double Eye[3];
    double Heading, Pitch, Roll;
    double Speed; // model units a second
    long LastTick;
};

Flight TheFlight;
Manipulator FlyManipulator;

void Stop(View*) {
    TheFlight.Speed = 0;
}

void KeepFlying(View*) {}

void TakeButtons(View* view, int device, short value) {
    UpdateManipulator(view, device, value, FlyManipulator);
}

/// The eye's place and angles from the view's matrix.
void Decompose(const Matrix& m) {
    Flight& flight = TheFlight;
    const double back[3] = {-m[3][0], -m[3][1], -m[3][2]};
    RotateVector(back, MatrixTranspose(m), flight.Eye);
    // Rounding may have stretched the matrix a little beyond what sines can be.
    flight.Pitch = std::asin(std::clamp(-m[2][1], -1.0, 1.0));
    if (std::abs(std::cos(flight.Pitch)) < 0.001) {
        // Straight up or down all turning counts as heading.
        flight.Roll = 0;
        flight.Heading = std::atan2(-m[1][0], m[0][0]);
    } else {
        flight.Roll = std::atan2(m[2][0], m[2][2]);
        flight.Heading = std::atan2(m[0][1], m[1][1]);
    }
    for (double* angle : {&flight.Heading, &flight.Pitch, &flight.Roll})
        *angle *= RadiansToDegrees;
}

void Compose(Matrix& m) {
    const Flight& flight = TheFlight;
    m = TranslationMatrix(-flight.Eye[0], -flight.Eye[1], -flight.Eye[2]);
    MultMatrix(m, YawMatrix(flight.Heading), m);
    MultMatrix(m, PitchMatrix(flight.Pitch), m);
    MultMatrix(m, RollMatrix(flight.Roll), m);
}

/// Brings an angle that left a full turn by less than another back into it.
double Wrapped(double angle, double low, double high) {
    return angle < low ? angle + 360 : angle > high ? angle - 360 : angle;
}

void Steer(long ticks, double seconds) {
    Flight& flight = TheFlight;
    const double dx = MouseX - CurrentWindow->Width / 2.0, dy = MouseY - CurrentWindow->Height / 2.0;
    flight.Roll *= std::pow(RollDecay, static_cast<double>(ticks));
    flight.Heading = Wrapped(flight.Heading + dx * std::abs(dx) * SteeringRate * seconds, 0, 360);
    flight.Pitch = Wrapped(flight.Pitch - dy * std::abs(dy) * SteeringRate * seconds, -180, 180);
}

/// In large models speed is gathered quicker: with the logarithm of their radius, which fails those of a centimetre.
constexpr double LeastScale = 0.1;

/// Going over to the other direction is quicker than gathering speed.
void Accelerate(double seconds) {
    double& speed = TheFlight.Speed;
    const double scale = std::max(LeastScale, std::log10(ShownRadius() * 100));
    const double change = std::pow(1.3, seconds) * scale / 10;
    if (FlyManipulator.LeftDown)
        speed += speed < 0 ? 4 * change : change;
    if (FlyManipulator.RightDown)
        speed -= speed > 0 ? 4 * change : change;
}

void FlyStep(View* view) {
    Flight& flight = TheFlight;
    const long now = gl::IntervalTimerCount();
    const long ticks = now - flight.LastTick;
    if (ticks == 0)
        return;
    flight.LastTick = now;
    const double seconds = static_cast<double>(ticks) / TicksPerSecond;
    Steer(ticks, seconds);
    Compose(view->ViewMatrix);
    if (!FlyManipulator.Active)
        Accelerate(seconds);
    const double way = seconds * flight.Speed * WorkAreaMagnification();
    for (int axis = 0; axis < 3; ++axis)
        flight.Eye[axis] += way * view->ViewMatrix[axis][1];
}

} // namespace

void Fly(View* view) {
    TheFlight.Flown = view;
    TheFlight.Speed = 0;
    SetManipulator(FlyManipulator, Stop, KeepFlying, KeepFlying);
    Decompose(view->ViewMatrix);
    gl::StartIntervalTimer(TimerMicroseconds);
    TheFlight.LastTick = gl::IntervalTimerCount();
    MoveStatusList = FlyStatus;
    DontDirtyAfterMove = 1;
    UpdateWindow(view, gl::MIDDLEMOUSE, FlyStep, TakeButtons);
    MoveStatusList = nullptr;
    gl::StopIntervalTimer();
    StopFlying();
}

void StopFlying() {
    TheFlight.Flown = nullptr;
}

void DrawHUD(View* view) {
    const Flight& flight = TheFlight;
    if (flight.Flown != view)
        return;

    struct Line {
        const char* Format;
        double Value;
        int SpaceBefore;
    };

    const Line lines[] = {
        {"x = %10.2f", flight.Eye[0], 0},      {"y = %10.2f", flight.Eye[1], 0},  {"z = %10.2f", flight.Eye[2], 0},
        {"heading = %.1f", flight.Heading, 4}, {"pitch = %.1f", flight.Pitch, 0}, {"speed = %.2f m/s", flight.Speed, 0},
    };
    VanillaView();
    int y = CurrentWindow->Height - 55;
    for (const Line& line : lines) {
        char text[64];
        std::snprintf(text, sizeof text, line.Format, line.Value);
        y -= line.SpaceBefore;
        SmallText(10, y, text, 0xFFFFFF);
        y -= 19;
    }
}
