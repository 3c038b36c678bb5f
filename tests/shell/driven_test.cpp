#include "gooey/menu.h"
#include "interaction/view_menus.h"
#include "shell/menus.h"
#include "support/played_program.h"
#include "support/test_seed.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Plays scripts in the driver, the program that can be looked into, over a copy of a model.
class Driven : public testing::Test {
  protected:
    Driven() : Program(KIRVO_DRIVER) {
        fs::copy(fs::path(KIRVO_SOURCE_DIR) / "tests/models" / Model, Program.Directory());
    }

    void Play(const std::string& script, const std::string& output = "end\n") {
        const ProgramEnd end = Program.Play(script + "echo end\n", Model);
        EXPECT_EQ(end.Status, 0) << end.Errors << "\nthe script:\n" << Surroundings(script, end.Errors);
        EXPECT_TRUE(end.Output.ends_with(output)) << end.Output << end.Errors;
    }

    PlayedProgram Program;
    static constexpr char Model[] = "box.kirvo";

  private:
    /// The lines of a script before the one that "FILE:LINE:" names.
    static std::string Surroundings(const std::string& script, const std::string& errors) {
        const std::size_t at = errors.find("/script:");
        const int last = at == std::string::npos ? 0 : std::atoi(errors.c_str() + at + 8);
        std::istringstream lines(script);
        std::string text, line;
        for (int number = 1; std::getline(lines, line) && number <= last; ++number)
            if (number > last - 12)
                text += line + "\n";
        return text;
    }
};

const char* const Modes[] = {"polygon", "vertex", "scene"};

/// Does something to a model of which everything is selected, breaks it off, and takes it back.
std::string Trial(const std::string& mode, const std::string& action) {
    return "mode " + mode + "\nkey Ctrl+a\nunsaved\nremember\n" + action +
           "check\ndrawn\nhalfway\ncheck\nsettle\nundo\ncheck\n";
}

std::vector<std::string> AllKeys() {
    std::vector<std::string> keys = {"Space", "Return", "Escape",   "Backspace", "Tab",  "Delete", "Insert", "Home",
                                     "End",   "PageUp", "PageDown", "Up",        "Down", "Left",   "Right"};
    for (int number = 1; number <= 12; ++number)
        keys.push_back("F" + std::to_string(number));
    for (char key = '!'; key <= '~'; ++key)
        keys.push_back(key == '"' || key == '\\' ? std::string("\"\\") + key + "\""
                                                 : "\"" + std::string(1, key) + "\"");
    for (char letter = 'a'; letter <= 'z'; ++letter)
        for (const char* modifier : {"Ctrl+", "Alt+", "Shift+"})
            keys.push_back(std::string(modifier) + letter);
    return keys;
}

TEST_F(Driven, EveryKeyInEveryModeLeavesAModelThatUndoBringsBack) {
    std::string script;
    const auto tryAll = [&](const std::string& mode) {
        for (const std::string& key : AllKeys())
            // How many views there are is part of what is tried.
            if (key != "\".\"")
                script += Trial(mode, "key " + key + "\n");
    };
    for (const char* mode : Modes)
        tryAll(mode);
    script += "mode polygon\nkey .\n";
    tryAll("polygon");
    Play(script);
}

/// Calls `visit` with the way to each entry of a menu, as a script writes it.
void ForEveryChoice(const MenuEntry* table, const std::string& way,
                    const std::function<void(const std::string& way)>& visit) {
    for (const MenuEntry* entry = table;; ++entry) {
        const std::string path = way + " \"" + entry->Label + "\"";
        if (entry->Submenu)
            ForEveryChoice(entry->Submenu, path, visit);
        else if (entry->Id)
            visit(path);
        if (entry->Kind == MenuEntryLast)
            return;
    }
}

/// The same with the choice as a script makes it, in every mode.
void ForEveryMenuEntry(const std::function<void(const std::string& mode, const std::string& choice)>& visit) {
    for (const char* mode : Modes) {
        const MenuEntry* const* bar = mode == std::string("scene") ? SceneMenus : ObjectMenus;
        for (; *bar; ++bar)
            ForEveryChoice(*bar, std::string("\"") + (*bar)->Label + "\"",
                           [&](const std::string& way) { visit(mode, "in \"box.kirvo\"\nmenu " + way + "\n"); });
        ForEveryChoice(ViewMenu, "",
                       [&](const std::string& way) { visit(mode, "in \"Subview 0\"\npopup 60 -40" + way + "\n"); });
    }
}

