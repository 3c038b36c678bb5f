#include "interaction/input.h"

#include "base/slots.h"
#include "gooey/event_loop.h"
#include "gooey/menu_session.h"
#include "gooey/redraw.h"
#include "gooey/window_stack.h"
#include "interaction/manipulation.h"
#include "interaction/modes.h"
#include "interaction/selection.h"
#include "interaction/view_menus.h"
#include "platform/events.h"
#include "store/storage.h"
#include "views/hooks.h"
#include "views/viewports.h"

#include <cctype>

View* KeyView;
InputSlots TheInputSlots;

namespace {

/// The one of a chain of hooks that gets the event: the first that is installed; null when none is.
template <class Hook, class... Hooks>
Hook FirstInstalled(Hook first, Hooks... others) {
    Hook found = first;
    ((found = found ? found : others), ...);
    return found;
}

/// Tab was typed and is still held; a click came while it was.
bool TabWaits = false, TabServedClick = false;

void RouteKey(View* view, int character) {
    if (KeyHook hook = FirstInstalled(COGKeyFunc, GridKeyFunc, WorkAreaKeyFunc, KeyCheckFunc)) {
        hook(view, character);
        return;
    }
    KeyView = view;
    DoModelAction(character);
}

} // namespace

void StartLeftModel(View* view) {
    TabServedClick = TabServedClick || gl::getbutton(gl::TABKEY);
    if (ClickHook hook = FirstInstalled(LeftCOGFunc, LeftGridFunc, WorkAreaLeftFunc, LeftClickFunc)) {
        hook(view);
        return;
    }
    SelectThings(view, ObjectIsolated ? WorkMode : SelectKindScene);
    DirtyModelWindows();
    RedrawCurrentWindow();
}

void StartMiddleModel(View* view) {
    if (!view->Perspective) {
        if (MiddleGridFunc) {
            MiddleGridFunc(view);
            return;
        }
        if (MiddleClickFunc && MiddleClickFunc(view))
            return;
    }
    ManipulateView(view);
}

void StartRightModel(View* view) {
    if (ClickHook hook = FirstInstalled(RightCOGFunc, RightGridFunc, WorkAreaRightFunc, RightClickFunc))
        hook(view);
    else
        DealWithPopup(view, DoPopup(ViewMenu));
}

void CheckModelKey(View* view, int character) {
    if (character == TabCharacter && gl::getbutton(gl::TABKEY))
        TabWaits = true;
    else
        RouteKey(view, character >= 'A' && character <= 'Z' ? std::tolower(character) : character);
}

void CheckTab(View* view, int pressed) {
    const bool typed = !pressed && TabWaits && !TabServedClick;
    TabWaits = TabServedClick = false;
    if (typed)
        RouteKey(view, TabCharacter);
}

void DoModelAction(int code) {
    if (TheInputSlots.DoActionCommand && TheInputSlots.DoActionCommand(code))
        return;
    if (TheInputSlots.DoSafeCommand)
        TheInputSlots.DoSafeCommand(code);
}

void CheckSafeKeys(View* view, int code) {
    KeyView = view ? view : ViewOfViewport(0);
    if (TheInputSlots.DoSafeCommand)
        TheInputSlots.DoSafeCommand(code);
}

void DealWithPopup(View* view, int item) {
    KeyView = view;
    CallSlot(TheInputSlots.MenuAction, item);
}

void DealWithPulldown(int item) {
    WindowScope scope(Viewport[0]);
    DealWithPopup(ViewOfViewport(0), item);
}
