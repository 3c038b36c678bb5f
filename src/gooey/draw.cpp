#include "gooey/draw.h"

#include "gooey/window.h"

#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "platform/system.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <random>

std::uint32_t Colour[16];
int CrazyColours = 0;

namespace {

/// Inward steps of the bottom-left, bottom-right, top-left and top-right corner: always the same for the same box.
void JitterOf(int x, int y, int width, int jitter[4]) {
    if (!CurrentWindow || !CurrentWindow->Crazy)
        return;
    std::minstd_rand generator(static_cast<unsigned>(x) * static_cast<unsigned>(y) * static_cast<unsigned>(width));
    generator.discard(4);
    unsigned bits = generator() >> 8;
    for (int corner = 0; corner < 4; ++corner)
        jitter[corner] = bits >> corner & 1;
}

/// The shade of each edge of a bevel in its outermost line, and how it changes from line to line inwards.
struct Bevel {
    int Lines;
    int Bottom, BottomStep;
    int Right, RightStep;
    int Left, LeftStep;
    int Top, TopStep;
};

constexpr Bevel Raised = {4, 5, 1, 13, -1, 7, 1, 15, -1};
constexpr Bevel Lowered = {3, 9, 2, 6, -1, 8, 2, 5, -1};

void DrawBevel(const Bevel& bevel, int x, int y, int width, int height) {
    int jitter[4] = {};
    JitterOf(x, y, width, jitter);
    int x2 = x + width - 1, y2 = y + height - 1;
    for (int i = 0; i < bevel.Lines; ++i) {
        int left = x + i, right = x2 - i, bottom = y + i, top = y2 - i;
        DrawLine(left + jitter[0], bottom + jitter[0], right - jitter[1], bottom + jitter[1],
                 bevel.Bottom + i * bevel.BottomStep);
        DrawLine(right - jitter[1], bottom + jitter[1], right - jitter[3], top - jitter[3],
                 bevel.Right + i * bevel.RightStep);
        DrawLine(left + jitter[0], bottom + jitter[0], left + jitter[2], top - jitter[2],
                 bevel.Left + i * bevel.LeftStep);
        DrawLine(left + jitter[2], top - jitter[2], right - jitter[3], top - jitter[3], bevel.Top + i * bevel.TopStep);
    }
}

} // namespace

void SetColour(std::uint32_t rgb) {
    if (Colour[15] == rgb)
        return;
    for (std::uint32_t i = 0; i < 15; ++i) {
        Colour[i] = 0;
        for (int channel = 0; channel < 24; channel += 8)
            Colour[i] |= (rgb >> channel & 0xFF) * i / 15 << channel;
    }
    Colour[15] = rgb;
}

std::uint32_t RandomColour() {
    static bool seeded = false;
    if (!seeded)
        srandom(static_cast<unsigned>(gl::RandomSeed()));
    seeded = true;
    std::uint32_t colour = (static_cast<std::uint32_t>(random()) & 0xFFFFFF) | 0x010101;
    while (!(colour & 0x808080))
        colour <<= 1;
    return colour;
}

void DrawLine(int x1, int y1, int x2, int y2, int shade) {
    gl::cpack(Colour[shade]);
    const std::int32_t from[2] = {x1, y1}, to[2] = {x2, y2};
    gl::bgnline();
    gl::v2i(from);
    gl::v2i(to);
    gl::endline();
}

void DrawFrame(int x, int y, int width, int height, int shade) {
    if (width == 0 || height == 0)
        return;
    gl::cpack(Colour[shade]);
    gl::recti(x, y, x + width - 1, y + height - 1);
}

void DrawBox(int x, int y, int width, int height, int shade) {
    if (width == 0 || height == 0)
        return;
    gl::cpack(Colour[shade]);
    gl::rectfi(x, y, x + width - 1, y + height - 1);
}

void DrawRaisedBorder(int x, int y, int width, int height) {
    DrawBevel(Raised, x, y, width, height);
}

void DrawRaisedBoxOf(int x, int y, int width, int height, int faceShade) {
    DrawBox(x + 4, y + 4, width - 8, height - 8, faceShade);
    DrawRaisedBorder(x, y, width, height);
}

void DrawRaisedBox(int x, int y, int width, int height) {
    DrawRaisedBoxOf(x, y, width, height, ShadeRaised);
}

void DrawLoweredBorder(int x, int y, int width, int height) {
    DrawBevel(Lowered, x, y, width, height);
    DrawFrame(x + 3, y + 3, width - 6, height - 6, ShadeBlack);
}

void DrawLoweredBox(int x, int y, int width, int height) {
    DrawBox(x + 4, y + 4, width - 8, height - 8, ShadeLowered);
    DrawLoweredBorder(x, y, width, height);
}

void DrawTick(double x, double y, double size) {
    static constexpr double quadrilaterals[2][4][2] = {
        {{0.25, 0.45}, {0.5, 0.1}, {0.6, 0.2}, {0.4, 0.6}},
        {{0.6, 0.2}, {1.4, 1.0}, {1.3, 1.05}, {0.4, 0.27}},
    };
    for (const auto& quadrilateral : quadrilaterals) {
        gl::bgnpolygon();
        for (const auto& corner : quadrilateral) {
            const double position[2] = {x + corner[0] * size, y + corner[1] * size};
            gl::v2d(position);
        }
        gl::endpolygon();
    }
}

void itoa(int value, char* buffer) {
    *std::to_chars(buffer, buffer + 11, value).ptr = '\0';
}

void SetViewport(int x, int y, int width, int height) {
    gl::viewport(x, x + width - 1, y, y + height - 1);
    gl::ortho2(x - 0.5, x + width - 0.5, y - 0.5, y + height - 0.5);
}

void VanillaView() {
    static constexpr double identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    if (!CurrentWindow)
        return;
    SetViewport(0, 0, CurrentWindow->Width, CurrentWindow->Height);
    gl::loadmatrix(identity);
}

ClipScope::ClipScope(int x, int y, int width, int height) {
    std::int16_t left, right, bottom, top;
    gl::getscrmask(&left, &right, &bottom, &top);
    X = left;
    Y = bottom;
    Width = right - left + 1;
    Height = top - bottom + 1;
    int clippedLeft = std::max<int>(left, x), clippedRight = std::min<int>(right, x + width - 1);
    int clippedBottom = std::max<int>(bottom, y), clippedTop = std::min<int>(top, y + height - 1);
    gl::scrmask(clippedLeft, clippedRight, clippedBottom, clippedTop);
}

ClipScope::~ClipScope() {
    gl::scrmask(X, X + Width - 1, Y, Y + Height - 1);
}

void FrontBuffer(int on) {
    if (CurrentWindow && CurrentWindow->Flags & WindowDoubleBuffered)
        gl::frontbuffer(on);
}

int GetFrontBuffer() {
    return gl::getbuffer() & gl::FRNTBUFFER;
}

namespace {

void SetBuffering(int wanted, void (*request)()) {
    if (!CurrentWindow || (CurrentWindow->Flags & WindowDoubleBuffered) == wanted)
        return;
    gl::RGBmode();
    request();
    gl::gconfig();
    CurrentWindow->Flags ^= WindowDoubleBuffered;
}

} // namespace

void MakeDoubleBuffer() {
    SetBuffering(WindowDoubleBuffered, gl::doublebuffer);
}

void MakeSingleBuffer() {
    SetBuffering(0, gl::singlebuffer);
}
