#pragma once

#include <cstdint>

// A question that clicks in the views answer: meanwhile the views stay live, and all else of the main window and its
// tool windows takes no input. The caller installs the hooks that get the clicks. One at a time.

/// Shows the text in place of the menus or tool bar, and the status list in place of the present one; both stay the
/// caller's. `giveUp` takes the caller's hooks away and calls EndViewPrompt. 0, and nothing happens, when there is a
/// question already.
int BeginViewPrompt(const char* text, const std::int16_t* status, void (*giveUp)());
/// Gives the question up, before what it was asked over ends.
void GiveUpViewPrompt();
/// Lets viewports that have been opened meanwhile stay live as well.
void LetViewsAnswer();
/// Brings everything back; nothing when there is no question. When the main window has gone, only gives back memory.
void EndViewPrompt();
