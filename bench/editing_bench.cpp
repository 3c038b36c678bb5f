// Editing an object of 1,000 x 1,000 quadrilaterals: the clipboard with 100,000 of them. No view is drawn.

#include "bench/bench_window.h"
#include "bench/store_models.h"

#include "gooey/redraw.h"
#include "interaction/position_gizmo.h"
#include "interaction/selection_sets.h"
#include "store/clean_up.h"
#include "store/undo.h"
#include "tools/polygon_clipboard.h"
#include "views/main_window.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int Side = 1000, Selected = 100'000;

/// The sheet, cleaned up, with the first polygons of its list selected.
void StartOver(int selected = Selected) {
    static bool open;
    if (!open) {
        setenv("KIRVO_DISPLAY", "headless:1000x700", 1);
        InitialiseStorage();
        OpenMainWindow();
    }
    open = true;
    FreePolygonPaste();
    ResetStorage();
    BuildSheet(Side);
    TheUndoSlots.DeselectEverything = DeselectEverything;
    for (Polygon* polygon : EveryPolygon(CurrentObject())) {
        if (!selected--)
            break;
        polygon->Selected = 1;
    }
    CleanUpObject();
}

void Copy(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartOver();
        state.ResumeTiming();
        CopyPolygons();
    }
}

/// From the command to the end of the position gizmo, with nothing moved: all vertices are joined again.
void Paste(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartOver();
        CopyPolygons();
        state.ResumeTiming();
        PastePolygons();
        CloseOffsetGizmo(1);
    }
}

void Cut(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartOver();
        state.ResumeTiming();
        CutPolygons();
    }
}

/// What every undoable operation takes beforehand.
void Snapshot(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartOver();
        state.ResumeTiming();
        CopyCurrentObject();
    }
}

BENCHMARK(Snapshot)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Copy)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Paste)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Cut)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

BENCHMARK_MAIN();
