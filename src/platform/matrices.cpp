#include "platform/matrices.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "platform/batch.h"
#include "platform/drawing_state.h"
#include "platform/recorder.h"
#include "platform/vertices.h"

namespace gl {

namespace {

constexpr size_t MostMatrices = 32;

// The matrix that the mode addresses.
Matrix4& Addressed() {
    DrawingState& state = State();
    switch (state.MatrixMode) {
    case MPROJECTION:
        return state.Projection;
    case MTEXTURE:
        return state.Texture;
    default:
        return state.Viewing.back();
    }
}

void ProjectionChanged(bool pixelExact) {
    DrawingState& state = State();
    state.ProjectionVersion = NewVersion();
    state.PixelExact = pixelExact;
    StateChanged = true;
}

// Gives the addressed matrix a new value; one that it has already changes nothing.
void Change(const Matrix4& value) {
    Matrix4& matrix = Addressed();
    if (matrix == value)
        return;
    matrix = value;
    DrawingState& state = State();
    switch (state.MatrixMode) {
    case MVIEWING:
        Source.viewingChanged = true;
        break;
    case MTEXTURE:
        state.TextureMatrixVersion = NewVersion();
        StateChanged = true;
        break;
    default:
        ProjectionChanged(false);
        break;
    }
}

void SetProjection(const Matrix4& value, bool pixelExact) {
    DrawingState& state = State();
    Matrix4& matrix = state.MatrixMode == MSINGLE ? state.Viewing.back() : state.Projection;
    if (matrix == value && state.PixelExact == pixelExact)
        return;
    matrix = value;
    ProjectionChanged(pixelExact);
}

template <typename Number>
Matrix4 FromNumbers(const Number* numbers) {
    Matrix4 matrix;
    std::copy_n(numbers, 16, matrix.begin());
    return matrix;
}

void Load(const Matrix4& matrix) {
    if (!RecordCommand([=] { loadmatrix(matrix.data()); }))
        Change(matrix);
}

void Multiply(const Matrix4& matrix) {
    if (!RecordCommand([=] { multmatrix(matrix.data()); }))
        Change(Product(matrix, Addressed()));
}

} // namespace

Matrix4 Product(const Matrix4& a, const Matrix4& b) {
    Matrix4 product;
    for (int i = 0; i < 4; i++)
        for (int j = 0; j < 4; j++)
            product[4 * i + j] =
                a[4 * i] * b[j] + a[4 * i + 1] * b[4 + j] + a[4 * i + 2] * b[8 + j] + a[4 * i + 3] * b[12 + j];
    return product;
}

bool Invert(const Matrix4& matrix, Matrix4& inverse) {
    // Gauss-Jordan elimination with the largest pivot of each column.
    Matrix4 left = matrix;
    inverse = Identity4;
    for (int column = 0; column < 4; column++) {
        int pivot = column;
        for (int row = column + 1; row < 4; row++)
            if (std::abs(left[4 * row + column]) > std::abs(left[4 * pivot + column]))
                pivot = row;
        const double value = left[4 * pivot + column];
        if (value == 0) {
            inverse = Identity4;
            return false;
        }
        for (int k = 0; k < 4; k++) {
            std::swap(left[4 * pivot + k], left[4 * column + k]);
            std::swap(inverse[4 * pivot + k], inverse[4 * column + k]);
            left[4 * column + k] /= value;
            inverse[4 * column + k] /= value;
        }
        for (int row = 0; row < 4; row++) {
            const double factor = left[4 * row + column];
            if (row == column || factor == 0)
                continue;
            for (int k = 0; k < 4; k++) {
                left[4 * row + k] -= factor * left[4 * column + k];
                inverse[4 * row + k] -= factor * inverse[4 * column + k];
            }
        }
    }
    return true;
}

const Matrix4& EffectiveViewing() {
    const DrawingState& state = State();
    return state.MatrixMode == MSINGLE ? Identity4 : state.Viewing.back();
}

const Matrix4& EffectiveProjection() {
    const DrawingState& state = State();
    return state.MatrixMode == MSINGLE ? state.Viewing.back() : state.Projection;
}

void mmode(int mode) {
    if (RecordCommand([=] { mmode(mode); }))
        return;
    DrawingState& state = State();
    if (mode < MSINGLE || mode > MTEXTURE || mode == state.MatrixMode)
        return;
    const bool pixelExact = state.PixelExact;
    if (state.MatrixMode == MSINGLE) {
        state.Projection = state.Viewing.back();
        state.Viewing.assign(1, Identity4);
    } else if (mode == MSINGLE)
        state.Viewing.assign(1, Product(state.Viewing.back(), state.Projection));
    if (state.MatrixMode == MSINGLE || mode == MSINGLE) {
        state.MatrixMode = mode;
        ProjectionChanged(pixelExact);
        Source.viewingChanged = true;
    }
    state.MatrixMode = mode;
}

int getmmode() {
    return State().MatrixMode;
}

void loadmatrix(const double* matrix) {
    Load(FromNumbers(matrix));
}

void loadmatrix(const float* matrix) {
    Load(FromNumbers(matrix));
}

void loadmatrix(const double (*matrix)[4]) {
    Load(FromNumbers(&matrix[0][0]));
}

void loadmatrix(const float (*matrix)[4]) {
    Load(FromNumbers(&matrix[0][0]));
}

void multmatrix(const double* matrix) {
    Multiply(FromNumbers(matrix));
}

void multmatrix(const float* matrix) {
    Multiply(FromNumbers(matrix));
}

void multmatrix(const double (*matrix)[4]) {
    Multiply(FromNumbers(&matrix[0][0]));
}

void multmatrix(const float (*matrix)[4]) {
    Multiply(FromNumbers(&matrix[0][0]));
}

void getmatrix(double* matrix) {
    std::copy_n(Addressed().begin(), 16, matrix);
}

void getmatrix(float* matrix) {
    std::transform(Addressed().begin(), Addressed().end(), matrix, [](double v) { return static_cast<float>(v); });
}

void getmatrix(double (*matrix)[4]) {
    getmatrix(&matrix[0][0]);
}

void getmatrix(float (*matrix)[4]) {
    getmatrix(&matrix[0][0]);
}

void pushmatrix() {
    if (RecordCommand([] { pushmatrix(); }))
        return;
    DrawingState& state = State();
    if (state.MatrixMode == MPROJECTION || state.MatrixMode == MTEXTURE)
        return;
    if (state.Viewing.size() == MostMatrices) {
        std::fprintf(stderr, "Graphics: the matrix stack is full\n");
        return;
    }
    state.Viewing.push_back(Matrix4(state.Viewing.back()));
}

void popmatrix() {
    if (RecordCommand([] { popmatrix(); }))
        return;
    DrawingState& state = State();
    if (state.MatrixMode == MPROJECTION || state.MatrixMode == MTEXTURE)
        return;
    if (state.Viewing.size() == 1) {
        std::fprintf(stderr, "Graphics: the matrix stack is empty\n");
        return;
    }
    state.Viewing.pop_back();
    if (state.MatrixMode == MSINGLE)
        ProjectionChanged(state.PixelExact);
    else
        Source.viewingChanged = true;
}

void translate(double x, double y, double z) {
    Multiply({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1});
}

void scale(double x, double y, double z) {
    Multiply({x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1});
}

void rot(double degrees, char axis) {
    const double angle = degrees * 0.017453292519943295;
    double c = std::cos(angle), s = std::sin(angle);
    // Right angles are exact.
    if (std::abs(c) < 1e-15)
        c = 0;
    if (std::abs(s) < 1e-15)
        s = 0;
    switch (axis) {
    case 'x':
    case 'X':
        return Multiply({1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1});
    case 'y':
    case 'Y':
        return Multiply({c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1});
    default:
        return Multiply({c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    }
}

void rotate(int tenths, char axis) {
    rot(tenths / 10.0, axis);
}

void perspective(int fieldOfView, double aspect, double nearDistance, double farDistance) {
    if (RecordCommand([=] { perspective(fieldOfView, aspect, nearDistance, farDistance); }))
        return;
    const double half = fieldOfView / 20.0 * 0.017453292519943295, range = farDistance - nearDistance;
    if (aspect == 0 || range == 0 || std::sin(half) == 0)
        return;
    const double cotangent = std::cos(half) / std::sin(half);
    SetProjection({cotangent / aspect, 0, 0, 0, 0, cotangent, 0, 0, 0, 0, -(farDistance + nearDistance) / range, -1, 0,
                   0, -2 * farDistance * nearDistance / range, 0},
                  false);
}

namespace {

void Orthographic(double left, double right, double bottom, double top, double nearDistance, double farDistance,
                  bool pixelExact) {
    const double width = right - left, height = top - bottom, depth = farDistance - nearDistance;
    if (width == 0 || height == 0 || depth == 0)
        return;
    SetProjection({2 / width, 0, 0, 0, 0, 2 / height, 0, 0, 0, 0, -2 / depth, 0, -(right + left) / width,
                   -(top + bottom) / height, -(farDistance + nearDistance) / depth, 1},
                  pixelExact);
}

} // namespace

void ortho(double left, double right, double bottom, double top, double nearDistance, double farDistance) {
    if (!RecordCommand([=] { ortho(left, right, bottom, top, nearDistance, farDistance); }))
        Orthographic(left, right, bottom, top, nearDistance, farDistance, false);
}

void ortho2(double left, double right, double bottom, double top) {
    if (!RecordCommand([=] { ortho2(left, right, bottom, top); }))
        Orthographic(left, right, bottom, top, -1, 1, true);
}

} // namespace gl
