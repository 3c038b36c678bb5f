// What tells one batch from the next. For the layer's own modules.
#pragma once

#include <array>
#include <cstdint>

#include "platform/batch.h"
#include "platform/drawing_state.h"
#include "platform/shaders.h"
#include "platform/surface.h"

namespace gl {

// Everything that one drawing call has in common; primitives are gathered as long as it stays the same.
struct BatchKey {
    Surface* target = nullptr;
    unsigned framebuffer = 0;
    bool shown = false, overlay = false, pixelExact = false;
    Shape shape = Shape::Triangles;
    int originX = 0, originY = 0; // of the window in its target, drawing pixels
    PixelBox window;              // the part of the target that it covers
    RasterState raster;
    uint32_t projectionVersion = 0, textureMatrixVersion = 0, lightingVersion = 0, lightingDefinitions = 0,
             clipVersion = 0, cueVersion = 0;
    int texture = 0, environment = 0;

    bool operator==(const BatchKey&) const = default;
};

// The contents behind the versions of the key, copied when the batch begins.
struct BatchContents {
    Matrix4 projection, textureMatrix;
    int model = 0;
    std::array<BoundLight, LightSources> lights;
    std::array<std::array<double, 4>, ClipPlanes> clip;
    DepthCueRange cue;
};

// The version of the projection of shapes that have none.
constexpr uint32_t UnitProjection = 0xFFFFFFFF;

// The materials that a batch uses; vertices name them by their place here.
struct MaterialPalette {
    int materials[MaterialSlots];
    int count = 0;
};

// A box of the window in screen pixels of the target.
PixelBox BoxInTarget(const BatchKey& key, const ScreenBox& box);

// True when a box of coordinates lies wholly beyond one side of the viewport and its margin, or of the depth range.
bool BoxIsOutside(const Matrix4& toUnitCube, const double* low, const double* high, const PixelBox& viewport,
                  int margin);

// The box of pixels that a box of eye coordinates reaches through a projection, grown by a margin.
PixelBox ReachOfBox(const Matrix4& projection, const double* low, const double* high, const PixelBox& viewport,
                    int margin);

// False when there is nothing to draw to: no current surface, cursor mode.
bool HasSurface();
// For a shape in the present state.
BatchKey KeyFor(Shape shape);
BatchContents ContentsOf(const BatchKey& key);
// The screen mask, in screen pixels of the target.
PixelBox MaskInTarget(const BatchKey& key);
// Sets the driver's state; false when nothing can be seen. `image`: the driver's texture of Glyphs and Picture.
bool PrepareDriver(const BatchKey& key, unsigned image);
// How far lines and points reach beyond their vertices, in screen pixels.
int MarginOf(const RasterState& raster);

} // namespace gl
