#pragma once

#include <string>

// Why a file gives no picture: sentences for the user.

inline constexpr char FileIsNoImage[] = "The file is no image.";
inline constexpr char PictureEndsEarly[] = "The file ends early.";
inline constexpr char PictureIsDamaged[] = "The file is damaged.";
inline constexpr char PictureHasNoPixels[] = "The image has no pixels.";
inline constexpr char PictureIsAnimated[] = "The image is animated. Save a single picture of it.";
inline constexpr char PictureIsCmyk[] = "The image is in the colours of a printer (CMYK). Save it as RGB.";
inline constexpr char PictureHasManyChannels[] = "The image has more than 4 channels.";

inline std::string TooLarge(long width, long height) {
    return "The image is too large: " + std::to_string(width) + " x " + std::to_string(height) + " pixels.";
}
