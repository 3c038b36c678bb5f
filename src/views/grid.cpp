#include "views/grid.h"

#include "geometry/numbers.h"
#include "geometry/planes.h"
#include "gooey/window.h"
#include "platform/drawing.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "views/scene_views.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>

int GridVisible = 1, GridOnTop, GridSnap;
int AligningToVertices;
Window* GridGizmo;
int HidingVertices;

namespace {

constexpr double Squares[GridSquareCount] = {0.001, 0.002, 0.005, 0.01, 0.02, 0.05,  0.1,   0.2,
                                             0.5,   1,     2,     5,    10,   20,    50,    100,
                                             200,   500,   1000,  2000, 5000, 10000, 20000, 50000};
constexpr int MostSteps = 1000;
constexpr int WantedSteps = 10;

constexpr std::uint32_t White = 0xFFFFFFFF, Yellow = 0xFF00FFFF, Grey = 0xFF808080;

int UsableIndex(int index) {
    return std::clamp(index, 0, GridSquareCount - 1);
}

/// From one bright line to the next: they fall on powers of ten, and on halves and fifths of them.
int BrightInterval(int index) {
    constexpr int intervals[] = {10, 5, 2};
    return intervals[UsableIndex(index) % 3];
}

void Line(double x1, double y1, double x2, double y2) {
    const double from[2] = {x1, y1}, to[2] = {x2, y2};
    gl::bgnline();
    gl::v2d(from);
    gl::v2d(to);
    gl::endline();
}

/// The lines x = place and y = place across the grid.
void LinesAt(double place, double extent) {
    Line(place, -extent, place, extent);
    Line(-extent, place, extent, place);
}

void CentreLines(std::uint32_t firstColour, double extent) {
    gl::linewidth(2);
    gl::cpack(White);
    Line(-extent, 0, extent, 0);
    gl::cpack(firstColour);
    Line(0, -extent, 0, extent);
    gl::linewidth(1);
}

/// The projection of a 3D view that brings what lies in a plane (eye space, not through the eye) nearer to the eye, by
/// as much as the plane's depth changes over a pixel: polygons that lie in the plane then do not cut lines in it to
/// pieces.
Matrix ProjectionBeforePlane(const double (&plane)[4]) {
    // A few steps of the depth buffer's; and what does not yet move much before the near plane. From -1 to 1 are all
    // depths.
    constexpr double leastStep = 1e-6, largestStep = 0.05;
    Matrix projection = LoadedProjection();
    // Depth on the plane is a linear function of the place on the screen.
    const double alongX = plane[0] / (projection[0][0] * CurrentWindow->Width);
    const double alongY = plane[1] / (projection[1][1] * CurrentWindow->Height);
    const double step = 2 * std::fabs(projection[3][2] / plane[3]) * std::max(std::fabs(alongX), std::fabs(alongY));
    for (int i = 0; i < 4; ++i)
        projection[i][2] -= std::clamp(step, leastStep, largestStep) * projection[i][3];
    return projection;
}

/// The rotation of a 3D view's grid by its axis, and the direction that stands for that plane.
struct GridPlane {
    int Direction;
    Matrix Rotation;
};

GridPlane PlaneOf(int axis) {
    switch (axis) {
    case 'x':
        return {2, RollMatrix(-90)};
    case 'z':
        return {4, PitchMatrix(90)};
    default:
        return {0, IdentityMatrix};
    }
}

} // namespace

double GridSquare(int index) {
    return Squares[UsableIndex(index)];
}

double OneGridSquare() {
    return GridSquare(ShownGridIndex());
}

std::int32_t& ShownGridIndex() {
    return ObjectIsolated ? GridIndex() : SceneGridIndex;
}

std::int32_t& ShownGridSteps() {
    return ObjectIsolated ? GridSteps() : SceneGridSteps;
}

int DrawnGridSteps(int steps) {
    return std::clamp(steps, 1, MostSteps);
}

double GridExtent(int index, int steps) {
    return GridSquare(index) * DrawnGridSteps(steps);
}

void DrawGrid(View* view, int steps, int index) {
    if (view->Perspective && AligningToVertices)
        return;
    const double extent = GridExtent(index, steps);
    const int lines = HidingVertices ? 1 : DrawnGridSteps(steps);
    const double square = HidingVertices ? extent : GridSquare(index);
    const int bright = BrightInterval(index);
    double plane[4];
    GetPlaneFromTransformation(GridMat(view), plane);
    std::optional<ProjectionScope> before;
    if (view->Perspective && gl::getzbuffer() && plane[3] != 0)
        before.emplace(ProjectionBeforePlane(plane));
    gl::pushmatrix();
    MultGLMatrix(view->GridMatrix);
    // The brightest last: no grey line crosses over a white one.
    for (const bool white : {false, true}) {
        gl::cpack(white ? White : Grey);
        for (int i = 1; i <= lines; ++i)
            if ((i % bright == 0) == white) {
                LinesAt(i * square, extent);
                LinesAt(-i * square, extent);
            }
    }
    CentreLines(view->Perspective && GridGizmo ? Yellow : White, extent);
    gl::popmatrix();
}

void SetGridAxis(View* view, int axis) {
    if (!view->Perspective) {
        Matrix facing = MatrixTranspose(view->ViewMatrix);
        for (int i = 0; i < 3; ++i)
            facing[i][3] = facing[3][i] = 0;
        MultMatrix(PitchMatrix(90), facing, view->GridMatrix);
        return;
    }
    const GridPlane plane = PlaneOf(axis);
    view->Direction = plane.Direction;
    view->GridMatrix = plane.Rotation;
    if (!WorkAreaGizmo)
        return;
    const WorkAreaRecord& area = CurrentWorkArea();
    for (int i = 0; i < 3; ++i) {
        view->GridMatrix[3][i] = area.Centre[i];
        Snap(&view->GridMatrix[3][i], OneGridSquare());
    }
}

void FitGrid(double radius, std::int32_t& index, std::int32_t& steps) {
    const auto stepsFor = [radius](int candidate) {
        return radius > 0 ? std::trunc(std::min(radius / Squares[candidate],
                                                static_cast<double>(std::numeric_limits<std::int32_t>::max())))
                          : 0;
    };
    const auto missOf = [&](int candidate) { return std::fabs(stepsFor(candidate) - WantedSteps); };
    index = 0;
    for (int candidate = 1; candidate < GridSquareCount; ++candidate)
        if (missOf(candidate) < missOf(index))
            index = candidate;
    steps = static_cast<std::int32_t>(stepsFor(index));
}
