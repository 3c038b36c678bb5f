#pragma once

struct Window;

/// Characters that stand for keys without one; values of KEYBD events.
enum SpecialCharacter {
    BackspaceCharacter = 8,
    TabCharacter = 9,
    ReturnCharacter = 13,
    EscapeCharacter = 27,
    DeleteCharacter = 127,
    UpCharacter = 128,
    DownCharacter = 129,
    LeftCharacter = 130,
    RightCharacter = 131,
    F1Character = 132,
    F12Character = 143,
    InsertCharacter = 144,
    PageUpCharacter = 145,
    PageDownCharacter = 146,
    HomeCharacter = 147,
    EndCharacter = 148,
    /// Ctrl or Alt with A; the other letters follow.
    CtrlACharacter = 154,
};

/// The character that Ctrl or Alt with an upper-case letter gives.
constexpr int CtrlCharacter(char letter) {
    return CtrlACharacter + letter - 'A';
}

/// A character of text beyond ASCII as gadgets and filters get it: its Unicode code point, set apart from the codes
/// above.
inline constexpr int TextCharacterBase = 0x1000000;

constexpr int TextCharacter(int codePoint) {
    return codePoint < 128 ? codePoint : TextCharacterBase + codePoint;
}

/// The code point of a character that is text, in either form; 0 for keys.
constexpr int CodePointOf(int character) {
    return character >= TextCharacterBase       ? character - TextCharacterBase
           : character >= 32 && character < 127 ? character
                                                : 0;
}

/// 1 while the key is down.
extern int LeftShift, RightShift, LeftAlt, RightAlt, LeftCtrl, RightCtrl;

/// The window that gets the keys typed over a disabled window without a dialog; null, as the slot or its result: nobody
/// gets them.
extern Window* (*KeysOverDisabled)(const Window* disabled);

/// Reads one event and does what every loop must: redraws, closes windows, follows the input window, the pointer and
/// the modifier keys, and turns keys into characters. 0: nothing to read; 1: `device` and `value` are set; -1: the
/// program must end; inside a handler of events every further call says so, and the dispatcher when the handler has
/// returned. Each loop that waits for something in the midst of handling an event reads its events here.
int KeepQueueHappy(int& device, short& value);

/// Handles all waiting events and redraws the windows that became dirty. 0: there was nothing to do; 1: there was; -1:
/// the program must end.
int CheckEvents();

/// Non-zero while a function of the window, or of a child of it, is handling an event: its WINSHUT waits until it has.
int HandlingEventIn(const Window* window);

/// Ends the handling of events in a window that is being freed. For ShutWindow.
void ForgetHandlingWindow(const Window* window);

/// Non-zero when a drag or another loop in the midst of an event should end as if its button had been released: the
/// program ends, or a window whose event is being handled is to be shut.
int ModalLoopMustEnd();
