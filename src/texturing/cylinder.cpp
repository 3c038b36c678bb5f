#include "texturing/cylinder.h"

#include "geometry/boxes.h"
#include "gooey/label.h"
#include "gooey/numeric_panel.h"
#include "gooey/text_filters.h"
#include "interaction/bar_gadgets.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/walks.h"
#include "texturing/mappings.h"
#include "texturing/texture_tools.h"
#include "views/grid.h"
#include "views/viewports.h"

#include <cstdio>

namespace {

constexpr std::int16_t Status[] = {90, 98, 100, 99, 0};

Matrix CylinderMatrix;
double CylinderRepeat = 8, CylinderStretch = 1;

/// The axis goes through the middle of what is selected.
void PlaceCylinder() {
    CylinderMatrix = MatrixInverse(ObjectView(0).GridMatrix);
    double min[3], max[3];
    EmptyBox(min, max);
    for (const Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        for (const PolygonBead* bead : EveryBead(polygon)) {
            double place[3];
            TransformCoordinate(bead->Vertex->Position, CylinderMatrix, place);
            GrowBox(min, max, place);
        }
    if (min[0] <= max[0])
        MultMatrix(CylinderMatrix, TranslationMatrix(-(min[0] + max[0]) / 2, -(min[1] + max[1]) / 2, 0),
                   CylinderMatrix);
}

void MapThem() {
    const CylinderMap map = {CylinderMatrix, OneGridSquare(), CylinderRepeat, CylinderStretch};
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        MapCylinder(polygon, map);
}

double& Setting(int number) {
    return number == 0 ? CylinderRepeat : CylinderStretch;
}

const char* SettingText(int number) {
    static char text[NumberTextSize];
    std::snprintf(text, sizeof text, "%.2f", Setting(number));
    return text;
}

NumericFields Fields;

bool TakeSetting(int number, double value) {
    if (value <= 0)
        return false;
    Setting(number) = value;
    ShowNumber(Fields, number, true);
    ApplyAgain();
    DirtyModelWindows();
    return true;
}

void RefuseSetting(int) {
    gl::ringbell();
}

constexpr NumberInput Inputs[] = {
    {.X = 110, .Y = -34, .Width = 230, .Label = "Repeat (around cylinder)"},
    {.X = 352, .Y = -34, .Width = 190, .Label = "Stretch (upwards)"},
};

const NumericPanel Panel = {
    .Inputs = Inputs,
    .Text = SettingText,
    .Apply = TakeSetting,
    .Unreadable = RefuseSetting,
    .Filter = PositiveFPFilter,
    .Return = AfterReturn::NextRoundTheEnd,
    .TakesWhenLeft = true,
    .TextSize = 10,
};

void BuildBar() {
    AddText(8, BarTextY, "Cylindrical:", 1);
    AddNumericPanel(Panel, Fields);
}

const MenuEntry Menu[] = {
    {"Cylindrical", MenuEntryTitle, 0, 0, nullptr, nullptr},
    TextureDoneEntry,
    LastSettingsEntry,
};

const Tool CylinderTool = {
    .Left = DummyClickFunc,
    .Menu = Menu,
    .Key = TextureToolKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .ManualPage = "R_TextureCylindrical",
    .Done = FinishTextureTool,
    .HoldsWork = TextureToolHoldsWork,
    .Leave = LeaveTextureTool,
};

} // namespace

void ApplyTextureCylinder() {
    if (!CurrentTexture())
        return;
    CleanUpObject();
    PlaceCylinder();
    BeginTextureTool(CylinderTool, MapThem);
}
