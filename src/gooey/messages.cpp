#include "gooey/messages.h"

#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/keyboard_walk.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/window.h"
#include "gooey/word_wrap.h"

#include "base/memory.h"

#include "platform/events.h"
#include "platform/windows.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr int BoxWidth = 350, BoxHeight = 150;
constexpr int TextMargin = 8;
constexpr int ContinueX = 242;
/// The lowest baseline that stays clear of the buttons.
constexpr int LowestBaseline = 46;
constexpr int NotifierHeight = 76;
/// The main loop's passes from one raising to the next.
constexpr int PassesBetweenRaises = 50;

struct MessageBox {
    char* Text;
    /// Null: the box only waits to be read.
    void (*Callback)(int ok);
};

MessageBox& CurrentBox() {
    return WindowData<MessageBox>(CurrentWindow);
}

/// How much a box must be higher than usual so that its text does not run into the buttons.
int ExtraHeightFor(const char* text, bool question) {
    int width = BoxWidth - 2 * TextMargin;
    int baseline = BoxHeight - 26, lowest = LowestBaseline;
    for (const WrappedLine& line : WrapText(text, width)) {
        int end = TextMargin + (line.Justified ? width : StringWidth(line.Text.c_str()));
        if (question || end >= ContinueX || baseline < TextMargin)
            lowest = std::min(lowest, baseline);
        baseline -= line.Descent;
    }
    return LowestBaseline - lowest;
}

void Answer(int ok) {
    Window* window = CurrentWindow;
    void (*callback)(int) = std::exchange(CurrentBox().Callback, nullptr);
    if (callback) {
        WindowScope scope(window);
        callback(ok);
    }
    if (WindowIsOpen(window) && !window->Closing)
        CloseWindow(window);
}

void BoxEvent(int device, short value) {
    if (device == gl::KEYBD && value == ReturnCharacter)
        Answer(1);
    else if (device == gl::KEYBD && value == EscapeCharacter)
        Answer(0);
}

void ForgetMessageWindow() {
    if (MessageWindow == CurrentWindow)
        MessageWindow = nullptr;
}

void BoxClosed() {
    FreeOwnedText(CurrentBox().Text);
    ForgetMessageWindow();
    EnableWindow(MainWindow);
}

void DrawBoxText() {
    WindowWrite(CurrentBox().Text);
}

void OpenMessageBox(const char* text, const char* title, void (*callback)(int ok)) {
    DisableWindow(MainWindow);
    WindowAroundMouse(BoxWidth, BoxHeight + ExtraHeightFor(text, callback != nullptr));
    Window* box = OpenWindow(title, 0, 0, nullptr, nullptr, BoxEvent, BoxClosed, sizeof(MessageBox), MainWindow);
    WindowData<MessageBox>(box) = {CopyOfString(text), callback};
    MessageWindow = box;
    AddBackdrop();
    Kirvo_AddGadget(DrawBoxText, nullptr);
    if (callback) {
        static constexpr const char* answers[] = {"OK", "Cancel"};
        const Gadget* group = AddButtons(
            0, 8, BoxWidth, 0, 2, answers, [] { Answer(ButtonChoice == 0); }, nullptr, nullptr);
        SetDefaultButton(group, 0);
    } else {
        static constexpr int answers[] = {MsgContinue};
        const Gadget* group = AddIntButtons(
            ContinueX, 8, 100, ButtonsOfGivenWidth, 1, answers, [] { Answer(1); }, nullptr, nullptr);
        SetDefaultButton(group, 0);
    }
}

void CloseOnKey(int device, short value) {
    if (device == gl::KEYBD && (value == ReturnCharacter || value == EscapeCharacter))
        CloseCurrentWindow();
}

void NotifierClosed() {
    WindowCallback callback = WindowData<WindowCallback>(CurrentWindow);
    ForgetMessageWindow();
    if (callback.Function && (!callback.Target || WindowIsOpen(callback.Target)))
        WindowCall(callback);
}

} // namespace

void TellUserS(const char* text) {
    OpenMessageBox(text, msg(MsgNoticeTitle), nullptr);
}

void TellUser(int message) {
    OpenMessageBox(msg(message), msg(MsgErrorTitle), nullptr);
}

void WarnUser(int message) {
    OpenMessageBox(msg(message), msg(MsgWarningTitle), nullptr);
}

void DoOkCancel(const char* text, void (*callback)(int ok)) {
    OpenMessageBox(text, msg(MsgWarningTitle), callback);
}

void DoNotifier(const char* text, const WindowCallback& callback, Window* parent) {
    int width = StringWidth(text) + 24;
    WindowAroundMouse(width, NotifierHeight);
    Window* window =
        OpenWindow("Notifier", 0, 0, nullptr, nullptr, CloseOnKey, NotifierClosed, sizeof(WindowCallback), parent);
    WindowData<WindowCallback>(window) = callback;
    MessageWindow = window;
    AddBackdrop();
    AddText(8, 50, text, 1);
    static constexpr int answers[] = {MsgCancel};
    const Gadget* group =
        AddIntButtons(0, 8, std::max(width, 120), 0, 1, answers, CloseCurrentWindow, nullptr, nullptr);
    SetDefaultButton(group, 0);
}

void PopMessageWindows() {
    static int passes = 0;
    if (!MessageWindow || QuitWindow) {
        passes = 0;
        return;
    }
    if (++passes % PassesBetweenRaises)
        return;
    WindowScope scope(MessageWindow);
    gl::winpop();
}

void ErrorMessage(const char* text) {
    std::fprintf(stderr, "\n\nKirvo:%s\a\n", text);
}
