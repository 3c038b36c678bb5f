#include "interaction/grid_gizmo.h"

#include "interaction/views_test.h"

#include "geometry/vectors.h"
#include "gooey/tool_window.h"
#include "interaction/grid_placement.h"
#include "interaction/grid_tools.h"
#include "interaction/position_gizmo.h"

#include <cmath>

namespace {

class GridGizmos : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        GridGizmoOpened = 0;
        Show(Direction3D);
    }

    static void ExpectOrthonormal(const Matrix& grid) {
        for (int a = 0; a < 3; ++a)
            for (int b = 0; b < 3; ++b)
                EXPECT_NEAR(DotProduct(&grid[a][0], &grid[b][0]), a == b ? 1 : 0, 1e-12) << a << " " << b;
        double third[3];
        Cross(&grid[0][0], &grid[1][0], third);
        EXPECT_NEAR(DotProduct(third, &grid[2][0]), 1, 1e-12);
    }
};

TEST_F(GridGizmos, PointsInALineMakeNoPlaneHoweverTheyWereRounded) {
    const double lines[][3][3] = {
        {{0.1, 0.1, 0.1}, {0.2, 0.2, 0.2}, {0.30000000000000004, 0.3, 0.3}},
        {{1e6, 0, 0}, {1e6 + 0.1, 0.1, 0}, {1e6 + 0.3, 0.3, 0}},
        {{1, 2, 3}, {4, 5, 6}, {1, 2, 3}},
    };
    for (const auto& line : lines) {
        const Matrix before = Shown().GridMatrix;
        EXPECT_FALSE(AlignGridToPoints(&Shown(), line));
        EXPECT_TRUE(Shown().GridMatrix == before);
    }
    // Thin, but a plane.
    const double thin[3][3] = {{0, 0, 0}, {1000, 0, 0}, {500, 0, 0.01}};
    EXPECT_TRUE(AlignGridToPoints(&Shown(), thin));
    ExpectOrthonormal(Shown().GridMatrix);
    EXPECT_NEAR(std::fabs(Shown().GridMatrix[2][1]), 1, 1e-12);
}

TEST_F(GridGizmos, LiesOnPolygonsWhoseFirstCornersCoincide) {
    Vertex* const corners[] = {AddVertex(1, 1, 1), AddVertex(1, 1, 1), AddVertex(3, 1, 2), AddVertex(1, 4, 1)};
    PolygonBead* beads = nullptr;
    for (Vertex* corner : corners)
        AddPolygonBead(beads, corner);
    Polygon* const polygon = AddPolygon(beads, nullptr);
    const float length = std::sqrt(5.0F);
    const float normal[3] = {-1 / length, 0, 2 / length};
    std::copy_n(normal, 3, polygon->Normal);
    ASSERT_TRUE(AlignGridToPolygon(&Shown(), polygon));
    const Matrix& grid = Shown().GridMatrix;
    ExpectOrthonormal(grid);
    EXPECT_NEAR(grid[1][0], 2 / std::sqrt(5.0), 1e-6);
    EXPECT_NEAR(grid[2][2], 2 / std::sqrt(5.0), 1e-6);
    EXPECT_EQ(grid[3][0] + grid[3][1] + grid[3][2], 3);

    // The plane of the 3D view and the work area's magnification do not matter to a move onto a vertex.
    const double place[3] = {5, 6, 7};
    MoveGridPlaneTo(&Shown(), place);
    double offset[3];
    for (int axis = 0; axis < 3; ++axis)
        offset[axis] = place[axis] - grid[3][axis];
    EXPECT_NEAR(DotProduct(offset, &grid[2][0]), 0, 1e-12);
}

TEST_F(GridGizmos, HasACompactFormThatKeepsItsPlaceUntilTheToolEnds) {
    OpenGridGizmo();
    Settle();
    const int x = GridGizmo->X, top = GridGizmo->Y + GridGizmo->Height;
    DisableGridGizmo();
    Settle();
    EXPECT_EQ(GridGizmo->Width, 440);
    EXPECT_EQ(GridGizmo->Height, 75);
    EXPECT_EQ(GridGizmo->X, x);
    EXPECT_EQ(GridGizmo->Y + GridGizmo->Height, top);
    // Sizes are still set there.
    const int index = ShownGridIndex();
    Play("in \"Grid control\"\nbutton \"+\" 1");
    EXPECT_EQ(ShownGridIndex(), index + 1);
    CloseToolWindow(GridWindow);
    Settle();
    OpenGridGizmo();
    Settle();
    EXPECT_EQ(GridGizmo->Height, 75);
    ClearControl();
    Settle();
    EXPECT_EQ(GridGizmo->Width, 582);
    EXPECT_EQ(GridGizmo->Height, 148);
    EXPECT_EQ(GridGizmo->Y + GridGizmo->Height, top);
}

TEST_F(GridGizmos, SizesKeepToTheirLimits) {
    OpenGridGizmo();

    const struct {
        int Index, Steps;
        const char* Button;
        int NewIndex, NewSteps;
    } rows[] = {
        {23, 10, "\"+\" 1", 23, 10},
        {0, 10, "\"-\" 1", 0, 10},
        {9, 6, "\"-\" 2", 9, 5},
        {9, 5, "\"-\" 2", 9, 5},
        {9, 3, "\"-\" 2", 9, 3},
        {9, 600, "\"+\" 2", 9, 1000},
        {9, 1000, "\"+\" 2", 9, 1000},
        {9, 0, "\"+\" 2", 9, 2},
        {9, 101, "\"-\" 2", 9, 50},
        {2147483647, 2147483647, "\"+\" 2", 23, 1000},
        {-2147483647 - 1, -7, "\"-\" 1", 0, 1},
    };

    for (const auto& row : rows) {
        ShownGridIndex() = row.Index;
        ShownGridSteps() = row.Steps;
        DirtyWindow(GridGizmo);
        Settle();
        Play(std::string("in \"Grid control\"\nbutton ") + row.Button);
        EXPECT_EQ(ShownGridIndex(), row.NewIndex) << row.Index << " " << row.Steps << row.Button;
        EXPECT_EQ(ShownGridSteps(), row.NewSteps) << row.Index << " " << row.Steps << row.Button;
    }
}

int Applied;

TEST_F(GridGizmos, HasWhatIsPositionedPlacedAnew) {
    AddVertex(1, 2, 3);
    OpenGridGizmo();
    OpenOffsetGizmo([](const Matrix&, int) { ++Applied; }, [] {}, [] {},
                    [](double* point) { std::fill_n(point, 3, 0); }, nullptr, PositionVerticesTitle);
    Settle();
    Applied = 0;
    Play("in \"Grid control\"\nbutton \"+\" 1");
    EXPECT_EQ(Applied, 1);
    // A tool of the grid above the gizmo, and the end of both.
    Play("in \"Grid control\"\nplace 10 10\nbutton \"Vertices\"");
    EXPECT_TRUE(GridToolRuns());
    InView("move 20 400\nkey Space");
    EXPECT_TRUE(GridToolRuns() && PositionGizmoIsOpen());
    CloseOffsetGizmo(1);
    InView("move 20 400\nkey Escape");
    EXPECT_FALSE(GridToolRuns() || SystemBusy());
}

} // namespace
