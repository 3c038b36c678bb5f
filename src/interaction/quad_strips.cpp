#include "interaction/quad_strips.h"

#include "gooey/messages.h"
#include "interaction/selection_sets.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/selection_lists.h"
#include "store/walks.h"

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace {

constexpr int MsgSelectOneQuad = 189;
constexpr int MsgQstripNeedsQuads = 190;

constexpr int Sides = 4;
/// A strip leaves a quadrilateral by the edge opposite to the one where it enters.
constexpr int Opposite = 2;

/// The strip selected last: its ends. They are only compared, with records that exist.
const Polygon* StripFirst;
const Polygon* StripTarget;

bool IsQuad(const Polygon* polygon) {
    int corners = 0;
    for (const PolygonBead* bead = polygon->Beads; bead && corners <= Sides; bead = bead->Next)
        ++corners;
    return corners == Sides;
}

PolygonBead* CornerNumber(const Polygon* polygon, int number) {
    PolygonBead* bead = polygon->Beads;
    for (int i = 0; i < number; ++i)
        bead = bead->Next;
    return bead;
}

PolygonBead* After(const PolygonBead* bead) {
    return NextInRing(bead->Polygon, bead);
}

/// A search for a strip, depth first, quadrilateral by quadrilateral over opposite edges. Those on the way are marked
/// as selected. What led to a dead end once is not tried again: where polygons lie on one another the ways are
/// without number.
class StripSearch {
  public:
    /// From the edge of a quadrilateral that begins at `corner` to the target.
    bool Find(PolygonBead* corner, const Polygon* target) {
        Entered.clear();
        Way.clear();
        Enter(corner);
        while (!Way.empty()) {
            const Polygon* last = Way.back().Corner->Polygon;
            if (last == target && Way.size() > 1)
                return true;
            if (PolygonBead* entry = NextEntry(Way.back())) {
                entry->Polygon->Selected = 1;
                Enter(After(After(entry)));
            } else {
                if (Way.size() > 1)
                    Way.back().Corner->Polygon->Selected = 0;
                Way.pop_back();
            }
        }
        return false;
    }

    std::vector<Polygon*> Strip() const {
        std::vector<Polygon*> strip;
        for (const Step& step : Way)
            strip.push_back(step.Corner->Polygon);
        return strip;
    }

  private:
    struct Step {
        PolygonBead* Corner; // begins the edge by which the strip leaves
        PolygonBead* Untried;
    };

    void Enter(PolygonBead* corner) { Way.push_back({corner, After(corner)->Vertex->Beads}); }

    /// The corner by which the next quadrilateral not yet tried takes over the edge in reverse; null when there is
    /// none.
    PolygonBead* NextEntry(Step& step) {
        while (PolygonBead* use = step.Untried) {
            step.Untried = use->NextOnVertex;
            if (After(use)->Vertex == step.Corner->Vertex && !use->Polygon->Selected && IsQuad(use->Polygon) &&
                Entered.insert(use).second)
                return use;
        }
        return nullptr;
    }

    std::vector<Step> Way;
    std::unordered_set<const PolygonBead*> Entered;
};

void SelectStrip(Object* object, const std::vector<Polygon*>& strip) {
    for (std::size_t i = 0; i < strip.size(); ++i)
        strip[i]->NextSelected = i + 1 < strip.size() ? strip[i + 1] : nullptr;
    object->FirstSelectedPolygon = strip.front();
    // The list holds the strip's order: it must not be rebuilt.
    object->PolygonSelectionChanged = 0;
    PolygonSelectionWasMade(object);
    LastSelectionWasQstrip = 1;
}

/// Selects a strip from `first` to `target`, trying the edges of the first in turn; the Mark of `first` tells with
/// which to begin.
bool SelectStripBetween(Polygon* first, const Polygon* target) {
    Object* object = CurrentObject();
    DeselectAllPolygons();
    SetPolygonSelected(object, first, 1);
    StripSearch search;
    for (int attempt = 0; attempt < Sides; ++attempt) {
        if (search.Find(CornerNumber(first, (first->Mark + Opposite) % Sides), target)) {
            SelectStrip(object, search.Strip());
            return true;
        }
        first->Mark = (first->Mark + 1) % Sides;
    }
    return false;
}

} // namespace

void SelectQstrip(Polygon* clicked) {
    CleanUpObject();
    Object* object = CurrentObject();
    Polygon* first = object->FirstSelectedPolygon;
    if (!first) {
        if (clicked)
            SetPolygonSelected(object, clicked, 1);
        else
            gl::ringbell();
        return;
    }
    const bool continues = LastSelectionWasQstrip && StripFirst == first;
    if (!IsQuad(first) || (first->NextSelected && !continues)) {
        TellUser(MsgSelectOneQuad);
        return;
    }
    if (!clicked) {
        gl::ringbell();
        return;
    }
    if (!IsQuad(clicked)) {
        TellUser(MsgQstripNeedsQuads);
        return;
    }
    if (continues && StripTarget == clicked) {
        first->Mark = (first->Mark + 1) % Sides;
    } else {
        first->Mark = Opposite;
        DeselectAllVertices();
    }
    StripFirst = first;
    StripTarget = clicked;
    if (!SelectStripBetween(first, clicked))
        gl::ringbell();
}

void FeedBackQstrip(void (*function)(PolygonBead*, PolygonBead*, PolygonBead*, PolygonBead*, void*), void* argument) {
    const Polygon* quad = FirstSelectedPolygon();
    if (!quad || !IsQuad(quad))
        return;
    PolygonBead* corner = CornerNumber(quad, quad->Mark % Sides);
    for (;;) {
        PolygonBead* ring[Sides] = {corner};
        for (int i = 1; i < Sides; ++i)
            ring[i] = After(ring[i - 1]);
        function(ring[0], ring[1], ring[2], ring[3], argument);
        quad = quad->NextSelected;
        if (!quad || !IsQuad(quad))
            return;
        corner = quad->Beads;
        while (corner && corner->Vertex != ring[3]->Vertex)
            corner = corner->Next;
        if (!corner)
            return;
    }
}
