#include "views/view_transform.h"

#include "gooey/window.h"
#include "platform/matrices.h"
#include "store/accessors.h"
#include "store/scene_extent.h"
#include "store/storage.h"
#include "views/default_views.h"
#include "views/grid.h"
#include "views/work_area.h"

#include <algorithm>
#include <cmath>

const Matrix p90 = {{{1, 0, 0, 0}, {0, 0, -1, 0}, {0, 1, 0, 0}, {0, 0, 0, 1}}};
const Matrixf p90f = {{{1, 0, 0, 0}, {0, 0, -1, 0}, {0, 1, 0, 0}, {0, 0, 0, 1}}};

Matrixf CurrentViewTransform = FloatIDMatrix, CurrentProjection = FloatIDMatrix;

namespace {

// Overlays are drawn nearer to the eye by this share of their distance (3D) or of the radius (2D).
constexpr double OverlayShare = 0.01;

constexpr double NearestShare = 0.0001;

/// Distances of the near and far plane of a 3D view, for content within `reach` of the point `distance` before the eye.
struct DepthRange {
    double Near, Far;
};

DepthRange DepthRangeFor(double distance, double reach) {
    const double near = std::max(distance - reach, reach * NearestShare);
    // From far enough away the content is too thin for the precision of numbers.
    const double far = std::max({distance + reach, reach, near * (1 + 1e-6)});
    return {near, far};
}

/// How far from its centre a 3D view shows things: the model, or the grid where that reaches further, within reason.
double ReachOf3dView(double radius) {
    const double magnification = WorkAreaMagnification();
    // A magnified work area fills its cube, whose corners lie further out than a model's sphere.
    const double corner = magnification > 1 ? std::sqrt(3.0) : std::sqrt(2.0);
    const double model = WorkAreaReach(radius) * corner;
    const double grid = GridExtent(ShownGridIndex(), ShownGridSteps()) * std::sqrt(2.0) * magnification;
    return std::max(model, std::min(grid, 100 * model * magnification));
}

/// Small content far from the origin would be cut away where it could be seen; it may come as near as if it were
/// alone.
constexpr double NearestShareOfContent = 0.01;

double NearForContent(const View* view, double near) {
    if (WorkAreaGizmo)
        return near; // the cube is the content, and lies about the middle
    const ShownExtent extent = ObjectIsolated ? ObjectBox() : SceneBox();
    if (!BoxIsLostFromAfar(extent))
        return near;
    const ExtentSphere sphere = SphereAround(extent);
    double centre[3];
    TransformCoordinate(sphere.Centre, view->ViewMatrix, centre);
    return std::min(near, std::max(centre[1] - sphere.Radius, sphere.Radius * NearestShareOfContent));
}

void LoadPerspective(View* view, double radius) {
    DepthRange range = DepthRangeFor(view->ViewMatrix[3][1], ReachOf3dView(radius));
    range.Near = NearForContent(view, range.Near);
    view->Size = static_cast<float>(radius / WorkAreaMagnification());
    view->Near = static_cast<float>(range.Near);
    view->Far = static_cast<float>(range.Far);
    gl::perspective(FieldOfView, WindowAspect(), range.Near, range.Far);
}

void LoadParallel(View* view, double radius) {
    const double width = 1 / view->Projection[0][0], height = 1 / view->Projection[1][1];
    const double depth = UsableRadius(WorkAreaReach(radius) * view->Zoom);
    view->Size = static_cast<float>(UsableRadius(radius * view->Zoom));
    view->Far = static_cast<float>(depth);
    view->Near = -view->Far;
    gl::ortho(-width, width, -height, height, -depth, depth);
}

/// For a 2D view that shows as much as before, however the radius has changed since its projection was computed.
void RenewProjection(View* view, double radius) {
    // Files keep floats.
    constexpr double rounding = 1e-6, least = 1e-9;
    const double share = view->Projection[1][1] * radius;
    SussViewProjection(view, radius);
    if (!view->Perspective && std::fabs(share - 1) > rounding && share > least && share < 1 / least)
        view->Zoom *= share;
}

/// The projection fits the window that is drawn in, whatever happened to its shape since it was computed.
void FitProjectionToWindow(View* view, double radius) {
    const double vertical = view->Projection[1][1];
    if (view->Stale || !std::isfinite(vertical) || vertical <= 0)
        RenewProjection(view, radius);
    else
        view->Projection[0][0] = vertical / WindowAspect();
}

void LoadProjection(const Matrix& projection) {
    gl::mmode(gl::MPROJECTION);
    LoadGLMatrix(projection);
    gl::mmode(gl::MVIEWING);
}

} // namespace

void SetUpView(View* view, int overlay) {
    const double radius = ShownRadius();
    if (!overlay)
        FitProjectionToWindow(view, radius);
    gl::loadmatrix(p90f.Element);
    if (!view->Perspective)
        gl::scale(view->Zoom, view->Zoom, view->Zoom);
    if (overlay) {
        if (view->Perspective)
            gl::scale(1 - OverlayShare, 1 - OverlayShare, 1 - OverlayShare);
        else
            gl::translate(0, -OverlayShare * radius, 0);
    }
    MultGLMatrix(view->ViewMatrix);
    if (overlay) {
        SetWorkArea(nullptr, 1);
        return;
    }
    MultMatrix(view->ViewMatrix, p90, view->Transform);
    if (!view->Perspective)
        MultMatrix(view->Transform, ScaleMatrix(view->Zoom, view->Zoom, view->Zoom), view->Transform);
    if (view->Perspective)
        LoadPerspective(view, radius);
    else
        LoadParallel(view, radius);
    SetWorkArea(&view->Transform, 1);
    RealMatrixToFloat(view->Transform, CurrentViewTransform);
    RealMatrixToFloat(view->Projection, CurrentProjection);
}

Matrix& ViewMat(View* view) {
    return view->Transform;
}

Matrix& GridMat(View* view) {
    static Matrix transform;
    MultMatrix(view->GridMatrix, view->Transform, transform);
    return transform;
}

void LoadGLMatrix(const Matrix& matrix) {
    gl::loadmatrix(matrix.Element);
}

void MultGLMatrix(const Matrix& matrix) {
    gl::multmatrix(matrix.Element);
}

void GetGLMatrix(Matrix& matrix) {
    gl::getmatrix(matrix.Element);
}

Matrix LoadedProjection() {
    Matrix projection;
    gl::mmode(gl::MPROJECTION);
    GetGLMatrix(projection);
    gl::mmode(gl::MVIEWING);
    return projection;
}

ProjectionScope::ProjectionScope(const Matrix& projection) : Former(LoadedProjection()) {
    LoadProjection(projection);
}

ProjectionScope::~ProjectionScope() {
    LoadProjection(Former);
}

double WindowAspect() {
    if (!CurrentWindow || CurrentWindow->Width < 1 || CurrentWindow->Height < 1)
        return 1;
    return static_cast<double>(CurrentWindow->Width) / CurrentWindow->Height;
}

double UsableRadius(double radius) {
    // Squares of these stay within single precision.
    constexpr double least = 1e-12, most = 1e15;
    if (!(radius > 0))
        return 1;
    return std::clamp(radius, least, most);
}

double LeastDepth(const ShownExtent& extent) {
    const double depth = ReachOf3dView(UsableRadius(extent.Radius)) * NearestShare;
    return BoxIsLostFromAfar(extent) ? std::min(depth, SphereAround(extent).Radius * NearestShareOfContent) : depth;
}

double ShownRadius() {
    return UsableRadius(ObjectIsolated ? ObjectRadius() : SceneRadius());
}
