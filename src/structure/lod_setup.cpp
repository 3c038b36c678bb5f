#include "structure/lod_setup.h"

#include "base/exit.h"
#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/label.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/message_table.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/slider.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/manipulation.h"
#include "interaction/modes.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "platform/events.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/sorting.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"
#include "structure/lod_scale.h"
#include "structure/structure_operations.h"
#include "structure/structure_windows.h"
#include "views/default_views.h"
#include "views/hooks.h"
#include "views/moves.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

Window* LodSetup;

namespace {

constexpr int StatusText = 159;
constexpr std::int16_t Status[] = {StatusText, 0};

constexpr int WindowWidth = 251, FreeAboveWindow = 40;
constexpr int SliderX = 8, SliderWidth = 16, ScreenBesideSlider = 102;
/// A level's mark is as high as the middle of the slider's thumb would be.
constexpr int MarkAboveHeight = SliderThumbHeight / 2;
constexpr int TickX = 28, TickWidth = 5, RangeX = TickX + TickWidth - 2, LabelX = 36, LeaderX = 48, LabelBelowMark = 5;
constexpr int PixelsPerNotch = 10, PixelsPerPage = 40;
constexpr int LabelGap = 18, PickDistance = 20;
/// Beside the slider's own label, above the levels.
constexpr int HeadingY = -22;
/// The eye starts this much farther away than where the slider's lower end takes it.
constexpr double StartFactor = 1.5;

LodScale Scale;
double LodVanishDistance, LodViewDistance;
Gadget* EyeSlider;
/// The default of 3D views, which turning the preview must not change.
View DefaultBefore;
int PlaceIsKnown = 1, PlaceX, PlaceY;

View& MainView() {
    return ObjectView(0);
}

void DoInLodWindow(void (*function)()) {
    const WindowScope scope(Viewport[0]);
    function();
}

// ---- the preview
void SetEyeDistance(double distance) {
    MainView().ViewMatrix[3][1] = distance;
}

/// The level that is seen from the eye's distance becomes selected; the main view is drawn at once, what else has
/// changed at the end of the pass.
void ShowFromEye() {
    const bool switched = SelectLodByDistance(LodViewDistance);
    RedrawWindow(Viewport[0]);
    if (switched) {
        for (Window* window : Viewport)
            if (window != Viewport[0])
                DirtyWindow(window);
        DirtyWindow(StructureEditor);
    }
}

void StartLodMove(GadgetArg, int) {
    DoInLodWindow(StartMove);
}

void StopLodMove(GadgetArg, int) {
    DoInLodWindow(StopMove);
}

void LodSlideChange(GadgetArg, int, int position) {
    LodViewDistance = Scale.DistanceAt(position + LodScale::Bottom);
    SetEyeDistance(LodViewDistance);
    ShowFromEye();
}

/// Moves the slider and the eye by so many pixels, as far as it goes.
void SlideBy(int pixels) {
    const int from = GadgetData<Slider>(EyeSlider).Position, to = std::clamp(from + pixels, 0, Scale.Length);
    if (to == from)
        return;
    ConfigureSlider(EyeSlider, to, 0);
    LodSlideChange(nullptr, from, to);
    DirtyWindow(LodSetup);
}

int SlideByWheel(Gadget*, int, int turnY) {
    SlideBy(PixelsPerNotch * WholeNotches(turnY));
    return 1;
}

/// Other keys would change the view that shows the eye's distance.
int SlideByKey(View*, int character) {
    switch (character) {
    case UpCharacter:
    case DownCharacter:
        SlideBy(character == UpCharacter ? 1 : -1);
        break;
    case PageUpCharacter:
    case PageDownCharacter:
        SlideBy(character == PageUpCharacter ? PixelsPerPage : -PixelsPerPage);
        break;
    case HomeCharacter:
    case EndCharacter:
        SlideBy(character == EndCharacter ? Scale.Length : -Scale.Length);
        break;
    default:
        break;
    }
    return 1;
}

/// Shows the whole object, as it is looked at by default, from the nearest distance.
void ResetLodSetup() {
    const WindowScope scope(Viewport[0]);
    View& view = MainView();
    SetDefaultObjectView(&view, Direction3D);
    BoxView(&view, ObjectRadius());
    Scale = {.Length = vres + 1 - ScreenBesideSlider,
             .Nearest = view.ViewMatrix[3][1] / StartFactor,
             .HalfWidth = CurrentWindow->Width / 2.0};
    LodVanishDistance = DefaultVanish();
    LodSlideChange(nullptr, 0, 0);
}

// ---- the levels beside the slider
struct Mark {
    ::Lod* Lod;
    /// Of its tick, and of its text where that has to make room for others.
    int Y, LabelY;

