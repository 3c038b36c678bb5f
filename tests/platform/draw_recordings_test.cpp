// Recordings draw what the calls would have drawn.
#include <functional>
#include <random>

#include "draw_fixture.h"

namespace gl {

namespace {

class Recordings : public Drawing {
  protected:
    void SetUp() override {
        Drawing::SetUp();
        const float model[] = {AMBIENT, 0.5f, 0.5f, 0.5f, TWOSIDE, 1, LMNULL};
        const float light[] = {LCOLOR, 1, 1, 1, POSITION, 1, 1, 1, 0, LMNULL};
        lmdef(DEFLMODEL, 1, 0, model);
        lmdef(DEFLIGHT, 1, 0, light);
        for (int i = 1; i <= 3; i++) {
            const float part = static_cast<float>(i) / 3;
            const float material[] = {AMBIENT,  0.1f, part, 0.2f, DIFFUSE,   part, 0.5f,  0.3f,
                                      SPECULAR, 0.5f, 0.5f, 0.5f, SHININESS, 20,   LMNULL};
            lmdef(DEFMATERIAL, i, 0, material);
        }
        for (int i = 0; i < 80; i++) {
            const float material[] = {EMISSION, static_cast<float>(i) / 80, 0.1f, 0.3f, LMNULL};
            lmdef(DEFMATERIAL, 100 + i, 0, material);
        }
        std::vector<uint8_t> image(16 * 16 * 4);
        for (size_t i = 0; i < image.size(); i++)
            image[i] = static_cast<uint8_t>(i * 37 % 251);
        texdef2d(1, 4, 16, 16, image.data(), 0, nullptr);
        tevdef(1, TV_MODULATE);
        uint16_t rows[16];
        for (int i = 0; i < 16; i++)
            rows[i] = i % 2 ? 0xF0F0 : 0x3333;
        defpattern(1, 16, rows);
        deflinestyle(1, 0x0F0F);
        View();
    }

    void View() {
        LoadIdentity();
        perspective(400, 64.0 / 48, 1, 50);
        translate(0, 0, -12);
        rot(20, 'x');
        rot(30, 'y');
        zbuffer(true);
        lmbind(LMODEL, 1);
        lmbind(LIGHT0, 1);
        lmbind(MATERIAL, 1);
        cpack(0xFF40C0F0);
        ClearTo(0x301010);
    }

    // Draws by the calls and by a recording of them; the pictures are the same, and so is what is drawn afterwards.
    void Same(const std::function<void()>& draw, const char* what) {
        auto after = [] {
            const double p[3][3] = {{-4, -4, 2}, {4, -4, 2}, {0, 4, -3}};
            bgnpolygon();
            for (const double* v : p)
                v3d(v);
            endpolygon();
        };
        pushmatrix();
        draw();
        const Picture direct = Shown();
        after();
        const Picture directAfter = Shown();
        Reset();
        makeobj(7);
        draw();
        closeobj();
        const Picture untouched = Shown();
        EXPECT_EQ(std::count(untouched.pixels.begin(), untouched.pixels.end(), 0xFF301010),
                  static_cast<long>(untouched.pixels.size()))
            << what << ": nothing is drawn while recording";
        pushmatrix();
        callobj(7);
        EXPECT_EQ(DifferingPixels(direct, Shown(), 1, nullptr), 0) << what;
        after();
        EXPECT_EQ(DifferingPixels(directAfter, Shown(), 1, nullptr), 0) << what << ", afterwards";
        Reset();
    }

    void Reset() {
        popmatrix();
        // A fresh surface has a fresh state.
        Window = std::make_unique<Surface>(Width, Height, false);
        MakeSurfaceCurrent(Window.get());
        mmode(MVIEWING);
        viewport(0, Width - 1, 0, Height - 1);
        View();
    }

