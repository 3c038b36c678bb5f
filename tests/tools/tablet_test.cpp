#include "interaction/views_test.h"

#include "platform/tablet.h"
#include "tools/tablet.h"
#include "tools/tablet_alignment.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <iterator>
#include <limits>
#include <linux/input.h>

namespace {

class Tablet : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        AlignAX1 = AlignAY1 = AlignAY2 = AlignBX1 = AlignBY1 = AlignBY2 = 0;
        AlignAX2 = AlignBX2 = 100;
        AlignCX1 = AlignCY1 = AlignCX2 = AlignCY2 = 0;
        TabletRotation = AroundX;
        EnterMethodA = 1;
        EnterMethodB = 0;
        Points.clear();
        GaveUp = 0;
        TheTabletSlots = {};
    }

    static void TakePoints(const double (*points)[3]) {
        GaveUp += !points;
        for (int i = 0; points && i < Wanted; ++i)
            Points.push_back({points[i][0], points[i][1], points[i][2]});
    }

    static void Digitise(int count) {
        Wanted = count;
        DigitiseVertices(count, TakePoints);
        Settle();
    }

    static void InTablet(const std::string& script) { Play("in \"Digitiser\"\n" + script); }

    static int Wanted, GaveUp;
    static std::vector<std::array<double, 3>> Points;
};

int Tablet::Wanted, Tablet::GaveUp;
std::vector<std::array<double, 3>> Tablet::Points;

TEST_F(Tablet, CombinesTwoViews) {
    const struct {
        int Rotation;
        TabletPoint First, Second;
        TabletVertex Vertex;
    } cases[] = {
        {AroundX, {30, 40}, {30, 50}, {30, 40, 50}},
        {AroundX, {30, 40}, {60, 50}, {30, 40, 25}}, // the second view is twice as large
        {AroundX, {0, 40}, {0, 50}, {0, 40, 50}},    // nothing tells the scale
        {AroundY, {30, 40}, {50, 40}, {30, 40, 50}},
        {AroundY, {30, 40}, {50, -80}, {30, 40, -25}},
        {AroundY, {30, 0}, {50, 0}, {30, 0, 50}},
    };

    for (const auto& c : cases) {
        TabletRotation = c.Rotation;
        const TabletVertex v = CalcTabletXYZ(c.First, c.Second);
        EXPECT_EQ((std::array{v.X, v.Y, v.Z}), (std::array{c.Vertex.X, c.Vertex.Y, c.Vertex.Z}));
    }
    // Views that lie turned on the tablet, away from its corner.
    TabletRotation = AroundX;
    AlignAX1 = 500;
    AlignAY1 = 100;
    AlignAX2 = 500;
    AlignAY2 = 300; // to the right is up
    AlignCX1 = 700;
    AlignCY1 = 200;
    AlignCX2 = 1000;
    AlignCY2 = 1000;
    const TabletVertex v = CalcTabletXYZ({700 - 40, 200 + 30}, {1000 + 30, 1000 + 50});
    EXPECT_EQ((std::array{v.X, v.Y, v.Z}), (std::array{30, 40, 50}));

    EXPECT_EQ(Round(2.5), 3);
    EXPECT_EQ(Round(-2.5), -3);
    EXPECT_EQ(Round(1e300), std::numeric_limits<int>::max());
}

TEST_F(Tablet, GivesOtherToolsTheirPoints) {
    Digitise(2);
    InTablet("puck 0 10 20\npuck 3 10 30\n");
    EXPECT_TRUE(Points.empty());
    InTablet("puck 1 50 60\npuck 0 50 70\n");
    ASSERT_EQ(Points.size(), 2u);
    EXPECT_EQ(Points[1], (std::array{50.0, 60.0, 70.0}));
    EXPECT_EQ(GaveUp, 0);
    EXPECT_EQ(TabletBase, nullptr);
    EXPECT_EQ(Vertices(), 0u);
    // Given up by the button, by the space bar and by the window's box.
    for (const char* how : {"button \"Cancel\"", "key Space", "close"}) {
        Points.clear();
        GaveUp = 0;
        Digitise(3);
        InTablet(std::string("puck 0 10 20\n") + how + "\n");
        EXPECT_EQ(GaveUp, 1) << how;
        EXPECT_TRUE(Points.empty());
        EXPECT_EQ(TabletBase, nullptr);
    }
}

