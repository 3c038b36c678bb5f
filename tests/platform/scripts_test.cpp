#include "headless_screen.h"

#include "platform/script_player.h"
#include "platform/system.h"

#include <filesystem>
#include <fstream>

using namespace gl;

namespace {

class Scripts : public HeadlessScreen {
  protected:
    void SetUp() override {
        HeadlessScreen::SetUp();
        // A forked process has no rendering context of its own.
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        ScriptEnded = [] {};
        Main = OpenAt("Kirvo", 100, 100, 300, 200);
        for (int device : {LEFTMOUSE, MIDDLEMOUSE, RIGHTMOUSE, KEYBD, KEYBDTEXT, LEFTCTRLKEY, LEFTSHIFTKEY, LEFTALTKEY,
                           F1KEY, WINSHUT, WINQUIT, BPAD2})
            qdevice(device);
        for (int button : {LEFTMOUSE, MIDDLEMOUSE, RIGHTMOUSE})
            tie(button, MOUSEX, MOUSEY);
        tie(BPAD2, BPADX, BPADY);
        PointerMoved(700, 500);
        Events();
    }

    void TearDown() override {
        HeadlessScreen::TearDown();
        ScriptEnded = nullptr;
    }

    // Plays a script with a main loop that reads everything, sleeps a tick, and notes what it reads.
    static std::vector<QueueEvent> Play(const std::string& text) {
        PlayScript(text, "test");
        std::vector<QueueEvent> events;
        for (int passes = 0; ScriptIsPlaying() && passes < 10'000; passes++) {
            sginap(1);
            for (const QueueEvent& event : Events())
                events.push_back(event);
        }
        return events;
    }

