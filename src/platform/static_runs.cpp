#include "platform/static_runs.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

#include "platform/batch_key.h"
#include "platform/definitions.h"
#include "platform/driver_state.h"
#include "platform/recording_data.h"
#include "platform/uniforms.h"
#include "platform/vertices.h"

namespace gl {

namespace {

// What the run drawn last has left set, so that one of the same recording right after it needs little more than the
// call. What lies on a wall, say, is drawn with other write masks than the wall, again and again.
struct Setting {
    bool known = false;
    long bindingChanges = 0, batchesSent = 0; // at that time
    BatchKey key;
    Matrix4 viewing;
    unsigned arrays = 0;
    const std::vector<int>* materials = nullptr;
    int boundMaterial = 0;
    bool lit = false;
    PixelBox reach;
} Last;

bool GeneratesTexture() {
    const DrawingState& state = State();
    return state.Textures.generation[0].on || state.Textures.generation[1].on;
}

bool FollowsLast(const StaticRun& run, const BatchKey& wanted) {
    if (!Last.known || Last.bindingChanges != BindingChanges() || Last.batchesSent != BatchesSent() ||
        Last.arrays != run.arrays || Last.materials != run.materials || Last.lit != run.lit ||
        Last.boundMaterial != State().Lighting.material || Last.viewing != EffectiveViewing() || GeneratesTexture())
        return false;
    BatchKey key = Last.key;
    key.raster.depthWrite = wanted.raster.depthWrite;
    key.raster.colourMask = wanted.raster.colourMask;
    return key == wanted;
}

enum class Clipped { Nothing, Something, Everything };

// What the clip planes that are on take away of a box in the coordinates of the recording.
Clipped ByClipPlanes(const StaticRun& run) {
    const DrawingState& state = State();
    const Matrix4& viewing = EffectiveViewing();
    Clipped clipped = Clipped::Nothing;
    for (int i = 0; i < ClipPlanes; i++) {
        if (!(state.Raster.clipPlanes >> i & 1))
            continue;
        const std::array<double, 4>& plane = state.ClipPlane[i];
        double least = 0, most = 0, scale = 0;
        for (int row = 0; row < 4; row++) {
            double factor = 0;
            for (int k = 0; k < 4; k++)
                factor += viewing[4 * row + k] * plane[k];
            const double a = factor * (row < 3 ? run.low[row] : 1), b = factor * (row < 3 ? run.high[row] : 1);
            least += std::min(a, b);
            most += std::max(a, b);
            scale += std::max(std::abs(a), std::abs(b));
        }
        // Rounding must not take away what lies just on the plane.
        const double slack = 1e-6 * scale;
        if (most < -slack)
            return Clipped::Everything;
        if (least < -slack)
            clipped = Clipped::Something;
    }
    return clipped;
}

// The materials of a run that is lit; none when it is not, or when none of them is defined.
MaterialPalette PaletteOf(const StaticRun& run, const BatchKey& key) {
    const LightingState& lighting = State().Lighting;
    MaterialPalette palette;
    palette.count = 0;
    if (!run.lit || !run.materials || !FindModelDefinition(lighting.model) || key.overlay)
        return palette;
    bool defined = false;
    for (int material : *run.materials) {
        palette.materials[palette.count] = material == InheritedMaterial ? lighting.material : material;
        defined |= FindMaterialDefinition(palette.materials[palette.count++]) != nullptr;
    }
    if (!defined)
        palette.count = 0;
    return palette;
}

void UploadGeneration(const Program& program, const StaticRun& run) {
    float planes[8];
    for (int i = 0; i < 2; i++) {
        const TextureState::Generation& generation = State().Textures.generation[i];
        std::array<double, 4> plane = generation.plane;
        if (generation.mode == TG_LINEAR)
            plane[3] += plane[0] * run.origin[0] + plane[1] * run.origin[1] + plane[2] * run.origin[2];
        for (int k = 0; k < 4; k++)
            planes[4 * i + k] = static_cast<float>(plane[k]);
    }
    glUniform4fv(program.generationPlanes, 2, planes);
}

void UploadViewing(const Program& program, const StaticRun& run) {
    const Matrix4& viewing = EffectiveViewing();
    // Positions are relative to a point near them, or near the eye, so that small numbers meet small numbers.
    std::array<double, 3> reference = run.origin;
    Matrix4 inverse;
    if (run.precise && Invert(viewing, inverse))
        for (int i = 0; i < 3; i++)
            reference[i] = inverse[12 + i];
    Matrix4 relative = viewing;
    for (int i = 0; i < 4; i++)
        relative[12 + i] =
            reference[0] * viewing[i] + reference[1] * viewing[4 + i] + reference[2] * viewing[8 + i] + viewing[12 + i];
    UploadMatrix(program.viewing, relative);
    if (run.precise) {
        float high[3], low[3];
        for (int i = 0; i < 3; i++) {
            const double offset = reference[i] - run.origin[i];
            high[i] = static_cast<float>(offset);
            low[i] = static_cast<float>(offset - high[i]);
        }
        glUniform3fv(program.reference, 1, high);
        glUniform3fv(program.referenceRest, 1, low);
    }
    float normals[9];
    NormalMatrix(viewing, normals);
    glUniformMatrix3fv(program.normalMatrix, 1, false, normals);
}

// Driver, program, uniforms and buffers for a run; false when nothing of it is to be seen.
bool Prepare(const StaticRun& run, const BatchKey& key) {
    Last.known = false;
    const BatchContents contents = ContentsOf(key);
    const Matrix4 toUnitCube = Product(EffectiveViewing(), contents.projection);
    const PixelBox viewport = BoxInTarget(key, key.raster.viewport);
    const int margin = MarginOf(key.raster);
    if (BoxIsOutside(toUnitCube, run.low.data(), run.high.data(), viewport, margin) || !PrepareDriver(key, 0))
        return false;
    const MaterialPalette palette = PaletteOf(run, key);
    ShaderVariant variant = VariantFor(key, contents, palette.count);
    variant.recorded = true;
    variant.precise = run.precise;
    const TextureState::Generation* generation = State().Textures.generation.data();
    if (variant.environment && generation[0].on && generation[1].on)
        variant.generation = static_cast<uint8_t>(generation[0].mode);
    Program& program = ProgramFor(variant);
    BindProgram(program.name);
    UploadUniforms(program, variant, key, contents, palette);
    UploadViewing(program, run);
    if (variant.generation == TG_LINEAR || variant.generation == TG_CONTOUR)
        UploadGeneration(program, run);
    BindArrays(run.arrays);
    PixelBox reach;
    if (key.shown)
        reach = IntersectionOf(ReachOfBox(toUnitCube, run.low.data(), run.high.data(), viewport, margin),
                               MaskInTarget(key));
    Last = {!GeneratesTexture(), BindingChanges(),          BatchesSent(), key,  EffectiveViewing(), run.arrays,
            run.materials,       State().Lighting.material, run.lit,       reach};
    return true;
}

// Gives every vertex one colour.
void TakeOneColour(uint32_t colour) {
    auto part = [colour](int shift) { return static_cast<float>(colour >> shift & 255) / 255; };
    glDisableVertexAttribArray(ColourAttribute);
    glVertexAttrib4f(ColourAttribute, part(0), part(8), part(16), part(24));
}

} // namespace

void DrawStaticRun(const StaticRun& run) {
    if (!HasSurface())
        return;
    FlushDrawing();
    BatchKey key = KeyFor(run.shape);
    const Clipped clipped = key.raster.clipPlanes ? ByClipPlanes(run) : Clipped::Nothing;
    if (clipped == Clipped::Everything)
        return;
    if (clipped == Clipped::Nothing) {
        key.raster.clipPlanes = 0;
        key.clipVersion = 0;
    }
    if (FollowsLast(run, key) ? !PrepareDriver(key, 0) : !Prepare(run, key))
        return;
    if (run.oneColour)
        TakeOneColour(*run.oneColour);
    glDrawElements(run.mode, run.indexCount, GL_UNSIGNED_INT, reinterpret_cast<const void*>(run.firstIndex));
    if (run.oneColour)
        glEnableVertexAttribArray(ColourAttribute);
    if (!key.shown)
        return;
    key.target->resolve(Buffer::Front, Last.reach);
    if (SurfaceDamaged && !Last.reach.empty())
        SurfaceDamaged(*key.target, Last.reach);
}

} // namespace gl
