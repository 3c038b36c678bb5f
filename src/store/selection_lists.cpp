#include "store/selection_lists.h"

#include "store/accessors.h"
#include "store/appearance.h"
#include "store/walks.h"

int LastSelectionWasQstrip;

namespace {

/// Puts a record before the first of a singly linked list.
template <auto Link>
void Push(LinkRecord<Link>*& first, LinkRecord<Link>* record) {
    record->*Link = first;
    first = record;
}

} // namespace

void ConnectSelectedVertices() {
    Object* object = CurrentObject();
    object->FirstSelectedVertex = object->FirstLooseVertex = nullptr;
    for (Vertex* vertex : EveryVertex(object)) {
        if (vertex->Selected)
            Push<&Vertex::NextInSubset>(object->FirstSelectedVertex, vertex);
        else if (!vertex->Uses)
            Push<&Vertex::NextInSubset>(object->FirstLooseVertex, vertex);
    }
    object->VertexSelectionChanged = 0;
    VertexSelectionWasMade(object);
}

void ConnectSelectedPolygons() {
    LastSelectionWasQstrip = 0;
    Object* object = CurrentObject();
    object->FirstSelectedPolygon = nullptr;
    for (Polygon* polygon : EveryPolygon(object))
        if (polygon->Selected)
            Push<&Polygon::NextSelected>(object->FirstSelectedPolygon, polygon);
    object->PolygonSelectionChanged = 0;
    PolygonSelectionWasMade(object);
}
