#include "palettes/colour_mixing.h"

#include "store/records.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

struct Rgb {
    float Values[3];

    bool operator==(const Rgb& other) const {
        return std::equal(Values, Values + 3, other.Values, [](float a, float b) { return std::abs(a - b) < 1e-5F; });
    }
};

void PrintTo(const Rgb& rgb, std::ostream* stream) {
    *stream << rgb.Values[0] << ' ' << rgb.Values[1] << ' ' << rgb.Values[2];
}

TEST(ColourMixing, SpectrumRunsThroughSixColours) {
    struct Case {
        int Position, Kept;
        std::uint32_t Colour;
    };

    for (const Case& test :
         {Case{12, 12, 0xFF00FF}, Case{0, 12, 0xFF00FF}, Case{83, 83, 0xFF0000}, Case{154, 154, 0xFFFF00},
          Case{225, 225, 0x00FF00}, Case{296, 296, 0x00FFFF}, Case{367, 367, 0x0000FF}, Case{48, 48, 0xFF007D},
          Case{-1, 219, 0x15FF00}, Case{1000, 437, 0xFB00FF}}) {
        int position = test.Position;
        EXPECT_EQ(DoSpectrumCalc(position), test.Colour) << test.Position;
        EXPECT_EQ(position, test.Kept);
    }
}

TEST(ColourMixing, SquareLeadsToWhiteAndBlack) {
    const float pure[3] = {1, 0.5F, 0};
    const auto mixed = [&](int x, int y) {
        Rgb rgb;
        MixedColour(pure, x, y, rgb.Values);
        return rgb;
    };
    EXPECT_EQ(mixed(0, 0), (Rgb{1, 0.5F, 0}));
    EXPECT_EQ(mixed(MixerSize - 1, 0), (Rgb{1, 1, 1}));
    EXPECT_EQ(mixed(0, MixerSize - 1), (Rgb{0, 0, 0}));
    EXPECT_EQ(mixed(-5, 3 * MixerSize), (Rgb{0, 0, 0}));
}

TEST(ColourMixing, ComponentsMoveTogether) {
    struct Case {
        Rgb Start;
        int Component;
        float Value;
        Rgb Result;
    };

    for (const Case& test :
         {Case{{0.5F, 0.2F, 0.1F}, 0, 1, {1, 0.4F, 0.2F}}, Case{{0, 0.2F, 0.9F}, 0, 0.3F, {0.3F, 0.5F, 1}},
          Case{{0.5F, 1, 0.1F}, 2, 0.2F, {1, 1, 0.2F}}, Case{{0.5F, 0.1F, 0.1F}, 0, 0.04F, {0.04F, 0, 0}},
          Case{{0, 0, 0}, 1, 0, {0, 0, 0}}}) {
        Rgb rgb;
        JoinComponents(test.Start.Values, test.Component, test.Value, rgb.Values);
        EXPECT_EQ(rgb, test.Result) << test.Component << ' ' << test.Value;
    }
}

TEST(ColourMixing, ColourIsSpreadWhereItIsWanted) {
    struct Case {
        int Kind;
        float Ambient, Diffuse, Specular, Emission; // of red
    };

    for (const Case& test :
         {Case{GenerateAll, 0.5F, 0.75F, 1, 0}, Case{GenerateEmissive, 9, 9, 9, 1}, Case{GenerateSpecular, 9, 9, 1, 9},
          Case{GenerateDiffuse, 9, 0.75F, 9, 9}, Case{GenerateAmbient, 0.5F, 9, 9, 9}}) {
        Material material = {};
        for (auto* colour : {&material.Ambient, &material.Diffuse, &material.Specular, &material.Emission})
            std::fill_n(*colour, 3, 9.0F);
        SpreadColour(&material, 0x0000FF, test.Kind);
        EXPECT_EQ(material.Ambient[0], test.Ambient) << test.Kind;
        EXPECT_EQ(material.Diffuse[0], test.Diffuse) << test.Kind;
        EXPECT_EQ(material.Specular[0], test.Specular) << test.Kind;
        EXPECT_EQ(material.Emission[0], test.Emission) << test.Kind;
        EXPECT_EQ(material.Ambient[1], test.Ambient == 9 ? 9 : 0) << test.Kind;
    }
}

} // namespace
