#include "views/views_test.h"

#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/scene_extent.h"
#include "store/storage.h"
#include "views/default_views.h"
#include "views/fitting.h"
#include "views/grid.h"
#include "views/scene_views.h"
#include "views/upright.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>
#include <limits>

class DefaultViews : public ViewsTest {};

TEST_F(DefaultViews, OnesThatAreRolledOrSteepBecomeUpright) {
    struct Case {
        double Roll, Pitch;
        bool Steep;
    };

    OpenPlain(300, 200);
    AddBox(4, 4, 3);
    for (const Case& test : {Case{0, 0, false}, {0.7, 0, false}, {3.0, 0.3, false}, {-1, 1.3, true}, {0, -1.9, true}}) {
        View view = {};
        SetDefaultObjectView(&view, Direction3D);
        const Matrix before = [&] {
            Matrix copy;
            CopyMatrix(copy, view.ViewMatrix);
            return copy;
        }();
        view.HasCentre = 1;
        view.Centre[0] = 2;
        MultMatrix(view.ViewMatrix, PitchMatrix(test.Pitch), view.ViewMatrix);
        MultMatrix(view.ViewMatrix, RollMatrix(test.Roll), view.ViewMatrix);
        double pivot[3], after[3];
        TransformPoint(view.Centre, view.ViewMatrix, pivot);
        MakeViewUpright(&view);
        const Matrix& m = view.ViewMatrix;
        TransformPoint(view.Centre, m, after);
        EXPECT_LT(DistanceBetweenCoords(pivot, after), 1e-9) << "what it turns about stays";
        EXPECT_NEAR(m[2][0], 0, 1e-12) << "nothing of the roll is left";
        EXPECT_GT(m[2][2], 0.49);
        EXPECT_NEAR(m[0][1] * before[1][1], m[1][1] * before[0][1], 1e-9) << "the heading";
        EXPECT_FALSE(IsMirroring(m));
        EXPECT_TRUE(!test.Steep || std::abs(m[2][1]) < 0.5);
    }
}

TEST_F(DefaultViews, AreMadeWhenAViewIsFirstNeeded) {
    OpenPlain(300, 200);
    AddBox(4, 4, 3); // a radius of 7.04
    ValidateView(1);
    const int directions[] = {0, 4, 0};
    for (int i = 0; i < ViewportLimit; ++i) {
        EXPECT_TRUE(ObjectView(i).Valid);
        EXPECT_EQ(ObjectView(i).Perspective, i == 0);
        EXPECT_EQ(ObjectView(i).Direction, directions[i]);
    }
    for (int direction = 0; direction < DefaultView2DCount; ++direction)
        EXPECT_EQ(DefaultObject2D(direction).Direction, direction);
    EXPECT_NEAR(1 / ObjectView(1).Projection[1][1], ObjectRadius(), 1e-9);
    EXPECT_EQ(GridSquare(GridIndex()), 1);
    EXPECT_EQ(GridSteps(), 7);
    EXPECT_FALSE(SceneView[0].Valid);

    // The grid and the views stay as they are until a default is missing.
    GridSteps() = 3;
    ObjectView(2).Zoom = 4;
    ValidateView(2);
    EXPECT_EQ(GridSteps(), 3);
    EXPECT_EQ(ObjectView(2).Zoom, 4);
    DefaultObject2D(5).Valid = 0;
    MakeDefaultObjectViews();
    EXPECT_EQ(GridSteps(), 7);
    EXPECT_EQ(ObjectView(2).Zoom, 4);
}

TEST_F(DefaultViews, AreTheLastOfTheirKind) {
    OpenPlain(300, 200);
    for (const int isolated : {0, 1}) {
        ObjectIsolated = isolated;
        const auto setDefault = isolated ? SetDefaultObjectView : SetDefaultSceneView;
        View view = {};
        setDefault(&view, Direction3D);
        view.ViewMatrix[3][1] = 77;
        RememberView(&view);
        setDefault(&view, 3);
        view.Zoom = 5;
        RememberView(&view);
        View other = {};
        setDefault(&other, 3);
        EXPECT_EQ(other.Zoom, 5);
        setDefault(&other, 2);
        EXPECT_EQ(other.Zoom, 1);
        setDefault(&other, Direction3D);
        EXPECT_EQ(other.ViewMatrix[3][1], 77);
        EXPECT_EQ(other.Perspective, 1);
        // No such direction: nothing happens.
        setDefault(&other, 6);
        EXPECT_EQ(other.ViewMatrix[3][1], 77);
    }
}

