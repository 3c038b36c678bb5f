// Model files at the size of a large model: a sheet of 1000 x 1000 quadrilaterals, smooth, with one material. The file
// lies in the page cache. Figures go to the standard error stream.

#include "files/body_reader.h"
#include "files/file_contents.h"
#include "files/file_errors.h"
#include "files/format.h"
#include "files/primitives.h"
#include "files/reader.h"
#include "files/writer.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/material_list.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <string>
#include <vector>

namespace {

constexpr int Side = 1000;
constexpr double Polygons = double{Side} * Side;

const std::string& FileName() {
    static const std::string name = std::filesystem::temp_directory_path() / "kirvo-bench.kirvo";
    return name;
}

void BuildSheet() {
    ResetStorage();
    AddMaterial(NewMaterial());
    CurrentLighting = LightingSmooth;
    std::vector<Vertex*> vertices;
    for (int y = 0; y <= Side; ++y)
        for (int x = 0; x <= Side; ++x)
            vertices.push_back(AddVertex(x * 0.1, y * 0.1, ((x * 7 + y * 13) % 11) * 0.01));
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x) {
            PolygonBead* beads = nullptr;
            for (const int corner : {0, 1, Side + 2, Side + 1})
                AddPolygonBead(beads, vertices[y * (Side + 1) + x + corner]);
            AddPolygon(beads, nullptr);
        }
    CurrentLighting = LightingFaceted;
}

/// Writes the file once and leaves the store and its pools empty, as at the start of the program.
void MakeFile() {
    static bool made = false;
    if (!made) {
        BuildSheet();
        made = WriteKirvo(FileName().c_str());
    }
}

void EmptyStore() {
    ResetStorage();
    FreeSpareVertices();
    FreeSparePolygonBeads();
    FreeSparePolygons();
    malloc_trim(0);
}

/// The most memory that the process has held since the last call with `reset`, bytes.
double PeakMemory(bool reset) {
    if (reset)
        std::ofstream("/proc/self/clear_refs") << "5";
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") {
            double kilobytes;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    return 0;
}

/// Drops what reading traces on the standard output.
void Quieten() {
    if (!std::freopen("/dev/null", "w", stdout))
        std::abort();
}

void OpenAndEditable(benchmark::State& state) {
    MakeFile();
    double peak = 0;
    for (auto _ : state) {
        state.PauseTiming();
        EmptyStore();
        const double before = PeakMemory(true);
        state.ResumeTiming();
        if (!ReadKirvo(FileName().c_str()))
            state.SkipWithError(Ferr[FileErrorNumber]);
        CleanUpObject();
        state.PauseTiming();
        peak = PeakMemory(false) - before;
        state.ResumeTiming();
    }
    state.counters["peak_bytes_a_polygon"] = peak / Polygons;
}

void Parse(benchmark::State& state, bool pagesAreThere) {
    MakeFile();
    FileContents contents(FileName().c_str(), 0);
    contents.ReadAll();
    const unsigned char* body = static_cast<const unsigned char*>(std::memchr(contents.Bytes(), '\n', 100)) + 2;
    FileVersion = CurrentFileVersion;
    for (auto _ : state) {
        state.PauseTiming();
        pagesAreThere ? ResetStorage() : EmptyStore();
        ClearFileError();
        state.ResumeTiming();
        FileCursor file{body, contents.Bytes() + contents.Size()};
        BodyReader reader(file);
        reader.FinishObjects = false;
        reader.Read();
        if (FileError)
            state.SkipWithError(Ferr[FileErrorNumber]);
    }
}

void ParseIntoRecords(benchmark::State& state) {
    Parse(state, false);
}

void ParseIntoWarmRecords(benchmark::State& state) {
    Parse(state, true);
}

