#include "gooey/pictures.h"

#include "gooey/window.h"

#include "platform/snapshots.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

/// A channel that differs by no more than this does not count.
constexpr int ChannelTolerance = 24;
/// The share of pixels that may differ, in thousandths.
constexpr int PixelBudget = 2;

void Write(const gl::Picture& picture, const std::filesystem::path& path) {
    std::filesystem::create_directories(path.parent_path());
    std::string reason;
    ASSERT_TRUE(gl::WritePng(picture, path.string(), reason)) << path << ": " << reason;
}

void ExpectToBe(const std::string& name, const gl::Picture& shown) {
    const std::filesystem::path reference =
        std::filesystem::path(KIRVO_SOURCE_DIR) / "tests/gooey/references" / (name + ".png");
    if (std::getenv("KIRVO_ACCEPT_REFERENCES")) {
        Write(shown, reference);
        return;
    }
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "kirvo-pictures";
    gl::Picture expected;
    std::string reason;
    if (!gl::ReadPng(expected, reference.string(), reason)) {
        Write(shown, folder / (name + ".png"));
        FAIL() << reference << ": " << reason << "; what is shown is in " << folder;
    }
    gl::Picture difference;
    long differing = gl::DifferingPixels(shown, expected, ChannelTolerance, &difference);
    if (differing * 1000 <= static_cast<long>(shown.width) * shown.height * PixelBudget)
        return;
    Write(difference, folder / (name + "-difference.png"));
    Write(shown, folder / (name + ".png"));
    ADD_FAILURE() << name << ": " << differing << " pixels of " << shown.width << " x " << shown.height
                  << " differ from the reference; pictures in " << folder;
}

} // namespace

void ExpectPicture(const Window* window, const std::string& name) {
    ExpectToBe(name, gl::WindowPicture(window->Gid));
}

void ExpectScreenPicture(const std::string& name) {
    ExpectToBe(name, gl::ScreenPicture(false));
}
