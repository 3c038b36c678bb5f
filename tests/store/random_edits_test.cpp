#include "base/memory.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/duplicates.h"
#include "store/integrity.h"
#include "store/material_list.h"
#include "store/selection_lists.h"
#include "store/sorting.h"
#include "store/store_checker.h"
#include "store/store_test.h"
#include "store/texture_list.h"
#include "support/test_seed.h"

#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

/// Random edits of both files, as tools and commands string them together. The seed is printed; KIRVO_TEST_SEED repeats
/// a run and KIRVO_TEST_OPERATIONS makes it longer.
class RandomEdits {
  public:
    explicit RandomEdits(unsigned seed) : Random(seed) {}

    void Step() {
        static constexpr struct {
            int Weight;
            void (RandomEdits::*Edit)();
        } edits[] = {
            {12, &RandomEdits::AddPolygonOnOldVertices},
            {12, &RandomEdits::AddPolygonOnNewVertices},
            {4, &RandomEdits::AddLooseVertex},
            {8, &RandomEdits::RemovePolygon},
            {4, &RandomEdits::MovePolygon},
            {4, &RandomEdits::TurnPolygon},
            {4, &RandomEdits::CopyPolygon},
            {3, &RandomEdits::SelectSomething},
            {3, &RandomEdits::CleanUp},
            {2, &RandomEdits::MergeVertices},
            {2, &RandomEdits::ChangeSubObjects},
            {2, &RandomEdits::ChangeLods},
            {3, &RandomEdits::Snapshot},
            {3, &RandomEdits::UndoOrRedo},
            {2, &RandomEdits::ChangeObjects},
            {4, &RandomEdits::ChangeScene},
            {2, &RandomEdits::ChangeMaterials},
            {1, &RandomEdits::ChangeTextures},
            {1, &RandomEdits::SwitchFile},
            {1, &RandomEdits::MergeObject},
        };

        int total = 0;
        for (const auto& edit : edits)
            total += edit.Weight;
        int choice = Below(total);
        for (const auto& edit : edits)
            if ((choice -= edit.Weight) < 0)
                return (this->*edit.Edit)();
    }

  private:
    int Below(int limit) { return static_cast<int>(Random() % static_cast<unsigned>(limit)); }

    /// A random record of a walk, or null; long walks are only entered a little way.
    template <class Walk>
    auto Any(Walk walk) -> decltype(*walk.begin()) {
        decltype(*walk.begin()) chosen = nullptr;
        int steps = Below(40);
        for (auto* record : walk) {
            chosen = record;
            if (steps-- == 0)
                break;
        }
        return chosen;
    }

    Polygon* AnyPolygon() { return Any(EveryPolygon(CurrentObject())); }

    Vertex* NewCorner() { return AddVertex(Below(5), Below(5), Below(5)); }

    /// Small integer coordinates, so that places coincide and polygons are often degenerate.
    void AddPolygonOnNewVertices() {
        PolygonBead* beads = nullptr;
        for (int corners = 3 + Below(3); corners > 0; --corners)
            AddPolygonBead(beads, NewCorner());
        if (Below(5) == 0)
            DeleteLastPolygonBead(beads, 1);
        Commit(beads);
    }

    void AddPolygonOnOldVertices() {
        PolygonBead* beads = nullptr;
        for (int corners = 1 + Below(5); corners > 0; --corners) {
            Vertex* vertex = Any(EveryVertex(CurrentObject()));
            AddPolygonBead(beads, vertex ? vertex : NewCorner());
        }
        Commit(beads);
    }

    void Commit(PolygonBead* beads) {
        CurrentLighting = Below(3);
        Polygon* parent = Below(4) == 0 ? AnyPolygon() : nullptr;
        if (parent)
            SelectedSubObject() = parent->SubObject;
        Polygon* polygon = AddPolygon(beads, parent);
        polygon->LightGroup = Below(2);
        if (Below(3) == 0) {
            polygon->Texture = FirstTexture();
            polygon->TextureMaterial = FirstMaterial();
        }
        CurrentLighting = LightingFaceted;
        if (CurrentMaterial() && !FindMaterial(CurrentMaterial()))
            polygon->Material = nullptr;
        if (Mergeing)
            polygon->Material = FirstMaterial();
    }

