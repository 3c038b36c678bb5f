// The screen as one resizable window on the user's desktop.
#include "platform/clock.h"
#include "platform/compositor.h"
#include "platform/damage.h"
#include "platform/desktop_keyboard.h"
#include "platform/display.h"
#include "platform/display_loss.h"
#include "platform/dropped_files.h"
#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/graphics_context.h"
#include "platform/input.h"
#include "platform/pointer_shapes.h"
#include "platform/surface.h"

#include <SDL.h>
#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>
#include <vector>

namespace gl {

namespace {

// Motions that were under way when the pointer was warped still tell its old place; they are ignored for so long.
constexpr long long WarpPatience = 60'000;
// The first desktop window leaves room around itself, and is no larger (drawing pixels) than its windows need: a main
// window in the middle with tool windows around it.
constexpr double InitialShare = 0.88;
constexpr int ComfortableWidth = 1600, ComfortableHeight = 1080;
// What must be seen of a window that comes back on a smaller desktop.
constexpr int LeastWidth = 320, LeastHeight = 240;
// A display this dense, and large enough, gets two screen pixels for a drawing pixel.
constexpr float DenseDotsPerInch = 168;
constexpr int DenseWidth = 2560;

class DesktopDisplay : public Display {
  public:
    ~DesktopDisplay() override;
    bool Open(double scale, std::string& error);

    bool IsHeadless() const override { return false; }

    void TakeInput() override;
    void Wait(long long microseconds, bool untilInput) override;
    void Present() override;
    void WarpPointer(int x, int y) override;
    void ShowPointer(const PointerShape* shape) override;

    void SetTitle(const std::string& title) override { SDL_SetWindowTitle(Window, title.c_str()); }

    void SetClipboard(const std::string& text) override { SDL_SetClipboardText(text.c_str()); }

    std::string Clipboard() override;

    void RingBell() override {
        std::fputc('\a', stderr);
        std::fflush(stderr);
    }

    bool Place(DesktopPlace& place) const override;

  private:
    void TakeEvent(const SDL_Event& event);
    void TakeWindowEvent(const SDL_WindowEvent& event);
    void FollowSize();
    void FollowPlace();
    void AwaitMaximised() const;
    void MovePointer(int x, int y);
    void TurnWheel(const SDL_MouseWheelEvent& wheel);
    void GrabWhileAltIsHeld();
    double ChosenScale() const;

