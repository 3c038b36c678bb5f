#include "interaction/position_pages.h"

#include "geometry/numbers.h"
#include "geometry/planes.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/messages.h"
#include "gooey/modal.h"
#include "gooey/numeric_panel.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/position_gizmo.h"
#include "interaction/position_state.h"
#include "interaction/position_views.h"
#include "interaction/rotate_dial.h"
#include "platform/drawing.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr char ManualPage[] = "R_PositionController";
constexpr int TouchesAlready = 160;
constexpr int UndoLabel = 7, RedoLabel = 8, DoneLabel = 6, CancelLabel = 5;
/// Beyond this nothing that is placed keeps its shape.
constexpr double Farthest = 1e12;
/// From one stacked button to the next, downwards.
constexpr int PageStep = -37;

std::vector<Gadget*> PageGadgets[3];
NumericFields Offsets, Angles, Scales;
int FormerAxisMode;
Matrix TurnStart;
double AngleAtStart;

const char* OffsetText(int axis) {
    return PrintNoDecimals(Position.Offset[axis], 6);
}

const char* AngleText(int) {
    return PrintNoDecimals(Position.Angle, 2);
}

const char* ScaleText(int axis) {
    return PrintNoDecimals(Position.Scale[axis], 6);
}

/// The same number in another notation is no step; it is shown as ever.
bool IsThereAlready(double value, double present) {
    if (value != present)
        return false;
    ShowPositionNumbers();
    return true;
}

bool TakeOffset(int axis, double value) {
    if (std::fabs(value) > Farthest)
        return false;
    if (IsThereAlready(value, Position.Offset[axis]))
        return true;
    PushOffset();
    ChangeOffset(axis, value, 1, 1);
    ForceOffsetUpdate();
    return true;
}

/// What is no number counts as no offset.
void ClearOffset(int axis) {
    SetOffset(axis, 0, 1);
    ShowPositionNumbers();
    ForceOffsetUpdate();
}

bool TakeAngle(int, double value) {
    if (std::fabs(value) > Farthest)
        return false;
    if (IsThereAlready(value, Position.Angle))
        return true;
    PushOffset();
    RotatePosition(Position.Angle - value);
    Position.Angle = value;
    DirtyWindow(OffsetGizmo);
    ForceOffsetUpdate();
    return true;
}

bool TakeScale(int axis, double value) {
    if (value == 0 || std::fabs(value) > Farthest)
        return false;
    if (IsThereAlready(value, Position.Scale[axis]))
        return true;
    PushOffset();
    SetScale(axis, value);
    ShowPositionNumbers();
    DirtyWindow(OffsetGizmo);
    ForceOffsetUpdate();
    return true;
}

constexpr NumberInput OffsetInputs[] = {
    {.X = 240, .Y = -125, .Width = 156, .Label = "X:"},
    {.X = 240, .Y = -162, .Width = 156, .Label = "Y:"},
    {.X = 240, .Y = -199, .Width = 156, .Label = "Z:"},
};
constexpr NumberInput AngleInputs[] = {{.X = 440, .Y = -184, .Width = 60}};

const NumericPanel OffsetPanel = {.Inputs = OffsetInputs,
                                  .Text = OffsetText,
                                  .Apply = TakeOffset,
                                  .Unreadable = ClearOffset,
                                  .ManualPage = ManualPage};
const NumericPanel AnglePanel = {.Inputs = AngleInputs,
                                 .Text = AngleText,
                                 .Apply = TakeAngle,
                                 .Return = AfterReturn::Stay,
                                 .ManualPage = ManualPage};

AfterReturn AfterScale() {
    return Position.KeepOrthogonal ? AfterReturn::Stay : AfterReturn::NextRoundTheEnd;
}

const NumericPanel& ScalePanel() {
    static const int top = -86 - InputHeight(TextSmallFont);
    static const NumberInput inputs[] = {{.X = 432, .Y = top, .Width = 66},
                                         {.X = 432, .Y = top - 41, .Width = 66},
                                         {.X = 432, .Y = top - 82, .Width = 66}};
    static const NumericPanel panel = {
        .Inputs = inputs, .Text = ScaleText, .Apply = TakeScale, .ReturnNow = AfterScale, .ManualPage = ManualPage};
    return panel;
}

