// The look of frames: a bevelled border and a title strip with the close box, in the grey of the toolkit's boxes.
#pragma once

#include "platform/screen_windows.h"

namespace gl {

// Draws the title strip's picture anew if it is out of date; the frame of the active window is lighter.
void UpdateTitleStrip(ScreenWindow& window, bool active);

// A line of the border, in drawing pixels of the screen, with its colour (packed 0x00BBGGRR).
struct BorderLine {
    WindowRectangle Box;
    std::uint32_t Colour;
};

// The lines of a window's border, in the order of painting.
std::vector<BorderLine> BorderLines(const WindowRectangle& content);

// A title as it is shown: without blanks at its ends, cut with "..." to a width in the title's font.
std::string ShownTitle(const std::string& title, int width);

// The screen behind all windows.
constexpr std::uint32_t ScreenColour = 0x685C50;

} // namespace gl
