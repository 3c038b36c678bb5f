#include "tools/raise_walls.h"

#include "base/exit.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/walks.h"
#include "tools/base_polygons.h"
#include "tools/creation_guards.h"
#include "tools/height_tool.h"
#include "tools/sub_polygon_selection.h"
#include "views/grid.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

namespace {

constexpr int BarTitle = 121;

/// The raised polygons and their sub-polygons, and the way each goes: their normals at the start. Where a vertex of
/// them starts from is its SavedPosition.
std::vector<Polygon*> LiftList;
std::vector<std::array<float, 3>> LiftDirections;

void StartFrom(Vertex* vertex, const double* base) {
    std::copy_n(base, 3, vertex->SavedPosition);
}

/// A vertex of its own for a corner of a polygon that is to be raised. The vertex before is told by Copy.
void GiveOwnVertex(PolygonBead* bead) {
    Vertex* bottom = bead->Vertex;
    const double* base = bottom->Position;
    bead->Vertex = AddVertex(base[0], base[1], base[2]);
    bead->Vertex->Copy = bottom;
    StartFrom(bead->Vertex, base);
}

void AddToLiftList(Polygon* polygon) {
    LiftList.push_back(polygon);
    LiftDirections.push_back({polygon->Normal[0], polygon->Normal[1], polygon->Normal[2]});
}

void LiftSubPolygon(Polygon* polygon) {
    for (PolygonBead* bead : EveryBead(polygon)) {
        if (bead->Vertex->Uses < 2) {
            StartFrom(bead->Vertex, bead->Vertex->Position);
        } else {
            --bead->Vertex->Uses;
            GiveOwnVertex(bead);
        }
    }
    AddToLiftList(polygon);
}

Polygon* AddPart(PolygonBead* beads, const Polygon* raised) {
    Polygon* part = AddPolygon(beads, nullptr);
    if (raised->Material)
        part->Material = raised->Material;
    part->Lighting = LightingFaceted;
    return part;
}

void AddWall(const Polygon* raised, const PolygonBead* bead) {
    Vertex* top = bead->Vertex;
    Vertex* nextTop = NextInRing(raised, bead)->Vertex;
    PolygonBead* beads = nullptr;
    for (Vertex* corner : {top, top->Copy, nextTop->Copy, nextTop})
        AddPolygonBead(beads, corner);
    Polygon* wall = AddPart(beads, raised);
    SelectAsSolid(wall);
}

void AddBase(const Polygon* raised) {
    PolygonBead* beads = nullptr;
    for (const PolygonBead* bead : EveryBead(raised))
        AddPolygonBead(beads, bead->Vertex->Copy);
    AddPart(beads, raised)->Mark = 1;
}

void LiftPolygon(Polygon* polygon) {
    for (PolygonBead* bead : EveryBead(polygon))
        GiveOwnVertex(bead);
    for (Polygon* child : EverySubPolygon(polygon))
        LiftSubPolygon(child);
    SelectedSubObject() = polygon->SubObject;
    for (const PolygonBead* bead : EveryBead(polygon))
        AddWall(polygon, bead);
    AddBase(polygon);
    AddToLiftList(polygon);
}

/// How many polygons are to be lifted: each must get its place in the list.
std::size_t CountWithSubPolygons(const std::vector<Polygon*>& polygons) {
    std::size_t count = polygons.size();
    for (const Polygon* polygon : polygons)
        for ([[maybe_unused]] const Polygon* child : EverySubPolygon(polygon))
            ++count;
    return count;
}

[[noreturn]] void LiftFail() {
    std::fprintf(stderr, "\n\n\nKirvo: internal errorPolygon lift buffer overflow!\a\n");
    KillProgram(FatalEnd);
}

void UpdateLift(double height) {
    for (std::size_t i = 0; i < LiftList.size(); ++i) {
        const auto& [x, y, z] = LiftDirections[i];
        const double lift[3] = {x * height, y * height, z * height};
        for (const PolygonBead* bead : EveryBead(LiftList[i]))
            for (int axis = 0; axis < 3; ++axis)
                bead->Vertex->Position[axis] = bead->Vertex->SavedPosition[axis] + lift[axis];
    }
    PolygonsHaveMoved(LiftList);
}

void FinishLift() {
    LiftList = {};
    LiftDirections = {};
}

const HeightShape Walls = {UpdateLift, FinishLift, BarTitle, "R_RaiseWalls"};

} // namespace

void LiftPolygons() {
    if (!SomePolygonsSelected())
        return;
    std::vector<Polygon*> raised = SelectedPolygons();
    std::erase_if(raised, [](const Polygon* polygon) { return !NoParentSelected(polygon); });
    const std::size_t count = CountWithSubPolygons(raised);
    BeginHeightTool(Walls);
    SubObject* const selectedSubObject = SelectedSubObject();
    for (Polygon* polygon : raised) {
        SelectedSubObject() = selectedSubObject;
        if (polygon->Parent)
            MovePolygon(polygon, nullptr);
        LiftPolygon(polygon);
    }
    SelectedSubObject() = selectedSubObject;
    if (LiftList.size() != count)
        LiftFail();
    UpdateLift(OneGridSquare());
    LetUserSetHeight();
}
