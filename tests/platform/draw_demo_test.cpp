// The demonstration's windows, composed on the screen, against reference pictures. With KIRVO_ACCEPT_PICTURES set the
// references are written anew instead; look at them before keeping them.
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "graphics_windows.h"
#include "platform/events.h"
#include "platform/graphics_context.h"
#include "platform/picture.h"
#include "platform/snapshots.h"
#include "platform/surface.h"
#include "platform/windows.h"

namespace gl {

namespace {

// The renderer gives the same picture every time on one kind of processor; others round a few pixels differently.
constexpr int ChannelTolerance = 6;
constexpr double DifferingShare = 0.002;

class Demonstration : public testing::TestWithParam<int> {
  protected:
    void SetUp() override {
        const int scale = GetParam();
        const std::string display = "headless:" + std::to_string(1040 * scale) + "x" + std::to_string(700 * scale);
        setenv("KIRVO_DISPLAY", display.c_str(), 1);
        setenv("KIRVO_SCALE", std::to_string(scale).c_str(), 1);
        std::string reason;
        ASSERT_TRUE(StartDisplay(reason)) << reason;
        demo::OpenWindows();
    }

    void TearDown() override {
        demo::Forget();
        EndDisplay();
        unsetenv("KIRVO_DISPLAY");
        unsetenv("KIRVO_SCALE");
    }

    static void Compare(const std::string& name) {
        const std::string path = KIRVO_SOURCE_DIR "/tests/platform/references/" + name + ".png";
        const Picture picture = ScreenPicture(false);
        std::string error;
        if (std::getenv("KIRVO_ACCEPT_PICTURES")) {
            ASSERT_TRUE(WritePng(picture, path, error)) << error;
            return;
        }
        Picture reference, difference;
        ASSERT_TRUE(ReadPng(reference, path, error)) << error;
        const long differing = DifferingPixels(reference, picture, ChannelTolerance, &difference);
        const std::string seen = testing::TempDir() + name + "_seen.png",
                          where = testing::TempDir() + name + "_differs.png";
        const double share = static_cast<double>(differing) / static_cast<double>(picture.pixels.size());
        if (share > DifferingShare) {
            WritePng(picture, seen, error);
            WritePng(difference, where, error);
        }
        EXPECT_LE(share, DifferingShare) << "compare " << path << " with " << seen << "; " << where << " shows where";
    }
};

TEST_P(Demonstration, LooksLikeItsReference) {
    if (!SoftwareRenderer())
        GTEST_SKIP() << "the references were drawn in software";
    demo::DrawRubberBand(150, 120, 760, 520);
    Compare("graphics_scale" + std::to_string(GetParam()));
}

TEST_P(Demonstration, ARubberBandLeavesNoTrace) {
    const Picture before = ScreenPicture(false);
    demo::DrawRubberBand(150, 120, 760, 520);
    const Picture with = ScreenPicture(false);
    demo::DrawRubberBand(300, 200, 310, 210);
    demo::DrawRubberBand(0, 0, 0, 0);
    EXPECT_EQ(DifferingPixels(before, ScreenPicture(false), 0, nullptr), 0);
    const long outline = 2 * (761 - 150) + 2 * (521 - 120) - 4;
    const int scale = GetParam();
    EXPECT_EQ(DifferingPixels(before, with, 0, nullptr), outline * scale * scale);
}

INSTANTIATE_TEST_SUITE_P(Scales, Demonstration, testing::Values(1, 2));

} // namespace

} // namespace gl
