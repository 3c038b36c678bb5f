#pragma once

#include <string>
#include <vector>

// Fonts for texts made of polygons: the triangles and edges of each letter, as font files hold them. Coordinates are in
// font units, of which an em, the height of a line, is one; y up, the baseline at 0.

inline constexpr int GlyphCount = 128;

struct GlyphPoint {
    float X, Y;

    auto operator<=>(const GlyphPoint&) const = default;
};

/// A piece of the outline, along which the glyph's inside lies to the left.
struct GlyphEdge {
    GlyphPoint Points[2];
    bool Smooth; // part of a curve
};

/// Counter-clockwise.
struct GlyphTriangle {
    GlyphPoint Points[3];
};

struct Glyph {
    bool Present;
    float Advance; // to the next letter; 0 for a character without glyph
    std::vector<GlyphEdge> Edges;
    std::vector<GlyphTriangle> Triangles;
};

/// Indexed by character code.
struct Font {
    Glyph Glyphs[GlyphCount] = {};
};

/// The glyph of a character of a text; an empty one for characters beyond the last.
const Glyph& GlyphOf(const Font& font, char character);

/// The font in a file, released with FreeFont; null, after a message on the standard error stream, when the file cannot
/// be read or holds none.
Font* ReadFont(const char* path);
/// Null is ignored.
void FreeFont(Font* font);

/// The bytes of a font file.
std::string FontFileOf(const Font& font);

/// The sum of the advances of the text's characters, font units.
double TextWidth(const Font& font, const char* text);
