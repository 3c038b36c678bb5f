#pragma once

#include "store/accessors.h"
#include "store/walks.h"

#include <sstream>
#include <string>
#include <vector>

/// All that a saved file tells of a polygon and its sub-polygons, in their order.
inline void Describe(const Polygon* polygon, std::ostream& text) {
    text << "(" << polygon->Material << polygon->Texture << (polygon->Texture ? polygon->TextureMaterial : nullptr)
         << int{polygon->Lighting} << " " << polygon->LightGroup;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        for (const double coordinate : bead->Vertex->Position)
            text << " " << coordinate + 0.0;
        for (const float coordinate : bead->TexCoord)
            text << " " << coordinate;
    }
    for (const Polygon* child : EveryChild(polygon))
        Describe(child, text);
    text << ")\n";
}

/// The top-level polygons of the current object that `wanted` (a predicate) takes, in the order of their sub-objects.
template <class Predicate>
std::vector<std::string> DescribePolygons(Predicate wanted) {
    std::vector<std::string> polygons;
    for (const SubObject* subObject : EverySubObject(CurrentObject()))
        for (const Polygon* polygon : EveryTopPolygon(subObject))
            if (wanted(polygon)) {
                std::ostringstream text;
                Describe(polygon, text);
                polygons.push_back(text.str());
            }
    return polygons;
}

/// The whole current object, vertices that nothing uses included, to the last bit of each coordinate.
inline std::string DescribeObject() {
    std::ostringstream text;
    text << std::hexfloat;
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        for (const double coordinate : vertex->Position)
            text << " " << coordinate + 0.0;
    for (const SubObject* subObject : EverySubObject(CurrentObject())) {
        text << "\n" << subObject->Name << "\n";
        for (const Polygon* polygon : EveryTopPolygon(subObject))
            Describe(polygon, text);
    }
    return text.str();
}
