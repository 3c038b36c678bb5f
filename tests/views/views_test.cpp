#include "views/views_test.h"

#include "gooey/event_loop.h"
#include "gooey/program_windows.h"
#include "gooey/window_stack.h"
#include "platform/drawing.h"
#include "platform/matrices.h"
#include "platform/scripts.h"
#include "platform/windows.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/polygon_editing.h"
#include "store/storage.h"
#include "views/capabilities.h"
#include "views/display_flags.h"
#include "views/grid.h"
#include "views/hooks.h"
#include "views/main_window.h"
#include "views/moves.h"
#include "views/rendering_state.h"
#include "views/scene_views.h"
#include "views/status_line.h"
#include "views/view_transform.h"
#include "views/viewports.h"
#include "views/work_area.h"

#include <cstdlib>

namespace {

/// The program's state before it opens its first window.
void StartAnew() {
    EndToolkit();
    MainWindow = nullptr;
    WindowInit = nullptr;
    WindowChange = nullptr;
    SpecialEvent = nullptr;
    QuitFunction = nullptr;
    for (const int merging : {1, 0}) {
        PointToMerge(merging);
        ResetStorage();
    }
    DevalidateSceneViews();
    ObjectIsolated = 1;
    NoViewports = 1;
    MainWindowOpened = 0;
    WindowsFrozen = 0;
    TheViewportSlots = {};
    WorkAreaGizmo = WorkAreaWindow = nullptr;
    GridVisible = 1;
    GridOnTop = GridSnap = AligningToVertices = HidingVertices = 0;
    GridGizmo = nullptr;
    SingleWhenStill = MoveWire = 0;
    FastUpdates = SolidView = TextureOn = WindowLabels = 1;
    Moving = DontDirtyAfterMove = 0;
    StatusList = nullptr;
    GridStatus = nullptr;
    SussGraphicsStuff();
}

Pixel PixelOfClip(const double* clip) {
    const double x = clip[0] / clip[3], y = clip[1] / clip[3];
    return {(x + 1) / 2 * CurrentWindow->Width, (y + 1) / 2 * CurrentWindow->Height};
}

} // namespace

void ViewsTest::SetUp() {
    setenv("KIRVO_DISPLAY", "headless:1200x900", 1);
    setenv("KIRVO_SCALE", "1", 1);
    unsetenv("KIRVO_SCRIPT");
    gl::ScriptEnded = [] {};
    StartAnew();
}

void ViewsTest::TearDown() {
    StartAnew();
}

Window* ViewsTest::OpenPlain(int width, int height, void (*draw)()) {
    WindowInit = InitGraphics;
    gl::prefposition(100, 100 + width - 1, 100, 100 + height - 1);
    return OpenWindow("Plain", WindowDoubleBuffered, 0, nullptr, draw, nullptr, nullptr, 0, nullptr);
}

void ViewsTest::OpenMain(int viewports, int width, int height) {
    MainX = MainY = 100;
    MainW = width;
    MainH = height;
    MainWindowOpened = 1;
    NoViewports = viewports;
    OpenMainWindow();
    Settle();
}

void ViewsTest::Settle() {
    while (CheckEvents() == 1) {
    }
}

void ViewsTest::Play(const std::string& script) {
    gl::PlayScript(script, "test");
    while (gl::ScriptIsPlaying())
        ASSERT_NE(CheckEvents(), -1);
    Settle();
}

Pixel ViewsTest::PixelOf(double x, double y, double z) {
    Matrix transform, projection;
    FloatMatrixToReal(CurrentViewTransform, transform);
    FloatMatrixToReal(CurrentProjection, projection);
    double point[4] = {x, y, z, 1};
    Transform4d(point, transform, point);
    Transform4d(point, projection, point);
    return PixelOfClip(point);
}

Pixel ViewsTest::DrawnPixelOf(double x, double y, double z, double* depth) {
    Matrix model, projection;
    GetGLMatrix(model);
    gl::mmode(gl::MPROJECTION);
    GetGLMatrix(projection);
    gl::mmode(gl::MVIEWING);
    double point[4] = {x, y, z, 1};
    Transform4d(point, model, point);
    Transform4d(point, projection, point);
    if (depth)
        *depth = point[2] / point[3];
    return PixelOfClip(point);
}

std::uint32_t ViewsTest::Drawn(int x, int y) {
    std::uint32_t pixel = 0;
    gl::lrectread(x, y, x, y, &pixel);
    return pixel & 0xFFFFFF;
}

void ViewsTest::AddBox(double halfX, double halfY, double halfZ) {
    for (int corner = 0; corner < 8; ++corner)
        AddVertex(corner & 1 ? halfX : -halfX, corner & 2 ? halfY : -halfY, corner & 4 ? halfZ : -halfZ);
    CleanUpObject();
}

void ViewsTest::SetRadius(double radius) {
    CleanUpObject();
    CurrentObject()->Radius = radius;
}
