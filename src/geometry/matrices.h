#pragma once

// 4x4 matrices: model and scene geometry in doubles (Matrix), drawing in floats (Matrixf, names ending in f).
//
// Points are row vectors multiplied on the left, p' = p * M, so MultMatrix(a, b, ...) applies a first and then b, and
// a translation stands in row 3. Angles are in degrees. Points and vectors are 3 consecutive numbers, homogeneous
// points 4. Outputs may be the same storage as inputs everywhere.
//
// Functions that return a reference return a static result of their own: it holds until the next call of the same
// function, so copy it or use it at once. ScaleMatrix and ScaleMatrixf alternate between two results.

/// The 16 elements row by row and nothing else, copied by assignment: m[row][column].
template <typename Scalar>
struct Matrix4 {
    Scalar Element[4][4];

    constexpr Scalar (&operator[](int row))[4] { return Element[row]; }

    constexpr const Scalar (&operator[](int row) const)[4] { return Element[row]; }

    bool operator==(const Matrix4&) const = default;
};

using Matrix = Matrix4<double>;
using Matrixf = Matrix4<float>;

inline constexpr double DegreesToRadians = 0.017453292519943295;
inline constexpr double RadiansToDegrees = 57.29577951308232;

inline constexpr Matrix IdentityMatrix = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
inline constexpr Matrixf FloatIDMatrix = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

void CopyMatrix(Matrix& destination, const Matrix& source);
void CopyMatrixf(Matrixf& destination, const Matrixf& source);

/// Element by element; the source comes first, unlike in CopyMatrix.
void RealMatrixToFloat(const Matrix& source, Matrixf& destination);
void FloatMatrixToReal(const Matrixf& source, Matrix& destination);

/// out = a * b.
void MultMatrix(const Matrix& a, const Matrix& b, Matrix& out);
void MultMatrixf(const Matrixf& a, const Matrixf& b, Matrixf& out);

/// Gauss-Jordan elimination with partial pivoting. A singular matrix is reported on the standard error stream and gives
/// the identity.
const Matrix& MatrixInverse(const Matrix& m);
const Matrix& MatrixTranspose(const Matrix& m);

/// Whether the matrix turns what is seen counter-clockwise into what is seen clockwise.
bool IsMirroring(const Matrix& m);

/// Four rows of "%10.5f" and an empty line on the standard error stream.
void PrintMatrix(const Matrix& m);
void PrintMatrixf(const Matrixf& m);

/// Rotations: yaw about z, pitch about x, roll about y, counter-clockwise seen from the axis' positive end.
const Matrix& YawMatrix(double angle);
const Matrix& PitchMatrix(double angle);
const Matrix& RollMatrix(double angle);
const Matrixf& YawMatrixf(float angle);
const Matrixf& PitchMatrixf(float angle);
const Matrixf& RollMatrixf(float angle);

const Matrix& TranslationMatrix(double x, double y, double z);
const Matrixf& TranslationMatrixf(float x, float y, float z);
const Matrix& ScaleMatrix(double x, double y, double z);
const Matrixf& ScaleMatrixf(float x, float y, float z);

/// The first three components of (point, 1) * m; no division by w.
template <typename Scalar>
inline void TransformPoint(const Scalar* point, const Matrix4<Scalar>& m, Scalar* out) {
    const Scalar x = point[0], y = point[1], z = point[2];
    for (int column = 0; column < 3; ++column)
        out[column] = x * m[0][column] + y * m[1][column] + z * m[2][column] + m[3][column];
}

/// All four components of (x, y, z, w) * m.
template <typename Scalar>
inline void TransformHomogeneous(const Scalar* point, const Matrix4<Scalar>& m, Scalar* out) {
    const Scalar x = point[0], y = point[1], z = point[2], w = point[3];
    for (int column = 0; column < 4; ++column)
        out[column] = x * m[0][column] + y * m[1][column] + z * m[2][column] + w * m[3][column];
}

/// The vector times the upper left 3x3 of m: a direction, without translation.
template <typename Scalar>
inline void RotateDirection(const Scalar* vector, const Matrix4<Scalar>& m, Scalar* out) {
    const Scalar x = vector[0], y = vector[1], z = vector[2];
    for (int column = 0; column < 3; ++column)
        out[column] = x * m[0][column] + y * m[1][column] + z * m[2][column];
}

/// These are called for every vertex while drawing and picking, hence inline. Coordinate names and short names are the
/// same functions.
inline void TransformCoordinate(const double* point, const Matrix& m, double* out) {
    TransformPoint(point, m, out);
}

inline void Transform3d(const double* point, const Matrix& m, double* out) {
    TransformPoint(point, m, out);
}

inline void Transform3df(const float* point, const Matrixf& m, float* out) {
    TransformPoint(point, m, out);
}

inline void Transform4dCoordinate(const double* point, const Matrix& m, double* out) {
    TransformHomogeneous(point, m, out);
}

inline void Transform4d(const double* point, const Matrix& m, double* out) {
    TransformHomogeneous(point, m, out);
}

inline void Transform4df(const float* point, const Matrixf& m, float* out) {
    TransformHomogeneous(point, m, out);
}

inline void RotateVector(const double* vector, const Matrix& m, double* out) {
    RotateDirection(vector, m, out);
}

inline void Rotate3d(const double* vector, const Matrix& m, double* out) {
    RotateDirection(vector, m, out);
}

inline void Rotate3df(const float* vector, const Matrixf& m, float* out) {
    RotateDirection(vector, m, out);
}
