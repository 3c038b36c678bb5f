#include "textures/texture_file.h"

#include "base/directories.h"
#include "base/exit.h"
#include "base/memory.h"
#include "gooey/program_windows.h"
#include "gooey/toolkit_test.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/texture_list.h"
#include "store/walks.h"
#include "support/temporary_directory.h"
#include "textures/filters.h"
#include "textures/made_image.h"
#include "textures/texture_changes.h"
#include "textures/texture_commands.h"
#include "textures/texture_definition.h"
#include "textures/texture_library.h"
#include "textures/texture_usage.h"

#include <sstream>

namespace {

using Strings = std::vector<std::string>;

int Changes;

class Textures : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        InitialiseStorage();
        CopyFileName(FilePath, directory.Path().c_str());
        CopyFileName(HomeDir, directory.Path().c_str());
        TheTextureDefinitionSlots.DefineImage = [](int, int, int, int, const void*, int, const float*) {};
        TheTextureChangeSlots.DirtySolids = [] { ++Changes; };
        Changes = 0;
        MainWindow = Open("Main", 20, 20, 500, 400);
        Settle();
    }

    void TearDown() override {
        ToolkitTest::TearDown();
        MainWindow = nullptr;
        FreeLoadedTextures();
        ResetStorage();
        FreeBoundTextures();
        TheTextureDefinitionSlots = {};
        TheTextureChangeSlots = {};
        ApplyingTexture = LoadTexturesOnNew = 0;
        FilePath[0] = LastTextureDir[0] = LastTextureName[0] = '\0';
    }

    std::string MakeImage(const std::string& name) {
        MadeImage image(2, 2, 1);
        image.Bytes.resize(512 + 4);
        const std::string path = directory.Path() / name;
        image.WriteTo(path);
        return path;
    }

    Texture* Add(const std::string& name) { return AddTexture(MakeImage(name).c_str()); }

    // The names of a list's images, without their directory.
    static Strings Names(Texture* first) {
        Strings names;
        for (const Texture* texture : Along<&Texture::Next>(first))
            names.push_back(std::filesystem::path(texture->FileName).filename());
        return names;
    }

    static Polygon* TexturedPolygon(Texture* texture) {
        PolygonBead* beads = nullptr;
        for (const int i : {0, 1, 2})
            AddPolygonBead(beads, AddVertex(i, i * i, 0));
        Polygon* polygon = AddPolygon(beads, nullptr);
        polygon->Texture = texture;
        return polygon;
    }

    // Presses a button of the message that is open; false when there is none.
    static bool Answer(const char* button) {
        Settle();
        if (!MessageWindow)
            return false;
        Play("in \"" + std::string(MessageWindow->Title) + "\"\nmove 5 5\nbutton " + button);
        return true;
    }

    static void Choose(const char* name) {
        Settle();
        Play("in \"Open file\"\nmove 60 110\nbutton " + std::string(name) + "\nbutton Open");
    }

    TemporaryDirectory directory;
    const std::string path = directory.Path() / "some.kirvo_textures";
};

TEST_F(Textures, AreWrittenAsText) {
    Texture* texture = Add("brick");
    texture->MinFilter = FilterMipmapTrilinear;
    texture->MagFilter = 300;
    texture->Fast = texture->ClampT = 1;
    ASSERT_TRUE(WriteTexturesFile(path.c_str()));
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    EXPECT_EQ(text.str(), "Kirvo textures version 1.00\n\n\nTexture: " + std::string(texture->FileName) +
                              "\nMinfilter: Mipmap trilinear\nMagfilter: Default\nFast: TRUE\nClamp X: FALSE\n"
                              "Clamp Y: TRUE\n\n\n");
    texture->MagFilter = 0;
    ASSERT_TRUE(ReadTexturesFile(path.c_str()));
    EXPECT_TRUE(TexturesAreTheSame(LoadedTextures, texture));
}

TEST_F(Textures, DamagedEntriesKeepWhatStandsBeforeTheDamage) {
    const std::string start = "Kirvo textures version 1.00\n", entry = "Texture: " + MakeImage("a") + "\n";
    const std::string other = "Texture: " + MakeImage("b") + "\n";

    const struct {
        std::string Text;
        Strings Names;
        float MinFilter;
        int Fast, ClampS;
    } cases[] = {
        {entry, {}, 0, 0, 0},
        {start + "Texture: " + path + "x\nMinfilter: Point\n" + other, {"b"}, 0, 0, 0},
        {start + "Texture: \n" + entry, {"a"}, 0, 0, 0},
        {start + entry + other, {"a", "b"}, 0, 0, 0},
        {start + entry + "minfilter: pOINT\r\nMagfilter: Sharpen\nFast: true\nClamp X: T\n" + other,
         {"a", "b"},
         FilterPoint,
         1,
         1},
        {start + entry + "Minfilter: Point\nMagfilter: Default\nFast: yes\nClamp X: \nClamp Y: TRUE\n",
         {"a"},
         FilterPoint,
         0,
         0},
        {start + entry + "Minfilter: Blurred\nMagfilter: Point\nFast: TRUE\n", {"a"}, 0, 0, 0},
        {start + entry + "Minfilter: Point", {"a"}, FilterPoint, 0, 0},
        {start + "Texture: " + std::string(3000, 'x') + "\n" + entry, {"a"}, 0, 0, 0},
    };

    for (const auto& c : cases) {
        std::ofstream(path) << c.Text;
        EXPECT_EQ(ReadTexturesFile(path.c_str()), !c.Names.empty()) << c.Text;
        EXPECT_EQ(Names(LoadedTextures), c.Names) << c.Text;
        if (!LoadedTextures)
            continue;
        EXPECT_EQ(LoadedTextures->MinFilter, c.MinFilter) << c.Text;
        EXPECT_EQ(LoadedTextures->Fast, c.Fast) << c.Text;
        EXPECT_EQ(LoadedTextures->ClampS, c.ClampS) << c.Text;
    }
    EXPECT_FALSE(ReadTexturesFile("/no/such/file"));
}

