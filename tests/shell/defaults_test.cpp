#include "base/directories.h"
#include "files/checkpoints.h"
#include "files/writer.h"
#include "gooey/draw.h"
#include "gooey/window.h"
#include "interaction/ruler.h"
#include "palettes/colour_mixing.h"
#include "shell/command_line.h"
#include "shell/defaults.h"
#include "shell/defaults_table.h"
#include "shell/preferences.h"
#include "shell/remembered_places.h"
#include "store/view_record.h"
#include "structure/object_browser.h"
#include "support/temporary_directory.h"
#include "support/test_seed.h"
#include "textures/texture_library.h"
#include "tools/create_sphere.h"
#include "tools/n_gons.h"
#include "tools/tablet.h"
#include "tools/tablet_alignment.h"
#include "views/display_flags.h"
#include "views/main_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Every variable of the tables as it was, put back at the end.
class KeptVariables {
  public:
    KeptVariables() {
        ForEach([&](int* value) { Numbers.push_back(*value); }, [&](char* text) { Texts.push_back(text); });
    }

    ~KeptVariables() {
        auto number = Numbers.begin();
        auto text = Texts.begin();
        ForEach([&](int* value) { *value = *number++; }, [&](char* place) { std::strcpy(place, (text++)->c_str()); });
    }

    static void ForEach(const std::function<void(int*)>& number, const std::function<void(char*)>& text) {
        for (const auto table : {DefaultsTable, AddedDefaultsTable})
            for (const DefaultsEntry& entry : table) {
                for (int* value : entry.Values)
                    if (value)
                        number(value);
                if (entry.Opened)
                    number(entry.Opened);
                if (entry.Text)
                    text(entry.Text);
            }
    }

  private:
    std::vector<int> Numbers;
    std::vector<std::string> Texts;
};

class Defaults : public testing::Test {
  protected:
    void SetUp() override {
        CopyFileName(HomeDir, place.Path().c_str());
        CopyFileName(DefaultFile, File().c_str());
    }

    fs::path File() const { return place.Path() / ".kirvorc"; }

    void Write(const std::string& text) const { std::ofstream(File(), std::ios::binary) << text; }

