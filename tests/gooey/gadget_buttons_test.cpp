#include "gooey/toolkit_test.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/inc_dec.h"
#include "gooey/modal.h"
#include "gooey/slider.h"
#include "gooey/text_input.h"

#include "platform/events.h"
#include "platform/windows.h"

using namespace std::string_literals;

namespace {

const char* const Labels[] = {"One", "Two", "Three"};

/// When the callback of the gadget under test ran, in ticks from the first time, and with what.
struct Call {
    long Tick;
    int Number;

    bool operator==(const Call& other) const { return Tick == other.Tick && Number == other.Number; }
};

std::vector<Call> Calls;
long FirstTick;

void Note(int number) {
    if (Calls.empty())
        FirstTick = ClockTicks();
    Calls.push_back({ClockTicks() - FirstTick, number});
}

void NoteChoice() {
    Note(ButtonChoice);
}

const Button& ButtonOf(Gadget* head, int index) {
    while (index-- >= 0)
        head = head->Next;
    return GadgetData<Button>(head);
}

std::string At(const char* verb, int x, int y) {
    return verb + " "s + std::to_string(x) + " " + std::to_string(y) + "\n";
}

} // namespace

class GadgetButtons : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Calls.clear();
    }
};

TEST_F(GadgetButtons, AreLaidOutAsTheirFlagsSay) {
    Open("Buttons", 100, 100, 500, 300);
    int bw = StringWidth("Three"), small = SmallWidth("Three");

    struct Case {
        const char* Name;
        int X, Y, Width, Flags;
        int FirstX, StepX, StepY, W, H, Right;
    };

    const Case cases[] = {
        {"row", 10, 20, 0, 0, 10, bw + 32, 0, bw + 24, 30, 10 + 3 * (bw + 32)},
        {"narrow small row", 10, 20, 0, ButtonsNarrow | ButtonsSmallFont, 10, small + 16, 0, small + 8, 25,
         10 + 3 * (small + 16)},
        {"shared width", 0, 20, 400, 0, (400 - 3 * (bw + 24)) / 3 / 2, bw + 24 + (400 - 3 * (bw + 24)) / 3, 0, bw + 24,
         30, -1},
        {"stack", 0, 20, 200, ButtonsStacked, (200 - bw - 24) / 2, 0, 60, bw + 24, 30, -1},
        {"given width", 10, 20, 90, ButtonsOfGivenWidth, 10, 114, 0, 90, 30, -1},
        {"given width, narrow", 10, 20, 90, ButtonsOfGivenWidth | ButtonsNarrow, 10, 98, 0, 90, 30, -1},
    };
    for (const Case& test : cases) {
        Gadget* head = AddButtons(test.X, test.Y, test.Width, test.Flags, 3, Labels, nullptr, nullptr, nullptr);
        for (int i = 0; i < 3; ++i) {
            const Button& button = ButtonOf(head, i);
            EXPECT_EQ(button.X, test.FirstX + i * test.StepX) << test.Name;
            EXPECT_EQ(button.Y, test.Y + i * test.StepY) << test.Name;
            EXPECT_EQ(button.W, test.W) << test.Name;
            EXPECT_EQ(button.H, test.H) << test.Name;
            EXPECT_EQ(button.TextY, button.Y + 8) << test.Name;
        }
        if (test.Right >= 0) {
            EXPECT_EQ(GooeyRight, test.Right) << test.Name;
        }
    }
    const int step[] = {40};
    Gadget* head = AddButtons(0, 20, 200, ButtonsStacked, 2, Labels, nullptr, nullptr, step);
    EXPECT_EQ(ButtonOf(head, 1).Y, 60);
}

TEST_F(GadgetButtons, ReportTheirChoiceOnlyWhenReleasedInside) {
    static int selected;
    selected = 0;
    Open("Buttons", 100, 100, 500, 300);
    Gadget* head = AddButtons(10, 20, 0, 0, 3, Labels, NoteChoice, &selected, nullptr);
    int x = ButtonOf(head, 2).X + 10;
    Play("in Buttons\n" + At("click left", x, 30));
    EXPECT_EQ(Calls, (std::vector<Call>{{0, 2}}));
    EXPECT_EQ(selected, 2);
    // Out and released; out and in again.
    int first = ButtonOf(head, 0).X + 10;
    Play(At("move", first, 30) + "press left\n" + At("move", first, 200) + "release left");
    EXPECT_EQ(Calls.size(), 1u);
    EXPECT_EQ(selected, 2);
    Play(At("move", first, 30) + "press left\n" + At("move", first, 200) + At("move", first, 30) + "release left");
    EXPECT_EQ(Calls.size(), 2u);
    EXPECT_EQ(selected, 0);
    // All of these presses and releases are the group's, not the window's.
    EXPECT_TRUE(Events.empty());
}

