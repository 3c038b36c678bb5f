#include "gooey/pictures.h"
#include "gooey/toolkit_test.h"
#include "support/temporary_directory.h"

#include "gooey/draw.h"
#include "gooey/file_selector.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/information_window.h"
#include "gooey/label.h"
#include "gooey/manual_window.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/messages.h"
#include "gooey/program_pictures.h"
#include "gooey/program_windows.h"
#include "gooey/pull_down.h"
#include "gooey/scroll_window.h"

#include "base/directories.h"

#include "platform/events.h"
#include "platform/scripts.h"
#include "platform/windows.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace std::string_literals;

namespace {

std::int32_t Ticked() {
    return SimpleMenuCheck(1);
}

std::int32_t Unticked() {
    return SimpleMenuCheck(0);
}

std::int32_t Greyed() {
    return MenuDisabled;
}

const MenuEntry Directions[] = {
    {"Top", MenuEntryItem, 25, 'T', nullptr, nullptr},       {"Front", MenuEntryItem, 26, 'F', nullptr, nullptr},
    {"Left", MenuEntrySeparated, 27, 'L', nullptr, nullptr}, {"Under", MenuEntryItem, 28, 'U', nullptr, nullptr},
    {"Back", MenuEntryLast, 29, 'B', nullptr, nullptr},
};

const MenuEntry View[] = {
    {"View", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"2d", MenuEntryItem, 0, 0, Directions, nullptr},
    {"3d", MenuEntrySeparated, 31, '3', nullptr, nullptr},
    {"Swap views", MenuEntryItem, 32, 'W', nullptr, Greyed},
    {"Three views", MenuEntryItem, 33, '.', nullptr, Ticked},
    {"Window labels", MenuEntrySeparated, 34, 0, nullptr, Unticked},
    {"Set rotation centre", MenuEntryLast, 35, ShiftMiddleMouseShortcut, nullptr, nullptr},
};

const MenuEntry Vertex[] = {
    {"Vertex", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Vertex creation", MenuEntryHeading, 0, 0, nullptr, nullptr},
    {"Create freehand", MenuEntryItem, 37, 0, nullptr, nullptr},
    {"Create with digitising tablet", MenuEntryItem, 38, 0, nullptr, nullptr},
    {"Vertex editing", MenuEntryHeading, 0, 0, nullptr, nullptr},
    {"Query vertices", MenuEntryItem, 41, -'Q', nullptr, nullptr},
    {"Join", MenuEntryLast, 0, 0, Directions, nullptr},
};

const MenuEntry* const Bar[] = {View, Vertex, nullptr};

void PopUp(int device, short value) {
    if (device == gl::RIGHTMOUSE && value)
        DoPopup(View);
}

Window* OpenPlain(void (*event)(int, short) = nullptr) {
    gl::prefposition(60, 659, 60, 509);
    Window* window = OpenWindow("Main", WindowDoubleBuffered, 0, nullptr, nullptr, event, nullptr, 0, nullptr);
    AddBackdrop();
    return window;
}

void BuildPopup() {
    OpenPlain(PopUp);
}

void BuildBar() {
    OpenPlain();
    AddPullDownMenu(Bar, nullptr);
}

void DrawStripes(int x, int y, int width, int height, int hOffset, int vOffset) {
    ClipScope clip(x, y, width, height);
    DrawBox(x, y, width, height, ShadeLowered);
    for (int row = 0; row < 40; ++row)
        SmallText(x + 4 - hOffset, y + height + vOffset - 20 * (row + 1) + 5,
                  ("Row " + std::to_string(row) + " of a content that is wider than its window").c_str(), 0xFFFFFF);
}

void BuildScrolls() {
    OpenPlain();
    AddScrollWindow({.X = 20,
                     .Y = 20,
                     .Width = 260,
                     .Height = 200,
                     .Flags = ScrollHorizontal | ScrollVertical | ScrollBorder,
                     .ContentWidth = 400,
                     .ContentHeight = 800,
                     .StepX = 10,
                     .StepY = 20,
                     .Draw = DrawStripes});
    AddScrollWindow({.X = 300,
                     .Y = 20,
                     .Width = 260,
                     .Height = 200,
                     .Flags = ScrollHorizontal | ScrollVertical | ScrollBorder,
                     .ContentWidth = 100,
                     .ContentHeight = 100,
                     .StepX = 10,
                     .StepY = 20,
                     .Draw = DrawStripes});
    AddScrollWindow({.X = 20,
                     .Y = 240,
                     .Width = 200,
                     .Height = 100,
                     .Flags = ScrollVertical,
                     .ContentHeight = 800,
                     .StepX = 10,
                     .StepY = 20,
                     .Draw = DrawStripes});
    AddScrollWindow({.X = 300,
                     .Y = 240,
                     .Width = 200,
                     .Height = 100,
                     .Flags = ScrollHorizontal,
                     .ContentWidth = 400,
                     .StepX = 10,
                     .StepY = 20,
                     .Draw = DrawStripes});
    Kirvo_AddGadget(
        [] {
            DrawLogo(20, 355);
            DrawOpenEye(400, 400);
            DrawDimOpenEye(430, 400);
            DrawClosedEye(460, 400);
            DrawDimClosedEye(490, 400);
        },
        nullptr);
}

void Touch(const std::string& path) {
    std::ofstream(path) << "x";
}

/// The selector shows its directory, so the made-up files always lie in the same place.
std::string MakeFiles() {
    std::string directory = "/tmp/kirvo-selector-pictures";
    std::filesystem::remove_all(directory);
    for (const char* name : {"bridges", "Houses", "old models"})
        std::filesystem::create_directories(directory + "/" + name);
    for (const char* name : {"alley.kirvo", "Barn.kirvo", "caf\xC3\xA9.kirvo", "tower.kirvo", "tower.kirvo.bak",
                             "two words.kirvo", "notes.txt", ".hidden.kirvo"})
        Touch(directory + "/" + name);
    for (int i = 10; i < 22; ++i)
        Touch(directory + "/wall" + std::to_string(i) + ".kirvo");
    return directory;
}

void NoChoice(int, const char*, const char*) {}

void BuildOpenSelector() {
    OpenPlain();
    DoFileSelector(FileToOpen, MakeFiles().c_str(), nullptr, ".kirvo", NoChoice, nullptr);
}

void BuildSaveSelector() {
    OpenPlain();
    DoFileSelector(FileToSave | FileOffersBackups, MakeFiles().c_str(), "shed.kirvo", ".kirvo", NoChoice, nullptr);
}

void BuildNotice() {
    MainWindow = OpenPlain();
    TellUserS("Some textures could not be found.\n\nClick on Ok to read the manual on how to correct this problem.");
}

void BuildQuestion() {
    MainWindow = OpenPlain();
    DoOkCancel("That texture is in use. Deleting it will detexture some polygons, with no undo possible...",
               [](int) {});
}

void BuildNotifier() {
    DoNotifier("A sub object of that name already exists!", {OpenPlain(), nullptr}, nullptr);
}

void BuildPrompt() {
    static char buffer[128];
    std::snprintf(buffer, sizeof buffer, "Roof");
    MainWindow = OpenPlain();
    DoTextInput("Enter name of new sub object:", buffer, sizeof buffer, nullptr, MainWindow);
}

void BuildInformation() {
    MainWindow = OpenPlain();
    ShowProgramInfo();
}

void BuildManual() {
    static const TemporaryDirectory place;
    const std::string directory = place.Path();
    std::filesystem::create_directories(directory + "/manual");
    std::ofstream(directory + "/manual/R_GridGizmo.html")
        << "<html><head><title>Grid control</title></head><body><h1>Grid control</h1>\n"
           "<p>The grid is the plane on which vertices are <b>created</b> &amp; moved. It can be aligned to a polygon, "
           "to vertices or with the mouse; see <a href=\"R_WorkArea.html\">the work area</a>.</p>\n"
           "<ul><li>Show grid: draws it.</li><li>Grid snap: vertices go to its corners, within 1&nbsp;mm or "
           "less.</li></ul>"
           "<h2>Keys</h2><p>Escape ends a tool of the grid.</p></body></html>";
    CopyFileName(KirvoDir, directory.c_str());
    ShowManualPage("R_GridGizmo");
}

struct Scene {
    const char* Name;
    void (*Build)();
    const char* Script;
};

const Scene Scenes[] = {
    {"menu-popup", BuildPopup,
     "in Main\nmove 60 400\npress right\nmove 110 385\nmove 110 372\nmove 300 378\nmove 395 378"},
    {"menu-bar", BuildBar, "in Main\nmove 30 430\npress left\nmove 100 430\nmove 110 330"},
    {"menu-bar-closed", BuildBar, "in Main\nmove 30 430\npress left\nmove 100 430\nmove 110 330\nrelease left"},
    {"scroll-windows", BuildScrolls, "in Main\nmove 270 30\npress left"},
    {"file-open", BuildOpenSelector, "in \"Open file...\"\nkey Down Down Down Down Down"},
    {"file-path", BuildOpenSelector, "in \"Open file...\"\nmove 100 100\ntype \"/usr/share\""},
    {"file-save", BuildSaveSelector, "in \"Save file as...\"\nclick left 20 99"},
    {"file-overwrite", BuildSaveSelector, "in \"Save file as...\"\nfield \"File:\" tower.kirvo\nmove 10 10"},
    {"message-notice", BuildNotice, "in Notice\nmove 1 1"},
    {"message-question", BuildQuestion, "in Warning:\nmove 1 1"},
    {"message-notifier", BuildNotifier, "in Notifier\nmove 1 1"},
    {"message-prompt", BuildPrompt, "in Input\nmove 1 1"},
    {"information", BuildInformation, "in About...\nmove 1 1"},
    {"manual-page", BuildManual, "in \"Grid control\"\nmove 1 1"},
};

std::string PictureName;

gl::ScriptResult TakePicture(gl::ScriptCall&) {
    ExpectScreenPicture(PictureName);
    return gl::ScriptResult::Done;
}

} // namespace

class CompositePictures : public ToolkitTest, public testing::WithParamInterface<int> {
  protected:
    void TearDown() override {
        ToolkitTest::TearDown();
        MainWindow = nullptr;
    }
};

TEST_P(CompositePictures, AreAsAccepted) {
    for (const Scene& scene : Scenes) {
        SCOPED_TRACE(scene.Name);
        std::string size = std::to_string(800 * GetParam()) + "x" + std::to_string(600 * GetParam());
        setenv("KIRVO_DISPLAY", ("headless:" + size).c_str(), 1);
        UseScale(GetParam());
        gl::AddScriptCommand("picture", TakePicture);
        PictureName = scene.Name + "@"s + std::to_string(GetParam());
        gl::PlayScript("wait 1", "test");
        scene.Build();
        Settle();
        // The dispatcher does not come back while a button is held: the script must let it go.
        Play(scene.Script + "\npicture\nrelease left\nrelease right"s);
        CloseAllWindows();
        MainWindow = nullptr;
    }
}

INSTANTIATE_TEST_SUITE_P(Scale, CompositePictures, testing::Values(1, 2));
