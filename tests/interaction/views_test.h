#pragma once

#include "gooey/toolkit_test.h"

#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window_stack.h"
#include "interaction/input.h"
#include "interaction/manipulation.h"
#include "interaction/selection.h"
#include "interaction/tool_protocol.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"
#include "views/default_views.h"
#include "views/grid.h"
#include "views/main_window.h"
#include "views/tool_bar.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <algorithm>
#include <string>
#include <vector>

/// The main window over an empty model, its viewport 0 addressed by scripts; a left drag in it draws no box before a
/// test says so.
class ViewsTest : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        InitialiseStorage();
        ObjectIsolated = 1;
        GridSnap = 0;
        TheViewportSlots = {StartLeftModel, StartMiddleModel, StartRightModel, CheckModelKey, CheckTab, TurnWheel};
        TheUndoSlots.DeselectEverything = DeselectEverything;
        MainWindowOpened = 0;
        OpenMainWindow();
        WindowChange = ChangeWindow;
        SpecialEvent = HandleSpecialEvents;
        Settle();
    }

    void TearDown() override {
        ClearControl();
        Settle();
        ToolkitTest::TearDown();
        ResetStorage();
        TheViewportSlots = {};
        TheUndoSlots = {};
        TheInputSlots = {};
        LeftClickFunc = nullptr;
    }

    static View& Shown() { return *ViewOfViewport(0); }

    static int Width() { return Viewport[0]->Width; }

    static int Height() { return Viewport[0]->Height; }

    /// Presses a button of the tool bar.
    static void Button(const std::string& label) { Play("in \"Loading file...\"\nbutton \"" + label + "\""); }

    /// Plays commands in viewport 0.
    static void InView(const std::string& script) { Play("in \"Subview 0\"\n" + script); }

    static std::string At(int x, int y) { return " " + std::to_string(x) + " " + std::to_string(y); }

    /// Viewport 0 shows a 2D view of this direction, or the 3D view.
    static void Show(int direction) {
        WindowScope scope(Viewport[0]);
        SetDefaultObjectView(&Shown(), direction);
        DirtyWindow(Viewport[0]);
        Settle();
    }

    static std::size_t Count(auto walk) { return static_cast<std::size_t>(std::distance(walk.begin(), walk.end())); }

    static std::size_t Vertices() { return Count(EveryVertex(CurrentObject())); }

    static std::size_t Polygons() { return Count(EveryPolygon(CurrentObject())); }
};
