#include "tools/amalgamation.h"

#include "base/debug.h"
#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/manual.h"
#include "gooey/message_table.h"
#include "gooey/numeric_panel.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "gooey/word_wrap.h"
#include "interaction/selection.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/integrity.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/undo.h"
#include "store/walks.h"
#include "tools/close_vertices.h"
#include "views/display_flags.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstdio>
#include <vector>

Window* AmalgamateWindow;
int AmalgamateX, AmalgamateY, AmalgamateOpened;
double AmalgamateGap = 1.0;

namespace {

constexpr int Explanation = 64;
constexpr std::int16_t Status[] = {63, 0};
constexpr char ManualPage[] = "R_JoiningVertices";

/// A gap of 1 in radii of the object.
constexpr double RadiiOfGap = 0.001;

constexpr int WindowWidth = 400, WindowHeight = 180;
constexpr int GapX = 8, GapY = 50, GapWidth = 230, GapTextSize = 10;

/// The vertices of the object by x.
std::vector<Vertex*> SortedVertices;
NumericFields GapField;
int ShowedVertices;

void SortVertices() {
    SortedVertices.clear();
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        SortedVertices.push_back(vertex);
    std::stable_sort(SortedVertices.begin(), SortedVertices.end(),
                     [](const Vertex* a, const Vertex* b) { return a->Position[0] < b->Position[0]; });
}

// ---- Joining

bool HeadsAChain(const Vertex* vertex) {
    return vertex->Selected && vertex->NextInGroup;
}

void JoinChain(Vertex* first) {
    double sum[3] = {0, 0, 0};
    int count = 0;
    for (Vertex* vertex : Along<&Vertex::NextInGroup>(first)) {
        for (int axis = 0; axis < 3; ++axis)
            sum[axis] += vertex->Position[axis];
        ++count;
        vertex->NextInGroup = nullptr;
        if (vertex == first || !vertex->Selected)
            continue;
        vertex->Mark = 1;
        for (PolygonBead* bead : EveryUse(vertex))
            bead->Vertex = first;
    }
    for (int axis = 0; axis < 3; ++axis)
        first->Position[axis] = sum[axis] / count;
    first->Selected = 0;
}

int DeleteJoinedVertices() {
    int deleted = 0;
    for (Vertex* vertex : EveryVertex(CurrentObject())) {
        // One that was alone in its chain in the end, because the user has taken out the others, is selected, too.
        if (vertex->Mark) {
            DeleteVertex(vertex);
            ++deleted;
        } else
            vertex->Selected = 0;
    }
    VertexSelectionChanged() = 1;
    return deleted;
}

// ---- The window and the tool

const char* GapText(int) {
    static char text[GapTextSize];
    std::snprintf(text, sizeof text, AmalgamateGap < 1e6 ? "%.6g" : "%.2g", AmalgamateGap);
    return AmalgamateGap == 1 ? "1.0" : text;
}

void ShowCloseVertices() {
    FindCloseVertices();
    DirtyModelWindows();
}

bool SetGap(int, double gap) {
    AmalgamateGap = gap;
    Trace("Tolerance set to:%f\n", gap);
    ShowCloseVertices();
    return true;
}

constexpr NumberInput GapInput[] = {{.X = GapX, .Y = GapY, .Width = GapWidth, .Flags = 0, .Label = "Minimum gap:"}};

const NumericPanel GapPanel = {
    .Inputs = GapInput,
    .Text = GapText,
    .Apply = SetGap,
    .Return = AfterReturn::Stay,
    .TakesWhenLeft = true,
    .ManualPage = ManualPage,
    .TextSize = GapTextSize,
};

void ChooseButton() {
    if (ButtonChoice == 0) {
        TakeNumber(GapField, 0);
        DoAmalgamate();
    }
    ClearControl();
}

void BuildWindow() {
    static constexpr const char* buttons[] = {"Do it", "Cancel"};
    AddBackdrop();
    Kirvo_AddGadget([] { WindowWrite(msg(Explanation)); }, nullptr);
    AddNumericPanel(GapPanel, GapField);
    AddButtons(0, 8, WindowWidth, 0, 2, buttons, ChooseButton, nullptr, nullptr);
}

void EndTool();

void WindowGoes() {
    GapField = {};
    EndTool();
}

const ToolWindow Amalgamation = {
    .Title = "Amalgamate vertices",
    .Handle = &AmalgamateWindow,
    .Width = WindowWidth,
    .Height = WindowHeight,
    .Place = {.Opened = &AmalgamateOpened, .X = &AmalgamateX, .Y = &AmalgamateY},
    .Build = BuildWindow,
    .Closed = WindowGoes,
    .ManualPage = ManualPage,
    .ManualName = "Amalgamate",
};

void MarkAgain(View*) {
    ShowCloseVertices();
}

int NoKeys(View*, int) {
    return 0;
}

void Leave() {
    CloseToolWindow(Amalgamation);
    SortedVertices = {};
    ShowVertices = ShowedVertices;
    DeselectAllVertices();
}

const Tool AmalgamateTool = {
    .Left = DeselectVertices,
    .Right = MarkAgain,
    .Key = NoKeys,
    .Status = Status,
    .DoneCode = 0, // "Do it" cannot be typed by accident
    .CancelCode = EscapeCharacter,
    .ManualPage = ManualPage,
    .Leave = Leave,
};

/// Another one may run when the window is gone at last.
void EndTool() {
    if (ToolRuns(AmalgamateTool))
        ClearControl();
}

} // namespace

void AmalgamateVertices() {
    if (!AnythingInObject())
        return;
    CleanUpObject();
    DeselectEverything();
    AmalgamateGap = 1.0;
    SortVertices();
    BeginTool(AmalgamateTool);
    ShowedVertices = ShowVertices;
    ShowVertices = 0;
    {
        WindowScope scope(CurrentWindow);
        OpenToolWindow(Amalgamation);
    }
    ShowCloseVertices();
}

void FindCloseVertices() {
    const double distance = ObjectRadius() * RadiiOfGap * AmalgamateGap;
    const std::vector<std::uint32_t> first = GroupCloseVertices(SortedVertices, distance);
    std::vector<Vertex*> last(SortedVertices.size()); // of the chain that each heads
    for (Vertex* vertex : SortedVertices) {
        vertex->Selected = 0;
        vertex->NextInGroup = nullptr;
    }
    for (std::size_t i = 0; i < SortedVertices.size(); ++i) {
        Vertex* vertex = SortedVertices[i];
        if (first[i] != i) {
            vertex->Selected = last[first[i]]->Selected = 1;
            last[first[i]]->NextInGroup = vertex;
        }
        last[first[i]] = vertex;
    }
    VertexSelectionChanged() = 1;
}

void DoAmalgamate() {
    Trace("Doing amalgamate...\n");
    CleanUpObject();
    CopyCurrentObject();
    ClearAllVertexFlags();
    int joined = 0;
    for (Vertex* vertex : SortedVertices)
        if (HeadsAChain(vertex)) {
            JoinChain(vertex);
            ++joined;
        }
    Trace("%d amalgamations done...\n", joined);
    SussMinkyPolygons();
    ConnectionsOK() = 0;
    CleanUpObject();
    Trace("%d vertices deleted...\n", DeleteJoinedVertices());
    SortedVertices.clear();
    CheckIntegrity();
    DirtyModelWindows();
}
