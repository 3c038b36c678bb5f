#include "driver/driver_commands.h"

#include "driver/model_text.h"

#include "store/store_checker.h"

#include "base/directories.h"
#include "files/file_commands.h"
#include "files/file_errors.h"
#include "files/writer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/report.h"
#include "gooey/window.h"
#include "interaction/modes.h"
#include "interaction/selection_sets.h"
#include "platform/events.h"
#include "platform/frame_drag.h"
#include "platform/screen_windows.h"
#include "platform/scripts.h"
#include "platform/snapshots.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/storage.h"
#include "views/hooks.h"
#include "views/tool_bar.h"
#include "views/viewports.h"

#include <fstream>
#include <iterator>
#include <string>

namespace {

using gl::ScriptCall;
using gl::ScriptResult;

constexpr int MostSteps = 60;
constexpr char Undo[] = "Ctrl+z";

std::string Remembered, Changed;

ScriptResult Refuse(ScriptCall& call, const std::string& reason) {
    call.Error = call.Words[0] + ": " + reason;
    return ScriptResult::Failed;
}

/// The model once what it is due has been done: polygons without area are gone.
std::string ModelNow() {
    if (CurrentFile->CurrentObject)
        CleanUpObject();
    return ModelAsText(*CurrentFile);
}

void PointAtView(ScriptCall& call) {
    call.Move(Viewport[0]->Gid, Viewport[0]->Width / 2, Viewport[0]->Height / 2);
}

void TypeInView(ScriptCall& call, const char* chord) {
    PointAtView(call);
    call.Key(chord);
}

ScriptResult Check(ScriptCall& call) {
    const std::string problems = ModelProblems();
    return problems.empty() ? ScriptResult::Done : Refuse(call, problems);
}

/// The box of the tool bar's button with this label; without width when there is none.
GadgetBox ToolBarButton(const char* label) {
    if (ToolBarActive())
        for (const GadgetView& view : GadgetsOf(MainWindow))
            if (view.Kind->Name == std::string("button") && view.Description.Label == label)
                return view.Description.Box;
    return {};
}

void ClickToolBar(ScriptCall& call, const char* label) {
    const GadgetBox box = ToolBarButton(label);
    call.Move(MainWindow->Gid, box.X + box.Width / 2, box.Y + box.Height / 2);
    call.Press(gl::LEFTMOUSE);
    call.Release(gl::LEFTMOUSE);
}

/// One more attempt at ending what runs, each time in another way.
void TryToEnd(ScriptCall& call, int attempt) {
    static constexpr const char* keys[] = {"Space", "Escape"};
    if (attempt % 3 < 2)
        return TypeInView(call, keys[attempt % 3]);
    for (const char* label : {"Cancel", "Done"})
        if (ToolBarButton(label).Width)
            return ClickToolBar(call, label);
}

ScriptResult Settle(ScriptCall& call) {
    if (call.Stage == 0) {
        for (const int button : {gl::LEFTMOUSE, gl::MIDDLEMOUSE, gl::RIGHTMOUSE})
            call.Release(button);
        return ScriptResult::Again;
    }
    Window* const side = NewestSideWindow();
    if (!side && !SomethingRuns()) {
        if (MainWindow->Disabled)
            return Refuse(call, "the main window takes no input");
        PointAtView(call);
        return ScriptResult::Done;
    }
    if (call.Stage > MostSteps)
        return Refuse(call, side ? "the window \"" + std::string(side->Title) + "\" does not close"
                                 : "what runs does not end");
    if (side)
        gl::RequestClose(*gl::FindScreenWindow(side->Gid));
    else
        TryToEnd(call, call.Stage);
    return ScriptResult::Again;
}

ScriptResult ChangeMode(ScriptCall& call) {
    const std::string wanted = call.Words.size() == 2 ? call.Words[1] : "";
    if (wanted != "polygon" && wanted != "vertex" && wanted != "scene")
        return Refuse(call, "polygon, vertex or scene?");
    const bool scene = wanted == "scene", vertex = wanted == "vertex";
    if (call.Stage == 0 && scene == (ObjectIsolated != 0)) {
        TypeInView(call, "s");
        return ScriptResult::Again;
    }
    if (call.Stage <= 1 && !scene && vertex != (WorkMode != 0)) {
        TypeInView(call, vertex ? "v" : "p");
        return call.Stage = 1, ScriptResult::Again;
    }
    if (scene == (ObjectIsolated != 0) || (!scene && vertex != (WorkMode != 0)))
        return Refuse(call, "the mode has not changed");
    PointAtView(call);
    return ScriptResult::Done;
}

ScriptResult Unsaved(ScriptCall&) {
    WorkSaved = 0;
    return ScriptResult::Done;
}

ScriptResult Remember(ScriptCall&) {
    Remembered = ModelNow();
    return ScriptResult::Done;
}

ScriptResult Unchanged(ScriptCall& call) {
    return ModelNow() == Remembered ? ScriptResult::Done : Refuse(call, "the model has changed");
}

/// The part of a model's text before its scene.
std::string ObjectsOf(const std::string& model) {
    return model.substr(0, model.find("branch 0"));
}

ScriptResult UndoAndRedo(ScriptCall& call) {
    static constexpr const char* faults[] = {nullptr, "undoing does not bring back the model",
                                             "redoing does not bring back the change",
                                             "undoing again does not bring back the model"};
    const std::string now = ModelNow();
    if (call.Stage == 0) {
        if (now == Remembered)
            return ScriptResult::Done;
        Changed = now;
        // Scene and objects are undone each in its own mode.
        if (!ObjectIsolated && ObjectsOf(now) != ObjectsOf(Remembered))
            TypeInView(call, "s");
    } else if (now != (call.Stage == 2 ? Changed : Remembered)) {
        return Refuse(call, faults[call.Stage]);
    } else if (call.Stage == 3) {
        return ScriptResult::Done;
    }
    TypeInView(call, Undo);
    return ScriptResult::Again;
}

/// Clicks here and there in the large view, with Return between.
void UseTool(ScriptCall& call) {
    static constexpr double places[][2] = {{0.3, 0.3}, {0.6, 0.35}, {0.5, 0.65}, {0.2, 0.6}, {0.7, 0.7}};
    for (const auto& [x, y] : places) {
        const int left = static_cast<int>(x * Viewport[0]->Width), bottom = static_cast<int>(y * Viewport[0]->Height);
        call.Move(Viewport[0]->Gid, left, bottom);
        call.Press(gl::LEFTMOUSE);
        call.Move(Viewport[0]->Gid, left + 30, bottom + 20);
        call.Release(gl::LEFTMOUSE);
        if (x == 0.5)
            call.Key("Return");
    }
}

ScriptResult LeaveHalfway(ScriptCall& call) {
    const bool canCancel = ToolBarButton("Cancel").Width != 0;
    if (call.Stage == 0) {
        if (!SomethingRuns())
            return ScriptResult::Done;
        UseTool(call);
        return ScriptResult::Again;
    }
    if (call.Stage == 1 && canCancel) {
        ClickToolBar(call, "Cancel");
        return ScriptResult::Again;
    }
    if (call.Stage == 2 && SomethingRuns())
        return Refuse(call, "the tool has not ended");
    return call.Stage == 1 ? ScriptResult::Done : Unchanged(call);
}

/// A picture that is not as expected is kept where the failing test's files are.
ScriptResult Compare(ScriptCall& call, const gl::Picture& expected, const gl::Picture& shown, const char* reason) {
    gl::Picture difference;
    const long pixels = gl::DifferingPixels(expected, shown, 0, &difference);
    if (!pixels)
        return ScriptResult::Done;
    std::string error;
    gl::WritePng(expected, "expected.png", error);
    gl::WritePng(shown, "shown.png", error);
    gl::WritePng(difference, "difference.png", error);
    return Refuse(call, std::to_string(pixels) + reason);
}

ScriptResult IsDrawn(ScriptCall& call) {
    static gl::Picture shown;
    if (call.Stage == 0) {
        shown = gl::ScreenPicture();
        EveryAppearanceChanged();
        DirtyAllWindows();
        RedrawDirtyWindows();
        return ScriptResult::Again;
    }
    return Compare(call, gl::ScreenPicture(), shown, " pixels were out of date");
}

std::string ContentsOf(const char* file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Shows a model file, as it is opened by hand.
bool Open(const char* file) {
    DoFileOp(0, FilePath, file);
    return !FileError;
}

ScriptResult OpenFile(ScriptCall& call) {
    // The first stage may be called again while the file is being read.
    if (call.Stage == 0)
        return ScriptResult::Again;
    return Open(call.Words.at(1).c_str()) ? ScriptResult::Done : Refuse(call, "the file cannot be read");
}

ScriptResult RunInShell(ScriptCall& call) {
    // Unlike system() this leaves the program's own signals alone.
    std::FILE* const shell = popen(call.Words.at(1).c_str(), "r");
    return shell && pclose(shell) == 0 ? ScriptResult::Done : Refuse(call, "the command failed");
}

ScriptResult Reopen(ScriptCall& call) {
    constexpr char saved[] = "saved.kirvo", again[] = "again.kirvo";
    static gl::Picture shown;
    if (call.Stage == 0) {
        DeselectEverything();
        DirtyAllWindows();
        RedrawDirtyWindows();
        return ScriptResult::Again;
    }
    if (call.Stage == 1) {
        shown = gl::WindowPicture(Viewport[0]->Gid);
        // Vertices at one place become one by opening: the second save is the first that must stay.
        if (!WriteKirvo(saved) || !Open(saved) || !WriteKirvo(saved) || !Open(saved) || !WriteKirvo(again))
            return Refuse(call, "the model cannot be saved and opened");
        if (ContentsOf(saved) != ContentsOf(again))
            return Refuse(call, "a file that is opened and saved has changed");
        return ScriptResult::Again;
    }
    return Compare(call, shown, gl::WindowPicture(Viewport[0]->Gid), " pixels differ after saving and opening");
}

} // namespace

std::string ModelProblems() {
    for (FileStruct* file : {&MainFile, &MergeFile})
        if (const std::string problems = CheckFile(*file); !problems.empty())
            return problems;
    if (CurrentFile->CurrentObject)
        CheckIntegrity();
    return "";
}

Window* NewestSideWindow() {
    Window* newest = nullptr;
    for (Window* window = WindowList; window; window = window->Next)
        if (window != MainWindow && !(window->Flags & WindowInParent) && !window->Closing)
            newest = window;
    return newest;
}

bool SomethingRuns() {
    return LeftCOGFunc || WorkAreaLeftFunc || SystemBusy() || ToolBarActive();
}

void InstallDriverCommands() {
    gl::AddScriptCommand("check", Check);
    gl::AddScriptCommand("settle", Settle);
    gl::AddScriptCommand("mode", ChangeMode);
    gl::AddScriptCommand("unsaved", Unsaved);
    gl::AddScriptCommand("remember", Remember);
    gl::AddScriptCommand("unchanged", Unchanged);
    gl::AddScriptCommand("undo", UndoAndRedo);
    gl::AddScriptCommand("halfway", LeaveHalfway);
    gl::AddScriptCommand("drawn", IsDrawn);
    gl::AddScriptCommand("open", OpenFile);
    gl::AddScriptCommand("reopen", Reopen);
    gl::AddScriptCommand("run", RunInShell);
}
