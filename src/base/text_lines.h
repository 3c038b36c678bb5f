#pragma once

#include <cstdio>

// Reading of text files line by line. The last line read is kept in FileData, which every call here overwrites. Numbers
// are read with a "." whatever the user's locale.

/// The last line read, without its newline.
extern char FileData[1000];

/// Points just after the prefix, inside FileData, once FindLineInFile has found a line.
extern char* RestOfLine;

/// Reads one line, at most 999 characters of it (the rest of a longer one is the next line), into FileData, without its
/// newline and a carriage return before that. 0 at the end of the file.
int ReadLineFromFile(std::FILE* file);

/// Reads lines until one begins with the prefix, letter for letter, and sets RestOfLine. 0 when the file ends first.
int FindLineInFile(std::FILE* file, const char* prefix);

/// Reads the next line. When it begins with the key, upper and lower case being equal, returns what follows it and any
/// blanks; null when it does not, when nothing follows, and at the end of the file.
char* MatchAsciiLine(std::FILE* file, const char* key);

/// MatchAsciiLine, then `count` finite numbers separated by commas, with blanks allowed around them. 1 on success;
/// otherwise 0, and `destination` is as it was.
int ReadAsciiFloats(std::FILE* file, const char* key, float* destination, int count);

/// MatchAsciiLine, then exactly one of the `count` words, upper and lower case being equal: the index of the first such
/// word, or -1.
int ReadAsciiToken(std::FILE* file, const char* key, const char* const* words, int count);

/// Closes the file and returns 0: the way out of a reader that met an error.
int AsciiFileError(std::FILE* file);
