#include "textures/pictures.h"

#include "support/temporary_directory.h"
#include "textures/made_picture.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

/// The values of a pixel in the order of files, x and y from the top left corner.
Bytes PixelAt(const PixelBlock& block, int x, int down) {
    const std::uint8_t* pixel = block.Row(block.Height - 1 - down) + x * block.Channels;
    return {std::reverse_iterator(pixel + block.Channels), std::reverse_iterator(pixel)};
}

PixelBlock Decoded(const Bytes& file) {
    PixelBlock block;
    EXPECT_EQ(DecodePicture(file.data(), file.size(), block), "");
    return block;
}

TEST(Pictures, PngGivesItsValuesWhateverTheirForm) {
    // Two rows of two pixels in every form, and what the pixel at the right of the upper row is.
    const png_color colours[2] = {{10, 20, 30}, {40, 50, 60}};
    const png_byte alphas[1] = {128};

    const struct {
        const char* What;
        int Depth, Kind;
        Bytes Row;
        std::function<void(png_structp, png_infop)> SetUp;
        Bytes Right;
    } cases[] = {
        {"grey", 8, PNG_COLOR_TYPE_GRAY, {7, 200}, {}, {200}},
        {"grey and alpha", 8, PNG_COLOR_TYPE_GRAY_ALPHA, {7, 8, 200, 100}, {}, {200, 100}},
        {"colours", 8, PNG_COLOR_TYPE_RGB, {1, 2, 3, 4, 5, 6}, {}, {4, 5, 6}},
        {"colours and alpha", 8, PNG_COLOR_TYPE_RGB_ALPHA, {1, 2, 3, 4, 5, 6, 7, 8}, {}, {5, 6, 7, 8}},
        {"1 bit", 1, PNG_COLOR_TYPE_GRAY, {0x40}, {}, {255}},
        {"4 bits", 4, PNG_COLOR_TYPE_GRAY, {0x03}, {}, {51}},
        {"16 bits", 16, PNG_COLOR_TYPE_GRAY, {0, 0, 0x80, 0x80}, {}, {128}},
        {"16 bits a colour",
         16,
         PNG_COLOR_TYPE_RGB,
         {0, 0, 0, 0, 0, 0, 0x10, 0x10, 0x20, 0x20, 0x30, 0x30},
         {},
         {16, 32, 48}},
        {"table",
         8,
         PNG_COLOR_TYPE_PALETTE,
         {0, 1},
         [&](png_structp png, png_infop info) { png_set_PLTE(png, info, colours, 2); },
         {40, 50, 60}},
        {"table with alpha",
         8,
         PNG_COLOR_TYPE_PALETTE,
         {1, 0},
         [&](png_structp png, png_infop info) {
             png_set_PLTE(png, info, colours, 2);
             png_set_tRNS(png, info, alphas, 1, nullptr);
         },
         {10, 20, 30, 128}},
        {"gamma",
         8,
         PNG_COLOR_TYPE_GRAY,
         {7, 200},
         [](png_structp png, png_infop info) { png_set_gAMA(png, info, 1.0); },
         {200}},
    };

    for (const auto& c : cases) {
        const Bytes dark(c.Row.size(), 0);
        const Bytes file = MadePng(2, 2, c.Depth, c.Kind, {c.Row, dark}, c.SetUp);
        const PixelBlock block = Decoded(file);
        ASSERT_TRUE(block) << c.What;
        EXPECT_EQ(PixelAt(block, 1, 0), c.Right) << c.What;
        EXPECT_EQ(block.Pitch % 4, 0u) << c.What;
        PictureSize size;
        EXPECT_TRUE(ReadPngSize(file.data(), file.size(), size));
        EXPECT_EQ(size.Width, 2);
    }
}

/// 16 x 8 pixels in four areas: red, green over blue, white.
std::vector<Bytes> FourAreas() {
    std::vector<Bytes> rows;
    for (int y = 0; y < 8; ++y) {
        Bytes row;
        for (int x = 0; x < 16; ++x)
            for (int c = 0; c < 3; ++c) {
                const int area = (y >= 4) * 2 + (x >= 8);
                row.push_back(area == 3 || area == c ? 255 : 0);
            }
        rows.push_back(row);
    }
    return rows;
}

char AreaAt(const PixelBlock& block, bool right, bool low) {
    const Bytes p = PixelAt(block, right ? block.Width - 2 : 1, low ? block.Height - 2 : 1);
    const bool r = p[0] > 128, g = p[1] > 128, b = p[2] > 128;
    return r && g && b ? 'w' : r ? 'r' : g ? 'g' : b ? 'b' : '?';
}

