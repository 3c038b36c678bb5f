#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "base/debug.h"
#include "files/file_errors.h"
#include "support/run_program.h"
#include "support/temporary_directory.h"

namespace {

namespace fs = std::filesystem;

const fs::path Built = KIRVO_PROGRAM;

// The program as it is installed, in a home of its own.
class Program : public testing::Test {
  protected:
    void SetUp() override {
        home = place.Path() / "home";
        fs::create_directory(home);
        installed = Install(place.Path() / "opt/Kirvo");
        start.Program = installed / "Kirvo";
        start.Environment = {{"HOME", home}, {"KIRVO_DISPLAY", "headless"}};
    }

    static fs::path Install(const fs::path& directory) {
        fs::create_directories(directory / "manual");
        fs::create_symlink(Built, directory / "Kirvo");
        return directory;
    }

    // A developer build adds trace lines to the messages for the user, and reports that no memory was lost.
    static void ExpectNormalEnd(const ProgramEnd& end, const std::string& messages = "") {
        EXPECT_EQ(end.Status, 0);
        if (DeveloperBuild) {
            EXPECT_NE(end.Errors.find(messages), std::string::npos) << end.Errors;
            EXPECT_TRUE(end.Output == "Memory analysis: Squeaky clean!\n" ||
                        end.Output == "Memory analysis: As clean as a whistle!\n")
                << end.Output;
        } else {
            EXPECT_EQ(end.Errors, messages);
            EXPECT_EQ(end.Output, "");
        }
    }

    TemporaryDirectory place;
    fs::path home, installed;
    ProgramStart start;
};

TEST_F(Program, IsFoundByItsPathFromAnywhere) {
    ExpectNormalEnd(RunProgram(start));
    start.Directory = installed.parent_path();
    start.Name = "Kirvo/Kirvo";
    ExpectNormalEnd(RunProgram(start));
    start.Name = "./Kirvo/../Kirvo/Kirvo";
    ExpectNormalEnd(RunProgram(start));
}

TEST_F(Program, IsFoundThroughKirvohomeAndInTheHomeDirectory) {
    start.Name = "Kirvo";
    auto named = start;
    named.Environment.emplace_back("KIRVOHOME", installed);
    ExpectNormalEnd(RunProgram(named));

    fs::create_directory_symlink(installed, home / "Kirvo");
    ExpectNormalEnd(RunProgram(start));
}

TEST_F(Program, TellsThatItIsNotInstalled) {
    start.Name = "Kirvo";
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 0);
    EXPECT_EQ(end.Output, "");
    EXPECT_EQ(end.Errors, std::string(14, '\n') +
                              "Installation error:\a\n"
                              "Kirvo has not been installed correctly, the Kirvo executable and documentation\n"
                              "could not be found.\n\n"
                              "You should either:\n"
                              "a) Place the folder \"Kirvo\" in your home directory (/usr/people/yourname)\n"
                              "b) Make a link to the folder \"Kirvo\", and place that in your home directory\n"
                              "   (with the name \"Kirvo\")\n");
}

TEST_F(Program, NeedsAHome) {
    start.Environment.clear();
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 1);
    EXPECT_EQ(end.Output, "");
    EXPECT_EQ(
        end.Errors,
        "Kirvo: the environment variable HOME is not set; set HOME to your home directory and start Kirvo again\n");
}

TEST_F(Program, TellsWhichModelFileIsMissing) {
    start.Arguments = {"nothing here"};
    ExpectNormalEnd(RunProgram(start), "Kirvo: there is no model file \"nothing here\"\n");
}

TEST_F(Program, ReadsTheModelFileOfTheCommandLine) {
    const auto runOn = [&](const std::string& contents) {
        std::ofstream(place.Path() / "model.kirvo") << contents;
        start.Directory = place.Path();
        start.Arguments = {"model"};
        return RunProgram(start);
    };
    ExpectNormalEnd(runOn("Compatibility: 1.00\nVertices (v1.0)\nCount: 1\n1 2 3\n"));
    // A start-up file that cannot be read gives a new model without a word, unless it needs a newer program.
    ExpectNormalEnd(runOn("no model"));
    ExpectNormalEnd(runOn("Compatibility: 1.00\nVertices (v1.0)\nCount: 1\nnothing\n"));
    ExpectNormalEnd(runOn("Compatibility: 9.00\n\001"),
                    "Kirvo: Error while reading file:\n\n" + std::string(Ferr[UnsupportedRevision]) + "\n\n");
}

TEST_F(Program, TellsWhichSignalEndedIt) {
    const struct {
        int Signal;
        std::string Errors;
        bool Crash;
    } cases[] = {
        {SIGTERM, "\n\nKirvo: Program killed by user\n", false},
        {SIGBUS, "\n\nKirvo: Bus error...\a\n", true},
        {SIGSEGV, "\n\nKirvo: Segmentation violation...\a\n", true},
    };

    for (const auto& c : cases) {
        start.PendingSignal = c.Signal;
        const ProgramEnd end = RunProgram(start);
        EXPECT_FALSE(fs::exists(home / ".kirvorc"));
        if (DeveloperBuild && c.Crash) {
            // Left to the system, or to a sanitizer that took it over.
            EXPECT_TRUE(end.Signal == c.Signal || end.Status != 0);
            continue;
        }
        EXPECT_EQ(end.Status, 0);
        EXPECT_EQ(end.Output, "");
        EXPECT_EQ(end.Errors, c.Errors);
    }
}

} // namespace
