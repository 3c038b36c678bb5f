#pragma once

#include <string>
#include <vector>

// Text broken into lines at blanks, in the normal font, in white. Lines that were broken because they were full are
// justified.

/// A line of wrapped text.
struct WrappedLine {
    std::string Text;
    /// Spread over the whole width.
    bool Justified;
    /// From its baseline to the next line's.
    int Descent;
};

/// Breaks a text into lines of at most `width` pixels; a word that is wider has a line of its own.
std::vector<WrappedLine> WrapText(const char* text, int width);

/// Draws a text so that its blanks fill up the width; plainly when it has none or is too wide.
void DrawJustified(int x, int y, int width, const char* text);

/// Where the next line of text is written, in window pixels.
extern int WWriteX, WWriteY;

/// Writes a text into the current window from the top, over its width less a margin; WriteMore goes on below it.
void WindowWrite(const char* text);
void WriteMore(const char* text);
/// The same in a column.
void ColumnWrite(const char* text, int columnX, int columnWidth);
void ColumnWriteMore(const char* text, int columnX, int columnWidth);
