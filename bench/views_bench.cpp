// Views: what a frame of 1,000 x 1,000 lit quadrilaterals costs while only the view changes, and after loading and
// after a change; the same as outlines, and as a scene of many placed objects. Beside each stands the same geometry in
// vertex and index buffers filled by hand, drawn by one call with the program that a recording left bound.
#include "bench/bench_window.h"
#include "bench/store_models.h"

#include "gooey/draw.h"
#include "gooey/window.h"
#include "materials/material_definitions.h"
#include "platform/batch.h"
#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/lighting.h"
#include "platform/matrices.h"
#include "platform/recordings.h"
#include "platform/state.h"
#include "platform/windows.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/selection_lists.h"
#include "store/structure_editing.h"
#include "views/capabilities.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/drawing.h"
#include "views/kept_drawings.h"
#include "views/rendering_state.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

namespace {

constexpr int Width = 750, Height = 525, Side = 1000;

Object *Sheet, *Patch;
SubObject* Coarse; // of the patch, seen from afar
constexpr double SwitchingDistance = 600;
View TheView;
Material *Plain, *Other;

Material* AddLitMaterial(float red) {
    Material* material = NewMaterial();
    const float diffuse[3] = {red, 0.5F, 0.4F};
    std::copy_n(diffuse, 3, material->Diffuse);
    AddMaterial(material);
    return material;
}

void OpenTheWindow() {
    OpenBenchWindow(Width, Height);
    Plain = AddLitMaterial(0.7F);
    Other = AddLitMaterial(0.2F);
    MaterialsNeedDefining = 1;
    CurrentLighting = LightingFaceted;
}

void LookAt(Object* object, double radius) {
    CurrentObject() = object;
    CleanUpObject();
    MakeDefault3dView(&TheView, radius);
}

/// The sheet, in the middle of the model's space and of one material.
Object* TheSheet() {
    if (!Sheet) {
        Sheet = BuildSheet(Side);
        for (Vertex* vertex : EveryVertex(Sheet))
            for (int axis = 0; axis < 2; ++axis)
                vertex->Position[axis] -= Side / 2.0;
        for (Polygon* polygon : EveryPolygon(Sheet))
            polygon->Material = Plain;
    }
    SolidView = ObjectIsolated = 1;
    Backface = 0;
    LookAt(Sheet, Side);
    return Sheet;
}

void Turn() {
    MultMatrix(YawMatrix(0.01), TheView.ViewMatrix, TheView.ViewMatrix);
}

void DrawFrame() {
    DrawWorkWindow(&TheView);
    gl::FlushDrawing();
    glFinish();
}

/// Buffers filled by hand, of triangles or of lines.
class StaticBuffers {
  public:
    /// Vertices are kept relative to `origin`.
    StaticBuffers(const double* origin, bool lines) : Lines(lines) { std::copy_n(origin, 3, Origin); }

    StaticBuffers(const StaticBuffers&) = delete;
    StaticBuffers& operator=(const StaticBuffers&) = delete;

    ~StaticBuffers() {
        glDeleteBuffers(2, Buffers);
        glDeleteVertexArrays(1, &Arrays);
        gl::ForgetBatchState();
    }

    void Add(const Polygon* polygon, const Matrix& placement) {
        const auto first = static_cast<std::uint32_t>(Vertices.size());
        std::uint32_t count = 0;
        for (const PolygonBead* bead : EveryBead(polygon)) {
            double place[3];
            TransformPoint(bead->Vertex->Position, placement, place);
            AddCorner(place, polygon->Normal);
            ++count;
        }
        for (std::uint32_t corner = 0; corner < count; ++corner) {
            if (Lines)
                Indices.insert(Indices.end(), {first + corner, first + (corner + 1) % count});
            else if (corner >= 2)
                Indices.insert(Indices.end(), {first, first + corner - 1, first + corner});
        }
    }

