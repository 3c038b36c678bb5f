#pragma once

#include <cstdio>
#include <string>

/// Writes the main file of the store as a model file of the current version. 1 on success. 0 when the file cannot be
/// created, which the user is told, or a write fails, which is left to the caller to tell (FileErrorNumber is
/// WriteFailed, and the file is incomplete).
///
/// Brings every object up to date and numbers materials, textures, objects, sub-objects and vertices in their Index, Id
/// or Mark.
int WriteKirvo(const char* fileName);

/// Saves the main file of the store: what WriteKirvo writes takes the place of the file of that name in one step, when
/// all of it is on the disk, so that a failure leaves the previous version in its place. With FileBackups set the
/// previous version is kept under the name with ".bak" appended. 1 on success. Otherwise 0, and the user has been told
/// what failed and where the previous version is.
int SaveModelFile(const char* fileName);

/// SaveModelFile over a file that another program has changed: that version is kept under FreeNameForForeignVersion,
/// which no later save replaces, whatever FileBackups says. Where that cannot be done nothing is saved.
int SaveOverForeignFile(const char* fileName);

/// The path of a backup beside the file, such as "house-other.kirvo.bak", that no file has.
std::string FreeNameForForeignVersion(const std::string& fileName);

/// Writes what WriteKirvo does into an open file, past the stream's buffer, and leaves that open. 0, with errno set,
/// when that fails; nobody is told.
int WriteKirvoInto(std::FILE* stream);

/// Flag, a preference: keep the previous contents of a file that is saved over.
extern int FileBackups;
