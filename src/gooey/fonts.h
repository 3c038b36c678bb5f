#pragma once

#include <cstdint>

// Text in the three fonts: normal (22 pixels high), small (17) and menu (18). Texts are UTF-8; a character that the
// font does not have is shown as a box. Positions are window pixels, y the baseline; widths are whole pixels.

inline constexpr int NormalFont = 1;
inline constexpr int SmallFont = 2;
inline constexpr int MenuFont = 3;

/// Makes the fonts known to the graphics layer; runs when the first window opens.
void InitFonts();

void DrawText(int x, int y, const char* text, std::uint32_t rgb);
void SmallText(int x, int y, const char* text, std::uint32_t rgb);
/// In the present colour.
void DrawMenuText(int x, int y, const char* text);

/// Text centred in a width starting at x, in the present colour; a wider text starts left of x.
void PrintCentre(int x, int y, int width, const char* text);
void SmallCentre(int x, int y, int width, const char* text);

/// Text in the default font, in the present colour, for a place of a width that may be too small: the letters become
/// narrower then, and where that does not do, the last words give way to "...".
void FittedText(int x, int y, int width, const char* text);

int StringWidth(const char* text);
int SmallWidth(const char* text);
int MenuTextWidth(const char* text);
