#include "gooey/toolkit_test.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/list_rows.h"
#include "gooey/scroll_window.h"

#include "platform/events.h"

#include <algorithm>

using namespace std::string_literals;

namespace {

struct DrawnPart {
    int X, Y, Width, Height, HOffset, VOffset;
};

DrawnPart Drawn;
int Configured;

void NoteDraw(int x, int y, int width, int height, int hOffset, int vOffset) {
    Drawn = {x, y, width, height, hOffset, vOffset};
    DrawBox(x, y, width, height, ShadeLowered);
}

} // namespace

class Lists : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Configured = 0;
    }

    /// A scroll window in the bottom-left corner of a window.
    static Gadget* Add(int flags, int contentW, int contentH, int windowFlags = WindowDoubleBuffered) {
        Open("Lists", 100, 100, 300, 300, windowFlags);
        Gadget* gadget = AddScrollWindow({.X = 0,
                                          .Y = 0,
                                          .Width = 228,
                                          .Height = 228,
                                          .Flags = flags,
                                          .ContentWidth = contentW,
                                          .ContentHeight = contentH,
                                          .StepX = 10,
                                          .StepY = 20,
                                          .Configure = [](Gadget*) { ++Configured; },
                                          .Draw = NoteDraw});
        Settle();
        return gadget;
    }
};

TEST_F(Lists, ThumbsShowHowMuchIsVisible) {
    struct Case {
        int Visible, Content, Thumb;
        bool Needed;
    };

    constexpr Case cases[] = {
        {200, 1000, 32, true}, {45, 1000, 10, true},   {200, 0, 200, false},        {200, 200, 160, false},
        {200, 201, 159, true}, {200, 100, 320, false}, {200, 2000000000, 10, true},
    };
    for (const Case& test : cases) {
        int thumb = 0;
        EXPECT_EQ(ScrollSizeCalc(test.Visible, test.Content, thumb), test.Needed) << test.Content;
        EXPECT_EQ(thumb, test.Thumb) << test.Content;
    }
}

TEST_F(Lists, GeometryFollowsTheFlags) {
    const ScrollWindow& both = ScrollOf(Add(ScrollHorizontal | ScrollVertical | ScrollBorder, 1000, 1000));
    EXPECT_EQ(both.InnerX, 4);
    EXPECT_EQ(both.InnerY, 24);
    EXPECT_EQ(both.InnerW, 200);
    EXPECT_EQ(both.InnerH, 200);
    EXPECT_EQ(both.HBarX, 4);
    EXPECT_EQ(both.HBarY, 4);
    EXPECT_EQ(both.VBarX, 204);
    EXPECT_EQ(both.VBarY, 24);
    EXPECT_EQ(both.HThumb, 32);
    EXPECT_EQ(Drawn.Width, 200);
    EXPECT_GT(Configured, 0);
    CloseAllWindows();
    const ScrollWindow& none = ScrollOf(Add(0, 1000, 1000));
    EXPECT_EQ(none.InnerX, 0);
    EXPECT_EQ(none.InnerW, 228);
    EXPECT_EQ(none.InnerH, 228);
}

TEST_F(Lists, ConfiguringKeepsTheOffsetWhereItCan) {
    Gadget* gadget = Add(ScrollVertical, 0, 1000);
    ScrollWindow& s = ScrollOf(gadget);
    ScrollYTo(gadget, 400);
    EXPECT_EQ(s.VOffset, 400);
    EXPECT_EQ(s.VThumbPos, 400 * (228 - s.VThumb - 40) / (1000 - 228));
    ConfigureScroll(gadget, -1, -1, 228, 228, 0, 500);
    EXPECT_EQ(s.VOffset, 500 - 228);
    EXPECT_EQ(s.VThumbPos, 228 - s.VThumb - 40);
    ConfigureScroll(gadget, 10, -1, 228, 228, 0, 228);
    EXPECT_EQ(s.VOffset, 0);
    EXPECT_EQ(s.VNeeded, 0);
    EXPECT_EQ(s.X, 10);
    EXPECT_EQ(s.Y, 0);
}

TEST_F(Lists, ArrowsStepWithinTheContent) {
    Gadget* gadget = Add(ScrollHorizontal | ScrollVertical | ScrollBorder | ScrollNoAutoRepeat, 225, 1000);
    const ScrollWindow& s = ScrollOf(gadget);
    Play("in Lists\nclick left 214 30"); // bottom
    EXPECT_EQ(s.VOffset, 20);
    EXPECT_EQ(Drawn.VOffset, 20);
    Play("click left 214 215"); // top
    EXPECT_EQ(s.VOffset, 0);
    Play("click left 214 215");
    EXPECT_EQ(s.VOffset, 0);
    Play("click left 195 14\nclick left 195 14\nclick left 195 14"); // right
    EXPECT_EQ(s.HOffset, 25);
    Play("click left 12 14"); // left
    EXPECT_EQ(s.HOffset, 15);
    EXPECT_EQ(Drawn.HOffset, 15);
}

