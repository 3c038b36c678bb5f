#include "views/views_test.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window_stack.h"
#include "platform/events.h"
#include "platform/windows.h"
#include "store/accessors.h"
#include "store/objects.h"
#include "store/storage.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/grid.h"
#include "views/moves.h"
#include "views/scene_views.h"
#include "views/view_transform.h"
#include "views/viewports.h"
#include "views/work_area.h"

#include <vector>

class Viewports : public ViewsTest {};

namespace {

std::string PlaceOf(const Window* window) {
    const gl::WindowRectangle place = gl::WindowPlace(window->Gid);
    return std::to_string(place.X - MainWindow->X) + "," + std::to_string(place.Y - MainWindow->Y) + " " +
           std::to_string(place.Width) + "x" + std::to_string(place.Height);
}

int IsDouble(const Window* window) {
    return (window->Flags & WindowDoubleBuffered) != 0;
}

} // namespace

TEST_F(Viewports, FillTheMainWindow) {
    OpenMain(1, 750, 560);
    EXPECT_EQ(PlaceOf(Viewport[0]), "4,29 742x492");
    ChangeNoViewports();
    Settle();
    EXPECT_EQ(PlaceOf(Viewport[0]), "4,29 492x492");
    EXPECT_EQ(PlaceOf(Viewport[1]), "504,279 242x242");
    EXPECT_EQ(PlaceOf(Viewport[2]), "504,29 242x242");
    EXPECT_STREQ(Viewport[2]->Title, " Subview 2");
    for (int i = 0; i < ViewportLimit; ++i) {
        EXPECT_EQ(ViewportNumber(Viewport[i]), i);
        EXPECT_EQ(ObjectView(i).Perspective, i == 0);
    }
    EXPECT_EQ(ObjectView(1).Direction, 4);
    EXPECT_EQ(ObjectView(2).Direction, 0);
    EXPECT_EQ(ViewportNumber(MainWindow), -1);
    ChangeNoViewports();
    Settle();
    EXPECT_EQ(PlaceOf(Viewport[0]), "4,29 742x492");
    EXPECT_EQ(Viewport[1], nullptr);
    EXPECT_EQ(Viewport[2], nullptr);
    ShutWindow(MainWindow);
    EXPECT_EQ(Viewport[0], nullptr);
}

TEST_F(Viewports, AreNotTouchedWhereTheyAreAlready) {
    OpenMain(1);
    Window* window = Viewport[0];
    const auto fill = [&] {
        WindowScope scope(window);
        window->Background = 0x010203;
        ClearWindow();
    };
    const auto untouched = [&] {
        WindowScope scope(window);
        return Drawn(50, 50) == 0x010203 && !window->Dirty;
    };
    {
        WindowScope scope(window);
        MakeSingleBuffer();
    }
    fill();
    window->Background = 0xFFFFFF;
    SetViewPos(window, 4, 29, 742, 492);
    EXPECT_TRUE(untouched());
    fill();
    window->Background = 0xFFFFFF;
    SetViewPos(window, 5, 29, 742, 492);
    EXPECT_FALSE(untouched());
    EXPECT_TRUE(window->Dirty);
    Settle();
    fill();
    window->Background = 0xFFFFFF;
    window->Resized = 1;
    SetViewPos(window, 5, 29, 742, 492);
    EXPECT_FALSE(untouched());
}

TEST_F(Viewports, ChangingTheirNumberMakesEveryViewStale) {
    OpenMain(3);
    Object* first = CurrentObject();
    AddObject("Second", 1, 0);
    Object* second = CurrentObject();
    const auto views = [&] {
        std::vector<View*> all = {&DefaultScene3D};
        for (int i = 0; i < ViewportLimit; ++i)
            all.insert(all.end(), {&SceneView[i], &first->View[i], &second->View[i]});
        for (int i = 0; i < DefaultView2DCount; ++i)
            all.insert(all.end(), {&DefaultScene2D[i], &first->DefaultObject2D[i], &second->DefaultObject2D[i]});
        all.insert(all.end(), {&first->DefaultObject3D, &second->DefaultObject3D});
        return all;
    };
    for (int i = 0; i < 2; ++i) {
        for (View* view : views())
            view->Stale = 0;
        ChangeNoViewports();
        for (View* view : views())
            EXPECT_EQ(view->Stale, 1);
        EXPECT_EQ(CurrentObject(), second);
    }
    EXPECT_EQ(NoViewports, 3);
}

TEST_F(Viewports, ShowAsMuchAsBeforeWhenTheyComeBack) {
    OpenMain(1);
    AddBox(10, 10, 10);
    SetRadius(20);
    ChangeNoViewports();
    Settle();
    const auto shown = [](int number) { return 1 / (ObjectView(number).Projection[1][1] * ObjectView(number).Zoom); };
    EXPECT_NEAR(shown(1), 20, 1e-9) << "at first all of the model";
    ObjectView(1).Zoom = 4;
    ChangeNoViewports();
    Settle();
    SetRadius(200);
    ChangeNoViewports();
    Settle();
    EXPECT_NEAR(shown(1), 5, 1e-9);
    EXPECT_NEAR(ObjectView(1).Projection[1][1], 1 / 200.0, 1e-9);
}

