#include "tools/read_vertices.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/file_names.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/file_selector.h"
#include "gooey/keyboard_walk.h"
#include "gooey/label.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/tool_window.h"
#include "platform/events.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "tools/creation_guards.h"
#include "tools/vertex_file.h"
#include "views/scene_views.h"
#include "views/viewports.h"

#include <string>

VertexFileSlots TheVertexFileSlots;

namespace {

constexpr int WindowWidth = 400, WindowHeight = 150;
constexpr int LabelX = 8, LabelY = -26, CheckX = 24, FirstCheckY = -60, CheckStep = 30;

Window* FormatWindow;
/// The file that was chosen last, and where it lies: for the next time.
std::string Directory, Name;
/// Flags, of which one is set.
int Has2Coordinates = 1, Has3Coordinates = 0;

void Use2Coordinates(GadgetArg) {
    Has2Coordinates = 1;
    Has3Coordinates = 0;
    DirtyWindow(FormatWindow);
}

void Use3Coordinates(GadgetArg) {
    Has2Coordinates = 0;
    Has3Coordinates = 1;
    DirtyWindow(FormatWindow);
}

int Progress(double part) {
    return TheVertexFileSlots.ReadingProgress ? TheVertexFileSlots.ReadingProgress(part) : 0;
}

void AddVertices(const VertexFile& file) {
    if (file.Places.empty())
        return;
    if (!AnythingInObject())
        DevalidateObjectViews();
    for (const auto& [x, y, z] : file.Places)
        AddVertex(x, y, z);
    DirtyModelWindows();
}

std::string Account(const VertexFile& file) {
    std::string text = "  " + std::to_string(file.Places.size()) + " vertices found in file...";
    if (!file.Error.empty())
        text += "\n\n" + file.Error;
    else if (file.UnreadableLines)
        text += "\n\n  " + std::to_string(file.UnreadableLines) +
                (file.UnreadableLines == 1 ? " line could not be read." : " lines could not be read.");
    return text;
}

extern const ToolWindow FormatQuestion;

void ReadChosenFile() {
    Trace("Reading vertices\n");
    Progress(0);
    const VertexFile file = ReadVertexFile((Directory + "/" + Name).c_str(), Has3Coordinates ? 3 : 2, Progress);
    Progress(1);
    AddVertices(file);
    CloseToolWindow(FormatQuestion);
    if (!file.Cancelled)
        TellUserS(Account(file).c_str());
}

void Answer(bool ok) {
    if (ok)
        ReadChosenFile();
    else
        CloseToolWindow(FormatQuestion);
}

void AnswerByKey(int device, short value) {
    if (device == gl::KEYBD && (value == ReturnCharacter || value == EscapeCharacter))
        Answer(value == ReturnCharacter);
}

void BuildQuestion() {
    static constexpr const char* answers[] = {"OK", "Cancel"};
    AddBackdrop();
    AddText(LabelX, LabelY, "File format:", 1);
    AddCheckBox(CheckX, FirstCheckY, 0, 0, nullptr, "2D coordinates (XY)", Use2Coordinates, &Has2Coordinates);
    AddCheckBox(CheckX, FirstCheckY - CheckStep, 0, 0, nullptr, "3D coordinates (XYZ)", Use3Coordinates,
                &Has3Coordinates);
    Gadget* const choices = AddButtons(
        0, 8, WindowWidth, 0, 2, answers, [] { Answer(ButtonChoice == 0); }, nullptr, nullptr);
    SetDefaultButton(choices, 0);
}

const ToolWindow FormatQuestion = {
    .Title = " Read vertices from file",
    .Handle = &FormatWindow,
    .Width = WindowWidth,
    .Height = WindowHeight,
    .AroundPointer = true,
    .DisablesMain = true,
    .Build = BuildQuestion,
    .Event = AnswerByKey,
};

void FileChosen(int, const char* directory, const char* name) {
    Directory = directory;
    Name = name;
    Use2Coordinates(nullptr);
    OpenToolWindow(FormatQuestion);
}

} // namespace

void ReadVerticesFromFile() {
    if (!CreationInObjectMode())
        return;
    DoFileSelector(FileToOpen, Directory.empty() ? FilePath : Directory.c_str(), Name.c_str(), nullptr, FileChosen,
                   MainWindow);
}
