#include "materials/material_usage.h"

#include "base/directories.h"
#include "gooey/file_selector.h"
#include "gooey/program_windows.h"
#include "gooey/toolkit_test.h"
#include "materials/default_materials.h"
#include "materials/material_definitions.h"
#include "materials/materials_file.h"
#include "platform/definitions.h"
#include "store/material_list.h"
#include "store/selection_lists.h"
#include "store/store_test.h"
#include "support/temporary_directory.h"

#include <limits>

namespace {

std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const Material* material : Along<&Material::Next>(FirstMaterial()))
        names.push_back(material->Name);
    return names;
}

using Strings = std::vector<std::string>;

class MaterialUsage : public StoreTest {
  protected:
    void SetUp() override {
        StoreTest::SetUp();
        MakeDefaultMaterials();
        Material* material = FirstMaterial();
        for (Material** place : {&grey, &red, &green, &blue}) {
            *place = material;
            material = material->Next;
        }
    }

    void TearDown() override {
        TheMaterialSlots = {};
        StoreTest::TearDown();
    }

    Material *grey, *red, *green, *blue;
};

TEST_F(MaterialUsage, OnlyWhatNoPolygonShowsIsDeleted) {
    Texture texture = {};
    Polygon* textured = TriangleAt(0);
    textured->Material = red;
    textured->Texture = &texture;
    textured->TextureMaterial = green;
    Polygon* plain = TriangleAt(5);
    plain->Material = red;
    plain->TextureMaterial = blue; // of a texture that it had
    DeleteUnusedMaterials();
    EXPECT_EQ(Names(), (Strings{"Red", "Green"}));
    EXPECT_EQ(CurrentMaterial(), red);

    DeletePolygon(textured, 1);
    DeletePolygon(plain, 1);
    DeleteUnusedMaterials();
    EXPECT_EQ(Names(), Strings{"Red"});
}

TEST_F(MaterialUsage, MovesTheCurrentMaterialAsFarAsTheListGoes) {
    static Strings drawn;
    TheMaterialSlots.DrawPaletteSlot = [](Material* material) { drawn.push_back(material->Name); };

    const struct {
        int Places; // to the right
        Strings Names, Drawn;
    } cases[] = {
        {-1, {"Grey", "Red", "Green", "Blue"}, {"Grey"}},
        {1, {"Red", "Grey", "Green", "Blue"}, {"Red", "Grey"}},
        {8, {"Red", "Green", "Blue", "Grey"}, {"Green", "Blue", "Grey"}},
        {-2, {"Red", "Grey", "Green", "Blue"}, {"Blue", "Green", "Grey"}},
        {-1, {"Grey", "Red", "Green", "Blue"}, {"Red", "Grey"}},
    };

    int slot = 0;
    for (Material* material : {grey, red, green, blue})
        material->PaletteSlot = slot++;
    for (const auto& c : cases) {
        drawn.clear();
        c.Places < 0 ? MoveMaterialLeft(-c.Places) : MoveMaterialRight(c.Places);
        EXPECT_EQ(Names(), c.Names) << c.Places;
        EXPECT_EQ(drawn, c.Drawn) << c.Places;
        slot = 0;
        for (const Material* material : Along<&Material::Next>(FirstMaterial()))
            EXPECT_EQ(material->PaletteSlot, slot++);
    }
    // The list's end is still known.
    AddMaterial(NewColouredMaterial(6));
    EXPECT_EQ(Names().back(), "Cyan");
}

TEST_F(MaterialUsage, GeneratesTheSmallestFreeLightGroup) {
    const struct {
        std::vector<int> Groups;
        int Free;
    } cases[] = {{{}, 1},          {{0}, 1}, {{0, 1, 3}, 2}, {{0, 1, 2}, 3}, {{2}, 0}, {{-7, 0, 2000000000}, 1},
                 {{1, 1, 0, 0}, 2}};

    for (const auto& c : cases) {
        AddObject("object", 0, 0);
        for (const int group : c.Groups)
            TriangleAt(0)->LightGroup = group;
        EXPECT_EQ(GenerateLightGroup(), c.Free);
    }
}

