#pragma once

#include "views/traversal.h"

#include <limits>

/// A box in model space; empty at first.
struct SelectBox {
    float Min[3] = {Infinity, Infinity, Infinity}, Max[3] = {-Infinity, -Infinity, -Infinity};

    template <class Scalar>
    void Grow(const Scalar* point) {
        for (int axis = 0; axis < 3; ++axis) {
            const float place = static_cast<float>(point[axis]);
            if (place < Min[axis])
                Min[axis] = place;
            if (place > Max[axis])
                Max[axis] = place;
        }
    }

    void Grow(const SelectBox& box) {
        Grow(box.Min);
        Grow(box.Max);
    }

  private:
    static constexpr float Infinity = std::numeric_limits<float>::infinity();
};

/// A rectangle of the window, edges included.
struct PixelRectangle {
    double Left, Right, Bottom, Top;
};

/// What of an object lies under a rectangle of the window: bounded by planes in its model space. Tests err on the safe
/// side by far more than the rounding of what they are compared with.
class SelectRegion {
  public:
    SelectRegion(const ShownObject& shown, const Matrix& projection, const PixelRectangle& rectangle);

    enum Overlap { Outside, Partly, Inside };

    Overlap Test(const SelectBox& box) const;

  private:
    struct Side {
        double Plane[4];  // positive inside
        double Margin[4]; // what rounding may make of each term, at most
    };

    void AddSide(const Matrix& toEye, const double* eyePlane);

    static constexpr int MostSides = 6;
    Side Sides[MostSides];
    int SideCount = 0;
};
