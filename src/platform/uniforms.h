// What a batch tells its program: which variant it needs, and the values of its uniforms. For the layer's own modules.
#pragma once

#include "platform/batch_key.h"
#include "platform/shaders.h"

namespace gl {

// The variant for a batch of which some vertices are lit by that many materials, or none (0).
ShaderVariant VariantFor(const BatchKey& key, const BatchContents& contents, int materials);

// Sets the uniforms of the program, which is bound, except those whose values it has already.
void UploadUniforms(Program& program, const ShaderVariant& variant, const BatchKey& key, const BatchContents& contents,
                    const MaterialPalette& palette);
void UploadMatrix(int location, const Matrix4& matrix);

} // namespace gl
