#include "tools/polygon_clipboard.h"

#include "gooey/messages.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/duplicates.h"
#include "store/integrity.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"
#include "tools/creation_guards.h"
#include "tools/moving_vertices.h"
#include "tools/polygon_operations.h"
#include "tools/sub_polygon_selection.h"
#include "views/scene_views.h"
#include "views/viewports.h"

#include <utility>
#include <vector>

Polygon* PolygonPasteList;
Vertex* PolygonPasteVertices;

namespace {

constexpr int NothingCopied = 39;

using PolygonList = LinkedList<&Polygon::Next, &Polygon::Prev>;
using VertexList = LinkedList<&Vertex::Next, &Vertex::Prev>;

// ---- Into the clipboard

/// In the order of the first use. Every vertex of the object has no mark before.
void CopyVerticesOf(const Polygon* polygon, Vertex*& last) {
    for (const PolygonBead* bead : EveryBead(polygon)) {
        Vertex* vertex = bead->Vertex;
        if (vertex->Mark)
            continue;
        vertex->Mark = 1;
        vertex->Copy = CopyOfVertex(vertex);
        VertexList::Append(PolygonPasteVertices, last, vertex->Copy);
    }
}

/// It belongs to no sub-object, as those come and go.
Polygon* CopyForClipboard(Polygon* polygon, Vertex*& lastVertex) {
    CopyVerticesOf(polygon, lastVertex);
    polygon->Copy = CopyOfPolygon(polygon, 1);
    polygon->Copy->SubObject = nullptr;
    return polygon->Copy;
}

void CopyPolygonTree(const Polygon* root, Vertex*& lastVertex) {
    for (Polygon* polygon : EverySubPolygon(root)) {
        Polygon* copy = CopyForClipboard(polygon, lastVertex);
        copy->Parent = polygon->Parent->Copy;
        if (polygon->PrevSibling) {
            copy->PrevSibling = polygon->PrevSibling->Copy;
            copy->PrevSibling->NextSibling = copy;
        } else {
            copy->Parent->FirstChild = copy;
        }
    }
}

void CopySelectedPolygons() {
    FreePolygonPaste();
    ClearAllVertexFlags();
    Vertex* lastVertex = nullptr;
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        if (NoParentSelected(polygon)) {
            // The list of selected polygons runs backwards, so the copies come to lie in the object's order.
            PolygonList::InsertFirst(PolygonPasteList, CopyForClipboard(polygon, lastVertex));
            CopyPolygonTree(polygon, lastVertex);
        }
}

// ---- Out of it

Polygon* AddPastedPolygon(const Polygon* source, Polygon* parent) {
    Polygon* polygon = CopyOfPolygon(source, 1);
    polygon->SubObject = SelectedSubObject();
    polygon->Selected = 1;
    LinkPolygon(polygon, parent);
    return polygon;
}

/// Polygons go to the head of their lists: the last of each comes first, so that decals keep their order.
void PasteTree(const Polygon* root) {
    std::vector<std::pair<const Polygon*, Polygon*>> waiting = {{root, nullptr}};
    while (!waiting.empty()) {
        const auto [source, parent] = waiting.back();
        waiting.pop_back();
        Polygon* polygon = AddPastedPolygon(source, parent);
        for (const Polygon* child : EveryChild(source))
            waiting.emplace_back(child, polygon);
    }
}

void StartPolygonPaste() {
    BeginMove();
    for (Vertex* source : Along<&Vertex::Next>(PolygonPasteVertices)) {
        const double* place = source->Position;
        source->Copy = AddVertex(place[0], place[1], place[2]);
        AddMovingVertex(source->Copy);
    }
    for (const Polygon* root = LastAlong<&Polygon::Next>(PolygonPasteList); root; root = root->Prev)
        PasteTree(root);
    PolygonSelectionChanged() = 1;
    CheckIntegrity();
}

void FinishPaste() {
    EndMove();
    DeleteDuplicateVertices();
    DirtyModelWindows();
}

} // namespace

void CopyPolygons() {
    if (!SomePolygonsSelected())
        return;
    CopySelectedPolygons();
    DeselectAllPolygons();
    DirtyModelWindows();
}

void CutPolygons() {
    if (!SomePolygonsSelected())
        return;
    CopySelectedPolygons();
    DeleteSelectedPolygons(1, 1);
}

void PastePolygons() {
    if (!PolygonPasteList) {
        TellUser(NothingCopied);
        return;
    }
    if (!PolygonCreationAllowed())
        return;
    CopyCurrentObject();
    if (!(ObjectIsolated ? AnythingInObject() : AnythingInMemory()))
        ObjectIsolated ? DevalidateObjectViews() : DevalidateSceneViews();
    DeselectAllPolygons();
    StartPolygonPaste();
    CleanUpObject();
    LetUserPlaceVertices(PlaceMovingVertices, UndoMove, FinishPaste, PastePolygonsTitle);
    DirtyModelWindows();
}

void FreePolygonPaste() {
    for (Polygon* root : Along<&Polygon::Next>(PolygonPasteList)) {
        std::vector<Polygon*> tree = {root};
        for (Polygon* polygon : EverySubPolygon(root))
            tree.push_back(polygon);
        for (Polygon* polygon : tree)
            LosePolygon(polygon);
    }
    for (Vertex* vertex : Along<&Vertex::Next>(PolygonPasteVertices))
        FreeVertex(vertex);
    PolygonPasteList = nullptr;
    PolygonPasteVertices = nullptr;
}