    std::string Contents() const {
        std::ifstream file(File(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // The program finds its directories first; here the working directory is the installation.
    void Read() const {
        std::ofstream(place.Path() / "Kirvo") << "program";
        fs::create_directories(place.Path() / "manual");
        setenv("HOME", place.Path().c_str(), 1);
        const fs::path before = fs::current_path();
        fs::current_path(place.Path());
        ReadDefaults("Kirvo");
        fs::current_path(before);
    }

    KeptVariables kept;
    TemporaryDirectory place;
};

TEST_F(Defaults, TheTableHasItsKeysOnceEachInOrder) {
    ASSERT_EQ(DefaultsTable.size(), 66u);
    std::set<std::string> keys;
    for (const auto table : {DefaultsTable, AddedDefaultsTable})
        for (const DefaultsEntry& entry : table) {
            EXPECT_TRUE(keys.insert(entry.Key).second) << entry.Key;
            for (int i = 0; i < NumberCount(entry.Form); ++i)
                EXPECT_TRUE(entry.Values[i]) << entry.Key;
        }
    std::vector<int> written;
    for (const DefaultsRun& run : DefaultsWritingOrder)
        for (int number = run.First; number <= run.Last; ++number)
            written.push_back(number);
    EXPECT_EQ(written.size(), 66u);
    EXPECT_EQ(std::set<int>(written.begin(), written.end()).size(), 66u);
    for (const auto& [number, key] : std::initializer_list<std::pair<int, const char*>>{{0, "CrazyColours"},
                                                                                        {9, "RulerSize"},
                                                                                        {22, "QstripTextureWindow"},
                                                                                        {23, "SoundEffects"},
                                                                                        {40, "Mixer"},
                                                                                        {54, "TextureGizmoOpen"},
                                                                                        {65, "TextureDir"}})
        EXPECT_STREQ(DefaultsTable[number].Key, key);
}

TEST_F(Defaults, AreWrittenInTheirOrderAndForms) {
    ApplyDefaults("");
    KeptVariables::ForEach([](int* value) { *value = 0; }, [](char* text) { *text = '\0'; });
    MainWindowOpened = 1;
    MainX = -3, MainY = 40, MainW = 750, MainH = 525;
    RulerGizmoOpened = 1;
    RulerX = 7, RulerY = 8, RulerSize = 1;
    MoveWire = 1;
    SpectrumY = -1;
    DefaultWindowBackground = 0x605020;
    CopyFileName(FilePath, "/home/me");
    CopyFileName(FileName, "a.kirvo");
    EXPECT_EQ(DefaultsText(), "CrazyColours = FALSE\n"
                              "BackgroundColour = 6311968\n"
                              "MainWindowPosition = -3,40,750,525\n"
                              "RulerGizmo = 7,8\n"
                              "RulerSize = 1\n"
                              "TabletAlign1 = 0,0,0,0\n"
                              "TabletAlign2 = 0,0,0,0\n"
                              "TabletCentre = 0,0,0,0\n"
                              "TabletRotation = 0\n"
                              "EnterMethod = B\n"
                              "Mixer = -1,0,0\n"
                              "NoViewports = 0\n"
                              "CheckpointTime = 0\n"
                              "CircleSides = 0\n"
                              "NewSphereDepth = 0\n"
                              "TestVar = 0\n"
                              "FilePath = /home/me\n"
                              "FileName = a.kirvo\n"
                              "TextureDir = \n"
                              "SoundEffects = FALSE\n"
                              "WindowLabels = FALSE\n"
                              "OutlinePolygons = FALSE\n"
                              "SolidView = FALSE\n"
                              "FastUpdates = FALSE\n"
                              "SelectionsSolid = TRUE\n"
                              "MoveWire = FALSE\n"
                              "SingleWhenStill = FALSE\n"
                              "TextureOn = FALSE\n"
                              "MoveTexture = FALSE\n"
                              "BackFace = FALSE\n"
                              "ShowGrid = FALSE\n"
                              "GridOnTop = FALSE\n"
                              "GridSnap = FALSE\n"
                              "HideVertices = FALSE\n"
                              "LodScale = FALSE\n"
                              "FileBackups = FALSE\n"
                              "MatEditGang = FALSE\n"
                              "Checkpoints = FALSE\n"
                              "LoadMaterialsOnNew = FALSE\n"
                              "LoadTexturesOnNew = FALSE\n"
                              "DoAutoLoad = FALSE\n"
                              "SceneBuilderOpen = FALSE\n"
                              "GridOpen = FALSE\n"
                              "PaletteOpen = FALSE\n"
                              "ObjectBrowserOpen = FALSE\n"
                              "StructureOpen = FALSE\n"
                              "TextureGizmoOpen = FALSE\n"
                              "DesktopMaximised = FALSE\n");
}

// Whatever the variables are, what is written is read back, but for what each start sets anew.
TEST_F(Defaults, SurviveARoundTrip) {
    const unsigned seed = TestSeed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 50; ++round) {
        KeptVariables::ForEach([&](int* value) { *value = static_cast<int>(random() % 2); }, [](char*) {});
        for (const auto table : {DefaultsTable, AddedDefaultsTable})
            for (const DefaultsEntry& entry : table) {
                const DefaultsRange range = entry.Range ? *entry.Range : DefaultsRange{1, 9000, 0};
                for (int i = 0; i < NumberCount(entry.Form); ++i)
                    *entry.Values[i] = range.Least + static_cast<int>(random() % (range.Most - range.Least + 1));
                if (entry.Form == DefaultsForm::Letter)
                    *entry.Values[1] = !*entry.Values[0];
                if (entry.Text)
                    CopyFileName(entry.Text, MaxFileName, ("/d" + std::to_string(random())).c_str());
            }
        const std::string text = DefaultsText();
        KeptVariables::ForEach([](int* value) { *value = 0; }, [](char* place) { *place = '\0'; });
        ApplyDefaults(text);
        EXPECT_EQ(NoViewports, 1);
        const std::string viewports =
            text.substr(text.find("NoViewports"), text.find("CheckpointTime") - text.find("NoViewports"));
        std::string expected = text;
        expected.replace(expected.find(viewports), viewports.size(), "NoViewports = 1\n");
        EXPECT_EQ(DefaultsText(), expected);
    }
}

TEST_F(Defaults, DamagedValuesLeaveSensibleOnes) {
    const struct {
        const char* Line;
        const int& Variable;
        int Before, After;
    } cases[] = {
        {"CircleSides = 12", CircleSides, 9, 12},
        {"CircleSides = 300", CircleSides, 9, 4},
        {"CircleSides = 99999999999999", CircleSides, 9, 4},
        {"CircleSides = 12 # a dozen", CircleSides, 9, 12},
        {"CircleSides =12", CircleSides, 9, 12},
        {"  CircleSides =\t12\r", CircleSides, 9, 12},
        {"CircleSides=12", CircleSides, 9, 4},
        {"circlesides = 12", CircleSides, 9, 4},
        {"CircleSides = twelve", CircleSides, 9, 4},
        {"CircleSides = 12\nCircleSides = 13", CircleSides, 9, 13},
        {"NewSphereDepth = 0", NewSphereDepth, 9, 3},
        {"", NewSphereDepth, 9, 3},
        {"NoViewports = 4", NoViewports, 3, 1},
        {"CheckpointTime = -5", CheckpointTime, 20, 15},
        {"CheckpointTime = 2000000000", CheckpointTime, 20, 15},
        {"SelectionsSolid = TRUE", MoveWire, 0, 1},
        {"SolidView = true", SolidView, 1, 0},
        {"SolidView = TRUE!", SolidView, 1, 0},
        {"SolidView =", SolidView, 1, 1},
        {"MainWindowPosition = 1,2,750,525", MainWindowOpened, 0, 1},
        {"MainWindowPosition = 1,2,750", MainWindowOpened, 0, 0},
        {"MainWindowPosition = 1,2,0,525", MainWindowOpened, 0, 0},
        {"MainWindowPosition = 1,2,-750,525", MainWindowOpened, 0, 0},
        {"MainWindowPosition = 1,2,750,2000000000", MainWindowOpened, 0, 0},
        {"MainWindowPosition = -2147483648,2,750,525", MainWindowOpened, 0, 0},
        {"MainWindowPosition = 1,2,7e5,525", MainWindowOpened, 0, 0},
        {"MainWindowPosition = 1,2,750,525", MainH, 0, 525},
        {"ObjectBrowser = 5,6,-1", ObjectBrowserOpened, 0, 0},
        {"EnterMethod = C", EnterMethodA, 1, 1},
        {"EnterMethod = Bee", EnterMethodB, 0, 1},
        {"RulerSize = 3", RulerSize, 1, 0},
        {"TabletAlign1 = 1,2,3,4", AlignAX1, 9, 0},
        {"TabletAlign1 = 1,2,3,4", AlignAX2, 9, 100},
        {"TabletAlign1 = 1,2,3,4\nTabletAlign2 = 5,6,7,8\nTabletCentre = 1,1,1,1\nTabletRotation = 3", AlignAX1, 9, 1},
        {"BackgroundColour = 255", reinterpret_cast<const int&>(DefaultWindowBackground), 1, 255},
        {"", reinterpret_cast<const int&>(DefaultWindowBackground), 1, 0x605020},
    };

    for (const auto& c : cases) {
        KeptVariables around;
        const_cast<int&>(c.Variable) = c.Before;
        ApplyDefaults(c.Line);
        EXPECT_EQ(c.Variable, c.After) << c.Line;
    }
}

TEST_F(Defaults, TextsComeBackWhole) {
    const std::string deep = "/" + std::string(1500, 'd') + "/" + std::string(1500, 'e');
    for (const std::string& path :
         {std::string("/home/me"), std::string("/home/me/my models"), std::string(" leading"), std::string("   "),
          std::string("\n/x y"), std::string("a\tb\nFileName = x"), std::string("100%"), std::string("%20"),
          std::string("/\xC3\x84pfel und Birnen"), deep}) {
        CopyFileName(FilePath, path.c_str());
        CopyFileName(FileName, "table top.kirvo");
        CopyFileName(TextureDir, path.c_str());
        const std::string text = DefaultsText();
        FilePath[0] = FileName[0] = TextureDir[0] = '\0';
        ApplyDefaults(text);
        EXPECT_EQ(FilePath, path);
        EXPECT_STREQ(FileName, "table top.kirvo");
        EXPECT_EQ(TextureDir, path);
    }
}

TEST_F(Defaults, AnOlderReaderFindsItsWordsAndItsChangesCount) {
    CopyFileName(FilePath, "/my models");
    CopyFileName(FileName, "a b.kirvo");
    std::string text = DefaultsText();
    EXPECT_NE(text.find("\nFilePath = /my models\nFilePathWhole = /my%20models\n"), std::string::npos) << text;
    // A line that somebody changed is newer than the whole text beside it.
    text.replace(text.find("/my models"), 10, "/other");
    ApplyDefaults(text);
    EXPECT_STREQ(FilePath, "/other");
    EXPECT_STREQ(FileName, "a b.kirvo");
    // Damaged escapes leave the word.
    ApplyDefaults("FilePath = /my models\nFilePathWhole = /my%2\nFileName = x\n");
    EXPECT_STREQ(FilePath, "/my");
}

TEST_F(Defaults, OneOfTwoNamesIsNoLastFile) {
    for (const char* text : {"FilePath = /a\n", "FileName = b\n", "FilePath = /a\nFileName = \n", ""}) {
        CopyFileName(FilePath, "/x");
        CopyFileName(FileName, "y");
        ApplyDefaults(text);
        EXPECT_STREQ(FilePath, "") << text;
        EXPECT_STREQ(FileName, "") << text;
    }
}

TEST_F(Defaults, AnyBytesAreRead) {
    std::string text = DefaultsText();
    for (std::string damaged :
         {std::string(4096, '\0'), std::string(3000, '='), std::string("= = =\n=\n"), std::string(100000, 'x'),
          text.substr(0, text.size() / 2), std::string("CircleSides = 12\0\nNewSphereDepth = 7", 36)})
        ApplyDefaults(damaged);
    EXPECT_EQ(CircleSides, 4);
    EXPECT_EQ(NewSphereDepth, 7);
}

TEST_F(Defaults, TakeOverTheFileOfAnOlderVersion) {
    FirstTimeEver = 1;
    Read();
    EXPECT_EQ(FirstTimeEver, 1);
    std::ofstream(place.Path() / ".kirvo_defaults") << "CircleSides = 5\n";
    std::ofstream(place.Path() / ".Kirvo_init") << "CircleSides = 6\n";
    Read();
    EXPECT_EQ(FirstTimeEver, 0);
    EXPECT_EQ(CircleSides, 6);
    EXPECT_FALSE(fs::exists(place.Path() / ".Kirvo_init"));
    EXPECT_EQ(Contents(), "CircleSides = 6\n");
    // A file of today is not replaced.
    std::ofstream(place.Path() / ".kirvo_defaults") << "CircleSides = 7\n";
    Read();
    EXPECT_EQ(CircleSides, 6);
}

TEST_F(Defaults, AFailedWriteLeavesTheOldFile) {
    Write("CircleSides = 5\n");
    ASSERT_EQ(symlink("away", (place.Path() / "link").c_str()), 0);
    fs::create_directory(place.Path() / "away");
    std::ofstream(place.Path() / "away/rc") << "old";
    // A link stays one.
    fs::remove(File());
    fs::create_symlink(place.Path() / "away/rc", File());
    WriteDefaults();
    EXPECT_TRUE(fs::is_symlink(File()));
    EXPECT_EQ(Contents(), DefaultsText());

    fs::remove(File());
    fs::create_directory(File());
    testing::internal::CaptureStderr();
    WriteDefaults();
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(errors.starts_with("\nCouldn't create defaults file:\n" + File().string() + "\nReason:")) << errors;
    EXPECT_TRUE(errors.ends_with("\n\a\n"));
    Read();
    EXPECT_TRUE(fs::is_directory(File()));
}

} // namespace
