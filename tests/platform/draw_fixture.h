// What the drawing tests share: a window's surface without a display, and its pixels.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/graphics_context.h"
#include "platform/lighting.h"
#include "platform/matrices.h"
#include "platform/picture.h"
#include "platform/recordings.h"
#include "platform/state.h"
#include "platform/surface.h"
#include "platform/text.h"
#include "platform/textures.h"

namespace gl {

constexpr uint32_t Black = 0xFF000000, White = 0xFFFFFFFF, Red = 0xFF0000FF, Green = 0xFF00FF00, Blue = 0xFFFF0000;

// A single-buffered surface in pixel coordinates, black, unless said otherwise.
class Drawing : public testing::Test {
  protected:
    explicit Drawing(int width = 64, int height = 48, double scale = 1) : Width(width), Height(height), Scale(scale) {}

    void SetUp() override { Open(Scale, false); }

    void TearDown() override { Close(); }

    void Open(double scale, bool doubleBuffered) {
        std::string error;
        SetDrawingScale(scale);
        ASSERT_TRUE(OpenHeadlessContext(error)) << error;
        Window = std::make_unique<Surface>(Width, Height, doubleBuffered);
        MakeSurfaceCurrent(Window.get());
        mmode(MVIEWING);
        PixelCoordinates();
        ClearTo(0);
    }

    void Close() {
        SurfaceDamaged = nullptr;
        Window.reset();
        CloseGraphics();
        SetDrawingScale(1);
    }

    void PixelCoordinates() {
        viewport(0, Width - 1, 0, Height - 1);
        ortho2(-0.5, Width - 0.5, -0.5, Height - 0.5);
        LoadIdentity();
    }

    void LoadIdentity() {
        const double identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        loadmatrix(identity);
    }

    void ClearTo(uint32_t colour) { czclear(colour, 0xFFFFFF); }

    Picture Shown(Buffer buffer = Buffer::Front) {
        Picture picture;
        picture.width = Window->pixelWidth();
        picture.height = Window->pixelHeight();
        picture.pixels = ReadPixels(*Window, buffer, {0, 0, picture.width, picture.height});
        return picture;
    }

    uint32_t Pixel(int x, int y) { return ReadPixels(*Window, Buffer::Front, {x, y, 1, 1})[0]; }

    // The pixels of a row or column from (x, y), as letters: "." black, "#" white, "R", "G", "B", "?" anything else.
    std::string Row(int x, int y, int count) { return Letters({x, y, count, 1}); }

    std::string Column(int x, int y, int count) { return Letters({x, y, 1, count}); }

    // How many pixels of the picture are not black.
    long Drawn() {
        long count = 0;
        for (uint32_t pixel : Shown().pixels)
            count += pixel != Black;
        return count;
    }

    static void Line(double x1, double y1, double x2, double y2) {
        const double a[2] = {x1, y1}, b[2] = {x2, y2};
        bgnline();
        v2d(a);
        v2d(b);
        endline();
    }

    // A filled quadrilateral in the plane z, counter-clockwise.
    static void Quad(double x1, double y1, double x2, double y2, double z = 0) {
        const double corners[4][3] = {{x1, y1, z}, {x2, y1, z}, {x2, y2, z}, {x1, y2, z}};
        bgnpolygon();
        for (const double* corner : corners)
            v3d(corner);
        endpolygon();
    }

    // Each channel differs by at most `tolerance`.
    static testing::AssertionResult Near(uint32_t a, uint32_t b, int tolerance) {
        for (int shift = 0; shift < 24; shift += 8)
            if (std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255)) > tolerance)
                return testing::AssertionFailure() << std::hex << a << " is not " << b;
        return testing::AssertionSuccess();
    }

    int Width, Height;
    double Scale;
    std::unique_ptr<Surface> Window;

  private:
    std::string Letters(const PixelBox& box) {
        std::string letters;
        for (uint32_t pixel : ReadPixels(*Window, Buffer::Front, box))
            letters += pixel == Black   ? '.'
                       : pixel == White ? '#'
                       : pixel == Red   ? 'R'
                       : pixel == Green ? 'G'
                       : pixel == Blue  ? 'B'
                                        : '?';
        return letters;
    }
};

} // namespace gl
