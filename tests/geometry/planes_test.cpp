#include "geometry/planes.h"

#include "geometry/close_to.h"
#include "geometry/vectors.h"

namespace {

TEST(Planes, ThroughAPoint) {
    double plane[4] = {0, 0, 2, 99};
    const double point[3] = {5, 6, 7};
    CalcPlaneD(plane, point);
    ExpectClose(plane, {0, 0, 2, -14}, 0);
}

TEST(Planes, FromATransformation) {
    Matrix m;
    MultMatrix(PitchMatrix(90), TranslationMatrix(1, 2, 3), m);
    double plane[4];
    GetPlaneFromTransformation(m, plane);
    ExpectClose(plane, {0, -1, 0, 2});
}

TEST(Planes, DistancesAndReflections) {
    const double plane[4] = {0.6, 0, 0.8, -5};
    std::mt19937 random(4);
    std::uniform_real_distribution<double> coordinate(-10, 10);
    for (int i = 0; i < 100; ++i) {
        const double point[3] = {coordinate(random), coordinate(random), coordinate(random)};
        double foot[3], image[3];
        FindNearestPointOnPlane(point, plane, foot);
        EXPECT_NEAR(DistanceFromPointToPlane(foot, plane), 0, 1e-12);
        EXPECT_NEAR(DistanceBetweenCoords(point, foot), std::fabs(DistanceFromPointToPlane(point, plane)), 1e-12);
        ReflectCoordinateInPlane(point, plane, image);
        EXPECT_NEAR(DistanceFromPointToPlane(image, plane), -DistanceFromPointToPlane(point, plane), 1e-12);
        ReflectCoordinateInPlane(image, plane, image);
        ExpectClose(image, {point[0], point[1], point[2]});
    }
    const double above[3] = {0, 0, 10};
    EXPECT_EQ(DistanceFromPointToPlane(above, plane), 3);
}

TEST(Planes, LinesMeetPlanes) {
    const double plane[4] = {0, 0, 2, -8}; // z = 4, with a normal that is not of unit length

    const struct {
        const char* Name;
        double Line[6];
        int Result;
        double T, Point[3];
    } cases[] = {
        {"ahead", {1, 2, 0, 1, 0, 2}, 1, 2, {3, 2, 4}},           {"behind", {1, 2, 6, 0, 0, 1}, -1, -2, {1, 2, 4}},
        {"starting on it", {1, 2, 4, 0, 0, 1}, -1, 0, {1, 2, 4}}, {"parallel", {1, 2, 0, 1, 1, 0}, 0, 0, {77, 77, 77}},
        {"lying in it", {1, 2, 4, 1, 1, 0}, 0, 0, {77, 77, 77}},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        double t = 55, point[3] = {77, 77, 77};
        EXPECT_EQ(DistanceToPlaneAlongLine(c.Line, plane, &t), c.Result != 0);
        EXPECT_EQ(t, c.T);
        EXPECT_EQ(IntersectLineWithPlane(c.Line, plane, point), c.Result);
        ExpectClose(point, {c.Point[0], c.Point[1], c.Point[2]}, 0);
    }
}

TEST(Planes, LinesTransformInPlace) {
    Matrix m;
    MultMatrix(YawMatrix(90), TranslationMatrix(10, 0, 0), m);
    double line[6] = {1, 0, 0, 0, 1, 0};
    TransformLine(line, m, line);
    ExpectClose(line, {10, 1, 0, -1, 0, 0});
}

} // namespace
