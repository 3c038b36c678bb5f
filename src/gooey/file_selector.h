#pragma once

struct Window;

// The window in which the user chooses a file to open, save or merge. There is at most one.

/// What the file is chosen for: bits 0 and 1 of a mode.
inline constexpr int FileToOpen = 0;
inline constexpr int FileToSave = 1;
inline constexpr int FileToMerge = 2;
inline constexpr int FilePurposeBits = 3;
/// Added to a mode: the user may have backup files shown.
inline constexpr int FileOffersBackups = 4;
/// The picture of the selected file is shown (gooey/file_preview.h).
inline constexpr int FileShowsPicture = 8;

/// The open file selector, or null.
extern Window* FileSelectorWindow;

/// Opens the selector on a directory (null: the working directory), with a name to begin with and the ending of the
/// files shown (each may be null: none). `parent` (null: the current window) is disabled while it is open. The user's
/// choice goes to callback(mode & FilePurposeBits, directory, name), a slash being left out between them; then the
/// selector closes. Before an existing file is saved over the user is asked. When a selector is open already it is
/// raised, and nothing else happens.
void DoFileSelector(int mode, const char* directory, const char* initialName, const char* extension,
                    void (*callback)(int mode, const char* directory, const char* name), Window* parent);

/// Draw the list of files, and the line that shows the name in the modes without a text input.
void FWDraw(int innerX, int innerY, int innerW, int innerH, int hOffset, int vOffset);
void DrawFilePrompt();