    void AddLooseVertex() { NewCorner(); }

    void RemovePolygon() {
        const bool withVertices = Below(2) == 0;
        if (withVertices)
            MakeConnections();
        if (Polygon* polygon = AnyPolygon())
            DeletePolygon(polygon, withVertices);
    }

    void MovePolygon() {
        Polygon* polygon = AnyPolygon();
        Polygon* parent = AnyPolygon();
        if (!polygon || !parent || polygon == parent || parent->Parent || polygon->FirstChild)
            return;
        UnlinkPolygon(polygon);
        if (Below(2)) {
            LinkPolygon(polygon, parent);
            polygon->SubObject = parent->SubObject;
        } else {
            LinkPolygon(polygon, nullptr);
        }
    }

    void TurnPolygon() {
        if (Polygon* polygon = AnyPolygon())
            ReversePolygon(polygon);
    }

    void CopyPolygon() {
        Polygon* polygon = AnyPolygon();
        if (!polygon || polygon->Parent)
            return;
        MakeConnections();
        Polygon* copy = CopyOfPolygon(polygon, 0);
        if (Below(4) == 0) {
            for (const PolygonBead* bead : EveryBead(copy))
                --bead->Vertex->Uses;
            LosePolygon(copy);
        } else {
            ReversePolygon(copy);
            LinkPolygon(copy, nullptr);
        }
    }

    void SelectSomething() {
        if (Polygon* polygon = AnyPolygon()) {
            polygon->Selected = !polygon->Selected;
            PolygonSelectionChanged() = 1;
        }
        if (Vertex* vertex = Any(EveryVertex(CurrentObject()))) {
            vertex->Selected = !vertex->Selected;
            VertexSelectionChanged() = 1;
        }
    }

    void CleanUp() {
        CleanUpObject();
        std::size_t selected = 0;
        for (const Polygon* polygon : EveryPolygon(CurrentObject()))
            selected += polygon->Selected != 0;
        EXPECT_EQ(Collect(Along<&Polygon::NextSelected>(FirstSelectedPolygon())).size(), selected);
    }

    void MergeVertices() { DeleteDuplicateVertices(); }

    void ChangeSubObjects() {
        switch (Below(3)) {
        case 0:
            AddSubObject(Below(2) ? "roof" : "Wall");
            break;
        case 1:
            DeleteSubObject(Any(EverySubObject((FirstSubObject(), CurrentObject()))), 0);
            break;
        default:
            SelectedSubObject() = Any(EverySubObject((FirstSubObject(), CurrentObject())));
        }
    }

    void ChangeLods() {
        switch (Below(4)) {
        case 0:
            AddLod("near")->Distance = Below(4);
            break;
        case 1:
            if (SelectedLod())
                AddLodBead(SelectedSubObject());
            break;
        case 2:
            DeleteLod(Any(EveryLod((FirstLod(), CurrentObject()))));
            break;
        default:
            if (LodBead* bead = Any(EveryLodBead(FirstLod())))
                DeleteLodBead(bead);
        }
    }

    void Snapshot() { CopyCurrentObject(); }

    void UndoOrRedo() { Undo(); }

    void ChangeObjects() {
        switch (Below(4)) {
        case 0:
            if (const Object* unused = FindUnusedObject())
                ForgetInScene(unused);
            AddObject(Below(2) ? "House" : nullptr, Below(2), Below(2));
            break;
        case 1:
            CurrentObject() = Any(EveryObject((CurrentObject(), *CurrentFile)));
            break;
        case 2:
            SortObjectList();
            break;
        default:
            if (Below(4) == 0) {
                ForgetInScene(CurrentObject());
                DeleteObject(CurrentObject());
            }
        }
    }

