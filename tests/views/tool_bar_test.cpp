#include "views/tool_bar.h"

#include "gooey/button.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/program_windows.h"
#include "gooey/report.h"
#include "gooey/window_stack.h"
#include "platform/drawing.h"
#include "views/main_window.h"
#include "views/status_line.h"
#include "views/views_test.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::vector<int> Keys;

void NoteKey(View*, int character) {
    Keys.push_back(character);
}

void Choose() {
    BasicButtonChoice(NoteKey);
}

void ChooseAndClear() {
    Keys.push_back(ButtonChoice);
    ClearToolBar();
}

void Build() {
    AddText(8, -24, "A tool of some length:", 0);
}

class ToolBar : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        Keys.clear();
        SpecialEvent = HandleSpecialEvents;
        OpenMain(1);
    }

    static std::string Labels() {
        std::string labels;
        for (const GadgetView& gadget : GadgetsOf(MainWindow))
            labels += (labels.empty() ? "" : ",") + gadget.Description.Label;
        return labels;
    }

    // Clicks the middle of the N-th button.
    static void Press(std::size_t number) {
        const GadgetBox box = GadgetsOf(MainWindow)[number].Description.Box;
        Play("click left " + std::to_string(box.X + box.Width / 2) + " " + std::to_string(box.Y + box.Height / 2));
    }
};

TEST_F(ToolBar, HasTheButtonsOfItsKindAndPassesThemOn) {
    const std::string usual = Labels();

    const struct {
        void (*Generate)(void (*)(), void (*)());
        std::string Labels;
    } bars[] = {{GenerateToolBar, "Done,Cancel,Help"},
                {GenerateCancelToolBar, "Cancel,Help"},
                {GenerateDoneToolBar, "Done,Help"}};

    for (const auto& bar : bars) {
        bar.Generate(Build, Choose);
        EXPECT_EQ(Labels(), "A tool of some length:," + bar.Labels);
        ClearToolBar();
        EXPECT_EQ(ToolBarActive(), 1) << "until the event is dispatched";
        Settle();
        EXPECT_EQ(ToolBarActive(), 0);
        EXPECT_EQ(Labels(), usual);
    }
    GenerateToolBar(nullptr, Choose);
    Settle();
    for (const std::size_t button : {0, 1, 2})
        Press(button);
    EXPECT_EQ(Keys, (std::vector<int>{' ', 149, '?'}));
    DoToolClear();
}

TEST_F(ToolBar, TheButtonsStayRightOfTheToolsOwnGadgets) {
    for (const int width : {900, 750, 480, 470, 460, 450, 225}) {
        Play("resize " + std::to_string(width) + " 600");
        GenerateToolBar(Build, Choose);
        Settle();
        const auto gadgets = GadgetsOf(MainWindow);
        const GadgetBox text = gadgets[0].Description.Box, done = gadgets[1].Description.Box;
        EXPECT_GE(done.X, text.X + text.Width + 16) << width;
        const GadgetBox help = gadgets[3].Description.Box;
        if (width > 225) {
            EXPECT_LE(help.X + help.Width, MainWindow->Width - 8) << width;
            EXPECT_GE(help.X + help.Width, MainWindow->Width - 60) << width;
        }
        DoToolClear();
    }
}

TEST_F(ToolBar, TheButtonsFollowTheWindowsWidth) {
    Play("resize 900 660");
    GenerateToolBar(Build, Choose);
    for (const int width : {900, 480, 450, 225, 450, 480, 900}) {
        Play("resize " + std::to_string(width) + " " + std::to_string(width * 2 / 3 + 60));
        const auto shown = GadgetsOf(MainWindow);
        DoToolClear();
        GenerateToolBar(Build, Choose);
        Settle();
        const auto expected = GadgetsOf(MainWindow);
        ASSERT_EQ(shown.size(), expected.size());
        for (std::size_t i = 0; i < shown.size(); ++i) {
            EXPECT_EQ(shown[i].Description.Box.X, expected[i].Description.Box.X) << width;
            EXPECT_EQ(shown[i].Description.Box.Width, expected[i].Description.Box.Width) << width;
        }
    }
    DoToolClear();
}

TEST_F(ToolBar, ASecondOneIsRefused) {
    GenerateToolBar(Build, Choose);
    testing::internal::CaptureStderr();
    GenerateDoneToolBar(nullptr, Choose);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Toolbar already in use!\a\n");
    EXPECT_EQ(Labels(), "A tool of some length:,Done,Cancel,Help");
    DoToolClear();
}

// A tool that ends and the next one that starts at once, from a button of the bar itself.
TEST_F(ToolBar, TheNextToolGetsItsBarWhileTheLastOneGoes) {
    const std::string usual = Labels();
    GenerateToolBar(Build, [] {
        ChooseAndClear();
        GenerateDoneToolBar(nullptr, ChooseAndClear);
    });
    Settle();
    Press(1);
    EXPECT_EQ(Labels(), "Done,Help");
    Press(1);
    EXPECT_EQ(Labels(), usual);
    EXPECT_EQ(Keys, (std::vector<int>{0, 1}));
}

TEST_F(ToolBar, TheStatusLineSaysWhatTheToolSays) {
    static constexpr std::int16_t list[] = {79, 99, 0};
    StatusList = list;
    RefreshStatusLine();
    EXPECT_EQ(StatusText(), "<Left>=Select,  <?>=Help");
    GridStatus = "of the grid";
    RefreshStatusLine();
    EXPECT_EQ(StatusText(), "of the grid");
    BusyStatus();
    EXPECT_EQ(StatusText(), "Redraw...");
    MoveStatus = "moving";
    BusyStatus();
    EXPECT_EQ(StatusText(), "moving");
    Settle();
    EXPECT_EQ(StatusText(), "of the grid") << "it returns with the next redraw";
    NoteInputWindow(false);
    EXPECT_EQ(StatusText(), "");
    NoteInputWindow(true);
    MoveStatus = nullptr;
}

// The status line's last column, without its frame, that a letter reaches; the main window is current.
int EndOfStatus() {
    constexpr int frame = 2, lowest = 2, rows = 17;
    std::uint32_t column[rows];
    for (int x = CurrentWindow->Width - 1 - frame; x > frame; --x) {
        gl::lrectread(x, lowest, x, lowest + rows - 1, column);
        if (std::any_of(column, column + rows, [](std::uint32_t pixel) { return (pixel & White) != White; }))
            return x;
    }
    return 0;
}

// What is too long is drawn in narrower letters, and cut off at a word when that does not do.
TEST_F(ToolBar, HintsEndWithinTheStatusLine) {
    static constexpr std::int16_t hints[] = {81, 91, 98, 103, 100, 101, 99, 0};
    constexpr int inUsualLetters = 965, longestWord = 110;
    StatusList = hints;
    for (const int width : {1100, 980, 970, 960, 900, 750, 680, 600, 450, 300, 225}) {
        Play("resize " + std::to_string(width) + " " + std::to_string(width * 2 / 3 + 60));
        const WindowScope scope(MainWindow);
        DrawStatusLine();
        EXPECT_LT(EndOfStatus(), width - 6) << width;
        EXPECT_GT(EndOfStatus(), std::min(width - longestWord, inUsualLetters - 10)) << width;
    }
}

} // namespace
