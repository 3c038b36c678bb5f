// The scene's tree and merging: what the builder costs a frame, what a click and the clipboard cost, and what merging
// costs beyond reading the file.
#include "bench/bench_window.h"
#include "bench/store_models.h"

#include "base/memory.h"
#include "files/merge.h"
#include "files/merge_window.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "interaction/scene_selection.h"
#include "platform/batch.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/scene_extent.h"
#include "structure/scene_builder.h"
#include "structure/scene_clipboard.h"
#include "structure/scene_operations.h"
#include "structure/scene_tree.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <string>

namespace {

constexpr int Placements = 10000, Objects = 100, InGroup = 100;

void OpenOnce() {
    static bool open;
    if (!open)
        OpenBenchWindow(750, 525);
    open = true;
}

/// Groups of placements of a hundred objects.
void MakeScene() {
    OpenOnce();
    ResetStorage();
    InitialiseStorage();
    std::vector<Object*> objects;
    for (int i = 0; i < Objects; ++i)
        objects.push_back(AddObject(("Object " + std::to_string(i)).c_str(), 0, 0));
    Branch* group = nullptr;
    for (int i = 0; i < Placements; ++i) {
        if (i % InGroup == 0)
            group = GrowBranch(Scene(), ("Group " + std::to_string(i)).c_str());
        Branch* branch = GrowBranch(group, "Object");
        branch->Object = objects[static_cast<std::size_t>(i % Objects)];
        branch->Transform = TranslationMatrix(i, 0, 0);
    }
}

void Finish() {
    gl::FlushDrawing();
    glFinish();
}

void DrawBuilder(benchmark::State& state) {
    MakeScene();
    OpenSceneBuilder();
    for (auto _ : state) {
        RedrawWindow(SceneBuilder);
        Finish();
    }
    ShutWindow(SceneBuilder);
}

void ClickOnBranch(benchmark::State& state) {
    MakeScene();
    Branch* branch = Scene()->FirstChild;
    for (auto _ : state) {
        SelectScene(branch);
        branch = branch->Next ? branch->Next : Scene()->FirstChild;
    }
}

void CopyAndPasteHalf(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        MakeScene();
        int i = 0;
        for (Branch* group : Along<&Branch::Next>(Scene()->FirstChild))
            if (i++ % 2)
                ScanScene(group, SceneSelector);
        state.ResumeTiming();
        CopyScene(1);
        CopySceneForUndo();
        GraftBranch(CopyOfBranch(ScenePaste), Scene());
        SelectScene(Scene()->FirstChild);
        SceneRadius();
    }
}

void CutHalf(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        MakeScene();
        for (Branch* group : Along<&Branch::Next>(Scene()->FirstChild))
            for (Branch* branch : Along<&Branch::Next>(group->FirstChild))
                branch->Selected = branch->Object && branch->Next && branch->Next->Next;
        state.ResumeTiming();
        CutScene();
    }
}

/// A million polygons with 500 materials, of which the main file has every other one.
void MergeMillion(benchmark::State& state) {
    OpenOnce();
    for (auto _ : state) {
        state.PauseTiming();
        ResetStorage();
        for (const int merging : {0, 1}) {
            PointToMerge(merging);
            std::vector<Material*> materials;
            for (int i = 0; i < 500; ++i) {
                Material* material = NewMaterial();
                RenameMaterial(material, ("Material " + std::to_string(i + (i % 2 ? 0 : 1000 * merging))).c_str());
                AddMaterial(material);
                materials.push_back(material);
            }
            if (!merging)
                continue;
            BuildSheet(1000);
            std::size_t i = 0;
            for (Polygon* polygon : EveryPolygon(CurrentObject()))
                polygon->Material = polygon->TextureMaterial = materials[i++ % 500];
            CurrentObject()->MergeMark = 1;
        }
        PointToMerge(0);
        state.ResumeTiming();
        MergePickedObjects();
        state.PauseTiming();
        PointToMerge(1);
        ResetStorage();
        PointToMerge(0);
        state.ResumeTiming();
    }
}

/// A merge file of 5,000 objects that are all placed: opening its window, and a frame of it.
void OpenAndDrawMerge(benchmark::State& state) {
    OpenOnce();
    for (auto _ : state) {
        state.PauseTiming();
        PointToMerge(1);
        ResetStorage();
        for (int i = 0; i < 5000; ++i) {
            Object* object = AddObject(("Object " + std::to_string(i)).c_str(), 0, 0);
            GrowBranch(Scene(), "Object")->Object = object;
        }
        PointToMerge(0);
        state.ResumeTiming();
        OpenMergeWindow("other.kirvo");
        RedrawWindow(Merge);
        RedrawWindow(Merge);
        Finish();
        state.PauseTiming();
        ShutWindow(Merge);
        state.ResumeTiming();
    }
}

BENCHMARK(DrawBuilder)->Unit(benchmark::kMillisecond);
BENCHMARK(ClickOnBranch)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyAndPasteHalf)->Unit(benchmark::kMillisecond);
BENCHMARK(CutHalf)->Unit(benchmark::kMillisecond);
BENCHMARK(MergeMillion)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(OpenAndDrawMerge)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

BENCHMARK_MAIN();
