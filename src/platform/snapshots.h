// Pictures of the screen and of windows (see picture.h for files and comparisons).
#pragma once

#include "platform/picture.h"

#include <string>

namespace gl {

// The whole screen as it is shown, in screen pixels: frames, overlay and (unless left out) the pointer included. Empty
// when the display is not open.
Picture ScreenPicture(bool withPointer = true);
// A window's content as it is shown, its subwindows included, without what lies over it. Empty for an unknown window.
Picture WindowPicture(int id);

// Takes the picture and writes it as a PNG file. False with one line in `error`; window 0 is the whole screen.
bool WriteSnapshot(int window, const std::string& path, std::string& error);

} // namespace gl
