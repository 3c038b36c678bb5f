#include "tools/fonts.h"

#include "base/debug.h"

#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sys/stat.h>

namespace {

/// What introduces each record of a font file; numbers after it are floats, big-endian.
enum RecordCode : std::uint8_t { GlyphRecord = 0, TriangleRecord = 1, EdgeRecord = 2, EndRecord = 3 };

/// The bytes of a font file, one number after the other. Reading beyond the end, or a number that is none, is noted.
class FontReader {
  public:
    explicit FontReader(const std::string& bytes) : Bytes(bytes) {}

    std::uint8_t Byte() {
        if (Place == Bytes.size()) {
            Good = false;
            return EndRecord;
        }
        return static_cast<std::uint8_t>(Bytes[Place++]);
    }

    float Float() {
        std::uint32_t bits = 0;
        for (int i = 0; i < 4; ++i)
            bits = bits << 8 | Byte();
        const auto number = std::bit_cast<float>(bits);
        Good = Good && std::isfinite(number);
        return number;
    }

    GlyphPoint Point() {
        const float x = Float();
        return {x, Float()};
    }

    bool Good = true;

  private:
    const std::string& Bytes;
    std::size_t Place = 0;
};

bool Understand(const std::string& bytes, Font& font) {
    FontReader reader(bytes);
    Glyph beforeTheFirst;
    Glyph* glyph = &beforeTheFirst;
    while (reader.Good) {
        const std::uint8_t code = reader.Byte();
        if (code == EndRecord)
            return reader.Good;
        if (code == GlyphRecord) {
            const std::uint8_t character = reader.Byte();
            if (character >= GlyphCount)
                return false;
            glyph = &font.Glyphs[character];
            glyph->Present = true;
            glyph->Advance = reader.Float();
        } else if (code == TriangleRecord) {
            GlyphTriangle& triangle = glyph->Triangles.emplace_back();
            for (GlyphPoint& point : triangle.Points)
                point = reader.Point();
        } else if (code == EdgeRecord) {
            GlyphEdge& edge = glyph->Edges.emplace_back();
            for (GlyphPoint& point : edge.Points)
                point = reader.Point();
            edge.Smooth = reader.Byte() != 0;
        }
    }
    return false;
}

/// The file's bytes; false, with errno set, when it cannot be read.
bool ReadWholeFile(const char* path, std::string& bytes) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "rb"), std::fclose);
    if (!file)
        return false;
    struct stat status;
    if (fstat(fileno(file.get()), &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return false;
    }
    char block[1 << 16];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get()))
        bytes.append(block, count);
    return !std::ferror(file.get());
}

void Append(std::string& bytes, float number) {
    const auto bits = std::bit_cast<std::uint32_t>(number);
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(bits >> shift & 0xFF);
}

void Append(std::string& bytes, const GlyphPoint& point) {
    Append(bytes, point.X);
    Append(bytes, point.Y);
}

} // namespace

const Glyph& GlyphOf(const Font& font, char character) {
    static const Glyph none = {};
    const auto code = static_cast<unsigned char>(character);
    return code < GlyphCount ? font.Glyphs[code] : none;
}

Font* ReadFont(const char* path) {
    std::string bytes;
    if (!ReadWholeFile(path, bytes)) {
        const char* reason = std::strerror(errno);
        std::fprintf(stderr, "Error: Couldn't load font: %s\nreason: %s\n", path, reason);
        return nullptr;
    }
    auto font = std::make_unique<Font>();
    if (!Understand(bytes, *font)) {
        std::fprintf(stderr, "Error in font: %s\a\n", path);
        return nullptr;
    }
    Trace("Font %s loaded\n", path);
    return font.release();
}

void FreeFont(Font* font) {
    delete font;
}

std::string FontFileOf(const Font& font) {
    std::string bytes;
    for (int character = 0; character < GlyphCount; ++character) {
        const Glyph& glyph = font.Glyphs[character];
        if (!glyph.Present)
            continue;
        bytes += {static_cast<char>(GlyphRecord), static_cast<char>(character)};
        Append(bytes, glyph.Advance);
        for (const GlyphTriangle& triangle : glyph.Triangles) {
            bytes += static_cast<char>(TriangleRecord);
            for (const GlyphPoint& point : triangle.Points)
                Append(bytes, point);
        }
        for (const GlyphEdge& edge : glyph.Edges) {
            bytes += static_cast<char>(EdgeRecord);
            for (const GlyphPoint& point : edge.Points)
                Append(bytes, point);
            bytes += static_cast<char>(edge.Smooth);
        }
    }
    return bytes + static_cast<char>(EndRecord);
}

double TextWidth(const Font& font, const char* text) {
    double width = 0;
    for (; *text; ++text)
        width += GlyphOf(font, *text).Advance;
    return width;
}
