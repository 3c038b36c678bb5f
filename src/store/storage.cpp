#include "store/storage.h"

#include "base/debug.h"
#include "base/exit.h"
#include "base/slots.h"
#include "store/accessors.h"
#include "store/material_list.h"
#include "store/objects.h"
#include "store/scene.h"
#include "store/texture_list.h"

FileStruct MainFile, MergeFile;
FileStruct* CurrentFile = &MainFile;
int Mergeing;
int WorkSaved = 1;
int ObjectIsolated = 1;
int DoingNew;
int NextFreeTexture = 1;
int NoViewports = 1;
StorageSlots TheStorageSlots;

void InitFileStruct(FileStruct& file) {
    file = FileStruct{};
}

void InitFileStructs() {
    PointToMerge(0);
    InitFileStruct(MainFile);
    InitFileStruct(MergeFile);
}

void PointToMerge(int merging) {
    Mergeing = merging ? 1 : 0;
    CurrentFile = merging ? &MergeFile : &MainFile;
}

void InitialiseStorage() {
    Trace("Storage initialised:\n");
    Trace("A Vertex occupies:\t%u bytes\n", static_cast<unsigned>(sizeof(Vertex)));
    Trace("A Polygon occupies:\t%u bytes\n", static_cast<unsigned>(sizeof(Polygon)));
    Trace("A PolygonBead occupies:\t%u bytes\n", static_cast<unsigned>(sizeof(PolygonBead)));
    Trace("A SubObject occupies:\t%u bytes\n", static_cast<unsigned>(sizeof(SubObject)));
    Trace("An Object occupies:\t%u bytes\n", static_cast<unsigned>(sizeof(Object)));
    InitFileStructs();
    ScenePaste = SceneUndo = nullptr;
    NextFreeTexture = 1;
}

void ResetStorage() {
    FreeScene();
    FreeAllObjects();
    FreeAllTextures();
    FreeAllMaterials();
    if (!Mergeing) {
        CallSlot(TheStorageSlots.FreePolygonPaste);
        CallSlot(TheStorageSlots.FreeVertexPaste);
    }
    if (Quitting)
        return;
    if (!Mergeing) {
        CallSlot(TheSceneSlots.DevalidateSceneViews);
        ObjectIsolated = 1;
        CurrentTexture() = nullptr;
        CallSlot(TheStorageSlots.ResetFileInformation);
    }
    if (DoingNew) {
        CallSlot(TheStorageSlots.RestoreDisplayDefaults);
        if (NoViewports == 1)
            CallSlot(TheStorageSlots.ChangeNoViewports);
    }
}
