#include "gooey/program_pictures.h"

#include "gooey/compressed_image.h"
#include "gooey/picture_data.h"

namespace {

StoredImage Logo = {LogoData, LogoWidth, LogoHeight, false, nullptr};
StoredImage OpenEye = {OpenEyeData, EyeSize, EyeSize, false, nullptr};
StoredImage DimOpenEye = {OpenEyeData, EyeSize, EyeSize, true, nullptr};
StoredImage ClosedEye = {ClosedEyeData, EyeSize, EyeSize, false, nullptr};
StoredImage DimClosedEye = {ClosedEyeData, EyeSize, EyeSize, true, nullptr};

} // namespace

void DrawLogo(int x, int y) {
    DrawImage(Logo, x, y);
}

void DrawOpenEye(int x, int y) {
    DrawImage(OpenEye, x, y);
}

void DrawDimOpenEye(int x, int y) {
    DrawImage(DimOpenEye, x, y);
}

void DrawClosedEye(int x, int y) {
    DrawImage(ClosedEye, x, y);
}

void DrawDimClosedEye(int x, int y) {
    DrawImage(DimClosedEye, x, y);
}
