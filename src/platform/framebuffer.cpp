#include "platform/framebuffer.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "platform/batch.h"
#include "platform/capabilities.h"
#include "platform/compositor.h"
#include "platform/drawing_state.h"
#include "platform/graphics_context.h"
#include "platform/surface.h"
#include "platform/vertices.h"
#include "platform/waiting.h"

namespace gl {

namespace {

std::array<uint32_t, 256> OverlayMap;
std::array<uint32_t, 4> CursorMap = {0, 0x0000FF, 0xFFFFFF, 0xFFFFFF};

uint32_t* MapEntry(int index) {
    const int mode = State().Mode;
    if (mode == PUPDRAW && index >= 0 && index < 256)
        return &OverlayMap[index];
    if (mode == CURSORDRAW && index >= 0 && index < 4)
        return &CursorMap[index];
    return nullptr;
}

} // namespace

void RGBmode() {}

void doublebuffer() {
    State().WantsTwoBuffers = true;
}

void singlebuffer() {
    State().WantsTwoBuffers = false;
}

void zbsize(int bits) {
    State().WantsDepth = bits;
}

void stensize(int bits) {
    State().WantsStencil = bits;
}

void mssize(int samples, int depthBits, int) {
    State().WantsSamples = samples;
    State().WantsSampleDepth = depthBits;
}

void gconfig() {
    if (Surface* surface = CurrentSurface())
        surface->configure(State().WantsTwoBuffers, std::max(State().WantsSamples, 1));
    StateChanged = true;
}

int getgconfig(int what) {
    const Surface* surface = CurrentSurface();
    if (!surface)
        return 0;
    const bool sampled = surface->samples() > 1;
    switch (what) {
    case GC_MS_SAMPLES:
        return sampled ? surface->samples() : 0;
    case GC_MS_ZSIZE:
        return sampled ? 24 : 0;
    case GC_ZSIZE:
        return sampled ? 0 : 24;
    case GC_STENSIZE:
        return sampled ? 0 : 8;
    case GC_DOUBLEBUFFER:
        return surface->doubleBuffered();
    default:
        return 0;
    }
}

void multisample(bool on) {
    State().Raster.multisample = on;
    StateChanged = true;
}

void swapbuffers() {
    Surface* surface = CurrentSurface();
    if (!surface)
        return;
    surface->swap();
    if (surface->doubleBuffered())
        NoteSwap();
}

void frontbuffer(bool on) {
    if (State().ToFront == on)
        return;
    State().ToFront = on;
    StateChanged = true;
}

int getbuffer() {
    const Surface* surface = CurrentSurface();
    return State().ToFront || (surface && !surface->doubleBuffered()) ? FRNTBUFFER : BCKBUFFER;
}

void gflush() {
    FlushDrawing();
}

void drawmode(int mode) {
    if (mode < NORMALDRAW || mode > CURSORDRAW || mode == State().Mode)
        return;
    State().Mode = mode;
    StateChanged = true;
}

int getdrawmode() {
    return State().Mode;
}

void color(int index) {
    State().OverlayIndex = index & 255;
    if (State().Mode == PUPDRAW)
        Source.attributes.colour = 0xFF000000u | static_cast<uint32_t>(index & 255);
}

int getcolor() {
    return State().OverlayIndex;
}

void mapcolor(int index, int red, int green, int blue) {
    auto part = [](int value) { return static_cast<uint32_t>(std::clamp(value, 0, 255)); };
    uint32_t* entry = MapEntry(index);
    const uint32_t colour = part(blue) << 16 | part(green) << 8 | part(red);
    if (!entry || *entry == colour)
        return;
    *entry = colour;
    // What the overlay shows in that index looks different now.
    if (State().Mode == PUPDRAW)
        NoteOverlayColours();
}

void getmcolor(int index, short* red, short* green, short* blue) {
    const uint32_t* entry = MapEntry(index);
    const uint32_t colour = entry ? *entry : 0;
    *red = colour & 255;
    *green = colour >> 8 & 255;
    *blue = colour >> 16 & 255;
}

uint32_t OverlayColour(int index) {
    return OverlayMap[index & 255];
}

uint32_t CursorColour(int index) {
    return CursorMap[index & 3];
}

void fullscrn() {
    DrawingState& state = State();
    Surface* overlay = Overlay();
    if (state.FullScreen || !overlay)
        return;
    state.FullScreen = true;
    state.SavedViewport = state.Raster.viewport;
    state.SavedMask = state.Raster.mask;
    state.SavedProjection = state.Projection;
    state.SavedViewing = state.Viewing;
    state.SavedPixelExact = state.PixelExact;
    viewport(0, overlay->width() - 1, 0, overlay->height() - 1);
    ortho2(-0.5, overlay->width() - 0.5, -0.5, overlay->height() - 0.5);
    if (state.MatrixMode != MSINGLE) {
        state.Viewing.assign(1, Identity4);
        Source.viewingChanged = true;
    }
}

void endfullscrn() {
    DrawingState& state = State();
    if (!state.FullScreen)
        return;
    FlushDrawing();
    state.FullScreen = false;
    state.Raster.viewport = state.SavedViewport;
    state.Raster.mask = state.SavedMask;
    state.Projection = state.SavedProjection;
    state.Viewing = state.SavedViewing;
    state.PixelExact = state.SavedPixelExact;
    state.ProjectionVersion = NewVersion();
    Source.viewingChanged = true;
    StateChanged = true;
}

} // namespace gl
