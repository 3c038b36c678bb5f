#include "store/polygon_editing.h"

#include "store/accessors.h"
#include "store/appearance.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <cstring>

int CurrentLighting = LightingFaceted;

namespace {

using VertexList = LinkedList<&Vertex::Next, &Vertex::Prev>;
using PolygonList = LinkedList<&Polygon::Next, &Polygon::Prev>;
using SiblingList = LinkedList<&Polygon::NextSibling, &Polygon::PrevSibling>;

/// Where AddPolygonBead appended last, so that long rings are built in linear time.
struct {
    const PolygonBead* Head = nullptr;
    PolygonBead* Last = nullptr;
    unsigned Releases = 0;
} LastAppended;

PolygonBead* LastOfChain(PolygonBead* chain) {
    const bool known = LastAppended.Head == chain && LastAppended.Releases == BeadReleases;
    return LastAlong<&PolygonBead::Next>(known ? LastAppended.Last : chain);
}

void LinkIntoObject(Object* object, Polygon* polygon, Polygon* parent) {
    PolygonList::InsertFirst(object->FirstPolygon, polygon);
    if (parent) {
        SiblingList::InsertFirst(parent->FirstChild, polygon);
        polygon->Parent = parent;
    } else {
        SubObject* subObject = SelectedSubObject();
        polygon->SubObject = subObject;
        SiblingList::InsertFirst(subObject->FirstPolygon, polygon);
    }
    object->ConnectionsOK = 0;
}

void ReleaseWithUnusedVertices(Polygon* polygon) {
    for (const PolygonBead* bead : EveryBead(polygon))
        if (--bead->Vertex->Uses == 0)
            DeleteVertex(bead->Vertex);
    LosePolygon(polygon);
}

/// A polygon that is in no model yet shows nowhere.
void NoteChange(const Polygon* polygon) {
    if (polygon->SubObject)
        AppearanceChanged(polygon);
}

} // namespace

Vertex* AddVertex(double x, double y, double z) {
    Object* object = CurrentObject();
    Vertex* vertex = NewVertex(x, y, z);
    VertexList::InsertFirst(object->FirstVertex, vertex);
    object->ConnectionsOK = 0;
    WorkSaved = 0;
    return vertex;
}

void DeleteVertex(Vertex* vertex) {
    Object* object = CurrentObject();
    VertexList::Remove(object->FirstVertex, vertex);
    FreeVertex(vertex);
    object->ConnectionsOK = 0;
    WorkSaved = 0;
}

Vertex* CopyOfVertex(const Vertex* vertex) {
    return NewVertex(vertex->Position[0], vertex->Position[1], vertex->Position[2]);
}

void LinkPolygon(Polygon* polygon, Polygon* parent) {
    LinkIntoObject(CurrentObject(), polygon, parent);
    WorkSaved = 0;
}

void UnlinkPolygon(Polygon* polygon) {
    Object* object = CurrentObject();
    PolygonList::Remove(object->FirstPolygon, polygon);
    SiblingList::Remove(polygon->Parent ? polygon->Parent->FirstChild : polygon->SubObject->FirstPolygon, polygon);
    polygon->Next = polygon->Prev = polygon->NextSibling = polygon->PrevSibling = polygon->Parent = nullptr;
    object->ConnectionsOK = 0;
    WorkSaved = 0;
}

Polygon* AddPolygon(PolygonBead* beads, Polygon* parent) {
    Object* object = CurrentObject();
    Polygon* polygon = NewPolygon();
    LinkIntoObject(object, polygon, parent);
    polygon->Material = CurrentMaterial();
    polygon->Lighting = static_cast<std::uint8_t>(CurrentLighting);
    polygon->SubObject = SelectedSubObject();
    polygon->Beads = beads;
    for (PolygonBead* bead = beads; bead; bead = bead->Next)
        bead->Polygon = polygon;
    ForgetLastBead();
    WorkSaved = 0;
    return polygon;
}

void CopyPolygonInfo(Polygon* destination, const Polygon* source) {
    destination->Material = source->Material;
    destination->TextureMaterial = source->TextureMaterial;
    destination->Lighting = source->Lighting;
    destination->Texture = source->Texture;
    destination->LightGroup = source->LightGroup;
    destination->Flags = source->Flags;
    NoteChange(destination);
}

Polygon* CopyOfPolygon(const Polygon* polygon, int useCopies) {
    Polygon* copy = NewPolygon();
    PolygonBead** end = &copy->Beads;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        PolygonBead* beadCopy = NewPolygonBead();
        if (useCopies) {
            beadCopy->Vertex = bead->Vertex->Copy;
        } else {
            beadCopy->Vertex = bead->Vertex;
            ++bead->Vertex->Uses;
        }
        beadCopy->Polygon = copy;
        CopyPolygonBeadInfo(beadCopy, bead);
        *end = beadCopy;
        end = &beadCopy->Next;
    }
    CopyPolygonInfo(copy, polygon);
    copy->SubObject = polygon->SubObject;
    return copy;
}

void LosePolygon(Polygon* polygon) {
    FreePolygonBeadChain(polygon->Beads);
    FreePolygon(polygon);
}

void DeletePolygon(Polygon* polygon, int deleteVertices) {
    // The deepest first child goes first, as in a recursion, but no nesting is too deep.
    for (Polygon* doomed = polygon;;) {
        while (doomed->FirstChild)
            doomed = doomed->FirstChild;
        Polygon* parent = doomed->Parent;
        UnlinkPolygon(doomed);
        if (deleteVertices)
            ReleaseWithUnusedVertices(doomed);
        else
            LosePolygon(doomed);
        if (doomed == polygon)
            return;
        doomed = parent;
    }
}

void ReversePolygon(Polygon* polygon) {
    PolygonBead* reversed = nullptr;
    for (PolygonBead* bead : EveryBead(polygon)) {
        bead->Next = reversed;
        reversed = bead;
    }
    polygon->Beads = reversed;
    ForgetLastBead();
    ConnectionsOK() = 0;
    WorkSaved = 0;
}

void ScanSubPolygons(Polygon* polygon, void (*function)(Polygon*, void*), void* argument) {
    for (Polygon* subPolygon : EverySubPolygon(polygon))
        function(subPolygon, argument);
}

PolygonBead* AddPolygonBead(PolygonBead*& chain, Vertex* vertex) {
    PolygonBead* bead = NewPolygonBead();
    bead->Vertex = vertex;
    if (chain)
        LastOfChain(chain)->Next = bead;
    else
        chain = bead;
    LastAppended = {chain, bead, BeadReleases};
    return bead;
}

void ForgetLastBead() {
    LastAppended = {};
}

void DeleteLastPolygonBead(PolygonBead*& chain, int deleteVertex) {
    if (!chain)
        return;
    PolygonBead** link = &chain;
    while ((*link)->Next)
        link = &(*link)->Next;
    PolygonBead* last = *link;
    *link = nullptr;
    if (deleteVertex)
        DeleteVertex(last->Vertex);
    FreePolygonBead(last);
}

void DeletePolygonBeadList(PolygonBead* first, int deleteVertices) {
    if (deleteVertices)
        for (PolygonBead* bead = first; bead; bead = bead->Next)
            DeleteVertex(bead->Vertex);
    FreePolygonBeadChain(first);
}

void CopyPolygonBeadInfo(PolygonBead* destination, const PolygonBead* source) {
    std::memcpy(destination->TexCoord, source->TexCoord, sizeof destination->TexCoord);
    if (destination->Polygon)
        NoteChange(destination->Polygon);
}
