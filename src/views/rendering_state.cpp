#include "views/rendering_state.h"

#include "gooey/messages.h"
#include "gooey/window.h"
#include "materials/material_definitions.h"
#include "platform/capabilities.h"
#include "platform/drawing.h"
#include "platform/lighting.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "platform/textures.h"
#include "store/storage.h"
#include "views/capabilities.h"
#include "views/display_flags.h"
#include "views/moves.h"
#include "views/view_transform.h"

#include <algorithm>
#include <cstdlib>

int DoSubDivide;

namespace {

constexpr int WhiteLightIndex = 1, GreyLightIndex = 2, LightingModelIndex = 1, ModulateEnvironment = 1;
constexpr int InterfaceGreyMaterial = 7;

// Screen-door patterns: one without pixels, one with the fewest, and eighths of the pixels from the next on.
constexpr int EmptyPattern = 3, SparsePattern = 4, FirstEighthPattern = 5, LastEighthPattern = 11;
// For what is not to be seen at all, of the toolkit's checkerboards.
constexpr int TransparentPattern = 1;

int BlendingOn;
int SmoothLinesOn;
int SubdivisionOn;

struct ScreenMask {
    std::int16_t Left, Right, Bottom, Top;
};

constexpr int DeepestScreenMask = 16;
ScreenMask ScreenMasks[DeepestScreenMask];
int ScreenMaskDepth;

/// The rank of a pixel in an 8 x 8 ordered dither: pixels below a rank are spread evenly, whatever the rank.
int DitherRank(int x, int y) {
    int rank = 0;
    for (int bit = 0; bit < 3; ++bit) {
        const int column = x >> bit & 1, row = y >> bit & 1;
        rank = rank << 2 | (column ^ row) << 1 | row;
    }
    return rank;
}

/// A pattern with that many of every 64 pixels drawn.
void DefineHalftone(int pattern, int pixels) {
    std::uint16_t rows[16] = {};
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            if (DitherRank(x & 7, y & 7) < pixels)
                rows[y] = static_cast<std::uint16_t>(rows[y] | 1 << x);
    gl::defpattern(pattern, 16, rows);
}

std::int32_t FarthestDepthValue() {
    static const std::int32_t farthest = gl::getgdesc(gl::GD_ZMAX);
    return farthest;
}

/// Puts a light where it always is: fixed to the eye.
void BindLight(int light) {
    gl::pushmatrix();
    LoadGLMatrix(IdentityMatrix);
    gl::lmbind(gl::LIGHT0, light);
    gl::popmatrix();
}

int ScreenDoorOf(float alpha) {
    if (!(alpha < 1))
        return 0;
    if (alpha <= 0)
        return TransparentPattern;
    const int pattern = FirstEighthPattern + static_cast<int>(8 * alpha);
    return pattern > LastEighthPattern ? 0 : pattern;
}

void Subdivide(int on) {
    if (on) {
        const auto farthest = static_cast<float>(FarthestDepthValue());
        const bool coarse = Moving && !ObjectIsolated;
        const float parameters[3] = {farthest / (coarse ? 10000 : 100000), coarse ? 12.0f : 6.0f, 0};
        gl::scrsubdivide(gl::SS_DEPTH, parameters);
    } else if (SubdivisionOn) {
        gl::scrsubdivide(gl::SS_OFF, nullptr);
    }
    SubdivisionOn = on;
}

[[noreturn]] void EndForScreenMasks(const char* message) {
    ErrorMessage(message);
    std::exit(666);
}

} // namespace

void InitGraphics() {
    gl::mmode(gl::MVIEWING);
    gl::backface(false);
    gl::zbuffer(false);
    DefineHalftone(EmptyPattern, 0);
    DefineHalftone(SparsePattern, 1);
    for (int pattern = FirstEighthPattern; pattern <= LastEighthPattern; ++pattern)
        DefineHalftone(pattern, (pattern - FirstEighthPattern + 1) * 8);
    int index = 0;
    for (const float* properties : InterfaceMaterials)
        gl::lmdef(gl::DEFMATERIAL, ++index, 0, properties);
    if (TextureAvailable)
        gl::tevdef(ModulateEnvironment, gl::TV_MODULATE);
}

