#include "shell/start_up.h"

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "base/debug.h"
#include "base/directories.h"
#include "base/exit.h"
#include "base/file_names.h"
#include "base/file_replacement.h"
#include "base/memory.h"
#include "files/checkpoints.h"
#include "files/conversions.h"
#include "files/converters.h"
#include "files/file_commands.h"
#include "files/file_errors.h"
#include "gooey/event_loop.h"
#include "gooey/file_selector.h"
#include "gooey/gadget_commands.h"
#include "gooey/information_window.h"
#include "gooey/manual.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/report.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/pick_hierarchies.h"
#include "interaction/preselection.h"
#include "interaction/tool_protocol.h"
#include "platform/display_loss.h"
#include "platform/scripts.h"
#include "platform/system.h"
#include "platform/tessellation.h"
#include "platform/text.h"
#include "platform/windows.h"
#include "shell/command_line.h"
#include "shell/defaults.h"
#include "shell/desktop_place.h"
#include "shell/dropped_files.h"
#include "shell/model_report.h"
#include "shell/quitting.h"
#include "shell/script_positions.h"
#include "shell/slots.h"
#include "store/accessors.h"
#include "store/pools.h"
#include "store/storage.h"
#include "views/main_window.h"
#include "views/status_line.h"

namespace {

// The installation's own font, so that pictures do not depend on the machine's. A program that was not installed keeps
// the one of its source tree.
void UseInstalledFont() {
    gl::SetFontFile(std::string(KirvoDir) + "/data/fonts/LiberationSans-Regular.ttf");
}

void OpenScreen() {
    RestoreDesktopPlace();
    InstallGadgetCommands();
    gl::ScriptPosition = FindModelPosition;
    AddToReport = ReportModel;
    AddTreeToReport = ReportScene;
    OpenMainWindow();
    InitPreselection();
    QuitFunction = ProgramQuit;
    WindowChange = ChangeWindow;
    SpecialEvent = HandleSpecialEvents;
}

// A new model, with what the user wants in it.
void StartNewModel() {
    StartingUp = 0;
    if (!FilePath[0])
        CopyFileName(FilePath, HomeDir);
    ResetStorage();
    CurrentObject();
}

// What an interrupted program left, or the model that the command line or the defaults file names; a new one when there
// is none. A file that cannot be read leaves a new model and is not told about.
void TakeFirstModel(int argumentCount, char* const arguments[]) {
    RemoveUnfinishedReplacements(".", KirvoExtension);
    if (LoadCheckpoint()) {
        RemoveUnfinishedReplacements(FilePath, KirvoExtension);
        ChangeWindowTitle();
        return;
    }
    CheckArgs(argumentCount, arguments);
    if (!FileName[0]) {
        StartNewModel();
        ChangeWindowTitle();
        return;
    }
    FileErrorOk = 1;
    DoFileOp(FileToOpen, FilePath, FileName);
    FileErrorOk = 0;
}

void RaiseQuitWindow() {
    if (!QuitWindow)
        return;
    WindowScope scope(QuitWindow);
    gl::winpop();
}

void TellOfUnfilledPolygons() {
    static std::size_t told = 0;
    if (gl::HopelessOutlines() > told)
        ShowStatusNote("A polygon is too intricate to be filled: only its outline is drawn.");
    told = gl::HopelessOutlines();
}

void RunMainLoop() {
    for (int state = CheckEvents(); state != -1 && MainWindow; state = CheckEvents()) {
        UpdateWindowTitle();
        TellOfUnfilledPolygons();
        UpdateStatusLine();
        MakeCheckpoint();
        PopInfoWindow();
        RaiseQuitWindow();
        PopMessageWindows();
        CheckManualOpener();
        OpenDroppedFiles();
        if (state == 0)
            PrepareSelection();
        UpdatePreselection(state == 0);
    }
}

// Releases all that is left of both files, so that a developer build's report of memory shows only what was lost. Users
// need not wait for it: the system takes the memory back faster.
void ReleaseModels() {
    for (const int merging : {1, 0}) {
        PointToMerge(merging);
        ResetStorage();
    }
    FreeWorkPolys();
    FreeClippingBeads();
}

[[noreturn]] void EndKirvo() {
    Quitting = 1;
    RememberDesktopPlace();
    // Nobody is asked any more.
    QuitFunction = nullptr;
    CloseAllWindows();
    WriteDefaults();
    DeleteCheckpoint();
    EndToolkit();
    EndConversions();
    if (DeveloperBuild)
        ReleaseModels();
    KillProgram(NormalEnd);
}

// A signal asked for the end: as before, but that nothing is lost by it.
[[noreturn]] void EndBySignal() {
    StopWaitingForEnd();
    // What a tool has prepared is work, too.
    if (ToolHoldsWork())
        FinishTool();
    SaveWorkInCheckpoint();
    EndAsAsked();
}

// The desktop has gone, in the midst of anything but a change of the model: those never wait for it.
void KeepWorkWithoutDisplay() {
    SaveWorkInCheckpoint();
}

} // namespace

void RunKirvo(int argumentCount, char* const arguments[]) {
    TrapStuff();
    OpenDebugStream();
    MemoryTracking(1);
    StartingUp = 1;
    ReadDefaults(argumentCount > 0 ? arguments[0] : "Kirvo");
    UseInstalledFont();
    FillSlots();
    FindConverters();
    InitialiseStorage();
    OpenScreen();
    TakeFirstModel(argumentCount, arguments);
    StartingUp = 0;
    OpenUserWindows();
    srand48(gl::RandomSeed());
    LetSignalsWait();
    gl::DisplayLost = KeepWorkWithoutDisplay;
    RunMainLoop();
    if (EndAsked())
        EndBySignal();
    EndKirvo();
}
