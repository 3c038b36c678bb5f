#include "views/views_test.h"

#include "materials/material_definitions.h"
#include "platform/drawing.h"
#include "platform/lighting.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "platform/textures.h"
#include "views/capabilities.h"
#include "views/display_flags.h"
#include "views/rendering_state.h"
#include "views/view_transform.h"

#include <vector>

class RenderingState : public ViewsTest {
  protected:
    static constexpr int Side = 64;

    void SetUp() override {
        ViewsTest::SetUp();
        OpenPlain(Side, Side);
        gl::ortho2(-0.5, Side - 0.5, -0.5, Side - 0.5);
        LoadGLMatrix(IdentityMatrix);
    }

    void TearDown() override {
        Blending(0);
        ViewsTest::TearDown();
    }

    /// Clears to black, draws the whole window and returns its pixels.
    static std::vector<std::uint32_t> Fill(std::uint32_t colour) {
        cls(0);
        gl::cpack(colour);
        return FillWith([] {});
    }

    template <class Vertex>
    static std::vector<std::uint32_t> FillWith(Vertex beforeVertex) {
        const float corners[4][2] = {{-1, -1}, {Side, -1}, {Side, Side}, {-1, Side}};
        gl::bgnpolygon();
        for (const float* corner : corners) {
            beforeVertex();
            gl::v2f(corner);
        }
        gl::endpolygon();
        std::vector<std::uint32_t> pixels(Side * Side);
        gl::lrectread(0, 0, Side - 1, Side - 1, pixels.data());
        for (std::uint32_t& pixel : pixels)
            pixel &= 0xFFFFFF;
        return pixels;
    }

    /// How many of the pixels are not black.
    static long Count(const std::vector<std::uint32_t>& pixels) {
        long count = 0;
        for (const std::uint32_t pixel : pixels)
            count += pixel != 0;
        return count;
    }
};

TEST_F(RenderingState, BlendsWhereTheRendererCan) {
    Blending(1);
    Blending(1);
    EXPECT_NEAR(Fill(0x80FFFFFF)[0] & 0xFF, 128, 2);
    Blending(0);
    EXPECT_EQ(Fill(0x80FFFFFF)[0], 0xFFFFFFu);
}

TEST_F(RenderingState, ShowsTransparencyAsAScreenDoorWhereItCannot) {
    struct Case {
        float Alpha;
        double Share;
    };

    const Case cases[] = {
        {1, 1},          {2, 1},           {0, 0.5},         {-1, 0.5}, {0.01f, 1.0 / 8},
        {0.5f, 5.0 / 8}, {0.49f, 4.0 / 8}, {0.87f, 7.0 / 8}, {0.9f, 1},
    };
    BlendingAvailable = 0;
    Material material = {};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Alpha);
        material.Alpha = c.Alpha;
        BindMaterial(&material);
        EXPECT_EQ(Count(Fill(0xFFFFFF)), Side * Side) << "not before blending is on";
        Blending(1);
        BindMaterial(&material);
        EXPECT_EQ(Count(Fill(0xFFFFFF)), Side * Side * c.Share);
        Blending(0);
        EXPECT_EQ(Count(Fill(0xFFFFFF)), Side * Side);
    }
}

TEST_F(RenderingState, PatternsSpreadTheirPixelsEvenly) {
    for (int pattern = 3; pattern <= 11; ++pattern) {
        SCOPED_TRACE(pattern);
        gl::setpattern(pattern);
        const std::vector<std::uint32_t> pixels = Fill(0xFFFFFF);
        const int share = pattern == 3 ? 0 : pattern == 4 ? 1 : (pattern - 4) * 8;
        EXPECT_EQ(Count(pixels), Side * Side / 64 * share);
        if (pattern < 5)
            continue;
        // Every 4 x 4 pixels hold their share.
        for (int y = 0; y < Side; y += 4)
            for (int x = 0; x < Side; x += 4) {
                int drawn = 0;
                for (int i = 0; i < 16; ++i)
                    drawn += pixels[(y + i / 4) * Side + x + i % 4] != 0;
                ASSERT_EQ(drawn, share / 4);
            }
    }
}