    SDL_Window* Window = nullptr;
    SDL_GLContext Context = nullptr;
    int PixelWidth = 0, PixelHeight = 0; // of the screen
    double Ratio = 1;                    // screen pixels per unit of the desktop's window
    DesktopPlace Free{};                 // the window's place while it does not fill the desktop
    DesktopKeyboard Keyboard;
    long long WarpedAt = 0; // 0: no warp is under way
    int WarpX = 0, WarpY = 0;
    double WheelRestX = 0, WheelRestY = 0;
    bool Grabbed = false;
    // SDL's objects for the shapes that were shown, by pixels and hot spot; the one that is shown.
    std::map<std::vector<std::uint32_t>, SDL_Cursor*> Cursors;
    SDL_Cursor* Shown = nullptr;
};

// How the environment names a display; "" when it does not.
std::string NamedDisplay() {
    for (const char* variable : {"WAYLAND_DISPLAY", "DISPLAY", "SDL_VIDEODRIVER"})
        if (const char* value = std::getenv(variable); value && *value)
            return std::string(variable) + "=" + value;
    return "";
}

DesktopDisplay::~DesktopDisplay() {
    for (const auto& [pixels, cursor] : Cursors)
        SDL_FreeCursor(cursor);
    if (Context)
        SDL_GL_DeleteContext(Context);
    if (Window)
        SDL_DestroyWindow(Window);
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

double ScaleForDensity(int display) {
    float dotsPerInch = 0;
    SDL_Rect bounds{};
    const bool dense = SDL_GetDisplayDPI(display, nullptr, &dotsPerInch, nullptr) == 0 &&
                       SDL_GetDisplayBounds(display, &bounds) == 0 && dotsPerInch >= DenseDotsPerInch &&
                       bounds.w >= DenseWidth;
    return dense ? 2 : 1;
}

double DesktopDisplay::ChosenScale() const {
    // Desktops that scale by themselves say so by the size of what is drawn.
    return Ratio > 1.2 ? std::round(Ratio * 2) / 2 : ScaleForDensity(SDL_GetWindowDisplayIndex(Window));
}

SDL_Rect UsableBounds(int display) {
    SDL_Rect usable{0, 0, 1280, 960};
    SDL_GetDisplayUsableBounds(display, &usable);
    return usable;
}

DesktopPlace FirstPlace(double scale) {
    const SDL_Rect usable = UsableBounds(0);
    const int width = std::min(static_cast<int>(usable.w * InitialShare), static_cast<int>(ComfortableWidth * scale));
    const int height = std::min(static_cast<int>(usable.h * InitialShare), static_cast<int>(ComfortableHeight * scale));
    return {usable.x + (usable.w - width) / 2, usable.y + (usable.h - height) / 2, width, height, false};
}

// The desktop may have changed since: as much of the place as it has room for.
DesktopPlace FittedPlace(DesktopPlace place) {
    const SDL_Point middle{place.X + place.Width / 2, place.Y + place.Height / 2};
    const SDL_Rect usable = UsableBounds(std::max(0, SDL_GetPointDisplayIndex(&middle)));
    place.Width = std::clamp(place.Width, std::min(LeastWidth, usable.w), usable.w);
    place.Height = std::clamp(place.Height, std::min(LeastHeight, usable.h), usable.h);
    place.X = std::clamp(place.X, usable.x, usable.x + usable.w - place.Width);
    place.Y = std::clamp(place.Y, usable.y, usable.y + usable.h - place.Height);
    return place;
}

bool DesktopDisplay::Open(double scale, std::string& error) {
    constexpr const char* HowToGoOn = "; with KIRVO_DISPLAY=headless it runs without one";
    const std::string named = NamedDisplay();
    if (named.empty()) {
        // Asking SDL would only add complaints of its own.
        error = std::string("a display is missing: neither DISPLAY nor WAYLAND_DISPLAY names one") + HowToGoOn;
        return false;
    }
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        error = std::string("a display is missing (") + SDL_GetError() + ")" + HowToGoOn;
        return false;
    }
    const char* driver = SDL_GetCurrentVideoDriver();
    if (!driver || std::string_view(driver) == "offscreen" || std::string_view(driver) == "dummy") {
        error = "a display is missing: " + named + " cannot be opened" + HowToGoOn;
        return false;
    }
    WatchForDisplayLoss();
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 3);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 0);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    Free = PreferredDesktopPlace ? FittedPlace(*PreferredDesktopPlace)
                                 : FirstPlace(scale > 0 ? scale : ScaleForDensity(0));
    const std::uint32_t maximised = Free.Maximised ? SDL_WINDOW_MAXIMIZED : 0;
    Window = SDL_CreateWindow("Kirvo", Free.X, Free.Y, Free.Width, Free.Height,
                              SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI | maximised);
    if (Window)
        Context = SDL_GL_CreateContext(Window);
    if (!Context) {
        error = std::string("the display cannot show OpenGL 3.3 (") + SDL_GetError() + ")" + HowToGoOn;
        return false;
    }
    // Presenting must not hold up input: the layer limits itself.
    SDL_GL_SetSwapInterval(0);
    if (Free.Maximised)
        AwaitMaximised();
    int width = 0, height = 0;
    SDL_GetWindowSize(Window, &width, &height);
    SDL_GL_GetDrawableSize(Window, &PixelWidth, &PixelHeight);
    Ratio = width > 0 ? static_cast<double>(PixelWidth) / width : 1;
    SetDrawingScale(scale > 0 ? scale : ChosenScale());
    if (!InitialiseGraphics(error) || !AdoptScreenPixels(PixelWidth, PixelHeight, error))
        return false;
    SDL_SetWindowMinimumSize(Window, LeastWidth, LeastHeight);
    SDL_StartTextInput();
    return true;
}

// ---- Input ----

void DesktopDisplay::MovePointer(int x, int y) {
    const double toDrawing = Ratio / DrawingScale();
    PointerMoved(static_cast<int>(std::floor(x * toDrawing)),
                 static_cast<int>(std::floor((PixelHeight - 1 - y * Ratio) / DrawingScale())));
}

