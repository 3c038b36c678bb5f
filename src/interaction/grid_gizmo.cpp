#include "interaction/grid_gizmo.h"

#include "geometry/numbers.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/inc_dec.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/numeric_panel.h"
#include "gooey/redraw.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/grid_placement.h"
#include "interaction/grid_tools.h"
#include "interaction/position_gizmo.h"
#include "interaction/rotate_dial.h"
#include "platform/events.h"
#include "views/grid.h"
#include "views/moves.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>

int GridX, GridY, GridGizmoOpened, GridOpen;
int GridGizmoDisabled;

namespace {

constexpr char ManualPage[] = "R_GridGizmo";
constexpr int SnapLabel = 155, SquareLabel = 196, SizeLabel = 197;

constexpr int FullWidth = 582, FullHeight = 148, CompactWidth = 440, CompactHeight = 75;

constexpr int LeastSteps = 5, MostSteps = 1000;

double GridAngle;
int GridRotateMode;
/// What the boxes show; copied from the scene or the object whenever the window is drawn.
int ShownIndex, ShownSteps;
/// The offset that was entered last.
std::string LastOffset;
NumericFields Offset, Angle;
/// The compact form leaves out all gadgets that follow this one.
Gadget* LastOfCompact;

/// Of a drag of the dial.
View* TurnedView;
int TurnedViewport;
Matrix GridAtStart;
double AngleAtStart;

void CopyGridSize() {
    ShownIndex = std::clamp(ShownGridIndex(), 0, GridSquareCount - 1);
    ShownSteps = DrawnGridSteps(ShownGridSteps());
}

void DrawGridScale() {
    const int y = CurrentWindow->Height - 65;
    SmallText(8, y, msg(SquareLabel), White);
    SmallText(258, y, msg(SizeLabel), White);
    CopyGridSize();
}

const char* SquareText(GadgetArg) {
    static char text[32];
    double length = GridSquare(ShownIndex);
    const char* const unit = ScaleNumber(&length);
    std::snprintf(text, sizeof text, "%d %s", static_cast<int>(std::lround(length)), unit);
    return text;
}

void StoreGridSize() {
    ShownGridIndex() = ShownIndex;
    ShownGridSteps() = ShownSteps;
    DirtyWindow(GridGizmo);
    DirtyModelWindows();
    ForceOffsetUpdate();
}

void ChangeSquare(GadgetArg, int) {
    ShownIndex = std::clamp(ShownIndex, 0, GridSquareCount - 1);
    StoreGridSize();
}

void ChangeSize(GadgetArg, int delta) {
    const int steps = ShownSteps - delta;
    if (delta > 0)
        ShownSteps = std::min(2 * steps, MostSteps);
    else
        ShownSteps = steps > LeastSteps ? std::max(steps / 2, LeastSteps) : steps;
    StoreGridSize();
}

void FlagChanged(GadgetArg) {
    DirtyModelWindows();
}

const char* OffsetText(int) {
    return LastOffset.c_str();
}

bool TakeOffset(int, double squares) {
    if (!OffsetGrid(ViewOfViewport(0), squares * OneGridSquare()))
        return false;
    LastOffset = Offset.Texts[0];
    DirtyModelWindows();
    return true;
}

const char* AngleText(int) {
    return PrintNoDecimals(GridAngle, 2);
}

bool TakeAngle(int, double degrees) {
    int viewport;
    View* const view = FindThreeDeeView(viewport);
    if (view && degrees != GridAngle) {
        TurnGrid(view, GridRotateMode, degrees - GridAngle);
        GridAngle = degrees;
        DirtyModelWindows();
    }
    SetGridAngle(GridAngle);
    return true;
}

constexpr NumberInput OffsetInputs[] = {{.X = 250, .Y = -111, .Width = 193, .Label = "Offset:"}};
constexpr NumberInput AngleInputs[] = {{.X = 528, .Y = -39, .Width = 48}};

const NumericPanel OffsetPanel = {.Inputs = OffsetInputs,
                                  .Text = OffsetText,
                                  .Apply = TakeOffset,
                                  .Return = AfterReturn::Stay,
                                  .TakesUnchanged = true,
                                  .ManualPage = ManualPage,
                                  .TextSize = 10};
const NumericPanel AnglePanel = {.Inputs = AngleInputs,
                                 .Text = AngleText,
                                 .Apply = TakeAngle,
                                 .Return = AfterReturn::Leave,
                                 .ManualPage = ManualPage,
                                 .TextSize = 8};

void ChooseAxis() {
    ResetGridPlane(ViewOfViewport(0), ButtonChoice);
    SetGridAngle(0);
    GridAlignChoice = -1;
    DirtyWindow(GridGizmo);
    DirtyModelWindows();
}

void ChooseAlignment() {
    ButtonChoice == 0 ? StartGridToPolygon() : StartGridToVertices();
    DirtyWindow(GridGizmo);
}

void ChooseOffset() {
    ButtonChoice == 0 ? StartGridToVertex() : StartGridWithMouse();
    DirtyWindow(GridGizmo);
}

void ChooseRotation() {
    SetGridAngle(0);
}

void BeginTurn() {
    TurnedView = FindThreeDeeView(TurnedViewport);
    if (!TurnedView)
        return;
    GridAtStart = TurnedView->GridMatrix;
    AngleAtStart = GridAngle;
    WindowScope scope(Viewport[TurnedViewport]);
    StartMove();
}

void Turn(double degrees) {
    const double angle = degrees > 179.5 ? 180 : std::trunc(degrees);
    if (!TurnedView || angle == GridAngle)
        return;
    SetGridAngle(angle);
    RedrawWindow(GridGizmo);
    TurnedView->GridMatrix = GridAtStart;
    TurnGrid(TurnedView, GridRotateMode, AngleAtStart - angle);
    WindowScope scope(Viewport[TurnedViewport]);
    RedrawModelWindows();
}

void EndTurn() {
    if (!std::exchange(TurnedView, nullptr))
        return;
    WindowScope scope(Viewport[TurnedViewport]);
    StopMove();
}

void Measure(int& width, int& height) {
    width = GridGizmoDisabled ? CompactWidth : FullWidth;
    height = GridGizmoDisabled ? CompactHeight : FullHeight;
}

void SetVisibility() {
    for (Gadget* gadget = LastOfCompact->NextGadget; gadget; gadget = gadget->NextGadget)
        gadget->Visible = !GridGizmoDisabled;
}

void Build() {
    static constexpr const char* axes[] = {"x-y", "x-z", "y-z"};
    static constexpr const char* alignments[] = {"Polygon", "Vertices"};
    static constexpr const char* offsets[] = {"Vertex", "Mouse"};
    static constexpr const char* rotations[] = {"Twist", "Tilt"};
    LastOffset = "0";
    AddBackdrop();
    AddCheckBox(8, -34, 0, 0, nullptr, "Show grid", FlagChanged, &GridVisible);
    AddCheckBox(GooeyRight + 8, -34, 0, 0, nullptr, "Grid on top", FlagChanged, &GridOnTop);
    AddIntCheck(GooeyRight + 8, -34, 0, 0, nullptr, SnapLabel, nullptr, &GridSnap);
    Kirvo_AddGadget(DrawGridScale, nullptr);
    AddIncDec(103, -72, 126, nullptr, SquareText, ChangeSquare, &ShownIndex);
    LastOfCompact = AddIncDec(320, -72, 113, nullptr, nullptr, ChangeSize, &ShownSteps);
    AddPromptedButtons(8, -107, 230, ButtonsSmallFont, "Axis: ", 3, axes, ChooseAxis, &GridAxisChoice);
    AddNumericPanel(OffsetPanel, Offset);
    AddPromptedButtons(8, -140, 225, ButtonsSmallFont, "Align:", 2, alignments, ChooseAlignment, &GridAlignChoice);
    AddButtons(283, -140, 0, ButtonsSmallFont, 2, offsets, ChooseOffset, &GridOffsetChoice, nullptr);
    AddButtons(449, -140, 0, ButtonsSmallFont, 2, rotations, ChooseRotation, &GridRotateMode, nullptr);
    AddRotateDial({.X = 489,
                   .Y = -59,
                   .Radius = 40,
                   .Reach = 40,
                   .Angle = &GridAngle,
                   .Begin = BeginTurn,
                   .Turn = Turn,
                   .End = EndTurn,
                   .Label = "Angle"});
    AddNumericPanel(AnglePanel, Angle);
    SetVisibility();
    CopyGridSize();
}

void TakeEvent(int device, short value) {
    if (device == gl::KEYBD)
        EndGridTool(nullptr, value);
}

void Closed() {
    EndGridTool(nullptr, EscapeCharacter);
    DirtyThreeDeeWindows();
}

void Refit(int disabled) {
    if (GridGizmoDisabled == disabled)
        return;
    GridGizmoDisabled = disabled;
    if (!GridGizmo)
        return;
    SetVisibility();
    RefitToolWindow(GridWindow);
}

} // namespace

