#include "views/default_views.h"

#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "store/undo.h"
#include "views/fitting.h"
#include "views/grid.h"
#include "views/scene_views.h"
#include "views/view_transform.h"

#include <algorithm>
#include <cmath>
#include <vector>

const int DefaultViewDir[ViewportLimit] = {Direction3D, 4, 0};

namespace {

// The eye's distance in the 3D view, in radii, is this share of the one at which the sphere just fills the view.
constexpr double BoxShare = 0.9;

constexpr double DefaultPitch = 15, DefaultYaw = 45;

// Depths of a projection that stands for one not yet drawn with.
constexpr double NominalNear = 0.1, NominalFar = 10000;

/// The rotation of each direction's 2D view.
Matrix RotationOf2dView(int direction) {
    switch (direction) {
    case 0:
        return PitchMatrix(90);
    case 1:
        return PitchMatrix(-90);
    case 2:
        return YawMatrix(90);
    case 3:
        return YawMatrix(-90);
    case 5:
        return YawMatrix(180);
    default:
        return IdentityMatrix;
    }
}

Matrix PerspectiveProjection(double aspect, double near, double far) {
    const double cotangent = 1 / std::tan(FieldOfView / 20.0 * DegreesToRadians);
    return {{{cotangent / aspect, 0, 0, 0},
             {0, cotangent, 0, 0},
             {0, 0, -(far + near) / (far - near), -1},
             {0, 0, -2 * far * near / (far - near), 0}}};
}

Matrix ParallelProjection(double aspect, double size) {
    return {{{1 / (size * aspect), 0, 0, 0}, {0, 1 / size, 0, 0}, {0, 0, -1 / size, 0}, {0, 0, 0, 1}}};
}

bool AllFinite(const double* numbers, int count) {
    for (int i = 0; i < count; ++i)
        if (!std::isfinite(numbers[i]))
            return false;
    return true;
}

/// True for a matrix that places things in space: an affine one that keeps their volume from vanishing.
bool IsPlacement(const Matrix& m) {
    constexpr double tolerance = 1e-6, longest = 1e6, farthest = 1e16;
    if (!AllFinite(m[0], 16))
        return false;
    double lengths = 1, cross[3];
    for (int row = 0; row < 3; ++row) {
        const double length = LengthOfVector(m[row]);
        if (length < 1 / longest || length > longest || std::fabs(m[row][3]) > tolerance)
            return false;
        lengths *= length;
    }
    Cross(m[0], m[1], cross);
    return std::fabs(Dot(cross, m[2])) > tolerance * lengths && LengthOfVector(m[3]) < farthest &&
           std::fabs(m[3][3] - 1) <= tolerance;
}

struct Defaults {
    View& View3D;
    View* Views2D;
    ShownExtent Box;
};

Defaults SceneDefaults() {
    return {DefaultScene3D, DefaultScene2D, SceneBox()};
}

Defaults ObjectDefaults() {
    return {DefaultObject3D(), &DefaultObject2D(0), ObjectBox()};
}

/// The default when it had to be made, or else null.
View* MakeDefaultView(const Defaults& defaults, int direction) {
    View& view = direction == Direction3D ? defaults.View3D : defaults.Views2D[direction];
    if (ViewIsUsable(view))
        return nullptr;
    if (direction == Direction3D)
        MakeDefault3dView(&view, defaults.Box.Radius);
    else
        MakeDefault2dView(&view, defaults.Box.Radius, direction);
    return &view;
}

void LookCloserIfNeeded(View* made, const Defaults& defaults) {
    if (made && BoxIsLostFromAfar(defaults.Box))
        FitViewToBox(made, defaults.Box);
}

void MakeDefaultViews(const Defaults& defaults, std::int32_t& gridIndex, std::int32_t& gridSteps) {
    std::vector<View*> made = {MakeDefaultView(defaults, Direction3D)};
    for (int direction = 0; direction < DefaultView2DCount; ++direction)
        made.push_back(MakeDefaultView(defaults, direction));
    // The grid has a say in how near a view may come.
    if (std::any_of(made.begin(), made.end(), [](const View* view) { return view != nullptr; }))
        FitGrid(defaults.Box.Radius, gridIndex, gridSteps);
    for (View* view : made)
        LookCloserIfNeeded(view, defaults);
}

void SetDefaultView(const Defaults& defaults, View* view, int direction) {
    if (direction != Direction3D && (direction < 0 || direction >= DefaultView2DCount))
        return;
    LookCloserIfNeeded(MakeDefaultView(defaults, direction), defaults);
    CopyView(*view, direction == Direction3D ? defaults.View3D : defaults.Views2D[direction]);
}

/// A boxed view of the given kind, before it is turned.
void StartView(View* view, int perspective, double radius) {
    view->Perspective = perspective;
    view->HasCentre = 0;
    view->Zoom = 1;
    view->ViewMatrix = IdentityMatrix;
    BoxView(view, radius);
}

} // namespace

