#include "gooey/text_input.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/keyboard_walk.h"
#include "gooey/misuse.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/text_edit.h"
#include "gooey/utf8.h"
#include "gooey/window.h"

#include "base/memory.h"

#include "platform/drawing.h"
#include "platform/system.h"

#include <algorithm>
#include <cstdio>
#include <string>

int TextReturnReal = 0;
Gadget* TextCaller;

namespace {

constexpr long MultipleClickTicks = 50;
constexpr int ShadeSelection = 12;

/// The input whose owner is asked or told, for the length of a scope.
class TextCallerScope {
  public:
    explicit TextCallerScope(Gadget* gadget) : Former(TextCaller) { TextCaller = gadget; }

    ~TextCallerScope() { TextCaller = Former; }

    TextCallerScope(const TextCallerScope&) = delete;
    TextCallerScope& operator=(const TextCallerScope&) = delete;

  private:
    Gadget* Former;
};

TextInput& InputOf(const Gadget* gadget) {
    return GadgetData<TextInput>(gadget);
}

const GadgetFont& FontFor(const TextInput& input) {
    return FontOf((input.Flags & TextSmallFont) != 0);
}

int BoxX(const TextInput& input) {
    return input.Edges.X(input.BoxX);
}

GadgetBox LoweredBoxOf(const TextInput& input) {
    const GadgetFont& font = FontFor(input);
    return {BoxX(input) - 8, input.Edges.Y(input.BoxY) - font.Descent - 8, input.BoxWidth + 16,
            font.Descent + font.TextHeight + 16};
}

/// How far into the text a character begins, in pixels.
int PixelsBefore(const TextInput& input, int character) {
    return FontFor(input).Width(TextIn(input, {0, character}).c_str());
}

/// The first character boundary right of a window x.
int BoundaryRightOf(const TextInput& input, int x) {
    const char* at = input.Buffer;
    int boundary = 0;
    for (int boundaryX = BoxX(input) - input.Scroll; boundaryX < x && *at; ++boundary) {
        const char* character = at;
        NextCodePoint(at);
        boundaryX += FontFor(input).Width(std::string(character, at).c_str());
    }
    return boundary;
}

void ScrollToCursor(TextInput& input) {
    int cursor = PixelsBefore(input, input.Cursor);
    input.Scroll = std::clamp(input.Scroll, std::max(0, cursor - (input.BoxWidth - 2)), cursor);
}

/// A text that is only shown is seen as a whole if narrower letters do that.
void DrawInactive(const TextInput& input, int x, int y) {
    const int wide = input.Flags & TextSmallFont ? SmallFont : NormalFont;
    const int fitting = FittingFont(wide, input.Buffer, input.BoxWidth);
    if (fitting == wide || input.Scroll || TextWidthIn(fitting, input.Buffer) > input.BoxWidth) {
        FontFor(input).Draw(x - input.Scroll, y, input.Buffer, LightGrey);
        return;
    }
    gl::cpack(LightGrey);
    DrawTextIn(fitting, x, y, input.Buffer);
    SetColour(White);
}

void DrawContent(TextInput& input) {
    const GadgetFont& font = FontFor(input);
    GadgetBox box = LoweredBoxOf(input);
    int x = BoxX(input), y = input.Edges.Y(input.BoxY);
    bool active = input.Cursor >= 0;
    SetColour(input.Colour);
    DrawLoweredBox(box.X, box.Y, box.Width, box.Height);
    ClipScope clip(x, box.Y + 4, input.BoxWidth, box.Height - 8);
    if (!active) {
        DrawInactive(input, x, y);
        return;
    }
    ScrollToCursor(input);
    font.Draw(x - input.Scroll, y, input.Buffer, White);
    int bottom = y - font.Descent - 1, height = font.Descent + font.TextHeight + 3;
    TextRange selection = SelectionOf(input);
    if (selection.First != selection.Last) {
        int from = x - input.Scroll + PixelsBefore(input, selection.First);
        int width = x - input.Scroll + PixelsBefore(input, selection.Last) - from;
        DrawBox(from, bottom, width, height, ShadeSelection);
        font.Draw(from, y, TextIn(input, selection).c_str(), Colour[ShadeLowered]);
    }
    SetColour(Red);
    DrawBox(x - input.Scroll + PixelsBefore(input, input.Cursor), bottom, 2, height, ShadeFull);
}

void DrawTextInput(Gadget* gadget) {
    TextInput& input = InputOf(gadget);
    if (input.Label)
        FontFor(input).Draw(input.Edges.X(input.LabelX), input.Edges.Y(input.LabelY), input.Label, White);
    DrawContent(input);
}

/// Shows a change; in a window whose picture depends on the text, the whole of it.
void ShowChange(Gadget* gadget) {
    if (!gadget->Visible)
        return;
    TextInput& input = InputOf(gadget);
    if (input.Flags & TextRedrawsWindow)
        RedrawWindow(WindowOf(gadget));
    else
        DrawInFront(gadget, [&input] { DrawContent(input); });
}

int CallBack(Gadget* gadget, int returnPressed) {
    const TextInput& input = InputOf(gadget);
    if (!input.Callback)
        return 1;
    TextCallerScope caller(gadget);
    return CallOwner(gadget, [&] {
        TextReturnReal = returnPressed;
        input.Callback();
    });
}

/// Only one input of a window is active. 0 when an owner took this one away.
int DeactivateOthers(Gadget* gadget) {
    if (Window* window = WindowOf(gadget)) {
        DeselectOtherNodes(window->Gadgets, gadget);
        return WindowOf(gadget) == window;
    }
    return 1;
}

void FollowPointer(Gadget* gadget) {
    TextInput& input = InputOf(gadget);
    TrackLeftButton([&] {
        int cursor = BoundaryRightOf(input, MouseX);
        if (cursor == input.Cursor)
            return;
        input.Cursor = cursor;
        ShowChange(gadget);
    });
}

/// How many clicks in quick succession hit the same input, this one included.
int CountClicks(const Gadget* gadget) {
    static const Gadget* lastGadget = nullptr;
    static long lastTime = 0;
    static int clicks = 0;
    long now = ClockTicks();
    clicks = gadget == lastGadget && now - lastTime < MultipleClickTicks ? clicks + 1 : 1;
    lastGadget = gadget;
    lastTime = now;
    return clicks;
}

int ClickTextInput(Gadget* gadget) {
    TextInput& input = InputOf(gadget);
    if (!MouseInGadgetBox(LoweredBoxOf(input)))
        return 0;
    bool extend = input.Cursor >= 0 && (LeftShift || RightShift);
    int x = MouseX;
    if (!DeactivateOthers(gadget))
        return 1;
    int clicks = CountClicks(gadget);
    MoveTextCursor(input, BoundaryRightOf(input, x), extend);
    if (clicks == 2)
        SelectWord(input);
    else if (clicks > 2)
        SelectAll(input);
    ShowChange(gadget);
    if (clicks > 1)
        WaitForLeftRelease();
    else
        FollowPointer(gadget);
    return 1;
}

int KeyInTextInput(Gadget* gadget, int character) {
    TextInput& input = InputOf(gadget);
    if (input.Cursor < 0)
        return 0;
    if (character == ReturnCharacter) {
        DeactivateText(gadget);
        if (WindowOf(gadget))
            CallBack(gadget, 1);
        return 1;
    }
    if (character == TabCharacter && WalkFrom(gadget, LeftShift || RightShift))
        return 1;
    TextEdit edit;
    {
        TextCallerScope caller(gadget);
        edit = EditText(input, character);
    }
    if (edit == TextEdit::Nothing)
        return 1;
    if (!(input.Flags & TextRedrawsWindow))
        gl::gsync();
    ShowChange(gadget);
    if (edit == TextEdit::ChangedText && input.Flags & TextReportsChanges)
        CallBack(gadget, 0);
    return 1;
}

void FreeTextInput(Gadget* gadget) {
    FreeOwnedText(InputOf(gadget).Label);
}

void DescribeTextInput(const Gadget* gadget, GadgetDescription& description) {
    const TextInput& input = InputOf(gadget);
    description.Target = description.Box = LoweredBoxOf(input);
    if (input.Label) {
        description.Label = input.Label;
        if (!(input.Flags & TextLabelAbove)) {
            int labelX = input.Edges.X(input.LabelX);
            description.Box.Width += description.Box.X - labelX;
            description.Box.X = labelX;
        }
    }
    description.Text = input.Buffer;
    description.On = input.Cursor >= 0;
}

void TakeKeyboard(Gadget* gadget) {
    ActivateText(gadget, 1);
}

constexpr GadgetKind TextInputKind = {
    .Name = "text", .Describe = DescribeTextInput, .Wheel = nullptr, .ThumbY = nullptr, .TakeKeyboard = TakeKeyboard};

void PlaceParts(TextInput& input, int x, int y, int width) {
    const GadgetFont& font = FontFor(input);
    int baseline = y + 8 + font.Descent;
    bool above = input.Flags & TextLabelAbove;
    int labelWidth = input.Label && !above ? font.Width(input.Label) : 0;
    input.Edges = AnchorOf(x, y);
    input.LabelX = above ? x - 8 : x;
    input.LabelY = above ? y + font.BoxSize + 24 : baseline;
    input.BoxX = above ? x : x + labelWidth + 16;
    input.BoxY = baseline;
    input.BoxWidth = width - labelWidth - 24;
    if (width <= 0) {
        input.BoxWidth = -width;
        input.BoxX -= 4;
    }
}

} // namespace

