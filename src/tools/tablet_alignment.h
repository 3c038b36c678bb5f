#pragma once

// How a drawing with two views of an object lies on the digitising tablet, and what a point that is entered on both
// views comes to. All in tablet units, whole numbers.

/// Two points of a horizontal line on the first view (A) and on the second (B), and one vertex on both (C).
extern int AlignAX1, AlignAY1, AlignAX2, AlignAY2;
extern int AlignBX1, AlignBY1, AlignBX2, AlignBY2;
extern int AlignCX1, AlignCY1, AlignCX2, AlignCY2;

/// How the first view is turned to become the second.
enum TabletRotations { AroundX = 0, AroundY = 1 };

extern int TabletRotation;

struct TabletPoint {
    int X, Y;
};

struct TabletVertex {
    int X, Y, Z;
};

/// The nearest whole number, halves away from zero; numbers that are too large become the largest.
int Round(double x);

/// The vertex that appears at these places of the two views. Where the coordinate that they share is 0, so that the
/// scale of the second view cannot be told from it, the second view counts as drawn to the same scale as the first.
TabletVertex CalcTabletXYZ(const TabletPoint& first, const TabletPoint& second);
