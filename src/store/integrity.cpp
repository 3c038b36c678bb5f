#include "store/integrity.h"

#include "base/exit.h"
#include "store/accessors.h"
#include "store/walks.h"

#include <cstddef>
#include <cstdio>

namespace {

void Expect(bool holds, const char* message) {
    if (!holds)
        IntegrityFail(message);
}

/// Clears every mark even when the list loops: Brent's walk has met every polygon when it notices the loop.
void ClearMarks(Polygon* first) {
    const Polygon* trail = nullptr;
    std::size_t steps = 0, lap = 1;
    for (Polygon* polygon = first; polygon && polygon != trail; polygon = polygon->Next) {
        polygon->Mark = 0;
        if (++steps == lap) {
            trail = polygon;
            steps = 0;
            lap *= 2;
        }
    }
}

/// Returns the number of polygons.
std::size_t CheckObjectList(const Object* object) {
    ClearMarks(object->FirstPolygon);
    std::size_t count = 0;
    Expect(!object->FirstPolygon || !object->FirstPolygon->Prev, "First polygon has a previous");
    for (Polygon* polygon : EveryPolygon(object)) {
        Expect(!polygon->Next || polygon->Next->Prev == polygon, "Next polygon doesn't point back");
        for (const PolygonBead* bead : EveryBead(polygon))
            Expect(bead->Polygon == polygon, "Polygon bead has bad owner");
        Expect(!polygon->Mark, "Polygon list loops back on itself");
        polygon->Mark = 1;
        ++count;
    }
    return count;
}

/// Returns how many polygons of the object's list it has met.
std::size_t CheckSubObjects(const Object* object, std::size_t polygons) {
    std::size_t met = 0, listed = 0;
    for (const SubObject* subObject : EverySubObject(object)) {
        Expect(!subObject->FirstPolygon || !subObject->FirstPolygon->PrevSibling,
               "First polygon in sub object has a previous");
        for (Polygon* polygon : EveryTopPolygon(subObject)) {
            Expect(!polygon->NextSibling || polygon->NextSibling->PrevSibling == polygon,
                   "Next polygon in sub object doesn't point back");
            Expect(polygon->SubObject, "Polygon has NULL owner");
            Expect(polygon->SubObject == subObject, "Polygon has bad owner");
            Expect(polygon->Mark, "Loop in sub object polygons");
            polygon->Mark = 0;
            ++met;
            ++listed;
            for (Polygon* subPolygon : EverySubPolygon(polygon)) {
                listed += subPolygon->Mark == 1;
                subPolygon->Mark = 0;
                Expect(++met <= polygons, "Loop in sub object polygons");
            }
        }
    }
    return listed;
}

} // namespace

void CheckIntegrity() {
    const Object* object = CurrentObject();
    const std::size_t polygons = CheckObjectList(object);
    Expect(CheckSubObjects(object, polygons) == polygons, "Polygon not part of a sub object");
    for (const Lod* lod : EveryLod(object))
        for (const LodBead* bead : EveryLodBead(lod))
            Expect(bead->Lod == lod, "Lod bead doesn't point back to owner");
}

void IntegrityFail(const char* message) {
    std::fprintf(stderr, "\n\n\nKirvo: data integrity failure - %s!\a\n", message);
    KillProgram(FatalEnd);
}
