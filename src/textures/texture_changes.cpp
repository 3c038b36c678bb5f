#include "textures/texture_changes.h"

#include "base/slots.h"
#include "store/accessors.h"
#include "store/appearance.h"

int ApplyingTexture = 0;
void (*AppChangeCallback)() = nullptr;
std::span<Polygon* const> ApplicationPolygons;
TextureChangeSlots TheTextureChangeSlots;

void TextureAppChange() {
    if (ApplyingTexture) {
        if (AppChangeCallback)
            AppChangeCallback();
        else
            for (Polygon* polygon : ApplicationPolygons) {
                polygon->Texture = CurrentTexture();
                polygon->TextureMaterial = CurrentMaterial();
                AppearanceChanged(polygon);
            }
        CallSlot(TheTextureChangeSlots.DirtyModelWindows);
    }
    CallSlot(TheTextureChangeSlots.DirtySolids);
    CallSlot(TheTextureChangeSlots.RemakeSweep);
}
