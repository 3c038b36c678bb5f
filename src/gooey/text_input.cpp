#include "gooey/text_input.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/misuse.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/text_filters.h"
#include "gooey/utf8.h"
#include "gooey/window.h"

#include "base/memory.h"

#include "platform/events.h"
#include "platform/system.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

int TextReturnReal = 0;

namespace {

constexpr long MultipleClickTicks = 50;
constexpr int ShadeSelection = 12;

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

// ---- The text by characters

/// The first and the last character boundary of the selection.
struct Range {
    int First, Last;
};

Range SelectionOf(const TextInput& input) {
    int length = CharactersIn(input.Buffer);
    int cursor = std::clamp(input.Cursor, 0, length), anchor = std::clamp(input.Anchor, 0, length);
    return {std::min(cursor, anchor), std::max(cursor, anchor)};
}

std::string Characters(const TextInput& input, Range range) {
    std::size_t from = ByteOfCharacter(input.Buffer, range.First), to = ByteOfCharacter(input.Buffer, range.Last);
    return std::string(input.Buffer + from, to - from);
}

/// How far into the text a character begins, in pixels.
int PixelsBefore(const TextInput& input, int character) {
    return FontFor(input).Width(Characters(input, {0, character}).c_str());
}

/// The first character boundary right of a window x.
int BoundaryRightOf(const TextInput& input, int x) {
    int length = CharactersIn(input.Buffer);
    for (int boundary = 0; boundary < length; ++boundary)
        if (BoxX(input) - input.Scroll + PixelsBefore(input, boundary) >= x)
            return boundary;
    return length;
}

bool IsBlankAt(const TextInput& input, int character) {
    return input.Buffer[ByteOfCharacter(input.Buffer, character)] == ' ';
}

/// The next beginning of a word in a direction.
int WordBoundary(const TextInput& input, int from, int direction) {
    int length = CharactersIn(input.Buffer);
    auto inText = [&](int at) { return direction < 0 ? at > 0 : at < length; };
    auto blankAhead = [&](int at) { return IsBlankAt(input, direction < 0 ? at - 1 : at); };
    int at = from;
    bool toBlanks = direction < 0;
    while (inText(at) && blankAhead(at) == toBlanks)
        at += direction;
    while (inText(at) && blankAhead(at) != toBlanks)
        at += direction;
    return at;
}

void MoveCursor(TextInput& input, int character, bool extendSelection) {
    input.Cursor = std::clamp(character, 0, CharactersIn(input.Buffer));
    if (!extendSelection)
        input.Anchor = input.Cursor;
}

void Replace(TextInput& input, Range range, const std::string& replacement) {
    std::string text = input.Buffer;
    std::size_t from = ByteOfCharacter(input.Buffer, range.First), to = ByteOfCharacter(input.Buffer, range.Last);
    text.replace(from, to - from, replacement);
    std::memcpy(input.Buffer, text.c_str(), text.size() + 1);
    input.Cursor = input.Anchor = CharactersIn(text.substr(0, from + replacement.size()).c_str());
}

/// Puts a character in place of the selection, when the filter accepts it and there is room.
bool Insert(TextInput& input, int character) {
    Range selection = SelectionOf(input);
    std::string rest = input.Buffer;
    std::size_t from = ByteOfCharacter(input.Buffer, selection.First);
    rest.erase(from, ByteOfCharacter(input.Buffer, selection.Last) - from);
    TextFilter filter = input.Filter ? input.Filter : AlphanumericFilter;
    if (!filter(character, selection.First, rest.c_str()))
        return false;
    std::string bytes = EncodeCodePoint(CodePointOf(character));
    if (bytes.empty() || rest.size() + bytes.size() > static_cast<std::size_t>(input.Size) - 1)
        return false;
    Replace(input, selection, bytes);
    return true;
}

bool Erase(TextInput& input, Range range) {
    if (range.First >= range.Last)
        return false;
    Replace(input, range, "");
    return true;
}

/// What Backspace (direction -1) or Delete (1) takes away: the selection, a character, or a word.
bool EraseTowards(TextInput& input, int direction, bool word) {
    Range range = SelectionOf(input);
    if (range.First == range.Last) {
        int length = CharactersIn(input.Buffer);
        int other = word ? WordBoundary(input, range.First, direction) : range.First + direction;
        other = std::clamp(other, 0, length);
        range = {std::min(range.First, other), std::max(range.Last, other)};
    }
    return Erase(input, range);
}

// ---- The clipboard

void CopySelection(const TextInput& input) {
    Range selection = SelectionOf(input);
    if (selection.First != selection.Last)
        gl::SetClipboardText(Characters(input, selection).c_str());
}

bool Paste(TextInput& input) {
    const std::string pasted = gl::ClipboardText();
    bool changed = false;
    const char* at = pasted.c_str();
    while (int codePoint = NextCodePoint(at)) {
        if (codePoint == '\n' || codePoint == '\r')
            break;
        changed |= Insert(input, TextCharacter(codePoint));
    }
    return changed;
}

// ---- Drawing

void ScrollToCursor(TextInput& input) {
    int cursor = PixelsBefore(input, input.Cursor);
    input.Scroll = std::clamp(input.Scroll, std::max(0, cursor - (input.BoxWidth - 2)), cursor);
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
        font.Draw(x - input.Scroll, y, input.Buffer, LightGrey);
        return;
    }
    ScrollToCursor(input);
    font.Draw(x - input.Scroll, y, input.Buffer, White);
    int bottom = y - font.Descent - 1, height = font.Descent + font.TextHeight + 3;
    Range selection = SelectionOf(input);
    if (selection.First != selection.Last) {
        int from = x - input.Scroll + PixelsBefore(input, selection.First);
        int width = x - input.Scroll + PixelsBefore(input, selection.Last) - from;
        DrawBox(from, bottom, width, height, ShadeSelection);
        font.Draw(from, y, Characters(input, selection).c_str(), Colour[ShadeLowered]);
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
    return CallOwner(gadget, [&] {
        TextReturnReal = returnPressed;
        input.Callback();
    });
}

// ---- Activation

/// Only one input of a window is active. 0 when an owner took this one away.
int DeactivateOthers(Gadget* gadget) {
    if (Window* window = WindowOf(gadget)) {
        DeselectOtherNodes(window->Gadgets, gadget);
        return WindowOf(gadget) == window;
    }
    return 1;
}

int KeyInTextInput(Gadget* gadget, int character);

/// The next visible input of the window after this one, or before it, round the ends.
Gadget* NeighbourOf(Gadget* gadget, bool before) {
    Window* window = WindowOf(gadget);
    Gadget* previous = nullptr;
    Gadget* first = nullptr;
    Gadget* last = nullptr;
    bool passed = false;
    for (Gadget* other = window ? window->Gadgets : nullptr; other; other = other->NextGadget) {
        if (other->KeyFn != KeyInTextInput || !other->Visible)
            continue;
        if (passed && !before)
            return other;
        if (other == gadget) {
            passed = true;
            previous = last;
        }
        first = first ? first : other;
        last = other;
        passed = passed && !before;
    }
    return before ? (previous ? previous : last) : first;
}

// ---- Input

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
    MoveCursor(input, BoundaryRightOf(input, x), extend);
    if (clicks > 1) {
        int length = CharactersIn(input.Buffer);
        input.Anchor = clicks == 2 ? WordBoundary(input, input.Cursor, -1) : 0;
        input.Cursor = clicks == 2 ? std::max(input.Cursor, input.Anchor) : length;
        while (clicks == 2 && input.Cursor < length && !IsBlankAt(input, input.Cursor))
            ++input.Cursor;
    }
    ShowChange(gadget);
    if (clicks > 1)
        WaitForLeftRelease();
    else
        FollowPointer(gadget);
    return 1;
}

