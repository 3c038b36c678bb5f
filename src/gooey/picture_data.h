#pragma once

// The compressed pictures, made by scripts/make-pictures. See compressed_image.h for the form.

extern const unsigned char LogoData[];
extern const unsigned char OpenEyeData[];
extern const unsigned char ClosedEyeData[];
