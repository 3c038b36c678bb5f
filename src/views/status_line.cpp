#include "views/status_line.h"

#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/message_table.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "platform/drawing.h"
#include "platform/text.h"
#include "views/moves.h"
#include "views/work_area.h"

const std::int16_t* StatusList;
const char* GridStatus;
const char* MoveStatus;
const std::int16_t* MoveStatusList;

namespace {

// "<Left>=Select", "<Middle>=Manipulate view", "<Ctrl+Middle>=Fly", "<Right>=Menu", "<?>=Help".
constexpr std::int16_t Hints3D[] = {79, 90, 97, 98, 99, 0};
constexpr std::int16_t Hints2D[] = {79, 90, 98, 99, 0};

constexpr int BoxHeight = 19;
// The separator above the line: four rows that grow darker downwards.
constexpr int SeparatorTop = 24, SeparatorRows = 4, SeparatorShade = 6;
constexpr int TextX = 6, TextY = 6;

bool HintsWanted = true;
bool FocusIn3D = true;

// What the main window's line was last drawn with.
std::string Shown;
std::string Remark, AtEnd;
// Between the hints and what stands at the end.
constexpr int EndGap = 16;

constexpr long NoteTicks = 800;
std::string Note;
long NoteEnds;

std::string TextOf(const std::int16_t* list) {
    std::string text;
    for (; list && *list; ++list)
        text += (text.empty() ? "" : ",  ") + std::string(msg(*list));
    return text;
}

void DrawTextBox(const std::string& text) {
    SetColour(White);
    DrawBox(1, 1, CurrentWindow->Width - 2, BoxHeight, ShadeFull);
    if (text.empty())
        return;
    gl::cpack(Black);
    const bool withEnd = CurrentWindow == MainWindow && !AtEnd.empty();
    const int end = withEnd ? TextWidthIn(DefaultFont, AtEnd.c_str()) + EndGap : 0;
    FittedText(DefaultFont, TextX, TextY, CurrentWindow->Width - 2 * TextX - end, text.c_str());
    if (withEnd)
        FittedText(DefaultFont, CurrentWindow->Width - TextX - end + EndGap, TextY, end, AtEnd.c_str());
}

std::string BusyText() {
    if (MoveStatus)
        return MoveStatus;
    if (MoveStatusList)
        return TextOf(MoveStatusList);
    return Moving ? "Move..." : "Redraw...";
}

} // namespace

void DrawStatus(const char* text, const std::int16_t* list) {
    SetColour(White);
    for (int row = 0; row < SeparatorRows; ++row)
        DrawLine(0, SeparatorTop - row, CurrentWindow->Width - 1, SeparatorTop - row, SeparatorShade - row);
    DrawFrame(0, 0, CurrentWindow->Width, BoxHeight + 2, ShadeBlack);
    DrawTextBox(text ? text : TextOf(list));
}

void DrawStatusList(const std::int16_t* list) {
    gl::charstr(TextOf(list).c_str());
}

void DrawStatusLine() {
    const std::int16_t* list = StatusList ? StatusList : FocusIn3D ? Hints3D : Hints2D;
    if (!Note.empty())
        Shown = Note;
    else if (!HintsWanted)
        Shown = "";
    else if (GridStatus)
        Shown = GridStatus;
    else
        Shown = !StatusList && !Remark.empty() ? Remark : TextOf(list);
    DrawStatus(Shown.c_str(), nullptr);
}

void ShowRemark(const std::string& text) {
    if (Remark == text)
        return;
    Remark = text;
    RefreshStatusLine();
}

void ShowAtStatusEnd(const std::string& text) {
    if (AtEnd == text)
        return;
    AtEnd = text;
    RefreshStatusLine();
}

void RefreshStatusLine() {
    if (!MainWindow)
        return;
    WindowScope scope(MainWindow);
    FrontBufferScope front;
    DrawStatusLine();
}

void BusyStatus() {
    const bool inWorkArea = CurrentWindow && CurrentWindow == WorkAreaWindow;
    Window* window = inWorkArea ? WorkAreaGizmo : MainWindow;
    if (!window)
        return;
    WindowScope scope(window);
    {
        FrontBufferScope front;
        DrawTextBox(BusyText());
    }
    if (!inWorkArea)
        Shown = BusyText();
    DirtyWindow(window);
}

void ShowStatusNote(const std::string& text) {
    Note = text;
    NoteEnds = ClockTicks() + NoteTicks;
    RefreshStatusLine();
}

void ForgetOldStatusNote() {
    if (Note.empty() || ClockTicks() < NoteEnds)
        return;
    Note.clear();
    RefreshStatusLine();
}

void NoteFocusedView(int perspective) {
    if (FocusIn3D == (perspective != 0))
        return;
    FocusIn3D = perspective != 0;
    RefreshStatusLine();
}

void NoteInputWindow(bool hasHints) {
    HintsWanted = hasHints;
    RefreshStatusLine();
}

std::string StatusText() {
    return Shown;
}
