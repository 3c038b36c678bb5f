#include "platform/windows.h"

#include "platform/damage.h"
#include "platform/display.h"
#include "platform/frame_drag.h"
#include "platform/pointer_shapes.h"
#include "platform/screen_windows.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace gl {

namespace {

SizeRules NextRules;
int CurrentId = 0;

ScreenWindow* Current() {
    return FindScreenWindow(CurrentId);
}

// What the program places need no longer fit the screen.
void PlaceByProgram(ScreenWindow& window, const WindowRectangle& place) {
    window.Fitted = false;
    SetWindowPlace(window, place);
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

WindowRectangle FromEdges(int x1, int x2, int y1, int y2) {
    return {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2) - std::min(x1, x2) + 1,
            std::max(y1, y2) - std::min(y1, y2) + 1};
}

// The desktop window carries the oldest window's title.
void UpdateDesktopTitle() {
    const std::vector<ScreenWindow*> windows = WindowsByAge();
    if (Display* display = CurrentDisplay(); display && !windows.empty())
        display->SetTitle(Trimmed(windows.front()->Title));
}

int OpenScreenWindow(ScreenWindow* parent, const char* title) {
    const ScreenWindow& window = AddScreenWindow(parent, title, std::exchange(NextRules, {}));
    winset(window.Id);
    return window.Id;
}

} // namespace

void prefposition(int x1, int x2, int y1, int y2) {
    const WindowRectangle place = FromEdges(x1, x2, y1, y2);
    NextRules.HasPlace = true;
    NextRules.PlaceX = place.X;
    NextRules.PlaceY = place.Y;
    NextRules.PlaceWidth = place.Width;
    NextRules.PlaceHeight = place.Height;
}

void prefsize(int width, int height) {
    NextRules.PreferredWidth = std::max(1, width);
    NextRules.PreferredHeight = std::max(1, height);
}

void minsize(int width, int height) {
    NextRules.MinimumWidth = std::clamp(width, 0, LargestSize);
    NextRules.MinimumHeight = std::clamp(height, 0, LargestSize);
}

void maxsize(int width, int height) {
    NextRules.MaximumWidth = std::clamp(width, 0, LargestSize);
    NextRules.MaximumHeight = std::clamp(height, 0, LargestSize);
}

void keepaspect(int x, int y) {
    NextRules.AspectX = std::max(0, x);
    NextRules.AspectY = std::max(0, y);
}

void stepunit(int x, int y) {
    NextRules.StepX = std::max(0, x);
    NextRules.StepY = std::max(0, y);
}

void fudge(int x, int y) {
    NextRules.FudgeX = x;
    NextRules.FudgeY = y;
}

void winconstraints() {
    const SizeRules rules = std::exchange(NextRules, {});
    ScreenWindow* window = Current();
    if (!window)
        return;
    window->Rules = rules;
    window->Rules.HasPlace = false;
    if (rules.HasPlace) {
        PlaceByProgram(*window, {rules.PlaceX, rules.PlaceY, rules.PlaceWidth, rules.PlaceHeight});
        return;
    }
    const WindowRectangle place = window->Place;
    const ContentSize size = rules.PreferredWidth > 0
                                 ? AllowedSize(rules, {rules.PreferredWidth, rules.PreferredHeight}, Leading::Larger)
                                 : WithinLimits(rules, {place.Width, place.Height});
    // The top-left corner stays, as when the user pulls the lower right one.
    PlaceByProgram(*window, {place.X, place.Y + place.Height - size.Height, size.Width, size.Height});
}

int winopen(const char* title) {
    std::string reason;
    if (!StartDisplay(reason)) {
        std::fprintf(stderr, "%s\n", reason.c_str());
        std::exit(1);
    }
    const int id = OpenScreenWindow(nullptr, title);
    UpdateDesktopTitle();
    return id;
}

int swinopen(int parent) {
    ScreenWindow* owner = FindScreenWindow(parent);
    return owner ? OpenScreenWindow(owner, "") : -1;
}

void winclose(int id) {
    ScreenWindow* window = FindScreenWindow(id);
    if (!window)
        return;
    RemoveScreenWindow(*window);
    if (!FindScreenWindow(CurrentId))
        winset(0);
    UpdateDesktopTitle();
}