/// So that a change of the page needs nothing but a redraw.
void SetGadgetVisibility() {
    for (int page = 0; page < 3; ++page)
        for (Gadget* gadget : PageGadgets[page])
            gadget->Visible = page == Position.Page;
}

void DrawDividers() {
    const int width = CurrentWindow->Width, height = CurrentWindow->Height;
    SetColour(White);
    DrawLine(0, height - 46, width, height - 46, ShadeFull);
    DrawLine(0, 54, width, 54, ShadeFull);
    DrawLine(width / 2, 4, width / 2, 54, ShadeFull);
}

void ChangePage() {
    EndPickOfTool();
    Position.TranslateMode = DragWithMouse;
    ShowPositionStatus();
    ShowPositionPage();
    DirtyModelWindows(); // the axis is shown with its page
}

void MoveToGrid() {
    double plane[4], distance;
    GetPlaneFromTransformation(ViewOfViewport(0)->GridMatrix, plane);
    Position.TranslateMode = DragWithMouse;
    if (!OwnerOfPosition().Touch(plane, distance)) {
        TellUser(TouchesAlready);
        return;
    }
    PushOffset();
    for (int axis = 0; axis < 3; ++axis)
        SetOffset(axis, Position.Offset[axis] - plane[axis] * distance, 0);
    ShowPositionNumbers();
    ForceOffsetUpdate();
}

void ChangeTranslateMode() {
    switch (ButtonChoice) {
    case DifferenceBetweenVertices:
        BeginPick(DifferencePick);
        Position.TranslateMode = DifferenceBetweenVertices;
        break;
    case MoveToTouchGrid:
        MoveToGrid();
        break;
    default:
        EndPickOfTool();
        break;
    }
    DirtyWindow(OffsetGizmo);
}

void ResetAngle() {
    Position.Angle = 0;
    ShowPositionNumbers();
    DirtyWindow(OffsetGizmo);
    DirtyModelWindows();
}

void ChangeCentre() {
    if (ButtonChoice == CentreOfSelection)
        OwnerOfPosition().Centre(Position.Centre);
    else if (ButtonChoice == CentreAtOrigin)
        std::fill(Position.Centre, Position.Centre + 3, 0.0);
    else
        BeginPick(CentrePick);
    ResetAngle();
}

void ChangeAxis() {
    if (ButtonChoice == ThroughVertex) {
        BeginPick(AxisPick);
    } else {
        for (int axis = 0; axis < 3; ++axis)
            Position.Axis[axis] = axis == ButtonChoice;
        FormerAxisMode = ButtonChoice;
    }
    ResetAngle();
}

void PickAngle() {
    BeginPick(AnglePick);
}

void ChangeSteps() {
    EndPickOfTool();
    if (ButtonChoice == 0)
        UndoPosition();
    else
        RedoPosition();
    // A step may have been saved while a pick waited.
    Position.TranslateMode = DragWithMouse;
    ShowPositionStatus();
    ShowPositionPage();
    ForceOffsetUpdate();
}

void ChooseEnd() {
    CloseOffsetGizmo(ButtonChoice == 0);
}

void BeginTurn() {
    PushOffset();
    TurnStart = Position.M;
    AngleAtStart = Position.Angle;
    StartOffsetMove(0);
}

void Turn(double angle) {
    if (!PositionGizmoIsOpen())
        return;
    Position.Angle = angle;
    Position.M = TurnStart;
    RotatePosition(AngleAtStart - angle);
    ShowPositionNumbers();
    RedrawWindow(OffsetGizmo);
    DoOffsetUpdate(PositionRotating);
}

void EndTurn() {
    StopOffsetMove();
}

void DrawRotateHeadings() {
    gl::cpack(White);
    const int y = CurrentWindow->Height - 74;
    const GadgetFont& font = FontOf(true);
    DrawCentred(font, 4, y, 170, "Centre", White);
    DrawCentred(font, 174, y, 160, "Axis", White);
    DrawCentred(font, 334, y, 98, "Angle", White);
}

