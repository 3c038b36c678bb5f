#include "tools/tablet_alignment.h"

#include <algorithm>
#include <cmath>
#include <limits>

int AlignAX1, AlignAY1, AlignAX2 = 100, AlignAY2;
int AlignBX1, AlignBY1, AlignBX2 = 100, AlignBY2;
int AlignCX1, AlignCY1, AlignCX2, AlignCY2;
int TabletRotation;

namespace {

/// A shared coordinate below this is 0: nobody hits a place better.
constexpr double LeastShared = 0.5;

struct Place {
    double X, Y;
};

/// The angle by which a view is turned on the tablet, radians, clockwise.
double AngleOf(int x1, int y1, int x2, int y2) {
    return x1 == x2 && y1 == y2 ? 0 : -std::atan2(y2 - y1, x2 - x1);
}

/// A point of a view as it is in the object: from the vertex on both, turned back.
Place InView(const TabletPoint& point, int centreX, int centreY, double angle) {
    const double x = point.X - centreX, y = point.Y - centreY;
    return {x * std::cos(angle) - y * std::sin(angle), x * std::sin(angle) + y * std::cos(angle)};
}

double Scaled(double depth, double shared, double sharedOnSecond) {
    return std::fabs(sharedOnSecond) < LeastShared ? depth : depth * shared / sharedOnSecond;
}

} // namespace

int Round(double x) {
    const double most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::round(x), -most, most));
}

TabletVertex CalcTabletXYZ(const TabletPoint& first, const TabletPoint& second) {
    const Place a = InView(first, AlignCX1, AlignCY1, AngleOf(AlignAX1, AlignAY1, AlignAX2, AlignAY2));
    const Place b = InView(second, AlignCX2, AlignCY2, AngleOf(AlignBX1, AlignBY1, AlignBX2, AlignBY2));
    const double z = TabletRotation == AroundX ? Scaled(b.Y, a.X, b.X) : Scaled(b.X, a.Y, b.Y);
    return {Round(a.X), Round(a.Y), Round(z)};
}