void SetLighting() {
    gl::lmdef(gl::DEFLMODEL, LightingModelIndex, 0, TwoSideLightingAvailable ? LightingTwo : Lighting);
    gl::lmbind(gl::LMODEL, LightingModelIndex);
    gl::lmdef(gl::DEFLIGHT, WhiteLightIndex, 0, WhiteLight);
    gl::lmdef(gl::DEFLIGHT, GreyLightIndex, 0, GreyLight);
    NormalLight();
    if (MaterialsNeedDefining) {
        RedefineMaterials();
        MaterialsNeedDefining = 0;
    }
    if (TextureAvailable) {
        gl::mmode(gl::MTEXTURE);
        LoadGLMatrix(IdentityMatrix);
        gl::mmode(gl::MVIEWING);
    }
}

void NormalLight() {
    BindLight(WhiteLightIndex);
}

void DimLight() {
    BindLight(GreyLightIndex);
}

void BindMaterial(const Material* material) {
    gl::lmbind(gl::MATERIAL, material ? material->GLIndex : InterfaceGreyMaterial);
    if (!BlendingAvailable && BlendingOn)
        gl::setpattern(material ? ScreenDoorOf(material->Alpha) : 0);
}

void BindTexture(const Texture* texture) {
    if (!texture) {
        gl::tevbind(0, 0);
        gl::texbind(0, 0);
        if (SubdivisionOn)
            Subdivide(0);
        return;
    }
    gl::tevbind(0, ModulateEnvironment);
    gl::texbind(0, texture->GLId);
    if (DoSubDivide)
        Subdivide(1);
}

void Blending(int on) {
    on = on != 0;
    if (on == BlendingOn)
        return;
    BlendingOn = on;
    if (!BlendingAvailable) {
        if (!on)
            gl::setpattern(0);
        return;
    }
    if (on)
        gl::blendfunction(gl::BF_SA, gl::BF_MSA);
    else
        gl::blendfunction(gl::BF_ONE, gl::BF_ZERO);
    if (MultiSampling)
        gl::msalpha(on ? gl::MSA_ALPHA : gl::MSA_MASK_ONE);
}

void TextureBlending(int on) {
    if (on && !MultiSampling && AlphaFunctionAvailable)
        Blending(1);
    TextureCutting(on);
}

void TextureCutting(int on) {
    if (MultiSampling || !AlphaFunctionAvailable)
        return;
    if (!on)
        gl::afunction(0, gl::AF_ALWAYS);
    else if (AlphaTest64Usable)
        gl::afunction(64, gl::AF_GREATER);
    else
        gl::afunction(0, gl::AF_NOTEQUAL);
}

void LineAntialiasing(int on) {
    if (ItsARealityEngine && MultiSampling)
        return;
    if (on && LineSmoothingAvailable) {
        gl::linesmooth(gl::SML_ON | gl::SML_SMOOTHER);
        gl::blendfunction(gl::BF_SA, gl::BF_ONE);
        SmoothLinesOn = 1;
    } else if (!on && SmoothLinesOn) {
        gl::linesmooth(gl::SML_OFF);
        gl::blendfunction(gl::BF_ONE, gl::BF_ZERO);
        SmoothLinesOn = 0;
    }
}

void Subpixelling(int on) {
    gl::subpixel(on != 0);
}

void cls(std::uint32_t colour) {
    gl::czclear(colour, FarthestDepthValue());
}

int PushScrmask(int x, int y, int width, int height) {
    if (ScreenMaskDepth == DeepestScreenMask)
        EndForScreenMasks("Scrmask stack overflow!");
    ScreenMask& saved = ScreenMasks[ScreenMaskDepth++];
    gl::getscrmask(&saved.Left, &saved.Right, &saved.Bottom, &saved.Top);
    const int left = std::max<int>(saved.Left, x), right = std::min<int>(saved.Right, x + width - 1);
    const int bottom = std::max<int>(saved.Bottom, y), top = std::min<int>(saved.Top, y + height - 1);
    if (left > right || bottom > top)
        return 0;
    gl::scrmask(left, right, bottom, top);
    return 1;
}

void PopScrmask() {
    if (ScreenMaskDepth == 0)
        EndForScreenMasks("Scrmask stack underflow!");
    const ScreenMask& saved = ScreenMasks[--ScreenMaskDepth];
    gl::scrmask(saved.Left, saved.Right, saved.Bottom, saved.Top);
}
