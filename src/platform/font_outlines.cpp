#include "platform/font_outlines.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace gl {

namespace {

struct Decomposition {
    GlyphOutline& Outline;
    double Scale;

    OutlinePoint At(const FT_Vector* point) const {
        return {static_cast<double>(point->x) * Scale, static_cast<double>(point->y) * Scale};
    }

    void Add(const OutlineSegment& segment) const {
        if (!Outline.Contours.empty())
            Outline.Contours.back().Segments.push_back(segment);
    }
};

Decomposition& Of(void* user) {
    return *static_cast<Decomposition*>(user);
}

int MoveTo(const FT_Vector* to, void* user) {
    Of(user).Outline.Contours.push_back({Of(user).At(to), {}});
    return 0;
}

int LineTo(const FT_Vector* to, void* user) {
    Of(user).Add({0, {}, Of(user).At(to)});
    return 0;
}

int ConicTo(const FT_Vector* control, const FT_Vector* to, void* user) {
    Of(user).Add({1, {Of(user).At(control), {}}, Of(user).At(to)});
    return 0;
}

int CubicTo(const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* user) {
    Of(user).Add({2, {Of(user).At(first), Of(user).At(second)}, Of(user).At(to)});
    return 0;
}

constexpr FT_Outline_Funcs Decomposers = {MoveTo, LineTo, ConicTo, CubicTo, 0, 0};

std::string TextOf(FT_Error error) {
    const char* text = FT_Error_String(error);
    return text ? text : "error " + std::to_string(error) + " of the font library";
}

} // namespace

struct OutlineFont::Face {
    FT_Library Library = nullptr;
    FT_Face Font = nullptr;

    ~Face() {
        if (Font)
            FT_Done_Face(Font);
        if (Library)
            FT_Done_FreeType(Library);
    }

    // Fonts of symbols have letters in an encoding of their own only.
    void ChooseEncoding() const {
        if (FT_Select_Charmap(Font, FT_ENCODING_UNICODE) == 0 && FT_Get_Char_Index(Font, 'a'))
            return;
        for (const FT_Encoding encoding : {FT_ENCODING_ADOBE_CUSTOM, FT_ENCODING_MS_SYMBOL, FT_ENCODING_UNICODE})
            if (FT_Select_Charmap(Font, encoding) == 0)
                return;
        if (Font->num_charmaps > 0)
            FT_Set_Charmap(Font, Font->charmaps[0]);
    }

    unsigned IndexOf(int character) const {
        constexpr FT_ULong symbolPlane = 0xF000; // where MS_SYMBOL has its characters
        const auto code = static_cast<FT_ULong>(character);
        if (Font->charmap && Font->charmap->encoding == FT_ENCODING_MS_SYMBOL)
            if (const unsigned index = FT_Get_Char_Index(Font, symbolPlane + code))
                return index;
        return FT_Get_Char_Index(Font, code);
    }
};

OutlineFont::OutlineFont(const char* path) : TheFace(std::make_unique<Face>()) {
    FT_Error error = FT_Init_FreeType(&TheFace->Library);
    if (!error)
        error = FT_New_Face(TheFace->Library, path, 0, &TheFace->Font);
    if (error)
        WhyNot = TextOf(error);
    else if (!FT_IS_SCALABLE(TheFace->Font) || TheFace->Font->units_per_EM == 0)
        WhyNot = "the font has no outlines";
    else
        TheFace->ChooseEncoding();
}

OutlineFont::~OutlineFont() = default;

bool OutlineFont::Glyph(int character, GlyphOutline& outline) const {
    if (!WhyNot.empty())
        return false;
    const FT_Face font = TheFace->Font;
    const unsigned index = TheFace->IndexOf(character);
    if (!index || FT_Load_Glyph(font, index, FT_LOAD_NO_SCALE) || font->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return false;
    const double scale = 1.0 / font->units_per_EM;
    outline = {static_cast<double>(font->glyph->metrics.horiAdvance) * scale, {}};
    Decomposition decomposition = {outline, scale};
    return FT_Outline_Decompose(&font->glyph->outline, &Decomposers, &decomposition) == 0;
}

} // namespace gl
