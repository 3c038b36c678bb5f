#include "interaction/work_area_gizmo.h"

#include "geometry/matrices.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/manual.h"
#include "gooey/message_table.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/manipulator.h"
#include "interaction/picking.h"
#include "interaction/work_area_setting.h"
#include "platform/drawing.h"
#include "platform/events.h"
#include "platform/framebuffer.h"
#include "store/storage.h"
#include "views/display_flags.h"
#include "views/drawing.h"
#include "views/moves.h"
#include "views/rendering_state.h"
#include "views/status_line.h"
#include "views/traversal.h"
#include "views/view_transform.h"
#include "views/viewports.h"
#include "views/work_area.h"

#include <algorithm>
#include <cmath>

int WorkAreaX, WorkAreaY, WorkAreaW, WorkAreaH, WorkAreaOpened;

namespace {

constexpr char ManualPage[] = "R_WorkArea", ManualName[] = "Work area";
constexpr int GizmoStatus = 26;

constexpr int FirstWidth = 250, FirstHeight = 275, LeastSize = 200;
/// Of the window around its view: left and below, and in all.
constexpr int ViewX = 4, ViewY = 29, Beside = 8, AboveAndBelow = 68, FudgeHeight = 60;
constexpr int CheckY = -29, TopViewX = 8, FrontViewX = 104;

constexpr int FrontDirection = 4;
/// The drag's zoom a pixel, and the wheel's a notch.
constexpr double LargerByPixel = 1.01, SmallerByPixel = 0.99, NotchFactor = 1.2;
/// Beyond this, places in the cube need more digits than the graphics hardware has.
constexpr double MostMagnification = 1e5, LeastMagnification = 1e-3;

/// The check boxes are a pair, of which one is on.
int ShowsTop, ShowsFront;

void ChooseSide(GadgetArg top) {
    CurrentWorkArea().TopView = top.Number;
    DirtyWindow(WorkAreaGizmo);
    DirtyWindow(WorkAreaWindow);
}

/// Around the view, which goes to its place within.
void DrawSurround() {
    const int width = CurrentWindow->Width, height = CurrentWindow->Height;
    SetViewPos(WorkAreaWindow, ViewX, ViewY, width - Beside, height - AboveAndBelow);
    gl::cpack(BackgroundOf(CurrentWindow));
    gl::recti(0, 0, width - 1, height - 1);
    SetColour(LightGrey);
    DrawLoweredBorder(ViewX - 4, ViewY - 4, width - Beside + 8, height - AboveAndBelow + 8);
    DrawStatus(msg(GizmoStatus), nullptr);
    ShowsTop = CurrentWorkArea().TopView != 0;
    ShowsFront = !ShowsTop;
}

void DrawWorkAreaView() {
    View* view = WorkAreaView();
    SussSpecialDraw();
    if (!Moving)
        BusyStatus();
    SetUpView(view, 0);
    SetLighting();
    cls(BackgroundOf(CurrentWindow));
    if (ObjectIsolated)
        DrawSingleObject(view, !SolidView || (MoveWire && Moving) ? ShownWire : ShownSolid, nullptr);
    else
        DrawScene(view);
    gl::swapbuffers();
    if (Moving && CurrentWindow == WorkAreaWindow && !FastUpdates)
        RedrawWindow(Viewport[0]);
}

void ResetWorkArea(View*) {
    WorkAreaRecord& area = CurrentWorkArea();
    area.HalfSize *= area.Magnification;
    area.Magnification = 1;
    std::fill_n(area.Centre, 3, 0.0);
}

void Zoom(WorkAreaRecord& area, const WorkAreaRecord& start, double factor) {
    SetWorkAreaSize(area, start.HalfSize / factor, start.HalfSize * start.Magnification);
}

/// The middle button moves the cube, with the right one changes its size, with both others resets it; Escape goes back.
class WorkAreaDrag : public ViewDrag {
  public:
    WorkAreaDrag() : ViewDrag(WorkAreaView(), gl::MIDDLEMOUSE), Former(CurrentWorkArea()) {}

  protected:
    void Begin() override {
        SetManipulator(Buttons, ResetWorkArea, Anchor, Anchor);
        Anchor(Dragged);
        ViewDrag::Begin();
    }

    bool Event(int device, short value) override {
        UpdateManipulator(Dragged, device, value, Buttons);
        return true;
    }

    bool Step() override {
        if (Buttons.Active)
            return true;
        const double dx = MouseX - StartX, dy = MouseY - StartY;
        WorkAreaRecord& area = CurrentWorkArea();
        const WorkAreaRecord before = area;
        area = Start;
        if (Buttons.RightDown) {
            Zoom(area, Start, std::pow(dy > 0 ? LargerByPixel : SmallerByPixel, std::fabs(dy)));
        } else {
            area.Centre[0] -= dx * PixelSize;
            area.Centre[area.TopView ? 1 : 2] -= dy * PixelSize;
        }
        return before.HalfSize != area.HalfSize || !std::equal(before.Centre, before.Centre + 3, area.Centre);
    }

