#include "base/directories.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "support/exactly.h"
#include "support/temporary_directory.h"

namespace {

namespace fs = std::filesystem;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

const std::string NoManual = "\n\nWarning: could not find Kirvo documentation\n";

class Directories : public testing::Test {
  protected:
    void SetUp() override {
        fs::create_directory(Home());
        fs::create_directory(Elsewhere());
        fs::current_path(Elsewhere());
        setenv("HOME", Home().c_str(), 1);
        unsetenv("KIRVOHOME");
    }

    void TearDown() override { fs::current_path("/"); }

    fs::path Home() const { return place.Path() / "home"; }

    fs::path Elsewhere() const { return place.Path() / "else where"; }

    // Makes an installation and returns its name.
    static std::string Install(const fs::path& directory, bool manual = true) {
        fs::create_directories(manual ? directory / "manual" : directory);
        std::ofstream(directory / "Kirvo") << "program";
        return directory.string();
    }

    static std::string Find(const std::string& program) {
        CaptureStderr();
        FindDirectories(program.c_str());
        return GetCapturedStderr();
    }

    TemporaryDirectory place;
};

TEST_F(Directories, ComeInTheirOrder) {
    // Each installation found is better than those before it.
    const std::string relative = Install(Elsewhere() / "sub");
    EXPECT_EQ(Find("sub/Kirvo"), "");
    EXPECT_EQ(KirvoDir, relative);
    const std::string absolute = Install(place.Path() / "opt");
    EXPECT_EQ(Find(absolute + "/Kirvo"), "");
    EXPECT_EQ(KirvoDir, absolute);
    const std::string working = Install(Elsewhere());
    EXPECT_EQ(Find(absolute + "/Kirvo"), "");
    EXPECT_EQ(KirvoDir, working);
    const std::string named = Install(place.Path() / "named");
    setenv("KIRVOHOME", named.c_str(), 1);
    EXPECT_EQ(Find(absolute + "/Kirvo"), "");
    EXPECT_EQ(KirvoDir, named);
    const std::string own = Install(Home() / "Kirvo");
    EXPECT_EQ(Find(absolute + "/Kirvo"), "");
    EXPECT_EQ(KirvoDir, own);

    EXPECT_EQ(HomeDir, Home());
    EXPECT_EQ(DefaultFile, Home() / ".kirvorc");
    EXPECT_EQ(ManualFound, 1);
}

TEST_F(Directories, NeedTheProgramAsARegularFile) {
    fs::create_directories(Home() / "Kirvo/Kirvo"); // the program is a directory
    std::ofstream(place.Path() / "file") << "no directory";
    setenv("KIRVOHOME", (place.Path() / "file").c_str(), 1);
    const std::string good = Install(place.Path() / "good");
    EXPECT_EQ(Find(good + "/Kirvo"), "");
    EXPECT_EQ(KirvoDir, good);
}

TEST_F(Directories, MayBeALinkInTheHomeDirectory) {
    fs::create_directory_symlink(Install(place.Path() / "shared"), Home() / "Kirvo");
    EXPECT_EQ(Find("Kirvo"), "");
    EXPECT_EQ(KirvoDir, Home() / "Kirvo");
}

TEST_F(Directories, WithoutManualWarnOnce) {
    Install(place.Path() / "bare", false);
    EXPECT_EQ(Find(place.Path() / "bare/Kirvo"), NoManual);
    EXPECT_EQ(ManualFound, 0);
}

TEST_F(Directories, MayStartInARemovedDirectory) {
    const std::string good = Install(place.Path() / "good");
    fs::remove(Elsewhere());
    EXPECT_EQ(Find(good + "/Kirvo"), "");
    EXPECT_EQ(KirvoDir, good);
}

TEST_F(Directories, WithoutInstallationEndTheProgram) {
    testing::GTEST_FLAG(death_test_style) = "fast";
    EXPECT_EXIT(FindDirectories("Kirvo"), testing::ExitedWithCode(0),
                Exactly(std::string(14, '\n') +
                        "Installation error:\a\n"
                        "Kirvo has not been installed correctly, the Kirvo executable and documentation\n"
                        "could not be found.\n\n"
                        "You should either:\n"
                        "a) Place the folder \"Kirvo\" in your home directory (/usr/people/yourname)\n"
                        "b) Make a link to the folder \"Kirvo\", and place that in your home directory\n"
                        "   (with the name \"Kirvo\")\n"));
}

TEST_F(Directories, WithoutHomeEndTheProgram) {
    testing::GTEST_FLAG(death_test_style) = "fast";
    Install(Elsewhere());
    setenv("HOME", std::string(2 * MaxFileName, 'h').c_str(), 1);
    EXPECT_EXIT(FindDirectories("Kirvo"), testing::ExitedWithCode(1), "HOME is too long");
    for (const bool empty : {true, false}) {
        empty ? setenv("HOME", "", 1) : unsetenv("HOME");
        EXPECT_EXIT(FindDirectories("Kirvo"), testing::ExitedWithCode(1),
                    Exactly("Kirvo: the environment variable HOME is not set; set HOME to your home directory and "
                            "start Kirvo again\n"));
    }
}

} // namespace