TEST_F(Viewports, AreCountedWithoutWindowsToo) {
    ChangeNoViewports();
    EXPECT_EQ(NoViewports, 3);
    EXPECT_EQ(Viewport[1], nullptr);
    EXPECT_EQ(SceneView[2].Stale, 1);
    ChangeNoViewports();
    EXPECT_EQ(NoViewports, 1);
}

TEST_F(Viewports, SmallOnesCanBeFrozen) {
    OpenMain(3);
    FreezeSmallWindows();
    FreezeSmallWindows();
    EXPECT_EQ(Viewport[0]->Disabled, 0);
    EXPECT_EQ(Viewport[1]->Disabled, 1);
    ChangeNoViewports();
    Settle();
    ChangeNoViewports();
    Settle();
    EXPECT_EQ(Viewport[2]->Disabled, 1);
    // A question comes and goes meanwhile, and one is there when viewports open.
    DisableWindow(MainWindow);
    ChangeNoViewports();
    Settle();
    ChangeNoViewports();
    EnableWindow(MainWindow);
    EXPECT_EQ(Viewport[1]->Disabled, 1);
    UnfreezeSmallWindows();
    UnfreezeSmallWindows();
    EXPECT_EQ(Viewport[1]->Disabled, 0);
    EXPECT_EQ(Viewport[2]->Disabled, 0);
}

TEST_F(Viewports, PassOnWhatTheUserDoes) {
    static std::vector<std::string> calls;
    calls.clear();
    static const auto note = [](const char* what, View* view) {
        for (int i = 0; i < ViewportLimit; ++i)
            if (view == &ObjectView(i) || view == &SceneView[i])
                calls.push_back(what + std::to_string(i) + (view == &SceneView[i] ? " scene" : ""));
    };
    TheViewportSlots.StartLeftModel = [](View* view) { note("left ", view); };
    TheViewportSlots.StartMiddleModel = [](View* view) { note("middle ", view); };
    TheViewportSlots.StartRightModel = [](View* view) { note("right ", view); };
    TheViewportSlots.CheckModelKey = [](View* view, int character) {
        note(character == 'k' ? "k " : character == F1Character ? "F1 " : "other key ", view);
    };
    TheViewportSlots.TurnWheel = [](View* view, int turnX, int turnY) {
        note(turnY == gl::WHEELNOTCH && !turnX ? "wheel " : "other turn ", view);
    };
    OpenMain(3);
    Play("in \"Subview 0\"\nclick left 50 50\nclick right 50 50\n"
         "in \"Subview 1\"\nclick middle 60 60\nkey k\nkey F1\n");
    ObjectIsolated = 0;
    DirtyModelWindows();
    Settle();
    Play("in \"Subview 2\"\nclick left 50 50\n");
    gl::qenter(gl::WHEELY, gl::WHEELNOTCH);
    Settle();
    EXPECT_EQ(calls, (std::vector<std::string>{"left 0", "right 0", "middle 1", "k 1", "F1 1", "left 2 scene",
                                               "wheel 2 scene"}));
}

class Moves : public ViewsTest {
  protected:
    static inline int MoveCount, DrawCount, EventCount;

    void SetUp() override {
        ViewsTest::SetUp();
        MoveCount = DrawCount = EventCount = 0;
    }

    static void CountDraws() { ++DrawCount; }
};

TEST_F(Moves, EndAtOnceWhenTheButtonIsUpAlready) {
    OpenPlain(300, 200, CountDraws);
    Settle();
    DrawCount = 0;
    View view = {};
    gl::qenter(gl::LEFTMOUSE, 0);
    gl::qenter(gl::MOUSEX, 10);
    gl::qenter(gl::MOUSEY, 10);
    UpdateWindow(
        &view, gl::LEFTMOUSE, [](View*) { ++MoveCount; }, nullptr);
    EXPECT_EQ(MoveCount, 0);
    EXPECT_EQ(DrawCount, 0);
    EXPECT_EQ(Moving, 0);
    EXPECT_TRUE(CurrentWindow->Dirty);
}

TEST_F(Moves, FollowThePointerUntilTheRelease) {
    static std::vector<std::pair<int, int>> places;
    places.clear();
    static View dragged;
    Window* window = OpenPlain(300, 200, CountDraws);
    window->EventFn = [](int device, short value) {
        if (device != gl::MIDDLEMOUSE || !value)
            return;
        UpdateWindow(
            &dragged, gl::MIDDLEMOUSE,
            [](View*) {
                EXPECT_EQ(Moving, 1);
                if (places.empty() || places.back() != std::pair(MouseX, MouseY))
                    places.emplace_back(MouseX, MouseY);
            },
            [](View* view, int what, short) {
                EXPECT_EQ(view, &dragged);
                EventCount += what == gl::RIGHTMOUSE;
            });
    };
    Settle();
    Play("in Plain\nmove 10 20\npress middle\nmove 50 60\npress right\nrelease right\nmove 70 80\nwait 50\n"
         "release middle\n");
    ASSERT_GE(places.size(), 3u);
    EXPECT_EQ(places.front(), std::pair(10, 20));
    EXPECT_EQ(places.back(), std::pair(70, 80));
    EXPECT_EQ(EventCount, 2);
    EXPECT_EQ(Moving, 0);
    // One drawing a change, however long the pointer rests.
    EXPECT_LE(DrawCount, 20);
}

