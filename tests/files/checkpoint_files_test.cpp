#include "files/checkpoint_files.h"

#include "base/directories.h"
#include "reading.h"
#include "store/objects.h"
#include "support/temporary_directory.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class CheckpointFiles : public FilesTest {
  protected:
    CheckpointFiles() { CopyFileName(HomeDir, home.Path().c_str()); }

    ~CheckpointFiles() override {
        GiveBackCheckpointFiles();
        *HomeDir = '\0';
    }

    std::string Path(const std::string& name) const { return home.Path() / name; }

    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(Path(name), std::ios::binary) << text;
    }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(home.Path()))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    static std::string Origin() {
        CheckpointOrigin origin;
        return ReadCheckpointOrigin(origin) ? origin.Path + "|" + origin.Name : "none";
    }

    TemporaryDirectory home;
};

constexpr char Information[] = ".kirvo_checkpoint_info", NextInformation[] = ".kirvo_checkpoint_info.next",
               Checkpoint[] = "CheckPoint.kirvo", Lock[] = ".kirvo_checkpoint_lock";

TEST_F(CheckpointFiles, NamesComeBackWhole) {
    ASSERT_TRUE(TakeCheckpointFiles());
    const CheckpointOrigin origins[] = {{"/home/me", "house.kirvo"},
                                        {"/my models/of 1995", " a house .kirvo "},
                                        {"/two\nlines", "\nthree\n"},
                                        {"/größe", ""},
                                        {"", "Unnamed"},
                                        {"Kirvo 1 1 1 1 1", "Kirvo 1 1 1 1 1"}};
    for (const CheckpointOrigin& origin : origins) {
        ASSERT_TRUE(WriteCheckpoint(origin));
        EXPECT_EQ(Origin(), origin.Path + "|" + origin.Name);
        EXPECT_EQ(Names(), (std::vector<std::string>{Information, Lock, Checkpoint}));
    }
    RemoveCheckpoint();
    GiveBackCheckpointFiles();
    EXPECT_EQ(Names(), std::vector<std::string>{});
}

TEST_F(CheckpointFiles, OlderInformationIsRead) {
    ASSERT_TRUE(TakeCheckpointFiles());
    const std::pair<const char*, const char*> cases[] = {
        {"/home/me\nhouse.kirvo\n", "/home/me|house.kirvo"},
        {"/home/me\nhouse.kirvo", "/home/me|house.kirvo"},
        {"/my models\na house.kirvo\n", "/my models|a house.kirvo"},
        {"/home/me house.kirvo\n", "/home/me|house.kirvo"},
        {"/home/me\nhouse.kirvo\nKirvo 1 2 nonsense\n", "/home/me|house.kirvo"},
        {"/home/me\nhouse.kirvo\nKirvo 99999999999999999 3 1 1 1\n", "/home/me|house.kirvo"},
        {"/home/me\n", "none"},
        {"", "none"},
    };
    for (const auto& [text, origin] : cases) {
        Write(Information, text);
        EXPECT_EQ(Origin(), origin) << text;
    }
    fs::remove(Path(Information));
    EXPECT_EQ(Origin(), "none");
}

// As a kill at any moment between two steps leaves the files.
TEST_F(CheckpointFiles, TheInformationIsThatOfTheCheckpoint) {
    ASSERT_TRUE(TakeCheckpointFiles());
    const auto keep = [&](const char* name, const std::string& as) {
        fs::copy_file(Path(name), Path(as), fs::copy_options::overwrite_existing);
        fs::last_write_time(Path(as), fs::last_write_time(Path(name)));
    };
    ASSERT_TRUE(WriteCheckpoint({"/old", "old"}));
    keep(Checkpoint, "old checkpoint");
    keep(Information, "old information");
    AddObject("another", 0, 0);
    ASSERT_TRUE(WriteCheckpoint({"/new", "new"}));
    keep(Information, NextInformation);
    keep("old information", Information);
    EXPECT_EQ(Origin(), "/new|new");
    keep("old checkpoint", Checkpoint);
    EXPECT_EQ(Origin(), "/old|old");
    fs::remove(Path(Information));
    EXPECT_EQ(Origin(), "none");
}

TEST_F(CheckpointFiles, AFailureLeavesTheOlderOne) {
    ASSERT_TRUE(TakeCheckpointFiles());
    ASSERT_TRUE(WriteCheckpoint({"/old", "old"}));
    fs::create_directories(Path(std::string(NextInformation) + "/full"));
    EXPECT_FALSE(WriteCheckpoint({"/new", "new"}));
    EXPECT_EQ(Origin(), "/old|old");
    EXPECT_TRUE(ReadKirvo(CheckpointName().c_str()));
}

TEST_F(CheckpointFiles, ProgramsDoNotShareThem) {
    // The first program makes a checkpoint and is killed after the second has started.
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t first = fork();
    if (first == 0) {
        const bool done = TakeCheckpointFiles() && WriteCheckpoint({"/first", "first"});
        if (write(ready[1], done ? "y" : "n", 1) == 1)
            pause();
        _exit(0);
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    ASSERT_EQ(answer, 'y');
    ASSERT_TRUE(TakeCheckpointFiles());
    EXPECT_EQ(CheckpointName(), Path("CheckPoint-2.kirvo"));
    EXPECT_FALSE(CheckpointExists());
    EXPECT_TRUE(WriteCheckpoint({"/second", "second"}));
    kill(first, SIGKILL);
    waitpid(first, nullptr, 0);

    // Whoever comes next finds what was left, the second's too when it has ended without cleaning up.
    GiveBackCheckpointFiles();
    ASSERT_TRUE(TakeCheckpointFiles());
    EXPECT_EQ(Origin(), "/first|first");
    RemoveCheckpoint();
    GiveBackCheckpointFiles();
    ASSERT_TRUE(TakeCheckpointFiles());
    EXPECT_EQ(Origin(), "/second|second");
    RemoveCheckpoint();
    GiveBackCheckpointFiles();
    ASSERT_TRUE(TakeCheckpointFiles());
    EXPECT_EQ(CheckpointName(), Path(Checkpoint));
}

TEST_F(CheckpointFiles, AreKeptUnderNamesOfTheirOwn) {
    ASSERT_TRUE(TakeCheckpointFiles());
    EXPECT_EQ(PutCheckpointAside(), "");
    for (const char* name : {"UnreadCheckPoint.kirvo", "UnreadCheckPoint-2.kirvo"}) {
        Write(Checkpoint, name);
        EXPECT_EQ(PutCheckpointAside(), Path(name));
        EXPECT_TRUE(fs::exists(Path(name)));
        EXPECT_FALSE(CheckpointExists());
    }
}

TEST_F(CheckpointFiles, WhoMayNotReadTheModelMayNotReadThem) {
    ASSERT_TRUE(TakeCheckpointFiles());
    const auto mode = [&](const char* name) { return static_cast<unsigned>(fs::status(Path(name)).permissions()); };
    for (const unsigned model : {0U, 0600U, 0644U}) {
        fs::remove(Path("house"));
        if (model) {
            Write("house", "");
            fs::permissions(Path("house"), static_cast<fs::perms>(model));
        }
        ASSERT_TRUE(WriteCheckpoint({home.Path(), "house"}));
        EXPECT_EQ(mode(Checkpoint), model ? model : 0600U);
        EXPECT_EQ(mode(Information), 0600U);
    }
    fs::permissions(home.Path(), static_cast<fs::perms>(0755));
    ASSERT_TRUE(WriteCheckpoint({home.Path(), ""}));
    EXPECT_EQ(mode(Checkpoint), 0600U) << "of a model without a name";
}

} // namespace
