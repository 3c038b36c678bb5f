#pragma once

#include "files/primitives.h"

/// Reads a model of version 1.00, plain text, into a new object of the current file, which is emptied first; the object
/// is named after FileName without its extension. `file` stands behind the header line. An error is recorded with
/// SetError; the store then holds what was read before it, for the caller to empty.
void ReadKirvo100(FileCursor& file);
