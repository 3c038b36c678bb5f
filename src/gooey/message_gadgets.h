#pragma once

#include "gooey/gadget_skeleton.h"

// Gadgets whose labels are texts of the message table, and buttons behind a prompt.

/// AddButtons with message numbers for labels.
Gadget* AddIntButtons(int x, int y, int width, int flags, int count, const int* messages, void (*callback)(),
                      int* selected, const int* geometry);

/// AddCheckBox with a message number for a label.
Gadget* AddIntCheck(int x, int y, int width, int flags, GadgetArg arg, int message, void (*callback)(GadgetArg arg),
                    int* value);

/// A row of buttons with a text in front of it, both within `width`.
Gadget* AddPromptedButtons(int x, int y, int width, int flags, const char* prompt, int count, const char* const* labels,
                           void (*callback)(), int* selected);
