// A headless screen for a test, opened anew for each.
#pragma once

#include "platform/display.h"
#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/input.h"
#include "platform/snapshots.h"
#include "platform/windows.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

namespace gl {

inline bool operator==(const QueueEvent& a, const QueueEvent& b) {
    return a.Device == b.Device && a.Value == b.Value;
}

inline std::ostream& operator<<(std::ostream& out, const QueueEvent& event) {
    return out << "(" << event.Device << ", " << event.Value << ")";
}

inline bool operator==(const WindowRectangle& a, const WindowRectangle& b) {
    return a.X == b.X && a.Y == b.Y && a.Width == b.Width && a.Height == b.Height;
}

inline std::ostream& operator<<(std::ostream& out, const WindowRectangle& box) {
    return out << box.Width << "x" << box.Height << " at " << box.X << ", " << box.Y;
}

} // namespace gl

class HeadlessScreen : public testing::Test {
  protected:
    void SetUp() override { Open("headless:800x600", nullptr); }

    void TearDown() override { gl::EndDisplay(); }

    // Closes what is open and opens a screen with those settings.
    static void Open(const char* display, const char* scale) {
        gl::EndDisplay();
        setenv("KIRVO_DISPLAY", display, 1);
        if (scale)
            setenv("KIRVO_SCALE", scale, 1);
        else
            unsetenv("KIRVO_SCALE");
        std::string reason;
        ASSERT_TRUE(gl::StartDisplay(reason)) << reason;
    }

    // A window whose content covers that rectangle.
    static int OpenAt(const char* title, int x, int y, int width, int height) {
        gl::prefposition(x, x + width - 1, y, y + height - 1);
        return gl::winopen(title);
    }

    static int OpenSubwindow(int parent, int x, int y, int width, int height) {
        gl::prefposition(x, x + width - 1, y, y + height - 1);
        return gl::swinopen(parent);
    }

    // Everything that waits in the queue, taken out.
    static std::vector<gl::QueueEvent> Events() {
        std::vector<gl::QueueEvent> events;
        while (gl::qtest() != 0) {
            short value = 0;
            const int device = gl::qread(&value);
            events.push_back({device, value});
        }
        return events;
    }

    static void Click(int button, int x, int y) {
        gl::PointerMoved(x, y);
        gl::ButtonChanged(button, true);
        gl::ButtonChanged(button, false);
    }

    static void DragLeft(int x1, int y1, int x2, int y2) {
        gl::PointerMoved(x1, y1);
        gl::ButtonChanged(gl::LEFTMOUSE, true);
        gl::PointerMoved((x1 + x2) / 2, (y1 + y2) / 2);
        gl::PointerMoved(x2, y2);
        gl::ButtonChanged(gl::LEFTMOUSE, false);
    }
};
