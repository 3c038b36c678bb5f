#include "platform/batch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

#include <epoxy/gl.h>

#include "platform/definitions.h"
#include "platform/driver_state.h"
#include "platform/vertices.h"

namespace gl {

bool StateChanged = true;
BatchArrays Pending;

namespace {

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

BatchKey Key;
BatchContents Contents;
bool Open = false; // Key and Contents describe what is pending or comes next
int Slots[MaterialSlots];
int SlotCount = 0;
unsigned Image = 0;
unsigned Arrays = 0, VertexBuffer = 0, IndexBuffer = 0, LineArrays = 0, LineBuffer = 0, LineIndexBuffer = 0;
int LineIndexCount = 0;
long Sent = 0;

// The version of the projection of shapes that have none.
constexpr uint32_t UnitProjection = 0xFFFFFFFF;

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
    if (shape == Shape::WideSegments || shape == Shape::Segments || shape == Shape::Points)
        key.raster.pattern = 0;
    if (shape != Shape::Triangles)
        key.raster.cullBack = false;
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

void CopyContents() {
    const DrawingState& state = State();
    Contents = {Key.projectionVersion == UnitProjection ? Identity4 : EffectiveProjection(),
                state.Texture,
                state.Lighting.model,
                state.Lighting.lights,
                state.ClipPlane,
                state.Cue};
}

PixelBox BoxInTarget(const BatchKey& key, const ScreenBox& box) {
    const int left = ToPixels(key.originX + box.left), bottom = ToPixels(key.originY + box.bottom);
    return {left, bottom, ToPixels(key.originX + box.right + 1) - left, ToPixels(key.originY + box.top + 1) - bottom};
}

PixelBox MaskInTarget(const BatchKey& key) {
    return IntersectionOf(BoxInTarget(key, key.raster.mask), key.window);
}

ShaderVariant VariantFor(const BatchKey& key, bool lit) {
    ShaderVariant variant;
    const RasterState& raster = key.raster;
    if (lit) {
        variant.lit = true;
        for (const BoundLight& light : Contents.lights)
            if (FindLightDefinition(light.definition)) {
                variant.lights++;
                variant.localLights |= light.position[3] != 0;
            }
        const ModelDefinition* model = FindModelDefinition(Contents.model);
        variant.twoSided = key.shape == Shape::Triangles && model && model->twoSided != 0 && !raster.cullBack;
        variant.manyMaterials = SlotCount > 1;
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
    return variant;
}

void UploadMatrix(int location, const Matrix4& matrix) {
    float values[16];
    for (int i = 0; i < 16; i++)
        values[i] = static_cast<float>(matrix[i]);
    glUniformMatrix4fv(location, 1, false, values);
}

void UploadMaterials(Program& program, const ShaderVariant& variant) {
    const ModelDefinition* model = FindModelDefinition(Contents.model);
    Rgb ambient = model ? model->ambient : Rgb{0, 0, 0};
    for (const BoundLight& light : Contents.lights)
        if (const LightDefinition* definition = FindLightDefinition(light.definition))
            for (int i = 0; i < 3; i++)
                ambient[i] += definition->ambient[i];
    float values[12 * MaterialSlots];
    const int count = variant.manyMaterials ? SlotCount : 1;
    for (int i = 0; i < count; i++) {
        const MaterialDefinition* material = FindMaterialDefinition(i < SlotCount ? Slots[i] : 0);
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

void UploadLights(Program& program) {
    float direction[4 * LightSources], half[3 * LightSources], colour[3 * LightSources];
    int count = 0;
    for (const BoundLight& light : Contents.lights) {
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

void UploadUniforms(Program& program, const ShaderVariant& variant, const BatchKey& key) {
    const RasterState& raster = key.raster;
    const float scale = static_cast<float>(DrawingScale());
    if (program.projectionVersion != key.projectionVersion || !program.used) {
        UploadMatrix(program.projection, Contents.projection);
        program.projectionVersion = key.projectionVersion;
    }
    if (variant.lit) {
        UploadMaterials(program, variant);
        if (program.lightingVersion != key.lightingVersion || program.lightingDefinitions != key.lightingDefinitions ||
            !program.used) {
            UploadLights(program);
            program.lightingVersion = key.lightingVersion;
            program.lightingDefinitions = key.lightingDefinitions;
        }
    }
    if (variant.environment && (program.textureMatrixVersion != key.textureMatrixVersion || !program.used)) {
        UploadMatrix(program.textureMatrix, Contents.textureMatrix);
        program.textureMatrixVersion = key.textureMatrixVersion;
    }
    if (!program.used) {
        glUniform1i(program.texture, 0);
        glUniform1f(program.pixelScale, scale);
        program.used = true;
    }
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
        const float range = static_cast<float>(Contents.cue.farDepth - Contents.cue.nearDepth) / FarthestDepth;
        glUniform4f(program.cue, static_cast<float>(Contents.cue.nearDepth) / FarthestDepth,
                    range != 0 ? 1 / range : 0.0f, 0, 0);
        float colours[6];
        std::copy(Contents.cue.nearColour.begin(), Contents.cue.nearColour.end(), colours);
        std::copy(Contents.cue.farColour.begin(), Contents.cue.farColour.end(), colours + 3);
        glUniform3fv(program.cueColours, 2, colours);
    }
    if (variant.clipPlanes) {
        float planes[4 * ClipPlanes];
        int count = 0;
        for (int i = 0; i < ClipPlanes; i++)
            if (raster.clipPlanes & (1 << i)) {
                for (int k = 0; k < 4; k++)
                    planes[4 * count + k] = static_cast<float>(Contents.clip[i][k]);
                count++;
            }
        glUniform4fv(program.clip, count, planes);
    }
}

// State of the driver for a batch; true when anything can be drawn.
bool PrepareDriver(const BatchKey& key) {
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
    wanted.alphaToCoverage = raster.alphaToCoverage && key.target->samples() > 1;
    wanted.multisample = raster.multisample;
    // Lines drawn along the edges of filled polygons must not be hidden by them.
    wanted.polygonOffset = raster.depthTest && !key.pixelExact && key.shape == Shape::Triangles;
    wanted.clipPlanes = static_cast<uint8_t>((1 << __builtin_popcount(raster.clipPlanes)) - 1);
    wanted.texture = key.projectionVersion == UnitProjection ? Image : FindTexture(key.texture);
    ApplyDriverState(wanted);
    return true;
}

// The box that the pending vertices reach, in screen pixels of the target, grown by what lines and points add.
PixelBox ReachOfVertices(const BatchKey& key) {
    const PixelBox viewport = BoxInTarget(key, key.raster.viewport);
    double low[3] = {1e300, 1e300, 1e300}, high[3] = {-1e300, -1e300, -1e300};
    auto include = [&](const float* p) {
        for (int i = 0; i < 3; i++) {
            low[i] = std::min<double>(low[i], p[i]);
            high[i] = std::max<double>(high[i], p[i]);
        }
    };
    for (int i = 0; i < Pending.count; i++)
        include(Pending.vertices[i].position);
    for (const LineVertex& vertex : Pending.lineVertices)
        include(vertex.vertex.position);
    const int margin = 2 + static_cast<int>(std::ceil(key.raster.lineWidth * DrawingScale()));
    return ReachOfBox(Contents.projection, low, high, viewport, margin);
}

void SendSegments() {
    // Four corners a segment; the indices never change and are made once for the largest piece.
    const int corners = static_cast<int>(Pending.lineVertices.size());
    BindArrays(LineArrays);
    if (corners / 4 * 6 > LineIndexCount) {
        std::vector<uint16_t> indices;
        for (int first = 0; first + 3 < std::max(corners, PieceVertices + 64); first += 4)
            for (int corner : {0, 1, 2, 2, 1, 3})
                indices.push_back(static_cast<uint16_t>(first + corner));
        LineIndexCount = static_cast<int>(indices.size());
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<long>(indices.size() * sizeof indices[0]), indices.data(),
                     GL_STATIC_DRAW);
    }
    glBindBuffer(GL_ARRAY_BUFFER, LineBuffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<long>(corners * sizeof(LineVertex)), Pending.lineVertices.data(),
                 GL_STREAM_DRAW);
    glDrawElements(GL_TRIANGLES, corners / 4 * 6, GL_UNSIGNED_SHORT, nullptr);
}

void SendVertices() {
    BindArrays(Arrays);
    // A new store each time: the driver keeps the former one until it has drawn from it.
    glBindBuffer(GL_ARRAY_BUFFER, VertexBuffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<long>(Pending.count * sizeof(Vertex)), Pending.vertices.data(),
                 GL_STREAM_DRAW);
    if (Key.shape == Shape::Points) {
        glDrawArrays(GL_POINTS, 0, Pending.count);
        return;
    }
    if (Key.shape == Shape::Segments) {
        glDrawArrays(GL_LINES, 0, Pending.count);
        return;
    }
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<long>(Pending.indices.size() * sizeof(uint16_t)),
                 Pending.indices.data(), GL_STREAM_DRAW);
    glDrawElements(GL_TRIANGLES, static_cast<int>(Pending.indices.size()), GL_UNSIGNED_SHORT, nullptr);
}

void SendPending() {
    if (Pending.count == 0 && Pending.lineVertices.empty())
        return;
    Sent++;
    if (PrepareDriver(Key)) {
        const ShaderVariant variant = VariantFor(Key, Pending.lit && SlotCount > 0);
        Program& program = ProgramFor(variant);
        BindProgram(program.name);
        UploadUniforms(program, variant, Key);
        if (Key.shape == Shape::WideSegments)
            SendSegments();
        else
            SendVertices();
        if (Key.shown) {
            const PixelBox reach = IntersectionOf(ReachOfVertices(Key), MaskInTarget(Key));
            Key.target->resolve(Buffer::Front, reach);
            if (SurfaceDamaged && !reach.empty())
                SurfaceDamaged(*Key.target, reach);
        }
    }
    Pending.count = 0;
    Pending.indices.clear();
    Pending.lineVertices.clear();
    Pending.lit = false;
    SlotCount = 0;
}

} // namespace

void DescribeVertices(int stride) {
    auto at = [](size_t offset) { return reinterpret_cast<const void*>(offset); };
    glEnableVertexAttribArray(PositionAttribute);
    glVertexAttribPointer(PositionAttribute, 3, GL_FLOAT, false, stride, at(offsetof(Vertex, position)));
    glEnableVertexAttribArray(NormalAttribute);
    glVertexAttribPointer(NormalAttribute, 3, GL_SHORT, true, stride, at(offsetof(Vertex, normal)));
    glEnableVertexAttribArray(SlotAttribute);
    glVertexAttribPointer(SlotAttribute, 1, GL_SHORT, false, stride, at(offsetof(Vertex, slot)));
    glEnableVertexAttribArray(ColourAttribute);
    glVertexAttribPointer(ColourAttribute, 4, GL_UNSIGNED_BYTE, true, stride, at(offsetof(Vertex, colour)));
    glEnableVertexAttribArray(TexelAttribute);
    glVertexAttribPointer(TexelAttribute, 2, GL_FLOAT, false, stride, at(offsetof(Vertex, texel)));
}

void DescribeLineVertices() {
    constexpr int stride = sizeof(LineVertex);
    DescribeVertices(stride);
    glEnableVertexAttribArray(OtherEndAttribute);
    glVertexAttribPointer(OtherEndAttribute, 3, GL_FLOAT, false, stride,
                          reinterpret_cast<const void*>(offsetof(LineVertex, otherEnd)));
    glEnableVertexAttribArray(LineAttribute);
    glVertexAttribPointer(LineAttribute, 3, GL_FLOAT, false, stride,
                          reinterpret_cast<const void*>(offsetof(LineVertex, line)));
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

void BeginShape(Shape shape) {
    if (!StateChanged && Open && shape == Key.shape)
        return;
    if (!HasSurface()) {
        FlushDrawing();
        Open = false;
        RefreshVertexAttributes();
        return;
    }
    const BatchKey wanted = KeyFor(shape);
    if (!Open || !(wanted == Key)) {
        SendPending();
        Key = wanted;
        CopyContents();
        Open = true;
    }
    StateChanged = false;
    RefreshVertexAttributes();
}

bool CanDraw() {
    return Open;
}

void SendFullPiece() {
    if (Pending.count >= PieceVertices || Pending.lineVertices.size() >= PieceVertices) {
        SendPending();
        RefreshVertexAttributes();
    }
}

int MaterialSlot() {
    const LightingState& lighting = State().Lighting;
    if (!FindMaterialDefinition(lighting.material) || !FindModelDefinition(lighting.model) || Key.overlay)
        return -1;
    for (int i = SlotCount - 1; i >= 0; i--)
        if (Slots[i] == lighting.material)
            return i;
    if (SlotCount == MaterialSlots)
        SendPending();
    // One material needs a simpler program: a large batch of one is not worth spoiling.
    else if (SlotCount == 1 && Pending.count > PieceVertices / 4)
        SendPending();
    Slots[SlotCount] = lighting.material;
    return SlotCount++;
}

void SetImage(unsigned texture) {
    if (texture == Image)
        return;
    if (Open && Key.projectionVersion == UnitProjection)
        SendPending();
    Image = texture;
}

void FlushDrawing() {
    if (!Open)
        return;
    SendPending();
    StateChanged = true;
}

long BatchesSent() {
    return Sent;
}

bool DrawingToOverlay() {
    return State().Mode == PUPDRAW;
}

void ClearTarget(const float* colour, double depth) {
    if (!HasSurface())
        return;
    FlushDrawing();
    BatchKey key = KeyFor(Shape::Triangles);
    const PixelBox box = IntersectionOf(BoxInTarget(key, key.raster.viewport), MaskInTarget(key));
    if (box.empty() || !PrepareDriver(key))
        return;
    DriverState wanted = CurrentDriverState();
    wanted.scissor = box;
    ApplyDriverState(wanted);
    unsigned bits = 0;
    if (colour) {
        glClearColor(colour[0], colour[1], colour[2], colour[3]);
        bits |= GL_COLOR_BUFFER_BIT;
    }
    if (depth >= 0 && !key.overlay) {
        glClearDepthf(static_cast<float>(depth));
        bits |= GL_DEPTH_BUFFER_BIT;
    }
    if (bits)
        glClear(bits);
    if (key.shown && colour) {
        key.target->resolve(Buffer::Front, box);
        if (SurfaceDamaged)
            SurfaceDamaged(*key.target, box);
    }
    StateChanged = true;
}

void DrawStaticRun(const StaticRun& run) {
    if (!HasSurface())
        return;
    FlushDrawing();
    Key = KeyFor(run.shape);
    CopyContents();
    if (!PrepareDriver(Key))
        return;
    const DrawingState& state = State();
    const Matrix4& viewing = EffectiveViewing();
    SlotCount = 0;
    const bool lit = run.lit && MaterialSlot() >= 0;
    ShaderVariant variant = VariantFor(Key, lit);
    variant.recorded = true;
    variant.precise = run.precise;
    const TextureState::Generation* generation = state.Textures.generation.data();
    if (variant.environment && generation[0].on && generation[1].on)
        variant.generation = static_cast<uint8_t>(generation[0].mode);
    Program& program = ProgramFor(variant);
    BindProgram(program.name);
    UploadUniforms(program, variant, Key);

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
    if (variant.generation == TG_LINEAR || variant.generation == TG_CONTOUR) {
        float planes[8];
        for (int i = 0; i < 2; i++) {
            std::array<double, 4> plane = generation[i].plane;
            if (variant.generation == TG_LINEAR)
                plane[3] += plane[0] * run.origin[0] + plane[1] * run.origin[1] + plane[2] * run.origin[2];
            for (int k = 0; k < 4; k++)
                planes[4 * i + k] = static_cast<float>(plane[k]);
        }
        glUniform4fv(program.generationPlanes, 2, planes);
    }
    BindArrays(run.arrays);
    glDrawElements(run.mode, run.indexCount, GL_UNSIGNED_INT, reinterpret_cast<const void*>(run.firstIndex));
    SlotCount = 0;
    Open = true;
    StateChanged = true;
    if (Key.shown) {
        const PixelBox viewport = BoxInTarget(Key, Key.raster.viewport);
        const int margin = 2 + static_cast<int>(std::ceil(Key.raster.lineWidth * DrawingScale()));
        const PixelBox reach = IntersectionOf(
            ReachOfBox(Product(viewing, Contents.projection), run.low.data(), run.high.data(), viewport, margin),
            MaskInTarget(Key));
        Key.target->resolve(Buffer::Front, reach);
        if (SurfaceDamaged && !reach.empty())
            SurfaceDamaged(*Key.target, reach);
    }
}

void OpenBatches() {
    Pending.vertices.resize(MostVertices);
    Pending.indices.reserve(3 * MostVertices);
    glGenVertexArrays(1, &Arrays);
    glGenVertexArrays(1, &LineArrays);
    unsigned buffers[4];
    glGenBuffers(4, buffers);
    VertexBuffer = buffers[0];
    IndexBuffer = buffers[1];
    LineBuffer = buffers[2];
    LineIndexBuffer = buffers[3];
    glBindVertexArray(Arrays);
    glBindBuffer(GL_ARRAY_BUFFER, VertexBuffer);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, IndexBuffer);
    DescribeVertices(sizeof(Vertex));
    glBindVertexArray(LineArrays);
    glBindBuffer(GL_ARRAY_BUFFER, LineBuffer);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, LineIndexBuffer);
    DescribeLineVertices();
    LineIndexCount = 0;
    ForgetDriverState();
}

void CloseBatches() {
    Open = false;
    Pending.count = 0;
    Pending.indices.clear();
    Pending.lineVertices.clear();
    glDeleteVertexArrays(1, &Arrays);
    glDeleteVertexArrays(1, &LineArrays);
    const unsigned buffers[4] = {VertexBuffer, IndexBuffer, LineBuffer, LineIndexBuffer};
    glDeleteBuffers(4, buffers);
}

void ForgetBatchState() {
    ForgetDriverState();
    StateChanged = true;
}

void ForgetSurface(Surface* surface) {
    if (!Open || Key.target != surface)
        return;
    Pending.count = 0;
    Pending.indices.clear();
    Pending.lineVertices.clear();
    SlotCount = 0;
    Open = false;
    StateChanged = true;
}

} // namespace gl
