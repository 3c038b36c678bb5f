#include "files/merge.h"

#include "base/memory.h"
#include "reading.h"
#include "store/material_list.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/store_checker.h"
#include "store/store_test.h"
#include "store/texture_list.h"

namespace {

class MergeTest : public StoreTest {
  protected:
    static Material* AddNamed(const char* name, float red) {
        Material* material = NewMaterial();
        RenameMaterial(material, name);
        material->Diffuse[0] = red;
        AddMaterial(material);
        return material;
    }

    static Texture* AddFile(const char* name, int clamp) {
        Texture* texture = NewTexture();
        texture->FileName = CopyOfString(name);
        texture->ClampS = clamp;
        AddTextureToList(texture);
        return texture;
    }

    static Object* AddMarked(const char* name, int mark) {
        Object* object = AddObject(name, 0, 0);
        object->MergeMark = mark;
        return object;
    }

    /// "Name/red of Diffuse" of every material of the main file, in order.
    static std::string Materials() {
        std::string text;
        for (const Material* material : Along<&Material::Next>(MainFile.FirstMaterial))
            text += std::string(text.empty() ? "" : " ") + material->Name + std::to_string(int(material->Diffuse[0]));
        return text;
    }

    static std::string Objects() {
        std::string text;
        for (const Object* object : EveryObject(MainFile))
            text += std::string(text.empty() ? "" : " ") + object->Name;
        return text;
    }

    static void CloseMerge() {
        PointToMerge(1);
        ResetStorage();
        PointToMerge(0);
    }
};

TEST_F(MergeTest, SharesEqualMaterialsAndTexturesAndAdoptsTheOthersThatAreUsed) {
    Object* main = AddObject("Main", 0, 0);
    Material* red = AddNamed("Red", 1);
    AddNamed("Grey", 0);
    CurrentMaterial() = red;
    AddFile("brick.rgb", 0);
    Texture* chosen = AddFile("grass.rgb", 0);
    TriangleAt(0)->Material = red;
    CopyCurrentObject();

    PointToMerge(1);
    AddMarked("unpicked", 0);
    TriangleAt(0)->Material = AddNamed("Unpicked", 5);
    Material *equalRed = AddNamed("Red", 1), *otherRed = AddNamed("Red", 2), *unused = AddNamed("Unused", 3),
             *twin = AddNamed("Red", 2), *under = AddNamed("Under", 4);
    Texture *equalBrick = AddFile("brick.rgb", 0), *clamped = AddFile("brick.rgb", 1);
    AddMarked("zoo", 1);
    Polygon* plain = TriangleAt(0);
    plain->Material = equalRed;
    plain->TextureMaterial = unused;
    Polygon* second = TriangleAt(5);
    second->Material = twin;
    second->TextureMaterial = nullptr;
    AddMarked("arch", 1);
    Polygon* textured = TriangleAt(0);
    textured->Material = otherRed;
    textured->TextureMaterial = under;
    textured->Texture = equalBrick;
    Polygon* other = TriangleAt(5);
    other->Material = equalRed;
    other->TextureMaterial = equalRed;
    other->Texture = clamped;
    PointToMerge(0);
    WorkSaved = 1;

    MergePickedObjects();
    CloseMerge();

    EXPECT_EQ(Objects(), "arch Main zoo");
    EXPECT_EQ(CurrentObject(), main);
    EXPECT_EQ(main->UndoCopy, nullptr);
    EXPECT_EQ(WorkSaved, 0);
    EXPECT_EQ(Materials(), "Red1 Grey0 Red2 Under4");
    EXPECT_EQ(CurrentMaterial(), red);
    EXPECT_EQ(plain->Material, red);
    EXPECT_EQ(plain->TextureMaterial, red);
    EXPECT_EQ(second->Material, textured->Material);
    EXPECT_EQ(second->TextureMaterial, second->Material);
    EXPECT_EQ(std::string(textured->TextureMaterial->Name), "Under");
    EXPECT_EQ(other->TextureMaterial, red);
    EXPECT_EQ(textured->Texture, MainFile.FirstTexture);
    EXPECT_EQ(other->Texture, chosen->Next);
    EXPECT_EQ(other->Texture->ClampS, 1);
    EXPECT_EQ(CurrentTexture(), chosen);
    EXPECT_EQ(CheckFile(MainFile), "");
}

TEST_F(MergeTest, NothingPickedAndCancelLeaveNoTrace) {
    AddObject("Main", 0, 0);
    AddNamed("Red", 1);
    CopySceneForUndo();
    CopyCurrentObject();
    const Object* undo = CurrentObject()->UndoCopy;
    const Branch* sceneUndo = SceneUndo;
    PointToMerge(1);
    AddMarked("other", 0);
    TriangleAt(0)->Material = AddNamed("Blue", 2);
    PointToMerge(0);
    WorkSaved = 1;
    MergePickedObjects();
    PickAllMergeObjects(1);
    CloseMerge();
    EXPECT_EQ(Objects(), "Main");
    EXPECT_EQ(Materials(), "Red1");
    EXPECT_EQ(CurrentObject()->UndoCopy, undo);
    EXPECT_EQ(SceneUndo, sceneUndo);
    EXPECT_EQ(CheckFile(MainFile), "");
    EXPECT_EQ(MergeFile.FirstObject, nullptr);
}

} // namespace
