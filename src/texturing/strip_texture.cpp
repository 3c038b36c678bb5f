#include "texturing/strip_texture.h"

#include "gooey/check_box.h"
#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"
#include "gooey/numeric_panel.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/bar_gadgets.h"
#include "interaction/tool_guards.h"
#include "platform/events.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/selection_lists.h"
#include "texturing/mappings.h"
#include "texturing/texture_application.h"
#include "texturing/texture_area.h"
#include "texturing/texture_tools.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

Window* StripTexture;
int QTexX, QTexY, QTexW, QTexH, QstripTextureOpened;

namespace {

extern const ToolWindow StripWindow;

constexpr char ManualPage[] = "R_TextureStrip";
constexpr int SelectAQstrip = 193, StretchLabel = 187, SidewaysLabel = 194;
constexpr std::int16_t Status[] = {90, 98, 100, 99, 0};

constexpr int LeastWidth = 300, LeastHeight = 200, FirstWidth = 420, FirstHeight = 340;
constexpr int RightMargin = 4;
constexpr float Margin = 0.15F;
/// Pixels within which a press takes a side of the strip.
constexpr double SideReach = 10;

StripMap Settings;
TextureRange Shown;
NumericFields Fields;

void MapThem() {
    CleanUpObject();
    if (LastSelectionWasQstrip)
        MapStrip(Settings);
}

TextureArea Area() {
    return TextureAreaOf(Shown, RightMargin);
}

void ShowSettings() {
    const auto [least, greatest] = std::minmax({0.0F, 1.0F, Settings.U0, Settings.U1});
    if (Settings.Sideways)
        Shown.Fit(0, 1, least, greatest, Margin);
    else
        Shown.Fit(least, greatest, 0, 1, Margin);
    ShowNumbers(Fields, true, false);
    DirtyToolWindow(StripWindow);
}

void SettingsChanged() {
    ApplyAgain();
    ShowSettings();
    DirtyModelWindows();
}

// ---- The editor: both sides of the strip as lines over the image

float& SideOf(int side) {
    return side == 0 ? Settings.U0 : Settings.U1;
}

/// The middle of a side as it is shown.
void MiddleOf(int side, float (&middle)[2]) {
    const float along = Settings.Sideways ? (Shown.SMin + Shown.SMax) / 2 : (Shown.TMin + Shown.TMax) / 2;
    middle[0] = Settings.Sideways ? along : SideOf(side);
    middle[1] = Settings.Sideways ? SideOf(side) : along;
}

void DrawEditor(Gadget*) {
    const TextureArea area = Area();
    DrawTextureArea(area);
    for (const int side : {0, 1}) {
        const float at = SideOf(side);
        const float upright[2][2] = {{at, Shown.TMin}, {at, Shown.TMax}};
        const float level[2][2] = {{Shown.SMin, at}, {Shown.SMax, at}};
        DrawTextureLine(area, Settings.Sideways ? level : upright, 2, false);
        float middle[2];
        MiddleOf(side, middle);
        DrawTexturePoint(area, middle);
    }
}

double PointerOnSides() {
    const TextureArea area = Area();
    return Settings.Sideways ? area.T(MouseY) : area.S(MouseX);
}

double PixelsFrom(int side) {
    const TextureArea area = Area();
    return std::fabs(Settings.Sideways ? area.Y(SideOf(side)) - MouseY : area.X(SideOf(side)) - MouseX);
}

class SideDrag : public Drag {
  public:
    explicit SideDrag(int side) : Side(SideOf(side)), Before(Side), Grip(Side - PointerOnSides()) {}

  private:
    bool Step() override {
        const auto wanted = static_cast<float>(std::round((PointerOnSides() + Grip) * 1000) / 1000);
        if (wanted == Side)
            return false;
        Side = wanted;
        ApplyAgain();
        ShowNumbers(Fields, true, false);
        return true;
    }

    void Show() override {
        RedrawCurrentWindow();
        RedrawModelWindowsBeside();
    }

    bool Cancel() override {
        Side = Before;
        return true;
    }

    void End() override { SettingsChanged(); }

