#include "store/structure_editing.h"

#include "base/memory.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

namespace {

using SubObjectList = LinkedList<&SubObject::Next, &SubObject::Prev>;
using LodList = LinkedList<&Lod::Next, &Lod::Prev>;
using LodBeadList = LinkedList<&LodBead::Next, &LodBead::Prev>;

void FreeName(char* name) {
    if (name)
        Free(name);
}

} // namespace

SubObject* AddSubObject(const char* name) {
    Object* object = CurrentObject();
    SubObject* subObject = NewSubObject();
    subObject->Name = CopyOfString(name);
    SubObjectList::InsertFirst(object->FirstSubObject, subObject);
    object->SelectedSubObject = subObject;
    WorkSaved = 0;
    return subObject;
}

void DeleteSubObject(SubObject* subObject, int deleteVertices) {
    Object* object = CurrentObject();
    SubObjectList::Remove(object->FirstSubObject, subObject);
    for (const Lod* lod : EveryLod(object))
        for (LodBead* bead : EveryLodBead(lod))
            if (bead->SubObject == subObject)
                DeleteLodBead(bead);
    while (subObject->FirstPolygon)
        DeletePolygon(subObject->FirstPolygon, deleteVertices);
    FreeName(subObject->Name);
    FreeSubObject(subObject);
    WorkSaved = 0;
}

Lod* AddLod(const char* name) {
    Object* object = CurrentObject();
    Lod* lod = NewLod();
    lod->Name = CopyOfString(name);
    LodList::InsertFirst(object->FirstLod, lod);
    object->SelectedLod = lod;
    WorkSaved = 0;
    return lod;
}

LodBead* AddLodBead(SubObject* subObject) {
    Lod* lod = SelectedLod();
    if (!lod)
        return nullptr;
    LodBead* bead = NewLodBead();
    bead->SubObject = subObject;
    bead->Lod = lod;
    LodBead* last = LastAlong<&LodBead::Next>(lod->FirstBead);
    LodBeadList::Append(lod->FirstBead, last, bead);
    WorkSaved = 0;
    return bead;
}

void DeleteLodBead(LodBead* bead) {
    LodBeadList::Remove(bead->Lod->FirstBead, bead);
    FreeLodBead(bead);
    WorkSaved = 0;
}

void SelectLod(Lod* lod) {
    SelectedLod() = lod;
    const LodBead* first = lod ? lod->FirstBead : nullptr;
    if (!first)
        return;
    SubObject*& selected = SelectedSubObject();
    for (const LodBead* bead : EveryLodBead(lod))
        if (bead->SubObject == selected)
            return;
    selected = first->SubObject;
}

void DeleteLod(Lod* lod) {
    LodList::Remove(CurrentObject()->FirstLod, lod);
    while (lod->FirstBead)
        DeleteLodBead(lod->FirstBead);
    FreeName(lod->Name);
    FreeLod(lod);
    WorkSaved = 0;
}
