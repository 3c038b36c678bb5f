#include "gooey/toolkit_test.h"

#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/menu.h"
#include "gooey/menu_panel.h"
#include "gooey/menu_session.h"
#include "gooey/pointer.h"
#include "gooey/pull_down.h"
#include "gooey/redraw.h"
#include "gooey/report.h"
#include "support/temporary_directory.h"

#include "platform/events.h"
#include "platform/snapshots.h"

using namespace std::string_literals;

namespace {

int ThreeViews;
int SwapGreyed;
int ImportHidden;
std::vector<int> Chosen;

std::int32_t CheckThreeViews() {
    return SimpleMenuCheck(ThreeViews);
}

std::int32_t CheckSwap() {
    return SwapGreyed ? MenuDisabled : 0;
}

std::int32_t CheckImport() {
    return ImportHidden ? MenuHidden : 0;
}

const MenuEntry Axes[] = {
    {"Axis", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"X", MenuEntryItem, 55, 0, nullptr, nullptr},
    {"Y", MenuEntryLast, 56, 0, nullptr, nullptr},
};

const MenuEntry Edit[] = {
    {"Edit", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Changes", MenuEntryHeading, 0, 0, nullptr, nullptr},
    {"Undo", MenuEntryItem, 19, -'Z', nullptr, nullptr},
    {"Swap views", MenuEntryItem, 32, 'W', nullptr, CheckSwap},
    {"Mirror", MenuEntrySeparated, 0, 0, Axes, nullptr},
    {"Import", MenuEntryItem, 40, 0, nullptr, CheckImport},
    {"Three views", MenuEntryLast, 33, '.', nullptr, CheckThreeViews},
};

const MenuEntry Help[] = {
    {"Help", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"About...", MenuEntryLast, 125, 0, nullptr, nullptr},
};

const MenuEntry* const Bar[] = {Edit, Help, nullptr};

void PopUp(int device, short value) {
    if (device == gl::RIGHTMOUSE && value)
        Chosen.push_back(DoPopup(Edit));
}

void Choose(int id) {
    Chosen.push_back(id);
}

const MenuItem* ItemOf(const MenuItem* first, const std::string& label) {
    for (; first; first = first->Next)
        if (first->Label == label)
            return first;
    return nullptr;
}

} // namespace

class Menus : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        ThreeViews = SwapGreyed = ImportHidden = 0;
        Chosen.clear();
    }

    static Window* OpenWithPopup() {
        Window* window = Open("Menus", 100, 100, 400, 300);
        window->EventFn = PopUp;
        return window;
    }

    static Window* OpenWithBar(void (*callback)(int) = Choose) {
        Window* window = Open("Menus", 100, 100, 400, 300);
        AddPullDownMenu(Bar, callback);
        return window;
    }

    /// The middle of an item of a menu laid out at (x, y).
    static std::string MiddleOf(const MenuItem& item) {
        return std::to_string(item.X + item.W / 2) + " " + std::to_string(item.Y + item.H / 2);
    }
};

TEST_F(Menus, ShortcutsHaveNames) {
    struct Case {
        std::int16_t Shortcut;
        const char* Name;
    };

    constexpr Case cases[] = {{0, nullptr},
                              {-79, "Alt+O"},
                              {8, "Backspace"},
                              {9, "Tab"},
                              {13, "Enter"},
                              {27, "Esc"},
                              {32, "SPC"},
                              {144, "Insert"},
                              {145, "PgUp"},
                              {146, "PgDown"},
                              {147, "Home"},
                              {148, "End"},
                              {150, "[2xClick]"},
                              {151, "[Shift+Leftmouse]"},
                              {152, "[Shift+Middle]"},
                              {10, "????"},
                              {'X', "X"},
                              {'.', "."},
                              {149, "????"}};
    Open("Menus", 100, 100, 400, 300);
    for (const Case& test : cases) {
        const MenuEntry table[] = {{"Entry", MenuEntryLast, 1, test.Shortcut, nullptr, nullptr}};
        MenuItem* menu = BuildMenu(table);
        EXPECT_STREQ(menu->ShortcutText, test.Name) << test.Shortcut;
        FreeMenu(menu);
    }
}

