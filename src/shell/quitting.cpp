#include "shell/quitting.h"

#include "base/exit.h"
#include "files/unsaved_work.h"
#include "gooey/program_windows.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"

namespace {

// What Quitting says.
enum QuitState { QuitRunning = 0, QuitAsked = 1, QuitConfirmed = 2 };

} // namespace

int ProgramQuit() {
    if (Quitting == QuitRunning) {
        Quitting = QuitAsked;
        WorkNotSaved(DoQuit);
        return 0;
    }
    return Quitting == QuitConfirmed;
}

void DoQuit() {
    SetUpForQuit();
    Quitting = QuitConfirmed;
    CloseWindow(MainWindow);
}

void SetUpForQuit() {
    NoteOpenToolWindows();
}