void MakeDefault3dView(View* view, double radius) {
    StartView(view, 1, radius);
    MultMatrix(PitchMatrix(DefaultPitch), view->ViewMatrix, view->ViewMatrix);
    MultMatrix(YawMatrix(DefaultYaw), view->ViewMatrix, view->ViewMatrix);
    SetGridAxis(view, 'y');
    view->Valid = 1;
}

void MakeDefault2dView(View* view, double radius, int direction) {
    view->Direction = direction;
    StartView(view, 0, radius);
    MultMatrix(RotationOf2dView(direction), view->ViewMatrix, view->ViewMatrix);
    SetGridAxis(view, 'y');
    view->Valid = 1;
}

void BoxView(View* view, double radius) {
    radius = UsableRadius(radius);
    SussViewProjection(view, radius);
    double* translation = view->ViewMatrix[3];
    translation[0] = translation[1] = translation[2] = 0;
    if (view->Perspective)
        translation[1] = BoxDistance(*view, radius);
    else
        view->Zoom = 1;
}

double BoxDistance(const View& view, double radius) {
    return BoxShare * view.Projection[1][1] * radius;
}

void SussViewProjection(View* view, double size) {
    view->Projection = view->Perspective ? PerspectiveProjection(WindowAspect(), NominalNear, NominalFar)
                                         : ParallelProjection(WindowAspect(), UsableRadius(size));
    view->Stale = 0;
}

void MakeDefaultSceneViews() {
    MakeDefaultViews(SceneDefaults(), SceneGridIndex, SceneGridSteps);
}

void MakeDefaultObjectViews() {
    MakeDefaultViews(ObjectDefaults(), GridIndex(), GridSteps());
}

void SetDefaultSceneView(View* view, int direction) {
    SetDefaultView(SceneDefaults(), view, direction);
}

void SetDefaultObjectView(View* view, int direction) {
    SetDefaultView(ObjectDefaults(), view, direction);
}

int ViewIsUsable(const View& view) {
    const bool directionExists = view.Perspective || (view.Direction >= 0 && view.Direction < DefaultView2DCount);
    return view.Valid && directionExists && IsPlacement(view.ViewMatrix);
}

void RepairView(View* view) {
    constexpr double largestZoom = 1e12;
    if (!IsPlacement(view->GridMatrix))
        SetGridAxis(view, 'y');
    if (!(view->Zoom >= 1 / largestZoom && view->Zoom <= largestZoom))
        view->Zoom = 1;
    if (view->HasCentre && !AllFinite(view->Centre, 3))
        view->HasCentre = 0;
}

void RememberView(const View* view) {
    if (view->Perspective)
        CopyView(ObjectIsolated ? DefaultObject3D() : DefaultScene3D, *view);
    else if (view->Direction >= 0 && view->Direction < DefaultView2DCount)
        CopyView(ObjectIsolated ? DefaultObject2D(view->Direction) : DefaultScene2D[view->Direction], *view);
}
