#include "gooey/toolkit_test.h"

#include "gooey/drag.h"
#include "gooey/event_loop.h"
#include "gooey/numeric_panel.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/tool_window.h"
#include "gooey/window_stack.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

Window* Side;
int SideOpened, SideX, SideY, SideW, SideH, SideEnabled = 1, SideOpen;
std::string Heard;

// ---- What the window does with a press and with numbers

struct {
    int Steps, Shows;
    int FromX, Value;
    bool Committed;
} Dragged;

class ValueDrag : public Drag {
  public:
    ValueDrag() { Dragged = {0, 0, MouseX, 0, false}; }

  protected:
    bool Step() override {
        ++Dragged.Steps;
        const int value = (MouseX - Dragged.FromX) / 10;
        const bool changed = value != Dragged.Value;
        Dragged.Value = value;
        return changed;
    }

    void Show() override { ++Dragged.Shows; }

    bool Cancel() override {
        Dragged.Value = 0;
        return true;
    }

    void Commit() override { Dragged.Committed = true; }
};

double Numbers[3];
NumericFields Fields;

const char* NumberText(int number) {
    static char text[NumberTextSize];
    std::snprintf(text, sizeof text, "%g", Numbers[number]);
    return text;
}

bool TakeUnlessZero(int number, double value) {
    if (value == 0)
        return false;
    Numbers[number] = value;
    return true;
}

constexpr NumberInput Inputs[] = {
    {.X = 10, .Y = 100, .Width = 120, .Label = "A:"},
    {.X = 10, .Y = 60, .Width = 120, .Label = "B:"},
    {.X = 10, .Y = 20, .Width = 120, .Label = "C:"},
};
const NumericPanel Panel = {.Inputs = Inputs, .Text = NumberText, .Apply = TakeUnlessZero};

const ToolWindow SideTool = {
    .Title = "Side",
    .Handle = &Side,
    .Width = 300,
    .Height = 150,
    .Rules = {.LeastWidth = 200, .LeastHeight = 100},
    .Place = {.Opened = &SideOpened, .X = &SideX, .Y = &SideY, .Width = &SideW, .Height = &SideH},
    .DisablesMain = true,
    .DisabledByTools = true,
    .Enabled = &SideEnabled,
    .OpenAtStart = &SideOpen,
    .Build = [] { AddNumericPanel(Panel, Fields); },
    .Event =
        [](int device, short value) {
            if (device == gl::LEFTMOUSE && value)
                ValueDrag().Run();
        },
    .Close = [] { Heard += Side ? "close " : "forgotten "; },
    .Closed = [] { Heard += Side ? "known " : "closed "; },
};

class ToolWindowTest : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Heard.clear();
        SideOpened = SideOpen = 0;
        SideEnabled = 1;
        Numbers[0] = 1, Numbers[1] = 2, Numbers[2] = 3;
        MainWindow = Open("Main", 0, 0, 500, 400);
        RegisterToolWindow(SideTool);
        Settle();
    }

    void TearDown() override {
        ToolkitTest::TearDown();
        MainWindow = nullptr;
    }

    static void OpenSide() {
        OpenToolWindow(SideTool);
        Settle();
    }
};

TEST_F(ToolWindowTest, ComesBackWhereItWasWithinTheScreen) {
    OpenSide();
    EXPECT_EQ(Side->Width, 300);
    EXPECT_EQ(MainWindow->Disabled, 1);
    Window* const first = Side;
    OpenSide();
    EXPECT_EQ(Side, first);
    Play("in Side\nplace 120 220\nresize 400 250\nclose");
    EXPECT_EQ(Heard, "close closed ");
    EXPECT_EQ(Side, nullptr);
    EXPECT_EQ(MainWindow->Disabled, 0);
    OpenSide();
    EXPECT_EQ(std::vector({Side->X, Side->Y, Side->Width, Side->Height}), std::vector({SideX, SideY, 400, 250}));
    EXPECT_EQ(SideX, 120);
    CloseToolWindow(SideTool);
    Settle();
    SideX = SideY = 5000;
    OpenSide();
    EXPECT_LE(Side->X + Side->Width, hres + 1);
    EXPECT_LE(Side->Y + Side->Height, vres + 1);
}

TEST_F(ToolWindowTest, ToolsDisableItOpenOrNot) {
    DisableToolWindows();
    EXPECT_EQ(OpenToolWindow(SideTool), nullptr);
    EXPECT_EQ(MainWindow->Disabled, 0);
    EnableToolWindows();
    OpenSide();
    DisableToolWindows();
    EXPECT_TRUE(Side->Disabled);
    EnableToolWindows();
    EXPECT_FALSE(Side->Disabled);
}

TEST_F(ToolWindowTest, OpensAgainIfItWasOpenAtTheEnd) {
    OpenUserWindows();
    EXPECT_EQ(Side, nullptr);
    OpenSide();
    NoteOpenToolWindows();
    CloseToolWindow(SideTool);
    Settle();
    OpenUserWindows();
    EXPECT_NE(Side, nullptr);
}

TEST_F(ToolWindowTest, DragsDoNothingWhileNothingChangesAndEscapeTakesThemBack) {
    OpenSide();
    Play("in Side\nmove 200 80\npress left\nwait 50\nmove 230 80\nwait 50\nmove 231 80\nwait 50\nmove 250 80\n"
         "release left");
    // At the press, at each of three moves, and at the release.
    EXPECT_LE(Dragged.Steps, 6);
    EXPECT_GE(Dragged.Shows, 1);
    EXPECT_LE(Dragged.Shows, 2);
    EXPECT_EQ(Dragged.Value, 5);
    EXPECT_TRUE(Dragged.Committed);
    Play("in Side\nmove 200 80\npress left\nmove 250 80\nwait 5\nkey Escape\nrelease left");
    EXPECT_EQ(Dragged.Value, 0);
    EXPECT_FALSE(Dragged.Committed);
}

TEST_F(ToolWindowTest, NumbersAreTakenByReturnAndArrows) {
    OpenSide();
    Play("in Side\nfield \"A:\" 1.5");
    EXPECT_EQ(Numbers[0], 1.5);
    EXPECT_EQ(ActiveNumber(Fields), 1);
    Play("key Ctrl+A\ntype 7\nkey Down");
    EXPECT_EQ(Numbers[1], 7);
    EXPECT_EQ(ActiveNumber(Fields), 2);
    Play("key Up");
    EXPECT_EQ(ActiveNumber(Fields), 1);
    // Refused: the number stays active, and as it was.
    Play("key Ctrl+A\ntype 0\nkey Return");
    EXPECT_EQ(Numbers[1], 7);
    EXPECT_EQ(ActiveNumber(Fields), 1);
    // Unreadable: what holds is shown again.
    Play("key Ctrl+A\ntype -\nkey Return");
    EXPECT_STREQ(Fields.Texts[1], "7");
    EXPECT_EQ(Numbers[1], 7);
}

TEST(ReadNumber, TakesFiniteNumbersInAnyNotation) {
    const struct {
        const char* Text;
        bool Reads;
        double Value;
    } cases[] = {{"1e3", true, 1000}, {" -2.5 ", true, -2.5}, {".5", true, 0.5}, {"", false, 0},
                 {"1.2.3", false, 0}, {"nan", false, 0},      {"inf", false, 0}, {"1e999", false, 0}};

    for (const auto& test : cases) {
        double value = 0;
        EXPECT_EQ(ReadNumber(test.Text, value), test.Reads) << test.Text;
        EXPECT_EQ(test.Reads ? value : 0, test.Value) << test.Text;
    }
}

} // namespace