TEST_F(GadgetButtons, RepeatAtFixedTimesWhileThePointerIsInside) {
    Open("Buttons", 100, 100, 500, 300);
    AddButtons(10, 20, 0, ButtonsAutoRepeat, 1, Labels, NoteChoice, nullptr, nullptr);
    Play("in Buttons\nmove 20 30\npress left\nwait 45\nrelease left");
    EXPECT_EQ(Calls, (std::vector<Call>{{0, 0}, {33, 0}, {38, 0}, {43, 0}}));
    Calls.clear();
    Play("press left\nwait 35\nmove 20 200\nwait 100\nmove 20 30\nwait 12\nmove 20 200\nrelease left");
    ASSERT_GE(Calls.size(), 4u);
    EXPECT_EQ(Calls[1].Tick, 33);
    EXPECT_GE(Calls[2].Tick, 135);
    EXPECT_LE(Calls.back().Tick, 152);
    // No burst makes up for the time outside.
    EXPECT_LE(Calls.size(), 6u);
}

TEST_F(GadgetButtons, KeepTheirDistanceFromTheRightEdge) {
    Window* window = Open("Anchor", 100, 100, 400, 100);
    const int boxes[] = {-200, -40, 60, 30, -120, -40, 60, 30};
    Gadget* head = AddButtons(0, 0, 0, ButtonsOfGivenBoxes, 2, Labels, NoteChoice, nullptr, boxes);
    SetButtonsMinX(head, 150);

    struct Case {
        int Width, First, Second;
    };

    for (const Case& test : {Case{400, 200, 280}, Case{500, 300, 380}, Case{300, 150, 230}}) {
        Calls.clear();
        Play("in Anchor\nresize " + std::to_string(test.Width) + " 100\n" + At("click left", test.First + 2, 62) +
             At("click left", test.Second + 58, 88) + At("click left", test.First - 2, 70));
        ASSERT_EQ(Calls.size(), 2u) << test.Width;
        EXPECT_EQ(Calls[0].Number, 0) << test.Width;
        EXPECT_EQ(Calls[1].Number, 1) << test.Width;
    }
    EXPECT_EQ(window->Width, 300);
}

TEST_F(GadgetButtons, WithoutLabelHaveTheirFaceDrawnByTheOwner) {
    static std::vector<std::vector<int>> faces;
    faces.clear();
    Open("Faces", 100, 100, 400, 100);
    const int boxes[] = {10, 10, 40, 40, 60, 10, 40, 40};
    AddButtons(
        0, 0, 0, ButtonsOfGivenBoxes, 2, nullptr,
        [] {
            if (ButtonChoice < 0)
                faces.push_back({ButtonChoice, ButtonX, ButtonY, ButtonW, ButtonH});
        },
        nullptr, boxes);
    Settle();
    EXPECT_EQ(faces, (std::vector<std::vector<int>>{{-1, 10, 10, 40, 40}, {-2, 60, 10, 40, 40}}));
}

using GadgetButtonsDeathTest = GadgetButtons;

TEST_F(GadgetButtonsDeathTest, LayoutsThatCannotBeEndTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Open("Buttons", 100, 100, 500, 300);
    auto status = testing::ExitedWithCode(666 & 0xFF);
    EXPECT_EXIT(AddButtons(0, 0, 100, 0, 3, Labels, nullptr, nullptr, nullptr), status,
                "^Buttons too wide: \\(Text=One Two Three \\)\a\n$");
    static int value;
    EXPECT_EXIT(AddIncDec(0, 0, 52, nullptr, nullptr, nullptr, &value), status,
                "^Error in AddIncDec - Width too small\n$");
    static char text[10];
    EXPECT_EXIT(AddTextInput({.X = 0, .Y = 0, .Width = 20, .Buffer = text, .Size = 10}), status,
                "^Error in text input, width is negative \\(-4\\)...\n$");
}

TEST_F(GadgetButtons, CheckBoxesToggleTheirFlagInTheSquareAlone) {
    static int flag;
    flag = 0;
    Open("Check", 100, 100, 400, 100);
    auto note = [](GadgetArg arg) { Note(arg.Number); };
    AddCheckBox(20, 20, 0, 0, 7, "Grid on top", note, &flag);
    EXPECT_EQ(GooeyRight, 20 + 29 + StringWidth("Grid on top") + 8);
    Gadget* centred = AddCheckBox(0, 60, 300, CheckSmallFont, 8, "Snap", note, &flag);
    const CheckBox& check = GadgetData<CheckBox>(centred);
    EXPECT_EQ(check.X, (300 - 22 - SmallWidth("Snap")) / 2);
    EXPECT_EQ(check.BoxSize, 17);
    Play("in Check\nclick left 30 30");
    EXPECT_EQ(flag, 1);
    Play("in Check\nclick left 60 30\n" + At("click left", check.X + 8, 68));
    EXPECT_EQ(flag, 0);
    ASSERT_EQ(Calls.size(), 2u);
    EXPECT_EQ(Calls[0].Number, 7);
    EXPECT_EQ(Calls[1].Number, 8);
}

