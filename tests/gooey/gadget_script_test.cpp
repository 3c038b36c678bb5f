#include "gooey/toolkit_test.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/gadget_commands.h"
#include "gooey/inc_dec.h"
#include "gooey/label.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/report.h"
#include "gooey/slider.h"
#include "gooey/text_input.h"

#include "platform/events.h"

#include <nlohmann/json.hpp>

#include <algorithm>

using namespace std::string_literals;

namespace {

const char* const Labels[] = {"Save", "Discard", " Done "};
int Mode, Flag, Steps;
char Name[20], Size[20];
std::vector<std::string> Pressed;

void NoteButton() {
    Pressed.push_back(Labels[ButtonChoice]);
}

} // namespace

class GadgetScript : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Mode = Flag = Steps = 0;
        Pressed.clear();
        Open(" Form \"1\" ", 100, 100, 500, 300);
        AddBackdrop();
        AddButtons(10, 10, 0, 0, 3, Labels, NoteButton, &Mode, nullptr);
        AddButtons(
            10, 60, 0, ButtonsSmallFont, 1, Labels, [] { Pressed.push_back("second"); }, nullptr, nullptr);
        AddCheckBox(10, -40, 0, 0, 0, "Show grid", nullptr, &Flag);
        AddTextInput(
            {.X = 10, .Y = 120, .Width = 200, .Label = "Name:", .Text = "old", .Buffer = Name, .Size = sizeof Name});
        AddTextInput({.X = 220, .Y = 120, .Width = 100, .Text = "1", .Buffer = Size, .Size = sizeof Size});
        Thumb = AddSlider({.X = -60, .Y = 80, .Width = 20, .Range = 100, .Position = 30, .Label = "R"});
        AddIncDec(10, 180, 100, nullptr, nullptr, nullptr, &Steps);
        AddText(10, 230, "Hello", 1);
        AddText(200, 230, "Hidden", 1)->Visible = 0;
        Kirvo_AddGadget([] {}, nullptr);
        Kirvo_AddGadget(nullptr, [] { return 0; });
        AddToReport = nullptr;
    }

    void TearDown() override {
        AddToReport = nullptr;
        ListMenuItems = nullptr;
        ToolkitTest::TearDown();
    }

    Gadget* Thumb;
};

TEST_F(GadgetScript, ReportsListWindowsAndTheirGadgets) {
    Open("Child", 650, 100, 100, 80, 0, WindowList);
    DisableWindow(CurrentWindow);
    AddToReport = [](nlohmann::ordered_json& report) { report["status"] = "ready"; };
    nlohmann::json report = nlohmann::json::parse(Report());
    EXPECT_EQ(report["status"], "ready");
    ASSERT_EQ(report["windows"].size(), 2u);
    const nlohmann::json& form = report["windows"][0];
    EXPECT_EQ(form["title"], " Form \"1\" ");
    EXPECT_EQ(form["x"], 100);
    EXPECT_EQ(form["width"], 500);
    EXPECT_EQ(form["disabled"], 0);
    EXPECT_TRUE(form["parent"].is_null());
    EXPECT_EQ(report["windows"][1]["parent"], " Form \"1\" ");
    EXPECT_EQ(report["windows"][1]["disabled"], 1);

    struct Case {
        int Index;
        const char* Expected;
    };

    const Case cases[] = {
        {0, R"({"kind": "button", "label": "Save", "x": 10, "y": 10, "height": 30, "on": true, "text": ""})"},
        {1, R"({"kind": "button", "label": "Discard", "y": 10, "on": false})"},
        {4, R"({"kind": "check", "label": "Show grid", "x": 10, "y": 260, "height": 22, "on": false})"},
        {5, R"({"kind": "text", "label": "Name:", "x": 10, "y": 120, "width": 200, "height": 38, "text": "old"})"},
        {6, R"({"kind": "text", "label": "", "text": "1"})"},
        {7, R"({"kind": "slider", "label": "R", "x": 440, "y": 80, "width": 20, "height": 116, "text": "30"})"},
        {8, R"({"kind": "incdec", "x": 10, "y": 180, "width": 100, "height": 26, "text": "0"})"},
        {9, R"({"kind": "label", "label": "Hello"})"},
        {10, R"({"kind": "custom", "x": 0, "y": 0, "width": 500, "height": 300})"},
    };
    ASSERT_EQ(form["gadgets"].size(), 11u);
    for (const Case& test : cases) {
        const nlohmann::json expected = nlohmann::json::parse(test.Expected);
        for (const auto& [name, value] : expected.items())
            EXPECT_EQ(form["gadgets"][test.Index][name], value) << test.Index << " " << name;
    }
}

