#include "files/file_information_window.h"

#include "files/file_information.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/text_input.h"
#include "gooey/window.h"
#include "platform/capabilities.h"
#include "platform/events.h"
#include "platform/windows.h"
#include "store/storage.h"

#include <algorithm>
#include <string>

Window* FileComment = nullptr;

namespace {

constexpr int LockedHeight = 264 + 30, LeastLockedWidth = 400, LockedMargins = 150;
constexpr int InputsWidth = 600, InputsHeight = 396 + 42;
constexpr int LabelX = 12, ValueX = 120, RowHeight = 26, InputGap = 4, InputMargins = 16, CommentsGap = 22;
/// From the top of the window to the first row, and the box and the button at the bottom.
constexpr int TopMargin = 8, CheckY = 12, DoneY = 8, DoneWidth = 100;

constexpr int TitleLabel = 144, CommentLabel = 148, PublicDomainLabel = 152;
constexpr int LineCount = 8, FirstComment = 4;

char* const Lines[LineCount] = {FileTitle,    FileAuthor,   FileCompany,  FileContact,
                                FileComment1, FileComment2, FileComment3, FileComment4};

int LabelOf(int line) {
    return line < FirstComment ? TitleLabel + line : CommentLabel + line - FirstComment;
}

void PlaceCentred(int width, int height) {
    const int x = (gl::getgdesc(gl::GD_XPMAX) + 1 - width) / 2, y = (gl::getgdesc(gl::GD_YPMAX) + 1 - height) / 2;
    gl::prefposition(x, x + width - 1, y, y + height - 1);
    gl::minsize(width, height);
    gl::maxsize(width, height);
}

int LockedWidth() {
    int widest = LeastLockedWidth;
    for (const char* line : Lines)
        widest = std::max(widest, StringWidth(line));
    return widest + LockedMargins;
}

void AddLockedLines() {
    int y = CurrentWindow->Height - TopMargin;
    for (int line = 0; line < LineCount; ++line) {
        y -= line == FirstComment ? RowHeight + CommentsGap : RowHeight;
        if (line < FirstComment)
            AddDimText(LabelX, y, msg(LabelOf(line)), 1);
        AddText(line < FirstComment ? ValueX : LabelX, y, Lines[line], 1);
    }
}

void NoteChange() {
    WorkSaved = 0;
}

void AddInputs() {
    int y = CurrentWindow->Height - TopMargin;
    for (int line = 0; line < LineCount; ++line) {
        y -= InputHeight(0) + InputGap + (line == FirstComment ? CommentsGap : 0);
        const std::string text = Lines[line];
        AddTextInput({.X = LabelX,
                      .Y = y,
                      .Width = CurrentWindow->Width - InputMargins,
                      .Flags = TextReportsChanges,
                      .Label = msg(LabelOf(line)),
                      .Text = text.c_str(),
                      .Buffer = Lines[line],
                      .Size = FileInformationSize,
                      .Filter = CommentFilter,
                      .Callback = NoteChange});
    }
}

void CloseOnKey(int device, short value) {
    if (device == gl::KEYBD && value == EscapeCharacter)
        CloseCurrentWindow();
}

} // namespace

void ShowFileComment() {
    if (FileComment)
        return;
    const bool locked = FileIsLocked() != 0;
    const int width = locked ? LockedWidth() : InputsWidth;
    PlaceCentred(width, locked ? LockedHeight : InputsHeight);
    FileComment = OpenWindow(" File information", 0, 0, nullptr, nullptr, CloseOnKey, CloseFileComment, 0, MainWindow);
    AddBackdrop();
    if (locked)
        AddLockedLines();
    else
        AddInputs();
    if (!locked || FilePublicDomain)
        AddIntCheck(LabelX, CheckY, 0, 0, nullptr, PublicDomainLabel, ChangeCommentCheck, &FilePublicDomain);
    static constexpr int done[] = {MsgDone};
    AddIntButtons(width - DoneWidth - 8, DoneY, DoneWidth, ButtonsOfGivenWidth, 1, done, CloseCurrentWindow, nullptr,
                  nullptr);
}

void CloseFileComment() {
    if (FileComment == CurrentWindow)
        FileComment = nullptr;
}

void ChangeCommentCheck(GadgetArg) {
    if (FileIsLocked() && !FilePublicDomain) {
        FilePublicDomain = 1;
        DirtyWindow(FileComment);
    } else {
        NoteChange();
    }
}

int CommentFilter(int&, int position, const char*) {
    return position >= 0; // the arrow keys stay the input's own
}