// The bars of the scale page: 0.1 at the left, 1 in the middle, 10 at the right.
constexpr const char* BarLabels[3] = {"X:", "Y:", "Z:"};

int BarLabelWidth() {
    return SmallWidth(BarLabels[0]);
}

int SpanLeft() {
    return BarLabelWidth() + 20;
}

int SpanWidth() {
    return 410 - BarLabelWidth();
}

int BarY(int axis) {
    return CurrentWindow->Height - 119 - 41 * axis;
}

int ScaleToPixel(double scale, int& x) {
    if (!(scale >= 0.1 && scale <= 10))
        return 0;
    x = static_cast<int>(SpanLeft() + std::log10(10 * scale) * SpanWidth() / 2);
    return 1;
}

double PixelToScale(int x) {
    const double scale = std::pow(10, (x - SpanLeft()) / (SpanWidth() / 2.0)) / 10;
    return std::clamp(std::trunc(scale * 100 + 1e-9) / 100, 0.1, 10.0);
}

void MarkScale(double scale) {
    int x = 0;
    ScaleToPixel(scale, x);
    const int y = CurrentWindow->Height - 86;
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", scale);
    SetColour(White);
    DrawBox(x, y, 1, 4, ShadeFull);
    DrawCentred(FontOf(true), x - 20, y + 7, 40, text, White);
}

void DotScale(double scale) {
    int x = 0;
    ScaleToPixel(scale, x);
    SetColour(White);
    DrawBox(x, CurrentWindow->Height - 86, 1, 2, ShadeFull);
}

void DrawScales() {
    for (const double scale : {0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0})
        MarkScale(scale);
    for (const double scale : {0.3, 0.4, 0.6, 0.7, 0.8, 0.9, 3.0, 4.0, 6.0, 7.0, 8.0, 9.0})
        DotScale(scale);
    for (int axis = 0; axis < 3; ++axis) {
        const int y = BarY(axis);
        SmallText(12, y + 12, BarLabels[axis], White);
        SetColour(LightGrey);
        DrawLoweredBox(BarLabelWidth() + 16, y, SpanWidth() + 8, 33);
        int x;
        SetColour(White);
        if (ScaleToPixel(Position.Scale[axis], x))
            DrawBox(x, y + 4, 1, 25, ShadeFull);
    }
}

int CheckScales() {
    for (int axis = 0; axis < 3; ++axis) {
        if (!MouseInBox(BarLabelWidth() + 16, BarY(axis) + 4, SpanWidth() + 8, 25))
            continue;
        PushOffset();
        StartOffsetMove(0);
        const auto follow = [&] {
            const double scale = PixelToScale(MouseX);
            if (!PositionGizmoIsOpen() || scale == Position.Scale[axis])
                return;
            SetScale(axis, scale);
            ShowPositionNumbers();
            RedrawWindow(OffsetGizmo);
            DoOffsetUpdate(PositionScaling);
        };
        follow();
        if (TrackLeftButton(follow))
            follow();
        StopOffsetMove();
        return 1;
    }
    return 0;
}

void ChangeScaleCheck(GadgetArg) {
    if (!Position.KeepOrthogonal)
        return;
    SetScale(Position.LastScaled, Position.Scale[Position.LastScaled]);
    ShowPositionNumbers();
    DirtyWindow(OffsetGizmo);
    ForceOffsetUpdate();
}

void AddTo(int page, std::initializer_list<Gadget*> gadgets) {
    PageGadgets[page].insert(PageGadgets[page].end(), gadgets);
}

void AddPanelTo(int page, const NumericPanel& panel, NumericFields& fields) {
    AddNumericPanel(panel, fields);
    for (std::size_t i = 0; i < panel.Inputs.size(); ++i)
        AddTo(page, {fields.Inputs[i]});
}

