#include "files/foreign_changes.h"

#include "base/file_names.h"
#include "files/writer.h"
#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/label.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "gooey/word_wrap.h"
#include "platform/events.h"
#include "platform/windows.h"

#include <filesystem>
#include <utility>

FileOnDisk KnownFile;

namespace {

constexpr int QuestionWidth = 420, QuestionHeight = 170;

constexpr const char* Answers[] = {"Save anyway", "Save as...", "Cancel"};

Window* Question = nullptr;
std::string QuestionText;
void (*AnswerCallback)(ForeignChangeAnswer) = nullptr;

void Answer(ForeignChangeAnswer answer) {
    Window* question = CurrentWindow;
    const auto callback = std::exchange(AnswerCallback, nullptr);
    if (callback) {
        DisableWindow(question);
        const WindowScope scope(question);
        callback(answer);
    }
    if (WindowIsOpen(question) && !question->Closing)
        CloseWindow(question);
}

void QuestionEvent(int device, short value) {
    if (device != gl::KEYBD)
        return;
    if (value == ReturnCharacter)
        Answer(ForeignChangeAnswer::SaveAs);
    else if (value == EscapeCharacter)
        Answer(ForeignChangeAnswer::Cancel);
}

void QuestionClosed() {
    Question = nullptr;
    if (MessageWindow == CurrentWindow)
        MessageWindow = nullptr;
    EnableWindow(MainWindow);
}

} // namespace

void RememberFileOnDisk(const std::string& path) {
    KnownFile = {path, IdentityOfFile(path.c_str())};
}

int FileChangedOnDisk(const std::string& path) {
    if (path != KnownFile.Path)
        return 0;
    const FileIdentity now = IdentityOfFile(path.c_str());
    return now.There && now != KnownFile.Identity;
}

void AskAboutForeignChange(const std::string& path, void (*answer)(ForeignChangeAnswer)) {
    if (AskingAboutForeignChange()) {
        const WindowScope scope(Question);
        gl::winpop();
        return;
    }
    const auto name = [](const std::string& of) { return std::filesystem::path(of).filename().string(); };
    QuestionText = name(path) + " has been changed by another program since it was loaded.\n\n\"" + Answers[0] +
                   "\" keeps that version beside it, as " + name(FreeNameForForeignVersion(path)) + ".";
    AnswerCallback = answer;
    DisableWindow(MainWindow);
    WindowAroundMouse(QuestionWidth, QuestionHeight);
    Question = MessageWindow =
        OpenWindow(" File changed on disk", 0, 0, nullptr, nullptr, QuestionEvent, QuestionClosed, 0, MainWindow);
    AddBackdrop();
    Kirvo_AddGadget([] { WindowWrite(QuestionText.c_str()); }, nullptr);
    AddButtons(
        0, 8, QuestionWidth, 0, 3, Answers, [] { Answer(static_cast<ForeignChangeAnswer>(ButtonChoice)); }, nullptr,
        nullptr);
}

int AskingAboutForeignChange() {
    return Question && WindowIsOpen(Question) && !Question->Closing;
}
