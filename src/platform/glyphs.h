// Glyphs rasterised from the outline file, kept in one texture for each font. For the layer's own modules.
#pragma once

#include <cstdint>

namespace gl {

struct Glyph {
    int advance = 0;                                 // in drawing pixels
    int left = 0, bottom = 0, width = 0, height = 0; // of its box relative to the pen, in screen pixels
    int x = 0, y = 0;                                // of its box in the atlas, from the first row of the texture
};

// Vertical measures of a font, in drawing pixels.
struct FontMeasures {
    int height = 0, descender = 0;
};

// The glyph of a character (a Unicode code point) in a font; made when first asked for. Never null; an empty box when
// the outline file has no such character or cannot be read.
const Glyph& FindGlyph(int font, uint32_t character);
FontMeasures MeasuresOf(int font);
// The driver's texture of all glyphs, brought up to date; its size in pixels.
unsigned GlyphTexture(int* width, int* height);
void DeleteGlyphs();

} // namespace gl
