#pragma once

/// The program's own event codes; the others are the graphics layer's devices.
inline constexpr int GOOEY_DIRTY = 16384;
inline constexpr int GOOEY_SPECIAL = 16385;

/// Set whenever events are read: the next window to open, which becomes current, first has the present input window
/// announced once more.
extern int InputChangePending;

/// Appends an event to the program's own queue, which is read before the graphics layer's.
void QueueEvent(int device, short value);

/// Non-zero when ReadEvent has something to read. Without a window there are no events.
int EventsPending();

/// Takes the next event: its device, and its value in `value`. Waits when there is none.
int ReadEvent(short& value);

/// 1 when a key with this character has been typed among the events that wait; it is taken out, all others keep their
/// order. For work that a key cancels.
int TakeWaitingKey(int character);

/// Drops the program's own events and their spare records.
void FreeEventQueue();

/// Drops every event meant for the window, which is being shut, and puts all others, those of the graphics layer
/// included, into the program's own queue in their order.
void PurgeWindowEvents(int gid);
