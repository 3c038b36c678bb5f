// Surfaces: what windows draw into. A surface has a colour buffer (two when double-buffered) and a depth buffer, all
// framebuffer objects. Sizes and positions are in drawing pixels, which every caller counts; the buffers hold screen
// pixels, `DrawingScale()` times as many in each direction. The origin is the bottom-left corner everywhere.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace gl {

struct DrawingState; // the state that drawing calls change; one for each surface

// A rectangle of screen pixels (not drawing pixels); empty when width or height is not positive.
struct PixelBox {
    int x = 0, y = 0, width = 0, height = 0;

    bool empty() const { return width <= 0 || height <= 0; }

    bool operator==(const PixelBox&) const = default;
};

PixelBox UnionOf(const PixelBox& a, const PixelBox& b);
PixelBox IntersectionOf(const PixelBox& a, const PixelBox& b);

// Screen pixels per drawing pixel, 1 until set; set it before InitialiseGraphics and before any surface is made.
void SetDrawingScale(double scale);
double DrawingScale();
// A length in drawing pixels as a whole number of screen pixels.
int ToPixels(double length);

enum class Buffer { Front, Back };

class Surface {
  public:
    // Buffers of width x height drawing pixels (at least 1 x 1), black, double-buffered or not. GraphicsReady is
    // needed.
    Surface(int width, int height, bool doubleBuffered);
    // A surface that is current stops being current; pending drawing to it is dropped.
    ~Surface();
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    int width() const { return Width; }

    int height() const { return Height; }

    int pixelWidth() const { return PixelWidth; }

    int pixelHeight() const { return PixelHeight; }

    bool doubleBuffered() const { return DoubleBuffered; }

    int samples() const { return Samples; }

    // New buffers; the old picture is kept at the top-left corner, the rest is black. Pending drawing is done first.
    void resize(int width, int height);
    // With one buffer, the front buffer stays. More samples than GrantedSamples() are not given.
    void configure(bool doubleBuffered, int samples);

    // Completes pending drawing; the back buffer becomes the one that is shown. The new back buffer's content is
    // undefined. Does nothing with one buffer. Reports the whole surface as damaged.
    void swap();

    // The framebuffer object (one sample a pixel) that holds the shown picture, to be read by glBlitFramebuffer. Call
    // FlushDrawing before reading it. The name changes with swap, resize and configure.
    unsigned shownFramebuffer() const;
    // The colour texture behind shownFramebuffer().
    unsigned shownTexture() const;

    // The box of the surface on the screen, in drawing pixels from the bottom-left corner of the screen. The windows
    // keep these up to date (the size is the surface's own); drawing into the overlay needs them.
    int ScreenX = 0, ScreenY = 0;

    // Free for the owner of the surface, for instance the window's record.
    void* Owner = nullptr;

    // For the layer's own modules.
    DrawingState& state() { return *State; }

    unsigned drawFramebuffer(Buffer buffer) const;
    unsigned readFramebuffer(Buffer buffer) const; // one sample a pixel, after resolve
    // Copies the multisampled picture into the one that is shown or read; nothing with one sample a pixel.
    void resolve(Buffer buffer, const PixelBox& box);

  protected:
    enum class Kind { Window, Overlay };
    Surface(Kind kind, int width, int height);

  private:
    struct Buffers;
    void allocate();
    void release();

    Kind SurfaceKind;
    int Width, Height, PixelWidth = 0, PixelHeight = 0, Samples = 1;
    bool DoubleBuffered;
    std::unique_ptr<Buffers> Planes;
    std::unique_ptr<DrawingState> State;
};

// Makes a surface the one that drawing calls address, with the drawing state that it had when it was current last
// (matrices, colours, bindings: each surface has its own; definitions of patterns, fonts, materials, lights and
// textures are shared). Pending drawing to the former one is completed. Null: drawing calls go nowhere. Cheap when
// unchanged.
void MakeSurfaceCurrent(Surface* surface);
Surface* CurrentSurface();

// Sends pending drawing to the buffers. Call it before reading or presenting them and before waiting for events.
void FlushDrawing();

// Called when drawing may have changed pixels that are shown: the surface's front buffer (also after swap), or the
// overlay. The box is in screen pixels of that surface. Null when unused. It must not draw.
extern void (*SurfaceDamaged)(Surface& surface, const PixelBox& box);

// The overlay: one surface over the whole screen for menus and rubber bands, in indexed colours. Its texture is RGBA8:
// red = index drawn, green = index beneath it, blue = how much of the pixel the drawn one covers (0 to 255); each index
// looks its colour up in the overlay's colour map, index 0 is transparent. A pixel never drawn is all zero. To show it,
// with c(i) the colour of index i and alpha 0 for i = 0 and 1 else: mix(c(green), c(red), blue / 255).
class OverlaySurface : public Surface {
  public:
    OverlaySurface(int width, int height) : Surface(Kind::Overlay, width, height) {}
};

// Makes (or resizes and clears) the overlay for a screen of that many drawing pixels; getgdesc answers with it too.
void SetScreenSize(int width, int height);
// Null until SetScreenSize.
Surface* Overlay();
// Packed colour 0x00BBGGRR of an overlay index (0 to 255) and of a cursor plane index (0 to 3), as set by mapcolor.
uint32_t OverlayColour(int index);
uint32_t CursorColour(int index);

// The picture of a box of screen pixels, rows from the bottom, each pixel packed 0xAABBGGRR (alpha 255). Completes
// pending drawing first. Pixels outside the surface are 0.
std::vector<uint32_t> ReadPixels(Surface& surface, Buffer buffer, const PixelBox& box);

} // namespace gl
