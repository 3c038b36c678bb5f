#include "gooey/list_rows.h"

#include "gooey/event_loop.h"
#include "gooey/modal.h"
#include "gooey/scroll_window.h"
#include "gooey/utf8.h"

#include <algorithm>
#include <strings.h>

namespace {

/// After such a pause, in clock ticks, typing begins anew.
constexpr long PrefixTicks = 100;

} // namespace

RowRange VisibleRows(const Gadget* scroll, int rowHeight, int count) {
    const ScrollWindow& s = ScrollOf(scroll);
    int first = s.VOffset / rowHeight, last = (s.VOffset + s.InnerH + rowHeight - 1) / rowHeight;
    return {std::min(first, count), std::clamp(last, 0, count)};
}

int RowsPerPage(const Gadget* scroll, int rowHeight) {
    return std::max(1, ScrollOf(scroll).InnerH / rowHeight);
}

void ShowRow(Gadget* scroll, int rowHeight, int row, int pad) {
    ScrollWindow& s = ScrollOf(scroll);
    int top = row * rowHeight, bottom = top + rowHeight + 2 * pad;
    s.VOffset = std::min(std::max(s.VOffset, bottom - s.InnerH), top);
    ConfigureScroll(scroll, -1, -1, s.W, s.H, s.ContentW, s.ContentH);
}

int MoveRowByKey(int character, int rowsPerPage, int count, int& row) {
    int target = row;
    switch (character) {
    case UpCharacter:
        target = row < 0 ? count - 1 : row - 1;
        break;
    case DownCharacter:
        target = row + 1;
        break;
    case PageUpCharacter:
        target = row - rowsPerPage;
        break;
    case PageDownCharacter:
        target = row + rowsPerPage;
        break;
    case HomeCharacter:
        target = 0;
        break;
    case EndCharacter:
        target = count - 1;
        break;
    default:
        return 0;
    }
    row = count ? std::clamp(target, 0, count - 1) : -1;
    return 1;
}

const std::string& TypedPrefix::Add(int character) {
    long now = ClockTicks();
    if (now - LastTime >= PrefixTicks)
        Typed.clear();
    LastTime = now;
    return Typed += EncodeCodePoint(CodePointOf(character));
}

bool TypedPrefix::Begins(const char* name) const {
    return strncasecmp(name, Typed.c_str(), Typed.size()) == 0;
}

bool TypedPrefix::RepeatsOne() const {
    return Typed.size() > 1 && Typed.find_first_not_of(Typed[0]) == std::string::npos;
}

bool TypedPrefix::BeginsWithOne(const char* name) const {
    return strncasecmp(name, Typed.c_str(), 1) == 0;
}
