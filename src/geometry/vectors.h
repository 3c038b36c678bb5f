#pragma once

#include <cmath>

// Vectors and points of 3 consecutive numbers: doubles for model geometry, floats (names ending in f) for drawing.
// Outputs may be the same storage as inputs unless said otherwise. Called for every vertex, hence inline.

template <typename Scalar>
constexpr Scalar DotProduct(const Scalar* a, const Scalar* b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

template <typename Scalar>
inline void CrossProduct(const Scalar* a, const Scalar* b, Scalar* out) {
    const Scalar x = a[1] * b[2] - a[2] * b[1];
    const Scalar y = a[2] * b[0] - a[0] * b[2];
    const Scalar z = a[0] * b[1] - a[1] * b[0];
    out[0] = x;
    out[1] = y;
    out[2] = z;
}

template <typename Scalar>
inline int NormaliseVector(Scalar* v) {
    const Scalar length = std::sqrt(DotProduct(v, v));
    if (length == 0)
        return 0;
    for (int axis = 0; axis < 3; ++axis)
        v[axis] /= length;
    return 1;
}

inline double Dot(const double* a, const double* b) {
    return DotProduct(a, b);
}

/// Computed in floats.
inline double Dotf(const float* a, const float* b) {
    return DotProduct(a, b);
}

/// out = a x b.
inline void Cross(const double* a, const double* b, double* out) {
    CrossProduct(a, b, out);
}

inline void Crossf(const float* a, const float* b, float* out) {
    CrossProduct(a, b, out);
}

inline double LengthOfVector(const double* v) {
    return std::sqrt(Dot(v, v));
}

/// Adds the share of the edge from `current` to `next` to a sum over a ring, by Newell's method: the sum is the ring's
/// normal, as long as twice its area.
template <typename Scalar>
inline void AddNewellEdge(const Scalar* current, const Scalar* next, Scalar* sum) {
    sum[0] += (current[1] - next[1]) * (current[2] + next[2]);
    sum[1] += (current[2] - next[2]) * (current[0] + next[0]);
    sum[2] += (current[0] - next[0]) * (current[1] + next[1]);
}

/// Scales v to unit length and returns 1; a zero vector is left unchanged and gives 0.
inline int Normalise(double* v) {
    return NormaliseVector(v);
}

inline int Normalisef(float* v) {
    return NormaliseVector(v);
}

inline double DistanceBetweenCoords(const double* a, const double* b) {
    const double difference[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    return LengthOfVector(difference);
}

/// Makes a, b, c an orthonormal frame that keeps a's direction and the half plane of b: a is normalised, c becomes
/// b x a normalised, b becomes a x c. Returns 0 when a is zero or b is parallel to it, else 1. a, b and c are distinct.
int DoubleCross(double* a, double* b, double* c);
