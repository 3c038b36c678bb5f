#pragma once

#include "files/primitives.h"

/// Skips what follows an unknown tag and sets InformationLost; records the context's error when it cannot be skipped.
void SkipUnknownItem(FileCursor& file, int contextError);

/// Reads the tagged items of one context up to its end tag or an error. `item` is called with each tag, reads what
/// follows it, and returns false when it does not know the tag.
template <class Item>
void ReadItems(FileCursor& file, int contextError, Item item) {
    for (int tag; ReadFileByte(file, tag) && tag != 0;)
        if (!item(tag))
            SkipUnknownItem(file, contextError);
}
