#include "interaction/work_area_setting.h"

#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/manual.h"
#include "gooey/menu_session.h"
#include "gooey/messages.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/input.h"
#include "interaction/picking.h"
#include "interaction/view_menus.h"
#include "interaction/view_prompt.h"
#include "interaction/work_area_gizmo.h"
#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "views/default_views.h"
#include "views/hooks.h"
#include "views/view_transform.h"
#include "views/viewports.h"
#include "views/work_area.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int ClickOnTheModel = 202;
constexpr int SmallestCircle = 4; // pixels, too small still
constexpr int CircleColour = 1;

constexpr std::int16_t Status[] = {203, 98, 101, 0};

const MenuEntry Menu[] = {
    {"Set work area", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Cancel", MenuEntryItem, 1, EscapeCharacter, nullptr, nullptr},
    {"Read manual", MenuEntryLast, 2, '?', nullptr, nullptr},
};

/// A circle about the place of the press; Escape gives it up.
class CircleDrag : public Drag {
  public:
    /// In pixels; 0 when it was given up.
    double Radius = 0;

  protected:
    bool Step() override {
        const double radius = std::hypot(MouseX - X, MouseY - Y);
        const bool changed = radius != Radius;
        Radius = radius;
        return changed;
    }

    void Show() override {
        DrawCircle(0);
        Shown = Radius;
        DrawCircle(CircleColour);
    }

    bool Cancel() override {
        Radius = 0;
        return true;
    }

    void End() override { DrawCircle(0); }

  private:
    /// The window draws normally again afterwards: it may be redrawn at any time meanwhile.
    void DrawCircle(int colour) const {
        gl::drawmode(gl::PUPDRAW);
        VanillaView();
        gl::mapcolor(CircleColour, 255, 0, 0);
        gl::color(colour);
        gl::circ(static_cast<float>(X), static_cast<float>(Y), static_cast<float>(Shown));
        gl::drawmode(gl::NORMALDRAW);
    }

    const int X = MouseX, Y = MouseY;
    double Shown = 0;
};

void TypeKey(View* view, int character) {
    if (character == EscapeCharacter)
        EndSettingWorkArea();
    else if (character == '?')
        OpenManual("R_WorkArea");
    else {
        CheckSafeKeys(view, character);
        // It may have opened others.
        LetViewsAnswer();
    }
}

void ShowMenu(View* view) {
    if (const int key = KeyOfItem(Menu, DoPopup(Menu)))
        TypeKey(view, key);
}

/// All views look at the cube, and 3D ones turn about it.
void BoxViews() {
    for (int number = 0; number < ViewportLimit; ++number) {
        if (!Viewport[number])
            continue;
        WindowScope scope(Viewport[number]);
        ValidateView(number);
        BoxView(ViewOfViewport(number), ShownRadius());
    }
    TurnViewsAboutWorkArea();
}

} // namespace

void DoWorkArea() {
    if (!BeginViewPrompt("Use left button to select work area:", Status, EndSettingWorkArea))
        return;
    SettingWorkArea = 1;
    WorkAreaLeftFunc = PickWorkArea;
    WorkAreaRightFunc = ShowMenu;
    WorkAreaKeyFunc = TypeKey;
}

void EndSettingWorkArea() {
    if (!SettingWorkArea)
        return;
    SettingWorkArea = 0;
    WorkAreaLeftFunc = WorkAreaRightFunc = nullptr;
    WorkAreaKeyFunc = nullptr;
    EndViewPrompt();
}

void PickWorkArea(View* view) {
    double eye[3], model[3];
    if (!ClickSomewhere(view, eye, model, 0)) {
        TellUser(ClickOnTheModel);
        return;
    }
    double pixel = 0;
    PixelToEye(view, -eye[2], pixel);
    CircleDrag circle;
    circle.Run();
    if (circle.Radius <= SmallestCircle)
        return;
    const bool ownView = CurrentWindow && CurrentWindow == WorkAreaWindow;
    const double magnification = ownView ? 1 : WorkAreaMagnification();
    WorkAreaRecord& area = CurrentWorkArea();
    const int unseen = !ownView ? -1 : area.TopView ? 2 : 1;
    for (int axis = 0; axis < 3; ++axis)
        if (axis != unseen)
            area.Centre[axis] = model[axis];
    SetWorkAreaSize(area, pixel * circle.Radius / magnification, ShownRadius());
    if (!WorkAreaGizmo) {
        area.TopView = 1;
        OpenWorkAreaGizmo();
    }
    BoxViews();
    DirtyModelWindows();
    EndSettingWorkArea();
}
