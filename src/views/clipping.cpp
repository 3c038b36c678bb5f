#include "views/clipping.h"

#include "geometry/vectors.h"
#include "store/pools.h"
#include "store/walks.h"
#include "views/work_area.h"

#include <algorithm>
#include <bit>

Matrixf ObjectTransformation = FloatIDMatrix;
int DoObjectTransform;

namespace {

/// Nearer to the eye nothing is kept.
constexpr float FrontDepth = -0.00001F;

/// A limit of one coordinate of a corner: what lies beyond it is cut away.
struct Limit {
    float (ClipBead::*Space)[3];
    int Axis;
    float Value;
    bool IsUpper;

    /// How far beyond the limit the corner lies; not positive when it is kept.
    float Beyond(const ClipBead* corner) const {
        const float distance = (corner->*Space)[Axis] - Value;
        return IsUpper ? distance : -distance;
    }
};

/// Sets a corner between two others; a clipper says what of them it needs.
using Blend = void (*)(ClipBead* out, const ClipBead* a, const ClipBead* b, float part);

void BlendNumbers(float* out, const float* a, const float* b, int count, float part) {
    for (int i = 0; i < count; ++i)
        out[i] = a[i] + (b[i] - a[i]) * part;
}

/// Appends corners to a ring that is being made.
class RingBuilder {
  public:
    void Add(ClipBead* corner) {
        corner->Next = nullptr;
        (Last ? Last->Next : First) = corner;
        Last = corner;
    }

    ClipBead* Ring() const { return First; }

  private:
    ClipBead* First = nullptr;
    ClipBead* Last = nullptr;
};

template <std::size_t Count>
class Clipper {
  public:
    Clipper(const Limit (&limits)[Count], Blend blend) : Limits(limits), Mix(blend) {}

    ClipBead* Clip(ClipBead* ring) const {
        // Rounding may leave a new corner a hair beyond a limit that was cut at: a second cut there would change
        // nothing, so each limit has its turn once.
        std::uint32_t cut = 0;
        while (ring) {
            std::uint32_t any = 0, all = ~0U;
            const std::uint32_t first = SetOutcodes(ring, ~cut, any, all);
            if (all) {
                FreeClippedPolygon(ring);
                return nullptr;
            }
            if (!any)
                return ring;
            const int limit = std::countr_zero(first);
            cut |= 1U << limit;
            ring = CutAt(Limits[limit], ring);
        }
        return ring;
    }

  private:
    /// Returns the code of the first corner that is outside.
    std::uint32_t SetOutcodes(ClipBead* ring, std::uint32_t wanted, std::uint32_t& any, std::uint32_t& all) const {
        std::uint32_t first = 0;
        for (ClipBead* corner = ring; corner; corner = corner->Next) {
            corner->Outcode = 0;
            for (std::size_t i = 0; i < Count; ++i)
                if (Limits[i].Beyond(corner) > 0)
                    corner->Outcode |= 1U << i & wanted;
            any |= corner->Outcode;
            all &= corner->Outcode;
            if (!first)
                first = corner->Outcode;
        }
        return first;
    }

    ClipBead* CutAt(const Limit& limit, ClipBead* ring) const {
        RingBuilder kept;
        ClipBead* dropped = nullptr;
        ClipBead* const first = ring;
        // The first corner's copy closes the ring: corners are relinked on the way.
        ClipBead closing = *first;
        for (ClipBead* corner = ring; corner;) {
            ClipBead* following = corner->Next;
            const ClipBead* next = following ? following : &closing;
            const float here = limit.Beyond(corner), there = limit.Beyond(next);
            ClipBead* crossing = nullptr;
            if ((here > 0) != (there > 0)) {
                crossing = NewPolyClipBead();
                *crossing = *corner;
                Mix(crossing, corner, next, here / (here - there));
                (crossing->*limit.Space)[limit.Axis] = limit.Value;
            }
            if (here > 0) {
                corner->Next = dropped;
                dropped = corner;
            } else
                kept.Add(corner);
            if (crossing)
                kept.Add(crossing);
            corner = following;
        }
        if (dropped)
            FreeClippedPolygon(dropped);
        return kept.Ring();
    }

    const Limit (&Limits)[Count];
    const Blend Mix;
};

} // namespace

ClipBead* MakeClipPolygon(const Polygon* polygon, int withTexture) {
    RingBuilder ring;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        ClipBead* corner = NewPolyClipBead();
        const float* normal = polygon->Lighting == LightingSmooth ? bead->Normal : polygon->Normal;
        for (int axis = 0; axis < 3; ++axis) {
            corner->Position[axis] = static_cast<float>(bead->Vertex->Position[axis]);
            corner->Normal[axis] = normal[axis];
            corner->Eye[axis] = 0;
        }
        for (int i = 0; i < 2; ++i)
            corner->TexCoord[i] = withTexture ? bead->TexCoord[i] : 0;
        corner->Outcode = 0;
        if (DoObjectTransform) {
            Transform3df(corner->Position, ObjectTransformation, corner->Position);
            Rotate3df(corner->Normal, ObjectTransformation, corner->Normal);
            Normalisef(corner->Normal);
        }
        ring.Add(corner);
    }
    return ring.Ring();
}

ClipBead* ClipPolygonToFrontClipPlane(ClipBead* ring) {
    static constexpr Limit limits[] = {{&ClipBead::Eye, 2, FrontDepth, true}};
    const auto blend = [](ClipBead* out, const ClipBead* a, const ClipBead* b, float part) {
        BlendNumbers(out->Eye, a->Eye, b->Eye, 3, part);
    };
    return Clipper(limits, blend).Clip(ring);
}

ClipBead* ClipPolygonToWorkArea(ClipBead* ring) {
    if (!WorkAreaClips())
        return ring;
    const auto limit = [](int axis, double value, bool isUpper) {
        return Limit{&ClipBead::Position, axis, static_cast<float>(value), isUpper};
    };
    const Limit limits[] = {limit(0, WorkAreaLeft, false),   limit(0, WorkAreaRight, true),
                            limit(1, WorkAreaFront, false),  limit(1, WorkAreaBack, true),
                            limit(2, WorkAreaBottom, false), limit(2, WorkAreaTop, true)};
    const auto blend = [](ClipBead* out, const ClipBead* a, const ClipBead* b, float part) {
        BlendNumbers(out->Position, a->Position, b->Position, 3, part);
        BlendNumbers(out->Normal, a->Normal, b->Normal, 3, part);
        BlendNumbers(out->TexCoord, a->TexCoord, b->TexCoord, 2, part);
        Normalisef(out->Normal);
    };
    return Clipper(limits, blend).Clip(ring);
}
