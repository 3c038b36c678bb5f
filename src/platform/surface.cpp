#include "platform/surface.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <epoxy/gl.h>

#include "platform/batch.h"
#include "platform/drawing_state.h"
#include "platform/graphics_context.h"

namespace gl {

void (*SurfaceDamaged)(Surface& surface, const PixelBox& box) = nullptr;

namespace {

double Scale = 1;
Surface* Current = nullptr;
std::unique_ptr<OverlaySurface> OverlayPlanes;
uint32_t Versions = 0;

DrawingState& ScratchState() {
    static DrawingState state;
    return state;
}

} // namespace

PixelBox UnionOf(const PixelBox& a, const PixelBox& b) {
    if (a.empty())
        return b;
    if (b.empty())
        return a;
    const int x = std::min(a.x, b.x), y = std::min(a.y, b.y);
    return {x, y, std::max(a.x + a.width, b.x + b.width) - x, std::max(a.y + a.height, b.y + b.height) - y};
}

PixelBox IntersectionOf(const PixelBox& a, const PixelBox& b) {
    const int x = std::max(a.x, b.x), y = std::max(a.y, b.y);
    return {x, y, std::min(a.x + a.width, b.x + b.width) - x, std::min(a.y + a.height, b.y + b.height) - y};
}

void SetDrawingScale(double scale) {
    Scale = std::clamp(scale, 0.5, 8.0);
}

double DrawingScale() {
    return Scale;
}

int ToPixels(double length) {
    return static_cast<int>(std::floor(length * Scale + 0.5));
}

// One colour buffer that is read (and drawn to unless multisampled), and where drawing goes.
struct Surface::Buffers {
    struct Plane {
        unsigned texture = 0, framebuffer = 0;            // one sample a pixel
        unsigned sampleColour = 0, sampleFramebuffer = 0; // multisampled, or 0
    };

    Plane planes[2]; // shown, hidden
    unsigned depth = 0, sampleDepth = 0;
};

Surface::Surface(int width, int height, bool doubleBuffered)
    : SurfaceKind(Kind::Window),
      Width(std::max(width, 1)),
      Height(std::max(height, 1)),
      DoubleBuffered(doubleBuffered),
      Planes(std::make_unique<Buffers>()),
      State(std::make_unique<DrawingState>()) {
    allocate();
    State->Target = this;
    State->Raster.viewport =
        State->Raster.mask = {0, static_cast<int16_t>(Width - 1), 0, static_cast<int16_t>(Height - 1)};
    State->WantsTwoBuffers = doubleBuffered;
    // Pixel coordinates: ortho2 over the whole surface.
    State->Viewing[0] = {2.0 / Width,      0, 0, 0, 0, 2.0 / Height, 0, 0, 0, 0, -1, 0, 1.0 / Width - 1,
                         1.0 / Height - 1, 0, 1};
    State->PixelExact = true;
    State->ProjectionVersion = NewVersion();
}

Surface::Surface(Kind kind, int width, int height) : Surface(width, height, false) {
    if (kind == Kind::Window)
        return;
    release();
    SurfaceKind = kind;
    allocate();
}

Surface::~Surface() {
    ForgetSurface(this);
    if (Current == this)
        MakeSurfaceCurrent(nullptr);
    release();
}

void Surface::allocate() {
    PixelWidth = std::max(ToPixels(Width), 1);
    PixelHeight = std::max(ToPixels(Height), 1);
    const bool overlay = SurfaceKind == Kind::Overlay;
    Buffers& b = *Planes;
    auto depthBuffer = [&](unsigned& name, int samples) {
        glGenRenderbuffers(1, &name);
        glBindRenderbuffer(GL_RENDERBUFFER, name);
        if (samples > 1)
            glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_DEPTH24_STENCIL8, PixelWidth, PixelHeight);
        else
            glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH24_STENCIL8, PixelWidth, PixelHeight);
    };
    const bool sampled = Samples > 1 && !overlay;
    if (!overlay && !sampled)
        depthBuffer(b.depth, 1);
    if (sampled)
        depthBuffer(b.sampleDepth, Samples);

    auto clear = [&] {
        glDisable(GL_SCISSOR_TEST);
        glColorMask(true, true, true, true);
        glDepthMask(true);
        glClearColor(0, 0, 0, overlay ? 0 : 1);
        glClearDepthf(1);
        glClear(GL_COLOR_BUFFER_BIT | (overlay ? 0 : GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT));
    };
    for (int i = 0; i < (DoubleBuffered && !overlay ? 2 : 1); i++) {
        Buffers::Plane& plane = b.planes[i];
        glGenTextures(1, &plane.texture);
        glBindTexture(GL_TEXTURE_2D, plane.texture);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, PixelWidth, PixelHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glGenFramebuffers(1, &plane.framebuffer);
        glBindFramebuffer(GL_FRAMEBUFFER, plane.framebuffer);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, plane.texture, 0);
        if (b.depth)
            glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, b.depth);
        clear();
        if (sampled) {
            glGenRenderbuffers(1, &plane.sampleColour);
            glBindRenderbuffer(GL_RENDERBUFFER, plane.sampleColour);
            glRenderbufferStorageMultisample(GL_RENDERBUFFER, Samples, GL_RGBA8, PixelWidth, PixelHeight);
            glGenFramebuffers(1, &plane.sampleFramebuffer);
            glBindFramebuffer(GL_FRAMEBUFFER, plane.sampleFramebuffer);
            glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, plane.sampleColour);
            glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, b.sampleDepth);
            clear();
        }
    }
    ForgetBatchState();
}

