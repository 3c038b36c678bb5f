#include "texturing/manual_placement.h"

#include "base/slots.h"
#include "gooey/button.h"
#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/menu_session.h"
#include "gooey/messages.h"
#include "gooey/numeric_panel.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/text_input.h"
#include "gooey/window.h"
#include "interaction/bar_gadgets.h"
#include "interaction/input.h"
#include "interaction/selection.h"
#include "interaction/tool_guards.h"
#include "platform/events.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/undo.h"
#include "store/walks.h"
#include "textures/texture_changes.h"
#include "texturing/mappings.h"
#include "texturing/texture_application.h"
#include "texturing/texture_area.h"
#include "texturing/texture_tools.h"
#include "views/display_flags.h"
#include "views/viewports.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

Window* ManualTexture;
int ManTexX, ManTexY, ManTexW, ManTexH, ManualTextureOpened;
ManualPlacementSlots TheManualPlacementSlots;

namespace {

extern const Tool AdjustTool, ManualTool;
extern const ToolWindow ManualWindow;

constexpr char ManualPage[] = "R_TextureGizmo";
constexpr int NotTextured = 191, IsEnvironmentMapped = 192;
constexpr std::int16_t AdjustStatus[] = {87, 90, 98, 100, 99, 0};
constexpr std::int16_t ManualStatus[] = {90, 98, 100, 99, 0};
constexpr int CancelCode = 153;

constexpr int LeastSize = 400, FirstSize = 480;
constexpr int RightMargin = 88;
/// Around the corners when they are fitted to the window, of their extent.
constexpr float FitMargin = 0.3F;
/// Pixels within which a press takes a corner, and those that it must be moved before it follows.
constexpr double CornerReach = 10;
constexpr int DragThreshold = 2, AreaReach = 4;

using TexturePoint = std::array<float, 2>;

TextureRange Shown;
/// The corner that is chosen, in ring order.
int EditCorner;
/// Of all corners when editing began.
std::vector<TexturePoint> StartCoords;
/// What the current texture and material come to be is not for the polygon, but of it.
bool TakingOver;
NumericFields RangeFields;
Gadget* CornerField;
constexpr int CornerTextSize = 21;
char CornerText[CornerTextSize];

bool Runs() {
    return ToolRuns(AdjustTool) || ToolRuns(ManualTool);
}

/// The polygon being placed: it is selected alone. Null when it has gone.
Polygon* EditPolygon() {
    CleanUpObject();
    return Runs() ? FirstSelectedPolygon() : nullptr;
}

/// Its corners; empty when it has gone.
std::vector<PolygonBead*> EditCorners() {
    std::vector<PolygonBead*> corners;
    if (const Polygon* polygon = EditPolygon())
        for (PolygonBead* bead : EveryBead(polygon))
            corners.push_back(bead);
    return corners;
}

PolygonBead* ChosenCorner() {
    const std::vector<PolygonBead*> corners = EditCorners();
    return EditCorner < static_cast<int>(corners.size()) ? corners[EditCorner] : nullptr;
}

TextureArea Area() {
    return TextureAreaOf(Shown, RightMargin);
}

// ---- Showing

void ShowCornerText() {
    const PolygonBead* bead = ChosenCorner();
    char text[64] = "";
    // What is shown as 0 has no sign.
    const auto shown = [](float coordinate) { return std::fabs(coordinate) < 0.0005F ? 0.0F : coordinate; };
    if (bead)
        std::snprintf(text, sizeof text, "%.3f , %.3f", shown(bead->TexCoord[0]), shown(bead->TexCoord[1]));
    text[CornerTextSize - 1] = '\0';
    if (CornerField)
        ChangeText(CornerField, text);
}

void FitToWindow() {
    const std::vector<PolygonBead*> corners = EditCorners();
    if (!corners.empty()) {
        float least[2], greatest[2];
        for (int i = 0; i < 2; ++i) {
            const auto [from, to] = std::minmax_element(
                corners.begin(), corners.end(), [=](auto* a, auto* b) { return a->TexCoord[i] < b->TexCoord[i]; });
            least[i] = (*from)->TexCoord[i];
            greatest[i] = (*to)->TexCoord[i];
        }
        Shown.Fit(least[0], greatest[0], least[1], greatest[1], FitMargin);
    }
    ShowNumbers(RangeFields, true, false);
    DirtyToolWindow(ManualWindow);
}

/// The polygon's coordinates have changed.
void CoordinatesChanged() {
    if (const Polygon* polygon = EditPolygon())
        AppearanceChanged(polygon);
    ShowCornerText();
}

void ShowEverything() {
    CoordinatesChanged();
    DirtyToolWindow(ManualWindow);
    DirtyModelWindows();
}

void ChooseCorner(int number) {
    EditCorner = number;
    DeselectAllVertices();
    if (const PolygonBead* bead = ChosenCorner())
        SetVertexSelected(CurrentObject(), bead->Vertex, 1);
    ShowCornerText();
    DirtyModelWindows();
}

// ---- The editor

void DrawEditor(Gadget*) {
    const TextureArea area = Area();
    DrawTextureArea(area);
    std::vector<TexturePoint> ring;
    for (const PolygonBead* bead : EditCorners())
        ring.push_back({bead->TexCoord[0], bead->TexCoord[1]});
    if (ring.empty())
        return;
    DrawTextureLine(area, reinterpret_cast<const float(*)[2]>(ring.data()), static_cast<int>(ring.size()), true);
    if (const PolygonBead* bead = ChosenCorner())
        DrawTexturePoint(area, bead->TexCoord);
}

class CornerDrag : public Drag {
  public:
    explicit CornerDrag(PolygonBead* corner) : StartX(MouseX), StartY(MouseY) {
        std::copy_n(corner->TexCoord, 2, Before);
    }

