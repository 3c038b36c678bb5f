#include "store/connections.h"

#include "store/accessors.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

namespace {

/// Releases `gone`, which is on no ring any more; its corner lives on in `kept`.
void MergeCorners(const Polygon* polygon, PolygonBead* kept, PolygonBead* gone) {
    if (polygon->Texture)
        for (int i = 0; i < 2; ++i)
            kept->TexCoord[i] = (kept->TexCoord[i] + gone->TexCoord[i]) / 2;
    FreePolygonBead(gone);
}

/// True when the ring had repeated corners.
bool CollapseRepeatedCorners(const Polygon* polygon) {
    PolygonBead* const first = polygon->Beads;
    if (!first)
        return false;
    bool collapsed = false;
    PolygonBead* beforeLast = nullptr;
    PolygonBead* last = first;
    while (PolygonBead* next = last->Next) {
        if (next->Vertex == last->Vertex) {
            last->Next = next->Next;
            MergeCorners(polygon, last, next);
            collapsed = true;
        } else {
            beforeLast = last;
            last = next;
        }
    }
    // Where the ring closes the last bead goes, so that tools which remember a polygon's first corner still find it.
    // The bead before it has another vertex by now, so this happens once at most.
    if (beforeLast && last->Vertex == first->Vertex) {
        beforeLast->Next = nullptr;
        MergeCorners(polygon, first, last);
        collapsed = true;
    }
    return collapsed;
}

void FlagAllPolygons(int value) {
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        polygon->Mark = value;
}

} // namespace

std::size_t MakeConnections() {
    const Object* object = CurrentObject();
    std::size_t vertices = 0;
    for (Vertex* vertex : EveryVertex(object)) {
        vertex->Beads = nullptr;
        vertex->Uses = 0;
        ++vertices;
    }
    for (const Polygon* polygon : EveryPolygon(object))
        for (PolygonBead* bead : EveryBead(polygon)) {
            Vertex* vertex = bead->Vertex;
            bead->NextOnVertex = vertex->Beads;
            vertex->Beads = bead;
            ++vertex->Uses;
        }
    return vertices;
}

int SussMinkyPolygons() {
    Object* object = CurrentObject();
    bool collapsed = false;
    for (const Polygon* polygon : EveryPolygon(object))
        collapsed |= CollapseRepeatedCorners(polygon);
    if (collapsed) {
        // The vertices' lists still hold the released beads.
        object->ConnectionsOK = 0;
        WorkSaved = 0;
    }
    return collapsed;
}

void SetAllPolygonFlags() {
    FlagAllPolygons(1);
}

void ClearAllPolygonFlags() {
    FlagAllPolygons(0);
}

void FlagSubPolygons(Polygon* first, int value) {
    for (Polygon* polygon : Along<&Polygon::NextSibling>(first)) {
        polygon->Mark = value;
        for (Polygon* subPolygon : EverySubPolygon(polygon))
            subPolygon->Mark = value;
    }
}

void FlagPolygonsInLod(int value) {
    const Lod* lod = SelectedLod();
    if (!lod)
        return;
    for (const LodBead* bead : EveryLodBead(lod))
        FlagSubPolygons(bead->SubObject->FirstPolygon, value);
}
