#include "gooey/gadget_skeleton.h"

#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "base/memory.h"

#include "platform/events.h"

#include <cstdlib>

int GooeyRight = 0;

int AnchoredX(int x) {
    return x < 0 && CurrentWindow ? x + CurrentWindow->Width : x;
}

int AnchoredY(int y) {
    return y < 0 && CurrentWindow ? y + CurrentWindow->Height : y;
}

int EdgeAnchor::X(int x) const {
    return FromRight && CurrentWindow ? x + CurrentWindow->Width : x;
}

int EdgeAnchor::Y(int y) const {
    return FromTop && CurrentWindow ? y + CurrentWindow->Height : y;
}

EdgeAnchor AnchorOf(int x, int y) {
    return {x < 0, y < 0};
}

std::uint32_t GadgetColour() {
    return CurrentWindow && CurrentWindow->Crazy ? RandomColour() : White;
}

const GadgetFont& FontOf(bool small) {
    static constexpr GadgetFont normalFont = {StringWidth, DrawText, 18, 4, 30, 22};
    static constexpr GadgetFont smallFont = {SmallWidth, SmallText, 14, 3, 25, 17};
    return small ? smallFont : normalFont;
}

void DrawCentred(const GadgetFont& font, int x, int y, int width, const char* text, std::uint32_t rgb) {
    font.Draw(x + (width - font.Width(text)) / 2, y, text, rgb);
}

char* OwnedText(const char* text) {
    return CopyOfString(text ? text : "");
}

void FreeOwnedText(char* text) {
    if (text)
        Free(text);
}

int MouseInGadgetBox(const GadgetBox& box) {
    return MouseInBox(box.X, box.Y, box.Width, box.Height);
}

void DrawButtonFace(const GadgetBox& box, std::uint32_t colour, bool pressed) {
    SetColour(colour);
    DrawFrame(box.X - 1, box.Y - 1, box.Width + 2, box.Height + 2, ShadeBlack);
    DrawRaisedBoxOf(box.X, box.Y, box.Width, box.Height, pressed ? ShadePressed : ShadeRaised);
    if (!pressed || CurrentWindow->Crazy)
        return;
    DrawFrame(box.X, box.Y, box.Width, box.Height, ShadeBlack);
    DrawFrame(box.X + 3, box.Y + 3, box.Width - 6, box.Height - 6, ShadeBlack);
}

std::uint32_t ButtonTextColour(bool on, bool pressed) {
    if (!pressed)
        return on ? White : Black;
    if (on)
        return DimGrey;
    return CurrentWindow->Crazy ? White : Black;
}

FrontBufferScope::FrontBufferScope() : WasOn(GetFrontBuffer()) {
    FrontBuffer(1);
    VanillaView();
}

FrontBufferScope::~FrontBufferScope() {
    FrontBuffer(WasOn);
}

Window* WindowOf(const Gadget* gadget) {
    for (Window* window = WindowList; window; window = window->Next)
        for (const Gadget* head = window->Gadgets; head; head = head->NextGadget)
            for (const Gadget* member = head; member; member = member->Next)
                if (member == gadget)
                    return window;
    return nullptr;
}

void RedrawGadgetInFront(Gadget* gadget) {
    if (!gadget->Visible || !gadget->DrawFn)
        return;
    DrawInFront(gadget, [gadget] { gadget->DrawFn(gadget); });
}

int WholeNotches(int turn) {
    static int remainder = 0;
    if ((turn < 0) != (remainder < 0))
        remainder = 0;
    std::div_t notches = std::div(remainder + turn, gl::WHEELNOTCH);
    remainder = notches.rem;
    return notches.quot;
}

OwnerCall::OwnerCall(const Gadget* gadget) : Target(CurrentWindow), Caller(gadget) {
    PushWindow();
}

OwnerCall::~OwnerCall() {
    PopWindow();
}

int OwnerCall::GadgetRemains() const {
    return Target && WindowOf(Caller) == Target;
}

GadgetWindowScope::GadgetWindowScope(const Gadget* gadget) : Target(WindowOf(gadget)) {
    PushToWindow(Target);
}

GadgetWindowScope::~GadgetWindowScope() {
    PopWindow();
}