TEST(Pictures, JpegIsTurnedAsTheCameraSays) {
    // Corners in reading order after each turn.
    const char* const turned[] = {"rgbw", "rgbw", "grwb", "wbgr", "bwrg", "rbgw", "brwg", "wgbr", "gwrb"};
    for (int orientation = 0; orientation <= 8; ++orientation) {
        const PixelBlock block = Decoded(MadeJpeg(16, 8, 3, FourAreas(), orientation, orientation % 2));
        const std::string corners = {AreaAt(block, false, false), AreaAt(block, true, false),
                                     AreaAt(block, false, true), AreaAt(block, true, true)};
        EXPECT_EQ(corners, turned[orientation]) << orientation;
        EXPECT_EQ(block.Width, orientation >= 5 ? 8 : 16);
    }
    const PixelBlock grey = Decoded(MadeJpeg(2, 1, 1, {{80, 80}}));
    EXPECT_EQ(grey.Channels, 1);
    EXPECT_NEAR(grey.Row(0)[0], 80, 2);
}

class PictureFiles : public testing::Test {
  protected:
    std::string Write(const std::string& name, const Bytes& bytes) {
        WriteBytes(directory.Path() / name, bytes);
        return directory.Path() / name;
    }

    TemporaryDirectory directory;
};

/// Overwrites numbers in a file's header.
Bytes Changed(Bytes bytes, std::size_t place, const Bytes& values) {
    std::copy(values.begin(), values.end(), bytes.begin() + static_cast<std::ptrdiff_t>(place));
    return bytes;
}

TEST_F(PictureFiles, BadOnesTellWhyAndLeaveThePictureAsItWas) {
    const Bytes png = MadePng(2, 2, 8, PNG_COLOR_TYPE_GRAY, {{1, 2}, {3, 4}});
    const Bytes jpeg = MadeJpeg(16, 8, 3, FourAreas());
    Bytes animated = png;
    const Bytes control = {0, 0, 0, 8, 'a', 'c', 'T', 'L', 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0};
    animated.insert(animated.begin() + 33, control.begin(), control.end());
    const Bytes frameMarker = {0xFF, 0xC0};
    const auto frame = std::search(jpeg.begin(), jpeg.end(), frameMarker.begin(), frameMarker.end());
    const auto size = static_cast<std::size_t>(frame - jpeg.begin()) + 5;

    const struct {
        const char* What;
        Bytes File;
        const char* Says;
    } cases[] = {
        {"empty", {}, "The file is no image."},
        {"text", {'h', 'e', 'l', 'l', 'o'}, "The file is no image."},
        {"GIF", {'G', 'I', 'F', '8', '9', 'a'}, "GIF images cannot be read. Save it as PNG or JPEG."},
        {"PNG cut", Bytes(png.begin(), png.end() - 30), "The file ends early."},
        {"PNG changed", Changed(png, 45, {9, 9, 9}), "The file is damaged."},
        {"PNG that claims much", Changed(png, 16, {0, 0, 0xFF, 0xFF, 0, 0, 0xFF, 0xFF}),
         "The image is too large: 65535 x 65535 pixels."},
        {"PNG that claims more than it can have", Changed(png, 16, {0, 0, 0x20, 0, 0, 0, 0x20, 0}),
         "The file ends early."},
        {"PNG without pixels", Changed(png, 16, {0, 0, 0, 0}), "The image has no pixels."},
        {"animated", animated, "The image is animated. Save a single picture of it."},
        {"JPEG cut", Bytes(jpeg.begin(), jpeg.end() - 20), "The file ends early."},
        {"JPEG that claims much", Changed(jpeg, size, {0xFF, 0xDC, 0xFF, 0xDC}),
         "The image is too large: 65500 x 65500 pixels."},
        {"JPEG without pixels", Changed(jpeg, size, {0, 8, 0, 0}), "The image has no pixels."},
        {"CMYK", MadeJpeg(2, 1, 4, {{1, 2, 3, 4, 5, 6, 7, 8}}),
         "The image is in the colours of a printer (CMYK). Save it as RGB."},
    };

    for (const auto& c : cases) {
        PixelBlock block;
        ASSERT_TRUE(block.Make(1, 1, 1));
        EXPECT_EQ(ReadPicture(Write("a", c.File).c_str(), block), c.Says) << c.What;
        EXPECT_TRUE(block && block.Width == 1) << c.What;
        int width, height, channels;
        EXPECT_EQ(ReadImage((directory.Path() / "a").c_str(), width, height, channels), nullptr) << c.What;
    }
    for (const Bytes& whole : {png, jpeg})
        for (std::size_t length = 0; length + 2 < whole.size(); ++length) {
            PixelBlock block;
            const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            EXPECT_NE(DecodePicture(cut.data(), cut.size(), block), "") << length;
        }
}

TEST_F(PictureFiles, ManyAreHandedOverInOrder) {
    std::vector<std::string> names;
    for (int i = 0; i < 100; ++i)
        names.push_back(i % 10 == 3 ? Write("bad", {1})
                                    : Write(std::to_string(i),
                                            MadePng(1, 1, 8, PNG_COLOR_TYPE_GRAY, {{static_cast<std::uint8_t>(i)}})));
    std::size_t expected = 0;
    ReadPictures(names, [&](std::size_t index, PixelBlock& block, const std::string& problem) {
        EXPECT_EQ(index, expected++);
        EXPECT_EQ(problem.empty(), index % 10 != 3);
        EXPECT_TRUE(!problem.empty() || block.Row(0)[0] == index);
    });
    EXPECT_EQ(expected, names.size());
}

} // namespace
