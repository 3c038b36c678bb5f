#include "interaction/select_region.h"

#include "gooey/window.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double RelativeMargin = 1e-6;
/// Nearer than this to the eye, nothing is selected exactly where it appears.
constexpr double NearestDepth = 1e-4;

} // namespace

SelectRegion::SelectRegion(const ShownObject& shown, const Matrix& projection, const PixelRectangle& rectangle) {
    const double halfWidth = CurrentWindow->Width / 2.0, halfHeight = CurrentWindow->Height / 2.0;
    // sign * (pixel coordinate - limit) * W, as a plane in eye space
    const auto addLimit = [&](int axis, double half, double sign, double limit) {
        double plane[4];
        for (int i = 0; i < 4; ++i)
            plane[i] = sign * (projection[i][axis] * half + (half - limit) * projection[i][3]);
        AddSide(shown.ToEye, plane);
    };
    addLimit(0, halfWidth, 1, rectangle.Left);
    addLimit(0, halfWidth, -1, rectangle.Right);
    addLimit(1, halfHeight, 1, rectangle.Bottom);
    addLimit(1, halfHeight, -1, rectangle.Top);
    if (shown.View->Perspective) {
        constexpr double before[4] = {0, 0, -1, 0};
        AddSide(shown.ToEye, before);
        Sides[SideCount - 1].Margin[3] += NearestDepth;
    }
}

void SelectRegion::AddSide(const Matrix& toEye, const double* eyePlane) {
    Side& side = Sides[SideCount++];
    for (int row = 0; row < 4; ++row) {
        side.Plane[row] = side.Margin[row] = 0;
        for (int column = 0; column < 4; ++column) {
            const double term = toEye[row][column] * eyePlane[column];
            side.Plane[row] += term;
            side.Margin[row] += std::fabs(term) * RelativeMargin;
        }
    }
}

SelectRegion::Overlap SelectRegion::Test(const SelectBox& box) const {
    Overlap overlap = Inside;
    for (int i = 0; i < SideCount; ++i) {
        const Side& side = Sides[i];
        double nearest = side.Plane[3], farthest = side.Plane[3], margin = side.Margin[3];
        for (int axis = 0; axis < 3; ++axis) {
            const double low = side.Plane[axis] * box.Min[axis], high = side.Plane[axis] * box.Max[axis];
            nearest += std::min(low, high);
            farthest += std::max(low, high);
            margin += side.Margin[axis] * std::max(std::fabs(box.Min[axis]), std::fabs(box.Max[axis]));
        }
        if (farthest < -margin)
            return Outside;
        // Written so that what is not a number counts as neither out nor in.
        if (!(nearest > margin))
            overlap = Partly;
    }
    return overlap;
}