TEST_F(Textures, ANewModelStartsWithTheDefaultsWhenWanted) {
    Add("a");
    Add("b");
    ASSERT_TRUE(SaveDefaultTextures());
    for (const int wanted : {0, 1}) {
        ResetStorage();
        WorkSaved = 1;
        LoadTexturesOnNew = wanted;
        LoadDefaultTextures();
        EXPECT_EQ(Names(FirstTexture()), wanted ? (Strings{"a", "b"}) : Strings{});
        EXPECT_EQ(CurrentTexture(), FirstTexture());
        EXPECT_TRUE(WorkSaved);
    }
    EXPECT_GT(FirstTexture()->GLId, 0);
}

TEST_F(Textures, PalettesAreSavedAndLoadedByTheFileSelector) {
    Add("a");
    Texture* b = Add("b");
    SaveTexturePalette();
    Settle();
    Play("in \"Save file as\"\nmove 60 110\ntype mine\nkey Return");
    b->ClampS = 1;
    for (const char* time : {"the first time, another texture becomes current", "the second, there is nothing new"}) {
        LoadTexturePalette();
        Choose("mine.kirvo_textures");
        EXPECT_EQ(Names(FirstTexture()), (Strings{"a", "b", "b"})) << time;
        EXPECT_EQ(Changes, 1) << time;
        EXPECT_FALSE(Answer("Continue")) << time;
    }

    std::filesystem::remove(directory.Path() / "a");
    std::filesystem::remove(directory.Path() / "b");
    LoadTexturePalette();
    Choose("mine.kirvo_textures");
    EXPECT_TRUE(Answer("Continue"));
    EXPECT_EQ(Names(FirstTexture()).size(), 3u);
}

TEST_F(Textures, AreLoadedAndReplacedByTheFileSelector) {
    Add("a");
    MakeImage("b");
    std::ofstream(directory.Path() / "readme") << "text";
    LoadTexture();
    Choose("b");
    EXPECT_EQ(Names(FirstTexture()), (Strings{"a", "b"}));
    EXPECT_GT(CurrentTexture()->GLId, 0);
    EXPECT_EQ(Changes, 1);
    LoadTexture();
    Choose("readme");
    EXPECT_TRUE(Answer("Continue"));
    EXPECT_EQ(Changes, 1);

    MakeImage("c");
    const int definition = CurrentTexture()->GLId;
    ReplaceTexture();
    Choose("c");
    EXPECT_EQ(Names(FirstTexture()), (Strings{"a", "c"}));
    EXPECT_NE(CurrentTexture()->GLId, definition);
    EXPECT_EQ(TextureExists((directory.Path() / "c").c_str()), CurrentTexture());
    EXPECT_EQ(TextureExists((directory.Path() / "b").c_str()), nullptr);
    EXPECT_EQ(Changes, 2);
    ReplaceTexture();
    Choose("readme");
    EXPECT_TRUE(Answer("Continue"));
    EXPECT_EQ(Names(FirstTexture()), (Strings{"a", "c"}));
    EXPECT_EQ(Changes, 2);
}

TEST_F(Textures, AreDeletedAfterAQuestionWhenPolygonsHaveThem) {
    Texture* used = Add("a");
    Add("b");
    Polygon* polygon = TexturedPolygon(used);
    DoTextureDelete();
    EXPECT_FALSE(Answer("OK"));
    EXPECT_EQ(Names(FirstTexture()), Strings{"a"});
    DoTextureDelete();
    EXPECT_TRUE(Answer("Cancel"));
    EXPECT_EQ(polygon->Texture, used);
    DoTextureDelete();
    EXPECT_TRUE(Answer("OK"));
    EXPECT_EQ(polygon->Texture, nullptr);
    EXPECT_EQ(FirstTexture(), nullptr);
    DoTextureDelete();

    polygon->Texture = Add("a");
    Add("b");
    DeleteUnusedTextures();
    EXPECT_EQ(Names(FirstTexture()), Strings{"a"});
    WorkSaved = 1;
    DeleteAllTextures();
    EXPECT_TRUE(Answer("OK"));
    EXPECT_EQ(polygon->Texture, nullptr);
    EXPECT_EQ(FirstTexture(), nullptr);
    EXPECT_FALSE(WorkSaved);
}

TEST_F(Textures, AToolFollowsTheCurrentTexture) {
    Texture* texture = Add("a");
    Polygon* const polygons[] = {TexturedPolygon(nullptr), TexturedPolygon(nullptr)};
    ApplicationPolygons = {polygons, 1};
    TextureAppChange();
    EXPECT_EQ(polygons[0]->Texture, nullptr);
    ApplyingTexture = 1;
    TextureAppChange();
    EXPECT_EQ(polygons[0]->Texture, texture);
    EXPECT_EQ(polygons[1]->Texture, nullptr);
    static int called;
    AppChangeCallback = [] { ++called; };
    TextureAppChange();
    EXPECT_EQ(called, 1);
    EXPECT_EQ(Changes, 3);
    AppChangeCallback = nullptr;
    ApplicationPolygons = {};
}

} // namespace
