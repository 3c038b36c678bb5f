#pragma once

#include "gooey/gadget.h"
#include "gooey/modal.h"

#include <cstddef>
#include <cstdint>

// What all gadget kinds share: anchoring, colours, fonts, the pressed look, feedback in the front buffer, callbacks.

struct Window;

/// The x just right of the gadget added last, plus 8 pixels: where the next one goes.
extern int GooeyRight;

/// A negative coordinate counts from the current window's right or top edge.
int AnchoredX(int x);
int AnchoredY(int y);

/// The edges that a gadget of several parts counts from, by the place that it was added at.
struct EdgeAnchor {
    std::int32_t FromRight, FromTop;

    int X(int x) const;
    int Y(int y) const;
};

EdgeAnchor AnchorOf(int x, int y);

inline constexpr std::uint32_t White = 0xFFFFFF;
inline constexpr std::uint32_t LightGrey = 0xCCCCCC;
inline constexpr std::uint32_t DimGrey = 0xC0C0C0;
inline constexpr std::uint32_t Red = 0x0000FF;
inline constexpr std::uint32_t Black = 0;

/// White, or a colour at random when the current window opened under CrazyColours.
std::uint32_t GadgetColour();

/// One of the two fonts of gadgets, with the measures that go with it, all in pixels.
struct GadgetFont {
    int (*Width)(const char* text);
    void (*Draw)(int x, int y, const char* text, std::uint32_t rgb);
    /// Of the letters, for centring, and below the baseline.
    int TextHeight, Descent;
    /// Of a button; of a check box's square or a text input's line.
    int ButtonHeight, BoxSize;
};

/// The small font, or the normal one.
const GadgetFont& FontOf(bool small);

/// Text centred in a width, in a colour.
void DrawCentred(const GadgetFont& font, int x, int y, int width, const char* text, std::uint32_t rgb);

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

/// A gadget's own copy of a text that is always there: "" for null. Released with FreeOwnedText, which takes null, too.
char* OwnedText(const char* text);
void FreeOwnedText(char* text);

/// 1 when the pointer lies in the box (see MouseInBox).
int MouseInGadgetBox(const GadgetBox& box);

/// The face of a button with its frame, raised or pressed in; the ramp is left set to `colour`.
void DrawButtonFace(const GadgetBox& box, std::uint32_t colour, bool pressed);
/// The colour of a text on that face; `on`: the button is shown as selected.
std::uint32_t ButtonTextColour(bool on, bool pressed);

/// Draws at once into what the user sees, in pixels of the current window, for the length of a scope.
class FrontBufferScope {
  public:
    FrontBufferScope();
    ~FrontBufferScope();
    FrontBufferScope(const FrontBufferScope&) = delete;
    FrontBufferScope& operator=(const FrontBufferScope&) = delete;

  private:
    int WasOn;
};

/// The open window that has the gadget now; null when none has.
Window* WindowOf(const Gadget* gadget);

/// Draws a visible gadget alone, or what `draw` draws of it, at once into what the user sees, whichever window is
/// current. Nothing when no window has it.
void RedrawGadgetInFront(Gadget* gadget);
template <class Draw>
void DrawInFront(const Gadget* gadget, Draw draw);

/// Runs a callback of a gadget, which may open, shut and change windows, and comes back to the current window. 1 when
/// that window still has the gadget, so that the gadget may go on to draw itself.
template <class Callback>
int CallOwner(const Gadget* gadget, Callback callback);

/// Follows the left button until its release; `show(pressed)` is called in the front buffer whenever the pointer enters
/// or leaves the box, `held()` at every tick while it is inside. 1 when the button was released inside, the gadget
/// being shown pressed still.
template <class Show, class Held>
int TrackPress(const GadgetBox& box, Show show, Held held);

/// Makes whole notches of a wheel's turn: a wheel that turns in small steps adds up to them.
int WholeNotches(int turn);

// ---- implementation of the templates
/// The current window of a call to a gadget's owner. For CallOwner.
class OwnerCall {
  public:
    explicit OwnerCall(const Gadget* gadget);
    ~OwnerCall();
    OwnerCall(const OwnerCall&) = delete;
    OwnerCall& operator=(const OwnerCall&) = delete;
    int GadgetRemains() const;

  private:
    Window* Target;
    const Gadget* Caller;
};

template <class Callback>
int CallOwner(const Gadget* gadget, Callback callback) {
    OwnerCall call(gadget);
    callback();
    return call.GadgetRemains();
}

/// The window of a gadget, current for the length of a scope. For DrawInFront.
class GadgetWindowScope {
  public:
    explicit GadgetWindowScope(const Gadget* gadget);
    ~GadgetWindowScope();
    GadgetWindowScope(const GadgetWindowScope&) = delete;
    GadgetWindowScope& operator=(const GadgetWindowScope&) = delete;

    explicit operator bool() const { return Target != nullptr; }

  private:
    Window* Target;
};

template <class Draw>
void DrawInFront(const Gadget* gadget, Draw draw) {
    GadgetWindowScope window(gadget);
    if (!window)
        return;
    FrontBufferScope front;
    draw();
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
