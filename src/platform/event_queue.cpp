#include "platform/event_queue.h"

#include "platform/events.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <utility>

namespace gl {

namespace {

struct QueueState {
    std::deque<QueueEvent> Waiting;
    std::set<int> Queued;
    std::map<int, std::pair<int, int>> Ties;
    std::map<int, int> Values;
};

QueueState Queue;

} // namespace

void AppendEvent(int device, int value) {
    Queue.Waiting.push_back({device, static_cast<std::int16_t>(value)});
}

void AppendRedraw(int window) {
    const bool waits = std::any_of(Queue.Waiting.begin(), Queue.Waiting.end(), [&](const QueueEvent& event) {
        return event.Device == REDRAW && event.Value == window;
    });
    if (!waits)
        AppendEvent(REDRAW, window);
}

void DeviceChanged(int device, int value) {
    Queue.Values[device] = value;
    if (!Queue.Queued.contains(device))
        return;
    AppendEvent(device, value);
    if (auto tied = Queue.Ties.find(device); tied != Queue.Ties.end()) {
        AppendEvent(tied->second.first, DeviceValue(tied->second.first));
        AppendEvent(tied->second.second, DeviceValue(tied->second.second));
    }
}

void SetDeviceValue(int device, int value) {
    Queue.Values[device] = value;
}

int DeviceValue(int device) {
    const auto found = Queue.Values.find(device);
    return found == Queue.Values.end() ? 0 : found->second;
}

bool DeviceIsQueued(int device) {
    return Queue.Queued.contains(device);
}

bool QueueIsEmpty() {
    return Queue.Waiting.empty();
}

int FirstDevice() {
    return Queue.Waiting.empty() ? 0 : Queue.Waiting.front().Device;
}

QueueEvent TakeEvent() {
    if (Queue.Waiting.empty())
        return {};
    const QueueEvent event = Queue.Waiting.front();
    Queue.Waiting.pop_front();
    return event;
}

void ResetQueue() {
    Queue = {};
}

// The part of the public calls that only concerns the queue.

void qdevice(int device) {
    Queue.Queued.insert(device);
}

void unqdevice(int device) {
    Queue.Queued.erase(device);
}

int isqueued(int device) {
    return DeviceIsQueued(device) ? 1 : 0;
}

void tie(int device, int valuator1, int valuator2) {
    if (valuator1 == 0 && valuator2 == 0)
        Queue.Ties.erase(device);
    else
        Queue.Ties[device] = {valuator1, valuator2};
}

void qenter(int device, short value) {
    AppendEvent(device, value);
}

void qreset() {
    Queue.Waiting.clear();
}

} // namespace gl
