#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What a picture file shows, seen small beside the list of a file selector, before it is opened.

inline constexpr int FilePictureSize = 128;
/// What a selector with it is wider, in pixels.
inline constexpr int FilePreviewWidth = FilePictureSize + 16;

struct FilePicture {
    /// At most FilePictureSize each; 0: there is no picture.
    int Width = 0, Height = 0;
    /// Packed 0x00BBGGRR, rows from the bottom.
    std::vector<std::uint32_t> Pixels;
    /// A few words about it.
    std::string Description;
};

/// Makes the picture of a file; what is none gives an empty one. Filled in by whoever knows pictures; null: no selector
/// shows any.
extern FilePicture (*MakeFilePicture)(const char* path);

/// Adds the picture of the file that is selected in the selector, the current window: its box's lower left corner.
void AddFilePreview(int x, int y);
