#pragma once

#include <span>

// The scale on which switching distances are set: how heights in the window stand for distances from the eye. Heights
// count in pixels from its lower edge. Objects look half as large from twice the distance, and so the way to the upper
// end is halved with it; there the distance is as good as infinite.

struct LodScale {
    /// Pixels from the lower end to the upper.
    int Length = 1;
    /// Metres, at the lower end.
    double Nearest = 1;
    /// Half the width of the main view, pixels.
    double HalfWidth = 1;

    /// Of the lower end, and of the upper.
    static constexpr int Bottom = 16;

    int Top() const { return Length + Bottom; }

    /// Metres at a height.
    double DistanceAt(int y) const;
    /// The height of a distance of Nearest at least.
    int HeightOf(double distance) const;
};

/// Moves heights of labels, lowest first, apart so that no two are less than `gap` from each other, the highest is no
/// higher than `top` and each stays as near to its place as that allows.
void SpreadLabels(std::span<int> heights, int gap, int bottom, int top);
