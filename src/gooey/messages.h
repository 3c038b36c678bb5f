#pragma once

#include "gooey/window_stack.h"

// Messages to the user: small windows around the pointer. Box and question disable the main window while they are open;
// none of these functions waits for the answer.

/// A message with the button "Continue": a notice with a text of its own, an error and a warning by message number.
void TellUserS(const char* text);
void TellUser(int message);
void WarnUser(int message);

/// A question. The answer goes to callback(1) for "OK" and Return, callback(0) for "Cancel" and Escape; closing the
/// window by its frame answers nothing.
void DoOkCancel(const char* text, void (*callback)(int ok));

/// A line of text over `parent`. When it is closed the callback runs, unless its window has gone or it has none.
void DoNotifier(const char* text, const WindowCallback& callback, Window* parent);

/// What a text prompt's callback may go on with, by WindowCall: to close the prompt, or to have the text corrected.
struct TextPromptContinuations {
    WindowCallback Close;
    WindowCallback Retry;
};

/// Asks for a line of letters, digits and blanks, at least one. `buffer` holds the text to begin with and gets the
/// answer: `length` bytes, UTF-8, to stay valid while the prompt is open. callback() gets the prompt disabled and
/// decides how to go on. Nothing is called back when the user cancels. The main window is disabled meanwhile.
void DoTextInput(const char* prompt, char* buffer, int length, void (*callback)(const TextPromptContinuations& next),
                 Window* parent);

/// Raises an open message above the other windows now and then, so that it is not lost. For the main loop, after every
/// pass.
void PopMessageWindows();

/// Tells of an error of the program itself on the standard error stream.
void ErrorMessage(const char* text);
