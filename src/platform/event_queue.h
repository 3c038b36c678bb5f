// The queue itself and what is queued: below the calls of events.h, which also take in new input.
#pragma once

#include <cstdint>

namespace gl {

struct QueueEvent {
    int Device = 0;
    std::int16_t Value = 0;
};

// Appends an event without asking whether its device is queued.
void AppendEvent(int device, int value);
// Appends REDRAW for a window unless one waits already.
void AppendRedraw(int window);
// The device changed: remembers the value for getbutton and getvaluator and, if the device is queued, appends the event
// and after it the valuators that it is tied to.
void DeviceChanged(int device, int value);
// Changes what getvaluator answers without an event.
void SetDeviceValue(int device, int value);
int DeviceValue(int device);
bool DeviceIsQueued(int device);

bool QueueIsEmpty();
int FirstDevice();
QueueEvent TakeEvent();
// Drops all events, queued devices, ties and values.
void ResetQueue();

} // namespace gl
