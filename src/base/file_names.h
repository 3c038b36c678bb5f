#pragma once

#include <cstddef>

/// The extension of the program's own model files.
constexpr char KirvoExtension[] = ".kirvo";

/// Room for a path or a name with its closing null, as the globals that hold one have it.
constexpr std::size_t MaxFileName = 4096;

/// Splits a path at its last "/": `directory` is everything before it (empty when there is none, and for a path
/// directly under the root), `name` everything after it. Both point into one buffer that the next call overwrites;
/// `path` may itself lie in that buffer.
void SplitFileName(const char* path, char*& directory, char*& name);

/// Copies `text` into a buffer of `capacity` bytes. Returns 0, and leaves the buffer as it was, when it does not fit.
int CopyFileName(char* destination, std::size_t capacity, const char* text);

/// Appends the extension to the name, in a buffer of `capacity` bytes, unless the name already ends with it; a null
/// extension does nothing. Returns 0, and leaves the name as it was, when it does not fit.
int AddExtension(char* name, std::size_t capacity, const char* extension);

/// Removes a trailing KirvoExtension when the name is longer than it and ends with it.
void ChopOffKirvo(char* name);

template <std::size_t Capacity>
int CopyFileName(char (&destination)[Capacity], const char* text) {
    return CopyFileName(destination, Capacity, text);
}

template <std::size_t Capacity>
int AddExtension(char (&name)[Capacity], const char* extension) {
    return AddExtension(name, Capacity, extension);
}