TEST_F(Menus, HiddenEntriesAreNotBuiltEvenAtTheEnd) {
    static constexpr auto hidden = []() -> std::int32_t { return MenuHidden; };
    const MenuEntry table[] = {{"First", MenuEntryItem, 1, 0, nullptr, nullptr},
                               {"Second", MenuEntrySeparated, 2, 0, nullptr, hidden},
                               {"Third", MenuEntryLast, 3, 0, nullptr, hidden}};
    Open("Menus", 100, 100, 400, 300);
    MenuItem* menu = BuildMenu(table);
    ASSERT_NE(menu, nullptr);
    EXPECT_STREQ(menu->Label, "First");
    EXPECT_EQ(menu->Next, nullptr);
    FreeMenu(menu);
    EXPECT_EQ(BuildMenu(table + 1), nullptr);
}

TEST_F(Menus, TickBoxesShowTheirFlag) {
    EXPECT_EQ(SimpleMenuCheck(0), MenuHasTickBox);
    EXPECT_EQ(SimpleMenuCheck(7), MenuHasTickBox | MenuTicked);
    EXPECT_EQ(ListMenuCheck(2, 2), MenuHasTickBox | MenuTicked);
    EXPECT_EQ(ListMenuCheck(2, 3), 0);
}

TEST_F(Menus, LevelsAreLaidOutByTheirItems) {
    Open("Menus", 100, 100, 600, 400);
    MenuItem* menu = BuildMenu(Edit);
    EXPECT_EQ(LayOutMenu(50, 300, menu), 0);
    const MenuItem *heading = ItemOf(menu, "Changes"), *undo = ItemOf(menu, "Undo"), *swap = ItemOf(menu, "Swap views"),
                   *mirror = ItemOf(menu, "Mirror"), *import = ItemOf(menu, "Import");
    // A heading lies at the very top; items are 23 high, separators take 3 more.
    EXPECT_EQ(heading->Y, 300 - 23);
    EXPECT_EQ(undo->Y, 300 - 2 * 23);
    EXPECT_EQ(mirror->Y - import->Y, 23 + 3);
    EXPECT_EQ(undo->X, 50);
    EXPECT_EQ(undo->H, 23);
    // Tick boxes move all labels; under headings items are indented.
    EXPECT_EQ(heading->LabelX, 50 + 28);
    EXPECT_EQ(undo->LabelX, 50 + 28 + 12);
    int text = 0, shortcut = 0;
    for (const MenuItem* item = menu->Next; item; item = item->Next) {
        text = std::max(text, item->LabelWidth + item->ShortcutWidth);
        shortcut = std::max(shortcut, item->ShortcutWidth);
    }
    int right = 28 + text + 12 + 40;
    EXPECT_EQ(undo->W, right + 8 + 12);
    EXPECT_EQ(swap->ShortcutX, 50 + right - (swap->ShortcutWidth + shortcut) / 2);
    FreeMenu(menu);

    const MenuEntry plain[] = {{"A title wider than all items", MenuEntryTitle, 0, 0, nullptr, nullptr},
                               {"X", MenuEntryLast, 1, 0, nullptr, nullptr}};
    menu = BuildMenu(plain);
    LayOutMenu(50, 300, menu);
    EXPECT_EQ(menu->Next->Y, 300 - 25);
    EXPECT_EQ(menu->Next->LabelX, 50 + 8);
    EXPECT_EQ(menu->Next->W, menu->LabelWidth + 20);
    FreeMenu(menu);
}

TEST_F(Menus, PopupReturnsTheItemReleasedOn) {
    SwapGreyed = 1;
    OpenWithPopup();
    Play("in Menus\n"
         "popup 40 250 Undo\n"
         "popup 40 250 Mirror Y\n"
         "popup 40 250 \"Swap views\"\n" // disabled
         "popup 40 250 Mirror\n");       // opens a submenu only
    EXPECT_EQ(Chosen, (std::vector<int>{19, 56, -1, 0}));
}

TEST_F(Menus, NothingIsChosenOnTitlesHeadingsAndOutside) {
    OpenWithPopup();
    // The panel begins 20 pixels left of the pointer and 8 below it: the title box first, then the heading.
    Play("in Menus\n"
         "move 60 250\npress right\nrelease right\nkey Escape\n"
         "move 60 250\npress right\nmove 60 232\nrelease right\n"
         "move 60 250\npress right\nmove 60 208\nmove 10 250\nrelease right\n"
         "move 60 250\npress right\nmove 60 208\nmove 390 10\nrelease right\n");
    EXPECT_EQ(Chosen, (std::vector<int>{-1, -1, -1, -1}));
    Chosen.clear();
    Play("in Menus\nmove 60 250\npress right\nmove 60 208\nrelease right\n");
    EXPECT_EQ(Chosen, std::vector<int>{19});
}

