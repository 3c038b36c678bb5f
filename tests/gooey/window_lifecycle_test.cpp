#include "gooey/toolkit_test.h"

#include "gooey/button.h"
#include "gooey/cursors.h"
#include "gooey/event_loop.h"
#include "gooey/event_queue.h"
#include "gooey/gadget.h"
#include "gooey/modal.h"
#include "gooey/redraw.h"
#include "gooey/window_stack.h"

#include "platform/events.h"
#include "platform/windows.h"

class WindowLifecycle : public ToolkitTest {};

TEST_F(WindowLifecycle, OpeningFillsTheRecord) {
    static int inits;
    inits = 0;
    WindowInit = [] { ++inits; };
    char title[] = "Title";
    gl::prefposition(10, 209, 20, 119);
    Window* first =
        OpenWindow(title, WindowDoubleBuffered, 0xFFFFFFFF, nullptr, nullptr, nullptr, nullptr, 12, nullptr);
    title[0] = 'X';
    EXPECT_STREQ(first->Title, "Title");
    EXPECT_EQ(first->Background, 0xFFFFFFu);
    EXPECT_EQ(first->X, 10);
    EXPECT_EQ(first->Y, 20);
    EXPECT_EQ(first->Width, 200);
    EXPECT_EQ(first->Height, 100);
    EXPECT_EQ(std::string(static_cast<char*>(first->Data), 12), std::string(12, '\0'));
    EXPECT_EQ(CurrentWindow, first);
    EXPECT_EQ(hres, 799);
    EXPECT_EQ(vres, 599);
    Window* second = Open("Second", 300, 20, 100, 100, 0, first);
    EXPECT_EQ(second->Prev, first);
    EXPECT_EQ(first->Next, second);
    EXPECT_EQ(WindowList, first);
    EXPECT_EQ(second->Data, nullptr);
    EXPECT_EQ(MaxWindow, second->Gid);
    EXPECT_EQ(inits, 2);
}

TEST_F(WindowLifecycle, ChildrenAreShutBeforeTheirParent) {
    Window* parent = Open("Parent", 100, 100, 300, 200);
    Window* child = Open("Child", 0, 0, 100, 100, WindowInParent, parent);
    Open("Grandchild", 500, 100, 100, 100, 0, child);
    Window* other = Open("Other", 500, 300, 100, 100);
    Window* closing = Open("Closing", 500, 450, 100, 100, 0, parent);
    CloseWindow(closing);
    ShutWindow(parent);
    EXPECT_EQ(Shut, (std::vector<std::string>{"Grandchild", "Child", "Parent"}));
    Settle();
    EXPECT_EQ(Shut.back(), "Closing");
    EXPECT_EQ(WindowList, other);
    EXPECT_EQ(other->Next, nullptr);
}

TEST_F(WindowLifecycle, AClosingWindowTakesNoInputAndIsShutByTheDispatcher) {
    Window* other = Open("Other", 500, 100, 100, 100);
    Window* window = Open("Closing", 100, 100, 200, 100);
    Play("in Closing\nmove 50 50");
    ASSERT_EQ(CurrentWindow, window);
    QueueEvent(gl::KEYBD, 'x');
    CloseWindow(window);
    EnableWindow(window);
    Draws = 0;
    RedrawWindow(window);
    EXPECT_EQ(Draws, 0);
    EXPECT_TRUE(Shut.empty());
    EXPECT_EQ(Settle(), 0);
    EXPECT_TRUE(Events.empty());
    EXPECT_EQ(Shut, std::vector<std::string>{"Closing"});
    EXPECT_EQ(WindowList, other);
}

TEST_F(WindowLifecycle, EventsOfAShutWindowReachNoOther) {
    Window* gone = Open("Gone", 100, 100, 200, 100);
    Window* left = Open("Left", 450, 100, 200, 100);
    Play("in Gone\nmove 50 50");
    ASSERT_EQ(CurrentWindow, gone);
    short leftGid = static_cast<short>(left->Gid), goneGid = static_cast<short>(gone->Gid);
    QueueEvent(gl::KEYBD, 'a');
    QueueEvent(GOOEY_SPECIAL, 3);
    gl::qenter(gl::KEYBD, 'b');
    gl::qenter(gl::REDRAW, goneGid);
    gl::qenter(gl::INPUTCHANGE, leftGid);
    gl::qenter(gl::KEYBD, 'c');
    gl::qenter(gl::INPUTCHANGE, goneGid);
    gl::qenter(gl::KEYBD, 'd');
    gl::qenter(gl::INPUTCHANGE, leftGid);
    gl::qenter(gl::KEYBD, 'e');
    static std::vector<int> specials;
    specials.clear();
    SpecialEvent = [](short value) { specials.push_back(value); };
    Events.clear();
    ShutWindow(gone);
    testing::internal::CaptureStderr();
    Settle();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(specials, std::vector<int>{3});
    std::string typed;
    for (const SeenEvent& event : Events)
        if (event.Device == gl::KEYBD)
            typed += static_cast<char>(event.Value);
    EXPECT_EQ(typed, "ce");
}

