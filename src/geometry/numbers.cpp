#include "geometry/numbers.h"

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstring>

int ScaleIndex = 1;

void Snap(double* value, double step) {
    if (step == 0)
        return;
    const double half = *value > 0 ? step / 2 : -step / 2;
    *value = std::trunc((*value + half) / step) * step;
}

double RoundToNSF(double x, int n) {
    if (x == 0 || !std::isfinite(x))
        return x;
    const double magnitude = std::fabs(x);
    // Truncation towards zero, not flooring: this is what costs values below 1 a figure.
    const int exponent = static_cast<int>(std::log10(magnitude));
    const double unit = std::pow(10.0, exponent - n + 1);
    if (unit == 0 || !std::isfinite(unit))
        return x;
    return std::copysign(std::trunc(magnitude / unit + 0.5) * unit, x);
}

const char* PrintNoDecimals(double value, int decimals) {
    // Holds the largest double with as many decimals as the smallest one has.
    static char text[DBL_MAX_10_EXP + 1100];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    if (std::strchr(text, '.')) {
        char* end = text + std::strlen(text);
        while (end[-1] == '0')
            --end;
        if (end[-1] == '.')
            --end;
        *end = '\0';
    }
    return text;
}

const char* ScaleNumber(double* length) {
    ScaleIndex = *length < 0.01 ? 3 : *length < 1.0 ? 2 : *length < 1000.0 ? 1 : 0;
    *length /= ScaleScales[ScaleIndex];
    return ScaleStrings[ScaleIndex];
}