TEST_F(Menus, LeaveTheScreenAsItWas) {
    OpenWithPopup();
    Play("in Menus\nmove 40 250");
    gl::Picture before = gl::ScreenPicture(false);
    Play("popup 40 250 Mirror X\nmove 40 250");
    EXPECT_EQ(gl::DifferingPixels(before, gl::ScreenPicture(false), 0, nullptr), 0);
}

TEST_F(Menus, SubmenusOpenBesideTheirItem) {
    Open("Menus", 100, 100, 600, 400);
    MenuItem* menu = BuildMenu(Edit);
    LayOutMenu(50, 300, menu);
    MenuItem* mirror = const_cast<MenuItem*>(ItemOf(menu, "Mirror"));
    EXPECT_EQ(OpenSubmenu(mirror), 0);
    const MenuItem* inner = ItemOf(mirror->Submenu, "X");
    EXPECT_EQ(inner->X, mirror->X + mirror->W + 8);
    EXPECT_EQ(inner->Y, mirror->Y);
    EraseMenuTree(menu);
    FreeMenu(menu);
}

TEST_F(Menus, AreKeptOnTheScreen) {
    Open("Menus", 300, 0, 490, 300);
    MenuItem* menu = BuildMenu(Edit);
    EXPECT_EQ(LayOutMenu(400, 30, menu), 1);
    GadgetBox extent = MenuExtent(menu);
    EXPECT_GE(extent.Y, 0);
    EXPECT_LE(300 + extent.X + extent.Width, 800);
    MenuItem* mirror = const_cast<MenuItem*>(ItemOf(menu, "Mirror"));
    OpenSubmenu(mirror);
    EXPECT_LT(mirror->Submenu->Next->X, mirror->X) << "a submenu that has no room at the right goes to the left";
    EraseMenuTree(menu);
    FreeMenu(menu);
}

// A menu that was moved onto the screen may lie under the pointer: a quick click must not choose what is there.
TEST_F(Menus, AQuickClickAtTheScreensEdgeChoosesNothing) {
    Window* window = Open("Menus", 100, 0, 400, 300);
    window->EventFn = PopUp;
    Play("in Menus\nclick right 100 30\nkey Escape");
    EXPECT_EQ(Chosen, std::vector<int>{-1});
    Play("in Menus\npopup 100 30 \"Three views\"");
    EXPECT_EQ(Chosen.back(), 33);
}

TEST_F(Menus, BarCallsBackWithEachChoice) {
    OpenWithBar();
    Play("in Menus\nmenu Edit Undo\nmenu Help About...\nmenu Edit Mirror X");
    EXPECT_EQ(Chosen, (std::vector<int>{19, 125, 55}));
    Chosen.clear();
    Play("in Menus\nmove 30 280\npress left\nmove 390 10\nrelease left");
    EXPECT_TRUE(Chosen.empty());
}

TEST_F(Menus, AQuickClickKeepsThemOpenForAnother) {
    OpenWithPopup();
    Play("in Menus\nclick right 60 250\nmove 60 208\npress left\nrelease left");
    EXPECT_EQ(Chosen, std::vector<int>{19});
    Play("in Menus\nclick right 60 250\nclick left 390 10");
    EXPECT_EQ(Chosen.back(), -1);
    CloseAllWindows();
    Chosen.clear();
    OpenWithBar();
    Events.clear();
    Play("in Menus\nclick left 30 280\nclick left 60 235");
    EXPECT_EQ(Chosen, std::vector<int>{19});
    Play("in Menus\nclick left 30 280\nkey Escape\nclick left 60 100");
    EXPECT_EQ(Chosen.size(), 1u);
    EXPECT_EQ(Events.size(), 2u) << "only the click after Escape is the window's";
}

TEST_F(Menus, BarFollowsThePointerFromTitleToTitle) {
    OpenWithBar();
    GadgetDescription bar = GadgetsOf(CurrentWindow)[0].Description;
    ASSERT_EQ(bar.Items.size(), 2u);
    EXPECT_EQ(bar.Items[0].Box.X, 12);
    auto middle = [&](int title) {
        return std::to_string(bar.Items[title].Box.X + bar.Items[title].Box.Width / 2) + " 280\n";
    };
    // Down into Edit, over to Help, and down into it: its item lies just below the bar.
    Play("in Menus\nmove " + middle(0) + "press left\nmove " + std::to_string(bar.Items[0].Box.X + 30) + " 235\nmove " +
         middle(1) + "move " + std::to_string(bar.Items[1].Box.X + 30) + " 247\nrelease left");
    EXPECT_EQ(Chosen, std::vector<int>{125});
}

