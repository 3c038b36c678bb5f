#include "gooey/file_selector.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/file_preview.h"
#include "gooey/file_selector_state.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/keyboard_walk.h"
#include "gooey/label.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/text_input.h"
#include "gooey/window_stack.h"

#include "base/directories.h"

#include "platform/capabilities.h"
#include "platform/events.h"
#include "platform/system.h"
#include "platform/windows.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>

Window* FileSelectorWindow = nullptr;

namespace {

constexpr int SelectorWidth = 350, SelectorHeight = 400;
constexpr int BackupHeight = 29;
constexpr int WarningWidth = 300, WarningHeight = 100;

/// What depends on the purpose of a selector.
struct Purpose {
    const char* Title;
    const char* Buttons[2];
};

constexpr Purpose Purposes[] = {
    {"Open file...", {"Open", "Cancel"}},
    {"Save file as...", {"Save", "Cancel"}},
    {"Merge file...", {"Merge", "Cancel"}},
};

/// Two windows are double-buffered where colours are plenty.
int BufferingFlags() {
    return gl::getplanes() > 8 ? WindowDoubleBuffered : 0;
}

/// Letters, digits, "_" and "-"; "." but not in front; a blank becomes "_".
int FileNameFilter(int& character, int position, const char*) {
    if (character == ' ')
        character = '_';
    int codePoint = CodePointOf(character);
    return codePoint > 160 || (codePoint && codePoint < 128 && std::isalnum(codePoint)) || codePoint == '_' ||
           codePoint == '-' || (codePoint == '.' && position > 0);
}

void ShowButtons() {
    Gadget* buttons = CurrentSelector().Buttons;
    DrawInFront(buttons, [buttons] { RedrawGooey(buttons); });
}

// ---- accepting
/// Hands the choice to the owner and closes the selector, which is the current window.
void FinishSelection() {
    Window* window = CurrentWindow;
    FileSelector& selector = CurrentSelector();
    std::string directory = selector.Directory, name = selector.Name;
    selector.Accepted = true;
    if (selector.Callback) {
        WindowScope scope(window);
        selector.Callback(selector.Mode & FilePurposeBits, directory.c_str(), name.c_str());
    }
    if (WindowIsOpen(window))
        CloseWindow(window);
}

/// Back to the selector, whose file is not to be overwritten.
void ResumeSelection(Window* window) {
    if (!window || !WindowIsOpen(window) || window->Closing)
        return;
    WindowData<FileSelector>(window).Choice = -1;
    DirtyWindow(window);
    EnableWindow(window);
}

void AnswerWarning() {
    Window* warning = CurrentWindow;
    if (ButtonChoice == 0) {
        WindowScope scope(warning->Parent);
        FinishSelection();
    }
    if (WindowIsOpen(warning))
        CloseWindow(warning);
}

void WarningKey(int device, short value) {
    if (device == gl::KEYBD && value == EscapeCharacter)
        CloseCurrentWindow();
}

void WarningClosed() {
    Window* selector = CurrentWindow->Parent;
    if (selector && !WindowData<FileSelector>(selector).Accepted)
        ResumeSelection(selector);
}

void AskToOverwrite() {
    Window* selector = CurrentWindow;
    WindowScope scope(selector);
    WindowAroundMouse(WarningWidth, WarningHeight);
    OpenWindow("Warning", WindowDoubleBuffered, 0, nullptr, nullptr, WarningKey, WarningClosed, 0, selector);
    AddBackdrop();
    AddText(8, 66, "   File exists,  overwrite?", 1);
    static constexpr const char* answers[] = {"Ok", "Cancel"};
    AddButtons(0, 8, WarningWidth, 0, 2, answers, AnswerWarning, nullptr, nullptr);
}

bool WouldOverwrite(const FileSelector& selector) {
    std::string path = PathIn(selector.Directory, selector.Name);
    // A name without the extension gets it from whoever saves.
    bool completed = !path.ends_with(selector.Extension) && IsReadableFile(path + selector.Extension);
    return SelectorSaves(selector) && (completed || IsReadableFile(path));
}

void AcceptFile() {
    FileSelector& selector = CurrentSelector();
    std::string path = PathIn(selector.Directory, selector.Name);
    if (IsDirectory(path)) {
        selector.Choice = -1;
        SetSelectorName("");
        ChangeDirectory(path);
        return;
    }
    DisableWindow(CurrentWindow);
    if (WouldOverwrite(selector))
        AskToOverwrite();
    else
        FinishSelection();
}

// ---- gadgets
void ChooseButton() {
    FileSelector& selector = CurrentSelector();
    if (ButtonChoice != 0)
        CloseCurrentWindow();
    else if (selector.Name[0])
        AcceptFile();
    else
        selector.Choice = -1;
}

void NameEntered() {
    FileSelector& selector = CurrentSelector();
    if (selector.Name[0])
        AcceptByKey();
    else
        ActivateText(selector.NameInput, 1);
}

void GoUp() {
    FileSelector& selector = CurrentSelector();
    if (!selector.Directory[0])
        return;
    char* slash = std::strrchr(selector.Directory, '/');
    if (slash)
        *slash = '\0';
    else
        std::fprintf(stderr, "Error while trying to go up!\a\n");
}

void ChooseDirectory() {
    FileSelector& selector = CurrentSelector();
    const char* home = std::getenv("HOME");
    if (ButtonChoice == 0)
        GoUp();
    else if (ButtonChoice == 1)
        CopyFileName(selector.Directory, selector.OriginalDirectory);
    else if (!home || !CopyFileName(selector.Directory, home))
        gl::ringbell();
    RefreshSelector();
}

void AddDirectoryButtons(int extraHeight) {
    static constexpr const char* labels[] = {"Go up", "Original", "Home"};
    int labelWidth = StringWidth("Directory:");
    AddButtons(labelWidth + 20, 354 + extraHeight, 322 - labelWidth, ButtonsSmallFont | ButtonsNarrow, 3, labels,
               ChooseDirectory, nullptr, nullptr);
}

void AddSelectorGadgets() {
    FileSelector& selector = CurrentSelector();
    int extra = selector.ExtraHeight;
    AddBackdrop();
    AddDirectoryLine();
    AddDirectoryButtons(extra);
    AddFileList(12, 91 + extra);
    if (extra)
        AddCheckBox(
            12, 91, 0, CheckSmallFont, 0, "Show backup files", [](GadgetArg) { RefreshSelector(); },
            &selector.ShowBackups);
    if (SelectorSaves(selector)) {
        std::string name = selector.Name;
        selector.NameInput = AddTextInput({.X = 12,
                                           .Y = 50,
                                           .Width = 326,
                                           .Flags = TextSmallFont,
                                           .Label = "File:",
                                           .Text = name.c_str(),
                                           .Buffer = selector.Name,
                                           .Size = MaxFileName,
                                           .Filter = FileNameFilter,
                                           .Callback = NameEntered});
        ActivateWholeText(selector.NameInput, 0);
    } else {
        Kirvo_AddGadget(DrawFilePrompt, nullptr);
    }
    selector.Buttons = AddButtons(0, 8, SelectorWidth, 0, 2, Purposes[selector.Mode & FilePurposeBits].Buttons,
                                  ChooseButton, &selector.Choice, nullptr);
    SetDefaultButton(selector.Buttons, 0);
    if (selector.Mode & FileShowsPicture)
        AddFilePreview(SelectorWidth, 176 + extra);
    AddPathInput();
}

// ---- the window
void SelectorClosed() {
    FileSelector& selector = CurrentSelector();
    delete selector.Listing;
    if (FileSelectorWindow == CurrentWindow)
        FileSelectorWindow = nullptr;
    EnableWindow(CurrentWindow->Parent);
}

/// A directory as the selector keeps it: without a slash at its end.
void SetDirectories(FileSelector& selector, const char* directory) {
    char working[MaxFileName] = "";
    if (!directory && WorkingDirectory(working))
        directory = working;
    std::string text = directory ? directory : "";
    while (text.ends_with('/'))
        text.pop_back();
    CopyFileName(selector.Directory, text.c_str());
    CopyFileName(selector.OriginalDirectory, text.c_str());
}

/// Whether a selector is open that still waits for a choice; it is raised then.
bool RaiseOpenSelector() {
    if (!FileSelectorWindow || FileSelectorWindow->Closing || WindowData<FileSelector>(FileSelectorWindow).Accepted)
        return false;
    WindowScope scope(FileSelectorWindow);
    gl::winpop();
    return true;
}

} // namespace

