#include "files/file_commands.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/exit.h"
#include "base/file_names.h"
#include "base/file_replacement.h"
#include "base/slots.h"
#include "files/checkpoints.h"
#include "files/file_errors.h"
#include "files/file_information_window.h"
#include "files/file_slots.h"
#include "files/foreign_changes.h"
#include "files/merge_window.h"
#include "files/reader.h"
#include "files/recent_files.h"
#include "files/unsaved_work.h"
#include "files/writer.h"
#include "gooey/file_selector.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "materials/default_materials.h"
#include "platform/windows.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "textures/texture_file.h"
#include "views/main_window.h"
#include "views/status_line.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace {

constexpr std::string_view BackupExtension = ".bak";

/// The file of this name is there, but is not what the store holds: reading it failed. Saving must not replace it
/// without a question.
bool NameIsOfUnreadFile = false;

std::string PathOf(const char* directory, const char* name) {
    return std::string(directory) + "/" + name;
}

std::string CurrentPath() {
    return PathOf(FilePath, FileName);
}

/// The main window takes no input for the length of a scope.
class MainWindowDisabled {
  public:
    MainWindowDisabled() { DisableWindow(MainWindow); }

    ~MainWindowDisabled() { EnableWindow(MainWindow); }

    MainWindowDisabled(const MainWindowDisabled&) = delete;
    MainWindowDisabled& operator=(const MainWindowDisabled&) = delete;
};

/// A file keeps its previous version whatever the user prefers.
class BackupsOn {
  public:
    explicit BackupsOn(bool on) : Kept(FileBackups) {
        if (on)
            FileBackups = 1;
    }

    ~BackupsOn() { FileBackups = Kept; }

    BackupsOn(const BackupsOn&) = delete;
    BackupsOn& operator=(const BackupsOn&) = delete;

  private:
    int Kept;
};

/// What the answer "Save anyway" to the question about a foreign change leads to at last; may be null.
void (*AfterForeignSave)() = nullptr;

void NoteWorkSaved() {
    WorkSaved = 1;
    RememberFileOnDisk(CurrentPath());
    NoteRecentFile(CurrentPath());
    NameIsOfUnreadFile = false;
    ForgetCheckpoint();
    ResetCheckpoint();
}

void OpenSelector(int mode, const char* name) {
    DoFileSelector(mode, FilePath, name, KirvoExtension, DoFileOp, MainWindow);
}

void SaveAnyway() {
    if (!SaveOverForeignFile(CurrentPath().c_str()))
        return;
    NoteWorkSaved();
    if (!AfterForeignSave)
        return;
    const WindowScope scope(MainWindow);
    AfterForeignSave();
}

/// False when the user must be asked first; nothing may be saved then.
bool MayReplaceCurrentFile() {
    if (!FileChangedOnDisk(CurrentPath()))
        return true;
    AfterForeignSave = nullptr;
    AskAboutForeignChange(CurrentPath(), [](ForeignChangeAnswer answer) {
        if (answer == ForeignChangeAnswer::SaveAnyway)
            SaveAnyway();
        else if (answer == ForeignChangeAnswer::SaveAs)
            OpenSelector(FileToSave, FileName);
    });
    return false;
}

int SaveUnderCurrentName() {
    if (!MayReplaceCurrentFile())
        return 0;
    const MainWindowDisabled disabled;
    if (!SaveModelFile(CurrentPath().c_str()))
        return 0;
    NoteWorkSaved();
    return 1;
}

/// Gives a model without a name one that no file in its directory has: nobody has chosen what is replaced.
void NameAfterNoFile() {
    const std::string unnamed = msg(MsgUnnamed), extension(KirvoExtension);
    std::string name = unnamed + extension;
    struct stat status;
    for (int number = 2; lstat(PathOf(FilePath, name.c_str()).c_str(), &status) == 0; ++number)
        name = unnamed + "-" + std::to_string(number) + extension;
    CopyFileName(FileName, name.c_str());
}

/// The name is not the user's.
void TellWhereItIsSaved() {
    const std::string text = "The model had no name yet. It is saved as " + CurrentPath();
    if (Quitting)
        std::fprintf(stderr, "Kirvo: %s\n", text.c_str());
    else
        TellUserS(text.c_str());
}

int SaveAtOnce() {
    const bool unnamed = ModelIsUnnamed();
    if (!unnamed && !MayReplaceCurrentFile())
        return 0;
    const std::string oldName = FileName;
    if (unnamed)
        NameAfterNoFile();
    const BackupsOn backups(NameIsOfUnreadFile);
    if (!SaveModelFile(CurrentPath().c_str())) {
        CopyFileName(FileName, oldName.c_str());
        return 0;
    }
    NoteWorkSaved();
    if (unnamed)
        TellWhereItIsSaved();
    return 1;
}

/// One file at a time: another one waits until the first has been merged or given up.
void BeginMerge() {
    if (ToolWindowIsOpen(MergeWindow))
        OpenToolWindow(MergeWindow);
    else
        OpenSelector(FileToMerge, nullptr);
}

void OpenFile(const std::string& path) {
    RemoveUnfinishedReplacements(FilePath, KirvoExtension);
    LoadModelFile(path.c_str());
    DirtyAllWindows();
    ResetCheckpoint();
    CallSlot(TheFileSlots.WriteDefaults);
}

bool SaveFile(const std::string& path) {
    if (!MayReplaceCurrentFile() || !SaveModelFile(path.c_str()))
        return false;
    NoteWorkSaved();
    CallSlot(TheFileSlots.WriteDefaults);
    return true;
}

