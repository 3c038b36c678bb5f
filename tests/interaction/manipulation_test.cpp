#include "interaction/views_test.h"

#include "geometry/vectors.h"
#include "gooey/event_loop.h"
#include "gooey/pointer.h"
#include "interaction/picking.h"
#include "interaction/view_commands.h"
#include "platform/events.h"
#include "platform/input.h"
#include "views/display_flags.h"

#include <cmath>

namespace {

constexpr int Top = 0;
constexpr double Close = 1e-9;

class Manipulation : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        ZoomPanAllowed = 1;
    }

    /// The middle of the view, and points beside it.
    static std::string Off(int dx, int dy) { return At(Width() / 2 + dx, Height() / 2 + dy); }

    static void ExpectMatrix(const Matrix& expected, double tolerance = Close) {
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                EXPECT_NEAR(Shown().ViewMatrix[row][column], expected[row][column], tolerance)
                    << "row " << row << ", column " << column;
    }

    /// The view's matrix turned about what the origin has become.
    static Matrix Turned(Matrix m, const Matrix& rotation) {
        const double place[3] = {m[3][0], m[3][1], m[3][2]};
        m[3][0] = m[3][1] = m[3][2] = 0;
        MultMatrix(m, rotation, m);
        std::copy_n(place, 3, m[3]);
        return m;
    }

    static Matrix Moved(const Matrix& m, double x, double y, double z) {
        Matrix moved;
        MultMatrix(m, TranslationMatrix(x, y, z), moved);
        return moved;
    }

    /// Model units a pixel at the origin's depth.
    static double Pixel() {
        const double depth = Shown().Perspective ? Shown().ViewMatrix[3][1] : 1 / Shown().Zoom;
        return depth / (Shown().Projection[0][0] * (Width() / 2.0));
    }

    static void DragMiddle(const std::string& from, const std::string& to) { InView("drag middle" + from + to); }
};

TEST_F(Manipulation, ThreePixelsTurnTheModelByADegree) {
    const Matrix before = Shown().ViewMatrix;
    DragMiddle(Off(0, 0), Off(30, 0));
    ExpectMatrix(Turned(before, YawMatrix(10)));
    DragMiddle(Off(30, 0), Off(30, 15));
    ExpectMatrix(Turned(Turned(before, YawMatrix(10)), PitchMatrix(-5)));
    // What comes out is the default from now on.
    EXPECT_EQ(DefaultObject3D().ViewMatrix, Shown().ViewMatrix);
}

TEST_F(Manipulation, NearTheEdgeTheViewRollsUnlessShiftIsHeld) {
    const int far = Width() / 3 + 5;
    const Matrix before = Shown().ViewMatrix;
    DragMiddle(Off(far, 0), Off(0, -150));
    ExpectMatrix(Turned(before, RollMatrix(90)), 0.05);

    Show(Direction3D);
    AddPolygon(
        [] {
            PolygonBead* beads = nullptr;
            for (const auto& place : {std::pair{-50.0, -50.0}, {50.0, -50.0}, {50.0, 50.0}, {-50.0, 50.0}})
                AddPolygonBead(beads, AddVertex(place.first, place.second, 0));
            return beads;
        }(),
        nullptr);
    SolidView = 1;
    DirtyModelWindows();
    Settle();
    InView("hold LeftShift\ndrag middle" + Off(0, -far) + Off(30, -far) + "\nlet LeftShift");
    EXPECT_EQ(Shown().HasCentre, 1);
}

TEST_F(Manipulation, SidewaysButtonsPanAndZoomThe3dView) {
    const Matrix before = Shown().ViewMatrix;
    const double pixel = Pixel();
    InView("move" + Off(0, 0) + "\npress middle\npress left\nmove" + Off(20, 12) + "\nrelease left\nrelease middle");
    ExpectMatrix(Moved(before, 20 * pixel, 0, 12 * pixel));

    Shown().ViewMatrix = before;
    const double distance = LengthOfVector(before[3]);
    InView("move" + Off(0, 0) + "\npress middle\npress right\nmove" + Off(0, Height() / 8) +
           "\nrelease right\nrelease middle");
    ExpectMatrix(Moved(before, 0, -(Height() / 8 / (Height() / 2.0)) * distance, 0));

    // Not when the user does not want it: the drag goes on turning.
    ZoomPanAllowed = 0;
    Shown().ViewMatrix = before;
    InView("move" + Off(0, 0) + "\npress middle\npress right\nmove" + Off(30, 0) + "\nrelease middle\nrelease right");
    ExpectMatrix(Turned(before, YawMatrix(10)));
}

TEST_F(Manipulation, BothButtonsResetAndDraggingGoesOnFromThere) {
    const Matrix before = Shown().ViewMatrix;
    const std::string chord = "move" + Off(40, 40) + "\npress middle\npress left\npress right\nmove" + Off(60, 60) +
                              "\nrelease right\nmove" + Off(70, 70) + "\nrelease left";
    Shown().ViewMatrix = Moved(before, 3, 5, -2);
    InView(chord + "\nrelease middle");
    ExpectMatrix(before);
    Shown().ViewMatrix = Moved(before, 3, 5, -2);
    InView(chord + "\nmove" + Off(100, 70) + "\nrelease middle");
    ExpectMatrix(Turned(before, YawMatrix(10)));
}

