#pragma once

#include <string>

// The operations of the File menu. The current model's directory and name are FilePath and FileName
// (base/directories.h).

/// What DoFileOperation does.
enum FileOperation {
    FileNew = 0,
    FileOpen = 1,
    FileSave = 2,
    FileSaveAs = 3,
    FileMerge = 4,
    /// Save under the current name without questions. A model without one gets a name that no file has, which is told.
    FileSaveAtOnce = 5,
};

/// Runs an operation of the File menu. 0 when a save failed, which the user has been told, or when the user is asked
/// whether to replace what another program has saved. New and Open first ask about
/// unsaved work; they, Save As and Merge only begin here.
int DoFileOperation(int operation);

/// While the user is asked that: what is done once the work has been saved all the same.
void AfterSavingAnyway(void (*action)());

/// Starts a new model, whatever becomes of the present one.
void DoNew();

/// Lets the user choose a model to open.
void DoFileOpen();

/// The file selector's choice: `mode` is FileToOpen, FileToSave or FileToMerge. FilePath and FileName become the
/// directory and name, but for merging and for a save that fails.
void DoFileOp(int mode, const char* directory, const char* name);

/// ReadKirvo under the name FileName, from which the ending of a backup is cut. When that fails during start-up the
/// model gets the default materials and textures, and start-up is over. 1 on success.
int LoadModelFile(const char* path);

/// Opens the model of that whole name after the question about unsaved work.
void OpenModelByName(const std::string& path);

/// LoadModelFile for a model that was made of another program's file, under the name FileName that no saving has given
/// it yet: a file of that name is not replaced without a question.
int LoadImportedModel(const char* path);

/// For a model that the program has given the name FileName: likewise.
void KeepFileOfThisName();

/// 1 when FileName stands for no file: a new model's.
int ModelIsUnnamed();
