#include "platform/screen_windows.h"

#include "platform/damage.h"
#include "platform/event_queue.h"

#include <algorithm>
#include <map>

namespace gl {

bool ArrangementChanged = false;

namespace {

struct ScreenState {
    ContentSize Size{0, 0};
    int NextId = 1;
    std::map<int, std::unique_ptr<ScreenWindow>> Windows; // in order of opening
    std::vector<ScreenWindow*> Stacking;
};

ScreenState Screen;

// How much of a title must stay on the screen, so that it can be seen and dragged.
constexpr int TitleKept = 64;
// The grip of a corner along the border.
constexpr int CornerGrip = 16;
constexpr int CloseBoxSize = 14;

std::vector<ScreenWindow*>& Neighbours(ScreenWindow& window) {
    return window.Parent ? window.Parent->Children : Screen.Stacking;
}

WindowRectangle Intersection(const WindowRectangle& a, const WindowRectangle& b) {
    const int left = std::max(a.X, b.X), right = std::min(a.X + a.Width, b.X + b.Width);
    const int bottom = std::max(a.Y, b.Y), top = std::min(a.Y + a.Height, b.Y + b.Height);
    return {left, bottom, std::max(0, right - left), std::max(0, top - bottom)};
}

long long Area(const WindowRectangle& rectangle) {
    return static_cast<long long>(rectangle.Width) * rectangle.Height;
}

// The nearest place where enough of the title lies on the screen.
WindowRectangle WithTitleOnScreen(WindowRectangle place) {
    const int kept = std::min(TitleKept, place.Width);
    place.X = std::clamp(place.X, kept - place.Width, std::max(kept - place.Width, Screen.Size.Width - kept));
    // The strip's top on the screen; on a screen lower than the strip its lower edge.
    const int highest = Screen.Size.Height - FrameBorder - TitleHeight - place.Height;
    const int lowest = FrameBorder - place.Height;
    place.Y = std::clamp(place.Y, std::min(lowest, highest), highest);
    return place;
}

// A window that a smaller screen cuts off at its right or lower edge moves in, as far as its other edges allow.
WindowRectangle BroughtBack(WindowRectangle place) {
    const WindowRectangle outer = OuterRectangle(place);
    place.X -= std::clamp(outer.X + outer.Width - Screen.Size.Width, 0, std::max(0, outer.X));
    place.Y += std::clamp(-outer.Y, 0, std::max(0, Screen.Size.Height - outer.Y - outer.Height));
    return place;
}

// The place for a new window of that content size: wholly on the screen if it fits, covering the least of the other
// windows; the first one in the middle, a little above the centre.
WindowRectangle ChoosePlace(ContentSize size) {
    const int across = size.Width + 2 * FrameBorder, up = size.Height + 2 * FrameBorder + TitleHeight;
    const int rightmost = std::max(0, Screen.Size.Width - across), highest = std::max(0, Screen.Size.Height - up);
    std::vector<int> lefts{rightmost / 2, rightmost, 0}, bottoms{highest * 3 / 5, highest, 0};
    for (const ScreenWindow* other : Screen.Stacking) {
        const WindowRectangle outer = OuterRectangle(other->Place);
        lefts.insert(lefts.end(), {outer.X + outer.Width, outer.X - across, outer.X + 2 * TitleHeight});
        bottoms.insert(bottoms.end(), {outer.Y + outer.Height - up, outer.Y, outer.Y - up, outer.Y + outer.Height,
                                       outer.Y + outer.Height - up - 2 * TitleHeight});
    }
    WindowRectangle best{};
    long long leastCovered = -1;
    for (int left : lefts)
        for (int bottom : bottoms) {
            const WindowRectangle outer{std::clamp(left, 0, rightmost), std::clamp(bottom, 0, highest), across, up};
            long long covered = 0;
            for (const ScreenWindow* other : Screen.Stacking)
                covered += Area(Intersection(outer, OuterRectangle(other->Place)));
            if (leastCovered < 0 || covered < leastCovered) {
                leastCovered = covered;
                best = outer;
            }
        }
    // What does not fit keeps its top-left corner on the screen.
    best.Y = std::min(best.Y, Screen.Size.Height - up);
    return {best.X + FrameBorder, best.Y + FrameBorder, size.Width, size.Height};
}

// The surfaces learn where they lie, for drawing into the overlay.
void UpdateSurfacePlaces(ScreenWindow& window) {
    const WindowRectangle place = ScreenPlace(window);
    window.Content->ScreenX = place.X;
    window.Content->ScreenY = place.Y;
    for (ScreenWindow* child : window.Children)
        UpdateSurfacePlaces(*child);
}

} // namespace

// ---- Frames ----

WindowRectangle OuterRectangle(const WindowRectangle& content) {
    return {content.X - FrameBorder, content.Y - FrameBorder, content.Width + 2 * FrameBorder,
            content.Height + 2 * FrameBorder + TitleHeight};
}

WindowRectangle TitleRectangle(const WindowRectangle& content) {
    return {content.X, content.Y + content.Height, content.Width, TitleHeight};
}

WindowRectangle CloseBoxRectangle(const WindowRectangle& content) {
    const int margin = (TitleHeight - CloseBoxSize) / 2;
    return {content.X + content.Width - margin - CloseBoxSize, content.Y + content.Height + margin, CloseBoxSize,
            CloseBoxSize};
}

FramePart FramePartAt(const WindowRectangle& content, int x, int y) {
    const WindowRectangle outer = OuterRectangle(content);
    if (!Contains(outer, x, y))
        return FramePart::None;
    if (Contains(content, x, y))
        return FramePart::Content;
    if (Contains(CloseBoxRectangle(content), x, y))
        return FramePart::CloseBox;
    if (Contains(TitleRectangle(content), x, y))
        return FramePart::Title;
    const bool left = x < outer.X + CornerGrip, right = x >= outer.X + outer.Width - CornerGrip;
    const bool bottom = y < outer.Y + CornerGrip, top = y >= outer.Y + outer.Height - CornerGrip;
    if (bottom && (left || right))
        return left ? FramePart::BottomLeft : FramePart::BottomRight;
    if (top && (left || right))
        return left ? FramePart::TopLeft : FramePart::TopRight;
    if (x < content.X)
        return FramePart::Left;
    if (x >= content.X + content.Width)
        return FramePart::Right;
    return y < content.Y ? FramePart::Bottom : FramePart::Top;
}

bool Contains(const WindowRectangle& rectangle, int x, int y) {
    return x >= rectangle.X && x < rectangle.X + rectangle.Width && y >= rectangle.Y &&
           y < rectangle.Y + rectangle.Height;
}

PixelBox ToPixelBox(const WindowRectangle& rectangle) {
    const int x = ToPixels(rectangle.X), y = ToPixels(rectangle.Y);
    return {x, y, ToPixels(rectangle.X + rectangle.Width) - x, ToPixels(rectangle.Y + rectangle.Height) - y};
}

// ---- The screen ----

ContentSize ScreenSize() {
    return Screen.Size;
}

void ChangeScreenSize(int width, int height) {
    const int grown = Screen.Size.Height > 0 ? height - Screen.Size.Height : 0;
    Screen.Size = {width, height};
    SetScreenSize(width, height);
    for (ScreenWindow* window : Screen.Stacking) {
        WindowRectangle wanted = window->Wanted;
        wanted.Y += grown;
        window->BeforeFit.Y += grown;
        if (window->Fitted) {
            SetWindowPlace(*window, FittedPlace(*window));
            continue;
        }
        SetWindowPlace(*window, BroughtBack(wanted));
        window->Wanted = wanted;
    }
    // Room for rounding at odd scales.
    ScreenDamage.Add({0, 0, ToPixels(width + 1), ToPixels(height + 1)});
    ArrangementChanged = true;
}

WindowRectangle FittedPlace(const ScreenWindow& window) {
    SizeRules rules = window.Rules;
    if (window.FillsWhenFitted)
        rules.AspectX = rules.AspectY = rules.StepX = rules.StepY = 0;
    const ContentSize room{Screen.Size.Width - 2 * FrameBorder, Screen.Size.Height - 2 * FrameBorder - TitleHeight};
    const ContentSize size = AllowedSize(rules, room, Leading::Smaller);
    return {FrameBorder + std::max(0, room.Width - size.Width) / 2,
            FrameBorder + (room.Height - size.Height + (room.Height > size.Height ? 1 : 0)) / 2, size.Width,
            size.Height};
}

ScreenWindow* FindScreenWindow(int id) {
    const auto found = Screen.Windows.find(id);
    return found == Screen.Windows.end() ? nullptr : found->second.get();
}

const std::vector<ScreenWindow*>& StackingOrder() {
    return Screen.Stacking;
}

std::vector<ScreenWindow*> WindowsByAge() {
    std::vector<ScreenWindow*> windows;
    for (const auto& [id, window] : Screen.Windows)
        windows.push_back(window.get());
    return windows;
}

ScreenWindow& AddScreenWindow(ScreenWindow* parent, const std::string& title, const SizeRules& rules) {
    auto owned = std::make_unique<ScreenWindow>();
    ScreenWindow& window = *owned;
    window.Id = Screen.NextId++;
    window.Parent = parent;
    window.Title = window.Name = title;
    window.Rules = rules;
    window.Rules.HasPlace = false;
    if (parent && !rules.HasPlace) {
        window.Place = {0, 0, parent->Place.Width, parent->Place.Height};
    } else {
        const ContentSize size = OpeningSize(rules, Screen.Size);
        window.Place =
            rules.HasPlace ? WindowRectangle{rules.PlaceX, rules.PlaceY, size.Width, size.Height} : ChoosePlace(size);
        if (!parent)
            window.Place = WithTitleOnScreen(window.Place);
    }
    window.Wanted = window.Place;
    window.Content = std::make_unique<Surface>(window.Place.Width, window.Place.Height, false);
    window.Content->Owner = &window;
    Screen.Windows.emplace(window.Id, std::move(owned));
    Neighbours(window).push_back(&window);
    UpdateSurfacePlaces(window);
    DamageWindow(window);
    ArrangementChanged = true;
    return window;
}

void RemoveScreenWindow(ScreenWindow& window) {
    while (!window.Children.empty())
        RemoveScreenWindow(*window.Children.back());
    DamageWindow(window);
    std::erase(Neighbours(window), &window);
    Screen.Windows.erase(window.Id);
    ArrangementChanged = true;
}

void RemoveAllScreenWindows() {
    while (!Screen.Stacking.empty())
        RemoveScreenWindow(*Screen.Stacking.back());
    Screen = {};
}

void RaiseWindow(ScreenWindow& window) {
    std::vector<ScreenWindow*>& neighbours = Neighbours(window);
    if (neighbours.back() == &window)
        return;
    std::erase(neighbours, &window);
    neighbours.push_back(&window);
    DamageWindow(window);
    ArrangementChanged = true;
}

void LowerWindow(ScreenWindow& window) {
    std::vector<ScreenWindow*>& neighbours = Neighbours(window);
    if (neighbours.front() == &window)
        return;
    std::erase(neighbours, &window);
    neighbours.insert(neighbours.begin(), &window);
    DamageWindow(window);
    ArrangementChanged = true;
}

WindowRectangle ScreenPlace(const ScreenWindow& window) {
    WindowRectangle place = window.Place;
    for (const ScreenWindow* parent = window.Parent; parent; parent = parent->Parent) {
        place.X += parent->Place.X;
        place.Y += parent->Place.Y;
    }
    return place;
}

WindowRectangle VisiblePlace(const ScreenWindow& window) {
    WindowRectangle visible = ScreenPlace(window);
    for (const ScreenWindow* parent = window.Parent; parent; parent = parent->Parent)
        visible = Intersection(visible, ScreenPlace(*parent));
    return visible;
}

void SetWindowPlace(ScreenWindow& window, WindowRectangle place) {
    place.Width = std::clamp(place.Width, 1, LargestSize);
    place.Height = std::clamp(place.Height, 1, LargestSize);
    if (!window.Parent)
        place = WithTitleOnScreen(place);
    window.Wanted = place;
    const bool resized = place.Width != window.Place.Width || place.Height != window.Place.Height;
    if (!resized && place.X == window.Place.X && place.Y == window.Place.Y)
        return;
    DamageWindow(window);
    if (resized) {
        window.Content->resize(place.Width, place.Height);
        window.TitleStale = window.TitleStale || place.Width != window.Place.Width;
        AppendRedraw(window.Id);
    }
    window.Place = place;
    UpdateSurfacePlaces(window);
    DamageWindow(window);
    ArrangementChanged = true;
}

ScreenWindow* TopWindowAt(int x, int y) {
    for (auto window = Screen.Stacking.rbegin(); window != Screen.Stacking.rend(); ++window)
        if (Contains(OuterRectangle((*window)->Place), x, y))
            return *window;
    return nullptr;
}

ScreenWindow* InputWindowAt(int x, int y) {
    ScreenWindow* window = TopWindowAt(x, y);
    for (ScreenWindow* inner = window; inner;) {
        window = inner;
        inner = nullptr;
        for (auto child = window->Children.rbegin(); child != window->Children.rend() && !inner; ++child)
            if (Contains(VisiblePlace(**child), x, y))
                inner = *child;
    }
    return window;
}

void DamageWindow(const ScreenWindow& window) {
    if (!window.Parent)
        DamageFrame(window);
    else
        ScreenDamage.Add(ToPixelBox(VisiblePlace(window)));
}

void DamageFrame(const ScreenWindow& window) {
    ScreenDamage.Add(ToPixelBox(OuterRectangle(window.Place)));
}

} // namespace gl
