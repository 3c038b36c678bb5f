#include "gooey/toolkit_test.h"
#include "support/temporary_directory.h"

#include "gooey/file_listing.h"
#include "gooey/file_selector.h"
#include "gooey/file_selector_state.h"
#include "gooey/list_gadget.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/report.h"
#include "gooey/scroll_window.h"
#include "gooey/window_stack.h"

#include "platform/events.h"
#include "platform/scripts.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace std::string_literals;

namespace {

struct Choice {
    int Mode;
    std::string Directory, Name;

    bool operator==(const Choice&) const = default;
};

std::vector<Choice> Choices;

void Choose(int mode, const char* directory, const char* name) {
    Choices.push_back({mode, directory, name});
}

} // namespace

class FileSelectors : public ToolkitTest {
  protected:
    TemporaryDirectory Files;
    std::string Directory = Files.Path();
    Window* Owner = nullptr;

    void SetUp() override {
        ToolkitTest::SetUp();
        Choices.clear();
        Owner = Open("Owner", 20, 20, 500, 500);
        for (const char* name : {"zoo", "Bridges", "Bridges/inner", ".git"})
            std::filesystem::create_directories(Directory + "/" + name);
        for (const char* name : {"tower.kirvo", "Alley.kirvo", "alley.kirvo.bak", "notes.txt", ".hidden.kirvo",
                                 "two words.kirvo", "a&b $(x).kirvo", "caf\xC3\xA9.kirvo", "Bridges/span.kirvo"})
            std::ofstream(Directory + "/" + name) << "x";
    }

    void OpenSelector(int mode, const char* name = nullptr) {
        DoFileSelector(mode, Directory.c_str(), name, ".kirvo", Choose, Owner);
        Settle();
    }

    /// The state of the open selector.
    static FileSelector& State() { return WindowData<FileSelector>(FileSelectorWindow); }

    static std::vector<std::string> Rows() {
        std::vector<std::string> rows;
        for (const GadgetView& view : GadgetsOf(FileSelectorWindow))
            if (view.Kind->Name == "scroll"s)
                for (const GadgetItem& item : view.Description.Items)
                    rows.push_back(item.Label);
        return rows;
    }

    /// Plays a script in the window whose title begins so, the pointer being in it.
    static void In(const std::string& title, const std::string& script) {
        Play("in \"" + title + "\"\nmove 60 110\n" + script);
    }
};

TEST_F(FileSelectors, ListsDirectoriesBeforeFilesWithTheExtension) {
    OpenSelector(FileToOpen | FileOffersBackups);
    EXPECT_EQ(Rows(), (std::vector<std::string>{"Bridges/", "zoo/", "a&b $(x).kirvo", "Alley.kirvo",
                                                "caf\xC3\xA9.kirvo", "tower.kirvo", "two words.kirvo"}));
    In("Open file...", "button \"Show backup files\"");
    EXPECT_EQ(Rows()[4], "alley.kirvo.bak");
}

TEST_F(FileSelectors, DisablesItsOwnerAndThereIsOnlyOne) {
    OpenSelector(FileToOpen);
    Window* selector = FileSelectorWindow;
    EXPECT_EQ(Owner->Disabled, 1);
    EXPECT_EQ(selector->Parent, Owner);
    OpenSelector(FileToSave);
    EXPECT_EQ(FileSelectorWindow, selector);
    EXPECT_EQ(Owner->Disabled, 1);
    In("Open file...", "button Cancel");
    EXPECT_EQ(FileSelectorWindow, nullptr);
    EXPECT_EQ(Owner->Disabled, 0);
    EXPECT_TRUE(Choices.empty());
}

