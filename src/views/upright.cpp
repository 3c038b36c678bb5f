#include "views/upright.h"

#include "geometry/vectors.h"
#include "store/storage.h"
#include "views/default_views.h"
#include "views/shown_extent.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double Degrees = std::numbers::pi / 180;
constexpr double SteepestPitch = 60 * Degrees, DefaultLook = 15 * Degrees;
/// Below this share of its length a direction has no heading of its own.
constexpr double LeastHeading = 1e-6;

void ColumnOf(const Matrix& m, int column, double* out) {
    for (int row = 0; row < 3; ++row)
        out[row] = m[row][column];
}

/// Where the view looks along the ground: straight up or down, where the upper or lower edge of its picture points.
double HeadingOf(const Matrix& m) {
    double forward[3], up[3];
    ColumnOf(m, 1, forward);
    ColumnOf(m, 2, up);
    if (std::hypot(forward[0], forward[1]) > LeastHeading * LengthOfVector(forward))
        return std::atan2(forward[1], forward[0]);
    const double side = forward[2] > 0 ? -1 : 1;
    return std::atan2(side * up[1], side * up[0]);
}

double PitchOf(const Matrix& m) {
    double forward[3];
    ColumnOf(m, 1, forward);
    const double pitch = std::atan2(forward[2], std::hypot(forward[0], forward[1]));
    return std::abs(pitch) <= SteepestPitch ? pitch : std::copysign(DefaultLook, pitch);
}

/// The point that stays where it is, model space; false when that is the eye.
bool FindPivot(const View& view, double* pivot) {
    if (view.HasCentre) {
        std::copy_n(view.Centre, 3, pivot);
        return true;
    }
    const ExtentSphere shown = SphereAround(ObjectIsolated ? ObjectBox() : SceneBox());
    std::copy_n(shown.Centre, 3, pivot);
    double eye[3];
    TransformPoint(pivot, view.ViewMatrix, eye);
    return eye[1] > 0;
}

} // namespace

void MakeViewUpright(View* view) {
    Matrix& m = view->ViewMatrix;
    const double heading = HeadingOf(m), pitch = PitchOf(m);
    double eye[3] = {0, 0, 0}, pivot[3];
    if (FindPivot(*view, pivot))
        TransformPoint(pivot, m, eye);
    else
        TransformPoint(eye, MatrixInverse(m), pivot);
    const double right[3] = {std::sin(heading), -std::cos(heading), 0};
    const double forward[3] = {std::cos(heading) * std::cos(pitch), std::sin(heading) * std::cos(pitch),
                               std::sin(pitch)};
    double up[3];
    Cross(right, forward, up);
    for (int row = 0; row < 3; ++row) {
        m[row][0] = right[row];
        m[row][1] = forward[row];
        m[row][2] = up[row];
    }
    m[3][0] = eye[0] - Dot(pivot, right);
    m[3][1] = eye[1] - Dot(pivot, forward);
    m[3][2] = eye[2] - Dot(pivot, up);
}