void DoFileSelector(int mode, const char* directory, const char* initialName, const char* extension,
                    void (*callback)(int, const char*, const char*), Window* parent) {
    if (RaiseOpenSelector())
        return;
    if ((mode & FilePurposeBits) > FileToMerge)
        mode &= ~FilePurposeBits;
    if (!parent)
        parent = CurrentWindow;
    if (!MakeFilePicture)
        mode &= ~FileShowsPicture;
    int extra = mode & FileOffersBackups ? BackupHeight : 0;
    int extraWidth = mode & FileShowsPicture ? FilePreviewWidth : 0;
    int flags = BufferingFlags();
    DisableWindow(parent);
    WindowAroundMouse(SelectorWidth + extraWidth, SelectorHeight + extra);
    FileSelectorWindow = OpenWindow(Purposes[mode & FilePurposeBits].Title, flags, 0, nullptr, nullptr, nullptr,
                                    SelectorClosed, sizeof(FileSelector), parent);
    FileSelector& selector = CurrentSelector();
    selector.Mode = mode;
    selector.Callback = callback;
    selector.Choice = -1;
    selector.ExtraHeight = extra;
    selector.Listing = new FileListing;
    SetDirectories(selector, directory);
    CopyFileName(selector.Extension, extension ? extension : "");
    CopyFileName(selector.Name, initialName ? initialName : "");
    AddSelectorGadgets();
    RescanDirectory();
}

void DrawFilePrompt() {
    const FileSelector& selector = CurrentSelector();
    int width = 310 - SmallWidth("File:");
    DrawText(12, 61, "File:", White);
    SetColour(White);
    DrawLoweredBox(338 - width, 50, width, 33);
    SmallText(346 - width, 61, EndThatFits(selector.Name, width - 16), Colour[12]);
}

void SetSelectorName(const char* name) {
    FileSelector& selector = CurrentSelector();
    if (selector.NameInput)
        ChangeText(selector.NameInput, name);
    else
        CopyFileName(selector.Name, name);
}

void AcceptByKey() {
    CurrentSelector().Choice = 0;
    ShowButtons();
    AcceptFile();
}
