#include "gooey/toolkit_test.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/inc_dec.h"
#include "gooey/label.h"
#include "gooey/redraw.h"
#include "gooey/slider.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"
#include "gooey/utf8.h"

#include "platform/events.h"

#include <algorithm>
#include <random>

namespace {

constexpr int Width = 500, Height = 300;
const char* const Labels[] = {"Open", "Close", "Disable"};
int Mode, Flag, Steps;
char Short[10], Long[300];
Gadget* Inputs[2];
Gadget* Thumb;
Window* Side;

void OpenSide() {
    if (Side)
        return;
    Side = OpenWindow(
        "Side", 0, 0, nullptr, nullptr, nullptr, [] { Side = nullptr; }, 16, WindowList);
    AddBackdrop();
    AddButtons(
        10, 10, 0, 0, 1, Labels + 1, [] { CloseCurrentWindow(); }, nullptr, nullptr);
}

void Choose() {
    if (ButtonChoice == 0)
        OpenSide();
    else if (Side && ButtonChoice == 1)
        ShutWindow(Side);
    else if (Side && !Side->Closing)
        Side->Disabled ? EnableWindow(Side) : DisableWindow(Side);
}

/// One random thing that a user does, as a script line.
std::string RandomLine(std::mt19937& random) {
    auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    auto position = [&] { return std::to_string(below(Width)) + " " + std::to_string(below(Height)); };
    static const char* const buttons[] = {"left", "left", "left", "middle", "right"};
    static const char* const keys[] = {
        "Return", "Escape", "Backspace",  "Tab",         "Shift+Tab", "Delete",     "Home",           "End",
        "Up",     "Down",   "Left",       "Right",       "F1",        "Ctrl+a",     "Ctrl+c",         "Ctrl+x",
        "Ctrl+v", "Alt+a",  "Shift+Left", "Shift+Right", "Ctrl+Left", "Ctrl+Right", "Ctrl+Backspace", "Shift+Home",
        "Space"};
    static const char* const texts[] = {"a", "1.5", "-", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "Z z"};
    std::string button = buttons[below(std::size(buttons))];
    switch (below(12)) {
    case 0:
    case 1:
        return "move " + position();
    case 2:
    case 3:
        return "click " + button + " " + position();
    case 4:
        return "press " + button;
    case 5:
        return "release " + button;
    case 6:
    case 7:
        return std::string("key ") + keys[below(std::size(keys))];
    case 8:
        return std::string("type \"") + texts[below(std::size(texts))] + "\"";
    case 9:
        return "wait " + std::to_string(below(20));
    case 10:
        return "drag left " + position() + " " + position();
    default:
        return below(10) ? "doubleclick left " + position()
                         : "resize " + std::to_string(300 + below(300)) + " " + std::to_string(200 + below(200));
    }
}

} // namespace

class GadgetStorm : public ToolkitTest {};

TEST_F(GadgetStorm, NothingIsLostInTensOfThousandsOfRandomEvents) {
    Side = nullptr;
    Window* window = Open("Storm", 50, 50, Width, Height);
    AddBackdrop();
    AddButtons(10, 10, 0, 0, 3, Labels, Choose, &Mode, nullptr);
    AddButtons(10, 50, 90, ButtonsOfGivenWidth | ButtonsAutoRepeat, 1, Labels, OpenSide, nullptr, nullptr);
    AddCheckBox(10, -40, 0, 0, 0, "Flag", nullptr, &Flag);
    Inputs[0] = AddTextInput({.X = 10,
                              .Y = 100,
                              .Width = 200,
                              .Flags = TextReportsChanges,
                              .Label = "Short:",
                              .Buffer = Short,
                              .Size = sizeof Short,
                              .Callback = [] { DirtyCurrentWindow(); }});
    Inputs[1] = AddTextInput({.X = 10,
                              .Y = 150,
                              .Width = 150,
                              .Flags = TextRedrawsWindow | TextReportsDeactivation,
                              .Buffer = Long,
                              .Size = sizeof Long,
                              .Filter = PrintableFilter,
                              .Callback = [] { ++Steps; }});
    Thumb =
        AddSlider({.X = -60, .Y = 80, .Width = 20, .Range = 100, .Position = 30, .Label = "R", .Print = PrintSlide});
    AddIncDec(220, 50, 100, nullptr, nullptr, nullptr, &Steps);
    AddText(220, 100, "A text", 1);

    constexpr unsigned seed = 4711;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int lines = 0; lines < 10000;) {
        std::string script = "in Storm\n";
        for (int i = 0; i < 200; ++i, ++lines)
            script += RandomLine(random) + "\n";
        script += "release left\nrelease middle\nrelease right\n";
        ASSERT_EQ(Play(script), 0);
        ASSERT_TRUE(WindowIsOpen(window));
        if (random() % 2)
            CloseWindow(Side);
        const Slider& slider = GadgetData<Slider>(Thumb);
        ASSERT_TRUE(slider.Position >= 0 && slider.Position <= 100);
        ASSERT_LE(TextIsActive(Inputs[0]) + TextIsActive(Inputs[1]), 1);
        for (Gadget* gadget : Inputs) {
            const TextInput& input = GadgetData<TextInput>(gadget);
            ASSERT_LE(input.Cursor, CharactersIn(input.Buffer));
            ASSERT_EQ(WholeCharactersWithin(input.Buffer, 1000), std::string(input.Buffer).size());
        }
    }
}