  private:
    bool Step() override {
        PolygonBead* corner = ChosenCorner();
        Moves = Moves || std::abs(MouseX - StartX) > DragThreshold || std::abs(MouseY - StartY) > DragThreshold;
        if (!Moves || !corner)
            return false;
        const TextureArea area = Area();
        const float place[2] = {static_cast<float>(area.S(MouseX)), static_cast<float>(area.T(MouseY))};
        if (std::equal(place, place + 2, corner->TexCoord))
            return false;
        std::copy_n(place, 2, corner->TexCoord);
        CoordinatesChanged();
        return true;
    }

    void Show() override {
        RedrawCurrentWindow();
        RedrawModelWindowsBeside();
    }

    bool Cancel() override {
        if (PolygonBead* corner = ChosenCorner())
            std::copy_n(Before, 2, corner->TexCoord);
        return true;
    }

    void End() override { ShowEverything(); }

    const int StartX, StartY;
    float Before[2];
    bool Moves = false;
};

int ClickEditor(Gadget*) {
    const TextureArea area = Area();
    const GadgetBox& box = area.Box;
    if (!MouseInBox(box.X - AreaReach, box.Y - AreaReach, box.Width + 2 * AreaReach, box.Height + 2 * AreaReach))
        return 0;
    const std::vector<PolygonBead*> corners = EditCorners();
    int nearest = -1;
    double distance = CornerReach;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const double away =
            std::hypot(area.X(corners[i]->TexCoord[0]) - MouseX, area.Y(corners[i]->TexCoord[1]) - MouseY);
        if (away < distance) {
            distance = away;
            nearest = static_cast<int>(i);
        }
    }
    if (nearest < 0)
        return 1;
    ChooseCorner(nearest);
    CornerDrag(corners[nearest]).Run();
    return 1;
}

void DescribeEditor(const Gadget*, GadgetDescription& description) {
    const TextureArea area = Area();
    description.Label = "Texture";
    description.Box = area.Box;
    const std::vector<PolygonBead*> corners = EditCorners();
    for (std::size_t i = 0; i < corners.size(); ++i)
        description.Items.push_back({"point " + std::to_string(i), TexturePointBox(area, corners[i]->TexCoord),
                                     static_cast<int>(i) == EditCorner});
}

/// Zooms about the pointer.
int TurnEditorWheel(Gadget*, int, int turnY) {
    const TextureArea area = Area();
    if (!MouseInGadgetBox(area.Box) || turnY == 0)
        return 0;
    constexpr double aNotch = 120, least = 1e-4, greatest = 1e4;
    const double factor = std::pow(0.8, turnY / aNotch);
    const double s = area.S(MouseX), t = area.T(MouseY);
    const double width = (Shown.SMax - Shown.SMin) * factor, height = (Shown.TMax - Shown.TMin) * factor;
    if (std::min(width, height) < least || std::max(width, height) > greatest)
        return 1;
    const auto towards = [=](float from, double to) { return static_cast<float>(to + (from - to) * factor); };
    Shown = {towards(Shown.SMin, s), towards(Shown.SMax, s), towards(Shown.TMin, t), towards(Shown.TMax, t)};
    ShowNumbers(RangeFields, false, false);
    DirtyToolWindow(ManualWindow);
    return 1;
}

