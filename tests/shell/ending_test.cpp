#include "support/played_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

/// What ends the program from outside loses no work: the next start brings it back.
class Ending : public testing::Test {
  protected:
    Ending() : driver(KIRVO_DRIVER, "home") {
        fs::copy_file(KIRVO_SOURCE_DIR "/tests/models/box.kirvo", driver.Home() / "box.kirvo");
    }

    /// What the next start finds: the model's name, its loose vertices, and whether all is saved.
    std::string Found() {
        const ProgramEnd end = driver.Play("report found.json\n", "box");
        fs::remove(driver.Home() / "CheckPoint.kirvo");
        const nlohmann::json report = driver.Json("found.json");
        const bool restored = end.Errors.find("Kirvo: Checkpoint file loaded...\n") != std::string::npos;
        const bool saved = report["file"]["saved"].get<bool>();
        return report["file"]["name"].get<std::string>() + ", " + report["objects"][0]["looseVertices"].dump() +
               (restored ? ", restored" : "") + (saved ? "" : ", unsaved");
    }

    PlayedProgram driver;
};

constexpr char Draw[] = "menu Vertex \"Create freehand\"\nin \"Subview 0\"\nclick left model:0.2,0.1,0\n";
constexpr char Done[] = "key Space\n";

TEST_F(Ending, SignalsThatAskForTheEndKeepTheWork) {
    const std::string draw = Draw, done = draw + Done;

    const struct {
        const char* Signal;
        int Status, EndedBy;
        std::string Before, Found;
    } cases[] = {
        {"TERM", 0, 0, "", "box.kirvo, 0"},
        {"TERM", 0, 0, done, "box.kirvo, 1, restored, unsaved"},
        {"HUP", -1, SIGHUP, draw, "box.kirvo, 1, restored, unsaved"},
        {"INT", -1, SIGINT, done + "move 100 100\npress middle\nmove 120 120\n", "box.kirvo, 1, restored, unsaved"},
        {"TERM", 0, 0, done + "press right\n", "box.kirvo, 1, restored, unsaved"},
        {"TERM", 0, 0, done + "in box\nquit\nin FIleChanged!\n", "box.kirvo, 1, restored, unsaved"},
        // The end of a session sends both.
        {"TERM $PPID; kill -HUP", 0, 0, done, "box.kirvo, 1, restored, unsaved"},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Signal + ("\n" + c.Before));
        const ProgramEnd end =
            driver.Play(c.Before + "run \"kill -" + c.Signal + " $PPID\"\nwait 1000\necho \"goes on\"\n", "box");
        EXPECT_EQ(end.Status, c.Status);
        EXPECT_EQ(end.Signal, c.EndedBy);
        EXPECT_EQ(end.Output.find("goes on"), std::string::npos);
        EXPECT_NE(end.Errors.find(c.EndedBy ? "" : "\n\nKirvo: Program killed by user\n"), std::string::npos);
        EXPECT_EQ(Found(), c.Found);
    }
}

TEST_F(Ending, TheDisplaysDeathKeepsTheWork) {
    if (std::system("command -v Xvfb > /dev/null") != 0)
        GTEST_SKIP() << "there is no Xvfb";
    std::ofstream(driver.Home() / "script") << Draw << Done << "run \"kill -KILL $SERVER\"\nwait 1000\n";
    ProgramStart start;
    start.Program = "/bin/bash";
    start.Arguments = {"-c",
                       "exec 4< <(exec Xvfb -displayfd 1 -screen 0 1000x800x24 2> /dev/null & echo $!; wait)\n"
                       "read -r SERVER <&4\nread -r number <&4\nexport SERVER DISPLAY=:$number\n"
                       "\"$0\" box",
                       driver.Installation() / "Kirvo"};
    start.Directory = driver.Home();
    start.Environment = {{"HOME", driver.Home()},
                         {"KIRVO_SCRIPT", driver.Home() / "script"},
                         {"LIBGL_ALWAYS_SOFTWARE", "1"},
                         {"PATH", std::getenv("PATH")}};
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Errors.find("Kirvo: The display has gone\n"), std::string::npos) << end.Errors;
    EXPECT_EQ(Found(), "box.kirvo, 1, restored, unsaved");
}

} // namespace
