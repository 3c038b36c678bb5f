#include "structure/structure_operations.h"

#include "base/debug.h"
#include "base/memory.h"
#include "gooey/redraw.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/sorting.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "store/undo.h"
#include "store/walks.h"
#include "structure/name_prompt.h"
#include "structure/structure_slots.h"
#include "structure/structure_windows.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr char SubObjectNameIsTaken[] = "A sub object of that name already exists!";
constexpr char LodNameIsTaken[] = "An LOD of that name already exists!";

using Members = LinkedList<&LodBead::Next, &LodBead::Prev>;

NameAnswer CheckNewObject(const char* name) {
    Trace("New sub object:%s\n", name);
    if (SubObjectExists(name))
        return NameAnswer::Taken;
    CopyCurrentObject();
    AddSubObject(name);
    if (SelectedLod())
        AddSubObjectToLod();
    else
        CleanUpAfterStructOp(1);
    return NameAnswer::Accepted;
}

NameAnswer CheckNewLod(const char* name) {
    Trace("New level of detail:%s\n", name);
    if (LodExists(name))
        return NameAnswer::Taken;
    CopyCurrentObject();
    AddLod(name);
    DeselectEverything();
    CleanUpAfterStructOp(0);
    return NameAnswer::Accepted;
}

/// Gives the record the name, unless `holder`, who has it, is another one.
template <class Record>
NameAnswer ChangeName(Record* (*selected)(), const Record* holder, const char* name) {
    if (holder)
        return holder == selected() ? NameAnswer::Accepted : NameAnswer::Taken;
    CopyCurrentObject();
    Free(selected()->Name);
    selected()->Name = CopyOfString(name);
    CleanUpAfterStructOp(0);
    return NameAnswer::Accepted;
}

SubObject* TheSubObject() {
    return SelectedSubObject();
}

Lod* TheLod() {
    return SelectedLod();
}

NameAnswer CheckNewSubObjectName(const char* name) {
    return ChangeName(TheSubObject, SubObjectExists(name), name);
}

NameAnswer CheckNewLodName(const char* name) {
    return ChangeName(TheLod, LodExists(name), name);
}

LodBead* SelectedBead() {
    return LodBeadOf(SelectedLod(), SelectedSubObject());
}

void ExchangeWithNext(LodBead* bead) {
    if (!bead || !bead->Next)
        return;
    Members::ExchangeWithNext(bead->Lod->FirstBead, bead);
    WorkSaved = 0;
    RedrawStructure();
}

} // namespace

SubObject* SubObjectExists(const char* name) {
    for (SubObject* subObject : EverySubObject(CurrentObject()))
        if (std::strcmp(subObject->Name, name) == 0)
            return subObject;
    return nullptr;
}

Lod* LodExists(const char* name) {
    for (Lod* lod : EveryLod(CurrentObject()))
        if (std::strcmp(lod->Name, name) == 0)
            return lod;
    return nullptr;
}

void AddNewSubObject() {
    PromptForName("Enter name of new sub object:", nullptr, SubObjectNameIsTaken, CheckNewObject, StructureEditor);
}

void RenameSubObject() {
    PromptForName("Enter new name for sub object:", SelectedSubObject()->Name, SubObjectNameIsTaken,
                  CheckNewSubObjectName, StructureEditor);
}

void DeleteSelectedSubObject() {
    CopyCurrentObject();
    // Which vertices nothing else uses is known of a clean object only.
    CleanUpObject();
    DeleteSubObject(SelectedSubObject(), 1);
    CleanUpAfterStructOp(1);
}

void AddNewLod() {
    PromptForName("Enter name for new level of detail:", nullptr, LodNameIsTaken, CheckNewLod, StructureEditor);
}

void RenameLod() {
    if (SelectedLod())
        PromptForName("Enter new name for LOD:", SelectedLod()->Name, LodNameIsTaken, CheckNewLodName, StructureEditor);
}

void DeleteSelectedLod() {
    if (!SelectedLod())
        return;
    DeleteLod(SelectedLod());
    CleanUpAfterStructOp(1);
}

void AddSubObjectToLod() {
    if (!SelectedLod() || SelectedBead())
        return;
    AddLodBead(SelectedSubObject());
    CleanUpAfterStructOp(1);
}

void RemoveSubObjectFromLod() {
    if (!SelectedBead())
        return;
    CopyCurrentObject();
    DeleteLodBead(SelectedBead());
    CleanUpAfterStructOp(1);
}

void ShuffleSubObjectUp() {
    const LodBead* bead = SelectedBead();
    ExchangeWithNext(bead ? bead->Prev : nullptr);
}

void ShuffleSubObjectDown() {
    ExchangeWithNext(SelectedBead());
}

void MoveLodBead(LodBead* bead, int before) {
    Lod* lod = bead->Lod;
    LodBead* last = nullptr;
    for (LodBead* member : EveryLodBead(lod)) {
        if (before-- <= 0)
            break;
        if (member != bead)
            last = member;
    }
    Members::Remove(lod->FirstBead, bead);
    if (last)
        Members::InsertAfter(last, bead);
    else
        Members::InsertFirst(lod->FirstBead, bead);
    WorkSaved = 0;
    RedrawStructure();
}

LodBead* LodBeadOf(const Lod* lod, const SubObject* subObject) {
    if (lod)
        for (LodBead* bead : EveryLodBead(lod))
            if (bead->SubObject == subObject)
                return bead;
    return nullptr;
}

void FindSelectedPolygonsSubObject() {
    const auto isSelected = TheStructureSlots.APolygonIsSelected;
    if (!isSelected || !isSelected())
        return;
    SelectedSubObject() = FirstSelectedPolygon()->SubObject;
    RedrawStructure();
}

double UsableLodDistance(double distance) {
    return distance > 0 ? std::min(distance, FarthestLodDistance) : 0;
}

void ClampLodDistances() {
    for (Lod* lod : EveryLod(CurrentObject()))
        lod->Distance = UsableLodDistance(lod->Distance);
}

void SetLodDistance(double distance) {
    if (!SelectedLod())
        return;
    SelectedLod()->Distance = UsableLodDistance(distance);
    WorkSaved = 0;
    SortObject();
    RedrawStructure();
}

int SelectLodByDistance(double distance) {
    FirstLod();
    Lod* seen = nullptr;
    for (Lod* lod : EveryLod(CurrentObject()))
        if (lod->Distance > distance) {
            seen = lod;
            break;
        }
    if (seen == SelectedLod())
        return 0;
    SelectedLod() = seen;
    return 1;
}

void CleanUpAfterStructOp(int deselect) {
    CheckIntegrity();
    SortObject();
    if (deselect)
        DeselectEverything();
    RedrawStructure();
}

void RedrawStructure() {
    DirtyModelWindows();
    DirtyWindow(StructureEditor);
    DirtyWindow(LodSetup);
}
