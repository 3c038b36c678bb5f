#include "store/appearance.h"

#include "base/slots.h"

#include <vector>

namespace {

std::vector<AppearanceSlots> Listeners;

template <auto Slot, class... Arguments>
void Tell(Arguments... arguments) {
    for (const AppearanceSlots& listener : Listeners)
        CallSlot(listener.*Slot, arguments...);
}

} // namespace

void AppearanceChanged(const Polygon* polygon) {
    Tell<&AppearanceSlots::PolygonChanged>(polygon);
}

void AppearanceChanged(Object* object) {
    Tell<&AppearanceSlots::ObjectChanged>(object);
}

void EveryAppearanceChanged() {
    Tell<&AppearanceSlots::EverythingChanged>();
}

void ObjectWasCleanedUp(Object* object) {
    Tell<&AppearanceSlots::ObjectCleanedUp>(object);
}

void PolygonSelectionWasMade(Object* object) {
    Tell<&AppearanceSlots::PolygonSelectionMade>(object);
}

void VertexSelectionWasMade(Object* object) {
    Tell<&AppearanceSlots::VertexSelectionMade>(object);
}

void VerticesHaveMoved(Object* object) {
    Tell<&AppearanceSlots::VerticesMoved>(object);
}

void SubObjectIsFreed(SubObject* subObject) {
    Tell<&AppearanceSlots::SubObjectFreed>(subObject);
}

void ObjectIsFreed(Object* object) {
    Tell<&AppearanceSlots::ObjectFreed>(object);
}

void MaterialIsFreed(Material* material) {
    Tell<&AppearanceSlots::MaterialFreed>(material);
}

void ListenToAppearance(const AppearanceSlots& listener) {
    Listeners.push_back(listener);
}
