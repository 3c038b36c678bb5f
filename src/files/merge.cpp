#include "files/merge.h"

#include "base/debug.h"
#include "gooey/redraw.h"
#include "interaction/scene_selection.h"
#include "materials/material_definitions.h"
#include "store/accessors.h"
#include "store/material_list.h"
#include "store/objects.h"
#include "store/polygon_scan.h"
#include "store/scene.h"
#include "store/sorting.h"
#include "store/storage.h"
#include "store/texture_list.h"
#include "store/walks.h"
#include "structure/scene_clipboard.h"
#include "structure/scene_positioning.h"
#include "textures/texture_definition.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace {

/// The merge file is the current one for the length of a scope.
class InMergeFile {
  public:
    InMergeFile() { PointToMerge(1); }

    ~InMergeFile() { PointToMerge(0); }

    InMergeFile(const InMergeFile&) = delete;
    InMergeFile& operator=(const InMergeFile&) = delete;
};

/// Takes the picked objects from the merge file to the main one, in the order of the merge file.
std::vector<Object*> MoveObjects() {
    std::vector<Object*> moved;
    for (Object* object : EveryObject(MergeFile)) {
        if (!object->MergeMark)
            continue;
        Trace("Merging object %s\n", object->Name);
        object->MergeMark = 0;
        MoveObject(object, MergeFile, MainFile);
        moved.push_back(object);
    }
    return moved;
}

template <class Function>
void ForEveryPolygonOf(const std::vector<Object*>& objects, Function function) {
    for (const Object* object : objects)
        for (Polygon* polygon : EveryPolygon(object))
            function(polygon);
}

/// Sets Used and Index of the merge file's materials or textures; how many there are.
template <class Record>
std::size_t NumberAll(Record* first) {
    std::size_t count = 0;
    for (Record* record : Along<&Record::Next>(first)) {
        record->Used = 0;
        record->Index = static_cast<std::int32_t>(count++);
    }
    return count;
}

/// For each record of the merge file, by its Index, what its users have from now on: an equal one of the main file, or
/// itself, moved to the main file; null when no one uses it. `nameOf` is a part of being equal.
template <class Record, class NameOf, class Equal, class Adopt>
std::vector<Record*> Successors(Record* firstOfMain, Record* firstOfMerged, std::size_t count, NameOf nameOf,
                                Equal equal, Adopt adopt) {
    std::unordered_map<std::string, std::vector<Record*>> known;
    for (Record* record : Along<&Record::Next>(firstOfMain))
        known[nameOf(record)].push_back(record);
    std::vector<Record*> successors(count);
    for (Record* record : Along<&Record::Next>(firstOfMerged)) {
        if (!record->Used)
            continue;
        std::vector<Record*>& sameName = known[nameOf(record)];
        Record*& successor = successors[static_cast<std::size_t>(record->Index)];
        for (Record* candidate : sameName)
            if (!successor && equal(candidate, record))
                successor = candidate;
        if (successor)
            continue;
        adopt(record);
        sameName.push_back(successor = record);
    }
    return successors;
}

template <class Record>
Record* SuccessorOf(const std::vector<Record*>& successors, const Record* record) {
    return record ? successors[static_cast<std::size_t>(record->Index)] : nullptr;
}

/// Gives the moved objects materials of the main file.
void AdoptMaterials(const std::vector<Object*>& moved) {
    const std::size_t count = NumberAll(MergeFile.FirstMaterial);
    ForEveryPolygonOf(moved, [](const Polygon* polygon) {
        if (polygon->Material)
            polygon->Material->Used = 1;
        if (polygon->Texture && polygon->TextureMaterial)
            polygon->TextureMaterial->Used = 1;
    });
    const std::vector<Material*> successors = Successors(
        MainFile.FirstMaterial, MergeFile.FirstMaterial, count,
        [](const Material* material) { return std::string(material->Name); }, MaterialsAreTheSame,
        [](Material* material) {
            {
                const InMergeFile merge;
                TakeMaterialOffList(material);
            }
            AddMaterial(material);
        });
    ForEveryPolygonOf(moved, [&](Polygon* polygon) {
        polygon->Material = SuccessorOf(successors, polygon->Material);
        polygon->TextureMaterial = SuccessorOf(successors, polygon->TextureMaterial);
        // What an untextured polygon had for its texture may stay behind.
        if (!polygon->TextureMaterial)
            polygon->TextureMaterial = polygon->Material;
    });
    MaterialsNeedDefining = 1;
}

void AdoptTextures(const std::vector<Object*>& moved) {
    const std::size_t count = NumberAll(MergeFile.FirstTexture);
    ForEveryPolygonOf(moved, [](const Polygon* polygon) {
        if (polygon->Texture)
            polygon->Texture->Used = 1;
    });
    Texture* const current = CurrentTexture();
    const std::vector<Texture*> successors = Successors(
        MainFile.FirstTexture, MergeFile.FirstTexture, count,
        [](const Texture* texture) { return std::string(texture->FileName ? texture->FileName : ""); },
        TexturesAreTheSame,
        [](Texture* texture) {
            {
                const InMergeFile merge;
                TakeTextureOffList(texture);
            }
            AddTextureToList(texture);
        });
    // The user goes on with the texture that was chosen.
    if (current)
        CurrentTexture() = current;
    ForEveryPolygonOf(moved, [&](Polygon* polygon) { polygon->Texture = SuccessorOf(successors, polygon->Texture); });
    DefineAllTextures();
}

/// Puts the selected branches of the merge file on the clipboard; false when there are none.
bool CopyMergeScene() {
    const InMergeFile merge;
    if (!AnySceneSelected())
        return false;
    CopyScene(0);
    return ScenePaste != nullptr;
}

} // namespace

void PickAllMergeObjects(int pick) {
    const InMergeFile merge;
    for (Object* object : EveryObject(MergeFile))
        object->MergeMark = pick;
    if (!pick)
        SelectScene(nullptr);
}

void PickObjectsOfSelectedBranches() {
    const InMergeFile merge;
    for (Object* object : EveryObject(MergeFile))
        object->MergeMark = 0;
    for (const Branch* branch : EveryBranch(Scene()))
        if (branch->Selected && branch->Object)
            branch->Object->MergeMark = 1;
}

void MergePickedObjects() {
    Trace("\n\nMerge started...\n");
    Object* const current = CurrentObject();
    const bool branches = CopyMergeScene();
    const std::vector<Object*> moved = MoveObjects();
    if (!moved.empty()) {
        DiscardHiddenPolygons();
        AdoptMaterials(moved);
        AdoptTextures(moved);
        CurrentObject() = current;
        SortObjectList();
    }
    if (!moved.empty() || branches)
        WorkSaved = 0;
    if (branches) {
        ShowSceneMode();
        // A placed object holds no others.
        if (SelectedBranch() && SelectedBranch()->Object)
            SelectScene(nullptr);
        PasteScene(0, 1);
    }
    Trace("Merge done...\n");
    DirtyAllWindows();
}
