#include "interaction/manipulation.h"

#include "geometry/vectors.h"
#include "gooey/event_loop.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/flight.h"
#include "interaction/manipulator.h"
#include "interaction/picking.h"
#include "interaction/rotation_centre.h"
#include "platform/events.h"
#include "views/default_views.h"
#include "views/moves.h"
#include "views/status_line.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <algorithm>
#include <cmath>

int ZoomPanAllowed = 1;

namespace {

constexpr double PixelsPerDegree = 3;

constexpr std::int16_t MoveStatus3d[] = {94, 95, 96, 0};
constexpr std::int16_t MoveStatus2d[] = {93, 95, 96, 0};

/// The drag under way: where it was anchored, and how it turns.
struct Drag {
    int StartX, StartY;
    double StartZoom;
    Matrix StartMatrix;
    bool Rolling;
    double StartRoll; // degrees
};

Drag TheDrag;
Manipulator TheManipulator;

/// The centre of rotation in the space that ViewMatrix takes to the eye: the work area moves and enlarges it.
struct Point {
    double At[3];
};

Point CentreOf(const View* view) {
    Matrix workArea = IdentityMatrix;
    SetWorkArea(&workArea, 0);
    Point centre;
    TransformCoordinate(view->Centre, workArea, centre.At);
    return centre;
}

/// Where the view turns about, before the eye: its centre, or else the model's origin.
Point CentreBeforeEye(const View* view) {
    Point place;
    if (view->HasCentre)
        TransformCoordinate(CentreOf(view).At, view->ViewMatrix, place.At);
    else
        std::copy_n(view->ViewMatrix[3], 3, place.At);
    return place;
}

void MoveBy(View* view, double x, double y, double z) {
    MultMatrix(view->ViewMatrix, TranslationMatrix(x, y, z), view->ViewMatrix);
}

/// A distance to the centre that is worked with: the eye may be in it.
double AtLeastNear(const View* view, double distance) {
    return std::max(0.01 * view->Size, std::abs(distance));
}

/// The length that a zoom of the 3D view is a share of.
double ZoomDistance(const View* view) {
    return AtLeastNear(view, LengthOfVector(CentreBeforeEye(view).At));
}

/// Model units a pixel at the centre.
double UnitsPerPixel(const View* view) {
    double size = 0;
    PixelToEye(view, AtLeastNear(view, CentreBeforeEye(view).At[1]), size);
    return size;
}

void Pan(View* view, double pixelsX, double pixelsY) {
    const double size = UnitsPerPixel(view);
    MoveBy(view, pixelsX * size, 0, pixelsY * size);
}

/// Turns about the centre.
void Turn(View* view, const Matrix& rotation) {
    const Point centre = CentreBeforeEye(view);
    Matrix& matrix = view->ViewMatrix;
    for (int axis = 0; axis < 3; ++axis)
        matrix[3][axis] -= centre.At[axis];
    MultMatrix(matrix, rotation, matrix);
    for (int axis = 0; axis < 3; ++axis)
        matrix[3][axis] += centre.At[axis];
}

Matrix YawAndPitch(double pixelsX, double pixelsY) {
    Matrix rotation;
    MultMatrix(YawMatrix(pixelsX / PixelsPerDegree), PitchMatrix(-pixelsY / PixelsPerDegree), rotation);
    return rotation;
}

double PointerFromMiddleX() {
    return MouseX - CurrentWindow->Width / 2.0;
}

double PointerFromMiddleY() {
    return MouseY - CurrentWindow->Height / 2.0;
}

/// Degrees of the pointer around the window's middle.
double PointerAngle() {
    return std::atan2(PointerFromMiddleX(), PointerFromMiddleY()) * RadiansToDegrees;
}

bool ShiftHeld() {
    return LeftShift || RightShift;
}

bool CtrlHeld() {
    return LeftCtrl || RightCtrl;
}

/// The drag goes on from where the pointer and the view are now.
void Anchor(View* view) {
    TheDrag.StartX = MouseX;
    TheDrag.StartY = MouseY;
    TheDrag.StartZoom = view->Zoom;
    TheDrag.StartMatrix = view->ViewMatrix;
}

void Restart(View* view) {
    Anchor(view);
    TheDrag.Rolling =
        !ShiftHeld() && std::hypot(PointerFromMiddleX(), PointerFromMiddleY()) > CurrentWindow->Width / 3.0;
    TheDrag.StartRoll = PointerAngle();
}

/// Beyond these, however long a wheel is turned, pixels need more digits than the graphics hardware has.
double DrawableZoom(double zoom) {
    constexpr double smallest = 1e-9, largest = 5e7;
    return std::clamp(zoom, smallest, largest);
}

void Zoom(View* view, double share) {
    if (view->Perspective)
        MoveBy(view, 0, -share * ZoomDistance(view), 0);
    else
        view->Zoom = DrawableZoom(TheDrag.StartZoom * (share >= 0 ? 2 * share + 1 : -1 / (share - 1)));
}

void Step(View* view) {
    if (TheManipulator.Active)
        return;
    const bool is3d = view->Perspective;
    const double dx = MouseX - TheDrag.StartX, dy = MouseY - TheDrag.StartY;
    view->ViewMatrix = TheDrag.StartMatrix;
    if (TheManipulator.RightDown && ZoomPanAllowed)
        Zoom(view, dy / (CurrentWindow->Height / 2.0));
    else if (!is3d || (TheManipulator.LeftDown && ZoomPanAllowed))
        Pan(view, dx, dy);
    else if (TheDrag.Rolling)
        Turn(view, RollMatrix(PointerAngle() - TheDrag.StartRoll));
    else
        Turn(view, YawAndPitch(dx, dy));
}

/// What fits the view again changes the eye's distance, too.
void ResetWhereAllowed(View* view) {
    if (ZoomPanAllowed || !view->Perspective)
        ResetView(view);
}

void TakeButtons(View* view, int device, short value) {
    UpdateManipulator(view, device, value, TheManipulator);
}

void DragView(View* view) {
    SetManipulator(TheManipulator, ResetWhereAllowed, Restart, Anchor);
    Restart(view);
    MoveStatusList = view->Perspective ? MoveStatus3d : MoveStatus2d;
    DontDirtyAfterMove = 1;
    UpdateWindow(view, gl::MIDDLEMOUSE, Step, TakeButtons);
    MoveStatusList = nullptr;
}

// ---- The wheel

/// A notch makes the view this much larger.
constexpr double NotchFactor = 1.2;
constexpr double FarthestSizes = 1e5;
/// What a notch pans and turns, in pixels of a drag.
constexpr double NotchPixels = 30;

/// The line under the pointer in units of depth: x to the right and z up at a depth of 1.
struct EyeRay {
    double X, Z;
};

EyeRay RayUnderPointer(const View* view) {
    return {PointerFromMiddleX() / (view->Projection[0][0] * CurrentWindow->Width / 2),
            PointerFromMiddleY() / (view->Projection[1][1] * CurrentWindow->Height / 2)};
}

/// The length that the wheel's zoom of the 3D view is a share of. It leads up to the centre and, slowly, past it; back
/// from anywhere.
double DistanceOfWheel(const View* view, bool closer) {
    const Point centre = CentreBeforeEye(view);
    const double nearest = AtLeastNear(view, 0);
    const double distance = centre.At[1] > nearest ? centre.At[1]
                            : closer               ? nearest
                                                   : AtLeastNear(view, LengthOfVector(centre.At));
    return std::min(distance, FarthestSizes * view->Size);
}

/// What is under the pointer stays there.
void ZoomAboutPointer(View* view, double factor) {
    const EyeRay ray = RayUnderPointer(view);
    if (view->Perspective) {
        // Moving along the ray keeps all of it under the pointer, near and far.
        const double step = (1 / factor - 1) * DistanceOfWheel(view, factor > 1);
        MoveBy(view, step * ray.X, step, step * ray.Z);
    } else {
        const double zoom = DrawableZoom(view->Zoom * factor);
        const double change = 1 / zoom - 1 / view->Zoom;
        MoveBy(view, change * ray.X, 0, change * ray.Z);
        view->Zoom = zoom;
    }
}

} // namespace

