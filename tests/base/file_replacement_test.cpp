#include "base/file_replacement.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

class FileReplacing : public testing::Test {
  protected:
    std::string Path(const std::string& name) const { return place.Path() / name; }

    static std::string ContentsOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(place.Path()))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    static void Put(FileReplacement& file, const std::string& text) {
        ASSERT_NE(file.Stream(), nullptr);
        std::fputs(text.c_str(), file.Stream());
    }

    static bool Replace(const std::string& path, const std::string& text) {
        FileReplacement file(path.c_str());
        return file.Stream() && std::fputs(text.c_str(), file.Stream()) >= 0 && file.Commit();
    }

    TemporaryDirectory place;
};

TEST_F(FileReplacing, TheOldVersionStaysUntilTheLastStep) {
    std::ofstream(Path("a")) << "old";
    FileReplacement file(Path("a").c_str());
    EXPECT_TRUE(file.Replaces());
    Put(file, "new");
    ASSERT_TRUE(file.Finish());
    EXPECT_EQ(ContentsOf(Path("a")), "old");
    ASSERT_TRUE(file.KeepOldVersion(".bak"));
    EXPECT_EQ(ContentsOf(Path("a")), "old"); // no moment without a file
    ASSERT_TRUE(file.PutInPlace());
    EXPECT_EQ(ContentsOf(Path("a")), "new");
    EXPECT_EQ(ContentsOf(Path("a.bak")), "old");
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "a.bak"}));
}

TEST_F(FileReplacing, WhatIsAbandonedOrKilledLeavesTheOldVersion) {
    std::ofstream(Path("a")) << "old";
    {
        FileReplacement file(Path("a").c_str());
        Put(file, "half");
    }
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
    EXPECT_EXIT(
        {
            FileReplacement file(Path("a").c_str());
            Put(file, "half");
            kill(getpid(), SIGKILL);
        },
        testing::KilledBySignal(SIGKILL), "");
    EXPECT_EQ(ContentsOf(Path("a")), "old");
    EXPECT_EQ(Names().size(), 2U);
    // What was left lying about is used up by the next attempt, or removed without one.
    const std::string left = Names()[0];
    EXPECT_TRUE(Replace(Path("a"), "new"));
    EXPECT_EQ(ContentsOf(Path("a")), "new");
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
    std::ofstream(Path(left)) << "half";
    RemoveUnfinishedReplacement(Path("a").c_str());
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
}

TEST_F(FileReplacing, TwoAtATimeDoNotMix) {
    FileReplacement first(Path("a").c_str()), second(Path("a").c_str());
    Put(first, "first");
    Put(second, "second");
    ASSERT_TRUE(second.Finish() && second.PutInPlace());
    ASSERT_TRUE(first.Finish() && first.PutInPlace());
    EXPECT_EQ(ContentsOf(Path("a")), "first");
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
}

TEST_F(FileReplacing, LinksAndPermissionsStay) {
    fs::create_directory(Path("models"));
    std::ofstream(Path("models/a")) << "old";
    ASSERT_EQ(chmod(Path("models/a").c_str(), 0640), 0);
    fs::create_symlink("models/a", Path("link"));
    EXPECT_TRUE(Replace(Path("link"), "new"));
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    EXPECT_EQ(ContentsOf(Path("models/a")), "new");
    EXPECT_EQ(static_cast<int>(fs::status(Path("models/a")).permissions()), 0640);
    // A link to nothing leads to where the file is made.
    fs::create_symlink("models/b", Path("other"));
    EXPECT_TRUE(Replace(Path("other"), "b"));
    EXPECT_EQ(ContentsOf(Path("models/b")), "b");
}

TEST_F(FileReplacing, FilesOfDirectoriesThatTakeNoNewOnesAreWrittenOver) {
    fs::create_directory(Path("closed"));
    for (const char* name : {"closed/a", "closed/a.bak"}) {
        std::ofstream(Path(name)) << "an old version that is longer";
        ASSERT_EQ(chmod(Path(name).c_str(), 0666), 0);
    }
    ASSERT_EQ(chmod(Path("closed").c_str(), 0555) + chmod(place.Path().c_str(), 0755), 0);
    constexpr uid_t nobody = 65534;
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(seteuid(nobody), 0);
    }
    {
        FileReplacement file(Path("closed/a").c_str());
        Put(file, "new");
        EXPECT_TRUE(file.Replaces() && file.Finish());
        EXPECT_TRUE(file.KeepOldVersion(".bak"));
        EXPECT_FALSE(file.KeepOldVersion(".other"));
        EXPECT_TRUE(file.PutInPlace());
    }
    errno = 0;
    EXPECT_EQ(FileReplacement(Path("closed/b").c_str()).Stream(), nullptr);
    EXPECT_EQ(errno, EACCES);
    if (isRoot) {
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_EQ(ContentsOf(Path("closed/a")), "new");
    EXPECT_EQ(ContentsOf(Path("closed/a.bak")), "an old version that is longer");
    chmod(Path("closed").c_str(), 0755);
}

