#include "platform/display.h"

#include "platform/clock.h"
#include "platform/compositor.h"
#include "platform/event_queue.h"
#include "platform/graphics_context.h"
#include "platform/input.h"
#include "platform/pointer_shapes.h"
#include "platform/script_player.h"
#include "platform/tablet.h"
#include "platform/waiting.h"
#include "platform/windows.h"

#include <cmath>
#include <cstdlib>
#include <string_view>

namespace gl {

namespace {

std::unique_ptr<Display> Opened;

constexpr int LeastScreen = 64, LargestScreen = 16384;
constexpr double LeastScale = 0.5, LargestScale = 8;

bool ReadWhole(std::string_view text, double& number) {
    const std::string copy(text);
    char* end = nullptr;
    number = std::strtod(copy.c_str(), &end);
    return !copy.empty() && *end == 0;
}

bool ReadSize(std::string_view text, int& width, int& height) {
    const std::size_t cross = text.find('x');
    double numbers[2];
    if (cross == std::string_view::npos || !ReadWhole(text.substr(0, cross), numbers[0]) ||
        !ReadWhole(text.substr(cross + 1), numbers[1]))
        return false;
    for (double number : numbers)
        if (!(number >= LeastScreen && number <= LargestScreen) || number != std::floor(number))
            return false;
    width = static_cast<int>(numbers[0]);
    height = static_cast<int>(numbers[1]);
    return true;
}

void FollowWarp(int x, int y) {
    if (Opened)
        Opened->WarpPointer(x, y);
}

void FollowShape() {
    if (Opened)
        Opened->ShowPointer(ShownPointerShape());
}

} // namespace

bool ReadDisplayChoice(const char* display, const char* scale, DisplayChoice& choice, std::string& error) {
    const std::string_view wish = display ? display : "";
    constexpr std::string_view HeadlessWord = "headless";
    if (wish.starts_with(HeadlessWord)) {
        choice.Headless = true;
        const std::string_view rest = wish.substr(HeadlessWord.size());
        if (!rest.empty() && (rest[0] != ':' || !ReadSize(rest.substr(1), choice.Width, choice.Height))) {
            error = "KIRVO_DISPLAY: \"" + std::string(wish) + "\" is not headless:WIDTHxHEIGHT (64 to 16384 each)";
            return false;
        }
    } else if (!wish.empty() && wish != "window") {
        error = "KIRVO_DISPLAY: \"" + std::string(wish) + "\" is neither window nor headless nor headless:WIDTHxHEIGHT";
        return false;
    }
    if (scale && *scale &&
        (!ReadWhole(scale, choice.Scale) || !(choice.Scale >= LeastScale && choice.Scale <= LargestScale))) {
        error = "KIRVO_SCALE: \"" + std::string(scale) + "\" is not a number from 0.5 to 8";
        return false;
    }
    return true;
}

Display* CurrentDisplay() {
    return Opened.get();
}

bool AdoptScreenPixels(int width, int height, std::string& error) {
    ChangeScreenSize(std::max(1, static_cast<int>(width / DrawingScale())),
                     std::max(1, static_cast<int>(height / DrawingScale())));
    return OpenCompositor(width, height, error);
}

bool StartDisplay(std::string& reason) {
    if (Opened)
        return true;
    DisplayChoice choice;
    if (!ReadDisplayChoice(std::getenv("KIRVO_DISPLAY"), std::getenv("KIRVO_SCALE"), choice, reason))
        return false;
    ResetQueue();
    ResetInput();
    ResetWaiting();
    UseVirtualClock(choice.Headless);
    Opened = choice.Headless ? OpenHeadlessDisplay(choice.Width, choice.Height, choice.Scale, reason)
                             : OpenDesktopDisplay(choice.Scale, reason);
    if (!Opened)
        return false;
    PointerWarped = FollowWarp;
    PointerShapeChanged = FollowShape;
    OpenTablet(std::getenv("KIRVO_TABLET"));
    LoadScript(std::getenv("KIRVO_SCRIPT"));
    return true;
}

void EndDisplay() {
    winset(0);
    RemoveAllScreenWindows();
    ForgetScript();
    CloseTablet();
    ForgetCursors();
    if (Opened) {
        CloseCompositor();
        CloseGraphics();
    }
    PointerWarped = nullptr;
    PointerShapeChanged = nullptr;
    Opened.reset();
    ResetQueue();
    ResetInput();
}

} // namespace gl
