#pragma once

#include "store/records.h"

#include <span>

// What follows when the current texture or its settings change.

/// Flag: a tool is putting a texture on polygons.
extern int ApplyingTexture;

/// Of that tool: puts the current texture and material on its polygons again. Null: they take the two as they are.
extern void (*AppChangeCallback)();
/// The polygons of a tool without callback; the tool's memory.
extern std::span<Polygon* const> ApplicationPolygons;

/// After every change of the current texture, of its settings, or of the current material.
void TextureAppChange();

/// What lies above; each is skipped when null.
struct TextureChangeSlots {
    void (*DirtyModelWindows)() = nullptr;
    void (*DirtySolids)() = nullptr; // solids being made
    void (*RemakeSweep)() = nullptr; // the sweep being made
    /// Makes the texture the one that is current and shown as such; null: it becomes current.
    void (*ChangeTextureSelection)(Texture* texture) = nullptr;
};

extern TextureChangeSlots TheTextureChangeSlots;
