#include "store/objects.h"

#include "base/debug.h"
#include "base/exit.h"
#include "base/memory.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/sorting.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "store/walks.h"

#include <cstring>

namespace {

using ObjectList = LinkedList<&Object::Next, &Object::Prev>;

constexpr char DefaultObjectName[] = "Unnamed";

} // namespace

Object* FindUnusedObject() {
    for (Object* object : EveryObject(*CurrentFile))
        if (!object->FirstVertex && !object->FirstPolygon &&
            std::strncmp(object->Name, DefaultObjectName, sizeof DefaultObjectName - 1) == 0)
            return object;
    return nullptr;
}

Object* AddObject(const char* name, int sort, int reuse) {
    if (reuse)
        if (Object* unused = FindUnusedObject())
            DeleteObject(unused);
    Object* object = NewObject();
    object->Name = CopyOfString(name ? name : DefaultObjectName);
    ObjectList::InsertFirst(CurrentFile->FirstObject, object);
    CurrentFile->CurrentObject = object;
    if (sort)
        SortObjectList();
    WorkSaved = 0;
    return object;
}

void FreeObject(Object* object) {
    ObjectIsFreed(object);
    Object* previous = CurrentFile->CurrentObject;
    // The editing calls look for the current object, which a file without a list would make anew.
    Object* list = CurrentFile->FirstObject;
    if (!list)
        CurrentFile->FirstObject = object;
    CurrentFile->CurrentObject = object;
    if (object->UndoCopy)
        FreeObject(object->UndoCopy);
    CurrentFile->CurrentObject = object;
    while (object->FirstLod)
        DeleteLod(object->FirstLod);
    while (object->FirstSubObject)
        DeleteSubObject(object->FirstSubObject, 0);
    while (object->FirstVertex)
        DeleteVertex(object->FirstVertex);
    if (object->Name)
        Free(object->Name);
    CurrentFile->FirstObject = list;
    CurrentFile->CurrentObject = previous;
    Free(object);
}

void DeleteObject(Object* object) {
    if (object == CurrentFile->CurrentObject)
        CurrentFile->CurrentObject = object->Next ? object->Next : object->Prev;
    ObjectList::Remove(CurrentFile->FirstObject, object);
    FreeObject(object);
    WorkSaved = 0;
}

void MoveObject(Object* object, FileStruct& from, FileStruct& to) {
    if (object == from.CurrentObject)
        from.CurrentObject = nullptr;
    ObjectList::Remove(from.FirstObject, object);
    ObjectList::InsertFirst(to.FirstObject, object);
}

void FreeAllObjects() {
    while (CurrentFile->FirstObject)
        DeleteObject(CurrentFile->FirstObject);
    if (Quitting) {
        FreeSpareVertices();
        FreeSparePolygonBeads();
        FreeSparePolygons();
        FreeSpareSubObjects();
        FreeSpareLods();
        FreeSpareLodBeads();
    }
    Trace("All objects freed...\n");
}

int AnythingInMemory() {
    for (const Object* object : EveryObject(*CurrentFile))
        if (object->FirstVertex)
            return 1;
    return 0;
}

int AnythingInObject() {
    return CurrentObject()->FirstVertex ? 1 : 0;
}
