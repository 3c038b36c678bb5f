// The shapes of the letters of outline fonts: TrueType, OpenType, Type 1 and whatever else FreeType reads.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace gl {

struct OutlinePoint {
    double X, Y;

    bool operator==(const OutlinePoint&) const = default;
};

// From the end of the segment before to End: a straight line, or a Bezier curve with one or two control points.
struct OutlineSegment {
    int Controls;
    OutlinePoint Control[2];
    OutlinePoint End;
};

struct OutlineContour {
    OutlinePoint Start;
    std::vector<OutlineSegment> Segments; // the last one ends at Start
};

// In units of the font's em, y up from the baseline. What the contours wind around more often one way than the other is
// inside.
struct GlyphOutline {
    double Advance;
    std::vector<OutlineContour> Contours;
};

// A font file, open until the object goes.
class OutlineFont {
  public:
    explicit OutlineFont(const char* path);
    ~OutlineFont();
    OutlineFont(const OutlineFont&) = delete;
    OutlineFont& operator=(const OutlineFont&) = delete;

    // Why the file is no outline font; empty when it is one.
    const std::string& Problem() const { return WhyNot; }

    // The glyph of a character code: of Unicode, or of the font's own encoding when it has no Latin letters. False when
    // the font has none.
    bool Glyph(int character, GlyphOutline& outline) const;

  private:
    struct Face;
    std::unique_ptr<Face> TheFace;
    std::string WhyNot;
};

} // namespace gl
