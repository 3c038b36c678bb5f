#pragma once

#include "store/view_record.h"

#include <cstdint>

struct Window;

// The model views inside the main window.

/// The viewports' windows; null where there is none.
extern Window* Viewport[ViewportLimit];

/// Flag: the small viewports take no input.
extern int WindowsFrozen;

/// What the views need of the layers above; each is skipped when null.
struct ViewportSlots {
    // A press in a view, and a character typed there.
    void (*StartLeftModel)(View* view) = nullptr;
    void (*StartMiddleModel)(View* view) = nullptr;
    void (*StartRightModel)(View* view) = nullptr;
    void (*CheckModelKey)(View* view, int character) = nullptr;
    void (*CheckTab)(View* view, int pressed) = nullptr;
    /// The wheel turned, the pointer (MouseX, MouseY) being in the view: 120ths of a notch to the right and away from
    /// the user.
    void (*TurnWheel)(View* view, int turnX, int turnY) = nullptr;
    /// A press or a key in a view is about to be answered.
    void (*InputBegins)() = nullptr;
};

extern ViewportSlots TheViewportSlots;

/// The private block of every window that SetViewPos places: -1 as a place means that it has none yet.
struct SubwindowPlace {
    std::int32_t Number; // of the viewport, 0 to 2; -1 for other windows
    std::int32_t X, Y, Width, Height;
};

inline constexpr SubwindowPlace UnplacedSubwindow = {-1, -1, -1, -1, -1};

/// Opens viewport 0 to 2 inside the main window; the current window stays.
void OpenViewport(int number);
/// Moves a viewport, or another subwindow with a SubwindowPlace, within its parent (pixels, origin bottom-left) and
/// clears it; nothing happens when it is there already.
void SetViewPos(Window* window, int x, int y, int width, int height);
/// Toggles one and three viewports; every view of the file gets its projection anew before it is drawn next.
void ChangeNoViewports();

/// The view shown in viewport 0 to 2: the scene's or the current object's.
View* ViewOfViewport(int number);
/// The 3D view of the first viewport that has one, and the viewport's number; null when all are 2D.
View* FindThreeDeeView(int& number);
/// The number of the viewport that a window is; -1 for other windows.
int ViewportNumber(const Window* window);

/// A viewport's drawing and events.
void DrawView();
void CheckView(int device, short value);
/// Sees to it that the view of a viewport can be drawn: if need be it, with those of the other viewports, is made from
/// the defaults.
void ValidateView(int number);

/// All viewports, the main window and the work area's windows at the end of this pass.
void DirtyModelWindows();
/// Only the viewports that show a 3D view.
void DirtyThreeDeeWindows();
/// At once, during a drag; with FastUpdates the current window only.
void RedrawModelWindows();
/// At once, during a drag in another window; with FastUpdates the large viewport only, the others at the end of this
/// pass.
void RedrawModelWindowsBeside();
/// Buffers as SingleWhenStill wants them.
void ConfigureBuffers();

/// While frozen, viewports 1 and 2 take no input, those opened meanwhile included.
void FreezeSmallWindows();
void UnfreezeSmallWindows();
