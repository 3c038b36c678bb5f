#include "views/markers.h"

#include "gooey/window.h"
#include "platform/drawing.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/new_vertices.h"
#include "views/display_flags.h"
#include "views/kept_recording.h"
#include "views/labels.h"
#include "views/view_transform.h"

#include <cmath>
#include <cstdio>
#include <unordered_map>
#include <vector>

int LabelSelectedVertices;

namespace {

constexpr int MarkerSize = 3, HeartSize = 1; // pixels
constexpr std::uint32_t HeartColour = 0xFF000000;

/// Draws markers at what `points` draws as points, in the matrices of this moment.
template <class Function>
void DrawAsMarkers(std::uint32_t colour, Function points) {
    gl::pntsize(MarkerSize);
    points(colour);
    gl::pntsize(HeartSize);
    points(HeartColour);
}

template <class Function>
void DrawPoints(Function everyPoint) {
    gl::bgnpoint();
    everyPoint([](const double* point) { gl::v3d(point); });
    gl::endpoint();
}

/// Calls function(Vertex*, bool marked) with each vertex that has a marker; `marked` ones stand out.
template <class Function>
void ForEachMarkedVertex(const ShownObject& shown, Function function) {
    const Object* object = shown.Object;
    if (ShowVertices) {
        FlagVisibleSubObjects(shown.Lod);
        for (const Vertex* vertex : EveryVertex(object))
            if (VertexIsShown(vertex))
                function(vertex, vertex->Selected != 0);
        return;
    }
    for (const Vertex* vertex : Along<&Vertex::NextInSubset>(object->FirstSelectedVertex))
        function(vertex, true);
    for (const Vertex* vertex : Along<&Vertex::NextInSubset>(object->FirstLooseVertex))
        function(vertex, false);
}

/// The markers of an object in graphics memory, until its vertices, their selection or what shows them changes.
class KeptMarkers {
  public:
    void Doubt() { UpToDate = false; }

    void Draw(const ShownObject& shown, std::uint32_t markedColour) {
        std::vector<const void*> visible = VisibleNow(shown);
        if (Generation != gl::RecordingGeneration() || !UpToDate || visible != Visible)
            Record(shown);
        UpToDate = true;
        Generation = gl::RecordingGeneration();
        Visible = std::move(visible);
        for (const bool marked : {false, true})
            DrawAsMarkers(marked ? markedColour : MarkerWhite,
                          [&](std::uint32_t colour) { Points[marked].Draw(colour); });
    }

  private:
    /// What decides, apart from the vertices themselves, which of them have markers.
    static std::vector<const void*> VisibleNow(const ShownObject& shown) {
        std::vector<const void*> visible;
        if (ShowVertices) {
            visible.push_back(&ShowVertices);
            ForEachShownSubObject(shown, [&](const SubObject* subObject) { visible.push_back(subObject); });
        }
        return visible;
    }

    void Record(const ShownObject& shown) {
        std::vector<const double*> points[2];
        ForEachMarkedVertex(shown,
                            [&](const Vertex* vertex, bool marked) { points[marked].push_back(vertex->Position); });
        for (const bool marked : {false, true}) {
            Points[marked].Release();
            if (points[marked].empty())
                continue;
            Points[marked].Record([&] {
                gl::cpack(MarkerWhite);
                DrawPoints([&](auto add) {
                    for (const double* point : points[marked])
                        add(point);
                });
            });
        }
    }

