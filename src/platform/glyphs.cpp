#include "platform/glyphs.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include <epoxy/gl.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include "platform/batch.h"
#include "platform/driver_state.h"
#include "platform/graphics_context.h"
#include "platform/surface.h"
#include "platform/text.h"

namespace gl {

namespace {

constexpr int DefaultHeight = 17, FullWidth = 100;
constexpr int AtlasWidth = 1024, LargestAtlas = 4096;

struct Font {
    int height = DefaultHeight, width = FullWidth;
    std::unordered_map<uint32_t, Glyph> glyphs;
};

FT_Library Library = nullptr;
FT_Face Face = nullptr;
std::map<int, Font> Fonts = {{0, Font()}};

// All glyphs of all fonts in rows, as they come.
struct Atlas {
    std::vector<uint8_t> coverage;
    int height = 0, penX = 1, penY = 1, rowHeight = 0;
    unsigned texture = 0;
    bool changed = false;

    void clear() {
        coverage.clear();
        height = rowHeight = 0;
        penX = penY = 1;
        changed = true;
    }
} Glyphs;

bool OpenFace(const std::string& path, FT_Face* face) {
    if (!Library && FT_Init_FreeType(&Library) != 0) {
        Library = nullptr;
        return false;
    }
    return FT_New_Face(Library, path.c_str(), 0, face) == 0;
}

bool HaveFace() {
    static bool complained = false;
    if (Face)
        return true;
    if (OpenFace(KIRVO_FONT_FILE, &Face))
        return true;
    if (!complained)
        std::fprintf(stderr, "Graphics: the font file %s cannot be read\n", KIRVO_FONT_FILE);
    complained = true;
    return false;
}

// The size of the em square that gives a font of a height; these three were found to be even, the rest follows them.
int EmSize(int height) {
    const std::pair<int, int> chosen[] = {{17, 14}, {18, 15}, {22, 18}};
    for (auto& [fontHeight, em] : chosen)
        if (height == fontHeight)
            return em;
    return std::max(1, (height * 9 + 5) / 11);
}

// A place for a glyph in the atlas; false when it is full.
bool Place(Glyph& glyph) {
    if (Glyphs.penX + glyph.width + 1 > AtlasWidth) {
        Glyphs.penX = 1;
        Glyphs.penY += Glyphs.rowHeight + 1;
        Glyphs.rowHeight = 0;
    }
    const int needed = Glyphs.penY + glyph.height + 1;
    if (needed > LargestAtlas || glyph.width + 2 > AtlasWidth)
        return false;
    if (needed > Glyphs.height) {
        Glyphs.height = std::max({needed, 2 * Glyphs.height, 128});
        Glyphs.coverage.resize(static_cast<size_t>(AtlasWidth) * Glyphs.height);
    }
    glyph.x = Glyphs.penX;
    glyph.y = Glyphs.penY;
    Glyphs.penX += glyph.width + 1;
    Glyphs.rowHeight = std::max(Glyphs.rowHeight, glyph.height);
    Glyphs.changed = true;
    return true;
}

// `width`: of the letters, percent.
bool Load(int pixels, int width, uint32_t character, FT_Int32 flags) {
    constexpr int unitsPerPixel = 64, pixelsPerInch = 72;
    const FT_F26Dot6 high = std::max(1, pixels) * unitsPerPixel, wide = std::max<long>(1, high * width / FullWidth);
    return FT_Set_Char_Size(Face, wide, high, pixelsPerInch, pixelsPerInch) == 0 &&
           FT_Load_Char(Face, character, flags | FT_LOAD_TARGET_LIGHT) == 0;
}

Glyph MakeGlyph(int height, int width, uint32_t character) {
    Glyph glyph;
    if (!HaveFace())
        return glyph;
    const int em = EmSize(height);
    // Widths are those of scale 1, whatever the screen's.
    if (!Load(em, width, character, FT_LOAD_DEFAULT))
        return glyph;
    glyph.advance = static_cast<int>((Face->glyph->advance.x + 32) >> 6);
    if (!Load(ToPixels(em), width, character, FT_LOAD_RENDER))
        return glyph;
    const FT_Bitmap& bitmap = Face->glyph->bitmap;
    glyph.left = Face->glyph->bitmap_left;
    glyph.width = static_cast<int>(bitmap.width);
    glyph.height = static_cast<int>(bitmap.rows);
    glyph.bottom = Face->glyph->bitmap_top - glyph.height;
    if (glyph.width == 0 || glyph.height == 0 || !Place(glyph)) {
        glyph.width = glyph.height = 0;
        return glyph;
    }
    for (int row = 0; row < glyph.height; row++)
        std::copy_n(bitmap.buffer + row * bitmap.pitch, glyph.width,
                    Glyphs.coverage.begin() + static_cast<long>(glyph.y + row) * AtlasWidth + glyph.x);
    return glyph;
}

Font& FontOf(int number) {
    const auto found = Fonts.find(number);
    return found == Fonts.end() ? Fonts[0] : found->second;
}

void ForgetGlyphs() {
    FlushDrawing();
    for (auto& [number, font] : Fonts)
        font.glyphs.clear();
    Glyphs.clear();
}

} // namespace

bool SetFontFile(const std::string& path) {
    FT_Face face = nullptr;
    if (!OpenFace(path, &face))
        return false;
    ForgetGlyphs();
    if (Face)
        FT_Done_Face(Face);
    Face = face;
    return true;
}

void defrasterfont(int number, int height, int width) {
    if (number < 1 || height < 4 || height > 400 || width < 1 || width > 400) {
        std::fprintf(stderr, "Graphics: font %d of height %d cannot be defined\n", number, height);
        return;
    }
    Font& font = Fonts[number];
    if (font.height != height || font.width != width)
        font.glyphs.clear();
    font.height = height;
    font.width = width;
}

const Glyph& FindGlyph(int number, uint32_t character) {
    Font& font = FontOf(number);
    const auto found = font.glyphs.find(character);
    if (found != font.glyphs.end())
        return found->second;
    return font.glyphs[character] = MakeGlyph(font.height, font.width, character);
}

FontMeasures MeasuresOf(int number) {
    const int height = FontOf(number).height;
    // The outlines reach 0.212 of the em square below the baseline.
    return {height, (EmSize(height) * 212 + 999) / 1000};
}

unsigned GlyphTexture(int* width, int* height) {
    *width = AtlasWidth;
    *height = std::max(Glyphs.height, 1);
    if (Glyphs.texture && !Glyphs.changed)
        return Glyphs.texture;
    FlushDrawing();
    if (!Glyphs.texture)
        glGenTextures(1, &Glyphs.texture);
    if (Glyphs.coverage.empty())
        Glyphs.coverage.resize(AtlasWidth);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, Glyphs.texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_R8, AtlasWidth, *height, 0, GL_RED, GL_UNSIGNED_BYTE, Glyphs.coverage.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    Glyphs.changed = false;
    ForgetBatchState();
    return Glyphs.texture;
}

void DeleteGlyphs() {
    ForgetGlyphs();
    glDeleteTextures(1, &Glyphs.texture);
    Glyphs.texture = 0;
}

} // namespace gl
