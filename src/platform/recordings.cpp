#include "platform/recordings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <map>
#include <memory>
#include <utility>

#include <epoxy/gl.h>

#include "platform/batch.h"
#include "platform/drawing.h"
#include "platform/drawing_state.h"
#include "platform/driver_state.h"
#include "platform/graphics_context.h"
#include "platform/recorder.h"
#include "platform/surface.h"
#include "platform/vertices.h"

namespace gl {

bool RecordingOpen = false;

namespace {

using Rest = std::array<float, 3>;

// Positions are kept as single-precision numbers relative to the recording's origin. Where that loses more than this
// many metres, what is lost is kept too.
constexpr double TolerableLoss = 1.0 / (1 << 17);
constexpr int DeepestCall = 16;

// Vertices, and what they lack in precision, in graphics memory.
struct VertexStore {
    unsigned arrays = 0, vertices = 0, rests = 0, indices = 0;
    long bytes = 0;

    void release() {
        glDeleteVertexArrays(1, &arrays);
        const unsigned buffers[3] = {vertices, rests, indices};
        glDeleteBuffers(3, buffers);
        *this = {};
    }
};

// Consecutive primitives of one shape.
struct Run {
    Shape shape = Shape::Triangles;
    int first = 0, count = 0; // of the indices
    bool lit = false;
    int firstWide = -1; // of the indices of the widened lines
};

struct Item {
    int run = -1; // or a command
    std::function<void()> command;
};

struct ObjectRecording {
    std::vector<Item> items;
    std::vector<Run> runs;
    VertexStore store, wideStore;
    std::array<double, 3> origin = {0, 0, 0}, low = {1e300, 1e300, 1e300}, high = {-1e300, -1e300, -1e300};
    bool precise = false;
    // On the way to graphics memory; kept afterwards only when there are lines, which may have to be widened.
    std::vector<Vertex> vertices;
    std::vector<Rest> rests; // as many as vertices when precise, else none
    std::vector<uint32_t> indices;

