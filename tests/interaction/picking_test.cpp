#include "interaction/picking.h"
#include "interaction/selection_test.h"
#include "views/default_views.h"
#include "views/fitting.h"
#include "views/grid.h"
#include "views/scene_views.h"

#include <cmath>

namespace {

/// A tenth of a pixel at ten pixels a metre.
constexpr double TenthOfPixel = 0.01;

class PickingTest : public SelectionTest {
  protected:
    void SetUp() override {
        SelectionTest::SetUp();
        GridSnap = 0;
    }

    void TearDown() override {
        GridSnap = 0;
        SelectionTest::TearDown();
    }

    /// The pointer whose hot spot is at a pixel.
    static void PointAt(int x, int y) {
        MouseX = x + 2;
        MouseY = y - 2;
    }

    static void ExpectNear(const double* point, const std::vector<double>& expected, double tolerance = TenthOfPixel) {
        for (std::size_t axis = 0; axis < expected.size(); ++axis)
            EXPECT_NEAR(point[axis], expected[axis], tolerance) << "axis " << axis;
    }

    /// A model large enough for the grid that it brings, in the views' pixels.
    static void MakeModel() {
        AddVertex(10, 0, 0);
        MakeGrid();
    }

    static void MakeGrid() {
        GridIndex() = 9; // 1 metre
        GridSteps() = 12;
    }

