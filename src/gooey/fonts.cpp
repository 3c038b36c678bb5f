#include "gooey/fonts.h"

#include "gooey/utf8.h"

#include "platform/drawing.h"
#include "platform/text.h"

#include <cstddef>
#include <string>

namespace {

constexpr int FontCount = 4;
constexpr int Heights[FontCount] = {17, 22, 17, 18};
/// Of the letters of the forms of each font, percent, down to the narrowest that is easy to read.
constexpr int FormWidths[NarrowestForm + 1] = {100, 94, 88, 82, 76, 70};

constexpr char Dots[] = "...";

void CentreIn(int font, int x, int y, int width, const char* text) {
    DrawTextIn(font, x + (width - TextWidthIn(font, text)) / 2, y, text);
}

/// As many of the words as fit with the dots behind them; the dots alone at the worst.
std::string CutOff(int font, const std::string& text, int width) {
    for (std::size_t end = text.rfind(' '); end != std::string::npos && end > 0; end = text.rfind(' ', end - 1)) {
        const std::string beginning = text.substr(0, text.find_last_not_of(" ,", end) + 1) + Dots;
        if (TextWidthIn(font, beginning.c_str()) <= width)
            return beginning;
    }
    return Dots;
}

} // namespace

void InitFonts() {
    for (int font = 0; font < FontCount; ++font)
        for (int form = font == DefaultFont ? 1 : 0; form <= NarrowestForm; ++form)
            gl::defrasterfont(FormOfFont(font, form), Heights[font], FormWidths[form]);
}

void DrawText(int x, int y, const char* text, std::uint32_t rgb) {
    gl::cpack(rgb);
    DrawTextIn(NormalFont, x, y, text);
}

void SmallText(int x, int y, const char* text, std::uint32_t rgb) {
    gl::cpack(rgb);
    DrawTextIn(SmallFont, x, y, text);
}

void DrawMenuText(int x, int y, const char* text) {
    DrawTextIn(MenuFont, x, y, text);
}

void PrintCentre(int x, int y, int width, const char* text) {
    CentreIn(NormalFont, x, y, width, text);
}

void SmallCentre(int x, int y, int width, const char* text) {
    CentreIn(SmallFont, x, y, width, text);
}

int FormOfFont(int font, int form) {
    return font + form * FontCount;
}

int FittingFont(int font, const char* text, int width) {
    int form = 0;
    while (form < NarrowestForm && TextWidthIn(FormOfFont(font, form), text) > width)
        ++form;
    return FormOfFont(font, form);
}

void DrawTextIn(int font, int x, int y, const char* text) {
    gl::font(font);
    gl::cmov2i(x, y);
    gl::charstr(text);
}

int TextWidthIn(int font, const char* text) {
    gl::font(font);
    return gl::strwidth(text);
}

void FittedText(int font, int x, int y, int width, const char* text) {
    const int fitting = FittingFont(font, text, width);
    DrawTextIn(fitting, x, y, TextWidthIn(fitting, text) <= width ? text : CutOff(fitting, text, width).c_str());
}

std::string ShortenedName(int font, const std::string& name, int width) {
    if (TextWidthIn(font, name.c_str()) <= width)
        return name;
    const int room = width - TextWidthIn(font, Dots);
    const char* end = name.c_str();
    for (int used = 0; *end;) {
        const char* next = end;
        NextCodePoint(next);
        used += TextWidthIn(font, std::string(end, next).c_str());
        if (used > room)
            break;
        end = next;
    }
    return std::string(name.c_str(), end) + Dots;
}

int StringWidth(const char* text) {
    return TextWidthIn(NormalFont, text);
}

int SmallWidth(const char* text) {
    return TextWidthIn(SmallFont, text);
}

int MenuTextWidth(const char* text) {
    return TextWidthIn(MenuFont, text);
}
