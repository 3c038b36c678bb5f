#include "views/views_test.h"

#include "gooey/window.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "views/default_views.h"
#include "views/grid.h"
#include "views/scene_views.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <cmath>
#include <limits>

class Grid : public ViewsTest {};

TEST_F(Grid, SquaresAreASeriesWithEnds) {
    double expected = 0.001;
    for (int index = 0; index < GridSquareCount; ++index) {
        EXPECT_NEAR(GridSquare(index), expected, expected * 1e-12);
        expected *= index % 3 == 1 ? 2.5 : 2;
    }
    EXPECT_EQ(GridSquare(-5), 0.001);
    EXPECT_EQ(GridSquare(std::numeric_limits<int>::max()), 50000);
    EXPECT_EQ(GridExtent(9, 0), 1);
    EXPECT_EQ(GridExtent(9, -3), 1);
    EXPECT_EQ(GridExtent(9, 2000000000), 1000);

    GridIndex() = 10;
    SceneGridIndex = 12;
    EXPECT_EQ(OneGridSquare(), 2);
    ObjectIsolated = 0;
    EXPECT_EQ(OneGridSquare(), 10);
}

TEST_F(Grid, FitsModelsOfAnySize) {
    struct Case {
        double Radius;
        int Index, Steps;
    };

    const Case cases[] = {
        {10, 9, 10},
        {7, 9, 7},
        {0, 0, 0},
        {0.0005, 0, 0},
        {0.0123, 0, 12},
        {20, 10, 10},
        {1e6, 23, 20},
        {-4, 0, 0},
        {std::nan(""), 0, 0},
        {1e300, 0, std::numeric_limits<std::int32_t>::max()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Radius);
        std::int32_t index = -1, steps = -1;
        FitGrid(c.Radius, index, steps);
        EXPECT_EQ(index, c.Index);
        EXPECT_EQ(steps, c.Steps);
    }
}

TEST_F(Grid, LiesInItsPlane) {
    OpenPlain(300, 200);
    // A 2D view's grid faces the eye: its normal points at it.
    for (int direction = 0; direction < DefaultView2DCount; ++direction) {
        SCOPED_TRACE(direction);
        View view = {};
        SetDefaultObjectView(&view, direction);
        SetUpView(&view, 0);
        const Matrix& toEye = GridMat(&view);
        const double expected[4][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}};
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 3; ++column)
                EXPECT_NEAR(toEye[row][column], expected[row][column], 1e-12);
        // A view that was panned keeps a grid without perspective.
        view.ViewMatrix[3][0] = 5;
        SetGridAxis(&view, 'y');
        EXPECT_TRUE(ViewIsUsable(view));
    }

    struct Plane {
        int Axis, Direction, Normal;
    };

    View view = {};
    SetDefaultObjectView(&view, Direction3D);
    for (const Plane& plane : {Plane{'x', 2, 0}, Plane{'y', 0, 2}, Plane{'z', 4, 1}}) {
        SetGridAxis(&view, plane.Axis);
        EXPECT_EQ(view.Direction, plane.Direction);
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(std::fabs(view.GridMatrix[2][axis]), axis == plane.Normal, 1e-12);
        EXPECT_EQ(view.GridMatrix[3][0], 0);
    }

    // In the work area it lies in the middle, on whole squares.
    WorkAreaGizmo = CurrentWindow;
    GridIndex() = 9;
    CurrentWorkArea() = {1, 1, {10.4, -3.6, 0.2}, 5, 2};
    SetGridAxis(&view, 'x');
    EXPECT_EQ(view.GridMatrix[3][0], 10);
    EXPECT_EQ(view.GridMatrix[3][1], -4);
    EXPECT_EQ(view.GridMatrix[3][2], 0);
}

TEST_F(Grid, IsDrawnWithBrightLinesAtRoundLengths) {
    OpenPlain(301, 301);
    SetRadius(15);
    // Grid lines along a row of pixels between two horizontal lines, ten pixels a metre: "Y" yellow, "W" white, "g"
    // grey; a centre line is two pixels wide.
    const auto drawnLines = [](int direction, int index, int steps, double metresAPixel) {
        View view = {};
        SetDefaultObjectView(&view, direction);
        SetUpView(&view, 0);
        gl::cpack(0);
        gl::clear();
        DrawGrid(&view, steps, index);
        std::string lines;
        const double square = GridSquare(index) / metresAPixel;
        for (int i = 0; i <= steps + 1; ++i) {
            std::string at = ".";
            for (int offset = -1; offset <= 1; ++offset) {
                const std::uint32_t colour =
                    Drawn(static_cast<int>(150.5 + i * square) + offset, static_cast<int>(150.5 + square / 2));
                if (colour)
                    at = colour == 0xFFFFFF ? "W" : colour == 0x00FFFF ? "Y" : colour == 0x808080 ? "g" : "?";
            }
            lines += at;
        }
        return lines;
    };
    EXPECT_EQ(drawnLines(4, 9, 12, 0.1), "WgggggggggWgg.");
    EXPECT_EQ(drawnLines(4, 10, 6, 0.1), "WggggWg.");
    EXPECT_EQ(drawnLines(4, 8, 5, 0.1), "WgWgWg.");
    EXPECT_EQ(drawnLines(4, 9, 0, 0.1), "Wg");
    // The window that controls the grid marks the axis of 3D views only.
    GridGizmo = CurrentWindow;
    EXPECT_EQ(drawnLines(4, 9, 2, 0.1), "Wgg.");
    HidingVertices = 1;
    EXPECT_EQ(drawnLines(4, 9, 2, 0.1), "W.g.");
}

TEST_F(Grid, Of3dViewsShowsItsAxisAndHidesForAlignment) {
    OpenPlain(301, 301);
    SetRadius(15);
    View view = {};
    SetDefaultObjectView(&view, Direction3D);
    SetUpView(&view, 0);
    const auto yellowPixels = [&] {
        gl::cpack(0);
        gl::clear();
        DrawGrid(&view, 10, 9);
        int count = 0;
        for (int y = 0; y < 301; ++y)
            for (int x = 0; x < 301; ++x)
                count += Drawn(x, y) == 0x00FFFF;
        return count;
    };
    EXPECT_EQ(yellowPixels(), 0);
    GridGizmo = CurrentWindow;
    EXPECT_GT(yellowPixels(), 20);
    AligningToVertices = 1;
    EXPECT_EQ(yellowPixels(), 0);
    EXPECT_EQ(Drawn(150, 150), 0u);
}