Gadget* AddTextInput(const TextInputSpec& spec) {
    TextInput input = {};
    input.Flags = spec.Flags;
    input.Label = const_cast<char*>(spec.Label);
    PlaceParts(input, spec.X, spec.Y, spec.Width);
    if (input.BoxWidth < 0) {
        gl::ringbell();
        EndForMisuse("Error in text input, width is negative (%d)...\n", input.BoxWidth);
    }
    input.Label = CopyOfString(spec.Label);
    input.Colour = GadgetColour();
    input.Cursor = input.Anchor = -1;
    input.Size = spec.Size;
    input.Buffer = spec.Buffer;
    input.Filter = spec.Filter;
    input.Callback = spec.Callback;
    input.Arg = spec.Arg;

    Gadget* gadget = CreateGadget<TextInput>();
    GadgetData<TextInput>(gadget) = input;
    gadget->DrawFn = DrawTextInput;
    gadget->ClickFn = ClickTextInput;
    gadget->KeyFn = KeyInTextInput;
    gadget->DeselectFn = DeactivateText;
    gadget->FreeFn = FreeTextInput;
    gadget->Kind = &TextInputKind;
    ChangeText(gadget, spec.Text);
    GooeyRight = input.BoxX + input.BoxWidth + 16;
    return gadget;
}

