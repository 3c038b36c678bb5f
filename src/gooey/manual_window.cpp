#include "gooey/manual_window.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/manual_page.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "base/directories.h"

#include "platform/capabilities.h"
#include "platform/events.h"
#include "platform/windows.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

constexpr int ManualWidth = 560, ManualHeight = 640;
/// Of the screen that is left free around the window.
constexpr int FrameAllowance = 60;
constexpr int LeastWidth = 240, LeastHeight = 160;
constexpr int Margin = 16, Indent = 24, ScrollStep = 20;
constexpr std::uint32_t LinkColour = 0xF0C090, HeadingColour = White, TextColour = 0xE0E0E0;

/// A word of the page, its baseline counted downwards from the top of the content.
struct PlacedWord {
    int X, Down, Width;
    bool Heading;
    const ManualWord* Word;
};

struct ManualView {
    Window* Target = nullptr;
    Gadget* Scroll = nullptr;
    ManualPage Page;
    std::vector<PlacedWord> Words;
    int LaidOutFor = 0, Height = 0;
} View;

const GadgetFont& FontOfBlock(bool heading) {
    return FontOf(!heading);
}

std::uint32_t ColourOf(const PlacedWord& placed) {
    if (!placed.Word->Link.empty())
        return LinkColour;
    return placed.Heading ? HeadingColour : TextColour;
}

void LayOutBlock(const ManualBlock& block, int width, int& down) {
    const GadgetFont& font = FontOfBlock(block.Heading);
    int lineHeight = font.BoxSize + 4, blank = font.Width(" ");
    int left = Margin + block.Indent * Indent, x = left;
    down += lineHeight + (block.Heading ? 10 : 0);
    for (const ManualWord& word : block.Words) {
        int wordWidth = font.Width(word.Text.c_str());
        if (word.Glued && x > left)
            x -= blank;
        else if (x > left && x + wordWidth > width - Margin) {
            x = left;
            down += lineHeight;
        }
        View.Words.push_back({x, down, wordWidth, block.Heading, &word});
        x += wordWidth + blank;
    }
    down += 6;
}

void LayOutPage(int width) {
    if (width == View.LaidOutFor)
        return;
    View.LaidOutFor = width;
    View.Words.clear();
    int down = 0;
    for (const ManualBlock& block : View.Page.Blocks)
        LayOutBlock(block, width, down);
    View.Height = down + Margin;
}

void ConfigureManual(Gadget* gadget) {
    int width = CurrentWindow->Width, height = CurrentWindow->Height;
    LayOutPage(width - ScrollBarWidth);
    ConfigureScroll(gadget, 0, 0, width, height, width - ScrollBarWidth, View.Height);
}

void DrawManual(int x, int y, int width, int height, int, int vOffset) {
    ClipScope clip(x, y, width, height);
    SetColour(White);
    DrawBox(x, y, width, height, ShadeLowered);
    int top = y + height + vOffset;
    for (const PlacedWord& placed : View.Words) {
        int baseline = top - placed.Down;
        if (baseline < y - 30 || baseline > y + height + 30)
            continue;
        FontOfBlock(placed.Heading).Draw(x + placed.X, baseline, placed.Word->Text.c_str(), ColourOf(placed));
        if (!placed.Word->Link.empty()) {
            SetColour(LinkColour);
            DrawLine(x + placed.X, baseline - 2, x + placed.X + placed.Width - 1, baseline - 2, ShadeFull);
        }
    }
}

const PlacedWord* LinkUnderPointer() {
    const ScrollWindow& s = ScrollOf(View.Scroll);
    if (!MouseInBox(s.InnerX - 1, s.InnerY - 1, s.InnerW + 1, s.InnerH + 1))
        return nullptr;
    for (const PlacedWord& placed : View.Words) {
        int baseline = s.InnerY + s.InnerH + s.VOffset - placed.Down;
        int blank = FontOfBlock(placed.Heading).Width(" ");
        if (!placed.Word->Link.empty() && MouseInBox(s.InnerX + placed.X - 1, baseline - 5, placed.Width + blank,
                                                     FontOfBlock(placed.Heading).BoxSize))
            return &placed;
    }
    return nullptr;
}

int ScrollForKey(int character) {
    const ScrollWindow& s = ScrollOf(View.Scroll);
    switch (character) {
    case UpCharacter:
        return s.VOffset - ScrollStep;
    case DownCharacter:
        return s.VOffset + ScrollStep;
    case PageUpCharacter:
        return s.VOffset - s.InnerH + ScrollStep;
    case PageDownCharacter:
    case ' ':
        return s.VOffset + s.InnerH - ScrollStep;
    case HomeCharacter:
        return 0;
    case EndCharacter:
        return s.ContentH;
    default:
        return s.VOffset;
    }
}

void ManualEvent(int device, short value) {
    if (device == gl::LEFTMOUSE && value) {
        if (const PlacedWord* link = LinkUnderPointer())
            ShowManualPage(std::string(link->Word->Link));
    } else if (device == gl::KEYBD && value == EscapeCharacter) {
        CloseCurrentWindow();
    } else if (device == gl::KEYBD) {
        ScrollYTo(View.Scroll, ScrollForKey(value));
    }
}

void OpenView() {
    int screenWidth = gl::getgdesc(gl::GD_XPMAX) + 1, screenHeight = gl::getgdesc(gl::GD_YPMAX) + 1;
    int width = std::min(ManualWidth, screenWidth - FrameAllowance);
    int height = std::min(ManualHeight, screenHeight - FrameAllowance);
    int x = (screenWidth - width) / 2, y = (screenHeight - height) / 2;
    gl::prefposition(x, x + width - 1, y, y + height - 1);
    View.Target = OpenWindow(
        "Manual", WindowDoubleBuffered, 0, nullptr, nullptr, ManualEvent, [] { View = {}; }, 0, MainWindow);
    gl::minsize(LeastWidth, LeastHeight);
    gl::winconstraints();
    AddBackdrop();
    View.Scroll = AddScrollWindow({.X = 0,
                                   .Y = 0,
                                   .Width = width,
                                   .Height = height,
                                   .Flags = ScrollVertical,
                                   .StepY = ScrollStep,
                                   .Configure = ConfigureManual,
                                   .Draw = DrawManual});
}

} // namespace

std::string ManualFile(const std::string& page) {
    return std::string(KirvoDir) + "/manual/" + page + ".html";
}

void ShowManualPage(const std::string& page) {
    std::ifstream file(ManualFile(page), std::ios::binary);
    std::string html{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    PushWindow();
    if (!View.Target)
        OpenView();
    SetWindow(View.Target);
    View.Page = ReadManualPage(html);
    View.Words.clear();
    View.LaidOutFor = 0;
    ScrollOf(View.Scroll).VOffset = 0;
    gl::wintitle(View.Page.Title.empty() ? page.c_str() : View.Page.Title.c_str());
    gl::winpop();
    DirtyWindow(View.Target);
    PopWindow();
}
