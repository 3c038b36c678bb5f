#include "textures/texture_library.h"

#include "base/directories.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "support/temporary_directory.h"
#include "textures/filters.h"
#include "textures/made_image.h"
#include "textures/texture_definition.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class TextureLibrary : public testing::Test {
  protected:
    TextureLibrary() {
        InitialiseStorage();
        CopyFileName(FilePath, (directory.Path() / "model").c_str());
        CopyFileName(TextureDir, (directory.Path() / "textures").c_str());
        fs::create_directories(directory.Path() / "work" / "textures");
        fs::current_path(directory.Path() / "work");
    }

    ~TextureLibrary() override {
        fs::current_path(home);
        ResetStorage();
        FreeBoundTextures();
        TheTextureDefinitionSlots = {};
        FilePath[0] = TextureDir[0] = '\0';
    }

    // Writes an image of width by 2 pixels at a place below the directory.
    std::string MakeImage(const std::string& place, int width = 4) {
        const fs::path path = directory.Path() / place;
        fs::create_directories(path.parent_path());
        MadeImage image(width, 2, 1);
        image.Bytes.resize(512 + 2 * width);
        image.WriteTo(path);
        return path;
    }

    std::string MakeOther(const std::string& place) {
        const fs::path path = directory.Path() / place;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "no image";
        return path;
    }

    const fs::path home = fs::current_path();
    TemporaryDirectory directory;
};

TEST_F(TextureLibrary, AddsAnImageOnceAndRemembersWhereItWas) {
    const std::string brick = MakeImage("model/brick"), stone = MakeImage("stone"), text = MakeOther("readme");
    Texture* first = AddTexture(brick.c_str());
    ASSERT_TRUE(first);
    EXPECT_EQ(first->FileName, brick);
    EXPECT_EQ(CurrentTexture(), first);
    EXPECT_STREQ(LastTextureDir, (directory.Path() / "model").c_str());
    EXPECT_STREQ(LastTextureName, "brick");

    Texture* second = AddTexture(stone.c_str());
    EXPECT_EQ(AddTexture(brick.c_str()), first);
    EXPECT_EQ(AddTexture(text.c_str()), nullptr);
    EXPECT_EQ(AddTexture("/no/such/file"), nullptr);
    EXPECT_EQ(FirstTexture(), first);
    EXPECT_EQ(first->Next, second);
    EXPECT_EQ(second->Next, nullptr);
    EXPECT_STREQ(LastTextureName, "stone");
}

TEST_F(TextureLibrary, FindsImagesInTheOrderOfThePlaces) {
    // What a file names, and every place where it is looked for, in order.
    const struct {
        const char* Named;
        std::vector<const char*> Places;
    } cases[] = {
        {"./a/b",
         {"model/textures/b", "work/textures/b", "work/b", "textures/b", "model/b", "work/a/b", "textures/a/b"}},
        {"./././textures/b",
         {"model/textures/b", "work/textures/b", "work/b", "textures/b", "model/b", "textures/textures/b"}},
        {"b", {"model/textures/b", "work/textures/b", "work/b", "textures/b", "model/b"}},
    };

    for (const auto& c : cases)
        for (std::size_t first = 0; first <= c.Places.size(); ++first) {
            for (std::size_t i = 0; i < c.Places.size(); ++i)
                i < first ? MakeOther(c.Places[i]) : MakeImage(c.Places[i]);
            char found[MaxFileName] = "nothing";
            testing::internal::CaptureStdout();
            testing::internal::CaptureStderr();
            const int result = FindTextureFile(c.Named, found);
            const std::string out = testing::internal::GetCapturedStdout();
            const std::string err = testing::internal::GetCapturedStderr();
            if (first == c.Places.size()) {
                EXPECT_FALSE(result);
                EXPECT_STREQ(found, "nothing");
                EXPECT_EQ(out + err, "Warning: texture b not found\n");
                continue;
            }
            ASSERT_TRUE(result) << c.Named << " " << first;
            EXPECT_TRUE(fs::equivalent(found, directory.Path() / c.Places[first])) << found;
            EXPECT_EQ(out + err, "Texture: b\n");
        }
}

