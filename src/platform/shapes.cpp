// Rectangles, circles, clearing and pixel rectangles.
#include "platform/drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <epoxy/gl.h>

#include "platform/batch.h"
#include "platform/definitions.h"
#include "platform/drawing_state.h"
#include "platform/driver_state.h"
#include "platform/graphics_context.h"
#include "platform/recorder.h"
#include "platform/surface.h"
#include "platform/vertices.h"

namespace gl {

namespace {

constexpr double Pi = 3.141592653589793;

// Steps around a circle so that it is round on the screen.
int CircleSteps(double x, double y, double radius) {
    if (Recording())
        return 96;
    const double centre[3] = {x, y, 0}, right[3] = {x + radius, y, 0}, top[3] = {x, y + radius, 0};
    double c[3], r[3], t[3];
    if (!ToUnitCube(centre, c) || !ToUnitCube(right, r) || !ToUnitCube(top, t))
        return 96;
    const ScreenBox& box = State().Raster.viewport;
    const double w = 0.5 * ToPixels(box.right - box.left + 1), h = 0.5 * ToPixels(box.top - box.bottom + 1);
    const double pixels =
        std::max(std::hypot((r[0] - c[0]) * w, (r[1] - c[1]) * h), std::hypot((t[0] - c[0]) * w, (t[1] - c[1]) * h));
    if (!(pixels > 0 && pixels < 1e9))
        return 96;
    // The chord stays within a twentieth of a pixel of the arc.
    const double steps = Pi / std::acos(std::max(1 - 0.05 / std::max(pixels, 0.2), 0.0));
    return std::clamp(4 * static_cast<int>(std::ceil(steps / 4)), 12, 720);
}

void Curve(double x, double y, double radius, double start, double end, int steps) {
    for (int i = 0; i <= steps; i++) {
        const double angle = start + (end - start) * i / steps;
        const double point[2] = {x + radius * std::cos(angle), y + radius * std::sin(angle)};
        v2d(point);
    }
}

// The angles of an arc in radians, the end after the start.
std::pair<double, double> ArcAngles(int startAngle, int endAngle) {
    const double start = startAngle / 1800.0 * Pi;
    double end = endAngle / 1800.0 * Pi;
    while (end < start)
        end += 2 * Pi;
    return {start, std::min(end, start + 2 * Pi)};
}

// In pixel coordinates under a viewing matrix that only moves and scales, a rectangle covers the pixels of its corners:
// its edges lie half a drawing pixel further out. The result is in model coordinates.
void CoverPixels(double* x1, double* y1, double* x2, double* y2) {
    if (Recording() || !State().PixelExact)
        return;
    const Matrix4& m = EffectiveViewing();
    if (m[1] != 0 || m[4] != 0 || m[0] == 0 || m[5] == 0)
        return;
    double across, up;
    PixelsOfUnit(&across, &up);
    const double half = DrawingScale() / 2, dx = std::abs(half / (across * m[0])), dy = std::abs(half / (up * m[5]));
    if (!std::isfinite(dx) || !std::isfinite(dy))
        return;
    *x1 -= dx;
    *y1 -= dy;
    *x2 += dx;
    *y2 += dy;
}

unsigned PictureTexture = 0;

} // namespace

void rect(float x1, float y1, float x2, float y2) {
    const float corners[4][2] = {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
    bgnclosedline();
    for (const float* corner : corners)
        v2f(corner);
    endclosedline();
}

void rectf(float x1, float y1, float x2, float y2) {
    double left = std::min(x1, x2), right = std::max(x1, x2), bottom = std::min(y1, y2), top = std::max(y1, y2);
    CoverPixels(&left, &bottom, &right, &top);
    const double corners[4][2] = {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
    bgnpolygon();
    for (const double* corner : corners)
        v2d(corner);
    endpolygon();
}

void recti(int x1, int y1, int x2, int y2) {
    rect(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2), static_cast<float>(y2));
}

void rectfi(int x1, int y1, int x2, int y2) {
    rectf(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2), static_cast<float>(y2));
}

void circ(float x, float y, float radius) {
    const int steps = CircleSteps(x, y, radius);
    bgnclosedline();
    Curve(x, y, radius, 0, 2 * Pi * (steps - 1) / steps, steps - 1);
    endclosedline();
}

void circf(float x, float y, float radius) {
    const int steps = CircleSteps(x, y, radius);
    bgnpolygon();
    Curve(x, y, radius, 0, 2 * Pi * (steps - 1) / steps, steps - 1);
    endpolygon();
}

void arc(float x, float y, float radius, int startAngle, int endAngle) {
    const auto [start, end] = ArcAngles(startAngle, endAngle);
    bgnline();
    Curve(x, y, radius, start, end,
          std::max(1, static_cast<int>(CircleSteps(x, y, radius) * (end - start) / (2 * Pi))));
    endline();
}

void arcf(float x, float y, float radius, int startAngle, int endAngle) {
    const auto [start, end] = ArcAngles(startAngle, endAngle);
    const double centre[2] = {x, y};
    bgnpolygon();
    v2d(centre);
    Curve(x, y, radius, start, end,
          std::max(1, static_cast<int>(CircleSteps(x, y, radius) * (end - start) / (2 * Pi))));
    endpolygon();
}

void clear() {
    if (Recording()) {
        KeepColoured([] { clear(); });
        return;
    }
    DrawingState& state = State();
    if (state.Raster.pattern) {
        // A pattern is drawn, not cleared.
        const RasterState raster = state.Raster;
        state.Raster.depthTest = state.Raster.cullBack = state.Raster.alphaToCoverage = false;
        state.Raster.sourceFactor = BF_ONE;
        state.Raster.destinationFactor = BF_ZERO;
        state.Raster.alphaFunction = AF_ALWAYS;
        StateChanged = true;
        SetImage(WhiteTexture());
        BeginShape(Shape::Picture);
        if (CanDraw()) {
            Vertex corners[4] = {Source.attributes, Source.attributes, Source.attributes, Source.attributes};
            const float positions[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
            for (int i = 0; i < 4; i++) {
                corners[i].position[0] = positions[i][0];
                corners[i].position[1] = positions[i][1];
                corners[i].position[2] = 0;
                corners[i].slot = -1;
            }
            AddQuad(corners);
        }
        FlushDrawing();
        state.Raster = raster;
        StateChanged = true;
        return;
    }
    if (DrawingToOverlay()) {
        const float index = static_cast<float>(state.OverlayIndex) / 255;
        const float colour[4] = {index, index, 1, 1};
        const float transparent[4] = {0, 0, 0, 0};
        ClearTarget(state.OverlayIndex ? colour : transparent, -1);
        return;
    }
    const uint32_t c = state.Colour;
    const float colour[4] = {static_cast<float>(c & 255) / 255, static_cast<float>(c >> 8 & 255) / 255,
                             static_cast<float>(c >> 16 & 255) / 255, static_cast<float>(c >> 24) / 255};
    ClearTarget(colour, -1);
}

void zclear() {
    if (!RecordCommand([] { zclear(); }))
        ClearTarget(nullptr, 1);
}

void czclear(uint32_t c, int32_t depth) {
    if (RecordCommand([=] { czclear(c, depth); }))
        return;
    const float colour[4] = {static_cast<float>(c & 255) / 255, static_cast<float>(c >> 8 & 255) / 255,
                             static_cast<float>(c >> 16 & 255) / 255, static_cast<float>(c >> 24) / 255};
    ClearTarget(colour, static_cast<double>(std::clamp(depth, 0, FarthestDepth)) / FarthestDepth);
}

void lrectwrite(int x1, int y1, int x2, int y2, const uint32_t* pixels) {
    const int width = x2 - x1 + 1, height = y2 - y1 + 1;
    if (width < 1 || height < 1 || !GraphicsReady() || !CurrentSurface())
        return;
    if (Recording()) {
        std::vector<uint32_t> copy(pixels, pixels + static_cast<size_t>(width) * height);
        KeepCommand([=] { lrectwrite(x1, y1, x2, y2, copy.data()); });
        return;
    }
    FlushDrawing();
    if (!PictureTexture)
        glGenTextures(1, &PictureTexture);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, PictureTexture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    ForgetDriverState();
    StateChanged = true;
    SetImage(PictureTexture);
    BeginShape(Shape::Picture);
    if (!CanDraw())
        return;
    const ScreenBox& box = State().Raster.viewport;
    auto unitX = [&box](int x) { return 2.0f * static_cast<float>(x - box.left) / (box.right - box.left + 1) - 1; };
    auto unitY = [&box](int y) { return 2.0f * static_cast<float>(y - box.bottom) / (box.top - box.bottom + 1) - 1; };
    const float xs[4] = {unitX(x1), unitX(x2 + 1), unitX(x2 + 1), unitX(x1)};
    const float ys[4] = {unitY(y1), unitY(y1), unitY(y2 + 1), unitY(y2 + 1)};
    Vertex corners[4];
    for (int i = 0; i < 4; i++)
        corners[i] = {{xs[i], ys[i], -1}, {0, 0, 0}, -1, 0xFFFFFFFF, {i == 1 || i == 2 ? 1.0f : 0, i >= 2 ? 1.0f : 0}};
    AddQuad(corners);
    FlushDrawing();
}

int lrectread(int x1, int y1, int x2, int y2, uint32_t* pixels) {
    Surface* surface = CurrentSurface();
    const int width = x2 - x1 + 1, height = y2 - y1 + 1;
    if (!surface || width < 1 || height < 1)
        return 0;
    const PixelBox box = {ToPixels(x1), ToPixels(y1), ToPixels(x2 + 1) - ToPixels(x1), ToPixels(y2 + 1) - ToPixels(y1)};
    const std::vector<uint32_t> screen = ReadPixels(*surface, State().ToFront ? Buffer::Front : Buffer::Back, box);
    for (int y = 0; y < height; y++)
        for (int x = 0; x < width; x++) {
            const int px = (ToPixels(x1 + x) + ToPixels(x1 + x + 1)) / 2 - box.x;
            const int py = (ToPixels(y1 + y) + ToPixels(y1 + y + 1)) / 2 - box.y;
            pixels[static_cast<size_t>(y) * width + x] = screen[static_cast<size_t>(py) * box.width + px];
        }
    return width * height;
}

} // namespace gl
