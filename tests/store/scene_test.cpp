#include "base/memory.h"
#include "store/store_checker.h"
#include "store/store_test.h"

namespace {

/// The names of a tree in brackets: "Scene(b(d)a)"; nameless branches are "-".
std::string Shape(const Branch* first) {
    std::string shape;
    for (const Branch* branch = first; branch; branch = branch->Next) {
        shape += branch->Name ? branch->Name : "-";
        if (branch->FirstChild)
            shape += "(" + Shape(branch->FirstChild) + ")";
    }
    return shape;
}

Branch* Grow(Branch* place, int direction, const char* name) {
    Branch* branch = AddBranch(place, direction);
    branch->Name = CopyOfString(name);
    return branch;
}

class SceneTest : public StoreTest {
  protected:
    void TearDown() override {
        EXPECT_EQ(CheckFile(MainFile), "");
        StoreTest::TearDown();
    }
};

TEST_F(SceneTest, BranchesGrowBelowAndBeside) {
    Grow(Scene(), BranchAsChild, "a");
    Branch* b = Grow(Scene(), BranchAsChild, "b");
    Branch* c = Grow(Scene(), BranchAsChild, "c");
    EXPECT_EQ(Shape(Scene()), "Scene(cba)");
    EXPECT_EQ(c->Parent, Scene());
    EXPECT_EQ(b->Parent, nullptr);
    EXPECT_EQ(ParentOfBranch(b), Scene());
    WorkSaved = 1;
    Grow(b, BranchAsSibling, "d");
    EXPECT_EQ(WorkSaved, 0);
    Grow(Scene()->FirstChild->Next->Next->Next, BranchAsSibling, "e");
    Grow(b, BranchAsChild, "f");
    EXPECT_EQ(Shape(Scene()), "Scene(cb(f)dae)");

    testing::internal::CaptureStderr();
    EXPECT_EQ(AddBranch(b, 2), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Bad branch direction, returning NULL, crash expected!\n");
}

TEST_F(SceneTest, PruningTakesTheSubtreeAndNothingElse) {
    Branch* a = Grow(Scene(), BranchAsChild, "a");
    Branch* b = Grow(a, BranchAsSibling, "b");
    Branch* c = Grow(b, BranchAsSibling, "c");
    Grow(Grow(a, BranchAsChild, "x"), BranchAsChild, "y");
    PruneBranch(a);
    EXPECT_EQ(Shape(Scene()), "Scene(bc)");
    EXPECT_EQ(b->Parent, Scene());
    EXPECT_EQ(b->Prev, nullptr);
    PruneBranch(c);
    PruneBranch(b);
    EXPECT_EQ(Shape(Scene()), "Scene");
}

TEST_F(SceneTest, CopiesKeepTheShapeAndOnlyObjectsKeepTheirPlace) {
    Object* object = CurrentObject();
    Branch* a = Grow(Scene(), BranchAsChild, "a");
    Branch* b = Grow(a, BranchAsSibling, "b");
    Branch* nameless = AddBranch(a, BranchAsChild);
    Grow(nameless, BranchAsSibling, "n");
    a->Transform = b->Transform = TranslationMatrix(1, 2, 3);
    b->Object = object;
    b->Visible = 0;
    nameless->Collapsed = 1;

    ScenePaste = CopyOfBranch(a);
    EXPECT_EQ(Shape(ScenePaste), "a(-n)");
    EXPECT_EQ(ScenePaste->Transform, IdentityMatrix);
    EXPECT_EQ(ScenePaste->FirstChild->Collapsed, 1);
    EXPECT_EQ(a->Copy, ScenePaste);
    EXPECT_EQ(ScenePaste->Copy, a);
    FreeUpBranch(ScenePaste);
    ScenePaste = BranchCopier(a);
    EXPECT_EQ(Shape(ScenePaste), "a(-n)b");
    EXPECT_EQ(ScenePaste->Next->Transform, b->Transform);
    EXPECT_EQ(ScenePaste->Next->Object, object);
    EXPECT_EQ(ScenePaste->Next->Visible, 0);
    EXPECT_EQ(CopyOfBranch(nullptr), nullptr);
}

std::string Scanned;

TEST_F(SceneTest, AScanMeetsChildrenBeforeTheirParents) {
    Branch* a = Grow(Scene(), BranchAsChild, "a");
    Grow(a, BranchAsSibling, "b");
    Branch* c = Grow(a, BranchAsChild, "c");
    Grow(c, BranchAsSibling, "d");
    Grow(c, BranchAsChild, "e");
    const auto note = [](Branch* branch) { Scanned += branch->Name; };
    Scanned.clear();
    ScanScene(Scene(), note);
    EXPECT_EQ(Scanned, "Sceneecdab");
    Scanned.clear();
    ScanScene(a, note);
    EXPECT_EQ(Scanned, "aecd") << "siblings of the branch itself are left out";
    Scanned.clear();
    for (Branch* branch : EveryBranch(a->FirstChild))
        note(branch);
    EXPECT_EQ(Scanned, "ced");
}

int Deselections;

TEST_F(SceneTest, UndoTogglesAndDeselects) {
    Grow(Scene(), BranchAsChild, "a");
    UndoScene();
    EXPECT_EQ(Shape(Scene()), "Scene(a)") << "nothing to undo";
    CopySceneForUndo();
    Branch* b = Grow(Scene(), BranchAsChild, "b");
    b->Selected = 1;
    SelectedBranch() = b;
    Deselections = 0;
    TheSceneSlots.DeselectScene = [] { ++Deselections; };
    SceneChangedSize = 0;
    UndoScene();
    EXPECT_EQ(Shape(Scene()), "Scene(a)");
    EXPECT_EQ(SelectedBranch(), nullptr);
    EXPECT_EQ(Deselections, 1);
    EXPECT_EQ(SceneChangedSize, 1);
    UndoScene();
    EXPECT_EQ(Shape(Scene()), "Scene(ba)");
    NewScene();
    EXPECT_EQ(Shape(Scene()), "Scene");
}

TEST_F(SceneTest, NoTreeIsTooDeep) {
    Branch* branch = Scene();
    for (int i = 0; i < 200000; ++i)
        branch = AddBranch(branch, BranchAsChild);
    CopySceneForUndo();
    int count = 0;
    for ([[maybe_unused]] Branch* each : EveryBranch(SceneUndo))
        ++count;
    EXPECT_EQ(count, 200001);
    ScanScene(Scene(), [](Branch* each) { each->Selected = 1; });
    PruneBranch(Scene()->FirstChild);
    FreeScene();
}

} // namespace