/// What parsing is measured against: a reader that knows this very file, takes its numbers into flat arrays and then
/// links records of the same sizes by hand.
class Floor {
  public:
    void Parse(const unsigned char* at, const unsigned char* end) {
        // The vertex section stands before the first sub-object, in which every polygon has the same length.
        const unsigned char tag[] = {TagVertexSection, 0, 0x0f};
        at = std::search(at, end, tag, tag + sizeof tag) + 1;
        const std::uint32_t vertices = LoadBigEndian(at);
        at += 4;
        for (std::uint32_t i = 0; i < vertices * 3; ++i, at += 4)
            Positions.push_back(LoadFloat(at));
        at = static_cast<const unsigned char*>(std::memchr(at, '\n', 100)) + 6;
        while (*at == TagPolygon) {
            at += 6;
            for (; *at == TagCorner; at += 20) {
                Corners.push_back(static_cast<int>(LoadBigEndian(at + 2)));
                for (int i = 0; i < 3; ++i)
                    Normals.push_back(LoadFloat(at + 7 + 4 * i));
            }
            ++at;
        }
    }

    void Link() {
        const std::size_t vertices = Positions.size() / 3, polygons = Corners.size() / 4;
        auto* vertex = static_cast<Vertex*>(std::malloc(vertices * sizeof(Vertex)));
        auto* polygon = static_cast<Polygon*>(std::malloc(polygons * sizeof(Polygon)));
        auto* bead = static_cast<PolygonBead*>(std::malloc(Corners.size() * sizeof(PolygonBead)));
        for (std::size_t i = 0; i < vertices; ++i) {
            vertex[i] = Vertex{};
            vertex[i].Next = i ? &vertex[i - 1] : nullptr;
            vertex[i].Prev = i + 1 < vertices ? &vertex[i + 1] : nullptr;
            for (int j = 0; j < 3; ++j)
                vertex[i].Position[j] = Positions[3 * i + j];
        }
        for (std::size_t i = 0; i < polygons; ++i) {
            polygon[i] = Polygon{};
            polygon[i].Next = polygon[i].NextSibling = i ? &polygon[i - 1] : nullptr;
            polygon[i].Prev = polygon[i].PrevSibling = i + 1 < polygons ? &polygon[i + 1] : nullptr;
            polygon[i].Beads = &bead[4 * i];
            for (int j = 0; j < 4; ++j) {
                PolygonBead& corner = bead[4 * i + j];
                corner = PolygonBead{};
                corner.Next = j < 3 ? &corner + 1 : nullptr;
                corner.Vertex = &vertex[Corners[4 * i + j]];
                corner.Polygon = &polygon[i];
                std::memcpy(corner.Normal, &Normals[3 * (4 * i + j)], sizeof corner.Normal);
            }
        }
        Records[0] = vertex;
        Records[1] = polygon;
        Records[2] = bead;
    }

    void Release() {
        for (void* records : Records)
            std::free(records);
        *this = Floor();
    }

    std::vector<int> Corners;

  private:
    std::vector<float> Positions, Normals;
    void* Records[3] = {};
};

void FloorOfParsing(benchmark::State& state) {
    MakeFile();
    EmptyStore();
    FileContents contents(FileName().c_str(), 0);
    contents.ReadAll();
    for (auto _ : state) {
        Floor floor;
        floor.Parse(contents.Bytes(), contents.Bytes() + contents.Size());
        floor.Link();
        state.PauseTiming();
        if (floor.Corners.size() != 4 * Polygons)
            state.SkipWithError("the floor does not fit the file");
        floor.Release();
        state.ResumeTiming();
    }
}

void Write(benchmark::State& state) {
    MakeFile();
    ResetStorage();
    ReadKirvo(FileName().c_str());
    CleanUpObject();
    const std::string name = FileName() + "-written";
    for (auto _ : state)
        if (!WriteKirvo(name.c_str()))
            state.SkipWithError("cannot write");
    std::filesystem::remove(name);
}

BENCHMARK(OpenAndEditable)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseIntoRecords)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseIntoWarmRecords)->Unit(benchmark::kMillisecond);
BENCHMARK(FloorOfParsing)->Unit(benchmark::kMillisecond);
BENCHMARK(Write)->Unit(benchmark::kMillisecond);

/// Away from what reading traces on the standard output.
class ErrorReporter : public benchmark::ConsoleReporter {
  public:
    ErrorReporter() : ConsoleReporter(OO_Tabular) { SetOutputStream(&std::cerr); }
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    Quieten();
    ErrorReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::filesystem::remove(FileName());
}