TEST_F(Driven, SlidersOfTheMaterialEditorShowEachStep) {
    Play("key m\nin \"Material palette\"\nplace 370 212\ndoubleclick left item:Sides\n"
         "in \"Material editor\"\nplace 0 0\nmove \"item:Emission green\"\npress left\nmove 354 120\nwait 5\n"
         "drawn\nmove 354 80\nwait 5\ndrawn\nrelease left\ndrawn\ncheck\n");
}

/// Entries that say so, or change what no object's snapshot holds.
bool CannotBeUndone(const std::string& choice) {
    for (const char* entry : {"\"New object\"", "\"Delete object\"", "\"Make a copy of this object\"",
                              "\"Delete everything except this object\"", "\"Billboard\""})
        if (choice.find(entry) != std::string::npos)
            return true;
    return false;
}

TEST_F(Driven, EveryMenuEntryLeavesAModelThatUndoBringsBack) {
    std::string script;
    ForEveryMenuEntry([&](const std::string& mode, const std::string& choice) {
        script += CannotBeUndone(choice) ? "mode " + mode + "\nkey Ctrl+a\n" + choice +
                                               "check\ndrawn\nhalfway\ncheck\nsettle\nopen box.kirvo\n"
                                         : Trial(mode, choice);
    });
    Play(script);
}

TEST_F(Driven, EveryMenuEntryLeavesAModelThatFilesKeep) {
    std::string script;
    ForEveryMenuEntry([&](const std::string& mode, const std::string& choice) {
        script += "open box.kirvo\nmode " + mode + "\nkey Ctrl+a\nunsaved\n" + choice + "settle\nreopen\n";
    });
    Play(script);
}

/// A hurried user at work on one of several models. The seed is printed; KIRVO_TEST_SEED repeats a storm and
/// KIRVO_STORM_ACTIONS makes it longer. Of a storm that fails the script is kept, which the driver plays again.
struct StormCase {
    const char* Name;
    const char* Directory;
    const char* Model;
    unsigned Share; // of all actions, in hundredths
};

constexpr StormCase Storms[] = {
    {"Box", "tests/models", "box.kirvo", 35},         {"Squares", "tests/models", "squares.kirvo", 35},
    {"Car", "examples", "vehicle.kirvo", 8},          {"CarAgain", "examples", "vehicle.kirvo", 8},
    {"CarOnceMore", "examples", "vehicle.kirvo", 8},  {"Village", "examples", "village.kirvo", 2},
    {"VillageAgain", "examples", "village.kirvo", 2}, {"VillageOnceMore", "examples", "village.kirvo", 2},
};

class Storm : public testing::TestWithParam<StormCase> {};

TEST_P(Storm, DoesNotBreakTheModel) {
    const StormCase& c = GetParam();
    const fs::path models = fs::path(KIRVO_SOURCE_DIR) / c.Directory;
    PlayedProgram program(KIRVO_DRIVER);
    fs::copy(models / c.Model, program.Directory());
    if (fs::exists(models / "textures"))
        fs::create_directory_symlink(models / "textures", program.Directory() / "textures");
    const unsigned seed = TestSeed();
    const unsigned actions = FromEnvironment("KIRVO_STORM_ACTIONS", 1500) * c.Share / 100;
    std::printf("seed %u\n", seed);
    std::fflush(stdout);
    const ProgramEnd end =
        program.Play("storm " + std::to_string(actions) + " " + std::to_string(seed) + "\n", c.Model);
    EXPECT_EQ(end.Status, 0) << end.Errors;
    EXPECT_TRUE(end.Output.ends_with("storm over: " + std::to_string(actions) + " actions\n")) << end.Errors;
    if (HasFailure()) {
        const fs::path kept = fs::path(testing::TempDir()) / ("storm-" + std::to_string(seed) + ".kscript");
        fs::copy(program.Directory() / "storm.kscript", kept, fs::copy_options::overwrite_existing);
        std::printf("the storm's script is %s\n", kept.c_str());
    }
}

INSTANTIATE_TEST_SUITE_P(All, Storm, testing::ValuesIn(Storms), [](const auto& info) { return info.param.Name; });

} // namespace
