// Text: measures that do not depend on the scale, where it lands, and characters beyond the first 128.
#include <cmath>

#include "draw_fixture.h"

namespace gl {

namespace {

class Text : public Drawing {
  protected:
    Text() : Drawing(220, 40) {}

    void SetUp() override {
        Drawing::SetUp();
        DefineFonts();
    }

    static void DefineFonts() {
        defrasterfont(1, 22);
        defrasterfont(2, 17);
        defrasterfont(3, 18);
    }

    // The box of what is drawn, in drawing pixels.
    struct Extent {
        double left, right, bottom, top;
    };

    Extent Drawn() {
        const Picture picture = Shown();
        Extent e = {1e9, -1, 1e9, -1};
        for (int y = 0; y < picture.height; y++)
            for (int x = 0; x < picture.width; x++)
                if ((picture.at(x, y) & 255) > 100)
                    e = {std::min<double>(e.left, x), std::max<double>(e.right, x + 1), std::min<double>(e.bottom, y),
                         std::max<double>(e.top, y + 1)};
        const double s = DrawingScale();
        return {e.left / s, e.right / s, e.bottom / s, e.top / s};
    }
};

TEST_F(Text, MeasuresAreThoseOfScaleOneEverywhere) {
    const char* const samples[] = {"Create sphere, complexity = ", "<Left>=Set centre/drag radius", "iiiiWWWW", ""};
    int widths[3][4], heights[3];
    for (int f = 0; f < 3; f++) {
        font(f + 1);
        heights[f] = getheight();
        for (int i = 0; i < 4; i++)
            widths[f][i] = strwidth(samples[i]);
    }
    EXPECT_EQ(heights[0], 22);
    EXPECT_EQ(heights[1], 17);
    EXPECT_EQ(heights[2], 18);
    EXPECT_EQ(widths[0][3], 0);
    EXPECT_GT(widths[0][0], widths[2][0]);
    EXPECT_GE(widths[2][0], widths[1][0]);
    font(1);
    EXPECT_EQ(strwidth("ab"), AdvanceWidth(1, 'a') + AdvanceWidth(1, 'b'));
    for (double scale : {2.0, 1.5}) {
        Close();
        Open(scale, false);
        DefineFonts();
        for (int f = 0; f < 3; f++) {
            font(f + 1);
            for (int i = 0; i < 4; i++)
                EXPECT_EQ(strwidth(samples[i]), widths[f][i]) << "font " << f + 1 << " at " << scale;
        }
    }
}

TEST_F(Text, LandsOnItsBaseline) {
    for (double scale : {1.0, 2.0}) {
        Close();
        Open(scale, false);
        DefineFonts();
        cpack(White);
        for (int f = 1; f <= 3; f++) {
            font(f);
            ClearTo(0);
            cmov2i(20, 12);
            charstr("HEll");
            const Extent e = Drawn();
            EXPECT_NEAR(e.left, 21, 1.5) << f << " at " << scale;
            EXPECT_NEAR(e.bottom, 12, 0.51) << "letters stand on the baseline";
            EXPECT_GT(e.top, 12 + 0.5 * getheight());
            EXPECT_LT(e.top, 12 + getheight() - getdescender());
            EXPECT_NEAR(e.right, 20 + strwidth("HEll"), 2.5);
            ClearTo(0);
            cmov2i(20, 12);
            charstr("gpqy");
            EXPECT_GE(Drawn().bottom, 12 - getdescender() - 0.51);
            EXPECT_LT(Drawn().bottom, 11);
        }
    }
}

TEST_F(Text, ContinuesWhereItEnded) {
    cpack(White);
    font(1);
    cmov2i(10, 12);
    charstr("Hello world");
    const Picture whole = Shown();
    ClearTo(0);
    cmov2i(10, 12);
    for (const char* part : {"Hel", "", "lo w", "orld"})
        charstr(part);
    EXPECT_EQ(DifferingPixels(whole, Shown(), 0, nullptr), 0);
}

TEST_F(Text, IsClippedByTheScreenMaskAndColoured) {
    font(1);
    scrmask(30, 59, 0, 39);
    cpack(0x0000FF); // no alpha: text is opaque all the same
    cmov2i(10, 12);
    charstr("HHHHHHHHHHHHHHHHH");
    const Picture picture = Shown();
    bool inside = false;
    for (int y = 0; y < Height; y++)
        for (int x = 0; x < Width; x++) {
            if (x < 30 || x > 59) {
                EXPECT_EQ(picture.at(x, y), Black);
            }
            inside |= picture.at(x, y) == Red;
            EXPECT_EQ(picture.at(x, y) & 0xFFFF00, 0u);
        }
    EXPECT_TRUE(inside);
}

TEST_F(Text, NarrowLettersAreAsHighAsOthers) {
    const char* const text = "Manipulate HELP";
    Extent extents[2];
    int widths[2];
    for (const int narrow : {0, 1}) {
        defrasterfont(4, 22, narrow ? 70 : 100);
        font(4);
        EXPECT_EQ(getheight(), 22);
        widths[narrow] = strwidth(text);
        ClearTo(0);
        cpack(White);
        cmov2i(10, 10);
        charstr(text);
        extents[narrow] = Drawn();
    }
    EXPECT_NEAR(widths[1], widths[0] * 0.7, 8);
    EXPECT_NEAR(extents[1].right, 10 + widths[1], 2);
    EXPECT_EQ(extents[1].bottom, extents[0].bottom);
    EXPECT_EQ(extents[1].top, extents[0].top);
}

TEST_F(Text, ReadsUtf8AndSurvivesAnyBytes) {
    font(2);
    EXPECT_EQ(strwidth("\xC3\xA9"), AdvanceWidth(2, 0xE9)) << "one character in two bytes";
    EXPECT_EQ(strwidth("\xE2\x82\xAC"), AdvanceWidth(2, 0x20AC));
    const int question = AdvanceWidth(2, '?');
    EXPECT_EQ(strwidth("\x80"), question);
    EXPECT_EQ(strwidth("\xC3"), question) << "cut off";
    EXPECT_EQ(strwidth("\xFF\xFE"), 2 * question);
    EXPECT_EQ(strwidth("\xC3z"), question + AdvanceWidth(2, 'z'));
    std::string all;
    for (int i = 1; i < 256; i++)
        all += static_cast<char>(i);
    cmov2i(0, 10);
    charstr(all.c_str());
    FlushDrawing();
    EXPECT_GT(strwidth(all.c_str()), 0);
}

TEST_F(Text, StandsAtAPointInSpaceAndHidesBehindIt) {
    perspective(400, 220.0 / 40, 1, 100);
    zbuffer(true);
    cpack(White);
    font(1);
    cmov(0, 0, -20);
    charstr("H");
    EXPECT_NEAR(Drawn().left, 111, 2);
    EXPECT_NEAR(Drawn().bottom, 20, 1.1);
    cpack(Red);
    ClearTo(0);
    Quad(-20, -20, 20, 20, -10);
    cmov(0, 0, -20);
    cpack(White);
    charstr("H");
    const Picture picture = Shown();
    EXPECT_EQ(std::count(picture.pixels.begin(), picture.pixels.end(), Red), 220 * 40);
    ClearTo(0);
    cmov(0, 0, 5);
    charstr("H");
    EXPECT_EQ(Drawn().right, -1) << "nothing behind the eye";
}

TEST_F(Text, BadFontsAreReported) {
    EXPECT_FALSE(SetFontFile("/nonexistent.ttf"));
    testing::internal::CaptureStderr();
    defrasterfont(0, 12);
    defrasterfont(4, 1000);
    defrasterfont(4, 17, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Graphics: font 0 of height 12 cannot be defined\n"
                                                      "Graphics: font 4 of height 1000 cannot be defined\n"
                                                      "Graphics: font 4 of height 17 cannot be defined\n");
    font(77);
    EXPECT_EQ(getheight(), 17) << "the default font";
    EXPECT_GT(strwidth("abc"), 0);
}

} // namespace

} // namespace gl