TEST_F(DefaultViews, TakeThePlaceOfViewsThatCannotBeDrawn) {
    OpenPlain(300, 200);
    // The last five leave the view where it is.
    const auto corruptions = {
        +[](View& view) { view.ViewMatrix[0][0] = std::nan(""); },
        +[](View& view) { view.ViewMatrix[3][1] = std::numeric_limits<double>::infinity(); },
        +[](View& view) { view.ViewMatrix[3][1] = 1e300; },
        +[](View& view) { view.ViewMatrix = {}; },
        +[](View& view) { std::copy_n(view.ViewMatrix[0], 3, view.ViewMatrix[1]); },
        +[](View& view) { view.ViewMatrix[1][3] = 1; },
        +[](View& view) { view.Direction = 6; },
        +[](View& view) { view.GridMatrix[2][2] = view.GridMatrix[2][1] = view.GridMatrix[2][0] = 0; },
        +[](View& view) { view.Zoom = 0; },
        +[](View& view) { view.Zoom = -1; },
        +[](View& view) { view.Zoom = std::nan(""); },
        +[](View& view) {
            view.HasCentre = 1;
            view.Centre[2] = std::nan("");
        },
    };
    int number = 0;
    for (const auto corrupt : corruptions) {
        SCOPED_TRACE(number++);
        ValidateView(1);
        const View sound = ObjectView(1);
        ASSERT_TRUE(ViewIsUsable(sound));
        Matrix moved = sound.ViewMatrix;
        moved[3][0] = 1;
        ObjectView(1).ViewMatrix = moved;
        corrupt(ObjectView(1));
        corrupt(DefaultObject2D(4));
        ValidateView(1);
        EXPECT_EQ(ObjectView(1).ViewMatrix, number > 7 ? moved : sound.ViewMatrix);
        EXPECT_EQ(ObjectView(1).GridMatrix, sound.GridMatrix);
        EXPECT_EQ(ObjectView(1).Zoom, 1);
        EXPECT_EQ(ObjectView(1).HasCentre, 0);
        ObjectView(1) = sound;
        DefaultObject2D(4) = sound;
    }
    // A projection that makes no sense is made anew by the next set-up.
    ObjectView(1).Projection[1][1] = std::nan("");
    SetUpView(&ObjectView(1), 0);
    EXPECT_NEAR(ObjectView(1).Projection[1][1], 1 / ShownRadius(), 1e-12);
}

TEST_F(DefaultViews, FitWhateverRadiusTheModelHas) {
    OpenPlain(300, 200);
    for (const double radius : {0.0, 1e-9, 0.001, 1e4, 1e9, 1e300, std::nan(""), -1.0}) {
        SCOPED_TRACE(radius);
        for (const int direction : {61, 0, 5}) {
            View view = {};
            if (direction == Direction3D)
                MakeDefault3dView(&view, radius);
            else
                MakeDefault2dView(&view, radius, direction);
            EXPECT_TRUE(ViewIsUsable(view));
        }
    }
}

/// A wall 8 m long, far out in the country.
class FarAway : public DefaultViews {
  protected:
    void SetUp() override {
        DefaultViews::SetUp();
        OpenPlain(300, 200);
        for (int corner = 0; corner < 8; ++corner)
            AddVertex(corner & 1 ? East + 8 : East, corner & 2 ? North + 1 : North, corner & 4 ? 3 : 0);
        CleanUpObject();
        ObjectView(0).Valid = 0;
    }

    /// How many pixels apart the wall's outermost corners are shown, all of them in sight.
    static double ShownSize(View& view) {
        SetUpView(&view, 0);
        Pixel low = {300, 200}, high = {0, 0};
        for (int corner = 0; corner < 8; ++corner) {
            double depth;
            const Pixel p =
                DrawnPixelOf(corner & 1 ? East + 8 : East, corner & 2 ? North + 1 : North, corner & 4 ? 3 : 0, &depth);
            EXPECT_TRUE(p.X > 0 && p.X < 300 && p.Y > 0 && p.Y < 200) << p.X << " " << p.Y;
            EXPECT_LT(std::abs(depth), 1);
            low = {std::min(low.X, p.X), std::min(low.Y, p.Y)};
            high = {std::max(high.X, p.X), std::max(high.Y, p.Y)};
        }
        return std::hypot(high.X - low.X, high.Y - low.Y);
    }

    static constexpr double East = 300000, North = 200000;
};

