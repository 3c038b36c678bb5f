#include "interaction/view_commands.h"

#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/manipulation.h"
#include "store/storage.h"
#include "store/undo.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/fitting.h"
#include "views/upright.h"
#include "views/viewports.h"
#include "views/work_area.h"

void Show3dView(View* view) {
    if (!view->Perspective) {
        SetDefaultView(view, Direction3D);
        return;
    }
    MakeViewUpright(view);
    RememberView(view);
    DirtyCurrentWindow();
}

void SetDefaultView(View* view, int direction) {
    if (ObjectIsolated)
        SetDefaultObjectView(view, direction);
    else
        SetDefaultSceneView(view, direction);
    DirtyCurrentWindow();
}

void FitView(View* view) {
    // A magnified work area is itself what its views show.
    if (WorkAreaMagnification() > 1)
        ResetView(view);
    else
        FitViewToBox(view, ObjectIsolated ? ObjectBox() : SceneBox());
    RememberView(view);
    DirtyCurrentWindow();
}

void SwapLargeView() {
    if (NoViewports != ViewportLimit)
        return;
    const int other = CurrentWindow && CurrentWindow == Viewport[2] ? 2 : 1;
    SwapViews(*ViewOfViewport(0), *ViewOfViewport(other));
    DirtyWindow(Viewport[0]);
    DirtyWindow(Viewport[other]);
}

void ToggleThreeViews() {
    if (CurrentWindow && (CurrentWindow == Viewport[1] || CurrentWindow == Viewport[2]))
        SwapLargeView();
    ChangeNoViewports();
}

void Toggle(int& flag) {
    flag = !flag;
}

void ToggleShown(int& flag) {
    Toggle(flag);
    DirtyModelWindows();
}

void ToggleSingleBuffer() {
    Toggle(SingleWhenStill);
    ConfigureBuffers();
    DirtyModelWindows();
}
