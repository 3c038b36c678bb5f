#include "store/curve_flattening.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

/// Control points in the plane; those with a mark are curve points.
struct Corner {
    double X, Y;
    bool Curve = false;
};

void Fill(Elist& list, const std::vector<Corner>& corners, int basis, bool closed = false) {
    ResetElist(list);
    for (const Corner& corner : corners) {
        const double place[3] = {corner.X, corner.Y, 0};
        AppendEbead(list, place)->CurvePoint = corner.Curve;
    }
    list.Basis = basis;
    list.Closed = closed;
}

std::string Order(const Elist& list) {
    std::string order;
    ScanElist(list, [&](const double* place, bool current) {
        order += std::to_string(std::lround(place[0])) + (current ? "* " : " ");
    });
    const Ebead* before = nullptr;
    for (const Ebead* bead = list.First; bead; before = bead, bead = bead->Next)
        EXPECT_EQ(bead->Prev, before);
    return order;
}

double Turn(const FlatPoint& a, const FlatPoint& b, const FlatPoint& c) {
    const double first = std::atan2(b[1] - a[1], b[0] - a[0]), second = std::atan2(c[1] - b[1], c[0] - b[0]);
    return std::abs(std::remainder(second - first, 2 * M_PI)) * 180 / M_PI;
}

TEST(Curves, KeepACurrentPointWhilePointsComeAndGo) {
    Elist list;
    const auto at = [](double x) { return std::array<double, 3>{x, 0, 0}; };
    AppendEbead(list, at(1).data());
    AppendEbead(list, at(3).data());
    Ebead* one = list.First;
    PrependEbead(list, at(0).data());
    EXPECT_EQ(Order(list), "0* 1 3 ");
    InsertEbeadAfter(list, one, at(2).data());
    EXPECT_EQ(Order(list), "0 1 2* 3 ");
    ElistDelete(list);
    EXPECT_EQ(Order(list), "0 1 3* ");
    ElistDelete(list);
    EXPECT_EQ(Order(list), "0 1* ");
    testing::internal::CaptureStderr();
    Ebead other = {};
    EXPECT_EQ(InsertEbeadAfter(list, &other, at(5).data()), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "InsertEbeadAfter: point not found!\a\n");
    EXPECT_EQ(Order(list), "0 1* ");
    for (int i = 0; i < 3; ++i)
        ElistDelete(list);
    EXPECT_EQ(ElistLength(list), 0);
    EXPECT_EQ(LastElistBead(list), nullptr);
}

TEST(Curves, CornersLieOnTheCurve) {
    Elist list;
    for (const int basis : {BSpline, MSpline})
        for (const bool closed : {false, true}) {
            Fill(list, {{0, 0}, {4, 0}, {4, 4}}, basis, closed);
            const std::vector<FlatPoint> points = FlattenElist(list);
            ASSERT_EQ(points.size(), 3u) << basis << closed;
            for (std::size_t i = 0; i < 3; ++i) {
                EXPECT_NEAR(points[i][0], i > 0 ? 4 : 0, 1e-6);
                EXPECT_NEAR(points[i][1], i > 1 ? 4 : 0, 1e-6);
            }
        }
    Fill(list, {{1, 2, true}}, BSpline, true);
    EXPECT_TRUE(FlattenElist(list).empty());
}

TEST(Curves, OpenOnesReachFromEndToEndAndTurnAsTheirSmoothnessSays) {
    Elist list;
    const double turns[] = {20, 10, 5};
    for (const int basis : {BSpline, MSpline}) {
        std::size_t fewest = 3;
        for (const int smoothness : {LowSmoothness, NormalSmoothness, HighSmoothness}) {
            Fill(list, {{0, 0, true}, {10, 0, true}, {10, 10, true}, {20, 12, true}}, basis);
            list.Smoothness = smoothness;
            const std::vector<FlatPoint> points = FlattenElist(list);
            EXPECT_GT(points.size(), fewest);
            fewest = points.size();
            EXPECT_NEAR(points.front()[0], 0, 1e-6);
            EXPECT_NEAR(points.back()[0], 20, 1e-6);
            for (std::size_t i = 1; i + 1 < points.size(); ++i)
                EXPECT_LT(Turn(points[i - 1], points[i], points[i + 1]), 2 * turns[smoothness]);
        }
    }
}

TEST(Curves, FourCurvePointsOnASquareAreNearlyACircle) {
    Elist list;
    Fill(list, {{-1, -1, true}, {-1, 1, true}, {1, 1, true}, {1, -1, true}}, MSpline, true);
    list.Smoothness = HighSmoothness;
    const std::vector<FlatPoint> points = FlattenElist(list);
    EXPECT_GE(points.size(), 32u);
    int middles = 0;
    for (const FlatPoint& point : points) {
        EXPECT_NEAR(std::hypot(point[0], point[1]), 1, 0.01);
        middles += std::abs(point[0]) < 1e-6 || std::abs(point[1]) < 1e-6;
    }
    EXPECT_EQ(middles, 4);
}

TEST(Curves, PointsAtOnePlaceDoNoHarm) {
    Elist list;
    for (const int basis : {BSpline, MSpline})
        for (const bool closed : {false, true})
            for (const bool curve : {false, true}) {
                Fill(list, {{1, 1, curve}, {1, 1, curve}, {5, 1, curve}, {1, 1, curve}, {1, 1, curve}}, basis, closed);
                for (const FlatPoint& point : FlattenElist(list)) {
                    EXPECT_GE(point[0], 1);
                    EXPECT_LE(point[0], 5);
                }
            }
}

} // namespace