TEST_F(WindowLifecycle, TheProgramEndsWithItsLastWindow) {
    Window* a = Open("A", 100, 100, 200, 100);
    Window* b = Open("B", 450, 100, 200, 100);
    CloseWindow(a);
    EXPECT_EQ(Settle(), 0);
    CloseWindow(b);
    EXPECT_EQ(Settle(), -1);
    EXPECT_EQ(WindowList, nullptr);
    // Nothing of it is left for the next window.
    Open("C", 100, 100, 200, 100);
    EXPECT_EQ(Settle(), 0);
}

TEST_F(WindowLifecycle, QuittingIsUpToTheQuitFunction) {
    static int asked, agrees;
    asked = agrees = 0;
    QuitFunction = [] {
        ++asked;
        return agrees;
    };
    Window* main = Open("Main", 100, 100, 200, 100, WindowDoubleBuffered | WindowConfirmsShut);
    Window* child = Open("Child", 450, 100, 200, 100, 0, main);
    EXPECT_EQ(Play("quit"), 0);
    EXPECT_EQ(Play("in Main\nclose"), 0);
    CloseAllWindows();
    EXPECT_EQ(asked, 3);
    EXPECT_TRUE(WindowIsOpen(main) && WindowIsOpen(child));
    agrees = 1;
    EXPECT_EQ(Play("quit"), -1);
    EXPECT_TRUE(WindowIsOpen(main));
    CloseAllWindows();
    EXPECT_EQ(Shut, (std::vector<std::string>{"Child", "Main"}));
    EXPECT_EQ(CurrentWindow, nullptr);
}

TEST_F(WindowLifecycle, DisablingNestsReachesChildrenAndShowsTheBusyCursor) {
    Window* parent = Open("Parent", 100, 100, 300, 200);
    Window* child = Open("Child", 450, 100, 200, 100, 0, parent);
    SetWindow(child);
    SetCursor(5);
    DisableWindow(parent);
    DisableWindow(parent);
    EXPECT_EQ(parent->Disabled, 2);
    EXPECT_EQ(child->Disabled, 2);
    EXPECT_EQ(child->Cursor, BusyCursor);
    Play("in Child\nclick left 10 10\nkey x");
    EXPECT_TRUE(Events.empty());
    EnableWindow(parent);
    EXPECT_EQ(child->Cursor, BusyCursor);
    EnableWindow(parent);
    EXPECT_EQ(child->Disabled, 0);
    EXPECT_EQ(child->Cursor, 5);
    EnableWindow(parent);
    EXPECT_EQ(parent->Disabled, 0);
    Play("in Child\nkey x");
    EXPECT_EQ(Events.size(), 1u);
}

TEST_F(WindowLifecycle, BeingBusyNests) {
    Window* window = Open("Busy", 100, 100, 300, 200);
    SetCursor(5);
    Busy();
    EXPECT_EQ(window->Cursor, BusyCursor);
    Unbusy();
    EXPECT_EQ(window->Cursor, 5);
    DisableWindow(window);
    Busy();
    Unbusy();
    EXPECT_EQ(window->Cursor, BusyCursor);
    EnableWindow(window);
    EXPECT_EQ(window->Cursor, 5);
}

TEST_F(WindowLifecycle, AnExemptWindowStaysLiveWhenItsParentIsDisabled) {
    Window* parent = Open("Parent", 100, 100, 300, 200);
    Window* view = Open("View", 0, 0, 100, 100, WindowInParent, parent);
    view->Disabled = WindowExemptFromDisabling;
    DisableWindow(parent);
    EXPECT_EQ(parent->Disabled, 1);
    EXPECT_EQ(view->Disabled, 0);
    EnableWindow(parent);
    EXPECT_EQ(parent->Disabled, 0);
    EXPECT_EQ(view->Disabled, 0);
}

TEST_F(WindowLifecycle, TheStackRestoresTheCurrentWindow) {
    Window* a = Open("A", 100, 100, 200, 100);
    Window* b = Open("B", 450, 100, 200, 100);
    SetWindow(a);
    PushToWindow(b);
    EXPECT_EQ(CurrentWindow, b);
    EXPECT_EQ(gl::winget(), b->Gid);
    PopWindow();
    EXPECT_EQ(CurrentWindow, a);
    WindowCall({b, [] { CurrentWindow->Resized = 17; }});
    EXPECT_EQ(b->Resized, 17);
    EXPECT_EQ(CurrentWindow, a);
    // A window that is shut while it is saved is not come back to.
    PushToWindow(b);
    ShutWindow(a);
    PopWindow();
    EXPECT_EQ(CurrentWindow, nullptr);
}