    void Upload() {
        glGenVertexArrays(1, &Arrays);
        glBindVertexArray(Arrays);
        glGenBuffers(2, Buffers);
        glBindBuffer(GL_ARRAY_BUFFER, Buffers[0]);
        glBufferData(GL_ARRAY_BUFFER, static_cast<long>(Vertices.size() * sizeof Vertices[0]), Vertices.data(),
                     GL_STATIC_DRAW);
        gl::DescribeVertices(sizeof(gl::Vertex));
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, Buffers[1]);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<long>(Indices.size() * sizeof Indices[0]), Indices.data(),
                     GL_STATIC_DRAW);
        gl::ForgetBatchState();
    }

    /// With program and state as the layer sets them for such geometry in the view: a small recording leaves them.
    void Draw() const {
        const int number = gl::genobj();
        gl::makeobj(number);
        const float normal[3] = {0, 0, 1};
        double beside[3];
        for (int i = 0; i < 3; ++i)
            beside[i] = Origin[i] + 1e-3;
        if (Lines)
            gl::cpack(0xFFFFFFFF);
        else
            gl::n3f(normal);
        Lines ? gl::bgnline() : gl::bgnpolygon();
        gl::v3d(Origin);
        gl::v3d(beside);
        if (!Lines)
            gl::v3d(Origin);
        Lines ? gl::endline() : gl::endpolygon();
        gl::closeobj();
        SetUpView(&TheView, 0);
        SetLighting();
        cls(0x402010);
        BindMaterial(Plain);
        gl::zbuffer(true);
        Blending(Lines ? 0 : 1);
        gl::callobj(number);
        gl::FlushDrawing();
        gl::delobj(number);
        glBindVertexArray(Arrays);
        glDrawElements(Lines ? GL_LINES : GL_TRIANGLES, static_cast<int>(Indices.size()), GL_UNSIGNED_INT, nullptr);
        gl::ForgetBatchState();
        glFinish();
    }

  private:
    void AddCorner(const double* position, const float* normal) {
        gl::Vertex vertex = {};
        for (int i = 0; i < 3; ++i) {
            vertex.position[i] = static_cast<float>(position[i] - Origin[i]);
            vertex.normal[i] = static_cast<std::int16_t>(std::lrint(normal[i] * 32767));
        }
        vertex.slot = Lines ? -1 : 0;
        vertex.colour = 0xFFFFFFFF;
        Vertices.push_back(vertex);
    }

    bool Lines;
    double Origin[3];
    unsigned Arrays = 0, Buffers[2] = {};
    std::vector<gl::Vertex> Vertices;
    std::vector<std::uint32_t> Indices;
};

void Frames(benchmark::State& state) {
    DrawFrame();
    const int recorded = PiecesRecorded;
    for (auto _ : state) {
        Turn();
        DrawFrame();
    }
    state.counters["recorded"] = PiecesRecorded - recorded;
    state.counters["MB"] = static_cast<double>(gl::RecordingMemory()) / 1e6;
}

void SheetByHand(benchmark::State& state, bool lines) {
    TheSheet();
    StaticBuffers buffers(FirstVertex()->Position, lines);
    for (const Polygon* polygon : EveryPolygon(Sheet))
        buffers.Add(polygon, IdentityMatrix);
    buffers.Upload();
    DrawFrame();
    for (auto _ : state)
        buffers.Draw();
}

void SolidFrame(benchmark::State& state) {
    TheSheet();
    Frames(state);
}

/// With a work area about the middle that is so many times as large as the sheet.
void WorkAreaFrame(benchmark::State& state, double part) {
    TheSheet();
    Window gizmo{};
    WorkAreaGizmo = &gizmo;
    const double radius = ObjectRadius();
    ObjectWorkArea() = {1, 1, {0, 0, 0}, 1 / part, radius * part};
    Frames(state);
    WorkAreaGizmo = nullptr;
}

void SolidFrameByHand(benchmark::State& state) {
    SheetByHand(state, false);
}

void FirstFrame(benchmark::State& state) {
    TheSheet();
    for (auto _ : state) {
        state.PauseTiming();
        ReleaseKeptDrawings();
        state.ResumeTiming();
        DrawFrame();
    }
}

void FrameAfterOneMaterial(benchmark::State& state) {
    Polygon* polygon = TheSheet()->FirstPolygon;
    for (int i = 0; i < Side * Side / 2; ++i)
        polygon = polygon->Next;
    DrawFrame();
    const int recorded = PiecesRecorded;
    for (auto _ : state) {
        polygon->Material = polygon->Material == Plain ? Other : Plain;
        AppearanceChanged(polygon);
        DrawFrame();
    }
    polygon->Material = Plain;
    AppearanceChanged(polygon);
    state.counters["recorded"] = benchmark::Counter(PiecesRecorded - recorded, benchmark::Counter::kAvgIterations);
}

void FrameAfterOneVertex(benchmark::State& state) {
    Vertex* vertex = TheSheet()->FirstVertex;
    for (int i = 0; i < Side * Side / 2; ++i)
        vertex = vertex->Next;
    DrawFrame();
    const int recorded = PiecesRecorded;
    for (auto _ : state) {
        vertex->Position[2] += 0.1;
        NormalsOK() = 0;
        DrawFrame();
    }
    state.counters["recorded"] = benchmark::Counter(PiecesRecorded - recorded, benchmark::Counter::kAvgIterations);
}

void WireFrame(benchmark::State& state, int facing) {
    TheSheet();
    SolidView = 0;
    Backface = facing;
    Frames(state);
}

void WireFrameByHand(benchmark::State& state) {
    SheetByHand(state, true);
}

void SelectAll(int selected) {
    for (Polygon* polygon : EveryPolygon(TheSheet()))
        polygon->Selected = selected;
    PolygonSelectionChanged() = 1;
    CleanUpObject();
}