void DesktopDisplay::TurnWheel(const SDL_MouseWheelEvent& wheel) {
    const double direction = wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -1 : 1;
    WheelRestX += direction * static_cast<double>(wheel.preciseX) * WHEELNOTCH;
    WheelRestY += direction * static_cast<double>(wheel.preciseY) * WHEELNOTCH;
    const int x = static_cast<int>(WheelRestX), y = static_cast<int>(WheelRestY);
    WheelRestX -= x;
    WheelRestY -= y;
    if (y != 0)
        WheelTurned(WHEELY, y);
    if (x != 0)
        WheelTurned(WHEELX, x);
}

// Window managers keep buttons with Alt for themselves unless the mouse is grabbed.
void DesktopDisplay::GrabWhileAltIsHeld() {
    const bool wanted = DeviceValue(LEFTALTKEY) != 0;
    if (wanted == Grabbed)
        return;
    Grabbed = wanted;
    SDL_SetWindowMouseGrab(Window, wanted ? SDL_TRUE : SDL_FALSE);
}

void DesktopDisplay::FollowSize() {
    int width = 0, height = 0, pixelWidth = 0, pixelHeight = 0;
    SDL_GetWindowSize(Window, &width, &height);
    SDL_GL_GetDrawableSize(Window, &pixelWidth, &pixelHeight);
    if (pixelWidth <= 0 || pixelHeight <= 0 || (pixelWidth == PixelWidth && pixelHeight == PixelHeight))
        return;
    PixelWidth = pixelWidth;
    PixelHeight = pixelHeight;
    Ratio = static_cast<double>(pixelWidth) / width;
    std::string error;
    if (!AdoptScreenPixels(pixelWidth, pixelHeight, error))
        std::fprintf(stderr, "%s\n", error.c_str());
}

bool FillsDesktop(SDL_Window* window) {
    return SDL_GetWindowFlags(window) & (SDL_WINDOW_MAXIMIZED | SDL_WINDOW_FULLSCREEN | SDL_WINDOW_MINIMIZED);
}

void DesktopDisplay::FollowPlace() {
    if (FillsDesktop(Window))
        return;
    // What a frame takes comes on top again when the window opens there.
    int top = 0, left = 0;
    SDL_GetWindowBordersSize(Window, &top, &left, nullptr, nullptr);
    SDL_GetWindowPosition(Window, &Free.X, &Free.Y);
    SDL_GetWindowSize(Window, &Free.Width, &Free.Height);
    Free.X -= left;
    Free.Y -= top;
}

// The desktop enlarges a window a moment after it has opened. The first windows must find the screen's final size, or
// they would be moved with its top at every start.
void DesktopDisplay::AwaitMaximised() const {
    constexpr int attempts = 40, milliseconds = 10;
    for (int i = 0; i < attempts; ++i) {
        SDL_PumpEvents();
        int width = 0, height = 0;
        SDL_GetWindowSize(Window, &width, &height);
        if (width > Free.Width || height > Free.Height)
            return;
        SDL_Delay(milliseconds);
    }
}

bool DesktopDisplay::Place(DesktopPlace& place) const {
    place = Free;
    place.Maximised = SDL_GetWindowFlags(Window) & SDL_WINDOW_MAXIMIZED;
    return true;
}

void DesktopDisplay::TakeWindowEvent(const SDL_WindowEvent& event) {
    switch (event.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        FollowSize();
        FollowPlace();
        break;
    case SDL_WINDOWEVENT_MOVED:
        FollowPlace();
        break;
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_SHOWN:
    case SDL_WINDOWEVENT_RESTORED:
        ScreenDamage.Add({0, 0, PixelWidth, PixelHeight});
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        Keyboard.Forget();
        InputLost();
        break;
    case SDL_WINDOWEVENT_CLOSE:
        QuitRequested();
        break;
    default:
        break;
    }
}

