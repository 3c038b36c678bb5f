#include "interaction/selection_sets.h"

#include "base/debug.h"
#include "interaction/selection.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/selection_lists.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/traversal.h"
#include "views/viewports.h"

namespace {

/// The objects that a deselection concerns.
template <class Function>
void ForEveryEditedObject(Function function) {
    if (ObjectIsolated) {
        function(CurrentObject());
        return;
    }
    for (Object* object : EveryObject(*CurrentFile))
        function(object);
}

// Rebuilding the lists of selected records searches the whole object, which takes its time in a large one. A click
// that selects one thing instead of others needs no search: where a list is up to date it is kept so.

bool PolygonListHolds(const Object* object) {
    return object->ConnectionsOK && !object->PolygonSelectionChanged;
}

bool VertexListsHold(const Object* object) {
    return object->ConnectionsOK && !object->VertexSelectionChanged;
}

void SetPolygonList(Object* object, Polygon* first) {
    object->FirstSelectedPolygon = first;
    LastSelectionWasQstrip = 0;
    PolygonSelectionWasMade(object);
}

void SetVertexList(Object* object, Vertex* first) {
    object->FirstSelectedVertex = first;
    VertexSelectionWasMade(object);
}

void DeselectPolygonsOf(Object* object) {
    if (!PolygonListHolds(object)) {
        for (Polygon* polygon : EveryPolygon(object))
            polygon->Selected = 0;
        object->PolygonSelectionChanged = 1;
    } else if (object->FirstSelectedPolygon) {
        for (Polygon* polygon : Along<&Polygon::NextSelected>(object->FirstSelectedPolygon))
            polygon->Selected = 0;
        SetPolygonList(object, nullptr);
    }
}

void DeselectVerticesOf(Object* object) {
    if (!VertexListsHold(object)) {
        for (Vertex* vertex : EveryVertex(object))
            vertex->Selected = 0;
        object->VertexSelectionChanged = 1;
    } else if (object->FirstSelectedVertex) {
        for (Vertex* vertex : Along<&Vertex::NextInSubset>(object->FirstSelectedVertex)) {
            vertex->Selected = 0;
            if (!vertex->Uses)
                object->VertexSelectionChanged = 1; // it belongs to the loose ones now
        }
        SetVertexList(object, nullptr);
    }
}

bool MasksAllow(const Polygon* polygon) {
    return (!MaskPolygonSelections || polygon->Material == CurrentMaterial()) &&
           (!MaskTextureSelections || polygon->Texture == CurrentTexture());
}

/// Calls function(polygon) for the top-level polygons of the selected level of detail.
template <class Function>
void ForEveryTopPolygonInLod(Function function) {
    const Lod* lod = SelectedLod();
    if (!lod)
        return;
    for (const LodBead* bead : EveryLodBead(lod))
        for (Polygon* polygon : EveryTopPolygon(bead->SubObject))
            function(polygon);
}

} // namespace

void SetPolygonSelected(Object* object, Polygon* polygon, int selected) {
    if (polygon->Selected == selected)
        return;
    polygon->Selected = selected;
    if (selected && PolygonListHolds(object) && !object->FirstSelectedPolygon) {
        polygon->NextSelected = nullptr;
        SetPolygonList(object, polygon);
    } else
        object->PolygonSelectionChanged = 1;
}

void SetVertexSelected(Object* object, Vertex* vertex, int selected) {
    if (vertex->Selected == selected)
        return;
    vertex->Selected = selected;
    if (selected && VertexListsHold(object) && !object->FirstSelectedVertex && vertex->Uses) {
        vertex->NextInSubset = nullptr;
        SetVertexList(object, vertex);
    } else
        object->VertexSelectionChanged = 1;
}

void DeselectAllPolygons() {
    ForEveryEditedObject(DeselectPolygonsOf);
}

void DeselectAllVertices() {
    ForEveryEditedObject(DeselectVerticesOf);
}

void DeselectEverything() {
    DeselectAllPolygons();
    DeselectAllVertices();
}

void SelectAllPolygons() {
    Trace("All polygons selected\n");
    DeselectAllPolygons();
    Object* object = CurrentObject();
    ForEveryTopPolygonInLod([&](Polygon* polygon) {
        if (MasksAllow(polygon))
            SetPolygonSelected(object, polygon, 1);
    });
    DirtyModelWindows();
}

void SelectAllVertices() {
    CleanUpObject(); // loose vertices are known by their uses
    DeselectAllVertices();
    Object* object = CurrentObject();
    ForEveryTopPolygonInLod([object](const Polygon* polygon) {
        for (const PolygonBead* bead : EveryBead(polygon))
            SetVertexSelected(object, bead->Vertex, 1);
    });
    for (Vertex* vertex : EveryVertex(object))
        if (!vertex->Uses)
            SetVertexSelected(object, vertex, 1);
    DirtyModelWindows();
}

void SelectVerticesFromPolygons() {
    CleanUpObject();
    Object* object = CurrentObject();
    for (const Polygon* polygon : Along<&Polygon::NextSelected>(object->FirstSelectedPolygon))
        for (const PolygonBead* bead : EveryBead(polygon))
            SetVertexSelected(object, bead->Vertex, 1);
}

void SelectPolygonsFromVertices() {
    CleanUpObject();
    FlagVisibleSubObjects();
    Object* object = CurrentObject();
    for (const Vertex* vertex : Along<&Vertex::NextInSubset>(object->FirstSelectedVertex))
        for (const PolygonBead* bead : EveryUse(vertex))
            if (bead->Polygon->SubObject->Visible)
                SetPolygonSelected(object, bead->Polygon, 1);
}

void SelectSubObject(SubObject* subObject) {
    DeselectAllPolygons();
    Object* object = CurrentObject();
    for (Polygon* polygon : EveryTopPolygon(subObject))
        SetPolygonSelected(object, polygon, 1);
    SelectedSubObject() = subObject;
}

void ClearAllVertexFlags() {
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        vertex->Mark = 0;
}