TEST_F(Menus, BarAsksItsChecksAtEveryOpeningButKeepsWhatIsHidden) {
    ImportHidden = 1;
    OpenWithBar();
    ImportHidden = 0;
    SwapGreyed = 1;
    Play("in Menus\nmenu Edit \"Swap views\"");
    EXPECT_TRUE(Chosen.empty());
    SwapGreyed = 0;
    Play("in Menus\nmenu Edit \"Swap views\"");
    EXPECT_EQ(Chosen, std::vector<int>{32});
    MenuItem* menu = GadgetData<PullDownBar>(CurrentWindow->Gadgets).Titles->Items;
    EXPECT_EQ(ItemOf(menu, "Import"), nullptr);
}

TEST_F(Menus, ClicksBesideTheTitlesGoToTheWindow) {
    OpenWithBar();
    Events.clear();
    Play("in Menus\nclick left 300 280\nclick left 30 100\nclick left 30 265");
    EXPECT_EQ(Events.size(), 6u);
    EXPECT_TRUE(Chosen.empty());
}

TEST_F(Menus, ACallbackMayShutTheBarsWindow) {
    Open("Stays", 500, 500, 100, 50);
    OpenWithBar([](int) { ShutWindow(CurrentWindow); });
    Play("in Menus\nmenu Edit Undo");
    EXPECT_EQ(Shut, std::vector<std::string>{"Menus"});
}

TEST_F(Menus, AChoppedBarEndsWhereItsBracketEnds) {
    Window* window = Open("Menus", 100, 100, 400, 300);
    AddMenuChopStart();
    AddPullDownMenu(Bar, Choose);
    int end = GooeyRight;
    AddMenuChopEnd();
    EXPECT_EQ(GooeyRight, end + 16);
    Settle();
    EXPECT_EQ(window->Width, 400);
    gl::Picture picture = gl::WindowPicture(window->Gid);
    EXPECT_NE(picture.at(end - 2, 270), picture.at(end + 2, 270));
    EXPECT_EQ(picture.at(end + 2, 270), picture.at(end + 2, 100));
}

TEST_F(Menus, AnOpenMenuOfANarrowBarLeavesTheOtherTitlesUncovered) {
    Window* window = Open("Menus", 100, 100, 400, 300);
    Gadget* bar = AddPullDownMenu(Bar, Choose);
    const TemporaryDirectory directory;
    const std::string file = directory.Path() / "open.png";
    for (const int reserve : {0, 240, 260, 270, 280, 290}) {
        ReserveRightOfBar(bar, reserve);
        DirtyWindow(window);
        Settle();
        const gl::Picture closed = gl::ScreenPicture(false);
        Play("in Menus\nmove 20 285\npress left\nsnapshot \"" + file + "\"\nmove 20 290\nrelease left\nkey Escape\n");
        gl::Picture open;
        std::string error;
        ASSERT_TRUE(gl::ReadPng(open, file, error)) << error;
        const GadgetBox title = GadgetsOf(window)[0].Description.Items[1].Box;
        const auto isLetter = [&](const gl::Picture& picture, int x, int y) {
            return (picture.at(window->X + x, window->Y + y) & 0xFFFFFF) < 0x404040;
        };
        int letters = 0, covered = 0;
        // Without the edges of the bar.
        for (int y = title.Y + 6; y < title.Y + title.Height - 6; ++y)
            for (int x = title.X; x < title.X + title.Width; ++x)
                if (isLetter(closed, x, y)) {
                    ++letters;
                    covered += !isLetter(open, x, y);
                }
        EXPECT_GT(letters, 30) << reserve;
        EXPECT_EQ(covered, 0) << reserve;
    }
}

TEST_F(Menus, ClosingTheWindowEndsTheMenu) {
    Open("Stays", 500, 500, 100, 50);
    OpenWithPopup();
    Play("in Menus\nmove 60 250\npress right\nmove 60 208\nclose");
    EXPECT_EQ(Chosen, std::vector<int>{-1});
    EXPECT_EQ(Shut, std::vector<std::string>{"Menus"});
}

TEST_F(Menus, ABarWithoutATitleEndsTheProgram) {
    static constexpr MenuEntry untitled[] = {{"Undo", MenuEntryLast, 1, 0, nullptr, nullptr}};
    static const MenuEntry* const menus[] = {untitled, nullptr};
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto add = [] {
        Open("Menus", 100, 100, 400, 300);
        AddPullDownMenu(menus, nullptr);
    };
    EXPECT_EXIT(add(), testing::ExitedWithCode(666 & 0xFF), "Menu entry has no title\a\n");
}
