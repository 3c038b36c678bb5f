#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

/// Releases what came from Allocate.
struct FreePixels {
    void operator()(std::uint8_t* pixels) const;
};

/// A picture as the graphics layer takes a texture: one byte a value, rows from the bottom, each padded to a multiple
/// of 4 bytes, the channels of a pixel in reverse order (alpha, blue, green, red). Empty until made.
class PixelBlock {
  public:
    /// Of more than this many bytes no picture is made: a damaged header must not take all memory.
    static constexpr std::uint64_t MostBytes = std::uint64_t{1} << 29;

    /// Gives it a size, all values 0. False when that is 0, beyond MostBytes, or there is no memory.
    bool Make(int width, int height, int channels);

    int Width = 0, Height = 0, Channels = 0;
    /// Bytes a row.
    std::size_t Pitch = 0;

    explicit operator bool() const { return Pixels != nullptr; }

    std::uint8_t* Row(int y) { return Pixels.get() + static_cast<std::size_t>(y) * Pitch; }

    const std::uint8_t* Row(int y) const { return Pixels.get() + static_cast<std::size_t>(y) * Pitch; }

    const std::uint8_t* Data() const { return Pixels.get(); }

    /// Hands the values to the caller, who releases them with Free.
    std::uint8_t* Release() { return Pixels.release(); }

  private:
    std::unique_ptr<std::uint8_t, FreePixels> Pixels;
};