constexpr GadgetKind EditorKind = {"custom", DescribeEditor, TurnEditorWheel, nullptr};

// ---- The numbers

float& RangeNumber(int number) {
    float* const numbers[] = {&Shown.SMin, &Shown.SMax, &Shown.TMin, &Shown.TMax};
    return *numbers[number];
}

const char* RangeText(int number) {
    static char text[NumberTextSize];
    std::snprintf(text, sizeof text, "%.2f", RangeNumber(number));
    return text;
}

bool TakeRange(int number, double value) {
    constexpr double farthest = 1e6;
    float& bound = RangeNumber(number);
    const float other = RangeNumber(number ^ 1), wanted = static_cast<float>(std::clamp(value, -farthest, farthest));
    if (number % 2 ? wanted <= other : wanted >= other)
        return false;
    bound = wanted;
    DirtyToolWindow(ManualWindow);
    return true;
}

const NumberInput RangeInputs[] = {
    {.X = 12, .Y = 4, .Width = 80},
    {.X = -152, .Y = 4, .Width = 80},
    {.X = -80, .Y = InputHeight(TextSmallFont) + 12, .Width = 72},
    {.X = -80, .Y = -48 - InputHeight(TextSmallFont), .Width = 72},
};

const NumericPanel RangePanel = {
    .Inputs = RangeInputs,
    .Text = RangeText,
    .Apply = TakeRange,
    .Unreadable = [](int) { gl::ringbell(); },
    .Return = AfterReturn::Stay,
    .TextSize = 21,
};

int CornerFilter(int& character, int position, const char*) {
    return position >= 0 && ((character >= '0' && character <= '9') || character == '-' || character == '.' ||
                             character == ',' || character == ' ');
}

void TakeCornerText() {
    if (!TextReturnReal)
        return;
    float s, t;
    PolygonBead* corner = ChosenCorner();
    if (!corner || std::sscanf(CornerText, "%f , %f", &s, &t) != 2) {
        gl::ringbell();
        ActivateText(CornerField, 1);
        return;
    }
    SetTexCoord(corner, s, t);
    ShowEverything();
}

void ResetToStart() {
    const std::vector<PolygonBead*> corners = EditCorners();
    if (corners.size() == StartCoords.size())
        for (std::size_t i = 0; i < corners.size(); ++i)
            std::copy_n(StartCoords[i].data(), 2, corners[i]->TexCoord);
    FitToWindow();
    ShowEverything();
}

void BuildWindow() {
    static const char* const reset[] = {"Reset to start"};
    static const char* const fit[] = {"Fit to window"};
    AddBackdrop();
    Gadget* editor = AddGadget(DrawEditor, ClickEditor, 0);
    editor->Kind = &EditorKind;
    AddNumericPanel(RangePanel, RangeFields);
    CornerField = AddTextInput({.X = 4,
                                .Y = -34,
                                .Width = 250,
                                .Flags = TextSmallFont,
                                .Label = "Texture (x,y) =",
                                .Buffer = CornerText,
                                .Size = CornerTextSize,
                                .Filter = CornerFilter,
                                .Callback = TakeCornerText});
    AddButtons(262, -31, 120, ButtonsNarrow | ButtonsSmallFont, 1, reset, ResetToStart, nullptr, nullptr);
    AddButtons(100, 8, 0, ButtonsSmallFont, 1, fit, FitToWindow, nullptr, nullptr);
}

void WindowEvent(int device, short value) {
    if (device == gl::KEYBD)
        SendToolKey(nullptr, value);
}

// ---- The tool

/// The polygon has the current texture and material.
void FollowChoice() {
    Polygon* polygon = EditPolygon();
    if (!polygon || TakingOver)
        return;
    GiveTexture(polygon);
    AppearanceChanged(polygon);
    DirtyToolWindow(ManualWindow);
}

/// What the polygon has becomes current, so that it is what the palettes show.
void TakeOverItsTexture(const Polygon* polygon) {
    Texture* const texture = polygon->Texture;
    Material* const material = polygon->TextureMaterial;
    TakingOver = true;
    if (material && material != CurrentMaterial())
        CallSlot(TheManualPlacementSlots.SelectMaterial, material);
    if (TheTextureChangeSlots.ChangeTextureSelection)
        TheTextureChangeSlots.ChangeTextureSelection(texture);
    else
        CurrentTexture() = texture;
    TakingOver = false;
}

