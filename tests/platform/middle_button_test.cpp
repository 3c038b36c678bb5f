#include "platform/middle_button.h"

#include "platform/events.h"

#include <gtest/gtest.h>

#include <string>

using namespace gl;

namespace {

std::string Log;

void Note(int button, bool pressed) {
    Log += button == LEFTMOUSE ? 'l' : button == MIDDLEMOUSE ? 'm' : 'r';
    Log += pressed ? '+' : '-';
}

// Lower case: release; upper case: press; a digit: that many tens of milliseconds pass; '~': the pointer moves.
std::string Play(const std::string& script) {
    Log.clear();
    MiddleButton emulation(Note);
    long long now = 0;
    for (char c : script) {
        if (c >= '0' && c <= '9') {
            now += (c - '0') * 10'000;
            emulation.Pass(now);
        } else if (c == '~') {
            emulation.Moved();
        } else {
            const bool pressed = c >= 'A' && c <= 'Z';
            const char which = static_cast<char>(pressed ? c + ('a' - 'A') : c);
            emulation.Change(which == 'l' ? LEFTMOUSE : which == 'm' ? MIDDLEMOUSE : RIGHTMOUSE, pressed, now);
        }
    }
    return Log;
}

TEST(MiddleButtonEmulation, MakesTheMiddleButtonOfLeftAndRightTogether) {
    const struct {
        const char* What;
        const char* Script;
        const char* Seen;
    } cases[] = {
        {"a click", "Ll", "l+l-"},
        {"a press that lasts", "L8", "l+"},
        {"a press is held back at first", "L5", ""},
        {"a drag begins at once", "L~", "l+"},
        {"both together", "L3R9rl", "m+m-"},
        {"both together, the other way", "R1L9lr", "m+m-"},
        {"too far apart", "L9R9rl", "l+r+r-l-"},
        {"after a drag began", "L~R", "l+r+"},
        {"middle, then left with it", "LRl5L5lr", "m+l+l-m-"},
        {"middle, then right with it", "LRr5R5rl", "m+r+r-m-"},
        {"middle stays while one is held", "LRl9", "m+"},
        {"a real middle button", "Mm", "m+m-"},
        {"a real middle button during a held-back press", "LMml", "l+m+m-l-"},
    };

    for (const auto& test : cases)
        EXPECT_EQ(Play(test.Script), test.Seen) << test.What;
}

} // namespace
