#include "interaction/selection_passes.h"

#include "gooey/event_loop.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "interaction/drag_box.h"
#include "interaction/pick_hierarchies.h"
#include "interaction/ring_projector.h"
#include "interaction/select_region.h"
#include "interaction/selection.h"
#include "interaction/selection_rules.h"
#include "store/storage.h"
#include "views/display_flags.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace {

constexpr double VertexReach = 10;       // pixels
constexpr double VeryClose = 0.0001;     // relative
constexpr double CloseDistances = 0.001; // relative
constexpr double CloseDepths = 1e-6;     // of the depths from -1 to 1

/// The place that a pass looks at.
enum class Place { Pointer, DragBox };

PixelRectangle RectangleOf(Place place, double reach) {
    if (place == Place::DragBox)
        return {DragLeft - reach, DragRight + reach, DragBottom - reach, DragTop + reach};
    return {MouseX - reach, MouseX + reach, MouseY - reach, MouseY + reach};
}

/// Whether a box (model space) may show something at the place. Vertices reach beyond it.
bool CheckBoundingBox(const RingProjector& projector, const double* min, const double* max, Place place, double reach) {
    PixelRectangle box = {INFINITY, -INFINITY, INFINITY, -INFINITY};
    int behind = 0;
    for (int corner = 0; corner < 8; ++corner) {
        const double point[3] = {corner & 4 ? min[0] : max[0], corner & 2 ? min[1] : max[1],
                                 corner & 1 ? min[2] : max[2]};
        ScreenCorner seen;
        if (!projector.ProjectPoint(point, seen)) {
            ++behind;
            continue;
        }
        box.Left = std::min(box.Left, seen.X - reach);
        box.Right = std::max(box.Right, seen.X + reach);
        box.Bottom = std::min(box.Bottom, seen.Y - reach);
        box.Top = std::max(box.Top, seen.Y + reach);
    }
    if (behind)
        return behind < 8;
    if (place == Place::Pointer)
        return MouseX > box.Left && MouseX < box.Right && MouseY > box.Bottom && MouseY < box.Top;
    return box.Left <= DragRight && box.Right >= DragLeft && box.Bottom <= DragTop && box.Top >= DragBottom;
}

/// A pass over the objects of a view; kinds of passes say what they do with each.
class SelectionPass : public TraversalSink {
  public:
    SelectionPass(Purpose purpose, Place place, double reach) : TraversalSink(purpose), Where(place), Reach(reach) {}

    void Run(View* view) {
        SetUpView(view, 0);
        Projection = GetSelectProjection();
        TraverseView(view, *this);
    }

    void TakeObject(const ShownObject& shown) final {
        RingProjector projector(shown, Projection);
        const Object* object = shown.Object;
        if (shown.Branch && !CheckBoundingBox(projector, object->Min, object->Max, Where, Reach))
            return;
        Search(shown, SelectRegion(shown, Projection, RectangleOf(Where, Reach)), projector);
    }

  protected:
    virtual void Search(const ShownObject& shown, const SelectRegion& region, RingProjector& projector) = 0;

    const Place Where;
    const double Reach;

  private:
    Matrix Projection;
};

/// A pass over polygons.
class PolygonPass : public SelectionPass {
  public:
    explicit PolygonPass(Place place) : SelectionPass(Polygons, place, 0) {}

  protected:
    void Search(const ShownObject& shown, const SelectRegion& region, RingProjector& projector) final {
        if (shown.Mode == ShownMarkersOnly)
            return;
        Shown = &shown;
        Projector = &projector;
        ForEachShownSubObject(shown, [&](const SubObject* subObject) {
            const bool checked = ObjectIsolated && !LeftShift;
            if (!subObject->FirstPolygon ||
                (checked && !CheckBoundingBox(projector, subObject->Min, subObject->Max, Where, Reach)))
                return;
            SearchSubObject(PolygonHierarchyOf(subObject), region);
        });
    }

    virtual void SearchSubObject(const PolygonHierarchy& hierarchy, const SelectRegion& region) = 0;

    /// What is seen of the polygon; empty when it turns its back where backs are not shown.
    const ScreenRing& SeenRing(const Polygon* polygon) {
        static const ScreenRing nothing;
        const ScreenRing& ring = Projector->Project(polygon);
        return Backface && !Projector->FacesEye(ring) ? nothing : ring;
    }

