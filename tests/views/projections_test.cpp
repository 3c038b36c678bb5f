#include "views/views_test.h"

#include "geometry/vectors.h"
#include "platform/drawing.h"
#include "platform/events.h"
#include "platform/state.h"
#include "platform/windows.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "views/default_views.h"
#include "views/grid.h"
#include "views/scene_views.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <cmath>

class Projections : public ViewsTest {};

namespace {

constexpr double TenthOfAPixel = 0.1;

void ExpectPixel(const Pixel& pixel, double x, double y) {
    EXPECT_NEAR(pixel.X, x, TenthOfAPixel);
    EXPECT_NEAR(pixel.Y, y, TenthOfAPixel);
}

struct Place {
    int Direction;
    double X, Y;
};

constexpr double KnownPoint[3] = {1.05, 2.05, 3.05};

/// Where that point appears in a window of 300 x 200 pixels for a model of radius 10, worked out by hand. A 2D view has
/// ten pixels a metre; in the 3D view the model is turned by 45 degrees, tilted by 15, and 24.7273 before the eye.
constexpr Place Places[] = {
    {0, 160.5, 120.5}, {1, 160.5, 79.5},  {2, 129.5, 130.5},        {3, 170.5, 130.5},
    {4, 160.5, 130.5}, {5, 139.5, 130.5}, {61, 142.5437, 137.0485},
};

View ViewIn(int direction) {
    View view = {};
    SetDefaultObjectView(&view, direction);
    return view;
}

} // namespace

TEST_F(Projections, ShowKnownPointsWhereTheyBelong) {
    OpenPlain(300, 200);
    SetRadius(10);
    for (const Place& place : Places) {
        SCOPED_TRACE(place.Direction);
        View view = ViewIn(place.Direction);
        SetUpView(&view, 0);
        ExpectPixel(PixelOf(1.05, 2.05, 3.05), place.X, place.Y);
        ExpectPixel(DrawnPixelOf(1.05, 2.05, 3.05), place.X, place.Y);
        ExpectPixel(PixelOf(0, 0, 0), 150, 100);

        // What is drawn there is seen there.
        gl::cpack(0);
        gl::clear();
        gl::cpack(0xFFFFFF);
        gl::bgnpoint();
        gl::v3d(KnownPoint);
        gl::endpoint();
        EXPECT_EQ(Drawn(static_cast<int>(place.X), static_cast<int>(place.Y)), 0xFFFFFFu);
    }
}

TEST_F(Projections, FollowTheShapeOfTheWindow) {
    Window* window = OpenPlain(300, 200);
    SetRadius(10);
    for (const int direction : {4, 61}) {
        SCOPED_TRACE(direction);
        gl::winposition(0, 299, 0, 199);
        UpdateWindowGeometry();
        View view = ViewIn(direction);
        SetUpView(&view, 0);
        const Pixel before = PixelOf(1, 2, 3);
        gl::winposition(0, 499, 0, 199);
        UpdateWindowGeometry();
        ASSERT_EQ(window->Width, 500);
        SetUpView(&view, 0);
        ExpectPixel(PixelOf(1, 2, 3), before.X + 100, before.Y);
        ExpectPixel(DrawnPixelOf(1, 2, 3), before.X + 100, before.Y);
    }
}

TEST_F(Projections, ZoomAndPanMoveA2dView) {
    OpenPlain(300, 200);
    SetRadius(10);
    View view = ViewIn(4);
    view.Zoom = 2;
    view.ViewMatrix[3][0] = 1;
    SetUpView(&view, 0);
    ExpectPixel(PixelOf(1, 2, 3), 150 + 40, 100 + 60);
    EXPECT_EQ(view.Size, 20);
    EXPECT_EQ(view.Far, 20);
    EXPECT_EQ(view.Near, -20);
}

