// Rings clipped in software keep what lies within the limits, and nothing else.
#include "views/clipping.h"

#include "geometry/vectors.h"
#include "gooey/window.h"
#include "store/pools.h"
#include "store/walks.h"
#include "views/work_area.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

namespace {

ClipBead* NewRing(int corners) {
    ClipBead* ring = nullptr;
    for (int i = 0; i < corners; ++i) {
        ClipBead* corner = NewPolyClipBead();
        *corner = {};
        corner->Next = ring;
        ring = corner;
    }
    return ring;
}

TEST(Clipping, ToTheWorkAreaTakesNormalsAndTextureCoordinatesAlong) {
    Window gizmo = {};
    std::mt19937 random(11);
    std::uniform_real_distribution<float> place(-3, 3);
    WorkAreaLeft = WorkAreaFront = WorkAreaBottom = -1;
    WorkAreaRight = WorkAreaBack = WorkAreaTop = 1;
    for (int round = 0; round < 300; ++round) {
        ClipBead* ring = NewRing(4);
        for (ClipBead* corner : Along<&ClipBead::Next>(ring)) {
            for (float& coordinate : corner->Position)
                coordinate = place(random);
            corner->Normal[0] = 0.6F;
            corner->Normal[2] = 0.8F;
            corner->TexCoord[0] = corner->Position[0] + 2 * corner->Position[1];
            corner->TexCoord[1] = 3 - corner->Position[2];
        }
        ClipBead* const whole = ring;
        EXPECT_EQ(ClipPolygonToWorkArea(ring), whole) << "not in force";
        WorkAreaGizmo = &gizmo;
        ring = ClipPolygonToWorkArea(ring);
        WorkAreaGizmo = nullptr;
        for (const ClipBead* corner : Along<&ClipBead::Next>(ring)) {
            for (const float coordinate : corner->Position)
                EXPECT_LE(std::abs(coordinate), 1.00001F);
            EXPECT_NEAR(corner->TexCoord[0], corner->Position[0] + 2 * corner->Position[1], 1e-4);
            EXPECT_NEAR(corner->TexCoord[1], 3 - corner->Position[2], 1e-4);
            EXPECT_NEAR(Dotf(corner->Normal, corner->Normal), 1, 1e-5);
        }
        if (ring)
            FreeClippedPolygon(ring);
    }
}

TEST(Clipping, ToTheFrontPlaneEndsJustBeforeTheEye) {
    for (const int behind : {0, 1, 2, 3}) {
        ClipBead* ring = NewRing(3);
        int corners = 0;
        for (ClipBead* corner : Along<&ClipBead::Next>(ring)) {
            corner->Eye[0] = static_cast<float>(corners);
            corner->Eye[2] = corners < behind ? 2.0F : -2.0F;
            ++corners;
        }
        ring = ClipPolygonToFrontClipPlane(ring);
        int left = 0;
        for (const ClipBead* corner : Along<&ClipBead::Next>(ring)) {
            EXPECT_LE(corner->Eye[2], -0.00001F);
            ++left;
        }
        EXPECT_EQ(left, (std::array{3, 4, 3, 0}[static_cast<std::size_t>(behind)]));
        if (ring)
            FreeClippedPolygon(ring);
    }
}

} // namespace
