#pragma once

#include "store/records.h"

// Palettes: sets of materials kept in text files, from which any model can take them.

inline constexpr char MaterialsExtension[] = ".kirvo_materials";

/// What ReadMaterialsFile has read, in the order of the file, until the list is given another place. Owned here.
extern Material* LoadedMaterials;

/// Reads a palette into LoadedMaterials, which is emptied first. An entry that is damaged or incomplete is left out.
/// 1 when there is any material.
int ReadMaterialsFile(const char* name);

/// Writes all materials of the current file, colours to two decimals. 0 when that fails, which is told on the standard
/// error stream; an older file of that name then stays as it was.
int WriteMaterialsFile(const char* name);

void FreeLoadedMaterials();

/// Appends those of LoadedMaterials to the current file's list that are not there yet, and empties LoadedMaterials.
void MergeLoadedMaterials();

/// The palette that new models may start with: written from, and read when LoadMaterialsOnNew is set.
const char* DefaultMaterialsFile();
int SaveDefaultMaterials();

/// Commands: the user chooses a file, which is then loaded into the list or written from it. Failures are told.
void LoadMaterialPalette();
void SaveMaterialPalette();
