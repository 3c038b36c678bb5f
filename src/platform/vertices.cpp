#include "platform/vertices.h"

#include <algorithm>
#include <cmath>

#include "platform/definitions.h"

namespace gl {

VertexSource Source;

void NormalMatrix(const Matrix4& m, float* rows) {
    // Scaled to the size of the largest element first, for matrices that shrink or enlarge by many orders of magnitude.
    double largest = 1e-300;
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++)
            largest = std::max(largest, std::abs(m[4 * i + j]));
    double a[3][3];
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++)
            a[i][j] = m[4 * i + j] / largest;
    double cofactors[9], determinant = 0;
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++) {
            const int i1 = (i + 1) % 3, i2 = (i + 2) % 3, j1 = (j + 1) % 3, j2 = (j + 2) % 3;
            cofactors[3 * i + j] = a[i1][j1] * a[i2][j2] - a[i1][j2] * a[i2][j1];
        }
    for (int j = 0; j < 3; j++)
        determinant += a[0][j] * cofactors[j];
    for (int i = 0; i < 9; i++)
        rows[i] = static_cast<float>(determinant < 0 ? -cofactors[i] : cofactors[i]);
}

void RefreshViewing() {
    const Matrix4& m = EffectiveViewing();
    std::copy(m.begin(), m.end(), Source.viewing);
    Source.affine = m[3] == 0 && m[7] == 0 && m[11] == 0 && m[15] == 1;
    NormalMatrix(m, Source.normals);
    Source.viewingChanged = false;
    RefreshNormal();
}

void RefreshNormal() {
    const auto& n = State().Normal;
    const float* rows = Source.normals;
    float v[3];
    for (int i = 0; i < 3; i++)
        v[i] = n[0] * rows[i] + n[1] * rows[3 + i] + n[2] * rows[6 + i];
    const float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    const float factor = length > 0 ? 32767 / length : 0;
    for (int i = 0; i < 3; i++)
        Source.attributes.normal[i] = static_cast<int16_t>(std::lrint(v[i] * factor));
}

void RefreshVertexAttributes() {
    const DrawingState& state = State();
    Vertex& v = Source.attributes;
    v.colour = state.Mode == PUPDRAW ? 0xFF000000u | static_cast<uint32_t>(state.OverlayIndex) : state.Colour;
    Source.slot = CanDraw() ? static_cast<int16_t>(MaterialSlot()) : -1;
    v.slot = state.Lit ? Source.slot : -1;
    if (v.slot >= 0)
        Pending.lit = true;
    v.texel[0] = state.Texel[0];
    v.texel[1] = state.Texel[1];
    Source.viewingChanged = true;
}

bool ToUnitCube(const double* position, double* unit) {
    const Matrix4 m = Product(EffectiveViewing(), EffectiveProjection());
    double clip[4];
    for (int i = 0; i < 4; i++)
        clip[i] = position[0] * m[i] + position[1] * m[4 + i] + position[2] * m[8 + i] + m[12 + i];
    if (clip[3] <= 0)
        return false;
    for (int i = 0; i < 3; i++)
        unit[i] = clip[i] / clip[3];
    return true;
}

void PixelsOfUnit(double* across, double* up) {
    const DrawingState& state = State();
    const Matrix4& m = EffectiveProjection();
    const ScreenBox& box = state.Raster.viewport;
    *across = m[0] * 0.5 * ToPixels(box.right - box.left + 1);
    *up = m[5] * 0.5 * ToPixels(box.top - box.bottom + 1);
}

void AddTriangles(const Vertex* vertices, int count, const int* indices, int indexCount) {
    if (!CanDraw())
        return;
    if (Pending.count + count <= MostVertices) {
        const int first = Pending.count;
        std::copy(vertices, vertices + count, Pending.vertices.begin() + first);
        Pending.count += count;
        for (int i = 0; i < indexCount; i++)
            Pending.indices.push_back(static_cast<uint16_t>(first + indices[i]));
        SendFullPiece();
        return;
    }
    for (int i = 0; i + 2 < indexCount; i += 3) {
        for (int corner = 0; corner < 3; corner++) {
            Pending.indices.push_back(static_cast<uint16_t>(Pending.count));
            Pending.vertices[Pending.count++] = vertices[indices[i + corner]];
        }
        SendFullPiece();
    }
}

void AddQuad(const Vertex* corners) {
    const int indices[6] = {0, 1, 2, 0, 2, 3};
    AddTriangles(corners, 4, indices, 6);
}

