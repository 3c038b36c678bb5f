#pragma once

#include <string>
#include <string_view>

// The user's settings and the places of the windows, kept in a text file in the home directory. Its form stands in
// docs/defaults-file.md.

/// 1 until a defaults file has been read.
extern int FirstTimeEver;

/// Finds the directories, then reads DefaultFile; when there is none, the file of an older version is renamed to it and
/// read. What the file does not tell, or tells wrongly, keeps its value.
void ReadDefaults(const char* programPath);

/// Writes DefaultFile; until the new file is complete the old one stays. Failures are told on the standard error
/// stream.
void WriteDefaults();

/// Applies the text of a defaults file, whatever it contains.
void ApplyDefaults(std::string_view text);

/// The text that WriteDefaults writes.
std::string DefaultsText();
