#pragma once

#include "geometry/matrices.h"

#include <cmath>

template <typename Scalar>
struct Turn {
    Scalar Cosine, Sine;
};

/// Cosine and sine of an angle. Right angles are exact, so that turning by them moves nothing off its plane.
template <typename Scalar>
Turn<Scalar> TurnBy(Scalar degrees) {
    constexpr Turn<Scalar> quarters[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    const Scalar beyondQuarter = std::fmod(degrees, Scalar(90));
    if (beyondQuarter == 0)
        return quarters[(static_cast<int>(std::fmod(degrees, Scalar(360)) / 90) + 4) % 4];
    const auto radians = static_cast<Scalar>(degrees * DegreesToRadians);
    return {std::cos(radians), std::sin(radians)};
}