    bool Cancel() override {
        CurrentWorkArea() = Former;
        return true;
    }

  private:
    /// The drag goes on from where the pointer and the cube are now.
    static void Anchor(View*) {
        Start = CurrentWorkArea();
        StartX = MouseX;
        StartY = MouseY;
        PixelToEye(WorkAreaView(), 0, PixelSize);
    }

    static inline WorkAreaRecord Start;
    static inline int StartX, StartY;
    static inline double PixelSize;

    const WorkAreaRecord Former;
    Manipulator Buttons;
};

void DragWorkArea() {
    WorkAreaDrag().Run();
    TurnViewsAboutWorkArea();
}

void TurnWheelInView(short turn) {
    WorkAreaRecord& area = CurrentWorkArea();
    Zoom(area, WorkAreaRecord(area), std::pow(NotchFactor, static_cast<double>(turn) / gl::WHEELNOTCH));
    DirtyModelWindows();
}

void WorkAreaEvent(int device, short value) {
    ReadMousePos();
    View* view = WorkAreaView();
    SetUpView(view, 0);
    if (device == gl::KEYBD && value == '?')
        OpenManual(ManualPage);
    else if (device == gl::WHEELY)
        TurnWheelInView(value);
    else if (device == gl::LEFTMOUSE && value)
        PickWorkArea(view);
    else if (device == gl::MIDDLEMOUSE && value)
        DragWorkArea();
    else if (device == gl::RIGHTMOUSE && value)
        DoManualPage(ManualPage, ManualName);
}

void ForgetView() {
    WorkAreaWindow = nullptr;
}

void BuildGizmo() {
    Kirvo_AddGadget(DrawSurround, nullptr);
    AddCheckBox(TopViewX, CheckY, 0, CheckSmallFont, 1, "Top view", ChooseSide, &ShowsTop);
    AddCheckBox(FrontViewX, CheckY, 0, CheckSmallFont, 0, "Front view", ChooseSide, &ShowsFront);
    WindowScope scope(CurrentWindow);
    const int flags = WindowInParent | (SingleWhenStill ? 0 : WindowDoubleBuffered);
    WorkAreaWindow = OpenWindow("Work area subwindow", flags, 0, nullptr, DrawWorkAreaView, WorkAreaEvent, ForgetView,
                                sizeof(SubwindowPlace), CurrentWindow);
    WindowData<SubwindowPlace>(WorkAreaWindow) = UnplacedSubwindow;
}

const ToolWindow GizmoWindow = {
    .Title = " Working area",
    .Handle = &WorkAreaGizmo,
    .Width = FirstWidth,
    .Height = FirstHeight,
    .Rules = {.LeastWidth = LeastSize, .LeastHeight = LeastSize, .AspectX = 1, .AspectY = 1, .FudgeY = FudgeHeight},
    .Place = {.Opened = &WorkAreaOpened, .X = &WorkAreaX, .Y = &WorkAreaY, .Width = &WorkAreaW, .Height = &WorkAreaH},
    .Build = BuildGizmo,
    .Closed = DirtyModelWindows,
    .ManualPage = ManualPage,
    .ManualName = ManualName,
};

} // namespace

void OpenWorkAreaGizmo() {
    WindowScope scope(CurrentWindow);
    OpenToolWindow(GizmoWindow);
    DirtyModelWindows();
}

View* WorkAreaView() {
    static View view;
    const WorkAreaRecord& area = CurrentWorkArea();
    const double scale = 1 / (area.HalfSize * area.Magnification);
    view = {};
    view.Valid = 1;
    view.Projection = ScaleMatrix(scale / WindowAspect(), scale, -scale);
    view.ViewMatrix = TranslationMatrix(-area.Centre[0], -area.Centre[1], -area.Centre[2]);
    if (area.TopView)
        MultMatrix(view.ViewMatrix, PitchMatrix(90), view.ViewMatrix);
    else
        view.Direction = FrontDirection;
    view.GridMatrix = IdentityMatrix;
    view.Zoom = area.Magnification;
    return &view;
}

void SetWorkAreaSize(WorkAreaRecord& area, double halfSize, double radius) {
    area.Magnification = std::clamp(radius / halfSize, LeastMagnification, MostMagnification);
    area.HalfSize = radius / area.Magnification;
}

void TurnViewsAboutWorkArea() {
    const WorkAreaRecord& area = CurrentWorkArea();
    for (int number = 0; number < NoViewports; ++number) {
        View* view = ViewOfViewport(number);
        if (!view->Perspective)
            continue;
        view->HasCentre = 1;
        std::copy_n(area.Centre, 3, view->Centre);
    }
}
