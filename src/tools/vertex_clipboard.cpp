#include "tools/vertex_clipboard.h"

#include "gooey/messages.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/new_vertices.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/undo.h"
#include "store/walks.h"
#include "tools/create_vertices.h"
#include "tools/creation_guards.h"
#include "tools/moving_vertices.h"
#include "tools/polygon_operations.h"
#include "tools/sub_polygon_selection.h"
#include "views/viewports.h"

#include <vector>

Vertex* VertexPaste;

namespace {

constexpr int NothingCopied = 38;
constexpr int Title = 106;

std::vector<Vertex*> SelectedVertices() {
    std::vector<Vertex*> vertices;
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        if (vertex->Selected)
            vertices.push_back(vertex);
    return vertices;
}

void CopySelectedVertices() {
    FreeVertexPaste();
    Vertex* last = nullptr;
    for (const Vertex* vertex : SelectedVertices())
        LinkedList<&Vertex::Next, &Vertex::Prev>::Append(VertexPaste, last, CopyOfVertex(vertex));
}

// ---- Cutting

void SelectTheirPolygons() {
    DeselectAllPolygons();
    for (const Vertex* vertex : SelectedVertices())
        for (PolygonBead* bead : EveryUse(vertex))
            bead->Polygon->Selected = 1;
    PolygonSelectionChanged() = 1;
    CleanUpObject();
}

Polygon* NearestUnselectedAncestor(const Polygon* polygon) {
    Polygon* ancestor = polygon->Parent;
    while (ancestor && ancestor->Selected)
        ancestor = ancestor->Parent;
    return ancestor;
}

/// What hangs on a polygon that stays comes along with it.
void HangUnselectedOnUnselected() {
    std::vector<Polygon*> torn;
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        if (!polygon->Selected && polygon->Parent && polygon->Parent->Selected)
            torn.push_back(polygon);
    for (Polygon* polygon : torn)
        MovePolygon(polygon, NearestUnselectedAncestor(polygon));
}

// ---- Pasting

void PlaceNewVertices(const Matrix& matrix, int) {
    TransformMovingVertices(matrix);
    for (const Vertex* vertex : Along<&Vertex::Next>(NewVertices))
        ChangeObjectRadius(vertex->Position);
}

void EndPaste() {
    EndMove();
    DeleteAllNewVertices();
    DirtyModelWindows();
}

void FinishPaste() {
    AddNewVerticesToObject();
    EndPaste();
}

} // namespace

void CopyVertices() {
    if (!SomeVerticesSelected())
        return;
    CopySelectedVertices();
    DeselectAllVertices();
    DirtyModelWindows();
}

void CutVertices() {
    if (!SomeVerticesSelected())
        return;
    CopyCurrentObject();
    CopySelectedVertices();
    SelectTheirPolygons();
    HangUnselectedOnUnselected();
    CleanUpObject();
    DeleteSelectedPolygons(0, 0);
    for (Vertex* vertex : SelectedVertices())
        DeleteVertex(vertex);
    CheckIntegrity();
    DirtyModelWindows();
}

void PasteVertices() {
    if (!VertexPaste) {
        TellUser(NothingCopied);
        return;
    }
    DeselectEverything();
    DeleteAllNewVertices();
    BeginMove();
    for (const Vertex* copied : Along<&Vertex::Next>(VertexPaste)) {
        Vertex* vertex = AddNewVertex(copied->Position[0], copied->Position[1], copied->Position[2]);
        vertex->Selected = 1;
        AddMovingVertex(vertex);
        ChangeObjectRadius(vertex->Position);
    }
    LetUserPlaceVertices(PlaceNewVertices, EndPaste, FinishPaste, Title);
    DirtyModelWindows();
}

void FreeVertexPaste() {
    for (Vertex* vertex : Along<&Vertex::Next>(VertexPaste))
        FreeVertex(vertex);
    VertexPaste = nullptr;
}
