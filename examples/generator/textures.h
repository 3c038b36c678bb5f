#pragma once

#include "images.h"

#include <string>

/// Writes the images that the examples use into a directory. False, after a message, when one cannot be written.
bool WriteTextures(const std::string& directory);

/// Of the opaque part of such an image; grey for a name that is none.
Colour MeanColour(const std::string& name);