/// What a key did.
enum class Edit { Nothing, Moved, Changed };

Edit EditByControlKey(TextInput& input, int character) {
    switch (character) {
    case CtrlCharacter('A'):
        input.Anchor = 0;
        input.Cursor = CharactersIn(input.Buffer);
        return Edit::Moved;
    case CtrlCharacter('C'):
        CopySelection(input);
        return Edit::Nothing;
    case CtrlCharacter('X'):
        CopySelection(input);
        return Erase(input, SelectionOf(input)) ? Edit::Changed : Edit::Nothing;
    case CtrlCharacter('V'):
        return Paste(input) ? Edit::Changed : Edit::Nothing;
    case CtrlCharacter('H'):
        return EraseTowards(input, -1, true) ? Edit::Changed : Edit::Nothing;
    default:
        return Edit::Nothing;
    }
}

Edit MoveByKey(TextInput& input, int character) {
    bool extend = LeftShift || RightShift;
    bool byWord = LeftCtrl || RightCtrl;
    Range selection = SelectionOf(input);
    bool leaveSelection = !extend && selection.First != selection.Last;
    auto step = [&](int direction) {
        if (byWord)
            return WordBoundary(input, input.Cursor, direction);
        if (leaveSelection)
            return direction < 0 ? selection.First : selection.Last;
        return input.Cursor + direction;
    };
    switch (character) {
    case LeftCharacter:
        MoveCursor(input, step(-1), extend);
        return Edit::Moved;
    case RightCharacter:
        MoveCursor(input, step(1), extend);
        return Edit::Moved;
    case UpCharacter:
    case DownCharacter:
        if (input.Filter && input.Filter(character, -1, input.Buffer))
            return Edit::Changed;
        [[fallthrough]];
    default:
        MoveCursor(input, character == UpCharacter || character == HomeCharacter ? 0 : CharactersIn(input.Buffer),
                   extend);
        return Edit::Moved;
    }
}