TEST_F(FarAway, DefaultsLookAtWhatIsTooFarOffToBeSeenFromTheOrigin) {
    ValidateView(0);
    for (const int direction : {Direction3D, 0, 1, 2, 3, 4, 5}) {
        SCOPED_TRACE(direction);
        View view = {};
        SetDefaultObjectView(&view, direction);
        EXPECT_GT(ShownSize(view), 50);
        if (view.Perspective) {
            ASSERT_TRUE(view.HasCentre);
            EXPECT_EQ(view.Centre[0], East + 4);
        }
    }
}

TEST_F(FarAway, ViewsAreFittedFromWhereverTheyLook) {
    ValidateView(0);
    for (const int direction : {Direction3D, 0, 4}) {
        SCOPED_TRACE(direction);
        View view = {};
        SetDefaultObjectView(&view, direction);
        const double size = ShownSize(view);
        const Matrix fitted = view.ViewMatrix;
        view.ViewMatrix[3][0] += 1e5;
        view.ViewMatrix[3][1] -= 1e3;
        view.Zoom *= 100;
        FitViewToBox(&view, ObjectBox());
        EXPECT_EQ(view.ViewMatrix, fitted);
        EXPECT_NEAR(ShownSize(view), size, 0.1);
    }
}

TEST_F(DefaultViews, AreFittedToAModelBesideTheOriginOnDemandOnly) {
    OpenPlain(300, 200);
    for (int corner = 0; corner < 4; ++corner)
        AddVertex(corner & 1 ? 30 : 20, corner & 2 ? 5 : -5, 0);
    CleanUpObject();
    View view = {};
    SetDefaultObjectView(&view, 0);
    EXPECT_EQ(view.ViewMatrix[3][0], 0);
    EXPECT_EQ(view.Zoom, 1);
    FitViewToBox(&view, ObjectBox());
    SetUpView(&view, 0);
    const Pixel middle = PixelOf(25, 0, 0), corner = PixelOf(30, 5, 0);
    EXPECT_NEAR(middle.X, 150, 0.1);
    EXPECT_NEAR(middle.Y, 100, 0.1);
    // A tenth to spare about a circle of radius sqrt(50).
    EXPECT_NEAR(corner.Y, 100 + 100 * 5 / (1.1 * std::sqrt(50)), 0.1);
    EXPECT_FALSE(view.HasCentre);
    SetDefaultObjectView(&view, Direction3D);
    FitViewToBox(&view, ObjectBox());
    EXPECT_TRUE(view.HasCentre);
    view.Centre[0] = 7;
    FitViewToBox(&view, ObjectBox());
    EXPECT_EQ(view.Centre[0], 7);
}

class SceneExtent : public ViewsTest {};

TEST_F(SceneExtent, ReachesToTheFurthestPlacedObject) {
    AddBox(1, 2, 3);
    Object* box = CurrentObject();
    EXPECT_EQ(SceneRadius(), 1000);
    EXPECT_EQ(LastSceneRadValid, 0);
    box->Radius = 5000;
    EXPECT_EQ(SceneRadius(), 1000); // until the scene changes
    SceneChangedSize = 1;
    EXPECT_EQ(SceneRadius(), 5000);

    AddObject("Other", 1, 0);
    Branch* first = AddBranch(Scene(), BranchAsChild);
    first->Object = box;
    Branch* second = AddBranch(first, BranchAsSibling);
    second->Object = box;
    second->Transform = TranslationMatrix(-10, 0, 0);
    EXPECT_NEAR(SceneRadius(), 1.1 * std::sqrt(11 * 11 + 2 * 2 + 3 * 3), 1e-9);
    EXPECT_EQ(LastSceneRadValid, 1);
    EXPECT_STREQ(CurrentObject()->Name, "Other");
    const double *min, *max;
    GetSceneBox(min, max);
    EXPECT_EQ(min[0], -11);
    EXPECT_EQ(max[0], 1);
    EXPECT_EQ(second->Max[0], -9);
    EXPECT_EQ(first->Min[1], -2);

    // A placed object that grows, and a placement that is no place.
    CurrentObject() = box;
    AddBox(20, 2, 3);
    EXPECT_NEAR(SceneRadius(), 1.1 * std::sqrt(30 * 30 + 2 * 2 + 3 * 3), 1e-9);
    second->Transform[3][0] = std::nan("");
    SceneChangedSize = 1;
    EXPECT_NEAR(SceneRadius(), 1.1 * std::sqrt(20 * 20 + 2 * 2 + 3 * 3), 1e-9);

    PruneBranch(first);
    EXPECT_EQ(SceneRadius(), 1000);
}
