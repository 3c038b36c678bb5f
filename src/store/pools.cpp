#include "store/pools.h"

#include "base/exit.h"
#include "base/memory.h"
#include "base/record_chunks.h"
#include "store/appearance.h"
#include "store/walks.h"

#include <cstring>

int SceneChangedSize;
unsigned BeadReleases, SubObjectReleases, WorkPolyReleases;

namespace {

template <class Record, class Field>
std::size_t OffsetOf(Field Record::*field) {
    // Not offsetof: the field is a template argument.
    alignas(Record) static char space[sizeof(Record)];
    Record* record = reinterpret_cast<Record*>(space);
    return static_cast<std::size_t>(reinterpret_cast<char*>(&(record->*field)) - space);
}

template <class Link>
void Poison(Link*& link) {
    link = reinterpret_cast<Link*>(PoisonLink);
}

/// The free list of one kind of record, threaded through Link; the other links given are poisoned on release.
template <auto Link, auto... PoisonedLinks>
class Pool {
    using Record = LinkRecord<Link>;

  public:
    Record* Take() {
        if (Record* record = FirstSpare) {
            FirstSpare = record->*Link;
            return record;
        }
        auto* record = static_cast<Record*>(Chunks.Take());
        if (!record)
            KillProgram(FatalEnd);
        return record;
    }

    void Release(Record* record) {
        (Poison(record->*PoisonedLinks), ...);
        record->*Link = FirstSpare;
        FirstSpare = record;
    }

    /// Releases a chain that is itself threaded through Link.
    void ReleaseChain(Record* first) {
        for (Record* record = first; record; record = record->*Link) {
            (Poison(record->*PoisonedLinks), ...);
            if (!(record->*Link)) {
                record->*Link = FirstSpare;
                FirstSpare = first;
                return;
            }
        }
    }

    void Empty() { FirstSpare = static_cast<Record*>(Chunks.Release(FirstSpare)); }

  private:
    Record* FirstSpare = nullptr;
    RecordChunks Chunks{sizeof(Record), OffsetOf(Link)};
};

Pool<&Vertex::Next, &Vertex::Prev, &Vertex::Copy, &Vertex::NextInSubset, &Vertex::NextInGroup, &Vertex::Beads>
    VertexPool;
Pool<&PolygonBead::Next, &PolygonBead::NextOnVertex, &PolygonBead::Vertex, &PolygonBead::Polygon> BeadPool;
Pool<&Polygon::Next, &Polygon::Prev, &Polygon::NextSibling, &Polygon::PrevSibling, &Polygon::Parent,
     &Polygon::FirstChild, &Polygon::Copy, &Polygon::NextSelected, &Polygon::SubObject, &Polygon::Beads>
    PolygonPool;
Pool<&SubObject::Next, &SubObject::Prev, &SubObject::Copy, &SubObject::FirstPolygon> SubObjectPool;
Pool<&LodBead::Next, &LodBead::Prev, &LodBead::SubObject> LodBeadPool;
Pool<&Lod::Next, &Lod::Prev, &Lod::FirstBead> LodPool;
Pool<&Branch::FirstChild, &Branch::Prev, &Branch::Next, &Branch::Parent, &Branch::Copy> BranchPool;
Pool<&WorkPoly::Next, &WorkPoly::Prev, &WorkPoly::FirstChild, &WorkPoly::Parent> WorkPolyPool;
Pool<&WorkPolyBead::Next, &WorkPolyBead::Prev> WorkPolyBeadPool;
Pool<&ClipBead::Next> ClipBeadPool;

/// An all-zero record of a kind that is not pooled; its owner releases it with Free.
template <class Record>
Record* NewZeroRecord() {
    auto* record = static_cast<Record*>(Allocate(sizeof(Record)));
    if (!record)
        KillProgram(FatalEnd);
    std::memset(static_cast<void*>(record), 0, sizeof(Record));
    return record;
}

} // namespace

Vertex* NewVertex(double x, double y, double z) {
    Vertex* vertex = VertexPool.Take();
    vertex->Next = vertex->Prev = vertex->Copy = nullptr;
    vertex->NextInSubset = vertex->NextInGroup = nullptr;
    vertex->Beads = nullptr;
    vertex->Uses = vertex->Mark = vertex->Selected = 0;
    vertex->Position[0] = x;
    vertex->Position[1] = y;
    vertex->Position[2] = z;
    return vertex;
}

void FreeVertex(Vertex* vertex) {
    VertexPool.Release(vertex);
}

void FreeSpareVertices() {
    VertexPool.Empty();
}

PolygonBead* NewPolygonBead() {
    PolygonBead* bead = BeadPool.Take();
    bead->Next = bead->NextOnVertex = nullptr;
    bead->Vertex = nullptr;
    bead->Polygon = nullptr;
    bead->Normal[0] = bead->Normal[1] = bead->Normal[2] = 0;
    bead->TexCoord[0] = bead->TexCoord[1] = 0;
    bead->SmoothState = 0;
    return bead;
}