void AddTranslatePage() {
    const char* const modes[] = {"Drag with mouse", "Difference between vertices", "Move to touch grid"};
    AddTo(TranslatePage, {AddButtons(0, -121, 240, ButtonsStacked | ButtonsSmallFont, OwnerOfPosition().Touch ? 3 : 2,
                                     modes, ChangeTranslateMode, &Position.TranslateMode, &PageStep)});
    AddPanelTo(TranslatePage, OffsetPanel, Offsets);
    const char* const locks[] = {"Lock X", "Lock Y", "Lock Z"};
    for (int axis = 0; axis < 3; ++axis)
        AddTo(TranslatePage, {AddCheckBox(405, -117 - 37 * axis, 0, CheckSmallFont, axis, locks[axis], nullptr,
                                          &Position.Lock[axis])});
}

void AddRotatePage() {
    const char* const centres[] = {"Centre of selection", "Centre at origin", "Centre at vertex"};
    const char* const axes[] = {"Around X", "Around Y", "Around Z", "Through vertex"};
    const char* const between[] = {"Between two vertices"};
    AddTo(RotatePage, {Kirvo_AddGadget(DrawRotateHeadings, nullptr),
                       AddRotateDial({.X = 383,
                                      .Y = -135,
                                      .Radius = 40,
                                      .Reach = 49,
                                      .Angle = &Position.Angle,
                                      .Begin = BeginTurn,
                                      .Turn = Turn,
                                      .End = EndTurn,
                                      .Label = "Angle"}),
                       AddButtons(4, -111, 170, ButtonsStacked | ButtonsSmallFont, 3, centres, ChangeCentre,
                                  &Position.CentreMode, &PageStep),
                       AddButtons(174, -111, 160, ButtonsStacked | ButtonsSmallFont, 4, axes, ChangeAxis,
                                  &Position.AxisMode, &PageStep)});
    AddPanelTo(RotatePage, AnglePanel, Angles);
    AddTo(RotatePage,
          {AddButtons(338, -222, 0, ButtonsSmallFont | ButtonsNarrow, 1, between, PickAngle, nullptr, nullptr)});
}

void AddScalePage() {
    AddTo(ScalePage, {Kirvo_AddGadget(DrawScales, CheckScales)});
    AddPanelTo(ScalePage, ScalePanel(), Scales);
    AddTo(ScalePage, {AddCheckBox(2 * CurrentWindow->Width / 3, ScalePanel().Inputs[2].Y - 25, 0, CheckSmallFont,
                                  nullptr, "Keep orthogonal", ChangeScaleCheck, &Position.KeepOrthogonal)});
}

} // namespace

void AddPositionPages() {
    for (auto& gadgets : PageGadgets)
        gadgets.clear();
    FormerAxisMode = 0;
    AddBackdrop();
    Kirvo_AddGadget(SetGadgetVisibility, nullptr);
    const char* const pages[] = {"Translate", "Rotate", "Scale"};
    AddButtons(0, -38, PositionGizmoWidth, ButtonsOfTextWidth, 3, pages, ChangePage, &Position.Page, nullptr);
    AddTranslatePage();
    AddRotatePage();
    AddScalePage();
    const int steps[] = {UndoLabel, RedoLabel}, ends[] = {DoneLabel, CancelLabel};
    AddIntButtons(0, 12, 252, ButtonsOfTextWidth, 2, steps, ChangeSteps, nullptr, nullptr);
    AddIntButtons(252, 12, 252, ButtonsOfTextWidth, 2, ends, ChooseEnd, nullptr, nullptr);
    Kirvo_AddGadget(DrawDividers, nullptr);
    SetGadgetVisibility();
}

void ShowPositionPage() {
    if (!OffsetGizmo)
        return;
    SetGadgetVisibility();
    ShowPositionNumbers();
    DirtyWindow(OffsetGizmo);
}

void ShowPositionNumbers() {
    if (!OffsetGizmo)
        return;
    ShowNumbers(Offsets, true, true);
    ShowNumbers(Angles, true, true);
    ShowNumbers(Scales, true, true);
}

void PositionPickEnded() {
    // An axis that was given up, or not found, leaves the one before.
    const double* a = Position.Axis;
    if (Position.AxisMode == ThroughVertex && a[FormerAxisMode] == 1)
        Position.AxisMode = FormerAxisMode;
}

void ChangeOffset(int axis, double value, int redraw, int force) {
    SetRoundedOffset(axis, value, force);
    if (OffsetGizmo)
        ShowNumber(Offsets, axis, redraw != 0);
}
