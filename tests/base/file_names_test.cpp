#include "base/file_names.h"

#include <gtest/gtest.h>
#include <string>

namespace {

TEST(FileNames, SplitAtTheLastSlash) {
    const struct {
        const char *Path, *Directory, *Name;
    } cases[] = {
        {"", "", ""},
        {"model.kirvo", "", "model.kirvo"},
        {"/model.kirvo", "", "model.kirvo"},
        {"/usr/model", "/usr", "model"},
        {"/usr/people/anna/house.kirvo", "/usr/people/anna", "house.kirvo"},
        {"relative/x", "relative", "x"},
        {"with blanks/a name ", "with blanks", "a name "},
        {"/directory/", "/directory", ""},
        {"a//b", "a/", "b"},
        {"/", "", ""},
        {"./-odd\n\"name\"", ".", "-odd\n\"name\""},
    };

    for (const auto& c : cases) {
        char *directory = nullptr, *name = nullptr;
        SplitFileName(c.Path, directory, name);
        EXPECT_STREQ(directory, c.Directory) << c.Path;
        EXPECT_STREQ(name, c.Name) << c.Path;
    }
}

TEST(FileNames, SplitTakesItsOwnResultAndAnyLength) {
    char *directory = nullptr, *name = nullptr;
    const std::string deep(3 * MaxFileName, 'd');
    SplitFileName(("/" + deep + "/b/c").c_str(), directory, name);
    EXPECT_EQ(directory, "/" + deep + "/b");
    SplitFileName(directory, directory, name);
    EXPECT_EQ(directory, "/" + deep);
    EXPECT_STREQ(name, "b");
}

TEST(FileNames, ExtensionIsAddedOnce) {
    const struct {
        const char *Name, *Extension, *Result;
    } cases[] = {
        {"house", ".kirvo", "house.kirvo"},
        {"house.kirvo", ".kirvo", "house.kirvo"},
        {"house.KIRVO", ".kirvo", "house.KIRVO.kirvo"},
        {"house.kirvo ", ".kirvo", "house.kirvo .kirvo"},
        {".kirvo", ".kirvo", ".kirvo"},
        {"", ".kirvo", ".kirvo"},
        {"rvo", ".kirvo", "rvo.kirvo"},
        {"house", nullptr, "house"},
        {"house", "", "house"},
    };

    for (const auto& c : cases) {
        char name[64];
        ASSERT_TRUE(CopyFileName(name, c.Name));
        EXPECT_TRUE(AddExtension(name, c.Extension));
        EXPECT_STREQ(name, c.Result);
    }
}

TEST(FileNames, NamesThatDoNotFitAreLeftAlone) {
    char name[8] = "abc";
    EXPECT_FALSE(CopyFileName(name, "12345678"));
    EXPECT_STREQ(name, "abc");
    EXPECT_FALSE(AddExtension(name, ".long"));
    EXPECT_STREQ(name, "abc");
    EXPECT_TRUE(AddExtension(name, ".fit"));
    EXPECT_STREQ(name, "abc.fit");
}

TEST(FileNames, ModelExtensionIsChoppedOff) {
    const struct {
        const char *Name, *Result;
    } cases[] = {
        {"house.kirvo", "house"}, {".kirvo", ".kirvo"}, {"a.kirvo.kirvo", "a.kirvo"}, {"kirvo", "kirvo"}, {"", ""},
        {"a.kirvo ", "a.kirvo "}, {" .kirvo", " "},
    };

    for (const auto& c : cases) {
        char name[64];
        ASSERT_TRUE(CopyFileName(name, c.Name));
        ChopOffKirvo(name);
        EXPECT_STREQ(name, c.Result);
    }
}

} // namespace
