#include "views/polygon_targets.h"

#include "geometry/vectors.h"
#include "materials/material_definitions.h"
#include "platform/drawing.h"
#include "platform/lighting.h"
#include "platform/state.h"
#include "platform/textures.h"
#include "store/pools.h"
#include "store/walks.h"
#include "views/clipping.h"
#include "views/rendering_state.h"
#include "views/traversal.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace {

constexpr std::uint32_t NoMaterialColour = 0xFFFFFFFF, LineColour = 0xFFFFFFFF;

std::uint32_t ColourOf(const Material* material) {
    return material ? material->PackedColour : NoMaterialColour;
}

/// What a polygon's corners have in common is given before them. `normal`: of the whole polygon.
void BeginPolygon(const Polygon* polygon, const Material* material, const float* normal) {
    gl::bgnpolygon();
    if (polygon->Lighting == LightingFaceted)
        gl::n3f(normal);
    else if (polygon->Lighting == LightingUnlit)
        gl::cpack(ColourOf(material));
}

/// A corner with what differs from one to the next; `place` gives its position to the layer.
template <class Corner, class Place>
void AddCorner(const Polygon* polygon, const Corner* corner, bool withTextureCoordinates, Place place) {
    if (withTextureCoordinates)
        gl::t2f(corner->TexCoord);
    if (polygon->Lighting == LightingSmooth)
        gl::n3f(corner->Normal);
    place(corner);
}

void AddPlace(const PolygonBead* bead) {
    gl::v3d(bead->Vertex->Position);
}

void AddClippedPlace(const ClipBead* corner) {
    gl::v3f(corner->Position);
}

/// The test that drawing from graphics memory does in the layer.
bool FacesTheEye(const Polygon* polygon) {
    float place[3], normal[3];
    for (int axis = 0; axis < 3; ++axis)
        place[axis] = static_cast<float>(polygon->Beads->Vertex->Position[axis]);
    Transform3df(place, BackfaceMatrix, place);
    Rotate3df(polygon->Normal, BackfaceMatrix, normal);
    return Dotf(place, normal) < 0;
}

} // namespace

template <class Number>
void Fingerprint::MixNumbers(const Number* numbers, int count) {
    constexpr std::size_t word = sizeof(std::uint64_t);
    const std::size_t size = sizeof(Number) * static_cast<std::size_t>(count);
    for (std::size_t offset = 0; offset < size; offset += word) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, reinterpret_cast<const char*>(numbers) + offset, std::min(word, size - offset));
        Mix(bits);
    }
}

void Fingerprint::Fill(const Polygon* polygon, const Material* material, bool withTextureCoordinates) {
    Anything = true;
    Add(6, static_cast<std::uint64_t>(polygon->Lighting) << 1 | withTextureCoordinates);
    if (polygon->Lighting == LightingFaceted)
        MixNumbers(polygon->Normal, 3);
    else if (polygon->Lighting == LightingUnlit && !(material && UnlitMaterial(material)))
        Mix(ColourOf(material));
    for (const PolygonBead* bead : EveryBead(polygon)) {
        if (withTextureCoordinates)
            MixNumbers(bead->TexCoord, 2);
        if (polygon->Lighting == LightingSmooth)
            MixNumbers(bead->Normal, 3);
        MixNumbers(bead->Vertex->Position, 3);
    }
}

void Fingerprint::Outline(const Polygon* polygon) {
    Anything = true;
    Add(7, 0);
    MixNumbers(polygon->Normal, 3);
    for (const PolygonBead* bead : EveryBead(polygon))
        MixNumbers(bead->Vertex->Position, 3);
}

void GraphicsTarget::SetMaterial(const Material* material) {
    BindMaterial(material);
    UnlitIsBound = false;
}

/// Has what follows show the material's colour in a recording, or the material itself again. False when the material
/// has none for that.
bool GraphicsTarget::BindUnlit(const Material* material, bool unlit) {
    const int number = material ? UnlitMaterial(material) : 0;
    if (!number)
        return false;
    if (unlit != UnlitIsBound)
        gl::lmbind(gl::MATERIAL, unlit ? number : material->GLIndex);
    UnlitIsBound = unlit;
    return unlit;
}

void GraphicsTarget::SetTexture(const Texture* texture) {
    BindTexture(texture);
    // The polygons that decals lie on may be more transparent than texels that are left out.
    TextureCutting(texture != nullptr);
}

void GraphicsTarget::SetTextureGeneration(bool on) {
    for (const int coordinate : {gl::TX_S, gl::TX_T}) {
        if (on)
            gl::texgen(coordinate, gl::TG_SPHEREMAP, nullptr);
        gl::texgen(coordinate, on ? gl::TG_ON : gl::TG_OFF, nullptr);
    }
}

