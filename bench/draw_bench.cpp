// Drawing: what a frame of 100,000 lit quadrilaterals costs through the immediate calls, and what replaying a recording
// of 1,000,000 costs beside a vertex and index buffer drawn by hand with the same shader.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include "platform/batch.h"
#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/graphics_context.h"
#include "platform/lighting.h"
#include "platform/matrices.h"
#include "platform/recordings.h"
#include "platform/state.h"
#include "platform/surface.h"
#include "platform/text.h"

using namespace gl;

namespace {

constexpr int Width = 750, Height = 525;

// A height field of side x side quadrilaterals, each with its normal.
struct Field {
    struct Quad {
        float normal[3];
        double corners[4][3];
    };

    std::vector<Quad> quads;

    explicit Field(int side) {
        auto height = [](double x, double y) { return 0.1 * std::sin(12 * x) * std::cos(9 * y); };
        quads.reserve(static_cast<size_t>(side) * side);
        for (int row = 0; row < side; row++)
            for (int column = 0; column < side; column++) {
                Quad quad;
                for (int corner = 0; corner < 4; corner++) {
                    const double x = (column + (corner == 1 || corner == 2)) * 2.0 / side - 1;
                    const double y = (row + (corner >= 2)) * 2.0 / side - 1;
                    quad.corners[corner][0] = x;
                    quad.corners[corner][1] = y;
                    quad.corners[corner][2] = height(x, y);
                }
                const double x = quad.corners[0][0], y = quad.corners[0][1];
                const double n[3] = {-1.2 * std::cos(12 * x) * std::cos(9 * y),
                                     0.9 * std::sin(12 * x) * std::sin(9 * y), 1};
                const double length = std::hypot(n[0], n[1], n[2]);
                for (int i = 0; i < 3; i++)
                    quad.normal[i] = static_cast<float>(n[i] / length);
                quads.push_back(quad);
            }
    }
};

const Field& HundredThousand() {
    static const Field field(316);
    return field;
}

const Field& Million() {
    static const Field field(1000);
    return field;
}

void DrawQuads(const Field& field, int materialEvery) {
    int count = 0;
    for (const Field::Quad& quad : field.quads) {
        if (materialEvery && count++ % materialEvery == 0)
            lmbind(MATERIAL, 1 + count / materialEvery % 7);
        bgnpolygon();
        n3f(quad.normal);
        for (const double* corner : quad.corners)
            v3d(corner);
        endpolygon();
    }
}

// A view of the field, and a surface that lives as long as the process.
void SetScene() {
    static Surface* surface = nullptr;
    if (!surface) {
        std::string error;
        if (!OpenHeadlessContext(error)) {
            std::fprintf(stderr, "%s\n", error.c_str());
            std::exit(1);
        }
        surface = new Surface(Width, Height, true);
        MakeSurfaceCurrent(surface);
        mmode(MVIEWING);
        const float model[] = {AMBIENT, 0.5f, 0.5f, 0.5f, TWOSIDE, 1, LMNULL};
        const float light[] = {LCOLOR, 1, 1, 1, POSITION, 1, 1, 1, 0, LMNULL};
        lmdef(DEFLMODEL, 1, 0, model);
        lmdef(DEFLIGHT, 1, 0, light);
        for (int i = 1; i <= 7; i++) {
            const float part = static_cast<float>(i) / 7;
            const float material[] = {AMBIENT,  0.3f, 0.3f, part, DIFFUSE,   0.5f, part,  0.5f,
                                      SPECULAR, 0.8f, 0.8f, 0.8f, SHININESS, 50,   LMNULL};
            lmdef(DEFMATERIAL, i, 0, material);
        }
    }
    viewport(0, Width - 1, 0, Height - 1);
    loadmatrix(std::vector<double>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}.data());
    lmbind(LMODEL, 1);
    lmbind(LIGHT0, 1);
    lmbind(MATERIAL, 1);
    perspective(400, static_cast<double>(Width) / Height, 0.1, 10);
    translate(0, 0, -3);
    rot(-50, 'x');
    zbuffer(true);
    czclear(0x404040, 0xFFFFFF);
}

enum Rasterisation { NoDriver, Off, On };

void Frame(benchmark::State& state, Rasterisation rasterisation, int materialEvery) {
    SetScene();
    if (rasterisation == NoDriver)
        scrmask(-10, -1, -10, -1); // everything is masked out: nothing reaches the driver
    if (rasterisation == Off)
        glEnable(GL_RASTERIZER_DISCARD);
    for (auto _ : state) {
        DrawQuads(HundredThousand(), materialEvery);
        FlushDrawing();
        if (rasterisation == On)
            glFinish();
    }
    glDisable(GL_RASTERIZER_DISCARD);
    state.counters["quads"] = static_cast<double>(HundredThousand().quads.size());
}

