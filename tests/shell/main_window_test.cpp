#include "support/played_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr char Hints3D[] = "<Left>=Select,  <Middle>=Manipulate view,  <Ctrl+Middle>=Fly,  <Right>=Menu,  <?>=Help";
constexpr char Hints2D[] = "<Left>=Select,  <Middle>=Manipulate view,  <Right>=Menu,  <?>=Help";
// Deletes every polygon of the model.
constexpr char ChangeModel[] = "in \"Kirvo\"\nkey Ctrl+a Backspace\n";

class MainWindow : public testing::Test {
  protected:
    MainWindow() : program(KIRVO_PROGRAM) {
        fs::copy(fs::path(KIRVO_SOURCE_DIR) / "tests/models/box.kirvo", program.Directory());
    }

    // Plays a script that must run to its end, and returns what went to the standard error stream.
    std::string Play(const std::string& script, const std::string& model = "") {
        const ProgramEnd end = program.Play(script, model);
        EXPECT_EQ(end.Status, 0) << end.Errors;
        EXPECT_EQ(end.Signal, 0);
        return end.Errors;
    }

    json Report(const std::string& name) const { return program.Json(name); }

    // The window of a report that opened with this name.
    json Window(const std::string& report, const std::string& name) const {
        const json contents = Report(report);
        for (const json& window : contents["windows"])
            if (window["name"] == name)
                return window;
        return nullptr;
    }

    json Main(const std::string& report) const { return Window(report, "Kirvo"); }