TEST_F(Manipulation, TwoDimensionalViewsPanAndZoom) {
    Show(Top);
    const Matrix before = Shown().ViewMatrix;
    const double pixel = Pixel();
    DragMiddle(Off(0, 0), Off(25, -10));
    ExpectMatrix(Moved(before, 25 * pixel, 0, -10 * pixel));

    struct Case {
        int Halves;
        double Factor;
    };

    for (const Case& zoom : {Case{1, 3.0}, {-1, 0.5}}) {
        Show(Top);
        Shown().Zoom = 2;
        InView("move" + Off(0, 0) + "\npress middle\npress right\nmove" + Off(0, zoom.Halves * (Height() / 2)) +
               "\nrelease right\nrelease middle");
        EXPECT_NEAR(Shown().Zoom, 2 * zoom.Factor, 0.02) << zoom.Halves;
    }
}

TEST_F(Manipulation, ThePickedCentreStaysWhereItIs) {
    Shown().HasCentre = 1;
    const double centre[3] = {2, -1, 3};
    std::copy_n(centre, 3, Shown().Centre);
    double before[3], after[3];
    TransformCoordinate(centre, Shown().ViewMatrix, before);
    DragMiddle(Off(0, 0), Off(47, 31));
    TransformCoordinate(centre, Shown().ViewMatrix, after);
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(after[axis], before[axis], Close);
}

/// Where a point before the eye appears, from the middle of the view.
struct Place {
    double X, Z;
};

Place Appears(const View& view, const double* model) {
    double eye[3];
    TransformCoordinate(model, view.ViewMatrix, eye);
    const double depth = view.Perspective ? eye[1] : 1 / view.Zoom;
    return {eye[0] / depth * view.Projection[0][0], eye[2] / depth * view.Projection[1][1]};
}

TEST_F(Manipulation, TheWheelZoomsAboutThePointer) {
    for (const int direction : {Top, Direction3D}) {
        Show(direction);
        View& view = Shown();
        WindowScope scope(Viewport[0]);
        MouseX = Width() / 2 + 60;
        MouseY = Height() / 2 - 45;
        // A model point under the pointer.
        const double x = (MouseX / (Width() / 2.0) - 1) / view.Projection[0][0];
        const double z = (MouseY / (Height() / 2.0) - 1) / view.Projection[1][1];
        const double depth = view.Perspective ? 0.8 * view.ViewMatrix[3][1] : 1;
        const double eye[3] = {x * depth, depth, z * depth};
        double model[3];
        TransformCoordinate(eye, MatrixInverse(view.ViewMatrix), model);
        const Place before = Appears(view, model);
        const double sizeBefore = view.Zoom / view.ViewMatrix[3][1];
        TurnWheel(&view, 0, 3 * gl::WHEELNOTCH);
        TurnWheel(&view, 0, gl::WHEELNOTCH / 2);
        const Place after = Appears(view, model);
        EXPECT_NEAR(after.X, before.X, Close) << direction;
        EXPECT_NEAR(after.Z, before.Z, Close) << direction;
        if (view.Perspective)
            EXPECT_GT(view.Zoom / view.ViewMatrix[3][1], 1.5 * sizeBefore);
        else
            EXPECT_NEAR(view.Zoom, std::pow(1.2, 3.5), Close);
        // However long it is turned, the view stays usable.
        for (const int notch : {gl::WHEELNOTCH, -gl::WHEELNOTCH}) {
            for (int i = 0; i < 10000; ++i)
                TurnWheel(&view, 0, notch);
            for (int i = 0; i < 3; ++i)
                EXPECT_LT(std::abs(view.ViewMatrix[3][i]), 1e12);
            EXPECT_TRUE(view.Zoom > 1e-12 && view.Zoom < 1e12);
        }
    }
}

TEST_F(Manipulation, ShiftPansWithTheWheelAndCtrlTurns) {
    const Matrix before = Shown().ViewMatrix;
    const double pixel = Pixel();
    const auto turn = [](const char* key, int device, int amount) {
        InView("move" + Off(0, 0) + "\nhold " + key);
        gl::WheelTurned(device, amount);
        Settle();
        InView(std::string("let ") + key);
    };
    turn("LeftShift", gl::WHEELX, -gl::WHEELNOTCH);
    ExpectMatrix(Moved(before, 30 * pixel, 0, 0));
    Shown().ViewMatrix = before;
    turn("LeftCtrl", gl::WHEELX, -gl::WHEELNOTCH);
    ExpectMatrix(Turned(before, YawMatrix(10)));
}

