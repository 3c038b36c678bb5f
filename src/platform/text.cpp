#include "platform/text.h"

#include <cmath>
#include <string>

#include "platform/batch.h"
#include "platform/drawing_state.h"
#include "platform/glyphs.h"
#include "platform/recorder.h"
#include "platform/surface.h"
#include "platform/vertices.h"

namespace gl {

namespace {

int CurrentFont = 0;

// The next character of a UTF-8 text, which moves on; "?" for a byte that belongs to none.
uint32_t NextCharacter(const char*& text) {
    const auto byte = [&text](int i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    int more = first < 0x80 ? 0 : first >= 0xF0 && first < 0xF8 ? 3 : first >= 0xE0 ? 2 : first >= 0xC2 ? 1 : -1;
    if (first >= 0xF8)
        more = -1;
    uint32_t character = more > 0 ? first & (0x3F >> more) : first;
    for (int i = 1; i <= more; i++) {
        if ((byte(i) & 0xC0) != 0x80) {
            more = -1;
            break;
        }
        character = character << 6 | (byte(i) & 0x3F);
    }
    text += more > 0 ? more + 1 : 1;
    return more < 0 ? '?' : character;
}

} // namespace

void font(int number) {
    if (!RecordCommand([=] { font(number); }))
        CurrentFont = number;
}

int getfont() {
    return CurrentFont;
}

int getheight() {
    return MeasuresOf(CurrentFont).height;
}

int getdescender() {
    return MeasuresOf(CurrentFont).descender;
}

int strwidth(const char* text) {
    int width = 0;
    while (*text)
        width += FindGlyph(CurrentFont, NextCharacter(text)).advance;
    return width;
}

int AdvanceWidth(int number, int character) {
    return FindGlyph(number, static_cast<uint32_t>(character)).advance;
}

void cmov(double x, double y, double z) {
    if (!RecordCommand([=] { cmov(x, y, z); })) {
        State().TextPosition = {x, y, z};
        State().TextAdvance = 0;
    }
}

void cmov2(double x, double y) {
    cmov(x, y, 0);
}

void cmov2i(int x, int y) {
    cmov(x, y, 0);
}

void charstr(const char* text) {
    if (Recording()) {
        KeepColoured([copy = std::string(text)] { charstr(copy.c_str()); });
        return;
    }
    DrawingState& state = State();
    double unit[3];
    if (!ToUnitCube(state.TextPosition.data(), unit))
        return;
    // All glyphs are made before any is drawn, because each changes the atlas.
    for (const char* rest = text; *rest;)
        FindGlyph(CurrentFont, NextCharacter(rest));
    int atlasWidth, atlasHeight;
    SetImage(GlyphTexture(&atlasWidth, &atlasHeight));
    BeginShape(Shape::Glyphs);
    const ScreenBox& box = state.Raster.viewport;
    const double width = ToPixels(box.right - box.left + 1), height = ToPixels(box.top - box.bottom + 1);
    // The baseline runs along the lower edge of the pixel that the position lies in.
    const double half = DrawingScale() / 2;
    double x = std::floor((unit[0] + 1) / 2 * width - half + 0.5) + state.TextAdvance * DrawingScale();
    const double y = std::floor((unit[1] + 1) / 2 * height - half + 0.5);
    Vertex corner = Source.attributes;
    corner.slot = -1;
    corner.position[2] = static_cast<float>(unit[2]);
    if (!DrawingToOverlay())
        corner.colour |= 0xFF000000u;
    while (*text) {
        const Glyph& glyph = FindGlyph(CurrentFont, NextCharacter(text));
        if (CanDraw() && glyph.width > 0) {
            const double left = std::floor(x + 0.5) + glyph.left, bottom = y + glyph.bottom;
            Vertex corners[4] = {corner, corner, corner, corner};
            for (int i = 0; i < 4; i++) {
                const bool right = i == 1 || i == 2, top = i >= 2;
                corners[i].position[0] = static_cast<float>(2 * (left + (right ? glyph.width : 0)) / width - 1);
                corners[i].position[1] = static_cast<float>(2 * (bottom + (top ? glyph.height : 0)) / height - 1);
                corners[i].texel[0] = static_cast<float>(glyph.x + (right ? glyph.width : 0)) / atlasWidth;
                corners[i].texel[1] = static_cast<float>(glyph.y + (top ? 0 : glyph.height)) / atlasHeight;
            }
            AddQuad(corners);
        }
        x += glyph.advance * DrawingScale();
        state.TextAdvance += glyph.advance;
    }
}

} // namespace gl
