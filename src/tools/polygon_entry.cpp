#include "tools/polygon_entry.h"

#include "geometry/vectors.h"
#include "gooey/messages.h"
#include "interaction/selection.h"
#include "interaction/tool_protocol.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/new_vertices.h"
#include "store/polygon_editing.h"
#include "store/walks.h"
#include "views/labels.h"
#include "views/viewports.h"

#include <algorithm>
#include <unordered_set>

std::vector<EnteredVertex> PolyVertexList;
int PolyOutlineClosed;

namespace {

constexpr int AtLeastThreeSides = 42;

constexpr std::uint32_t OutlineColour = 0xFFFFFFFF;
constexpr double FirstVertexPixels = 6;

/// The polygons completed since the tool started. A clean-up deletes one whose area is lost in rounding, so whoever
/// takes one from here first looks whether it still exists.
std::vector<Polygon*> PolyEnterList;
/// The vertices made for them; others are the user's own.
std::unordered_set<const Vertex*> MadeVertices;

Vertex* VertexOfEntry(const EnteredVertex& entry) {
    if (!entry.IsNew)
        return entry.Vertex;
    const double* place = entry.Vertex->Position;
    Vertex* made = AddVertex(place[0], place[1], place[2]);
    MadeVertices.insert(made);
    return made;
}

PolygonBead* BeadsOfEntries() {
    PolygonBead* beads = nullptr;
    for (const EnteredVertex& entry : PolyVertexList)
        AddPolygonBead(beads, VertexOfEntry(entry));
    return beads;
}

/// A polygon without area would be gone with the next clean-up.
bool EntriesHaveArea() {
    double sum[3] = {0, 0, 0};
    for (std::size_t i = 0; i < PolyVertexList.size(); ++i)
        AddNewellEdge(PolyVertexList[i].Vertex->Position,
                      PolyVertexList[(i + 1) % PolyVertexList.size()].Vertex->Position, sum);
    return LengthOfVector(sum) > 0;
}

/// With the vertices that were made for it and that nothing else uses.
void DeleteEntered(Polygon* polygon) {
    std::vector<Vertex*> corners;
    for (const PolygonBead* bead : EveryBead(polygon))
        if (MadeVertices.contains(bead->Vertex))
            corners.push_back(bead->Vertex);
    DeletePolygon(polygon, 0);
    CleanUpObject();
    for (Vertex* corner : corners)
        if (!corner->Uses && MadeVertices.erase(corner))
            DeleteVertex(corner);
}

bool StillExists(const Polygon* polygon) {
    const auto all = EveryPolygon(CurrentObject());
    return std::find(all.begin(), all.end(), polygon) != all.end();
}

void DrawDisc(double pixel) {
    gl::circf(0, 0, static_cast<float>(FirstVertexPixels * pixel));
}

} // namespace

void StartPolyCreation(int outlineClosed) {
    PolyEnterList.clear();
    MadeVertices.clear();
    PolyOutlineClosed = outlineClosed;
}

void EnterPolyVertex(Vertex* vertex, bool isNew) {
    PolyVertexList.push_back({vertex, isNew});
}

void RemoveLastPolyVertex() {
    if (PolyVertexList.empty())
        return;
    if (PolyVertexList.back().IsNew)
        DeleteLastNewVertex();
    PolyVertexList.pop_back();
}

void RemoveAllPolyVertices() {
    while (!PolyVertexList.empty())
        RemoveLastPolyVertex();
}

void CompletePolygon(View* view) {
    if (PolyVertexList.empty())
        return;
    if (PolyVertexList.size() < 3) {
        TellUser(AtLeastThreeSides);
        return;
    }
    if (!EntriesHaveArea()) {
        TellUserS("This polygon would have no area: its corners lie in one line, or its outline crosses itself...");
        return;
    }
    BeforeToolChange();
    DeselectAllVertices();
    Polygon* polygon = AddPolygon(BeadsOfEntries(), nullptr);
    BackfaceCheck(view, polygon);
    if (polygon->Mark)
        ReversePolygon(polygon);
    RemoveAllPolyVertices();
    CheckIntegrity();
    PolyEnterList.push_back(polygon);
    DirtyModelWindows();
}

void DeleteLastEnteredPolygon() {
    CleanUpObject();
    while (!PolyEnterList.empty()) {
        Polygon* last = PolyEnterList.back();
        PolyEnterList.pop_back();
        if (StillExists(last)) {
            DeleteEntered(last);
            break;
        }
    }
    DirtyModelWindows();
}

void DrawNewPolygon(View* view) {
    if (PolyVertexList.empty())
        return;
    gl::cpack(OutlineColour);
    if (PolyVertexList.size() == 1) {
        DrawDeRotated(view, PolyVertexList.front().Vertex->Position, DrawDisc);
        return;
    }
    gl::linewidth(2);
    PolyOutlineClosed ? gl::bgnclosedline() : gl::bgnline();
    for (const EnteredVertex& entry : PolyVertexList)
        gl::v3d(entry.Vertex->Position);
    PolyOutlineClosed ? gl::endclosedline() : gl::endline();
    gl::linewidth(1);
}

void FreePolyEnterList() {
    PolyEnterList = {};
    MadeVertices = {};
}
