#include "interaction/ruler.h"

#include "base/slots.h"
#include "gooey/button.h"
#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/numeric_panel.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/text_filters.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/tool_protocol.h"
#include "views/moves.h"
#include "views/viewports.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

Window* RulerGizmo;
int RulerX, RulerY, RulerGizmoOpened, RulerSize;

namespace {

constexpr char ManualPage[] = "R_RulerGizmo";
constexpr int DoneLabel = 6, CancelLabel = 5;

constexpr int RulerWidth = 548, UpperRow = 106;
/// Where the scale begins; as much is left free at its other end.
constexpr int ScaleLeft = 24, Span = RulerWidth - 2 * ScaleLeft;
constexpr int BoxX = 8, BoxY = 58, BoxHeight = 40;
constexpr int NumberY = 81, ValueY = 37;
/// Ticks on the ruler by its size; ten make one.
constexpr int ScaleScale[] = {50, 100};
constexpr int TicksOfOne = 10;
/// Letters that fit the input, and a terminator.
constexpr int ValueTextSize = 6;

struct {
    bool Active = false;
    double Value = 0;
    /// The marker's distance from the beginning of the scale, pixels; beyond Span it is not shown.
    int Marker = 0;
    Window* OwnerWindow = nullptr;
    RulerChange Change = nullptr;
    RulerEnd Released = nullptr, Cancel = nullptr, Done = nullptr;
} Ruler;

NumberInput ValueInput[1];
NumericFields ValueField;

int Ticks() {
    return ScaleScale[RulerSize];
}

double PixelToValue(int pixel) {
    return static_cast<double>(Ticks()) * pixel / (Span * TicksOfOne);
}

int ValueToPixel(double value) {
    return static_cast<int>(value * TicksOfOne * Span / Ticks());
}

/// With as many decimals, up to two, as there is room for.
const char* ValueText(int) {
    static char text[NumberTextSize];
    for (int decimals = 2; decimals >= 0; --decimals)
        if (std::snprintf(text, sizeof text, "%.*f", decimals, Ruler.Value) < ValueTextSize)
            return text;
    std::snprintf(text, sizeof text, "%.0e", Ruler.Value);
    return text;
}

/// The owner's window may have been closed meanwhile.
template <class Call>
void InOwnersWindow(Call call) {
    WindowScope scope(WindowIsOpen(Ruler.OwnerWindow) ? Ruler.OwnerWindow : MainWindow);
    call();
}

void TellOwner() {
    InOwnersWindow([] { Ruler.Change(Ruler.Value); });
}

/// The marker stands at a pixel, and the value follows.
void ReadMarker(int pixel) {
    Ruler.Marker = pixel;
    Ruler.Value = PixelToValue(pixel);
    ShowNumbers(ValueField, true, false);
    TellOwner();
}

bool TakeValue(int, double value) {
    Ruler.Value = value;
    Ruler.Marker = ValueToPixel(value);
    DirtyWindow(RulerGizmo);
    TellOwner();
    return true;
}

const NumericPanel ValuePanel = {
    .Inputs = ValueInput,
    .Text = ValueText,
    .Apply = TakeValue,
    .Filter = PositiveFPFilter,
    .Return = AfterReturn::Leave,
    .ManualPage = ManualPage,
    .TextSize = ValueTextSize,
};

void ChangeSize() {
    ReadMarker(Ruler.Marker);
    DirtyWindow(RulerGizmo);
    DirtyModelWindows();
}

void ChooseEnd() {
    const bool done = ButtonChoice == 0;
    if (done && ActiveNumber(ValueField) == 0)
        TakeNumber(ValueField, 0);
    CloseRulerWindow(done);
}

int TickX(int tick) {
    return ScaleLeft + tick * Span / Ticks();
}

void DrawTicks() {
    for (int tick = 0; tick <= Ticks(); ++tick) {
        const int x = TickX(tick);
        const int length = tick % TicksOfOne == 0 ? 20 : tick % (TicksOfOne / 2) == 0 ? 12 : 5;
        SetColour(Black);
        DrawLine(x, BoxY, x, BoxY + length - 1, ShadeFull);
        if (tick % TicksOfOne != 0)
            continue;
        char number[16];
        std::snprintf(number, sizeof number, "%d", tick / TicksOfOne);
        DrawCentred(FontOf(true), x - 20, NumberY, 40, number, Black);
    }
}

void DrawMarker() {
    if (Ruler.Marker > Span)
        return;
    const int x = ScaleLeft + Ruler.Marker;
    SetColour(White);
    DrawLine(x, BoxY - 6, x, BoxY - 1, ShadeFull);
    SetColour(Red);
    DrawLine(x, BoxY, x, BoxY + BoxHeight - 2, ShadeFull);
    char value[32];
    std::snprintf(value, sizeof value, "%.2f", Ruler.Value);
    DrawCentred(FontOf(true), x - 40, ValueY, 80, value, White);
}

void DrawRuler(Gadget*) {
    SetColour(White);
    DrawBox(BoxX, BoxY, RulerWidth - 2 * BoxX, BoxHeight, ShadeFull);
    DrawFrame(BoxX, BoxY, RulerWidth - 2 * BoxX, BoxHeight, ShadeBlack);
    DrawTicks();
    DrawMarker();
}

/// Escape goes back to the value before the press.
class RulerDrag : public Drag {
  protected:
    void Begin() override {
        InOwnersWindow([] { StartMove(); });
    }

