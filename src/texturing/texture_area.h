#pragma once

#include "gooey/gadget_kind.h"
#include "store/records.h"

#include <cstdint>

// An area of a window that shows a part of texture space: the image, repeated as far as that part reaches.

/// The part that is shown. Each least value is below the greatest.
struct TextureRange {
    float SMin = 0, SMax = 1, TMin = 0, TMax = 1;

    /// Shows coordinates from (s0, t0) to (s1, t1), each range with this part of its size around it; one without size
    /// gets some.
    void Fit(float s0, float s1, float t0, float t1, float margin);
};

struct TextureArea {
    /// Pixels of the window, inside the frame.
    GadgetBox Box;
    const TextureRange* Range;

    double X(double s) const { return (s - Range->SMin) / (Range->SMax - Range->SMin) * Box.Width + Box.X; }

    double Y(double t) const { return (t - Range->TMin) / (Range->TMax - Range->TMin) * Box.Height + Box.Y; }

    double S(double x) const { return (x - Box.X) / Box.Width * (Range->SMax - Range->SMin) + Range->SMin; }

    double T(double y) const { return (y - Box.Y) / Box.Height * (Range->TMax - Range->TMin) + Range->TMin; }
};

/// The area within a frame of two pixels in the current window; `rightMargin` is left free for what lies beside it.
TextureArea TextureAreaOf(const TextureRange& range, int rightMargin);

/// Draws the frame and the current texture; without one the area is grey.
void DrawTextureArea(const TextureArea& area);

/// A line of texture space, white with a black edge. Closed when `closed`.
void DrawTextureLine(const TextureArea& area, const float (*coordinates)[2], int count, bool closed);
/// A point of it that can be dragged: its box, and what marks the chosen one.
GadgetBox TexturePointBox(const TextureArea& area, const float* coordinates);
void DrawTexturePoint(const TextureArea& area, const float* coordinates);
