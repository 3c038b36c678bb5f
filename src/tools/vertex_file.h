#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

// Files of coordinates: a text with one place a line.

/// What has been read of one.
struct VertexFile {
    std::vector<std::array<double, 3>> Places;
    /// Lines that hold something else than a place.
    std::size_t UnreadableLines = 0;
    /// Why it could not be read, or not to its end; then there are no places. Empty when it was read.
    std::string Error;
    /// The user has given up; there are no places.
    bool Cancelled = false;
};

/// Reads a file of places with 2 or 3 coordinates, separated by blanks, tabs, commas or semicolons in any number, in
/// any usual notation with a decimal point, whatever the user's locale; z is 0 for 2. What follows on a line counts for
/// nothing, nor do empty lines, and what follows a "#". Lines end with a newline, a carriage return or both.
/// Coordinates too large to be shown make a line unreadable. `progress` is called with the part that has been read, 0
/// to 1, now and then: non-zero gives up.
VertexFile ReadVertexFile(const char* path, int dimensions, int (*progress)(double part));
