#include "headless_screen.h"

#include "platform/tablet.h"

#include <linux/input-event-codes.h>

using namespace gl;

namespace {

TEST(DisplayChoice, IsReadFromTheEnvironment) {
    const struct {
        const char* Display;
        const char* Scale;
        bool Headless;
        int Width, Height;
        double Factor;
    } good[] = {
        {nullptr, nullptr, false, 1600, 1200, 0},
        {"", "", false, 1600, 1200, 0},
        {"window", "2", false, 1600, 1200, 2},
        {"headless", nullptr, true, 1600, 1200, 0},
        {"headless:800x600", "1.5", true, 800, 600, 1.5},
    };

    for (const auto& test : good) {
        DisplayChoice choice;
        std::string error;
        EXPECT_TRUE(ReadDisplayChoice(test.Display, test.Scale, choice, error)) << error;
        EXPECT_EQ(choice.Headless, test.Headless);
        EXPECT_EQ(choice.Width, test.Width);
        EXPECT_EQ(choice.Height, test.Height);
        EXPECT_EQ(choice.Scale, test.Factor);
    }

    const struct {
        const char* Display;
        const char* Scale;
    } bad[] = {{"headles", nullptr},
               {"headless:", nullptr},
               {"headless:800", nullptr},
               {"headless:800x", nullptr},
               {"headless:8x600", nullptr},
               {"headless:1e9x600", nullptr},
               {"headless:9.5x600", nullptr},
               {"headless:800x600x2", nullptr},
               {"screen", nullptr},
               {"headless", "big"},
               {"headless", "0"},
               {"headless", "-1"},
               {"headless", "nan"},
               {"headless", "100"}};

    for (const auto& test : bad) {
        DisplayChoice choice;
        std::string error;
        EXPECT_FALSE(ReadDisplayChoice(test.Display, test.Scale, choice, error)) << test.Display;
        EXPECT_FALSE(error.empty());
    }
}

TEST(DisplayChoice, WithoutADisplayTheProgramSaysHowToGoOn) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto openWithout = [](const char* display) {
        EndDisplay();
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"})
            unsetenv(variable);
        if (display)
            setenv("DISPLAY", display, 1);
        setenv("KIRVO_DISPLAY", "window", 1);
        winopen("w");
    };
    // One line: nothing before it, nothing after it.
    EXPECT_EXIT(openWithout(nullptr), testing::ExitedWithCode(1),
                "^Kirvo: a display is missing: neither DISPLAY nor WAYLAND_DISPLAY names one; with "
                "KIRVO_DISPLAY=headless it runs without one\n$");
    // The desktop's message bus library leaks a little when no display can be opened; the child inherits this.
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
    EXPECT_EXIT(openWithout(":4711"), testing::ExitedWithCode(1),
                "a display is missing.*DISPLAY=:4711 cannot be opened.*KIRVO_DISPLAY=headless");
    unsetenv("ASAN_OPTIONS");
}

TEST(Tablet, PositionsCountFromTheLowerLeftInOneMeasure) {
    const TabletAxes large{0, 60000, 0, 30000};

    const struct {
        TabletAxes Axes;
        int X, Y;
        TabletPosition Expected;
    } cases[] = {
        {{0, 1000, 0, 800}, 10, 790, {10, 10}},     {{100, 1100, -50, 750}, 100, 750, {0, 0}},
        {{0, 1000, 0, 800}, 2000, -5, {1000, 800}}, {large, 60000, 0, {32767, 16383}},
        {large, 30000, 15000, {16383, 8191}},
    };

    for (const auto& test : cases) {
        const TabletPosition position = ToTabletUnits(test.Axes, test.X, test.Y);
        EXPECT_EQ(position.X, test.Expected.X);
        EXPECT_EQ(position.Y, test.Expected.Y);
    }
    EXPECT_EQ(PuckButtonOf(BTN_TOUCH), 0);
    EXPECT_EQ(PuckButtonOf(BTN_3), 3);
    EXPECT_EQ(PuckButtonOf(KEY_A), -1);
}

TEST(Tablet, OneThatCannotBeUsedIsReportedAndForgotten) {
    testing::internal::CaptureStderr();
    OpenTablet("/dev/null");
    OpenTablet("/nonexistent");
    ReadTablet();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("KIRVO_TABLET: cannot use /dev/null"), std::string::npos);
    EXPECT_NE(said.find("KIRVO_TABLET: cannot use /nonexistent: No such file"), std::string::npos);
}

} // namespace
