#pragma once

#include "store/records.h"

#include <cstdint>

// Creation and release of the model's records. The small ones come from pools: a released record is kept on a free list
// for the next creation, so both are quick and memory stays for reuse; FreeSpare... gives the spare ones back to the
// allocator. A new record is on no list and holds what is said below; its other fields are undefined. Released records
// carry PoisonLink in their links.

/// In the link fields of released records, so that a stale pointer is recognisable.
inline constexpr std::uintptr_t PoisonLink = 291;

/// An unselected vertex at a place in model space.
Vertex* NewVertex(double x, double y, double z);
void FreeVertex(Vertex* vertex);
void FreeSpareVertices();

/// A bead without vertex or polygon, with texture coordinates 0, 0.
PolygonBead* NewPolygonBead();
void FreePolygonBead(PolygonBead* bead);
/// Releases the chain that starts at `first`, which may be null.
void FreePolygonBeadChain(PolygonBead* first);
void FreeSparePolygonBeads();

/// An unselected polygon without beads, material or texture.
Polygon* NewPolygon();
void FreePolygon(Polygon* polygon);
void FreeSparePolygons();

SubObject* NewSubObject();
/// Releases the record only: its name and polygons are the caller's.
void FreeSubObject(SubObject* subObject);
void FreeSpareSubObjects();

/// A membership that is shown.
LodBead* NewLodBead();
void FreeLodBead(LodBead* bead);
void FreeSpareLodBeads();

/// A level that switches at 1000000.0.
Lod* NewLod();
/// Releases the record only: its name and beads are the caller's.
void FreeLod(Lod* lod);
void FreeSpareLods();

/// A visible branch without name or object, placed by the identity. Sets SceneChangedSize, as does FreeBranch.
Branch* NewBranch();
/// Releases the record only: its name and subtree are the caller's.
void FreeBranch(Branch* branch);
void FreeSpareBranches();

WorkPoly* NewWorkPoly();
WorkPolyBead* NewWorkPolyBead();
/// Releases the sibling chain from `first` on, with all corners and all that hangs below.
void FreeWorkPoly(WorkPoly* first);
/// Empties both work pools.
void FreeWorkPolys();

ClipBead* NewPolyClipBead();
/// Releases the chain that starts at `first`, which may be null.
void FreeClippedPolygon(ClipBead* first);
void FreeClippingBeads();

/// An object with every list empty, unnamed and on no list. Not pooled: DeleteObject and FreeObject release it.
Object* NewObject();

/// A dull dark material named "Unnamed".
Material* NewMaterial();
/// Null is ignored.
void FreeMaterial(Material* material);

/// A texture without file name, with default filters.
Texture* NewTexture();
/// Null is ignored.
void FreeTexture(Texture* texture);

/// Set whenever a branch is created or released, the scene is replaced, or an object's box changes: the scene radius
/// must be computed anew.
extern int SceneChangedSize;

/// How many beads and sub-objects have been released so far: hints about chains and lists hold only while it stays the
/// same. Whoever moves a sub-object to another object by hand counts that too.
extern unsigned BeadReleases, SubObjectReleases, WorkPolyReleases;