TEST_F(MaterialUsage, AppliesToTheSelectedPolygons) {
    Polygon* selected = TriangleAt(0);
    Polygon* other = TriangleAt(5);
    ApplyToSelectedPolygons(ApplyBoth);
    EXPECT_EQ(CurrentObject()->UndoCopy, nullptr);

    selected->Selected = 1;
    PolygonSelectionChanged() = 1;
    CurrentMaterial() = blue;
    CurrentLighting = LightingUnlit;
    ApplyToSelectedPolygons(ApplyMaterial);
    EXPECT_EQ(selected->Material, blue);
    EXPECT_EQ(selected->Lighting, LightingSmooth);
    ApplyToSelectedPolygons(ApplyLighting);
    EXPECT_EQ(selected->Lighting, LightingUnlit);
    NormalsOK() = 1;
    ApplyLightGroupToSelectedPolygons(0);
    EXPECT_EQ(selected->LightGroup, 1);
    EXPECT_FALSE(NormalsOK());
    EXPECT_EQ(other->Material, grey);
    EXPECT_EQ(other->LightGroup, 0);
    Undo();
    EXPECT_EQ(FirstPolygon()->LightGroup + FirstPolygon()->Next->LightGroup, 0);
    ApplyLightGroupToSelectedPolygons(1);
}

TEST_F(MaterialUsage, DefinesTheListFromNumberEightOn) {
    CurrentMaterial()->Diffuse[0] = 1;
    CurrentMaterial()->Diffuse[2] = 0;
    RedefineMaterials();
    EXPECT_EQ(grey->PackedColour, 0xff007fff);
    EXPECT_EQ(blue->GLIndex, 11);
    ASSERT_TRUE(gl::FindMaterialDefinition(9));
    EXPECT_EQ(gl::FindMaterialDefinition(9)->specular[1], 0.8f);
    EXPECT_EQ(gl::FindMaterialDefinition(9)->shininess, 64);
    grey->Alpha = std::numeric_limits<float>::quiet_NaN();
    grey->Diffuse[1] = 1e30f;
    RedefineMaterials();
    EXPECT_EQ(grey->PackedColour, 0x0000ffffu);
}

// What the user is asked and told.
class MaterialCommands : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        ResetStorage();
        MakeDefaultMaterials();
        CopyFileName(FilePath, directory.Path().c_str());
        MainWindow = Open("Main", 20, 20, 500, 400);
        Settle();
    }

    void TearDown() override {
        ToolkitTest::TearDown();
        MainWindow = nullptr;
        FilePath[0] = '\0';
        ResetStorage();
    }

    // Whether a message is open; it is then closed.
    static bool Told() {
        Settle();
        if (!MessageWindow)
            return false;
        Play("in \"" + std::string(MessageWindow->Title) + "\"\nmove 5 5\nbutton Continue");
        return true;
    }

    TemporaryDirectory directory;
};

TEST_F(MaterialCommands, TheUsedAndTheLastMaterialStay) {
    Polygon* polygon = TriangleAt(0);
    testing::internal::CaptureStdout();
    DeleteCurrentMaterial();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Material used in object: Unnamed\n");
    EXPECT_TRUE(Told());
    EXPECT_EQ(Names().size(), 4u);

    DeletePolygon(polygon, 1);
    for (int i = 0; i < 3; ++i)
        DeleteCurrentMaterial();
    EXPECT_FALSE(Told());
    EXPECT_EQ(Names(), Strings{"Blue"});
    DeleteCurrentMaterial();
    EXPECT_TRUE(Told());
    EXPECT_EQ(Names(), Strings{"Blue"});
}

TEST_F(MaterialCommands, PalettesAreSavedAndLoadedByTheFileSelector) {
    SaveMaterialPalette();
    Settle();
    Play("in \"Save file as\"\nmove 60 110\ntype mine\nkey Return");
    EXPECT_TRUE(std::filesystem::exists(directory.Path() / "mine.kirvo_materials"));

    DeleteMaterial(FirstMaterial());
    LoadMaterialPalette();
    Settle();
    Play("in \"Open file\"\nmove 60 110\nbutton mine.kirvo_materials\nbutton Open");
    EXPECT_EQ(Names(), (Strings{"Red", "Green", "Blue", "Grey"}));

    std::filesystem::resize_file(directory.Path() / "mine.kirvo_materials", 10);
    LoadMaterialPalette();
    Settle();
    Play("in \"Open file\"\nmove 60 110\nbutton mine.kirvo_materials\nbutton Open");
    EXPECT_TRUE(Told());
    EXPECT_EQ(Names().size(), 4u);
}

} // namespace