void winset(int id) {
    ScreenWindow* window = FindScreenWindow(id);
    CurrentId = window ? id : 0;
    MakeSurfaceCurrent(window ? window->Content.get() : nullptr);
}

int winget() {
    return CurrentId;
}

void winposition(int x1, int x2, int y1, int y2) {
    if (ScreenWindow* window = Current())
        PlaceByProgram(*window, FromEdges(x1, x2, y1, y2));
}

void winmove(int x, int y) {
    if (ScreenWindow* window = Current())
        PlaceByProgram(*window, {x, y, window->Place.Width, window->Place.Height});
}

void winpop() {
    if (ScreenWindow* window = Current())
        RaiseWindow(*window);
}

void winpush() {
    if (ScreenWindow* window = Current())
        LowerWindow(*window);
}

void wintitle(const char* title) {
    ScreenWindow* window = Current();
    if (!window || window->Title == title)
        return;
    window->Title = title;
    window->TitleStale = true;
    if (!window->Parent)
        ScreenDamage.Add(ToPixelBox(TitleRectangle(window->Place)));
    UpdateDesktopTitle();
}

void foreground() {}

void getorigin(int* x, int* y) {
    const ScreenWindow* window = Current();
    const WindowRectangle place = window ? ScreenPlace(*window) : WindowRectangle{};
    *x = place.X;
    *y = place.Y;
}

void getsize(int* width, int* height) {
    const ScreenWindow* window = Current();
    *width = window ? window->Place.Width : 0;
    *height = window ? window->Place.Height : 0;
}

bool WindowIsOpen(int id) {
    return FindScreenWindow(id) != nullptr;
}

WindowRectangle WindowPlace(int id) {
    const ScreenWindow* window = FindScreenWindow(id);
    return window ? ScreenPlace(*window) : WindowRectangle{};
}

const std::string& WindowTitle(int id) {
    static const std::string none;
    const ScreenWindow* window = FindScreenWindow(id);
    return window ? window->Title : none;
}

int WindowParent(int id) {
    const ScreenWindow* window = FindScreenWindow(id);
    return window && window->Parent ? window->Parent->Id : 0;
}

int FindWindowByTitle(const std::string& title) {
    const std::string wanted = Trimmed(title);
    int opened = 0, beginning = 0;
    const std::vector<ScreenWindow*> windows = WindowsByAge();
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        const std::string found = Trimmed((*window)->Title);
        if (found == wanted)
            return (*window)->Id;
        if (opened == 0 && !wanted.empty() && Trimmed((*window)->Name) == wanted)
            opened = (*window)->Id;
        if (beginning == 0 && !wanted.empty() && found.starts_with(wanted))
            beginning = (*window)->Id;
    }
    return opened ? opened : beginning;
}

int WindowAt(int x, int y) {
    const ScreenWindow* window = InputWindowAt(x, y);
    return window && Contains(ScreenPlace(*window), x, y) ? window->Id : 0;
}

void ResizeByFrame(int id, int width, int height) {
    if (ScreenWindow* window = FindScreenWindow(id); window && !window->Parent)
        ResizeWithinRules(*window, width, height);
}

void MoveByFrame(int id, int x, int y) {
    if (ScreenWindow* window = FindScreenWindow(id); window && !window->Parent) {
        window->Fitted = false;
        SetWindowPlace(*window, {x, y, window->Place.Width, window->Place.Height});
    }
}

void ToggleFit(int id) {
    if (ScreenWindow* window = FindScreenWindow(id); window && !window->Parent)
        FitOrRestore(*window);
}

void FillWhenFitted(int id, bool fills) {
    if (ScreenWindow* window = FindScreenWindow(id))
        window->FillsWhenFitted = fills;
}

bool PlaceBeforeFit(int id, WindowRectangle& place) {
    const ScreenWindow* window = FindScreenWindow(id);
    if (!window || !window->Fitted)
        return false;
    place = window->BeforeFit;
    return true;
}

void PressCloseBox(int id) {
    if (const ScreenWindow* window = FindScreenWindow(id); window && !window->Parent)
        RequestClose(*window);
}

} // namespace gl
