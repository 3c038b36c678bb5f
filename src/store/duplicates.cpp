#include "store/duplicates.h"

#include "store/accessors.h"
#include "store/connections.h"
#include "store/integrity.h"
#include "store/polygon_editing.h"
#include "store/walks.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

/// A place in float precision, in bits that are equal when the places are.
struct Place {
    std::uint32_t Bits[3];

    bool operator==(const Place&) const = default;
};

/// Adding zero turns -0 into 0.
Place PlaceOf(const Vertex* vertex) {
    Place place;
    for (int axis = 0; axis < 3; ++axis)
        place.Bits[axis] = std::bit_cast<std::uint32_t>(static_cast<float>(vertex->Position[axis]) + 0.0F);
    return place;
}

bool HasPlace(const Vertex* vertex) {
    return !std::isnan(vertex->Position[0]) && !std::isnan(vertex->Position[1]) && !std::isnan(vertex->Position[2]);
}

std::uint64_t HashOf(const Place& place) {
    std::uint64_t hash = 0;
    for (const std::uint32_t bits : place.Bits) {
        hash = (hash ^ bits) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 32;
    }
    return hash;
}

/// The vertices that stay, one in each slot of an open hash table over their places, used and loose ones apart. Finds
/// what sorting the vertices by VertexCompare would bring together, in linear time.
class KeeperTable {
  public:
    /// Room for `count` vertices at half load.
    explicit KeeperTable(std::size_t count) : Slots(std::bit_ceil(2 * count)), Mask(Slots.size() - 1) {}

    /// Enters a chain of vertices, leaving in each one's Mark the number of the slot that holds its keeper, or NoSlot.
    void Enter(Vertex* first) {
        // Several vertices at a time, so that the misses on slots and on keepers overlap.
        Vertex* batch[BatchSize];
        std::size_t home[BatchSize];
        for (Vertex* vertex = first; vertex;) {
            int count = 0;
            for (; vertex && count < BatchSize; vertex = vertex->Next) {
                vertex->Mark = NoSlot;
                if (!HasPlace(vertex))
                    continue;
                batch[count] = vertex;
                home[count] = HashOf(PlaceOf(vertex)) & Mask;
                __builtin_prefetch(&Slots[home[count++]]);
            }
            for (int i = 0; i < count; ++i)
                if (const Vertex* keeper = Slots[home[i]])
                    __builtin_prefetch(keeper->Position);
            for (int i = 0; i < count; ++i)
                batch[i]->Mark = EnterAt(home[i], batch[i]);
        }
    }

    Vertex* KeeperOf(Vertex* vertex) const { return vertex->Mark == NoSlot ? vertex : Slots[vertex->Mark]; }

  private:
    static constexpr int NoSlot = -1;
    static constexpr int BatchSize = 32;

    std::int32_t EnterAt(std::size_t slot, Vertex* vertex) {
        const Place place = PlaceOf(vertex);
        while (Vertex* keeper = Slots[slot]) {
            if (!keeper->Uses == !vertex->Uses && PlaceOf(keeper) == place) {
                if (vertex->Uses < keeper->Uses)
                    Slots[slot] = vertex;
                return static_cast<std::int32_t>(slot);
            }
            slot = (slot + 1) & Mask;
        }
        Slots[slot] = vertex;
        return static_cast<std::int32_t>(slot);
    }

    std::vector<Vertex*> Slots;
    std::size_t Mask;
};

/// -1, 0 or 1; values that are not numbers are equal and come last.
int CompareFloats(float a, float b) {
    if (a < b || a > b)
        return a < b ? -1 : 1;
    return static_cast<int>(std::isnan(a)) - static_cast<int>(std::isnan(b));
}

std::size_t CountVertices(const Object* object) {
    std::size_t count = 0;
    for ([[maybe_unused]] const Vertex* vertex : EveryVertex(object))
        ++count;
    return count;
}

} // namespace

int VertexCompare(const void* a, const void* b) {
    const Vertex* first = *static_cast<Vertex* const*>(a);
    const Vertex* second = *static_cast<Vertex* const*>(b);
    for (int axis = 0; axis < 3; ++axis)
        if (const int order =
                CompareFloats(static_cast<float>(first->Position[axis]), static_cast<float>(second->Position[axis])))
            return order;
    return (first->Uses > second->Uses) - (first->Uses < second->Uses);
}

void DeleteDuplicateVertices() {
    const Object* object = CurrentObject();
    const std::size_t count = object->ConnectionsOK ? CountVertices(object) : MakeConnections();
    if (!count)
        return;
    KeeperTable keepers(count);
    keepers.Enter(object->FirstVertex);
    bool merged = false;
    for (Vertex* vertex : EveryVertex(object)) {
        Vertex* keeper = keepers.KeeperOf(vertex);
        vertex->Mark = 0;
        if (keeper == vertex)
            continue;
        merged = true;
        for (PolygonBead* bead : EveryUse(vertex))
            bead->Vertex = keeper;
        DeleteVertex(vertex);
    }
    const int collapsed = SussMinkyPolygons();
    CheckIntegrity();
    if (merged || collapsed)
        MakeConnections();
    NormalsOK() = 0;
}
