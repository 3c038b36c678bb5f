// Pixel coordinates: what lines, rectangles, points and patterns cover, at scale 1 and 2.
#include "draw_fixture.h"

namespace gl {

namespace {

class Pixels : public Drawing {};

// Every pixel of a scale-2 picture, seen through the middle of the 2 x 2 block of each drawing pixel.
class ScaledPixels : public Drawing {
  protected:
    ScaledPixels() : Drawing(64, 48, 2) {}

    bool BlocksAreUniform() {
        const Picture picture = Shown();
        for (int y = 0; y < picture.height; y++)
            for (int x = 0; x < picture.width; x++)
                if (picture.at(x, y) != picture.at(x & ~1, y & ~1))
                    return false;
        return true;
    }
};

TEST_F(Pixels, LinesCoverBothEnds) {
    cpack(White);
    Line(2, 3, 6, 3);
    Line(10, 8, 10, 4);
    Line(20, 20, 24, 24);
    Line(33, 10, 30, 12);
    Line(40, 40, 40, 40);
    EXPECT_EQ(Row(0, 3, 9), "..#####..");
    EXPECT_EQ(Column(10, 2, 9), "..#####..");
    for (int i = 0; i < 5; i++)
        EXPECT_EQ(Pixel(20 + i, 20 + i), White) << i;
    EXPECT_EQ(Pixel(33, 10), White);
    EXPECT_EQ(Pixel(30, 12), White);
    EXPECT_EQ(Pixel(40, 40), White);
    EXPECT_EQ(Drawn(), 5 + 5 + 5 + 4 + 1);
}

TEST_F(Pixels, RectanglesCoverTheirCorners) {
    cpack(Red);
    rectfi(5, 5, 8, 7);
    EXPECT_EQ(Drawn(), 4 * 3);
    EXPECT_EQ(Row(4, 5, 6), ".RRRR.");
    EXPECT_EQ(Column(8, 4, 5), ".RRR.");
    ClearTo(0);
    cpack(Green);
    rectfi(8, 7, 5, 5);
    EXPECT_EQ(Drawn(), 4 * 3) << "corners given the other way round";
    ClearTo(0);
    recti(5, 5, 9, 8);
    EXPECT_EQ(Drawn(), 2 * 5 + 2 * 2);
    EXPECT_EQ(Row(4, 6, 7), ".G...G.");
}

TEST_F(Pixels, PointsAreOnePixel) {
    cpack(White);
    const int32_t at[2][2] = {{3, 4}, {63, 47}};
    bgnpoint();
    v2i(at[0]);
    v2i(at[1]);
    endpoint();
    EXPECT_EQ(Pixel(3, 4), White);
    EXPECT_EQ(Pixel(63, 47), White);
    EXPECT_EQ(Drawn(), 2);
}

TEST_F(Pixels, WideLinesHaveTheirWidth) {
    cpack(White);
    for (int width = 1; width <= 5; width++) {
        linewidth(width);
        Line(10 * width, 10, 10 * width, 30);
    }
    for (int width = 1; width <= 5; width++) {
        const std::string row = Row(10 * width - 4, 20, 9);
        EXPECT_EQ(std::count(row.begin(), row.end(), '#'), width) << row;
    }
    EXPECT_EQ(Row(26, 20, 9), "...###...");
    EXPECT_EQ(Row(46, 20, 9), "..#####..");
}

TEST_F(Pixels, LineStylesStartAtTheirLowestBit) {
    deflinestyle(1, 0x00F1);
    setlinestyle(1);
    cpack(White);
    Line(4, 10, 35, 10);
    EXPECT_EQ(Row(4, 10, 32), "#...####........#...####........");
    setlinestyle(0);
    Line(4, 12, 8, 12);
    EXPECT_EQ(Row(3, 12, 7), ".#####.");
}

TEST_F(Pixels, LineStylesRunOnThroughCorners) {
    deflinestyle(1, 0x00FF);
    setlinestyle(1);
    cpack(White);
    const int32_t path[3][2] = {{4, 4}, {16, 4}, {16, 20}};
    bgnline();
    for (const int32_t* p : path)
        v2i(p);
    endline();
    EXPECT_EQ(Row(4, 4, 12), "########....");
    EXPECT_EQ(Column(16, 5, 14), "...########...") << "the gap of the first side ends on the second";
}

TEST_F(Pixels, PatternsAreFixedToTheWindow) {
    uint16_t rows[16];
    for (int i = 0; i < 16; i++)
        rows[i] = i % 2 ? 0xAAAA : 0x5555;
    rows[0] = 0x8001;
    defpattern(3, 16, rows);
    setpattern(3);
    cpack(White);
    rectfi(0, 0, 63, 47);
    EXPECT_EQ(Row(0, 0, 20), "#..............##...");
    EXPECT_EQ(Row(0, 1, 8), "#.#.#.#.");
    EXPECT_EQ(Row(0, 2, 8), ".#.#.#.#");
    EXPECT_EQ(Row(0, 16, 4), "#...");
    setpattern(0);
    rectfi(0, 0, 63, 0);
    EXPECT_EQ(Row(0, 0, 6), "######");
    setpattern(99);
    cpack(Red);
    rectfi(0, 0, 63, 0);
    EXPECT_EQ(Row(0, 0, 6), "RRRRRR") << "an undefined pattern is solid";
}

TEST_F(Pixels, PatternsApplyToClearButNotToLines) {
    uint16_t rows[16] = {};
    rows[5] = 0xFFFF;
    defpattern(3, 16, rows);
    setpattern(3);
    cpack(White);
    clear();
    EXPECT_EQ(Drawn(), 64 * 3) << "rows 5, 21 and 37";
    Line(0, 10, 63, 10);
    EXPECT_EQ(Drawn(), 64 * 4);
}

TEST_F(Pixels, SmoothLinesFadeAtTheirEdges) {
    linesmooth(SML_ON | SML_SMOOTHER);
    blendfunction(BF_SA, BF_ONE);
    cpack(White);
    Line(5, 5, 55, 15);
    const Picture picture = Shown();
    int partial = 0;
    double total = 0;
    for (int y = 0; y < Height; y++) {
        const int level = static_cast<int>(picture.at(30, y) & 255);
        partial += level > 0 && level < 255;
        total += level / 255.0;
    }
    EXPECT_GE(partial, 1);
    // One pixel across the line is 1.02 down a column.
    EXPECT_NEAR(total, 1.02, 0.1);
    ClearTo(0);
    linesmooth(SML_OFF);
    blendfunction(BF_ONE, BF_ZERO);
    Line(5, 5, 55, 15);
    EXPECT_EQ(Drawn(), 51) << "crisp again: one pixel a column";
}

TEST_F(Pixels, SixteenBitValuesReachTheirEnds) {
    const int16_t far[4][2] = {{-32768, -32768}, {32767, -32768}, {32767, 32767}, {-32768, 32767}};
    const int16_t colour[3] = {300, -5, 128};
    c3s(colour);
    EXPECT_EQ(getcpack(), 0xFF8000FFu) << "components are clamped";
    bgnpolygon();
    for (const int16_t* p : far)
        v2s(p);
    endpolygon();
    EXPECT_EQ(Drawn(), 64 * 48) << "the polygon covers the window";
    EXPECT_EQ(Pixel(63, 47), 0xFF8000FFu);
    scrmask(-40000, 70000, 0, 47);
    int16_t left, right, bottom, top;
    getscrmask(&left, &right, &bottom, &top);
    EXPECT_EQ(left, -32768);
    EXPECT_EQ(right, 32767);
}

TEST_F(Pixels, PixelRectanglesKeepRowsAndBlend) {
    const uint32_t pixels[6] = {Red, Green, Blue, White, 0x00FFFFFF, 0x80FFFFFF};
    blendfunction(BF_SA, BF_MSA);
    lrectwrite(10, 20, 12, 21, pixels);
    EXPECT_EQ(Row(9, 20, 5), ".RGB.");
    EXPECT_EQ(Row(10, 21, 2), "#.");
    EXPECT_TRUE(Near(Pixel(12, 21), 0xFF808080, 1));
    uint32_t back[6];
    EXPECT_EQ(lrectread(10, 20, 12, 21, back), 6);
    EXPECT_EQ(back[2], Blue);
    EXPECT_EQ(back[4], Black);
}

TEST_F(ScaledPixels, EverythingDoubles) {
    cpack(White);
    Line(2, 3, 6, 3);
    Line(10, 8, 10, 4);
    rectfi(20, 20, 22, 21);
    recti(30, 20, 34, 24);
    linewidth(3);
    Line(40, 10, 50, 10);
    linewidth(1);
    const int32_t at[2] = {60, 40};
    bgnpoint();
    v2i(at);
    endpoint();
    uint16_t rows[16];
    for (uint16_t& row : rows)
        row = 0x5555;
    defpattern(1, 16, rows);
    setpattern(1);
    rectfi(0, 30, 15, 31);
    setpattern(0);
    deflinestyle(1, 0x3333);
    setlinestyle(1);
    Line(0, 44, 15, 44);
    EXPECT_TRUE(BlocksAreUniform());
    EXPECT_EQ(Row(0, 6, 18), "....##########....");
    EXPECT_EQ(Column(20, 6, 14), "..##########..");
    EXPECT_EQ(Row(0, 60, 8), "..##..##");
    EXPECT_EQ(Row(0, 88, 8), "####....");
    EXPECT_EQ(Column(90, 16, 10), "..######..") << "a width of three is six pixels";
}

} // namespace

} // namespace gl
