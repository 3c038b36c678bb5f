#include "interaction/tool_guards.h"

#include "gooey/messages.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/storage.h"
#include "textures/texture_changes.h"

namespace {

constexpr int SelectSomeVertices = 36;
constexpr int SelectSomePolygons = 37;
constexpr int SelectASinglePolygon = 65;
constexpr int OnlyOnePolygonAtATime = 66;
constexpr int NotInSceneMode = 142;

int Refuse(int message) {
    TellUser(message);
    return 0;
}

} // namespace

int SomePolygonsSelected() {
    CleanUpObject();
    if (FirstSelectedPolygon())
        return 1;
    return ApplyingTexture ? 0 : Refuse(SelectSomePolygons);
}

int APolygonIsSelected() {
    CleanUpObject();
    const Polygon* first = FirstSelectedPolygon();
    if (!first)
        return Refuse(SelectASinglePolygon);
    return first->NextSelected ? Refuse(OnlyOnePolygonAtATime) : 1;
}

int SomeVerticesSelected() {
    CleanUpObject();
    return FirstSelectedVertex() ? 1 : Refuse(SelectSomeVertices);
}

int CreationInObjectMode() {
    return ObjectIsolated ? 1 : Refuse(NotInSceneMode);
}
