#pragma once

#include "gooey/text_input.h"

#include <string>

// Editing the text of an input by characters: cursor, selection, insertion through the filter, clipboard. Nothing here
// draws or calls back. Positions are character boundaries, 0 to the number of characters.

/// From one character boundary to another.
struct TextRange {
    int First, Last;
};

/// What a key did to the text.
enum class TextEdit { Nothing, MovedCursor, ChangedText };

/// The selection; empty, at the cursor, when nothing is selected.
TextRange SelectionOf(const TextInput& input);
/// The characters in a range.
std::string TextIn(const TextInput& input, TextRange range);

/// Moves the cursor, within the text; the selection's other end stays or comes along.
void MoveTextCursor(TextInput& input, int character, bool extendSelection);
/// Selects the word around the cursor; everything.
void SelectWord(TextInput& input);
void SelectAll(TextInput& input);

/// Puts the whole of a text, in place of what is there, into the input's buffer, the cursor at its end if it is active.
/// 0 when it was too long and had to be cut.
int SetInputText(TextInput& input, const char* text);

/// Does what a key asks for. Characters go through the input's filter and must fit its buffer.
TextEdit EditText(TextInput& input, int character);