    bool Step() override {
        const int pixel = std::clamp(MouseX - ScaleLeft, 0, Span);
        if (!Ruler.Active || (pixel == Ruler.Marker && Ruler.Value == PixelToValue(pixel)))
            return false;
        ReadMarker(pixel);
        return true;
    }

    bool Cancel() override {
        if (!Ruler.Active)
            return true;
        Ruler.Value = FormerValue;
        Ruler.Marker = ValueToPixel(FormerValue);
        ShowNumbers(ValueField, true, false);
        TellOwner();
        return true;
    }

    void End() override {
        InOwnersWindow([] {
            StopMove();
            if (Ruler.Active)
                CallSlot(Ruler.Released);
        });
        DirtyWindow(RulerGizmo);
    }

  private:
    const double FormerValue = Ruler.Value;
};

int ClickRuler(Gadget*) {
    if (!MouseInBox(BoxX, BoxY, RulerWidth - 2 * BoxX, BoxHeight))
        return 0;
    DeactivateText(ValueField.Inputs[0]);
    RulerDrag().Run();
    return 1;
}

void DescribeRuler(const Gadget*, GadgetDescription& description) {
    description.Label = "Ruler";
    description.Box = {BoxX, BoxY, RulerWidth - 2 * BoxX, BoxHeight};
    for (int tick = 0; tick <= Ticks(); tick += TicksOfOne)
        description.Items.push_back({std::to_string(tick / TicksOfOne), {TickX(tick) - 4, BoxY + 2, 9, 20}});
    if (Ruler.Marker <= Span)
        description.Items.push_back({"marker", {ScaleLeft + Ruler.Marker - 2, BoxY + 2, 5, BoxHeight - 4}, true});
}

constexpr GadgetKind RulerKind = {"custom", DescribeRuler, nullptr, nullptr};

void BuildRuler() {
    const char* const sizes[] = {"5", "  10  "};
    const int ends[] = {DoneLabel, CancelLabel};
    AddBackdrop();
    AddNumericPanel(ValuePanel, ValueField);
    AddButtons(RulerWidth - 158, UpperRow, 150, ButtonsSmallFont, 2, sizes, ChangeSize, &RulerSize, nullptr);
    Gadget* ruler = AddGadget(DrawRuler, ClickRuler, 0);
    ruler->Kind = &RulerKind;
    AddIntButtons(RulerWidth - 216, 8, 200, ButtonsSmallFont, 2, ends, ChooseEnd, nullptr, nullptr);
}

void RulerGoes() {
    CloseRulerWindow(0);
}

const ToolWindow RulerWindow = {
    .Title = "Ruler",
    .Handle = &RulerGizmo,
    .Measure =
        [](int& width, int& height) {
            width = RulerWidth;
            height = InputHeight(TextSmallFont) + 110;
        },
    .Place = {.Opened = &RulerGizmoOpened, .X = &RulerX, .Y = &RulerY},
    .Build = BuildRuler,
    .Closed = RulerGoes,
    .ManualPage = ManualPage,
    .ManualName = "Ruler",
};

} // namespace

void OpenRulerGizmo(const char* label, RulerChange change, RulerEnd released, RulerEnd cancel, RulerEnd done,
                    double initialValue) {
    if (Ruler.Active) {
        OpenToolWindow(RulerWindow);
        return;
    }
    // A window that was told to close lies there until the dispatcher comes round.
    ShutWindow(RulerGizmo);
    if (RulerSize != 0 && RulerSize != 1)
        RulerSize = 1;
    Ruler = {true, initialValue, ValueToPixel(initialValue), CurrentWindow, change, released, cancel, done};
    ValueInput[0] = {.X = 16, .Y = UpperRow, .Width = SmallWidth(label) + 70, .Label = label};
    WindowScope scope(CurrentWindow);
    OpenToolWindow(RulerWindow);
    DisableBadStuff();
}

void CloseRulerWindow(int accept) {
    if (!Ruler.Active)
        return;
    Ruler.Active = false;
    EnableBadStuff();
    InOwnersWindow([&] { accept ? Ruler.Done() : Ruler.Cancel(); });
    CloseToolWindow(RulerWindow);
}

int RulerGizmoIsOpen() {
    return Ruler.Active;
}

double RulerValue() {
    return Ruler.Value;
}