void Surface::release() {
    Buffers& b = *Planes;
    for (Buffers::Plane& plane : b.planes) {
        glDeleteFramebuffers(1, &plane.framebuffer);
        glDeleteFramebuffers(1, &plane.sampleFramebuffer);
        glDeleteTextures(1, &plane.texture);
        glDeleteRenderbuffers(1, &plane.sampleColour);
    }
    glDeleteRenderbuffers(1, &b.depth);
    glDeleteRenderbuffers(1, &b.sampleDepth);
    b = {};
    ForgetBatchState();
}

void Surface::resize(int width, int height) {
    width = std::max(width, 1);
    height = std::max(height, 1);
    if (width == Width && height == Height)
        return;
    FlushDrawing();
    Buffers former = std::exchange(*Planes, {});
    const int keptWidth = PixelWidth, keptHeight = PixelHeight;
    Width = width;
    Height = height;
    allocate();
    glDisable(GL_SCISSOR_TEST);
    auto copy = [&](unsigned from, unsigned to) {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, from);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, to);
        const int w = std::min(keptWidth, PixelWidth), h = std::min(keptHeight, PixelHeight);
        glBlitFramebuffer(0, keptHeight - h, w, keptHeight, 0, PixelHeight - h, w, PixelHeight, GL_COLOR_BUFFER_BIT,
                          GL_NEAREST);
    };
    for (int i = 0; i < 2; i++) {
        if (former.planes[i].framebuffer)
            copy(former.planes[i].framebuffer, Planes->planes[i].framebuffer);
        if (former.planes[i].sampleFramebuffer)
            copy(former.planes[i].sampleFramebuffer, Planes->planes[i].sampleFramebuffer);
    }
    std::swap(former, *Planes);
    release();
    *Planes = former;
    ForgetBatchState();
}