TEST_F(Projections, KeepDepthsApartWhateverTheModel) {
    struct Case {
        const char* Name;
        double Radius, Distance;
        int GridIndex, GridSteps;
        double Near, Far; // 0: whatever is in order
    };

    const double root2 = std::sqrt(2.0);
    const Case cases[] = {
        {"default", 10, 24.7273, 9, 10, 24.7273 - 10 * root2, 24.7273 + 10 * root2},
        {"the eye in the middle", 10, 0, 9, 10, 10 * root2 * 0.0001, 10 * root2},
        {"the model behind the eye", 10, -100, 9, 10, 10 * root2 * 0.0001, 10 * root2},
        {"a grid that reaches further", 10, 1000, 12, 10, 1000 - 100 * root2, 1000 + 100 * root2},
        {"a grid out of all proportion", 10, 0, 23, 1000, 0, 1000 * root2},
        {"a grid index and steps that make no sense", 10, 50, 1000000, -2000000000, 0, 0},
        {"ten kilometres", 10000, 24727.3, 9, 10, 24727.3 - 10000 * root2, 24727.3 + 10000 * root2},
        {"a single point", 0, 2, 0, 0, 0, 0},
        {"a tenth of a millimetre", 0.0001, 0.0003, 0, 0, 0, 0},
        {"far away", 1e-3, 1e9, 0, 1, 0, 0},
        {"further than numbers reach", 1, 1e14, 0, 1, 0, 0},
        {"no number", std::nan(""), 2, 9, 10, 0, 0},
        {"infinite", INFINITY, 2, 9, 10, 0, 0},
    };
    OpenPlain(300, 200);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        SetRadius(10);
        View view = ViewIn(Direction3D);
        SetRadius(c.Radius);
        GridIndex() = c.GridIndex;
        GridSteps() = c.GridSteps;
        view.ViewMatrix[3][1] = c.Distance;
        SetUpView(&view, 0);
        EXPECT_GT(view.Near, 0);
        EXPECT_GE(view.Far, view.Near);
        EXPECT_TRUE(std::isfinite(view.Far) && std::isfinite(view.Size));
        if (c.Near) {
            EXPECT_NEAR(view.Near, c.Near, c.Near * 1e-5);
        }
        if (c.Far) {
            EXPECT_NEAR(view.Far, c.Far, c.Far * 1e-5);
        }
        // What lies between the planes is told apart from them.
        double depth = 0;
        LoadGLMatrix(IdentityMatrix);
        DrawnPixelOf(0, 0, -std::sqrt(static_cast<double>(view.Near) * view.Far), &depth);
        EXPECT_GT(depth, -1);
        EXPECT_LT(depth, 1);

        View flat = ViewIn(4);
        SetUpView(&flat, 0);
        EXPECT_LT(flat.Near, flat.Far);
        DrawnPixelOf(0, 0, 0, &depth);
        EXPECT_NEAR(depth, 0, 1e-6);
    }
}

TEST_F(Projections, OverlaysLieBeforeTheModel) {
    OpenPlain(300, 200);
    SetRadius(10);
    for (const Place& place : Places) {
        SCOPED_TRACE(place.Direction);
        View view = ViewIn(place.Direction);
        SetUpView(&view, 0);
        double depth = 0, overlayDepth = 0;
        const Pixel model = DrawnPixelOf(1, 2, 3, &depth);
        SetUpView(&view, 1);
        const Pixel overlay = DrawnPixelOf(1, 2, 3, &overlayDepth);
        ExpectPixel(overlay, model.X, model.Y);
        EXPECT_LT(overlayDepth, depth);
        EXPECT_GT(overlayDepth, depth - 0.1);
    }
}

