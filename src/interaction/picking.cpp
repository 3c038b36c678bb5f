#include "interaction/picking.h"

#include "base/debug.h"
#include "geometry/numbers.h"
#include "geometry/planes.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "interaction/selection.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "store/work_polygons.h"
#include "views/grid.h"
#include "views/view_transform.h"

#include <algorithm>
#include <cmath>

namespace {

/// The pointer's hot spot lies this far to the right of and below the pixel that is pointed at.
constexpr int HotSpotOffset = 2;

/// Snapping is to this part of a grid square.
constexpr double SnapDivisions = 4;

/// The grid reaches this many times its steps in picking.
constexpr double GridReach = 3;

/// What a pixel is worth in eye units, at distance 1; 0 for a window or a projection without extent.
double UnitsAPixel(double projectionElement, int pixels) {
    const double extent = projectionElement * pixels / 2;
    return extent == 0 ? 0 : 1 / extent;
}

/// The plane of the polygon under the pointer, model space; 0 when there is none.
int PlaneUnderPointer(View* view, double* plane) {
    if (ObjectIsolated) {
        const Polygon* polygon = SelectSinglePolygon(view);
        if (!polygon || !polygon->Beads)
            return 0;
        std::copy_n(polygon->Normal, 3, plane);
        CalcPlaneD(plane, polygon->Beads->Vertex->Position);
        return 1;
    }
    WorkPoly* polygon = SelectScenePolygon(view);
    const int hit = polygon && CalcWorkPolyPlane(polygon, plane);
    FreeSceneSelectPoly();
    return hit;
}

/// The point of the polygon under the pointer; `toModel` takes eye space to model space.
int IntersectPolygon(View* view, const Matrix& toModel, double* eye, double* model) {
    double plane[4], line[6];
    if (!PlaneUnderPointer(view, plane))
        return 0;
    CalcEyeLine(view, line);
    TransformLine(line, toModel, line);
    if (!IntersectLineWithPlane(line, plane, model))
        return 0;
    TransformCoordinate(model, ViewMat(view), eye);
    return 1;
}

} // namespace

void CalcEyeLine(const View* view, double* line) {
    const int width = CurrentWindow->Width, height = CurrentWindow->Height;
    const double x = (MouseX - HotSpotOffset - width / 2.0) * UnitsAPixel(view->Projection[0][0], width);
    const double y = (MouseY + HotSpotOffset - height / 2.0) * UnitsAPixel(view->Projection[1][1], height);
    const double perspective[6] = {0, 0, 0, x, y, -1};
    const double parallel[6] = {x, y, 1, 0, 0, -1};
    std::copy_n(view->Perspective ? perspective : parallel, 6, line);
}

void CalcEyePlane(View* view, double* plane) {
    GetPlaneFromTransformation(GridMat(view), plane);
}

int IntersectGrid(View* view, double* point) {
    double line[6], plane[4], hit[3];
    CalcEyeLine(view, line);
    CalcEyePlane(view, plane);
    const int side = IntersectLineWithPlane(line, plane, hit);
    // Lines of sight of a 2D view have no beginning: all depths are shown.
    if (side == 0 || (side < 0 && view->Perspective))
        return 0;

    const Matrix grid = GridMat(view);
    const double square = OneGridSquare();
    // A model smaller than the smallest square has a grid of no steps, and a file may ask for fewer; one is drawn.
    const double limit = std::max(ShownGridSteps(), 1) * square * GridReach;
    TransformCoordinate(hit, MatrixInverse(grid), hit);
    for (int axis = 0; axis < 2; ++axis) {
        hit[axis] = std::clamp(hit[axis], -limit, limit);
        if (GridSnap)
            Snap(&hit[axis], square / SnapDivisions);
    }
    TransformCoordinate(hit, grid, point);
    return 1;
}

int GridPointUnderPointer(View* view, double* point) {
    if (!IntersectGrid(view, point))
        return 0;
    TransformCoordinate(point, MatrixInverse(ViewMat(view)), point);
    return 1;
}

int ClickSomewhere(View* view, double* eye, double* model, int gridAllowed) {
    const Matrix toModel = MatrixInverse(ViewMat(view));
    double eyePoint[3], modelPoint[3];
    if (IntersectPolygon(view, toModel, eyePoint, modelPoint)) {
        Trace("Hit a polygon\n");
    } else if (gridAllowed && IntersectGrid(view, eyePoint)) {
        TransformCoordinate(eyePoint, toModel, modelPoint);
        Trace("Hit the grid\n");
    } else {
        Trace("Hit nothing\n");
        return 0;
    }
    if (eye)
        std::copy_n(eyePoint, 3, eye);
    if (model)
        std::copy_n(modelPoint, 3, model);
    return 1;
}

int Calc2dOf(View* view, const double* model, double* point) {
    constexpr double nearestW = 0.0001;
    double place[4] = {model[0], model[1], model[2], 1};
    Transform4d(place, ViewMat(view), place);
    Transform4d(place, view->Projection, place);
    const double w = place[3];
    if (!(w >= nearestW))
        return 0;
    const double halfWidth = CurrentWindow->Width / 2.0, halfHeight = CurrentWindow->Height / 2.0;
    point[0] = place[0] / w * halfWidth + halfWidth;
    point[1] = place[1] / w * halfHeight + halfHeight;
    point[2] = place[2] / w;
    return 1;
}

void PixelToEye(const View* view, double depth, double& size) {
    const double scale = view->Perspective ? depth : view->Zoom == 0 ? 0 : 1 / view->Zoom;
    size = scale * UnitsAPixel(view->Projection[0][0], CurrentWindow->Width);
}
