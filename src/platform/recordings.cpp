#include "platform/recordings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include <epoxy/gl.h>

#include "platform/batch.h"
#include "platform/definitions.h"
#include "platform/drawing.h"
#include "platform/drawing_state.h"
#include "platform/graphics_context.h"
#include "platform/lighting.h"
#include "platform/recorder.h"
#include "platform/recording_data.h"
#include "platform/static_runs.h"
#include "platform/surface.h"
#include "platform/vertices.h"

namespace gl {

bool RecordingOpen = false;

namespace {

// Positions are kept as single-precision numbers relative to the recording's origin. Where that loses more than this
// many metres, what is lost is kept too.
constexpr double TolerableLoss = 1.0 / (1 << 17);
constexpr int DeepestCall = 16;

std::map<int, std::unique_ptr<ObjectRecording>> Recordings;
std::unique_ptr<ObjectRecording> OpenOne;
int OpenNumber = 0;
unsigned Generation = 1;
int LowestFree = 1; // all below have recordings
int CallDepth = 0;
size_t PrimitiveStart = 0;
int16_t PackedNormal[3];
bool NormalGiven = false, ColourGiven = false;
std::map<int, int> KnownSettings;
int Material = InheritedMaterial;  // bound by the recording so far
int16_t Slot = -1;                 // of that material in the palette of the moment, -1 when not yet looked up
std::optional<uint32_t> OneColour; // of the recordings that are being drawn

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
    const int palette = static_cast<int>(o.palettes.size()) - 1;
    if (o.items.empty() || o.items.back().run < 0 || o.runs.back().shape != shape || o.runs.back().palette != palette) {
        Run run;
        run.shape = shape;
        run.palette = palette;
        run.first = static_cast<int>(o.indices.size());
        o.runs.push_back(run);
        o.items.push_back({static_cast<int>(o.runs.size()) - 1, nullptr});
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

// Where the material is, or goes, in the last palette; a full one is followed by another.
int16_t SlotOfMaterial() {
    std::vector<std::vector<int>>& palettes = OpenOne->palettes;
    const auto found = std::find(palettes.back().begin(), palettes.back().end(), Material);
    if (found != palettes.back().end())
        return static_cast<int16_t>(found - palettes.back().begin());
    if (palettes.back().size() == MaterialSlots)
        palettes.emplace_back();
    palettes.back().push_back(Material);
    return static_cast<int16_t>(palettes.back().size() - 1);
}

void ForgetMaterial() {
    Material = InheritedMaterial;
    Slot = -1;
}

// Widening takes eight times the memory of thin lines: many lines are left to the driver when it can draw them so wide.
// The width in screen pixels; 0 when the layer widens them itself.
float DriverLineWidth(const Run& run) {
    constexpr int few = 1000;
    const RasterState& raster = State().Raster;
    const auto width = static_cast<float>(std::lround(raster.lineWidth * DrawingScale()));
    if (run.count / 2 < few || State().PixelExact || FindLineStyle(raster.lineStyle) != 0xFFFF ||
        raster.lineSmoothing != SML_OFF)
        return 0;
    float range[2] = {1, 1};
    glGetFloatv(GL_ALIASED_LINE_WIDTH_RANGE, range);
    return width <= range[1] ? width : 0;
}

void DrawRun(ObjectRecording& o, const Run& run) {
    const bool wide = run.shape == Shape::Segments && LineShape() != Shape::Segments;
    const float driverWidth = wide ? DriverLineWidth(run) : 0;
    const bool widened = wide && driverWidth == 0;
    if (widened && !o.wideStore.arrays)
        o.widenLines();
    StaticRun piece;
    piece.arrays = widened ? o.wideStore.arrays : o.store.arrays;
    piece.mode = run.shape == Shape::Points                 ? GL_POINTS
                 : run.shape == Shape::Segments && !widened ? GL_LINES
                                                            : GL_TRIANGLES;
    piece.firstIndex = static_cast<long>(sizeof(uint32_t)) * (widened ? run.firstWide : run.first);
    piece.indexCount = widened ? run.count * 3 : run.count;
    piece.shape = widened ? Shape::WideSegments : run.shape;
    piece.lit = run.lit;
    piece.materials = &o.palettes[run.palette];
    piece.oneColour = OneColour;
    piece.precise = o.precise;
    piece.origin = o.origin;
    piece.low = o.low;
    piece.high = o.high;
    if (driverWidth > 1)
        glLineWidth(driverWidth);
    DrawStaticRun(piece);
    if (driverWidth > 1)
        glLineWidth(1);
}

} // namespace

void KeepCommand(std::function<void()> command) {
    OpenOne->items.push_back({-1, std::move(command)});
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

bool RecordMaterial(int material) {
    if (!RecordingOpen)
        return false;
    if (Material != material)
        Slot = -1;
    Material = material;
    return true;
}

void BeginRecordedPrimitive() {
    PrimitiveStart = OpenOne->vertices.size();
    // Here, since a palette must not end within a primitive.
    if (Slot < 0)
        Slot = SlotOfMaterial();
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
    PositionRest rest;
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
    vertex.slot = state.Lit ? std::max<int16_t>(Slot, 0) : -1;
    vertex.colour = state.Colour;
    vertex.texel[0] = state.Texel[0];
    vertex.texel[1] = state.Texel[1];
    if (lossy && !o.precise) {
        o.precise = true;
        o.rests.assign(o.vertices.size(), PositionRest{0, 0, 0});
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
    while (Recordings.count(LowestFree))
        LowestFree++;
    int number = LowestFree;
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
    ForgetMaterial();
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
    if (Material != InheritedMaterial)
        o.items.push_back({-1, [material = Material] { lmbind(MATERIAL, material); }});
    if (NormalGiven || ColourGiven)
        o.items.push_back({-1, [after, normal = NormalGiven, colour = ColourGiven] {
                               if (colour)
                                   cpack(after.colour);
                               if (normal) {
                                   n3f(after.normal.data());
                                   State().Lit = after.lit;
                               }
                               StateChanged = true;
                           }});
    state.Colour = Before.colour;
    state.Normal = Before.normal;
    state.Lit = Before.lit;
    state.Texel = Before.texel;
    StateChanged = true;
    if (!o.vertices.empty() && GraphicsReady()) {
        FlushDrawing();
        o.upload();
    }
    Recordings[OpenNumber] = std::move(OpenOne);
}

void callobj(int number) {
    if (Recording()) {
        if (Material != InheritedMaterial)
            KeepCommand([material = Material] { lmbind(MATERIAL, material); });
        KeepCommand([=] { callobj(number); });
        KnownSettings.clear();
        ForgetMaterial();
        return;
    }
    const auto found = Recordings.find(number);
    if (found == Recordings.end() || CallDepth == DeepestCall)
        return;
    CallDepth++;
    for (const RecordedItem& item : found->second->items) {
        if (item.run >= 0)
            DrawRun(*found->second, found->second->runs[item.run]);
        else
            item.command();
    }
    CallDepth--;
}

void callobj(int number, uint32_t colour) {
    if (RecordCommand([=] { callobj(number, colour); }))
        return;
    const std::optional<uint32_t> before = std::exchange(OneColour, colour);
    callobj(number);
    OneColour = before;
}

bool isobj(int number) {
    return Recordings.count(number) != 0;
}

void delobj(int number) {
    if (Recordings.erase(number))
        LowestFree = std::min(LowestFree, number);
}

void DeleteAllRecordings() {
    RecordingOpen = false;
    OpenOne.reset();
    Recordings.clear();
    LowestFree = 1;
    Generation++;
}

unsigned RecordingGeneration() {
    return Generation;
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