TEST_F(GadgetButtons, IncDecBoxesStepAndRepeat) {
    static int value;
    value = 5;
    Open("IncDec", 100, 100, 400, 100);
    AddIncDec(
        20, -40, 120, 3, nullptr,
        [](GadgetArg arg, int delta) {
            Note(arg.Number * delta);
            value = std::min(value, 7);
        },
        &value);
    Play("in IncDec\nclick left 30 70");
    EXPECT_EQ(value, 4);
    // The click is the window's too.
    EXPECT_FALSE(Events.empty());
    Calls.clear();
    Play("in IncDec\nmove 130 70\npress left\nwait 75\nrelease left");
    EXPECT_EQ(value, 7);
    ASSERT_EQ(Calls.size(), 4u);
    const long due[] = {0, 50, 60, 70};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Calls[i].Number, 3);
        EXPECT_GE(Calls[i].Tick, due[i]);
        EXPECT_LE(Calls[i].Tick, due[i] + 2);
    }
    Play("in IncDec\nclick left 80 70");
    EXPECT_EQ(Calls.size(), 4u);
}

namespace {

std::vector<std::string> SliderCalls;

void SliderPressed(GadgetArg arg, int position) {
    SliderCalls.push_back("pressed " + std::to_string(arg.Number) + " " + std::to_string(position));
}

void SliderMoved(GadgetArg, int from, int to) {
    SliderCalls.push_back("moved " + std::to_string(from) + " " + std::to_string(to));
}

void SliderReleased(GadgetArg, int position) {
    SliderCalls.push_back("released " + std::to_string(position));
}

} // namespace

TEST_F(GadgetButtons, SlidersFollowThePointerWithinTheirRange) {
    Open("Slider", 100, 100, 200, 250);
    Gadget* gadget = AddSlider({.X = 50,
                                .Y = 50,
                                .Width = 20,
                                .Range = 100,
                                .Position = 150,
                                .Label = "R",
                                .Arg = 9,
                                .Pressed = SliderPressed,
                                .Moved = SliderMoved,
                                .Released = SliderReleased,
                                .Print = PrintSlide});
    const Slider& slider = GadgetData<Slider>(gadget);
    EXPECT_EQ(slider.Height, 116);
    EXPECT_EQ(slider.Position, 100);
    ConfigureSlider(gadget, -3, 1);
    EXPECT_EQ(slider.Position, 0);

    struct Case {
        const char* Name;
        const char* Script;
        std::vector<std::string> Calls;
    };

    const Case cases[] = {
        {"click on the track centres the thumb", "click left 60 108", {"pressed 9 0", "moved 0 50", "released 50"}},
        {"grabbing the thumb off its centre does not move it", "click left 60 112", {"pressed 9 50", "released 50"}},
        {"the thumb stays under the pointer",
         "move 60 112\npress left\nmove 60 122\nrelease left",
         {"pressed 9 50", "moved 50 60", "released 60"}},
        {"the range holds",
         "move 60 118\npress left\nmove 150 240\nmove 60 1\nrelease left",
         {"pressed 9 60", "moved 60 100", "moved 100 0", "released 0"}},
        {"elsewhere nothing happens", "click left 100 100", {}},
    };
    for (const Case& test : cases) {
        SliderCalls.clear();
        Play("in Slider\n"s + test.Script);
        EXPECT_EQ(SliderCalls, test.Calls) << test.Name;
    }
}

TEST_F(GadgetButtons, TheWheelStepsSlidersAndIncDecBoxesUnderThePointer) {
    static int value;
    value = 5;
    Open("Wheel", 100, 100, 300, 250);
    Gadget* slider = AddSlider(
        {.X = 50, .Y = 50, .Width = 20, .Range = 100, .Position = 50, .Label = "R", .Arg = 9, .Print = PrintSlide});
    AddIncDec(100, 50, 120, 3, nullptr, nullptr, &value);
    auto turn = [](int amount) {
        gl::qenter(gl::WHEELY, static_cast<short>(amount));
        Settle();
    };
    Play("in Wheel\nmove 60 100");
    turn(gl::WHEELNOTCH);
    turn(gl::WHEELNOTCH / 2);
    EXPECT_EQ(GadgetData<Slider>(slider).Position, 51);
    turn(gl::WHEELNOTCH / 2);
    EXPECT_EQ(GadgetData<Slider>(slider).Position, 52);
    Play("move 160 60");
    turn(-2 * gl::WHEELNOTCH);
    EXPECT_EQ(value, 3);
    Events.clear();
    Play("move 250 200");
    turn(gl::WHEELNOTCH);
    EXPECT_EQ(Events, (std::vector<SeenEvent>{{gl::WHEELY, gl::WHEELNOTCH}}));
}
