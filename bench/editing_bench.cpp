// Editing an object of 1,000 x 1,000 quadrilaterals: the clipboard with 100,000 of them, walls on as many, slicing,
// close vertices, files of coordinates. Nothing is drawn but where it is said.

#include "bench/bench_window.h"
#include "bench/store_models.h"

#include "geometry/matrices.h"
#include "gooey/event_loop.h"
#include "gooey/window_stack.h"
#include "interaction/position_gizmo.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "store/clean_up.h"
#include "store/pools.h"
#include "store/undo.h"
#include "tools/amalgamation.h"
#include "tools/height_tool.h"
#include "tools/polygon_clipboard.h"
#include "tools/raise_walls.h"
#include "tools/slicing.h"
#include "tools/vertex_file.h"
#include "views/default_views.h"
#include "views/main_window.h"
#include "views/moves.h"
#include "views/viewports.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string>

namespace {

constexpr int Side = 1000, Selected = 100'000;

/// Lets the program come to rest.
void Settle() {
    while (CheckEvents() == 1) {
    }
}

/// The sheet, cleaned up, with the first polygons of its list selected.
void StartOver(int selected = Selected) {
    static bool open;
    if (!open) {
        setenv("KIRVO_DISPLAY", "headless:1000x700", 1);
        InitialiseStorage();
        OpenMainWindow();
        Settle();
    }
    open = true;
    FreePolygonPaste();
    ResetStorage();
    // So that the records of each model lie in order.
    FreeSpareVertices();
    FreeSparePolygonBeads();
    FreeSparePolygons();
    malloc_trim(0);
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

/// Of the whole sheet, along a plane across its middle.
void Slice(benchmark::State& state) {
    View view{};
    MultMatrix(RollMatrix(90), TranslationMatrix(Side / 2 + 0.5, 0, 0), view.GridMatrix);
    for (auto _ : state) {
        state.PauseTiming();
        StartOver(Side * Side);
        state.ResumeTiming();
        SlicePolygons(&view);
    }
}

/// Until the ruler is open.
void StartWalls(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartOver();
        state.ResumeTiming();
        LiftPolygons();
        state.PauseTiming();
        CancelTool();
        state.ResumeTiming();
    }
}

/// Frames with walls on 100,000 polygons, the view being turned (0) or the ruler dragged (1).
void FrameOfWalls(benchmark::State& state) {
    StartOver();
    SetDefaultObjectView(ViewOfViewport(0), Direction3D);
    LiftPolygons();
    Settle();
    {
        WindowScope scope(Viewport[0]);
        StartMove();
        RedrawModelWindows();
    }
    double height = 1;
    for (auto _ : state) {
        if (state.range(0))
            ChangeHeight(height += 0.01);
        else
            RedrawModelWindows();
        glFinish();
    }
    {
        WindowScope scope(Viewport[0]);
        StopMove();
    }
    CancelTool();
}

/// Joins what `build` puts into an empty object, with a gap of 0.3 m.
template <class Build>
void AmalgamateModel(benchmark::State& state, Build build) {
    for (auto _ : state) {
        state.PauseTiming();
        StartOver(0);
        ResetStorage();
        build();
        CleanUpObject();
        AmalgamateVertices();
        AmalgamateGap = 0.3 / (ObjectRadius() * 0.001);
        state.ResumeTiming();
        FindCloseVertices();
        DoAmalgamate();
        state.PauseTiming();
        state.counters["left"] = static_cast<double>(std::distance(EveryVertex(CurrentObject()).begin(), {}));
        ClearControl();
        state.ResumeTiming();
    }
}

/// A million vertices of no polygon in rows (0), or all in the plane x = 0 (1): every second one is near the one
/// before.
void Amalgamate(benchmark::State& state) {
    AmalgamateModel(state, [&] {
        for (int i = 0; i < Side * Side; ++i) {
            const double along = i % Side - (i % 2 ? 0.9 : 0), row = i / Side;
            AddVertex(state.range(0) ? 0 : row, along, state.range(0) ? row : 0);
        }
    });
}

/// A million corners of quadrilaterals, three in four of which lie where another one does.
void AmalgamateSheet(benchmark::State& state) {
    AmalgamateModel(state, [] { BuildSeparateSheet(Side / 2); });
}

void ReadCoordinates(benchmark::State& state) {
    const std::string path = std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") + "/bench-points";
    {
        std::ofstream file(path);
        for (int i = 0; i < Side * Side; ++i)
            file << i * 0.37 << " " << i % 1000 << ", " << i * 1e-3 << "\n";
    }
    for (auto _ : state) {
        const VertexFile read = ReadVertexFile(path.c_str(), 3, nullptr);
        state.counters["places"] = static_cast<double>(read.Places.size());
        state.PauseTiming();
        StartOver(0);
        ResetStorage();
        state.ResumeTiming();
        for (const auto& [x, y, z] : read.Places)
            AddVertex(x, y, z);
    }
    std::remove(path.c_str());
}

BENCHMARK(Slice)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(StartWalls)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(FrameOfWalls)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Amalgamate)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(AmalgamateSheet)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(ReadCoordinates)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Snapshot)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Copy)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Paste)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Cut)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

BENCHMARK_MAIN();
