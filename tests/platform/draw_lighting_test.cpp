// Lighting against values computed by hand.
#include <cmath>
#include <vector>

#include "draw_fixture.h"

namespace gl {

namespace {

struct Colour3 {
    double r, g, b;
};

struct TestMaterial {
    Colour3 emission, ambient, diffuse, specular;
    double shininess, alpha;
};

struct TestLight {
    Colour3 ambient, colour;
    double position[4];
};

void Define(int index, const TestMaterial& m) {
    auto f = [](double v) { return static_cast<float>(v); };
    const float list[] = {EMISSION,        f(m.emission.r), f(m.emission.g), f(m.emission.b), AMBIENT,
                          f(m.ambient.r),  f(m.ambient.g),  f(m.ambient.b),  DIFFUSE,         f(m.diffuse.r),
                          f(m.diffuse.g),  f(m.diffuse.b),  SPECULAR,        f(m.specular.r), f(m.specular.g),
                          f(m.specular.b), SHININESS,       f(m.shininess),  ALPHA,           f(m.alpha),
                          LMNULL};
    lmdef(DEFMATERIAL, index, 0, list);
}

void Define(int index, const TestLight& l) {
    auto f = [](double v) { return static_cast<float>(v); };
    const float list[] = {AMBIENT,          f(l.ambient.r),   f(l.ambient.g),   f(l.ambient.b), LCOLOR,
                          f(l.colour.r),    f(l.colour.g),    f(l.colour.b),    POSITION,       f(l.position[0]),
                          f(l.position[1]), f(l.position[2]), f(l.position[3]), LMNULL};
    lmdef(DEFLIGHT, index, 0, list);
}

void DefineModel(double ambient, bool twoSided) {
    const float a = static_cast<float>(ambient);
    const float list[] = {AMBIENT, a, a, a, TWOSIDE, twoSided ? 1.0f : 0.0f, LMNULL};
    lmdef(DEFLMODEL, 1, 0, list);
}

// The formula of the header, with n and the vertex position in eye coordinates.
uint32_t Expected(const TestMaterial& m, double modelAmbient, const std::vector<TestLight>& lights, const double* n,
                  const double* eye) {
    const double Colour3::*channels[3] = {&Colour3::r, &Colour3::g, &Colour3::b};
    const double nLength = std::hypot(n[0], n[1], n[2]);
    uint32_t packed = 0xFF000000;
    for (int c = 0; c < 3; c++) {
        auto channel = channels[c];
        double sum = m.emission.*channel, ambient = modelAmbient;
        for (const TestLight& light : lights)
            ambient += light.ambient.*channel;
        sum += ambient * (m.ambient.*channel);
        for (const TestLight& light : lights) {
            const double* p = light.position;
            double l[3];
            for (int i = 0; i < 3; i++)
                l[i] = p[3] != 0 ? p[i] / p[3] - eye[i] : p[i];
            const double length = std::hypot(l[0], l[1], l[2]);
            double h[3] = {l[0] / length, l[1] / length, l[2] / length + 1};
            const double hLength = std::hypot(h[0], h[1], h[2]);
            double nl = 0, nh = 0;
            for (int i = 0; i < 3; i++) {
                nl += n[i] / nLength * l[i] / length;
                nh += n[i] / nLength * h[i] / hLength;
            }
            if (nl > 0)
                sum += light.colour.*channel *
                       (m.diffuse.*channel * nl + m.specular.*channel * std::pow(std::max(nh, 0.0), m.shininess));
        }
        packed |= static_cast<uint32_t>(std::lround(std::min(sum, 1.0) * 255)) << 8 * c;
    }
    return packed;
}

const TestMaterial Metal = {{0, 0, 0}, {0.3, 0, 0}, {0.5, 0.1, 0.1}, {0.8, 0.3, 0.3}, 50, 1};
const TestMaterial Glow = {{0.2, 0.1, 0}, {0.1, 0.2, 0.3}, {0.3, 0.4, 0.5}, {0.2, 0.2, 0.2}, 8, 0.5};
const TestLight Sun = {{0, 0, 0}, {1, 1, 1}, {1, 1, 1, 0}};
const TestLight Dim = {{0, 0, 0}, {0.5, 0.5, 0.5}, {1, 1, 1, 0}};
const TestLight Lamp = {{0.05, 0, 0.1}, {0.9, 0.5, 0.2}, {10, 20, 15, 1}};

class Lighting : public Drawing {
  protected:
    void SetUp() override {
        Drawing::SetUp();
        ortho(-0.5, Width - 0.5, -0.5, Height - 0.5, -100, 100);
        Define(1, Metal);
        Define(2, Glow);
        Define(1, Sun);
        Define(2, Dim);
        Define(3, Lamp);
        DefineModel(0.5, true);
        lmbind(LMODEL, 1);
        lmbind(LIGHT0, 1);
        lmbind(MATERIAL, 1);
    }

