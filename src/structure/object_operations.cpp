#include "structure/object_operations.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/memory.h"
#include "base/slots.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "materials/material_usage.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/objects.h"
#include "store/scene.h"
#include "store/sorting.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"
#include "structure/name_prompt.h"
#include "structure/scene_operations.h"
#include "structure/structure_slots.h"
#include "structure/structure_windows.h"
#include "textures/texture_usage.h"
#include "views/main_window.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstring>
#include <string>

StructureSlots TheStructureSlots;

namespace {

constexpr char NameIsTaken[] = "An object of that name already exists!";

/// What a question is about; it may be gone when the answer comes.
Object* AskedAbout;

bool StillThere(const Object* object) {
    const auto objects = EveryObject(*CurrentFile);
    return std::find(objects.begin(), objects.end(), object) != objects.end();
}

Object* ObjectNamed(const char* name) {
    for (Object* object : EveryObject(*CurrentFile))
        if (std::strcmp(object->Name, name) == 0)
            return object;
    return nullptr;
}

void SetName(Object* object, const char* name) {
    Free(object->Name);
    object->Name = CopyOfString(name);
}

/// Deletes an object that is on the list; the last one is succeeded by an empty one.
void DeleteFromFile(Object* object) {
    if (!object->Next && !object->Prev)
        AddObject(nullptr, 0, 0);
    KillObjectReferences(object);
    DeleteObject(object);
}

void DeleteAskedObject(int ok) {
    if (!ok || !StillThere(AskedAbout))
        return;
    DeleteFromFile(AskedAbout);
    RedrawObjectWindows();
}

NameAnswer NameObject(const char* name) {
    if (std::strcmp(ObjectName(), name) == 0)
        return NameAnswer::Accepted;
    if (ObjectNamed(name))
        return NameAnswer::Taken;
    CopyCurrentObject();
    SetName(CurrentObject(), name);
    SortObjectList();
    RedrawObjectWindows();
    return NameAnswer::Accepted;
}

/// Takes the undo snapshot of the current object out of its slot.
Object* TakeSnapshot() {
    CopyCurrentObject();
    Object* snapshot = CurrentObject()->UndoCopy;
    CurrentObject()->UndoCopy = nullptr;
    return snapshot;
}

/// The copy is looked at as the object was.
void CopyViews(Object* copy, const Object* object) {
    std::copy(std::begin(object->View), std::end(object->View), copy->View);
    std::copy(std::begin(object->DefaultObject2D), std::end(object->DefaultObject2D), copy->DefaultObject2D);
    copy->DefaultObject3D = object->DefaultObject3D;
    copy->WorkArea = object->WorkArea;
    copy->GridIndex = object->GridIndex;
    copy->GridSteps = object->GridSteps;
}

NameAnswer CopyUnderName(const char* name) {
    if (ObjectNamed(name))
        return NameAnswer::Taken;
    const Object* original = CurrentObject();
    Object* copy = TakeSnapshot();
    CopyViews(copy, original);
    SetName(copy, name);
    LinkedList<&Object::Next, &Object::Prev>::InsertFirst(FirstObject(), copy);
    CurrentObject() = copy;
    SortObjectList();
    DirtyAllWindows();
    return NameAnswer::Accepted;
}

/// The file's name after the object's, which may have characters that no file name can have.
void NameFileAfter(const Object* object) {
    std::string name = object->Name;
    std::replace(name.begin(), name.end(), '/', '_');
    if (name.empty() || !CopyFileName(FileName, (name + KirvoExtension).c_str()))
        return;
    CallSlot(TheStructureSlots.ModelWasRenamed);
    ChangeWindowTitle();
}

void DeleteOthers(int ok) {
    if (!ok || !StillThere(AskedAbout))
        return;
    CurrentObject() = AskedAbout;
    FreeScene();
    for (Object* object : EveryObject(*CurrentFile))
        if (object != AskedAbout)
            DeleteObject(object);
    DeleteUnusedMaterials();
    DeleteUnusedTextures();
    NameFileAfter(AskedAbout);
    WorkSaved = 0;
    DirtyAllWindows();
}

template <class Record>
void TraceCount(const char* what, const Record* first) {
    int count = 0;
    for (; first; first = first->Next)
        ++count;
    Trace("Object has %d %s (%u bytes)\n", count, what, static_cast<unsigned>(count * sizeof(Record)));
}

} // namespace

void CreateNewObject() {
    if (Object* unused = FindUnusedObject())
        CurrentObject() = unused;
    else
        AddObject(nullptr, 1, 0);
    RedrawObjectWindows();
}

void ChuckObjectAway() {
    AskedAbout = CurrentObject();
    const std::string question = "Delete object \"" + std::string(ObjectName()) + "\" with no undo possible?";
    DoOkCancel(question.c_str(), DeleteAskedObject);
}

void RenameObject() {
    PromptForName("Enter new name for object:", ObjectName(), NameIsTaken, NameObject, MainWindow);
}

void MakeCopyOfObject() {
    PromptForName("Enter name for new object:", ObjectName(), NameIsTaken, CopyUnderName, MainWindow);
}

void DeleteAllButObject() {
    AskedAbout = CurrentObject();
    DoOkCancel("Delete everything except this object with no undo possible?", DeleteOthers);
}

void ShowObjectInfo() {
    const Object* object = CurrentObject();
    TraceCount("vertices", object->FirstVertex);
    TraceCount("polygons", object->FirstPolygon);
    int beads = 0;
    for (const Polygon* polygon : EveryPolygon(object))
        for ([[maybe_unused]] const PolygonBead* bead : EveryBead(polygon))
            ++beads;
    Trace("Object has %d polybeads (%u bytes)\n", beads, static_cast<unsigned>(beads * sizeof(PolygonBead)));
    Trace("Memory in use:%u\n", static_cast<unsigned>(MemoryInUse()));
}

void ToggleBillboard() {
    ObjectAttributes() ^= ObjectIsBillboard;
    WorkSaved = 0;
    DirtyModelWindows();
}

void RedrawObjectWindows() {
    DirtyModelWindows();
    DirtyWindow(ObjectBrowser);
    DirtyWindow(StructureEditor);
    CallSlot(TheSceneSlots.DirtySceneBuilder);
}
