#include "gooey/toolkit_test.h"

#include "gooey/event_loop.h"
#include "gooey/event_queue.h"
#include "gooey/gadget.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window_stack.h"

#include "platform/events.h"
#include "platform/surface.h"
#include "platform/system.h"

using namespace std::string_literals;

class WindowEvents : public ToolkitTest {};

TEST_F(WindowEvents, KeysArriveAsCharacters) {
    struct Case {
        const char* Key;
        int Character;
    };

    constexpr Case cases[] = {
        {"a", 'a'},     {"Ctrl+a", 154}, {"Alt+a", 154},   {"Alt+Z", 179},  {"Ctrl+Escape", 180},
        {"Return", 13}, {"Up", 128},     {"Down", 129},    {"Left", 130},   {"Right", 131},
        {"F1", 132},    {"F12", 143},    {"Insert", 144},  {"PageUp", 145}, {"PageDown", 146},
        {"Home", 147},  {"End", 148},    {"Backspace", 8}, {"Alt+7", '7'},  {"Delete", 127},
    };
    Open("Keys", 100, 100, 200, 100);
    for (const Case& test : cases) {
        Events.clear();
        Play("in Keys\nmove 50 50\nkey "s + test.Key);
        std::vector<int> characters;
        for (const SeenEvent& event : Events)
            if (event.Device == gl::KEYBD)
                characters.push_back(event.Value);
        EXPECT_EQ(characters, std::vector<int>{test.Character}) << test.Key;
    }
}

TEST_F(WindowEvents, TheScreenIsMeasuredAgainWhenItsSizeChanges) {
    Open("Keys", 100, 100, 200, 100);
    gl::SetScreenSize(900, 700);
    Play("in Keys\nmove 50 50\nkey a");
    EXPECT_EQ(hres, 899);
    EXPECT_EQ(vres, 699);
}

TEST_F(WindowEvents, SpecialKeysReadThePointerAndReportTheirRelease) {
    Open("Keys", 100, 100, 200, 100);
    Play("in Keys\nmove 50 40\nkey F1");
    ASSERT_EQ(Events.size(), 2u);
    EXPECT_EQ(Events[0], (SeenEvent{gl::KEYBD, 132}));
    EXPECT_EQ(Events[0].X, 50);
    EXPECT_EQ(Events[0].Y, 40);
    EXPECT_EQ(Events[1], (SeenEvent{gl::F1KEY, 0}));
}

TEST_F(WindowEvents, ModifierKeysAreFollowed) {
    Open("Keys", 100, 100, 200, 100);
    Play("in Keys\nmove 50 40\nhold LeftCtrl\nhold RightShift");
    EXPECT_EQ(LeftCtrl, 1);
    EXPECT_EQ(RightShift, 1);
    Play("let LeftCtrl\nlet RightShift");
    EXPECT_EQ(LeftCtrl, 0);
    EXPECT_EQ(RightShift, 0);
}

TEST_F(WindowEvents, ButtonsCarryThePointerInWindowPixels) {
    Open("Pointer", 100, 150, 200, 100);
    Play("in Pointer\nclick right 30 -1");
    ASSERT_EQ(Events.size(), 2u);
    EXPECT_EQ(Events[0], (SeenEvent{gl::RIGHTMOUSE, 1}));
    EXPECT_EQ(Events[0].X, 30);
    EXPECT_EQ(Events[0].Y, 99);
    EXPECT_EQ(Events[1], (SeenEvent{gl::RIGHTMOUSE, 0}));
}

TEST_F(WindowEvents, AButtonEventWithoutItsPositionLeavesThePointer) {
    Open("Pointer", 100, 100, 200, 100);
    Play("in Pointer\nclick right 30 40");
    Events.clear();
    QueueEvent(gl::RIGHTMOUSE, 1);
    QueueEvent(gl::KEYBD, 'x');
    QueueEvent(gl::KEYBD, 'y');
    Settle();
    EXPECT_EQ(Events, (std::vector<SeenEvent>{{gl::RIGHTMOUSE, 1}, {gl::KEYBD, 'y'}}));
    EXPECT_EQ(MouseX, 30);
    EXPECT_EQ(MouseY, 40);
}

TEST_F(WindowEvents, GadgetsConsumeLeftClicksAlone) {
    static int presses;
    presses = 0;
    Window* window = Open("Gadgets", 100, 100, 200, 100);
    Kirvo_AddGadget(nullptr, [] { return MouseInBox(10, 10, 50, 30) ? ++presses : 0; });
    Play("in Gadgets\nclick left 20 20");
    EXPECT_EQ(presses, 1);
    // The release is nobody's business but the window's.
    EXPECT_EQ(Events, (std::vector<SeenEvent>{{gl::LEFTMOUSE, 0}}));
    Events.clear();
    Play("in Gadgets\nclick middle 20 20\nclick left 100 20");
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(Events.size(), 4u);
    window->Gadgets->Visible = 0;
    Play("in Gadgets\nclick left 20 20");
    EXPECT_EQ(presses, 1);
}