TEST_F(TextureLibrary, FindsAnImageByItsFullName) {
    const std::string path = MakeImage("elsewhere/b");
    char found[MaxFileName];
    testing::internal::CaptureStdout();
    EXPECT_TRUE(FindTextureFile(path.c_str(), found));
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(found, path);
}

TEST_F(TextureLibrary, NamesTooLongAreNotFoundRatherThanCut) {
    const std::string name(MaxFileName - 1, 'x');
    char found[MaxFileName];
    testing::internal::CaptureStderr();
    EXPECT_FALSE(FindTextureFile(name.c_str(), found));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Warning: texture " + name + " not found\n");
}

struct Definition {
    int Index, Components, Width, Height;
    std::vector<float> Properties;
};

std::vector<Definition> Definitions;
std::vector<std::pair<int, int>> Progress;
int HighEnd, TimesDirtied;

class TextureDefinitions : public TextureLibrary {
  protected:
    TextureDefinitions() {
        Definitions.clear();
        Progress.clear();
        HighEnd = TimesDirtied = 0;
        TheTextureDefinitionSlots.DefineImage = [](int index, int components, int width, int height, const void*,
                                                   int count, const float* properties) {
            Definitions.push_back({index, components, width, height, {properties, properties + count}});
        };
        TheTextureDefinitionSlots.IsHighEnd = [] { return HighEnd; };
        TheTextureDefinitionSlots.ReadingProgress = [](int read, int count) { Progress.emplace_back(read, count); };
        TheTextureDefinitionSlots.DirtyTextureGizmo = [] { ++TimesDirtied; };
    }

    Texture* MakeTexture(const std::string& place, int width = 4) {
        return AddTexture(MakeImage(place, width).c_str());
    }
};

TEST_F(TextureDefinitions, TexturesThatAreTheSameShareADefinition) {
    Texture* texture = MakeTexture("a", 8);
    Texture* other = MakeTexture("b");
    DefineAllTextures();
    EXPECT_EQ(TimesDirtied, 1);
    EXPECT_EQ(Progress, (std::vector<std::pair<int, int>>{{1, 2}, {2, 2}}));
    EXPECT_EQ(texture->GLId, 1);
    EXPECT_EQ(other->GLId, 2);
    EXPECT_EQ(texture->Aspect, 4.0f);
    EXPECT_EQ(texture->Width, 8);
    EXPECT_EQ(texture->Height, 2);
    EXPECT_EQ(texture->Components, 1);
    ASSERT_EQ(Definitions.size(), 2u);
    EXPECT_EQ(Definitions[0].Width, 8);

    texture->ClampS = 1;
    DefineTexture(texture);
    EXPECT_EQ(texture->GLId, 3);
    texture->ClampS = 0;
    DefineTexture(texture);
    EXPECT_EQ(texture->GLId, 1);

    // The next model's texture of the same image knows its size too, though nothing is defined anew.
    ResetStorage();
    Texture* again = AddTexture((directory.Path() / "a").c_str());
    DefineTexture(again);
    EXPECT_EQ(again->GLId, 1);
    EXPECT_EQ(again->Aspect, 4.0f);
    EXPECT_EQ(Definitions.size(), 3u);
}

