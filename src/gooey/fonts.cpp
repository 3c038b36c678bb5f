#include "gooey/fonts.h"

#include "platform/drawing.h"
#include "platform/text.h"

#include <cstddef>
#include <iterator>
#include <string>

namespace {

constexpr int DefaultFont = 0, DefaultHeight = 17;
/// The default font and narrower forms of it, down to the narrowest that is easy to read, in percent.
constexpr int Widths[] = {100, 94, 88, 82, 76, 70};
constexpr int FirstNarrowFont = 4;

int FontOfWidth(int index) {
    return index == 0 ? DefaultFont : FirstNarrowFont + index - 1;
}

int WidthIn(int font, const char* text) {
    gl::font(font);
    return gl::strwidth(text);
}

void DrawIn(int font, int x, int y, const char* text) {
    gl::font(font);
    gl::cmov2i(x, y);
    gl::charstr(text);
}

void CentreIn(int font, int x, int y, int width, const char* text) {
    DrawIn(font, x + (width - WidthIn(font, text)) / 2, y, text);
}

/// As many of the words as fit with the dots behind them; the dots alone at the worst.
std::string CutOff(int font, const std::string& text, int width) {
    constexpr char dots[] = "...";
    for (std::size_t end = text.rfind(' '); end != std::string::npos && end > 0; end = text.rfind(' ', end - 1)) {
        const std::string beginning = text.substr(0, text.find_last_not_of(" ,", end) + 1) + dots;
        if (WidthIn(font, beginning.c_str()) <= width)
            return beginning;
    }
    return dots;
}

} // namespace

void InitFonts() {
    gl::defrasterfont(NormalFont, 22);
    gl::defrasterfont(SmallFont, 17);
    gl::defrasterfont(MenuFont, 18);
    for (int i = 1; i < static_cast<int>(std::size(Widths)); ++i)
        gl::defrasterfont(FontOfWidth(i), DefaultHeight, Widths[i]);
}

void DrawText(int x, int y, const char* text, std::uint32_t rgb) {
    gl::cpack(rgb);
    DrawIn(NormalFont, x, y, text);
}

void SmallText(int x, int y, const char* text, std::uint32_t rgb) {
    gl::cpack(rgb);
    DrawIn(SmallFont, x, y, text);
}

void DrawMenuText(int x, int y, const char* text) {
    DrawIn(MenuFont, x, y, text);
}

void PrintCentre(int x, int y, int width, const char* text) {
    CentreIn(NormalFont, x, y, width, text);
}

void SmallCentre(int x, int y, int width, const char* text) {
    CentreIn(SmallFont, x, y, width, text);
}

void FittedText(int x, int y, int width, const char* text) {
    int font = DefaultFont;
    for (int i = 0; i < static_cast<int>(std::size(Widths)); ++i) {
        font = FontOfWidth(i);
        if (WidthIn(font, text) <= width)
            break;
    }
    DrawIn(font, x, y, WidthIn(font, text) <= width ? text : CutOff(font, text, width).c_str());
}

int StringWidth(const char* text) {
    return WidthIn(NormalFont, text);
}

int SmallWidth(const char* text) {
    return WidthIn(SmallFont, text);
}

int MenuTextWidth(const char* text) {
    return WidthIn(MenuFont, text);
}
