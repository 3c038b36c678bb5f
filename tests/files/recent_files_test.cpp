#include "files/recent_files.h"

#include "base/directories.h"
#include "base/file_names.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

class RecentFiles : public testing::Test {
  protected:
    void SetUp() override {
        Former = HomeDir;
        CopyFileName(HomeDir, Place.Path().c_str());
        ForgetRecentFiles();
    }

    void TearDown() override {
        CopyFileName(HomeDir, Former.c_str());
        ForgetRecentFiles();
    }

    std::string Make(const std::string& name) const {
        fs::create_directories((Place.Path() / name).parent_path());
        std::ofstream(Place.Path() / name) << "model";
        return Place.Path() / name;
    }

    /// The labels that the menu shows.
    static std::vector<std::string> Shown() {
        std::vector<std::string> labels;
        const MenuEntry* menu = RecentFilesMenu();
        for (int i = 0; i < MostRecentFiles; ++i)
            if (!menu[i].Check())
                labels.push_back(menu[i].Label);
        return labels;
    }

    TemporaryDirectory Place;
    std::string Former;
};

using Labels = std::vector<std::string>;

TEST_F(RecentFiles, AreKeptNewestFirstOverTheEndOfTheProgram) {
    EXPECT_EQ(RecentFilesCheck(), MenuHidden);
    const std::string a = Make("a.kirvo"), b = Make("deep/b.kirvo"), c = Make("c.kirvo");
    for (const std::string& path : {a, b, c, a + "/../a.kirvo", b})
        NoteRecentFile(path);
    ForgetRecentFiles();
    EXPECT_EQ(Shown(), (Labels{"~/deep/b.kirvo", "~/a.kirvo", "~/c.kirvo"}));
    EXPECT_EQ(RecentFileOfItem(FirstRecentItem + 1), a);
    EXPECT_EQ(RecentFileOfItem(FirstRecentItem + 3), "");
    fs::remove(b);
    EXPECT_EQ(Shown(), (Labels{"~/a.kirvo", "~/c.kirvo"}));
    EXPECT_EQ(RecentFileOfItem(FirstRecentItem + 1), a) << "items keep their meaning while a file is away";
    EXPECT_EQ(RecentFilesCheck(), 0);
}

TEST_F(RecentFiles, AreEightAtMostAndCutAtTheirBeginning) {
    const std::string deep = std::string(60, 'd') + "/\xC3\xA4" + std::string(50, 'e') + "/m.kirvo";
    for (int i = 0; i < 12; ++i)
        NoteRecentFile(Make(std::to_string(i) + ".kirvo"));
    NoteRecentFile(Make(deep));
    NoteRecentFile("/no\nname");
    const Labels shown = Shown();
    ASSERT_EQ(shown.size(), 8u);
    EXPECT_EQ(shown[0].substr(0, 4), "...d");
    EXPECT_TRUE(shown[0].ends_with("/\xC3\xA4" + std::string(50, 'e') + "/m.kirvo"));
    EXPECT_EQ(shown[7], "~/5.kirvo");
}

} // namespace