TEST_F(WindowEvents, SpecialEventsNeedNoWindow) {
    static std::vector<int> values;
    values.clear();
    SpecialEvent = [](short value) { values.push_back(value); };
    Open("Window", 100, 100, 200, 100);
    SetWindow(nullptr);
    QueueEvent(GOOEY_SPECIAL, 7);
    Settle();
    EXPECT_EQ(values, std::vector<int>{7});
}

TEST_F(WindowEvents, DirtyWindowsAreDrawnOncePerPass) {
    Window* window = Open("Dirty", 100, 100, 200, 100);
    Settle();
    Draws = 0;
    DirtyWindow(window);
    DirtyWindow(window);
    DirtyCurrentWindow();
    int device;
    short value;
    EXPECT_EQ(KeepQueueHappy(device, value), 1);
    EXPECT_EQ(device, GOOEY_DIRTY);
    EXPECT_EQ(KeepQueueHappy(device, value), 0);
    DirtyAllWindows();
    EXPECT_EQ(CheckEvents(), 1);
    EXPECT_EQ(Draws, 1);
    EXPECT_EQ(CheckEvents(), 0);
}

TEST_F(WindowEvents, ResizingMarksTheWindowAndDrawsIt) {
    Window* window = Open("Size", 100, 100, 200, 100);
    EXPECT_EQ(window->Resized, 1);
    Settle();
    EXPECT_EQ(window->Resized, 0);
    Draws = 0;
    Play("in Size\nresize 300 120");
    EXPECT_EQ(Draws, 1);
    EXPECT_EQ(window->Width, 300);
    EXPECT_EQ(window->Height, 120);
}

TEST_F(WindowEvents, TheInputFollowsThePointer) {
    static std::vector<std::string> focus;
    static int changes;
    focus.clear();
    changes = 0;
    WindowChange = [] { ++changes; };
    Window* a = Open("A", 50, 100, 200, 100);
    Window* b = Open("B", 450, 100, 200, 100);
    a->FocusFn = b->FocusFn = [] { focus.push_back(CurrentWindow->Title); };
    Play("in A\nmove 10 10\nin B\nmove 10 10\nkey x");
    ASSERT_GE(focus.size(), 2u);
    EXPECT_EQ(focus.back(), "B");
    EXPECT_EQ(focus[focus.size() - 2], "A");
    EXPECT_GE(changes, 2);
    EXPECT_EQ(Events, (std::vector<SeenEvent>{{gl::KEYBD, 'x'}}));
    EXPECT_EQ(CurrentWindow, b);
}

TEST_F(WindowEvents, OpeningAWindowLeavesTheInputWhereItWas) {
    Window* a = Open("A", 50, 100, 200, 100);
    Play("in A\nmove 10 10");
    ASSERT_EQ(CurrentWindow, a);
    Window* b = Open("B", 450, 100, 200, 100);
    EXPECT_EQ(CurrentWindow, b);
    Settle();
    EXPECT_EQ(CurrentWindow, a);
}

TEST_F(WindowEvents, AWindowOpenedByWorkInAnotherLeavesTheInputUnderThePointer) {
    static Window* b;
    Window* a = Open("A", 50, 100, 200, 100);
    b = Open("B", 450, 100, 200, 100);
    a->EventFn = [](int device, short) {
        if (device != gl::KEYBD)
            return;
        WindowScope scope(b);
        Open("C", 450, 300, 200, 100);
    };
    Play("in A\nmove 10 10\nkey x\nclick left 20 20");
    EXPECT_EQ(CurrentWindow, a);
    EXPECT_TRUE(Events.empty());
}

