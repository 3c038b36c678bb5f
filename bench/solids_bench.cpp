// Solids and texts: what a step of a sphere's drag and of a sweep's costs beside a frame of the same model once it has
// been added, and how long adding takes; texts and their fonts.
#include "bench/bench_window.h"
#include "bench/store_models.h"

#include "geometry/matrices.h"
#include "gooey/draw.h"
#include "gooey/window.h"
#include "materials/material_definitions.h"
#include "platform/batch.h"
#include "platform/state.h"
#include "platform/windows.h"
#include "store/clean_up.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "tools/fonts.h"
#include "tools/sphere_creation.h"
#include "tools/spheres.h"
#include "tools/sweep.h"
#include "tools/sweep_adding.h"
#include "tools/sweep_drawing.h"
#include "tools/text_mesh.h"
#include "views/capabilities.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/drawing.h"
#include "views/rendering_state.h"
#include "views/view_transform.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <cmath>
#include <cstdlib>
#include <string>

namespace {

constexpr int Width = 750, Height = 525, Depth = 32, Cells = 200;
const double Centre[3] = {0, 0, 0};

View TheView;

void OpenTheWindow() {
    OpenBenchWindow(Width, Height);
    AddMaterial(CurrentMaterial() = NewMaterial());
    MaterialsNeedDefining = 1;
}

/// An empty object, looked at from where one of that radius shows.
void StartOver(double radius) {
    static bool open;
    if (!open)
        OpenTheWindow();
    open = true;
    ResetStorage();
    InitialiseStorage();
    AddMaterial(CurrentMaterial() = NewMaterial());
    MaterialsNeedDefining = 1;
    CurrentLighting = LightingSmooth;
    CurrentObject();
    MakeDefault3dView(&TheView, radius);
}

void Finish() {
    gl::FlushDrawing();
    glFinish();
}

void StartFrame() {
    SetUpView(&TheView, 0);
    SetLighting();
    cls(0x402010);
    gl::zbuffer(true);
}

/// A frame of the model as it is.
void DrawModel(benchmark::State& state) {
    CleanUpObject();
    for (auto _ : state) {
        DrawWorkWindow(&TheView);
        Finish();
    }
}

void StepOfSphere(benchmark::State& state) {
    StartOver(3);
    float radius = 1;
    for (auto _ : state) {
        StartFrame();
        BindMaterial(CurrentMaterial());
        DrawSphere(0, 0, 0, radius = radius > 2 ? 1 : radius + 0.01F, SphereZUp, Depth);
        Finish();
    }
}

BENCHMARK(StepOfSphere)->Unit(benchmark::kMillisecond);

void FrameOfSphere(benchmark::State& state) {
    StartOver(3);
    AddSphereToModel(Centre, 2, Depth, false);
    DrawModel(state);
}

BENCHMARK(FrameOfSphere)->Unit(benchmark::kMillisecond);

void AddSphere(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartOver(3);
        state.ResumeTiming();
        AddSphereToModel(Centre, 2, Depth, false);
    }
    state.counters["triangles"] = SpherePolygons(0, Depth);
}

BENCHMARK(AddSphere)->Unit(benchmark::kMillisecond);

/// A path and a profile of 200 edges each.
void MakeSweep(Sweep& sweep) {
    InitialiseSweep(sweep);
    for (int i = 0; i <= Cells; ++i) {
        const double t = i * 6.0 / Cells;
        const double path[3] = {10 * std::cos(t), 10 * std::sin(t), 0}, profile[3] = {std::sin(t) + t / 4, t / 2, 0};
        AppendEbead(sweep.Path, path);
        AppendEbead(sweep.Profile, profile);
    }
}

Sweep& TheSweep = *new Sweep;

void StepOfSweep(benchmark::State& state) {
    StartOver(15);
    MakeSweep(TheSweep);
    for (auto _ : state) {
        TheSweep.Path.Current->Position[2] += 0.001;
        SweepChanged(TheSweep);
        StartFrame();
        DrawSweepMesh(TheSweep);
        Finish();
    }
    state.counters["cells"] = TheSweep.PolygonCount;
}

BENCHMARK(StepOfSweep)->Unit(benchmark::kMillisecond);

void FrameOfSweep(benchmark::State& state) {
    StartOver(15);
    MakeSweep(TheSweep);
    AddSweepToModel(TheSweep, nullptr);
    DrawModel(state);
}

BENCHMARK(FrameOfSweep)->Unit(benchmark::kMillisecond);

void AddSweep(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartOver(15);
        MakeSweep(TheSweep);
        state.ResumeTiming();
        AddSweepToModel(TheSweep, nullptr);
    }
}

BENCHMARK(AddSweep)->Unit(benchmark::kMillisecond);

void LoadFont(benchmark::State& state) {
    for (auto _ : state)
        FreeFont(ReadFont(KIRVO_FONTS "/CourierBoldItalic")); // the largest one
}

BENCHMARK(LoadFont)->Unit(benchmark::kMillisecond);

void GenerateSolidText(benchmark::State& state) {
    Font* font = ReadFont(KIRVO_FONTS "/Times");
    if (!font)
        return state.SkipWithError("no font");
    std::string text;
    while (text.size() < 200)
        text += "The quick brown fox jumps over the lazy dog 1234567890 ";
    text.resize(200);
    for (auto _ : state) {
        state.PauseTiming();
        StartOver(15);
        state.ResumeTiming();
        AddTextToModel(*font, text.c_str(), true, IdentityMatrix);
    }
    state.counters["polygons"] = static_cast<double>(std::distance(EveryPolygon(CurrentObject()).begin(), {}));
    FreeFont(font);
}

BENCHMARK(GenerateSolidText)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
