#include "shell/quitting.h"

#include "base/exit.h"
#include "files/unsaved_work.h"
#include "gooey/program_windows.h"
#include "gooey/window.h"
#include "views/main_window.h"

QuittingSlots TheQuittingSlots;

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
    const struct {
        int& Flag;
        int (*IsOpen)();
    } windows[] = {
        {SceneBuilderOpen, TheQuittingSlots.SceneBuilderIsOpen},
        {GridOpen, TheQuittingSlots.GridGizmoIsOpen},
        {PaletteOpen, TheQuittingSlots.MaterialPaletteIsOpen},
        {ObjectBrowserOpen, TheQuittingSlots.ObjectBrowserIsOpen},
        {StructureOpen, TheQuittingSlots.StructureEditorIsOpen},
        {TextureGizmoOpen, TheQuittingSlots.TextureGizmoIsOpen},
    };

    for (const auto& window : windows)
        if (window.IsOpen)
            window.Flag = window.IsOpen() != 0;
}
