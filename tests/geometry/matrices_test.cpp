#include "geometry/matrices.h"

#include <cmath>
#include <string>

#include "geometry/axes.h"
#include "geometry/close_to.h"
#include "geometry/vectors.h"

namespace {

struct TransformCase {
    const char* Name;
    Matrix Transform;
    double Point[3], Expected[3];
};

TEST(Matrices, TransformPoints) {
    const TransformCase cases[] = {
        {"yaw", YawMatrix(90), {1, 0, 0}, {0, 1, 0}},
        {"pitch", PitchMatrix(90), {0, 1, 0}, {0, 0, 1}},
        {"roll", RollMatrix(90), {0, 0, 1}, {1, 0, 0}},
        {"yaw keeps z", YawMatrix(30), {0, 0, 2}, {0, 0, 2}},
        {"translation", TranslationMatrix(1, 2, 3), {5, 6, 7}, {6, 8, 10}},
        {"scale", ScaleMatrix(2, 3, 4), {1, 1, -1}, {2, 3, -4}},
    };
    for (const TransformCase& c : cases) {
        SCOPED_TRACE(c.Name);
        double point[3] = {c.Point[0], c.Point[1], c.Point[2]};
        TransformCoordinate(point, c.Transform, point);
        ExpectClose(point, {c.Expected[0], c.Expected[1], c.Expected[2]});
    }
}

TEST(Matrices, FloatVariantsFollowTheDoubles) {
    const struct {
        const char* Name;
        Matrix Double;
        Matrixf Float;
    } cases[] = {
        {"yaw", YawMatrix(33), YawMatrixf(33)},
        {"pitch", PitchMatrix(-120), PitchMatrixf(-120)},
        {"roll", RollMatrix(271), RollMatrixf(271)},
        {"translation", TranslationMatrix(1, -2, 3), TranslationMatrixf(1, -2, 3)},
        {"scale", ScaleMatrix(4, 5, 6), ScaleMatrixf(4, 5, 6)},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        Matrixf converted;
        RealMatrixToFloat(c.Double, converted);
        ExpectClose(c.Float, converted, 1e-6);
        const float point[4] = {1, 2, 3, 2};
        float transformed[4], homogeneous[4], rotated[3];
        Transform3df(point, c.Float, transformed);
        Transform4df(point, c.Float, homogeneous);
        Rotate3df(point, c.Float, rotated);
        Matrix back;
        FloatMatrixToReal(c.Float, back);
        const double same[4] = {1, 2, 3, 2};
        double expected[4];
        Transform3d(same, back, expected);
        ExpectClose(transformed, {expected[0], expected[1], expected[2]}, 1e-5);
        Transform4d(same, back, expected);
        ExpectClose(homogeneous, {expected[0], expected[1], expected[2], expected[3]}, 1e-5);
        Rotate3d(same, back, expected);
        ExpectClose(rotated, {expected[0], expected[1], expected[2]}, 1e-5);
    }
}

TEST(Matrices, RightAnglesAreExact) {
    const double cosines[] = {1, 0, -1, 0};
    for (int quarter = -9; quarter <= 9; ++quarter) {
        SCOPED_TRACE(quarter);
        const double cosine = cosines[(quarter + 12) % 4], sine = cosines[(quarter + 15) % 4];
        const Matrix yaw = {{{cosine, sine, 0, 0}, {-sine, cosine, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
        EXPECT_EQ(YawMatrix(90 * quarter), yaw);
        Matrixf yawf;
        RealMatrixToFloat(yaw, yawf);
        EXPECT_EQ(YawMatrixf(90.0F * static_cast<float>(quarter)), yawf);
    }
    EXPECT_DOUBLE_EQ(YawMatrix(-240)[0][1], std::sin(-240 * DegreesToRadians));
}

TEST(Matrices, DirectionsIgnoreTranslationAndHomogeneousPointsWeighIt) {
    const Matrix m = TranslationMatrix(1, 2, 3);
    double vector[3] = {4, 5, 6}, point[4] = {4, 5, 6, 2};
    RotateVector(vector, m, vector);
    ExpectClose(vector, {4, 5, 6});
    Transform4dCoordinate(point, m, point);
    ExpectClose(point, {6, 9, 12, 2});
}

TEST(Matrices, ProductAppliesTheFirstFactorFirst) {
    std::mt19937 random(1);
    for (int i = 0; i < 100; ++i) {
        Matrix a = RandomMatrix(random), b = RandomMatrix(random), product;
        MultMatrix(a, b, product);
        double point[4] = {1, 2, 3, 4}, direct[4];
        Transform4d(point, product, direct);
        Transform4d(point, a, point);
        Transform4d(point, b, point);
        ExpectClose(direct, {point[0], point[1], point[2], point[3]});
        Matrix intoFirst = a, intoSecond = b;
        MultMatrix(intoFirst, b, intoFirst);
        MultMatrix(a, intoSecond, intoSecond);
        EXPECT_EQ(intoFirst, product);
        EXPECT_EQ(intoSecond, product);
    }
}

TEST(Matrices, InverseTimesMatrixIsIdentity) {
    std::mt19937 random(2);
    for (int i = 0; i < 1000; ++i) {
        const Matrix m = RandomMatrix(random), inverse = MatrixInverse(m);
        double largest = 1;
        for (const auto& row : inverse.Element)
            for (double element : row)
                largest = std::fmax(largest, std::fabs(element));
        Matrix product;
        MultMatrix(m, inverse, product);
        ExpectClose(product, IdentityMatrix, 1e-13 * largest * largest);
    }
    EXPECT_EQ(Matrix(MatrixInverse(TranslationMatrix(1, 2, 3))), Matrix(TranslationMatrix(-1, -2, -3)));
    // Zeros on the diagonal force row exchanges.
    const Matrix cycle = {{{0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}, {1, 0, 0, 0}}};
    EXPECT_EQ(Matrix(MatrixInverse(cycle)), Matrix(MatrixTranspose(cycle)));
}

TEST(Matrices, SingularMatrixIsReportedAndInvertsToIdentity) {
    const Matrix singular[] = {{}, {{{1, 2, 3, 4}, {2, 4, 6, 8}, {0, 1, 0, 0}, {0, 0, 0, 1}}}};
    for (const Matrix& m : singular) {
        testing::internal::CaptureStderr();
        const Matrix inverse = MatrixInverse(m);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "InvertMatrix failed: impossible matrix\a\n");
        EXPECT_EQ(inverse, IdentityMatrix);
    }
}

TEST(Matrices, ResultsMayBeFedBack) {
    std::mt19937 random(3);
    const Matrix m = RandomMatrix(random);
    EXPECT_EQ(MatrixTranspose(MatrixTranspose(m)), m);
    const Matrix twice = MatrixInverse(MatrixInverse(m));
    ExpectClose(twice, m, 1e-9);
}

TEST(Matrices, ScalesAlternateBetweenTwoResults) {
    const Matrix& first = ScaleMatrix(1, 2, 3);
    const Matrix& second = ScaleMatrix(4, 5, 6);
    EXPECT_EQ(first[1][1], 2);
    EXPECT_EQ(second[1][1], 5);
    EXPECT_EQ(&ScaleMatrix(7, 8, 9), &first);
    EXPECT_EQ(first[1][1], 8);
    const Matrixf& firstf = ScaleMatrixf(1, 2, 3);
    EXPECT_NE(&ScaleMatrixf(4, 5, 6), &firstf);
    EXPECT_EQ(firstf[2][2], 3);
}

TEST(Matrices, PrintsRowsOnStandardError) {
    testing::internal::CaptureStderr();
    PrintMatrix(TranslationMatrix(-1.5, 20, 1234567));
    const std::string text = testing::internal::GetCapturedStderr();
    EXPECT_EQ(text, "   1.00000   0.00000   0.00000   0.00000\n"
                    "   0.00000   1.00000   0.00000   0.00000\n"
                    "   0.00000   0.00000   1.00000   0.00000\n"
                    "  -1.50000  20.000001234567.00000   1.00000\n\n");
    testing::internal::CaptureStderr();
    PrintMatrixf(TranslationMatrixf(-1.5f, 20, 1234567));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), text);
}

TEST(Vectors, ProductsAndLengths) {
    const double a[3] = {1, 2, 3}, b[3] = {-2, 4, 5};
    double c[3];
    Cross(a, b, c);
    ExpectClose(c, {-2, -11, 8}, 0);
    EXPECT_EQ(Dot(a, b), 21);
    const float af[3] = {1, 2, 3}, bf[3] = {-2, 4, 5};
    float cf[3];
    Crossf(af, bf, cf);
    ExpectClose(cf, {-2, -11, 8}, 0);
    // A float sum loses the small product next to the large one; a double sum would keep it.
    const float large[3] = {16777216, 1, -16777216}, ones[3] = {1, 1, 1};
    EXPECT_EQ(Dotf(large, ones), 0);
    const double from[3] = {1, 1, 1}, to[3] = {3, 4, 7};
    EXPECT_EQ(DistanceBetweenCoords(from, to), 7);
}

TEST(Vectors, Normalise) {
    double v[3] = {3, 0, 4}, zero[3] = {0, 0, 0};
    EXPECT_EQ(Normalise(v), 1);
    ExpectClose(v, {0.6, 0, 0.8}, 0);
    EXPECT_EQ(Normalise(zero), 0);
    ExpectClose(zero, {0, 0, 0}, 0);
    float vf[3] = {3, 0, 4}, zerof[3] = {0, 0, 0};
    EXPECT_EQ(Normalisef(vf), 1);
    EXPECT_EQ(vf[0], 0.6f);
    EXPECT_EQ(vf[2], 0.8f);
    EXPECT_EQ(Normalisef(zerof), 0);
}

TEST(Vectors, DoubleCrossMakesAFrame) {
    double a[3] = {0, 0, 2}, b[3] = {3, 0, 5}, c[3];
    EXPECT_EQ(DoubleCross(a, b, c), 1);
    ExpectClose(a, {0, 0, 1});
    ExpectClose(b, {1, 0, 0});
    ExpectClose(c, {0, -1, 0});
    double zero[3] = {0, 0, 0}, along[3] = {0, 0, -7};
    EXPECT_EQ(DoubleCross(zero, b, c), 0);
    EXPECT_EQ(DoubleCross(a, along, c), 0);
}

TEST(Axes, LargestComponentChoosesTheAxis) {
    const struct {
        double V[3];
        int Axis;
    } cases[] = {
        {{3, 1, 2}, 0},  {{-3, 1, 2}, 0}, {{1, 3, -2}, 1}, {{1, -3, 2}, 1}, {{1, 2, 3}, 2},
        {{1, 2, -3}, 2}, {{2, 2, 1}, 1},  {{2, 1, 2}, 2},  {{1, 2, 2}, 2},  {{0, 0, 0}, 2},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.V[0] << ' ' << c.V[1] << ' ' << c.V[2]);
        Matrix toAxis, toX, product;
        double v[3];
        const double length = LengthOfVector(c.V);
        EXPECT_EQ(RotateToAxis(c.V, toAxis), c.Axis);
        RotateVector(c.V, toAxis, v);
        std::vector<double> expected(3, 0.0);
        expected[c.Axis] = length;
        ExpectClose(v, expected);
        RotateToXAxis(c.V, toX);
        RotateVector(c.V, toX, v);
        ExpectClose(v, {length, 0, 0});
        MultMatrix(toX, MatrixTranspose(toX), product);
        ExpectClose(product, IdentityMatrix, 1e-12);
    }
    // The half turn that tells the two apart for a vector near negative x.
    Matrix toAxis, toX;
    const double v[3] = {-1, 0, 0};
    RotateToAxis(v, toAxis);
    RotateToXAxis(v, toX);
    EXPECT_NEAR(toX[1][1], -toAxis[1][1], 1e-12);
}

} // namespace
