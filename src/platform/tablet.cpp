#include "platform/tablet.h"

#include "platform/events.h"
#include "platform/input.h"

#include <libevdev/libevdev.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace gl {

namespace {

constexpr int LargestUnit = 32767; // values of events have 16 bits

struct TabletState {
    int File = -1;
    libevdev* Device = nullptr;
    TabletAxes Axes;
    int X = 0, Y = 0;
    std::vector<std::pair<int, bool>> Buttons; // changed since the last report
};

TabletState Tablet;

void Refuse(const char* path, const char* reason) {
    std::fprintf(stderr, "KIRVO_TABLET: cannot use %s: %s\n", path, reason);
    CloseTablet();
}

// A report is complete: the place first, so that a button is tied to where it was pressed.
void Report() {
    const TabletPosition position = ToTabletUnits(Tablet.Axes, Tablet.X, Tablet.Y);
    PuckMoved(position.X, position.Y);
    for (const auto& [button, pressed] : std::exchange(Tablet.Buttons, {}))
        PuckButtonChanged(BPAD0 + button, pressed);
}

void TakeIn(const input_event& event) {
    if (event.type == EV_ABS && event.code == ABS_X) {
        Tablet.X = event.value;
    } else if (event.type == EV_ABS && event.code == ABS_Y) {
        Tablet.Y = event.value;
    } else if (event.type == EV_KEY && event.value != 2) {
        if (const int button = PuckButtonOf(event.code); button >= 0)
            Tablet.Buttons.emplace_back(button, event.value != 0);
    } else if (event.type == EV_SYN && event.code == SYN_REPORT) {
        Report();
    }
}

} // namespace

TabletPosition ToTabletUnits(const TabletAxes& axes, int x, int y) {
    const long long width = std::max(1, axes.MostX - axes.LeastX), height = std::max(1, axes.MostY - axes.LeastY);
    const long long largest = std::max(width, height);
    long long across = std::clamp<long long>(static_cast<long long>(x) - axes.LeastX, 0, width);
    long long up = std::clamp<long long>(static_cast<long long>(axes.MostY) - y, 0, height);
    if (largest > LargestUnit) {
        across = across * LargestUnit / largest;
        up = up * LargestUnit / largest;
    }
    return {static_cast<int>(across), static_cast<int>(up)};
}

int PuckButtonOf(int code) {
    switch (code) {
    case BTN_0:
    case BTN_LEFT:
    case BTN_TOUCH:
        return 0;
    case BTN_1:
    case BTN_RIGHT:
    case BTN_STYLUS:
        return 1;
    case BTN_2:
    case BTN_MIDDLE:
    case BTN_STYLUS2:
        return 2;
    case BTN_3:
    case BTN_SIDE:
        return 3;
    default:
        return -1;
    }
}

void OpenTablet(const char* path) {
    CloseTablet();
    if (!path || !*path)
        return;
    Tablet.File = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (Tablet.File < 0)
        return Refuse(path, std::strerror(errno));
    if (const int result = libevdev_new_from_fd(Tablet.File, &Tablet.Device); result < 0)
        return Refuse(path, std::strerror(-result));
    if (!libevdev_has_event_code(Tablet.Device, EV_ABS, ABS_X) ||
        !libevdev_has_event_code(Tablet.Device, EV_ABS, ABS_Y))
        return Refuse(path, "it reports no positions");
    Tablet.Axes = {libevdev_get_abs_minimum(Tablet.Device, ABS_X), libevdev_get_abs_maximum(Tablet.Device, ABS_X),
                   libevdev_get_abs_minimum(Tablet.Device, ABS_Y), libevdev_get_abs_maximum(Tablet.Device, ABS_Y)};
    Tablet.X = libevdev_get_event_value(Tablet.Device, EV_ABS, ABS_X);
    Tablet.Y = libevdev_get_event_value(Tablet.Device, EV_ABS, ABS_Y);
    libevdev_grab(Tablet.Device, LIBEVDEV_GRAB);
}

void CloseTablet() {
    if (Tablet.Device)
        libevdev_free(Tablet.Device);
    if (Tablet.File >= 0)
        close(Tablet.File);
    Tablet = {};
}

void ReadTablet() {
    if (Tablet.Device)
        TakeTabletEvents(
            [](unsigned flags, input_event& event) { return libevdev_next_event(Tablet.Device, flags, &event); });
}

void TakeTabletEvents(int (*next)(unsigned flags, input_event& event)) {
    for (;;) {
        input_event event{};
        int result = next(LIBEVDEV_READ_FLAG_NORMAL, event);
        // Events were lost: the device tells its state anew.
        while (result == LIBEVDEV_READ_STATUS_SYNC) {
            TakeIn(event);
            result = next(LIBEVDEV_READ_FLAG_SYNC, event);
        }
        if (result == -ENODEV)
            return Refuse("the tablet", "it was unplugged");
        if (result < 0 && result != -EAGAIN && result != -EINTR)
            return Refuse("the tablet", std::strerror(-result));
        if (result != LIBEVDEV_READ_STATUS_SUCCESS)
            return;
        TakeIn(event);
    }
}

} // namespace gl