namespace {

bool Solid(const DrawingState& state) {
    return FindLineStyle(state.Raster.lineStyle) == 0xFFFF;
}

bool Smooth(const DrawingState& state) {
    return state.Raster.lineSmoothing != SML_OFF && state.Mode != PUPDRAW &&
           (state.Raster.sourceFactor != BF_ONE || state.Raster.destinationFactor != BF_ZERO);
}

// In pixel coordinates lines and points are filled boxes that join the batch of the shapes around them.
bool AsBoxes(const DrawingState& state) {
    return state.PixelExact && !state.Raster.pattern && !state.Raster.cullBack;
}

// A quadrilateral around a - b in eye coordinates: `across` and `along` are what the ends and sides are moved by.
void AddBand(const Vertex& a, const Vertex& b, const double* across, const double* along) {
    Vertex corners[4] = {a, b, b, a};
    const double ends[4] = {-1, 1, 1, -1}, sides[4] = {-1, -1, 1, 1};
    for (int i = 0; i < 4; i++)
        for (int axis = 0; axis < 2; axis++)
            corners[i].position[axis] =
                static_cast<float>(corners[i].position[axis] + ends[i] * along[axis] + sides[i] * across[axis]);
    AddQuad(corners);
}

// Lines as boxes: from `half` pixels before the first end to as many after the second, so that both end pixels are
// covered.
void AddBoxes(const Vertex* vertices, int count, bool closed) {
    double unitX, unitY;
    PixelsOfUnit(&unitX, &unitY);
    if (unitX == 0 || unitY == 0)
        return;
    const double width = std::max(1.0, std::floor(State().Raster.lineWidth * DrawingScale() + 0.5)), half = width / 2;
    const bool thin = State().Raster.lineWidth < 1.5f;
    const int segments = closed ? count : count - 1;
    for (int i = 0; i < segments; i++) {
        const Vertex &a = vertices[i], &b = vertices[(i + 1) % count];
        const double dx = (static_cast<double>(b.position[0]) - a.position[0]) * unitX,
                     dy = (static_cast<double>(b.position[1]) - a.position[1]) * unitY;
        double along[2], across[2];
        const bool flat = std::abs(dx) >= std::abs(dy);
        if (thin) {
            // One pixel for each step along the longer direction.
            along[0] = flat ? (dx < 0 ? -half : half) : 0;
            along[1] = flat ? 0 : (dy < 0 ? -half : half);
            across[0] = flat ? 0 : half;
            across[1] = flat ? half : 0;
        } else {
            const double length = std::hypot(dx, dy);
            along[0] = length > 0 ? dx / length * half : half;
            along[1] = length > 0 ? dy / length * half : 0;
            across[0] = -along[1];
            across[1] = along[0];
        }
        along[0] /= unitX;
        along[1] /= unitY;
        across[0] /= unitX;
        across[1] /= unitY;
        AddBand(a, b, across, along);
    }
}

// The length of a segment on the screen, in pixels.
double ScreenLength(const float* a, const float* b) {
    const Matrix4& m = EffectiveProjection();
    const ScreenBox& box = State().Raster.viewport;
    const double halfSize[2] = {0.5 * ToPixels(box.right - box.left + 1), 0.5 * ToPixels(box.top - box.bottom + 1)};
    double pixel[2][2];
    const float* ends[2] = {a, b};
    for (int end = 0; end < 2; end++) {
        const float* p = ends[end];
        const double w = p[0] * m[3] + p[1] * m[7] + p[2] * m[11] + m[15];
        if (w <= 0)
            return 0;
        for (int axis = 0; axis < 2; axis++)
            pixel[end][axis] =
                (p[0] * m[axis] + p[1] * m[4 + axis] + p[2] * m[8 + axis] + m[12 + axis]) / w * halfSize[axis];
    }
    return std::hypot(pixel[1][0] - pixel[0][0], pixel[1][1] - pixel[0][1]);
}

void AddWide(const Vertex* vertices, int count, bool closed) {
    const bool dashed = !Solid(State());
    const int segments = closed ? count : count - 1;
    double before = 0;
    for (int i = 0; i < segments; i++) {
        const Vertex &a = vertices[i], &b = vertices[(i + 1) % count];
        for (int end = 0; end < 2; end++)
            for (float side : {-1.0f, 1.0f}) {
                LineVertex corner = {end ? b : a, {}, {static_cast<float>(end), side, static_cast<float>(before)}};
                std::copy_n(end ? a.position : b.position, 3, corner.otherEnd);
                Pending.lineVertices.push_back(corner);
            }
        if (dashed)
            before += ScreenLength(a.position, b.position);
        SendFullPiece();
    }
}

void AddThin(const Vertex* vertices, int count, bool closed) {
    const int segments = closed ? count : count - 1;
    for (int i = 0; i < segments; i++) {
        Pending.vertices[Pending.count++] = vertices[i];
        Pending.vertices[Pending.count++] = vertices[(i + 1) % count];
        SendFullPiece();
    }
}

} // namespace

Shape LineShape() {
    const DrawingState& state = State();
    if (!Solid(state) || Smooth(state))
        return Shape::WideSegments;
    if (AsBoxes(state))
        return Shape::Triangles;
    if (state.Raster.lineWidth * DrawingScale() > 1.01)
        return Shape::WideSegments;
    return state.PixelExact ? Shape::WideSegments : Shape::Segments;
}

Shape PointShape() {
    return AsBoxes(State()) ? Shape::Triangles : Shape::Points;
}

void AddLine(const Vertex* vertices, int count, bool closed) {
    if (!CanDraw() || count < 2)
        return;
    switch (LineShape()) {
    case Shape::Triangles:
        return AddBoxes(vertices, count, closed);
    case Shape::WideSegments:
        return AddWide(vertices, count, closed);
    default:
        return AddThin(vertices, count, closed);
    }
}

void AddPoints(const Vertex* vertices, int count) {
    if (!CanDraw())
        return;
    if (PointShape() == Shape::Triangles) {
        double unitX, unitY;
        PixelsOfUnit(&unitX, &unitY);
        if (unitX == 0 || unitY == 0)
            return;
        const double half = 0.5 * State().Raster.pointSize * DrawingScale();
        const double along[2] = {half / unitX, 0}, across[2] = {0, half / unitY};
        for (int i = 0; i < count; i++)
            AddBand(vertices[i], vertices[i], across, along);
        return;
    }
    for (int i = 0; i < count; i++) {
        Pending.vertices[Pending.count++] = vertices[i];
        SendFullPiece();
    }
}

} // namespace gl
