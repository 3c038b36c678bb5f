// Puts the windows onto the screen: one persistent picture of the screen, repaired where something changed. Opaque
// windows are blitted, frames around them, then the overlay; the pointer is the display's business.
#pragma once

#include "platform/screen_windows.h"

#include <string>

namespace gl {

// Makes the screen's picture for the present screen size, everything damaged. Again after a change of that size.
// `width` and `height`: screen pixels. False, with one line in `error`, when the driver refuses.
bool OpenCompositor(int width, int height, std::string& error);
void CloseCompositor();

// Whether anything changed since ComposeScreen.
bool ScreenIsDamaged();
// Completes pending drawing and repairs the screen's picture; nothing when nothing changed.
void ComposeScreen();
// The framebuffer object that holds the screen's picture, and its size in screen pixels.
unsigned ScreenFramebuffer();
PixelBox ScreenPixels();

// The window whose frame is shown as the active one (0: none); its frame and the former one's are painted again.
void ShowActiveWindow(int id);
int ActiveWindow();

// Where the overlay holds anything, at most (screen pixels). Shrinks to nothing some time after everything was erased.
PixelBox OverlayBounds();
// The overlay's colour map changed: what is seen of the overlay must be composed again.
void NoteOverlayColours();
// Looks once whether an overlay that was drawn to is empty again; for idle moments.
void TidyOverlay();

// Paints a window's content with its subwindows into the bound draw framebuffer, its lower left corner at 0, 0.
void PaintWindowAlone(const ScreenWindow& window);

} // namespace gl
