#include "files/made_model.h"
#include "support/played_program.h"
#include "support/test_seed.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using Json = nlohmann::json;

/// The program starts in its home, where a new model's file selector begins too.
class Files : public testing::Test {
  protected:
    Files() : program(KIRVO_PROGRAM, "home") { program.Display = "headless:1000x800"; }

    /// Plays a script of tests/scripts/files.
    ProgramEnd Play(const std::string& script, const std::string& model = "") {
        return program.PlayFile(fs::path(KIRVO_SOURCE_DIR) / "tests/scripts/files" / script, model);
    }

    fs::path InHome(const std::string& name) const { return program.Home() / name; }

    void Write(const std::string& name, const std::string& bytes) const {
        fs::create_directories(InHome(name).parent_path());
        std::ofstream(InHome(name), std::ios::binary) << bytes;
    }

    std::string ContentsOf(const std::string& name) const {
        std::ifstream file(InHome(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    Json Report(const std::string& name) const { return program.Json(name); }

    /// The titles of a report's windows.
    static Names Titles(const Json& report) {
        Names titles;
        for (const Json& window : report["windows"])
            titles.push_back(window["title"]);
        return titles;
    }

    static bool Shows(const Json& report, const std::string& title) {
        const Names titles = Titles(report);
        return std::find(titles.begin(), titles.end(), title) != titles.end();
    }

    /// A model that this program's machine owns.
    static std::string Model() {
        return ModelBytes("3.05").Byte(40).String("house").Vertices({1, 2, 3}).End().End().Bytes();
    }

    /// A model that takes more than a moment to load: every polygon has vertices of its own.
    static std::string LargeModel(int polygons) {
        ModelBytes model("3.05");
        model.Materials({0});
        model.Byte(40).String("large").Byte(26).Int(3 * polygons);
        for (int i = 0; i < 3 * polygons; ++i)
            model.Floats(
                {static_cast<double>(i / 3), static_cast<double>(i % 3 == 1), static_cast<double>(i % 3 == 2)});
        model.Byte(41).String("s");
        for (int i = 0; i < polygons; ++i)
            model.OpenPolygon({3 * i, 3 * i + 1, 3 * i + 2}).End();
        return model.End().End().End().Bytes();
    }

    /// The title in a model file's information; "" without one.
    std::string TitleIn(const std::string& name) const {
        const std::string bytes = ContentsOf(name), tag = "\x3c\x0c"; // setting 12
        const std::size_t place = bytes.rfind(tag);
        if (place == std::string::npos)
            return "";
        const std::size_t text = place + 3;
        return bytes.substr(text, bytes.find('\n', text) - text);
    }

    Names HomeNames() const {
        Names names;
        for (const fs::directory_entry& entry : fs::directory_iterator(program.Home()))
            if (entry.path().filename() != ".kirvo_recent")
                names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    /// The file as a report has it: its place in the home directory, and whether it is saved.
    std::string FileIn(const std::string& report) const {
        const Json file = Report(report)["file"];
        const fs::path path = fs::path(file["path"].get<std::string>()) / file["name"].get<std::string>();
        return path.lexically_relative(program.Home()).string() + (file["saved"].get<bool>() ? "" : "*");
    }

    static void ExpectGoodEnd(const ProgramEnd& end) {
        EXPECT_EQ(end.Status, 0) << end.Errors;
        EXPECT_EQ(end.Signal, 0);
    }

    PlayedProgram program;
};

TEST_F(Files, SaveAsNamesTheModelAndAsksBeforeReplacing) {
    Write("my models/taken.kirvo", "old");
    ExpectGoodEnd(Play("save_as.script"));
    EXPECT_TRUE(Shows(Report("proposed.json"), "Save file as..."));
    EXPECT_EQ(FileIn("saved.json"), "my models/house.kirvo");
    EXPECT_EQ(FileIn("replaced.json"), "my models/taken.kirvo");
    EXPECT_EQ(ContentsOf("my models/taken.kirvo.bak"), "old");
    EXPECT_EQ(ContentsOf("my models/taken.kirvo").size(), ContentsOf("my models/house.kirvo").size());
    // The next start finds the model again.
    ExpectGoodEnd(program.Play("report again.json\n"));
    EXPECT_EQ(FileIn("again.json"), "my models/taken.kirvo");
}

TEST_F(Files, RecentModelsAreOpenedFromTheMenu) {
    Write("first.kirvo", Model());
    Write("second.kirvo", Model());
    for (const char* model : {"first.kirvo", "second.kirvo"})
        ExpectGoodEnd(program.Play("wait 1\n", InHome(model)));
    ExpectGoodEnd(program.Play("in Kirvo\nmenu File \"Recent files\" ~/first.kirvo\nwait 1\nreport opened.json\n"));
    EXPECT_EQ(FileIn("opened.json"), "first.kirvo");
}

TEST_F(Files, ABackupIsOpenedUnderTheModelsName) {
    Write("my models/a house.kirvo.bak", Model());
    Write("my models/a house.kirvo", "newer");
    ExpectGoodEnd(Play("open_backup.script"));
    EXPECT_EQ(FileIn("opened.json"), "my models/a house.kirvo");
    EXPECT_EQ(Report("opened.json")["objects"][0]["name"], "house");
    EXPECT_EQ(FileIn("saved.json"), "my models/a house.kirvo");
    EXPECT_EQ(ContentsOf("my models/a house.kirvo.bak"), "newer");
}

TEST_F(Files, AFileThatCannotBeReadIsNotReplacedUnasked) {
    const std::string damaged = Model().substr(0, 30);
    Write("damaged.kirvo", damaged);
    ExpectGoodEnd(Play("open_damaged.script"));
    const Json report = Report("failed.json");
    EXPECT_EQ(report["file"]["name"], "damaged.kirvo");
    EXPECT_EQ(report["objects"][0]["vertices"], 0);
    EXPECT_EQ(report["materials"]["names"].size(), 4U);
    EXPECT_TRUE(Shows(Report("asked.json"), "Save file as..."));
    EXPECT_EQ(ContentsOf("damaged.kirvo"), damaged);
}

TEST_F(Files, AFailedSaveLeavesTheWorkUnsaved) {
    Write("house.kirvo", Model());
    fs::create_symlink("/dev/full", InHome("full.kirvo"));
    ExpectGoodEnd(Play("failed_save.script", "house"));
    EXPECT_EQ(FileIn("full.json"), "house.kirvo*");
    EXPECT_TRUE(fs::is_symlink(InHome("full.kirvo")));
    EXPECT_EQ(ContentsOf("house.kirvo"), Model());

    ExpectGoodEnd(Play("failed_quit.script", "full"));
    EXPECT_EQ(FileIn("kept.json"), "full.kirvo*");
}

TEST_F(Files, UnsavedWorkIsAskedAbout) {
    Write("house.kirvo", Model());
    ExpectGoodEnd(Play("unsaved_work.script", "house"));
    EXPECT_EQ(FileIn("cancelled.json"), "house.kirvo*");
    EXPECT_EQ(FileIn("escaped.json"), "house.kirvo*");
    EXPECT_EQ(Titles(Report("escaped.json")), (Names{"house.kirvo*", " Subview 0"}));
    EXPECT_EQ(Report("escaped.json")["windows"][0]["disabled"], 0);
    EXPECT_EQ(FileIn("new.json"), "Unnamed");
    EXPECT_EQ(TitleIn("house.kirvo"), "First");
    EXPECT_FALSE(fs::exists(InHome("Unnamed.kirvo")));
}

// The script's reports stand for another program that saves the model's file.
TEST_F(Files, WhatAnotherProgramSavedIsNotReplacedUnasked) {
    Write("house.kirvo", Model());
    Write("house.kirvo.bak", "older");
    ExpectGoodEnd(Play("foreign_change.script", "house"));
    EXPECT_EQ(FileIn("asked.json"), "house.kirvo*");
    EXPECT_TRUE(Shows(Report("asked.json"), " File changed on disk"));
    EXPECT_TRUE(Shows(Report("elsewhere.json"), "Save file as..."));
    EXPECT_EQ(FileIn("anyway.json"), "house.kirvo");
    EXPECT_EQ(Titles(Report("anyway.json")), (Names{"house.kirvo", " Subview 0"}));
    EXPECT_EQ(Titles(Report("after.json")), (Names{"house.kirvo", " Subview 0"})) << "its own save is no foreign one";
    // The last answer also ended the program, as the question before it had been asked to.
    EXPECT_FALSE(fs::exists(InHome("not reached.json")));
    EXPECT_EQ(TitleIn("house.kirvo"), "Third");
    EXPECT_EQ(Report("house-other.kirvo.bak")["file"]["name"], "house.kirvo");
    EXPECT_EQ(Report("house-other-2.kirvo.bak")["file"]["name"], "house.kirvo");
    EXPECT_EQ(TitleIn("house.kirvo.bak"), "First");
}

TEST_F(Files, ToolsThatHoldWorkAskToo) {
    Write("house.kirvo", Model());
    ExpectGoodEnd(Play("unfinished_tool.script", "house"));
    EXPECT_TRUE(Shows(Report("asked.json"), " FIleChanged!"));
    ExpectGoodEnd(program.Play("report kept.json\n", "house"));
    EXPECT_EQ(Report("kept.json")["objects"][0]["vertices"], 3);
}

TEST_F(Files, ModelsWithoutANameDoNotReplaceEachOther) {
    const ProgramEnd end = Play("nameless.script");
    ExpectGoodEnd(end);
    EXPECT_TRUE(Shows(Report("told.json"), "Notice"));
    EXPECT_EQ(TitleIn("Unnamed.kirvo"), "First");
    EXPECT_EQ(TitleIn("Unnamed-2.kirvo"), "Second");
    EXPECT_NE(end.Errors.find(InHome("Unnamed-2.kirvo")), std::string::npos) << end.Errors;
    ExpectGoodEnd(program.Play("report again.json\n"));
    EXPECT_EQ(FileIn("again.json"), "Unnamed-2.kirvo");
}

TEST_F(Files, AnotherMachinesCreditsAreShownButKept) {
    for (const int publicDomain : {0, 1}) {
        ModelBytes model("3.05");
        const auto setting = [&](int number, const std::string& text) {
            model.Byte(60).Byte(number).Count(static_cast<std::int64_t>(text.size()) + 1).String(text);
        };
        model.Byte(60).Byte(10).Count(4).Int(12345).Byte(60).Byte(11).Count(4).Int(publicDomain);
        setting(12, "A house");
        setting(13, "Somebody else");
        setting(14, "A company");
        setting(16, "A comment that is rather long so that the window is a little wider than usual");
        setting(19, "The last comment");
        Write("locked.kirvo", model.End().Bytes());
        const ProgramEnd end = Play("information.script", "locked");
        if (!publicDomain) { // there is no box to click
            EXPECT_NE(end.Errors.find("no button"), std::string::npos) << end.Errors;
            continue;
        }
        ExpectGoodEnd(end);
        const Json gadgets = Report("after.json")["windows"].back()["gadgets"];
        const auto box =
            std::find_if(gadgets.begin(), gadgets.end(), [](const Json& gadget) { return gadget["kind"] == "check"; });
        ASSERT_NE(box, gadgets.end());
        EXPECT_TRUE((*box)["on"]);
        EXPECT_TRUE(Report("after.json")["file"]["saved"]);
        EXPECT_TRUE(
            std::none_of(gadgets.begin(), gadgets.end(), [](const Json& gadget) { return gadget["kind"] == "text"; }));
    }
}

TEST_F(Files, DialogsKeepTheSizeThatTheirGadgetsNeed) {
    Write("house.kirvo", Model());
    ExpectGoodEnd(Play("dialogs.script", "house"));
    const auto size = [&](const char* report) {
        const Json window = Report(report)["windows"].back();
        return std::pair(window["width"].get<int>(), window["height"].get<int>());
    };
    EXPECT_EQ(size("larger.json"), size("before.json"));
    EXPECT_EQ(size("smaller.json"), size("before.json"));
    EXPECT_LT(size("selector.json").first, 400);
}

TEST_F(Files, EscapeCancelsALongRead) {
    Write("large.kirvo", LargeModel(80000));
    ExpectGoodEnd(Play("cancel_loading.script"));
    const Json report = Report("cancelled.json");
    EXPECT_EQ(report["objects"].size(), 1U);
    EXPECT_EQ(report["objects"][0]["vertices"], 0);
    // Without that key the same script's wait ends in a loaded model.
    ExpectGoodEnd(program.Play("wait 60\nsnapshot bar.png\nreport loaded.json\n", "large"));
    EXPECT_EQ(Report("loaded.json")["objects"][0]["polygons"], 80000);
}

constexpr char EveryMinute[] = "CheckpointTime = 1\n", CheckpointLoaded[] = "Kirvo: Checkpoint file loaded...\n";

TEST_F(Files, ACheckpointBringsTheWorkBack) {
    Write("my models/a house.kirvo", Model());
    Write(".kirvorc", EveryMinute);
    ExpectGoodEnd(Play("checkpoint.script", "my models/a house"));
    EXPECT_EQ(TitleIn("CheckPoint.kirvo"), "In the checkpoint");
    EXPECT_FALSE(fs::exists(InHome("CheckPoint.kirvo.bak")));
    EXPECT_EQ(Titles(Report("after.json")), (Names{"a house.kirvo*", " Subview 0"}));

    Write("my models/other.kirvo", Model());
    const ProgramEnd end = Play("restored.script", "my models/other");
    ExpectGoodEnd(end);
    EXPECT_NE(end.Errors.find(CheckpointLoaded), std::string::npos);
    EXPECT_EQ(FileIn("restored.json"), "my models/a house.kirvo*");
    // The normal end leaves none of the files.
    EXPECT_EQ(HomeNames(), (Names{".kirvorc", "after.json", "before.json", "my models", "restored.json"}));
}

TEST_F(Files, ACheckpointKnowsWhichFileItBeganWith) {
    Write("a house.kirvo", Model());
    Write(".kirvorc", EveryMinute);
    ExpectGoodEnd(Play("checkpoint.script", "a house"));
    const std::string script = "key Ctrl+s\nreport saved.json\n";
    for (const bool changed : {true, false}) {
        if (changed)
            Write("a house.kirvo", Model() + "newer");
        ExpectGoodEnd(program.Play(script));
        EXPECT_EQ(Shows(Report("saved.json"), " File changed on disk"), changed);
        fs::remove(InHome("CheckPoint.kirvo"));
        ExpectGoodEnd(Play("checkpoint.script", "a house"));
    }
}

TEST_F(Files, ACheckpointThatCannotBeWrittenIsToldOnce) {
    Write("a house.kirvo", Model());
    Write(".kirvorc", EveryMinute);
    Write(".kirvo_checkpoint_info.next/full", "");
    ExpectGoodEnd(program.Play("wait 6100\nreport told.json\nwait 1000\nreport later.json\nwait 6100\n"
                               "report again.json\n",
                               "a house"));
    EXPECT_EQ(Report("told.json")["status"], "No checkpoint could be written: Is a directory");
    EXPECT_NE(Report("later.json")["status"], Report("told.json")["status"]);
    EXPECT_EQ(Report("again.json")["status"], Report("later.json")["status"]);
}

// What a kill amid a save has left.
TEST_F(Files, TheNextStartClearsUnfinishedSaves) {
    Write("house.kirvo", Model());
    Write(".house.kirvo.saving", "Compat");
    Write("elsewhere/.a.kirvo.saving", "");
    ExpectGoodEnd(program.Play("wait 1\n", "house"));
    EXPECT_EQ(HomeNames(), (Names{".kirvo_checkpoint_lock", ".kirvorc", "elsewhere", "house.kirvo"}));
    EXPECT_TRUE(fs::exists(InHome("elsewhere/.a.kirvo.saving")));
}

TEST_F(Files, MenusOfDisabledWindowsAreNoErrorsOfScripts) {
    Write("house.kirvo", Model());
    ExpectGoodEnd(program.Play("menu File \"Save as\"\nin house\nmenu File New\npopup 300 300 Select\n"
                               "in \"Save file as...\"\nbutton Cancel\nin house\nreport after.json\n",
                               "house"));
    EXPECT_EQ(Titles(Report("after.json")), (Names{"house.kirvo", " Subview 0"}));
}

// After a crash it would come back under the name of the file that holds newer work.
TEST_F(Files, TheAnswerSaveDropsTheCheckpoint) {
    Write("house.kirvo", Model());
    Write(".kirvorc", EveryMinute);
    ExpectGoodEnd(Play("checkpoint_saved.script", "house"));
    EXPECT_EQ(TitleIn("house.kirvo"), "Newer");
    EXPECT_FALSE(fs::exists(InHome("CheckPoint.kirvo")));
}

TEST_F(Files, ACheckpointThatCannotBeReadIsKept) {
    Write("house.kirvo", Model());
    Write("CheckPoint.kirvo", "Compatibility: 3.05\n\1damaged");
    Write(".kirvo_checkpoint_info", program.Home().string() + "\nhouse.kirvo\n");
    const ProgramEnd end = program.Play("report new.json\nquit\n", "house");
    ExpectGoodEnd(end);
    EXPECT_EQ(FileIn("new.json"), "Unnamed");
    EXPECT_EQ(Titles(Report("new.json")), (Names{"Unnamed", " Subview 0"}));
    EXPECT_EQ(end.Errors.find(CheckpointLoaded), std::string::npos);
    EXPECT_NE(end.Errors.find("UnreadCheckPoint.kirvo"), std::string::npos) << end.Errors;
    EXPECT_EQ(ContentsOf("UnreadCheckPoint.kirvo"), "Compatibility: 3.05\n\1damaged");
    EXPECT_EQ(HomeNames(), (Names{".kirvorc", "UnreadCheckPoint.kirvo", "house.kirvo", "new.json"}));
    EXPECT_EQ(ContentsOf("house.kirvo"), Model());
}

/// Changes the title and has it kept, by a checkpoint or a save, again and again; says when each is certain to be
/// there.
std::string WorkingScript(int run, int steps, const std::string& keep) {
    std::string script;
    for (int step = 0; step < steps; ++step) {
        const std::string title = std::to_string(run) + " " + std::to_string(step);
        script += "menu File \"About this file...\"\nin \"File information\"\nfield \"Title:\" \"" + title +
                  "\"\nbutton Done\nin \"a house\"\n" + keep + "\necho \"" + title + "\"\n";
    }
    return script;
}

std::pair<int, int> RunAndStep(const std::string& title) {
    std::pair<int, int> numbers{-1, -1};
    std::sscanf(title.c_str(), "%d %d", &numbers.first, &numbers.second);
    return numbers;
}

/// The last step that a run has told of.
std::pair<int, int> LastEcho(const std::string& output, int run) {
    std::pair<int, int> last{-1, -1};
    for (std::size_t line = 0; (line = output.find('\n' + std::to_string(run) + ' ', line)) != std::string::npos;)
        last = std::max(last, RunAndStep(output.substr(++line)));
    return last;
}

// A kill at any moment loses at most the work since the last checkpoint. KIRVO_KILLS asks for more kills.
TEST_F(Files, AKillAtAnyMomentKeepsTheLastCheckpoint) {
    const unsigned kills = FromEnvironment("KIRVO_KILLS", 8), seed = TestSeed();
    constexpr int polygons = 20000;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    Write("my models/a house.kirvo", LargeModel(polygons));
    Write(".kirvorc", EveryMinute);
    std::pair<int, int> last{-1, -1}; // the step whose checkpoint was certainly there
    for (unsigned run = 0; run < kills; ++run) {
        program.KillAfter = std::chrono::milliseconds(500 + random() % 2000);
        const ProgramEnd end = program.Play(WorkingScript(run, 1000, "wait 6100"), "my models/a house");
        program.KillAfter = std::chrono::milliseconds(0);
        ASSERT_EQ(end.Signal, SIGKILL) << end.Errors;
        last = std::max(last, LastEcho(end.Output, run));

        const ProgramEnd next = program.Play("report restored.json\n", "my models/a house");
        ExpectGoodEnd(next);
        const Json report = Report("restored.json");
        EXPECT_EQ(report["objects"][0]["polygons"], polygons);
        if (last.first < 0)
            continue;
        EXPECT_NE(next.Errors.find(CheckpointLoaded), std::string::npos) << "kill " << run;
        EXPECT_EQ(FileIn("restored.json"), "my models/a house.kirvo*");
        EXPECT_GE(RunAndStep(TitleIn("CheckPoint.kirvo")), last) << "kill " << run;
    }
    EXPECT_GE(last.first, 0) << "no kill came after a checkpoint";
    ExpectGoodEnd(Play("restored.script"));
    EXPECT_EQ(HomeNames(), (Names{".kirvorc", "my models", "restored.json"}));
}

// A kill amid a save leaves the version before or the new one, whole, and nothing else after the next start.
TEST_F(Files, AKillAmidASaveLeavesAWholeFile) {
    const unsigned kills = FromEnvironment("KIRVO_KILLS", 8), seed = TestSeed();
    constexpr int polygons = 5000;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    Write("a house.kirvo", LargeModel(polygons));
    std::pair<int, int> last{-1, -1}; // the step whose save was certainly done
    for (unsigned run = 0; run < kills; ++run) {
        program.KillAfter = std::chrono::milliseconds(300 + random() % 1000);
        const ProgramEnd end = program.Play(WorkingScript(static_cast<int>(run), 1000, "menu File Save"), "a house");
        program.KillAfter = std::chrono::milliseconds(0);
        ASSERT_EQ(end.Signal, SIGKILL) << end.Errors;
        last = std::max(last, LastEcho(end.Output, static_cast<int>(run)));
        for (const std::string name : {"a house.kirvo", "a house.kirvo.bak"}) {
            if (!fs::exists(InHome(name)))
                continue;
            fs::copy_file(InHome(name), InHome("copy.kirvo"), fs::copy_options::overwrite_existing);
            ExpectGoodEnd(program.Play("report found.json\n", "copy"));
            EXPECT_EQ(Report("found.json")["objects"][0]["polygons"], polygons) << name << " after kill " << run;
        }
        EXPECT_GE(RunAndStep(TitleIn("a house.kirvo")), last) << "kill " << run;
        ExpectGoodEnd(program.Play("quit\n", "a house"));
        for (const std::string& name : HomeNames())
            EXPECT_EQ(name.find(".saving"), std::string::npos) << name << " after kill " << run;
    }
    EXPECT_GE(last.first, 0) << "no kill came after a save";
}

} // namespace
