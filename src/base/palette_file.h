#pragma once

#include <cstdio>
#include <functional>
#include <string>

// What text files of materials and of textures have in common: a header line with a version, then entries.

/// Writes the header, version 1.00, and what `writeEntries` writes. 0, with errno set, when that fails, which is told
/// on the standard error stream by the `kind` of the file; an older file of that name then stays as it was.
int WritePaletteFile(const char* name, const char* kind, const char* header,
                     const std::function<void(std::FILE* file)>& writeEntries);

/// A text of the user's as one line that follows `key` and that ReadLineFromFile reads whole: line breaks become
/// blanks, and what is too long is cut off.
std::string OnOneLine(const char* key, const char* text);

/// After a line that does not fit into its entry: whether another entry follows, at that line or later. RestOfLine is
/// then what follows its key.
bool FindNextEntry(std::FILE* file, const char* key);
