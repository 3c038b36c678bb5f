// The material palette and editor: what opening and scrolling cost with 1,000 materials, and what a slider's step costs
// beside a view of 1,000 x 1,000 lit or unlit quadrilaterals: a frame of that view alone, one after a slider's step,
// and the step itself; with the number of pieces that were recorded anew, which must be none.
#include "bench/bench_window.h"
#include "bench/store_models.h"

#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/window_stack.h"
#include "materials/material_definitions.h"
#include "palettes/material_editor.h"
#include "palettes/material_palette.h"
#include "platform/batch.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "views/default_views.h"
#include "views/drawing.h"
#include "views/kept_drawings.h"
#include "views/view_transform.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <string>

namespace {

constexpr int Width = 750, Height = 525, Side = 1000, Materials = 1000;

View TheView;
Window* ModelWindow;

void Finish() {
    gl::FlushDrawing();
    glFinish();
}

void OpenTheWindow() {
    if (ModelWindow)
        return;
    OpenBenchWindow(Width, Height);
    ModelWindow = MainWindow = CurrentWindow;
    InitMaterials();
    for (int i = 0; i < Materials; ++i) {
        Material* material = NewMaterial();
        for (int component = 0; component < 3; ++component)
            material->Diffuse[component] = static_cast<float>((i * (component + 3)) % 100) / 100;
        RenameMaterial(material, ("Material " + std::to_string(i)).c_str());
        AddMaterial(material);
    }
    MaterialsNeedDefining = 1;
}

void OpenPalette(benchmark::State& state) {
    OpenTheWindow();
    for (auto _ : state) {
        OpenMaterialPalette();
        RedrawWindow(MaterialPalette);
        Finish();
        state.PauseTiming();
        ShutWindow(MaterialPalette);
        state.ResumeTiming();
    }
}

void ScrollPalette(benchmark::State& state) {
    OpenTheWindow();
    OpenMaterialPalette();
    const WindowScope window(MaterialPalette);
    int row = 0;
    for (auto _ : state) {
        row = (row + 1) % 100;
        ScrollYTo(MaterialPaletteGrid.ScrollGadget, row * MaterialPaletteGrid.EntryHeight);
        Finish();
    }
}

enum Drawn { TheFrame = 1, TheSlider = 2 };

/// What a slider of the editor does beside the views.
void MoveSlider(int step) {
    CurrentMaterial()->Diffuse[0] = static_cast<float>(step % 100) / 100;
    DefineMaterial(CurrentMaterial());
    RedrawCurrentSweetie();
    RedrawWindow(MaterialEditor);
}

void BesideAMillion(benchmark::State& state, int lighting, int what) {
    OpenTheWindow();
    static Object* const sheet = BuildSheet(Side);
    for (Polygon* polygon : EveryPolygon(sheet)) {
        polygon->Material = CurrentMaterial();
        polygon->Lighting = static_cast<std::uint8_t>(lighting);
    }
    CurrentObject() = sheet;
    Backface = 0;
    CleanUpObject();
    ObjectWasCleanedUp(sheet);
    MakeDefault3dView(&TheView, Side);
    OpenMaterialEditor();
    const WindowScope window(ModelWindow);
    DrawWorkWindow(&TheView);
    Finish();
    int step = 0;
    const int recorded = PiecesRecorded;
    for (auto _ : state) {
        if (what & TheSlider)
            MoveSlider(++step);
        if (what & TheFrame)
            DrawWorkWindow(&TheView);
        Finish();
    }
    state.counters["recorded"] = PiecesRecorded - recorded;
}

BENCHMARK(OpenPalette)->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollPalette)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BesideAMillion, FrameLit, LightingFaceted, TheFrame)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BesideAMillion, StepLit, LightingFaceted, TheSlider)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BesideAMillion, StepAndFrameLit, LightingFaceted, TheFrame | TheSlider)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BesideAMillion, FrameUnlit, LightingUnlit, TheFrame)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BesideAMillion, StepAndFrameUnlit, LightingUnlit, TheFrame | TheSlider)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argumentCount, char* arguments[]) {
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    ReleaseKeptDrawings();
    EndToolkit();
    return 0;
}