/// A vertex and a half, then the device is pulled out while its button is down.
int NextUntilUnplugged(unsigned, input_event& event) {
    static constexpr struct {
        std::uint16_t Type, Code;
        std::int32_t Value;
    } sent[] = {{EV_ABS, ABS_X, 1},      {EV_KEY, BTN_0, 1},      {EV_SYN, SYN_REPORT, 0}, {EV_KEY, BTN_0, 0},
                {EV_SYN, SYN_REPORT, 0}, {EV_ABS, ABS_Y, -1},     {EV_KEY, BTN_0, 1},      {EV_SYN, SYN_REPORT, 0},
                {EV_KEY, BTN_0, 0},      {EV_SYN, SYN_REPORT, 0}, {EV_KEY, BTN_0, 1},      {EV_SYN, SYN_REPORT, 0}};

    static std::size_t next;
    if (next == std::size(sent))
        return -ENODEV;
    event.type = sent[next].Type;
    event.code = sent[next].Code;
    event.value = sent[next++].Value;
    return 0;
}

TEST_F(Tablet, UnpluggedInTheMiddleLeavesWhatWasEntered) {
    Digitise(0);
    InTablet("button \"Enter vertices\"\n");
    testing::internal::CaptureStderr();
    gl::TakeTabletEvents(NextUntilUnplugged);
    gl::ReadTablet();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "KIRVO_TABLET: cannot use the tablet: it was unplugged\n");
    Settle();
    ASSERT_EQ(Vertices(), 1u);
    EXPECT_EQ((std::array{FirstVertex()->Position[0], FirstVertex()->Position[1], FirstVertex()->Position[2]}),
              (std::array{1.0, 0.0, 1.0}));
    // The window goes on, with another tablet, too.
    InTablet("puck 0 1 2\nbutton \"Done\"\n");
    EXPECT_EQ(TabletBase, nullptr);
    EXPECT_EQ(Vertices(), 2u);
    Undo();
    EXPECT_EQ(Vertices(), 0u);
}

TEST_F(Tablet, TakesVerticesBackUnlessTheyAreUsed) {
    Digitise(0);
    InTablet(
        "button \"Enter vertices\"\npuck 0 10 20\npuck 0 10 30\npuck 0 50 60\npuck 0 50 70\npuck 0 70 60\npuck 0 70 "
        "70\n");
    ASSERT_EQ(Vertices(), 3u);
    EXPECT_DOUBLE_EQ(FirstVertex()->Position[2], 70);
    InTablet("puck 0 90 90\npuck 2 0 0\n"); // the first half of a fourth vertex is forgotten as well
    EXPECT_EQ(Vertices(), 2u);
    InTablet("puck 0 90 90\npuck 0 90 20\n");
    EXPECT_EQ(Vertices(), 3u);
    PolygonBead* beads = nullptr;
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        AddPolygonBead(beads, vertex);
    AddPolygon(beads, nullptr);
    InTablet("puck 2 0 0\npuck 2 0 0\npuck 2 0 0\npuck 2 0 0\n");
    EXPECT_EQ(Vertices(), 3u);
    InTablet("button \"Done\"\n");
    EXPECT_EQ(TabletBase, nullptr);
    Undo();
    EXPECT_EQ(Vertices(), 0u);
}

TEST_F(Tablet, EntersRowsThatShareAPoint) {
    Digitise(0);
    // What is entered before there is a shared point counts for nothing.
    InTablet("button \"Enter vertices\"\nbutton \"Method B\"\npuck 0 5 5\npuck 1 30 40\npuck 0 30 50\npuck 0 30 60\n"
             "puck 3 10 20\npuck 0 10 7\n");
    std::vector<std::array<double, 3>> found;
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        found.push_back({vertex->Position[0], vertex->Position[1], vertex->Position[2]});
    EXPECT_EQ(found, (std::vector<std::array<double, 3>>{{10, 7, 20}, {30, 40, 60}, {30, 40, 50}}));
    EXPECT_FALSE(EnterMethodA);
}

TEST_F(Tablet, KeepsTheAlignment) {
    static int written;
    written = 0;
    TheTabletSlots.WriteDefaults = [] { ++written; };
    Digitise(0);
    InTablet("button \"Align drawing\"\npuck 0 1 2\npuck 1 11 12\npuck 2 3 4\npuck 3 13 14\npuck 0 5 6\npuck 0 7 8\n"
             "puck 0 99 99\nbutton \"Around Y  (left to right)\"\n");
    EXPECT_EQ((std::array{AlignAX1, AlignAY2, AlignBX1, AlignBY2, AlignCX1, AlignCY2}),
              (std::array{1, 12, 3, 14, 5, 8}));
    EXPECT_EQ(TabletRotation, AroundY);
    EXPECT_EQ(written, 1);
    InTablet("button \"Cancel\"\n");
    EXPECT_EQ(TabletBase, nullptr);
    EXPECT_EQ(Vertices(), 0u);
}

} // namespace
