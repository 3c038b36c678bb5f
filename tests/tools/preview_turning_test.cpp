#include "tools/preview_turning.h"

#include "gooey/toolkit_test.h"

#include "platform/events.h"
#include "platform/windows.h"

#include <cmath>

namespace {

Matrix Model;
int Resets, Shows;

void Turn(int device, short value) {
    if (device == gl::MIDDLEMOUSE && value)
        ManipulateMatrix(
            Model, {0, 0, 200, 200}, [] { ++Resets; }, [] { ++Shows; });
}

class PreviewTurning : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Model = TranslationMatrix(0, 10, 0);
        Resets = Shows = 0;
        gl::prefposition(100, 299, 100, 299);
        OpenWindow("Preview", WindowDoubleBuffered, 0, nullptr, nullptr, Turn, nullptr, 0, nullptr);
        Settle();
    }

    static void ExpectRow(int row, double x, double y, double z) {
        EXPECT_NEAR(Model[row][0], x, 1e-6);
        EXPECT_NEAR(Model[row][1], y, 1e-6);
        EXPECT_NEAR(Model[row][2], z, 1e-6);
    }
};

TEST_F(PreviewTurning, TurnsRollsPansAndZooms) {
    Play("in \"Preview\"\ndrag middle 100 100 130 100");
    // What is near follows the pointer: a third of the movement, in degrees.
    const double angle = 10 * DegreesToRadians;
    ExpectRow(0, std::cos(angle), std::sin(angle), 0);
    ExpectRow(2, 0, 0, 1);
    ExpectRow(3, 0, 10, 0);
    EXPECT_GT(Shows, 1);

    Model = TranslationMatrix(0, 10, 0);
    Play("drag middle 190 100 190 140 140 190 100 190"); // a quarter round the rim
    ExpectRow(0, 0, 0, 1);
    ExpectRow(3, 0, 10, 0);

    Model = TranslationMatrix(0, 10, 0);
    Play("move 100 100\npress middle\npress left\nmove 125 100\nmove 150 75\nrelease left\nrelease middle");
    ExpectRow(3, 50 * 10 / 250.0, 10, -25 * 10 / 250.0);

    Model = TranslationMatrix(0, 10, 0);
    Play("move 100 100\npress middle\npress right\nmove 100 120\nmove 100 150\nrelease right\nrelease middle");
    ExpectRow(3, 0, 5, 0);
    Play("move 100 0\npress middle\npress right\nmove 100 100\nmove 100 199\nrelease right\nrelease middle");
    ExpectRow(3, 0, LeastPreviewDistance, 0);
    EXPECT_EQ(Resets, 0);
    Play("move 100 100\npress middle\npress right\npress left\nrelease right\nrelease left\nrelease middle");
    EXPECT_EQ(Resets, 1);
}

} // namespace
