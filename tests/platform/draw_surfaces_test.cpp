// Surfaces, buffers, the overlay and what is reported as damaged.
#include <cmath>

#include "draw_fixture.h"

namespace gl {

namespace {

struct Damage {
    Surface* surface;
    PixelBox box;
};

std::vector<Damage> Reported;

void Note(Surface& surface, const PixelBox& box) {
    Reported.push_back({&surface, box});
}

// Everything reported since the last call, as one box.
PixelBox TakeDamage(const Surface* surface) {
    FlushDrawing();
    PixelBox all;
    for (const Damage& damage : Reported)
        if (damage.surface == surface)
            all = UnionOf(all, damage.box);
    Reported.clear();
    return all;
}

bool Holds(const PixelBox& outer, const PixelBox& inner) {
    return IntersectionOf(outer, inner) == inner;
}

class Surfaces : public Drawing {
  protected:
    void SetUp() override {
        Drawing::SetUp();
        FlushDrawing();
        Reported.clear();
        SurfaceDamaged = Note;
    }
};

TEST_F(Surfaces, BackAndFrontBuffersChangePlaces) {
    doublebuffer();
    gconfig();
    EXPECT_EQ(getgconfig(GC_DOUBLEBUFFER), 1);
    EXPECT_EQ(getbuffer(), BCKBUFFER);
    cpack(Red);
    clear();
    EXPECT_EQ(Pixel(5, 5), Black);
    EXPECT_TRUE(TakeDamage(Window.get()).empty()) << "nothing is shown yet";
    swapbuffers();
    EXPECT_EQ(Pixel(5, 5), Red);
    EXPECT_EQ(TakeDamage(Window.get()), (PixelBox{0, 0, 64, 48}));
    cpack(Green);
    clear();
    frontbuffer(true);
    EXPECT_EQ(getbuffer(), FRNTBUFFER);
    cpack(Blue);
    rectfi(2, 2, 8, 8);
    frontbuffer(false);
    EXPECT_EQ(Pixel(5, 5), Blue) << "seen at once";
    EXPECT_EQ(Pixel(20, 20), Red);
    EXPECT_TRUE(Holds(TakeDamage(Window.get()), {2, 2, 7, 7}));
    swapbuffers();
    EXPECT_EQ(Pixel(5, 5), Green) << "the back buffer did not get it";
    singlebuffer();
    gconfig();
    EXPECT_EQ(Pixel(5, 5), Green) << "the shown picture stays";
    EXPECT_EQ(getbuffer(), FRNTBUFFER);
    swapbuffers();
    cpack(White);
    rectfi(0, 0, 3, 3);
    EXPECT_EQ(Pixel(2, 2), White);
}

TEST_F(Surfaces, ResizingKeepsThePicture) {
    cpack(Red);
    rectfi(0, 0, 63, 47);
    Window->resize(80, 40);
    EXPECT_EQ(Pixel(63, 39), Red);
    EXPECT_EQ(Pixel(64, 39), Black);
    EXPECT_EQ(Window->width(), 80);
    viewport(0, 79, 0, 39);
    cpack(Green);
    clear();
    EXPECT_EQ(Pixel(79, 39), Green);
    Window->resize(0, -3);
    EXPECT_EQ(Window->width(), 1);
    EXPECT_EQ(Window->height(), 1);
}

TEST_F(Surfaces, DamageHoldsWhatWasDrawnAndLittleMore) {
    auto close = [](const PixelBox& box, int x, int y, int width, int height) {
        return Holds(box, {x, y, width, height}) && Holds({x - 4, y - 4, width + 8, height + 8}, box);
    };
    cpack(White);
    Line(10, 10, 20, 10);
    EXPECT_TRUE(close(TakeDamage(Window.get()), 10, 10, 11, 1));
    rectfi(30, 30, 34, 33);
    EXPECT_TRUE(close(TakeDamage(Window.get()), 30, 30, 5, 4));
    font(1);
    cmov2i(10, 20);
    charstr("Hi");
    const PixelBox text = TakeDamage(Window.get());
    EXPECT_TRUE(Holds(text, {11, 20, 12, 12})) << text.x << ' ' << text.y << ' ' << text.width << ' ' << text.height;
    EXPECT_LT(text.width, 34);
    scrmask(0, 5, 0, 5);
    rectfi(0, 0, 63, 47);
    EXPECT_TRUE(Holds({0, 0, 6, 6}, TakeDamage(Window.get())));
    PixelCoordinates();
    perspective(400, 1, 0.1, 100);
    Quad(-0.1, -0.1, 0.1, 0.1, -1);
    EXPECT_TRUE(Holds(TakeDamage(Window.get()), {24, 18, 16, 12}));
    Quad(-50, -50, 50, 50, 0.5);
    EXPECT_TRUE(Holds(TakeDamage(Window.get()), {0, 0, 0, 0})) << "behind the eye: anything is allowed";
    makeobj(1);
    Quad(-0.1, -0.1, 0.1, 0.1, -1);
    closeobj();
    EXPECT_TRUE(TakeDamage(Window.get()).empty());
    callobj(1);
    EXPECT_TRUE(Holds(TakeDamage(Window.get()), {24, 18, 16, 12}));
    czclear(0, 0);
    EXPECT_EQ(TakeDamage(Window.get()), (PixelBox{0, 0, 64, 48}));
}

TEST_F(Surfaces, DrawingWithoutASurfaceIsHarmless) {
    MakeSurfaceCurrent(nullptr);
    cpack(Red);
    clear();
    rectfi(0, 0, 10, 10);
    font(1);
    cmov2i(1, 1);
    charstr("nowhere");
    Line(0, 0, 5, 5);
    swapbuffers();
    gconfig();
    FlushDrawing();
    MakeSurfaceCurrent(Window.get());
    EXPECT_EQ(Drawn(), 0);
    {
        Surface brief(10, 10, false);
        MakeSurfaceCurrent(&brief);
        rectfi(0, 0, 5, 5);
    }
    EXPECT_EQ(CurrentSurface(), nullptr) << "pending drawing went with it";
    FlushDrawing();
    MakeSurfaceCurrent(Window.get());
}

TEST_F(Surfaces, PlacesOutsideReadAsNothing) {
    cpack(Red);
    clear();
    const std::vector<uint32_t> pixels = ReadPixels(*Window, Buffer::Front, {-1, 46, 3, 3});
    const std::vector<uint32_t> expected = {0, Red, Red, 0, Red, Red, 0, 0, 0};
    EXPECT_EQ(pixels, expected);
}

class OverlayPlanes : public Surfaces {
  protected:
    void SetUp() override {
        Surfaces::SetUp();
        SetScreenSize(200, 150);
        Window->ScreenX = 100;
        Window->ScreenY = 50;
        Reported.clear();
    }

