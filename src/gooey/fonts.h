#pragma once

#include <cstdint>
#include <string>

// Text in the three fonts: normal (22 pixels high), small (17) and menu (18). Texts are UTF-8; a character that the
// font does not have is shown as a box. Positions are window pixels, y the baseline; widths are whole pixels.

/// The graphics layer's own, as high as the small one.
inline constexpr int DefaultFont = 0;
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

/// For texts that do not fit: forms of a font with narrower and narrower letters. Form 0 is the font itself.
inline constexpr int NarrowestForm = 5;
int FormOfFont(int font, int form);
/// Its form with the widest letters in which the text fits the width; the narrowest one when it fits in none.
int FittingFont(int font, const char* text, int width);
/// In any of these fonts, in the present colour.
void DrawTextIn(int font, int x, int y, const char* text);
int TextWidthIn(int font, const char* text);
/// Text in the fitting form of the font. Where that does not do, the last words give way to "...".
void FittedText(int font, int x, int y, int width, const char* text);
/// A name for a place of a width that something else follows on: what is too long gives way to "...".
std::string ShortenedName(int font, const std::string& name, int width);

int StringWidth(const char* text);
int SmallWidth(const char* text);
int MenuTextWidth(const char* text);
