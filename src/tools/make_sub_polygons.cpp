#include "tools/make_sub_polygons.h"

#include "gooey/menu.h"
#include "interaction/bar_gadgets.h"
#include "interaction/selection.h"
#include "interaction/tool_protocol.h"
#include "platform/system.h"
#include "tools/creation_guards.h"
#include "tools/sub_polygon_selection.h"

namespace {

constexpr int BarLabel = 125;

constexpr std::int16_t Status[] = {126, 0};

/// A parent that is one of the polygon's own descendants must not be cut off from the tree with it.
void PutOn(Polygon* parent, Polygon* polygon) {
    if (IsSubPolygonOf(polygon, parent))
        while (polygon->FirstChild)
            MovePolygon(polygon->FirstChild, polygon->Parent);
    MovePolygon(polygon, parent);
}

void PushLeft(View* view) {
    Polygon* parent = SelectSinglePolygon(view);
    if (!parent || parent->Selected) {
        gl::ringbell();
        return;
    }
    BeforeToolChange();
    for (Polygon* polygon : SelectedPolygons())
        PutOn(parent, polygon);
    DeselectAllPolygons();
    ClearControl();
}

const MenuEntry Menu[] = {
    {"Push polygon", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Cancel", MenuEntryLast, 1, ' ', nullptr, nullptr},
};

void BuildBar() {
    AddBarText(BarLabel);
}

const Tool MakeSubPolygons = {
    .Left = PushLeft,
    .Menu = Menu,
    .Status = Status,
    .Buttons = Tool::Bar::Cancel,
    .BuildBar = BuildBar,
    .CancelCode = ' ',
    .ManualPage = "R_SubPolygons",
};

} // namespace

void PushPolygon() {
    if (SomePolygonsSelected())
        BeginTool(MakeSubPolygons);
}
