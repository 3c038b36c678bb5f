#pragma once

#include <cstdint>

// Cursors drawn as text: one string a row, the first the top row, any character but a blank a set pixel.

/// The cursor of a window that is disabled.
inline constexpr int BusyCursor = 1;

/// Defines a cursor from 16 strings of 16 characters, or 32 of 32. The hot spot counts from the top-left corner. With a
/// mask, where the screen can show it, the shape lies on a solid silhouette and can be seen on any background.
void DefineCursor16(const char* const* picture, int index, int hotX, int hotY, int withMask);
void DefineCursor32(const char* const* picture, int index, int hotX, int hotY, int withMask);

/// The two planes of a cursor with a mask: the picture's rows, then the silhouette without the picture; bottom row
/// first, the leftmost pixel in the highest bit, rows of 32 as two words, the left one first.
void MakeMask16(std::uint16_t planes[32], const char* const* picture);
void MakeMask32(std::uint16_t planes[128], const char* const* picture);

void DefineBusyCursor();

/// Shows a cursor in the current window, which remembers it.
void SetCursor(int index);

/// Shows the busy cursor in the current window; Unbusy goes back to the one before, unless the window is disabled.
void Busy();
void Unbusy();
