#include "platform/batch_key.h"

#include <algorithm>
#include <cmath>

#include "platform/definitions.h"
#include "platform/driver_state.h"

namespace gl {

PixelBox BoxInTarget(const BatchKey& key, const ScreenBox& box) {
    const int left = ToPixels(key.originX + box.left), bottom = ToPixels(key.originY + box.bottom);
    return {left, bottom, ToPixels(key.originX + box.right + 1) - left, ToPixels(key.originY + box.top + 1) - bottom};
}

bool BoxIsOutside(const Matrix4& m, const double* low, const double* high, const PixelBox& viewport, int margin) {
    const double wide = 1 + 2.0 * margin / std::max(viewport.width, 1);
    const double tall = 1 + 2.0 * margin / std::max(viewport.height, 1);
    bool beyond[6] = {true, true, true, true, true, true}; // with every corner
    for (int corner = 0; corner < 8; corner++) {
        double clip[4];
        for (int i = 0; i < 4; i++)
            clip[i] = (corner & 1 ? high : low)[0] * m[i] + (corner & 2 ? high : low)[1] * m[4 + i] +
                      (corner & 4 ? high : low)[2] * m[8 + i] + m[12 + i];
        const double limits[3] = {wide * clip[3], tall * clip[3], clip[3]};
        for (int axis = 0; axis < 3; axis++) {
            // Rounding must not take away what lies just at the edge.
            const double slack = 1e-6 * std::abs(clip[3]);
            beyond[2 * axis] &= clip[axis] > limits[axis] + slack;
            beyond[2 * axis + 1] &= clip[axis] < -limits[axis] - slack;
        }
    }
    return std::any_of(beyond, beyond + 6, [](bool all) { return all; });
}

PixelBox ReachOfBox(const Matrix4& m, const double* low, const double* high, const PixelBox& viewport, int margin) {
    double left = 1e300, right = -1e300, bottom = 1e300, top = -1e300;
    for (int corner = 0; corner < 8; corner++) {
        const double x = corner & 1 ? high[0] : low[0], y = corner & 2 ? high[1] : low[1],
                     z = corner & 4 ? high[2] : low[2];
        const double w = x * m[3] + y * m[7] + z * m[11] + m[15];
        if (!(w > 1e-9)) { // reaches behind the eye: may be anywhere in the viewport
            left = bottom = -1;
            right = top = 1;
            break;
        }
        const double px = (x * m[0] + y * m[4] + z * m[8] + m[12]) / w,
                     py = (x * m[1] + y * m[5] + z * m[9] + m[13]) / w;
        left = std::min(left, px);
        right = std::max(right, px);
        bottom = std::min(bottom, py);
        top = std::max(top, py);
    }
    if (!(left <= right && bottom <= top)) {
        left = bottom = -1;
        right = top = 1;
    }
    auto pixel = [](double value, int size) { return (std::clamp(value, -1.0, 1.0) + 1) * 0.5 * size; };
    const int x1 = static_cast<int>(std::floor(pixel(left, viewport.width))) - margin,
              x2 = static_cast<int>(std::ceil(pixel(right, viewport.width))) + margin,
              y1 = static_cast<int>(std::floor(pixel(bottom, viewport.height))) - margin,
              y2 = static_cast<int>(std::ceil(pixel(top, viewport.height))) + margin;
    return {viewport.x + x1, viewport.y + y1, x2 - x1, y2 - y1};
}

bool HasSurface() {
    const Surface* surface = CurrentSurface();
    return surface && State().Mode != CURSORDRAW && (State().Mode != PUPDRAW || Overlay());
}

BatchKey KeyFor(Shape shape) {
    DrawingState& state = State();
    BatchKey key;
    Surface* surface = CurrentSurface();
    key.shape = shape;
    key.overlay = state.Mode == PUPDRAW;
    key.target = key.overlay ? Overlay() : surface;
    const Buffer buffer = state.ToFront ? Buffer::Front : Buffer::Back;
    key.framebuffer = key.target->drawFramebuffer(key.overlay ? Buffer::Front : buffer);
    key.shown = key.overlay || state.ToFront || !surface->doubleBuffered();
    key.window = {0, 0, key.target->pixelWidth(), key.target->pixelHeight()};
    key.raster = state.Raster;
    if (key.overlay) {
        if (!state.FullScreen) {
            key.originX = surface->ScreenX;
            key.originY = surface->ScreenY;
            key.window = IntersectionOf(key.window, {ToPixels(key.originX), ToPixels(key.originY),
                                                     surface->pixelWidth(), surface->pixelHeight()});
        }
        key.raster.depthTest = false;
        key.raster.sourceFactor = BF_ONE;
        key.raster.destinationFactor = BF_ZERO;
        key.raster.alphaFunction = AF_ALWAYS;
        key.raster.colourMask = 15;
        key.raster.depthCue = false;
    }
    // What a shape does not use must not split its runs.
    if (shape != Shape::WideSegments) {
        key.raster.lineStyle = 0;
        key.raster.lineSmoothing = SML_OFF;
        key.raster.lineWidth = 1;
    }
    if (shape != Shape::WideSegments && shape != Shape::Segments)
        key.raster.facingLines = false;
    if (shape != Shape::Points)
        key.raster.pointSize = 1;
    if (shape == Shape::WideSegments || shape == Shape::Segments || shape == Shape::Points)
        key.raster.pattern = 0;
    if (shape != Shape::Triangles)
        key.raster.cullBack = key.raster.clockwiseFronts = key.raster.behindLines = false;
    key.pixelExact = state.PixelExact;
    const bool flat = shape == Shape::Glyphs || shape == Shape::Picture;
    key.projectionVersion = flat ? UnitProjection : state.ProjectionVersion;
    if (flat)
        key.raster.clipPlanes = 0;
    key.lightingVersion = state.LightingVersion;
    key.lightingDefinitions = LightingDefinitions;
    key.clipVersion = key.raster.clipPlanes ? state.ClipVersion : 0;
    key.cueVersion = key.raster.depthCue ? state.CueVersion : 0;
    if (!key.overlay && !flat) {
        key.environment = FindEnvironment(state.Textures.environment);
        if (key.environment && FindTexture(state.Textures.texture)) {
            key.texture = state.Textures.texture;
            key.textureMatrixVersion = state.TextureMatrixVersion;
        } else
            key.environment = 0;
    }
    return key;
}

BatchContents ContentsOf(const BatchKey& key) {
    const DrawingState& state = State();
    return {key.projectionVersion == UnitProjection ? Identity4 : EffectiveProjection(),
            state.Texture,
            state.Lighting.model,
            state.Lighting.lights,
            state.ClipPlane,
            state.Cue};
}

PixelBox MaskInTarget(const BatchKey& key) {
    return IntersectionOf(BoxInTarget(key, key.raster.mask), key.window);
}

bool PrepareDriver(const BatchKey& key, unsigned image) {
    const PixelBox mask = MaskInTarget(key);
    if (mask.empty())
        return false;
    const RasterState& raster = key.raster;
    DriverState wanted;
    wanted.framebuffer = key.framebuffer;
    wanted.viewport = BoxInTarget(key, raster.viewport);
    wanted.scissor = mask;
    wanted.nearDepth = static_cast<float>(raster.nearDepth) / FarthestDepth;
    wanted.farDepth = static_cast<float>(raster.farDepth) / FarthestDepth;
    wanted.depthTest = raster.depthTest;
    wanted.depthFunction = raster.depthFunction;
    wanted.depthWrite = raster.depthWrite;
    wanted.colourMask = raster.colourMask;
    wanted.sourceFactor = raster.sourceFactor;
    wanted.destinationFactor = raster.destinationFactor;
    if (key.shape == Shape::Glyphs && !key.overlay) {
        wanted.sourceFactor = BF_SA;
        wanted.destinationFactor = BF_MSA;
    }
    if (key.shape == Shape::Glyphs && key.overlay)
        wanted.colourMask = 1 | 4; // the index beneath stays
    wanted.cullBack = raster.cullBack;
    wanted.clockwiseFronts = raster.clockwiseFronts;
    wanted.alphaToCoverage = raster.alphaToCoverage && key.target->samples() > 1;
    wanted.multisample = raster.multisample;
    // Lines drawn along the edges of filled polygons must not be hidden by them.
    wanted.polygonOffset = raster.depthTest && raster.behindLines && !key.pixelExact;
    const int distances = __builtin_popcount(raster.clipPlanes) + raster.facingLines;
    wanted.clipPlanes = static_cast<uint8_t>((1 << distances) - 1);
    wanted.texture = key.projectionVersion == UnitProjection ? image : FindTexture(key.texture);
    ApplyDriverState(wanted);
    return true;
}

int MarginOf(const RasterState& raster) {
    return 2 + static_cast<int>(std::ceil(std::max(raster.lineWidth, raster.pointSize) * DrawingScale()));
}

} // namespace gl