    int Main = 0;
};

TEST_F(Scripts, SplitLinesIntoWords) {
    const struct {
        const char* Line;
        std::vector<std::string> Words;
    } cases[] = {
        {"click left 10 -1", {"click", "left", "10", "-1"}},
        {"  type \"a b\"  # a comment", {"type", "a b"}},
        {"type \"say \\\"so\\\" \\\\ \\n\"", {"type", "say \"so\" \\ \\n"}},
        {"type \"\" x", {"type", "", "x"}},
        {"# nothing", {}},
        {"\t\r", {}},
        {"a\"b c", {"a\"b", "c"}},
    };

    for (const auto& test : cases) {
        std::vector<std::string> words;
        std::string error;
        EXPECT_TRUE(SplitWords(test.Line, words, error));
        EXPECT_EQ(words, test.Words) << test.Line;
    }
    std::vector<std::string> words;
    std::string error;
    EXPECT_FALSE(SplitWords("type \"open", words, error));
}

TEST_F(Scripts, ButtonsArriveWithTheirPlaces) {
    const std::int16_t window = static_cast<std::int16_t>(Main);
    const std::vector<QueueEvent> expected{{INPUTCHANGE, window}, {RIGHTMOUSE, 1}, {MOUSEX, 110}, {MOUSEY, 299},
                                           {RIGHTMOUSE, 0},       {MOUSEX, 110},   {MOUSEY, 299}};
    EXPECT_EQ(Play("click right 10 -1"), expected);
}

TEST_F(Scripts, DragsGoInAtLeastEightSteps) {
    qdevice(MOUSEX);
    std::vector<int> xs;
    for (const QueueEvent& event : Play("drag left 0 5 80 5 0 5"))
        if (event.Device == MOUSEX)
            xs.push_back(event.Value);
    const std::vector<int> expected{100, 100, 110, 120, 130, 140, 150, 160, 170, 180,
                                    170, 160, 150, 140, 130, 120, 110, 100, 100};
    EXPECT_EQ(xs, expected) << "the first and the last are tied to the button";
}

TEST_F(Scripts, KeysArriveAsTheyWouldFromAKeyboard) {
    const struct {
        const char* Script;
        std::vector<QueueEvent> Expected;
    } cases[] = {
        {"key a B", {{KEYBD, 'a'}, {KEYBD, 'B'}}},
        {"key Ctrl+a", {{LEFTCTRLKEY, 1}, {KEYBD, 1}, {LEFTCTRLKEY, 0}}},
        {"key Ctrl+Escape", {{LEFTCTRLKEY, 1}, {KEYBD, 27}, {LEFTCTRLKEY, 0}}},
        {"key Ctrl+1", {{LEFTCTRLKEY, 1}, {KEYBD, '1'}, {LEFTCTRLKEY, 0}}},
        {"key Alt+o", {{LEFTALTKEY, 1}, {KEYBD, 'o'}, {LEFTALTKEY, 0}}},
        {"key Shift+a", {{LEFTSHIFTKEY, 1}, {KEYBD, 'A'}, {LEFTSHIFTKEY, 0}}},
        {"key Ctrl++ +", {{LEFTCTRLKEY, 1}, {KEYBD, '+'}, {LEFTCTRLKEY, 0}, {KEYBD, '+'}}},
        {"key Space Return Escape Backspace Tab Delete",
         {{KEYBD, 32}, {KEYBD, 13}, {KEYBD, 27}, {KEYBD, 8}, {KEYBD, 9}, {KEYBD, 127}}},
        {"key F1", {{F1KEY, 1}, {F1KEY, 0}}},
        {"hold LeftCtrl\nkey z\nlet LeftCtrl", {{LEFTCTRLKEY, 1}, {KEYBD, 26}, {LEFTCTRLKEY, 0}}},
        {"type \"a \\\"é\"", {{KEYBD, 'a'}, {KEYBD, ' '}, {KEYBD, '"'}, {KEYBDTEXT, 0xE9}}},
    };

    for (const auto& test : cases)
        EXPECT_EQ(Play(test.Script), test.Expected) << test.Script;
}

TEST_F(Scripts, HeldKeysAreHeldForTheProgram) {
    PlayScript("hold q\nwait 5\nlet q", "test");
    bool seen = false;
    while (ScriptIsPlaying()) {
        sginap(1);
        Events();
        seen = seen || getbutton(QKEY) == 1;
    }
    EXPECT_TRUE(seen);
    EXPECT_EQ(getbutton(QKEY), 0);
}

TEST_F(Scripts, ThePuckPressesAtTabletCoordinates) {
    const std::vector<QueueEvent> expected{{BPAD2, 1}, {BPADX, 1200}, {BPADY, -7},
                                           {BPAD2, 0}, {BPADX, 1200}, {BPADY, -7}};
    EXPECT_EQ(Play("puck 2 1200 -7"), expected);
}

TEST_F(Scripts, OneEventAtATimeAndOnlyAfterAskingInVain) {
    sginap(1);
    PlayScript("key a b c", "test");
    for (int i = 0; i < 5; i++)
        sginap(1);
    EXPECT_TRUE(QueueIsEmpty()) << "the program has not asked yet";
    qtest();
    sginap(1);
    EXPECT_EQ(FirstDevice(), KEYBD);
    for (int i = 0; i < 5; i++)
        sginap(1);
    EXPECT_EQ(Events().size(), 1U);
}

TEST_F(Scripts, DragLoopsThatNeverSleepSeeEveryMove) {
    winset(Main);
    PlayScript("drag left 0 50 100 50", "test");
    int moves = 0, last = -1;
    bool held = false;
    for (int i = 0; i < 100'000 && ScriptIsPlaying(); i++) {
        short value = 0;
        if (qtest() != 0 && qread(&value) == LEFTMOUSE)
            held = value == 1;
        if (held && getvaluator(MOUSEX) != last) {
            last = getvaluator(MOUSEX);
            moves++;
        }
    }
    EXPECT_FALSE(ScriptIsPlaying());
    EXPECT_EQ(moves, 9);
}

TEST_F(Scripts, WaitingReadersAreFed) {
    PlayScript("key a", "test");
    short value = 0;
    EXPECT_EQ(qread(&value), KEYBD);
    EXPECT_EQ(value, 'a');
}

TEST_F(Scripts, WaitLetsTheProgramRunItsLoop) {
    const long start = times();
    Play("wait 250");
    EXPECT_GE(times() - start, 250);
    EXPECT_LE(times() - start, 260);
}

TEST_F(Scripts, WindowsAreClosedSizedAndPlacedByTheirFrames) {
    const std::int16_t window = static_cast<std::int16_t>(Main);
    winset(Main);
    minsize(150, 150);
    winconstraints();
    const std::vector<QueueEvent> events = Play("resize 10 400\nplace 20 30\nclose\nquit");
    EXPECT_EQ(WindowPlace(Main), (WindowRectangle{20, 30, 150, 400}));
    const std::vector<QueueEvent> expected{{REDRAW, window}, {WINSHUT, window}, {WINQUIT, window}};
    EXPECT_EQ(events, expected);
}

TEST_F(Scripts, AddressesWindowsByTitle) {
    const int grid = OpenAt(" Grid control", 10, 10, 50, 50);
    Events();
    const std::vector<QueueEvent> events = Play("in \"Grid\"\nmove 5 5");
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events[0].Value, grid);
    EXPECT_EQ(getvaluator(MOUSEX), 15);
}