/// The tool runs, and the snapshot has been taken.
void StartEditing(Polygon* polygon) {
    TakeOverItsTexture(polygon);
    DeselectEverything();
    SetPolygonSelected(CurrentObject(), polygon, 1);
    StartCoords.clear();
    for (const PolygonBead* bead : EveryBead(polygon))
        StartCoords.push_back({bead->TexCoord[0], bead->TexCoord[1]});
    ChooseCorner(0);
    FitToWindow();
    ShowEverything();
}

bool CanBePlaced(const Polygon* polygon) {
    if (!polygon->Texture)
        TellUser(NotTextured);
    else if (polygon->Flags & PolygonGeneratesTexture)
        TellUser(IsEnvironmentMapped);
    else
        return true;
    return false;
}

void PickAnother(View* view) {
    Polygon* polygon = SelectSinglePolygon(view);
    if (!polygon || !polygon->Texture) {
        gl::ringbell();
    } else if (CanBePlaced(polygon)) {
        CopyCurrentObject();
        StartEditing(polygon);
    }
}

void BuildBar() {
    AddText(8, BarTextY, "Texture adjust:", 1);
}

void FinishPlacing() {
    DeselectAllVertices();
}

void LeavePlacing() {
    LeaveTextureTool();
    StartCoords.clear();
    CornerField = nullptr;
    DeselectAllVertices();
    CloseToolWindow(ManualWindow);
}

void WindowClosed() {
    if (Runs())
        ClearControl();
}

const MenuEntry Menu[] = {
    {"Adjust texture", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntryItem, 1, ' ', nullptr, nullptr},
    {"Cancel", MenuEntrySeparated, 2, 0, nullptr, nullptr},
    ViewEntry,
    LastSettingsEntry,
};

void ShowMenu(View* view) {
    const int choice = DoPopup(Menu);
    if (choice >= FirstSharedItem)
        DealWithPopup(view, choice);
    else if (choice > 0)
        SendToolKey(view, choice == 1 ? ' ' : CancelCode);
}

constexpr Tool ToolWith(ClickHook left, const std::int16_t* status) {
    return {
        .Left = left,
        .Right = ShowMenu,
        .Key = TextureToolKey,
        .Status = status,
        .Buttons = Tool::Bar::DoneAndCancel,
        .BuildBar = BuildBar,
        .CancelCode = CancelCode,
        .ManualPage = ManualPage,
        .Done = FinishPlacing,
        .HoldsWork = TextureToolHoldsWork,
        .Leave = LeavePlacing,
    };
}

const Tool AdjustTool = ToolWith(PickAnother, AdjustStatus);
const Tool ManualTool = ToolWith(DummyClickFunc, ManualStatus);

const ToolWindow ManualWindow = {
    .Title = " Adjust texture ",
    .Handle = &ManualTexture,
    .Width = FirstSize,
    .Height = FirstSize,
    .Rules = {.LeastWidth = LeastSize, .LeastHeight = LeastSize},
    .Place = {.Opened = &ManualTextureOpened, .X = &ManTexX, .Y = &ManTexY, .Width = &ManTexW, .Height = &ManTexH},
    .Build = BuildWindow,
    .Event = WindowEvent,
    .Closed = WindowClosed,
    .ManualPage = ManualPage,
    .ManualName = "Manual placement",
};

void StartPlacing(const Tool& tool, Polygon* polygon) {
    ShowVertices = 0;
    BeginTool(tool);
    BeforeToolChange();
    if (!polygon->Texture)
        StretchOverPolygon(polygon);
    BeginApplication(FollowChoice);
    OpenToolWindow(ManualWindow);
    StartEditing(polygon);
}

} // namespace

void ApplyTextureManually() {
    if (!CanApplyTexture())
        return;
    Polygon* polygon = FirstSelectedPolygon();
    if (!polygon->Texture || CanBePlaced(polygon))
        StartPlacing(ManualTool, polygon);
}

void AdjustTexture() {
    if (SystemBusy() || !CreationInObjectMode() || !SomePolygonsSelected() || !CanBePlaced(FirstSelectedPolygon()))
        return;
    StartPlacing(AdjustTool, FirstSelectedPolygon());
}