TEST_F(FileSelectors, TwoQuickClicksOnAFileAcceptIt) {
    OpenSelector(FileToMerge);
    In("Merge file...", "button tower.kirvo\nwait 60\nbutton tower.kirvo\nwait 60");
    EXPECT_TRUE(Choices.empty());
    EXPECT_STREQ(State().Name, "tower.kirvo");
    In("Merge file...", "button Alley.kirvo\nbutton tower.kirvo");
    EXPECT_TRUE(Choices.empty());
    In("Merge file...", "wait 60\nbutton \"two words.kirvo\"\nbutton \"two words.kirvo\"");
    EXPECT_EQ(Choices, (std::vector<Choice>{{FileToMerge, Directory, "two words.kirvo"}}));
    EXPECT_EQ(FileSelectorWindow, nullptr);
    EXPECT_EQ(Owner->Disabled, 0);
}

TEST_F(FileSelectors, AClickEntersADirectoryAndTheButtonsComeBack) {
    OpenSelector(FileToOpen);
    In("Open file...", "button tower.kirvo\nbutton Bridges/");
    EXPECT_EQ(State().Directory, Directory + "/Bridges");
    EXPECT_STREQ(State().Name, "") << "a scan empties the name";
    EXPECT_EQ(Rows(), (std::vector<std::string>{"inner/", "span.kirvo"}));
    In("Open file...", "button \"Go up\"");
    EXPECT_EQ(State().Directory, Directory);
    In("Open file...", "button zoo/\nbutton Original");
    EXPECT_EQ(State().Directory, Directory);
    setenv("HOME", (Directory + "/Bridges").c_str(), 1);
    In("Open file...", "button Home\nbutton span.kirvo\nbutton Open");
    EXPECT_EQ(Choices, (std::vector<Choice>{{FileToOpen, Directory + "/Bridges", "span.kirvo"}}));
}

TEST_F(FileSelectors, GoingUpEndsAtTheRoot) {
    DoFileSelector(FileToOpen, "/", nullptr, ".kirvo", Choose, Owner);
    Settle();
    EXPECT_FALSE(Rows().empty());
    In("Open file...", "button \"Go up\"");
    EXPECT_STREQ(State().Directory, "");
    In("Open file...", "type tmp\nkey Return");
    EXPECT_STREQ(State().Directory, "/tmp");
}

TEST_F(FileSelectors, GoingUpFromANameWithoutASlashSaysSo) {
    DoFileSelector(FileToOpen, "models", nullptr, ".kirvo", Choose, Owner);
    Settle();
    testing::internal::CaptureStderr();
    In("Open file...", "button \"Go up\"");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error while trying to go up!\a\n");
    EXPECT_STREQ(State().Directory, "models");
}

TEST_F(FileSelectors, NamesToSaveAreFilteredAsTheyAreTyped) {
    OpenSelector(FileToSave);
    In("Save file as...", "type \".my new*<shed>-2.x_\xC3\xA9\"");
    EXPECT_STREQ(State().Name, "my_newshed-2.x_\xC3\xA9");
    In("Save file as...", "key Return");
    EXPECT_EQ(Choices, (std::vector<Choice>{{FileToSave, Directory, "my_newshed-2.x_\xC3\xA9"}}));
}

TEST_F(FileSelectors, NothingIsSavedWithoutAName) {
    OpenSelector(FileToSave);
    In("Save file as...", "key Return\nbutton Save");
    EXPECT_TRUE(Choices.empty());
    EXPECT_EQ(State().Choice, -1);
    In("Save file as...", "type x");
    EXPECT_STREQ(State().Name, "x") << "the input must be active again";
}

TEST_F(FileSelectors, OverwritingIsAskedFor) {
    OpenSelector(FileToSave, "tower.kirvo");
    In("Save file as...", "key Return");
    EXPECT_TRUE(Choices.empty());
    EXPECT_EQ(FileSelectorWindow->Disabled, 1);
    In("Warning", "button Cancel");
    EXPECT_EQ(FileSelectorWindow->Disabled, 0);
    EXPECT_EQ(State().Choice, -1);
    In("Save file as...", "button Save");
    In("Warning", "close");
    EXPECT_EQ(FileSelectorWindow->Disabled, 0);
    In("Save file as...", "button Save");
    In("Warning", "button Ok");
    EXPECT_EQ(Choices, (std::vector<Choice>{{FileToSave, Directory, "tower.kirvo"}}));
    EXPECT_EQ(FileSelectorWindow, nullptr);
    EXPECT_EQ(WindowList->Next, nullptr);
}

