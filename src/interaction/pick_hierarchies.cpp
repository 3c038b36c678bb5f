#include "interaction/pick_hierarchies.h"

#include "interaction/modes.h"
#include "store/appearance.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/traversal.h"

#include <unordered_map>

namespace {

std::unordered_map<const SubObject*, PolygonHierarchy> OfSubObjects;
std::unordered_map<const Object*, VertexHierarchy> OfObjects;

/// What PrepareSelection has found to be complete.
struct Preparation {
    const Object* Shown;
    const Lod* Level;
    int Mode;

    bool operator==(const Preparation&) const = default;
};

Preparation Prepared;

void ForgetSubObject(SubObject* subObject) {
    OfSubObjects.erase(subObject);
    Prepared = {};
}

void ForgetObject(Object* object) {
    OfObjects.erase(object);
    Prepared = {};
    if (!OfSubObjects.empty())
        for (SubObject* subObject : EverySubObject(object))
            ForgetSubObject(subObject);
}

/// Whoever makes the first hierarchy starts this.
void FollowChanges() {
    static const int listening = [] {
        AppearanceSlots listener;
        listener.ObjectCleanedUp = listener.ObjectFreed = ForgetObject;
        listener.SubObjectFreed = ForgetSubObject;
        ListenToAppearance(listener);
        return 1;
    }();
    static_cast<void>(listening);
}

PolygonHierarchy MakeHierarchy(const SubObject* subObject) {
    PolygonHierarchy hierarchy;
    std::vector<SelectBox> boxes;
    ForEachPolygonOf(subObject, [&](Polygon* polygon) {
        hierarchy.Polygons.push_back(polygon);
        SelectBox box;
        for (const PolygonBead* bead : EveryBead(polygon))
            box.Grow(bead->Vertex->Position);
        boxes.push_back(box);
    });
    hierarchy.Boxes.Build(boxes);
    return hierarchy;
}

VertexHierarchy MakeHierarchy(const Object* object) {
    VertexHierarchy hierarchy;
    std::vector<SelectBox> boxes;
    for (Vertex* vertex : EveryVertex(object)) {
        hierarchy.Vertices.push_back(vertex);
        SelectBox box;
        box.Grow(vertex->Position);
        boxes.push_back(box);
    }
    hierarchy.Boxes.Build(boxes);
    return hierarchy;
}

template <class Key, class Hierarchy>
const Hierarchy& FindOrMake(std::unordered_map<const Key*, Hierarchy>& known, const Key* key) {
    const auto found = known.find(key);
    if (found != known.end())
        return found->second;
    FollowChanges();
    return known.emplace(key, MakeHierarchy(key)).first->second;
}

} // namespace

const PolygonHierarchy& PolygonHierarchyOf(const SubObject* subObject) {
    return FindOrMake(OfSubObjects, subObject);
}

const VertexHierarchy& VertexHierarchyOf(const Object* object) {
    return FindOrMake(OfObjects, object);
}

void PrepareSelection() {
    const Object* object = CurrentFile->CurrentObject;
    if (!ObjectIsolated || !object || !object->ConnectionsOK || !object->NormalsOK)
        return;
    const Preparation wanted = {object, object->SelectedLod, WorkMode};
    if (wanted == Prepared)
        return;
    if (WorkMode) {
        VertexHierarchyOf(object);
    } else if (object->SelectedLod) {
        for (const LodBead* bead : EveryLodBead(object->SelectedLod)) {
            if (OfSubObjects.contains(bead->SubObject))
                continue;
            PolygonHierarchyOf(bead->SubObject);
            return; // the rest when there is nothing to do again
        }
    }
    Prepared = wanted;
}
