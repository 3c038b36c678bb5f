#include "gooey/word_wrap.h"

#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/window.h"

#include <algorithm>
#include <cstring>

int WWriteX = 0, WWriteY = 0;

namespace {

constexpr int Margin = 8;
/// From the top of a window to the first baseline.
constexpr int FirstLineBelowTop = 26;
/// Below a line that a newline ended, and below any other.
constexpr int DescentAtNewline = 18, DescentAtWrap = 24;

void WriteAtPosition(const char* text, int width) {
    for (const WrappedLine& line : WrapText(text, width)) {
        if (line.Justified)
            DrawJustified(WWriteX, WWriteY, width, line.Text.c_str());
        else
            DrawText(WWriteX, WWriteY, line.Text.c_str(), White);
        WWriteY -= line.Descent;
    }
}

} // namespace

std::vector<WrappedLine> WrapText(const char* text, int width) {
    std::vector<WrappedLine> lines;
    const char* lineStart = text;
    const char* previousEnd = nullptr;
    const char* wordStart = text;
    auto upTo = [&](const char* end) { return std::string(lineStart, end); };
    auto startLineAt = [&](const char* start) {
        lineStart = wordStart = start;
        previousEnd = nullptr;
    };
    for (;;) {
        const char* wordEnd = wordStart + std::strcspn(wordStart, " \n");
        bool fits = StringWidth(upTo(wordEnd).c_str()) <= width;
        if (!fits && previousEnd) {
            lines.push_back({upTo(previousEnd), true, DescentAtWrap});
            startLineAt(wordStart);
            continue;
        }
        bool textEnds = *wordEnd == '\0';
        if (!fits || *wordEnd == '\n') {
            lines.push_back({upTo(wordEnd), false, fits ? DescentAtNewline : DescentAtWrap});
            if (textEnds)
                return lines;
            startLineAt(wordEnd + 1);
            continue;
        }
        if (textEnds) {
            lines.push_back({upTo(wordEnd), false, DescentAtWrap});
            return lines;
        }
        previousEnd = wordEnd;
        wordStart = wordEnd + 1;
    }
}

void DrawJustified(int x, int y, int width, const char* text) {
    int spare = width - StringWidth(text);
    int blanks = static_cast<int>(std::count(text, text + std::strlen(text), ' '));
    if (spare <= 0 || blanks == 0) {
        DrawText(x, y, text, White);
        return;
    }
    int blankWidth = StringWidth(" ");
    for (const char* word = text;;) {
        const char* end = word + std::strcspn(word, " ");
        std::string part(word, end);
        DrawText(x, y, part.c_str(), White);
        if (!*end)
            return;
        int share = spare / blanks;
        x += StringWidth(part.c_str()) + blankWidth + share;
        spare -= share;
        --blanks;
        word = end + 1;
    }
}

void WindowWrite(const char* text) {
    ColumnWrite(text, 0, CurrentWindow->Width);
}

void WriteMore(const char* text) {
    ColumnWriteMore(text, 0, CurrentWindow->Width);
}

void ColumnWrite(const char* text, int columnX, int columnWidth) {
    WWriteY = CurrentWindow->Height - FirstLineBelowTop;
    ColumnWriteMore(text, columnX, columnWidth);
}

void ColumnWriteMore(const char* text, int columnX, int columnWidth) {
    WWriteX = columnX + Margin;
    WriteAtPosition(text, columnWidth - 2 * Margin);
}
