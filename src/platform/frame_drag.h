// What the left button does to frames: raising, moving by the title, resizing by edges and corners under the window's
// rules, the close box, fitting to the screen by a double click on the title. All of it goes on event by event, beside
// the program's own loops. Positions are drawing pixels of the screen.
#pragma once

#include "platform/screen_windows.h"

namespace gl {

// The left button went down there. True when a frame took it; motion and release then belong to the frame.
bool PressFrame(int x, int y);
void DragFrame(int x, int y);
void ReleaseFrame(int x, int y);
// A frame holds the button; the part that it was pressed on (None otherwise).
bool FrameIsHeld();
FramePart HeldFramePart();
// Lets go without closing or moving any further.
void ForgetFrameDrag();
// Forgets former clicks as well.
void ResetFrameDrag();

// Asks a window's owner to close it: WINSHUT, or WINQUIT where only that is queued.
void RequestClose(const ScreenWindow& window);
// Fits a window to the screen within its own rules, or takes it back to where it was.
void FitOrRestore(ScreenWindow& window);
// The content's size as if pulled by the lower right corner.
void ResizeWithinRules(ScreenWindow& window, int width, int height);

} // namespace gl
