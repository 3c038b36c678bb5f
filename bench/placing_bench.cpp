// Placing: what a step of a drag of the position gizmo costs, the frame included, over all of 1,000 x 1,000
// quadrilaterals and over 1,000 of them; beside it the frame alone, and a step as it was settled.
#include "bench/bench_window.h"
#include "bench/store_models.h"

#include "gooey/window.h"
#include "interaction/position_gizmo.h"
#include "platform/batch.h"
#include "platform/matrices.h"
#include "store/clean_up.h"
#include "store/selection_lists.h"
#include "tools/moving_vertices.h"
#include "views/default_views.h"
#include "views/drawing.h"
#include "views/kept_drawings.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

namespace {

constexpr int Width = 750, Height = 525, Side = 1000;

View TheView;

void DrawFrame() {
    DrawWorkWindow(&TheView);
    gl::FlushDrawing();
    glFinish();
}

/// A sheet of which so many polygons, from the middle on, are being moved.
void BeginOver(int count) {
    static Object* sheet = nullptr;
    if (!sheet)
        sheet = BuildSheet(Side);
    CurrentObject() = sheet;
    EndMove();
    int number = 0;
    const int from = count == Side * Side ? 0 : Side * Side / 2;
    for (Polygon* polygon : EveryPolygon(sheet)) {
        polygon->Selected = number >= from && number < from + count;
        ++number;
    }
    PolygonSelectionChanged() = 1;
    CleanUpObject();
    DetachSelectedPolygons();
    CleanUpObject();
    MakeDefault3dView(&TheView, 2 * Side);
    DrawFrame();
}

void Frame(benchmark::State& state) {
    BeginOver(static_cast<int>(state.range(0)));
    for (auto _ : state)
        DrawFrame();
}

void Steps(benchmark::State& state, int mode) {
    BeginOver(static_cast<int>(state.range(0)));
    double way = 0;
    const auto step = [&] {
        PlaceMovingVertices(TranslationMatrix(0, 0, way += 0.01), mode);
        DrawFrame();
    };
    step();
    const int recorded = PiecesRecorded;
    for (auto _ : state)
        step();
    state.counters["recorded"] = benchmark::Counter(PiecesRecorded - recorded, benchmark::Counter::kAvgIterations);
    EndMove();
}

void DragStep(benchmark::State& state) {
    Steps(state, PositionTranslating);
}

void SettledStep(benchmark::State& state) {
    Steps(state, PositionSettled);
}

/// The step that begins a drag.
void FirstStep(benchmark::State& state) {
    double way = 0;
    for (auto _ : state) {
        state.PauseTiming();
        BeginOver(static_cast<int>(state.range(0)));
        state.ResumeTiming();
        PlaceMovingVertices(TranslationMatrix(0, 0, way += 0.01), PositionTranslating);
        DrawFrame();
    }
    EndMove();
}

} // namespace

BENCHMARK(Frame)->Arg(1000)->Arg(Side* Side)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(DragStep)->Arg(1000)->Arg(Side* Side)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(SettledStep)->Arg(1000)->Arg(Side* Side)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(FirstStep)->Arg(1000)->Arg(Side* Side)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

int main(int argc, char** argv) {
    OpenBenchWindow(Width, Height);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
