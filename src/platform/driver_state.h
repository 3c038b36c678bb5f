// The driver's state as it was set last, so that only differences are sent. For the layer's own modules.
#pragma once

#include <cstdint>

#include "platform/surface.h"

namespace gl {

struct DriverState {
    unsigned framebuffer = 0, texture = 0;
    PixelBox viewport, scissor;
    float nearDepth = 0, farDepth = 1;
    bool depthTest = false, depthWrite = true, cullBack = false, clockwiseFronts = false, alphaToCoverage = false,
         multisample = false, polygonOffset = false;
    uint8_t depthFunction = 0, colourMask = 15, sourceFactor = 0, destinationFactor = 0;
    uint8_t clipPlanes = 0; // bits of the distances that clip
};

// Sends what differs from the state set last.
void ApplyDriverState(const DriverState& wanted);
const DriverState& CurrentDriverState();
void BindProgram(unsigned name);
void BindArrays(unsigned name);
// How often program or arrays have changed: while it stays the same, so do they.
long BindingChanges();
// Everything is sent again next time.
void ForgetDriverState();

} // namespace gl
