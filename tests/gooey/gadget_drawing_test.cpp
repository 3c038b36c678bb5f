#include "gooey/toolkit_test.h"

#include "gooey/cursors.h"
#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/redraw.h"

#include "platform/snapshots.h"

#include <climits>

namespace {

constexpr std::uint32_t Background = 0x605020;

std::uint32_t PixelAt(int x, int y) {
    return gl::WindowPicture(CurrentWindow->Gid).at(x, y) & 0xFFFFFF;
}

} // namespace

class GadgetDrawing : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Open("Drawing", 100, 100, 200, 100, 0);
        Settle();
        VanillaView();
        ClearWindow();
        SetColour(0xFFFFFF);
    }
};

TEST_F(GadgetDrawing, TheRampRunsFromBlackToTheColour) {
    struct Case {
        std::uint32_t Colour;
        int Shade;
        std::uint32_t Result;
    };

    for (const Case& test : {Case{0xFF0000, 7, 0x770000}, Case{0xFF0000, 15, 0xFF0000}, Case{0xFF0000, 0, 0},
                             Case{0x102030, 14, 0x0E1D2C}, Case{0x102030, 15, 0x102030}, Case{0xFFFFFF, 6, 0x666666}}) {
        SetColour(test.Colour);
        EXPECT_EQ(Colour[test.Shade], test.Result);
    }
}

TEST_F(GadgetDrawing, BoxesCoverTheirPixels) {
    DrawBox(10, 10, 20, 5, 15);
    DrawFrame(40, 10, 20, 5, 9);
    DrawBox(70, 10, 0, 5, 15);
    DrawFrame(70, 20, 5, 0, 15);

    struct Case {
        int X, Y;
        std::uint32_t Colour;
    };

    for (const Case& test :
         {Case{10, 10, 0xFFFFFF}, Case{29, 14, 0xFFFFFF}, Case{30, 14, Background}, Case{29, 15, Background},
          Case{9, 10, Background}, Case{40, 10, Colour[9]}, Case{59, 14, Colour[9]}, Case{59, 10, Colour[9]},
          Case{41, 11, Background}, Case{70, 12, Background}, Case{69, 12, Background}, Case{72, 20, Background}})
        EXPECT_EQ(PixelAt(test.X, test.Y), test.Colour) << test.X << " " << test.Y;
}

TEST_F(GadgetDrawing, BevelsHaveTheirShadesLineByLine) {
    DrawRaisedBox(10, 10, 60, 40);
    DrawLoweredBox(100, 10, 60, 40);
    const int raised[4][4] = {{5, 13, 7, 15}, {6, 12, 8, 14}, {7, 11, 9, 13}, {8, 10, 10, 12}};
    const int lowered[4][4] = {{9, 6, 8, 5}, {11, 5, 10, 4}, {13, 4, 12, 3}, {0, 0, 0, 0}};
    for (int line = 0; line < 4; ++line)
        for (int box = 0; box < 2; ++box) {
            const int* shades = box ? lowered[line] : raised[line];
            int x = box ? 100 : 10;
            EXPECT_EQ(PixelAt(x + 30, 10 + line), Colour[shades[0]]) << box << " bottom " << line;
            EXPECT_EQ(PixelAt(x + 59 - line, 30), Colour[shades[1]]) << box << " right " << line;
            EXPECT_EQ(PixelAt(x + line, 30), Colour[shades[2]]) << box << " left " << line;
            EXPECT_EQ(PixelAt(x + 30, 49 - line), Colour[shades[3]]) << box << " top " << line;
        }
    EXPECT_EQ(PixelAt(40, 30), Colour[ShadeRaised]);
    EXPECT_EQ(PixelAt(130, 30), Colour[ShadeLowered]);
    EXPECT_EQ(PixelAt(9, 30), Background);
    EXPECT_EQ(PixelAt(70, 30), Background);
}

TEST_F(GadgetDrawing, CrazyBoxesAreCrookedTheSameWayEveryTime) {
    CurrentWindow->Crazy = 1;
    auto draw = [](int x) {
        ClearWindow();
        DrawRaisedBox(x, 10, 60, 40);
        return gl::WindowPicture(CurrentWindow->Gid).pixels;
    };
    auto first = draw(10);
    EXPECT_EQ(draw(10), first);
    bool crooked = false;
    CurrentWindow->Crazy = 0;
    auto straight = draw(10);
    CurrentWindow->Crazy = 1;
    for (int x = 10; x < 14; ++x)
        crooked |= draw(x) != straight;
    EXPECT_TRUE(crooked);
}

TEST_F(GadgetDrawing, RandomColoursAreNeverDark) {
    for (int i = 0; i < 1000; ++i) {
        std::uint32_t colour = RandomColour();
        EXPECT_NE(colour & 0x808080, 0u);
        EXPECT_NE(colour & 0xFF, 0u);
        EXPECT_NE(colour & 0xFF00, 0u);
        EXPECT_NE(colour & 0xFF0000, 0u);
        EXPECT_LE(colour, 0xFFFFFFu);
    }
}

