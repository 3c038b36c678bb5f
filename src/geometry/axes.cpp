#include "geometry/axes.h"

#include <cmath>

namespace {

double DegreesOf(double y, double x) {
    return std::atan2(y, x) * RadiansToDegrees;
}

} // namespace

int RotateToAxis(const double* v, Matrix& m) {
    const double x = std::fabs(v[0]), y = std::fabs(v[1]), z = std::fabs(v[2]);
    double w[3];
    if (x > y && x > z) {
        m = RollMatrix(DegreesOf(v[2], v[0]));
        RotateVector(v, m, w);
        MultMatrix(m, YawMatrix(-DegreesOf(w[1], w[0])), m);
        return 0;
    }
    if (y > z) {
        m = YawMatrix(DegreesOf(v[0], v[1]));
        RotateVector(v, m, w);
        MultMatrix(m, PitchMatrix(-DegreesOf(w[2], w[1])), m);
        return 1;
    }
    m = PitchMatrix(DegreesOf(v[1], v[2]));
    RotateVector(v, m, w);
    MultMatrix(m, RollMatrix(-DegreesOf(w[0], w[2])), m);
    return 2;
}

void RotateToXAxis(const double* v, Matrix& m) {
    switch (RotateToAxis(v, m)) {
    case 0:
        if (v[0] < 0)
            MultMatrix(m, PitchMatrix(180), m);
        break;
    case 1:
        MultMatrix(m, YawMatrix(-90), m);
        break;
    default:
        MultMatrix(m, RollMatrix(90), m);
        MultMatrix(m, PitchMatrix(90), m);
    }
}