TEST_F(Lists, HeldArrowsRepeatAtEveryRetrace) {
    const ScrollWindow& s = ScrollOf(Add(ScrollVertical, 0, 100000));
    Play("in Lists\nmove 218 10\npress left\nwait 50\nrelease left");
    EXPECT_NEAR(s.VOffset, 30 * 20, 6 * 20);
    EXPECT_EQ(s.BottomPressed, 0);
}

TEST_F(Lists, TheThumbFollowsThePointer) {
    const ScrollWindow& s = ScrollOf(Add(ScrollVertical, 0, 1000));
    int travel = 228 - s.VThumb - 40;
    // Taken anywhere, it moves as far as the pointer does.
    Play("in Lists\ndrag left 218 200 218 170");
    EXPECT_NEAR(s.VThumbPos, 30, 1);
    EXPECT_EQ(s.VOffset, s.VThumbPos * (1000 - 228) / travel);
    Play("drag left 218 165 218 0");
    EXPECT_EQ(s.VOffset, 1000 - 228);
    // A press beside it takes its middle there.
    Play("click left 218 114");
    EXPECT_NEAR(s.VThumbPos + s.VThumb / 2, 94, 1);
}

TEST_F(Lists, ABarThatIsNotNeededIgnoresClicks) {
    const ScrollWindow& s = ScrollOf(Add(ScrollHorizontal | ScrollVertical, 100, 100));
    Events.clear();
    Play("in Lists\nclick left 218 30\nclick left 218 114\nclick left 100 10\nclick left 100 100");
    EXPECT_EQ(s.VOffset, 0);
    EXPECT_EQ(std::count_if(Events.begin(), Events.end(), [](const SeenEvent& e) { return e.Device == gl::LEFTMOUSE; }),
              8);
}

TEST_F(Lists, ClicksOnTheContentGoToTheWindow) {
    Add(ScrollVertical, 0, 1000);
    Events.clear();
    Play("in Lists\nclick left 100 100");
    EXPECT_EQ(Events.size(), 2u);
}

TEST_F(Lists, TheWheelScrollsWhatIsUnderThePointer) {
    const ScrollWindow& s = ScrollOf(Add(ScrollHorizontal | ScrollVertical, 1000, 1000));
    Play("in Lists\nwheel 100 100 -1");
    EXPECT_EQ(s.VOffset, 60);
    Play("wheel 100 100 2");
    EXPECT_EQ(s.VOffset, 0);
    Play("wheel 100 100 0 1");
    EXPECT_EQ(s.HOffset, 60);
    Play("wheel 280 280 -1");
    EXPECT_EQ(s.VOffset, 0);
}

TEST_F(Lists, OneBufferShowsTheSameSteps) {
    const ScrollWindow& s = ScrollOf(Add(ScrollVertical | ScrollNoAutoRepeat, 0, 1000, 0));
    Play("in Lists\nclick left 218 10");
    EXPECT_EQ(s.VOffset, 20);
    EXPECT_EQ(Drawn.VOffset, 20);
}

TEST_F(Lists, RowsThatShowAreFoundFromTheOffset) {
    Gadget* gadget = Add(ScrollVertical, 0, 100000 * 19);
    EXPECT_EQ(VisibleRows(gadget, 19, 100000).Last, 12);
    ScrollYTo(gadget, 19 * 5000 + 1);
    RowRange rows = VisibleRows(gadget, 19, 100000);
    EXPECT_EQ(rows.First, 5000);
    EXPECT_EQ(rows.Last, 5013);
    EXPECT_EQ(VisibleRows(gadget, 19, 5005).Last, 5005);
    ShowRow(gadget, 19, 6000);
    EXPECT_EQ(ScrollOf(gadget).VOffset, 6001 * 19 - 228);
    ShowRow(gadget, 19, 3);
    EXPECT_EQ(ScrollOf(gadget).VOffset, 3 * 19);
}

TEST_F(Lists, KeysMoveASelection) {
    struct Case {
        int Key, From, To;
    };

    constexpr Case cases[] = {
        {DownCharacter, -1, 0},     {UpCharacter, -1, 19},       {DownCharacter, 4, 5}, {UpCharacter, 0, 0},
        {PageDownCharacter, 4, 14}, {PageUpCharacter, 4, 0},     {EndCharacter, 4, 19}, {HomeCharacter, 4, 0},
        {DownCharacter, 19, 19},    {PageDownCharacter, 15, 19},
    };
    for (const Case& test : cases) {
        int row = test.From;
        EXPECT_EQ(MoveRowByKey(test.Key, 10, 20, row), 1);
        EXPECT_EQ(row, test.To) << test.Key << " from " << test.From;
    }
    int row = 3;
    EXPECT_EQ(MoveRowByKey('x', 10, 20, row), 0);
    EXPECT_EQ(MoveRowByKey(DownCharacter, 10, 0, row), 1);
    EXPECT_EQ(row, -1);
}
