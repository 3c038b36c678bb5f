#include "tools/create_vertices.h"

#include "gooey/event_loop.h"
#include "gooey/menu.h"
#include "interaction/bar_gadgets.h"
#include "interaction/grid_gizmo.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "platform/events.h"
#include "store/lists.h"
#include "store/new_vertices.h"
#include "store/polygon_editing.h"
#include "tools/creation_guards.h"
#include "tools/grid_points.h"
#include "views/viewports.h"

namespace {

constexpr int BarLabel = 72;

constexpr std::int16_t Status[] = {81, 91, 98, 103, 100, 101, 99, 0};

void VertexOnGridLeft(View* view) {
    MakeVertexOnGrid(view, 1);
}

int VertexOnGridMiddle(View* view) {
    if (!NewVertices)
        return 0;
    DragCoordAroundGrid(view, NewVertices->Position, gl::MIDDLEMOUSE, nullptr);
    return 1;
}

int VertexGridKey(View*, int character) {
    if (character != BackspaceCharacter)
        return 0;
    DeleteLastNewVertex();
    if (NewVertices)
        NewVertices->Selected = 1;
    DirtyModelWindows();
    return 1;
}

const MenuEntry Menu[] = {
    {"Create vertices", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntrySeparated, 1, ' ', nullptr, nullptr},
    GridControlEntry,
    ViewEntry,
    LastSettingsEntry,
};

void BuildBar() {
    AddBarText(BarLabel);
    AddDeleteLastButton();
}

const Tool CreateVertices = {
    .Left = VertexOnGridLeft,
    .Middle = VertexOnGridMiddle,
    .Menu = Menu,
    .Key = VertexGridKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .CancelCode = EscapeCharacter,
    .ManualPage = "R_VerticesOnGrid",
    .Done = AddNewVerticesToObject,
    .Leave = DeleteAllNewVertices,
};

} // namespace

void AddNewVerticesToObject() {
    if (!NewVertices)
        return;
    BeforeToolChange();
    for (const Vertex* made : Along<&Vertex::Next>(NewVertices))
        AddVertex(made->Position[0], made->Position[1], made->Position[2]);
}

void CreateVerticesOnGrid() {
    if (!CreationInObjectMode())
        return;
    DeleteAllNewVertices();
    LabelLastNewVertex = 1;
    ShowGrid(1);
    DeselectEverything();
    BeginTool(CreateVertices);
}
