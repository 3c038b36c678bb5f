#include "base/text_lines.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

class TextLines : public testing::Test {
  protected:
    ~TextLines() override { Close(); }

    std::FILE* Open(std::string text) {
        Close();
        contents = std::move(text);
        // A buffer of no bytes cannot be opened as a file.
        file = contents.empty() ? std::fopen("/dev/null", "r") : fmemopen(contents.data(), contents.size(), "r");
        return file;
    }

    void Close() {
        if (file)
            std::fclose(file);
        file = nullptr;
    }

    std::FILE* file = nullptr;

  private:
    std::string contents;
};

TEST_F(TextLines, LinesAreCutAtTheNewline) {
    Open("one\n\n two \r\nlast");
    for (const char* line : {"one", "", " two ", "last"}) {
        EXPECT_TRUE(ReadLineFromFile(file));
        EXPECT_STREQ(FileData, line);
    }
    EXPECT_FALSE(ReadLineFromFile(file));
    EXPECT_FALSE(ReadLineFromFile(Open("")));
}

TEST_F(TextLines, LongLinesComeInPieces) {
    Open(std::string(999, 'a') + "b\nnext\n");
    EXPECT_TRUE(ReadLineFromFile(file));
    EXPECT_EQ(FileData, std::string(999, 'a'));
    EXPECT_TRUE(ReadLineFromFile(file));
    EXPECT_STREQ(FileData, "b");
    EXPECT_TRUE(ReadLineFromFile(file));
    EXPECT_STREQ(FileData, "next");
}

TEST_F(TextLines, FindsALineByItsExactBeginning) {
    Open("count: 3\n Count: 4\nCount: 5\nCount: 6\n");
    EXPECT_TRUE(FindLineInFile(file, "Count: "));
    EXPECT_STREQ(RestOfLine, "5");
    EXPECT_TRUE(FindLineInFile(file, "Count: "));
    EXPECT_STREQ(RestOfLine, "6");
    EXPECT_FALSE(FindLineInFile(file, "Count: "));
}

TEST_F(TextLines, MatchesTheNextLineByKey) {
    const struct {
        const char *Line, *Key, *Rest;
    } cases[] = {
        {"Alpha: 0.5", "Alpha: ", "0.5"},
        {"alpha:    0.5", "Alpha: ", "0.5"},
        {"ALPHA: \t x y ", "Alpha: ", "x y "},
        {"Alpha: ", "Alpha: ", nullptr},
        {"Alpha:", "Alpha: ", nullptr},
        {" Alpha: 1", "Alpha: ", nullptr},
        {"Beta: 1\nAlpha: 1", "Alpha: ", nullptr},
        {"Alpha", "Alpha", nullptr},
        {"", "Alpha: ", nullptr},
    };

    for (const auto& c : cases) {
        const char* rest = MatchAsciiLine(Open(c.Line), c.Key);
        EXPECT_STREQ(rest, c.Rest) << c.Line;
    }
}

TEST_F(TextLines, ReadsNumbersBetweenCommas) {
    float v[3];
    for (const char* line : {"Colour: 1,-2.5,3e2", "colour:   1 , -2.5\t,\t3e2  rest", "Colour: +1.0, -2.5,300"}) {
        EXPECT_TRUE(ReadAsciiFloats(Open(line), "Colour: ", v, 3)) << line;
        EXPECT_EQ(v[0], 1.0f);
        EXPECT_EQ(v[1], -2.5f);
        EXPECT_EQ(v[2], 300.0f);
    }
    for (const char* line : {"Colour: 1,2", "Colour: 1 2 3", "Colour: 1,,3", "Colour: one,2,3",
                             "Colour:", "Color: 1,2,3", "Colour: 1,2,nan", "Colour: 1,2,inf", "Colour: 1,2,1e99", ""}) {
        v[0] = 7;
        EXPECT_FALSE(ReadAsciiFloats(Open(line), "Colour: ", v, 3)) << line;
        EXPECT_EQ(v[0], 7.0f);
    }
}

TEST_F(TextLines, ReadsOneOfSomeWords) {
    const char* const words[] = {"OFF", "ON", "off", "on top"};

    const struct {
        const char* Line;
        int Index;
    } cases[] = {{"Grid: ON", 1},   {"grid: off", 0}, {"Grid:  On Top", 3},
                 {"Grid: on ", -1}, {"Grid: o", -1},  {"Grid:", -1}};

    for (const auto& c : cases)
        EXPECT_EQ(ReadAsciiToken(Open(c.Line), "Grid: ", words, 4), c.Index) << c.Line;
}

} // namespace
