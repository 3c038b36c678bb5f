#pragma once

#include <cstddef>
#include <string>

// UTF-8 text by characters. A byte that belongs to no valid character counts as a character of its own.

/// Characters in the text.
int CharactersIn(const char* text);
/// Where the character with this index begins, in bytes; the text's length when there are fewer.
std::size_t ByteOfCharacter(const char* text, int character);
/// The code point that begins at `text`, which is moved past it; U+FFFD for an invalid byte, 0 at the end.
int NextCodePoint(const char*& text);
/// The character's bytes; "" for what is no character.
std::string EncodeCodePoint(int codePoint);
/// The longest beginning of the text that has at most `bytes` bytes and ends between two characters.
std::size_t WholeCharactersWithin(const char* text, std::size_t bytes);
