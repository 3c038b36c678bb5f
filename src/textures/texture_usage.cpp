#include "textures/texture_usage.h"

#include "base/slots.h"
#include "gooey/redraw.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/polygon_scan.h"
#include "store/storage.h"
#include "store/texture_list.h"
#include "store/walks.h"
#include "textures/texture_changes.h"
#include "textures/texture_definition.h"

namespace {

/// Leaves the polygons whose texture `goes` accepts without one.
template <class Predicate>
void RemoveTextures(Predicate goes) {
    ForEverySinglePolygonEver([&](Polygon* polygon) {
        if (!polygon->Texture || !goes(polygon->Texture))
            return;
        polygon->Texture = nullptr;
        AppearanceChanged(polygon);
        WorkSaved = 0;
    });
}

} // namespace

void FlagUsedTextures() {
    for (Texture* texture : Along<&Texture::Next>(FirstTexture()))
        texture->Used = 0;
    ForEverySinglePolygonEver([](const Polygon* polygon) {
        if (polygon->Texture)
            polygon->Texture->Used = 1;
    });
}

void DeleteUnusedTextures() {
    FlagUsedTextures();
    bool deleted = false;
    for (Texture* texture : Along<&Texture::Next>(FirstTexture()))
        if (!texture->Used) {
            DeleteTexture(texture);
            deleted = true;
        }
    if (!deleted)
        return;
    TextureAppChange();
    CallSlot(TheTextureDefinitionSlots.DirtyTextureGizmo);
}

void FinishTextureDelete() {
    const Texture* texture = CurrentTexture();
    if (!texture)
        return;
    RemoveTextures([=](const Texture* used) { return used == texture; });
    DeleteCurrentTexture();
    DirtyAllWindows();
    TextureAppChange();
}

void FinishDeletingAllTextures() {
    RemoveTextures([](const Texture*) { return true; });
    if (FirstTexture())
        WorkSaved = 0;
    FreeAllTextures();
    DirtyAllWindows();
    TextureAppChange();
}
