#include "textures/image_file.h"
#include "textures/pictures.h"

#include "base/memory.h"
#include "support/temporary_directory.h"
#include "textures/made_image.h"

#include <bit>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>

namespace {

using Pixels = std::vector<int>;

class ImageFiles : public testing::Test {
  protected:
    const char* Write(const MadeImage& image) {
        image.WriteTo(path);
        return path.c_str();
    }

    // The whole block, or nothing when the image cannot be read.
    std::optional<Pixels> Read(const MadeImage& image) {
        xSize = ySize = zSize = -1;
        std::uint8_t* block = ReadImage(Write(image), xSize, ySize, zSize);
        if (!block)
            return std::nullopt;
        Pixels pixels(block, block + (xSize * zSize + 3) / 4 * 4 * ySize);
        Free(block);
        return pixels;
    }

    TemporaryDirectory directory;
    const std::string path = directory.Path() / "image";
    int xSize, ySize, zSize;
};

// Three pixels by two rows, red 1 to 6, green 11 to 16, blue 21 to 26, in each way that a file may hold it.
MadeImage ThreeByTwo(int type, MadeImage::Order order) {
    MadeImage image(3, 2, 3, type, order);
    const int width = type & 0xff;
    // What stands above the low byte of a wide value does not count.
    const int high = width == 2 ? 0x4100 : 0;
    for (int z = 0; z < 3; ++z)
        for (int y = 0; y < 2; ++y) {
            const int first = high + 10 * z + 3 * y + 1;
            if (type >> 8 == 0)
                image.Append({first, first + 1, first + 2}, width);
            else if (y == 0)
                image.AppendRow(z * 2, {0x83, first, first + 1, first + 2, 0}, width);
            else
                image.AppendRow(z * 2 + 1, {0x01, first, 0x82, first + 1, first + 2, 0}, width);
        }
    return image;
}

TEST_F(ImageFiles, EveryStorageOrderAndWidthGivesTheSamePixels) {
    const Pixels expected = {21, 11, 1, 22, 12, 2, 23, 13, 3, 0, 0, 0, 24, 14, 4, 25, 15, 5, 26, 16, 6, 0, 0, 0};
    for (const int type : {0x0001, 0x0002, 0x0101, 0x0102})
        for (const auto order : {MadeImage::BigEndian, MadeImage::LittleEndian}) {
            EXPECT_EQ(Read(ThreeByTwo(type, order)), expected) << type << " " << order;
            EXPECT_EQ(xSize, 3);
            EXPECT_EQ(ySize, 2);
            EXPECT_EQ(zSize, 3);
        }
}

TEST_F(ImageFiles, ChannelsComeInReverseAndRowsArePadded) {
    const struct {
        int Channels;
        Pixels Block;
    } cases[] = {
        {1, {1, 2, 0, 0, 3, 4, 0, 0}},
        {2, {5, 1, 6, 2, 7, 3, 8, 4}},
        {3, {9, 5, 1, 10, 6, 2, 0, 0, 11, 7, 3, 12, 8, 4, 0, 0}},
        {4, {13, 9, 5, 1, 14, 10, 6, 2, 15, 11, 7, 3, 16, 12, 8, 4}},
        {5, {17, 13, 9, 5, 1, 18, 14, 10, 6, 2, 0, 0, 19, 15, 11, 7, 3, 20, 16, 12, 8, 4, 0, 0}},
    };

    for (const auto& c : cases) {
        MadeImage image(2, 2, c.Channels);
        for (int i = 1; i <= 4 * c.Channels; ++i)
            image.Append({i});
        EXPECT_EQ(Read(image), c.Block) << c.Channels;
    }
}

TEST_F(ImageFiles, RunsRepeatAndLiteralsCopy) {
    MadeImage image(300, 1, 1, 0x0101);
    image.AppendRow(0, {127, 7, 127, 7, 0, 9, 45, 8, 0x81, 5, 0x80, 0});
    Pixels expected(300, 7);
    std::fill(expected.begin() + 254, expected.begin() + 299, 8);
    expected[299] = 5;
    EXPECT_EQ(Read(image), expected);
}

TEST_F(ImageFiles, RowsMayLieAnywhereInTheFile) {
    MadeImage image(2, 3, 1, 0x0101);
    image.Append({0, 0, 0});
    for (const int entry : {2, 0, 1}) {
        image.AppendRow(entry, {0x82, entry, entry + 10});
        image.Append({99});
    }
    EXPECT_EQ(Read(image), (Pixels{0, 10, 0, 0, 1, 11, 0, 0, 2, 12, 0, 0}));
}

TEST_F(ImageFiles, MissingDimensionsRepeatTheFirstRowAndChannel) {
    MadeImage oneChannel(2, 2, 3, 0x0001, MadeImage::BigEndian, 2);
    oneChannel.Append({1, 2, 3, 4});
    EXPECT_EQ(Read(oneChannel), (Pixels{1, 1, 1, 2, 2, 2, 0, 0, 3, 3, 3, 4, 4, 4, 0, 0}));

    MadeImage oneRow(4, 2, 1, 0x0101, MadeImage::BigEndian, 1);
    oneRow.AppendRow(0, {0x84, 1, 2, 3, 4});
    EXPECT_EQ(Read(oneRow), (Pixels{1, 2, 3, 4, 1, 2, 3, 4}));
}

TEST_F(ImageFiles, SingleRowsInAnyOrder) {
    for (const int type : {0x0001, 0x0002, 0x0101, 0x0102}) {
        ImageFile* image = OpenImageForRead(Write(ThreeByTwo(type, MadeImage::LittleEndian)));
        ASSERT_TRUE(image);
        const auto row = [&](int y, int z) {
            std::uint8_t values[3] = {};
            EXPECT_EQ(ReadImageRow(image, values, y, z), 3);
            return Pixels(values, values + 3);
        };
        EXPECT_EQ(row(1, 2), (Pixels{24, 25, 26}));
        EXPECT_EQ(row(0, 0), (Pixels{1, 2, 3}));
        EXPECT_EQ(row(1, 0), (Pixels{4, 5, 6}));
        std::uint8_t none[3];
        for (const auto& [y, z] : {std::pair(2, 0), std::pair(0, 3), std::pair(-1, 0), std::pair(0, -1)})
            EXPECT_EQ(ReadImageRow(image, none, y, z), -1);
        // A row that failed does not spoil the next.
        EXPECT_EQ(row(0, 1), (Pixels{11, 12, 13}));
        CloseImage(image);
    }
}

// Calls of the system that read, made by this process so far; nothing where the system does not tell.
std::optional<long> ReadCalls() {
    std::ifstream counters("/proc/self/io");
    for (std::string name; counters >> name;) {
        long value;
        counters >> value;
        if (name == "syscr:")
            return value;
    }
    return std::nullopt;
}

TEST_F(ImageFiles, RowsInAnyOrderAreReadInFileOrder) {
    constexpr int Rows = 4096, Values = 64;
    MadeImage image(Values, Rows, 1, 0x0101);
    for (int i = 0; i < Rows; ++i) {
        // An odd step meets every row once, each far from the one before.
        const int entry = i * 1237 % Rows;
        image.SetRowStart(entry, static_cast<std::uint32_t>(image.Bytes.size()));
        image.SetRowSize(entry, Values + 1);
        image.Append({0x80 + Values});
        image.Bytes.resize(image.Bytes.size() + Values, static_cast<std::uint8_t>(entry));
    }
    const auto before = ReadCalls();
    if (!before)
        GTEST_SKIP() << "read calls are not counted here";
    const auto pixels = Read(image);
    const long calls = *ReadCalls() - *before;
    ASSERT_TRUE(pixels);
    for (int y = 0; y < Rows; ++y)
        ASSERT_EQ((*pixels)[y * Values + 5], y & 0xff);
    // One call a page, and a few for the counters themselves; going to and fro would take one a row and more.
    EXPECT_LT(calls, static_cast<long>(image.Bytes.size() / 4096 + 50));
}

struct Damage {
    const char* What;
    MadeImage Image;
    bool Opens; // damage of the rows shows only when they are read
};

MadeImage Damaged(MadeImage image, const std::function<void(MadeImage&)>& damage) {
    damage(image);
    return image;
}

TEST_F(ImageFiles, DamagedImagesAreRejected) {
    const MadeImage verbatim = ThreeByTwo(0x0001, MadeImage::BigEndian);
    const MadeImage packed = ThreeByTwo(0x0101, MadeImage::BigEndian);
    const MadeImage packedWide = ThreeByTwo(0x0102, MadeImage::BigEndian);
    const auto resized = [](const MadeImage& image, std::size_t size) {
        return Damaged(image, [=](MadeImage& i) { i.Bytes.resize(size); });
    };
    const auto set = [](const MadeImage& image, std::size_t place, std::uint32_t number, int size) {
        return Damaged(image, [=](MadeImage& i) { i.Set(place, number, size); });
    };
    const auto row = [](int width, std::initializer_list<int> packets) {
        MadeImage image(4, 1, 1, 0x0100 + width);
        image.AppendRow(0, packets, width);
        return image;
    };
    const std::vector<Damage> cases = {
        {"empty", resized(verbatim, 0), false},
        {"short header", resized(verbatim, 151), false},
        {"another magic number", set(verbatim, 0, 475, 2), false},
        {"no columns", set(verbatim, 6, 0, 2), false},
        {"no rows", set(verbatim, 8, 0, 2), false},
        {"no channels", set(verbatim, 10, 0, 2), false},
        {"unknown storage", set(verbatim, 2, 0x0701, 2), true},
        {"three bytes a value", set(verbatim, 2, 0x0003, 2), true},
        {"no bytes a value", set(verbatim, 2, 0x0100, 2), false},
        {"dimension 0", set(verbatim, 4, 0, 2), true},
        {"dimension 4", set(verbatim, 4, 4, 2), true},
        {"header only", resized(verbatim, 512), true},
        {"less than a header", resized(verbatim, 200), true},
        {"last value missing", resized(verbatim, verbatim.Bytes.size() - 1), true},
        {"values wider than the file", set(verbatim, 2, 0x0002, 2), true},
        {"largest sizes",
         Damaged(verbatim,
                 [](MadeImage& i) {
                     for (const int place : {6, 8, 10})
                         i.Set(place, 65535, 2);
                 }),
         true},
        {"largest sizes of one row",
         Damaged(verbatim,
                 [](MadeImage& i) {
                     i.Set(4, 1, 2);
                     for (const int place : {8, 10})
                         i.Set(place, 65535, 2);
                 }),
         true},
        {"tables cut", resized(packed, 512 + 6 * 8 - 1), false},
        {"tables larger than the file", set(packed, 8, 65535, 2), false},
        {"row starts behind the end", set(packed, 512, 0xfffffff0u, 4), true},
        {"row ends behind the end", set(packed, 512 + 24, 0xfffffff0u, 4), true},
        {"row of no bytes", set(packed, 512 + 24, 0, 4), true},
        {"row starts at the end",
         Damaged(packed, [](MadeImage& i) { i.SetRowStart(5, static_cast<std::uint32_t>(i.Bytes.size())); }), true},
        {"a row twice", Damaged(packed, [](MadeImage& i) { i.SetRowStart(1, 560); }), true},
        {"a row inside another", Damaged(packed, [](MadeImage& i) { i.SetRowSize(0, 8); }), true},
        {"last row cut", resized(packed, packed.Bytes.size() - 2), true},
        {"run too long", row(1, {5, 9}), true},
        {"literal too long", row(1, {0x85, 1, 2, 3, 4, 5}), true},
        {"second packet too long", row(1, {3, 9, 2, 9}), true},
        {"too few values", row(1, {3, 9, 0}), true},
        {"control without value", row(1, {3, 9, 1}), true},
        {"literal without values", row(1, {0x84, 1, 2, 3}), true},
        {"wide run too long", row(2, {5, 9}), true},
        {"wide literal cut", row(2, {0x84, 1, 2, 3}), true},
        {"half a wide value", Damaged(row(2, {3, 9, 1, 9}), [](MadeImage& i) { i.SetRowSize(0, 7); }), true},
    };
    for (const Damage& c : cases) {
        EXPECT_EQ(Read(c.Image), std::nullopt) << c.What;
        EXPECT_EQ(IsAnImageFile(path.c_str()), c.Opens ? 1 : 0) << c.What;
    }
}

TEST_F(ImageFiles, ARowLongerThanAnySensibleOneStillDecodes) {
    MadeImage image(1, 1, 1, 0x0101);
    image.AppendRow(0, {0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x81, 42});
    EXPECT_EQ(Read(image), (Pixels{42, 0, 0, 0}));
}

TEST_F(ImageFiles, OnlyRegularFilesAreImages) {
    EXPECT_FALSE(IsAnImageFile(path.c_str()));
    EXPECT_FALSE(IsAnImageFile(directory.Path().c_str()));
    EXPECT_FALSE(IsAnImageFile(""));
    // Opening a pipe that nobody writes to must not wait.
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(IsAnImageFile(path.c_str()));
}

TEST_F(ImageFiles, TheHeaderIsReadInEitherOrder) {
    for (const auto order : {MadeImage::BigEndian, MadeImage::LittleEndian}) {
        MadeImage made(3, 2, 4, 0x0001, order);
        made.Set(12, 1, 4);
        made.Set(16, 255, 4);
        made.Set(104, 3, 4);
        made.Bytes[24] = 'x';
        ImageFile* image = OpenImageForRead(Write(made));
        ASSERT_TRUE(image);
        EXPECT_EQ(image->Magic, 474);
        EXPECT_EQ(image->Swap, (order == MadeImage::BigEndian) != (std::endian::native == std::endian::big));
        EXPECT_EQ(image->Dimension, 3);
        EXPECT_EQ(image->ZSize, 4);
        EXPECT_EQ(image->Min, 1u);
        EXPECT_EQ(image->Max, 255u);
        EXPECT_EQ(image->ColourMap, 3u);
        EXPECT_STREQ(image->Name, "x");
        CloseImage(image);
    }
}

} // namespace
