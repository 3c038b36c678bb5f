#include "interaction/curve_editing.h"

#include "gooey/pointer.h"
#include "interaction/picking.h"
#include "interaction/views_test.h"

#include <cmath>
#include <initializer_list>

namespace {

struct At {
    double X, Y;
};

std::string Order(const Elist& list) {
    std::string order;
    ScanElist(list, [&](const double* place, bool current) {
        order += std::to_string(std::lround(place[0])) + "," + std::to_string(std::lround(place[1])) +
                 (current ? "* " : " ");
    });
    return order;
}

void Click(Elist& list, std::initializer_list<At> clicks, double tolerance = 1) {
    for (const At& at : clicks) {
        const double place[3] = {at.X, at.Y, 0};
        ElistClick(nullptr, list, place, tolerance);
    }
}

TEST(CurveEditing, ClicksSelectInsertOrExtend) {
    Elist list;
    Click(list, {{0, 0}, {10, 0}, {10, 10}});
    EXPECT_EQ(Order(list), "0,0 10,0 10,10* ");
    // The current point wins while it is in reach, though another one is nearer.
    Click(list, {{10, 11.5}});
    EXPECT_EQ(Order(list), "0,0 10,0 10,10 10,12* ");
    Click(list, {{10, 10.4}}, 2);
    EXPECT_EQ(Order(list), "0,0 10,0 10,10 10,12* ");
    Click(list, {{10, 9.9}});
    EXPECT_EQ(Order(list), "0,0 10,0 10,10* 10,12 ");
    // On an edge, and beside it within its slack; then nearer to the first end, and as far from both.
    Click(list, {{5, 0.1}});
    EXPECT_EQ(Order(list), "0,0 5,0* 10,0 10,10 10,12 ");
    Click(list, {{-5, 3}});
    EXPECT_EQ(Order(list), "-5,3* 0,0 5,0 10,0 10,10 10,12 ");
    ResetElist(list);
    Click(list, {{0, 0}, {10, 0}, {5, 6}});
    EXPECT_EQ(Order(list), "0,0 10,0 5,6* ");
    // The edge that closes the curve counts when it is closed.
    list.Closed = 1;
    Click(list, {{2.5, 3}});
    EXPECT_EQ(Order(list), "0,0 10,0 5,6 3,3* ");
}

TEST(CurveEditing, NewPointsAreLikeTheOneBefore) {
    Elist list;
    bool changed;
    Click(list, {{0, 0}});
    EXPECT_EQ(ElistKey(list, CurvePointKey, changed), 1);
    Click(list, {{10, 0}, {20, 5}});
    EXPECT_EQ(list.First->Next->Next->CurvePoint, 1);
    Click(list, {{10, 0}});
    ElistKey(list, CurvePointKey, changed);
    Click(list, {{5, 0}});
    EXPECT_EQ(list.Current->CurvePoint, 0);
}

TEST(CurveEditing, KeysTellWhetherTheyChangeAnything) {
    Elist list;
    bool changed;

    const struct {
        int Key;
        int Used;
        bool Changes;
    } cases[] = {{CurveDeleteKey, 1, false},
                 {CurvePointKey, 1, false},
                 {'n', 1, false},
                 {'h', 1, true},
                 {'h', 1, false},
                 {'l', 1, true},
                 {'b', 1, true},
                 {'c', 1, true},
                 {'x', 0, false},
                 {' ', 0, false}};

    for (const auto& c : cases) {
        EXPECT_EQ(ElistKey(list, c.Key, changed), c.Used) << c.Key;
        EXPECT_EQ(changed, c.Changes) << c.Key;
    }
    EXPECT_TRUE(list.Closed && list.Basis == MSpline && list.Smoothness == LowSmoothness);
    Click(list, {{0, 0}, {10, 0}});
    ElistKey(list, CurveCutKey, changed);
    EXPECT_EQ(Order(list), "0,0* ");
}

class CurvesInViews : public ViewsTest {};

TEST_F(CurvesInViews, AreClickedOnTheScreen) {
    Show(0);
    WindowScope scope(Viewport[0]);
    View* view = ViewOfViewport(0);
    SetUpView(view, 0);
    Elist list;
    const double ends[2][3] = {{-4, -4, 0}, {4, 4, 7}}, elsewhere[3] = {1, 1, 1};
    double first[3], last[3];
    AppendEbead(list, ends[0]);
    AppendEbead(list, ends[1]);
    ASSERT_TRUE(Calc2dOf(view, ends[0], first) && Calc2dOf(view, ends[1], last));
    MouseX = static_cast<int>(first[0]) + 3;
    MouseY = static_cast<int>(first[1]);
    ElistClick(view, list, elsewhere, 8);
    EXPECT_EQ(list.Current, list.First);
    EXPECT_NEAR(list.Current->Screen[0], first[0], 1e-9);
    // A quarter of the way along the edge the new point lies on it in space, too.
    MouseX = static_cast<int>(std::lround(first[0] + (last[0] - first[0]) / 4));
    MouseY = static_cast<int>(std::lround(first[1] + (last[1] - first[1]) / 4));
    ElistClick(view, list, elsewhere, 8);
    ASSERT_EQ(ElistLength(list), 3);
    EXPECT_EQ(list.Current, list.First->Next);
    EXPECT_NEAR(list.Current->Position[2], 7.0 / 4, 0.1);
    MouseX = MouseY = 3;
    ElistClick(view, list, elsewhere, 8);
    EXPECT_EQ(list.Current, list.First);
    EXPECT_DOUBLE_EQ(list.Current->Position[2], 1);
}

} // namespace
