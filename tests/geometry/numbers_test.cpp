#include "geometry/numbers.h"

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "geometry/colours.h"

namespace {

TEST(Numbers, Snap) {
    const struct {
        double Value, Step, Expected;
    } cases[] = {
        {0.3, 0.25, 0.25}, {-0.38, 0.25, -0.5}, {0.125, 0.25, 0.25}, {-0.125, 0.25, -0.25}, {0, 0.25, 0},
        {0.124, 0.25, 0},  {1e12, 0.25, 1e12},  {-7.49, 1.0, -7.0},  {-7.5, 1.0, -8.0},     {3.3, 0, 3.3},
    };

    for (const auto& c : cases) {
        double value = c.Value;
        Snap(&value, c.Step);
        EXPECT_DOUBLE_EQ(value, c.Expected) << c.Value << " to " << c.Step;
    }
}

TEST(Numbers, RoundToSignificantFigures) {
    const double infinity = std::numeric_limits<double>::infinity();

    const struct {
        double X;
        int N;
        double Expected;
    } cases[] = {
        {0, 3, 0},
        {1234, 2, 1200},
        {1250, 2, 1300},
        {-1250, 2, -1300},
        {0.0123, 2, 0.01},
        {-0.0123, 2, -0.01},
        {9.96, 2, 10},
        {123456, 3, 123000},
        {0.5, 1, 1},
        {1.25, 3, 1.25},
        {1.5e300, 1, 2e300},
        {infinity, 2, infinity},
        {DBL_TRUE_MIN, 3, DBL_TRUE_MIN},
    };

    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(RoundToNSF(c.X, c.N), c.Expected) << c.X << " to " << c.N;
}

TEST(Numbers, PrintWithoutTrailingZeros) {
    const struct {
        double Value;
        int Decimals;
        const char* Expected;
    } cases[] = {
        {2.5, 3, "2.5"},      {3.0, 3, "3"},     {100, 0, "100"}, {100, 2, "100"},
        {0.0625, 3, "0.062"}, {-0.5, 1, "-0.5"}, {1e-9, 4, "0"},  {1.0 / 3, 5, "0.33333"},
    };

    for (const auto& c : cases)
        EXPECT_STREQ(PrintNoDecimals(c.Value, c.Decimals), c.Expected);
    EXPECT_EQ(std::string(PrintNoDecimals(-DBL_MAX, 5000)).size(), 310u);
    EXPECT_EQ(PrintNoDecimals(1, 1), PrintNoDecimals(2, 1));
}

TEST(Numbers, ScaleToAUnit) {
    const struct {
        double Length;
        const char* Unit;
        double Scaled;
        int Index;
    } cases[] = {
        {0.005, "mm", 5, 3}, {0.01, "cm", 1, 2}, {0.99, "cm", 99, 2},  {1, "m", 1, 1},
        {999, "m", 999, 1},  {1000, "km", 1, 0}, {2500, "km", 2.5, 0}, {0, "mm", 0, 3},
    };

    for (const auto& c : cases) {
        double length = c.Length;
        EXPECT_STREQ(ScaleNumber(&length), c.Unit);
        EXPECT_DOUBLE_EQ(length, c.Scaled);
        EXPECT_EQ(ScaleIndex, c.Index);
    }
}

TEST(Colours, PackedOrderAndTruncation) {
    float rgb[3];
    UnpackRGB(0xff3300cc, rgb);
    EXPECT_EQ(rgb[0], static_cast<float>(204 / 255.0));
    EXPECT_EQ(rgb[1], 0);
    EXPECT_EQ(rgb[2], static_cast<float>(51 / 255.0));

    const struct {
        float Rgb[3];
        std::uint32_t Packed;
    } cases[] = {
        {{1, 0, 0}, 0x0000ff},
        {{0, 1, 0}, 0x00ff00},
        {{0, 0, 1}, 0xff0000},
        {{0.5f, 0.999f, 0.1f}, 0x19fe7f},
        {{2, -1, std::numeric_limits<float>::quiet_NaN()}, 0x0000ff},
    };

    for (const auto& c : cases)
        EXPECT_EQ(PackRGB(c.Rgb), c.Packed);
}

TEST(Colours, InterpolationStaysBetweenBlackAndWhite) {
    const float a[3] = {0, 0.5f, 1}, b[3] = {1, 1, 0.25f};
    float rgb[3];
    InterpolateRGB(a, b, 0.25f, rgb);
    EXPECT_EQ(rgb[0], 0.25f);
    EXPECT_EQ(rgb[1], 0.625f);
    EXPECT_EQ(rgb[2], 0.8125f);
    InterpolateRGB(a, b, 2, rgb);
    EXPECT_EQ(rgb[0], 1);
    EXPECT_EQ(rgb[1], 1);
    EXPECT_EQ(rgb[2], 0);
}

} // namespace
