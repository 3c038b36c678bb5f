#include "interaction/position_state.h"

#include "interaction/rotate_dial.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double Centre[3] = {2, 3, 4};

void Begin() {
    ResetPosition({.Apply = nullptr,
                   .Cancel = nullptr,
                   .Done = nullptr,
                   .Centre = [](double* point) { std::copy_n(::Centre, 3, point); },
                   .Touch = nullptr,
                   .Title = 0});
}

void ExpectTaken(const Matrix& matrix, const double (&from)[3], const double (&to)[3]) {
    double point[3];
    TransformPoint(from, matrix, point);
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(point[axis], to[axis], 1e-9) << "axis " << axis;
}

TEST(PositionState, HistoryKeepsTheLastSteps) {
    Begin();
    EXPECT_FALSE(UndoPosition());
    EXPECT_FALSE(RedoPosition());
    for (int step = 1; step <= PositionSteps + 1; ++step) {
        PushOffset();
        SetOffset(0, step, 0);
    }
    for (int step = PositionSteps; step >= 1; --step) {
        ASSERT_TRUE(UndoPosition());
        EXPECT_EQ(Position.Offset[0], step);
        EXPECT_EQ(Position.M[3][0], step);
    }
    EXPECT_FALSE(UndoPosition());
    EXPECT_EQ(PositionRedoSteps(), PositionSteps);
    while (RedoPosition()) {
    }
    EXPECT_EQ(Position.Offset[0], PositionSteps + 1);

    UndoPosition();
    UndoPosition();
    PushOffset();
    SetOffset(1, 5, 0);
    EXPECT_FALSE(RedoPosition());
    EXPECT_EQ(PositionUndoSteps(), PositionSteps - 1);
}

TEST(PositionState, OffsetsAreRoundedAndRespectLocks) {
    Begin();
    Position.Lock[1] = 1;
    SetRoundedOffset(0, 1.234567, 0);
    SetRoundedOffset(1, 7, 0);
    SetRoundedOffset(2, 1234.56, 0);
    ExpectTaken(ComposedPosition(), {0, 0, 0}, {1.235, 0, 1235});
    SetRoundedOffset(1, -7, 1);
    ExpectTaken(ComposedPosition(), {0, 0, 0}, {1.235, -7, 1235});
}

TEST(PositionState, TurnsAboutItsAxisThroughTheCentre) {
    struct {
        int Mode;
        double Point[3], Turned[3];
    } const cases[] = {
        {0, {2, 4, 4}, {2, 3, 5}},
        {1, {2, 3, 5}, {3, 3, 4}},
        {2, {3, 3, 4}, {2, 4, 4}},
        {ThroughVertex, {2, 3, 5}, {2, 4, 4}}, // about -x
    };

    for (const auto& turn : cases) {
        SCOPED_TRACE(turn.Mode);
        Begin();
        Position.AxisMode = turn.Mode;
        const double towards[3] = {-5, 3, 4};
        ASSERT_TRUE(SetAxisThrough(towards));
        RotatePosition(90);
        ExpectTaken(ComposedPosition(), turn.Point, turn.Turned);
        ExpectTaken(ComposedPosition(), Centre, Centre);
    }
    EXPECT_FALSE(SetAxisThrough(Centre));
}

TEST(PositionState, MeasuresAnglesAboutTheAxis) {
    Begin();
    Position.AxisMode = 2;
    const double vertical[3] = {2, 3, 9};
    ASSERT_TRUE(SetAxisThrough(vertical));
    const double east[3] = {5, 3, -1}, north[3] = {2, 4, 100};
    double degrees;
    ASSERT_TRUE(AngleBetweenPoints(east, north, degrees));
    EXPECT_NEAR(degrees, 90, 1e-9);
    ASSERT_TRUE(AngleBetweenPoints(north, east, degrees));
    EXPECT_NEAR(degrees, -90, 1e-9);
    EXPECT_FALSE(AngleBetweenPoints(east, vertical, degrees));
    EXPECT_FALSE(AngleBetweenPoints(Centre, east, degrees));
}

TEST(PositionState, ScalesAboutTheFirstCentreBeforeAllElse) {
    Begin();
    SetOffset(0, 10, 0);
    SetScale(0, 2);
    ExpectTaken(ComposedPosition(), {3, 4, 4}, {14, 4, 4});
    Position.KeepOrthogonal = 1;
    SetScale(2, 0.5);
    ExpectTaken(ComposedPosition(), {4, 5, 6}, {13, 4, 5});
    ExpectTaken(ComposedPosition(), Centre, {12, 3, 4});
}

TEST(RotateDial, ReadsAnglesClockwiseFromStraightUp) {
    struct {
        int X, Y;
        double Angle;
    } const cases[] = {{1, 1000, 0},     {1000, 1, 90}, {-1000, 1, -90},  {1, -1000, 180},
                       {-1, -1000, 180}, {30, 30, 45},  {-30, -30, -135}, {-1, 1000, 0}};

    for (const auto& place : cases) {
        double angle = 7;
        ASSERT_TRUE(DialAngle(place.X, place.Y, angle));
        EXPECT_NEAR(angle, place.Angle, 0.1) << place.X << ", " << place.Y;
    }
    double angle = 7;
    EXPECT_FALSE(DialAngle(0, 20, angle));
    EXPECT_FALSE(DialAngle(20, 0, angle));
    EXPECT_EQ(angle, 7);
    EXPECT_DOUBLE_EQ(NormalisedDialAngle(-240), 120);
}

} // namespace
