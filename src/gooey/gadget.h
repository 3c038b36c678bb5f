#pragma once

#include "gooey/gadget_kind.h"

#include <cstddef>
#include <new>
#include <type_traits>

/// A control in a window. A chain of gadgets (a row of buttons, say) is a head followed by its members in Next. Made by
/// NewGooey, with every pointer null and Visible set; freed with its window.
struct Gadget {
    /// The next member of this gadget's chain.
    Gadget* Next;
    /// On the head of a chain: the next gadget of the window.
    Gadget* NextGadget;
    /// 0 hides the gadget and, in a chain, ends drawing and clicking at this member.
    int Visible;
    void (*DrawFn)(Gadget* gadget);
    /// A press of the left button; non-zero when the gadget consumed it.
    int (*ClickFn)(Gadget* gadget);
    /// A key; non-zero when the gadget consumed it.
    int (*KeyFn)(Gadget* gadget, int character);
    /// Called when another gadget of the window took a click and has a DeselectFn itself.
    void (*DeselectFn)(Gadget* gadget);
    /// Releases what Data points to.
    void (*FreeFn)(Gadget* gadget);
    /// Private block, freed after FreeFn; null for size 0.
    void* Data;
    /// What reports, scripts and the wheel need to know; null for gadgets that have nothing to tell.
    const GadgetKind* Kind;
};

/// A gadget with `size` bytes of zeros as its data, in no window yet.
Gadget* NewGooey(std::size_t size);

/// A gadget appended to the current window's.
Gadget* CreateEntry(std::size_t size);

/// CreateEntry with a draw and a click function; either may be null.
Gadget* AddGadget(void (*drawFn)(Gadget*), int (*clickFn)(Gadget*), std::size_t size);

/// A gadget that draws with draw() and is clicked with click(), either of which may be null; for owners that need no
/// data.
Gadget* Kirvo_AddGadget(void (*draw)(), int (*click)());

/// Frees a window's list or a single detached chain. While a gadget of the window is handling an event the memory is
/// kept until it has, so that a callback may take its own gadget away.
void FreeGooeyList(Gadget* list);

/// Draws a chain, up to its first hidden member.
void RedrawGooey(Gadget* gadget);
/// Draws a list, later gadgets over earlier ones.
void GooeyDraw(Gadget* list);

/// Offers a press of the left button to the gadgets in order. 1 when one consumed it.
int CheckGooeyClick(Gadget* list);
/// Offers a key to the visible gadgets in order. 1 when one consumed it.
int CheckGooeyKey(Gadget* list, int character);
/// Offers a turn of the wheel (see GadgetKind::Wheel) to the visible gadgets in order. 1 when one consumed it.
int CheckGooeyWheel(Gadget* list, int turnX, int turnY);
/// Deselects every gadget but one, which may be null.
void DeselectOtherNodes(Gadget* list, Gadget* except);

/// The typed data of a gadget that was made with CreateGadget<T> or NewGadget<T>.
template <class T>
T& GadgetData(const Gadget* gadget) {
    return *static_cast<T*>(gadget->Data);
}

/// A gadget with a T as its data, in no window yet. Data is released without a destructor.
template <class T>
Gadget* NewGadget() {
    static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= alignof(std::max_align_t));
    Gadget* gadget = NewGooey(sizeof(T));
    new (gadget->Data) T{};
    return gadget;
}

/// A gadget with a T as its data, appended to the current window's.
template <class T>
Gadget* CreateGadget() {
    static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= alignof(std::max_align_t));
    Gadget* gadget = CreateEntry(sizeof(T));
    new (gadget->Data) T{};
    return gadget;
}