    std::string Distance() const;
    std::string Text() const;
};

std::string Mark::Distance() const {
    char text[64];
    std::snprintf(text, sizeof text, "   (%.1f)", Lod->Distance);
    return text;
}

/// A long name gives way to the distance.
std::string Mark::Text() const {
    const std::string distance = Distance();
    const int room = WindowWidth - 4 - (LabelY == Y ? LabelX : LeaderX) - SmallWidth(distance.c_str());
    return ShortenedName(SmallFont, Lod->Name, room) + distance;
}

std::vector<Mark> Marks() {
    std::vector<Mark> marks;
    std::vector<int> heights;
    for (Lod* lod : EveryLod(CurrentObject())) {
        const double shown = std::clamp(lod->Distance, Scale.Nearest, std::max(Scale.Nearest, LodVanishDistance));
        const int y = Scale.HeightOf(shown) + MarkAboveHeight;
        marks.push_back({lod, y, y});
        heights.push_back(y);
    }
    SpreadLabels(heights, LabelGap, LodScale::Bottom, Scale.Top() + MarkAboveHeight);
    for (std::size_t i = 0; i < marks.size(); ++i)
        marks[i].LabelY = heights[i];
    return marks;
}

GadgetBox BoxOf(const Mark& mark) {
    return {TickX, mark.LabelY - LabelGap / 2, WindowWidth - TickX, LabelGap};
}

/// The level that is seen has a light ground, like what is chosen in lists.
void DrawMark(const Mark& mark) {
    const bool seen = mark.Lod == SelectedLod();
    const std::string text = mark.Text();
    const int x = mark.LabelY == mark.Y ? LabelX : LeaderX, baseline = mark.LabelY - LabelBelowMark;
    SetColour(White);
    DrawBox(TickX, mark.Y, TickWidth, 1, ShadeFull);
    if (x == LeaderX)
        DrawLine(TickX + TickWidth, mark.Y, LeaderX - 3, mark.LabelY, ShadeFull);
    if (seen)
        DrawBox(x - 3, baseline - 4, SmallWidth(text.c_str()) + 6, LabelGap, ShadeFull);
    SmallText(x, baseline, text.c_str(), seen ? BackgroundOf(CurrentWindow) : White);
}

/// From where to where each level is seen.
void DrawRanges(const std::vector<Mark>& marks) {
    int from = LodScale::Bottom + MarkAboveHeight;
    for (const Mark& mark : marks) {
        DrawBox(RangeX, from, 2, mark.Y - from, mark.Lod == SelectedLod() ? ShadeFull : ShadeNeutral);
        from = std::max(from, mark.Y);
    }
}

/// What is seen.
std::string Heading() {
    char distance[64];
    std::snprintf(distance, sizeof distance, "Seen from %.1f m: ", LodViewDistance);
    const int room = WindowWidth - 4 - LabelX - SmallWidth(distance);
    return distance + (SelectedLod() ? ShortenedName(SmallFont, SelectedLod()->Name, room) : std::string("nothing"));
}

void DrawLodSettings(Gadget*) {
    if (SortLods())
        DirtyWindow(StructureEditor);
    SmallText(LabelX, CurrentWindow->Height + HeadingY, Heading().c_str(), White);
    const std::vector<Mark> marks = Marks();
    SetColour(White);
    DrawRanges(marks);
    for (const Mark& mark : marks)
        DrawMark(mark);
}

/// A level that is taken to another distance.
class LodDrag : public Drag {
  public:
    explicit LodDrag(Lod* lod) : Dragged(lod), Before(lod->Distance) {}

  protected:
    void Begin() override { DoInLodWindow(StartMove); }

    void End() override { DoInLodWindow(StopMove); }

    bool Step() override {
        if (MouseY == LastY)
            return false;
        if (LastY != -1 || MouseY != PressedY) {
            const int y = std::clamp(MouseY - MarkAboveHeight, LodScale::Bottom, Scale.Top());
            Place(UsableLodDistance(Scale.DistanceAt(y)));
        }
        LastY = MouseY;
        return true;
    }

    void Show() override {
        ShowFromEye();
        RedrawCurrentWindow();
    }

    bool Cancel() override {
        Place(Before);
        Show();
        return true;
    }

    void Commit() override { DirtyWindow(StructureEditor); }

  private:
    void Place(double distance) {
        Dragged->Distance = distance;
        WorkSaved = 0;
        SortLods();
        DirtyWindow(StructureEditor);
    }

