// What is seen on the screen: stacking, clipping, buffers, overlay, pointer; by pixels of snapshots.
#include "headless_screen.h"

#include "platform/compositor.h"
#include "platform/cursors.h"
#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/frames.h"
#include "platform/matrices.h"
#include "platform/screen_windows.h"
#include "platform/state.h"
#include "platform/system.h"

#include <cmath>
#include <filesystem>
#include <random>

using namespace gl;

namespace {

constexpr std::uint32_t Red = 0x0000FF, Green = 0x00FF00, Blue = 0xFF0000, White = 0xFFFFFF;

class Composing : public HeadlessScreen {
  protected:
    static void ClearTo(std::uint32_t colour) {
        cpack(colour);
        clear();
    }

    static int OpenFilled(std::uint32_t colour, int x, int y, int width, int height) {
        const int window = OpenAt("w", x, y, width, height);
        ClearTo(colour);
        return window;
    }

    static std::uint32_t PixelAt(int x, int y) { return ScreenPicture(false).at(x, y) & 0xFFFFFF; }

    // Pixel coordinates over the current window.
    static void PixelCoordinates(int width, int height) {
        viewport(0, width - 1, 0, height - 1);
        ortho2(-0.5, width - 0.5, -0.5, height - 0.5);
    }

    // The incrementally repaired screen must look like one that was composed at a stroke.
    static void ExpectRepaired() {
        const Picture repaired = ScreenPicture(false);
        const PixelBox all = ScreenPixels();
        std::string error;
        ASSERT_TRUE(OpenCompositor(all.width, all.height, error)) << error;
        // Opening it anew forgets where the overlay was drawn to; nothing of it is left in these tests.
        const Picture anew = ScreenPicture(false);
        EXPECT_EQ(DifferingPixels(repaired, anew, 0, nullptr), 0);
    }
};

TEST_F(Composing, StacksWindowsWithTheirFrames) {
    const int below = OpenFilled(Red, 100, 100, 200, 200);
    const int above = OpenFilled(Green, 200, 200, 200, 200);
    EXPECT_EQ(PixelAt(150, 150), Red);
    EXPECT_EQ(PixelAt(250, 250), Green);
    EXPECT_EQ(PixelAt(10, 10), ScreenColour);
    EXPECT_EQ(PixelAt(195, 250), 0U) << "the frame's black outline lies over the lower window";
    winset(below);
    winpop();
    EXPECT_EQ(PixelAt(250, 250), Red);
    winset(above);
    winmove(400, 50);
    EXPECT_EQ(PixelAt(450, 100), Green);
    EXPECT_EQ(PixelAt(350, 390), ScreenColour) << "where it was";
    winclose(above);
    EXPECT_EQ(PixelAt(450, 100), ScreenColour);
    ExpectRepaired();
}

TEST_F(Composing, ClipsSubwindowsToTheirParents) {
    const int parent = OpenFilled(Red, 100, 100, 200, 200);
    const int child = OpenSubwindow(parent, 150, 150, 100, 100);
    ClearTo(Green);
    const int grandchild = OpenSubwindow(child, -50, 10, 80, 20);
    ClearTo(Blue);
    EXPECT_EQ(PixelAt(260, 270), Blue);
    EXPECT_EQ(PixelAt(240, 270), Red) << "left of its parent";
    EXPECT_EQ(PixelAt(260, 290), Green);
    EXPECT_EQ(PixelAt(310, 270), ScreenColour) << "right of the grandparent's frame";
    winset(grandchild);
    winclose(grandchild);
    EXPECT_EQ(PixelAt(260, 270), Green);
    ExpectRepaired();
}

TEST_F(Composing, ShowsFrontBuffersAtOnceAndBackBuffersWhenSwapped) {
    OpenAt("w", 100, 100, 200, 200);
    ClearTo(Red);
    EXPECT_EQ(PixelAt(150, 150), Red) << "single-buffered windows show drawing as it proceeds";
    doublebuffer();
    gconfig();
    EXPECT_EQ(PixelAt(150, 150), Red) << "the shown picture stays";
    ClearTo(Green);
    EXPECT_EQ(PixelAt(150, 150), Red);
    swapbuffers();
    EXPECT_EQ(PixelAt(150, 150), Green);
    PixelCoordinates(200, 200);
    frontbuffer(true);
    cpack(Blue);
    rectfi(40, 40, 60, 60);
    frontbuffer(false);
    EXPECT_EQ(PixelAt(150, 150), Blue);
    EXPECT_EQ(PixelAt(170, 170), Green);
    singlebuffer();
    gconfig();
    EXPECT_EQ(PixelAt(150, 150), Blue);
    EXPECT_EQ(PixelAt(170, 170), Green);
}

TEST_F(Composing, NothingChangedMeansNothingToCompose) {
    OpenFilled(Red, 100, 100, 200, 200);
    ScreenPicture();
    EXPECT_FALSE(ScreenIsDamaged());
    doublebuffer();
    gconfig();
    ScreenPicture();
    PixelCoordinates(200, 200);
    rectfi(10, 10, 20, 20);
    EXPECT_FALSE(ScreenIsDamaged()) << "the back buffer is not shown";
    PointerMoved(5, 5);
    PointerMoved(7, 7);
    EXPECT_FALSE(ScreenIsDamaged()) << "the pointer is not part of the screen's picture";
}

TEST_F(Composing, TheOverlayLiesOverEverythingAndGoesWithoutATrace) {
    OpenFilled(Red, 100, 100, 200, 200);
    const int above = OpenFilled(Green, 250, 100, 200, 200);
    ShowActiveWindow(0);
    const Picture before = ScreenPicture(false);
    winset(above);
    PixelCoordinates(200, 200);
    drawmode(PUPDRAW);
    mapcolor(1, 255, 255, 255);
    mapcolor(2, 0, 0, 255);
    fullscrn();
    color(1);
    rectfi(150, 150, 300, 160);
    color(2);
    rectfi(0, 0, 20, 20);
    endfullscrn();
    drawmode(NORMALDRAW);
    EXPECT_EQ(PixelAt(200, 155), White);
    EXPECT_EQ(PixelAt(300, 155), White) << "across windows";
    EXPECT_EQ(PixelAt(245, 155), White) << "over frames";
    EXPECT_EQ(PixelAt(10, 10), Blue) << "over the empty screen";
    EXPECT_EQ(PixelAt(200, 170), Red);
    // Drawing below it does not disturb it.
    winset(above);
    ClearTo(Blue);
    EXPECT_EQ(PixelAt(300, 155), White);
    ClearTo(Green);
    // Index 0 erases.
    drawmode(PUPDRAW);
    fullscrn();
    color(0);
    rectfi(150, 150, 300, 160);
    rectfi(0, 0, 20, 20);
    endfullscrn();
    drawmode(NORMALDRAW);
    EXPECT_EQ(DifferingPixels(before, ScreenPicture(false), 0, nullptr), 0);
    EXPECT_FALSE(OverlayBounds().empty());
    TidyOverlay();
    EXPECT_TRUE(OverlayBounds().empty()) << "composing no longer looks at it";
}

TEST_F(Composing, TheOverlayOfAWindowUsesItsCoordinates) {
    OpenAt("w", 100, 100, 200, 200);
    PixelCoordinates(200, 200);
    drawmode(PUPDRAW);
    mapcolor(1, 255, 0, 0);
    color(1);
    rectfi(50, 60, 52, 62);
    drawmode(NORMALDRAW);
    EXPECT_EQ(PixelAt(151, 161), Red);
    EXPECT_NE(PixelAt(149, 161), Red);
}

TEST_F(Composing, RepairsAreTheSameAsComposingAnew) {
    std::mt19937 random(11);
    auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    std::vector<int> windows;
    for (int round = 0; round < 120; round++) {
        const int what = below(7);
        if (windows.size() < 3 || what == 0) {
            windows.push_back(
                OpenFilled(random() & 0xFFFFFF, below(600), below(400), 60 + below(200), 60 + below(150)));
        } else {
            const std::size_t which = random() % windows.size();
            winset(windows[which]);
            const WindowRectangle place = WindowPlace(windows[which]);
            if (what == 1) {
                winclose(windows[which]);
                windows.erase(windows.begin() + static_cast<std::ptrdiff_t>(which));
            } else if (what == 2) {
                winpop();
            } else if (what == 3) {
                winmove(below(600), below(400));
            } else if (what == 4) {
                winposition(place.X, place.X + 40 + below(200), place.Y, place.Y + 40 + below(150));
                ClearTo(random() & 0xFFFFFF);
            } else {
                PixelCoordinates(place.Width, place.Height);
                cpack(random() & 0xFFFFFF);
                rectfi(below(100), below(100), below(200), below(200));
            }
        }
        PointerMoved(below(800), below(600));
        qtest();
        if (round % 4 == 0)
            ScreenPicture();
    }
    ExpectRepaired();
}

TEST_F(Composing, APictureOfAWindowShowsItAlone) {
    const int below = OpenFilled(Red, 100, 100, 200, 150);
    const int child = OpenSubwindow(below, 10, 10, 20, 20);
    ClearTo(Green);
    winset(child);
    OpenFilled(Blue, 90, 90, 100, 100);
    const Picture picture = WindowPicture(below);
    ASSERT_EQ(picture.width, 200);
    ASSERT_EQ(picture.height, 150);
    EXPECT_EQ(picture.at(5, 5) & 0xFFFFFF, Red);
    EXPECT_EQ(picture.at(15, 15) & 0xFFFFFF, Green);
    EXPECT_EQ(WindowPicture(4711).width, 0);
}

TEST_F(Composing, ThePointerHasTheShapeOfWhatLiesUnderIt) {
    const int window = OpenFilled(White, 100, 100, 200, 200);
    // One pixel in the middle of 16 x 16, and what surrounds it.
    std::uint16_t planes[32] = {};
    planes[8] = 0x0100;
    planes[16 + 7] = 0x0380;
    curstype(C16X2);
    defcursor(3, planes);
    curorigin(3, 7, 8);
    setcursor(3, 0, 0);
    PointerMoved(150, 150);
    const Picture over = ScreenPicture();
    EXPECT_EQ(over.at(150, 150) & 0xFFFFFF, CursorColour(1));
    EXPECT_EQ(over.at(150, 149) & 0xFFFFFF, CursorColour(2));
    EXPECT_EQ(over.at(150, 151) & 0xFFFFFF, White);
    winset(window);
    cursoff();
    EXPECT_EQ(ScreenPicture().at(150, 150) & 0xFFFFFF, White);
    curson();
    PointerMoved(500, 500);
    EXPECT_EQ(ScreenPicture().at(500, 500) & 0xFFFFFF, 0U) << "the arrow's tip over the empty screen";
}

TEST_F(Composing, DenseScreensShowEverythingInProportion) {
    Open("headless:1600x1200", "2");
    OpenFilled(Red, 100, 100, 200, 200);
    PixelCoordinates(200, 200);
    cpack(Green);
    rectfi(10, 10, 10, 10);
    const Picture picture = ScreenPicture(false);
    EXPECT_EQ(picture.width, 1600);
    for (int x : {220, 221})
        for (int y : {220, 221})
            EXPECT_EQ(picture.at(x, y) & 0xFFFFFF, Green);
    EXPECT_EQ(picture.at(219, 220) & 0xFFFFFF, Red);
    EXPECT_EQ(picture.at(222, 220) & 0xFFFFFF, Red);
    PointerMoved(110, 110);
    EXPECT_EQ(getvaluator(MOUSEX), 110) << "positions count drawing pixels";
    Open("headless:1000x750", "1.25");
    OpenFilled(Red, 101, 99, 203, 187);
    const Picture odd = ScreenPicture(false);
    const PixelBox content = ToPixelBox({101, 99, 203, 187});
    EXPECT_EQ(odd.at(content.x, content.y) & 0xFFFFFF, Red);
    EXPECT_NE(odd.at(content.x - 1, content.y) & 0xFFFFFF, Red);
}

TEST_F(Composing, AResizedWindowKeepsItsPictureUntilItIsDrawnAgain) {
    const int window = OpenFilled(Red, 100, 100, 200, 200);
    PixelCoordinates(200, 200);
    cpack(Green);
    rectfi(0, 190, 9, 199);
    ResizeByFrame(window, 250, 120);
    EXPECT_EQ(PixelAt(105, 295), Green) << "anchored at the top left, where it was on the screen";
    EXPECT_EQ(PixelAt(120, 280), Red);
}

} // namespace