void ManipulateView(View* view) {
    StopFlying();
    if (view->Perspective && CtrlHeld() && ZoomPanAllowed)
        Fly(view);
    else if (!view->Perspective || !ShiftHeld() || PickRotationCentre(view))
        DragView(view);
    RememberView(view);
}

void TurnWheel(View* view, int turnX, int turnY) {
    const double notchesX = static_cast<double>(turnX) / gl::WHEELNOTCH;
    const double notchesY = static_cast<double>(turnY) / gl::WHEELNOTCH;
    const bool movable = !view->Perspective || ZoomPanAllowed;
    if (view->Perspective && CtrlHeld()) {
        Turn(view, YawAndPitch(-notchesX * NotchPixels, -notchesY * NotchPixels));
    } else if (movable) {
        if (ShiftHeld())
            Pan(view, -notchesX * NotchPixels, -notchesY * NotchPixels);
        else {
            ZoomAboutPointer(view, std::pow(NotchFactor, notchesY));
            Pan(view, -notchesX * NotchPixels, 0);
        }
    }
    RememberView(view);
    DirtyCurrentWindow();
}

void ResetView(View* view) {
    BoxView(view, ShownRadius());
    if (!view->Perspective || !view->HasCentre)
        return;
    const Point centre = CentreBeforeEye(view);
    const double centreDistance = LengthOfVector(view->Centre);
    double* const move = view->ViewMatrix[3];
    const double nearer[3] = {0, centreDistance, 0};
    for (int axis = 0; axis < 3; ++axis)
        move[axis] -= centre.At[axis] - move[axis] + nearer[axis];
}
