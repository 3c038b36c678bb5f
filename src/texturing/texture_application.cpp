#include "texturing/texture_application.h"

#include "base/slots.h"
#include "interaction/tool_guards.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"
#include "textures/texture_changes.h"
#include "textures/texture_definition.h"
#include "texturing/mappings.h"
#include "views/display_flags.h"
#include "views/hooks.h"
#include "views/viewports.h"

namespace {

/// Calls function(Polygon*) with each selected polygon, undoably.
template <class Function>
void ChangeSelectedPolygons(Function function) {
    if (!SomePolygonsSelected())
        return;
    CopyCurrentObject();
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        function(polygon);
    TexturesWereApplied();
}

} // namespace

int CanApplyTexture() {
    return CurrentTexture() && !SystemBusy() && CreationInObjectMode() && SomePolygonsSelected();
}

void BeginApplication(void (*apply)()) {
    TextureOn = 1;
    ApplyingTexture = 1;
    AppChangeCallback = apply;
    CallSlot(TheTextureDefinitionSlots.DirtyTextureGizmo);
}

void EndApplication() {
    ApplyingTexture = 0;
    AppChangeCallback = nullptr;
    CallSlot(TheTextureDefinitionSlots.DirtyTextureGizmo);
}

void TexturesWereApplied() {
    AppearanceChanged(CurrentObject());
    WorkSaved = 0;
    DirtyModelWindows();
}

void ChangeTextures(TextureChange change) {
    ChangeSelectedPolygons([=](Polygon* polygon) {
        if (change != TextureChange::Texture)
            polygon->TextureMaterial = CurrentMaterial();
        if (change != TextureChange::Material && polygon->Texture && CurrentTexture())
            polygon->Texture = CurrentTexture();
    });
}

void RemoveTextures() {
    ChangeSelectedPolygons([](Polygon* polygon) { polygon->Texture = nullptr; });
}

void ApplyEnvironmentMap() {
    if (!CurrentTexture() || !SomePolygonsSelected())
        return;
    ChangeSelectedPolygons([](Polygon* polygon) {
        GiveTexture(polygon);
        polygon->Flags |= PolygonGeneratesTexture;
    });
    TextureOn = 1;
}