void ImmediateCalls(benchmark::State& state) {
    Frame(state, NoDriver, 0);
}

void ImmediateFrame(benchmark::State& state) {
    Frame(state, Off, 0);
}

void ImmediateFrameMaterials(benchmark::State& state) {
    Frame(state, Off, 10);
}

void ImmediateFrameRasterised(benchmark::State& state) {
    Frame(state, On, 0);
}

void ReplayMillion(benchmark::State& state) {
    SetScene();
    const int number = 1;
    if (!isobj(number)) {
        makeobj(number);
        DrawQuads(Million(), 0);
        closeobj();
    }
    for (auto _ : state) {
        czclear(0x404040, 0xFFFFFF);
        callobj(number);
        FlushDrawing();
        glFinish();
    }
    state.counters["MB"] = static_cast<double>(RecordingMemory()) / 1e6;
    state.counters["runs"] = RecordingRuns(number);
}

// The same vertices and indices in buffers of our own, drawn by one call with the program that the replay left bound.
void HandWrittenMillion(benchmark::State& state) {
    SetScene();
    if (!isobj(1)) {
        makeobj(1);
        DrawQuads(Million(), 0);
        closeobj();
    }
    std::vector<Vertex> vertices;
    std::vector<uint32_t> indices;
    const double* origin = Million().quads[0].corners[0];
    for (const Field::Quad& quad : Million().quads) {
        const auto first = static_cast<uint32_t>(vertices.size());
        for (const double* corner : quad.corners) {
            Vertex vertex = {};
            for (int i = 0; i < 3; i++) {
                vertex.position[i] = static_cast<float>(corner[i] - origin[i]);
                vertex.normal[i] = static_cast<int16_t>(std::lrint(quad.normal[i] * 32767));
            }
            vertices.push_back(vertex);
        }
        for (uint32_t corner : {0, 1, 2, 0, 2, 3})
            indices.push_back(first + corner);
    }
    unsigned arrays, buffers[2];
    glGenVertexArrays(1, &arrays);
    glBindVertexArray(arrays);
    glGenBuffers(2, buffers);
    glBindBuffer(GL_ARRAY_BUFFER, buffers[0]);
    glBufferData(GL_ARRAY_BUFFER, static_cast<long>(vertices.size() * sizeof vertices[0]), vertices.data(),
                 GL_STATIC_DRAW);
    DescribeVertices(sizeof(Vertex));
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers[1]);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<long>(indices.size() * sizeof indices[0]), indices.data(),
                 GL_STATIC_DRAW);
    ForgetGraphicsState();
    czclear(0x404040, 0xFFFFFF);
    callobj(1);
    glBindVertexArray(arrays);
    for (auto _ : state) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDrawElements(GL_TRIANGLES, static_cast<int>(indices.size()), GL_UNSIGNED_INT, nullptr);
        glFinish();
    }
    glDeleteBuffers(2, buffers);
    glDeleteVertexArrays(1, &arrays);
    ForgetGraphicsState();
}

// A window of the toolkit: 100 bevelled buttons with labels.
void Buttons(benchmark::State& state) {
    SetScene();
    zbuffer(false);
    loadmatrix(std::vector<double>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}.data());
    ortho2(-0.5, Width - 0.5, -0.5, Height - 0.5);
    font(0);
    auto line = [](int x1, int y1, int x2, int y2) {
        const int32_t a[2] = {x1, y1}, b[2] = {x2, y2};
        bgnline();
        v2i(a);
        v2i(b);
        endline();
    };
    for (auto _ : state) {
        for (int i = 0; i < 100; i++) {
            const int x = 10 + i % 10 * 70, y = 10 + i / 10 * 50;
            cpack(0xAAAAAA);
            rectfi(x + 4, y + 4, x + 60, y + 35);
            for (int k = 0; k < 4; k++) {
                cpack(0x101010u * static_cast<uint32_t>(5 + k));
                line(x + k, y + k, x + 64 - k, y + k);
                line(x + 64 - k, y + k, x + 64 - k, y + 39 - k);
                cpack(0x101010u * static_cast<uint32_t>(15 - k));
                line(x + k, y + k, x + k, y + 39 - k);
                line(x + k, y + 39 - k, x + 64 - k, y + 39 - k);
            }
            cpack(0);
            cmov2i(x + 10, y + 14);
            charstr("Button");
        }
        FlushDrawing();
        glFinish();
    }
}

} // namespace

BENCHMARK(ImmediateCalls)->Unit(benchmark::kMillisecond);
BENCHMARK(ImmediateFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(ImmediateFrameMaterials)->Unit(benchmark::kMillisecond);
BENCHMARK(ImmediateFrameRasterised)->Unit(benchmark::kMillisecond);
BENCHMARK(ReplayMillion)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(HandWrittenMillion)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(Buttons)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
