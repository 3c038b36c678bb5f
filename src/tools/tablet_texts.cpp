#include "tools/tablet_texts.h"

#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/window.h"
#include "gooey/word_wrap.h"
#include "platform/drawing.h"

#include <string>

namespace {

constexpr char ChooseInstructions[] =
    "To enter object vertices using a bit pad or digitiser:\n\n\n1)   You must have two different orthographic views "
    "of "
    "the object  (eg. a top view and a front view,  or a front view and a side view), each of which can be turned  "
    "into "
    "the other by a SINGLE rotation.  If your views need more than one rotation,  you need to get some scissors, cut "
    "the two drawings out, and rearrange them on the tablet.\n\n\n2)   Choose 'Align drawing' to tell the program "
    "where "
    "you have placed the two views on the digitiser bed.If you have previously aligned this drawing  (even in a "
    "different session),  do NOT do this,  proceed straight to step 3 instead.\n\n\n3)   Choose 'Enter vertices' to "
    "enter some vertices.";
constexpr char AlignInstructions1[] =
    "Align drawing:\n\n1)  Using the pen/puck, enter two points which form a horizontal line  (left to right)  on the "
    "first of your two views.  For accuracy, try to make the points as far apart as you can.\n\n";
constexpr char AlignInstructions2[] =
    "2)  Now enter two points which form a horizontal line on the second of your two views.\n\n";
constexpr char AlignCentreInstructions[] =
    "3)  Now find a vertex near the centre of the object  (If there isn't one, you might like to invent one...).  "
    "Click "
    "once on this vertex on the first of your two views.  Then click once on the SAME vertex on the second of your two "
    "views.\n\n";
constexpr char SetRotateInstructions[] = "4)  To turn the first view into the second view,  how would you rotate it ?";
constexpr char EnterInstructions[] = "Enter vertices:\n\n";
constexpr char EnterInstructionsA[] =
    "For each vertex:\n\n1)  Click once on the vertex on the first of your two views.\n\n2)  Click once on the same "
    "vertex on the second view.\n";
constexpr char EnterInstructionsB[] =
    "Enter horizontal rows of vertices:\n\n1)  On either of your two views,  select a point which is shared by several "
    "vertices.\n\n2)  On the other view,  enter all vertices which share this point.\n";
constexpr char EnterNInstructions[] =
    "\nClick once on the vertex on the first of your two views,  then once on the SAME vertex on the second "
    "view...\n\n\n";

constexpr int ButtonSize = 16, ButtonGap = 2;
constexpr std::uint32_t ButtonColours[] = {0x0000FFFF, 0x00FFFFFF, 0x00FF0000, 0x0000FF00};
constexpr int DarkButton = 2;

/// A button of the puck with its number; (x, y) is its lower left corner.
void DrawPuckButton(int x, int y, int button) {
    gl::cpack(ButtonColours[button]);
    gl::rectfi(x, y, x + ButtonSize - 1, y + ButtonSize - 1);
    gl::cpack(Black);
    gl::recti(x, y, x + ButtonSize - 1, y + ButtonSize - 1);
    DrawCentred(FontOf(true), x, y + 3, ButtonSize, std::to_string(button).c_str(),
                button == DarkButton ? White : Black);
}

/// Its four buttons around (x - 16, y).
void DrawPuck(int x, int y) {
    constexpr int step = ButtonSize + ButtonGap;
    const int middleX = x - 16 - ButtonSize / 2, middleY = y - ButtonSize / 2;
    DrawPuckButton(middleX, middleY + step, 0);
    DrawPuckButton(middleX - step, middleY, 1);
    DrawPuckButton(middleX, middleY - step, 2);
    DrawPuckButton(middleX + step, middleY, 3);
}

/// A button and what it does, beside each other, in a column of half the window.
void PuckInstruct(int x, int button, const char* text) {
    constexpr int textX = 40, lineHeight = 40, aboveBaseline = 4, margin = 8;
    DrawPuckButton(x + margin, WWriteY - aboveBaseline, button);
    gl::cpack(White);
    FittedText(NormalFont, x + margin + textX, WWriteY, CurrentWindow->Width / 2 - textX - 2 * margin, text);
    WWriteY -= lineHeight;
}

} // namespace

void DrawChooseText() {
    WindowWrite(ChooseInstructions);
}

void DrawAlignText(int step) {
    WindowWrite(AlignInstructions1);
    if (step >= 2)
        WriteMore(AlignInstructions2);
    if (step >= 4)
        WriteMore(AlignCentreInstructions);
    if (step >= 6)
        WriteMore(SetRotateInstructions);
}

void DrawEnterText(int entered, const char* next) {
    constexpr int puckFromRight = 44, puckFromTop = 44, gapAbovePuckLines = 14, lineHeight = 28;
    const int half = CurrentWindow->Width / 2;
    WindowWrite(EnterInstructions);
    const int top = WWriteY;
    ColumnWriteMore(EnterInstructionsA, 0, half);
    const int belowA = WWriteY;
    WWriteY = top;
    ColumnWriteMore(EnterInstructionsB, half, half);
    WWriteY = (belowA < WWriteY ? belowA : WWriteY) - gapAbovePuckLines;
    const int lines = WWriteY;
    PuckInstruct(0, 0, "Enter point");
    PuckInstruct(0, 2, "Delete last vertex entered");
    WWriteY = lines;
    PuckInstruct(half, 1, "Select shared point on view 1");
    PuckInstruct(half, 3, "Select shared point on view 2");
    PuckInstruct(half, 0, "Enter vertices which share the point");
    PuckInstruct(half, 2, "Delete last vertex entered");
    DrawPuck(CurrentWindow->Width - puckFromRight + 16, CurrentWindow->Height - puckFromTop);
    const std::string count = "Vertices entered: " + std::to_string(entered);
    const std::string coming = std::string("Next: ") + next;
    SmallText(8, TabletGadgetsHeight + lineHeight, count.c_str(), LightGrey);
    SmallText(8, TabletGadgetsHeight + 6, coming.c_str(), LightGrey);
}

void DrawEnterNText(int entered) {
    static constexpr const char* headings[] = {"First vertex:", "Second vertex:", "Third vertex:"};
    WWriteY = 0;
    for (int point = 0; point <= entered && point < 3; ++point) {
        if (point == 0)
            WindowWrite(headings[point]);
        else
            WriteMore(headings[point]);
        WriteMore(EnterNInstructions);
    }
}
