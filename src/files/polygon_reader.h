#pragma once

#include "files/material_numbers.h"
#include "files/primitives.h"
#include "store/records.h"

#include <cstddef>
#include <vector>

/// Reads vertices and polygons straight into the records of one object after the other. Records come out as the store's
/// editing calls would leave them, lists in the order of the file, so that saving them gives the same file again.
class PolygonReader {
  public:
    PolygonReader(FileCursor& file, MaterialNumbers& materials) : File(file), Materials(materials) {}

    /// What follows goes into this object. Vertex numbers of another object are forgotten.
    void StartObject(Object* object);

    /// Polygons that follow go into this sub-object of the object.
    void StartSubObject(SubObject* subObject) {
        Group = subObject;
        LastInGroup = nullptr;
    }

    /// What follows a TagVertexSection; its vertices are numbered from 0.
    void ReadVertexSection();

    /// What follows a TagPolygon of a sub-object, sub-polygons included.
    void ReadPolygon();

  private:
    /// A polygon that is being read, and where its chains of corners and sub-polygons end.
    struct Unfinished {
        ::Polygon* Polygon;
        PolygonBead* LastBead;
        ::Polygon* LastChild;
    };

    /// `parent` is null for a polygon of the sub-object itself.
    Unfinished NewUnfinished(Unfinished* parent);
    void ReadItem(int tag, Unfinished& unfinished);
    void ReadCorner(Unfinished& unfinished);
    PolygonBead* AddBead(Unfinished& unfinished, Vertex* vertex);
    Vertex* AddVertexAt(const float (&position)[3]);
    Vertex* ReadNumberedVertex();
    Material* ReadMaterial();
    void Finish(Polygon* polygon);

    FileCursor& File;
    MaterialNumbers& Materials;
    Object* Owner = nullptr;
    SubObject* Group = nullptr;
    Vertex* LastVertex = nullptr; // of the object's list
    Polygon *LastPolygon = nullptr, *LastInGroup = nullptr;
    std::vector<Vertex*> VertexNumbers; // of the current vertex section
    bool HasVertexNumbers = false;
    std::vector<Unfinished> Enclosing; // the polygons around the one that is being read
};
