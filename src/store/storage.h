#pragma once

#include "store/records.h"

// The two files of a run, the main one and the one being merged in, and the start and reset of their data.

extern FileStruct MainFile, MergeFile;

/// The file that every store operation works on: &MainFile or &MergeFile.
extern FileStruct* CurrentFile;

/// Flag: CurrentFile is the merge file.
extern int Mergeing;

/// Flag: no unsaved changes. Cleared by every operation of the store that changes the model.
extern int WorkSaved;

/// Flag: object mode (1) rather than scene mode (0).
extern int ObjectIsolated;

/// Flag: a new file is being started, so ResetStorage restores the display defaults too.
extern int DoingNew;

/// The next unused texture definition number of the graphics layer.
extern int NextFreeTexture;

/// What ResetStorage needs done above the store. Each is skipped when null; they run in this order, after the current
/// file's records have been freed.
struct StorageSlots {
    void (*FreePolygonPaste)() = nullptr;     // empties the polygon clipboard; not while merging
    void (*FreeVertexPaste)() = nullptr;      // empties the vertex clipboard; not while merging
    void (*ResetFileInformation)() = nullptr; // title, author and comments of a new file; not while merging or quitting
    void (*RestoreDisplayDefaults)() = nullptr; // display flags of a new file; when DoingNew, not while quitting
    void (*ChangeNoViewports)() = nullptr;      // toggles 1 and 3 viewports; when DoingNew and NoViewports is 1
};

extern StorageSlots TheStorageSlots;

/// Empties the header: no lists, no current object, no scene.
void InitFileStruct(FileStruct& file);

/// Makes the main file current and empties both headers without freeing anything.
void InitFileStructs();

/// Chooses the file that every accessor works on: the merge file when `merging` is not 0, else the main file.
void PointToMerge(int merging);

/// Once at start-up, before any other call of the store.
void InitialiseStorage();

/// Empties the current file; its small records return to their pools.
void ResetStorage();
