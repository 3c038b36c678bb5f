#include "platform/uniforms.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include "platform/definitions.h"

namespace gl {

namespace {

void UploadMaterials(Program& program, const BatchContents& contents, const MaterialPalette& palette) {
    const ModelDefinition* model = FindModelDefinition(contents.model);
    Rgb ambient = model ? model->ambient : Rgb{0, 0, 0};
    for (const BoundLight& light : contents.lights)
        if (const LightDefinition* definition = FindLightDefinition(light.definition))
            for (int i = 0; i < 3; i++)
                ambient[i] += definition->ambient[i];
    float values[12 * MaterialSlots];
    const int count = std::max(palette.count, 1);
    for (int i = 0; i < count; i++) {
        const MaterialDefinition* material = FindMaterialDefinition(i < palette.count ? palette.materials[i] : 0);
        const MaterialDefinition absent;
        const MaterialDefinition& m = material ? *material : absent;
        float* v = values + 12 * i;
        for (int c = 0; c < 3; c++) {
            v[c] = m.emission[c] + ambient[c] * m.ambient[c];
            v[4 + c] = m.diffuse[c];
            v[8 + c] = m.specular[c];
        }
        v[3] = m.alpha;
        v[7] = m.shininess;
        v[11] = 0;
    }
    glUniform4fv(program.materials, 3 * count, values);
}

void UploadLights(Program& program, const BatchContents& contents) {
    float direction[4 * LightSources], half[3 * LightSources], colour[3 * LightSources];
    int count = 0;
    for (const BoundLight& light : contents.lights) {
        const LightDefinition* definition = FindLightDefinition(light.definition);
        if (!definition)
            continue;
        float p[4];
        std::copy(light.position.begin(), light.position.end(), p);
        const float length = std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]);
        if (p[3] == 0 && length > 0)
            for (int i = 0; i < 3; i++)
                p[i] /= length;
        else if (p[3] != 0) {
            for (int i = 0; i < 3; i++)
                p[i] /= p[3];
            p[3] = 1;
        }
        const float h[3] = {p[0], p[1], p[2] + 1};
        const float halfLength = std::sqrt(h[0] * h[0] + h[1] * h[1] + h[2] * h[2]);
        for (int i = 0; i < 3; i++) {
            direction[4 * count + i] = p[i];
            half[3 * count + i] = halfLength > 0 ? h[i] / halfLength : 0;
            colour[3 * count + i] = definition->colour[i];
        }
        direction[4 * count + 3] = p[3];
        count++;
    }
    if (count) {
        glUniform4fv(program.lightDirection, count, direction);
        glUniform3fv(program.lightHalf, count, half);
        glUniform3fv(program.lightColour, count, colour);
    }
}

} // namespace

void UploadMatrix(int location, const Matrix4& matrix) {
    float values[16];
    for (int i = 0; i < 16; i++)
        values[i] = static_cast<float>(matrix[i]);
    glUniformMatrix4fv(location, 1, false, values);
}

ShaderVariant VariantFor(const BatchKey& key, const BatchContents& contents, int materials) {
    ShaderVariant variant;
    const RasterState& raster = key.raster;
    if (materials > 0) {
        variant.lit = true;
        for (const BoundLight& light : contents.lights)
            if (FindLightDefinition(light.definition)) {
                variant.lights++;
                variant.localLights |= light.position[3] != 0;
            }
        const ModelDefinition* model = FindModelDefinition(contents.model);
        variant.twoSided = key.shape == Shape::Triangles && model && model->twoSided != 0 && !raster.cullBack;
        variant.manyMaterials = materials > 1;
    }
    variant.environment = static_cast<uint8_t>(key.shape == Shape::Picture ? 1 : key.environment);
    variant.text = key.shape == Shape::Glyphs;
    variant.index = key.overlay;
    variant.flat = raster.flat;
    variant.pattern = FindPattern(raster.pattern) != nullptr;
    variant.alphaTest = raster.alphaFunction != AF_ALWAYS;
    variant.lines = key.shape == Shape::WideSegments;
    variant.dashed = variant.lines && FindLineStyle(raster.lineStyle) != 0xFFFF;
    variant.smooth = variant.lines && raster.lineSmoothing != SML_OFF && !key.overlay;
    variant.depthCue = raster.depthCue;
    variant.clipPlanes = raster.clipPlanes;
    variant.facingLines = raster.facingLines;
    return variant;
}

void UploadUniforms(Program& program, const ShaderVariant& variant, const BatchKey& key, const BatchContents& contents,
                    const MaterialPalette& palette) {
    const RasterState& raster = key.raster;
    const float scale = static_cast<float>(DrawingScale());
    if (program.projectionVersion != key.projectionVersion || !program.used) {
        UploadMatrix(program.projection, contents.projection);
        program.projectionVersion = key.projectionVersion;
    }
    if (variant.lit) {
        UploadMaterials(program, contents, palette);
        if (program.lightingVersion != key.lightingVersion || program.lightingDefinitions != key.lightingDefinitions ||
            !program.used) {
            UploadLights(program, contents);
            program.lightingVersion = key.lightingVersion;
            program.lightingDefinitions = key.lightingDefinitions;
        }
    }
    if (variant.environment && (program.textureMatrixVersion != key.textureMatrixVersion || !program.used)) {
        UploadMatrix(program.textureMatrix, contents.textureMatrix);
        program.textureMatrixVersion = key.textureMatrixVersion;
    }
    if (!program.used) {
        glUniform1i(program.texture, 0);
        glUniform1f(program.pixelScale, scale);
        program.used = true;
    }
    if (key.shape == Shape::Points)
        glUniform1f(program.pointSize, raster.pointSize * scale);
    if (variant.pattern) {
        glUniform1iv(program.pattern, 16, FindPattern(raster.pattern)->data());
        glUniform2f(program.patternOrigin, static_cast<float>(ToPixels(key.originX)),
                    static_cast<float>(ToPixels(key.originY)));
    }
    if (variant.alphaTest)
        glUniform2f(program.alphaTest, raster.alphaReference, raster.alphaFunction);
    if (variant.lines) {
        const PixelBox box = BoxInTarget(key, raster.viewport);
        const float width = std::max(raster.lineWidth * scale, 1.0f);
        glUniform4f(program.lineSize, 0.5f * static_cast<float>(box.width), 0.5f * static_cast<float>(box.height),
                    0.5f * width, scale);
        glUniform1i(program.lineStyle, FindLineStyle(raster.lineStyle));
    }
    if (variant.depthCue) {
        const float range = static_cast<float>(contents.cue.farDepth - contents.cue.nearDepth) / FarthestDepth;
        glUniform4f(program.cue, static_cast<float>(contents.cue.nearDepth) / FarthestDepth,
                    range != 0 ? 1 / range : 0.0f, 0, 0);
        float colours[6];
        std::copy(contents.cue.nearColour.begin(), contents.cue.nearColour.end(), colours);
        std::copy(contents.cue.farColour.begin(), contents.cue.farColour.end(), colours + 3);
        glUniform3fv(program.cueColours, 2, colours);
    }
    if (variant.clipPlanes) {
        float planes[4 * ClipPlanes];
        int count = 0;
        for (int i = 0; i < ClipPlanes; i++)
            if (raster.clipPlanes & (1 << i)) {
                for (int k = 0; k < 4; k++)
                    planes[4 * count + k] = static_cast<float>(contents.clip[i][k]);
                count++;
            }
        glUniform4fv(program.clip, count, planes);
    }
}

} // namespace gl