TEST_F(FileSelectors, OverwritingIsAskedForWithoutTheExtensionToo) {
    OpenSelector(FileToSave, "tower");
    In("Save file as...", "key Return");
    EXPECT_TRUE(Choices.empty());
}

TEST_F(FileSelectors, KeysChooseRows) {
    OpenSelector(FileToOpen);
    In("Open file...", "key Down Down Down Down");
    EXPECT_STREQ(State().Name, "Alley.kirvo");
    In("Open file...", "key t");
    EXPECT_STREQ(State().Name, "tower.kirvo");
    In("Open file...", "key w");
    EXPECT_STREQ(State().Name, "two words.kirvo");
    In("Open file...", "wait 120\nkey Home Return");
    EXPECT_EQ(State().Directory, Directory + "/Bridges");
    In("Open file...", "key End Return");
    EXPECT_EQ(Choices, (std::vector<Choice>{{FileToOpen, Directory + "/Bridges", "span.kirvo"}}));
}

TEST_F(FileSelectors, EscapeCancels) {
    OpenSelector(FileToOpen);
    In("Open file...", "key Escape");
    EXPECT_EQ(FileSelectorWindow, nullptr);
    OpenSelector(FileToSave, "name");
    In("Save file as...", "key Escape");
    ASSERT_NE(FileSelectorWindow, nullptr) << "the first empties the name";
    In("Save file as...", "key Escape");
    EXPECT_EQ(FileSelectorWindow, nullptr);
}

TEST_F(FileSelectors, TypedPathsAreFollowed) {
    OpenSelector(FileToOpen);
    In("Open file...", "field \"Directory:\" \"" + Directory + "/zoo/../Bridges\"");
    EXPECT_EQ(State().Directory, Directory + "/Bridges");
    In("Open file...", "field \"Directory:\" \"../zoo\"");
    EXPECT_EQ(State().Directory, Directory + "/zoo");
    In("Open file...", "type \"" + Directory + "/a&b $(x)\"\nkey Return");
    EXPECT_EQ(Choices, (std::vector<Choice>{{FileToOpen, Directory, "a&b $(x).kirvo"}}));
}

TEST_F(FileSelectors, TypingReplacesTheNameToSaveAndASlashMakesItAPath) {
    OpenSelector(FileToSave, "tower.kirvo");
    In("Save file as...", "type zoo/new\nkey Return");
    EXPECT_EQ(State().Directory, Directory + "/zoo");
    EXPECT_STREQ(State().Name, "new");
    In("Save file as...", "key Return");
    EXPECT_EQ(Choices, (std::vector<Choice>{{FileToSave, Directory + "/zoo", "new"}}));
}

TEST_F(FileSelectors, PastedPathsAreFollowed) {
    OpenSelector(FileToSave);
    gl::SetClipboardText((Directory + "/Bridges/new span\n").c_str());
    In("Save file as...", "key Ctrl+v");
    EXPECT_EQ(State().Directory, Directory + "/Bridges");
    EXPECT_STREQ(State().Name, "new_span");
    In("Save file as...", "key Return");
    EXPECT_EQ(Choices, (std::vector<Choice>{{FileToSave, Directory + "/Bridges", "new_span"}}));
}

TEST_F(FileSelectors, APathThatLeadsNowhereIsToldOf) {
    OpenSelector(FileToOpen);
    In("Open file...", "type \"/no/such/file\"\nkey Return");
    EXPECT_EQ(State().Directory, Directory);
    EXPECT_EQ(FileSelectorWindow->Disabled, 1);
    Play("in Notifier\nmove 5 5\nkey Return");
    EXPECT_EQ(FileSelectorWindow->Disabled, 0);
}

