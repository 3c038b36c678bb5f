#include "interaction/query.h"

#include "gooey/button.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/menu.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/modes.h"
#include "interaction/pending_pick.h"
#include "interaction/selection.h"
#include "interaction/tool_protocol.h"
#include "platform/drawing.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/drawing.h"
#include "views/markers.h"
#include "views/overlays.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr int MsgEmptyScene = 164;
constexpr int MsgSelectVertex = 166;
constexpr int MsgSelectObject = 168;
constexpr int MsgEditObject = 169;

constexpr std::uint32_t HighlightColour = 0xFF0000FF;
constexpr int BarTextX = 8, BarTextY = -23, BarButtonY = -31;

constexpr MenuEntry DoneEntry = {"Done", MenuEntryItem, 1, ' ', nullptr, nullptr};
constexpr MenuEntry HelpEntry = {"Help", MenuEntryLast, 2, '?', nullptr, nullptr};
const MenuEntry ObjectMenu[] = {{"Query Objects", MenuEntryTitle, 0, 0, nullptr, nullptr}, DoneEntry, HelpEntry};
const MenuEntry VertexMenu[] = {{"Query Vertices", MenuEntryTitle, 0, 0, nullptr, nullptr}, DoneEntry, HelpEntry};

constexpr std::int16_t ObjectStatus[] = {167, 90, 98, 100, 0};
constexpr std::int16_t VertexStatus[] = {165, 90, 98, 100, 0};

/// What has been picked; null while nothing has.
Object* FoundObject;
double FoundMin[3], FoundMax[3]; // its box
Matrixf FoundPlacement;
bool VertexIsFound;
double FoundVertex[3]; // scene space

/// Of the running query's bar; they go with the bar.
Gadget* BarText;
Gadget* EditButton;
int BarTextWidth; // pixels that the text may take

bool SceneHasObjects() {
    for (const Branch* branch : EveryBranch(Scene()))
        if (branch->Object)
            return true;
    return false;
}

/// Cuts the text's end off so that it fits into the bar.
std::string FittedToBar(std::string text) {
    if (StringWidth(text.c_str()) <= BarTextWidth)
        return text;
    const auto isInnerByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    while (!text.empty() && StringWidth((text + "...").c_str()) > BarTextWidth) {
        while (text.size() > 1 && isInnerByte(text.back()))
            text.pop_back();
        text.pop_back();
    }
    return text + "...";
}

void Report(const std::string& text) {
    if (BarText)
        SetText(BarText, FittedToBar(text).c_str());
    DirtyWindow(MainWindow);
    DirtyModelWindows();
}

void AddPrompt(int message) {
    BarText = AddText(BarTextX, BarTextY, msg(message), 1);
    BarTextWidth = StringWidth(msg(message));
    EditButton = nullptr;
}

void ForgetBar() {
    BarText = EditButton = nullptr;
}

void LeaveObjectQuery() {
    FoundObject = nullptr;
    ForgetBar();
}

/// Goes to the object alone.
void EditFoundObject() {
    Object* object = FoundObject;
    ClearControl();
    if (!object)
        return;
    CurrentObject() = object;
    ChangeObjectIsolation();
}

void BuildObjectBar() {
    AddPrompt(MsgSelectObject);
    EditButton = AddIntButtons(GooeyRight, BarButtonY, 0, ButtonsOfTextWidth | ButtonsSmallFont, 1, &MsgEditObject,
                               EditFoundObject, nullptr, nullptr);
    EditButton->Visible = 0;
}

void PickObject(View* view) {
    Object* object = SelectSingleObject(view);
    if (!object)
        return;
    FoundObject = object;
    std::copy_n(object->Min, 3, FoundMin);
    std::copy_n(object->Max, 3, FoundMax);
    FoundPlacement = ClickedBranchMatrix;
    if (EditButton)
        EditButton->Visible = 1;
    Report(std::string("Object = ") + object->Name);
}

void BuildVertexBar() {
    AddPrompt(MsgSelectVertex);
    BarTextWidth = MainWindow->Width; // numbers are not cut
}

void LeaveVertexQuery() {
    VertexIsFound = false;
    UnforceVerticesShown();
    ForgetBar();
}

void PickSceneVertex(View* view) {
    const Vertex* vertex = SelectSingleVertex(view);
    if (!vertex)
        return;
    VertexIsFound = true;
    std::copy_n(vertex->Position, 3, FoundVertex);
    char text[128];
    std::snprintf(text, sizeof text, "X = %.3f, Y = %.3f, Z = %.3f", FoundVertex[0], FoundVertex[1], FoundVertex[2]);
    Report(text);
}

const Tool ObjectQuery = {
    .Left = PickObject,
    .Menu = ObjectMenu,
    .Status = ObjectStatus,
    .Buttons = Tool::Bar::Done,
    .BuildBar = BuildObjectBar,
    .ManualPage = "R_SelectingThings",
    .Leave = LeaveObjectQuery,
};

const Tool VertexQuery = {
    .Left = PickSceneVertex,
    .Menu = VertexMenu,
    .Status = VertexStatus,
    .Buttons = Tool::Bar::Done,
    .BuildBar = BuildVertexBar,
    .ManualPage = "R_SelectingThings",
    .Leave = LeaveVertexQuery,
};

/// 1 when there is something to ask about; the scene is then deselected.
int SceneCanBeQueried() {
    if (ObjectIsolated)
        return 0;
    if (!SceneHasObjects()) {
        TellUser(MsgEmptyScene);
        return 0;
    }
    SelectScene(nullptr);
    return 1;
}

} // namespace

void QuerySceneObjects() {
    if (SceneCanBeQueried())
        BeginTool(ObjectQuery);
}

void QuerySceneVertices() {
    if (!SceneCanBeQueried())
        return;
    BeginTool(VertexQuery);
    ForceVerticesShown();
}

void DrawQueryHighlight(View* view) {
    if (VertexIsFound)
        DrawPickedPoints(view, FoundVertex, 1);
    if (!FoundObject)
        return;
    gl::zbuffer(true);
    gl::pushmatrix();
    SetUpView(view, 1); // polygons may lie in the box's sides
    gl::multmatrix(FoundPlacement.Element);
    gl::cpack(HighlightColour);
    DrawBoundry(FoundMin, FoundMax);
    gl::popmatrix();
    gl::zbuffer(false);
}

void RegisterQueries() {
    RegisterOverlay({OverlayBand::Model, QueryHighlightOrder, DrawQueryHighlight});
}
