#include "store/accessors.h"

#include "base/memory.h"
#include "base/slots.h"
#include "store/clean_up.h"
#include "store/normals.h"
#include "store/objects.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "store/walks.h"

FirstObjectSlots TheFirstObjectSlots;

namespace {

Material* TheCurrentMaterial;
Texture* TheCurrentTexture;

/// The last answer of SelectedSubObject that was found on its object's list. Every new polygon asks, so the answer is
/// kept until a sub-object is released, another one is selected or another object is current.
struct {
    const Object* Of = nullptr;
    const SubObject* Selected = nullptr;
    unsigned Releases = 0;
} KnownSubObject;

/// What every object starts with is no work to be saved.
class NoWork {
  public:
    NoWork() : Saved(WorkSaved) {}

    ~NoWork() { WorkSaved = Saved; }

    NoWork(const NoWork&) = delete;
    NoWork& operator=(const NoWork&) = delete;

  private:
    int Saved;
};

void EnsureSceneRoot() {
    if (CurrentFile->Scene)
        return;
    CurrentFile->Scene = NewBranch();
    CurrentFile->Scene->Name = CopyOfString("Scene");
}

} // namespace

Object*& FirstObject() {
    return CurrentFile->FirstObject;
}

Object*& CurrentObject() {
    if (!CurrentFile->FirstObject) {
        AddObject(nullptr, 1, 0);
        if (!Mergeing) {
            CallSlot(TheFirstObjectSlots.MakeDefaultMaterials);
            CallSlot(TheFirstObjectSlots.LoadDefaultTextures);
            WorkSaved = 1;
        }
    }
    return CurrentFile->CurrentObject;
}

Branch*& Scene() {
    EnsureSceneRoot();
    return CurrentFile->Scene;
}

Branch*& SelectedBranch() {
    EnsureSceneRoot();
    return CurrentFile->SelectedBranch;
}

Material*& FirstMaterial() {
    return CurrentFile->FirstMaterial;
}

Texture*& FirstTexture() {
    return CurrentFile->FirstTexture;
}

Material*& CurrentMaterial() {
    return TheCurrentMaterial;
}

Texture*& CurrentTexture() {
    return TheCurrentTexture;
}

Vertex*& FirstVertex() {
    return CurrentObject()->FirstVertex;
}

Polygon*& FirstPolygon() {
    return CurrentObject()->FirstPolygon;
}

Vertex* FirstLooseVertex() {
    return CurrentObject()->FirstLooseVertex;
}

Vertex* FirstSelectedVertex() {
    return CurrentObject()->FirstSelectedVertex;
}

Polygon* FirstSelectedPolygon() {
    return CurrentObject()->FirstSelectedPolygon;
}

SubObject*& FirstSubObject() {
    Object* object = CurrentObject();
    if (!object->FirstSubObject) {
        const NoWork scope;
        AddSubObject("SubObject1");
    }
    return object->FirstSubObject;
}

SubObject*& SelectedSubObject() {
    Object* object = CurrentObject();
    SubObject* first = FirstSubObject();
    SubObject*& selected = object->SelectedSubObject;
    if (selected == first)
        return selected;
    if (selected && KnownSubObject.Of == object && KnownSubObject.Selected == selected &&
        KnownSubObject.Releases == SubObjectReleases)
        return selected;
    SubObject* found = nullptr;
    for (SubObject* subObject : EverySubObject(object))
        if (subObject == selected) {
            found = subObject;
            break;
        }
    selected = found ? found : first;
    KnownSubObject = {object, selected, SubObjectReleases};
    return selected;
}

Lod*& FirstLod() {
    Object* object = CurrentObject();
    if (!object->FirstLod) {
        const NoWork scope;
        SubObject* first = FirstSubObject();
        AddLod("Lod1");
        AddLodBead(first);
    }
    return object->FirstLod;
}

Lod*& SelectedLod() {
    Object* object = CurrentObject();
    Lod* first = FirstLod();
    Lod*& selected = object->SelectedLod;
    if (!selected || selected == first)
        return selected;
    for (Lod* lod : EveryLod(object))
        if (lod == selected)
            return selected;
    selected = first;
    return selected;
}

View& ObjectView(int number) {
    return CurrentObject()->View[number];
}

View& DefaultObject3D() {
    return CurrentObject()->DefaultObject3D;
}

View& DefaultObject2D(int direction) {
    return CurrentObject()->DefaultObject2D[direction];
}

WorkAreaRecord& ObjectWorkArea() {
    return CurrentObject()->WorkArea;
}

char*& ObjectName() {
    return CurrentObject()->Name;
}

std::int32_t& ObjectId() {
    return CurrentObject()->Id;
}

std::int32_t& ObjectAttributes() {
    return CurrentObject()->Attributes;
}

std::int32_t& GridIndex() {
    return CurrentObject()->GridIndex;
}

std::int32_t& GridSteps() {
    return CurrentObject()->GridSteps;
}

double* ObjectMin() {
    return CurrentObject()->Min;
}

double* ObjectMax() {
    return CurrentObject()->Max;
}

double& ObjectRadius() {
    Object* object = CurrentObject();
    if (!SussingRadius && !object->ConnectionsOK)
        CleanUpObject();
    return object->Radius;
}

std::int32_t& ConnectionsOK() {
    return CurrentObject()->ConnectionsOK;
}

std::int32_t& NormalsOK() {
    return CurrentObject()->NormalsOK;
}

std::int32_t& PolygonSelectionChanged() {
    return CurrentObject()->PolygonSelectionChanged;
}

std::int32_t& VertexSelectionChanged() {
    return CurrentObject()->VertexSelectionChanged;
}
