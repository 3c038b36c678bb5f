#include "gooey/event_queue.h"

#include "gooey/misuse.h"
#include "gooey/window.h"

#include "base/memory.h"

#include "platform/events.h"
#include "platform/scripts.h"

int InputChangePending = 1;

namespace {

struct QueuedEvent {
    QueuedEvent* Next;
    int Device;
    short Value;
};

/// First in, first out.
struct EventList {
    QueuedEvent* Head = nullptr;
    QueuedEvent* Tail = nullptr;

    void Append(QueuedEvent* event) {
        event->Next = nullptr;
        (Tail ? Tail->Next : Head) = event;
        Tail = event;
    }

    QueuedEvent* TakeFirst() {
        QueuedEvent* event = Head;
        Head = event->Next;
        if (!Head)
            Tail = nullptr;
        return event;
    }
};

EventList PendingEvents;
EventList EventsToPurge;
QueuedEvent* SpareEvents = nullptr;
bool Purging = false;

EventList& ListInUse() {
    return Purging ? EventsToPurge : PendingEvents;
}

bool SurvivesPurge(int device, short value, int gid, int& inputWindow) {
    switch (device) {
    case gl::REDRAW:
    case gl::WINFREEZE:
    case gl::WINTHAW:
    case gl::REDRAWICONIC:
    case gl::WINQUIT:
    case gl::WINSHUT:
        return value != gid;
    case gl::INPUTCHANGE:
        inputWindow = value;
        return value != gid;
    case GOOEY_SPECIAL:
        return true;
    default:
        return inputWindow != gid;
    }
}

} // namespace

void QueueEvent(int device, short value) {
    QueuedEvent* event = SpareEvents;
    if (event)
        SpareEvents = event->Next;
    else
        event = static_cast<QueuedEvent*>(AllocateZeros(sizeof(QueuedEvent)));
    event->Device = device;
    event->Value = value;
    PendingEvents.Append(event);
}

namespace {

/// Takes every waiting event out and puts those back, in their order, that keep(device, value) wants.
template <class Keep>
void SiftEvents(Keep keep) {
    EventsToPurge = PendingEvents;
    PendingEvents = {};
    Purging = true;
    while (EventsPending()) {
        short value = 0;
        const int device = ReadEvent(value);
        if (keep(device, value))
            QueueEvent(device, value);
    }
    Purging = false;
    // Without a window left nothing is pending, but the records still are.
    while (EventsToPurge.Head) {
        QueuedEvent* event = EventsToPurge.TakeFirst();
        event->Next = SpareEvents;
        SpareEvents = event;
    }
    if (PendingEvents.Head)
        gl::HoldScript();
}

} // namespace

int EventsPending() {
    if (!WindowList)
        return 0;
    return ListInUse().Head || gl::qtest();
}

int ReadEvent(short& value) {
    EventList& list = ListInUse();
    if (!list.Head) {
        const int device = gl::qread(&value);
        MeasureScreen();
        return device;
    }
    QueuedEvent* event = list.TakeFirst();
    value = event->Value;
    event->Next = SpareEvents;
    SpareEvents = event;
    return event->Device;
}

void FreeEventQueue() {
    auto release = [](QueuedEvent* event) {
        while (event) {
            QueuedEvent* next = event->Next;
            Free(event);
            event = next;
        }
    };
    release(PendingEvents.Head);
    release(SpareEvents);
    PendingEvents = {};
    SpareEvents = nullptr;
}

void PurgeWindowEvents(int gid) {
    int inputWindow = CurrentWindow ? CurrentWindow->Gid : -1;
    SiftEvents([&](int device, short value) { return SurvivesPurge(device, value, gid, inputWindow); });
}

int TakeWaitingKey(int character) {
    int taken = 0;
    SiftEvents([&](int device, short value) {
        const bool takes = !taken && device == gl::KEYBD && value == character;
        taken |= takes;
        return !takes;
    });
    return taken;
}