    const ShownObject* Shown = nullptr;
    RingProjector* Projector = nullptr;
};

/// Where the line of sight meets a polygon.
struct Sight {
    double Depth;
    double Distance; // from the eye, for the 3D view
    double Span;     // width of the polygon on the pointer's row, pixels

    bool IsBefore(const Sight& other) const {
        // A near plane very close to the eye squeezes almost all depths together: what lies apart is not in one plane.
        // Near the middle of a 2D view's depths only their difference tells.
        const bool together =
            (FloatsAreVeryClose(Depth, other.Depth) || std::fabs(Depth - other.Depth) < CloseDepths) &&
            std::fabs(Distance - other.Distance) <= CloseDistances * std::fabs(other.Distance);
        return together ? Span < other.Span : Depth < other.Depth;
    }
};

/// The pointer's row has to cross the ring exactly twice.
std::optional<Sight> MeetPointer(const ScreenRing& ring) {
    double xs[2], depths[2];
    int crossings = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const ScreenCorner &a = ring[i], &b = ring[i + 1 < ring.size() ? i + 1 : 0];
        if (!((a.Y < MouseY && b.Y > MouseY) || (a.Y > MouseY && b.Y < MouseY)))
            continue;
        if (crossings == 2)
            return std::nullopt;
        const double part = (MouseY - a.Y) / (b.Y - a.Y);
        xs[crossings] = a.X + (b.X - a.X) * part;
        depths[crossings] = a.Depth + (b.Depth - a.Depth) * part;
        ++crossings;
    }
    if (crossings != 2 || !(std::min(xs[0], xs[1]) < MouseX && MouseX < std::max(xs[0], xs[1])))
        return std::nullopt;
    const double part = (MouseX - xs[0]) / (xs[1] - xs[0]);
    return Sight{depths[0] + (depths[1] - depths[0]) * part, 0, std::fabs(xs[1] - xs[0])};
}

class PickPass final : public PolygonPass {
  public:
    PickPass() : PolygonPass(Place::Pointer) {}

    PolygonHit Hit;

  private:
    void SearchSubObject(const PolygonHierarchy& hierarchy, const SelectRegion& region) override {
        Candidates.clear();
        hierarchy.Boxes.Search(region, [&](std::uint32_t number, bool) { Candidates.push_back(number); });
        // Of equal hits the first drawn counts.
        std::sort(Candidates.begin(), Candidates.end());
        for (std::uint32_t number : Candidates)
            Try(hierarchy.Polygons[number]);
    }

    void Try(Polygon* polygon) {
        std::optional<Sight> sight = MeetPointer(SeenRing(polygon));
        if (!sight)
            return;
        sight->Distance = Projector->DistanceOf(sight->Depth);
        if (Hit.Polygon && !sight->IsBefore(Best))
            return;
        Best = *sight;
        Hit = {polygon, Shown->Object, Shown->Branch, Shown->Placement};
    }

    Sight Best{};
    std::vector<std::uint32_t> Candidates;
};

bool InDragBox(const ScreenCorner& corner) {
    return corner.X >= DragLeft && corner.X <= DragRight && corner.Y >= DragBottom && corner.Y <= DragTop;
}

class BoxPass final : public PolygonPass {
  public:
    BoxPass() : PolygonPass(Place::DragBox) {}

  private:
    void SearchSubObject(const PolygonHierarchy& hierarchy, const SelectRegion& region) override {
        hierarchy.Boxes.Search(region, [&](std::uint32_t number, bool inside) {
            Polygon* polygon = hierarchy.Polygons[number];
            if (Shown->Branch && Shown->Branch->Copied)
                return; // has had its turn
            // What lies wholly inside needs a look only where it may turn its back or be cut away.
            if ((inside && !Backface && !WorkAreaClips()) || Meets(polygon))
                Shown->Branch ? ApplyBranchRule(Shown->Branch) : ApplyPolygonRule(polygon);
        });
    }

    bool Meets(const Polygon* polygon) {
        const ScreenRing& ring = SeenRing(polygon);
        if (std::any_of(ring.begin(), ring.end(), InDragBox))
            return true;
        Rest = ring;
        ClipPolygonToDragBox(Rest);
        return !Rest.empty();
    }

    ScreenRing Rest;
};

/// A pass over vertices.
class VertexPass : public SelectionPass {
  public:
    VertexPass(Place place, double reach) : SelectionPass(Vertices, place, reach) {}

