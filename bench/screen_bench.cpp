// The screen: composing what changed, doing nothing when nothing did, and how soon something is seen.
#include "platform/compositor.h"
#include "platform/drawing.h"
#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/framebuffer.h"
#include "platform/graphics_context.h"
#include "platform/input.h"
#include "platform/matrices.h"
#include "platform/snapshots.h"
#include "platform/state.h"
#include "platform/system.h"
#include "platform/windows.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace gl;

int Windows[9];

// Nine windows over a screen of 1920 x 1200, a large one below.
void OpenNineWindows() {
    EndDisplay();
    setenv("KIRVO_DISPLAY", "headless:1920x1200", 1);
    for (int i = 0; i < 9; i++) {
        if (i == 0)
            prefposition(300, 1500, 100, 1000);
        else
            prefposition(20 + i * 180, 20 + i * 180 + 400, 40 + i * 90, 40 + i * 90 + 300);
        Windows[i] = winopen("Window");
        doublebuffer();
        gconfig();
        cpack(0x808080 + static_cast<unsigned>(i) * 0x10);
        clear();
        swapbuffers();
        int width = 0, height = 0;
        getsize(&width, &height);
        viewport(0, width - 1, 0, height - 1);
        ortho2(-0.5, width - 0.5, -0.5, height - 0.5);
    }
    ComposeScreen();
    glFinish();
}

// A square changes in the shown picture of the lowest window; drawing it is not counted, composing is waited for.
void ComposeChange(benchmark::State& state) {
    OpenNineWindows();
    const int size = static_cast<int>(state.range(0));
    winset(Windows[0]);
    frontbuffer(true);
    unsigned colour = 0;
    for (auto _ : state) {
        cpack(colour += 0x010203);
        rectfi(100, 100, 100 + size - 1, 100 + size - 1);
        FlushDrawing();
        glFinish();
        const auto start = std::chrono::steady_clock::now();
        ComposeScreen();
        glFinish();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    EndDisplay();
}

BENCHMARK(ComposeChange)->Arg(20)->Arg(200)->Arg(800)->UseManualTime()->Unit(benchmark::kMillisecond);

void ComposeEverything(benchmark::State& state) {
    OpenNineWindows();
    std::string error;
    for (auto _ : state) {
        const PixelBox screen = ScreenPixels();
        OpenCompositor(screen.width, screen.height, error);
        ComposeScreen();
        glFinish();
    }
    EndDisplay();
}

BENCHMARK(ComposeEverything)->Unit(benchmark::kMillisecond);

// A rubber band of 200 x 200 in the overlay, erased and drawn elsewhere.
void ComposeRubberBand(benchmark::State& state) {
    OpenNineWindows();
    winset(Windows[0]);
    drawmode(PUPDRAW);
    mapcolor(1, 255, 0, 0);
    int x = 100;
    auto band = [&](int index) {
        color(index);
        recti(x, 100, x + 199, 299);
    };
    for (auto _ : state) {
        band(0);
        x = 100 + (x + 7) % 200;
        band(1);
        ComposeScreen();
        glFinish();
    }
    drawmode(NORMALDRAW);
    EndDisplay();
}

BENCHMARK(ComposeRubberBand)->Unit(benchmark::kMillisecond);

// A pass of an idle main loop: sleeping, asking, composing nothing.
void IdlePass(benchmark::State& state) {
    OpenNineWindows();
    while (qtest() != 0)
        qread(nullptr);
    for (auto _ : state) {
        sginap(1);
        benchmark::DoNotOptimize(qtest());
        ComposeScreen();
    }
    EndDisplay();
}

BENCHMARK(IdlePass)->Unit(benchmark::kMicrosecond);

// The pointer moves over windows and frames, button events are tied and read.
void MovePointerAndClick(benchmark::State& state) {
    OpenNineWindows();
    qdevice(LEFTMOUSE);
    tie(LEFTMOUSE, MOUSEX, MOUSEY);
    int x = 0;
    for (auto _ : state) {
        x = (x + 37) % 1900;
        PointerMoved(x, 500);
        ButtonChanged(MIDDLEMOUSE, true);
        ButtonChanged(MIDDLEMOUSE, false);
        while (qtest() != 0)
            qread(nullptr);
    }
    EndDisplay();
}

BENCHMARK(MovePointerAndClick)->Unit(benchmark::kMicrosecond);

// A program of its own: one window, drawn, seen. SCREEN_BENCH_PROGRAM tells the process to be that program.
void RunSmallProgram() {
    prefsize(750, 525);
    winopen("Kirvo");
    doublebuffer();
    gconfig();
    cpack(0x808080);
    clear();
    swapbuffers();
    qtest();
    sginap(1);
    if (ScreenIsDamaged())
        ComposeScreen();
    glFinish();
    std::_Exit(0);
}

// On the display that SCREEN_BENCH_DISPLAY names (headless when unset).
void StartToFirstFrame(benchmark::State& state) {
    const char* display = std::getenv("SCREEN_BENCH_DISPLAY");
    setenv("KIRVO_DISPLAY", display ? display : "headless", 1);
    setenv("SCREEN_BENCH_PROGRAM", "1", 1);
    for (auto _ : state) {
        const pid_t child = fork();
        if (child == 0) {
            execl("/proc/self/exe", "screen_bench", nullptr);
            _exit(1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        if (status != 0)
            state.SkipWithError("the program failed");
    }
    unsetenv("SCREEN_BENCH_PROGRAM");
}

BENCHMARK(StartToFirstFrame)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int count, char** words) {
    if (std::getenv("SCREEN_BENCH_PROGRAM"))
        RunSmallProgram();
    benchmark::Initialize(&count, words);
    benchmark::RunSpecifiedBenchmarks();
}
