// Putting textures on 100,000 selected quadrilaterals: each mapping by itself, with the undo snapshot that it begins
// with, and a step of a drag: the mapping, and the frame that shows it; beside it a frame that shows nothing new. The
// texture gizmo with 1,000 textures of 64 x 64: what opening and scrolling it cost.
#include "bench/bench_window.h"
#include "bench/store_models.h"

#include "base/memory.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/window_stack.h"
#include "interaction/selection_sets.h"
#include "materials/material_definitions.h"
#include "palettes/texture_gizmo.h"
#include "platform/batch.h"
#include "platform/textures.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "store/texture_list.h"
#include "store/undo.h"
#include "texturing/mappings.h"
#include "views/default_views.h"
#include "views/drawing.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

constexpr int Width = 750, Height = 525, Side = 316;

View TheView;

void Prepare() {
    static const bool prepared = [] {
        OpenBenchWindow(Width, Height);
        Material* material = NewMaterial();
        AddMaterial(material);
        MaterialsNeedDefining = 1;
        Texture* texture = NewTexture();
        texture->FileName = CopyOfString("chequer");
        texture->GLId = 1;
        const std::uint8_t texels[] = {0, 255, 0, 0, 255, 0, 0, 0};
        gl::texdef2d(1, 1, 2, 2, texels, 0, nullptr);
        AddTextureToList(texture);
        BuildSheet(Side);
        TextureOn = 1;
        for (Polygon* polygon : EveryPolygon(CurrentObject()))
            SetPolygonSelected(CurrentObject(), polygon, 1);
        CleanUpObject();
        MakeDefault3dView(&TheView, Side);
        return true;
    }();
    static_cast<void>(prepared);
}

template <class Map>
void MapAll(Map map) {
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        map(polygon);
}

void ThreePointsAt(double offset) {
    const double points[3][3] = {{offset, 0, 0}, {offset + 3, 1, 0}, {offset, 4, 0}};
    ThreePointMap map;
    map.Make(points, IdentityMatrix);
    MapAll([&](Polygon* polygon) { MapThreePoints(polygon, map, IdentityMatrix); });
}

void DrawFrame() {
    DrawWorkWindow(&TheView);
    gl::FlushDrawing();
    glFinish();
}

void ThreePoints(benchmark::State& state) {
    Prepare();
    for (auto _ : state)
        ThreePointsAt(0.5);
}

void Cylinder(benchmark::State& state) {
    Prepare();
    const CylinderMap map = {IdentityMatrix, 1, 8, 1};
    for (auto _ : state)
        MapAll([&](Polygon* polygon) { MapCylinder(polygon, map); });
}

void Cubic(benchmark::State& state) {
    Prepare();
    for (auto _ : state)
        MapAll([](Polygon* polygon) { MapCubic(polygon, IdentityMatrix, 0.5); });
}

void StartOfThreePoints(benchmark::State& state) {
    Prepare();
    for (auto _ : state) {
        CopyCurrentObject();
        ThreePointsAt(0.5);
    }
}

void FrameWithoutChange(benchmark::State& state) {
    Prepare();
    DrawFrame();
    for (auto _ : state)
        DrawFrame();
}

void DragStep(benchmark::State& state) {
    Prepare();
    double offset = 0;
    for (auto _ : state) {
        ThreePointsAt(offset += 0.01);
        AppearanceChanged(CurrentObject());
        DrawFrame();
    }
}

void AddTextures() {
    static const bool added = [] {
        Prepare();
        MainWindow = CurrentWindow;
        InitMaterials();
        constexpr int count = 1000, side = 64;
        std::vector<std::uint8_t> texels(static_cast<std::size_t>(side) * side * 4);
        for (int i = 0; i < count; ++i) {
            for (std::size_t place = 0; place < texels.size(); ++place)
                texels[place] = static_cast<std::uint8_t>(place * static_cast<std::size_t>(i));
            Texture* texture = NewTexture();
            texture->FileName = CopyOfString(("texture " + std::to_string(i)).c_str());
            texture->GLId = 2 + i;
            gl::texdef2d(texture->GLId, 4, side, side, texels.data(), 0, nullptr);
            AddTextureToList(texture);
        }
        return true;
    }();
    static_cast<void>(added);
}

void OpenGizmo(benchmark::State& state) {
    AddTextures();
    for (auto _ : state) {
        OpenTextureGizmo();
        RedrawWindow(TextureGizmo);
        gl::FlushDrawing();
        glFinish();
        state.PauseTiming();
        ShutWindow(TextureGizmo);
        state.ResumeTiming();
    }
}

void ScrollGizmo(benchmark::State& state) {
    AddTextures();
    OpenTextureGizmo();
    const WindowScope window(TextureGizmo);
    int row = 0;
    for (auto _ : state) {
        row = (row + 1) % 100;
        ScrollYTo(TextureGizmoGrid.ScrollGadget, row * TextureGizmoGrid.EntryHeight);
        gl::FlushDrawing();
        glFinish();
    }
    ShutWindow(TextureGizmo);
}

BENCHMARK(ThreePoints)->Unit(benchmark::kMillisecond);
BENCHMARK(Cylinder)->Unit(benchmark::kMillisecond);
BENCHMARK(Cubic)->Unit(benchmark::kMillisecond);
BENCHMARK(StartOfThreePoints)->Unit(benchmark::kMillisecond);
BENCHMARK(FrameWithoutChange)->Unit(benchmark::kMillisecond);
BENCHMARK(DragStep)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenGizmo)->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollGizmo)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
