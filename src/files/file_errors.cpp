#include "files/file_errors.h"

#include "base/exit.h"

#include <cstdio>

const char* const Ferr[FileErrorCount] = {
    "Unexpected end of file",
    "Not a Kirvo file",
    "Bad file",
    "File not found",
    "Tried to read/write too many reals",
    "Bad string in file",
    "Unsupported file revision. You need a newer version of Kirvo to read that file...",
    "Bad material index",
    "Error in materials",
    "Bad vertex definition",
    "Bad vertex index",
    "Bad polygon definition",
    "Unknown lighting in polygon",
    "Polygon has bad material",
    "Polygon has less than 3 vertices",
    "Rubbish in sub object",
    "Undefined sub object in Lod",
    "Rubbish in LOD definition",
    "Bad tree definition",
    "Unknown object in tree definition",
    "Bad texture definition",
    "Unknown data in file - object/scene expected",
    "Bad view definition",
    "Loading was cancelled, the model is empty now...",
};

int FileError;
int FileErrorNumber;
int FileErrorOk;

void SetError(int number) {
    FileError = 1;
    FileErrorNumber = number;
}

void ClearFileError() {
    FileError = 0;
}

void FatalFileError(const char* text) {
    std::fprintf(stderr, "\n\nKirvo:%s\a\n", text);
    KillProgram(FatalEnd);
}
