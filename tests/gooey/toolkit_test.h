#pragma once

#include "gooey/window.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// An event as a window's event function got it.
struct SeenEvent {
    int Device;
    int Value;
    /// The pointer in the window; not compared.
    int X = 0, Y = 0;

    bool operator==(const SeenEvent& other) const { return Device == other.Device && Value == other.Value; }
};

/// Runs the toolkit on a screen in memory, 800 x 600 at scale 1, and forgets everything after each test.
class ToolkitTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Starts over with another number of screen pixels per drawing pixel.
    static void UseScale(int scale);

    /// Opens a window with its content's lower left corner there; what happens to it is recorded below.
    static Window* Open(const char* title, int x, int y, int width, int height, int flags = WindowDoubleBuffered,
                        Window* parent = nullptr);
    /// Plays a script through the dispatcher and lets it come to rest. -1 when the program was asked to end.
    static int Play(const std::string& script);
    /// Runs the dispatcher until it is idle. -1 when the program was asked to end.
    static int Settle();

    /// What the event functions got.
    static std::vector<SeenEvent> Events;
    /// The titles of the windows that were shut, in order.
    static std::vector<std::string> Shut;
    /// How often a window was drawn.
    static int Draws;
};
