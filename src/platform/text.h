// Text in raster fonts, rasterised from outlines at the screen's scale but measured in drawing pixels, so that a layout
// is the same at every scale. Text is UTF-8; a byte that belongs to no character shows as "?".
#pragma once

#include <string>

namespace gl {

// The outline file (TrueType) of all fonts. Set it before the first text is drawn or measured; otherwise the one in the
// source tree is taken. False when the file cannot be used; the former one stays.
bool SetFontFile(const std::string& path);

// Defines font `number` (1 up) with that height in drawing pixels, from the lowest descender to the top of the tallest
// letter and the space between lines; its letters are as wide as the outline's, or that many percent of it. Font 0, the
// default, is there from the beginning with a height of 17.
void defrasterfont(int number, int height, int width = 100);
// The font that charstr and strwidth use; an undefined number selects font 0. It is shared by all windows.
void font(int number);
int getfont();
// The height of the current font, and how far its letters reach below the baseline.
int getheight();
int getdescender();
// How wide a text is in the current font: the sum of its characters' advance widths, in drawing pixels.
int strwidth(const char* text);
// The advance width of a character (0 to 127) of a font.
int AdvanceWidth(int number, int character);

// Moves to where the next text starts: its baseline's left end, in the coordinates of the current matrices.
void cmov(double x, double y, double z);
void cmov2(double x, double y);
void cmov2i(int x, int y);
// Draws a text there in the current colour (the current index in PUPDRAW) and moves to its end. Never lit or textured;
// the depth test, the screen mask and the fill pattern hold.
void charstr(const char* text);

} // namespace gl
