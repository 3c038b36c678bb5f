// What the geometry tests share: comparison of number groups, and seeded random matrices.
#pragma once

#include <cstddef>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "geometry/matrices.h"

template <typename Scalar>
void ExpectClose(const Scalar* actual, std::vector<double> expected, double tolerance = 1e-12) {
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(actual[i], expected[i], tolerance) << "component " << i;
}

template <typename Scalar>
void ExpectClose(const Matrix4<Scalar>& actual, const Matrix4<Scalar>& expected, double tolerance) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_NEAR(actual[row][column], expected[row][column], tolerance) << row << ", " << column;
}

inline Matrix RandomMatrix(std::mt19937& random) {
    std::uniform_real_distribution<double> element(-1, 1);
    Matrix m;
    for (auto& row : m.Element)
        for (double& value : row)
            value = element(random);
    return m;
}
