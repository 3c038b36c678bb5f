#include "store/new_vertices.h"

#include "store/pools.h"

Vertex* NewVertices;
int LabelLastNewVertex;

Vertex* AddNewVertex(double x, double y, double z) {
    Vertex* vertex = NewVertex(x, y, z);
    vertex->Prev = nullptr;
    vertex->Next = NewVertices;
    if (NewVertices)
        NewVertices->Prev = vertex;
    NewVertices = vertex;
    return vertex;
}

void DeleteLastNewVertex() {
    Vertex* vertex = NewVertices;
    if (!vertex)
        return;
    NewVertices = vertex->Next;
    if (NewVertices)
        NewVertices->Prev = nullptr;
    FreeVertex(vertex);
}

void DeleteAllNewVertices() {
    while (NewVertices)
        DeleteLastNewVertex();
    LabelLastNewVertex = 0;
}
