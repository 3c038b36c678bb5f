#include "base/memory.h"
#include "store/material_list.h"
#include "store/store_checker.h"
#include "store/store_test.h"
#include "store/texture_list.h"

#include <functional>

namespace {

Material* NamedMaterial(const char* name) {
    Material* material = NewMaterial();
    RenameMaterial(material, name);
    return material;
}

Texture* NamedTexture(const char* name) {
    Texture* texture = NewTexture();
    texture->FileName = CopyOfString(name);
    return texture;
}

auto Materials() {
    return Along<&Material::Next>(FirstMaterial());
}

class ListsTest : public StoreTest {};

TEST_F(ListsTest, MaterialsKeepTheirOrderAndTheFirstIsCurrent) {
    Material *a = NamedMaterial("a"), *b = NamedMaterial("b"), *c = NamedMaterial("c");
    for (Material* material : {a, b, c})
        AddMaterial(material);
    EXPECT_EQ(Names(Materials()), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(CurrentMaterial(), a);
    CurrentMaterial() = c;
    DeleteMaterial(c);
    EXPECT_EQ(CurrentMaterial(), b);
    AddMaterial(NamedMaterial("d"));
    EXPECT_EQ(Names(Materials()), (std::vector<std::string>{"a", "b", "d"}));
    DeleteMaterial(a);
    EXPECT_EQ(CurrentMaterial(), b);

    PointToMerge(1);
    AddMaterial(NamedMaterial("m"));
    EXPECT_EQ(CurrentMaterial(), b);
    FreeAllMaterials();
    EXPECT_EQ(CurrentMaterial(), b);
    PointToMerge(0);
    AddMaterial(NamedMaterial("e"));
    EXPECT_EQ(Names(Materials()), (std::vector<std::string>{"b", "d", "e"}));
    FreeAllMaterials();
    EXPECT_EQ(CurrentMaterial(), nullptr);
    AddMaterial(a = NamedMaterial(nullptr));
    EXPECT_STREQ(a->Name, "Unnamed");
    DeleteMaterial(a);
    EXPECT_EQ(CurrentMaterial(), nullptr);
    EXPECT_EQ(FirstMaterial(), nullptr);
}

TEST_F(ListsTest, AMaterialMovedByHandIsNotAppendedTo) {
    Material *a = NamedMaterial("a"), *b = NamedMaterial("b");
    AddMaterial(a);
    AddMaterial(b);
    // b to the front, as the palette does.
    a->Next = nullptr;
    a->Prev = b;
    b->Next = a;
    b->Prev = nullptr;
    FirstMaterial() = b;
    AddMaterial(NamedMaterial("c"));
    EXPECT_EQ(Names(Materials()), (std::vector<std::string>{"b", "a", "c"}));
    // c away by hand and in again.
    Material* c = a->Next;
    a->Next = nullptr;
    c->Prev = nullptr;
    AddMaterial(NamedMaterial("d"));
    AddMaterial(c);
    EXPECT_EQ(Names(Materials()), (std::vector<std::string>{"b", "a", "d", "c"}));
}

TEST_F(ListsTest, MaterialsAreTheSameByNameAndColours) {
    const std::vector<std::function<void(Material*)>> changes = {
        [](Material* m) { m->Ambient[0] = 0.5F; },  [](Material* m) { m->Diffuse[2] = 0.5F; },
        [](Material* m) { m->Specular[1] = 0.5F; }, [](Material* m) { m->Emission[0] = 0.5F; },
        [](Material* m) { m->Shininess = 1; },      [](Material* m) { m->Alpha = 0.5F; },
        [](Material* m) { RenameMaterial(m, "b"); }};
    Material* original = NamedMaterial("a");
    AddMaterial(original);
    for (const auto& change : changes) {
        Material* other = NewMaterial();
        CopyMaterial(other, original);
        other->PackedColour = 77;
        EXPECT_TRUE(MaterialsAreTheSame(original, other));
        EXPECT_EQ(FindMaterial(other), original);
        change(other);
        EXPECT_FALSE(MaterialsAreTheSame(original, other));
        EXPECT_EQ(FindMaterial(other), nullptr);
        FreeMaterial(other);
    }
}

TEST_F(ListsTest, TexturesKeepTheirOrderAndTheNewestIsCurrent) {
    Texture *a = NamedTexture("a"), *b = NamedTexture("b"), *c = NamedTexture("c");
    for (Texture* texture : {a, b, c})
        AddTextureToList(texture);
    EXPECT_EQ(CurrentTexture(), c);
    EXPECT_EQ(TextureExists("b"), b);
    EXPECT_EQ(TextureExists("B"), nullptr);
    PointToMerge(1);
    AddTextureToList(NamedTexture("m"));
    FreeAllTextures();
    EXPECT_EQ(CurrentTexture(), c);
    PointToMerge(0);
    DeleteCurrentTexture();
    EXPECT_EQ(CurrentTexture(), b);

    Texture* other = NamedTexture("a");
    EXPECT_EQ(FindTexture(other), a);
    const std::vector<std::function<void(Texture*)>> changes = {
        [](Texture* t) { t->Fast = 1; }, [](Texture* t) { t->ClampS = 1; }, [](Texture* t) { t->ClampT = 1; },
        [](Texture* t) { t->MinFilter = 272; }, [](Texture* t) { t->MagFilter = 272; }};
    for (const auto& change : changes) {
        const Texture before = *other;
        change(other);
        EXPECT_FALSE(TexturesAreTheSame(a, other));
        *other = before;
    }
    FreeTexture(other);
}

int PasteDiscards;

TEST_F(ListsTest, ReplacingMeetsEveryPolygonOfEveryObject) {
    Material *old = NamedMaterial("old"), *replacement = NamedMaterial("new");
    Texture *oldTexture = NamedTexture("old"), *newTexture = NamedTexture("new");
    AddMaterial(old);
    AddMaterial(replacement);
    AddTextureToList(oldTexture);
    AddTextureToList(newTexture);
    std::vector<Polygon*> polygons;
    for (const char* name : {"one", "two"}) {
        AddObject(name, 0, 0);
        Polygon* polygon = TriangleAt(0);
        Polygon* textured = TriangleAt(1, polygon);
        textured->Texture = oldTexture;
        polygon->TextureMaterial = textured->TextureMaterial = old;
        polygons.insert(polygons.end(), {polygon, textured});
    }
    Object* current = CurrentObject();
    CopyCurrentObject();
    PasteDiscards = 0;
    TheStorageSlots.FreePolygonPaste = [] { ++PasteDiscards; };
    SearchAndReplaceMaterial(old, replacement);
    EXPECT_EQ(PasteDiscards, 1);
    EXPECT_EQ(current->UndoCopy, nullptr);
    EXPECT_EQ(CurrentObject(), current);
    for (const Polygon* polygon : polygons) {
        EXPECT_EQ(polygon->Material, replacement);
        EXPECT_EQ(polygon->TextureMaterial, polygon->Texture ? replacement : old);
    }
    SearchAndReplaceTexture(oldTexture, newTexture);
    EXPECT_EQ(polygons[0]->Texture, nullptr);
    EXPECT_EQ(polygons[1]->Texture, newTexture);
    EXPECT_EQ(polygons[3]->Texture, newTexture);
    EXPECT_EQ(CheckFile(MainFile), "");
}

} // namespace
