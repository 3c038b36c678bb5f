#include "store/undo.h"

#include "base/debug.h"
#include "base/memory.h"
#include "base/slots.h"
#include "store/accessors.h"
#include "store/integrity.h"
#include "store/polygon_editing.h"
#include "store/polygon_scan.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/sorting.h"
#include "store/storage.h"
#include "store/walks.h"

#include <algorithm>
#include <utility>

UndoSlots TheUndoSlots;

namespace {

template <class Record>
Record* CopyOrNull(const Record* source) {
    return source ? source->Copy : nullptr;
}

void CopySubObjects(const Object* source, Object* snapshot) {
    for (SubObject* subObject : EverySubObject(source)) {
        SubObject* copy = NewSubObject();
        copy->Name = CopyOfString(subObject->Name);
        subObject->Copy = copy;
        LinkedList<&SubObject::Next, &SubObject::Prev>::InsertFirst(snapshot->FirstSubObject, copy);
        if (subObject == source->SelectedSubObject)
            snapshot->SelectedSubObject = copy;
    }
}

void CopyLods(const Object* source, Object* snapshot) {
    for (const Lod* lod : EveryLod(source)) {
        Lod* copy = NewLod();
        copy->Name = CopyOfString(lod->Name);
        copy->Distance = lod->Distance;
        LinkedList<&Lod::Next, &Lod::Prev>::InsertFirst(snapshot->FirstLod, copy);
        LodBead* last = nullptr;
        for (const LodBead* bead : EveryLodBead(lod)) {
            LodBead* beadCopy = NewLodBead();
            beadCopy->SubObject = bead->SubObject->Copy;
            beadCopy->Shown = bead->Shown;
            beadCopy->Lod = copy;
            LinkedList<&LodBead::Next, &LodBead::Prev>::Append(copy->FirstBead, last, beadCopy);
        }
        if (lod == source->SelectedLod)
            snapshot->SelectedLod = copy;
    }
}

void CopyVertices(const Object* source, Object* snapshot) {
    Vertex* last = nullptr;
    for (Vertex* vertex : EveryVertex(source)) {
        vertex->Copy = CopyOfVertex(vertex);
        LinkedList<&Vertex::Next, &Vertex::Prev>::Append(snapshot->FirstVertex, last, vertex->Copy);
    }
}

void CopyPolygons(const Object* source, Object* snapshot) {
    Polygon* last = nullptr;
    for (Polygon* polygon : EveryPolygon(source)) {
        Polygon* copy = NewPolygon();
        polygon->Copy = copy;
        LinkedList<&Polygon::Next, &Polygon::Prev>::Append(snapshot->FirstPolygon, last, copy);
        PolygonBead** end = &copy->Beads;
        for (const PolygonBead* bead : EveryBead(polygon)) {
            PolygonBead* beadCopy = NewPolygonBead();
            beadCopy->Vertex = bead->Vertex->Copy;
            beadCopy->Polygon = copy;
            CopyPolygonBeadInfo(beadCopy, bead);
            *end = beadCopy;
            end = &beadCopy->Next;
        }
        CopyPolygonInfo(copy, polygon);
    }
}

void LinkStructureOfCopies(const Object* source) {
    for (const SubObject* subObject : EverySubObject(source))
        subObject->Copy->FirstPolygon = CopyOrNull(subObject->FirstPolygon);
    for (const Polygon* polygon : EveryPolygon(source)) {
        Polygon* copy = polygon->Copy;
        copy->NextSibling = CopyOrNull(polygon->NextSibling);
        copy->PrevSibling = CopyOrNull(polygon->PrevSibling);
        copy->SubObject = CopyOrNull(polygon->SubObject);
        copy->Parent = CopyOrNull(polygon->Parent);
        copy->FirstChild = CopyOrNull(polygon->FirstChild);
    }
}

/// The scene and its copies.
template <class Function>
void ForEveryPlacement(Function function) {
    for (Branch* tree : {CurrentFile->Scene, SceneUndo, ScenePaste})
        for (Branch* branch : EveryBranch(tree))
            function(branch);
}

void ShiftPlacements(const double* offset) {
    const Matrix shift = TranslationMatrix(offset[0], offset[1], offset[2]);
    ForEveryPlacement([&](Branch* branch) {
        if (branch->Object == CurrentObject())
            MultMatrix(shift, branch->Transform, branch->Transform);
    });
}

/// Placements follow the snapshot that has become current, and would follow the edited object back.
void BringPlacementsAlong(Object* snapshot, Object* edited) {
    for (int axis = 0; axis < 3; ++axis)
        edited->PlacementShift[axis] = -snapshot->PlacementShift[axis];
    ShiftPlacements(snapshot->PlacementShift);
    std::fill_n(snapshot->PlacementShift, 3, 0);
}

void CarryViews(Object* to, const Object* from) {
    for (int i = 0; i < NoViewports; ++i)
        CopyView(to->View[i], from->View[i]);
    CopyView(to->DefaultObject3D, from->DefaultObject3D);
    for (int direction = 0; direction < DefaultView2DCount; ++direction)
        CopyView(to->DefaultObject2D[direction], from->DefaultObject2D[direction]);
    to->WorkArea = from->WorkArea;
    to->GridIndex = from->GridIndex;
    to->GridSteps = from->GridSteps;
}

} // namespace

void CopyCurrentObject() {
    Object* object = CurrentObject();
    FreeUndoCopies();
    Object* snapshot = NewObject();
    object->UndoCopy = snapshot;
    snapshot->Name = CopyOfString(object->Name);
    snapshot->Attributes = object->Attributes;
    snapshot->Radius = object->Radius;
    CopySubObjects(object, snapshot);
    CopyLods(object, snapshot);
    CopyVertices(object, snapshot);
    CopyPolygons(object, snapshot);
    LinkStructureOfCopies(object);
    WorkSaved = 0;
    CallSlot(TheUndoSlots.SnapshotTaken);
}

void Undo() {
    Object* edited = CurrentObject();
    Object* snapshot = edited->UndoCopy;
    if (!snapshot)
        return;
    Trace("UNDO\n");
    LinkedList<&Object::Next, &Object::Prev>::Remove(FirstObject(), edited);
    LinkedList<&Object::Next, &Object::Prev>::InsertFirst(FirstObject(), snapshot);
    ForEveryPlacement(SortOutScene);

    CurrentObject() = snapshot;
    snapshot->UndoCopy = edited;
    edited->UndoCopy = nullptr;
    edited->Next = edited->Prev = nullptr;

    BringPlacementsAlong(snapshot, edited);
    CarryViews(snapshot, edited);

    CallSlot(TheUndoSlots.RedefineMaterials);
    CallSlot(TheUndoSlots.DeselectEverything);
    SortObject();
    CheckIntegrity();
    CallSlot(TheUndoSlots.DirtyModelWindows);
    CallSlot(TheUndoSlots.DirtyStructureEditor);
    WorkSaved = 0;
}

void MovePlacements(const double* offset) {
    ShiftPlacements(offset);
    Object* snapshot = CurrentObject()->UndoCopy;
    for (int axis = 0; snapshot && axis < 3; ++axis)
        snapshot->PlacementShift[axis] -= offset[axis];
}

void SortOutScene(Branch* branch) {
    if (branch->Object == CurrentObject())
        branch->Object = CurrentObject()->UndoCopy;
}

void CopyView(View& destination, const View& source) {
    destination = source;
}

void SwapViews(View& a, View& b) {
    std::swap(a, b);
}
