#pragma once

struct Gadget;

// The rotate dial: a disc in a ring with a zero mark that points up and a pointer. Its angle is in degrees, clockwise
// from straight up, above -180 and up to 180.

/// Draws a dial in the current window; the disc has `radius` pixels, the ring lies around it.
void DrawRotateGadget(int x, int y, int radius, double angle);

/// A dial in a window. Positions are pixels, negative ones count from the window's right or top edge.
struct RotateDial {
    int X = 0, Y = 0, Radius = 0;
    /// How near to the centre a press takes hold of it.
    int Reach = 0;
    const double* Angle = nullptr;
    /// A press has taken hold of it; the pointer has another angle; it was let go, or its window must close. The angle
    /// is not shown by itself: turn() redraws the window when it has taken it.
    void (*Begin)() = nullptr;
    void (*Turn)(double angle) = nullptr;
    void (*End)() = nullptr;
    /// For reports and scripts.
    const char* Label = "";
};

/// Adds it to the current window.
Gadget* AddRotateDial(const RotateDial& dial);

/// The angle from a dial's centre to a point that lies dx, dy pixels from it. 0, and `angle` stays, for a point exactly
/// level with the centre, or exactly above or below it.
int DialAngle(int dx, int dy, double& angle);
/// An angle brought into a dial's range.
double NormalisedDialAngle(double angle);
