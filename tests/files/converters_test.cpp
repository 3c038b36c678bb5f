#include "files/converters.h"

#include "base/directories.h"
#include "files/converter_processes.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

/// An installation with converters that are scripts.
class Converters : public testing::Test {
  protected:
    Converters() {
        CopyFileName(KirvoDir, place.Path().c_str());
        CopyFileName(HomeDir, place.Path().c_str());
        fs::create_directories(place.Path() / "converters/to_Kirvo");
        unsetenv("KIRVOHOME");
    }

    ~Converters() override {
        FreeConverters();
        *KirvoDir = *HomeDir = '\0';
    }

    fs::path Add(const std::string& name, const std::string& script) {
        const fs::path path = place.Path() / "converters/to_Kirvo" / name;
        std::ofstream(path) << script;
        chmod(path.c_str(), 0755);
        return path;
    }

    // A converter that tells where it has been asked.
    fs::path AddAnswering(const std::string& name, const std::string& label, const std::string& extension) {
        return Add(name, "#!/bin/sh\necho asked >> '" + (place.Path() / "asked").string() + "'\nprintf '" + label +
                             "\\n" + extension + "\\n' > \"${KIRVO_TEMPORARY}_init\"\n");
    }

    static std::string Found() {
        std::string found;
        for (const Converter* converter = ImportList; converter; converter = converter->Next)
            found += std::string(converter->Label) + " " + (converter->Extension ? converter->Extension : "*") + "\n";
        return found;
    }

    std::string TextOf(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(place.Path() / name).rdbuf();
        return text.str();
    }

    TemporaryDirectory place;
};

TEST_F(Converters, AreThoseThatAnswerInTheOrderOfTheirLabels) {
    AddAnswering("1", "other", "oth");
    AddAnswering("2", "Double", ".dbl");
    AddAnswering("3", "any file", "*");
    AddAnswering(".hidden", "hidden", "hid");
    AddAnswering("4", "nothing", "");
    Add("5", "#!/bin/sh\nexit 0\n");
    Add("6", "printf 'no head\\nnoh\\n' > \"${KIRVO_TEMPORARY}_init\"\n");
    FindConverters();
    EXPECT_EQ(Found(), "any file *\nDouble .dbl\nno head .noh\nother .oth\n");
    EXPECT_EQ(FindConverter(ImportList, ".DBL")->Label, std::string("Double"));
}

TEST_F(Converters, AreAskedAnewOnlyWhenTheyHaveChanged) {
    const fs::path program = AddAnswering("1", "one", "a");
    FindConverters();
    FindConverters();
    EXPECT_EQ(TextOf("asked"), "asked\n");
    AddAnswering("1", "another", "b");
    FindConverters();
    EXPECT_EQ(Found(), "another .b\n");
}

TEST_F(Converters, OfPlacesThatOthersMayChangeAreLeftOut) {
    AddAnswering("1", "one", "a");
    for (const char* open : {"", "converters", "converters/to_Kirvo", "converters/to_Kirvo/1"}) {
        chmod((place.Path() / open).c_str(), 0777);
        FindConverters();
        EXPECT_EQ(Found(), "") << open;
        setenv("KIRVOHOME", place.Path().c_str(), 1);
        FindConverters();
        EXPECT_EQ(Found(), "one .a\n") << open;
        unsetenv("KIRVOHOME");
        chmod((place.Path() / open).c_str(), 0755);
    }
}

TEST_F(Converters, GetFileNamesAsTheyAre) {
    const fs::path program = Add("copy", "#!/bin/sh\ncp -- \"$1\" \"$2\"\n");
    for (const std::string name : {"a b", "$(touch ran)", "`touch ran`; touch ran", "quote\"'", "line\nbreak", "-rf"}) {
        const fs::path from = place.Path() / name, to = place.Path() / (name + ".out");
        std::ofstream(from) << name;
        ConverterFolder folder;
        EXPECT_EQ(ConvertFile(program, from, to, "", folder), "") << name;
        EXPECT_EQ(TextOf(name + ".out"), name);
    }
    EXPECT_FALSE(fs::exists("ran"));
}

TEST_F(Converters, SayWhyTheyFailOrAreEnded) {
    ConverterFolder folder;
    struct stat status;
    ASSERT_EQ(stat(fs::path(folder.Prefix()).parent_path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    const std::string to = place.Path() / "out";
    EXPECT_EQ(ConvertFile(Add("1", "#!/bin/sh\nprintf 'no\\nway\\n' > \"${KIRVO_TEMPORARY}_error\"\n"), "/in", to, "",
                          folder),
              "no way");
    EXPECT_EQ(ConvertFile(Add("2", "#!/bin/sh\nkill -SEGV $$\n"), "/in", to, "", folder),
              "the converter failed: Segmentation fault");
    EXPECT_EQ(ConvertFile(Add("3", "#!/bin/sh\n"), "/in", to, "", folder), NothingMade);
    EXPECT_NE(ConvertFile("/no/such", "/in", to, "", folder), "");
    const fs::path hanging = Add("4", "#!/bin/sh\nsleep 1000\n");
    const ConverterEnd end = RunConverter({hanging, {}, "", 0}, folder, [](double) { return 1; });
    EXPECT_TRUE(end.Cancelled);
    EXPECT_TRUE(RunConverter({hanging, {}, "", 0.05}, folder, nullptr).TookTooLong);
}

} // namespace
