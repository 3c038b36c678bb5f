// The store on an object of 1,000 x 1,000 quadrilaterals: building, cleaning up, merging vertices, snapshots, release.

#include "bench/store_models.h"
#include "store/clean_up.h"
#include "store/duplicates.h"
#include "store/pools.h"
#include "store/undo.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <malloc.h>
#include <utility>

namespace {

constexpr int Side = 1000;
constexpr double PolygonCount = 1.0 * Side * Side;

/// Gives every spare record back to the system, so that the next model touches fresh pages.
void EmptyPools() {
    FreeSpareVertices();
    FreeSparePolygonBeads();
    FreeSparePolygons();
    malloc_trim(0);
}

void StartEmpty() {
    ResetStorage();
    EmptyPools();
}

void Build(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartEmpty();
        const double before = ResidentBytes();
        state.ResumeTiming();
        BuildSheet(Side);
        state.PauseTiming();
        state.counters["bytes/polygon"] = (ResidentBytes() - before) / PolygonCount;
        state.ResumeTiming();
    }
}

void CleanUp(benchmark::State& state) {
    StartEmpty();
    BuildSheet(Side);
    if (state.range(0))
        EditAtRandom(2 * Side * Side);
    for (auto _ : state) {
        ConnectionsOK() = NormalsOK() = 0;
        PolygonSelectionChanged() = VertexSelectionChanged() = 1;
        CleanUpObject();
    }
}

void DeleteDuplicates(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartEmpty();
        BuildSeparateSheet(Side);
        if (state.range(0))
            EditAtRandom(2 * Side * Side);
        state.ResumeTiming();
        DeleteDuplicateVertices();
    }
}

/// Smooth triangles around one vertex, each in a light group of its own: the time must grow with their number, not with
/// its square.
void CleanUpFan(benchmark::State& state) {
    const int triangles = static_cast<int>(state.range(0));
    StartEmpty();
    AddObject("Fan", 0, 0);
    Vertex* const centre = AddVertex(0, 0, 1);
    Vertex* previous = AddVertex(1, 0, 0);
    for (int i = 1; i <= triangles; ++i) {
        const double angle = 2 * M_PI * i / triangles;
        Vertex* next = AddVertex(std::cos(angle), std::sin(angle), 0);
        PolygonBead* beads = nullptr;
        for (Vertex* corner : {centre, previous, next})
            AddPolygonBead(beads, corner);
        Polygon* triangle = AddPolygon(beads, nullptr);
        triangle->Lighting = LightingSmooth;
        triangle->LightGroup = i;
        previous = next;
    }
    for (auto _ : state) {
        ConnectionsOK() = 0;
        CleanUpObject();
    }
}

/// The floor of a copy: the same records from plain arrays, linked by hand.
struct FlatCopy {
    Vertex* Vertices = nullptr;
    Polygon* Polygons = nullptr;
    PolygonBead* Beads = nullptr;

    void Make(const Object* object, std::size_t vertices, std::size_t polygons, std::size_t beads) {
        if (!Vertices) {
            Vertices = static_cast<Vertex*>(std::malloc(vertices * sizeof(Vertex)));
            Polygons = static_cast<Polygon*>(std::malloc(polygons * sizeof(Polygon)));
            Beads = static_cast<PolygonBead*>(std::malloc(beads * sizeof(PolygonBead)));
        }
        Vertex* vertex = Vertices;
        for (Vertex* source : EveryVertex(object)) {
            source->Copy = vertex;
            *vertex = Vertex{};
            vertex->Next = vertex + 1;
            vertex->Prev = vertex - 1;
            std::memcpy(vertex->Position, source->Position, sizeof vertex->Position);
            ++vertex;
        }
        Polygon* polygon = Polygons;
        PolygonBead* bead = Beads;
        for (Polygon* source : EveryPolygon(object)) {
            source->Copy = polygon;
            *polygon = Polygon{};
            polygon->Next = polygon + 1;
            polygon->Prev = polygon - 1;
            polygon->Material = source->Material;
            polygon->Lighting = source->Lighting;
            polygon->Beads = bead;
            for (const PolygonBead* corner : EveryBead(source)) {
                *bead = PolygonBead{};
                bead->Vertex = corner->Vertex->Copy;
                bead->Polygon = polygon;
                bead->Next = bead + 1;
                std::memcpy(bead->TexCoord, corner->TexCoord, sizeof bead->TexCoord);
                ++bead;
            }
            bead[-1].Next = nullptr;
            ++polygon;
        }
        for (Polygon* source : EveryPolygon(object)) {
            Polygon* copy = source->Copy;
            copy->NextSibling = source->NextSibling ? source->NextSibling->Copy : nullptr;
            copy->PrevSibling = source->PrevSibling ? source->PrevSibling->Copy : nullptr;
        }
        benchmark::ClobberMemory();
    }

    void Release() {
        std::free(Vertices);
        std::free(Polygons);
        std::free(Beads);
        *this = {};
    }
};

void CopyFloor(benchmark::State& state) {
    const bool warm = state.range(0) != 0;
    StartEmpty();
    Object* object = BuildSheet(Side);
    const std::size_t vertices = (Side + 1) * (Side + 1), polygons = Side * Side;
    FlatCopy copy;
    if (warm)
        copy.Make(object, vertices, polygons, 4 * polygons);
    for (auto _ : state) {
        copy.Make(object, vertices, polygons, 4 * polygons);
        if (!warm) {
            state.PauseTiming();
            copy.Release();
            state.ResumeTiming();
        }
    }
    copy.Release();
}

void CopyFresh(benchmark::State& state) {
    StartEmpty();
    Object* object = BuildSheet(Side);
    for (auto _ : state) {
        state.PauseTiming();
        if (object->UndoCopy)
            FreeObject(std::exchange(object->UndoCopy, nullptr));
        EmptyPools();
        state.ResumeTiming();
        CopyCurrentObject();
    }
}

/// Pools that hold enough spare records. With an argument the object has been edited at random.
void CopyWarm(benchmark::State& state) {
    StartEmpty();
    Object* object = BuildSheet(Side);
    if (state.range(0))
        EditAtRandom(2 * Side * Side);
    CopyCurrentObject();
    for (auto _ : state) {
        state.PauseTiming();
        FreeObject(std::exchange(object->UndoCopy, nullptr));
        state.ResumeTiming();
        CopyCurrentObject();
    }
}

/// As a tool does it: the release of the snapshot before is part of the time.
void CopyAgain(benchmark::State& state) {
    StartEmpty();
    BuildSheet(Side);
    CopyCurrentObject();
    for (auto _ : state)
        CopyCurrentObject();
}

void UndoOnce(benchmark::State& state) {
    StartEmpty();
    BuildSheet(Side);
    CopyCurrentObject();
    for (auto _ : state)
        Undo();
}

void Release(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        StartEmpty();
        Object* object = BuildSheet(Side);
        if (state.range(0))
            EditAtRandom(2 * Side * Side);
        state.ResumeTiming();
        DeleteObject(object);
    }
}

} // namespace

BENCHMARK(Build)->Unit(benchmark::kMillisecond);
BENCHMARK(CleanUp)->ArgName("edited")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(DeleteDuplicates)->ArgName("edited")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(CleanUpFan)->ArgName("triangles")->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyFloor)->ArgName("warm")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyFresh)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyWarm)->ArgName("edited")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyAgain)->Unit(benchmark::kMillisecond);
BENCHMARK(UndoOnce)->Unit(benchmark::kMillisecond);
BENCHMARK(Release)->ArgName("edited")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