    float& Side;
    const float Before;
    const double Grip;
};

int ClickEditor(Gadget*) {
    if (!MouseInGadgetBox(Area().Box))
        return 0;
    const int nearest = PixelsFrom(1) < PixelsFrom(0);
    if (PixelsFrom(nearest) < SideReach)
        SideDrag(nearest).Run();
    return 1;
}

void DescribeEditor(const Gadget*, GadgetDescription& description) {
    const TextureArea area = Area();
    description.Label = "Texture";
    description.Box = area.Box;
    for (const int side : {0, 1}) {
        float middle[2];
        MiddleOf(side, middle);
        description.Items.push_back({"point " + std::to_string(side), TexturePointBox(area, middle)});
    }
}

constexpr GadgetKind EditorKind = {"custom", DescribeEditor, nullptr, nullptr};

// ---- The numbers

constexpr int StretchNumber = 2;

float& Number(int number) {
    return number == StretchNumber ? Settings.Stretch : SideOf(number);
}

const char* NumberText(int number) {
    static char text[NumberTextSize];
    std::snprintf(text, sizeof text, "%.2f", Number(number));
    return text;
}

bool TakeSetting(int number, double value) {
    constexpr double farthest = 1e6, least = 1e-6;
    if (std::fabs(value) > farthest || (number == StretchNumber && value < least))
        return false;
    Number(number) = static_cast<float>(value);
    SettingsChanged();
    return true;
}

void TurnSideways(GadgetArg) {
    SettingsChanged();
}

const NumberInput Inputs[] = {
    {.X = 12, .Y = 4, .Width = 120, .Label = "From"},
    {.X = -112, .Y = 4, .Width = 100, .Label = "To"},
    {.X = 8, .Y = -34, .Width = 136, .Label = msg(StretchLabel)},
};

const NumericPanel Panel = {
    .Inputs = Inputs,
    .Text = NumberText,
    .Apply = TakeSetting,
    .Unreadable = [](int) { gl::ringbell(); },
    .Return = AfterReturn::Stay,
    .TakesWhenLeft = true,
    .TextSize = 21,
};

void BuildWindow() {
    AddBackdrop();
    Gadget* editor = AddGadget(DrawEditor, ClickEditor, 0);
    editor->Kind = &EditorKind;
    AddNumericPanel(Panel, Fields);
    AddIntCheck(156, -24, 0, CheckSmallFont, nullptr, SidewaysLabel, TurnSideways, &Settings.Sideways);
    ShowSettings();
}

void WindowEvent(int device, short value) {
    if (device == gl::KEYBD)
        SendToolKey(nullptr, value);
}

// ---- The tool

void BuildBar() {
    AddText(8, BarTextY, "Apply to Qstrip:", 1);
}

void LeaveStrip() {
    LeaveTextureTool();
    CloseToolWindow(StripWindow);
}

const MenuEntry Menu[] = {
    {"Apply to Qstrip", MenuEntryTitle, 0, 0, nullptr, nullptr},
    TextureDoneEntry,
    ViewEntry,
    LastSettingsEntry,
};

const Tool StripTool = {
    .Left = DummyClickFunc,
    .Menu = Menu,
    .Key = TextureToolKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .ManualPage = ManualPage,
    .Done = FinishTextureTool,
    .HoldsWork = TextureToolHoldsWork,
    .Leave = LeaveStrip,
};

void WindowClosed() {
    if (ToolRuns(StripTool))
        ClearControl();
}

const ToolWindow StripWindow = {
    .Title = " Adjust texture ",
    .Handle = &StripTexture,
    .Width = FirstWidth,
    .Height = FirstHeight,
    .Rules = {.LeastWidth = LeastWidth, .LeastHeight = LeastHeight},
    .Place = {.Opened = &QstripTextureOpened, .X = &QTexX, .Y = &QTexY, .Width = &QTexW, .Height = &QTexH},
    .Build = BuildWindow,
    .Event = WindowEvent,
    .Closed = WindowClosed,
    .ManualPage = ManualPage,
    .ManualName = "Textures on strips",
};

} // namespace

void ApplyTextureToQstrip() {
    CleanUpObject();
    if (!LastSelectionWasQstrip || !FirstSelectedPolygon()) {
        TellUser(SelectAQstrip);
        return;
    }
    Settings = {};
    if (BeginTextureTool(StripTool, MapThem))
        OpenToolWindow(StripWindow);
}