TEST_F(Moves, DrawMotionThatNeedsNoPointer) {
    static View turning;
    Window* window = OpenPlain(300, 200, CountDraws);
    window->EventFn = [](int device, short value) {
        if (device == gl::LEFTMOUSE && value)
            UpdateWindow(
                &turning, gl::LEFTMOUSE, [](View* view) { view->Zoom += 1; }, nullptr);
    };
    Settle();
    DrawCount = 0;
    Play("in Plain\nmove 10 20\npress left\nwait 50\nrelease left\n");
    EXPECT_GE(DrawCount, 40);
}

TEST_F(Moves, SwitchBuffersWhileSomethingMoves) {
    struct Case {
        int SingleWhenStill, FastUpdates;
        const char* Before; // viewports 0 to 2: 1 single-, 2 double-buffered
        const char* During;
    };

    const Case cases[] = {{0, 0, "222", "222"}, {1, 1, "111", "121"}, {1, 0, "111", "222"}};
    OpenMain(3);
    const auto buffers = [] {
        std::string all;
        for (const Window* window : Viewport)
            all += IsDouble(window) ? "2" : "1";
        return all;
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.During);
        SingleWhenStill = c.SingleWhenStill;
        FastUpdates = c.FastUpdates;
        ConfigureBuffers();
        EXPECT_EQ(buffers(), c.Before);
        WindowScope scope(Viewport[1]);
        StartMove();
        RedrawModelWindows();
        RedrawModelWindows();
        EXPECT_EQ(buffers(), c.During);
        StopMove();
        EXPECT_EQ(buffers(), c.Before);
        EXPECT_EQ(CurrentWindow, Viewport[1]);
    }
}

TEST_F(Moves, HaveTheModelDrawnAgain) {
    OpenMain(3);
    WindowScope scope(Viewport[1]);
    for (const int mainOnly : {1, 0}) {
        Settle();
        DontDirtyAfterMove = mainOnly;
        StartMove();
        StopMove();
        EXPECT_TRUE(MainWindow->Dirty);
        EXPECT_EQ(Viewport[0]->Dirty, !mainOnly);
        EXPECT_EQ(Viewport[2]->Dirty, !mainOnly);
        EXPECT_EQ(DontDirtyAfterMove, 0);
    }
}

TEST_F(Viewports, OpenThePreviewOfStructures) {
    OpenMain(1, 750, 500);
    const char* title = "The future of the object structure / scene builder...";
    Play("in \"Subview 0\"\nmove 20 20\nkey Alt+F11\n");
    const int id = gl::FindWindowByTitle(title);
    ASSERT_NE(id, 0);
    EXPECT_EQ(gl::WindowPlace(id).Width, 501);
    EXPECT_EQ(gl::WindowPlace(id).Height, 351);

    // What the window shows below the tree.
    const auto fields = [id] {
        WindowScope scope(FindWindowById(id));
        std::string all;
        for (const Gadget* gadget = CurrentWindow->Gadgets; gadget; gadget = gadget->NextGadget) {
            if (!gadget->Visible || !gadget->Kind || std::string(gadget->Kind->Name) == "scroll")
                continue;
            GadgetDescription description;
            gadget->Kind->Describe(gadget, description);
            all += description.Label + (description.Text.empty() ? "" : "=" + description.Text) + ";";
        }
        return all;
    };
    const auto click = [](const char* place) { Play("in \"The future\"\nclick left " + std::string(place) + "\n"); };
    EXPECT_EQ(fields(), "");
    click("225 327");
    EXPECT_EQ(fields(), "Object=Car;Emits sound=EngineNoise.aiff;");
    click("130 280");
    EXPECT_EQ(fields(), "Node attributes:;");
    click("77 237");
    EXPECT_EQ(fields(), "Lod=Near;contains 1234 polygons;Lod switches at=1000.0;");
    click("252 237");
    EXPECT_EQ(fields(), "Sub object=Body;contains 1234 polygons;Attributes:;Billboard;Backface;");
    click("460 180"); // beside every box
    EXPECT_EQ(fields(), "Sub object=Body;contains 1234 polygons;Attributes:;Billboard;Backface;");

    Play("in \"Subview 0\"\nmove 20 20\nkey Alt+F11\nin \"The future\"\nclose\n");
    EXPECT_EQ(gl::FindWindowByTitle(title), 0);
}