    // Index drawn, index beneath, coverage.
    static std::array<int, 3> At(int x, int y) {
        const uint32_t pixel = ReadPixels(*Overlay(), Buffer::Front, {x, y, 1, 1})[0];
        return {static_cast<int>(pixel & 255), static_cast<int>(pixel >> 8 & 255), static_cast<int>(pixel >> 16 & 255)};
    }

    static constexpr std::array<int, 3> Nothing = {0, 0, 0};

    static std::array<int, 3> Solid(int index) { return {index, index, 255}; }
};

TEST_F(OverlayPlanes, DrawsInWindowCoordinatesOverTheScreen) {
    drawmode(PUPDRAW);
    mapcolor(1, 255, 0, 0);
    EXPECT_EQ(OverlayColour(1), 0x0000FFu);
    color(1);
    Line(3, 4, 10, 4);
    EXPECT_EQ(At(103, 54), Solid(1));
    EXPECT_EQ(At(110, 54), Solid(1));
    EXPECT_EQ(At(111, 54), Nothing);
    EXPECT_TRUE(Holds(TakeDamage(Overlay()), {103, 54, 8, 1}));
    rectfi(60, 40, 90, 60);
    EXPECT_EQ(At(163, 97), Solid(1));
    EXPECT_EQ(At(164, 97), Nothing) << "clipped to the window";
    scrmask(0, 9, 0, 9);
    color(2);
    clear();
    EXPECT_EQ(At(109, 59), Solid(2));
    EXPECT_EQ(At(110, 60), Nothing);
    PixelCoordinates();
    color(0);
    rectfi(0, 0, 63, 47);
    EXPECT_EQ(At(105, 55)[0], 0) << "erased";
    EXPECT_EQ(At(163, 97)[0], 0);
    cpack(Red);
    drawmode(NORMALDRAW);
    EXPECT_EQ(Drawn(), 0) << "the window itself is untouched";
    rectfi(0, 0, 1, 1);
    EXPECT_EQ(Pixel(0, 0), Red);
}

TEST_F(OverlayPlanes, TextKeepsWhatIsBeneathIt) {
    drawmode(PUPDRAW);
    color(1);
    rectfi(0, 0, 63, 47);
    color(2);
    font(1);
    cmov2i(5, 10);
    charstr("Menu");
    const std::vector<uint32_t> pixels = ReadPixels(*Overlay(), Buffer::Front, {100, 50, 64, 48});
    int full = 0, partial = 0;
    for (uint32_t pixel : pixels) {
        EXPECT_EQ(pixel >> 8 & 255, 1u) << "the index beneath";
        if ((pixel & 255) == 2)
            ((pixel >> 16 & 255) == 255 ? full : partial)++;
    }
    EXPECT_GT(full, 20);
    EXPECT_GT(partial, 20);
    drawmode(NORMALDRAW);
}

TEST_F(OverlayPlanes, FullScreenDrawingLeavesTheWindow) {
    cpack(Red);
    viewport(5, 20, 5, 20);
    drawmode(PUPDRAW);
    fullscrn();
    color(3);
    rectfi(0, 0, 199, 149);
    EXPECT_EQ(At(0, 0), Solid(3));
    EXPECT_EQ(At(199, 149), Solid(3));
    pushmatrix();
    translate(100, 50, 0);
    color(1);
    rectfi(-20, -10, -10, -5);
    EXPECT_EQ(At(80, 40), Solid(1));
    popmatrix();
    endfullscrn();
    drawmode(NORMALDRAW);
    int16_t left, right, bottom, top;
    getviewport(&left, &right, &bottom, &top);
    EXPECT_EQ(left, 5);
    EXPECT_EQ(top, 20);
    clear();
    EXPECT_EQ(Drawn(), 16 * 16);
}

TEST_F(OverlayPlanes, PatternsAndStylesWorkThereToo) {
    uint16_t rows[16];
    for (int i = 0; i < 16; i++)
        rows[i] = i % 2 ? 0xAAAA : 0x5555;
    defpattern(1, 16, rows);
    drawmode(PUPDRAW);
    setpattern(1);
    color(1);
    rectfi(0, 0, 15, 15);
    setpattern(0);
    EXPECT_EQ(At(101, 50), Solid(1));
    EXPECT_EQ(At(100, 50), Nothing) << "fixed to the window, not to the screen";
    EXPECT_EQ(At(100, 51), Solid(1));
    deflinestyle(1, 0x5555);
    setlinestyle(1);
    Line(20, 20, 30, 20);
    EXPECT_EQ(At(120, 70), Solid(1));
    EXPECT_EQ(At(121, 70), Nothing);
    setlinestyle(0);
    drawmode(NORMALDRAW);
}

TEST_F(OverlayPlanes, ColourMapsAreReadBack) {
    short red, green, blue;
    drawmode(PUPDRAW);
    mapcolor(7, 300, 128, -4);
    getmcolor(7, &red, &green, &blue);
    EXPECT_EQ(red, 255);
    EXPECT_EQ(green, 128);
    EXPECT_EQ(blue, 0);
    mapcolor(999, 1, 1, 1);
    drawmode(CURSORDRAW);
    mapcolor(1, 10, 20, 30);
    EXPECT_EQ(CursorColour(1), 0x1E140Au);
    cpack(White);
    rectfi(0, 0, 10, 10);
    drawmode(NORMALDRAW);
    EXPECT_EQ(Drawn(), 0);
}

// Multisampling forced on: edges are mixed, everything else stays.
TEST(Multisampling, SmoothsEdgesWhereItIsGranted) {
    setenv("KIRVO_MULTISAMPLE", "4", 1);
    std::string error;
    ASSERT_TRUE(OpenHeadlessContext(error)) << error;
    unsetenv("KIRVO_MULTISAMPLE");
    if (GrantedSamples() < 4) {
        CloseGraphics();
        GTEST_SKIP() << "the driver has no multisampling";
    }
    {
        Surface surface(40, 40, true);
        MakeSurfaceCurrent(&surface);
        zbsize(0);
        stensize(0);
        mssize(16, 24, 0);
        gconfig();
        EXPECT_EQ(getgconfig(GC_MS_SAMPLES), 4);
        EXPECT_GE(std::abs(getgconfig(GC_MS_ZSIZE)), 16);
        multisample(true);
        mmode(MVIEWING);
        viewport(0, 39, 0, 39);
        ortho(-0.5, 39.5, -0.5, 39.5, -1, 1);
        czclear(0, 0xFFFFFF);
        cpack(White);
        const double triangle[3][2] = {{2, 2}, {37, 5}, {2, 30}};
        bgnpolygon();
        for (const double* p : triangle)
            v2d(p);
        endpolygon();
        swapbuffers();
        int partial = 0, full = 0;
        for (uint32_t pixel : ReadPixels(surface, Buffer::Front, {0, 0, 40, 40}))
            (pixel == White ? full : partial) += pixel != Black;
        EXPECT_GT(full, 300);
        EXPECT_GT(partial, 20);
        frontbuffer(true);
        cpack(Red);
        rectf(0, 0, 3, 3);
        EXPECT_EQ(ReadPixels(surface, Buffer::Front, {1, 1, 1, 1})[0], Red);
    }
    CloseGraphics();
}

TEST(Multisampling, IsNotGrantedBySoftware) {
    unsetenv("KIRVO_MULTISAMPLE");
    std::string error;
    ASSERT_TRUE(OpenHeadlessContext(error)) << error;
    if (SoftwareRenderer()) {
        EXPECT_EQ(GrantedSamples(), 1);
    }
    CloseGraphics();
}

} // namespace

} // namespace gl