    static void Facets(int seed, int count, bool lit, bool textured) {
        std::mt19937 random(seed);
        auto number = [&random] { return static_cast<double>(random() % 2000) / 250 - 4; };
        for (int i = 0; i < count; i++) {
            const float n[3] = {static_cast<float>(number()), static_cast<float>(number()),
                                static_cast<float>(number())};
            if (lit)
                n3f(n);
            else
                cpack(0xFF000000 | static_cast<uint32_t>(random()));
            const double x = number(), y = number(), z = number();
            bgnpolygon();
            for (const auto& c : {std::pair<double, double>{0, 0}, {2, 0.3}, {1.8, 2}, {0.1, 1.5}}) {
                const double v[3] = {x + c.first, y + c.second, z + 0.2 * c.first};
                const float t[2] = {static_cast<float>(c.first), static_cast<float>(c.second)};
                if (textured)
                    t2f(t);
                v3d(v);
            }
            endpolygon();
        }
    }
};

TEST_F(Recordings, DrawWhatTheCallsDraw) {
    Same([] { Facets(1, 30, false, false); }, "coloured");
    Same([] { Facets(2, 30, true, false); }, "lit");
    Same(
        [] {
            Facets(3, 10, true, false);
            Facets(4, 10, false, false);
            lmbind(MATERIAL, 2);
            Facets(5, 10, true, false);
        },
        "mixed");
    Same(
        [] {
            for (int i = 0; i < 80; i++) {
                lmbind(MATERIAL, 100 + i);
                Facets(40 + i, 1, true, false);
            }
        },
        "more materials than a call can have");
    Same(
        [] {
            tevbind(0, 1);
            texbind(0, 1);
            Facets(6, 20, true, true);
            texbind(0, 0);
            Facets(7, 5, true, true);
        },
        "textured");
    for (int mode : {TG_LINEAR, TG_CONTOUR, TG_SPHEREMAP})
        Same(
            [mode] {
                const float s[4] = {0.3f, 0.1f, 0, 0.2f}, t[4] = {0, 0.4f, 0.1f, 0};
                tevbind(0, 1);
                texbind(0, 1);
                texgen(TX_S, mode, s);
                texgen(TX_T, mode, t);
                texgen(TX_S, TG_ON, nullptr);
                texgen(TX_T, TG_ON, nullptr);
                Facets(8, 20, true, false);
                texgen(TX_S, TG_OFF, nullptr);
                texgen(TX_T, TG_OFF, nullptr);
                texbind(0, 0);
            },
            "generated coordinates");
    Same(
        [] {
            for (int i = 0; i < 5; i++) {
                pushmatrix();
                translate(i - 2, 0.5 * i, 0);
                rot(33 * i, 'z');
                scale(0.5, 0.7, 1.3);
                Facets(9 + i, 4, true, false);
                popmatrix();
            }
            translate(1, 0, 0);
            Facets(20, 4, false, false);
        },
        "moved");
    Same(
        [] {
            setpattern(1);
            Facets(21, 6, false, false);
            setpattern(0);
            blendfunction(BF_SA, BF_MSA);
            Facets(22, 6, true, false);
            blendfunction(BF_ONE, BF_ZERO);
            backface(true);
            Facets(23, 8, true, false);
            backface(false);
            const float plane[4] = {1, 0.5f, 0, 0.3f};
            clipplane(2, CP_DEFINE, plane);
            clipplane(2, CP_ON, nullptr);
            Facets(24, 8, true, false);
            clipplane(2, CP_OFF, nullptr);
            zwritemask(0);
            Facets(25, 8, false, false);
            zwritemask(0xFFFFFFFF);
        },
        "states");
    // Clip planes that leave all of a recording, a part, or nothing.
    for (const float distance : {9.0f, 0.5f, 0.0f, -0.5f, -9.0f})
        Same(
            [distance] {
                const float planes[2][4] = {{1, 0.2f, 0, distance}, {-0.3f, 0, 1, 9}};
                for (int i = 0; i < 2; i++) {
                    clipplane(i, CP_DEFINE, planes[i]);
                    clipplane(i, CP_ON, nullptr);
                }
                Facets(26, 8, true, false);
                for (int i = 0; i < 2; i++)
                    clipplane(i, CP_OFF, nullptr);
            },
            "clipped");
    Same(
        [] {
            const double p[5][3] = {{-3, -3, 0}, {3, -3, 1}, {0, 0, 2}, {3, 3, 1}, {-3, 3, 0}};
            for (int width = 1; width <= 4; width++) {
                linewidth(width);
                cpack(0xFF00FF00u + static_cast<uint32_t>(width) * 60);
                bgnclosedline();
                for (const double* v : p)
                    v3d(v);
                endclosedline();
                translate(0.4, 0.3, 0.2);
            }
            linewidth(1);
            pntsize(3);
            bgnpoint();
            for (const double* v : p)
                v3d(v);
            endpoint();
            pntsize(1);
            facinglines(true);
            for (int width = 1; width <= 2; width++) {
                linewidth(width);
                for (float side : {-1.0f, 1.0f}) {
                    const float n[3] = {side, side, 1};
                    n3f(n);
                    cpack(0xFF0080FFu);
                    bgnclosedline();
                    for (const double* v : p)
                        v3d(v);
                    endclosedline();
                    translate(0.4, 0.3, 0.2);
                }
            }
            linewidth(1);
            facinglines(false);
        },
        "lines and points");
    Same(
        [] {
            cpack(White);
            bgnpolygon(); // concave
            for (int i = 0; i < 12; i++) {
                const double v[3] = {(i % 2 ? 1.5 : 4) * std::cos(i * 0.5236), (i % 2 ? 1.5 : 4) * std::sin(i * 0.5236),
                                     0};
                v3d(v);
            }
            endpolygon();
            bgntmesh();
            for (int i = 0; i < 7; i++) {
                const double v[3] = {i - 3.0, i % 2 ? 3.0 : 2.0, 1};
                v3d(v);
            }
            endtmesh();
            circf(-2, -2, 1.5);
            rectf(1, -3, 3, -1);
            cmov(0, 0, 1);
            charstr("Text");
        },
        "shapes and text");
}

TEST_F(Recordings, MergeWhatBelongsTogether) {
    makeobj(1);
    Facets(1, 500, true, false);
    for (int i = 0; i < 10; i++) {
        lmbind(MATERIAL, 2);
        Facets(2, 10, true, false);
        cpack(Red);
        Facets(3, 10, false, false);
    }
    closeobj();
    EXPECT_EQ(RecordingRuns(1), 1) << "materials do not part what is drawn by one call";
    EXPECT_GT(RecordingMemory(), 700 * 4 * 32);
    EXPECT_LT(RecordingMemory(), 700 * 4 * 64);
    delobj(1);
    EXPECT_EQ(RecordingMemory(), 0);
}

TEST_F(Recordings, NestAndAreReplacedAndDeleted) {
    makeobj(1);
    cpack(Red);
    Quad(-1, -1, 1, 1, 0);
    closeobj();
    makeobj(2);
    callobj(1);
    translate(2, 0, 0);
    callobj(1);
    callobj(99);
    callobj(2); // itself: ends at the sixteenth level
    closeobj();
    LoadIdentity();
    ortho(-0.5, 63.5, -0.5, 47.5, -10, 10);
    translate(1, 20, 0);
    ClearTo(0);
    callobj(2);
    EXPECT_EQ(Row(0, 20, 6), "RRRRRR");
    EXPECT_EQ(Pixel(40, 20), Black);
    EXPECT_NE(Pixel(30, 20), Black);
    makeobj(1);
    cpack(Green);
    Quad(-1, -1, 1, 1, 1);
    testing::internal::CaptureStderr();
    makeobj(3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Graphics: recording 3 cannot be begun inside recording 1\n");
    closeobj();
    EXPECT_FALSE(isobj(3));
    LoadIdentity();
    translate(1, 20, 0);
    ClearTo(0);
    callobj(2);
    EXPECT_EQ(Pixel(1, 20), Green);
    delobj(1);
    EXPECT_FALSE(isobj(1));
    EXPECT_EQ(genobj(), 1);
    ClearTo(0);
    LoadIdentity();
    callobj(2);
    EXPECT_EQ(Drawn(), 0);
}

// The outline of a unit square in the plane z = 0, with a normal of its own.
void SquareFacing(double x, double y, float nx, float nz) {
    const double corners[4][3] = {{x, y, 0}, {x + 1, y, 0}, {x + 1, y + 1, 0}, {x, y + 1, 0}};
    const float n[3] = {nx, 0, nz};
    n3f(n);
    cpack(Red);
    bgnclosedline();
    for (const double* corner : corners)
        v3d(corner);
    endclosedline();
}

TEST_F(Recordings, LeaveOutLinesThatFaceAwayFromTheEye) {
    makeobj(1);
    SquareFacing(-2.5, 0, 0, 1);
    SquareFacing(-0.5, 0, 0, -1);
    SquareFacing(1.5, 0, -1, -0.1f); // turned to the eye by perspective alone
    closeobj();
    // As many planes as there are, which cut nothing away: the test of the normals comes after them.
    const float everything[4] = {0, 0, 0, 1};
    for (int plane = 0; plane < 6; plane++) {
        clipplane(plane, CP_DEFINE, everything);
        clipplane(plane, CP_ON, nullptr);
    }
    for (const bool parallel : {true, false}) {
        if (parallel)
            ortho(-3.2, 3.2, -2.4, 2.4, 1, 50);
        else
            perspective(269, 64.0 / 48, 1, 50); // 10 pixels a unit at the distance 10
        LoadIdentity();
        translate(0.05, 0.05, -10);
        zbuffer(false);
        ClearTo(0);
        callobj(1);
        const std::string all = Row(7, 29, 51);
        EXPECT_EQ(std::count(all.begin(), all.end(), 'R'), 6) << all;
        facinglines(true);
        ClearTo(0);
        callobj(1);
        const std::string facing = Row(7, 29, 51);
        EXPECT_EQ(facing.substr(0, 12), all.substr(0, 12));
        EXPECT_EQ(facing.substr(15, 20), std::string(20, '.'));
        EXPECT_EQ(facing.substr(38), parallel ? std::string(13, '.') : all.substr(38));
        facinglines(false);
    }
}

TEST_F(Recordings, CanBeDrawnInOneColour) {
    makeobj(1);
    SquareFacing(-0.5, -0.5, 0, 1);
    closeobj();
    ortho(-3.2, 3.2, -2.4, 2.4, 1, 50);
    LoadIdentity();
    translate(0.05, 0.05, -10);
    ClearTo(0);
    callobj(1, Green);
    EXPECT_EQ(Row(25, 24, 14), "..G.........G.");
    ClearTo(0);
    callobj(1);
    EXPECT_EQ(Row(25, 24, 14), "..R.........R.");
}

TEST_F(Recordings, TakeTheDefinitionsAndStateOfTheirReplay) {
    LoadIdentity();
    ortho(-0.5, 63.5, -0.5, 47.5, -10, 10);
    makeobj(1);
    lmbind(MATERIAL, 1);
    const float n[3] = {0, 0, 1};
    n3f(n);
    Quad(10, 10, 20, 20);
    closeobj();
    const float glow[] = {EMISSION, 0, 1, 0, AMBIENT, 0, 0, 0, DIFFUSE, 0, 0, 0, SPECULAR, 0, 0, 0, LMNULL};
    lmdef(DEFMATERIAL, 1, 0, glow);
    callobj(1);
    EXPECT_EQ(Pixel(15, 15), Green);
    wmpack(0);
    ClearTo(0);
    wmpack(0xFFFFFFFF);
    ClearTo(0);
    scrmask(0, 14, 0, 47);
    callobj(1);
    EXPECT_EQ(Row(8, 15, 10), "..GGGGG...");
}

} // namespace

} // namespace gl
