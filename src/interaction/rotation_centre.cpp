#include "interaction/rotation_centre.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/manual.h"
#include "gooey/menu_session.h"
#include "gooey/messages.h"
#include "interaction/picking.h"
#include "interaction/view_menus.h"
#include "interaction/view_prompt.h"
#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/system.h"
#include "views/hooks.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int OnlyIn3dViews = 188;
constexpr int ClickOnTheModel = 201;

constexpr std::int16_t Status[] = {200, 90, 98, 101, 0};

const MenuEntry Menu[] = {
    {"Set rotation centre", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Cancel", MenuEntryItem, 1, EscapeCharacter, nullptr, nullptr},
    {"Read manual", MenuEntryLast, 2, '?', nullptr, nullptr},
};

/// Shows where the centre is now.
void FlashAt(double x, double y) {
    VanillaView();
    gl::drawmode(gl::PUPDRAW);
    gl::mapcolor(1, 255, 255, 255);
    for (int i = 0; i < 6; ++i) {
        gl::color(i % 2 == 0);
        gl::circ(static_cast<float>(x), static_cast<float>(y), 5);
        gl::sginap(10);
    }
    gl::drawmode(gl::NORMALDRAW);
}

void EndMode(View*, int character) {
    if (character == '?')
        OpenManual("R_Views");
    if (character != EscapeCharacter)
        return;
    LeftCOGFunc = RightCOGFunc = nullptr;
    COGKeyFunc = nullptr;
    EndViewPrompt();
}

void Pick(View* view) {
    if (!view->Perspective) {
        TellUser(OnlyIn3dViews);
        return;
    }
    if (!PickRotationCentre(view))
        return;
    double place[3];
    if (Calc2dOf(view, view->Centre, place))
        FlashAt(place[0], place[1]);
    EndMode(view, EscapeCharacter);
}

void ShowMenu(View* view) {
    EndMode(view, KeyOfItem(Menu, DoPopup(Menu)));
}

} // namespace

void SetRotationCentre() {
    if (!BeginViewPrompt("Click on database for new centre of rotation:", Status,
                         [] { EndMode(nullptr, EscapeCharacter); }))
        return;
    LeftCOGFunc = Pick;
    RightCOGFunc = ShowMenu;
    COGKeyFunc = EndMode;
}

int PickRotationCentre(View* view) {
    double point[3];
    if (!ClickSomewhere(view, nullptr, point, 0)) {
        TellUser(ClickOnTheModel);
        return 0;
    }
    std::copy(std::begin(point), std::end(point), view->Centre);
    view->HasCentre = 1;
    return 1;
}

void ResetRotationCentre(View* view) {
    view->HasCentre = 0;
}
