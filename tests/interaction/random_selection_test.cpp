#include "interaction/ring_projector.h"
#include "interaction/selection_passes.h"
#include "interaction/selection_test.h"
#include "views/default_views.h"
#include "views/grid.h"

#include <cmath>
#include <random>
#include <set>
#include <utility>

// The searches give what looking at everything that a view shows gives, by the plain rules.

namespace {

class PlainRules : public TraversalSink {
  public:
    explicit PlainRules(Purpose purpose) : TraversalSink(purpose) {}

    ::Polygon* Picked = nullptr;
    ::Branch* PickedBranch = nullptr;
    ::Vertex* PickedVertex = nullptr;
    std::set<const void*> Boxed; // polygons, or branches, or vertices

    void TakeObject(const ShownObject& shown) override {
        RingProjector projector(shown, GetSelectProjection());
        if (Wants == Vertices) {
            ForEachShownVertex(shown, [&](::Vertex* vertex) { LookAt(vertex, projector); });
        } else if (shown.Mode != ShownMarkersOnly) {
            ForEachShownPolygon(shown, [&](::Polygon* polygon) {
                const ScreenRing ring = projector.Project(polygon);
                if (!Backface || projector.FacesEye(ring))
                    LookAt(polygon, shown.Branch, ring, projector);
            });
        }
    }

  private:
    void LookAt(::Polygon* polygon, ::Branch* branch, const ScreenRing& ring, const RingProjector& projector) {
        ScreenRing cut = ring;
        ClipPolygonToDragBox(cut);
        if (!cut.empty())
            Boxed.insert(branch ? static_cast<const void*>(branch) : polygon);

        std::vector<std::pair<double, double>> crossings; // x and depth
        for (std::size_t i = 0; i < ring.size(); ++i) {
            ScreenCorner low = ring[i], high = ring[(i + 1) % ring.size()];
            const bool upwards = low.Y < high.Y;
            if ((upwards ? low : high).Y >= MouseY || (upwards ? high : low).Y <= MouseY)
                continue;
            const double part = (MouseY - low.Y) / (high.Y - low.Y);
            crossings.emplace_back(low.X + part * (high.X - low.X), low.Depth + part * (high.Depth - low.Depth));
        }
        if (crossings.size() != 2)
            return;
        const auto [x0, depth0] = crossings[0];
        const auto [x1, depth1] = crossings[1];
        if (!(std::min(x0, x1) < MouseX && MouseX < std::max(x0, x1)))
            return;
        const double span = std::fabs(x1 - x0);
        const double depth = depth0 + (depth1 - depth0) * ((MouseX - x0) / (x1 - x0));
        const double distance = projector.DistanceOf(depth);
        bool better = !Picked || depth < Depth;
        if (Picked && FloatsAreVeryClose(depth, Depth) && std::fabs(distance / Distance - 1) <= 0.001)
            better = span < Span;
        if (!better)
            return;
        Picked = polygon;
        PickedBranch = branch;
        Depth = depth;
        Distance = distance;
        Span = span;
    }

    void LookAt(::Vertex* vertex, const RingProjector& projector) {
        ScreenCorner corner;
        if (!projector.ProjectPoint(vertex->Position, corner))
            return;
        if (corner.X >= DragLeft && corner.X <= DragRight && corner.Y >= DragBottom && corner.Y <= DragTop)
            Boxed.insert(vertex);
        const double distance = std::hypot(corner.X - MouseX, corner.Y - MouseY);
        if (distance >= 10 || distance > Distance || (distance == Distance && corner.Depth <= Depth))
            return;
        PickedVertex = vertex;
        Distance = distance;
        Depth = corner.Depth;
    }

    double Depth = 0, Distance = 10, Span = 0;
};

class RandomSelectionTest : public SelectionTest {
  protected:
    double Number(double low, double high) { return std::uniform_real_distribution<double>(low, high)(Random); }

    int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(Random); }

    bool Chance(double part) { return Number(0, 1) < part; }

    /// Sheets, scattered polygons, some with sub-polygons, in several sub-objects on one or two levels, and loose
    /// vertices.
    void MakeModel() {
        const double size = std::pow(10, Whole(-2, 4));
        for (int i = 0; i < 3; ++i) {
            SubObject* subObject = AddSubObject("Some");
            if (i < 2 || Chance(0.5))
                AddLodBead(subObject);
            if (Chance(0.5))
                MakeSheet(size);
            for (int count = Whole(0, 60); count > 0; --count)
                MakePolygon(size);
        }
        for (int count = Whole(0, 20); count > 0; --count)
            AddVertex(Number(-size, size), Number(-size, size), Number(-size, size));
    }

    void MakeSheet(double size) {
        constexpr int side = 20;
        std::vector<Vertex*> corners;
        const double height = Chance(0.5) ? 0 : size / 3;
        for (int i = 0; i < side * side; ++i)
            corners.push_back(
                AddVertex(size * (i % side - 10) / 10, size * (i / side - 10) / 10, height * Number(-1, 1)));
        for (int i = 0; i < side * (side - 1); ++i)
            if (i % side < side - 1)
                AddRing({corners[i], corners[i + 1], corners[i + side + 1], corners[i + side]});
    }