  protected:
    /// Calls function(vertex, inside) for the vertices near the place that are seen.
    template <class Function>
    void ForEachCandidate(const ShownObject& shown, const SelectRegion& region, Function function) {
        const VertexSight sight(shown);
        FlagVisibleSubObjects(shown.Lod);
        const VertexHierarchy& hierarchy = VertexHierarchyOf(shown.Object);
        hierarchy.Boxes.Search(region, [&](std::uint32_t number, bool inside) {
            Vertex* vertex = hierarchy.Vertices[number];
            if (VertexIsShown(vertex) && (sight.Unlimited() || sight.Sees(vertex)))
                function(vertex, number, inside);
        });
    }
};

class VertexPickPass final : public VertexPass {
  public:
    VertexPickPass() : VertexPass(Place::Pointer, VertexReach) {}

    VertexHit Hit;

  private:
    struct Candidate {
        std::uint32_t Number;
        ::Vertex* Vertex;
    };

    void Search(const ShownObject& shown, const SelectRegion& region, RingProjector& projector) override {
        std::vector<Candidate> candidates;
        ForEachCandidate(shown, region, [&](Vertex* vertex, std::uint32_t number, bool) {
            candidates.push_back({number, vertex});
        });
        // Of equal hits the first in the object's order counts.
        std::sort(candidates.begin(), candidates.end(),
                  [](const Candidate& a, const Candidate& b) { return a.Number < b.Number; });
        for (const Candidate& candidate : candidates)
            Try(shown, candidate.Vertex, projector);
    }

    void Try(const ShownObject& shown, Vertex* vertex, const RingProjector& projector) {
        ScreenCorner seen;
        if (!projector.ProjectPoint(vertex->Position, seen))
            return;
        const double distance = std::hypot(seen.X - MouseX, seen.Y - MouseY);
        if (!(distance < VertexReach) || distance > BestDistance ||
            (distance == BestDistance && seen.Depth <= BestDepth))
            return;
        BestDistance = distance;
        BestDepth = seen.Depth;
        Hit.Vertex = vertex;
        TransformCoordinate(vertex->Position, shown.Placement, Hit.Place);
    }

    double BestDistance = VertexReach, BestDepth = 0;
};

class VertexBoxPass final : public VertexPass {
  public:
    explicit VertexBoxPass(int deselect) : VertexPass(Place::DragBox, 0), Deselect(deselect) {}

  private:
    void Search(const ShownObject& shown, const SelectRegion& region, RingProjector& projector) override {
        ForEachCandidate(shown, region, [&](Vertex* vertex, std::uint32_t, bool inside) {
            ScreenCorner seen;
            if (!inside && !(projector.ProjectPoint(vertex->Position, seen) && InDragBox(seen)))
                return;
            if (Deselect)
                SetVertexSelected(shown.Object, vertex, 0);
            else
                ApplyVertexRule(vertex);
        });
    }

    const int Deselect;
};

/// Looks at one polygon, wherever in the window it appears.
class FrontPass final : public TraversalSink {
  public:
    explicit FrontPass(const ::Polygon* polygon) : TraversalSink(Polygons), Wanted(polygon) {}

    void TakeObject(const ShownObject& shown) override {
        ForEachShownSubObject(shown, [&](const SubObject* subObject) {
            if (subObject != Wanted->SubObject || ShowsFront)
                return;
            RingProjector projector(shown, GetSelectProjection());
            ShowsFront = projector.FacesEye(projector.Project(Wanted));
        });
    }

    bool ShowsFront = false;

  private:
    const ::Polygon* Wanted;
};

} // namespace

bool FloatsAreVeryClose(double a, double b) {
    const double difference = b == 0 ? a : a / b - 1;
    return std::fabs(difference) < VeryClose;
}

PolygonHit PickPolygon(View* view) {
    PickPass pass;
    pass.Run(view);
    return pass.Hit;
}

VertexHit PickVertex(View* view) {
    VertexPickPass pass;
    pass.Run(view);
    return pass.Hit;
}

bool PolygonShowsFront(View* view, const Polygon* polygon) {
    SetUpView(view, 0);
    FrontPass pass(polygon);
    TraverseView(view, pass);
    return pass.ShowsFront;
}

void BoxPolygons(View* view) {
    BoxPass().Run(view);
}

void BoxVertices(View* view, int deselect) {
    VertexBoxPass(deselect).Run(view);
}
