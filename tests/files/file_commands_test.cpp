#include "files/file_commands.h"

#include "base/directories.h"
#include "files/file_errors.h"
#include "files/writer.h"
#include "gooey/file_selector.h"
#include "made_model.h"
#include "reading.h"
#include "store/objects.h"

namespace {

std::vector<std::string> MergeWindows;

class FileCommands : public FilesTest {
  protected:
    FileCommands() {
        MergeWindows.clear();
        CopyFileName(FilePath, "/my models");
        CopyFileName(FileName, "mine.kirvo");
        TheFileSlots.OpenMergeWindow = [](const char* name) -> Window* {
            MergeWindows.emplace_back(name);
            return nullptr;
        };
    }

    ~FileCommands() override { *FilePath = *FileName = '\0'; }

    static void ReadToMerge(const ModelDirectory& directory, const char* name) {
        testing::internal::CaptureStdout();
        DoFileOp(FileToMerge, directory.Path("").c_str(), name);
        testing::internal::GetCapturedStdout();
    }

    ModelDirectory directory;
};

TEST_F(FileCommands, MergingLeavesTheMainFileAsItIs) {
    AddObject("first", 1, 0);
    Object* current = CurrentObject();
    directory.Write("other.kirvo.bak", MadeModel("none"));
    directory.Write("damaged.kirvo", MadeModel("none").substr(0, 400));
    for (const int saved : {0, 1})
        for (const char* name : {"other.kirvo.bak", "damaged.kirvo"}) {
            WorkSaved = saved;
            ReadToMerge(directory, name);
            EXPECT_EQ(std::string(FilePath) + "|" + FileName, "/my models|mine.kirvo");
            EXPECT_EQ(WorkSaved, saved);
            EXPECT_EQ(CurrentFile, &MainFile);
            EXPECT_EQ(CurrentObject(), current);
            EXPECT_EQ(current->Next, nullptr);
        }
    // A file that cannot be read opens no window.
    EXPECT_EQ(MergeWindows, (std::vector<std::string>{"other.kirvo.bak", "other.kirvo.bak"}));
    EXPECT_EQ(Told.size(), 2U);
}

// Otherwise the next save would go to the home directory.
TEST_F(FileCommands, AModelInTheRootStaysThere) {
    AddObject("first", 1, 0);
    FileErrorOk = 1;
    DoFileOp(FileToOpen, "", "no such model.kirvo");
    FileErrorOk = 0;
    EXPECT_EQ(std::string(FilePath) + "|" + FileName, "/|no such model.kirvo");
}

TEST_F(FileCommands, AFailedSaveAsKeepsTheModelsName) {
    AddObject("first", 1, 0);
    WorkSaved = 0;
    DoFileOp(FileToSave, directory.Path("nowhere").c_str(), "new");
    EXPECT_EQ(std::string(FilePath) + "|" + FileName, "/my models|mine.kirvo");
    EXPECT_EQ(WorkSaved, 0);
    EXPECT_EQ(Told, std::vector<std::string>{"Couldn't write file:  new.kirvo\n\nreason: No such file or directory"});
}

} // namespace
