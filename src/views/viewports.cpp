#include "views/viewports.h"

#include "base/debug.h"
#include "base/slots.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "platform/events.h"
#include "platform/framebuffer.h"
#include "platform/state.h"
#include "platform/windows.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"
#include "views/capabilities.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/drawing.h"
#include "views/moves.h"
#include "views/scene_views.h"
#include "views/status_line.h"
#include "views/structure_preview.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <algorithm>
#include <cstdio>

Window* Viewport[ViewportLimit];
int WindowsFrozen;
ViewportSlots TheViewportSlots;

namespace {

static_assert(sizeof(SubwindowPlace) == 20);

constexpr int FirstSmallViewport = 1;

int NumberOfCurrentViewport() {
    return WindowData<SubwindowPlace>(CurrentWindow).Number;
}

void ForgetViewport() {
    const int number = ViewportNumber(CurrentWindow);
    if (number >= 0)
        Viewport[number] = nullptr;
}

void ViewportFocused() {
    const int number = NumberOfCurrentViewport();
    const View* view = ViewOfViewport(number);
    NoteFocusedView(view->Valid ? view->Perspective : DefaultViewDir[number] == Direction3D);
}

template <class Function>
void ForEachSmallViewport(Function function) {
    for (int number = FirstSmallViewport; number < ViewportLimit; ++number)
        if (Viewport[number])
            function(Viewport[number]);
}

/// A viewport opened while something is modal takes no more input than the main window does.
void DisableLikeMainWindow(Window* window) {
    for (int i = 0; i < MainWindow->Disabled; ++i)
        DisableWindow(window);
}

void MarkStale(View& view) {
    // What was made in advance is to fit the model when it is first shown; a file's views have been stale before.
    const bool everShown = view.Stale || view.Size != 0;
    if (!everShown)
        view.Projection = {};
    view.Stale = 1;
}

void MarkStale(View& default3D, View (&defaults2D)[DefaultView2DCount], View (&views)[ViewportLimit]) {
    MarkStale(default3D);
    for (View& view : defaults2D)
        MarkStale(view);
    for (View& view : views)
        MarkStale(view);
}

void MarkAllViewsStale() {
    MarkStale(DefaultScene3D, DefaultScene2D, SceneView);
    for (Object* object : EveryObject(*CurrentFile))
        MarkStale(object->DefaultObject3D, object->DefaultObject2D, object->View);
}

void ResetViews() {
    if (ObjectIsolated)
        MakeDefaultObjectViews();
    else
        MakeDefaultSceneViews();
    for (int number = 0; number < ViewportLimit; ++number) {
        const auto setDefault = ObjectIsolated ? SetDefaultObjectView : SetDefaultSceneView;
        setDefault(ViewOfViewport(number), DefaultViewDir[number]);
    }
}

void OpenSmallViewports() {
    for (int number = FirstSmallViewport; number < ViewportLimit; ++number) {
        OpenViewport(number);
        if (WindowsFrozen)
            DisableWindow(Viewport[number]);
    }
}

void CloseSmallViewports() {
    for (int number = FirstSmallViewport; number < ViewportLimit; ++number) {
        CloseWindow(Viewport[number]);
        Viewport[number] = nullptr;
    }
}

void PressButton(void (*start)(View*), View* view, short pressed) {
    if (pressed && start)
        start(view);
}

void CheckProgramKeys(short character) {
    const bool alt = LeftAlt || RightAlt;
    if (alt && (character == F12Character - 1 || character == F12Character))
        OpenStructurePreview();
    if (DeveloperBuild && !alt && character == F12Character) {
        ClipPlanesAvailable = !ClipPlanesAvailable;
        Trace("Hardware clipplanes = %d\n", ClipPlanesAvailable);
        DirtyModelWindows();
    }
}

void SetFrozen(int frozen, void (*change)(Window*)) {
    if (WindowsFrozen == frozen)
        return;
    WindowsFrozen = frozen;
    ForEachSmallViewport(change);
}

} // namespace

void OpenViewport(int number) {
    PushWindow();
    char title[32];
    std::snprintf(title, sizeof title, " Subview %d", number);
    const int flags = WindowInParent | (SingleWhenStill ? 0 : WindowDoubleBuffered);
    Viewport[number] = OpenWindow(title, flags, 0, ViewportFocused, DrawView, CheckView, ForgetViewport,
                                  sizeof(SubwindowPlace), MainWindow);
    SubwindowPlace& place = WindowData<SubwindowPlace>(Viewport[number]);
    place = UnplacedSubwindow;
    place.Number = number;
    DisableLikeMainWindow(Viewport[number]);
    PopWindow();
}

