// Matrices against their definitions.
#include <array>
#include <cmath>

#include "draw_fixture.h"
#include "platform/drawing_state.h"

namespace gl {

namespace {

using Numbers = std::array<double, 16>;

class Matrices : public Drawing {
  protected:
    static Numbers Current() {
        Numbers numbers;
        getmatrix(numbers.data());
        return numbers;
    }

    static void ExpectNear(const Numbers& a, const Numbers& b, const char* what) {
        for (int i = 0; i < 16; i++)
            EXPECT_NEAR(a[i], b[i], 1e-12) << what << ", element " << i;
    }
};

TEST_F(Matrices, OperationsAreRowVectorMatricesMultipliedFromTheLeft) {
    const double c = std::cos(0.5235987755982988), s = 0.5;

    struct Case {
        const char* what;
        void (*call)();
        Numbers expected;
    };

    const Case cases[] = {
        {"translate", [] { translate(1, 2, 3); }, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}},
        {"scale", [] { scale(2, 3, 4); }, {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1}},
        {"about x", [] { rot(30, 'x'); }, {1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1}},
        {"about y", [] { rot(30, 'y'); }, {c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1}},
        {"about z in tenths", [] { rotate(300, 'z'); }, {c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}},
        {"right angle", [] { rot(90, 'z'); }, {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}},
    };
    for (const Case& test : cases) {
        LoadIdentity();
        test.call();
        ExpectNear(Current(), test.expected, test.what);
    }
    // What is called last acts first: (1, 0, 0) is doubled, then moved.
    LoadIdentity();
    translate(10, 0, 0);
    scale(2, 2, 2);
    EXPECT_EQ(Current()[0], 2);
    EXPECT_EQ(Current()[12], 10);
    const float half[4][4] = {{0.5f, 0, 0, 0}, {0, 0.5f, 0, 0}, {0, 0, 0.5f, 0}, {0, 0, 0, 1}};
    multmatrix(half);
    EXPECT_EQ(Current()[0], 1);
    float back[4][4];
    getmatrix(back);
    EXPECT_EQ(back[3][0], 10);
}

TEST_F(Matrices, ProjectionsReplaceTheProjectionInEveryMode) {
    const double cotangent = 1 / std::tan(0.3490658503988659);
    LoadIdentity();
    translate(5, 0, 0);
    perspective(400, 1.5, 2, 10);
    EXPECT_EQ(Current()[12], 5) << "the viewing matrix stays";
    mmode(MPROJECTION);
    ExpectNear(Current(), {cotangent / 1.5, 0, 0, 0, 0, cotangent, 0, 0, 0, 0, -1.5, -1, 0, 0, -5, 0}, "perspective");
    ortho(-2, 4, -1, 3, 1, 11);
    ExpectNear(Current(), {1 / 3.0, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, -0.2, 0, -1 / 3.0, -0.5, -1.2, 1}, "ortho");
    const Numbers saved = Current();
    ortho2(0, 2, 0, 4);
    ExpectNear(Current(), {1, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, -1, 0, -1, -1, 0, 1}, "ortho2");
    ortho2(1, 1, 0, 4);
    EXPECT_EQ(Current()[0], 1) << "an empty range changes nothing";
    loadmatrix(saved.data());
    mmode(MVIEWING);
    EXPECT_EQ(Current()[12], 5);
}

TEST_F(Matrices, TheStackHolds32) {
    LoadIdentity();
    for (int i = 1; i < 32; i++) {
        pushmatrix();
        translate(1, 0, 0);
    }
    testing::internal::CaptureStderr();
    pushmatrix();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Graphics: the matrix stack is full\n");
    EXPECT_EQ(Current()[12], 31);
    for (int i = 30; i >= 0; i--) {
        popmatrix();
        EXPECT_EQ(Current()[12], i);
    }
    testing::internal::CaptureStderr();
    popmatrix();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Graphics: the matrix stack is empty\n");
    EXPECT_EQ(Current()[12], 0);
}

TEST_F(Matrices, ASingleMatrixServesForEverything) {
    Surface fresh(40, 40, false);
    MakeSurfaceCurrent(&fresh);
    EXPECT_EQ(getmmode(), MSINGLE);
    pushmatrix(); // pixel coordinates from the beginning
    translate(10, 10, 0);
    cpack(White);
    Quad(-0.5, -0.5, 4.5, 4.5);
    popmatrix();
    cpack(Red);
    Quad(-0.5, -0.5, 0.5, 0.5);
    const std::vector<uint32_t> pixels = ReadPixels(fresh, Buffer::Front, {0, 0, 40, 40});
    EXPECT_EQ(pixels[0], Red);
    EXPECT_EQ(pixels[10 * 40 + 10], White);
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), White), 25);
    mmode(MVIEWING);
    EXPECT_EQ(Current(), Identity4);
    Quad(20 - 0.5, -0.5, 20.5, 0.5);
    EXPECT_EQ(ReadPixels(fresh, Buffer::Front, {20, 0, 1, 1})[0], Red) << "still pixel coordinates";
    MakeSurfaceCurrent(Window.get());
}

TEST_F(Matrices, DoublesKeepTheirPrecision) {
    LoadIdentity();
    translate(1e8 + 0.001, 0, 0);
    translate(-1e8, 0, 0);
    EXPECT_NEAR(Current()[12], 0.001, 1e-7);
}

TEST_F(Matrices, InversesUndo) {
    const Matrix4 m = {2, 1, 0, 0, 0, 3, -1, 0, 4, 0, 1, 0, 7, 8, 9, 1};
    Matrix4 inverse;
    ASSERT_TRUE(Invert(m, inverse));
    ExpectNear(Product(m, inverse), Identity4, "inverse");
    const Matrix4 flat = {1, 0, 0, 0, 2, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    EXPECT_FALSE(Invert(flat, inverse));
    EXPECT_EQ(inverse, Identity4);
}

} // namespace

} // namespace gl
