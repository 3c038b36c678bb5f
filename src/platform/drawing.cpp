#include "platform/drawing.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/recorder.h"
#include "platform/tessellation.h"
#include "platform/vertices.h"

namespace gl {

namespace {

enum class Primitive { None, Points, Line, ClosedLine, Polygon, Mesh, Strip };

Primitive Begun = Primitive::None;
// Vertices of the primitive that was begun. Filled ones stand at the end of the pending batch already.
Vertex *First = nullptr, *Next = nullptr, *End = nullptr;
std::vector<Vertex> Corners; // those of lines, and of primitives too large for a batch
std::vector<int> Swaps;      // places where a mesh exchanged its two vertices
std::vector<int> Triangles;

bool Filled(Primitive primitive) {
    return primitive >= Primitive::Polygon;
}

void UseCorners(int used) {
    if (static_cast<int>(Corners.size()) < std::max(2 * used, 1024))
        Corners.resize(std::max(2 * used, 1024));
    First = Corners.data();
    Next = First + used;
    End = First + Corners.size();
}

// The primitive has outgrown the place where its vertices are gathered.
void MakeRoom() {
    const int used = static_cast<int>(Next - First);
    if (First != Corners.data()) {
        const Vertex* from = First;
        UseCorners(used);
        std::copy(from, from + used, First);
        return;
    }
    UseCorners(used);
}

void Begin(Primitive primitive) {
    Begun = primitive;
    if (Recording()) {
        BeginRecordedPrimitive();
        return;
    }
    BeginShape(Filled(primitive) ? Shape::Triangles : primitive == Primitive::Points ? PointShape() : LineShape());
    if (Source.viewingChanged)
        RefreshViewing();
    if (Filled(primitive)) {
        First = Next = Pending.vertices.data() + Pending.count;
        End = Pending.vertices.data() + Pending.vertices.size();
    } else
        UseCorners(0);
}

inline void GenerateTexels(Vertex& vertex, double x, double y, double z, double w) {
    const auto& generation = State().Textures.generation;
    for (int i = 0; i < 2; i++) {
        if (!generation[i].on)
            continue;
        const auto& plane = generation[i].plane;
        const float* eye = vertex.position;
        switch (generation[i].mode) {
        case TG_LINEAR:
            vertex.texel[i] = static_cast<float>(x * plane[0] + y * plane[1] + z * plane[2] + w * plane[3]);
            break;
        case TG_CONTOUR:
            vertex.texel[i] = static_cast<float>(eye[0] * plane[0] + eye[1] * plane[1] + eye[2] * plane[2] + plane[3]);
            break;
        case TG_SPHEREMAP: {
            const double n[3] = {vertex.normal[0] / 32767.0, vertex.normal[1] / 32767.0, vertex.normal[2] / 32767.0};
            const double distance = std::max<double>(std::hypot(eye[0], eye[1], eye[2]), 1e-30);
            const double u[3] = {eye[0] / distance, eye[1] / distance, eye[2] / distance};
            const double nu = 2 * (n[0] * u[0] + n[1] * u[1] + n[2] * u[2]);
            const double r[3] = {u[0] - nu * n[0], u[1] - nu * n[1], u[2] - nu * n[2]};
            const double m = 2 * std::hypot(r[0], r[1], r[2] + 1);
            vertex.texel[i] = static_cast<float>(m > 0 ? r[i] / m + 0.5 : 0.5);
            break;
        }
        default:
            break;
        }
    }
}

inline void Add(double x, double y, double z, double w = 1) {
    if (Begun == Primitive::None)
        return;
    if (Recording()) {
        RecordVertex(x, y, z, w);
        return;
    }
    if (Next == End)
        MakeRoom();
    Vertex& vertex = *Next++;
    vertex = Source.attributes;
    ToEye(x, y, z, w, vertex.position);
    const auto& generation = State().Textures.generation;
    if (generation[0].on || generation[1].on)
        GenerateTexels(vertex, x, y, z, w);
}

// The triangles of a strip of n vertices.
void MeshTriangles(int count) {
    int older = 0, newer = 1;
    bool turned = false;
    size_t swap = 0;
    for (int i = 2; i < count; i++) {
        while (swap < Swaps.size() && Swaps[swap] <= i) {
            if (Swaps[swap++] >= 2) {
                std::swap(older, newer);
                turned = !turned;
            }
        }
        Triangles.insert(Triangles.end(), {turned ? newer : older, turned ? older : newer, i});
        older = newer;
        newer = i;
        turned = !turned;
    }
}

void StripTriangles(int count) {
    for (int i = 0; i + 3 < count; i += 2)
        Triangles.insert(Triangles.end(), {i, i + 1, i + 3, i, i + 3, i + 2});
}

// False for a polygon that is too intricate to be filled.
bool FillTriangles(const float* positions, int stride, int count) {
    Triangles.clear();
    if (Begun == Primitive::Polygon)
        return Triangulate(positions, stride, count, Triangles);
    if (Begun == Primitive::Mesh)
        MeshTriangles(count);
    else
        StripTriangles(count);
    return true;
}

// In place of a polygon that cannot be filled.
void DrawOutline(int count) {
    const std::vector<Vertex> outline(First, First + count);
    BeginShape(LineShape());
    AddLine(outline.data(), count, true);
}

// Triangles and most polygons go without lists.
bool AddInPlace(int count) {
    if (Begun != Primitive::Polygon || count > 4 || count < 3)
        return false;
    const auto first = static_cast<uint16_t>(Pending.count);
    auto add = [first](int a, int b, int c) {
        Pending.indices.push_back(static_cast<uint16_t>(first + a));
        Pending.indices.push_back(static_cast<uint16_t>(first + b));
        Pending.indices.push_back(static_cast<uint16_t>(first + c));
    };
    if (count == 3)
        add(0, 1, 2);
    else if (FirstDiagonal(First[0].position, sizeof(Vertex) / sizeof(float))) {
        add(0, 1, 2);
        add(0, 2, 3);
    } else {
        add(1, 2, 3);
        add(1, 3, 0);
    }
    Pending.count += count;
    SendFullPiece();
    return true;
}

// Sending in the middle of a primitive (a definition made between its vertices) moves the end of the pending batch.
void KeepInPlace(int count) {
    Vertex* place = Pending.vertices.data() + Pending.count;
    if (First != place)
        std::move(First, First + count, place);
    First = place;
}

void Finish() {
    if (Begun == Primitive::None)
        return;
    const int count = static_cast<int>(Next - First);
    if (Recording()) {
        if (Filled(Begun)) {
            if (const int recorded = RecordedVertices()) {
                int stride;
                const float* positions = RecordedPositions(&stride);
                if (FillTriangles(positions, stride, recorded))
                    RecordTriangles(Triangles);
                else
                    RecordLine(true);
            }
        } else if (Begun == Primitive::Points)
            RecordPoints();
        else
            RecordLine(Begun == Primitive::ClosedLine);
    } else if (!CanDraw()) {
        // Drawing goes nowhere.
    } else if (!Filled(Begun)) {
        if (Begun == Primitive::Points)
            AddPoints(First, count);
        else
            AddLine(First, count, Begun == Primitive::ClosedLine);
    } else if (First == Corners.data()) {
        if (FillTriangles(First->position, sizeof(Vertex) / sizeof(float), count))
            AddTriangles(First, count, Triangles.data(), static_cast<int>(Triangles.size()));
        else
            DrawOutline(count);
    } else if (KeepInPlace(count); !AddInPlace(count)) {
        if (!FillTriangles(First->position, sizeof(Vertex) / sizeof(float), count)) {
            DrawOutline(count);
        } else {
            const int first = Pending.count;
            Pending.count += count;
            for (int index : Triangles)
                Pending.indices.push_back(static_cast<uint16_t>(first + index));
            SendFullPiece();
        }
    }
    Begun = Primitive::None;
}

uint32_t Component(int value) {
    return static_cast<uint32_t>(std::clamp(value, 0, 255));
}

uint32_t Component(float value) {
    return static_cast<uint32_t>(std::clamp(value, 0.0f, 1.0f) * 255 + 0.5f);
}

template <typename Number>
uint32_t Packed(const Number* c, uint32_t alpha) {
    if constexpr (std::is_floating_point_v<Number>)
        return alpha << 24 | Component(c[2]) << 16 | Component(c[1]) << 8 | Component(c[0]);
    else
        return alpha << 24 | Component(int{c[2]}) << 16 | Component(int{c[1]}) << 8 | Component(int{c[0]});
}

template <typename Number>
void SetTexel(Number s, Number t) {
    DrawingState& state = State();
    state.Texel = {static_cast<float>(s), static_cast<float>(t)};
    Source.attributes.texel[0] = state.Texel[0];
    Source.attributes.texel[1] = state.Texel[1];
}

} // namespace

void cpack(uint32_t colour) {
    DrawingState& state = State();
    state.Colour = colour;
    state.Lit = false;
    if (state.Mode != PUPDRAW)
        Source.attributes.colour = colour;
    Source.attributes.slot = -1;
    if (Recording())
        RecordColour();
}

void RGBcolor(int red, int green, int blue) {
    const int colour[3] = {red, green, blue};
    cpack(Packed(colour, 255));
}

void c3f(const float* c) {
    cpack(Packed(c, 255));
}

void c4f(const float* c) {
    cpack(Packed(c, Component(c[3])));
}

void c3i(const int32_t* c) {
    cpack(Packed(c, 255));
}

void c4i(const int32_t* c) {
    cpack(Packed(c, Component(c[3])));
}

void c3s(const int16_t* c) {
    cpack(Packed(c, 255));
}

void c4s(const int16_t* c) {
    cpack(Packed(c, Component(int{c[3]})));
}

uint32_t getcpack() {
    return State().Colour;
}

void n3f(const float* n) {
    DrawingState& state = State();
    state.Normal = {n[0], n[1], n[2]};
    state.Lit = true;
    if (Source.viewingChanged)
        RefreshViewing();
    else
        RefreshNormal();
    Source.attributes.slot = Source.slot;
    if (Source.slot >= 0)
        Pending.lit = true;
    if (Recording())
        RecordNormal();
}

void n3d(const double* n) {
    const float normal[3] = {static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2])};
    n3f(normal);
}

