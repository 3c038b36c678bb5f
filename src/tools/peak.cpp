#include "tools/peak.h"

#include "gooey/messages.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/normals.h"
#include "store/polygon_editing.h"
#include "store/walks.h"
#include "tools/base_polygons.h"
#include "tools/creation_guards.h"
#include "tools/height_tool.h"
#include "tools/moving_vertices.h"
#include "tools/sub_polygon_selection.h"
#include "views/grid.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr int BarTitle = 120;
constexpr int NoneCanBePeaked = 68, SomeWereNotPeaked = 69;

/// The way each apex goes: a unit vector. Its index is the apex' Mark; where it starts from is its SavedPosition.
std::vector<std::array<float, 3>> PeakDirection;
/// The triangles around all apexes.
std::vector<Polygon*> PeakTriangles;

/// The mean of a polygon's corners.
struct Middle {
    double Place[3] = {0, 0, 0};
    double TexCoord[2] = {0, 0};
};

Middle MiddleOf(const Polygon* polygon) {
    Middle middle;
    int count = 0;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        for (int axis = 0; axis < 3; ++axis)
            middle.Place[axis] += bead->Vertex->Position[axis];
        for (int i = 0; i < 2; ++i)
            middle.TexCoord[i] += bead->TexCoord[i];
        ++count;
    }
    for (double& coordinate : middle.Place)
        coordinate /= count;
    for (double& coordinate : middle.TexCoord)
        coordinate /= count;
    return middle;
}

Vertex* AddApex(const Polygon* base, const double* place) {
    Vertex* apex = AddVertex(place[0], place[1], place[2]);
    apex->Mark = static_cast<std::int32_t>(PeakDirection.size());
    PeakDirection.push_back({base->Normal[0], base->Normal[1], base->Normal[2]});
    AddMovingVertex(apex);
    return apex;
}

void AddTriangle(const Polygon* base, Vertex* apex, const float* apexTexCoord, const PolygonBead* from) {
    const PolygonBead* to = NextInRing(base, from);
    PolygonBead* beads = nullptr;
    std::copy_n(apexTexCoord, 2, AddPolygonBead(beads, apex)->TexCoord);
    CopyPolygonBeadInfo(AddPolygonBead(beads, from->Vertex), from);
    CopyPolygonBeadInfo(AddPolygonBead(beads, to->Vertex), to);
    Polygon* triangle = AddPolygon(beads, nullptr);
    CopyPolygonInfo(triangle, base);
    SelectAsSolid(triangle);
    PeakTriangles.push_back(triangle);
}

void AddPeak(Polygon* base) {
    const Middle middle = MiddleOf(base);
    const float texCoord[2] = {static_cast<float>(middle.TexCoord[0]), static_cast<float>(middle.TexCoord[1])};
    Vertex* apex = AddApex(base, middle.Place);
    base->Lighting = LightingFaceted;
    base->Mark = 1;
    SelectedSubObject() = base->SubObject;
    for (const PolygonBead* bead : EveryBead(base))
        AddTriangle(base, apex, texCoord, bead);
}

void UpdatePeak(double height) {
    for (Vertex* apex : Along<&Vertex::NextInGroup>(MovingVertices)) {
        const auto& direction = PeakDirection[static_cast<std::size_t>(apex->Mark)];
        for (int axis = 0; axis < 3; ++axis)
            apex->Position[axis] = apex->SavedPosition[axis] + direction[static_cast<std::size_t>(axis)] * height;
    }
    for (Polygon* triangle : PeakTriangles)
        GeneratePolygonNormal(triangle);
    PolygonsHaveMoved(PeakTriangles);
}

void FinishPeak() {
    PeakDirection = {};
    PeakTriangles = {};
    EndMove();
    DeselectAllPolygons();
}

const HeightShape Peak = {UpdatePeak, FinishPeak, BarTitle, "R_Peak"};

} // namespace

void PeakPolygons() {
    if (!SomePolygonsSelected())
        return;
    const std::vector<Polygon*> selected = SelectedPolygons();
    const auto hasChildren = [](const Polygon* polygon) { return polygon->FirstChild != nullptr; };
    const auto skipped = std::count_if(selected.begin(), selected.end(), hasChildren);
    if (static_cast<std::size_t>(skipped) == selected.size()) {
        TellUser(NoneCanBePeaked);
        return;
    }
    BeginHeightTool(Peak);
    DeselectAllVertices();
    BeginMove();
    SubObject* const selectedSubObject = SelectedSubObject();
    for (Polygon* polygon : selected) {
        SetPolygonSelected(CurrentObject(), polygon, 0);
        if (hasChildren(polygon))
            continue;
        SelectedSubObject() = selectedSubObject;
        if (polygon->Parent)
            MovePolygon(polygon, nullptr);
        AddPeak(polygon);
    }
    SelectedSubObject() = selectedSubObject;
    UpdatePeak(OneGridSquare());
    LetUserSetHeight();
    if (skipped)
        WarnUser(SomeWereNotPeaked);
}
