#include "platform/frame_drag.h"

#include "platform/damage.h"
#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/system.h"

#include <algorithm>
#include <cstdlib>

namespace gl {

namespace {

struct FrameDrag {
    int Id = 0; // the window whose frame is held, 0: none
    FramePart Part = FramePart::None;
    int StartX = 0, StartY = 0;
    WindowRectangle StartPlace{};
    bool Moving = false; // the pointer has left the press far enough
};

FrameDrag Held;

// The title's last click, for double clicks.
struct TitleClick {
    int Id = 0, X = 0, Y = 0;
    long Time = 0;
};

TitleClick LastTitleClick;

constexpr int MoveThreshold = 3;
constexpr long DoubleClickTicks = 50;

bool PullsLeft(FramePart part) {
    return part == FramePart::Left || part == FramePart::TopLeft || part == FramePart::BottomLeft;
}

bool PullsRight(FramePart part) {
    return part == FramePart::Right || part == FramePart::TopRight || part == FramePart::BottomRight;
}

bool PullsBottom(FramePart part) {
    return part == FramePart::Bottom || part == FramePart::BottomLeft || part == FramePart::BottomRight;
}

bool PullsTop(FramePart part) {
    return part == FramePart::Top || part == FramePart::TopLeft || part == FramePart::TopRight;
}

void ShowCloseBox(ScreenWindow& window, bool pressed) {
    if (window.CloseBoxPressed == pressed)
        return;
    window.CloseBoxPressed = pressed;
    window.TitleStale = true;
    ScreenDamage.Add(ToPixelBox(TitleRectangle(window.Place)));
}

// The edges that are not pulled stay; both axes follow the rules even when only one is pulled.
void PlaceResized(ScreenWindow& window, const WindowRectangle& start, ContentSize size, bool keepRight, bool keepTop) {
    window.Fitted = false;
    SetWindowPlace(window, {keepRight ? start.X + start.Width - size.Width : start.X,
                            keepTop ? start.Y + start.Height - size.Height : start.Y, size.Width, size.Height});
}

void Resize(ScreenWindow& window, int dx, int dy) {
    const WindowRectangle& start = Held.StartPlace;
    ContentSize wish{start.Width, start.Height};
    if (PullsLeft(Held.Part))
        wish.Width -= dx;
    if (PullsRight(Held.Part))
        wish.Width += dx;
    if (PullsBottom(Held.Part))
        wish.Height -= dy;
    if (PullsTop(Held.Part))
        wish.Height += std::min(dy, ScreenSize().Height - FrameBorder - TitleHeight - start.Y - start.Height);
    const bool across = PullsLeft(Held.Part) || PullsRight(Held.Part);
    const bool upright = PullsBottom(Held.Part) || PullsTop(Held.Part);
    const Leading leading = across && upright ? Leading::Larger : across ? Leading::Width : Leading::Height;
    PlaceResized(window, start, AllowedSize(window.Rules, wish, leading), PullsLeft(Held.Part), !PullsTop(Held.Part));
}

bool IsDoubleClick(const ScreenWindow& window, int x, int y) {
    const bool again = LastTitleClick.Id == window.Id && times() - LastTitleClick.Time < DoubleClickTicks &&
                       std::abs(x - LastTitleClick.X) <= MoveThreshold &&
                       std::abs(y - LastTitleClick.Y) <= MoveThreshold;
    // A third click begins anew.
    LastTitleClick = {again ? 0 : window.Id, x, y, times()};
    return again;
}

} // namespace

bool PressFrame(int x, int y) {
    ScreenWindow* window = TopWindowAt(x, y);
    if (!window)
        return false;
    const FramePart part = FramePartAt(window->Place, x, y);
    if (part == FramePart::Content)
        return false;
    RaiseWindow(*window);
    Held = {window->Id, part, x, y, window->Place, false};
    if (part == FramePart::CloseBox) {
        ShowCloseBox(*window, true);
    } else if (part == FramePart::Title && IsDoubleClick(*window, x, y)) {
        FitOrRestore(*window);
        Held.Part = FramePart::None;
    }
    return true;
}

void DragFrame(int x, int y) {
    ScreenWindow* window = FindScreenWindow(Held.Id);
    if (!window)
        return;
    const int dx = x - Held.StartX, dy = y - Held.StartY;
    if (Held.Part == FramePart::CloseBox) {
        ShowCloseBox(*window, Contains(CloseBoxRectangle(window->Place), x, y));
    } else if (Held.Part == FramePart::Title) {
        Held.Moving = Held.Moving || std::abs(dx) >= MoveThreshold || std::abs(dy) >= MoveThreshold;
        if (Held.Moving) {
            window->Fitted = false;
            SetWindowPlace(*window,
                           {Held.StartPlace.X + dx, Held.StartPlace.Y + dy, window->Place.Width, window->Place.Height});
        }
    } else if (Held.Part != FramePart::None && (dx != 0 || dy != 0 || Held.Moving)) {
        Held.Moving = true;
        Resize(*window, dx, dy);
    }
}

void ReleaseFrame(int x, int y) {
    DragFrame(x, y);
    ScreenWindow* window = FindScreenWindow(Held.Id);
    const bool close = window && Held.Part == FramePart::CloseBox && window->CloseBoxPressed;
    ForgetFrameDrag();
    if (close)
        RequestClose(*window);
}

bool FrameIsHeld() {
    return Held.Id != 0;
}

FramePart HeldFramePart() {
    return Held.Part;
}

void ForgetFrameDrag() {
    if (ScreenWindow* window = FindScreenWindow(Held.Id))
        ShowCloseBox(*window, false);
    Held = {};
    ArrangementChanged = true;
}

void ResetFrameDrag() {
    ForgetFrameDrag();
    LastTitleClick = {};
}

void RequestClose(const ScreenWindow& window) {
    if (DeviceIsQueued(WINSHUT))
        AppendEvent(WINSHUT, window.Id);
    else if (DeviceIsQueued(WINQUIT))
        AppendEvent(WINQUIT, window.Id);
}

void FitOrRestore(ScreenWindow& window) {
    if (window.Fitted) {
        window.Fitted = false;
        SetWindowPlace(window, window.BeforeFit);
        return;
    }
    const WindowRectangle before = window.Place;
    SetWindowPlace(window, FittedPlace(window));
    window.BeforeFit = before;
    window.Fitted = true;
}

void ResizeWithinRules(ScreenWindow& window, int width, int height) {
    PlaceResized(window, window.Place, AllowedSize(window.Rules, {width, height}, Leading::Larger), false, true);
}

} // namespace gl