TEST_F(Projections, ShowTheWorkAreaWhileItsWindowIsOpen) {
    Window* window = OpenPlain(300, 200);
    SetRadius(10);
    CurrentWorkArea() = {1, 1, {1, 2, 3}, 5, 2};
    for (const int direction : {4, 61}) {
        SCOPED_TRACE(direction);
        View view = ViewIn(direction);
        SetUpView(&view, 0);
        const Pixel before = PixelOf(1, 0, 1);
        EXPECT_EQ(WorkAreaMagnification(), 1);

        WorkAreaGizmo = window;
        SetUpView(&view, 0);
        ExpectPixel(PixelOf(1, 2, 3), 150, 100);
        ExpectPixel(DrawnPixelOf(1, 2, 3), 150, 100);
        // Five times as large: what is a fifth of (1, 0, 1) from the centre appears where that appeared.
        ExpectPixel(PixelOf(1.2, 2, 3.2), before.X, before.Y);
        ExpectPixel(DrawnPixelOf(1.2, 2, 3.2), before.X, before.Y);
        EXPECT_EQ(view.Size, direction == 4 ? 10 : 2);
        EXPECT_EQ(WorkAreaMagnification(), 5);

        // Its own window shows the model as it is.
        WorkAreaWindow = window;
        SetUpView(&view, 0);
        ExpectPixel(PixelOf(1, 0, 1), before.X, before.Y);
        WorkAreaWindow = WorkAreaGizmo = nullptr;
    }
}

TEST_F(Projections, TheCornersOfTheWorkAreaAreNotCutOff) {
    Window* window = OpenPlain(300, 200);
    SetRadius(10);
    View view = ViewIn(Direction3D);
    WorkAreaGizmo = window;
    CurrentWorkArea() = {1, 1, {100, 0, 0}, 5, 2};
    SetUpView(&view, 0);
    for (int corner = 0; corner < 8; ++corner) {
        double depth = 0;
        DrawnPixelOf(corner & 1 ? 102 : 98, corner & 2 ? 2 : -2, corner & 4 ? 2 : -2, &depth);
        EXPECT_GT(depth, -1);
        EXPECT_LT(depth, 1);
    }
}

class WorkArea : public ViewsTest {};

TEST_F(WorkArea, KnowsWhatLiesInside) {
    SetRadius(10);
    Branch branch = {};
    const float outside[3] = {1000, 0, 0};
    EXPECT_TRUE(PointInsideWorkArea(outside));
    EXPECT_TRUE(SceneObjectVisible(&branch));

    WorkAreaGizmo = OpenPlain(300, 200);
    CurrentWorkArea() = {1, 1, {10, 20, 30}, 5, 2};
    CalcWorkAreaBox(CurrentWorkArea());
    for (int axis = 0; axis < 3; ++axis) {
        for (const float offset : {-2.01f, -2.0f, 0.0f, 2.0f, 2.01f}) {
            SCOPED_TRACE(axis * 100 + offset);
            float point[3] = {10, 20, 30};
            point[axis] += offset;
            EXPECT_EQ(PointInsideWorkArea(point), std::fabs(offset) <= 2);
            // A branch of half a metre on the far side of that place.
            for (int i = 0; i < 3; ++i) {
                branch.Min[i] = point[i] - (i == axis && offset < 0 ? 0.5 : 0);
                branch.Max[i] = point[i] + (i == axis && offset > 0 ? 0.5 : 0);
            }
            EXPECT_EQ(SceneObjectVisible(&branch), std::fabs(offset) <= 2);
        }
    }
}

TEST_F(WorkArea, BelongsToTheSceneOrTheObject) {
    SetRadius(10);
    CurrentWorkArea().Centre[0] = 7;
    EXPECT_EQ(CurrentWorkArea().HalfSize, 10);
    EXPECT_EQ(CurrentWorkArea().Magnification, 1);
    ObjectIsolated = 0;
    EXPECT_EQ(CurrentWorkArea().Centre[0], 0);
    EXPECT_EQ(CurrentWorkArea().HalfSize, 1000);
    EXPECT_EQ(&CurrentWorkArea(), &SceneWorkArea);
    ObjectIsolated = 1;
    EXPECT_EQ(CurrentWorkArea().Centre[0], 7);
}
