#include "texturing/painting.h"

#include "gooey/button.h"
#include "gooey/message_gadgets.h"
#include "gooey/messages.h"
#include "interaction/bar_gadgets.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/walks.h"
#include "texturing/mappings.h"
#include "texturing/texture_tools.h"
#include "views/viewports.h"

#include <iterator>

namespace {

constexpr int SelectOneQuad = 128, BarText = 129, RotateText = 130;
constexpr std::int16_t Status[] = {90, 98, 100, 99, 0};

/// Orientation of the texture, quarters.
int PaintRotation;

/// The polygon being painted: it is selected alone while the tool runs. Null when something else is.
Polygon* PaintPolygon() {
    CleanUpObject();
    Polygon* polygon = FirstSelectedPolygon();
    if (!polygon || polygon->NextSelected)
        return nullptr;
    const auto corners = EveryBead(polygon);
    return std::distance(corners.begin(), corners.end()) == 4 ? polygon : nullptr;
}

void PaintIt() {
    if (Polygon* polygon = PaintPolygon())
        PaintQuad(polygon, PaintRotation);
}

void Rotate() {
    PaintRotation = (PaintRotation + 1) % 4;
    ApplyAgain();
    DirtyModelWindows();
}

void BuildBar() {
    AddBarText(BarText);
    AddIntButtons(GooeyRight, BarButtonY, 0, ButtonsOfTextWidth | ButtonsSmallFont, 1, &RotateText, Rotate, nullptr,
                  nullptr);
}

const MenuEntry Menu[] = {
    {"Paint polygon", MenuEntryTitle, 0, 0, nullptr, nullptr},    TextureDoneEntry,  MaterialsEntry,
    {"Textures", MenuEntrySeparated, 105, 'E', nullptr, nullptr}, LastSettingsEntry,
};

const Tool PaintingTool = {
    .Left = DummyClickFunc,
    .Menu = Menu,
    .Key = TextureToolKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .ManualPage = "R_TexturePainting",
    .Done = FinishTextureTool,
    .HoldsWork = TextureToolHoldsWork,
    .Leave = LeaveTextureTool,
};

} // namespace

void StartPainting() {
    if (!PaintPolygon()) {
        TellUser(SelectOneQuad);
        return;
    }
    PaintRotation = 0;
    BeginTextureTool(PaintingTool, PaintIt);
}
