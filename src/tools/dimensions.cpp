#include "tools/dimensions.h"

#include "base/debug.h"
#include "geometry/boxes.h"
#include "geometry/numbers.h"
#include "gooey/button.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/numeric_panel.h"
#include "gooey/tool_window.h"
#include "interaction/grid_gizmo.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/scene_views.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

Window* DimensionBase;
int DimensionX, DimensionY, DimensionsOpened;

namespace {

constexpr char ManualPage[] = "R_ObjectDimensions", Title[] = " Object Dimensions ";
constexpr int DoneLabel = 6, CancelLabel = 5;

constexpr int LabelX = 8, ExtentX = 92, InputX = 208, InputWidth = 120, HeadingY = 150;
constexpr int RowY[3] = {108, 66, 24};
constexpr int UnitX = 328, UnitButtonX = 340;
constexpr int UnitBoxes[] = {UnitButtonX, 102, 56, 20, UnitButtonX, 74, 56, 20,
                             UnitButtonX, 46,  56, 20, UnitButtonX, 18, 56, 20};
constexpr int EndBoxes[] = {408, 60, 92, 30, 408, 18, 92, 30};
constexpr const char* AxisLabels[3] = {"Width:", "Length:", "Height:"};
constexpr int Decimals = 3;
/// Longer numbers are refused as they are typed.
constexpr std::size_t MostDigits = 5, MostWithPoint = 7;

/// By axis, metres, and as they are shown.
double Extent[3];
std::string ExtentText[3];
/// Into ScaleScales, chosen with the buttons.
int Unit;
/// What the last number taken makes of the extents in metres, in the unit: 0 when there is none.
double Ratio;
NumericFields Fields;
/// The inputs' texts at that time, and the one typed into last, -1 for none.
std::string TakenTexts[3];
int TypedInto;

const char* SizeText(int axis) {
    return Ratio > 0 ? PrintNoDecimals(Extent[axis] * Ratio, Decimals) : "";
}

bool TakeSize(int axis, double value) {
    // No factor leads from nothing to a size.
    if (!(value > 0) || !(Extent[axis] > 0) || !std::isfinite(value / Extent[axis]))
        return false;
    Ratio = value / Extent[axis];
    for (int other = 0; other < 3; ++other) {
        if (other != axis)
            ShowNumber(Fields, other, true);
        TakenTexts[other] = Fields.Texts[other];
    }
    return true;
}

void RefuseText(int) {
    gl::ringbell();
}

int DimFilter(int& character, int, const char* text) {
    const bool hasPoint = std::strchr(text, '.') != nullptr;
    const std::size_t length = std::strlen(text);
    bool accepted = false;
    if (character == ',')
        character = '.';
    if (character == '.')
        accepted = !hasPoint;
    else if (character == '0')
        accepted = std::strcmp(text, "0.") != 0;
    else if (character >= '1' && character <= '9')
        accepted = length < (hasPoint ? MostWithPoint : MostDigits);
    TypedInto = ActiveNumber(Fields);
    return accepted;
}

constexpr NumberInput Inputs[] = {
    {.X = InputX, .Y = RowY[0] - 6, .Width = InputWidth},
    {.X = InputX, .Y = RowY[1] - 6, .Width = InputWidth},
    {.X = InputX, .Y = RowY[2] - 6, .Width = InputWidth},
};

const NumericPanel Panel = {
    .Inputs = Inputs,
    .Text = SizeText,
    .Apply = TakeSize,
    .Unreadable = RefuseText,
    .Filter = DimFilter,
    .Return = AfterReturn::Stay,
    .ManualPage = ManualPage,
};

void ScaleObject(double factor) {
    Trace("Scales = %f,%f,%f\n", factor, factor, factor);
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        for (double& coordinate : vertex->Position)
            coordinate *= factor;
    ConnectionsOK() = 0;
    WorkSaved = 0;
    DevalidateObjectViews();
    DirtyModelWindows();
    DirtyGrid();
}

/// The input with a number that Return has not taken; -1: none.
int PendingInput() {
    const auto isPending = [](int axis) { return *Fields.Texts[axis] && TakenTexts[axis] != Fields.Texts[axis]; };
    if (TypedInto >= 0 && isPending(TypedInto))
        return TypedInto;
    for (int axis = 0; axis < 3; ++axis)
        if (isPending(axis))
            return axis;
    return -1;
}

void FinishDim();

void BuildDimensions() {
    const int ends[] = {DoneLabel, CancelLabel};
    AddBackdrop();
    AddText(LabelX, HeadingY, "Current object size:", 1);
    AddText(InputX, HeadingY, "New size:", 1);
    AddText(UnitX, HeadingY, "   Units:", 1);
    Ratio = 0;
    TypedInto = -1;
    std::fill_n(TakenTexts, 3, std::string());
    for (int axis = 0; axis < 3; ++axis) {
        AddText(LabelX, RowY[axis], AxisLabels[axis], 1);
        AddText(ExtentX, RowY[axis], ExtentText[axis].c_str(), 1);
    }
    AddNumericPanel(Panel, Fields);
    AddButtons(0, 0, 0, ButtonsOfGivenBoxes | ButtonsSmallFont, 4, ScaleStrings, nullptr, &Unit, UnitBoxes);
    AddIntButtons(0, 0, 0, ButtonsOfGivenBoxes, 2, ends, FinishDim, nullptr, EndBoxes);
    ActivateNumber(Fields, 0);
}

const ToolWindow DimensionWindow = {
    .Title = Title,
    .Handle = &DimensionBase,
    .Width = 508,
    .Height = 180,
    .Place = {.Opened = &DimensionsOpened, .X = &DimensionX, .Y = &DimensionY},
    .DisablesMain = true,
    .Build = BuildDimensions,
    .ManualPage = ManualPage,
    .ManualName = Title,
};

void FinishDim() {
    constexpr int done = 0;
    if (ButtonChoice != done) {
        CloseToolWindow(DimensionWindow);
        return;
    }
    if (const int pending = PendingInput(); pending >= 0) {
        // What it comes to is shown before it is carried out.
        gl::ringbell();
        TakeNumber(Fields, pending);
        ActivateNumber(Fields, pending);
    } else if (Ratio > 0) {
        ScaleObject(Ratio * ScaleScales[Unit]);
        CloseToolWindow(DimensionWindow);
    }
}

} // namespace

int SussObjectDimensions() {
    double min[3], max[3];
    EmptyBox(min, max);
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        GrowBox(min, max, vertex->Position);
    for (int axis = 0; axis < 3; ++axis)
        Extent[axis] = max[axis] - min[axis];
    double largest = std::max({Extent[0], Extent[1], Extent[2]});
    if (!(largest > 0))
        return 0;
    const char* unit = ScaleNumber(&largest);
    Unit = ScaleIndex;
    for (int axis = 0; axis < 3; ++axis)
        ExtentText[axis] = PrintNoDecimals(Extent[axis] / ScaleScales[Unit], Decimals) + (" " + std::string(unit));
    return 1;
}

void SetObjectDimensions() {
    if (DimensionBase || SussObjectDimensions())
        OpenToolWindow(DimensionWindow);
}