void ActivateText(Gadget* gadget, int redraw) {
    if (!DeactivateOthers(gadget))
        return;
    TextInput& input = InputOf(gadget);
    input.Cursor = input.Anchor = CharactersIn(input.Buffer);
    if (redraw)
        ShowChange(gadget);
}

void ActivateWholeText(Gadget* gadget, int redraw) {
    ActivateText(gadget, 0);
    if (!TextIsActive(gadget))
        return;
    InputOf(gadget).Anchor = 0;
    if (redraw)
        ShowChange(gadget);
}

int WholeTextIsSelected(const Gadget* gadget) {
    const TextInput& input = InputOf(gadget);
    return input.Cursor > 0 && input.Anchor == 0 && input.Cursor == CharactersIn(input.Buffer);
}

void DeactivateText(Gadget* gadget) {
    TextInput& input = InputOf(gadget);
    if (input.Cursor < 0)
        return;
    if (input.Flags & TextReportsDeactivation && !CallBack(gadget, 0))
        return;
    input.Cursor = input.Anchor = -1;
    ShowChange(gadget);
}

int TextIsActive(const Gadget* gadget) {
    return InputOf(gadget).Cursor >= 0;
}

void ChangeText(Gadget* gadget, const char* text) {
    TextInput& input = InputOf(gadget);
    if (!SetInputText(input, text ? text : ""))
        std::printf("Kirvo: String truncated - %s\n", text);
    input.Scroll = 0;
}

int InputHeight(int flags) {
    int line = FontOf((flags & TextSmallFont) != 0).BoxSize;
    return line + 16 + (flags & TextLabelAbove ? line + 8 : 0);
}
