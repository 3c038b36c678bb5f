#include "gooey/fonts.h"

#include "platform/drawing.h"
#include "platform/text.h"

namespace {

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

} // namespace

void InitFonts() {
    gl::defrasterfont(NormalFont, 22);
    gl::defrasterfont(SmallFont, 17);
    gl::defrasterfont(MenuFont, 18);
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

int StringWidth(const char* text) {
    return WidthIn(NormalFont, text);
}

int SmallWidth(const char* text) {
    return WidthIn(SmallFont, text);
}

int MenuTextWidth(const char* text) {
    return WidthIn(MenuFont, text);
}
