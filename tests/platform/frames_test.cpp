// What the user does to windows through their frames.
#include "headless_screen.h"

#include "platform/screen_windows.h"
#include "platform/system.h"

using namespace gl;

namespace {

class Frames : public HeadlessScreen {
  protected:
    static int CountOf(int device, int value) {
        int count = 0;
        for (const QueueEvent& event : Events())
            count += event.Device == device && event.Value == value;
        return count;
    }
};

TEST_F(Frames, ATitleMovesItsWindowAndTheProgramSeesNoButton) {
    const int window = OpenAt("w", 100, 100, 200, 150);
    qdevice(LEFTMOUSE);
    Events();
    DragLeft(150, 260, 190, 230);
    EXPECT_EQ(WindowPlace(window), (WindowRectangle{140, 70, 200, 150}));
    for (const QueueEvent& event : Events())
        EXPECT_EQ(event.Device, INPUTCHANGE);
}

TEST_F(Frames, ATrembleOnTheTitleDoesNotMove) {
    const int window = OpenAt("w", 100, 100, 200, 150);
    DragLeft(150, 260, 152, 261);
    EXPECT_EQ(WindowPlace(window), (WindowRectangle{100, 100, 200, 150}));
}

TEST_F(Frames, EdgesAndCornersResizeAgainstTheOppositeOnes) {
    const WindowRectangle start{200, 200, 200, 150};
    const int right = 200 + 200 + 2, left = 200 - 3, bottom = 200 - 3, top = 200 + 150 + TitleHeight + 2;

    const struct {
        const char* Part;
        int X, Y, Dx, Dy;
        WindowRectangle Expected;
    } cases[] = {
        {"right", right, 270, 30, 50, {200, 200, 230, 150}},
        {"left", left, 270, -30, 50, {170, 200, 230, 150}},
        {"bottom", 300, bottom, 30, -20, {200, 180, 200, 170}},
        {"top", 300, top, 30, 20, {200, 200, 200, 170}},
        {"bottom right", right, bottom, 10, -20, {200, 180, 210, 170}},
        {"top left", left, top, -10, 20, {190, 200, 210, 170}},
        {"bottom left", left, bottom, 10, 20, {210, 220, 190, 130}},
        {"top right", right, top, -10, -20, {200, 200, 190, 130}},
    };

    for (const auto& test : cases) {
        const int window = OpenAt("w", start.X, start.Y, start.Width, start.Height);
        Events();
        DragLeft(test.X, test.Y, test.X + test.Dx, test.Y + test.Dy);
        EXPECT_EQ(WindowPlace(window), test.Expected) << test.Part;
        EXPECT_EQ(CountOf(REDRAW, window), 1) << test.Part << ": however often the pointer moved";
        winclose(window);
    }
}

TEST_F(Frames, RulesBindTheUser) {
    minsize(225, 150);
    keepaspect(3, 2);
    fudge(0, 60);
    prefposition(100, 399, 100, 359);
    const int window = winopen("w");
    winset(window);
    minsize(225, 150);
    keepaspect(3, 2);
    fudge(0, 60);
    winconstraints();
    EXPECT_EQ(WindowPlace(window).Height, 260) << "the rules do not change what the program chose";
    ResizeByFrame(window, 450, 100);
    EXPECT_EQ(WindowPlace(window), (WindowRectangle{100, 360 - 360, 450, 360})) << "the top-left corner stays";
    ResizeByFrame(window, 1, 1);
    EXPECT_EQ(WindowPlace(window).Width, 225);
    EXPECT_EQ(WindowPlace(window).Height, 210);
}

TEST_F(Frames, NewRulesOfAnOpenWindow) {
    const int window = OpenAt("w", 100, 100, 200, 200);
    Events();
    minsize(300, 100);
    winconstraints();
    EXPECT_EQ(WindowPlace(window), (WindowRectangle{100, 100, 300, 200})) << "a minimum lets it grow";
    prefposition(50, 489, 60, 134);
    winconstraints();
    EXPECT_EQ(WindowPlace(window), (WindowRectangle{50, 60, 440, 75})) << "a place takes effect";
    prefsize(120, 80);
    winconstraints();
    EXPECT_EQ(WindowPlace(window), (WindowRectangle{50, 55, 120, 80})) << "former rules are dropped";
}

TEST_F(Frames, TheFrameRaisesAndTheContentDoesNot) {
    const int below = OpenAt("below", 100, 100, 200, 200);
    const int above = OpenAt("above", 200, 150, 200, 200);
    qdevice(LEFTMOUSE);
    Click(LEFTMOUSE, 120, 120);
    EXPECT_EQ(WindowAt(250, 200), above);
    Click(LEFTMOUSE, 120, 310);
    EXPECT_EQ(WindowAt(250, 200), below);
    winset(below);
    winpush();
    EXPECT_EQ(WindowAt(250, 200), above);
}

TEST_F(Frames, TheCloseBoxAsksAndOnlyWhenReleasedOnIt) {
    const int window = OpenAt("w", 100, 100, 200, 200);
    qdevice(WINSHUT);
    qdevice(WINQUIT);
    const WindowRectangle box = CloseBoxRectangle(WindowPlace(window));
    const int x = box.X + box.Width / 2, y = box.Y + box.Height / 2;
    DragLeft(x, y, x, y - 100);
    EXPECT_EQ(CountOf(WINSHUT, window), 0);
    DragLeft(x, y, x + 1, y);
    EXPECT_EQ(CountOf(WINSHUT, window), 1);
    EXPECT_TRUE(WindowIsOpen(window)) << "closing is the program's business";
    QuitRequested();
    EXPECT_EQ(CountOf(WINQUIT, window), 1);
}

TEST_F(Frames, ADoubleClickOnTheTitleFitsTheWindowAndTakesItBack) {
    minsize(100, 100);
    keepaspect(1, 1);
    prefposition(100, 299, 100, 299);
    const int window = winopen("w");
    const WindowRectangle before = WindowPlace(window);
    Click(LEFTMOUSE, 150, 310);
    sginap(60);
    Click(LEFTMOUSE, 150, 310);
    EXPECT_EQ(WindowPlace(window), before) << "too slow";
    Click(LEFTMOUSE, 150, 310);
    const WindowRectangle fitted = WindowPlace(window);
    EXPECT_EQ(fitted.Height, 600 - 2 * FrameBorder - TitleHeight);
    EXPECT_EQ(fitted.Width, fitted.Height) << "within its own rules";
    EXPECT_EQ(OuterRectangle(fitted).Y, 0);
    sginap(60);
    const int title = fitted.Y + fitted.Height + 10;
    Click(LEFTMOUSE, fitted.X + 50, title);
    Click(LEFTMOUSE, fitted.X + 50, title);
    EXPECT_EQ(WindowPlace(window), before);
}

TEST_F(Frames, NoTitleLeavesTheScreen) {
    const struct {
        int X, Y;
    } places[] = {{-5000, 100}, {5000, 100}, {100, -5000}, {100, 5000}, {-5000, -5000}, {5000, 5000}};

    const int window = OpenAt("w", 100, 100, 200, 200);
    for (const auto& place : places) {
        MoveByFrame(window, place.X, place.Y);
        const WindowRectangle title = TitleRectangle(WindowPlace(window));
        EXPECT_GE(title.Y, 0);
        EXPECT_LE(title.Y + title.Height, 600);
        EXPECT_GE(title.X + title.Width, 64);
        EXPECT_LE(title.X, 800 - 64);
    }
    ResizeByFrame(window, 10'000, 10'000);
    MoveByFrame(window, 0, 5000);
    const WindowRectangle title = TitleRectangle(WindowPlace(window));
    EXPECT_LE(title.Y + title.Height, 600) << "a window higher than the screen";
    prefposition(0, 9, -4000, -3900);
    const int lost = winopen("placed away");
    EXPECT_GE(TitleRectangle(WindowPlace(lost)).Y, 0);
}

TEST_F(Frames, AShrinkingScreenBringsWindowsBackUntilItGrowsAgain) {
    const int corner = OpenAt("in the corner", 550, 20, 200, 200);
    const int middle = OpenAt("in the middle", 100, 300, 200, 200);
    const int hanging = OpenAt("half out at the left", -100, 300, 200, 200);
    const WindowRectangle before = WindowPlace(corner);
    std::string error;
    ASSERT_TRUE(AdoptScreenPixels(400, 500, error)) << error;
    EXPECT_EQ(WindowPlace(corner), (WindowRectangle{400 - 200 - FrameBorder, FrameBorder, 200, 200}));
    EXPECT_EQ(WindowPlace(middle), (WindowRectangle{100, 200, 200, 200})) << "it keeps its distance from the top";
    EXPECT_EQ(WindowPlace(hanging).X, -100);
    ASSERT_TRUE(AdoptScreenPixels(400, 100, error)) << error;
    for (int window : {corner, middle, hanging}) {
        const WindowRectangle title = TitleRectangle(WindowPlace(window));
        EXPECT_GE(title.Y, 0);
        EXPECT_LE(title.Y + title.Height, 100);
    }
    ASSERT_TRUE(AdoptScreenPixels(800, 600, error)) << error;
    EXPECT_EQ(WindowPlace(corner), before);
    EXPECT_EQ(WindowPlace(middle), (WindowRectangle{100, 300, 200, 200}));
}

TEST_F(Frames, AFittedWindowFollowsTheScreenUntilItIsPlacedElsewhere) {
    const int window = OpenAt("w", 100, 100, 200, 200);
    const WindowRectangle before = WindowPlace(window);
    WindowRectangle back;
    EXPECT_FALSE(PlaceBeforeFit(window, back));
    ToggleFit(window);
    std::string error;
    ASSERT_TRUE(AdoptScreenPixels(500, 400, error)) << error;
    const WindowRectangle fitted{FrameBorder, FrameBorder, 500 - 2 * FrameBorder, 400 - 2 * FrameBorder - TitleHeight};
    EXPECT_EQ(WindowPlace(window), fitted);
    ASSERT_TRUE(PlaceBeforeFit(window, back));
    EXPECT_EQ(back, (WindowRectangle{before.X, before.Y - 200, before.Width, before.Height}));
    winset(window);
    winposition(10, 109, 10, 109);
    EXPECT_FALSE(PlaceBeforeFit(window, back));
    ASSERT_TRUE(AdoptScreenPixels(800, 600, error)) << error;
    EXPECT_EQ(WindowPlace(window), (WindowRectangle{10, 210, 100, 100}));
}

TEST_F(Frames, AWindowThatFillsTheScreenLeavesItsAspect) {
    const int window = OpenAt("w", 100, 100, 200, 200);
    winset(window);
    keepaspect(1, 1);
    winconstraints();
    ToggleFit(window);
    EXPECT_EQ(WindowPlace(window).Width, WindowPlace(window).Height);
    ToggleFit(window);
    FillWhenFitted(window, true);
    ToggleFit(window);
    std::string error;
    ASSERT_TRUE(AdoptScreenPixels(500, 400, error)) << error;
    EXPECT_EQ(WindowPlace(window),
              (WindowRectangle{FrameBorder, FrameBorder, 500 - 2 * FrameBorder, 400 - 2 * FrameBorder - TitleHeight}));
    ToggleFit(window);
    EXPECT_EQ(WindowPlace(window).Width, 200);
}

TEST_F(Frames, NewWindowsAvoidTheOthersAndStayOnTheScreen) {
    std::vector<WindowRectangle> outers;
    for (int i = 0; i < 4; i++) {
        prefsize(300, 200);
        outers.push_back(OuterRectangle(WindowPlace(winopen("w"))));
        EXPECT_GE(outers.back().X, 0);
        EXPECT_LE(outers.back().X + outers.back().Width, 800);
        EXPECT_GE(outers.back().Y, 0);
        EXPECT_LE(outers.back().Y + outers.back().Height, 600);
    }
    EXPECT_FALSE(outers[0] == outers[1]);
    prefsize(900, 700);
    const WindowRectangle large = WindowPlace(winopen("larger than the screen"));
    EXPECT_EQ(OuterRectangle(large).X, 0);
    EXPECT_EQ(OuterRectangle(large).Y + OuterRectangle(large).Height, 600);
}

TEST_F(Frames, WindowsAreFoundByTitle) {
    const int main = OpenAt("Kirvo", 0, 0, 100, 100);
    const int grid = OpenAt(" Grid control", 0, 0, 100, 100);
    const int view = OpenSubwindow(main, 0, 0, 50, 50);
    wintitle(" Subview 0");
    const int newer = OpenAt("Grid control of another", 0, 0, 100, 100);
    EXPECT_EQ(FindWindowByTitle("Grid control"), grid) << "the whole title first";
    EXPECT_EQ(FindWindowByTitle("Grid"), newer) << "then the newest that begins so";
    EXPECT_EQ(FindWindowByTitle("Subview 0"), view);
    EXPECT_EQ(FindWindowByTitle("nothing"), 0);
    winset(grid);
    wintitle("Another title");
    EXPECT_EQ(FindWindowByTitle("Grid control"), grid) << "then the one that opened so";
    EXPECT_EQ(WindowParent(view), main);
    winclose(main);
    EXPECT_FALSE(WindowIsOpen(view)) << "subwindows go with their parent";
}

TEST_F(Frames, SubwindowsMoveWithTheirParent) {
    const int parent = OpenAt("w", 100, 100, 300, 200);
    const int child = OpenSubwindow(parent, 10, 20, 100, 50);
    EXPECT_EQ(WindowPlace(child), (WindowRectangle{110, 120, 100, 50}));
    MoveByFrame(parent, 150, 130);
    EXPECT_EQ(WindowPlace(child), (WindowRectangle{160, 150, 100, 50}));
    winset(child);
    Events();
    winposition(0, 99, 0, 49);
    EXPECT_EQ(CountOf(REDRAW, child), 0) << "only moved";
    winposition(0, 119, 0, 49);
    EXPECT_EQ(CountOf(REDRAW, child), 1);
    int x = 0, y = 0;
    getorigin(&x, &y);
    EXPECT_EQ(x, 150);
    EXPECT_EQ(y, 130);
}

} // namespace
