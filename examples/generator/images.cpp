#include "images.h"

#include <algorithm>
#include <cmath>
#include <fstream>

namespace {

std::uint8_t Byte(double value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0, 1.0) * 255 + 0.5);
}

int Wrap(int value, int period) {
    return (value % period + period) % period;
}

double Ease(double t) {
    return t * t * (3 - 2 * t);
}

} // namespace

Colour operator*(const Colour& colour, double factor) {
    return {colour.Red * factor, colour.Green * factor, colour.Blue * factor};
}

Colour Mix(const Colour& a, const Colour& b, double t) {
    return {a.Red + (b.Red - a.Red) * t, a.Green + (b.Green - a.Green) * t, a.Blue + (b.Blue - a.Blue) * t};
}

Image::Image(int width, int height, int channels, int samples, const std::function<Texel(double, double)>& paint)
    : Width(width),
      Height(height),
      Channels(channels),
      Values(static_cast<std::size_t>(width) * height * channels) {
    const double share = 1.0 / (samples * samples);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            double sums[4] = {};
            for (int i = 0; i < samples * samples; ++i) {
                const Texel texel = paint(x + (i % samples + 0.5) / samples, y + (i / samples + 0.5) / samples);
                const double values[4] = {texel.Shade.Red, texel.Shade.Green, texel.Shade.Blue, texel.Opacity};
                for (int channel = 0; channel < 4; ++channel)
                    sums[channel] += values[channel] * share;
            }
            for (int channel = 0; channel < channels; ++channel)
                Values[(static_cast<std::size_t>(channel) * height + y) * width + x] = Byte(sums[channel]);
        }
}

bool Image::Write(const std::string& path) const {
    constexpr int HeaderSize = 512, Magic = 474, VerbatimBytes = 1, SeveralChannels = 3;
    std::string bytes;
    for (const int field : {Magic, VerbatimBytes, SeveralChannels, Width, Height, Channels, 0, 0, 0, 255}) {
        bytes += static_cast<char>(field >> 8);
        bytes += static_cast<char>(field);
    }
    bytes.resize(HeaderSize);
    bytes.append(Values.begin(), Values.end());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

double Step(double from, double to, double value) {
    return Ease(std::clamp((value - from) / (to - from), 0.0, 1.0));
}

double Random(int a, int b, int c) {
    std::uint32_t bits = static_cast<std::uint32_t>(a) * 0x9e3779b1u ^ static_cast<std::uint32_t>(b) * 0x85ebca77u ^
                         static_cast<std::uint32_t>(c) * 0xc2b2ae3du;
    for (int round = 0; round < 3; ++round) {
        bits ^= bits >> 16;
        bits *= 0x7feb352du;
        bits ^= bits >> 15;
    }
    return bits / 4294967295.0;
}

double Noise(double x, double y, int period, int seed) {
    const int column = static_cast<int>(std::floor(x)), row = static_cast<int>(std::floor(y));
    const double across = Ease(x - column), up = Ease(y - row);
    const auto at = [&](int c, int r) { return Random(Wrap(column + c, period), Wrap(row + r, period), seed); };
    const double bottom = at(0, 0) + (at(1, 0) - at(0, 0)) * across, top = at(0, 1) + (at(1, 1) - at(0, 1)) * across;
    return bottom + (top - bottom) * up;
}

double Fractal(double x, double y, int period, int octaves, int seed) {
    double sum = 0, height = 0.5;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += height * Noise(x, y, period, seed + octave);
        height /= 2;
        x *= 2;
        y *= 2;
        period *= 2;
    }
    return sum / (1 - 2 * height);
}

Stone StoneAt(double x, double y, int period, int seed) {
    const int column = static_cast<int>(std::floor(x)), row = static_cast<int>(std::floor(y));
    double nearest = 9, second = 9;
    int number = 0;
    for (int r = row - 1; r <= row + 1; ++r)
        for (int c = column - 1; c <= column + 1; ++c) {
            const int wrappedColumn = Wrap(c, period), wrappedRow = Wrap(r, period);
            const double dx = c + 0.2 + 0.6 * Random(wrappedColumn, wrappedRow, seed) - x;
            const double dy = r + 0.2 + 0.6 * Random(wrappedColumn, wrappedRow, seed + 1) - y;
            const double distance = std::sqrt(dx * dx + dy * dy);
            if (distance < nearest) {
                second = nearest;
                nearest = distance;
                number = wrappedRow * period + wrappedColumn;
            } else {
                second = std::min(second, distance);
            }
        }
    return {second - nearest, number};
}