TEST_F(RenderingState, TexturesModulateAndAreCutOut) {
    // Alpha, blue, green, red: white, opaque on the left half, nearly transparent on the right.
    const std::uint8_t image[8] = {255, 255, 255, 255, 10, 255, 255, 255};
    const float properties[] = {gl::TX_MINFILTER, gl::TX_POINT, gl::TX_MAGFILTER, gl::TX_POINT, gl::TX_NULL};
    gl::texdef2d(5, 4, 2, 1, image, 0, properties);
    Texture texture = {};
    texture.GLId = 5;
    const auto draw = [](float u) {
        cls(0);
        gl::cpack(0xFF0000FF);
        return FillWith([u] {
            const float coordinates[2] = {u, 0.5f};
            gl::t2f(coordinates);
        })[0];
    };
    MultiSampling = 0;
    BindTexture(&texture);
    EXPECT_EQ(draw(0.25f), 0xFFu);
    EXPECT_EQ(draw(0.75f), 0xFFu);
    TextureBlending(1);
    EXPECT_EQ(draw(0.25f), 0xFFu);
    EXPECT_EQ(draw(0.75f), 0u);
    TextureBlending(0);
    Blending(0);
    EXPECT_EQ(draw(0.75f), 0xFFu);
    BindTexture(nullptr);
    TextureBlending(1);
    EXPECT_EQ(draw(0.75f), 0xFFu);
    TextureBlending(0);
}

TEST_F(RenderingState, LightsComeFromTheEyeWhateverTheViewIs) {
    const float white[] = {gl::DIFFUSE, 1, 1, 1, gl::AMBIENT, 0, 0, 0, gl::LMNULL};
    gl::lmdef(gl::DEFMATERIAL, 8, 0, white);
    Material material = {};
    material.GLIndex = 8;
    material.Alpha = 1;
    const float towards[3] = {0.57735f, 0.57735f, 0.57735f}, away[3] = {-0.57735f, -0.57735f, 0.57735f};
    const auto brightness = [&](const float* normal) {
        cls(0);
        BindMaterial(&material);
        return static_cast<int>(FillWith([=] { gl::n3f(normal); })[0] & 0xFF);
    };
    gl::rot(180, 'z'); // the light must not turn with it
    SetLighting();
    LoadGLMatrix(IdentityMatrix);
    EXPECT_NEAR(brightness(towards), 255, 2);
    EXPECT_LT(brightness(away), 10);
    gl::rot(180, 'z');
    DimLight();
    LoadGLMatrix(IdentityMatrix);
    EXPECT_NEAR(brightness(towards), 128, 3);
    NormalLight();
    EXPECT_NEAR(brightness(towards), 255, 2);
    BindMaterial(nullptr);
    EXPECT_GT(brightness(towards), 0);
}

TEST_F(RenderingState, ScreenMasksNest) {
    EXPECT_EQ(PushScrmask(10, 10, 20, 20), 1);
    EXPECT_EQ(Count(Fill(0xFFFFFF)), 400);
    EXPECT_EQ(PushScrmask(20, 0, 100, 15), 1);
    gl::cpack(0);
    EXPECT_EQ(Count(Fill(0xFFFFFF)), 400 - 50 + 50); // cls keeps to the mask, too
    EXPECT_EQ(PushScrmask(0, 0, 5, 5), 0);
    gl::cpack(0xFF);
    EXPECT_EQ(Count(FillWith([] {})), 400);
    EXPECT_EQ(Drawn(20, 10), 0xFFu);
    EXPECT_EQ(Drawn(19, 10), 0xFFFFFFu);
    for (int i = 0; i < 3; ++i)
        PopScrmask();
    EXPECT_EQ(Count(Fill(0xFFFFFF)), Side * Side);
}

TEST_F(RenderingState, ScreenMasksOutOfStepEndTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    constexpr int status = 666 & 255;
    EXPECT_EXIT(PopScrmask(), testing::ExitedWithCode(status), "Scrmask stack underflow!");
    const auto pushTooMany = [] {
        for (int i = 0; i < 17; ++i)
            PushScrmask(0, 0, 10, 10);
    };
    EXPECT_EXIT(pushTooMany(), testing::ExitedWithCode(status), "Scrmask stack overflow!");
}

TEST_F(RenderingState, SmoothsLinesWhereMultisamplingDoesNot) {
    const auto shades = [] {
        cls(0);
        const float from[2] = {3, 3}, to[2] = {60, 20};
        gl::cpack(0xFFFFFFFF);
        gl::bgnline();
        gl::v2f(from);
        gl::v2f(to);
        gl::endline();
        int between = 0;
        for (int y = 0; y < Side; ++y)
            for (int x = 0; x < Side; ++x)
                between += Drawn(x, y) != 0 && Drawn(x, y) != 0xFFFFFF;
        return between;
    };
    MultiSampling = 0;
    LineAntialiasing(1);
    EXPECT_GT(shades(), 20);
    LineAntialiasing(0);
    EXPECT_EQ(shades(), 0);
    LineSmoothingAvailable = 0;
    LineAntialiasing(1);
    EXPECT_EQ(shades(), 0);
}
