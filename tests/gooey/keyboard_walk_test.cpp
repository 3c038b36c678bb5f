#include "gooey/toolkit_test.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/inc_dec.h"
#include "gooey/keyboard_walk.h"
#include "gooey/label.h"
#include "gooey/text_input.h"

#include "platform/events.h"

#include <algorithm>
#include <string>

namespace {

char Name[20];
int Ticked, Steps;
std::string Pressed;

/// Two rows added from the bottom: the walk goes through them as they are read.
class KeyboardWalk : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Ticked = Steps = 0;
        Pressed.clear();
        Dialog = Open("Dialog", 100, 100, 400, 300);
        AddBackdrop();
        static constexpr const char* labels[] = {"OK", "Cancel"};
        const Gadget* buttons = AddButtons(
            0, 8, 400, 0, 2, labels, [] { Pressed += ButtonChoice == 0 ? "OK " : "Cancel "; }, nullptr, nullptr);
        SetDefaultButton(buttons, 0);
        AddIncDec(200, 100, 100, nullptr, nullptr, nullptr, &Steps);
        AddCheckBox(
            20, 100, 0, 0, nullptr, "Tick", [](GadgetArg) { Pressed += "Tick "; }, &Ticked);
        Input = AddTextInput(
            {.X = 20, .Y = 200, .Width = 200, .Label = "Name:", .Text = "", .Buffer = Name, .Size = sizeof Name});
        Settle();
        Play("in Dialog\nmove 390 290");
        Events.clear();
    }

    /// How many characters the window itself got.
    static long KeysLeft() {
        return std::count_if(Events.begin(), Events.end(),
                             [](const SeenEvent& event) { return event.Device == gl::KEYBD && event.Value; });
    }

    Window* Dialog;
    Gadget* Input;
};

TEST_F(KeyboardWalk, PressesAndStepsWhatItComesTo) {
    Play("key Tab");
    EXPECT_TRUE(TextIsActive(Input));
    Play("type A\nkey Tab");
    EXPECT_FALSE(TextIsActive(Input));
    Play("key Space Tab Up Right Up Down Tab Space Tab Return");
    EXPECT_STREQ(Name, "A");
    EXPECT_EQ(Ticked, 1);
    EXPECT_EQ(Steps, 2);
    EXPECT_EQ(Pressed, "Tick OK Cancel ");
    Play("key Shift+Tab Shift+Tab Down Shift+Tab Shift+Tab Shift+Tab Return");
    EXPECT_EQ(Steps, 1);
    EXPECT_EQ(Pressed, "Tick OK Cancel Cancel ");
    EXPECT_EQ(KeysLeft(), 0);
}

TEST_F(KeyboardWalk, LeavesKeysToTheWindowWhenItStandsNowhere) {
    Play("key Return Space Up");
    EXPECT_EQ(KeysLeft(), 3);
    EXPECT_EQ(Pressed, "");
    Events.clear();
    Play("key Shift+Tab\nclick left 390 290\nkey Return");
    EXPECT_EQ(Pressed, "") << "a click ends the walk";
    Play("key Shift+Tab");
    Dialog->Gadgets->NextGadget->Next->Visible = 0;
    Events.clear();
    Play("key Return");
    EXPECT_EQ(Pressed, "") << "what is hidden is not pressed";
    EXPECT_EQ(KeysLeft(), 1);
}

} // namespace
