#pragma once

#include "textures/pixel_block.h"

#include <cstddef>
#include <cstdint>

// The orientation that cameras write beside a picture instead of turning it.

/// Values of the Exif tag Orientation: which corner the first row and the first column of the file belong to.
enum Orientation : int {
    OrientationUpright = 1,
    OrientationMirrored = 2,
    OrientationHalfTurn = 3,
    OrientationUpsideDown = 4,
    OrientationTransposed = 5,
    OrientationQuarterTurn = 6, // to be shown turned clockwise by a quarter
    OrientationTransverse = 7,
    OrientationThreeQuarterTurn = 8
};

/// The orientation that Exif data tell, beginning with the byte order mark "II" or "MM"; OrientationUpright when they
/// do not tell any, or are damaged.
int OrientationIn(const std::uint8_t* exif, std::size_t size);

/// Turns the picture as the orientation wants. False, the picture being as it was, when there is no memory.
bool TurnUpright(PixelBlock& block, int orientation);
