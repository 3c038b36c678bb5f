// Textures: texels where they belong, components, filters, wrapping, environments and generated coordinates.
#include <array>
#include <cmath>
#include <vector>

#include "draw_fixture.h"

namespace gl {

namespace {

class Textures : public Drawing {
  protected:
    void SetUp() override {
        Drawing::SetUp();
        tevdef(1, TV_MODULATE);
        tevbind(0, 1);
        cpack(White);
    }

    // Draws a rectangle with texture coordinates from (s1, t1) to (s2, t2).
    static void Textured(double x1, double y1, double x2, double y2, float s1 = 0, float t1 = 0, float s2 = 1,
                         float t2 = 1) {
        const double corners[4][2] = {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
        const float texels[4][2] = {{s1, t1}, {s2, t1}, {s2, t2}, {s1, t2}};
        bgnpolygon();
        for (int i = 0; i < 4; i++) {
            t2f(texels[i]);
            v2d(corners[i]);
        }
        endpolygon();
    }

    // 3 x 2 texels in blue, green, red order; rows padded to 12 bytes.
    static void DefineSmall(int index, float filter = TX_POINT) {
        const uint8_t image[24] = {0,   0,   255, 0, 255, 0, 255, 0, 0,   9, 9, 9, //
                                   255, 255, 255, 0, 0,   0, 0,   0, 255, 9, 9, 9};
        const float list[] = {TX_MINFILTER, filter, TX_MAGFILTER, filter, TX_NULL};
        texdef2d(index, 3, 3, 2, image, 0, list);
    }
};

TEST_F(Textures, TexelsLieWhereTheImageSays) {
    DefineSmall(1);
    texbind(0, 1);
    Textured(-0.5, -0.5, 29.5, 19.5);
    EXPECT_EQ(Row(0, 4, 30), "RRRRRRRRRRGGGGGGGGGGBBBBBBBBBB") << "odd sizes and padded rows";
    EXPECT_EQ(Row(0, 15, 30), "##########..........RRRRRRRRRR");
    cpack(0xFF808080);
    Textured(-0.5, 19.5, 29.5, 39.5);
    EXPECT_TRUE(Near(Pixel(5, 25), 0xFF000080, 1)) << "modulated by the colour";
    texbind(0, 0);
    Textured(-0.5, 19.5, 29.5, 39.5);
    EXPECT_EQ(Pixel(5, 25), 0xFF808080u) << "unbound";
    texbind(0, 77);
    Textured(-0.5, 19.5, 29.5, 39.5);
    EXPECT_EQ(Pixel(5, 25), 0xFF808080u) << "never defined";
    texbind(0, 1);
    tevbind(0, 0);
    Textured(-0.5, 19.5, 29.5, 39.5);
    EXPECT_EQ(Pixel(5, 25), 0xFF808080u) << "no environment";
}

TEST_F(Textures, ComponentsMeanIntensityAlphaAndColour) {
    const uint8_t one[4] = {64}, two[4] = {128, 200}, four[4] = {128, 10, 20, 30};
    const float list[] = {TX_NULL};
    texdef2d(1, 1, 1, 1, one, 0, list);
    texdef2d(2, 2, 1, 1, two, 0, list);
    texdef2d(4, 4, 1, 1, four, 0, list);
    texbind(0, 1);
    Textured(0, 0, 10, 10);
    EXPECT_EQ(Pixel(5, 5), 0xFF404040u);
    blendfunction(BF_SA, BF_MSA);
    texbind(0, 2);
    Textured(20, 0, 30, 10);
    EXPECT_TRUE(Near(Pixel(25, 5), 0xFF646464, 1));
    texbind(0, 4);
    Textured(40, 0, 50, 10);
    EXPECT_TRUE(Near(Pixel(45, 5), 0xFF050A0F, 1)) << "alpha, blue, green, red";
}

TEST_F(Textures, WrappingAndFilters) {
    const uint8_t image[8] = {0, 255, 0, 0, 0, 255, 0, 0};

    struct Case {
        float wrap, filter;
        double expected[5]; // intensities at s = -0.6, 0.25, 0.5, 0.9, 1.75
    };

    const Case cases[] = {{TX_REPEAT, TX_POINT, {0, 0, 1, 1, 1}},
                          {TX_CLAMP, TX_POINT, {0, 0, 1, 1, 1}},
                          {TX_REPEAT, TX_BILINEAR, {0.3, 0, 0.5, 0.7, 1}},
                          {TX_CLAMP, TX_BILINEAR, {0, 0, 0.5, 1, 1}}};
    const float at[5] = {-0.6f, 0.25f, 0.5f, 0.9f, 1.75f};
    int index = 1;
    for (const Case& c : cases) {
        const float list[] = {TX_MINFILTER, c.filter,  TX_MAGFILTER, c.filter, TX_WRAP_S,
                              c.wrap,       TX_WRAP_T, c.wrap,       TX_NULL};
        texdef2d(index, 1, 2, 2, image, 0, list);
        texbind(0, index++);
        for (int i = 0; i < 5; i++) {
            Textured(4, 4, 8, 8, at[i], 0.5f, at[i], 0.5f);
            EXPECT_NEAR((Pixel(6, 6) & 255) / 255.0, c.expected[i], 0.02) << "case " << index - 1 << " at " << at[i];
        }
    }
}

TEST_F(Textures, MinificationAverages) {
    std::vector<uint8_t> image(64 * 64);
    for (int i = 0; i < 64 * 64; i++)
        image[i] = (i + i / 64) % 2 ? 255 : 0;
    for (float filter :
         {0.0f, TX_MIPMAP_POINT, TX_MIPMAP_LINEAR, TX_MIPMAP_BILINEAR, TX_MIPMAP_TRILINEAR, TX_BICUBIC}) {
        const float list[] = {TX_MINFILTER, filter, TX_NULL};
        texdef2d(1, 1, 64, 64, image.data(), 0, list);
        texbind(0, 1);
        Textured(0, 0, 4, 4);
        EXPECT_TRUE(Near(Pixel(2, 2), 0xFF808080, 4)) << filter;
    }
    const float list[] = {TX_MINFILTER, TX_POINT, TX_NULL};
    texdef2d(1, 1, 64, 64, image.data(), 0, list);
    Textured(0, 0, 4, 4);
    EXPECT_TRUE(Pixel(2, 2) == Black || Pixel(2, 2) == White);
}

TEST_F(Textures, ReducedFormatsKeepTheColoursAbout) {
    const uint8_t image[4] = {100, 150, 200};
    const float list[] = {TX_INTERNAL_FORMAT, TX_I12A_3, TX_NULL};
    texdef2d(1, 3, 1, 1, image, 0, list);
    texbind(0, 1);
    Textured(0, 0, 10, 10);
    EXPECT_TRUE(Near(Pixel(5, 5), 0xFF6496C8, 9));
}

TEST_F(Textures, EnvironmentsMix) {
    const uint8_t image[4] = {128, 0, 0, 255}; // half transparent red
    texdef2d(1, 4, 1, 1, image, 0, nullptr);
    texbind(0, 1);
    tevdef(2, TV_DECAL);
    tevdef(3, TV_BLEND);
    cpack(Blue);
    tevbind(0, 2);
    Textured(0, 0, 10, 10);
    EXPECT_TRUE(Near(Pixel(5, 5), 0xFF7F0080, 1));
    tevbind(0, 3);
    Textured(0, 0, 10, 10);
    EXPECT_TRUE(Near(Pixel(5, 5), 0xFFFF00FF, 1));
}

TEST_F(Textures, TheTextureMatrixMovesCoordinates) {
    DefineSmall(1);
    texbind(0, 1);
    mmode(MTEXTURE);
    scale(0.5, 0.5, 0.5);
    translate(1, 1, 0);
    double matrix[16];
    getmatrix(matrix);
    EXPECT_EQ(matrix[0], 0.5);
    EXPECT_EQ(matrix[12], 0.5);
    mmode(MVIEWING);
    // -1 to 1 becomes 0 to 1.
    Textured(-0.5, -0.5, 29.5, 19.5, -1, -1, 1, 1);
    EXPECT_EQ(Row(0, 4, 30), "RRRRRRRRRRGGGGGGGGGGBBBBBBBBBB");
}

TEST_F(Textures, LinearGenerationTakesTheVertexsOwnCoordinates) {
    DefineSmall(1);
    texbind(0, 1);
    const float s[4] = {0.5f, 0, 0, 0.5f}, t[4] = {0, 0.5f, 0, 0.5f};
    texgen(TX_S, TG_LINEAR, s);
    texgen(TX_T, TG_LINEAR, t);
    translate(14.5, 9.5, 0);
    scale(15, 10, 1);
    auto square = [] {
        const double corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
        bgnpolygon();
        for (const double* p : corners)
            v2d(p);
        endpolygon();
    };
    t2f(s); // any fixed coordinate
    square();
    EXPECT_EQ(Pixel(3, 4), Pixel(27, 4)) << "not switched on yet";
    texgen(TX_S, TG_ON, nullptr);
    texgen(TX_T, TG_ON, nullptr);
    square();
    EXPECT_EQ(Row(0, 4, 30), "RRRRRRRRRRGGGGGGGGGGBBBBBBBBBB");
    EXPECT_EQ(Row(0, 15, 30), "##########..........RRRRRRRRRR");
    texgen(TX_S, TG_OFF, nullptr);
    texgen(TX_T, TG_OFF, nullptr);
    square();
    EXPECT_EQ(Pixel(3, 4), Pixel(27, 4));
}

TEST_F(Textures, EyeGenerationKeepsThePlaneOfItsDefinition) {
    DefineSmall(1);
    texbind(0, 1);
    translate(14.5, 9.5, 0);
    scale(30, 20, 1);
    const float s[4] = {1, 0, 0, 0.5f}, t[4] = {0, 1, 0, 0.5f};
    texgen(TX_S, TG_CONTOUR, s);
    texgen(TX_T, TG_CONTOUR, t);
    texgen(TX_S, TG_ON, nullptr);
    texgen(TX_T, TG_ON, nullptr);
    LoadIdentity();
    Quad(-0.5, -0.5, 29.5, 19.5);
    EXPECT_EQ(Row(0, 4, 30), "RRRRRRRRRRGGGGGGGGGGBBBBBBBBBB");
}

TEST_F(Textures, SphereMapsReflectTheView) {
    // Intensity is s in texture 1 and t in texture 2.
    std::vector<uint8_t> across(256 * 256), up(256 * 256);
    for (int y = 0; y < 256; y++)
        for (int x = 0; x < 256; x++) {
            across[y * 256 + x] = static_cast<uint8_t>(x);
            up[y * 256 + x] = static_cast<uint8_t>(y);
        }
    const float list[] = {TX_MINFILTER, TX_BILINEAR, TX_WRAP_S, TX_CLAMP, TX_WRAP_T, TX_CLAMP, TX_NULL};
    texdef2d(1, 1, 256, 256, across.data(), 0, list);
    texdef2d(2, 1, 256, 256, up.data(), 0, list);
    perspective(600, 64.0 / 48, 1, 100);
    texgen(TX_S, TG_SPHEREMAP, nullptr);
    texgen(TX_T, TG_SPHEREMAP, nullptr);
    texgen(TX_S, TG_ON, nullptr);
    texgen(TX_T, TG_ON, nullptr);
    const double normals[][3] = {{0, 0, 1}, {0.6, 0, 0.8}, {0, -0.6, 0.8}, {0.5, 0.5, 0.70710678}};
    for (const double* n : normals) {
        // A small square about (1, 2, -10), flat to the screen, with this normal.
        const double eye[3] = {1, 2, -10}, distance = std::hypot(1, 2, 10);
        double u[3], r[3], nu = 0;
        for (int i = 0; i < 3; i++) {
            u[i] = eye[i] / distance;
            nu += n[i] * u[i];
        }
        for (int i = 0; i < 3; i++)
            r[i] = u[i] - 2 * n[i] * nu;
        const double m = 2 * std::hypot(r[0], r[1], r[2] + 1), expected[2] = {r[0] / m + 0.5, r[1] / m + 0.5};
        for (int texture = 1; texture <= 2; texture++) {
            texbind(0, texture);
            n3d(n);
            cpack(White);
            Quad(0.7, 1.7, 1.3, 2.3, -10);
            const int x = static_cast<int>(32 + 0.1 / std::tan(0.523599) * 24),
                      y = static_cast<int>(24 + 0.2 / std::tan(0.523599) * 24);
            EXPECT_NEAR(Pixel(x, y) & 255, expected[texture - 1] * 255, 4) << n[0] << ' ' << n[1] << ' ' << texture;
        }
    }
}

TEST_F(Textures, LitTexturedPolygonsMultiply) {
    const uint8_t image[4] = {128};
    texdef2d(1, 1, 1, 1, image, 0, nullptr);
    texbind(0, 1);
    const float material[] = {AMBIENT, 0.8f, 0.8f, 0.8f, DIFFUSE, 0, 0, 0, LMNULL};
    const float model[] = {AMBIENT, 0.5f, 0.5f, 0.5f, LMNULL};
    lmdef(DEFMATERIAL, 1, 0, material);
    lmdef(DEFLMODEL, 1, 0, model);
    lmbind(MATERIAL, 1);
    lmbind(LMODEL, 1);
    const float n[3] = {0, 0, 1};
    n3f(n);
    Textured(0, 0, 10, 10);
    EXPECT_TRUE(Near(Pixel(5, 5), 0xFF333333, 1));
}

TEST_F(Textures, DefiningAgainLeavesWhatIsDrawnAlready) {
    const uint8_t dark[4] = {40}, bright[4] = {200};
    texdef2d(1, 1, 1, 1, dark, 0, nullptr);
    texbind(0, 1);
    Textured(0, 0, 10, 10);
    texdef2d(1, 1, 1, 1, bright, 0, nullptr);
    Textured(20, 0, 30, 10);
    EXPECT_EQ(Pixel(5, 5), 0xFF282828u);
    EXPECT_EQ(Pixel(25, 5), 0xFFC8C8C8u);
    testing::internal::CaptureStderr();
    texdef2d(1, 5, 1, 1, dark, 0, nullptr);
    texdef2d(0, 1, 1, 1, dark, 0, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Graphics: texture 1 of 1 x 1 pixels and 5 components cannot be defined\n"
              "Graphics: texture 0 of 1 x 1 pixels and 1 components cannot be defined\n");
    EXPECT_TRUE(istexture(1));
    EXPECT_FALSE(istexture(0));
}

} // namespace

} // namespace gl