    // A small square with a normal about (x, y), and its colour.
    uint32_t Patch(const double* normal, double x = 20, double y = 20) {
        n3d(normal);
        Quad(x - 1, y - 1, x + 1, y + 1);
        return Pixel(static_cast<int>(x), static_cast<int>(y));
    }
};

constexpr double Normals[][3] = {{0, 0, 1}, {1, 1, 1}, {0.3, 0.2, 0.9}, {-1, 0, 1}, {0, -3, 0.5}, {-1, -1, 0.1}};

TEST_F(Lighting, DirectionalLightsAndMaterials) {
    const double eye[3] = {20, 20, 0};
    for (const double* n : Normals) {
        lmbind(LIGHT0, 1);
        lmbind(MATERIAL, 1);
        EXPECT_TRUE(Near(Patch(n), Expected(Metal, 0.5, {Sun}, n, eye), 1)) << n[0] << ' ' << n[1];
        lmbind(MATERIAL, 2);
        EXPECT_TRUE(Near(Patch(n), Expected(Glow, 0.5, {Sun}, n, eye), 1)) << n[0] << ' ' << n[1];
        lmbind(LIGHT0, 2);
        EXPECT_TRUE(Near(Patch(n), Expected(Glow, 0.5, {Dim}, n, eye), 1)) << n[0] << ' ' << n[1];
    }
}

TEST_F(Lighting, LocalLightsAndSeveralAtOnce) {
    lmbind(LIGHT1, 3);
    lmbind(MATERIAL, 2);
    for (const double* n : Normals) {
        n3d(n);
        const double corners[3][2] = {{4, 4}, {5, 4}, {4, 5}};
        bgnpolygon();
        for (const double* p : corners)
            v2d(p);
        endpolygon();
        // Light is computed at the corners; the polygon is small enough to stand for one.
        const double eye[3] = {4, 4, 0};
        EXPECT_TRUE(Near(Pixel(4, 4), Expected(Glow, 0.5, {Sun, Lamp}, n, eye), 1)) << n[0] << ' ' << n[1];
    }
    lmbind(LIGHT0, 0);
    const double n[3] = {0, 0, 1}, eye[3] = {4, 4, 0};
    EXPECT_TRUE(Near(Patch(n, 4, 4), Expected(Glow, 0.5, {Lamp}, n, eye), 1)) << "one light unbound";
}

TEST_F(Lighting, TwoSidedModelsTurnTheNormalRound) {
    const double n[3] = {0.3, 0.2, -0.9}, turned[3] = {-0.3, -0.2, 0.9}, eye[3] = {20, 20, 0};
    auto back = [&] { // clockwise: shows its back
        n3d(n);
        Quad(25, 15, 15, 25);
        return Pixel(20, 20);
    };
    EXPECT_TRUE(Near(back(), Expected(Metal, 0.5, {Sun}, turned, eye), 1));
    EXPECT_TRUE(Near(Patch(n), Expected(Metal, 0.5, {Sun}, n, eye), 1)) << "a front keeps its normal";
    DefineModel(0.2, false);
    EXPECT_TRUE(Near(back(), Expected(Metal, 0.2, {Sun}, n, eye), 1)) << "with one side it stays";
}

TEST_F(Lighting, LightsAreBoundInEyeCoordinates) {
    const double n[3] = {0, 0, 1}, eye[3] = {20, 20, 0};
    rot(90, 'x'); // (1, 1, 1) becomes (1, -1, 1)
    lmbind(LIGHT0, 1);
    LoadIdentity();
    const TestLight turned = {{0, 0, 0}, {1, 1, 1}, {1, -1, 1, 0}};
    const double tilted[3] = {0, -1, 1};
    EXPECT_TRUE(Near(Patch(tilted), Expected(Metal, 0.5, {turned}, tilted, eye), 1));
    rot(180, 'z');
    translate(-40, -40, 0);
    EXPECT_TRUE(Near(Patch(n), Expected(Metal, 0.5, {turned}, n, eye), 1)) << "later matrices do not move the light";
}

TEST_F(Lighting, NormalsFollowUnevenScaling) {
    const double eye[3] = {20, 20, 0}, n[3] = {1, 0, 1};
    scale(4, 1, 1);
    const double expected[3] = {0.25, 0, 1};
    EXPECT_TRUE(Near(Patch(n, 5), Black, 255));
    EXPECT_TRUE(Near(Pixel(20, 20), Expected(Metal, 0.5, {Sun}, expected, eye), 1));
    LoadIdentity();
    scale(1000, 1000, 1000);
    n3d(n);
    Quad(0.019, 0.019, 0.021, 0.021);
    EXPECT_TRUE(Near(Pixel(20, 20), Expected(Metal, 0.5, {Sun}, n, eye), 1)) << "the length does not matter";
}

TEST_F(Lighting, WhatIsGivenLastDecides) {
    const double n[3] = {0, 0, 1}, eye[3] = {20, 20, 0};
    const uint32_t lit = Expected(Metal, 0.5, {Sun}, n, eye);
    n3d(n);
    cpack(Green);
    Quad(0, 0, 10, 10);
    EXPECT_EQ(Pixel(5, 5), Green) << "a colour after the normal";
    cpack(Green);
    n3d(n);
    Quad(0, 0, 10, 10);
    EXPECT_TRUE(Near(Pixel(5, 5), lit, 1));
    bgnpolygon();
    const double corners[4][2] = {{20, 0}, {40, 0}, {40, 20}, {20, 20}};
    for (int i = 0; i < 4; i++) {
        if (i == 0 || i == 3)
            cpack(Blue);
        else
            n3d(n);
        v2d(corners[i]);
    }
    endpolygon();
    EXPECT_TRUE(Near(Pixel(20, 10), Blue, 12)) << "each vertex for itself";
    EXPECT_TRUE(Near(Pixel(39, 10), lit, 12));
    lmbind(MATERIAL, 0);
    n3d(n);
    Quad(0, 0, 10, 10);
    EXPECT_EQ(Pixel(5, 5), Blue) << "without a material the colour stays";
    lmbind(MATERIAL, 1);
    Quad(0, 0, 10, 10);
    EXPECT_TRUE(Near(Pixel(5, 5), lit, 1));
}

TEST_F(Lighting, ManyMaterialsInOneBatchKeepTheirColours) {
    const double n[3] = {0.2, 0.1, 1};
    std::vector<TestMaterial> materials;
    for (int i = 0; i < 60; i++) {
        materials.push_back({{0, 0, 0}, {i / 60.0, 0.1, 0}, {0.2, i / 90.0, 0.4}, {0.1, 0.1, i / 120.0}, 1.0 + i, 1});
        Define(10 + i, materials.back());
    }
    auto place = [](int i) { return std::pair<int, int>{2 + i % 15 * 4, 2 + i / 15 * 4}; };
    n3d(n);
    for (int i = 0; i < 60; i++) {
        lmbind(MATERIAL, 10 + i);
        const auto [x, y] = place(i);
        Quad(x - 1, y - 1, x + 1, y + 1);
    }
    const Picture picture = Shown();
    for (int i = 0; i < 60; i++) {
        const auto [x, y] = place(i);
        const double eye[3] = {0, 0, 0};
        EXPECT_TRUE(Near(picture.at(x, y), Expected(materials[i], 0.5, {Sun}, n, eye), 1)) << i;
    }
}

TEST_F(Lighting, RedefiningLeavesWhatIsDrawnAlready) {
    const double n[3] = {0, 0, 1}, eye[3] = {0, 0, 0};
    n3d(n);
    Quad(0, 0, 10, 10);
    Define(1, Glow);
    Quad(20, 0, 30, 10);
    Define(1, Dim);
    Quad(40, 0, 50, 10);
    EXPECT_TRUE(Near(Pixel(5, 5), Expected(Metal, 0.5, {Sun}, n, eye), 1));
    EXPECT_TRUE(Near(Pixel(25, 5), Expected(Glow, 0.5, {Sun}, n, eye), 1));
    EXPECT_TRUE(Near(Pixel(45, 5), Expected(Glow, 0.5, {Dim}, n, eye), 1));
    // Another window, lit before with the former light.
    Surface other(10, 10, false);
    MakeSurfaceCurrent(&other);
    mmode(MVIEWING);
    lmbind(LMODEL, 1);
    lmbind(LIGHT0, 1);
    lmbind(MATERIAL, 1);
    n3d(n);
    auto corner = [&] {
        Quad(0, 0, 10, 10);
        return ReadPixels(other, Buffer::Front, {5, 5, 1, 1})[0];
    };
    EXPECT_TRUE(Near(corner(), Expected(Glow, 0.5, {Dim}, n, eye), 1));
    Define(1, Sun);
    EXPECT_TRUE(Near(corner(), Expected(Glow, 0.5, {Sun}, n, eye), 1));
    MakeSurfaceCurrent(Window.get());
}

// The facets of a large wall whose normals differ by a little, or not at all, must look like one surface.
TEST_F(Lighting, ALargeFacetedWallIsEven) {
    perspective(400, 64.0 / 48, 1, 10000);
    const double n[3] = {0.01, 0.02, 1};
    n3d(n);
    for (int x = -20; x < 20; x++)
        for (int y = -20; y < 20; y++)
            Quad(x * 100, y * 100, x * 100 + 100, y * 100 + 100, -3000);
    const Picture picture = Shown();
    for (uint32_t pixel : picture.pixels)
        ASSERT_EQ(pixel, picture.pixels[0]);
    EXPECT_NE(picture.pixels[0], Black);
}

TEST_F(Lighting, MaterialAlphaBlends) {
    cpack(Blue);
    Quad(0, 0, 40, 40);
    blendfunction(BF_SA, BF_MSA);
    lmbind(MATERIAL, 2);
    const double n[3] = {0, 0, 1}, eye[3] = {0, 0, 0};
    const uint32_t full = Expected(Glow, 0.5, {Sun}, n, eye);
    uint32_t expected = 0xFF000000;
    for (int shift = 0; shift < 24; shift += 8)
        expected |= ((full >> shift & 255) + (Blue >> shift & 255)) / 2 << shift;
    EXPECT_TRUE(Near(Patch(n), expected, 2));
}

TEST_F(Lighting, BadDefinitionsAreReported) {
    const float unknown[] = {77, 1, 1, 1, LMNULL}, cut[] = {DIFFUSE, 1, 1};
    testing::internal::CaptureStderr();
    lmdef(DEFMATERIAL, 5, 0, unknown);
    lmdef(DEFMATERIAL, 6, 3, cut);
    lmdef(DEFMATERIAL, 0, 0, nullptr);
    lmdef(9, 1, 0, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Graphics: property 77 in the definition of 5 is not known\n"
                                                      "Graphics: property 3 in the definition of 6 is not known\n"
                                                      "Graphics: definition number 0 is out of range\n"
                                                      "Graphics: there is no definition of kind 9\n");
}

} // namespace

} // namespace gl