void Surface::configure(bool doubleBuffered, int samples) {
    samples = std::clamp(samples, 1, GrantedSamples());
    if (doubleBuffered == DoubleBuffered && samples == Samples)
        return;
    FlushDrawing();
    const Buffers former = std::exchange(*Planes, {});
    DoubleBuffered = doubleBuffered;
    Samples = samples;
    allocate();
    // The picture that is shown stays.
    glDisable(GL_SCISSOR_TEST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, former.planes[0].framebuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, Planes->planes[0].framebuffer);
    glBlitFramebuffer(0, 0, PixelWidth, PixelHeight, 0, 0, PixelWidth, PixelHeight, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    Buffers fresh = std::exchange(*Planes, former);
    release();
    *Planes = fresh;
    ForgetBatchState();
}

void Surface::swap() {
    FlushDrawing();
    if (!DoubleBuffered)
        return;
    const PixelBox all = {0, 0, PixelWidth, PixelHeight};
    resolve(Buffer::Back, all);
    std::swap(Planes->planes[0], Planes->planes[1]);
    StateChanged = true;
    if (SurfaceDamaged)
        SurfaceDamaged(*this, all);
}

unsigned Surface::shownFramebuffer() const {
    return Planes->planes[0].framebuffer;
}

unsigned Surface::shownTexture() const {
    return Planes->planes[0].texture;
}

unsigned Surface::drawFramebuffer(Buffer buffer) const {
    const Buffers::Plane& plane = Planes->planes[buffer == Buffer::Back && DoubleBuffered ? 1 : 0];
    return plane.sampleFramebuffer ? plane.sampleFramebuffer : plane.framebuffer;
}

unsigned Surface::readFramebuffer(Buffer buffer) const {
    return Planes->planes[buffer == Buffer::Back && DoubleBuffered ? 1 : 0].framebuffer;
}

void Surface::resolve(Buffer buffer, const PixelBox& box) {
    const Buffers::Plane& plane = Planes->planes[buffer == Buffer::Back && DoubleBuffered ? 1 : 0];
    const PixelBox part = IntersectionOf(box, {0, 0, PixelWidth, PixelHeight});
    if (!plane.sampleFramebuffer || part.empty())
        return;
    glDisable(GL_SCISSOR_TEST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, plane.sampleFramebuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, plane.framebuffer);
    glBlitFramebuffer(part.x, part.y, part.x + part.width, part.y + part.height, part.x, part.y, part.x + part.width,
                      part.y + part.height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    ForgetBatchState();
}

void MakeSurfaceCurrent(Surface* surface) {
    if (surface == Current)
        return;
    FlushDrawing();
    Current = surface;
    StateChanged = true;
}

Surface* CurrentSurface() {
    return Current;
}

DrawingState& State() {
    return Current ? Current->state() : ScratchState();
}

uint32_t NewVersion() {
    return ++Versions;
}

void SetScreenSize(int width, int height) {
    FlushDrawing();
    if (width <= 0 || height <= 0)
        OverlayPlanes.reset();
    else if (!OverlayPlanes || OverlayPlanes->width() != width || OverlayPlanes->height() != height)
        OverlayPlanes = std::make_unique<OverlaySurface>(width, height);
}

Surface* Overlay() {
    return OverlayPlanes.get();
}

std::vector<uint32_t> ReadPixels(Surface& surface, Buffer buffer, const PixelBox& box) {
    std::vector<uint32_t> pixels(static_cast<size_t>(std::max(box.width, 0)) * std::max(box.height, 0));
    const PixelBox part = IntersectionOf(box, {0, 0, surface.pixelWidth(), surface.pixelHeight()});
    FlushDrawing();
    if (part.empty())
        return pixels;
    surface.resolve(buffer, part);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, surface.readFramebuffer(buffer));
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, box.width);
    uint32_t* first = pixels.data() + static_cast<size_t>(part.y - box.y) * box.width + (part.x - box.x);
    glReadPixels(part.x, part.y, part.width, part.height, GL_RGBA, GL_UNSIGNED_BYTE, first);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    for (int y = 0; y < part.height; y++)
        for (int x = 0; x < part.width; x++)
            first[static_cast<size_t>(y) * box.width + x] |= 0xFF000000u;
    return pixels;
}

} // namespace gl
