#include "files/unsaved_work.h"

#include "base/exit.h"
#include "files/file_commands.h"
#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/keyboard_walk.h"
#include "gooey/label.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "gooey/word_wrap.h"
#include "interaction/tool_protocol.h"
#include "platform/events.h"
#include "platform/windows.h"
#include "store/storage.h"

namespace {

constexpr int QuestionWidth = 400, QuestionHeight = 150;

enum Answer { AnswerSave, AnswerDiscard, AnswerCancel };

constexpr const char* Answers[] = {"Save", "Discard", "Cancel"};

void (*WorkNotSavedAction)();

void AnswerWith(Answer answer) {
    ButtonChoice = answer;
    WNSchange();
}

void QuestionEvent(int device, short value) {
    if (device != gl::KEYBD)
        return;
    if (value == ReturnCharacter)
        AnswerWith(AnswerSave);
    else if (value == EscapeCharacter)
        AnswerWith(AnswerCancel);
}

/// Whether the action may go on. A save that failed must not lose the work.
bool SaveOrDiscard(int answer) {
    if (answer != AnswerSave)
        return answer == AnswerDiscard;
    // Else the file would lack what is to be seen.
    if (ToolHoldsWork())
        FinishTool();
    if (DoFileOperation(FileSaveAtOnce))
        return true;
    AfterSavingAnyway(WorkNotSavedAction);
    return false;
}

} // namespace

void WorkNotSaved(void (*action)()) {
    if (WorkSaved && !ToolHoldsWork()) {
        action();
        return;
    }
    WorkNotSavedAction = action;
    if (QuitWindow && !QuitWindow->Closing) {
        const WindowScope scope(QuitWindow);
        gl::winpop();
        return;
    }
    DisableWindow(MainWindow);
    WindowAroundMouse(QuestionWidth, QuestionHeight);
    QuitWindow = OpenWindow(" FIleChanged!", 0, 0, nullptr, nullptr, QuestionEvent, CloseWNS, 0, MainWindow);
    AddBackdrop();
    Kirvo_AddGadget(WNSMessage, nullptr);
    SetDefaultButton(AddButtons(0, 8, QuestionWidth, 0, 3, Answers, WNSchange, nullptr, nullptr), 0);
}

void WNSMessage() {
    WindowWrite("File has changed, click \"Save\" to save changes, \"Discard\" to lose them");
}

void WNSchange() {
    Window* question = CurrentWindow;
    DisableWindow(question);
    if (SaveOrDiscard(ButtonChoice)) {
        const WindowScope scope(MainWindow);
        WorkNotSavedAction();
    }
    if (WindowIsOpen(question))
        CloseWindow(question);
}

void CloseWNS() {
    EnableWindow(MainWindow);
    // The action may have asked anew.
    if (QuitWindow != CurrentWindow)
        return;
    QuitWindow = nullptr;
    // Once the main window is being closed no answer takes that back.
    if (Quitting == 1)
        Quitting = 0;
}
