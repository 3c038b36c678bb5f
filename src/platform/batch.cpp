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
    return ReachOfBox(Contents.projection, low, high, viewport, MarginOf(key.raster));
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
    if (PrepareDriver(Key, Image)) {
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
        Contents = ContentsOf(Key);
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
    if (box.empty() || !PrepareDriver(key, Image))
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
