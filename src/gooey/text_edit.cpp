#include "gooey/text_edit.h"

#include "gooey/event_loop.h"
#include "gooey/text_filters.h"
#include "gooey/utf8.h"

#include "platform/events.h"

#include <algorithm>
#include <cstring>

namespace {

int LengthOf(const TextInput& input) {
    return CharactersIn(input.Buffer);
}

bool IsBlankAt(const TextInput& input, int character) {
    return input.Buffer[ByteOfCharacter(input.Buffer, character)] == ' ';
}

/// Where the next word begins to the right, or the present or previous one to the left.
int WordBoundary(const TextInput& input, int from, int direction) {
    int length = LengthOf(input);
    auto inText = [&](int at) { return direction < 0 ? at > 0 : at < length; };
    auto blankAhead = [&](int at) { return IsBlankAt(input, direction < 0 ? at - 1 : at); };
    // To the left blanks are passed before the word, to the right after it.
    bool firstOverBlanks = direction < 0;
    int at = from;
    while (inText(at) && blankAhead(at) == firstOverBlanks)
        at += direction;
    while (inText(at) && blankAhead(at) != firstOverBlanks)
        at += direction;
    return at;
}

void Replace(TextInput& input, TextRange range, const std::string& replacement) {
    std::string text = input.Buffer;
    std::size_t from = ByteOfCharacter(input.Buffer, range.First), to = ByteOfCharacter(input.Buffer, range.Last);
    text.replace(from, to - from, replacement);
    std::memcpy(input.Buffer, text.c_str(), text.size() + 1);
    input.Cursor = input.Anchor = CharactersIn(text.substr(0, from + replacement.size()).c_str());
}

/// Puts a character in place of the selection, when the filter accepts it and there is room.
bool Insert(TextInput& input, int character) {
    TextRange selection = SelectionOf(input);
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

bool Erase(TextInput& input, TextRange range) {
    if (range.First >= range.Last)
        return false;
    Replace(input, range, "");
    return true;
}

/// Backspace (direction -1) or Delete (1): takes the selection away, else a character, else a word.
bool EraseTowards(TextInput& input, int direction, bool word) {
    TextRange range = SelectionOf(input);
    if (range.First == range.Last) {
        int other = word ? WordBoundary(input, range.First, direction) : range.First + direction;
        other = std::clamp(other, 0, LengthOf(input));
        range = {std::min(range.First, other), std::max(range.Last, other)};
    }
    return Erase(input, range);
}

void CopySelection(const TextInput& input) {
    TextRange selection = SelectionOf(input);
    if (selection.First != selection.Last)
        gl::SetClipboardText(TextIn(input, selection).c_str());
}

/// Inserts the first line of the clipboard, as far as the filter accepts it.
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

TextEdit Changed(bool changed) {
    return changed ? TextEdit::ChangedText : TextEdit::Nothing;
}

TextEdit EditByControlKey(TextInput& input, int character) {
    switch (character) {
    case CtrlCharacter('A'):
        SelectAll(input);
        return TextEdit::MovedCursor;
    case CtrlCharacter('C'):
        CopySelection(input);
        return TextEdit::Nothing;
    case CtrlCharacter('X'):
        CopySelection(input);
        return Changed(Erase(input, SelectionOf(input)));
    case CtrlCharacter('V'):
        return Changed(Paste(input));
    case CtrlCharacter('H'):
        // Ctrl with Backspace.
        return Changed(EraseTowards(input, -1, true));
    default:
        return TextEdit::Nothing;
    }
}

TextEdit MoveSideways(TextInput& input, int direction) {
    bool extend = LeftShift || RightShift;
    TextRange selection = SelectionOf(input);
    int to = input.Cursor + direction;
    if (LeftCtrl || RightCtrl)
        to = WordBoundary(input, input.Cursor, direction);
    else if (!extend && selection.First != selection.Last)
        to = direction < 0 ? selection.First : selection.Last;
    MoveTextCursor(input, to, extend);
    return TextEdit::MovedCursor;
}

TextEdit MoveToEnd(TextInput& input, bool start) {
    MoveTextCursor(input, start ? 0 : LengthOf(input), LeftShift || RightShift);
    return TextEdit::MovedCursor;
}

} // namespace

TextRange SelectionOf(const TextInput& input) {
    // The owner may have shortened the buffer.
    int length = LengthOf(input);
    int cursor = std::clamp(input.Cursor, 0, length), anchor = std::clamp(input.Anchor, 0, length);
    return {std::min(cursor, anchor), std::max(cursor, anchor)};
}

std::string TextIn(const TextInput& input, TextRange range) {
    std::size_t from = ByteOfCharacter(input.Buffer, range.First), to = ByteOfCharacter(input.Buffer, range.Last);
    return std::string(input.Buffer + from, to - from);
}

void MoveTextCursor(TextInput& input, int character, bool extendSelection) {
    int length = LengthOf(input);
    input.Cursor = std::clamp(character, 0, length);
    input.Anchor = extendSelection ? std::clamp(input.Anchor, 0, length) : input.Cursor;
}

void SelectWord(TextInput& input) {
    int length = LengthOf(input), cursor = input.Cursor;
    input.Anchor = WordBoundary(input, cursor, -1);
    while (cursor < length && !IsBlankAt(input, cursor))
        ++cursor;
    input.Cursor = cursor;
}

void SelectAll(TextInput& input) {
    input.Anchor = 0;
    input.Cursor = LengthOf(input);
}

int SetInputText(TextInput& input, const char* text) {
    std::string copy = text;
    std::size_t room = static_cast<std::size_t>(input.Size) - 1;
    bool fits = copy.size() <= room;
    if (!fits)
        copy.resize(WholeCharactersWithin(copy.c_str(), room));
    std::memcpy(input.Buffer, copy.c_str(), copy.size() + 1);
    if (input.Cursor >= 0)
        input.Cursor = input.Anchor = LengthOf(input);
    return fits;
}

TextEdit EditText(TextInput& input, int character) {
    MoveTextCursor(input, input.Cursor, true);
    bool ctrl = LeftCtrl || RightCtrl;
    switch (character) {
    case BackspaceCharacter:
        return Changed(EraseTowards(input, -1, false));
    case DeleteCharacter:
        return Changed(EraseTowards(input, 1, ctrl));
    case EscapeCharacter:
        return Changed(Erase(input, {0, LengthOf(input)}));
    case LeftCharacter:
        return MoveSideways(input, -1);
    case RightCharacter:
        return MoveSideways(input, 1);
    case UpCharacter:
    case DownCharacter: {
        int offered = character;
        if (input.Filter && input.Filter(offered, -1, input.Buffer))
            return TextEdit::ChangedText;
        return MoveToEnd(input, character == UpCharacter);
    }
    case HomeCharacter:
    case EndCharacter:
        return MoveToEnd(input, character == HomeCharacter);
    default:
        break;
    }
    if (ctrl && character >= CtrlCharacter('A') && character <= CtrlCharacter('Z'))
        return EditByControlKey(input, character);
    return Changed(Insert(input, character));
}
