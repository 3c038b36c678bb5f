#pragma once

#include <string>
#include <vector>

struct Gadget;

/// A rectangle in window pixels.
struct GadgetBox {
    int X = 0, Y = 0, Width = 0, Height = 0;
};

/// A row of a list, a title of a menu bar, a box of a tree, a point: something with a label that can be clicked or
/// dragged inside a gadget, or in a window that draws it itself.
struct GadgetItem {
    std::string Label;
    GadgetBox Box;
    /// Selected or current.
    bool On = false;
};

/// A gadget as a report shows it and a script finds it.
struct GadgetDescription {
    std::string Label;
    GadgetBox Box;
    bool On = false;
    /// The content of a text input or an inc/dec box.
    std::string Text;
    /// Where a click on the gadget goes, when that is not the middle of Box: the thumb of a slider, the box of an
    /// input.
    GadgetBox Target;
    /// What can be pressed inside: the visible rows of a list, the titles of a menu bar.
    std::vector<GadgetItem> Items;
};

/// What gadgets of one kind have in common beyond their functions; a constant table, one a kind.
struct GadgetKind {
    /// One of "button", "check", "text", "incdec", "slider", "label", "scroll", "menu", "custom".
    const char* Name;
    /// Describes a gadget of the current window as it would be drawn now. Null: the gadget is left out of reports. (A
    /// gadget without a kind is reported as "custom" when it takes clicks or keys.)
    void (*Describe)(const Gadget* gadget, GadgetDescription& description);
    /// The wheel turned over the window, in 120ths of a notch, right and away from the user being positive; the pointer
    /// is in MouseX, MouseY. Non-zero when the gadget consumed it. Null: never.
    int (*Wheel)(Gadget* gadget, int turnX, int turnY);
    /// Moves a slider of this kind: the y, in window pixels, that the thumb's centre must be dragged to for the value.
    /// Null: not a slider.
    int (*ThumbY)(const Gadget* gadget, int value);
    /// Does what a click on the gadget does, when a walk with Tab stands on it; null: nothing.
    void (*Press)(Gadget* gadget) = nullptr;
    /// Takes the keyboard when a walk comes to the gadget, which hands on Tab itself (WalkFrom); null: it cannot.
    void (*TakeKeyboard)(Gadget* gadget) = nullptr;
    /// The arrow keys turn the wheel over it when a walk stands on it.
    bool Steps = false;
};
