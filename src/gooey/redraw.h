#pragma once

struct Window;

/// Draws the window at once: with its DrawFn, else its gadgets. Nothing for null and for a window that is closing.
void RedrawWindow(Window* window);
void RedrawCurrentWindow();

/// Has the window redrawn at the end of the present pass of the dispatcher. Cheap when it is dirty already.
void DirtyWindow(Window* window);
void DirtyCurrentWindow();
void DirtyAllWindows();

/// Redraws every dirty window.
void RedrawDirtyWindows();

/// Draws the current window's gadgets and shows them.
void DrawGooeyWindow();

/// Fills the current window with its background.
void ClearWindow();
