#pragma once

#include "gooey/window.h"
#include "store/view_record.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

struct Pixel {
    double X, Y;
};

/// Runs views on a screen in memory, 1200 x 900 at scale 1, on an empty model in object mode, every flag as the program
/// starts with it. Nothing outlives a test.
class ViewsTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// A window of that size that takes the place of a viewport, set up like every window of the program and current.
    static Window* OpenPlain(int width, int height, void (*draw)() = nullptr);
    /// The main window of that size, with one viewport or three, all drawn.
    static void OpenMain(int viewports, int width = 750, int height = 560);
    /// Runs the dispatcher until it is idle.
    static void Settle();
    /// Plays a script through the dispatcher and lets it come to rest.
    static void Play(const std::string& script);

    /// Where the view that was set up last shows a model point, in pixels of the current window, by the matrices that
    /// picking uses.
    static Pixel PixelOf(double x, double y, double z);
    /// The same by the matrices that drawing uses, with the depth (-1 near to 1 far).
    static Pixel DrawnPixelOf(double x, double y, double z, double* depth = nullptr);
    /// The colour of a pixel of the buffer that the current window draws to, 0x00BBGGRR.
    static std::uint32_t Drawn(int x, int y);

    /// Gives the current object the eight corners of a box about the origin.
    static void AddBox(double halfX, double halfY, double halfZ);
    /// Gives the current object that bounding radius.
    static void SetRadius(double radius);
};