TEST_F(GadgetScript, ReportsSurviveTextsThatAreNotUtf8) {
    AddText(10, 280, "caf\xE9", 1);
    EXPECT_EQ(nlohmann::json::parse(Report())["windows"][0]["gadgets"].back()["label"], "caf\xEF\xBF\xBD");
}

TEST_F(GadgetScript, CommandsFindTheirGadgets) {
    Play("in Form\nbutton Discard\nbutton Done\nbutton Save 2\nbutton \"Show grid\"\nbutton + 1\n"
         "field Name: \"new name\"\nfield \"\" 25 1\nslider R 75");
    EXPECT_EQ(Pressed, (std::vector<std::string>{"Discard", " Done ", "second"}));
    EXPECT_EQ(Mode, 2);
    EXPECT_EQ(Flag, 1);
    EXPECT_EQ(Steps, 1);
    EXPECT_STREQ(Name, "new name");
    EXPECT_STREQ(Size, "25");
    EXPECT_EQ(GadgetData<Slider>(Thumb).Position, 75);
}

using GadgetScriptDeathTest = GadgetScript;

TEST_F(GadgetScriptDeathTest, CommandsThatCannotBeDoneEndTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    struct Case {
        const char* Script;
        const char* Message;
    };

    const Case cases[] = {
        {"in Form\nbutton Nothing", "test:2: no button \"Nothing\" in window \" Form \"1\" \""},
        {"in Form\n\nbutton Save 3", "test:3: no button \"Save\" number 3, there are 2"},
        {"in Form\nfield Name:", "test:2: field: wrong number of arguments"},
        {"in Form\nmenu File Open", "test:2: no menu \"File\""},
        {"in Form\npopup 10 10 Open", "test:2: no menu opened"},
        {"in Form\nreport /nonexistent/report.json", "test:2: report: cannot write"},
    };
    for (const Case& test : cases)
        EXPECT_EXIT(Play(test.Script), testing::ExitedWithCode(1), test.Message) << test.Script;
}

namespace {

/// A menu with a submenu, as far as scripts need one: every item is 100 x 20, the submenu lies beside the second.
struct MenuItemRow {
    const char* Label;
    int Level, X, Y;
};

constexpr MenuItemRow MenuRows[] = {
    {"Open", 0, 0, 60}, {"Import", 0, 0, 40}, {"Open", 1, 100, 40}, {"Dxf", 1, 100, 20}};
bool MenuIsOpen, SubmenuIsOpen;
std::string Chosen;

int ItemsOfMenu(std::vector<MenuItemPlace>& items) {
    for (const MenuItemRow& row : MenuRows)
        if (row.Level == 0 || SubmenuIsOpen)
            items.push_back({row.Label, row.Level, {row.X, row.Y, 100, 20}});
    return MenuIsOpen;
}

void RunMenu(int button) {
    MenuIsOpen = true;
    SubmenuIsOpen = false;
    Chosen = "nothing";
    while (!ButtonReleased(button)) {
        ReadMousePos();
        Chosen = "nothing";
        for (const MenuItemRow& row : MenuRows)
            if ((row.Level == 0 || SubmenuIsOpen) && MouseInBox(row.X, row.Y, 100, 20))
                Chosen = row.Label + std::to_string(row.Level);
        SubmenuIsOpen |= Chosen == "Import0";
    }
    MenuIsOpen = false;
}

void DescribeBar(const Gadget*, GadgetDescription& description) {
    description.Items = {{"File", {0, 280, 60, 20}}, {"Edit", {60, 280, 60, 20}}};
}

constexpr GadgetKind BarKind = {"menu", DescribeBar, nullptr, nullptr};

} // namespace

TEST_F(GadgetScript, MenusAreFollowedEntryByEntry) {
    ListMenuItems = ItemsOfMenu;
    Gadget* bar = AddGadget(
        nullptr,
        [](Gadget*) {
            if (!MouseInBox(0, 280, 60, 20))
                return 0;
            RunMenu(gl::LEFTMOUSE);
            return 1;
        },
        0);
    bar->Kind = &BarKind;
    CurrentWindow->EventFn = [](int device, short value) {
        if (device == gl::RIGHTMOUSE && value)
            RunMenu(gl::RIGHTMOUSE);
    };

    struct Case {
        const char* Script;
        const char* Chosen;
    };

    for (const Case& test : {Case{"menu File Open", "Open0"}, Case{"menu File Import Dxf", "Dxf1"},
                             Case{"menu File Import Open", "Open1"}, Case{"popup 300 200 Open", "Open0"},
                             Case{"popup -10 -10 Import Dxf", "Dxf1"}, Case{"popup 300 200", "nothing"}}) {
        Chosen = "";
        Play("in Form\n"s + test.Script);
        EXPECT_EQ(Chosen, test.Chosen) << test.Script;
        EXPECT_FALSE(MenuIsOpen) << test.Script;
    }
}