    ~ObjectRecording() {
        if (GraphicsReady()) {
            store.release();
            wideStore.release();
        }
    }
};

std::map<int, std::unique_ptr<ObjectRecording>> Recordings;
std::unique_ptr<ObjectRecording> OpenOne;
int OpenNumber = 0;
int CallDepth = 0;
size_t PrimitiveStart = 0;
int16_t PackedNormal[3];
bool NormalGiven = false, ColourGiven = false;
std::map<int, int> KnownSettings;

// What makeobj found and closeobj restores.
struct SavedAttributes {
    uint32_t colour;
    std::array<float, 3> normal;
    bool lit;
    std::array<float, 2> texel;
} Before;

SavedAttributes AttributesOf(const DrawingState& state) {
    return {state.Colour, state.Normal, state.Lit, state.Texel};
}

void PackNormal(const std::array<float, 3>& n) {
    const float length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    for (int i = 0; i < 3; i++)
        PackedNormal[i] = static_cast<int16_t>(length > 0 ? std::lrint(n[i] / length * 32767) : 0);
}

// The run that primitives of a shape go to: the last one when nothing came between.
Run& RunFor(Shape shape, bool lit) {
    ObjectRecording& o = *OpenOne;
    if (o.items.empty() || o.items.back().run < 0 || o.runs[o.items.back().run].shape != shape) {
        Run run;
        run.shape = shape;
        run.first = static_cast<int>(o.indices.size());
        o.runs.push_back(run);
        Item item;
        item.run = static_cast<int>(o.runs.size()) - 1;
        o.items.push_back(std::move(item));
    }
    Run& run = o.runs.back();
    run.lit |= lit;
    return run;
}

void AddIndices(Shape shape, const std::vector<int>& indices) {
    ObjectRecording& o = *OpenOne;
    bool lit = false;
    for (size_t i = PrimitiveStart; i < o.vertices.size(); i++)
        lit |= o.vertices[i].slot >= 0;
    Run& run = RunFor(shape, lit);
    for (int index : indices)
        o.indices.push_back(static_cast<uint32_t>(PrimitiveStart) + static_cast<uint32_t>(index));
    run.count += static_cast<int>(indices.size());
}

void Upload(unsigned target, unsigned* name, const void* data, size_t bytes, long* total) {
    glGenBuffers(1, name);
    glBindBuffer(target, *name);
    glBufferData(target, static_cast<long>(bytes), data, GL_STATIC_DRAW);
    *total += static_cast<long>(bytes);
}

void FillStore(ObjectRecording& o) {
    VertexStore& store = o.store;
    glGenVertexArrays(1, &store.arrays);
    glBindVertexArray(store.arrays);
    Upload(GL_ARRAY_BUFFER, &store.vertices, o.vertices.data(), o.vertices.size() * sizeof(Vertex), &store.bytes);
    DescribeVertices(sizeof(Vertex));
    if (o.precise) {
        Upload(GL_ARRAY_BUFFER, &store.rests, o.rests.data(), o.rests.size() * sizeof(Rest), &store.bytes);
        glEnableVertexAttribArray(PositionRestAttribute);
        glVertexAttribPointer(PositionRestAttribute, 3, GL_FLOAT, false, sizeof(Rest), nullptr);
    }
    Upload(GL_ELEMENT_ARRAY_BUFFER, &store.indices, o.indices.data(), o.indices.size() * sizeof(uint32_t),
           &store.bytes);
    ForgetBatchState();
}

// Makes what wide, dashed and smooth lines need, when the first of them is drawn: four corners for each segment.
void FillWideStore(ObjectRecording& o) {
    std::vector<LineVertex> corners;
    std::vector<std::array<Rest, 2>> rests; // of its own end and of the other
    std::vector<uint32_t> indices;
    for (Run& run : o.runs) {
        if (run.shape != Shape::Segments)
            continue;
        run.firstWide = static_cast<int>(indices.size());
        for (int i = run.first; i < run.first + run.count; i += 2) {
            const uint32_t ends[2] = {o.indices[i], o.indices[i + 1]};
            const auto first = static_cast<uint32_t>(corners.size());
            for (int end = 0; end < 2; end++)
                for (float side : {-1.0f, 1.0f}) {
                    LineVertex corner = {o.vertices[ends[end]], {}, {static_cast<float>(end), side, 0}};
                    std::copy_n(o.vertices[ends[1 - end]].position, 3, corner.otherEnd);
                    corners.push_back(corner);
                    if (o.precise)
                        rests.push_back({o.rests[ends[end]], o.rests[ends[1 - end]]});
                }
            for (uint32_t corner : {0, 1, 2, 2, 1, 3})
                indices.push_back(first + corner);
        }
    }
    VertexStore& store = o.wideStore;
    glGenVertexArrays(1, &store.arrays);
    glBindVertexArray(store.arrays);
    Upload(GL_ARRAY_BUFFER, &store.vertices, corners.data(), corners.size() * sizeof(LineVertex), &store.bytes);
    DescribeLineVertices();
    if (o.precise) {
        Upload(GL_ARRAY_BUFFER, &store.rests, rests.data(), rests.size() * sizeof rests[0], &store.bytes);
        glEnableVertexAttribArray(PositionRestAttribute);
        glVertexAttribPointer(PositionRestAttribute, 3, GL_FLOAT, false, sizeof rests[0], nullptr);
        glEnableVertexAttribArray(OtherEndRestAttribute);
        glVertexAttribPointer(OtherEndRestAttribute, 3, GL_FLOAT, false, sizeof rests[0],
                              reinterpret_cast<const void*>(sizeof(Rest)));
    }
    Upload(GL_ELEMENT_ARRAY_BUFFER, &store.indices, indices.data(), indices.size() * sizeof(uint32_t), &store.bytes);
    ForgetBatchState();
}

void DrawRun(ObjectRecording& o, const Run& run) {
    const bool widened = run.shape == Shape::Segments && LineShape() != Shape::Segments;
    if (widened && !o.wideStore.arrays)
        FillWideStore(o);
    StaticRun piece;
    piece.arrays = widened ? o.wideStore.arrays : o.store.arrays;
    piece.mode = run.shape == Shape::Points                 ? GL_POINTS
                 : run.shape == Shape::Segments && !widened ? GL_LINES
                                                            : GL_TRIANGLES;
    piece.firstIndex = static_cast<long>(sizeof(uint32_t)) * (widened ? run.firstWide : run.first);
    piece.indexCount = widened ? run.count * 3 : run.count;
    piece.shape = widened ? Shape::WideSegments : run.shape;
    piece.lit = run.lit;
    piece.precise = o.precise;
    piece.origin = o.origin;
    piece.low = o.low;
    piece.high = o.high;
    DrawStaticRun(piece);
}

} // namespace

void KeepCommand(std::function<void()> command) {
    Item item;
    item.command = std::move(command);
    OpenOne->items.push_back(std::move(item));
}

void KeepColoured(std::function<void()> command) {
    KeepCommand([colour = State().Colour, command = std::move(command)] {
        DrawingState& state = State();
        const uint32_t before = std::exchange(state.Colour, colour);
        StateChanged = true;
        command();
        state.Colour = before;
        StateChanged = true;
    });
}

bool SettingKnown(int setting, int value) {
    const auto [known, fresh] = KnownSettings.try_emplace(setting, value);
    const bool same = !fresh && known->second == value;
    known->second = value;
    return same;
}

void BeginRecordedPrimitive() {
    PrimitiveStart = OpenOne->vertices.size();
}

void RecordVertex(double x, double y, double z, double w) {
    ObjectRecording& o = *OpenOne;
    const DrawingState& state = State();
    double p[3] = {x, y, z};
    if (w != 1 && w != 0)
        for (double& value : p)
            value /= w;
    if (o.vertices.empty())
        o.origin = {p[0], p[1], p[2]};
    Vertex vertex;
    Rest rest;
    bool lossy = false;
    for (int i = 0; i < 3; i++) {
        o.low[i] = std::min(o.low[i], p[i]);
        o.high[i] = std::max(o.high[i], p[i]);
        const double relative = p[i] - o.origin[i];
        vertex.position[i] = static_cast<float>(relative);
        rest[i] = static_cast<float>(relative - vertex.position[i]);
        lossy |= std::abs(rest[i]) > TolerableLoss;
    }
    std::copy_n(PackedNormal, 3, vertex.normal);
    vertex.slot = state.Lit ? 0 : -1;
    vertex.colour = state.Colour;
    vertex.texel[0] = state.Texel[0];
    vertex.texel[1] = state.Texel[1];
    if (lossy && !o.precise) {
        o.precise = true;
        o.rests.assign(o.vertices.size(), Rest{0, 0, 0});
    }
    o.vertices.push_back(vertex);
    if (o.precise)
        o.rests.push_back(rest);
}

int RecordedVertices() {
    return static_cast<int>(OpenOne->vertices.size() - PrimitiveStart);
}

const float* RecordedPositions(int* stride) {
    *stride = sizeof(Vertex) / sizeof(float);
    return OpenOne->vertices.data()[PrimitiveStart].position;
}

void RecordTriangles(const std::vector<int>& indices) {
    AddIndices(Shape::Triangles, indices);
}

void RecordLine(bool closed) {
    const int count = RecordedVertices();
    std::vector<int> indices;
    for (int i = 0; i + 1 < count || (closed && count > 1 && i < count); i++) {
        indices.push_back(i);
        indices.push_back((i + 1) % count);
    }
    AddIndices(Shape::Segments, indices);
}

void RecordPoints() {
    std::vector<int> indices(RecordedVertices());
    for (size_t i = 0; i < indices.size(); i++)
        indices[i] = static_cast<int>(i);
    AddIndices(Shape::Points, indices);
}

void RecordColour() {
    ColourGiven = true;
}

void RecordNormal() {
    NormalGiven = true;
    PackNormal(State().Normal);
}

int genobj() {
    int number = 1;
    while (Recordings.count(number) || (Recording() && number == OpenNumber))
        number++;
    return number;
}

void makeobj(int number) {
    if (Recording()) {
        std::fprintf(stderr, "Graphics: recording %d cannot be begun inside recording %d\n", number, OpenNumber);
        return;
    }
    OpenOne = std::make_unique<ObjectRecording>();
    OpenNumber = number;
    Before = AttributesOf(State());
    PackNormal(Before.normal);
    NormalGiven = ColourGiven = false;
    KnownSettings.clear();
    RecordingOpen = true;
}

void closeobj() {
    if (!Recording())
        return;
    RecordingOpen = false;
    DrawingState& state = State();
    ObjectRecording& o = *OpenOne;
    // What the recording leaves behind for what is drawn after it.
    const SavedAttributes after = AttributesOf(state);
    if (NormalGiven || ColourGiven) {
        Item item;
        item.command = [after, normal = NormalGiven, colour = ColourGiven] {
            if (colour)
                cpack(after.colour);
            if (normal) {
                n3f(after.normal.data());
                State().Lit = after.lit;
            }
            StateChanged = true;
        };
        o.items.push_back(std::move(item));
    }
    state.Colour = Before.colour;
    state.Normal = Before.normal;
    state.Lit = Before.lit;
    state.Texel = Before.texel;
    StateChanged = true;
    if (!o.vertices.empty() && GraphicsReady()) {
        FlushDrawing();
        FillStore(o);
    }
    const bool lines =
        std::any_of(o.runs.begin(), o.runs.end(), [](const Run& run) { return run.shape == Shape::Segments; });
    if (!lines) {
        std::vector<Vertex>().swap(o.vertices);
        std::vector<Rest>().swap(o.rests);
        std::vector<uint32_t>().swap(o.indices);
    }
    Recordings[OpenNumber] = std::move(OpenOne);
}

void callobj(int number) {
    if (RecordCommand([=] { callobj(number); })) {
        KnownSettings.clear();
        return;
    }
    const auto found = Recordings.find(number);
    if (found == Recordings.end() || CallDepth == DeepestCall)
        return;
    CallDepth++;
    for (const Item& item : found->second->items) {
        if (item.run >= 0)
            DrawRun(*found->second, found->second->runs[item.run]);
        else
            item.command();
    }
    CallDepth--;
}

bool isobj(int number) {
    return Recordings.count(number) != 0;
}

void delobj(int number) {
    Recordings.erase(number);
}

void DeleteAllRecordings() {
    RecordingOpen = false;
    OpenOne.reset();
    Recordings.clear();
}

long RecordingMemory() {
    long bytes = 0;
    for (const auto& [number, recording] : Recordings)
        bytes += recording->store.bytes + recording->wideStore.bytes;
    return bytes;
}

int RecordingRuns(int number) {
    const auto found = Recordings.find(number);
    return found == Recordings.end() ? 0 : static_cast<int>(found->second->runs.size());
}

} // namespace gl
