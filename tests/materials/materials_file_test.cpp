#include "materials/materials_file.h"

#include "base/directories.h"
#include "materials/default_materials.h"
#include "materials/material_definitions.h"
#include "store/material_list.h"
#include "store/store_test.h"
#include "support/temporary_directory.h"

#include <cmath>
#include <csignal>
#include <fstream>
#include <limits>
#include <sstream>
#include <sys/resource.h>

namespace {

class MaterialsFile : public StoreTest {
  protected:
    ~MaterialsFile() override {
        FreeLoadedMaterials();
        LoadMaterialsOnNew = 0;
    }

    std::string Write(const std::string& text) {
        std::ofstream(path) << text;
        return path;
    }

    std::string Contents() const {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    static std::vector<std::string> Names(Material* first) {
        std::vector<std::string> names;
        for (const Material* material : Along<&Material::Next>(first))
            names.push_back(material->Name);
        return names;
    }

    TemporaryDirectory directory;
    const std::string path = directory.Path() / "some.kirvo_materials";
};

const std::string Start = "Kirvo materials version 1.00\n\n\n";

// The lines of an entry after its name, all but the one with that number.
std::string PropertiesWithout(int left = -1) {
    const char* const lines[] = {"Ambient:0.10,0.20,0.30\n",
                                 "Diffuse:0.40,0.50,0.60\n",
                                 "Specular:0.70,0.80,0.90\n",
                                 "Emissive:0.00,0.00,1.00\n",
                                 "Shine:20\n",
                                 "Alpha: 0.50\n"};
    std::string text;
    for (int i = 0; i < 6; ++i)
        if (i != left)
            text += lines[i];
    return text;
}

TEST_F(MaterialsFile, IsWrittenAsTextAndReadBack) {
    Material* material = NewMaterial();
    RenameMaterial(material, "Sea\ngreen");
    const float values[4][3] = {{0, 0.126f, 1}, {-0.5f, 2, 123.456f}, {}, {1e9f, INFINITY, NAN}};
    std::copy(values[0], values[0] + 3, material->Ambient);
    std::copy(values[1], values[1] + 3, material->Diffuse);
    std::copy(values[2], values[2] + 3, material->Specular);
    std::copy(values[3], values[3] + 2, material->Emission);
    material->Emission[1] = 0.25f;
    material->Emission[2] = NAN;
    material->Shininess = 63.9f;
    material->Alpha = 0.3333f;
    AddMaterial(material);
    AddMaterial(NewColouredMaterial(1));

    ASSERT_TRUE(WriteMaterialsFile(path.c_str()));
    EXPECT_EQ(Contents(), Start +
                              "Material: Sea green\nAmbient:0.00,0.13,1.00\nDiffuse:-0.50,2.00,123.46\n"
                              "Specular:0.00,0.00,0.00\nEmissive:1000000000.00,0.25,0.00\nShine:63\nAlpha: 0.33\n\n\n"
                              "Material: Red\nAmbient:0.30,0.00,0.00\nDiffuse:0.50,0.10,0.10\n"
                              "Specular:1.00,0.80,0.80\nEmissive:0.00,0.00,0.00\nShine:64\nAlpha: 1.00\n\n\n");

    ASSERT_TRUE(ReadMaterialsFile(path.c_str()));
    EXPECT_EQ(Names(LoadedMaterials), (std::vector<std::string>{"Sea green", "Red"}));
    EXPECT_EQ(LoadedMaterials->Diffuse[2], 123.46f);
    EXPECT_EQ(LoadedMaterials->Shininess, 63);
    EXPECT_TRUE(MaterialsAreTheSame(LoadedMaterials->Next, FirstMaterial()->Next));
}

TEST_F(MaterialsFile, DamagedEntriesAreLeftOut) {
    const std::string whole = PropertiesWithout();
    std::string noNumber = whole, endless = whole;
    noNumber.replace(noNumber.find("0.20"), 4, "nan");
    endless.replace(endless.find("0.20"), 4, "1e99");

    const struct {
        const char* What;
        std::string Text;
        std::vector<std::string> Names;
    } cases[] = {
        {"empty", "", {}},
        {"no header", "Material: A\n" + whole, {}},
        {"no material", Start, {}},
        {"before the header", "Material: A\n" + whole + Start + "Material: B\n" + whole, {"B"}},
        {"a line is missing", Start + "Material: A\n" + PropertiesWithout(1) + "\n\nMaterial: B\n" + whole, {"B"}},
        {"the last line is missing", Start + "Material: A\n" + PropertiesWithout(5) + "Material: B\n" + whole, {"B"}},
        {"a name alone", Start + "Material: A\nMaterial: B\n" + whole, {"B"}},
        {"the file ends early", Start + "Material: B\n" + whole + "Material: A", {"B"}},
        {"not a number", Start + "Material: A\n" + noNumber + "\nMaterial: B\n" + whole, {"B"}},
        {"too large a number", Start + "Material: A\n" + endless + "\nMaterial: B\n" + whole, {"B"}},
        {"a line too long",
         Start + "Material: " + std::string(5000, 'x') + "\n" + whole + "Material: B\n" + whole,
         {"B"}},
        {"other ends of lines and cases",
         "Kirvo materials version 9\r\nMaterial: B\r\nambient:1, 2 ,3\r\nDIFFUSE: 0,0,0\r\nSpecular:0,0,0\r\n"
         "Emissive:0,0,0\r\nShine:1\r\nAlpha: 1\r\n",
         {"B"}},
    };

    for (const auto& c : cases) {
        EXPECT_EQ(ReadMaterialsFile(Write(c.Text).c_str()), c.Names.empty() ? 0 : 1) << c.What;
        EXPECT_EQ(Names(LoadedMaterials), c.Names) << c.What;
    }
    EXPECT_FALSE(ReadMaterialsFile((path + "x").c_str()));
    EXPECT_FALSE(ReadMaterialsFile(directory.Path().c_str()));
    EXPECT_EQ(LoadedMaterials, nullptr);
}

TEST_F(MaterialsFile, AFailedWriteKeepsTheOlderFile) {
    Write("older");
    for (int colour = 0; colour < 200; ++colour)
        AddMaterial(NewColouredMaterial(colour % 7));
    signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small = {1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    testing::internal::CaptureStderr();
    const int written = WriteMaterialsFile(path.c_str());
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(written);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Couldn't write material file " + path + "\nReason: File too large\n");
    EXPECT_EQ(Contents(), "older");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.Path()), {}), 1);

