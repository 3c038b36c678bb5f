#include "structure/scene_positioning.h"

#include "store/store_test.h"
#include "views/work_area.h"

namespace {

/// A placed object with vertices at z = 1 and z = 3 over (0, 0) and (2, 0), selected.
class ScenePositioningTest : public StoreTest {
  protected:
    Branch* Place(double x, double y, double z) {
        Branch* branch = AddBranch(Scene(), BranchAsChild);
        branch->Object = Column();
        branch->Transform = TranslationMatrix(x, y, z);
        branch->Selected = 1;
        return branch;
    }

    void TearDown() override {
        WorkAreaGizmo = nullptr;
        WorkAreaLeft = WorkAreaRight = WorkAreaFront = WorkAreaBack = 0;
        StoreTest::TearDown();
    }

  private:
    static Object* Column() {
        AddObject("column", 0, 0);
        AddVertex(0, 0, 1);
        AddVertex(2, 0, 3);
        return CurrentObject();
    }
};

TEST_F(ScenePositioningTest, TheGizmoIsToldHowFarWhatIsSelectedIsFromAPlane) {
    const double ground[] = {0, 0, 1, 0};

    const struct {
        double Z;
        int Touches;
        double Distance;
    } cases[] = {{0, 1, 1}, {4, 1, 5}, {-5, 1, -2}, {-1, 0, 0}, {-2, 0, 0}, {-3, 0, 0}};

    for (const auto& example : cases) {
        ResetStorage();
        Place(0, 0, example.Z);
        Place(7, 0, example.Z > 0 ? 50 : example.Z)->Selected = example.Z > 0;
        double distance = 0;
        EXPECT_EQ(TouchOfSelectedObjects(ground, distance), example.Touches) << example.Z;
        EXPECT_EQ(distance, example.Distance) << example.Z;
    }
}

TEST_F(ScenePositioningTest, TheCentreIsThatOfTheBoxAroundAllThatIsSelected) {
    Place(0, 0, 0);
    Place(10, 4, 0);
    Place(100, 100, 100)->Selected = 0;
    double centre[3];
    CentreOfSelectedObjects(centre);
    EXPECT_EQ(centre[0], 6);
    EXPECT_EQ(centre[1], 2);
    EXPECT_EQ(centre[2], 2);
}

} // namespace
