#include "geometry/matrices.h"

#include "geometry/angles.h"
#include "geometry/vectors.h"

#include <cmath>
#include <cstdio>
#include <utility>

namespace {

template <typename To, typename From>
void ConvertElements(const Matrix4<From>& source, Matrix4<To>& destination) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            destination[row][column] = static_cast<To>(source[row][column]);
}

template <typename Scalar>
void Multiply(const Matrix4<Scalar>& a, const Matrix4<Scalar>& b, Matrix4<Scalar>& out) {
    Matrix4<Scalar> product;
    for (int row = 0; row < 4; ++row)
        TransformHomogeneous(a[row], b, product[row]);
    out = product;
}

template <typename Scalar>
void Print(const Matrix4<Scalar>& m) {
    for (const auto& row : m.Element) {
        for (Scalar element : row)
            std::fprintf(stderr, "%10.5f", static_cast<double>(element));
        std::fputs("\n", stderr);
    }
    std::fputs("\n", stderr);
}

// The rotation that turns axis `from` towards axis `to` by the angle with the given cosine and sine.
template <typename Scalar>
Matrix4<Scalar> Rotation(int from, int to, Scalar cosine, Scalar sine) {
    Matrix4<Scalar> result;
    ConvertElements(IdentityMatrix, result);
    result[from][from] = cosine;
    result[from][to] = sine;
    result[to][from] = -sine;
    result[to][to] = cosine;
    return result;
}

Matrix RotationByDegrees(int from, int to, double angle) {
    const Turn<double> turn = TurnBy(angle);
    return Rotation(from, to, turn.Cosine, turn.Sine);
}

Matrixf RotationByDegreesf(int from, int to, float angle) {
    const Turn<float> turn = TurnBy(angle);
    return Rotation(from, to, turn.Cosine, turn.Sine);
}

template <typename Scalar>
Matrix4<Scalar> Translation(Scalar x, Scalar y, Scalar z) {
    return {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {x, y, z, 1}}};
}

// Two results in turn, so that a caller may hold a scaling and its inverse at once.
template <typename Scalar>
const Matrix4<Scalar>& AlternatingScale(Scalar x, Scalar y, Scalar z) {
    static Matrix4<Scalar> results[2];
    static int current = 0;
    current = 1 - current;
    results[current] = {{{x, 0, 0, 0}, {0, y, 0, 0}, {0, 0, z, 0}, {0, 0, 0, 1}}};
    return results[current];
}

// Row exchanges swap pointers, never elements.
using AugmentedRows = double* [4];

// Brings the remaining row with the largest element in column c to place c; false when all of them are 0.
bool ChoosePivot(AugmentedRows& rows, int c) {
    int best = c;
    for (int row = c + 1; row < 4; ++row)
        if (std::fabs(rows[row][c]) > std::fabs(rows[best][c]))
            best = row;
    std::swap(rows[c], rows[best]);
    return rows[c][c] != 0;
}

// Clears column c below the pivot row c. Zeros of the pivot row leave the inverse's half alone.
void EliminateBelow(AugmentedRows& rows, int c) {
    for (int row = c + 1; row < 4; ++row) {
        const double factor = rows[row][c] / rows[c][c];
        for (int column = c + 1; column < 4; ++column)
            rows[row][column] -= factor * rows[c][column];
        for (int column = 4; column < 8; ++column)
            if (rows[c][column] != 0)
                rows[row][column] -= factor * rows[c][column];
    }
}

void BackSubstitute(AugmentedRows& rows) {
    for (int c = 3; c >= 0; --c) {
        const double scale = 1.0 / rows[c][c];
        for (int column = 4; column < 8; ++column)
            rows[c][column] *= scale;
        for (int row = 0; row < c; ++row)
            for (int column = 4; column < 8; ++column)
                rows[row][column] -= rows[row][c] * rows[c][column];
    }
}

} // namespace

void CopyMatrix(Matrix& destination, const Matrix& source) {
    destination = source;
}

void CopyMatrixf(Matrixf& destination, const Matrixf& source) {
    destination = source;
}

void RealMatrixToFloat(const Matrix& source, Matrixf& destination) {
    ConvertElements(source, destination);
}

void FloatMatrixToReal(const Matrixf& source, Matrix& destination) {
    ConvertElements(source, destination);
}

void MultMatrix(const Matrix& a, const Matrix& b, Matrix& out) {
    Multiply(a, b, out);
}

void MultMatrixf(const Matrixf& a, const Matrixf& b, Matrixf& out) {
    Multiply(a, b, out);
}

const Matrix& MatrixInverse(const Matrix& m) {
    static Matrix result;
    double augmented[4][8];
    AugmentedRows rows;
    for (int row = 0; row < 4; ++row) {
        rows[row] = augmented[row];
        for (int column = 0; column < 4; ++column) {
            augmented[row][column] = m[row][column];
            augmented[row][4 + column] = IdentityMatrix[row][column];
        }
    }
    for (int c = 0; c < 4; ++c) {
        if (!ChoosePivot(rows, c)) {
            std::fputs("InvertMatrix failed: impossible matrix\a\n", stderr);
            result = IdentityMatrix;
            return result;
        }
        EliminateBelow(rows, c);
    }
    BackSubstitute(rows);
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result[row][column] = rows[row][4 + column];
    return result;
}

const Matrix& MatrixTranspose(const Matrix& m) {
    static Matrix result;
    const Matrix source = m;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result[row][column] = source[column][row];
    return result;
}

bool IsMirroring(const Matrix& m) {
    double cross[3];
    Cross(m[0], m[1], cross);
    return Dot(cross, m[2]) < 0;
}

void PrintMatrix(const Matrix& m) {
    Print(m);
}

void PrintMatrixf(const Matrixf& m) {
    Print(m);
}

const Matrix& YawMatrix(double angle) {
    static Matrix result;
    return result = RotationByDegrees(0, 1, angle);
}

const Matrix& PitchMatrix(double angle) {
    static Matrix result;
    return result = RotationByDegrees(1, 2, angle);
}

const Matrix& RollMatrix(double angle) {
    static Matrix result;
    return result = RotationByDegrees(2, 0, angle);
}

const Matrixf& YawMatrixf(float angle) {
    static Matrixf result;
    return result = RotationByDegreesf(0, 1, angle);
}

const Matrixf& PitchMatrixf(float angle) {
    static Matrixf result;
    return result = RotationByDegreesf(1, 2, angle);
}

const Matrixf& RollMatrixf(float angle) {
    static Matrixf result;
    return result = RotationByDegreesf(2, 0, angle);
}

const Matrix& TranslationMatrix(double x, double y, double z) {
    static Matrix result;
    return result = Translation(x, y, z);
}

const Matrixf& TranslationMatrixf(float x, float y, float z) {
    static Matrixf result;
    return result = Translation(x, y, z);
}

const Matrix& ScaleMatrix(double x, double y, double z) {
    return AlternatingScale(x, y, z);
}

const Matrixf& ScaleMatrixf(float x, float y, float z) {
    return AlternatingScale(x, y, z);
}
