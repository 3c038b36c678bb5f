#include "store/ring_model.h"

#include "store/clean_up.h"
#include "store/normals.h"
#include "textures/texture_lock.h"

#include <cmath>
#include <vector>

namespace {

/// s = 2 x + 1, t = y + 3 z.
void MapByPlace(Polygon* polygon, Texture* texture) {
    polygon->Texture = texture;
    for (PolygonBead* bead : EveryBead(polygon)) {
        const double* place = bead->Vertex->Position;
        bead->TexCoord[0] = static_cast<float>(2 * place[0] + 1);
        bead->TexCoord[1] = static_cast<float>(place[1] + 3 * place[2]);
    }
}

class TextureLock : public RingModel {
  protected:
    void SetUp() override {
        RingModel::SetUp();
        KeepTexturesInPlace = 1;
    }

    void TearDown() override {
        UnlockTextures();
        KeepTexturesInPlace = 0;
        RingModel::TearDown();
    }

    /// Moves these corners, in ring order.
    static void Move(const Polygon* polygon, const std::vector<int>& corners, double x, double y, double z) {
        std::vector<Vertex*> ring;
        for (const PolygonBead* bead : EveryBead(polygon))
            ring.push_back(bead->Vertex);
        Vertex* moving = nullptr;
        for (const int corner : corners) {
            ring[corner]->NextInGroup = moving;
            moving = ring[corner];
        }
        LockTextures(moving);
        for (const int corner : corners) {
            ring[corner]->Position[0] += x;
            ring[corner]->Position[1] += y;
            ring[corner]->Position[2] += z;
        }
        FollowLockedTextures();
    }

    static std::vector<float> Coordinates(const Polygon* polygon) {
        std::vector<float> all;
        for (const PolygonBead* bead : EveryBead(polygon))
            all.insert(all.end(), bead->TexCoord, bead->TexCoord + 2);
        return all;
    }
};

TEST_F(TextureLock, CornersGetTheCoordinatesOfTheirNewPlaces) {
    struct Case {
        const char* What;
        std::vector<std::vector<double>> Ring;
        std::vector<int> Moving;
        double Way[3];
        std::vector<float> Expected; // of the second corner
    };

    const std::vector<std::vector<double>> square = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};
    const Case cases[] = {
        {"outwards in its plane", square, {1}, {1, 0.5, 0}, {7, 0.5}},
        {"two corners", square, {1, 2}, {-1, 0, 0}, {3, 0}},
        {"across its plane", square, {1}, {0, 0, 5}, {5, 0}},
        {"all corners", square, {0, 1, 2, 3}, {1, 0, 0}, {5, 0}},
        {"an upright triangle", {{0, 0, 0}, {2, 0, 0}, {0, 0, 2}}, {1}, {1, 7, 1}, {7, 3}},
    };
    Texture texture{};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.What);
        Polygon* polygon = AddFace(test.Ring);
        MapByPlace(polygon, &texture);
        const std::vector<float> before = Coordinates(polygon);
        Move(polygon, test.Moving, test.Way[0], test.Way[1], test.Way[2]);
        EXPECT_NEAR(Coordinates(polygon)[2], test.Expected[0], 1e-5);
        EXPECT_NEAR(Coordinates(polygon)[3], test.Expected[1], 1e-5);
        SwapLockedTextures();
        EXPECT_EQ(Coordinates(polygon), before);
        DeletePolygon(polygon, 1);
    }
}

TEST_F(TextureLock, MovesAtOnceNeedOneCall) {
    Texture texture{};
    Polygon* polygon = AddFace({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}});
    MapByPlace(polygon, &texture);
    Vertex* const corner = polygon->Beads->Vertex;
    MoveKeepingTextures({&corner, 1}, [&] { corner->Position[0] = -1; });
    EXPECT_EQ(polygon->Beads->TexCoord[0], -1);
    SwapLockedTextures();
    EXPECT_EQ(polygon->Beads->TexCoord[0], -1) << "nothing is locked any more";
}

TEST_F(TextureLock, WithoutAMapNothingFollows) {
    Texture texture{};
    for (const char* why : {"switched off", "untextured", "reflecting", "bent", "without area"}) {
        SCOPED_TRACE(why);
        const double height = why == std::string("without area") ? 0 : 2;
        Polygon* polygon = AddFace({{0, 0, 0}, {2, 0, 0}, {2, height, 0}, {0, height, 0}});
        MapByPlace(polygon, &texture);
        KeepTexturesInPlace = why != std::string("switched off");
        if (why == std::string("untextured"))
            polygon->Texture = nullptr;
        if (why == std::string("reflecting"))
            polygon->Flags = PolygonGeneratesTexture;
        if (why == std::string("bent"))
            polygon->Beads->TexCoord[0] += 0.5F;
        KeepPolygonsWithoutArea = 1;
        const std::vector<float> before = Coordinates(polygon);
        Move(polygon, {1}, 1, 1, 0);
        EXPECT_EQ(Coordinates(polygon), before);
        DeletePolygon(polygon, 1);
        KeepPolygonsWithoutArea = 0;
    }
}

} // namespace
