#pragma once

#include "gooey/file_preview.h"

/// An image file of any kind that serves as a texture, small enough for a preview, over grey where it is transparent.
/// Of one too large to be read in a moment there is no picture, only its size.
FilePicture MakePicturePreview(const char* path);
