#pragma once

// The question about unsaved work; its window is QuitWindow (gooey/program_windows.h).

/// Runs the action at once when the work is saved and no tool holds any; otherwise when the user has answered "Save"
/// and that succeeded, or "Discard". Asked again while the question is open, it goes on with the newer action. The
/// action runs with the main window current.
void WorkNotSaved(void (*action)());

/// The callback of the question's buttons, its message, and its close function.
void WNSchange();
void WNSMessage();
void CloseWNS();
