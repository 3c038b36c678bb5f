#pragma once

struct Window;

#include <string>

/// Compares what a window shows with tests/gooey/references/NAME.png. A few pixels may differ, as processors round
/// differently; otherwise the test fails and the picture and its difference are left in the folder that the message
/// names. Run the tests with KIRVO_ACCEPT_REFERENCES=1 to make what is shown the new reference.
void ExpectPicture(const Window* window, const std::string& name);

/// The same for the whole screen, with menus and all windows, without the pointer.
void ExpectScreenPicture(const std::string& name);