void DesktopDisplay::TakeEvent(const SDL_Event& event) {
    Keyboard.BeforeEvent(event);
    switch (event.type) {
    case SDL_MOUSEMOTION:
        // The motion that a warp itself causes has no length.
        if (WarpedAt != 0) {
            const bool arrived = (event.motion.xrel == 0 && event.motion.yrel == 0) ||
                                 (event.motion.x == WarpX && event.motion.y == WarpY);
            if (!arrived && ClockMicroseconds() - WarpedAt < WarpPatience)
                return;
            WarpedAt = 0;
        }
        MovePointer(event.motion.x, event.motion.y);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
        const int button = event.button.button == SDL_BUTTON_LEFT     ? LEFTMOUSE
                           : event.button.button == SDL_BUTTON_MIDDLE ? MIDDLEMOUSE
                           : event.button.button == SDL_BUTTON_RIGHT  ? RIGHTMOUSE
                                                                      : 0;
        if (button == 0)
            return;
        if (WarpedAt == 0)
            MovePointer(event.button.x, event.button.y);
        ButtonChanged(button, event.type == SDL_MOUSEBUTTONDOWN);
        break;
    }
    case SDL_MOUSEWHEEL:
        TurnWheel(event.wheel);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        Keyboard.TakeKey(event.key);
        GrabWhileAltIsHeld();
        break;
    case SDL_TEXTINPUT:
        Keyboard.TakeText(event.text);
        break;
    case SDL_WINDOWEVENT:
        TakeWindowEvent(event.window);
        GrabWhileAltIsHeld();
        break;
    case SDL_DROPFILE:
        FileWasDropped(event.drop.file);
        SDL_free(event.drop.file);
        break;
    case SDL_QUIT:
        EndIfDisplayIsLost(Window);
        QuitRequested();
        break;
    default:
        break;
    }
}

void DesktopDisplay::TakeInput() {
    SDL_Event event;
    while (SDL_PollEvent(&event))
        TakeEvent(event);
    Keyboard.AfterEvents();
}

void DesktopDisplay::Wait(long long microseconds, bool untilInput) {
    const int milliseconds = static_cast<int>(std::max(1LL, (microseconds + 500) / 1000));
    if (!untilInput) {
        SDL_Delay(static_cast<Uint32>(milliseconds));
        return;
    }
    SDL_Event event;
    if (SDL_WaitEventTimeout(&event, milliseconds)) {
        TakeEvent(event);
        TakeInput();
    }
}

// ---- Output ----

void DesktopDisplay::Present() {
    const PixelBox screen = ScreenPixels();
    glBindFramebuffer(GL_READ_FRAMEBUFFER, ScreenFramebuffer());
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    glDisable(GL_SCISSOR_TEST);
    glBlitFramebuffer(0, 0, screen.width, screen.height, 0, 0, screen.width, screen.height, GL_COLOR_BUFFER_BIT,
                      GL_NEAREST);
    ForgetGraphicsState();
    SDL_GL_SwapWindow(Window);
}

void DesktopDisplay::WarpPointer(int x, int y) {
    WarpX = static_cast<int>(std::lround((x + 0.5) * DrawingScale() / Ratio - 0.5));
    WarpY = static_cast<int>(std::lround((PixelHeight - (y + 0.5) * DrawingScale()) / Ratio - 0.5));
    WarpedAt = ClockMicroseconds();
    SDL_WarpMouseInWindow(Window, WarpX, WarpY);
}

void DesktopDisplay::ShowPointer(const PointerShape* shape) {
    if (!shape) {
        SDL_ShowCursor(SDL_DISABLE);
        Shown = nullptr;
        return;
    }
    std::vector<std::uint32_t> key = shape->Pixels;
    key.push_back(static_cast<std::uint32_t>(shape->HotX));
    key.push_back(static_cast<std::uint32_t>(shape->HotY));
    SDL_Cursor*& cursor = Cursors[key];
    if (!cursor) {
        const int factor = std::max(1, static_cast<int>(std::lround(DrawingScale() / Ratio)));
        PointerShape large = Enlarged(*shape, factor);
        SDL_Surface* picture = SDL_CreateRGBSurfaceWithFormatFrom(large.Pixels.data(), large.Width, large.Height, 32,
                                                                  large.Width * 4, SDL_PIXELFORMAT_ABGR8888);
        cursor = SDL_CreateColorCursor(picture, large.HotX, large.HotY);
        SDL_FreeSurface(picture);
    }
    if (cursor == Shown)
        return;
    SDL_SetCursor(cursor);
    if (!Shown)
        SDL_ShowCursor(SDL_ENABLE);
    Shown = cursor;
}

std::string DesktopDisplay::Clipboard() {
    char* text = SDL_GetClipboardText();
    std::string copy = text ? text : "";
    SDL_free(text);
    return copy;
}

} // namespace

std::unique_ptr<Display> OpenDesktopDisplay(double scale, std::string& error) {
    auto display = std::make_unique<DesktopDisplay>();
    if (!display->Open(scale, error)) {
        error = "Kirvo: " + error;
        return nullptr;
    }
    return display;
}

} // namespace gl
