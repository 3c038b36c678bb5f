#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "base/debug.h"
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
        std::ofstream(place.Path() / "quit") << "quit\n";
        start.Environment = {{"HOME", home},
                             {"KIRVO_DISPLAY", "headless:800x600"},
                             {"KIRVO_SCRIPT", place.Path() / "quit"},
                             {"LIBGL_ALWAYS_SOFTWARE", "1"}};
    }

    static fs::path Install(const fs::path& directory) {
        fs::create_directories(directory / "manual");
        fs::copy_file(Built, directory / "Kirvo");
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

TEST_F(Program, IsFoundThroughLinksAndTheSearchPath) {
    start.Program = place.Path() / "modeller";
    fs::create_symlink(installed / "Kirvo", start.Program);
    ExpectNormalEnd(RunProgram(start));
    start.Name = "modeller";
    ExpectNormalEnd(RunProgram(start));
}

TEST_F(Program, TellsThatItIsNotInstalled) {
    start.Program = place.Path() / "modeller";
    fs::copy_file(Built, start.Program);
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
    // A start-up file that cannot be read gives a new model without a word.
    ExpectNormalEnd(runOn("no model"));
    ExpectNormalEnd(runOn("Compatibility: 1.00\nVertices (v1.0)\nCount: 1\nnothing\n"));
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

// What ./run starts where there is no display.
TEST_F(Program, LeavesAPictureWhereThereIsNoDisplay) {
    fs::create_directory_symlink(fs::path(KIRVO_SOURCE_DIR) / "examples", installed / "examples");
    fs::create_directory(place.Path() / "here");
    start.Program = "/bin/bash";
    start.Directory = place.Path() / "here";
    start.Environment = {{"HOME", home}, {"PATH", std::getenv("PATH")}};
    const std::string picture = start.Directory / "kirvo.png";
    for (const std::string model : {"", KIRVO_SOURCE_DIR "/tests/models/box.kirvo"}) {
        start.Arguments = {KIRVO_SOURCE_DIR "/scripts/start", installed};
        if (!model.empty())
            start.Arguments.push_back(model);
        fs::remove(picture);
        const ProgramEnd end = RunProgram(start);
        EXPECT_EQ(end.Status, 0) << end.Errors;
        EXPECT_EQ(end.Output, picture + "\n");
        EXPECT_EQ(end.Errors.find("Kirvo needs a display: "), 0u) << end.Errors;
        EXPECT_TRUE(DeveloperBuild || std::count(end.Errors.begin(), end.Errors.end(), '\n') == 1) << end.Errors;
        EXPECT_GT(fs::file_size(picture), 1000u);
        std::ifstream defaults(home / ".kirvorc");
        const std::string text{std::istreambuf_iterator<char>(defaults), {}};
        EXPECT_NE(text.find(model.empty() ? "FileName = village.kirvo" : "FileName = box.kirvo"), std::string::npos);
    }
}

} // namespace
