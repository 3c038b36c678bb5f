#pragma once

/// Text files that a palette is read from and written to, chosen by the user in the file selector.
struct PaletteFiles {
    const char* Extension;
    /// Reads a file into the list of what was loaded. 0 when it holds nothing.
    int (*Read)(const char* name);
    /// Adds what was loaded to the model's own.
    void (*Merge)();
    /// 0, with errno set, when the file cannot be written.
    int (*Write)(const char* name);
    /// Begin what the user is told: before the name of a file that holds nothing, and before why one is not written.
    const char *NothingIn, *CannotWrite;
};

/// What the file selector calls with the directory and the name of the chosen file. Saving adds the extension if the
/// name lacks it. Both tell the user of a failure.
void LoadPaletteFile(const PaletteFiles& files, const char* directory, const char* name);
void SavePaletteFile(const PaletteFiles& files, const char* directory, const char* name);
