#include "bench/store_models.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "interaction/drag_box.h"
#include "interaction/pick_hierarchies.h"
#include "interaction/selection.h"
#include "interaction/selection_passes.h"
#include "interaction/selection_regions.h"
#include "platform/matrices.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "views/default_views.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

// Selecting in a model of a million quadrilaterals in one sub-object, in views of 1000 x 800 pixels.

namespace {

constexpr int Side = 1000;

Window TheWindow{};

/// The sheet, its middle at the origin, and the hierarchies that selecting needs.
void PrepareModel() {
    static const Object* sheet = nullptr;
    if (sheet)
        return;
    TheWindow.Width = 1000;
    TheWindow.Height = 800;
    CurrentWindow = &TheWindow;
    gl::mmode(gl::MVIEWING);
    sheet = BuildSheet(Side);
    for (Vertex* vertex : EveryVertex(sheet))
        for (int axis = 0; axis < 2; ++axis)
            vertex->Position[axis] -= Side / 2.0;
    CleanUpObject();
}

enum ViewKind { Top, Perspective, Edge };

View MakeView(int kind) {
    PrepareModel();
    View view{};
    if (kind == Perspective)
        MakeDefault3dView(&view, ObjectRadius());
    else
        MakeDefault2dView(&view, ObjectRadius(), kind == Top ? 0 : 4);
    return view;
}

/// The pointer wanders over the middle of the view.
void MovePointer() {
    MouseX = 350 + std::rand() % 300;
    MouseY = 350 + std::rand() % 100;
}

void Pick(benchmark::State& state) {
    View view = MakeView(static_cast<int>(state.range(0)));
    SelectSinglePolygon(&view);
    for (auto _ : state) {
        MovePointer();
        benchmark::DoNotOptimize(SelectSinglePolygon(&view));
    }
}

void PickVertex(benchmark::State& state) {
    View view = MakeView(static_cast<int>(state.range(0)));
    SelectSingleVertex(&view);
    for (auto _ : state) {
        MovePointer();
        benchmark::DoNotOptimize(SelectSingleVertex(&view));
    }
}

/// All that a click on a polygon does: deselect, pick, select, and the lists of what is selected.
void Click(benchmark::State& state) {
    View view = MakeView(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        MovePointer();
        DeselectAllPolygons();
        if (Polygon* polygon = SelectSinglePolygon(&view))
            SetPolygonSelected(CurrentObject(), polygon, 1);
        CleanUpObject();
    }
}

void Box(benchmark::State& state) {
    View view = MakeView(Perspective);
    const int side = static_cast<int>(state.range(0));
    for (auto _ : state) {
        DeselectAllPolygons();
        MovePointer();
        DragLeft = MouseX - side / 2;
        DragRight = DragLeft + side;
        DragBottom = MouseY - side / 2;
        DragTop = DragBottom + side;
        BoxPolygons(&view);
        CleanUpObject();
    }
}

void BoxVerticesOf(benchmark::State& state) {
    View view = MakeView(Perspective);
    for (auto _ : state) {
        DeselectAllVertices();
        MovePointer();
        DragLeft = MouseX - 50;
        DragRight = MouseX + 50;
        DragBottom = MouseY - 50;
        DragTop = MouseY + 50;
        BoxVertices(&view, 0);
        CleanUpObject();
    }
}

void ConnectedRegion(benchmark::State& state) {
    PrepareModel();
    for (auto _ : state) {
        DeselectAllPolygons();
        SelectConnectedRegion(FirstPolygon());
    }
    DeselectAllPolygons();
    CleanUpObject();
}

void BuildPolygonHierarchy(benchmark::State& state) {
    PrepareModel();
    for (auto _ : state) {
        ObjectWasCleanedUp(CurrentObject());
        benchmark::DoNotOptimize(&PolygonHierarchyOf(SelectedSubObject()));
    }
}

void BuildVertexHierarchy(benchmark::State& state) {
    PrepareModel();
    for (auto _ : state) {
        ObjectWasCleanedUp(CurrentObject());
        benchmark::DoNotOptimize(&VertexHierarchyOf(CurrentObject()));
    }
}

} // namespace

BENCHMARK(Pick)->ArgName("view")->Arg(Top)->Arg(Perspective)->Arg(Edge)->Unit(benchmark::kMillisecond);
BENCHMARK(PickVertex)->ArgName("view")->Arg(Top)->Arg(Perspective)->Arg(Edge)->Unit(benchmark::kMillisecond);
BENCHMARK(Click)->ArgName("view")->Arg(Perspective)->Unit(benchmark::kMillisecond);
BENCHMARK(Box)->ArgName("side")->Arg(100)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BoxVerticesOf)->Unit(benchmark::kMillisecond);
BENCHMARK(ConnectedRegion)->Unit(benchmark::kMillisecond);
BENCHMARK(BuildPolygonHierarchy)->Unit(benchmark::kMillisecond);
BENCHMARK(BuildVertexHierarchy)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