    void MakePolygon(double size) {
        const double reach = size * std::pow(10, Number(-2, 0.5));
        const double middle[3] = {Number(-size, size), Number(-size, size), Number(-size, size)};
        std::vector<std::vector<double>> places;
        for (int corners = Whole(3, 6); corners > 0; --corners)
            places.push_back({middle[0] + reach * Number(-1, 1), middle[1] + reach * Number(-1, 1),
                              middle[2] + reach * Number(-1, 1)});
        Polygon* polygon = AddFace(places);
        if (Chance(0.2)) {
            std::vector<std::vector<double>> smaller = places;
            for (auto& place : smaller)
                for (int axis = 0; axis < 3; ++axis)
                    place[axis] = (place[axis] + places[0][axis]) / 2;
            AddFace(smaller, polygon);
        }
    }

    void MakeScene() {
        for (int count = Whole(1, 8); count > 0; --count) {
            Branch* branch = AddBranch(Scene(), BranchAsChild);
            branch->Object = CurrentObject();
            branch->Transform = YawMatrix(Number(0, 360));
            const double reach = ObjectRadius();
            for (int axis = 0; axis < 3; ++axis)
                branch->Transform[3][axis] = Number(-reach, reach);
        }
        if (Chance(0.3))
            ObjectAttributes() = ObjectIsBillboard;
        SceneChangedSize = 1;
        ObjectIsolated = 0;
    }

    /// Sometimes only part of it all is shown.
    void MakeWorkArea() {
        static Window gizmo;
        WorkAreaGizmo = Chance(0.3) ? &gizmo : nullptr;
        WorkAreaRecord& area = CurrentWorkArea();
        area.HalfSize = ObjectRadius() * Number(0.05, 1);
        area.Magnification = Number(1, 10);
        for (double& coordinate : area.Centre)
            coordinate = Number(-0.5, 0.5) * ObjectRadius();
    }

    /// A view of any kind, boxed, magnified, or with the eye amid the model.
    View MakeView() {
        View view{};
        const double radius = ObjectIsolated ? ObjectRadius() : 2 * ObjectRadius();
        if (Chance(0.5)) {
            MakeDefault3dView(&view, radius);
            MultMatrix(YawMatrix(Number(0, 360)), view.ViewMatrix, view.ViewMatrix);
            if (Chance(0.6))
                view.ViewMatrix[3][1] *= Number(0, 1);
        } else {
            MakeDefault2dView(&view, radius, Whole(0, 5));
            if (Chance(0.5))
                view.Zoom = std::pow(10, Number(-1, 3));
        }
        return view;
    }

    static std::set<const void*> BoxedPolygons(View view) {
        std::set<const void*> found;
        DeselectEverything();
        SelectScene(nullptr);
        for (Branch* branch : EveryBranch(Scene()))
            branch->Copied = 0;
        const int shift = std::exchange(LeftShift, 0);
        BoxPolygons(&view);
        LeftShift = shift;
        if (ObjectIsolated) {
            for (const Polygon* polygon : EveryPolygon(CurrentObject()))
                if (polygon->Selected)
                    found.insert(polygon);
        } else {
            for (const Branch* branch : EveryBranch(Scene()))
                if (branch->Selected)
                    found.insert(branch);
        }
        return found;
    }

    static std::set<const void*> BoxedVertices(View view) {
        std::set<const void*> found;
        DeselectEverything();
        const int shift = std::exchange(LeftShift, 0);
        BoxVertices(&view, 0);
        LeftShift = shift;
        for (const Vertex* vertex : EveryVertex(CurrentObject()))
            if (vertex->Selected)
                found.insert(vertex);
        return found;
    }

    std::mt19937 Random;
};

TEST_F(RandomSelectionTest, SearchingFindsWhatLookingAtEverythingFinds) {
    int hits = 0, vertexHits = 0, boxed = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random.seed(seed);
        ResetStorage();
        ObjectIsolated = 1;
        MakeModel();
        CleanUpObject();
        if (Chance(0.3))
            MakeScene();
        StructureEditorIsOpen = HideSubObjects = Chance(0.3);
        SelectedLod()->FirstBead->Shown = Chance(0.5);
        for (int i = 0; i < 10; ++i) {
            MakeWorkArea();
            View view = MakeView();
            HidingVertices = Chance(0.3);
            Backface = Chance(0.3);
            LeftShift = Chance(0.2);
            MouseX = Whole(0, Width - 1);
            MouseY = Whole(0, Height - 1);
            const int left = Whole(-10, Width), bottom = Whole(-10, Height);
            SetDragBox(left, left + Whole(0, 200), bottom, bottom + Whole(0, 200));
            SetUpView(&view, 0);
            PlainRules polygons(TraversalSink::Polygons), vertices(TraversalSink::Vertices);
            TraverseView(&view, polygons);
            TraverseView(&view, vertices);

            const PolygonHit hit = PickPolygon(&view);
            ASSERT_EQ(hit.Polygon, polygons.Picked);
            ASSERT_EQ(hit.Branch, polygons.PickedBranch);
            ASSERT_EQ(PickVertex(&view).Vertex, vertices.PickedVertex);
            hits += hit.Polygon != nullptr;
            vertexHits += vertices.PickedVertex != nullptr;

            ASSERT_EQ(BoxedPolygons(view), polygons.Boxed);
            boxed += !polygons.Boxed.empty();
            if (ObjectIsolated) {
                ASSERT_EQ(BoxedVertices(view), vertices.Boxed);
            }
        }
    }
    // The models and views were worth it.
    EXPECT_GT(hits, 120);
    EXPECT_GT(vertexHits, 40);
    EXPECT_GT(boxed, 120);
}

} // namespace
