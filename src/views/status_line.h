#pragma once

#include <cstdint>
#include <string>

// The line at the bottom of the main window: hints for the view under the pointer, or a running tool's instructions.
// Lists hold message numbers and end with 0; they belong to their setters.

/// What the running tool says; null: the hints of the view.
extern const std::int16_t* StatusList;
/// What a tool of the grid says, before StatusList; null: nothing.
extern const char* GridStatus;
/// What is said while a view moves; null: the next, or "Move...".
extern const char* MoveStatus;
extern const std::int16_t* MoveStatusList;

/// Says something once, in place of the hints, until the user does something else; "" ends it.
void ShowRemark(const std::string& text);
/// Shows a text at the right end of the line, at once; "" takes it away.
void ShowAtStatusEnd(const std::string& text);

/// Draws the line into the current window: the text, or the list's messages separated by ",  ", or nothing.
void DrawStatus(const char* text, const std::int16_t* list);
/// Draws a list's messages at the current position.
void DrawStatusList(const std::int16_t* list);
/// Draws what the main window has to say now; the main window is current.
void DrawStatusLine();
/// The same at once, in the front buffer.
void RefreshStatusLine();
/// Says at once that the program is drawing or moving, in the work-area window when that is current, else in the main
/// window; the usual line returns with the next redraw.
void BusyStatus();

/// Shows a line in place of all that for some seconds: something that the user should know and need not answer. The
/// main loop takes it away through ForgetOldStatusNote.
void ShowStatusNote(const std::string& text);
void ForgetOldStatusNote();

/// Notes whether the view that has the input is the 3D view, and shows its hints if that has changed.
void NoteFocusedView(int perspective);
/// Notes that the input went to a window; hints are shown only for the main window and the viewports.
void NoteInputWindow(bool hasHints);

/// What the line shows now, for reports.
std::string StatusText();
