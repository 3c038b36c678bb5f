#include "store/store_test.h"
#include "tools/closed_surface.h"

#include "store/clean_up.h"
#include "store/integrity.h"
#include "tools/sphere_creation.h"
#include "tools/sphere_meshes.h"
#include "tools/spheres.h"

#include <cmath>

namespace {

Surface SurfaceOf(const SphereMesh& mesh) {
    Surface surface;
    for (const SphereFace& face : mesh.Faces)
        for (const SphereStrip& strip : face.Strips)
            ForEveryTriangle(strip, [&](SphereCorner a, SphereCorner b, SphereCorner c, const SphereNode& node) {
                std::vector<Surface::Place> ring;
                for (const SphereCorner& corner : {a, b, c})
                    ring.push_back({corner.Point[0], corner.Point[1], corner.Point[2]});
                surface.AddRing(ring);
                double along = 0;
                for (int axis = 0; axis < 3; ++axis)
                    along += node.Normal[axis] * (ring[0][axis] + ring[1][axis] + ring[2][axis]) / 3;
                EXPECT_GT(along, 0.7);
            });
    return surface;
}

TEST(Spheres, AreClosedAndFaceOutwardAtEveryComplexity) {
    for (int depth = LeastSphereDepth; depth <= MostSphereDepth; ++depth)
        for (const bool textured : {false, true}) {
            SCOPED_TRACE(depth);
            const Surface surface = SurfaceOf(BuildSphereMesh(depth, false, textured));
            EXPECT_TRUE(surface.IsManifold());
            EXPECT_EQ(surface.EulerCharacteristic(), 2);
            EXPECT_EQ(surface.Faces, SpherePolygons(0, depth));
            EXPECT_EQ(surface.Corners.size(), 10u * depth * depth + 2);
            EXPECT_GT(surface.Volume(), 2.5);
            EXPECT_LT(surface.Volume(), 4.18879); // of the ball
            for (const auto& [point, number] : surface.Corners)
                EXPECT_NEAR(std::hypot(point[0], point[1], point[2]), 1, 1e-12);
        }
}

TEST(Spheres, DomesAreTheFacesTowardsTheViewer) {
    const Surface dome = SurfaceOf(BuildSphereMesh(7, true, false));
    EXPECT_EQ(dome.Faces, SpherePolygons(SphereDome, 7));
    EXPECT_FALSE(dome.IsClosed());
    EXPECT_EQ(dome.EulerCharacteristic(), 1);
    EXPECT_EQ(SpherePolygons(SphereDome, 7), 588);
    // Seen from +z there is no gap: all of the circle's rim and more is there.
    for (const auto& [point, number] : dome.Corners)
        EXPECT_GT(point[2], -0.86);
}

TEST(Spheres, TexturesGoRoundWithoutAJump) {
    std::vector<float> u = {0.9F, 0.95F, PoleMarker, 0.05F, 0.1F, 0.95F}, down = {0.1F, 0.05F, 0.95F, 0.1F, 0.9F};
    const auto continued = [](std::vector<float>& values) {
        std::vector<float*> along;
        for (float& value : values)
            along.push_back(&value);
        ContinueAcrossSeam(along);
        return values;
    };
    EXPECT_EQ(continued(u), (std::vector<float>{0.9F, 0.95F, PoleMarker, 1.05F, 1.1F, 0.95F}));
    EXPECT_EQ(continued(down), (std::vector<float>{0.1F, 0.05F, 0.95F - 1, 0.1F, 0.9F - 1}));

    for (const SphereFace& face : BuildSphereMesh(8, false, true).Faces)
        for (const SphereStrip& strip : face.Strips)
            ForEveryTriangle(strip, [&](SphereCorner a, SphereCorner b, SphereCorner c, const SphereNode&) {
                for (const SphereCorner& corner : {a, b, c}) {
                    // v is the latitude, from the south pole up.
                    EXPECT_NEAR(corner.TexCoord[1], std::acos(-corner.Point[1]) / M_PI, 1e-6);
                    // Away from the poles a small triangle takes a small part of the texture.
                    EXPECT_TRUE(std::abs(corner.Point[1]) > 0.7 || std::abs(corner.TexCoord[0] - a.TexCoord[0]) < 0.25);
                }
            });
}

TEST(Spheres, TheLastFiveAreKept) {
    InitSpheres();
    const auto kept = [](int depth, int flags = 0) { return KeptSphereMesh(flags, depth).Faces.data(); };
    const auto *first = kept(1), *second = kept(2), *dome = kept(2, SphereDome),
               *textured = kept(2, SphereTextureCoordinates);
    EXPECT_EQ(kept(1, SphereFaceted | SphereFlat | SphereZUp), first); // how it is drawn makes no other mesh
    kept(3);
    EXPECT_EQ(kept(2), second);
    kept(4); // takes the place of the dome, which was wanted least recently
    EXPECT_EQ(kept(1), first);
    EXPECT_EQ(kept(2), second);
    EXPECT_EQ(kept(2, SphereTextureCoordinates), textured);
    EXPECT_NE(dome, nullptr);
    EXPECT_EQ(KeptSphereMesh(0, 0).Depth, 5);
    EXPECT_EQ(KeptSphereMesh(0, 40).Depth, 32);
    FreeSpheres();
}

class NewSpheres : public StoreTest {};

TEST_F(NewSpheres, ShareTheirVertices) {
    const double centre[3] = {1, -2, 1000};
    for (const int depth : {1, 3, 32}) {
        SetUp();
        AddSphereToModel(centre, 0.5, depth, false);
        CheckIntegrity();
        CleanUpObject();
        const Surface surface = SurfaceOfModel();
        EXPECT_EQ(surface.Faces, 20 * depth * depth);
        EXPECT_TRUE(surface.IsManifold());
        EXPECT_EQ(surface.EulerCharacteristic(), 2);
        EXPECT_EQ(Collect(EveryVertex(CurrentObject())).size(), 10u * depth * depth + 2);
        for (const Vertex* vertex : EveryVertex(CurrentObject()))
            EXPECT_TRUE(vertex->Uses == 5 || (vertex->Uses == 6 && depth > 1));
        EXPECT_LE(ObjectMax()[2], 1000.5);
        EXPECT_GE(ObjectMin()[2], 999.5);
        EXPECT_GT(ObjectMax()[2], 1000.4);
    }
}

TEST_F(NewSpheres, CarryTheCurrentTexture) {
    Texture* texture = CurrentTexture() = NewTexture();
    const double centre[3] = {0, 0, 0};
    AddSphereToModel(centre, 2, 4, true);
    for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
        EXPECT_EQ(polygon->Texture, texture);
        EXPECT_EQ(polygon->TextureMaterial, CurrentMaterial());
        for (const PolygonBead* bead : EveryBead(polygon))
            // The texture's upper edge lies at the top of the model.
            EXPECT_NEAR(bead->TexCoord[1], std::acos(-bead->Vertex->Position[2] / 2) / M_PI, 1e-5);
    }
    CurrentTexture() = nullptr;
    FreeTexture(texture);
}

} // namespace