TEST_F(WindowEvents, UnknownWindowsAreReportedAndIgnored) {
    Window* window = Open("A", 50, 100, 200, 100);
    Window* gone = Open("B", 450, 100, 200, 100);
    Settle();
    int gid = gone->Gid;
    ShutWindow(gone);
    SetWindow(window);
    testing::internal::CaptureStderr();
    QueueEvent(gl::REDRAW, 99);
    QueueEvent(gl::WINSHUT, 0);
    QueueEvent(gl::WINSHUT, static_cast<short>(gid));
    EXPECT_EQ(Settle(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Tried to find window 99\a\nTried to find window 0\a\n"
                                                      "Couldn't find window " +
                                                          std::to_string(gid) + "\n");
    EXPECT_EQ(WindowList, window);
}

TEST_F(WindowEvents, ThePointerIsLockedUnlessLeftCtrlIsDown) {
    Window* window = Open("Lock", 100, 100, 200, 100);
    LockMouseToWindow(window);

    struct Case {
        const char* Held;
        bool Leaves;
    };

    for (const Case& test : {Case{"", false}, Case{"RightCtrl", false}, Case{"LeftCtrl", true}}) {
        std::string hold = *test.Held ? "hold "s + test.Held + "\n" : "", let = *test.Held ? "let "s + test.Held : "";
        Play("in Lock\nmove 50 50\n" + hold + "move 350 50\n");
        ReadMousePos();
        EXPECT_EQ(MouseABSX, test.Leaves ? 450 : 299) << test.Held;
        if (*test.Held)
            Play(let);
    }
    ClearWindowLock();
    Play("in Lock\nmove 350 50");
    ReadMousePos();
    EXPECT_EQ(MouseABSX, 450);
}

TEST_F(WindowEvents, BoxesExcludeTheirEdges) {
    struct Case {
        int X, Y, In;
    };

    for (const Case& test : {Case{10, 25, 0}, {15, 20, 0}, {11, 21, 1}, {29, 59, 1}, {30, 30, 0}, {15, 60, 0}}) {
        MouseX = test.X;
        MouseY = test.Y;
        EXPECT_EQ(MouseInBox(10, 20, 20, 40), test.In) << test.X << " " << test.Y;
    }
    MouseX = 3;
    MouseY = 4;
    EXPECT_EQ(MouseInCircle(0, 0, 5), 0);
    EXPECT_EQ(MouseInCircle(0, 0, 5.01), 1);
}

TEST_F(WindowEvents, WindowsAroundThePointerStayOnTheScreen) {
    Open("A", 0, 0, 800, 500);

    struct Case {
        const char* Move;
        int X, Y;
    };

    for (const Case& test : {Case{"move 400 300", 300, 250}, {"move 5 5", 0, 0}, {"move 799 499", 599, 449}}) {
        Play("in A\n"s + test.Move);
        WindowAroundMouse(200, 100);
        Window* window = OpenWindow("Around", 0, 0, nullptr, nullptr, nullptr, nullptr, 0, nullptr);
        EXPECT_EQ(window->X, test.X) << test.Move;
        EXPECT_EQ(window->Y, test.Y) << test.Move;
        ShutWindow(window);
    }
}

namespace {

int ClickedItem, LastItem;

int OtherItem(int act) {
    int other = ClickedItem != LastItem;
    if (act)
        LastItem = ClickedItem;
    return other;
}

/// A click on an item of a window. The release is in the queue already, so that the press alone takes time.
int ClickItem(Window* window, int item) {
    SetWindow(window);
    ClickedItem = item;
    for (short value : {1, 0}) {
        QueueEvent(gl::LEFTMOUSE, value);
        QueueEvent(gl::MOUSEX, 100);
        QueueEvent(gl::MOUSEY, 150);
    }
    int device;
    short value;
    KeepQueueHappy(device, value);
    return DoDoubleClick(OtherItem);
}

} // namespace

TEST_F(WindowEvents, DoubleClicksAreTwoOnTheSameThingWithinHalfASecond) {
    Window* a = Open("A", 50, 100, 200, 100);
    Window* b = Open("B", 450, 100, 200, 100);
    Settle();

    struct Case {
        const char* Name;
        int Ticks;
        Window* Second;
        int Item, Result;
    };

    for (const Case& test : {Case{"49 ticks", 49, a, 1, 1}, Case{"50 ticks", 50, a, 1, 0},
                             Case{"other item", 10, a, 2, 0}, Case{"other window", 10, b, 1, 0}}) {
        gl::sginap(100);
        LastItem = -1;
        long start = ClockTicks();
        EXPECT_EQ(ClickItem(a, 1), 0);
        gl::sginap(start + test.Ticks - ClockTicks());
        EXPECT_EQ(ClickItem(test.Second, test.Item), test.Result) << test.Name;
    }
}

TEST_F(WindowEvents, KeysBesideADialogAreMeantForIt) {
    Window* owner = Open("Owner", 20, 20, 300, 300);
    Window* other = Open("Other", 400, 20, 200, 200);
    Open("Dialog", 100, 400, 100, 50, 0, owner);
    DisableWindow(owner);
    EnableWindow(WindowList->Next->Next);
    Events.clear();
    Play("in Owner\nmove 150 150\nkey x\nclick left 150 150");
    EXPECT_EQ(Events, (std::vector<SeenEvent>{{gl::KEYBD, 'x'}})) << "clicks are lost as before";
    DisableWindow(other);
    Events.clear();
    Play("in Other\nmove 50 50\nkey x");
    EXPECT_TRUE(Events.empty()) << "the dialog is another window's";
    MainWindow = owner;
    Play("in Other\nmove 50 50\nkey x\nmove 50 500\nkey y");
    MainWindow = nullptr;
    EXPECT_EQ(Events.size(), 2u);
}
