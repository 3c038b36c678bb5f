#pragma once

#include "gooey/tool_window.h"
#include "store/records.h"

// Placing the corners of one polygon on the image by hand, in a window of its own.

/// Null while it is closed.
extern Window* ManualTexture;
extern int ManTexX, ManTexY, ManTexW, ManTexH, ManualTextureOpened;

/// What lies above; skipped when null.
struct ManualPlacementSlots {
    /// Makes the material current and shows it as such.
    void (*SelectMaterial)(Material* material) = nullptr;
};

extern ManualPlacementSlots TheManualPlacementSlots;

/// For the first selected polygon; one without texture gets the current one, once over it.
void ApplyTextureManually();
/// For the first selected polygon, which must have a texture of its own coordinates: the user is told when it has not.
/// Other polygons can be clicked meanwhile.
void AdjustTexture();
