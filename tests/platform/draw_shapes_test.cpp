// Filled shapes: concave polygons, meshes, strips, circles and very large primitives.
#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include "draw_fixture.h"
#include "platform/tessellation.h"

namespace gl {

namespace {

struct Point {
    double x, y;
};

using Outline = std::vector<Point>;

bool Inside(const Outline& outline, double x, double y) {
    bool inside = false;
    for (size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const Point &a = outline[i], &b = outline[j];
        if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

// Whether a point lies so near to the outline that rounding may decide.
bool NearOutline(const Outline& outline, double x, double y) {
    for (size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const Point &a = outline[j], &b = outline[i];
        const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
        const double t = length > 0 ? std::clamp(((x - a.x) * dx + (y - a.y) * dy) / length, 0.0, 1.0) : 0;
        if (std::hypot(a.x + t * dx - x, a.y + t * dy - y) < 0.02)
            return true;
    }
    return false;
}

class Shapes : public Drawing {
  protected:
    static void Fill(const Outline& outline, double z = 0) {
        bgnpolygon();
        for (const Point& p : outline) {
            const double v[3] = {p.x, p.y, z};
            v3d(v);
        }
        endpolygon();
    }

    // Pixels that differ from the even-odd rule.
    int Wrong(const Outline& outline) {
        const Picture picture = Shown();
        int wrong = 0;
        for (int y = 0; y < Height; y++)
            for (int x = 0; x < Width; x++)
                if (!NearOutline(outline, x, y) && (picture.at(x, y) == White) != Inside(outline, x, y))
                    wrong++;
        return wrong;
    }
};

TEST_F(Shapes, ConcavePolygonsAreFilledAsOutlined) {
    Outline star, comb, spiral, cross = {{20.3, 4},  {30.2, 4},  {30.2, 16}, {44, 16}, {44, 26}, {30.2, 26},
                                         {30.2, 44}, {20.3, 44}, {20.3, 26}, {6, 26},  {6, 16},  {20.3, 16}};
    for (int i = 0; i < 14; i++)
        star.push_back({32 + (i % 2 ? 7 : 22) * std::sin(i * 0.4488), 24 + (i % 2 ? 7 : 22) * std::cos(i * 0.4488)});
    for (int i = 0; i < 10; i++) {
        comb.push_back({4.3 + 5 * i, i % 2 ? 10.0 : 40.0});
        comb.push_back({7.6 + 5 * i, i % 2 ? 10.0 : 40.0});
    }
    comb.push_back({58, 3});
    comb.push_back({2, 3});
    for (int i = 0; i <= 40; i++)
        spiral.push_back({32 + (4 + 0.45 * i) * std::cos(i * 0.35), 24 + (4 + 0.45 * i) * std::sin(i * 0.35)});
    for (int i = 40; i >= 0; i--)
        spiral.push_back({32 + (1.5 + 0.45 * i) * std::cos(i * 0.35), 24 + (1.5 + 0.45 * i) * std::sin(i * 0.35)});
    const Outline dart = {{5, 5}, {30, 20}, {55, 5}, {30, 40}}, dartTurned = {{30, 20}, {55, 5}, {30, 40}, {5, 5}};
    const Outline withHole = {{5, 5},   {55, 5},  {55, 43}, {5, 43},  {5, 20},  {20, 20},
                              {20, 35}, {40, 35}, {40, 15}, {20, 15}, {20, 20}, {5, 20}}; // joined by a cut
    cpack(White);
    int number = 0;
    for (Outline outline : {star, comb, spiral, cross, dart, dartTurned, withHole}) {
        for (int turn = 0; turn < 4; turn++) {
            ClearTo(0);
            Fill(outline);
            EXPECT_EQ(Wrong(outline), 0) << "outline " << number << ", way " << turn;
            std::rotate(outline.begin(), outline.begin() + 1, outline.end());
            if (turn == 1)
                std::reverse(outline.begin(), outline.end());
        }
        number++;
    }
}

TEST_F(Shapes, RandomSimpleOutlinesAreFilled) {
    std::mt19937 random(7);
    cpack(White);
    for (int round = 0; round < 60; round++) {
        // Corners at rising angles about a centre never cross.
        const int corners = 3 + static_cast<int>(random() % 30);
        Outline outline;
        for (int i = 0; i < corners; i++) {
            const double angle = 6.283185 * i / corners, radius = 3 + random() % 1900 / 100.0;
            outline.push_back({32.1 + radius * std::cos(angle), 24.1 + radius * std::sin(angle)});
        }
        ClearTo(0);
        Fill(outline);
        ASSERT_EQ(Wrong(outline), 0) << round;
    }
}

TEST_F(Shapes, ConcavePolygonsInSpaceShowTheirFront) {
    const Outline arrow = {{-20, -10}, {20, -10}, {20, 10}, {0, -2}, {-20, 10}};
    ortho(-32, 32, -24, 24, -200, 200);
    backface(true);
    cpack(White);
    for (int angle = 0; angle < 360; angle += 20) {
        for (char axis : {'x', 'y'}) {
            ClearTo(0);
            LoadIdentity();
            rot(angle, axis);
            Fill(arrow, 3);
            const bool facing = std::cos(angle * 0.0174533) > 0.01;
            EXPECT_EQ(Drawn() > 0, facing) << angle << axis;
        }
    }
}

TEST_F(Shapes, CutsCoverTheAreaOfAPolygonOnce) {
    std::mt19937 random(3);
    for (int round = 0; round < 200; round++) {
        const int corners = 3 + static_cast<int>(random() % 60);
        std::vector<float> positions;
        double area = 0;
        for (int i = 0; i < corners; i++) {
            const double angle = 6.283185307 * i / corners, radius = 1 + random() % 1000 / 100.0;
            // A plane that leans.
            const double x = radius * std::cos(angle), y = radius * std::sin(angle);
            for (double value : {x, y, 0.5 * x - 2 * y + 7})
                positions.push_back(static_cast<float>(value));
        }
        std::vector<int> triangles;
        Triangulate(positions.data(), 3, corners, triangles);
        ASSERT_EQ(triangles.size(), static_cast<size_t>(3 * (corners - 2)));
        auto turn = [&](int a, int b, int c) {
            const float *p = &positions[3 * a], *q = &positions[3 * b], *r = &positions[3 * c];
            return ((q[0] - p[0]) * (r[1] - p[1]) - (q[1] - p[1]) * (r[0] - p[0])) / 2.0;
        };
        for (int i = 0; i < corners; i++)
            area += (positions[3 * i] * positions[3 * ((i + 1) % corners) + 1] -
                     positions[3 * ((i + 1) % corners)] * positions[3 * i + 1]) /
                    2.0;
        double sum = 0;
        for (size_t i = 0; i < triangles.size(); i += 3) {
            const double part = turn(triangles[i], triangles[i + 1], triangles[i + 2]);
            EXPECT_GE(part, -1e-3);
            sum += part;
        }
        EXPECT_NEAR(sum, area, 1e-3 * area);
    }
}

// Comb and band have corners from which no ear can be cut for long; the last one crosses itself everywhere.
TEST_F(Shapes, LargeOutlinesAreCutOrRefusedSoon) {
    constexpr int corners = 20000, half = corners / 2;
    std::mt19937 random(3);
    const auto turned = [](double angle, double radius, float* p) {
        p[0] = static_cast<float>(radius * std::cos(angle));
        p[1] = static_cast<float>(radius * std::sin(angle));
    };

    const struct {
        const char* Name;
        int Corners;
        std::function<void(int, float*)> Place;
    } outlines[] = {
        {"star", corners, [&](int i, float* p) { turned(6.283185307 * i / corners, i % 2 ? 1 : 0.5, p); }},
        {"spiral", corners,
         [&](int i, float* p) {
             const double angle = 0.1 * (i < half ? i : corners - 1 - i);
             turned(angle, angle + (i < half ? 3 : 1), p);
         }},
        {"band", corners,
         [&](int i, float* p) {
             const int k = i < half ? i : corners - 1 - i;
             p[0] = static_cast<float>(k);
             p[1] = static_cast<float>((k % 2 ? 5 : -5) + (i < half ? 0 : 1));
         }},
    };

    std::vector<int> triangles;
    for (const auto& outline : outlines) {
        std::vector<float> places(3 * corners);
        double area = 0, covered = 0;
        for (int i = 0; i < corners; i++)
            outline.Place(i, &places[3 * i]);
        const auto turn = [&](int a, int b, int c) {
            const float *p = &places[3 * a], *q = &places[3 * b], *r = &places[3 * c];
            return (double{q[0]} - p[0]) * (double{r[1]} - p[1]) - (double{q[1]} - p[1]) * (double{r[0]} - p[0]);
        };
        for (int i = 1; i + 1 < corners; i++)
            area += turn(0, i, i + 1);
        triangles.clear();
        ASSERT_TRUE(Triangulate(places.data(), 3, corners, triangles)) << outline.Name;
        for (size_t i = 0; i < triangles.size(); i += 3)
            covered += std::abs(turn(triangles[i], triangles[i + 1], triangles[i + 2]));
        EXPECT_NEAR(covered / std::abs(area), 1, 1e-4) << outline.Name;
    }
    std::vector<float> scattered(3 * 100000);
    for (size_t i = 0; i < scattered.size(); i++)
        scattered[i] = i % 3 == 2 ? 0 : static_cast<float>(random() % 100000);
    triangles = {7};
    const size_t refused = HopelessOutlines();
    for (int again = 0; again < 2; again++)
        EXPECT_FALSE(Triangulate(scattered.data(), 3, 100000, triangles));
    EXPECT_EQ(triangles, std::vector<int>{7});
    EXPECT_EQ(HopelessOutlines(), refused + 1);
}

TEST_F(Shapes, MeshesAndStripsKeepOneSide) {
    backface(true);
    cpack(White);
    bgntmesh();
    for (int i = 0; i < 9; i++) {
        const int32_t p[2] = {5 + i * 4, i % 2 ? 5 : 15};
        v2i(p);
    }
    endtmesh();
    EXPECT_EQ(Row(12, 10, 20), "####################");
    ClearTo(0);
    bgnqstrip();
    for (int i = 0; i < 5; i++) {
        const int32_t top[2] = {5 + i * 10, 30}, bottom[2] = {5 + i * 10, 20};
        v2i(top);
        v2i(bottom);
    }
    endqstrip();
    EXPECT_EQ(Row(4, 25, 42), "." + std::string(40, '#') + ".");
    ClearTo(0);
    // A fan of three triangles about (20, 10), by exchanging.
    bgntmesh();
    const int32_t hub[2] = {20, 10}, rim[4][2] = {{35, 10}, {30, 20}, {20, 25}, {10, 20}};
    v2i(hub);
    v2i(rim[0]);
    swaptmesh();
    for (int i = 1; i < 4; i++) {
        v2i(rim[i]);
        swaptmesh();
    }
    endtmesh();
    const Outline fan = {{20, 10}, {35, 10}, {30, 20}, {20, 25}, {10, 20}};
    EXPECT_EQ(Wrong(fan), 0);
}

TEST_F(Shapes, CirclesAndArcs) {
    cpack(White);
    circf(30, 24, 20);
    EXPECT_NEAR(Drawn(), 3.14159 * 400, 12);
    EXPECT_EQ(Pixel(30, 43), White);
    EXPECT_EQ(Pixel(30, 45), Black);
    ClearTo(0);
    circ(30, 24, 20);
    EXPECT_EQ(Pixel(50, 24), White);
    EXPECT_EQ(Pixel(30, 44), White);
    EXPECT_EQ(Pixel(30, 24), Black);
    ClearTo(0);
    arcf(30, 24, 20, 0, 900);
    EXPECT_NEAR(Drawn(), 3.14159 * 100, 22);
    EXPECT_EQ(Pixel(35, 30), White);
    EXPECT_EQ(Pixel(25, 30), Black);
    ClearTo(0);
    arc(30, 24, 20, 2700, 900);
    EXPECT_EQ(Pixel(50, 24), White) << "through the zero direction";
    EXPECT_EQ(Pixel(10, 24), Black);
}

TEST_F(Shapes, PrimitivesOfAnySizeAreDrawnWhole) {
    cpack(White);
    Outline large;
    for (int i = 0; i < 40000; i++)
        large.push_back({32 + 20 * std::cos(6.283185307 * i / 40000), 24 + 20 * std::sin(6.283185307 * i / 40000)});
    Fill(large);
    const Outline coarse = large;
    EXPECT_NEAR(Drawn(), 3.14159 * 400, 12);
    ClearTo(0);
    bgnline();
    for (int i = 0; i < 60000; i++) {
        const double p[2] = {i % 2 ? 10.0 : 50.0, 5 + i / 60000.0 * 30};
        v2d(p);
    }
    endline();
    EXPECT_EQ(Drawn(), 41 * 31);
    ClearTo(0);
    bgnqstrip();
    for (int i = 0; i < 30000; i++) {
        const double x = 5 + i / 30000.0 * 50, top[2] = {x, 20}, bottom[2] = {x, 10};
        v2d(top);
        v2d(bottom);
    }
    endqstrip();
    EXPECT_NEAR(Drawn(), 50 * 10, 12);
}

TEST_F(Shapes, TooFewVerticesDrawNothing) {
    cpack(White);
    const int32_t p[2][2] = {{3, 3}, {10, 10}};
    for (int count = 0; count <= 2; count++) {
        bgnpolygon();
        for (int i = 0; i < count; i++)
            v2i(p[i]);
        endpolygon();
        bgntmesh();
        for (int i = 0; i < count; i++)
            v2i(p[i]);
        endtmesh();
        bgnqstrip();
        for (int i = 0; i < count; i++)
            v2i(p[i]);
        endqstrip();
    }
    bgnline();
    v2i(p[0]);
    endline();
    bgnclosedline();
    endclosedline();
    v2i(p[0]);
    endpolygon(); // never begun
    EXPECT_EQ(Drawn(), 0);
}

TEST_F(Shapes, DefinitionsBetweenVerticesDoNoHarm) {
    cpack(White);
    Quad(40, 0, 50, 10);
    const double corners[3][2] = {{0, 0}, {20, 0}, {0, 20}};
    const float red[] = {DIFFUSE, 1, 0, 0, LMNULL};
    bgnpolygon();
    for (int i = 0; i < 3; i++) {
        v2d(corners[i]);
        lmdef(DEFMATERIAL, 5 + i, 0, red);
    }
    endpolygon();
    EXPECT_EQ(Pixel(45, 5), White);
    EXPECT_EQ(Wrong({{0, 0}, {20, 0}, {0, 20}}), 100) << "the square beside it";
}

TEST_F(Shapes, NumbersThatAreNoneDrawSomethingOrNothing) {
    const double nan = std::nan(""), huge = 1e300;
    cpack(White);
    for (double bad : {nan, huge, -huge, HUGE_VAL}) {
        const double corners[6][2] = {{0, 0}, {20, 0}, {bad, 20}, {10, bad}, {5, 30}, {bad, bad}};
        bgnpolygon();
        for (const double* p : corners)
            v2d(p);
        endpolygon();
        bgnclosedline();
        for (const double* p : corners)
            v2d(p);
        endclosedline();
        circf(static_cast<float>(bad), 10, 5);
        circ(10, 10, static_cast<float>(bad));
        rectf(0, 0, static_cast<float>(bad), 10);
        cmov2(bad, 10);
        charstr("x");
    }
    FlushDrawing();
    ClearTo(0);
    rectfi(3, 3, 5, 5);
    EXPECT_EQ(Drawn(), 9) << "what follows is drawn as always";
}

// A model 40 kilometres from the origin with details of a millimetre looks as it does at the origin.
class Precision : public Drawing {
  protected:
    static constexpr double Far[3] = {31234.5678, -25987.123, 4321.0987};

    static void Detail(double x, double y, double z) {
        const float n[3] = {0, 0, 1};
        for (int i = 0; i < 6; i++) {
            cpack(i % 2 ? Red : Green);
            const double size = 0.001, left = x - 0.003 + i * size;
            const double corners[4][3] = {
                {left, y - 0.002, z}, {left + size, y - 0.002, z}, {left + size, y + 0.002, z}, {left, y + 0.002, z}};
            bgnpolygon();
            for (const double* p : corners)
                v3d(p);
            endpolygon();
        }
        cpack(White);
        linewidth(2);
        const double ends[2][3] = {{x - 0.003, y - 0.002, z}, {x + 0.003, y + 0.002, z}};
        bgnline();
        v3d(ends[0]);
        v3d(ends[1]);
        endline();
        linewidth(1);
        n3f(n);
    }

    void LookAt(double x, double y, double z, bool inPerspective) {
        LoadIdentity();
        if (inPerspective) {
            perspective(400, 64.0 / 48, 0.001, 1);
            translate(0, 0, -0.01);
            rot(-30, 'x');
        } else {
            ortho(-0.004, 0.004, -0.003, 0.003, -1, 1);
            rot(20, 'y');
        }
        translate(-x, -y, -z);
        ClearTo(0);
        zbuffer(true);
    }
};

TEST_F(Precision, MillimetresHoldFarFromTheOrigin) {
    makeobj(1);
    // The recording reaches over the whole distance.
    cpack(Blue);
    Line(0, 0, 1, 0);
    Detail(Far[0], Far[1], Far[2]);
    closeobj();
    for (bool inPerspective : {true, false}) {
        LookAt(0, 0, 0, inPerspective);
        Detail(0, 0, 0);
        const Picture near = Shown();
        EXPECT_GT(Drawn(), 500);
        LookAt(Far[0], Far[1], Far[2], inPerspective);
        Detail(Far[0], Far[1], Far[2]);
        EXPECT_LE(DifferingPixels(near, Shown(), 8, nullptr), 4) << "direct";
        ClearTo(0);
        callobj(1);
        EXPECT_LE(DifferingPixels(near, Shown(), 8, nullptr), 4) << "recorded";
    }
}

} // namespace

} // namespace gl
