#include "files/items.h"

#include "files/reader.h"

void SkipUnknownItem(FileCursor& file, int contextError) {
    if (SkipFileBlock(file))
        InformationLost = 1;
    else
        SetError(contextError);
}