using WindowLifecycleDeathTest = WindowLifecycle;

TEST_F(WindowLifecycleDeathTest, TheStackHas32Places) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (int i = 0; i < 32; ++i)
        PushWindow();
    EXPECT_EXIT(PushWindow(), testing::ExitedWithCode(666 & 0xFF), "^Window stack overflow!\a\n$");
    for (int i = 0; i < 32; ++i)
        PopWindow();
    EXPECT_EXIT(PopWindow(), testing::ExitedWithCode(666 & 0xFF), "^Window stack underflow!\a\n$");
}

namespace {

int DragEnds;

/// A drag as tools write it.
void DragInEvent(int device, short value) {
    if (device != gl::LEFTMOUSE || !value)
        return;
    while (!ButtonReleased(gl::LEFTMOUSE)) {
    }
    ++DragEnds;
}

} // namespace

TEST_F(WindowLifecycle, ADragEndsWhenItsWindowIsClosedAndTheWindowGoesAfterwards) {
    DragEnds = 0;
    Window* parent = Open("Parent", 100, 100, 300, 200);
    Window* child = Open("Child", 450, 100, 200, 100, 0, parent);
    Open("Other", 450, 300, 200, 100);
    child->EventFn = DragInEvent;
    Play("in Child\nmove 10 10\npress left\nmove 20 20\nin Parent\nclose\nin Other\nmove 5 5\nrelease left");
    EXPECT_EQ(DragEnds, 1);
    EXPECT_EQ(Shut, (std::vector<std::string>{"Child", "Parent"}));
}

TEST_F(WindowLifecycle, ADragGoesOnWhenAnotherWindowIsClosedOrDrawn) {
    DragEnds = 0;
    Window* window = Open("Drag", 100, 100, 300, 200);
    Open("Other", 450, 300, 200, 100);
    Open("Last", 450, 100, 200, 100);
    window->EventFn = DragInEvent;
    Play("in Drag\nmove 10 10\npress left\nin Other\nclose\nin Last\nresize 210 110\nhold LeftShift\n"
         "let LeftShift\nin Drag\nmove 30 30\nrelease left");
    EXPECT_EQ(DragEnds, 1);
    EXPECT_EQ(Shut, std::vector<std::string>{"Other"});
    EXPECT_EQ(LeftShift, 0);
}

TEST_F(WindowLifecycle, ADragStaysInItsWindowWhenTheInputChanges) {
    static std::vector<std::string> current;
    static Window* other;
    current.clear();
    Window* window = Open("Drag", 100, 100, 300, 200);
    other = Open("Other", 450, 300, 200, 100);
    other->FocusFn = [] { current.push_back("focus"); };
    window->EventFn = [](int device, short value) {
        if (device != gl::LEFTMOUSE || !value)
            return;
        gl::qenter(gl::INPUTCHANGE, static_cast<short>(other->Gid));
        while (!ButtonReleased(gl::LEFTMOUSE))
            current.push_back(CurrentWindow->Title);
        current.push_back("released");
    };
    Play("in Drag\nmove 10 10");
    current.clear();
    Play("press left\nmove 20 20\nrelease left");
    ASSERT_GE(current.size(), 3u);
    EXPECT_EQ(current.front(), "Drag");
    EXPECT_EQ(current[current.size() - 2], "released");
    EXPECT_EQ(current.back(), "focus");
    EXPECT_EQ(CurrentWindow, other);
}

TEST_F(WindowLifecycle, QuittingEndsADragAndTheProgram) {
    DragEnds = 0;
    Window* window = Open("Drag", 100, 100, 300, 200);
    window->EventFn = DragInEvent;
    EXPECT_EQ(Play("in Drag\nmove 10 10\npress left\nmove 20 20\nquit"), -1);
    EXPECT_EQ(DragEnds, 1);
}

TEST_F(WindowLifecycle, ACallbackMayShutItsOwnWindow) {
    static Window* window;
    static void (*shut)(Window*);
    static const char* labels[] = {"Shut"};
    for (auto function : {ShutWindow, CloseWindow}) {
        shut = function;
        Shut.clear();
        Open("Other", 450, 300, 200, 100);
        window = Open("Own", 100, 100, 300, 200);
        AddButtons(
            10, 10, 0, 0, 1, labels, [] { shut(window); }, nullptr, nullptr);
        Play("in Own\nclick left 20 20");
        EXPECT_EQ(Shut, std::vector<std::string>{"Own"});
        CloseAllWindows();
    }
}
