#pragma once

#include "store/accessors.h"
#include "store/walks.h"

/// Discards the undo snapshot of every object of the current file.
void FreeUndoCopies();

/// Discards all snapshots and the polygon clipboard, whose polygons no walk over the objects would meet.
void DiscardHiddenPolygons();

/// Calls `function` with every polygon of every object of the current file, each object being current for its polygons.
/// Discards hidden polygons first. A null current object stays null, as in an empty file.
template <class Function>
void ForEverySinglePolygonEver(Function function) {
    DiscardHiddenPolygons();
    Object* previous = FirstObject() ? CurrentObject() : nullptr;
    for (Object* object : Along<&Object::Next>(FirstObject())) {
        CurrentObject() = object;
        for (Polygon* polygon : EveryPolygon(object))
            function(polygon);
    }
    if (previous)
        CurrentObject() = previous;
}

void ScanEverySinglePolygonEver(void (*function)(Polygon*));
