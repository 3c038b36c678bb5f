// Rendering state: depth, masks, blending, culling, clip planes, screen masks and how batches merge.
#include <functional>

#include "draw_fixture.h"
#include "platform/batch.h"
#include "platform/capabilities.h"

namespace gl {

namespace {

class State3d : public Drawing {
  protected:
    void SetUp() override {
        Drawing::SetUp();
        // One unit is a pixel; larger z is nearer.
        ortho(-0.5, Width - 0.5, -0.5, Height - 0.5, -100, 100);
        zbuffer(true);
    }
};

TEST_F(State3d, DepthFunctionsCompare) {
    struct Case {
        int function;
        const char* expected; // behind, at, and in front of what is there
    };

    const Case cases[] = {{ZF_NEVER, "RRR"},   {ZF_LESS, "RRG"},     {ZF_EQUAL, "RGR"},  {ZF_LEQUAL, "RGG"},
                          {ZF_GREATER, "GRR"}, {ZF_NOTEQUAL, "GRG"}, {ZF_GEQUAL, "GGR"}, {ZF_ALWAYS, "GGG"}};
    for (const Case& c : cases) {
        zfunction(ZF_ALWAYS);
        cpack(Red);
        Quad(0, 0, 3, 1, 0);
        zfunction(c.function);
        cpack(Green);
        Quad(0, 0, 1, 1, -10);
        Quad(1, 0, 2, 1, 0);
        Quad(2, 0, 3, 1, 10);
        EXPECT_EQ(Row(0, 0, 3), c.expected) << c.function;
    }
}

TEST_F(State3d, WriteMasksProtectDepthAndColours) {
    cpack(White);
    zwritemask(0);
    Quad(0, 0, 10, 10, 50);
    zwritemask(0xFFFFFFFF);
    cpack(Red);
    Quad(0, 0, 10, 10, 0);
    EXPECT_EQ(Pixel(5, 5), Red) << "the first quadrilateral wrote no depth";
    wmpack(0);
    cpack(Green);
    Quad(0, 0, 10, 10, 20);
    EXPECT_EQ(Pixel(5, 5), Red) << "no colour is written";
    wmpack(0xFFFFFFFF);
    Quad(0, 0, 10, 10, 10);
    EXPECT_EQ(Pixel(5, 5), Red) << "but depth was";
    Quad(0, 0, 10, 10, 30);
    EXPECT_EQ(Pixel(5, 5), Green);
    wmpack(0xFF0000);
    cpack(White);
    Quad(0, 0, 10, 10, 40);
    EXPECT_EQ(Pixel(5, 5), 0xFFFFFF00) << "blue alone is added";
}

// A parent with a decal in its plane, by the method of masking: the parent without depth, the decal, the parent's
// depth.
TEST_F(State3d, DecalsByMaskingDoNotFight) {
    auto sequence = [] {
        zwritemask(0);
        cpack(Red);
        Quad(-20, -15, 20, 15);
        cpack(Green);
        Quad(-8, -6, 7, 5);
        cpack(Blue);
        Quad(-3, -2, 2, 3);
        wmpack(0);
        zwritemask(0xFFFFFFFF);
        cpack(Red);
        Quad(-20, -15, 20, 15);
        wmpack(0xFFFFFFFF);
    };
    for (int angle = 0; angle < 80; angle += 13) {
        ClearTo(0);
        perspective(400, 64.0 / 48, 1, 500);
        LoadIdentity();
        translate(0, 0, -80);
        rot(angle, 'y');
        rot(angle / 2, 'x');
        sequence();
        const Picture front = Shown();
        // Something behind stays hidden by the parent, something in front hides all of it.
        translate(0, 0, -5);
        cpack(White);
        Quad(-20, -15, 20, 15);
        const Picture after = Shown();
        long parent = 0, child = 0, grandchild = 0, lost = 0;
        for (size_t i = 0; i < front.pixels.size(); i++) {
            parent += front.pixels[i] == Red;
            child += front.pixels[i] == Green;
            grandchild += front.pixels[i] == Blue;
            lost += front.pixels[i] != Black && after.pixels[i] != front.pixels[i];
        }
        EXPECT_GT(grandchild, 0) << angle;
        const double area = 15 * 11 - 5 * 5.0;
        EXPECT_NEAR(static_cast<double>(child) / (parent + child + grandchild), area / (40 * 30), 0.06) << angle;
        EXPECT_EQ(lost, 0) << angle;
        translate(0, 0, 10);
        Quad(-20, -15, 20, 15);
        if (angle < 60) { // seen from the side it has moved out of the middle
            EXPECT_EQ(Pixel(32, 24), White) << angle;
        }
    }
}

TEST_F(State3d, LinesShowOnTheEdgesOfWhatTheyOutline) {
    for (int angle = -60; angle <= 60; angle += 15) {
        ClearTo(0);
        perspective(400, 64.0 / 48, 1, 500);
        LoadIdentity();
        translate(0, 0, -80);
        rot(angle, 'y');
        rot(angle / 3, 'x');
        const double corners[4][3] = {{-20, -15, 0}, {20, -15, 0}, {20, 15, 0}, {-20, 15, 0}};
        auto outline = [&] {
            bgnclosedline();
            for (const double* p : corners)
                v3d(p);
            endclosedline();
        };
        cpack(White);
        outline();
        const long alone = Drawn();
        ClearTo(0);
        cpack(Red);
        Quad(-20, -15, 20, 15);
        cpack(White);
        outline();
        const Picture picture = Shown();
        EXPECT_EQ(std::count(picture.pixels.begin(), picture.pixels.end(), White), alone) << angle;
    }
}

TEST_F(State3d, BackfacesAreRemovedByTheWayTheyTurn) {
    backface(true);
    EXPECT_TRUE(getbackface());
    cpack(White);
    Quad(0, 0, 10, 10);
    Quad(30, 10, 40, 0); // clockwise
    EXPECT_EQ(Pixel(5, 5), White);
    EXPECT_EQ(Pixel(35, 5), Black);
    translate(0, 30, 0);
    scale(1, -1, 1);
    Quad(0, 0, 10, 10);
    EXPECT_EQ(Pixel(5, 25), Black) << "mirroring turns it round";
    backface(false);
    Quad(0, 0, 10, 10);
    EXPECT_EQ(Pixel(5, 25), White);
}

TEST_F(State3d, BlendingAndAlphaFunction) {
    zbuffer(false);
    cpack(0xFF204080);
    Quad(0, 0, 30, 30);
    blendfunction(BF_SA, BF_MSA);
    cpack(0x40FFFFFF);
    Quad(0, 0, 10, 10);
    EXPECT_TRUE(Near(Pixel(5, 5), 0xFF5870A0, 1));
    blendfunction(BF_SA, BF_ONE);
    Quad(10, 0, 20, 10);
    EXPECT_TRUE(Near(Pixel(15, 5), 0xFF6080C0, 1));
    blendfunction(BF_ONE, BF_ZERO);
    afunction(64, AF_GREATER);
    Quad(0, 20, 10, 30);
    EXPECT_EQ(Pixel(5, 25), 0xFF204080u) << "64 is not greater than 64";
    cpack(0x41FFFFFF);
    Quad(0, 20, 10, 30);
    EXPECT_EQ(Pixel(5, 25), White);
    afunction(0, AF_NOTEQUAL);
    cpack(0x00FF0000);
    Quad(0, 20, 10, 30);
    EXPECT_EQ(Pixel(5, 25), White);
    afunction(0, AF_ALWAYS);
    Quad(0, 20, 10, 30);
    EXPECT_EQ(Pixel(5, 25), Blue);
}

TEST_F(State3d, ClipPlanesKeepTheirPositiveSide) {
    cpack(White);
    translate(30, 20, 0);
    rot(90, 'z');
    const float plane[4] = {1, 0, 0, 5}; // x >= -5 here, y >= 15 on the screen
    clipplane(0, CP_DEFINE, plane);
    LoadIdentity();
    Quad(0, 0, 10, 40);
    EXPECT_EQ(Column(5, 13, 4), "####") << "defined but not on";
    ClearTo(0);
    clipplane(0, CP_ON, nullptr);
    Quad(0, 0, 10, 40);
    EXPECT_EQ(Column(5, 13, 4), "..##");
    const float other[4] = {-1, 0, 0, 8};
    clipplane(5, CP_DEFINE, other);
    clipplane(5, CP_ON, nullptr);
    ClearTo(0);
    cpack(Red);
    Quad(0, 0, 20, 40);
    EXPECT_EQ(Row(6, 20, 4), "RR..") << "x <= 8 as well";
    linewidth(3);
    cpack(Green);
    Line(0, 20, 20, 20);
    EXPECT_EQ(Row(4, 20, 5), "GGGG.") << "lines are clipped too";
    linewidth(1);
    clipplane(0, CP_OFF, nullptr);
    clipplane(5, CP_OFF, nullptr);
    Quad(0, 0, 20, 40);
    EXPECT_EQ(Pixel(15, 5), Green);
}

TEST_F(State3d, DepthCueFadesLines) {
    lsetdepth(getgdesc(GD_ZMIN), getgdesc(GD_ZMAX));
    lRGBrange(100, 100, 100, 255, 255, 255, getgdesc(GD_ZMIN), getgdesc(GD_ZMAX));
    depthcue(true);
    cpack(Red);
    const double ends[2][3] = {{0, 10, 100}, {63, 10, -100}};
    bgnline();
    v3d(ends[0]);
    v3d(ends[1]);
    endline();
    EXPECT_TRUE(Near(Pixel(0, 10), 0xFFFFFFFF, 3));
    EXPECT_TRUE(Near(Pixel(31, 10), 0xFFB1B1B1, 3));
    EXPECT_TRUE(Near(Pixel(62, 10), 0xFF646464, 4));
    depthcue(false);
    Line(0, 20, 63, 20);
    EXPECT_EQ(Pixel(30, 20), Red);
}

TEST_F(State3d, FlatShadingTakesOneColour) {
    shademodel(FLAT);
    const double p[3][2] = {{0, 0}, {40, 0}, {0, 40}};
    const uint32_t colours[3] = {Red, Green, Blue};
    auto triangle = [&] {
        bgnpolygon();
        for (int i = 0; i < 3; i++) {
            cpack(colours[i]);
            v2d(p[i]);
        }
        endpolygon();
    };
    triangle();
    EXPECT_EQ(Pixel(2, 2), Blue);
    EXPECT_EQ(Pixel(30, 2), Blue);
    shademodel(GOURAUD);
    triangle();
    EXPECT_TRUE(Near(Pixel(20, 0), 0xFF008080, 5));
}

class Masks : public Drawing {};

TEST_F(Masks, ViewportAndScreenMaskNest) {
    viewport(10, 29, 10, 29);
    cpack(Red);
    clear();
    EXPECT_EQ(Drawn(), 20 * 20) << "clear fills the viewport";
    pushviewport();
    scrmask(15, 19, 15, 19);
    cpack(Green);
    clear();
    EXPECT_EQ(Row(13, 15, 9), "RRGGGGGRR");
    viewport(40, 49, 0, 9);
    int16_t left, right, bottom, top;
    getscrmask(&left, &right, &bottom, &top);
    EXPECT_EQ(left, 40) << "a viewport brings its own mask";
    EXPECT_EQ(top, 9);
    popviewport();
    getviewport(&left, &right, &bottom, &top);
    EXPECT_EQ(left, 10);
    EXPECT_EQ(right, 29);
    getscrmask(&left, &right, &bottom, &top);
    EXPECT_EQ(left, 10);
    EXPECT_EQ(bottom, 10);
    testing::internal::CaptureStderr();
    popviewport();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Graphics: the viewport stack is empty\n");
}

TEST_F(Masks, ASurfaceKeepsItsOwnState) {
    Surface other(20, 20, false);
    cpack(Red);
    zbuffer(true);
    linewidth(4);
    translate(3, 0, 0);
    scrmask(0, 5, 0, 5);
    MakeSurfaceCurrent(&other);
    EXPECT_EQ(getcpack(), White);
    EXPECT_FALSE(getzbuffer());
    cpack(Green);
    clear();
    MakeSurfaceCurrent(Window.get());
    EXPECT_EQ(getcpack(), Red);
    EXPECT_TRUE(getzbuffer());
    double matrix[16];
    getmatrix(matrix);
    EXPECT_EQ(matrix[12], 3);
    clear();
    EXPECT_EQ(Drawn(), 36);
}

TEST_F(Masks, ChangesThatChangeNothingDoNotSplitBatches) {
    const std::function<void(int)> between[] = {
        [](int) { zbuffer(false); },
        [](int i) {
            zbuffer(i % 2);
            linewidth(2);
            setpattern(0);
            linewidth(1);
            zbuffer(false);
        },
        [](int) {
            pushmatrix();
            translate(1, 0, 0);
            popmatrix();
        },
        [](int i) { rot(i, 'z'); },
        [](int i) { cpack(static_cast<uint32_t>(i)); },
        [](int i) {
            const float normal[3] = {0, 0, 1};
            n3f(normal);
            lmbind(MATERIAL, 1 + i % 20);
        },
    };
    const float grey[] = {DIFFUSE, 1, 1, 1, LMNULL};
    for (int i = 1; i <= 20; i++)
        lmdef(DEFMATERIAL, i, 0, grey);
    lmdef(DEFLMODEL, 1, 0, nullptr);
    lmbind(LMODEL, 1);
    int which = 0;
    for (const auto& change : between) {
        FlushDrawing();
        const long before = BatchesSent();
        for (int i = 0; i < 200; i++) {
            change(i);
            Quad(0, 0, 2, 2);
        }
        FlushDrawing();
        EXPECT_EQ(BatchesSent() - before, 1) << "case " << which;
        which++;
    }
}

TEST_F(Masks, CapabilitiesNameARendererOfTheHighEnd) {
    char name[12];
    EXPECT_EQ(gversion(name), 0);
    EXPECT_NE(std::string(name).find("GL4DRE"), std::string::npos);
    SetScreenSize(1600, 1200);
    EXPECT_EQ(getgdesc(GD_XPMAX), 1599);
    EXPECT_EQ(getgdesc(GD_YPMAX), 1199);
    EXPECT_GE(getgdesc(16), 24);
    EXPECT_GT(getgdesc(9), 4);
    EXPECT_EQ(getgdesc(23), 2);
    EXPECT_EQ(getgdesc(73), 6);
    for (int inquiry : {25, 31, 68, 76, 80})
        EXPECT_EQ(getgdesc(inquiry), 1) << inquiry;
}

} // namespace

} // namespace gl
