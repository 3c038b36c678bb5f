// The windows of objects and their structure: 5,000 objects, or sub-objects, opened, scrolled and chosen, and a step of
// the slider that takes the eye away from a million polygons, beside a plain frame of them.
#include "bench/store_models.h"

#include "gooey/event_loop.h"
#include "gooey/list_gadget.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/slider.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/tool_protocol.h"
#include "platform/batch.h"
#include "platform/framebuffer.h"
#include "store/clean_up.h"
#include "store/structure_editing.h"
#include "structure/lod_setup.h"
#include "structure/object_browser.h"
#include "structure/structure_editor.h"
#include "structure/structure_windows.h"
#include "views/kept_drawings.h"
#include "views/main_window.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>

#include <cstdlib>
#include <string>

namespace {

constexpr int Many = 5000, Side = 1000;

void Rest() {
    while (CheckEvents() > 0)
        ;
    gl::FlushDrawing();
    glFinish();
}

void Show(Window* window) {
    RedrawWindow(window);
    gl::FlushDrawing();
    glFinish();
}

void EmptyModel() {
    ResetStorage();
    Rest();
}

void ManyObjects() {
    if (FirstObject() && FirstObject()->Next)
        return;
    EmptyModel();
    for (int i = 0; i < Many; ++i)
        AddObject(("Object " + std::to_string(100000 + i * 7919 % Many)).c_str(), 0, 0);
}

/// A list of the window that scrolls; its gadget.
Gadget* ScrollIn(Window* window) {
    for (Gadget* gadget = window->Gadgets; gadget; gadget = gadget->NextGadget)
        if (gadget->Kind && std::string(gadget->Kind->Name) == "scroll")
            return gadget;
    return nullptr;
}

void BrowserOpened(benchmark::State& state) {
    ManyObjects();
    for (auto _ : state) {
        OpenObjectBrowser();
        Show(ObjectBrowser);
        state.PauseTiming();
        ShutWindow(ObjectBrowser);
        Rest();
        state.ResumeTiming();
    }
}

void Scroll(benchmark::State& state, Window* window) {
    Gadget* list = ScrollIn(window);
    int offset = 0;
    for (auto _ : state) {
        ScrollOf(list).VOffset = offset = (offset + 1237) % (Many * 24 - 100);
        Show(window);
    }
}

void BrowserScrolled(benchmark::State& state) {
    ManyObjects();
    OpenObjectBrowser();
    Scroll(state, ObjectBrowser);
    ShutWindow(ObjectBrowser);
}

/// By the arrow key, with the views drawn as well.
void BrowserChosen(benchmark::State& state) {
    ManyObjects();
    OpenObjectBrowser();
    Gadget* list = ScrollIn(ObjectBrowser);
    for (auto _ : state) {
        const WindowScope scope(ObjectBrowser);
        MoveInList(list, DownCharacter);
        Rest();
    }
    ShutWindow(ObjectBrowser);
}

void EditorScrolled(benchmark::State& state) {
    EmptyModel();
    FirstLod();
    for (int i = 0; i < Many; ++i) {
        AddSubObject(("Part " + std::to_string(100000 + i)).c_str());
    }
    OpenStructureEditor();
    Scroll(state, StructureEditor);
    ShutWindow(StructureEditor);
    EmptyModel();
}

void MillionPolygons() {
    if (FirstPolygon())
        return;
    EmptyModel();
    BuildSheet(Side);
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        for (int axis = 0; axis < 2; ++axis)
            vertex->Position[axis] -= Side / 2.0;
    FirstLod();
    CleanUpObject();
    AddSubObject("Coarse");
    AddLod("Far");
    AddLodBead(SelectedSubObject());
    FirstLod()->Distance = 1e6;
    FirstLod()->Next->Distance = 1e5;
    SelectedLod() = FirstLod()->Next;
}

void PlainFrame(benchmark::State& state) {
    MillionPolygons();
    View& view = ObjectView(0);
    // What is kept of the drawing is made.
    for (int frame = 0; frame < 3; ++frame)
        Show(Viewport[0]);
    for (auto _ : state) {
        MultMatrix(YawMatrix(0.01), view.ViewMatrix, view.ViewMatrix);
        Show(Viewport[0]);
    }
}

void SliderStep(benchmark::State& state) {
    MillionPolygons();
    OpenStructureEditor();
    DoLodSetup();
    Rest();
    const Gadget* slider = LodSetup->Gadgets;
    while (!slider->Kind || std::string(slider->Kind->Name) != "slider")
        slider = slider->NextGadget;
    int position = 0;
    const auto step = [&] {
        position = (position + 1) % 100;
        const WindowScope scope(LodSetup);
        GadgetData<Slider>(slider).Moved(nullptr, 0, position);
        Show(LodSetup);
    };
    for (int frame = 0; frame < 3; ++frame)
        step();
    for (auto _ : state)
        step();
    SendToolKey(nullptr, ' ');
    Rest();
    ShutWindow(StructureEditor);
}

constexpr auto Milliseconds = benchmark::kMillisecond;

BENCHMARK(PlainFrame)->Unit(Milliseconds)->UseRealTime();
BENCHMARK(SliderStep)->Unit(Milliseconds)->UseRealTime();
BENCHMARK(BrowserOpened)->Unit(Milliseconds)->UseRealTime();
BENCHMARK(BrowserScrolled)->Unit(Milliseconds)->UseRealTime();
BENCHMARK(BrowserChosen)->Unit(Milliseconds)->UseRealTime();
BENCHMARK(EditorScrolled)->Unit(Milliseconds)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    setenv("KIRVO_DISPLAY", "headless:1280x1024", 1);
    setenv("KIRVO_SCALE", "1", 0);
    InitialiseStorage();
    OpenMainWindow();
    Rest();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    ReleaseKeptDrawings();
    EndToolkit();
    return 0;
}
