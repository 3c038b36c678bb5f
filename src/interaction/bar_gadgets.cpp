#include "interaction/bar_gadgets.h"

#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/window.h"
#include "interaction/tool_protocol.h"

namespace {

constexpr int DeleteLast = 71;
/// Pixels that the text leaves to other gadgets, or else is written small: as far as it goes, the buttons are to have
/// room in the window.
constexpr int RoomForOthers = 510;

void TypeBackspace() {
    SendToolKey(nullptr, BackspaceCharacter);
}

} // namespace

Gadget* AddBarText(int message) {
    const char* text = msg(message);
    return AddText(8, BarTextY, text, StringWidth(text) <= CurrentWindow->Width - RoomForOthers);
}

void AddDeleteLastButton() {
    AddIntButtons(GooeyRight, BarButtonY, 0, ButtonsOfTextWidth | ButtonsSmallFont, 1, &DeleteLast, TypeBackspace,
                  nullptr, nullptr);
}
