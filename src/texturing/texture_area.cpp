#include "texturing/texture_area.h"

#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/text_input.h"
#include "gooey/window.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "views/rendering_state.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int AreaX = 4, TopMargin = 40, FrameWidth = 2;
constexpr int PointSize = 7;

/// A range without size shows this much.
constexpr float LeastExtent = 0.1F;

void FitOne(float from, float to, float margin, float& least, float& greatest) {
    if (to - from < LeastExtent / 100) {
        from -= LeastExtent / 2;
        to += LeastExtent / 2;
    }
    least = from - margin * (to - from);
    greatest = to + margin * (to - from);
}

GadgetBox FrameOf(const GadgetBox& box) {
    return {box.X - FrameWidth, box.Y - FrameWidth, box.Width + 2 * FrameWidth, box.Height + 2 * FrameWidth};
}

} // namespace

void TextureRange::Fit(float s0, float s1, float t0, float t1, float margin) {
    FitOne(s0, s1, margin, SMin, SMax);
    FitOne(t0, t1, margin, TMin, TMax);
}

TextureArea TextureAreaOf(const TextureRange& range, int rightMargin) {
    const int y = InputHeight(TextSmallFont) + 8;
    const int width = CurrentWindow->Width - AreaX - rightMargin, height = CurrentWindow->Height - y - TopMargin;
    return {
        {AreaX + FrameWidth, y + FrameWidth, std::max(1, width - 2 * FrameWidth), std::max(1, height - 2 * FrameWidth)},
        &range};
}

void DrawTextureArea(const TextureArea& area) {
    const GadgetBox frame = FrameOf(area.Box);
    SetColour(White);
    DrawFrame(frame.X, frame.Y, frame.Width, frame.Height, ShadeFull);
    DrawFrame(frame.X + 1, frame.Y + 1, frame.Width - 2, frame.Height - 2, ShadeBlack);
    const GadgetBox& box = area.Box;
    if (!CurrentTexture()) {
        DrawBox(box.X, box.Y, box.Width, box.Height, ShadeNeutral);
        return;
    }
    const TextureRange& range = *area.Range;
    const float coordinates[4][2] = {
        {range.SMin, range.TMin}, {range.SMax, range.TMin}, {range.SMax, range.TMax}, {range.SMin, range.TMax}};
    const ClipScope clip(box.X, box.Y, box.Width, box.Height);
    BindTexture(CurrentTexture());
    gl::cpack(White);
    gl::bgnpolygon();
    for (const auto& corner : coordinates) {
        const double place[2] = {area.X(corner[0]), area.Y(corner[1])};
        gl::t2f(corner);
        gl::v2d(place);
    }
    gl::endpolygon();
    BindTexture(nullptr);
}

void DrawTextureLine(const TextureArea& area, const float (*coordinates)[2], int count, bool closed) {
    const GadgetBox& box = area.Box;
    const ClipScope clip(box.X, box.Y, box.Width, box.Height);
    Subpixelling(1);
    for (const bool edge : {true, false}) {
        gl::cpack(edge ? Black : White);
        gl::linewidth(edge ? 4 : 2);
        closed ? gl::bgnclosedline() : gl::bgnline();
        for (int i = 0; i < count; ++i) {
            const double place[2] = {area.X(coordinates[i][0]), area.Y(coordinates[i][1])};
            gl::v2d(place);
        }
        closed ? gl::endclosedline() : gl::endline();
    }
    gl::linewidth(1);
    Subpixelling(0);
}

GadgetBox TexturePointBox(const TextureArea& area, const float* coordinates) {
    // Far off the area a pixel is no whole number any more.
    const auto pixel = [](double place) { return static_cast<int>(std::lround(std::clamp(place, -1e6, 1e6))); };
    return {pixel(area.X(coordinates[0])) - PointSize / 2, pixel(area.Y(coordinates[1])) - PointSize / 2, PointSize,
            PointSize};
}

void DrawTexturePoint(const TextureArea& area, const float* coordinates) {
    const GadgetBox point = TexturePointBox(area, coordinates);
    const GadgetBox& box = area.Box;
    const ClipScope clip(box.X, box.Y, box.Width, box.Height);
    SetColour(White);
    DrawBox(point.X, point.Y, PointSize, PointSize, ShadeBlack);
    DrawFrame(point.X + 1, point.Y + 1, PointSize - 2, PointSize - 2, ShadeFull);
}