    Lod* const Dragged;
    const double Before;
    const int PressedY = MouseY;
    int LastY = -1;
};

int CheckLodSettings(Gadget*) {
    if (!MouseInBox(TickX, LodScale::Bottom, WindowWidth - TickX, Scale.Length + LodScale::Bottom))
        return 0;
    const Mark* nearest = nullptr;
    int least = PickDistance + 1;
    const std::vector<Mark> marks = Marks();
    for (const Mark& mark : marks)
        if (const int away = std::abs(mark.LabelY - MouseY); away < least) {
            least = away;
            nearest = &mark;
        }
    if (!nearest)
        return 0;
    LodDrag(nearest->Lod).Run();
    return 1;
}

void DescribeLodSettings(const Gadget*, GadgetDescription& description) {
    description.Label = "Levels of detail";
    description.Text = Heading();
    description.Box = {TickX, LodScale::Bottom, WindowWidth - TickX, Scale.Length + LodScale::Bottom};
    for (const Mark& mark : Marks())
        description.Items.push_back({mark.Lod->Name, BoxOf(mark), mark.Lod == SelectedLod()});
}

constexpr GadgetKind LodSettingsKind = {"custom", DescribeLodSettings, SlideByWheel, nullptr};

// ---- the window
void Measure(int& width, int& height) {
    width = WindowWidth;
    height = vres + 1 - FreeAboveWindow;
}

void Build() {
    AddBackdrop();
    EyeSlider = AddSlider({.X = SliderX,
                           .Y = LodScale::Bottom,
                           .Width = SliderWidth,
                           .Range = Scale.Length,
                           .Label = "Y",
                           .Pressed = StartLodMove,
                           .Moved = LodSlideChange,
                           .Released = StopLodMove});
    Gadget* const settings = CreateEntry(0);
    settings->DrawFn = DrawLodSettings;
    settings->ClickFn = CheckLodSettings;
    settings->Kind = &LodSettingsKind;
}

constexpr MenuEntry Menu[] = {
    {"Lod setup", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntryLast, 1, ' ', nullptr, nullptr},
};

void EndLodSetup();

void BuildBar() {
    constexpr int textY = -23;
    AddText(8, textY, msg(StatusText), 1);
    AddText(GooeyRight, textY, "Slide to look from farther away; drag levels to where they end.", 0);
}

const Tool LodSetupTool = {
    .Left = DummyClickFunc,
    .Menu = Menu,
    .Key = SlideByKey,
    .Status = Status,
    .Buttons = Tool::Bar::Done,
    .BuildBar = BuildBar,
    .CancelCode = 0,
    .ManualPage = "R_StructureEditor",
    .Leave = EndLodSetup,
};

void TakeEvent(int device, short value) {
    if (device == gl::KEYBD)
        SendToolKey(nullptr, value);
    else if (device == gl::RIGHTMOUSE && value)
        SendToolKey(nullptr, KeyOfItem(Menu, DoPopup(Menu)));
}

void Closed() {
    if (ToolRuns(LodSetupTool))
        ClearControl();
}

const ToolWindow LodSetupWindow = {
    .Title = " Lod Setup ",
    .Handle = &LodSetup,
    .Measure = Measure,
    .Place = {.Opened = &PlaceIsKnown, .X = &PlaceX, .Y = &PlaceY},
    .Parent = &StructureEditor,
    .Build = Build,
    .Event = TakeEvent,
    .Closed = Closed,
};

void EndLodSetup() {
    ZoomPanAllowed = 1;
    CloseToolWindow(LodSetupWindow);
    if (Quitting)
        return;
    SetEyeDistance(Scale.Nearest * StartFactor);
    CopyView(DefaultObject3D(), DefaultBefore);
    SelectedLod() = FirstLod();
    DirtyAllWindows();
}

} // namespace

void DoLodSetup() {
    if (SystemBusy()) {
        gl::ringbell();
        return;
    }
    if (!ObjectIsolated)
        ChangeObjectIsolation();
    MakeDefaultObjectViews();
    CopyView(DefaultBefore, DefaultObject3D());
    SortLods();
    ClampLodDistances();
    ResetLodSetup();
    BeginTool(LodSetupTool);
    ZoomPanAllowed = 0;
    PlaceX = hres + 1 - WindowWidth;
    PlaceY = 0;
    OpenToolWindow(LodSetupWindow);
}

double DefaultVanish() {
    const double halfWidth = Viewport[0] ? Viewport[0]->Width / 2.0 : 1;
    return std::min(halfWidth * MainView().Projection[0][0] * ObjectRadius(), FarthestLodDistance);
}