    testing::internal::CaptureStderr();
    EXPECT_FALSE(WriteMaterialsFile((directory.Path() / "none" / "file").c_str()));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Reason: No such file or directory\n"), std::string::npos);
}

TEST_F(MaterialsFile, MergingAddsOnlyWhatIsMissing) {
    AddMaterial(NewColouredMaterial(1));
    ReadMaterialsFile(Write(Start + "Material: Red\n" + PropertiesWithout() + "Material: Red\n" + PropertiesWithout() +
                            "Material: Blue\n" + PropertiesWithout())
                          .c_str());
    MaterialsNeedDefining = 0;
    MergeLoadedMaterials();
    EXPECT_EQ(Names(FirstMaterial()), (std::vector<std::string>{"Red", "Red", "Blue"}));
    EXPECT_EQ(LoadedMaterials, nullptr);
    EXPECT_TRUE(MaterialsNeedDefining);
    EXPECT_FALSE(WorkSaved);

    WorkSaved = 1;
    ReadMaterialsFile(path.c_str());
    MergeLoadedMaterials();
    EXPECT_EQ(Names(FirstMaterial()).size(), 3u);
    EXPECT_TRUE(WorkSaved) << "nothing was missing";
}

TEST_F(MaterialsFile, ANewModelStartsWithTheDefaults) {
    CopyFileName(HomeDir, directory.Path().c_str());
    LoadMaterialsOnNew = 1;
    MakeDefaultMaterials();
    EXPECT_EQ(Names(FirstMaterial()), (std::vector<std::string>{"Grey", "Red", "Green", "Blue"}));
    EXPECT_EQ(CurrentMaterial(), FirstMaterial());
    EXPECT_EQ(CurrentLighting, LightingSmooth);
    EXPECT_TRUE(WorkSaved);
    const Material* red = FirstMaterial()->Next;
    EXPECT_EQ(red->Ambient[0], 0.3f);
    EXPECT_EQ(red->Diffuse[1], 0.1f);
    EXPECT_EQ(red->Specular[2], 0.8f);
    EXPECT_EQ(red->Shininess, 64);

    DeleteMaterial(FirstMaterial());
    ASSERT_TRUE(SaveDefaultMaterials());
    FreeAllMaterials();
    MakeDefaultMaterials();
    EXPECT_EQ(Names(FirstMaterial()), (std::vector<std::string>{"Red", "Green", "Blue"}));
    EXPECT_EQ(CurrentMaterial(), FirstMaterial());

    FreeAllMaterials();
    StartingUp = 1;
    MakeDefaultMaterials();
    StartingUp = 0;
    EXPECT_EQ(FirstMaterial(), nullptr);
}

} // namespace
