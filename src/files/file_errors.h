#pragma once

// The error state that the model file's readers and its writer share. It is sticky: once an error is recorded, every
// primitive fails without doing anything, so that all loops end; it stays readable until the next read or write.

/// Numbers of the errors: indices into Ferr, except WriteFailed.
enum FileErrorCode : int {
    WriteFailed = -1, // has no message
    UnexpectedEnd = 0,
    NotAKirvoFile = 1,
    BadFile = 2,
    FileNotFound = 3,
    TooManyReals = 4,
    BadString = 5,
    UnsupportedRevision = 6,
    BadMaterialIndex = 7,
    BadMaterials = 8,
    BadVertex = 9,
    BadVertexIndex = 10,
    BadPolygon = 11,
    UnknownLighting = 12,
    BadPolygonMaterial = 13,
    TooFewVertices = 14,
    BadSubObject = 15,
    UndefinedSubObject = 16,
    BadLod = 17,
    BadTree = 18,
    UnknownTreeObject = 19,
    BadTexture = 20,
    UnknownData = 21,
    BadView = 22,
    ReadCancelled = 23,
    FileErrorCount
};

/// What the user is told about each error.
extern const char* const Ferr[FileErrorCount];

/// Flag: an error has been recorded during the current read or write.
extern int FileError;

/// The error recorded last; meaningful while FileError is set.
extern int FileErrorNumber;

/// Flag, set by the caller of a read: its errors are not shown to the user, except UnsupportedRevision.
extern int FileErrorOk;

/// Records an error, also over an earlier one.
void SetError(int number);

/// Forgets any error: a read or write begins.
void ClearFileError();

/// "Kirvo:" and the text on the standard error stream, then the fatal end: an internal error.
[[noreturn]] void FatalFileError(const char* text);
