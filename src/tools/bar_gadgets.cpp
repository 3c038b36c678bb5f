#include "tools/bar_gadgets.h"

#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "interaction/tool_protocol.h"

namespace {

constexpr int DeleteLast = 71;
/// Pixels; longer texts are written small, so that the buttons have room in a window of the first size.
constexpr int WidestBigText = 240;

void TypeBackspace() {
    SendToolKey(nullptr, BackspaceCharacter);
}

} // namespace

void AddBarText(int message) {
    const char* text = msg(message);
    AddText(8, BarTextY, text, StringWidth(text) <= WidestBigText);
}

void AddDeleteLastButton() {
    AddIntButtons(GooeyRight, BarButtonY, 0, ButtonsOfTextWidth | ButtonsSmallFont, 1, &DeleteLast, TypeBackspace,
                  nullptr, nullptr);
}