    KeptRecording Points[2]; // plain ones and those that stand out
    bool UpToDate = false;
    unsigned Generation = 0;
    std::vector<const void*> Visible;
};

// Never destroyed: at the end of the program the graphics layer may be gone before.
auto& Kept = *new std::unordered_map<const Object*, KeptMarkers>;

void DoubtMarkers(Object* object) {
    const auto found = Kept.find(object);
    if (found != Kept.end())
        found->second.Doubt();
}

KeptMarkers& KeptMarkersOf(const Object* object) {
    static const bool following = [] {
        AppearanceSlots listener;
        for (auto* slot : {&listener.ObjectCleanedUp, &listener.ObjectChanged, &listener.VertexSelectionMade,
                           &listener.VerticesMoved})
            *slot = DoubtMarkers;
        listener.ObjectFreed = [](Object* freed) { Kept.erase(freed); };
        ListenToAppearance(listener);
        return true;
    }();
    static_cast<void>(following);
    return Kept[object];
}

/// The markers of an object of which some are not seen.
void DrawSeenMarkers(const ShownObject& shown, const VertexSight& sight, std::uint32_t markedColour) {
    for (const bool marked : {false, true})
        DrawAsMarkers(marked ? markedColour : MarkerWhite, [&](std::uint32_t colour) {
            gl::cpack(colour);
            DrawPoints([&](auto add) {
                ForEachMarkedVertex(shown, [&](const Vertex* vertex, bool isMarked) {
                    if (isMarked == marked && sight.Sees(vertex))
                        add(vertex->Position);
                });
            });
        });
}

void DrawNewVertices(const VertexSight& sight) {
    const auto drawFrom = [&](const Vertex* first, const Vertex* end) {
        DrawAsMarkers(MarkerWhite, [&](std::uint32_t colour) {
            gl::cpack(colour);
            DrawPoints([&](auto add) {
                for (const Vertex* vertex = first; vertex != end; vertex = vertex->Next)
                    if (sight.Sees(vertex))
                        add(vertex->Position);
            });
        });
    };
    gl::zbuffer(true);
    drawFrom(NewVertices->Next, nullptr);
    gl::zbuffer(false);
    drawFrom(NewVertices, NewVertices->Next);
}

void LabelVertex(View* view, const Matrix& markers, const Vertex* vertex) {
    double eye[3];
    TransformPoint(vertex->Position, markers, eye);
    const float place[3] = {static_cast<float>(eye[0]), static_cast<float>(eye[1]), static_cast<float>(eye[2])};
    double p[3];
    for (int axis = 0; axis < 3; ++axis) {
        // Points on the grid miss zero by rounding errors of either sign: no "-0.00" for these.
        const double coordinate = vertex->Position[axis];
        p[axis] = std::fabs(coordinate) < 0.005 ? 0 : coordinate;
    }
    char text[200];
    std::snprintf(text, sizeof text, "(%.2f, %.2f, %.2f)", p[0], p[1], p[2]);
    LabelPoint(view, place, text);
}

} // namespace

void DrawVertices(const ShownObject& shown) {
    const bool inScene = shown.Branch != nullptr;
    const bool ownMarkers = ShowVertices || (!inScene && (FirstSelectedVertex() || FirstLooseVertex()));
    if (!ownMarkers && (inScene || !NewVertices))
        return;
    Matrix markers;
    MarkerMatrix(shown.View, shown.ToEye, markers);
    const VertexSight sight(shown);
    gl::pushmatrix();
    LoadGLMatrix(markers);
    gl::zbuffer(!SelectionsOnTop);
    const std::uint32_t markedColour = inScene ? MarkerWhite : MarkerRed;
    if (ownMarkers && sight.Unlimited())
        KeptMarkersOf(shown.Object).Draw(shown, markedColour);
    else if (ownMarkers)
        DrawSeenMarkers(shown, sight, markedColour);
    if (!inScene && NewVertices) {
        DrawNewVertices(sight);
        if (LabelLastNewVertex)
            LabelVertex(shown.View, markers, NewVertices);
    }
    if (!inScene && LabelSelectedVertices)
        for (const Vertex* vertex : Along<&Vertex::NextInSubset>(FirstSelectedVertex()))
            if (sight.Sees(vertex))
                LabelVertex(shown.View, markers, vertex);
    gl::pntsize(1);
    gl::zbuffer(false);
    gl::popmatrix();
}

void ReleaseKeptMarkers() {
    Kept.clear();
}

void DrawPickedPoints(View* view, const double* points, int count) {
    Matrix markers;
    MarkerMatrix(view, view->Transform, markers);
    gl::pushmatrix();
    LoadGLMatrix(markers);
    gl::zbuffer(!SelectionsOnTop);
    DrawAsMarkers(MarkerRed, [&](std::uint32_t colour) {
        gl::cpack(colour);
        DrawPoints([&](auto add) {
            for (int i = 0; i < count; ++i)
                add(points + 3 * i);
        });
    });
    gl::pntsize(1);
    gl::zbuffer(false);
    gl::popmatrix();
}