/// A marker on each of the 1,000,000 vertices, and nothing else.
void MarkersFrame(benchmark::State& state) {
    TheSheet();
    SelectedLod() = nullptr;
    for (Vertex* vertex : EveryVertex(Sheet))
        vertex->Selected = 1;
    VertexSelectionChanged() = 1;
    Frames(state);
    for (Vertex* vertex : EveryVertex(Sheet))
        vertex->Selected = 0;
    VertexSelectionChanged() = 1;
    SelectedLod() = FirstLod();
}

/// The whole sheet selected, as outlines alone.
void SelectedFrame(benchmark::State& state) {
    SelectAll(1);
    SolidView = 0;
    Frames(state);
    SelectAll(0);
}

/// 1,000 placed objects of 1,000 polygons with a level of few behind them; the eye stands among them.
void MakeScene() {
    static bool made = false;
    if (!made) {
        made = true;
        constexpr int side = 32;
        Patch = BuildSheet(side);
        for (Polygon* polygon : EveryPolygon(Patch))
            polygon->Material = Plain;
        SelectedLod()->Distance = SwitchingDistance;
        AddSubObject("Coarse");
        PolygonBead* beads = nullptr;
        for (const auto& [x, y] : {std::pair{0, 0}, {side, 0}, {side, side}, {0, side}})
            AddPolygonBead(beads, AddVertex(x, y, 0));
        AddPolygon(beads, nullptr)->Material = Plain;
        Coarse = SelectedSubObject();
        AddLod("Far");
        AddLodBead(Coarse);
        SelectedLod()->Distance = 100000;
        CleanUpObject();
        for (int i = 0; i < 1000; ++i) {
            Branch* branch = AddBranch(Scene(), BranchAsChild);
            branch->Object = Patch;
            branch->Transform = TranslationMatrix(i % 40 * 40.0 - 800, i / 40 * 40.0 - 500, 0);
        }
    }
    SolidView = 1;
    ObjectIsolated = Backface = 0;
    MakeDefault3dView(&TheView, 1000);
    TheView.ViewMatrix[3][1] = 500;
}

void SceneFrame(benchmark::State& state) {
    MakeScene();
    Frames(state);
}

/// 10,000 walls with a window each.
void DecalsFrame(benchmark::State& state) {
    static Object* walls = nullptr;
    if (!walls) {
        walls = BuildSeparateSheet(100);
        std::vector<Polygon*> sheet;
        for (Polygon* polygon : EveryPolygon(walls))
            sheet.push_back(polygon);
        for (Polygon* polygon : sheet) {
            polygon->Material = Plain;
            PolygonBead* beads = nullptr;
            for (const PolygonBead* bead : EveryBead(polygon))
                AddPolygonBead(beads, bead->Vertex);
            AddPolygon(beads, polygon)->Material = Other;
        }
    }
    SolidView = ObjectIsolated = 1;
    LookAt(walls, 100);
    Frames(state);
}

/// What of the scene is seen, in one buffer.
void SceneFrameByHand(benchmark::State& state) {
    MakeScene();
    DrawFrame();
    const double middle[3] = {0, 0, 0};
    StaticBuffers buffers(middle, false);
    int seen[2] = {};
    for (const Branch* branch : Along<&Branch::Next>(Scene()->FirstChild)) {
        Matrix toEye;
        MultMatrix(branch->Transform, TheView.Transform, toEye);
        bool inside = false;
        for (int corner = 0; corner < 4; ++corner) {
            const double place[3] = {corner & 1 ? 32.0 : 0.0, corner & 2 ? 32.0 : 0.0, 0};
            double eye[3];
            TransformPoint(place, toEye, eye);
            inside |= eye[2] < 0 && std::abs(eye[0] * TheView.Projection[0][0]) < -eye[2] &&
                      std::abs(eye[1] * TheView.Projection[1][1]) < -eye[2];
        }
        if (!inside)
            continue;
        const bool far = toEye[3][2] < -SwitchingDistance;
        ++seen[far];
        for (const Polygon* polygon : EveryPolygon(Patch))
            if ((polygon->SubObject == Coarse) == far)
                buffers.Add(polygon, branch->Transform);
    }
    buffers.Upload();
    for (auto _ : state)
        buffers.Draw();
    state.counters["fine"] = seen[0];
    state.counters["coarse"] = seen[1];
}

} // namespace

BENCHMARK(SolidFrame)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(WorkAreaFrame, aroundAll, 1.0)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(WorkAreaFrame, aHundredth, 0.05)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(SolidFrameByHand)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(FirstFrame)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(FrameAfterOneMaterial)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(FrameAfterOneVertex)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(WireFrame, allPolygons, 0)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(WireFrame, facingPolygons, 1)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(WireFrameByHand)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(MarkersFrame)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(SelectedFrame)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(DecalsFrame)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(SceneFrame)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(SceneFrameByHand)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

int main(int argc, char** argv) {
    OpenTheWindow();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    ReleaseKeptDrawings();
    EndToolkit();
    return 0;
}
