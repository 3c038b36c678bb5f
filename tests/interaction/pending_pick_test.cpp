#include "interaction/pending_pick.h"

#include "interaction/views_test.h"

#include "gooey/event_loop.h"
#include "gooey/message_table.h"
#include "views/display_flags.h"
#include "views/status_line.h"

#include <cmath>

namespace {

constexpr std::int16_t First[] = {31, 0}, Second[] = {32, 0}, OfGridStatus[] = {27, 0};

std::vector<double> Taken;
int Ended;
double Points[1][3];
int PointCount;

PickAnswer TakeX(const Picked& picked) {
    // A vertex left of the middle is of no use.
    if (picked.Point[0] < 0)
        return PickAnswer::Refused;
    Taken.push_back(picked.Point[0]);
    return PickAnswer::Taken;
}

constexpr auto CountEnd = [] { ++Ended; };

Window* Asker;

const PendingPick TwoVertices = {.Wanted = 2,
                                 .Points = Points,
                                 .Count = &PointCount,
                                 .Take = TakeX,
                                 .Status = {First, Second},
                                 .Disables = &Asker,
                                 .EscapeTakesBack = true,
                                 .Ended = CountEnd};
const PendingPick ForGrid = {.Take = TakeX, .Status = {OfGridStatus}, .OfGrid = true, .Ended = CountEnd};

const Tool ToolThatAsks = {.Left = [](View*) { Taken.push_back(-100); }, .Status = OfGridStatus};

class PendingPicks : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        KeysOverDisabled = ViewportOfPick;
        Taken.clear();
        Ended = 0;
        for (const double x : {-5, 1, 2})
            AddVertex(x, 0, 0);
        Show(0);
        Asker = Open("Asker", 600, 400, 100, 60);
        Settle();
    }

    void TearDown() override {
        EndPick(ForGrid);
        KeysOverDisabled = nullptr;
        ViewsTest::TearDown();
    }

    static std::string ClickX(double x) {
        const double pixels = Shown().Projection[0][0] * Width() / 2.0 * Shown().Zoom;
        return "click left" + At(static_cast<int>(std::lround(Width() / 2.0 + x * pixels)), Height() / 2) + "\n";
    }
};

TEST_F(PendingPicks, TakeOneVertexAfterTheOtherAndGiveAllBack) {
    BeginTool(ToolThatAsks);
    ShowVertices = 0;
    BeginPick(TwoVertices);
    EXPECT_TRUE(ShowVertices);
    EXPECT_EQ(Asker->Disabled, 1);
    // Nothing there, and a vertex that is refused: it waits on.
    InView(ClickX(6) + ClickX(-5));
    EXPECT_EQ(PointCount, 0);
    EXPECT_EQ(StatusText(), msg(31));
    InView(ClickX(1));
    EXPECT_EQ(PointCount, 1);
    EXPECT_NEAR(Points[0][0], 1, 1e-9);
    EXPECT_EQ(StatusText(), msg(32));
    InView(ClickX(2) + ClickX(2));
    EXPECT_EQ(Taken, (std::vector<double>{1, 2, -100}));
    EXPECT_EQ(Ended, 1);
    EXPECT_FALSE(ShowVertices || PickWaits(TwoVertices) || Asker->Disabled);
    EXPECT_EQ(StatusText(), msg(27));
}

TEST_F(PendingPicks, EscapeTakesBackAndThenGivesUpFromTheAskersWindowToo) {
    BeginTool(ToolThatAsks);
    BeginPick(TwoVertices);
    InView(ClickX(1) + "key Escape");
    EXPECT_TRUE(PickWaits(TwoVertices));
    EXPECT_EQ(PointCount, 0);
    Play("in \"Asker\"\nmove 20 20\nkey Escape");
    EXPECT_FALSE(PickWaits(TwoVertices) || Asker->Disabled);
    EXPECT_TRUE(ToolRuns(ToolThatAsks));

    // The end of the tool is that of its pick; one of the grid goes on.
    BeginPick(TwoVertices);
    BeginPick(ForGrid);
    InView(ClickX(2));
    EXPECT_EQ(Taken.back(), 2);
    EXPECT_EQ(Ended, 2);
    BeginPick(ForGrid);
    ClearControl();
    EXPECT_FALSE(PickWaits(TwoVertices) || Asker->Disabled || LeftClickFunc || KeyCheckFunc);
    EXPECT_TRUE(PickWaits(ForGrid) && ShowVertices);
    InView("key Escape");
    EXPECT_FALSE(SystemBusy() || ShowVertices);
}

} // namespace