    std::string Defaults() const {
        std::ifstream file(program.Home() / ".kirvorc");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void WriteDefaults(const std::string& text) const { std::ofstream(program.Home() / ".kirvorc") << text; }

    bool DefaultsSay(const std::string& line) const {
        return ("\n" + Defaults()).find("\n" + line + "\n") != std::string::npos;
    }

    PlayedProgram program;
};

int Extent(const json& window, const char* side) {
    return window[side].get<int>();
}

std::string Visible(const json& window) {
    std::string labels;
    for (const json& gadget : window["gadgets"])
        labels +=
            (labels.empty() ? "" : ",") + (gadget["kind"] == "menu" ? "menu" : gadget["label"].get<std::string>());
    return labels;
}

TEST_F(MainWindow, StandsInTheMiddleAtFirstAndHoldsEverything) {
    Play("report r\n");
    const json window = Main("r");
    EXPECT_EQ(window["width"], 750);
    EXPECT_EQ(window["height"], 525);
    EXPECT_EQ(window["x"], (1000 - 750) / 2);
    EXPECT_EQ(window["title"], "Kirvo - Version 1.5b");
    EXPECT_EQ(Visible(window), "menu,Polygon,Vertex,Edit scene");
    int end = 0;
    for (const json& gadget : window["gadgets"]) {
        EXPECT_GE(Extent(gadget, "x"), end) << gadget;
        end = Extent(gadget, "x") + Extent(gadget, "width");
    }
    EXPECT_LE(end, 750);
}

TEST_F(MainWindow, KeepsItsShapeAndLeastSize) {
    const struct { int Width, Height; } wishes[] = {{900, 100}, {10, 10}, {300, 2000}, {612, 555}};

    std::string script;
    for (const auto& wish : wishes)
        script += "resize " + std::to_string(wish.Width) + " " + std::to_string(wish.Height) + "\nreport r" +
                  std::to_string(wish.Width) + "\n";
    Play(script);
    for (const auto& wish : wishes) {
        const json window = Main("r" + std::to_string(wish.Width));
        const int width = Extent(window, "width"), height = Extent(window, "height");
        EXPECT_GE(width, 225);
        EXPECT_GE(height, 150);
        EXPECT_NEAR(width * 2, (height - 60) * 3, 3) << width << " x " << height;
    }
}

// Menus and mode controls come closer together and become narrower as far as they can be read.
TEST_F(MainWindow, ShowsMenusAndModeControlsInNarrowWindows) {
    const struct {
        const char* Mode;
        std::vector<int> Widths;
    } modes[] = {{"p", {1000, 860, 750, 735, 700, 640, 600}}, {"s", {1000, 750, 640, 600, 560, 500, 450, 425}}};

    for (const auto& mode : modes) {
        std::string script = "in \"Subview 0\"\nmove 40 40\nkey " + std::string(mode.Mode) + "\nin Kirvo\n";
        for (const int width : mode.Widths)
            script += "resize " + std::to_string(width) + " " + std::to_string(width * 2 / 3 + 60) + "\nreport r" +
                      std::to_string(width) + "\n";
        Play(script, "box");
        for (const int width : mode.Widths) {
            const json window = Main("r" + std::to_string(width));
            int end = 0;
            for (const json& gadget : window["gadgets"]) {
                EXPECT_GE(Extent(gadget, "x"), end) << mode.Mode << width;
                end = Extent(gadget, "x") + Extent(gadget, "width");
            }
            EXPECT_LE(end, Extent(window, "width")) << mode.Mode << width;
        }
    }
}

TEST_F(MainWindow, TellsWhatTheViewUnderThePointerCan) {
    Play("key .\n"
         "in \"Subview 1\"\nmove 20 20\nreport front\n"
         "in \"Subview 0\"\nmove 20 20\nreport 3d\n"
         "key t\nreport top\nkey 3\nreport again\n"
         "in Kirvo\nmenu \"Settings\" \"User preferences\"\nin Preferences\nmove 5 5\nreport preferences\n"
         "key Escape\nin Kirvo\nmove 400 20\nreport main\n",
         "box");
    EXPECT_EQ(Report("front")["status"], Hints2D);
    EXPECT_EQ(Report("3d")["status"], Hints3D);
    EXPECT_EQ(Report("top")["status"], Hints2D);
    EXPECT_EQ(Report("again")["status"], Hints3D);
    EXPECT_EQ(Report("preferences")["status"], "");
    EXPECT_EQ(Report("main")["status"], Hints3D);
}

TEST_F(MainWindow, MarksUnsavedWorkInItsTitle) {
    Play("report before\n" + std::string(ChangeModel) + "report changed\nkey Ctrl+s\nreport saved\n", "box");
    EXPECT_EQ(Main("before")["title"], "box.kirvo");
    EXPECT_EQ(Main("changed")["title"], "box.kirvo*");
    EXPECT_EQ(Main("saved")["title"], "box.kirvo");
    EXPECT_EQ(Report("saved")["objects"][0]["polygons"], 0);
}

TEST_F(MainWindow, AToolBarTakesThePlaceOfMenusAndGivesItBack) {
    Play("menu \"Polygon\" \"Create freehand\"\nreport tool\nbutton \"Cancel\"\nreport after\n"
         "menu \"Polygon\" \"Create n-gons\"\nbutton \"Cancel\"\nmenu \"Polygon\" \"Create freehand\"\nreport next\n"
         "button \"Cancel\"\nbutton \"Edit scene\"\nreport scene\n",
         "box");
    EXPECT_EQ(Visible(Main("tool")).find("menu"), std::string::npos);
    EXPECT_NE(Visible(Main("tool")).find("Done,Cancel,Help"), std::string::npos);
    EXPECT_EQ(Visible(Main("after")), "menu,Polygon,Vertex,Edit scene");
    EXPECT_EQ(Visible(Main("next")), Visible(Main("tool")));
    EXPECT_EQ(Visible(Main("scene")), "menu,Edit scene");
    EXPECT_EQ(Report("scene")["mode"]["object"], false);
}

TEST_F(MainWindow, ToolBarsFitTheWindow) {
    const struct {
        const char* Tool;
        int Width;
    } cases[] = {{"Connect vertices to make polygons", 750}, {"Create freehand", 750}, {"Create n-gons", 590}};

    for (const auto& c : cases) {
        Play("resize " + std::to_string(c.Width) + " " + std::to_string(c.Width * 2 / 3 + 60) +
                 "\nmenu \"Polygon\" \"" + c.Tool + "\"\nreport tool\n",
             "box");
        const json window = Main("tool");
        int end = 0;
        for (const json& gadget : window["gadgets"]) {
            EXPECT_GE(Extent(gadget, "x"), end) << c.Tool << gadget;
            end = Extent(gadget, "x") + Extent(gadget, "width");
        }
        EXPECT_LE(end, c.Width) << c.Tool;
        EXPECT_GE(end, c.Width - 60) << c.Tool;
    }
}

TEST_F(MainWindow, AsksBeforeUnsavedWorkIsLost) {
    const std::string question = " FIleChanged!";
    const auto quit = [&](const std::string& answer) {
        return std::string(ChangeModel) + "quit\nreport asked\nin \"" + question.substr(1) + "\"\n" + answer +
               "in Kirvo\nreport running\n";
    };
    Play(quit("button \"Cancel\"\n"), "box");
    EXPECT_EQ(Window("asked", question)["parent"], "Kirvo");
    EXPECT_EQ(Main("asked")["disabled"], 1);
    EXPECT_EQ(Main("running")["disabled"], 0);
    EXPECT_TRUE(Window("running", question).is_null());

    for (const char* answer : {"Discard", "Save"}) {
        fs::remove(program.Directory() / "running");
        // The program has ended before the next command.
        Play(quit("button \"" + std::string(answer) + "\"\n"), "box");
        EXPECT_FALSE(fs::exists(program.Directory() / "running")) << answer;
        EXPECT_TRUE(DefaultsSay("FileName = box.kirvo"));
        EXPECT_FALSE(fs::exists(program.Home() / "CheckPoint.kirvo"));
        EXPECT_EQ(program.ReportOn("box.kirvo")["objects"][0]["polygons"], std::string(answer) == "Save" ? 0 : 6);
    }
}

TEST_F(MainWindow, ComesBackWhereItWas) {
    Play("place 30 60\nresize 600 460\nquit\n");
    EXPECT_TRUE(DefaultsSay("MainWindowPosition = 30,125,600,460")) << Defaults();
    Play("report r\ndoubleclick left 100 -1\nquit\n");
    const json back = Main("r");
    EXPECT_EQ(Extent(back, "x"), 30);
    EXPECT_EQ(Extent(back, "y"), 125);
    EXPECT_EQ(Extent(back, "width"), 600);
    EXPECT_EQ(Extent(back, "height"), 460);
}

// The title is above the content: a position beyond its top edge.
TEST_F(MainWindow, AFittedOneComesBackFittedAndGoesBackToItsPlace) {
    const std::string fit = "doubleclick left 100 530\n";
    Play(fit + "report fitted\nquit\n");
    const json fitted = Main("fitted");
    EXPECT_EQ(Extent(fitted, "height"), 700 - 2 * 5 - 22);
    EXPECT_TRUE(DefaultsSay("MainWindowBeforeFit = 125,90,750,525")) << Defaults();
    // The screen has another size now.
    program.Display = "headless:900x700";
    Play("report again\ndoubleclick left 100 664\nreport free\n");
    EXPECT_EQ(Extent(Main("again"), "width"), 890);
    EXPECT_EQ(Extent(Main("free"), "width"), 750);
    EXPECT_EQ(Extent(Main("free"), "x"), 125);
}

TEST_F(MainWindow, StaysInReachWhateverWasRemembered) {
    program.Display = "headless:640x480";
    for (const char* place : {"5000,5000,750,525", "-5000,-5000,750,525", "0,0,3000,2060", "10,10,16000,16000",
                              "1,2,3,4", "0,0,-750,525", "99999999999,0,750,525"}) {
        WriteDefaults("MainWindowPosition = " + std::string(place) + "\n");
        Play("report r\nquit\n");
        const json window = Main("r");
        EXPECT_GE(Extent(window, "width"), 225) << place;
        EXPECT_GE(Extent(window, "height"), 150) << place;
        EXPECT_LE(Extent(window, "width"), 750) << place;
        EXPECT_LE(Extent(window, "y") + Extent(window, "height") + 22, 480) << place;
        EXPECT_LE(Extent(window, "x"), 640 - 64) << place;
        EXPECT_GE(Extent(window, "x") + Extent(window, "width"), 64) << place;
    }
}

TEST_F(MainWindow, PreferencesOpenWithinTheScreen) {
    for (const char* place : {"900,40", "-600,-200", "100,900", "32767,-32767", "20,30"}) {
        WriteDefaults("PreferencesWindow = " + std::string(place) + "\n");
        Play("menu Settings \"User preferences\"\nreport r\n");
        const json window = Window("r", " Preferences");
        EXPECT_GE(Extent(window, "x"), 0) << place;
        EXPECT_GE(Extent(window, "y"), 0) << place;
        EXPECT_LE(Extent(window, "x") + Extent(window, "width"), 1000) << place;
        EXPECT_LE(Extent(window, "y") + Extent(window, "height"), 700) << place;
    }
    EXPECT_EQ(Extent(Window("r", " Preferences"), "x"), 20);
    EXPECT_EQ(Extent(Window("r", " Preferences"), "y"), 30);
}

TEST_F(MainWindow, ReopensTheLastFileUnlessToldOtherwise) {
    const std::string path = program.Directory();
    Play("quit\n", "box");
    Play("report last\n");
    EXPECT_EQ(Report("last")["file"]["name"], "box.kirvo");
    EXPECT_EQ(Report("last")["file"]["path"], path);
    WriteDefaults(Defaults() + "DoAutoLoad = FALSE\n");
    Play("report none\n");
    EXPECT_EQ(Report("none")["file"]["name"], "");
    EXPECT_EQ(Report("none")["objects"][0]["name"], "Unnamed");
    EXPECT_EQ(Report("none")["materials"]["names"], json({"Grey", "Red", "Green", "Blue"}));
}

TEST_F(MainWindow, TellsAboutAFileThatNeedsANewerProgram) {
    std::ofstream(program.Directory() / "newer.kirvo") << "Compatibility: 9.00\n\001";
    Play("report r\nin \"Notice\"\nbutton \"Continue\"\nin Kirvo\nreport after\n", "newer");
    EXPECT_EQ(Window("r", "Notice")["parent"], "Kirvo");
    EXPECT_EQ(Main("r")["disabled"], 1);
    EXPECT_EQ(Main("after")["disabled"], 0);
    EXPECT_EQ(Report("after")["objects"][0]["vertices"], 0);
}

TEST_F(MainWindow, PreferencesHoldWhenAcceptedOnly) {
    const std::string change = "menu \"Settings\" \"User preferences\"\nin \"Preferences\"\nreport open\n"
                               "button \"Autoload last file when program starts\"\n"
                               "button \"Create backup files (\\\".bak\\\") when saving\"\n"
                               "button \"Autosave file every\"\nbutton \"+\"\nbutton \"+\"\n"
                               "field \"Default texture directory:\" \"/my pictures\"\n"
                               "button \"Coral\"\nslider \"G\" 10\nreport changed\n";
    const auto expect = [&](const char* flag, int minutes, const char* directory, int colour) {
        for (const char* key : {"DoAutoLoad", "FileBackups", "Checkpoints"})
            EXPECT_TRUE(DefaultsSay(std::string(key) + " = " + flag)) << key;
        EXPECT_TRUE(DefaultsSay("CheckpointTime = " + std::to_string(minutes)));
        EXPECT_TRUE(DefaultsSay(std::string("TextureDir = ") + directory));
        EXPECT_TRUE(DefaultsSay("BackgroundColour = " + std::to_string(colour)));
    };
    for (const char* refusal : {"button \"Cancel\"\n", "key Escape\n", "close\n"}) {
        Play(change + refusal + "in Kirvo\nquit\n");
        expect("TRUE", 15, "", 0x605020);
    }
    EXPECT_EQ(Main("open")["disabled"], 1);
    EXPECT_EQ(Window("open", " Preferences")["width"], 654);
    EXPECT_EQ(Window("open", " Preferences")["height"], 275);
    Play(change + "button \"OK\"\nin Kirvo\nquit\n");
    expect("FALSE", 17, "/my pictures", 0x401460);
    EXPECT_TRUE(DefaultsSay("TextureDirWhole = /my%20pictures"));
    // The interval has its bounds, and the window its place.
    WriteDefaults(Defaults() + "CheckpointTime = 119\nPreferencesWindow = 40,50\n");
    Play("menu \"Settings\" \"User preferences\"\nin \"Preferences\"\nreport place\nbutton \"+\"\nbutton \"+\"\n"
         "button \"OK\"\nin Kirvo\nquit\n");
    EXPECT_EQ(Window("place", " Preferences")["x"], 40);
    EXPECT_EQ(Window("place", " Preferences")["y"], 50);
    EXPECT_TRUE(DefaultsSay("CheckpointTime = 120"));
}

TEST_F(MainWindow, ReportsTellOfTheModel) {
    Play("key Ctrl+a\nreport r\n", "box");
    const json report = Report("r");
    EXPECT_EQ(Differences(json::parse(R"({
        "file": {"name": "box.kirvo", "saved": true},
        "mode": {"object": true, "vertex": false, "viewports": 1},
        "objects": [{"name": "box", "current": true, "vertices": 8, "polygons": 6, "selectedPolygons": 6,
                     "looseVertices": 0, "min": [-1, -1, -1], "max": [1, 1, 1], "radius": 1.9052559,
                     "undo": false, "attributes": 0}],
        "textures": {"current": null, "files": []},
        "scene": {"name": "Scene", "object": null, "visible": true, "children": []},
        "views": [{"viewport": 0, "perspective": true, "centre": null}]})"),
                          report),
              "");
    EXPECT_EQ(report["views"][0]["viewMatrix"].size(), 16u);
    EXPECT_EQ(report["objects"][0]["lods"][0]["members"].size(), report["objects"][0]["subobjects"].size());
}

