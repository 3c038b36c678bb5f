#pragma once

#include "gooey/gadget_skeleton.h"

struct Label {
    std::int32_t X, Y;
    char* Text;
    /// 0: the small font.
    std::int32_t BigFont;
    std::uint32_t Colour;
};

/// Adds a text in white, and one in grey. The text is copied.
Gadget* AddText(int x, int y, const char* text, int bigFont);
Gadget* AddDimText(int x, int y, const char* text, int bigFont);
/// Exchanges the text of one of these; to be drawn with its window.
void SetText(Gadget* gadget, const char* text);

/// Adds a gadget that clears the window to its background; goes first in windows without a draw function.
Gadget* AddBackdrop();
