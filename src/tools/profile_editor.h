#pragma once

#include "gooey/gadget_kind.h"

struct Gadget;
struct Sweep;

// A gadget in which the profile of a sweep is drawn: a plane with dots at the corners of its squares, which can be
// moved and enlarged, and the curve with its control points.

/// How an editor shows its plane; kept by its owner from one opening to the next.
struct ProfileView {
    /// Half the editor's width in squares is 1 / Zoom; PanX, PanY is the place in its middle.
    double Zoom, PanX, PanY;
    /// Points are put on corners of squares.
    int Snap;
};

inline constexpr double FirstProfileZoom = 0.2222;

/// What an editor is made of; to live as long as its window.
struct ProfileEditor {
    Sweep* Swept;
    ProfileView* Shown;
    /// Its square, with the border, in the window as it is now.
    GadgetBox (*Place)();
    /// The curve has changed: shows it, in the middle of a drag too.
    void (*Changed)();
    /// Shown while there are no points yet.
    const char* Hint;
};

Gadget* AddProfileEditor(const ProfileEditor& editor);

/// A press of the middle button in the window: 1 when it was in the editor, which it moved; with the right button it
/// enlarged it, with both others it has reset it.
int ManipulateProfile(const ProfileEditor& editor);

/// A key of the curve, or of a preset (FirstPresetKey on): 1 when it was one.
int ProfileKey(const ProfileEditor& editor, int key);

inline constexpr int FirstPresetKey = 261, PresetCount = 4;