TEST_F(MainWindow, OutlinesWhatAClickWouldSelectAndTellsWhereThePointerIs) {
    // Without a display nothing is outlined until the user asks for it.
    constexpr char toggle[] = "in Kirvo\nmenu Settings \"Show what is pointed at\"\n";
    const auto look = [](const std::string& name) {
        return "in \"Subview 0\"\nmove 300 260\nwait 40\nsnapshot " + name + "\n";
    };
    Play(look("off.png") + toggle + look("on.png") + "key v\n" + look("vertex.png") + "key p\n" + look("again.png") +
             toggle + look("later.png"),
         "box.kirvo");
    const auto contents = [this](const char* name) {
        std::ifstream file(program.Directory() / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    EXPECT_FALSE(contents("off.png").empty());
    EXPECT_TRUE(contents("off.png") != contents("on.png"));
    EXPECT_TRUE(contents("on.png") != contents("vertex.png")) << "no polygon is outlined when vertices are selected";
    EXPECT_TRUE(contents("on.png") == contents("again.png"));
    EXPECT_TRUE(contents("off.png") == contents("later.png"));
}

TEST_F(MainWindow, SaysWhatWasUndone) {
    Play("in \"Subview 0\"\nmove 20 20\nkey Alt+z\nreport nothing.json\n"
         "key Ctrl+a Backspace\nreport done.json\nkey Alt+z\nreport undone.json\nkey Alt+z\nreport again.json\n"
         "key Ctrl+a\nreport later.json\n",
         "box.kirvo");
    EXPECT_EQ(Report("nothing.json")["status"], "There is nothing to undo.");
    EXPECT_EQ(Report("done.json")["status"], Hints3D);
    const std::string undone = Report("undone.json")["status"], again = Report("again.json")["status"];
    EXPECT_TRUE(undone.starts_with("Undone: \"Delete")) << undone;
    EXPECT_TRUE(again.starts_with("Done again: \"Delete")) << again;
    EXPECT_EQ(Report("later.json")["status"], Hints3D);
}

} // namespace
