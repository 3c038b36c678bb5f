#pragma once

#include "gooey/gadget.h"
#include "gooey/modal.h"

#include <cstdint>

// What all gadget kinds share: anchoring, colours, fonts, the pressed look, feedback in the front buffer, callbacks.

/// The x just right of the gadget added last, plus 8 pixels: where the next one goes.
extern int GooeyRight;

/// A negative coordinate counts from the current window's right or top edge.
int AnchoredX(int x);
int AnchoredY(int y);

/// White, or a colour at random when the current window opened under CrazyColours.
std::uint32_t GadgetColour();

inline constexpr std::uint32_t White = 0xFFFFFF;
inline constexpr std::uint32_t LightGrey = 0xCCCCCC;
inline constexpr std::uint32_t DimGrey = 0xC0C0C0;
inline constexpr std::uint32_t Red = 0x0000FF;
inline constexpr std::uint32_t Black = 0;

/// One of the two fonts of gadgets, with the measures that go with it, all in pixels.
struct GadgetFont {
    int (*Width)(const char* text);
    void (*Draw)(int x, int y, const char* text, std::uint32_t rgb);
    /// Of the letters, for centring, and below the baseline.
    int TextHeight, Descent;
    /// Of a button, and of a check box's square or a text input's line.
    int ButtonHeight, BoxSize;
};

/// The small font, or the normal one.
const GadgetFont& FontOf(bool small);

/// What a gadget hands back to its callbacks: a number or an address, as its owner chose.
union GadgetArg {
    int Number;
    void* Pointer;

    GadgetArg() : Pointer(nullptr) {}

    GadgetArg(int number) : Pointer(nullptr) { Number = number; }

    GadgetArg(void* pointer) : Pointer(pointer) {}

    GadgetArg(std::nullptr_t) : Pointer(nullptr) {}

    template <class T>
    T& As() const {
        return *static_cast<T*>(Pointer);
    }
};

/// 1 when the pointer lies in the box (see MouseInBox).
int MouseInGadgetBox(const GadgetBox& box);

/// The face of a button: raised; pressed in, when it is held. `colour` is that of the ramp.
void DrawButtonFace(const GadgetBox& box, std::uint32_t colour, bool pressed);

/// Draws at once into what the user sees, for the length of a scope.
class FrontBufferScope {
  public:
    FrontBufferScope();
    ~FrontBufferScope();
    FrontBufferScope(const FrontBufferScope&) = delete;
    FrontBufferScope& operator=(const FrontBufferScope&) = delete;
};

/// Draws the gadget alone, at once, into what the user sees.
void RedrawGadgetInFront(Gadget* gadget);

/// Runs a callback of a gadget, which may open, shut and change windows, and comes back to the current window.
/// Returns 1 when that window is still open and still has the gadget, so that the gadget may go on to draw itself.
template <class Callback>
int CallOwner(const Gadget* gadget, Callback callback);

/// Follows the left button until its release; `show(pressed)` is called in the front buffer whenever the pointer enters
/// or leaves the box, `held()` at every tick while it is inside. 1 when the button was released inside, the gadget
/// being shown pressed still.
template <class Show, class Held>
int TrackPress(const GadgetBox& box, Show show, Held held);

// ---- implementation of the templates

/// The window and gadget that a callback is made for. For CallOwner.
class OwnerCall {
  public:
    explicit OwnerCall(const Gadget* gadget);
    ~OwnerCall();
    int GadgetRemains() const;

  private:
    struct Window* Target;
    const Gadget* Caller;
};

template <class Callback>
int CallOwner(const Gadget* gadget, Callback callback) {
    OwnerCall call(gadget);
    callback();
    return call.GadgetRemains();
}

template <class Show, class Held>
int TrackPress(const GadgetBox& box, Show show, Held held) {
    int inside = 0;
    auto follow = [&] {
        int now = MouseInGadgetBox(box);
        if (now != inside) {
            FrontBufferScope front;
            show(now != 0);
        }
        inside = now;
    };
    auto step = [&] {
        follow();
        if (inside)
            held();
    };
    step();
    int released = TrackLeftButton(step);
    follow();
    return released && inside;
}
