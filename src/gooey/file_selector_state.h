#pragma once

#include "gooey/file_listing.h"
#include "gooey/window.h"

#include "base/file_names.h"

#include <string>

struct Gadget;

// What the parts of the file selector share: its window's data, and what they ask of each other. All of it concerns the
// current window, which is a selector.

struct FileSelector {
    int Mode;
    /// The root is "".
    char Directory[MaxFileName];
    char Name[MaxFileName];
    void (*Callback)(int mode, const char* directory, const char* name);
    char OriginalDirectory[MaxFileName];
    /// Owned; what the last scan of the directory found.
    FileListing* Listing;
    char Extension[MaxFileName];
    /// The button of the bottom pair that is shown pressed; -1: none.
    int Choice;
    int ShowBackups;
    /// What the window is higher for the check box of backup files.
    int ExtraHeight;
    /// The user's choice has gone to the callback.
    bool Accepted;
    Gadget* List;
    /// Null but in save mode.
    Gadget* NameInput;
    Gadget* Buttons;
    /// In place of the directory line while a path is being typed; its text is Path.
    Gadget* PathInput;
    char Path[MaxFileName];
};

inline FileSelector& CurrentSelector() {
    return WindowData<FileSelector>(CurrentWindow);
}

inline bool SelectorSaves(const FileSelector& selector) {
    return (selector.Mode & 3) == 1;
}

// ---- the directory
/// Scans the directory again; nothing is selected then, and in open mode the name is emptied.
void RescanDirectory();
/// RescanDirectory, and shows it.
void RefreshSelector();
/// Goes to a directory and shows it.
void ChangeDirectory(const std::string& directory);
/// The beginning of the text left out as far as needed for the rest to fit into the width, in the small font.
const char* EndThatFits(const char* text, int width);

// ---- the list
void AddFileList(int x, int y);
/// Exchanges the rows for those of the listing.
void ShowListing();
/// Selects the row with this name, if there is one; a file's becomes the file's name.
void SelectName(const std::string& name);

// ---- the line of the directory
void AddDirectoryLine();
void AddPathInput();
/// Puts an input in place of the directory line.
void StartPathEntry(const char* text);
void EndPathEntry();
bool PathIsEntered();
/// Goes where a path leads: into a directory, or to a file, which is taken in the modes that read.
void FollowPath(const std::string& typed);

// ---- the name
/// Makes a name the file's, in the input as well.
void SetSelectorName(const char* name);
/// Accepts the file as if the first button of the bottom pair had been pressed.
void AcceptByKey();