TEST_F(TextureDefinitions, PropertiesFollowTheHardware) {
    const struct {
        float Min, Mag;
        int Fast, ClampS, ClampT, Components, HighEnd;
        std::vector<float> Properties;
    } cases[] = {
        {0, 0, 0, 0, 0, 1, 0, {0}},
        {FilterPoint, FilterBilinear, 0, 1, 1, 1, 0, {256, 272, 512, 544, 784, 770, 800, 770, 0}},
        {FilterMipmapTrilinear, FilterSharpen, 0, 0, 0, 1, 0, {0}},
        {FilterMipmapTrilinear, FilterSharpen, 0, 0, 0, 1, 1, {256, 292, 512, 576, 0}},
        {FilterBicubic, FilterBicubic, 0, 0, 0, 1, 0, {0}},
        {FilterBicubic, FilterBicubic, 0, 0, 0, 1, 1, {256, 560, 512, 560, 0}},
        {0, 0, 1, 0, 0, 2, 1, {0}},
        {0, 0, 1, 0, 0, 3, 0, {0}},
        {0, 0, 1, 0, 0, 3, 1, {1536, 1584, 0}},
        {0, 0, 1, 1, 0, 4, 1, {1536, 1600, 784, 770, 0}},
    };

    int number = 0;
    for (const auto& c : cases) {
        MadeImage image(2, 2, c.Components);
        image.Bytes.resize(512 + 4 * c.Components);
        const std::string path = directory.Path() / std::to_string(++number);
        image.WriteTo(path);
        Texture* texture = AddTexture(path.c_str());
        texture->MinFilter = c.Min;
        texture->MagFilter = c.Mag;
        texture->Fast = c.Fast;
        texture->ClampS = c.ClampS;
        texture->ClampT = c.ClampT;
        HighEnd = c.HighEnd;
        DefineTexture(texture);
        EXPECT_EQ(Definitions.back().Properties, c.Properties) << number;
    }
}

TEST_F(TextureDefinitions, AnImageThatCannotBeReadGetsAPlaceholder) {
    Texture* texture = MakeTexture("a", 8);
    fs::resize_file(texture->FileName, 513);
    DefineTexture(texture);
    EXPECT_EQ(texture->GLId, 1);
    EXPECT_EQ(texture->Aspect, 1.0f);
    ASSERT_EQ(Definitions.size(), 1u);
    EXPECT_EQ(Definitions[0].Width, 16);
    EXPECT_EQ(Definitions[0].Height, 16);
    EXPECT_EQ(Definitions[0].Components, 1);

    // Nor is there anything to be shown of five channels.
    MadeImage(4, 2, 5).WriteTo(texture->FileName);
    fs::resize_file(texture->FileName, 512 + 4 * 2 * 5);
    DefineTexture(texture);
    EXPECT_EQ(texture->GLId, 1);
    EXPECT_EQ(Definitions.size(), 1u);

    // Once the image has been repaired it is taken.
    MakeImage("a", 8);
    DefineTexture(texture);
    EXPECT_EQ(texture->GLId, 2);
    EXPECT_EQ(texture->Aspect, 4.0f);
}

TEST_F(TextureDefinitions, AnImageThatChangesIsReadAgainAndOneThatVanishesIsKept) {
    Texture* texture = MakeTexture("a", 8);
    DefineTexture(texture);
    MakeImage("a", 6);
    DefineTexture(texture);
    EXPECT_EQ(texture->GLId, 2);
    EXPECT_EQ(texture->Aspect, 3.0f);

    fs::remove(texture->FileName);
    texture->ClampS = 1;
    DefineAllTextures();
    EXPECT_EQ(texture->GLId, 2);
    EXPECT_EQ(texture->Width, 6);
    EXPECT_EQ(Definitions.size(), 2u);
}

TEST_F(TextureDefinitions, AFilterThatIsNoNumberIsStillShared) {
    Texture* texture = MakeTexture("a");
    texture->MinFilter = std::numeric_limits<float>::quiet_NaN();
    DefineTexture(texture);
    DefineTexture(texture);
    EXPECT_EQ(Definitions.size(), 1u);
}

TEST(TextureFilterNames, KnownAndUnknown) {
    EXPECT_STREQ(FilterName(292), "Mipmap trilinear");
    EXPECT_STREQ(FilterName(0x230), "Bicubic");
    EXPECT_STREQ(FilterName(300), "Default");
    EXPECT_STREQ(FilterName(std::nanf("")), "Default");
}

} // namespace
