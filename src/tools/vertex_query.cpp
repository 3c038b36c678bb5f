#include "tools/vertex_query.h"

#include "gooey/event_loop.h"
#include "gooey/menu.h"
#include "gooey/numeric_panel.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "interaction/bar_gadgets.h"
#include "interaction/pending_pick.h"
#include "interaction/selection.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "store/accessors.h"
#include "store/normals.h"
#include "store/storage.h"
#include "textures/texture_lock.h"
#include "views/markers.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int Prompt = 166;
constexpr std::int16_t Status[] = {165, 98, 100, 99, 0};

constexpr int FieldX = 8, FieldY = -33, FieldWidth = 140, FieldStep = 150;
constexpr int FieldSize = 50; // characters

/// The vertex that is asked about, null when none is, and where it was when it was picked.
struct {
    ::Vertex* Vertex = nullptr;
    double Place[3] = {};
} AdjustedVertex;

/// Of the running tool's bar; they go with it.
Gadget* BarText;
NumericFields Coordinates;

const char* CoordinateText(int axis) {
    static char text[FieldSize];
    const double value = AdjustedVertex.Vertex ? AdjustedVertex.Vertex->Position[axis] : 0;
    if (std::snprintf(text, sizeof text, "%.4f", value) >= FieldSize)
        std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

void MoveTo(int axis, double value) {
    Vertex* const vertex = AdjustedVertex.Vertex;
    MoveKeepingTextures({&vertex, 1}, [=] { vertex->Position[axis] = value; });
    ConnectionsOK() = 0;
    WorkSaved = 0;
    DirtyModelWindows();
}

bool SetCoordinate(int axis, double value) {
    if (AdjustedVertex.Vertex)
        MoveTo(axis, value);
    return true;
}

constexpr NumberInput Fields[] = {
    {.X = FieldX, .Y = FieldY, .Width = FieldWidth, .Label = "X = "},
    {.X = FieldX + FieldStep, .Y = FieldY, .Width = FieldWidth, .Label = "Y = "},
    {.X = FieldX + 2 * FieldStep, .Y = FieldY, .Width = FieldWidth, .Label = "Z = "},
};

const NumericPanel CoordinatePanel = {
    .Inputs = Fields,
    .Text = CoordinateText,
    .Apply = SetCoordinate,
    .TakesWhenLeft = true,
    .ManualPage = "R_VertexAdjust",
    .TextSize = FieldSize,
};

/// The question, or the coordinates.
void ShowPicked() {
    const bool picked = AdjustedVertex.Vertex != nullptr;
    BarText->Visible = !picked;
    for (Gadget* field : Coordinates.Inputs)
        if (field)
            field->Visible = picked;
    DirtyWindow(MainWindow);
}

void BuildBar() {
    BarText = AddBarText(Prompt);
    AddNumericPanel(CoordinatePanel, Coordinates);
    ShowPicked();
}

void TakeWhatIsTyped() {
    if (const int typing = ActiveNumber(Coordinates); typing >= 0)
        TakeNumber(Coordinates, typing);
}

void VertexAdjustLeft(View* view) {
    TakeWhatIsTyped();
    DeselectAllVertices();
    Vertex* vertex = SelectSingleVertex(view);
    AdjustedVertex.Vertex = vertex;
    if (vertex) {
        std::copy_n(vertex->Position, 3, AdjustedVertex.Place);
        SetVertexSelected(CurrentObject(), vertex, 1);
    }
    ShowNumbers(Coordinates, true, false);
    ShowPicked();
    if (vertex)
        ActivateNumber(Coordinates, 0);
    DirtyModelWindows();
}

int HasMoved() {
    const Vertex* vertex = AdjustedVertex.Vertex;
    return vertex && !std::equal(vertex->Position, vertex->Position + 3, AdjustedVertex.Place);
}

void KeepPlace() {
    TakeWhatIsTyped();
    AdjustedVertex.Vertex = nullptr;
}

void Leave() {
    for (int axis = 0; HasMoved() && axis < 3; ++axis)
        MoveTo(axis, AdjustedVertex.Place[axis]);
    AdjustedVertex.Vertex = nullptr;
    BarText = nullptr;
    Coordinates = {};
    DeselectAllVertices();
    UnforceVerticesShown();
    LabelSelectedVertices = 0;
    KeepPolygonsWithoutArea = 0;
    NormalsOK() = 0;
}

const MenuEntry Menu[] = {
    {"Query vertices", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntrySeparated, 1, ' ', nullptr, nullptr},
    ViewEntry,
    LastSettingsEntry,
};

const Tool VertexQuery = {
    .Left = VertexAdjustLeft,
    .Menu = Menu,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .CancelCode = EscapeCharacter,
    .ManualPage = "R_VertexAdjust",
    .Done = KeepPlace,
    .HoldsWork = HasMoved,
    .Leave = Leave,
};

} // namespace

void Query_AdjustVertices() {
    BeginTool(VertexQuery);
    DeselectAllVertices();
    ForceVerticesShown();
    LabelSelectedVertices = 1;
    // A coordinate that is typed may take a polygon's area until the next one is.
    KeepPolygonsWithoutArea = 1;
}
