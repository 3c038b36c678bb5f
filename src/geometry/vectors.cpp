#include "geometry/vectors.h"

int DoubleCross(double* a, double* b, double* c) {
    if (!Normalise(a))
        return 0;
    Cross(b, a, c);
    if (!Normalise(c))
        return 0;
    Cross(a, c, b);
    return 1;
}
