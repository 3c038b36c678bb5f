#include "gooey/message_gadgets.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/label.h"
#include "gooey/message_table.h"

#include <vector>

namespace {

/// From the bottom of a button to the baseline of its text.
constexpr int TextAboveButton = 8;

} // namespace

Gadget* AddIntButtons(int x, int y, int width, int flags, int count, const int* messages, void (*callback)(),
                      int* selected, const int* geometry) {
    std::vector<const char*> labels;
    for (int i = 0; i < count; ++i)
        labels.push_back(msg(messages[i]));
    return AddButtons(x, y, width, flags, count, labels.data(), callback, selected, geometry);
}

Gadget* AddIntCheck(int x, int y, int width, int flags, GadgetArg arg, int message, void (*callback)(GadgetArg arg),
                    int* value) {
    return AddCheckBox(x, y, width, flags, arg, msg(message), callback, value);
}

Gadget* AddPromptedButtons(int x, int y, int width, int flags, const char* prompt, int count, const char* const* labels,
                           void (*callback)(), int* selected) {
    bool small = flags & ButtonsSmallFont;
    int promptWidth = FontOf(small).Width(prompt);
    AddText(x, y + TextAboveButton, prompt, !small);
    return AddButtons(x + promptWidth, y, width - promptWidth, flags, count, labels, callback, selected, nullptr);
}