    /// Deleting an object leaves the branches that show it to the caller.
    void ForgetInScene(const Object* object) {
        FreeUpBranch(SceneUndo);
        FreeUpBranch(ScenePaste);
        SceneUndo = ScenePaste = nullptr;
        for (Branch* branch : EveryBranch(CurrentFile->Scene))
            if (branch->Object == object)
                branch->Object = nullptr;
    }

    void ChangeScene() {
        if (Mergeing)
            return;
        Branch* branch = Any(EveryBranch(Scene()));
        switch (Below(5)) {
        case 0:
        case 1: {
            Branch* added = AddBranch(branch, branch == Scene() ? BranchAsChild : Below(2));
            added->Object = Below(3) ? CurrentObject() : nullptr;
            break;
        }
        case 2:
            CopySceneForUndo();
            if (branch != Scene())
                PruneBranch(branch);
            break;
        case 3:
            UndoScene();
            break;
        default:
            FreeUpBranch(ScenePaste);
            ScenePaste = CopyOfBranch(branch);
            GraftBranch(CopyOfBranch(branch), Scene());
        }
        if (Below(200) == 0)
            NewScene();
    }

    void ChangeMaterials() {
        AddMaterial(NewMaterial());
        Material* material = FirstMaterial();
        if (Below(2) && material->Next) {
            Material* other = material->Next;
            SearchAndReplaceMaterial(other, material);
            // A textured-only material of an untextured polygon is left alone by replacing.
            for (const Object* object : EveryObject(*CurrentFile))
                for (Polygon* polygon : EveryPolygon(object))
                    if (polygon->TextureMaterial == other)
                        polygon->TextureMaterial = material;
            DeleteMaterial(other);
        }
    }

    void ChangeTextures() {
        Texture* texture = NewTexture();
        texture->FileName = CopyOfString("bark.rgb");
        AddTextureToList(texture);
        if (Texture* other = texture->Prev) {
            SearchAndReplaceTexture(other, texture);
            DeleteTexture(other);
        }
    }

    void SwitchFile() { PointToMerge(!Mergeing); }

    /// Takes an object of the merge file over into the main file.
    void MergeObject() {
        PointToMerge(1);
        Object* object = CurrentFile->FirstObject;
        if (!object) {
            PointToMerge(0);
            return;
        }
        CurrentObject() = object;
        if (object->UndoCopy) {
            FreeObject(object->UndoCopy);
            object->UndoCopy = nullptr;
        }
        LinkedList<&Object::Next, &Object::Prev>::Remove(CurrentFile->FirstObject, object);
        CurrentFile->CurrentObject = CurrentFile->FirstObject;
        PointToMerge(0);
        CurrentObject();
        LinkedList<&Object::Next, &Object::Prev>::InsertFirst(CurrentFile->FirstObject, object);
        CurrentObject() = object;
        for (Polygon* polygon : EveryPolygon(object)) {
            polygon->Material = polygon->TextureMaterial = FirstMaterial();
            polygon->Texture = FirstTexture();
        }
        SortObjectList();
    }

    std::mt19937 Random;
};

class RandomEditsTest : public StoreTest {};

TEST_F(RandomEditsTest, EveryRuleHoldsAfterEveryEdit) {
    const unsigned seed = TestSeed();
    const unsigned operations = FromEnvironment("KIRVO_TEST_OPERATIONS", 300000);
    std::printf("seed %u\n", seed);
    RandomEdits edits(seed);
    for (unsigned i = 0; i < operations; ++i) {
        edits.Step();
        CheckIntegrity();
        for (const FileStruct* file : {&MainFile, &MergeFile}) {
            const std::string problems = CheckFile(*file);
            ASSERT_EQ(problems, "") << "seed " << seed << ", edit " << i;
        }
        // A model that only grew would make the checks, not the edits, take the time.
        if (i % 500 == 499)
            ResetStorage();
    }
}

} // namespace
