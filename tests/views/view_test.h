#pragma once

#include "gooey/window.h"
#include "platform/picture.h"
#include "store/records.h"
#include "store/view_record.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

/// A window of 400 x 300 pixels in memory, and an empty model with materials of plain colours to be drawn in it. All
/// display flags are off but SolidView.
class ViewTest : public testing::Test {
  protected:
    static constexpr int Width = 400, Height = 300;
    static constexpr std::uint32_t Background = 0x402010;

    void SetUp() override;
    void TearDown() override;

    /// The window, as it is at first; a former one must be gone.
    static void OpenTheWindow();

    /// A material that looks the same from everywhere; packed colour 0xBBGGRR.
    static Material* AddGlow(std::uint32_t colour, float alpha = 1);
    static Vertex* AddPoint(double x, double y, double z);
    /// A polygon of new vertices in the current sub-object, on `parent` unless that is null.
    static Polygon* AddFace(const std::vector<std::array<double, 3>>& corners, Material* material,
                            Polygon* parent = nullptr);
    /// A square of this half size about a point, seen counter-clockwise from the front (y) or from above (z).
    static Polygon* AddFront(double x, double y, double z, double half, Material* material, Polygon* parent = nullptr);
    static Polygon* AddTop(double x, double y, double z, double half, Material* material, Polygon* parent = nullptr);
    /// Six squares that face outwards.
    static void AddCube(double half, Material* material);

    /// The view of a direction (Direction3D: the 3D view) as it starts for a model of this radius.
    static View& LookFrom(int direction, double radius);
    /// Draws into the window.
    static void Draw(View& view);
    /// A pixel of the window, 0xBBGGRR; and one row of them as letters: "." background, "#" white, "X" black, "R", "G",
    /// "B", "?" anything else.
    static std::uint32_t Pixel(int x, int y);
    static std::string Row(int x, int y, int count);
    /// The number of pixels of a colour.
    static long Count(std::uint32_t colour);
    static gl::Picture Shown();
    /// Where a model point is in the view drawn last, window pixels.
    static std::array<double, 2> PlaceOf(const View& view, double x, double y, double z);
    /// Leaves the picture in the folder that KIRVO_TEST_PICTURES names, to be looked at.
    static void Keep(const std::string& name);

    static Window* TheWindow;
    static View TheView;
};
