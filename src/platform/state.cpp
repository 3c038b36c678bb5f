#include "platform/state.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

#include "platform/batch.h"
#include "platform/definitions.h"
#include "platform/drawing_state.h"
#include "platform/recorder.h"
#include "platform/vertices.h"

namespace gl {

namespace {

constexpr size_t MostViews = 16;

std::map<int, std::array<int32_t, 16>> Patterns;
std::map<int, uint16_t> LineStyles;

int16_t Short(int value) {
    return static_cast<int16_t>(std::clamp(value, -32768, 32767));
}

// Gives one field of the drawing state a new value.
template <typename Field, typename Value>
void Set(Field& field, Value value) {
    const auto converted = static_cast<Field>(value);
    if (field == converted)
        return;
    field = converted;
    StateChanged = true;
}

RasterState& Raster() {
    return State().Raster;
}

} // namespace

void viewport(int left, int right, int bottom, int top) {
    if (RecordCommand([=] { viewport(left, right, bottom, top); }))
        return;
    Raster().viewport = Raster().mask = {Short(left), Short(right), Short(bottom), Short(top)};
    StateChanged = true;
}

void getviewport(int16_t* left, int16_t* right, int16_t* bottom, int16_t* top) {
    const ScreenBox& box = Raster().viewport;
    *left = box.left;
    *right = box.right;
    *bottom = box.bottom;
    *top = box.top;
}

void pushviewport() {
    if (RecordCommand([] { pushviewport(); }))
        return;
    DrawingState& state = State();
    if (state.ViewStack.size() == MostViews) {
        std::fprintf(stderr, "Graphics: the viewport stack is full\n");
        return;
    }
    state.ViewStack.push_back(
        {state.Raster.viewport, state.Raster.mask, state.Raster.nearDepth, state.Raster.farDepth});
}

void popviewport() {
    if (RecordCommand([] { popviewport(); }))
        return;
    DrawingState& state = State();
    if (state.ViewStack.empty()) {
        std::fprintf(stderr, "Graphics: the viewport stack is empty\n");
        return;
    }
    const auto& saved = state.ViewStack.back();
    state.Raster.viewport = saved.viewport;
    state.Raster.mask = saved.mask;
    state.Raster.nearDepth = saved.nearDepth;
    state.Raster.farDepth = saved.farDepth;
    state.ViewStack.pop_back();
    StateChanged = true;
}

void scrmask(int left, int right, int bottom, int top) {
    if (RecordCommand([=] { scrmask(left, right, bottom, top); }))
        return;
    Raster().mask = {Short(left), Short(right), Short(bottom), Short(top)};
    StateChanged = true;
}

void getscrmask(int16_t* left, int16_t* right, int16_t* bottom, int16_t* top) {
    const ScreenBox& box = Raster().mask;
    *left = box.left;
    *right = box.right;
    *bottom = box.bottom;
    *top = box.top;
}

void zbuffer(bool on) {
    if (!RecordSetting(DepthTestSetting, on, [=] { zbuffer(on); }))
        Set(Raster().depthTest, on);
}

bool getzbuffer() {
    return Raster().depthTest;
}

void zfunction(int function) {
    if (!RecordCommand([=] { zfunction(function); }) && function >= ZF_NEVER && function <= ZF_ALWAYS)
        Set(Raster().depthFunction, function);
}

void zwritemask(uint32_t mask) {
    if (!RecordCommand([=] { zwritemask(mask); }))
        Set(Raster().depthWrite, mask != 0);
}

void lsetdepth(int32_t nearDepth, int32_t farDepth) {
    if (RecordCommand([=] { lsetdepth(nearDepth, farDepth); }))
        return;
    Set(Raster().nearDepth, std::clamp(nearDepth, 0, FarthestDepth));
    Set(Raster().farDepth, std::clamp(farDepth, 0, FarthestDepth));
}

void wmpack(uint32_t mask) {
    if (RecordCommand([=] { wmpack(mask); }))
        return;
    uint8_t channels = 0;
    for (int i = 0; i < 4; i++)
        if (mask >> 8 * i & 0xFF)
            channels |= static_cast<uint8_t>(1 << i);
    Set(Raster().colourMask, channels);
}

void blendfunction(int sourceFactor, int destinationFactor) {
    if (RecordCommand([=] { blendfunction(sourceFactor, destinationFactor); }))
        return;
    Set(Raster().sourceFactor, std::clamp<int>(sourceFactor, BF_ZERO, BF_MDA));
    Set(Raster().destinationFactor, std::clamp<int>(destinationFactor, BF_ZERO, BF_MDA));
}

void afunction(int reference, int function) {
    if (RecordCommand([=] { afunction(reference, function); }) || function < AF_NEVER || function > AF_ALWAYS)
        return;
    Set(Raster().alphaFunction, function);
    Set(Raster().alphaReference, function == AF_ALWAYS ? 0 : std::clamp(reference, 0, 255));
}

void msalpha(int mode) {
    if (!RecordCommand([=] { msalpha(mode); }))
        Set(Raster().alphaToCoverage, mode == MSA_ALPHA);
}

void shademodel(int model) {
    if (!RecordCommand([=] { shademodel(model); }))
        Set(Raster().flat, model == FLAT);
}

void backface(bool on) {
    if (!RecordSetting(CullingSetting, on, [=] { backface(on); }))
        Set(Raster().cullBack, on);
}

void clockwisefronts(bool on) {
    if (!RecordCommand([=] { clockwisefronts(on); }))
        Set(Raster().clockwiseFronts, on);
}

bool getbackface() {
    return Raster().cullBack;
}

void behindlines(bool on) {
    if (!RecordCommand([=] { behindlines(on); }))
        Set(Raster().behindLines, on);
}

void defpattern(int index, int size, const uint16_t* rows) {
    if (index < 1 || index > 0xFFFF || (size != 16 && size != 32 && size != 64)) {
        std::fprintf(stderr, "Graphics: pattern %d of size %d cannot be defined\n", index, size);
        return;
    }
    std::array<int32_t, 16> pattern;
    for (int row = 0; row < 16; row++)
        pattern[row] = rows[row * (size / 16)];
    const auto found = Patterns.find(index);
    if (found != Patterns.end() && found->second == pattern)
        return;
    FlushDrawing();
    Patterns[index] = pattern;
}

const std::array<int32_t, 16>* FindPattern(int index) {
    const auto found = index > 0 ? Patterns.find(index) : Patterns.end();
    return found == Patterns.end() ? nullptr : &found->second;
}

void ForgetPatterns() {
    Patterns.clear();
    LineStyles.clear();
}

void setpattern(int index) {
    if (!RecordSetting(PatternSetting, index, [=] { setpattern(index); }))
        Set(Raster().pattern, index < 0 || index > 0xFFFF ? 0 : index);
}

int getpattern() {
    return Raster().pattern;
}

void linewidth(int width) {
    linewidthf(static_cast<float>(width));
}

void linewidthf(float width) {
    if (!RecordCommand([=] { linewidthf(width); }))
        Set(Raster().lineWidth, std::max(width, 1.0f));
}

void pntsize(int size) {
    if (!RecordCommand([=] { pntsize(size); }))
        Set(Raster().pointSize, static_cast<float>(std::max(size, 1)));
}

void facinglines(bool on) {
    if (!RecordCommand([=] { facinglines(on); }))
        Set(Raster().facingLines, on);
}

void deflinestyle(int index, uint16_t bits) {
    if (index < 1 || index > 0xFFFF) {
        std::fprintf(stderr, "Graphics: line style %d cannot be defined\n", index);
        return;
    }
    const auto found = LineStyles.find(index);
    if (found != LineStyles.end() && found->second == bits)
        return;
    FlushDrawing();
    LineStyles[index] = bits;
}

uint16_t FindLineStyle(int index) {
    const auto found = index > 0 ? LineStyles.find(index) : LineStyles.end();
    return found == LineStyles.end() ? 0xFFFF : found->second;
}

void setlinestyle(int index) {
    if (!RecordCommand([=] { setlinestyle(index); }))
        Set(Raster().lineStyle, index < 0 || index > 0xFFFF ? 0 : index);
}

int getlstyle() {
    return Raster().lineStyle;
}

void linesmooth(int mode) {
    if (!RecordCommand([=] { linesmooth(mode); }))
        Set(Raster().lineSmoothing, mode & (SML_ON | SML_SMOOTHER));
}

void subpixel(bool) {}

void depthcue(bool on) {
    if (!RecordCommand([=] { depthcue(on); }))
        Set(Raster().depthCue, on);
}

void lRGBrange(int minRed, int minGreen, int minBlue, int maxRed, int maxGreen, int maxBlue, int32_t nearDepth,
               int32_t farDepth) {
    if (RecordCommand([=] { lRGBrange(minRed, minGreen, minBlue, maxRed, maxGreen, maxBlue, nearDepth, farDepth); }))
        return;
    DrawingState& state = State();
    auto part = [](int value) { return static_cast<float>(std::clamp(value, 0, 255)) / 255; };
    state.Cue.farColour = {part(minRed), part(minGreen), part(minBlue)};
    state.Cue.nearColour = {part(maxRed), part(maxGreen), part(maxBlue)};
    state.Cue.nearDepth = nearDepth;
    state.Cue.farDepth = farDepth;
    state.CueVersion = NewVersion();
    StateChanged = true;
}

void clipplane(int index, int mode, const float* coefficients) {
    if (index < 0 || index >= ClipPlanes) {
        std::fprintf(stderr, "Graphics: there is no clip plane %d\n", index);
        return;
    }
    DrawingState& state = State();
    if (mode != CP_DEFINE) {
        if (RecordCommand([=] { clipplane(index, mode, nullptr); }))
            return;
        const uint8_t bit = static_cast<uint8_t>(1 << index);
        Set(state.Raster.clipPlanes, mode == CP_ON ? state.Raster.clipPlanes | bit : state.Raster.clipPlanes & ~bit);
        return;
    }
    const std::array<float, 4> plane = {coefficients[0], coefficients[1], coefficients[2], coefficients[3]};
    if (RecordCommand([=] { clipplane(index, CP_DEFINE, plane.data()); }))
        return;
    // A point p = q M satisfies (a b c d) . q >= 0, so the plane of p is M's inverse times the column (a b c d).
    Matrix4 inverse;
    Invert(EffectiveViewing(), inverse);
    for (int row = 0; row < 4; row++)
        state.ClipPlane[index][row] = inverse[4 * row] * plane[0] + inverse[4 * row + 1] * plane[1] +
                                      inverse[4 * row + 2] * plane[2] + inverse[4 * row + 3] * plane[3];
    state.ClipVersion = NewVersion();
    StateChanged = true;
}

void scrsubdivide(int, const float*) {}

} // namespace gl
