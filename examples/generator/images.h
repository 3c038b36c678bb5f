#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// Images made by functions of a place, and the noise that gives them life. All noise repeats, so that images tile.

/// Red, green and blue, 0 to 1.
struct Colour {
    double Red, Green, Blue;
};

Colour operator*(const Colour& colour, double factor);
Colour Mix(const Colour& a, const Colour& b, double t); // a at t = 0, b at t = 1

struct Texel {
    Colour Shade;
    double Opacity = 1;

    Texel(const Colour& colour, double opacity = 1) : Shade(colour), Opacity(opacity) {}
};

/// An image file's contents: 8 bits a channel, rows from the bottom.
class Image {
  public:
    /// `paint` is called with places in pixels, samples * samples of them for each pixel. 3 channels, or 4 with
    /// opacity.
    Image(int width, int height, int channels, int samples, const std::function<Texel(double x, double y)>& paint);

    /// In the format that textures are read from. False when that fails.
    bool Write(const std::string& path) const;

  private:
    int Width, Height, Channels;
    std::vector<std::uint8_t> Values; // channel by channel
};

/// 0 at `from` and below, 1 at `to` and above, smooth between; the other way round when from > to.
double Step(double from, double to, double value);

/// A number from 0 to 1 that looks random, always the same for the same arguments.
double Random(int a, int b = 0, int c = 0);

/// From 0 to 1, smooth, repeating every `period` units in both directions.
double Noise(double x, double y, int period, int seed);
/// Several octaves of it, each half as high and as wide as the one before.
double Fractal(double x, double y, int period, int octaves, int seed);

/// Of irregular stones, one in each unit square: how far inside its stone a place lies (0 at the joints) and which it
/// is.
struct Stone {
    double Depth;
    int Number;
};

Stone StoneAt(double x, double y, int period, int seed);
