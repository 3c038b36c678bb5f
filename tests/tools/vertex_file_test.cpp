#include "tools/vertex_file.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

using Places = std::vector<std::array<double, 3>>;

class VertexFiles : public testing::Test {
  protected:
    VertexFile Read(const std::string& text, int dimensions, int (*progress)(double) = nullptr) const {
        std::ofstream(Path(), std::ios::binary) << text;
        return ReadVertexFile(Path().c_str(), dimensions, progress);
    }

    std::string Path() const { return Place.Path() / "points"; }

    TemporaryDirectory Place;
};

TEST_F(VertexFiles, NumbersAreReadInAnyUsualNotation) {
    struct Case {
        std::string Text;
        int Dimensions;
        Places Found;
        std::size_t Unreadable;
    };

    const std::string longLine(3 << 20, 'x');
    const Case cases[] = {
        {"1,2", 2, {{1, 2, 0}}, 0},
        {"1 2", 3, {}, 1},
        {"1 2 3", 2, {{1, 2, 0}}, 0},
        {" 1\t-2  ,\t3.5 \n", 3, {{1, -2, 3.5}}, 0},
        {"1e3,+1.5E-1;.5\r\n7. 8 9\r\n", 3, {{1000, 0.15, 0.5}, {7, 8, 9}}, 0},
        {"1 2 3\r4 5 6\r", 3, {{1, 2, 3}, {4, 5, 6}}, 0},
        {"1.5D+2 -2d0 0", 3, {{150, -2, 0}}, 0},
        {"\n \n# 1 2 3\n1 2 3# four\n,,\n", 3, {{1, 2, 3}}, 0},
        {"1 2 # 3\n", 3, {}, 1},
        {"x y z\n1 2 3\nnan 1 2\n1 inf 2\n1e39 1 2\n1e400 1 2\n1-2 3 4\n", 3, {{1, 2, 3}}, 6},
        {"1e-400 0 0", 3, {{0, 0, 0}}, 0},
        {"\xEF\xBB\xBF"
         "1 2 3",
         3,
         {{1, 2, 3}},
         0},
        {"", 3, {}, 0},
        {"0x10 1\n", 2, {}, 1},
        // A line that is longer than what is in memory at a time, and one that begins with places.
        {longLine + "\n1 2\n", 2, {{1, 2, 0}}, 1},
        {"1 2 " + longLine + "\n3 4", 2, {{1, 2, 0}, {3, 4, 0}}, 0},
        {std::string("1 2\0 3\n", 7), 3, {{1, 2, 3}}, 0},
    };
    for (const Case& test : cases) {
        const VertexFile file = Read(test.Text, test.Dimensions);
        EXPECT_EQ(file.Places, test.Found) << test.Text.substr(0, 40);
        EXPECT_EQ(file.UnreadableLines, test.Unreadable) << test.Text.substr(0, 40);
        EXPECT_EQ(file.Error, "");
    }
}

/// Lines of every length come to lie across the ends of the blocks in which a file is read.
TEST_F(VertexFiles, LongFilesLoseNothingBetweenBlocks) {
    for (const char* end : {"\n", "\r\n", "\r"}) {
        std::string text;
        Places expected;
        for (int i = 0; i < 200'000; ++i) {
            text += std::to_string(i * 37 % 1000'000) + " " + std::to_string(i) + end;
            expected.push_back({static_cast<double>(i * 37 % 1000'000), static_cast<double>(i), 0});
        }
        EXPECT_EQ(Read(text, 2).Places, expected);
    }
}

TEST_F(VertexFiles, ReadingCanBeGivenUp) {
    const std::string text(5 << 20, '\n');
    static int calls;
    calls = 0;
    const VertexFile file = Read("1 2 3\n" + text, 3, [](double part) {
        EXPECT_TRUE(part > 0 && part < 1) << part;
        return ++calls == 2 ? 1 : 0;
    });
    EXPECT_TRUE(file.Cancelled);
    EXPECT_TRUE(file.Places.empty());
    EXPECT_EQ(calls, 2);
}

TEST_F(VertexFiles, WhatIsNoFileIsToldWithTheReason) {
    EXPECT_EQ(ReadVertexFile(Path().c_str(), 3, nullptr).Error, Path() + ": No such file or directory");
    EXPECT_EQ(ReadVertexFile(Place.Path().c_str(), 3, nullptr).Error, Place.Path().string() + ": This is not a file");
}

} // namespace
