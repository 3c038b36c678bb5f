#include "gooey/messages.h"

#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/keyboard_walk.h"
#include "gooey/label.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/text_input.h"
#include "gooey/window.h"

#include "platform/events.h"
#include "platform/system.h"

#include <string>

namespace {

constexpr int PromptFlags = TextLabelAbove;
constexpr int AddedWidth = 120, AddedHeight = 54;
constexpr int InputY = 46;

struct TextPrompt {
    Gadget* Input;
    const char* Buffer;
    void (*Callback)(const TextPromptContinuations& next);
};

TextPrompt& CurrentPrompt() {
    return WindowData<TextPrompt>(CurrentWindow);
}

void CorrectText() {
    EnableWindow(CurrentWindow);
    ActivateText(CurrentPrompt().Input, 1);
}

void AcceptText() {
    const TextPrompt& prompt = CurrentPrompt();
    if (!prompt.Buffer[0]) {
        gl::ringbell();
        ActivateText(prompt.Input, 1);
        return;
    }
    Window* window = CurrentWindow;
    DisableWindow(window);
    if (!prompt.Callback) {
        CloseWindow(window);
        return;
    }
    WindowScope scope(window);
    prompt.Callback({{window, CloseCurrentWindow}, {window, CorrectText}});
}

void ChooseButton() {
    if (ButtonChoice == 0)
        AcceptText();
    else
        CloseCurrentWindow();
}

void PromptEvent(int device, short value) {
    if (device == gl::KEYBD && value == ReturnCharacter)
        AcceptText();
    else if (device == gl::KEYBD && value == EscapeCharacter)
        CloseCurrentWindow();
}

} // namespace

void DoTextInput(const char* prompt, char* buffer, int length, void (*callback)(const TextPromptContinuations& next),
                 Window* parent) {
    DisableWindow(MainWindow);
    int width = StringWidth(prompt) + AddedWidth;
    WindowAroundMouse(width, InputHeight(PromptFlags) + AddedHeight);
    Window* window = OpenWindow(
        "Input", 0, 0, nullptr, nullptr, PromptEvent, [] { EnableWindow(MainWindow); }, sizeof(TextPrompt), parent);
    AddBackdrop();
    std::string initialText = buffer;
    Gadget* input = AddTextInput({.X = 16,
                                  .Y = InputY,
                                  .Width = width - 8,
                                  .Flags = PromptFlags,
                                  .Label = prompt,
                                  .Text = initialText.c_str(),
                                  .Buffer = buffer,
                                  .Size = length,
                                  .Callback = AcceptText});
    static constexpr const char* answers[] = {"OK", "Cancel"};
    SetDefaultButton(AddButtons(0, 8, width, 0, 2, answers, ChooseButton, nullptr, nullptr), 0);
    WindowData<TextPrompt>(window) = {input, buffer, callback};
    ActivateText(input, 0);
}
