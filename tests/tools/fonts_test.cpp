#include "store/store_test.h"
#include "support/temporary_directory.h"
#include "tools/closed_surface.h"

#include "geometry/boxes.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "tools/font_making.h"
#include "tools/fonts.h"
#include "tools/text_mesh.h"

#include <fstream>
#include <memory>

namespace {

using LoadedFont = std::unique_ptr<Font, decltype(&FreeFont)>;

class Fonts : public StoreTest {
  protected:
    std::string Write(const std::string& bytes) {
        const std::string path = directory.Path() / "font";
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    static LoadedFont Read(const std::string& path, std::string& complaint) {
        testing::internal::CaptureStderr();
        LoadedFont font(ReadFont(path.c_str()), FreeFont);
        complaint = testing::internal::GetCapturedStderr();
        return font;
    }

    /// A unit square from (x, 0), as two triangles and four edges of which one is smooth.
    static void AddSquare(Glyph& glyph, float x) {
        const GlyphPoint a = {x, 0}, b = {x + 1, 0}, c = {x + 1, 1}, d = {x, 1};
        glyph.Triangles.insert(glyph.Triangles.end(), {{{a, b, c}}, {{a, c, d}}});
        glyph.Edges.insert(glyph.Edges.end(), {{{a, b}, false}, {{b, c}, true}, {{c, d}, false}, {{d, a}, false}});
    }

    static std::unique_ptr<Font> FontOfSquares() {
        auto font = std::make_unique<Font>();
        for (const int character : {0, int{'A'}, 127}) {
            font->Glyphs[character].Present = true;
            font->Glyphs[character].Advance = 1.5F;
            AddSquare(font->Glyphs[character], 0.25F);
        }
        return font;
    }

    TemporaryDirectory directory;
};

TEST_F(Fonts, AreReadAsTheyWereWritten) {
    const std::string bytes = FontFileOf(*FontOfSquares());
    std::string complaint;
    const LoadedFont font = Read(Write("\x07\x05" + bytes + "beyond the end"), complaint); // unknown codes are skipped
    ASSERT_TRUE(font);
    EXPECT_EQ(complaint, "");
    EXPECT_EQ(FontFileOf(*font), bytes);
    const Glyph& glyph = GlyphOf(*font, 'A');
    EXPECT_FLOAT_EQ(glyph.Advance, 1.5F);
    EXPECT_TRUE(glyph.Edges[1].Smooth && !glyph.Edges[2].Smooth);
    EXPECT_FLOAT_EQ(glyph.Triangles[1].Points[2].Y, 1);
    EXPECT_DOUBLE_EQ(TextWidth(*font, "AB\xC4"
                                      "A"),
                     3);
}

TEST_F(Fonts, DamagedFilesAreRefused) {
    const std::string whole = FontFileOf(*FontOfSquares());
    std::string complaint;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::string path = Write(whole.substr(0, size));
        EXPECT_FALSE(Read(path, complaint)) << size;
        EXPECT_EQ(complaint, "Error in font: " + path + "\a\n");
    }
    std::string beyond = whole, noNumber = whole;
    beyond[1] = '\x80';
    noNumber.replace(2, 4, "\x7F\xC0\x00\x00", 4);
    EXPECT_FALSE(Read(Write(beyond), complaint));
    EXPECT_FALSE(Read(Write(noNumber), complaint));

