#pragma once

// How the program is left: the main window asks, the user answers for unsaved work, the tool windows are remembered.

/// The toolkit's QuitFunction: 1 lets the main window be shut. The first call asks about unsaved work and refuses; the
/// window is shut once the user has answered.
int ProgramQuit();

/// The quit action: remembers the open tool windows and closes the main window, which ends the program.
void DoQuit();

/// Sets the flags of the tool windows that are open.
void SetUpForQuit();
