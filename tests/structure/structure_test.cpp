#include "store/ring_model.h"

#include "store/accessors.h"
#include "store/integrity.h"
#include "store/objects.h"
#include "store/scene.h"
#include "store/structure_editing.h"
#include "store/undo.h"
#include "structure/lod_scale.h"
#include "structure/scene_operations.h"
#include "structure/structure_operations.h"

#include "support/test_seed.h"

#include <cmath>
#include <limits>

namespace {

class Structure : public RingModel {
  protected:
    static std::string Members() {
        std::string names;
        for (const Lod* lod : EveryLod(CurrentObject())) {
            names += std::string(lod->Name) + ":";
            for (const LodBead* bead : EveryLodBead(lod))
                names += std::string(" ") + bead->SubObject->Name;
            names += "\n";
        }
        return names;
    }

    static Branch* Place(Object* object, Branch* parent) {
        Branch* branch = AddBranch(parent, BranchAsChild);
        branch->Object = object;
        return branch;
    }

    static int Branches(Branch* tree, const Object* object) {
        int count = 0;
        for (const Branch* branch : EveryBranch(tree))
            count += branch->Object == object;
        return count;
    }
};

TEST_F(Structure, ADeletedSubObjectTakesTheVerticesThatNothingElseUses) {
    FirstLod();
    AddGrid(1, 1);
    AddSubObject("Second");
    AddSubObjectToLod();
    AddSubObjectToLod();
    EXPECT_EQ(Members(), "Lod1: SubObject1 Second\n");
    AddRing({FirstVertex(), FirstVertex()->Next, AddVertex(0, 0, 5)});
    DeleteSelectedSubObject();
    EXPECT_EQ(Vertices(), 4u);
    EXPECT_EQ(Polygons(), 1u);
    EXPECT_EQ(Members(), "Lod1: SubObject1\n");
    Undo();
    EXPECT_EQ(Vertices(), 5u);
    EXPECT_EQ(Polygons(), 2u);
    EXPECT_EQ(Members(), "Lod1: SubObject1 Second\n");
}

TEST_F(Structure, MembersGoWhereTheyAreTaken) {
    FirstLod();
    for (const char* name : {"b", "c", "d"}) {
        AddSubObject(name);
        AddSubObjectToLod();
    }
    const auto move = [](const char* name, int before) {
        MoveLodBead(LodBeadOf(SelectedLod(), SubObjectExists(name)), before);
        return Members();
    };
    EXPECT_EQ(move("b", 4), "Lod1: SubObject1 c d b\n");
    EXPECT_EQ(move("b", 0), "Lod1: b SubObject1 c d\n");
    EXPECT_EQ(move("d", 1), "Lod1: b d SubObject1 c\n");
    EXPECT_EQ(move("b", 3), "Lod1: d SubObject1 b c\n");
    CheckIntegrity();
}

TEST_F(Structure, TheFirstLevelBeyondTheEyeIsSeen) {
    FirstLod()->Distance = 10;
    AddLod("Far");
    SetLodDistance(50);
    const std::pair<double, const char*> seen[] = {{0, "Lod1"}, {9.9, "Lod1"}, {10, "Far"}, {49, "Far"}, {50, ""}};
    for (const auto& [distance, name] : seen) {
        SelectLodByDistance(distance);
        EXPECT_STREQ(SelectedLod() ? SelectedLod()->Name : "", name) << distance;
    }
    // None is selected: what needs one does nothing.
    SetLodDistance(3);
    AddSubObjectToLod();
    RemoveSubObjectFromLod();
    ShuffleSubObjectUp();
    DeleteSelectedLod();
    EXPECT_EQ(Members(), "Lod1: SubObject1\nFar:\n");
    EXPECT_EQ(UsableLodDistance(std::nan("")), 0);
    EXPECT_EQ(UsableLodDistance(std::numeric_limits<double>::infinity()), FarthestLodDistance);
}

TEST_F(Structure, NothingRefersToADeletedObject) {
    Object *const house = CurrentObject(), *const tree = AddObject("Tree", 0, 0);
    Branch* group = AddBranch(Scene(), BranchAsChild);
    Branch* below = Place(tree, Place(house, Place(tree, group)));
    Place(tree, Scene());
    Place(house, Scene());
    ScenePaste = CopyOfBranch(group);
    CopySceneForUndo();
    SelectedBranch() = below;
    KillObjectReferences(tree);
    EXPECT_EQ(Branches(Scene(), tree), 0);
    // A house hung below a tree, and went with it.
    EXPECT_EQ(Branches(Scene(), house), 1);
    EXPECT_EQ(SelectedBranch(), nullptr);
    EXPECT_EQ(SceneUndo, nullptr);
    EXPECT_EQ(ScenePaste, nullptr);
    KillObjectReferences(house);
    EXPECT_EQ(Branches(Scene(), house), 0);
    EXPECT_EQ(Branches(Scene(), nullptr), 2); // the root and the group
}

TEST(LodScale, LeadsFromTheNearestDistanceToTheInfinite) {
    const LodScale scale = {.Length = 800, .Nearest = 6, .HalfWidth = 370};
    EXPECT_DOUBLE_EQ(scale.DistanceAt(LodScale::Bottom), 6);
    EXPECT_DOUBLE_EQ(scale.DistanceAt(LodScale::Bottom + 400), 12);
    EXPECT_DOUBLE_EQ(scale.DistanceAt(scale.Top()), 6 * 370 / 0.2);
    for (int y = LodScale::Bottom; y < scale.Top(); ++y) {
        EXPECT_LT(scale.DistanceAt(y), scale.DistanceAt(y + 1));
        EXPECT_EQ(scale.HeightOf(scale.DistanceAt(y)), y);
    }
}

TEST(LodScale, LabelsStandApartNearTheirPlaces) {
    constexpr int gap = 18, bottom = 16, top = 816;
    std::mt19937 random(TestSeed());
    for (int trial = 0; trial < 2000; ++trial) {
        std::vector<int> wanted(random() % 12);
        const int reach = trial % 2 ? 800 : 60;
        for (int& height : wanted)
            height = top - static_cast<int>(random() % reach);
        std::sort(wanted.begin(), wanted.end());
        std::vector<int> heights = wanted;
        SpreadLabels(heights, gap, bottom, top);
        for (std::size_t i = 0; i < heights.size(); ++i) {
            EXPECT_GE(heights[i], i ? heights[i - 1] + gap : bottom);
            EXPECT_LE(heights[i], top);
            const bool free = (i == 0 || wanted[i] - heights[i - 1] >= gap) &&
                              (i + 1 == heights.size() || heights[i + 1] - wanted[i] >= gap);
            EXPECT_TRUE(!free || heights[i] == wanted[i]) << "a label moved without need";
        }
    }
}

} // namespace
