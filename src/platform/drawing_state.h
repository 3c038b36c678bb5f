// The drawing state of one surface, and the one that is current. For the graphics layer's own modules.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "platform/framebuffer.h"
#include "platform/lighting.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "platform/textures.h"

namespace gl {

class Surface;

// 4 x 4 numbers in rows; see matrices.h for what they mean.
using Matrix4 = std::array<double, 16>;

constexpr Matrix4 Identity4 = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr int LightSources = 8;
constexpr int ClipPlanes = 6;
constexpr int32_t FarthestDepth = 0xFFFFFF;

// a b: what multiplying a onto b gives.
Matrix4 Product(const Matrix4& a, const Matrix4& b);
// The inverse; false, and the identity, when there is none.
bool Invert(const Matrix4& matrix, Matrix4& inverse);

// A box in drawing pixels, edges included, as scrmask and viewport take it.
struct ScreenBox {
    int16_t left = 0, right = 0, bottom = 0, top = 0;

    bool operator==(const ScreenBox&) const = default;
};

// What decides how primitives reach the buffers, apart from matrices and lighting. Compared as a whole to merge runs.
struct RasterState {
    ScreenBox viewport, mask;
    int32_t nearDepth = 0, farDepth = FarthestDepth;
    bool depthTest = false;
    uint8_t depthFunction = ZF_LEQUAL;
    bool depthWrite = true;
    uint8_t colourMask = 15; // bits: red, green, blue, alpha
    uint8_t sourceFactor = BF_ONE, destinationFactor = BF_ZERO;
    uint8_t alphaFunction = AF_ALWAYS, alphaReference = 0;
    bool alphaToCoverage = false;
    bool multisample = false;
    bool flat = false;
    bool cullBack = false, clockwiseFronts = false;
    bool behindLines = true;
    uint16_t pattern = 0;
    uint16_t lineStyle = 0;
    float lineWidth = 1;
    uint8_t lineSmoothing = SML_OFF;
    bool facingLines = false;
    float pointSize = 1;
    bool depthCue = false;
    uint8_t clipPlanes = 0; // bits of the planes that are on

    bool operator==(const RasterState&) const = default;
};

struct BoundLight {
    int definition = 0;
    std::array<float, 4> position = {0, 0, 1, 0}; // in eye coordinates

    bool operator==(const BoundLight&) const = default;
};

struct LightingState {
    int material = 0, model = 0;
    std::array<BoundLight, LightSources> lights;
};

struct TextureState {
    int texture = 0, environment = 0;

    struct Generation {
        int mode = TG_LINEAR;
        bool on = false;
        std::array<double, 4> plane = {0, 0, 0, 0}; // in vertex coordinates (TG_LINEAR) or eye coordinates (TG_CONTOUR)
    };

    std::array<Generation, 2> generation;
};

struct DepthCueRange {
    std::array<float, 3> nearColour = {1, 1, 1}, farColour = {0, 0, 0};
    int32_t nearDepth = 0, farDepth = FarthestDepth;
};

struct DrawingState {
    DrawingState() { Viewing.assign(1, Identity4); }

    Surface* Target = nullptr;
    // Requests of the configuration calls, and what was granted.
    bool WantsTwoBuffers = false, WantsRequest = false;
    int WantsSamples = 0, WantsSampleDepth = 0, WantsDepth = 24, WantsStencil = 0;

    bool ToFront = false;
    int Mode = NORMALDRAW;
    bool FullScreen = false;
    ScreenBox SavedViewport, SavedMask;
    Matrix4 SavedProjection = Identity4;
    std::vector<Matrix4> SavedViewing;
    bool SavedPixelExact = false;

    RasterState Raster;

    struct SavedView {
        ScreenBox viewport, mask;
        int32_t nearDepth, farDepth;
    };

    std::vector<SavedView> ViewStack;

    int MatrixMode = MSINGLE;
    std::vector<Matrix4> Viewing;
    Matrix4 Projection = Identity4, Texture = Identity4;
    bool PixelExact = false; // the projection was made by ortho2
    // Numbers that no other contents ever had; they tell batches apart.
    uint32_t ProjectionVersion = 0, TextureMatrixVersion = 0, LightingVersion = 0, ClipVersion = 0, CueVersion = 0;

    LightingState Lighting;
    TextureState Textures;
    std::array<std::array<double, 4>, ClipPlanes> ClipPlane = {}; // in eye coordinates
    DepthCueRange Cue;

    uint32_t Colour = 0xFFFFFFFF;
    int OverlayIndex = 0;
    std::array<float, 3> Normal = {0, 0, 1};
    bool Lit = false; // a normal was given after the last colour
    std::array<float, 2> Texel = {0, 0};
    std::array<double, 3> TextPosition = {0, 0, 0};
    int TextAdvance = 0; // of what was drawn from there since
};

// The state of the current surface; of a scratch one that is never drawn when there is none.
DrawingState& State();

// A number never given before, for the versions above.
uint32_t NewVersion();

// The viewing matrix and the projection that vertices go through, whatever the mode.
const Matrix4& EffectiveViewing();
const Matrix4& EffectiveProjection();

} // namespace gl
