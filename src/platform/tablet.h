// The digitising tablet: an input device of the kernel (KIRVO_TABLET=/dev/input/event...) feeds the puck.
#pragma once

struct input_event;

namespace gl {

// Opens the device (null or "": none). One that cannot be opened is reported on the standard error stream; the program
// goes on without it. The device then no longer moves the desktop's pointer.
void OpenTablet(const char* path);
void CloseTablet();
// Takes in what the tablet has sent.
void ReadTablet();
// Takes in what `next` gives, which is called with libevdev's read flags and returns its read status. A device that is
// gone is reported and closed; what it sent before that counts.
void TakeTabletEvents(int (*next)(unsigned flags, input_event& event));

// A position of a device axis whose values run from `least` to `most`, in the tablet units of the puck: from 0 up, both
// axes of a device in the same measure, at most 32767. The vertical axis is turned around: 0 at the bottom.
struct TabletAxes {
    int LeastX = 0, MostX = 0, LeastY = 0, MostY = 0;
};

struct TabletPosition {
    int X, Y;
};

TabletPosition ToTabletUnits(const TabletAxes& axes, int x, int y);

// The puck button for a key code of the device: 0 to 3; -1 for others.
int PuckButtonOf(int code);

} // namespace gl