void SetViewPos(Window* window, int x, int y, int width, int height) {
    SubwindowPlace& place = WindowData<SubwindowPlace>(window);
    width = std::max(width, 1);
    height = std::max(height, 1);
    if (!window->Resized && place.X == x && place.Y == y && place.Width == width && place.Height == height)
        return;
    WindowScope scope(window);
    const bool sameSize = window->Width == width && window->Height == height;
    place = {place.Number, x, y, width, height};
    gl::winposition(x, x + width - 1, y, y + height - 1);
    gl::viewport(0, width - 1, 0, height - 1);
    UpdateWindowGeometry();
    FrontBuffer(1);
    ClearWindow();
    FrontBuffer(0);
    // A new size has the graphics layer ask for a redraw.
    if (sameSize)
        DirtyWindow(window);
}

void ChangeNoViewports() {
    const bool shown = MainWindow != nullptr;
    if (NoViewports == 1) {
        NoViewports = ViewportLimit;
        if (shown)
            OpenSmallViewports();
    } else {
        NoViewports = 1;
        CloseSmallViewports();
    }
    MarkAllViewsStale();
    RedrawWindow(MainWindow);
}

View* ViewOfViewport(int number) {
    number = std::clamp(number, 0, ViewportLimit - 1);
    return ObjectIsolated ? &ObjectView(number) : &SceneView[number];
}

View* FindThreeDeeView(int& number) {
    for (number = 0; number < NoViewports; ++number)
        if (View* view = ViewOfViewport(number); view->Perspective)
            return view;
    return nullptr;
}

int ViewportNumber(const Window* window) {
    for (int number = 0; number < ViewportLimit; ++number)
        if (window && Viewport[number] == window)
            return number;
    return -1;
}

void DrawView() {
    const int number = NumberOfCurrentViewport();
    ValidateView(number);
    DrawWorkWindow(ViewOfViewport(number));
    gl::swapbuffers();
}

void CheckView(int device, short value) {
    CallSlot(TheViewportSlots.InputBegins);
    if (value)
        ShowRemark("");
    if (ObjectIsolated)
        CleanUpObject();
    const int number = NumberOfCurrentViewport();
    ValidateView(number);
    View* view = ViewOfViewport(number);
    // The view may not have been drawn since it became this one: what the pointer means must not wait for that.
    SetUpView(view, 0);
    switch (device) {
    case gl::LEFTMOUSE:
        PressButton(TheViewportSlots.StartLeftModel, view, value);
        break;
    case gl::MIDDLEMOUSE:
        PressButton(TheViewportSlots.StartMiddleModel, view, value);
        break;
    case gl::RIGHTMOUSE:
        PressButton(TheViewportSlots.StartRightModel, view, value);
        break;
    case gl::KEYBD:
        ReadMousePos();
        CheckProgramKeys(value);
        if (TheViewportSlots.CheckModelKey)
            TheViewportSlots.CheckModelKey(view, value);
        break;
    case gl::TABKEY:
        CallSlot(TheViewportSlots.CheckTab, view, value);
        break;
    case gl::WHEELX:
    case gl::WHEELY:
        ReadMousePos();
        if (TheViewportSlots.TurnWheel)
            TheViewportSlots.TurnWheel(view, device == gl::WHEELX ? value : 0, device == gl::WHEELY ? value : 0);
        break;
    default:
        break;
    }
}

void ValidateView(int number) {
    if (!ViewIsUsable(*ViewOfViewport(number)))
        ResetViews();
    RepairView(ViewOfViewport(number));
}

void DirtyModelWindows() {
    for (Window* window : Viewport)
        DirtyWindow(window);
    DirtyWindow(MainWindow);
    DirtyWindow(WorkAreaWindow);
    DirtyWindow(WorkAreaGizmo);
}

void DirtyThreeDeeWindows() {
    for (int number = 0; number < NoViewports; ++number)
        if (ViewOfViewport(number)->Perspective)
            DirtyWindow(Viewport[number]);
}

void RedrawModelWindows() {
    if (FastUpdates || (CurrentWindow && CurrentWindow == WorkAreaWindow)) {
        RedrawCurrentWindow();
        return;
    }
    DoubleBufferOtherViewports();
    for (Window* window : Viewport)
        RedrawWindow(window);
}

void RedrawModelWindowsBeside() {
    for (Window* window : Viewport)
        if (!FastUpdates || window == Viewport[0])
            RedrawWindow(window);
    DirtyModelWindows();
}

void ConfigureBuffers() {
    const auto configure = [](Window* window) {
        if (!window)
            return;
        WindowScope scope(window);
        if (SingleWhenStill)
            MakeSingleBuffer();
        else
            MakeDoubleBuffer();
    };
    for (Window* window : Viewport)
        configure(window);
    configure(WorkAreaWindow);
}

void FreezeSmallWindows() {
    SetFrozen(1, DisableWindow);
}

void UnfreezeSmallWindows() {
    SetFrozen(0, EnableWindow);
}