const ToolWindow GridWindow = {
    .Title = " Grid control",
    .Handle = &GridGizmo,
    .Measure = Measure,
    .Place = {.Opened = &GridGizmoOpened, .X = &GridX, .Y = &GridY, .FromTop = true},
    .OpenAtStart = &GridOpen,
    .OpenAgain = OpenGridGizmo,
    .Build = Build,
    .Event = TakeEvent,
    .Closed = Closed,
    .ManualPage = ManualPage,
    .ManualName = " Grid control",
};

void OpenGridGizmo() {
    const bool wasOpen = GridGizmo != nullptr;
    WindowScope scope(CurrentWindow);
    OpenToolWindow(GridWindow);
    if (wasOpen)
        return;
    DirtyGrid();
    DirtyThreeDeeWindows();
}

void DisableGridGizmo() {
    Refit(1);
}

void EnableGridGizmo() {
    Refit(0);
}

void ShowGrid(int show) {
    GridVisible = show;
    DirtyWindow(GridGizmo);
}

void DirtyGrid() {
    if (!GridGizmo)
        return;
    SetGridAngle(0);
    GridOffsetChoice = GridAlignChoice = GridAxisChoice = -1;
    DirtyWindow(GridGizmo);
}

void SetGridAngle(double degrees) {
    GridAngle = degrees;
    if (!GridGizmo)
        return;
    ShowNumbers(Angle, true, false);
    DirtyWindow(GridGizmo);
}

void FollowGridSize(View*) {
    if (GridGizmo && (ShownIndex != std::clamp(ShownGridIndex(), 0, GridSquareCount - 1) ||
                      ShownSteps != DrawnGridSteps(ShownGridSteps())))
        DirtyWindow(GridGizmo);
}
