// Where the screen is shown and input comes from: the desktop, or memory only. One is open at a time.
#pragma once

#include "platform/desktop_place.h"

#include <memory>
#include <optional>
#include <string>

namespace gl {

struct PointerShape;

class Display {
  public:
    virtual ~Display() = default;
    // The screen exists in memory only and time is virtual.
    virtual bool IsHeadless() const = 0;
    // Takes in what has happened, without waiting.
    virtual void TakeInput() = 0;
    // Waits that long; with `untilInput` no longer than until something happens.
    virtual void Wait(long long microseconds, bool untilInput) = 0;
    // Shows the composed screen.
    virtual void Present() = 0;
    virtual void WarpPointer(int x, int y) = 0;
    // The pointer's shape from now on, null: hidden.
    virtual void ShowPointer(const PointerShape* shape) = 0;
    // The title of the desktop window.
    virtual void SetTitle(const std::string& title) = 0;
    virtual void SetClipboard(const std::string& text) = 0;
    virtual std::string Clipboard() = 0;
    virtual void RingBell() = 0;

    // Where its desktop window stands; false when it has none.
    virtual bool Place(DesktopPlace&) const { return false; }
};

// What PreferDesktopPlace said last.
extern std::optional<DesktopPlace> PreferredDesktopPlace;

// Null with the reason in `error` (one line that says how to go on). Sets the drawing scale and makes the rendering
// context current. `scale` 0: chosen from the display; sizes in screen pixels, 0: the display's choice.
std::unique_ptr<Display> OpenHeadlessDisplay(int width, int height, double scale, std::string& error);
std::unique_ptr<Display> OpenDesktopDisplay(double scale, std::string& error);

// The screen has a new size in screen pixels: windows, overlay and the composed picture follow.
bool AdoptScreenPixels(int width, int height, std::string& error);

// Null until StartDisplay succeeded.
Display* CurrentDisplay();

// What KIRVO_DISPLAY and KIRVO_SCALE say.
struct DisplayChoice {
    bool Headless = false;
    int Width = 1600, Height = 1200; // screen pixels, headless
    double Scale = 0;                // 0: chosen from the display
};

// Reads the two variables' values (null: unset). False with one line in `error`.
bool ReadDisplayChoice(const char* display, const char* scale, DisplayChoice& choice, std::string& error);

} // namespace gl
