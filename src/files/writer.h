#pragma once

/// Writes the main file of the store as a model file of the current version. 1 on success. 0 when the file cannot be
/// created, which the user is told, or a write fails, which is left to the caller to tell (FileErrorNumber is
/// WriteFailed, and the file is incomplete).
///
/// Brings every object up to date and numbers materials, textures, objects, sub-objects and vertices in their Index, Id
/// or Mark.
int WriteKirvo(const char* fileName);

/// WriteKirvo; with FileBackups set, an existing file of that name is kept under the name with ".bak" appended.
int SaveModelFile(const char* fileName);

/// Flag, a preference: keep the previous contents of a file that is saved over.
extern int FileBackups;
