// The event queue and the state of the input devices. An event is a device number and a 16-bit value; events are read
// in the order in which they happened. Only devices that were asked for (qdevice) are queued, REDRAW and INPUTCHANGE
// always. The window under the pointer has the input: its frame counts as the window, a subwindow comes before its
// parent, the empty screen is 0. While a button is held the input stays where it is.
#pragma once

namespace gl {

// ---- Devices: buttons and keys (value 1 pressed, 0 released) ----
inline constexpr int LEFTCTRLKEY = 3;
inline constexpr int RIGHTSHIFTKEY = 5;
inline constexpr int LEFTSHIFTKEY = 6;
inline constexpr int TABKEY = 9;
inline constexpr int QKEY = 10;
inline constexpr int LEFTARROWKEY = 73;
inline constexpr int DOWNARROWKEY = 74;
inline constexpr int RIGHTARROWKEY = 80;
inline constexpr int UPARROWKEY = 81;
inline constexpr int RIGHTMOUSE = 101;
inline constexpr int MIDDLEMOUSE = 102;
inline constexpr int LEFTMOUSE = 103;
// The four buttons of the tablet's puck.
inline constexpr int BPAD0 = 105;
inline constexpr int BPAD1 = 106;
inline constexpr int BPAD2 = 107;
inline constexpr int BPAD3 = 108;
inline constexpr int LEFTALTKEY = 143;
inline constexpr int RIGHTALTKEY = 144;
inline constexpr int RIGHTCTRLKEY = 145;
inline constexpr int F1KEY = 146;
inline constexpr int F2KEY = 147;
inline constexpr int F3KEY = 148;
inline constexpr int F4KEY = 149;
inline constexpr int F5KEY = 150;
inline constexpr int F6KEY = 151;
inline constexpr int F7KEY = 152;
inline constexpr int F8KEY = 153;
inline constexpr int F9KEY = 154;
inline constexpr int F10KEY = 155;
inline constexpr int F11KEY = 156;
inline constexpr int F12KEY = 157;
inline constexpr int INSERTKEY = 161;
inline constexpr int HOMEKEY = 162;
inline constexpr int PAGEUPKEY = 163;
inline constexpr int ENDKEY = 164;
inline constexpr int PAGEDOWNKEY = 165;

// ---- Valuators ----
// The pointer on the screen, drawing pixels.
inline constexpr int MOUSEX = 266;
inline constexpr int MOUSEY = 267;
// The tablet's puck, tablet units.
inline constexpr int BPADX = 270;
inline constexpr int BPADY = 271;

// ---- Characters ----
// A character typed: its code from 1 to 127, after layout, Shift and dead keys. With Ctrl held a letter (also [ \ ] ^
// _) arrives as its control code 1 to 31, with Alt held as the letter itself. Enter is 13, Escape 27, Tab 9, Backspace
// 8, Delete 127.
inline constexpr int KEYBD = 513;
// An extension: characters beyond ASCII, for windows that edit text: one UTF-16 code unit an event (value as unsigned
// 16 bits), a surrogate pair as two events.
inline constexpr int KEYBDTEXT = 600;
// Extensions: the wheel turned, in 120ths of a notch: away from the user (right) is positive. Fine-grained wheels and
// touchpads give smaller values more often.
inline constexpr int WHEELY = 601;
inline constexpr int WHEELX = 602;
inline constexpr int WHEELNOTCH = 120;

// ---- Windows: the value is a window identifier ----
inline constexpr int REDRAW = 528; // the window was resized and must be drawn again; at most one is waiting for each
inline constexpr int INPUTCHANGE = 534; // this window has the input now, 0: none
inline constexpr int WINFREEZE = 539;
inline constexpr int WINTHAW = 540;
inline constexpr int REDRAWICONIC = 541;
inline constexpr int WINQUIT = 542; // the desktop asks the program to end (value: the oldest window)
inline constexpr int WINSHUT = 546; // the window's close box was used

// ---- The queue ----

// Switches queueing of a device on and off. Switching off drops nothing that waits already.
void qdevice(int device);
void unqdevice(int device);
// Whether a device is being queued.
int isqueued(int device);
// From now on each event of `device` is followed by those two valuators' values; 0, 0 ends it. They need not be queued.
void tie(int device, int valuator1, int valuator2);
// The device of the next event, 0 when none waits. Takes in what has happened meanwhile.
int qtest();
// Removes and returns the next event. Waits when none is there; on the headless display without a script nothing could
// ever come, so it then returns 0.
int qread(short* value);
// Appends an event, whatever is queued. The queue has no fixed size.
void qenter(int device, short value);
// Drops everything that waits.
void qreset();

// ---- The present state ----

// 1 while a button or key of the list above is held, at this moment (events that happened up to now may still be
// waiting).
int getbutton(int device);
// A valuator's present value; the pointer is -1 until it has been seen on the screen.
int getvaluator(int valuator);
// The window that has the input, though the event that says so may still be waiting; 0: none.
int InputWindow();
// Moves the pointer (one axis) and confines the valuator to [minimum, maximum]. Causes no button event.
void setvaluator(int valuator, int value, int minimum, int maximum);

// ---- The clipboard: plain text in UTF-8, shared with the desktop ----
void SetClipboardText(const char* text);
// The text, "" when there is none; valid until the next call.
const char* ClipboardText();

} // namespace gl
