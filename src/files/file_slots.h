#pragma once

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
};

extern FileSlots TheFileSlots;
