#pragma once

/// Lets the user choose a file of coordinates and how many a line has, and adds a vertex to the current object for each
/// line (see ReadVertexFile). Tells how many there were, and how many lines could not be read. No undo snapshot is
/// taken.
void ReadVerticesFromFile();

/// What reading needs of others; skipped when null.
struct VertexFileSlots {
    /// Called with 0 at the beginning, then with the part that has been read, and with 1 at the end. Non-zero: the user
    /// gives up.
    int (*ReadingProgress)(double part) = nullptr;
};

extern VertexFileSlots TheVertexFileSlots;