TEST_F(FileReplacing, FailuresSayWhyAndChangeNothing) {
    fs::create_directories(Path("directory/full"));

    struct {
        std::string Name;
        int Reason;
    } const cases[] = {{Path("directory"), EISDIR},
                       {Path("nowhere/a"), ENOENT},
                       {"/dev/full", ENOSPC},
                       {Path(std::string(300, 'n')), ENAMETOOLONG}};

    for (const auto& c : cases) {
        errno = 0;
        EXPECT_FALSE(Replace(c.Name, "text"));
        EXPECT_EQ(errno, c.Reason) << c.Name << ": " << std::strerror(errno);
    }
    EXPECT_TRUE(fs::is_character_file("/dev/full"));

    // A file that grows too large stands for a full disk.
    std::ofstream(Path("a")) << "old";
    signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small = {1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_FALSE(Replace(Path("a"), std::string(2000, 'x')));
    EXPECT_EQ(errno, EFBIG);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(ContentsOf(Path("a")), "old");
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "directory"}));
}

TEST_F(FileReplacing, ABackupThatCannotBeMadeChangesNothing) {
    std::ofstream(Path("a")) << "old";
    fs::create_directories(Path("a.bak/full"));
    FileReplacement file(Path("a").c_str());
    ASSERT_TRUE(file.Finish());
    EXPECT_FALSE(file.KeepOldVersion(".bak"));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_TRUE(file.KeepOldVersion(".2.bak"));
    EXPECT_EQ(ContentsOf(Path("a")), "old");
    EXPECT_TRUE(file.PutInPlace());
    EXPECT_EQ(ContentsOf(Path("a.2.bak")), "old");
}

mode_t ModeOf(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

TEST_F(FileReplacing, PermissionsOfAnotherFileAreTakenOver) {
    std::ofstream(Path("copy")) << "everybody's";
    for (const mode_t mode : {0600, 0640, 0444}) {
        std::ofstream(Path("a")) << "a";
        ASSERT_EQ(chmod(Path("a").c_str(), mode), 0);
        FileReplacement file(Path("copy").c_str(), Path("a").c_str());
        EXPECT_EQ(ModeOf(Path(".copy.saving")), mode | 0600);
        Put(file, "new");
        ASSERT_TRUE(file.Commit());
        EXPECT_EQ(ModeOf(Path("copy")), mode | 0600);
        fs::remove(Path("a"));
    }
    FileReplacement file(Path("copy").c_str(), Path("a").c_str());
    EXPECT_EQ(ModeOf(Path(".copy.saving")), 0600U);
}

TEST_F(FileReplacing, AVersionIsKeptUnderANameThatNoFileHas) {
    std::ofstream(Path("a")) << "foreign";
    std::ofstream(Path("taken")) << "taken";
    FileReplacement file(Path("a").c_str());
    Put(file, "new");
    ASSERT_TRUE(file.Finish());
    EXPECT_FALSE(file.KeepOldVersionAs(Path("taken")));
    EXPECT_EQ(errno, EEXIST);
    ASSERT_TRUE(file.KeepOldVersionAs(Path("free")));
    ASSERT_TRUE(file.PutInPlace());
    EXPECT_EQ(ContentsOf(Path("taken")) + ContentsOf(Path("free")) + ContentsOf(Path("a")), "takenforeignnew");
}

TEST_F(FileReplacing, WhatKillsHaveLeftIsRemoved) {
    const char* const stale[] = {".a.kirvo.saving", ".b c.kirvo.123.saving"};
    const char* const others[] = {".a.other.saving", ".a.kirvo.saving.txt", ".a.kirvo.x.saving", "a.kirvo.saving",
                                  ".kept.kirvo.saving.bak"};
    for (const char* name : stale)
        std::ofstream(Path(name)) << "half";
    for (const char* name : others)
        std::ofstream(Path(name)) << "not the program's, or all that is left";
    std::ofstream(Path("d.kirvo")) << "old";
    fs::create_hard_link(Path("d.kirvo"), Path(".d.kirvo.saving.bak"));
    fs::create_symlink("d.kirvo", Path(".link.kirvo.saving"));
    // One that is being written, also when all of it is on the disk.
    FileReplacement file(Path("e.kirvo").c_str());
    Put(file, "new");
    ASSERT_TRUE(file.Finish());
    RemoveUnfinishedReplacements(place.Path(), ".kirvo");
    std::vector<std::string> left = {".e.kirvo.saving", ".link.kirvo.saving", "d.kirvo"};
    left.insert(left.end(), std::begin(others), std::end(others));
    std::sort(left.begin(), left.end());
    EXPECT_EQ(Names(), left);
    EXPECT_TRUE(file.PutInPlace());
}

} // namespace