TEST_F(GadgetDrawing, CentredTextsOfAnyWidthAreCentred) {
    const char* text = "wide text";
    int width = StringWidth(text);
    auto firstAndLast = [] {
        gl::Picture picture = gl::WindowPicture(CurrentWindow->Gid);
        int first = picture.width, last = -1;
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                if ((picture.at(x, y) & 0xFFFFFF) != Background) {
                    first = std::min(first, x);
                    last = std::max(last, x);
                }
        return std::pair(first, last);
    };
    DrawText(60, 40, text, 0xFFFFFF);
    auto expected = firstAndLast();
    for (int space : {width + 20, width, width - 30}) {
        ClearWindow();
        SetColour(0xFFFFFF);
        DrawBox(0, 0, 0, 0, 15);
        DrawText(60, 40, "", 0xFFFFFF);
        PrintCentre(60 - (space - width) / 2, 40, space, text);
        EXPECT_EQ(firstAndLast(), expected) << space;
    }
}

TEST_F(GadgetDrawing, ClipsNest) {
    {
        ClipScope outer(20, 20, 50, 50);
        {
            ClipScope inner(10, 30, 30, 100);
            DrawBox(0, 0, 200, 100, 15);
        }
        DrawBox(60, 0, 200, 100, 9);
    }
    DrawBox(150, 50, 5, 5, 12);

    struct Case {
        int X, Y;
        std::uint32_t Colour;
    };

    for (const Case& test : {Case{20, 30, 0xFFFFFF}, Case{39, 69, 0xFFFFFF}, Case{40, 40, Background},
                             Case{19, 40, Background}, Case{30, 29, Background}, Case{30, 70, Background},
                             Case{69, 20, Colour[9]}, Case{70, 20, Background}, Case{152, 52, Colour[12]}})
        EXPECT_EQ(PixelAt(test.X, test.Y), test.Colour) << test.X << " " << test.Y;
}

TEST_F(GadgetDrawing, FrontBufferDrawingShowsAtOnce) {
    MakeDoubleBuffer();
    EXPECT_TRUE(CurrentWindow->Flags & WindowDoubleBuffered);
    FrontBuffer(1);
    EXPECT_TRUE(GetFrontBuffer());
    DrawBox(10, 10, 5, 5, 15);
    FrontBuffer(0);
    EXPECT_FALSE(GetFrontBuffer());
    DrawBox(30, 10, 5, 5, 15);
    EXPECT_EQ(PixelAt(12, 12), 0xFFFFFFu);
    EXPECT_NE(PixelAt(32, 12), 0xFFFFFFu);
    MakeSingleBuffer();
    EXPECT_FALSE(CurrentWindow->Flags & WindowDoubleBuffered);
    FrontBuffer(1);
    FrontBuffer(0);
    DrawBox(50, 10, 5, 5, 15);
    EXPECT_EQ(PixelAt(52, 12), 0xFFFFFFu);
}

TEST(Numbers, AreWrittenInDecimal) {
    for (int value : {0, 7, -305, INT_MAX, INT_MIN}) {
        char text[12];
        itoa(value, text);
        EXPECT_EQ(text, std::to_string(value));
    }
}

TEST(CursorMasks, AreASilhouetteAroundTheShape) {
    const char* picture[16];
    for (const char*& row : picture)
        row = "                ";
    picture[0] = "X               ";
    picture[8] = "    X   X       ";
    std::uint16_t planes[32];
    MakeMask16(planes, picture);
    // The bottom row comes first.
    EXPECT_EQ(planes[15], 0x8000);
    EXPECT_EQ(planes[7], 0x0880);
    EXPECT_EQ(planes[0], 0);
    EXPECT_EQ(planes[16 + 15], 0x4000);
    EXPECT_EQ(planes[16 + 14], 0xC000);
    // From the leftmost pixel to the rightmost, without the shape.
    EXPECT_EQ(planes[16 + 8], 0x1FC0);
    EXPECT_EQ(planes[16 + 7], 0x1FC0 & ~0x0880);
    EXPECT_EQ(planes[16 + 6], 0x1FC0);
    EXPECT_EQ(planes[16 + 5], 0);

    const char* large[32];
    for (const char*& row : large)
        row = "                                ";
    large[31] = "               X                ";
    std::uint16_t words[128];
    MakeMask32(words, large);
    EXPECT_EQ(words[0], 0x0001);
    EXPECT_EQ(words[1], 0x0000);
    EXPECT_EQ(words[64], 0x0002);
    EXPECT_EQ(words[65], 0x8000);
    EXPECT_EQ(words[66], 0x0003);
    EXPECT_EQ(words[67], 0x8000);
}
