#include "interaction/views_test.h"

#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "tools/create_sphere.h"
#include "tools/sweep.h"
#include "tools/volume_sweep.h"
#include "views/display_flags.h"
#include "views/overlays.h"

#include <cstdlib>

namespace {

/// What is shown while something is made, and what is there when it has been added.
class Previews : public ViewsTest {
  protected:
    using Pixels = std::vector<std::uint32_t>;

    void SetUp() override {
        ViewsTest::SetUp();
        RegisterOverlay({OverlayBand::Model, NewSolidOrder, DrawNewSolid});
        RegisterOverlay({OverlayBand::Model, NewSweepOrder, DrawNewSweep});
        SolidView = Backface = 1;
        Show(Direction3D);
    }

    void TearDown() override {
        CurrentLighting = LightingFaceted;
        FreeSweeper();
        ViewsTest::TearDown();
    }

    static Pixels Picture() {
        Settle();
        WindowScope scope(Viewport[0]);
        gl::frontbuffer(true);
        Pixels pixels(static_cast<std::size_t>(Width()) * Height());
        gl::lrectread(0, 0, Width() - 1, Height() - 1, pixels.data());
        gl::frontbuffer(false);
        return pixels;
    }

    /// Pixels that differ by more than rounding and the slight difference of smoothed normals.
    static long Differences(const Pixels& a, const Pixels& b) {
        constexpr int slight = 12;
        long count = 0;
        for (std::size_t i = 0; i < a.size(); ++i) {
            int most = 0;
            for (const int shift : {0, 8, 16})
                most = std::max(
                    most, std::abs(static_cast<int>(a[i] >> shift & 255) - static_cast<int>(b[i] >> shift & 255)));
            count += most > slight;
        }
        return count;
    }

    /// `curve` pixels may differ: those of what shows only while it is being made.
    static void ExpectSame(const Pixels& empty, const Pixels& preview, const Pixels& added, long curve) {
        EXPECT_GT(Differences(empty, added), 10000);
        EXPECT_LE(Differences(preview, added), curve);
    }
};

TEST_F(Previews, SpheresLookAsTheyWill) {
    const Pixels empty = Picture();
    for (const int lighting : {LightingFaceted, LightingSmooth}) {
        CurrentLighting = lighting;
        CreateSphere();
        NewSphereDepth = 16;
        InView("drag left" + At(Width() / 2, Height() / 2) + At(Width() / 2 + 90, Height() / 2) + "\n");
        const Pixels preview = Picture();
        EXPECT_EQ(Polygons(), 0u);
        InView("key Space\n");
        ExpectSame(empty, preview, Picture(), 20); // at the rim
        Undo();
        EXPECT_EQ(Polygons(), 0u);
    }
}

TEST_F(Previews, SweepsLookAsTheyWill) {
    const Pixels empty = Picture();
    for (const int lighting : {LightingUnlit, LightingFaceted, LightingSmooth})
        for (const int insideOut : {0, 1}) {
            CurrentLighting = lighting;
            DoVolumeSweep();
            InitialiseSweep(VolumeSweep);
            VolumeSweep.InsideOut = insideOut;
            const double path[][3] = {{-5, -5, 0}, {-5, 5, 0}, {5, 5, 2}},
                         profile[][3] = {{-2, 0, 0}, {-1, 3, 0}, {0, 4, 0}, {2, 0, 0}};
            for (const auto& point : path)
                AppendEbead(VolumeSweep.Path, point);
            for (const auto& point : profile)
                AppendEbead(VolumeSweep.Profile, point)->CurvePoint = 1;
            SweepChanged(VolumeSweep);
            DirtyModelWindows();
            const Pixels preview = Picture();
            InView("key Space\n");
            // The path's line, its three points and the number of polygons.
            ExpectSame(empty, preview, Picture(), 2500);
            Undo();
            Settle();
        }
}

} // namespace