TEST_F(Manipulation, TheKeyThatFitsTheViewShowsItAtOnce) {
    static int draws;
    TheInputSlots.DoSafeCommand = [](int code) {
        if (code == HomeCharacter)
            FitView(KeyView);
        return 1;
    };
    const Matrix before = Shown().ViewMatrix;
    Shown().ViewMatrix = Moved(before, 3, 5, -2);
    InView("move" + Off(0, 0));
    Viewport[0]->DrawFn = [] {
        ++draws;
        DrawView();
    };
    draws = 0;
    InView("key Home");
    EXPECT_EQ(draws, 1);
    ExpectMatrix(before);
    EXPECT_EQ(DefaultObject3D().ViewMatrix, Shown().ViewMatrix);
}

/// A hurried user's click may come before the view that a key has just brought was ever drawn.
TEST_F(Manipulation, ClicksMeanTheViewThatTheKeyBeforeThemHasBrought) {
    static double found[3];
    TheInputSlots.DoSafeCommand = [](int code) {
        SetDefaultView(KeyView, code == 't' ? Top : Direction3D);
        // As when it was last shown in another number of views, of a smaller model.
        KeyView->Stale = 1;
        KeyView->Projection[1][1] *= 2;
        return 1;
    };
    LeftClickFunc = [](View* view) { ClickSomewhere(view, nullptr, found, 1); };
    WindowScope scope(Viewport[0]);
    for (const char key : {'t', '3'}) {
        CheckView(gl::KEYBD, static_cast<short>(key));
        MouseX = Width() / 2 + 40;
        MouseY = Height() / 2 - 30;
        CheckView(gl::LEFTMOUSE, 1);
        const std::vector<double> early(found, found + 3);
        Settle();
        CheckView(gl::LEFTMOUSE, 1);
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(early[axis], found[axis], Close) << key << axis;
    }
}

class Flying : public Manipulation {
  protected:
    void SetUp() override {
        Manipulation::SetUp();
        Start = Shown().ViewMatrix;
    }

    static inline Matrix Start;

    /// What a flight that starts in the middle of the view makes of the matrix.
    static Matrix Fly(const std::string& script) {
        Shown().ViewMatrix = Start;
        InView("hold LeftCtrl\nmove" + Off(0, 0) + "\npress middle\n" + script + "\nrelease middle\nlet LeftCtrl");
        return Shown().ViewMatrix;
    }
};

TEST_F(Flying, MovesTheEyeAlongTheView) {
    const Matrix slow = Fly("press left\nwait 20\nrelease left\nwait 100");
    const Matrix fast = Fly("press left\nwait 40\nrelease left\nwait 100");
    const Matrix back = Fly("press right\nwait 20\nrelease right\nwait 100");
    EXPECT_LT(slow[3][1], Start[3][1]);
    EXPECT_LT(fast[3][1], slow[3][1]);
    EXPECT_GT(back[3][1], Start[3][1]);
    // The middle of the window does not steer, but for half a pixel.
    for (const Matrix& flown : {slow, fast, back})
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                EXPECT_NEAR(flown[row][column], Start[row][column], 1e-4);
}

TEST_F(Flying, GathersSpeedQuickerInALargeModel) {
    const auto way = [](double radius) {
        ObjectRadius() = radius;
        return Start[3][1] - Fly("press left\nwait 20\nrelease left\nwait 100")[3][1];
    };
    const double tiny = way(0.005), small = way(1), large = way(1000);
    EXPECT_GT(tiny, 0);
    EXPECT_NEAR(large / small, 5.0 / 2, 1e-3);
}

TEST_F(Flying, TheChordStops) {
    const std::string stop = "press left\nwait 20\npress right\nrelease right\nrelease left\n";
    const Matrix stopped = Fly(stop + "wait 1");
    EXPECT_NEAR(Fly(stop + "wait 200")[3][1], stopped[3][1], 1e-2);
}

TEST_F(Flying, StartsFromAViewStraightUpOrDownWithoutAJump) {
    for (const double pitch : {90.0, -90.0})
        for (const double heading : {0.0, 60.0, 225.0}) {
            Matrix rotation;
            MultMatrix(YawMatrix(heading), PitchMatrix(pitch), rotation);
            for (int row = 0; row < 3; ++row)
                for (int column = 0; column < 3; ++column)
                    Start[row][column] = rotation[row][column] * (1 + 1e-15); // as rounding leaves it
            const Matrix flown = Fly("wait 10");
            for (int row = 0; row < 3; ++row)
                for (int column = 0; column < 3; ++column)
                    EXPECT_NEAR(flown[row][column], rotation[row][column], 1e-4) << pitch << " " << heading;
        }
}

TEST_F(Flying, ThePointerSteers) {
    const double heading = 45, ticks = 200, offset = 100;
    const Matrix turned = Fly("move" + Off(offset, 0) + "\nwait 200");
    // A pitched view: the heading is that of the model's x axis.
    const double found = std::atan2(turned[0][1] / std::cos(15 * DegreesToRadians), turned[0][0]) * RadiansToDegrees;
    EXPECT_NEAR(found, heading + offset * offset * 0.0003 * ticks / 100, 0.5);
    const double pitch = 15;
    const Matrix raised = Fly("move" + Off(0, offset) + "\nwait 100");
    EXPECT_NEAR(std::asin(-raised[2][1]) * RadiansToDegrees, pitch - offset * offset * 0.0003, 0.5);
}

} // namespace