void t2f(const float* t) {
    SetTexel(t[0], t[1]);
}

void t2d(const double* t) {
    SetTexel(t[0], t[1]);
}

void t2s(const int16_t* t) {
    SetTexel(t[0], t[1]);
}

void t2i(const int32_t* t) {
    SetTexel(t[0], t[1]);
}

void v2s(const int16_t* p) {
    Add(p[0], p[1], 0);
}

void v2i(const int32_t* p) {
    Add(p[0], p[1], 0);
}

void v2f(const float* p) {
    Add(p[0], p[1], 0);
}

void v2d(const double* p) {
    Add(p[0], p[1], 0);
}

void v3s(const int16_t* p) {
    Add(p[0], p[1], p[2]);
}

void v3i(const int32_t* p) {
    Add(p[0], p[1], p[2]);
}

void v3f(const float* p) {
    Add(p[0], p[1], p[2]);
}

void v3d(const double* p) {
    Add(p[0], p[1], p[2]);
}

void v4f(const float* p) {
    Add(p[0], p[1], p[2], p[3]);
}

void v4d(const double* p) {
    Add(p[0], p[1], p[2], p[3]);
}

void bgnpoint() {
    Begin(Primitive::Points);
}

void endpoint() {
    Finish();
}

void bgnline() {
    Begin(Primitive::Line);
}

void endline() {
    Finish();
}

void bgnclosedline() {
    Begin(Primitive::ClosedLine);
}

void endclosedline() {
    Finish();
}

void bgnpolygon() {
    Begin(Primitive::Polygon);
}

void endpolygon() {
    Finish();
}

void bgntmesh() {
    Swaps.clear();
    Begin(Primitive::Mesh);
}

void endtmesh() {
    Finish();
}

void swaptmesh() {
    Swaps.push_back(Recording() ? RecordedVertices() : static_cast<int>(Next - First));
}

void bgnqstrip() {
    Begin(Primitive::Strip);
}

void endqstrip() {
    Finish();
}

} // namespace gl
