#include "platform/batch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

#include <epoxy/gl.h>

#include "platform/batch_key.h"
#include "platform/definitions.h"
#include "platform/driver_state.h"
#include "platform/uniforms.h"
#include "platform/vertices.h"

namespace gl {

bool StateChanged = true;
BatchArrays Pending;

namespace {

BatchKey Key;
BatchContents Contents;
bool Open = false; // Key and Contents describe what is pending or comes next
MaterialPalette Palette;
unsigned Image = 0;
unsigned Arrays = 0, VertexBuffer = 0, IndexBuffer = 0, LineArrays = 0, LineBuffer = 0, LineIndexBuffer = 0;
int LineIndexCount = 0;
long Sent = 0;

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

PixelBox MaskInTarget(const BatchKey& key) {
    return IntersectionOf(BoxInTarget(key, key.raster.mask), key.window);
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
        const ShaderVariant variant = VariantFor(Key, Contents, Pending.lit ? Palette.count : 0);
        Program& program = ProgramFor(variant);
        BindProgram(program.name);
        UploadUniforms(program, variant, Key, Contents, Palette);
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
    Palette.count = 0;
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
    for (int i = Palette.count - 1; i >= 0; i--)
        if (Palette.materials[i] == lighting.material)
            return i;
    if (Palette.count == MaterialSlots)
        SendPending();
    // One material needs a simpler program: a large batch of one is not worth spoiling.
    else if (Palette.count == 1 && Pending.count > PieceVertices / 4)
        SendPending();
    Palette.materials[Palette.count] = lighting.material;
    return Palette.count++;
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
    Palette.count = 0;
    const bool lit = run.lit && MaterialSlot() >= 0;
    ShaderVariant variant = VariantFor(Key, Contents, lit ? 1 : 0);
    variant.recorded = true;
    variant.precise = run.precise;
    const TextureState::Generation* generation = state.Textures.generation.data();
    if (variant.environment && generation[0].on && generation[1].on)
        variant.generation = static_cast<uint8_t>(generation[0].mode);
    Program& program = ProgramFor(variant);
    BindProgram(program.name);
    UploadUniforms(program, variant, Key, Contents, Palette);

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
    Palette.count = 0;
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
    Palette.count = 0;
    Open = false;
    StateChanged = true;
}

} // namespace gl