    /// The view as it is after drawing.
    static View Drawn(View view) {
        SetUpView(&view, 0);
        return view;
    }
};

TEST_F(PickingTest, EyeLinesGoThroughThePointersHotSpot) {
    MakeModel();
    const View flat = Drawn(FrontView()), deep = Drawn(EyeView(0, -10, 0));

    const struct {
        int X, Y;
        double EyeX, EyeY; // in the 2D view
    } cases[] = {{200, 150, 0, 0}, {240, 150, 4, 0}, {200, 120, 0, -3}, {1, 299, -19.9, 14.9}};

    for (const auto& row : cases) {
        PointAt(row.X, row.Y);
        double line[6];
        CalcEyeLine(&flat, line);
        ExpectNear(line, {row.EyeX, row.EyeY, 1, 0, 0, -1});
        CalcEyeLine(&deep, line);
        const double slope = 10 / FocalLength;
        ExpectNear(line, {0, 0, 0, row.EyeX * slope, row.EyeY * slope, -1}, TenthOfPixel * slope);
    }
}

TEST_F(PickingTest, ModelPointsAppearWhereTheyAreDrawn) {
    MakeModel();
    View flat = Drawn(FrontView()), deep = Drawn(EyeView(0, -10, 0));
    View magnified = FrontView();
    magnified.Zoom = 2;
    magnified = Drawn(magnified);

    const struct {
        View* Shown;
        std::vector<double> Model, Pixel;
    } cases[] = {
        {&flat, {3, 100, -2}, {230, 130}},
        {&magnified, {3, 0, -2}, {260, 110}},
        {&deep, {1, 0, 0}, {200 + FocalLength / 10, 150}},
        {&deep, {0.3, -9, -0.2}, {200 + FocalLength * 0.3, 150 - FocalLength * 0.2}},
        {&deep, {0, -9.9998, 0.00001}, {200, 150 + FocalLength / 20}},
    };

    for (const auto& row : cases) {
        double pixel[3];
        ASSERT_EQ(Calc2dOf(row.Shown, row.Model.data(), pixel), 1);
        ExpectNear(pixel, row.Pixel, 0.1);
    }
    double untouched[3] = {1, 2, 3};
    const double atEye[3] = {0, -10, 0}, behind[3] = {0, -11, 0}, tooNear[3] = {0, -9.99995, 0};
    for (const double* point : {atEye, behind, tooNear})
        EXPECT_EQ(Calc2dOf(&deep, point, untouched), 0);
    EXPECT_EQ(untouched[0], 1);

    double size;
    PixelToEye(&flat, 7, size);
    EXPECT_DOUBLE_EQ(size, 0.1);
    PixelToEye(&magnified, 7, size);
    EXPECT_DOUBLE_EQ(size, 0.05);
    PixelToEye(&deep, 7, size);
    EXPECT_DOUBLE_EQ(size, 7 / FocalLength);
}

TEST_F(PickingTest, TheGridIsMetSnappedAndNeverLeft) {
    MakeModel();
    const double square = OneGridSquare(), edge = 3 * square * GridSteps();
    View flat = FrontView();           // whose grid matrix is the identity: the grid lies in the model's ground plane
    flat.ViewMatrix = PitchMatrix(90); // from the top
    flat = Drawn(flat);
    double point[3];
    PointAt(233, 121);
    ASSERT_EQ(IntersectGrid(&flat, point), 1);
    ExpectNear(point, {3.3, -2.9});
    GridSnap = 1;
    ASSERT_EQ(IntersectGrid(&flat, point), 1);
    const double step = square / 4;
    ExpectNear(point, {std::round(3.3 / step) * step, -std::round(2.9 / step) * step}, 1e-9);
    GridSnap = 0;

    View far = FrontView();
    far.ViewMatrix = PitchMatrix(90);
    far.Zoom = 0.01;
    far = Drawn(far);
    PointAt(399, 0);
    ASSERT_EQ(IntersectGrid(&far, point), 1);
    ExpectNear(point, {edge * 0.01, -edge * 0.01}, 1e-9);

    const int wholeGrid = GridSteps();
    for (const int steps : {0, -5}) {
        GridSteps() = steps;
        ASSERT_EQ(IntersectGrid(&far, point), 1);
        ExpectNear(point, {3 * square * 0.01, -3 * square * 0.01}, 1e-9);
    }
    GridSteps() = wholeGrid;

    // Edge on there is no grid; behind the eye only a 2D view has it.
    View edgeOn = Drawn(FrontView());
    EXPECT_EQ(IntersectGrid(&edgeOn, point), 0);
    View behind = FrontView();
    MultMatrix(PitchMatrix(90), TranslationMatrix(0, -50, 0), behind.ViewMatrix);
    behind = Drawn(behind);
    PointAt(200, 150);
    EXPECT_EQ(IntersectGrid(&behind, point), 1);
    View above = Drawn(EyeView(0, 0, 5));
    PointAt(200, 250);
    EXPECT_EQ(IntersectGrid(&above, point), 0) << "above the horizon";
    PointAt(200, 80);
    ASSERT_EQ(IntersectGrid(&above, point), 1);
    ExpectNear(point, {0, -5, -5 * FocalLength / 70});
}

// Where a box lies must not matter to drawing on the grid in a view that was fitted to it, nor bring the points off
// the grid's plane.
TEST_F(PickingTest, GridsOfFittedFlatViewsAreMetFromEverySide) {
    constexpr int depthAxes[DefaultView2DCount] = {2, 2, 0, 0, 1, 1};
    for (int direction = 0; direction < DefaultView2DCount; ++direction)
        for (const double offset : {-10.0, 10.0}) {
            SCOPED_TRACE(testing::Message() << "direction " << direction << " offset " << offset);
            AddObject("Box", 0, 0);
            double centre[3] = {};
            centre[depthAxes[direction]] = offset;
            for (const double half : {-1.0, 1.0})
                AddVertex(centre[0] + half, centre[1] + half, centre[2] + half);
            CleanUpObject();
            MakeGrid();
            View view;
            MakeDefault2dView(&view, ObjectRadius(), direction);
            FitViewToBox(&view, ObjectBox());
            view = Drawn(view);
            PointAt(230, 140);
            double eye[3], model[3];
            ASSERT_EQ(ClickSomewhere(&view, eye, model, 1), 1);
            EXPECT_EQ(model[depthAxes[direction]], 0);
        }
}

TEST_F(PickingTest, ClicksFindThePolygonElseTheGridElseNothing) {
    Polygon* wall = Upright(-5, 5, -5, 5, 20);
    CleanUpObject();
    View view = Drawn(EyeView(0, 0, 0));
    MouseX = 220;
    MouseY = 160;
    double eye[3], model[3];
    ASSERT_EQ(ClickSomewhere(&view, eye, model, 0), 1);
    const double metre = FocalLength / 20; // on the wall, pixels
    ExpectNear(model, {18 / metre, 20, 12 / metre}, 1e-9);
    ExpectNear(eye, {18 / metre, 12 / metre, -20}, 1e-9);
    EXPECT_EQ(ClickSomewhere(&view, nullptr, nullptr, 0), 1);

    MouseX = 390;
    MouseY = 20;
    EXPECT_EQ(ClickSomewhere(&view, eye, model, 0), 0);
    MakeGrid();
    View above = EyeView(0, 0, 5);
    above.GridMatrix = IdentityMatrix;
    above = Drawn(above);
    ASSERT_EQ(ClickSomewhere(&above, eye, model, 1), 1);
    EXPECT_NEAR(model[2], 0, 1e-9);
    double back[3];
    ASSERT_EQ(Calc2dOf(&above, model, back), 1);
    ExpectNear(back, {388, 22}, 0.1);

    // In the scene the polygon counts where it is placed.
    Branch* branch = AddBranch(Scene(), BranchAsChild);
    branch->Object = CurrentObject();
    branch->Transform = TranslationMatrix(0, 10, 0);
    SceneChangedSize = 1;
    ObjectIsolated = 0;
    view = Drawn(EyeView(0, 0, 0));
    MouseX = 220;
    MouseY = 160;
    ASSERT_EQ(ClickSomewhere(&view, nullptr, model, 0), 1);
    ExpectNear(model, {18 / metre * 1.5, 30, 12 / metre * 1.5}, 1e-9);
    EXPECT_EQ(wall->Selected, 0);
}

TEST_F(PickingTest, ViewsWithoutExtentGiveNumbers) {
    MakeModel();
    View view{};
    double line[6], size, point[3];
    for (int perspective : {0, 1}) {
        view.Perspective = perspective;
        CalcEyeLine(&view, line);
        for (double number : line)
            EXPECT_TRUE(std::isfinite(number));
        PixelToEye(&view, 1, size);
        EXPECT_EQ(size, 0);
        const double origin[3] = {0, 0, 0};
        EXPECT_EQ(Calc2dOf(&view, origin, point), 0);
    }
}

} // namespace