TEST_F(FileSelectors, UnreadableDirectoriesAreEmpty) {
    DoFileSelector(FileToOpen, (Directory + "/missing").c_str(), nullptr, ".kirvo", Choose, Owner);
    Settle();
    EXPECT_TRUE(Rows().empty());
    EXPECT_FALSE(State().Listing->Error.empty());
    In("Open file...", "key Down Up End Return\nclick left 60 250\nbutton Open\nbutton \"Go up\"");
    EXPECT_FALSE(Rows().empty());
    EXPECT_TRUE(Choices.empty());
}

TEST_F(FileSelectors, WhatCannotBeExaminedIsLeftOut) {
    ASSERT_EQ(symlink("/no/such/target", (Directory + "/dangling.kirvo").c_str()), 0);
    testing::internal::CaptureStdout();
    FileListing listing = ListFiles(Directory, ".kirvo", false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "stat failed\n");
    EXPECT_EQ(listing.Entries.size(), 7u);
}

TEST_F(FileSelectors, RescanningForgetsTheSelection) {
    OpenSelector(FileToSave | FileOffersBackups, "shed");
    In("Save file as...", "button Alley.kirvo\nbutton \"Show backup files\"");
    EXPECT_EQ(ListRowOn(State().List), -1);
    EXPECT_STREQ(State().Name, "Alley.kirvo") << "a name to save stays";
}

TEST_F(FileSelectors, ShuttingTheOwnerShutsTheSelector) {
    Window* other = Open("Other", 600, 20, 100, 50);
    OpenSelector(FileToSave, "tower.kirvo");
    In("Save file as...", "key Return");
    ShutWindow(Owner);
    EXPECT_EQ(WindowList, other);
    EXPECT_EQ(other->Next, nullptr);
    EXPECT_EQ(FileSelectorWindow, nullptr);
}

// Only rows that show are drawn and reported, whatever the directory holds.
TEST_F(FileSelectors, VeryLargeDirectoriesOnlyShowAWindowful) {
    constexpr int count = 100000;
    OpenSelector(FileToOpen);
    FileListing& listing = *State().Listing;
    listing.Entries.clear();
    for (int i = 0; i < count; ++i)
        listing.Entries.push_back({"file" + std::to_string(100000 + i) + ".kirvo", true});
    {
        WindowScope scope(FileSelectorWindow);
        ShowListing();
    }
    RedrawWindow(FileSelectorWindow);
    In("Open file...", "key End");
    EXPECT_EQ(ListRowOn(State().List), count - 1);
    EXPECT_EQ(Rows().size(), 11u);
    EXPECT_EQ(Rows().back(), "file199999.kirvo");
    In("Open file...", "key PageUp\ntype file15");
    EXPECT_STREQ(State().Name, "file150000.kirvo");
    EXPECT_EQ(ScrollOf(State().List).ContentH, count * 19);
}

TEST(FilePaths, AreResolvedAsUsersWriteThem) {
    setenv("HOME", "/home/kim", 1);

    struct Case {
        const char *Directory, *Typed, *Path;
    };

    constexpr Case cases[] = {
        {"/a/b", "c", "/a/b/c"},         {"/a/b", "../c/", "/a/c"},
        {"/a/b", "/x//y/./z", "/x/y/z"}, {"/a/b", "~", "/home/kim"},
        {"/a/b", "~/m", "/home/kim/m"},  {"/a/b", "../../../..", ""},
        {"/a/b", "~kim", "/a/b/~kim"},   {"", "a", "/a"},
        {"/a b", "c d", "/a b/c d"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(ResolvedPath(test.Directory, test.Typed), test.Path) << test.Typed;
}