void FreePolygonBead(PolygonBead* bead) {
    ++BeadReleases;
    BeadPool.Release(bead);
}

void FreePolygonBeadChain(PolygonBead* first) {
    ++BeadReleases;
    BeadPool.ReleaseChain(first);
}

void FreeSparePolygonBeads() {
    BeadPool.Empty();
}

Polygon* NewPolygon() {
    Polygon* polygon = PolygonPool.Take();
    *polygon = Polygon{};
    return polygon;
}

void FreePolygon(Polygon* polygon) {
    PolygonPool.Release(polygon);
}

void FreeSparePolygons() {
    PolygonPool.Empty();
}

SubObject* NewSubObject() {
    SubObject* subObject = SubObjectPool.Take();
    *subObject = SubObject{};
    return subObject;
}

void FreeSubObject(SubObject* subObject) {
    SubObjectIsFreed(subObject);
    ++SubObjectReleases;
    SubObjectPool.Release(subObject);
}

void FreeSpareSubObjects() {
    SubObjectPool.Empty();
}

LodBead* NewLodBead() {
    LodBead* bead = LodBeadPool.Take();
    *bead = LodBead{};
    bead->Shown = 1;
    return bead;
}

void FreeLodBead(LodBead* bead) {
    LodBeadPool.Release(bead);
}

void FreeSpareLodBeads() {
    LodBeadPool.Empty();
}

Lod* NewLod() {
    Lod* lod = LodPool.Take();
    *lod = Lod{};
    lod->Distance = 1000000.0;
    return lod;
}

void FreeLod(Lod* lod) {
    LodPool.Release(lod);
}

void FreeSpareLods() {
    LodPool.Empty();
}

Branch* NewBranch() {
    Branch* branch = BranchPool.Take();
    *branch = Branch{};
    branch->Visible = 1;
    branch->Transform = branch->MoveStart = IdentityMatrix;
    SceneChangedSize = 1;
    return branch;
}

void FreeBranch(Branch* branch) {
    SceneChangedSize = 1;
    BranchPool.Release(branch);
}

void FreeSpareBranches() {
    BranchPool.Empty();
}

WorkPoly* NewWorkPoly() {
    WorkPoly* workPoly = WorkPolyPool.Take();
    *workPoly = WorkPoly{};
    return workPoly;
}

WorkPolyBead* NewWorkPolyBead() {
    WorkPolyBead* bead = WorkPolyBeadPool.Take();
    *bead = WorkPolyBead{};
    return bead;
}

void FreeWorkPoly(WorkPoly* first) {
    ++WorkPolyReleases;
    // Children are moved behind the chain that is being released, so that no nesting is too deep.
    WorkPoly* last = LastAlong<&WorkPoly::Next>(first);
    for (WorkPoly* workPoly = first; workPoly; workPoly = workPoly->Next) {
        if (workPoly->FirstChild) {
            last->Next = workPoly->FirstChild;
            last = LastAlong<&WorkPoly::Next>(last);
            workPoly->FirstChild = nullptr;
        }
        WorkPolyBeadPool.ReleaseChain(workPoly->FirstBead);
        workPoly->FirstBead = nullptr;
    }
    WorkPolyPool.ReleaseChain(first);
}

void FreeWorkPolys() {
    WorkPolyPool.Empty();
    WorkPolyBeadPool.Empty();
}

ClipBead* NewPolyClipBead() {
    ClipBead* bead = ClipBeadPool.Take();
    bead->Next = nullptr;
    return bead;
}

void FreeClippedPolygon(ClipBead* first) {
    ClipBeadPool.ReleaseChain(first);
}

void FreeClippingBeads() {
    ClipBeadPool.Empty();
}

Object* NewObject() {
    auto* object = NewZeroRecord<Object>();
    object->GridIndex = object->GridSteps = 1;
    return object;
}

Material* NewMaterial() {
    auto* material = NewZeroRecord<Material>();
    material->Name = CopyOfString("Unnamed");
    for (int i = 0; i < 3; ++i) {
        material->Diffuse[i] = 0.1F;
        material->Specular[i] = 1.0F;
    }
    material->Shininess = 64.0F;
    material->Alpha = 1.0F;
    return material;
}

void FreeMaterial(Material* material) {
    if (!material)
        return;
    MaterialIsFreed(material);
    if (material->Name)
        Free(material->Name);
    Poison(material->Prev);
    Poison(material->Next);
    Poison(material->Name);
    material->GLIndex = -1;
    Free(material);
}

Texture* NewTexture() {
    auto* texture = NewZeroRecord<Texture>();
    texture->Aspect = 1.0F;
    return texture;
}

void FreeTexture(Texture* texture) {
    if (!texture)
        return;
    if (texture->FileName)
        Free(texture->FileName);
    Poison(texture->Prev);
    Poison(texture->Next);
    Poison(texture->FileName);
    texture->GLId = -1;
    Free(texture);
}