void GraphicsTarget::SetDepthWrites(bool on) {
    gl::zwritemask(on ? 0xFFFFFFFF : 0);
}

void GraphicsTarget::SetColourWrites(bool on) {
    gl::wmpack(on ? 0xFFFFFFFF : 0);
}

void GraphicsTarget::Fill(const Polygon* polygon, const Material* material, bool withTextureCoordinates) {
    static constexpr float anyNormal[3] = {0, 0, 1};
    if (BindUnlit(material, polygon->Lighting == LightingUnlit)) {
        gl::bgnpolygon();
        gl::n3f(anyNormal);
    } else {
        BeginPolygon(polygon, material, polygon->Normal);
    }
    for (const PolygonBead* bead : EveryBead(polygon))
        AddCorner(polygon, bead, withTextureCoordinates, AddPlace);
    gl::endpolygon();
}

void GraphicsTarget::Outline(const Polygon* polygon) {
    if (Facing) {
        gl::n3f(polygon->Normal);
        gl::cpack(LineColour);
        gl::bgnclosedline();
        for (const PolygonBead* bead : EveryBead(polygon))
            AddPlace(bead);
        gl::endclosedline();
        return;
    }
    // Lines leave out the pixel of their end. The first polygon at a vertex begins a line there: none is missing.
    gl::cpack(LineColour);
    bool drawing = false;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        const Vertex* next = NextInRing(polygon, bead)->Vertex;
        if (!Drawn.Insert(bead->Vertex, next)) {
            if (drawing)
                gl::endline();
            drawing = false;
            continue;
        }
        if (!drawing) {
            gl::bgnline();
            gl::v3d(bead->Vertex->Position);
        }
        gl::v3d(next->Position);
        drawing = true;
    }
    if (drawing)
        gl::endline();
}

bool GraphicsTarget::EdgeSet::Insert(const Vertex* a, const Vertex* b) {
    if (std::less<>()(b, a))
        std::swap(a, b);
    if (2 * (Count + 1) > Table.size())
        Grow();
    const Edge edge = {a, b};
    Edge* place = Find(edge);
    if (place->A)
        return false;
    *place = edge;
    ++Count;
    return true;
}

std::size_t GraphicsTarget::EdgeSet::HashOf(const Edge& edge) {
    const auto a = reinterpret_cast<std::uintptr_t>(edge.A), b = reinterpret_cast<std::uintptr_t>(edge.B);
    const std::uint64_t mixed = (a ^ b * 0x9E3779B97F4A7C15U) * 0xC2B2AE3D27D4EB4FU;
    return static_cast<std::size_t>(mixed >> 32);
}

/// The edge's place, or the free one where it belongs.
GraphicsTarget::EdgeSet::Edge* GraphicsTarget::EdgeSet::Find(const Edge& edge) {
    const std::size_t mask = Table.size() - 1;
    std::size_t place = HashOf(edge) & mask;
    while (Table[place].A && (Table[place].A != edge.A || Table[place].B != edge.B))
        place = (place + 1) & mask;
    return &Table[place];
}

void GraphicsTarget::EdgeSet::Grow() {
    constexpr std::size_t smallest = 64;
    std::vector<Edge> former(std::max(smallest, 2 * Table.size()), Edge{nullptr, nullptr});
    former.swap(Table);
    for (const Edge& edge : former)
        if (edge.A)
            *Find(edge) = edge;
}

void ClippedTarget::Fill(const Polygon* polygon, const Material* material, bool withTextureCoordinates) {
    ClipBead* ring = ClipPolygonToWorkArea(MakeClipPolygon(polygon, withTextureCoordinates));
    if (!ring)
        return;
    BeginPolygon(polygon, material, ring->Normal);
    for (const ClipBead* corner : Along<&ClipBead::Next>(ring))
        AddCorner(polygon, corner, withTextureCoordinates, AddClippedPlace);
    gl::endpolygon();
    FreeClippedPolygon(ring);
}

void ClippedTarget::Outline(const Polygon* polygon) {
    if (FacingOnly && !FacesTheEye(polygon))
        return;
    ClipBead* ring = ClipPolygonToWorkArea(MakeClipPolygon(polygon, 0));
    if (!ring)
        return;
    gl::bgnclosedline();
    for (const ClipBead* corner : Along<&ClipBead::Next>(ring))
        AddClippedPlace(corner);
    gl::endclosedline();
    FreeClippedPolygon(ring);
}
