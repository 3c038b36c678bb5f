#pragma once

#include "gooey/gadget_skeleton.h"

// The window that shows the file information, and lets it be edited in place where this machine owns it.

struct Window;

/// The open window, or null.
extern Window* FileComment;

/// Opens the window; nothing when it is open.
void ShowFileComment();

/// Its close function.
void CloseFileComment();

/// The callback of its box "File is public domain": only the owner may take that back.
void ChangeCommentCheck(GadgetArg arg);

/// The filter of its text inputs: accepts every character.
int CommentFilter(int& character, int position, const char* text);
