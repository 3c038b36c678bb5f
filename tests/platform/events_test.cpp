#include "headless_screen.h"

#include <map>
#include <random>

using namespace gl;

namespace {

class Queue : public HeadlessScreen {};

TEST_F(Queue, KeepsTheOrderAndTiesThePointerToButtons) {
    const int window = OpenAt("w", 100, 100, 200, 200);
    qdevice(LEFTMOUSE);
    qdevice(RIGHTMOUSE);
    qdevice(KEYBD);
    tie(LEFTMOUSE, MOUSEX, MOUSEY);
    PointerMoved(150, 160);
    ButtonChanged(LEFTMOUSE, true);
    CharacterTyped('a');
    PointerMoved(151, 170);
    ButtonChanged(LEFTMOUSE, false);
    ButtonChanged(RIGHTMOUSE, true);
    ButtonChanged(MIDDLEMOUSE, true);
    const std::vector<QueueEvent> expected{{INPUTCHANGE, static_cast<std::int16_t>(window)},
                                           {LEFTMOUSE, 1},
                                           {MOUSEX, 150},
                                           {MOUSEY, 160},
                                           {KEYBD, 'a'},
                                           {LEFTMOUSE, 0},
                                           {MOUSEX, 151},
                                           {MOUSEY, 170},
                                           {RIGHTMOUSE, 1}};
    EXPECT_EQ(Events(), expected) << "the right button is not tied, the middle one not queued";
}

TEST_F(Queue, QueuedValuatorsGiveEventsOfTheirOwnUntilTheyAreUnqueued) {
    OpenAt("w", 0, 0, 400, 400);
    Events();
    qdevice(MOUSEX);
    qdevice(MOUSEY);
    PointerMoved(10, 20);
    PointerMoved(10, 21);
    PointerMoved(10, 21);
    const std::vector<QueueEvent> moves{{MOUSEX, 10}, {MOUSEY, 20}, {MOUSEY, 21}};
    const std::vector<QueueEvent> events = Events();
    EXPECT_EQ(std::vector<QueueEvent>(events.end() - 3, events.end()), moves);
    unqdevice(MOUSEX);
    unqdevice(MOUSEY);
    PointerMoved(30, 30);
    EXPECT_TRUE(Events().empty());
    EXPECT_EQ(getvaluator(MOUSEX), 30);
}

TEST_F(Queue, EnteredEventsGoToTheEnd) {
    qdevice(KEYBD);
    CharacterTyped('x');
    qenter(16384, -3);
    const std::vector<QueueEvent> expected{{KEYBD, 'x'}, {16384, -3}};
    EXPECT_EQ(Events(), expected);
    short value = 9;
    EXPECT_EQ(qread(&value), 0) << "nothing can ever come here";
}

TEST_F(Queue, HoldsManyEvents) {
    qdevice(KEYBD);
    for (int i = 0; i < 100'000; i++)
        CharacterTyped(static_cast<char32_t>(1 + i % 127));
    const std::vector<QueueEvent> events = Events();
    ASSERT_EQ(events.size(), 100'000U);
    for (int i = 0; i < 100'000; i += 997)
        EXPECT_EQ(events[static_cast<std::size_t>(i)].Value, 1 + i % 127);
}

TEST_F(Queue, CharactersBeyondAsciiComeAsTheirOwnDevice) {
    qdevice(KEYBD);
    qdevice(KEYBDTEXT);
    CharacterTyped(U'\u00E9');
    CharacterTyped(U'\U0001F600');
    const std::vector<QueueEvent> expected{{KEYBDTEXT, 0xE9},
                                           {KEYBDTEXT, static_cast<std::int16_t>(0xD83D)},
                                           {KEYBDTEXT, static_cast<std::int16_t>(0xDE00)}};
    EXPECT_EQ(Events(), expected);
}

TEST_F(Queue, LosingTheKeyboardLetsGoOfEverything) {
    OpenAt("w", 100, 100, 200, 200);
    for (int device : {LEFTCTRLKEY, MIDDLEMOUSE, LEFTMOUSE})
        qdevice(device);
    PointerMoved(150, 150);
    KeyDeviceChanged(LEFTCTRLKEY, true);
    ButtonChanged(MIDDLEMOUSE, true);
    Events();
    InputLost();
    const std::vector<QueueEvent> expected{{LEFTCTRLKEY, 0}, {MIDDLEMOUSE, 0}};
    EXPECT_EQ(Events(), expected);
    EXPECT_EQ(getbutton(LEFTCTRLKEY), 0);
    ButtonChanged(MIDDLEMOUSE, false);
    KeyDeviceChanged(LEFTCTRLKEY, false);
    EXPECT_TRUE(Events().empty()) << "the real releases say nothing new";
}

TEST_F(Queue, TheWheelArrivesInPartsOfANotch) {
    OpenAt("w", 100, 100, 200, 200);
    PointerMoved(150, 150);
    Events();
    WheelTurned(WHEELY, WHEELNOTCH);
    EXPECT_TRUE(Events().empty()) << "nobody asked for it";
    qdevice(WHEELY);
    WheelTurned(WHEELY, -2 * WHEELNOTCH);
    WheelTurned(WHEELY, 15);
    const std::vector<QueueEvent> expected{{WHEELY, -2 * WHEELNOTCH}, {WHEELY, 15}};
    EXPECT_EQ(Events(), expected);
}

// ---- Which window has the input ----

class Focus : public HeadlessScreen {
  protected:
    static std::vector<int> Changes() {
        std::vector<int> windows;
        for (const QueueEvent& event : Events())
            if (event.Device == INPUTCHANGE)
                windows.push_back(event.Value);
        return windows;
    }
};

TEST_F(Focus, FollowsThePointerAcrossFramesAndSubwindows) {
    const int left = OpenAt("left", 50, 50, 200, 200);
    const int right = OpenAt("right", 400, 50, 200, 200);
    const int inner = OpenSubwindow(left, 20, 20, 100, 100);
    const int innermost = OpenSubwindow(inner, 50, 50, 100, 100);
    PointerMoved(10, 590);
    Changes();

    const struct {
        const char* Where;
        int X, Y;
        std::vector<int> Expected;
    } steps[] = {
        {"the title of the left window", 100, 260, {left}},
        {"its content", 60, 60, {}},
        {"its subwindow", 80, 80, {inner}},
        {"the subwindow's subwindow", 140, 140, {innermost}},
        {"what the subwindow clips of its subwindow", 175, 140, {left}},
        {"the border of the right window", 397, 100, {right}},
        {"the empty screen", 700, 500, {0}},
        {"straight into the innermost", 130, 130, {innermost}},
    };

    for (const auto& step : steps) {
        PointerMoved(step.X, step.Y);
        EXPECT_EQ(Changes(), step.Expected) << step.Where;
    }
}

TEST_F(Focus, StaysWhileAButtonIsHeld) {
    const int left = OpenAt("left", 50, 50, 200, 200);
    const int right = OpenAt("right", 400, 50, 200, 200);
    PointerMoved(100, 100);
    Changes();
    ButtonChanged(LEFTMOUSE, true);
    ButtonChanged(MIDDLEMOUSE, true);
    PointerMoved(450, 100);
    ButtonChanged(LEFTMOUSE, false);
    EXPECT_TRUE(Changes().empty());
    EXPECT_EQ(InputWindow(), left);
    ButtonChanged(MIDDLEMOUSE, false);
    EXPECT_EQ(Changes(), std::vector<int>{right});
}

TEST_F(Focus, FollowsWindowsThatOpenMoveAndCloseUnderThePointer) {
    PointerMoved(300, 300);
    const int below = OpenAt("below", 200, 200, 200, 200);
    EXPECT_EQ(Changes(), std::vector<int>{below});
    const int above = OpenAt("above", 250, 250, 100, 100);
    EXPECT_EQ(Changes(), std::vector<int>{above});
    winset(below);
    winpop();
    EXPECT_EQ(Changes(), std::vector<int>{below});
    winmove(450, 200);
    EXPECT_EQ(Changes(), std::vector<int>{above});
    winclose(above);
    EXPECT_EQ(Changes(), std::vector<int>{0});
    EXPECT_EQ(winget(), below);
}

TEST_F(Focus, LeavesAWindowThatClosesUnderAHeldButton) {
    const int window = OpenAt("w", 200, 200, 200, 200);
    PointerMoved(300, 300);
    ButtonChanged(LEFTMOUSE, true);
    Changes();
    winclose(window);
    EXPECT_EQ(Changes(), std::vector<int>{0});
}

TEST_F(Focus, SetvaluatorMovesThePointerAndConfinesIt) {
    const int window = OpenAt("w", 100, 100, 200, 200);
    PointerMoved(500, 500);
    Changes();
    setvaluator(MOUSEX, 150, 100, 299);
    setvaluator(MOUSEY, 160, 100, 299);
    EXPECT_EQ(Changes(), std::vector<int>{window});
    PointerMoved(700, 20);
    EXPECT_EQ(getvaluator(MOUSEX), 299);
    EXPECT_EQ(getvaluator(MOUSEY), 100);
    setvaluator(MOUSEX, 299, 0, 799);
    setvaluator(MOUSEY, 100, 0, 599);
    PointerMoved(700, 20);
    EXPECT_EQ(getvaluator(MOUSEX), 700) << "limits as wide as the screen are none";
}

// Whatever the user does in whatever order: every press that the program sees is released once, in the same window's
// time, and in the end the input is where the pointer is.
TEST_F(Focus, AStormOfInputEndsInOrder) {
    std::mt19937 random(20);
    auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    constexpr int Buttons[] = {LEFTMOUSE, MIDDLEMOUSE, RIGHTMOUSE};
    for (int button : Buttons)
        qdevice(button);
    qdevice(WINSHUT);
    std::vector<int> windows;
    std::map<int, int> held;
    for (int step = 0; step < 20'000; step++) {
        const int what = below(40);
        if (what < 2 && windows.size() < 12) {
            windows.push_back(windows.empty() || below(3) > 0
                                  ? OpenAt("w", below(800), below(600), 20 + below(200), 20 + below(200))
                                  : OpenSubwindow(windows[random() % windows.size()], below(50), below(50), 40, 40));
        } else if (what == 2 && !windows.empty()) {
            winclose(windows[random() % windows.size()]);
            std::erase_if(windows, [](int window) { return !WindowIsOpen(window); });
        } else if (what == 3) {
            InputLost();
        } else if (what < 16) {
            ButtonChanged(Buttons[below(3)], below(2) == 1);
        } else {
            PointerMoved(below(800), below(600));
        }
        for (const QueueEvent& event : Events())
            if (event.Device >= RIGHTMOUSE && event.Device <= LEFTMOUSE) {
                ASSERT_EQ(held[event.Device], 1 - event.Value) << "step " << step;
                held[event.Device] = event.Value;
            }
    }
    for (int button : Buttons)
        ButtonChanged(button, false);
    Events();
    const ScreenWindow* under = InputWindowAt(getvaluator(MOUSEX), getvaluator(MOUSEY));
    EXPECT_EQ(InputWindow(), under ? under->Id : 0);
    for (int window : windows) {
        const WindowRectangle place = WindowPlace(window);
        EXPECT_TRUE(WindowParent(window) != 0 || place.Y + place.Height <= 600);
    }
}

} // namespace