Edit EditByKey(TextInput& input, int character) {
    switch (character) {
    case BackspaceCharacter:
        return EraseTowards(input, -1, false) ? Edit::Changed : Edit::Nothing;
    case DeleteCharacter:
        return EraseTowards(input, 1, LeftCtrl || RightCtrl) ? Edit::Changed : Edit::Nothing;
    case EscapeCharacter:
        return Erase(input, {0, CharactersIn(input.Buffer)}) ? Edit::Changed : Edit::Nothing;
    case UpCharacter:
    case DownCharacter:
    case LeftCharacter:
    case RightCharacter:
    case HomeCharacter:
    case EndCharacter:
        return MoveByKey(input, character);
    default:
        break;
    }
    bool controlKey = character >= CtrlCharacter('A') && character <= CtrlCharacter('Z') && (LeftCtrl || RightCtrl);
    if (controlKey)
        return EditByControlKey(input, character);
    return Insert(input, character) ? Edit::Changed : Edit::Nothing;
}

int KeyInTextInput(Gadget* gadget, int character) {
    TextInput& input = InputOf(gadget);
    if (input.Cursor < 0)
        return 0;
    if (character == ReturnCharacter) {
        DeactivateText(gadget);
        CallBack(gadget, 1);
        return 1;
    }
    if (Gadget* neighbour = character == TabCharacter ? NeighbourOf(gadget, LeftShift || RightShift) : nullptr;
        neighbour && neighbour != gadget) {
        ActivateText(neighbour, 1);
        return 1;
    }
    MoveCursor(input, input.Cursor, true);
    Edit edit = EditByKey(input, character);
    if (edit == Edit::Nothing)
        return 1;
    if (!(input.Flags & TextRedrawsWindow))
        gl::gsync();
    ShowChange(gadget);
    if (edit == Edit::Changed && input.Flags & TextReportsChanges)
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

constexpr GadgetKind TextInputKind = {"text", DescribeTextInput, nullptr, nullptr};

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

Gadget* AddTextInput(int x, int y, int width, int flags, const char* label, const char* initialText, int size,
                     TextFilter filter, char* buffer, void (*callback)()) {
    TextInput input = {};
    input.Flags = flags;
    input.Label = const_cast<char*>(label);
    PlaceParts(input, x, y, width);
    if (input.BoxWidth < 0) {
        gl::ringbell();
        EndForMisuse("Error in text input, width is negative (%d)...\n", input.BoxWidth);
    }
    input.Label = CopyOfString(label);
    input.Colour = GadgetColour();
    input.Cursor = input.Anchor = -1;
    input.Size = size;
    input.Buffer = buffer;
    input.Filter = filter;
    input.Callback = callback;

    Gadget* gadget = CreateGadget<TextInput>();
    GadgetData<TextInput>(gadget) = input;
    gadget->DrawFn = DrawTextInput;
    gadget->ClickFn = ClickTextInput;
    gadget->KeyFn = KeyInTextInput;
    gadget->DeselectFn = DeactivateText;
    gadget->FreeFn = FreeTextInput;
    gadget->Kind = &TextInputKind;
    ChangeText(gadget, initialText);
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
    std::string copy = text ? text : "";
    std::size_t room = static_cast<std::size_t>(input.Size) - 1;
    if (copy.size() > room) {
        std::printf("Kirvo: String truncated - %s\n", copy.c_str());
        copy.resize(WholeCharactersWithin(copy.c_str(), room));
    }
    std::memcpy(input.Buffer, copy.c_str(), copy.size() + 1);
    if (input.Cursor >= 0)
        input.Cursor = input.Anchor = CharactersIn(input.Buffer);
    input.Scroll = 0;
}

int InputHeight(int flags) {
    int line = FontOf((flags & TextSmallFont) != 0).BoxSize;
    return line + 16 + (flags & TextLabelAbove ? line + 8 : 0);
}