void RaiseMessage(Window* overWindow) {
    Trace("texture message...\n");
    if (overWindow)
        DisableWindow(overWindow);
    const WindowScope scope(MessageWindow);
    gl::winpop();
}

/// Reads the file into the merge file of the store and leaves the main file as it was.
void ReadForMerging(const std::string& path, const char* name) {
    MessageWindow = nullptr;
    Object* current = CurrentObject();
    const int workSaved = WorkSaved;
    PointToMerge(1);
    const int read = LoadModelFile(path.c_str());
    PointToMerge(0);
    CurrentObject() = current;
    WorkSaved = workSaved;
    if (!read || !TheFileSlots.OpenMergeWindow)
        return;
    Window* window = TheFileSlots.OpenMergeWindow(name);
    if (MessageWindow)
        RaiseMessage(window);
}

/// What ReadKirvo leaves to its callers: a file that is not there.
void TellThatFileIsMissing() {
    if (FileErrorNumber == FileNotFound && !FileErrorOk)
        TellUserS((std::string("Error while reading file:\n\n") + Ferr[FileNotFound] + "\n").c_str());
}

/// What the first model would have been is a new one.
void PutDefaultsInPlace() {
    StartingUp = 0;
    ResetStorage();
    CurrentObject();
    if (FirstMaterial())
        return;
    MakeDefaultMaterials();
    LoadDefaultTextures();
}

void CutBackupExtension() {
    const std::string_view name = FileName;
    if (name.size() > BackupExtension.size() && name.ends_with(BackupExtension))
        FileName[name.size() - BackupExtension.size()] = '\0';
}

} // namespace

int ModelIsUnnamed() {
    return !*FileName || std::strcmp(FileName, msg(MsgUnnamed)) == 0;
}

int DoFileOperation(int operation) {
    ClearFileError();
    if (!*FilePath) // no model has been there yet
        CopyFileName(FilePath, HomeDir);
    switch (operation) {
    case FileNew:
        WorkNotSaved(DoNew);
        return 1;
    case FileOpen:
        WorkNotSaved(DoFileOpen);
        return 1;
    case FileSave:
        if (!ModelIsUnnamed() && !NameIsOfUnreadFile)
            return SaveUnderCurrentName();
        [[fallthrough]];
    case FileSaveAs:
        OpenSelector(FileToSave, FileName);
        return 1;
    case FileMerge:
        BeginMerge();
        return 1;
    case FileSaveAtOnce:
        return SaveAtOnce();
    default:
        return 1;
    }
}

void DoNew() {
    const MainWindowDisabled disabled;
    CloseWindow(FileComment);
    DoingNew = 1;
    ResetStorage();
    CopyFileName(FileName, msg(MsgUnnamed));
    NameIsOfUnreadFile = false;
    ChangeWindowTitle();
    DirtyAllWindows();
    DoingNew = 0;
}

void DoFileOpen() {
    OpenSelector(FileBackups ? FileToOpen | FileOffersBackups : FileToOpen, FileName);
}

void DoFileOp(int mode, const char* directory, const char* name) {
    // May be FilePath itself. File selectors give the root as an empty text, which stands for no directory here.
    const std::string newPath = *directory ? directory : "/";
    std::string newName = name;
    if (mode == FileToSave && !newName.ends_with(KirvoExtension))
        newName += KirvoExtension;
    const std::string path = PathOf(newPath.c_str(), newName.c_str());
    const std::string oldPath = FilePath, oldName = FileName;
    bool keepNames = mode == FileToMerge;
    if (!CopyFileName(FilePath, newPath.c_str()) || !CopyFileName(FileName, newName.c_str())) {
        TellUserS("The name of the file is too long.");
        keepNames = true;
    } else if (mode == FileToOpen) {
        OpenFile(path);
    } else if (mode == FileToSave) {
        keepNames = !SaveFile(path);
    } else {
        ReadForMerging(path, newName.c_str());
    }
    if (keepNames) {
        CopyFileName(FilePath, oldPath.c_str());
        CopyFileName(FileName, oldName.c_str());
    }
    ChangeWindowTitle();
}

int LoadModelFile(const char* path) {
    CutBackupExtension();
    if (!Mergeing)
        CloseWindow(FileComment);
    // Before the read: what changes while it goes on counts as changed.
    if (!Mergeing)
        RememberFileOnDisk(CurrentPath());
    const int read = ReadKirvo(path);
    ResetCheckpoint();
    struct stat status;
    if (!Mergeing)
        NameIsOfUnreadFile = !read && stat(path, &status) == 0;
    if (read && TexturesMissing && !Mergeing)
        ShowStatusNote("The textures that are missing keep their names and their places on the polygons when the model "
                       "is saved.");
    if (read) {
        if (!Mergeing && stat(CurrentPath().c_str(), &status) == 0)
            NoteRecentFile(CurrentPath());
        return 1;
    }
    TellThatFileIsMissing();
    if (StartingUp)
        PutDefaultsInPlace();
    return 0;
}

void AfterSavingAnyway(void (*action)()) {
    if (AskingAboutForeignChange())
        AfterForeignSave = action;
}

void OpenModelByName(const std::string& path) {
    static std::filesystem::path toOpen; // for the answer to the question
    toOpen = path;
    WorkNotSaved([] { DoFileOp(FileToOpen, toOpen.parent_path().c_str(), toOpen.filename().c_str()); });
}

int LoadImportedModel(const char* path) {
    const int read = LoadModelFile(path);
    KeepFileOfThisName();
    NameIsOfUnreadFile = read && NameIsOfUnreadFile;
    return read;
}

void KeepFileOfThisName() {
    struct stat status;
    NameIsOfUnreadFile = stat(CurrentPath().c_str(), &status) == 0;
}