TEST_F(Scripts, SnapshotsAreTakenWhenTheProgramIsAtRest) {
    const std::string path = testing::TempDir() + "kirvo_snapshot.png";
    std::filesystem::remove(path);
    Play("snapshot window " + path);
    Picture picture;
    std::string error;
    ASSERT_TRUE(ReadPng(picture, path, error)) << error;
    EXPECT_EQ(picture.width, 300);
    EXPECT_EQ(picture.height, 200);
    std::filesystem::remove(path);
}

TEST_F(Scripts, ToolkitsAddCommandsThatGoStageByStage) {
    static std::vector<int> stages;
    stages.clear();
    AddScriptCommand("open", [](ScriptCall& call) {
        stages.push_back(call.Stage);
        if (call.Stage == 0) {
            call.Move(call.Window, 1, 1);
            call.Press(LEFTMOUSE);
            return ScriptResult::Again;
        }
        call.Release(LEFTMOUSE);
        return ScriptResult::Done;
    });
    std::vector<QueueEvent> buttons;
    for (const QueueEvent& event : Play("open\nkey x"))
        if (event.Device == LEFTMOUSE || event.Device == KEYBD)
            buttons.push_back(event);
    const std::vector<QueueEvent> expected{{LEFTMOUSE, 1}, {LEFTMOUSE, 0}, {KEYBD, 'x'}};
    EXPECT_EQ(buttons, expected);
    EXPECT_EQ(stages, (std::vector<int>{0, 1}));
}

TEST_F(Scripts, OtherFormsOfPositionsGoThroughTheSlot) {
    ScriptPosition = [](const std::string& word, int, int& x, int& y, std::string& error) {
        if (word == "vertex:9")
            error = "there is no vertex 9";
        if (word != "vertex:1")
            return false;
        x = 7;
        y = 8;
        return true;
    };
    Play("move vertex:1");
    EXPECT_EQ(getvaluator(MOUSEX), 107);
    EXPECT_EQ(getvaluator(MOUSEY), 108);
    EXPECT_EXIT(Play("move vertex:9"), testing::ExitedWithCode(1), "test:1: there is no vertex 9");
    ScriptPosition = nullptr;
}

TEST_F(Scripts, WhatCannotBeDoneEndsTheProgramWithItsLine) {
    const struct {
        const char* Script;
        const char* Message;
    } cases[] = {
        {"\n# here\nfrobnicate 3", "test:3: unknown command \"frobnicate\""},
        {"in \"Nowhere\"", "test:1: no window is titled \"Nowhere\""},
        {"click left 3", "test:1: click: a number is missing"},
        {"click front 3 4", "test:1: click needs a button: left, middle or right"},
        {"move 3 four", "test:1: \"four\" is not a number"},
        {"move 3 4 5", "test:1: \"5\" is one word too many"},
        {"key Ctrl+Nonsense", "test:1: unknown key \"Nonsense\""},
        {"puck 4 1 1", "test:1: the puck has buttons 0 to 3"},
        {"wait -1", "test:1: wait needs a number of ticks"},
        {"snapshot /nonexistent/directory/file.png", "test:1: .*file.png"},
        {"type \"open", "test:1: a quoted text has no end"},
    };

    for (const auto& test : cases)
        EXPECT_EXIT(Play(test.Script), testing::ExitedWithCode(1), test.Message);
}

TEST_F(Scripts, TheEndOfTheScriptEndsTheHeadlessProgram) {
    EXPECT_EXIT(
        {
            ScriptEnded = nullptr;
            Play("wait 1");
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
