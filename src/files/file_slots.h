#pragma once

struct Window;

/// What reading and writing model files needs done above; each is skipped when null.
struct FileSlots {
    /// Shows a notice with a "Continue" button.
    void (*TellUser)(const char* text) = nullptr;
    /// Shows a warning with OK and Cancel; `answer` is called later, with 1 for OK and 0 for Cancel.
    void (*AskOkCancel)(const char* text, void (*answer)(int ok)) = nullptr;
    /// Opens a page of the manual.
    void (*OpenManual)(const char* page) = nullptr;
    /// The materials must be defined anew in the graphics layer before the next drawing. Called once an object.
    void (*RedefineMaterials)() = nullptr;
    /// Shows how far a read has come, 0 to 1: called with 0 first, then every so many bytes, and with 1 when it has
    /// ended, whatever came of it. Non-zero cancels the read.
    int (*ReadingProgress)(double part) = nullptr;
    /// Writes the user's defaults, so that the model of that moment is found again.
    void (*WriteDefaults)() = nullptr;
    /// Opens the merge window on the merge file of the store, which holds the file of that name, and returns it.
    Window* (*OpenMergeWindow)(const char* name) = nullptr;
};

extern FileSlots TheFileSlots;
