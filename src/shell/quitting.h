#pragma once

// How the program is left: the main window asks, the user answers for unsaved work, the tool windows are remembered.

/// Whether the tool windows are open, for the flags of views/main_window.h. Null: there is no such window yet, and its
/// flag stays as the defaults file left it.
struct QuittingSlots {
    int (*SceneBuilderIsOpen)() = nullptr;
    int (*GridGizmoIsOpen)() = nullptr;
    int (*MaterialPaletteIsOpen)() = nullptr;
    int (*ObjectBrowserIsOpen)() = nullptr;
    int (*StructureEditorIsOpen)() = nullptr;
    int (*TextureGizmoIsOpen)() = nullptr;
};

extern QuittingSlots TheQuittingSlots;

/// The toolkit's QuitFunction: 1 lets the main window be shut. The first call asks about unsaved work and refuses; the
/// window is shut once the user has answered.
int ProgramQuit();

/// The quit action: remembers the open tool windows and closes the main window, which ends the program.
void DoQuit();

/// Sets the flags of the tool windows that are open.
void SetUpForQuit();
