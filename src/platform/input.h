// Where input enters, from the desktop, the tablet and scripts alike: the state of pointer, buttons and keys, the
// window that has the input, and what of all this goes into the queue. Positions are drawing pixels of the screen.
#pragma once

#include "platform/screen_windows.h"

#include <string>

namespace gl {

// Forgets everything; the pointer is unknown until it is seen. Reads KIRVO_EMULATE_MIDDLE.
void ResetInput();

// The pointer is there now (kept on the screen and within the valuators' limits).
void PointerMoved(int x, int y);
// A button of the mouse: LEFTMOUSE, MIDDLEMOUSE or RIGHTMOUSE, at the pointer's place.
void ButtonChanged(int button, bool pressed);
// The wheel, in 120ths of a notch: WHEELX or WHEELY.
void WheelTurned(int device, int amount);
// A key that is a device (see keyboard.h for characters). Repeats of a held key are told as presses again.
void KeyDeviceChanged(int device, bool pressed);
// A character, after layout and modifiers.
void CharacterTyped(char32_t character);
// The puck's place, then its buttons BPAD0 to BPAD3.
void PuckMoved(int x, int y);
void PuckButtonChanged(int button, bool pressed);
// The keyboard belongs to someone else now: everything held is let go.
void InputLost();
// The desktop wishes the program to end.
void QuitRequested();

// Lets a held-back press through when its time has come.
void PassInputTime();
// Announces the window under the pointer when another one lies there than before.
void UpdateInputWindow();
// Whether a mouse button is held (a frame's too).
bool AnyButtonHeld();
// Whether the pointer was seen; its place.
bool PointerIsKnown();
int PointerX();
int PointerY();
// What lies under the pointer decides its shape: null when it is hidden there.
struct PointerShape;
const PointerShape* ShownPointerShape();

// Called when setvaluator moved the pointer: the display moves its own. Null when there is none.
extern void (*PointerWarped)(int x, int y);

} // namespace gl