    const std::string missing = directory.Path() / "missing", folder = directory.Path();
    EXPECT_FALSE(Read(missing, complaint));
    EXPECT_EQ(complaint, "Error: Couldn't load font: " + missing + "\nreason: No such file or directory\n");
    EXPECT_FALSE(Read(folder, complaint));
    EXPECT_EQ(complaint, "Error: Couldn't load font: " + folder + "\nreason: Is a directory\n");
}

TEST_F(Fonts, SolidLettersHaveWalls) {
    const std::unique_ptr<Font> font = FontOfSquares();
    Matrix placement;
    MultMatrix(ScaleMatrix(2, 2, 2), TranslationMatrix(0, 0, 10), placement);
    AddTextToModel(*font, "A A", true, placement); // no glyph for the blank: it takes no room
    CheckIntegrity();
    CleanUpObject();
    const Surface surface = SurfaceOfModel();
    EXPECT_EQ(surface.Faces, 2 * (4 + 4));
    EXPECT_TRUE(surface.IsManifold());
    EXPECT_EQ(surface.EulerCharacteristic(), 4);
    EXPECT_NEAR(surface.Volume(), 2 * 2 * 2 * 2 * LetterDepth * 2, 1e-5);
    EXPECT_NEAR(ObjectMin()[0], 2 * (-1.5 + 0.25), 1e-6);
    EXPECT_NEAR(ObjectMax()[0], 2 * (0 + 1.25), 1e-6);
    EXPECT_NEAR(ObjectMax()[2], 10 + 2 * LetterDepth, 1e-6);
    int smooth = 0;
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        smooth += polygon->Lighting == LightingSmooth;
    EXPECT_EQ(smooth, 2);

    SetUp();
    AddTextToModel(*font, "A", false, IdentityMatrix);
    CleanUpObject();
    EXPECT_EQ(SurfaceOfModel().Faces, 2);
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        EXPECT_FLOAT_EQ(polygon->Normal[2], 1);
}

TEST_F(Fonts, LongTextsAndStrangeCharactersDoNoHarm) {
    const std::unique_ptr<Font> font = FontOfSquares();
    const std::string text(999, 'A'), strange = "\x01\x7E\x80\xFF";
    AddTextToModel(*font, text.c_str(), true, IdentityMatrix);
    CleanUpObject();
    EXPECT_EQ(SurfaceOfModel().Faces, 999 * 8);
    EXPECT_NEAR(ObjectMax()[0] - ObjectMin()[0], 998 * 1.5 + 1, 1e-3);
    SetUp();
    AddTextToModel(*font, strange.c_str(), true, IdentityMatrix);
    EXPECT_EQ(FirstPolygon(), nullptr);
}

const char* const FontNames[] = {"Times",           "TimesBold",     "TimesItalic",     "TimesBoldItalic",
                                 "Helvetica",       "HelveticaBold", "HelveticaItalic", "HelveticaBoldItalic",
                                 "Courier",         "CourierBold",   "CourierItalic",   "CourierBoldItalic",
                                 "Symbol",          "Utopia",        "UtopiaBold",      "UtopiaItalic",
                                 "UtopiaBoldItalic"};

TEST_F(Fonts, EveryLetterOfEveryFontIsASolid) {
    for (const std::string name : FontNames) {
        std::string complaint;
        const LoadedFont font = Read(KIRVO_FONTS + ("/" + name), complaint);
        ASSERT_TRUE(font) << complaint;
        for (int character = ' '; character < GlyphCount - 1; ++character) {
            SCOPED_TRACE(name + " " + static_cast<char>(character));
            const Glyph& glyph = font->Glyphs[character];
            EXPECT_TRUE(glyph.Present);
            EXPECT_GT(glyph.Advance, 0);
            EXPECT_LT(glyph.Triangles.size(), static_cast<std::size_t>(TriangleLimit));
            EXPECT_EQ(glyph.Triangles.empty(), character == ' ');
            if (glyph.Triangles.empty())
                continue;
            Surface flat;
            for (const GlyphTriangle& triangle : glyph.Triangles)
                flat.AddRing({{triangle.Points[0].X, triangle.Points[0].Y, 1},
                              {triangle.Points[1].X, triangle.Points[1].Y, 1},
                              {triangle.Points[2].X, triangle.Points[2].Y, 1}});

            SetUp();
            Matrix placement; // as on a grid of 10 m, far off
            MultMatrix(PitchMatrix(90), ScaleMatrix(3.7, 3.7, 3.7), placement);
            MultMatrix(placement, TranslationMatrix(100, -30, 7), placement);
            const char text[] = {static_cast<char>(character), 0};
            AddTextToModel(*font, text, true, placement);
            CleanUpObject();
            const Surface solid = SurfaceOfModel();
            EXPECT_EQ(solid.Faces, static_cast<int>(2 * glyph.Triangles.size() + glyph.Edges.size()));
            EXPECT_TRUE(solid.IsManifold());
            EXPECT_EQ(solid.EulerCharacteristic(), 2 * flat.EulerCharacteristic());
            EXPECT_GT(solid.Volume(), 0);
        }
    }
}

/// The share of the em's box that a letter covers, and how many pieces less holes it has.
TEST_F(Fonts, LettersHaveTheirHoles) {
    std::string complaint;
    const LoadedFont font = Read(KIRVO_FONTS "/Helvetica", complaint);
    ASSERT_TRUE(font);

    const struct {
        char Letter;
        int PiecesLessHoles;
    } cases[] = {{'I', 1}, {'i', 2}, {'O', 0}, {'B', -1}, {'8', -1}, {'%', 1}, {'"', 2}, {':', 2}};

    for (const auto& c : cases) {
        Surface flat;
        for (const GlyphTriangle& t : GlyphOf(*font, c.Letter).Triangles)
            flat.AddRing({{t.Points[0].X, t.Points[0].Y, 0},
                          {t.Points[1].X, t.Points[1].Y, 0},
                          {t.Points[2].X, t.Points[2].Y, 0}});
        EXPECT_EQ(flat.EulerCharacteristic(), c.PiecesLessHoles) << c.Letter;
    }
    // A capital is as high as its design says, and the round ones are smooth.
    float top = 0;
    for (const GlyphEdge& edge : GlyphOf(*font, 'H').Edges)
        top = std::max(top, edge.Points[0].Y);
    EXPECT_NEAR(top, 0.729, 1e-3);
    for (const GlyphEdge& edge : GlyphOf(*font, 'O').Edges)
        EXPECT_TRUE(edge.Smooth);
    for (const GlyphEdge& edge : GlyphOf(*font, 'H').Edges)
        EXPECT_FALSE(edge.Smooth);
}

TEST_F(Fonts, WhatIsNoOutlineFontIsTold) {
    Font font;
    EXPECT_NE(MakeFont(Write("no font").c_str(), font), "");
    EXPECT_NE(MakeFont((directory.Path() / "missing").c_str(), font), "");
    EXPECT_EQ(MakeFont(KIRVO_SOURCE_DIR "/data/fonts/LiberationSans-Regular.ttf", font), "");
    EXPECT_EQ(font.Glyphs['i'].Edges.size(), 8u);
}

} // namespace
