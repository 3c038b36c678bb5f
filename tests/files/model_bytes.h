#pragma once

#include <bit>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

/// The bytes of a model file, put together by hand: written independently of the program's own primitives.
class ModelBytes {
  public:
    ModelBytes() = default;

    /// Header line and body marker.
    explicit ModelBytes(std::string_view version) {
        Raw("Compatibility: ").Raw(version).Raw("\n");
        Byte(1);
    }

    ModelBytes& Raw(std::string_view bytes) {
        Text += bytes;
        return *this;
    }

    ModelBytes& Raw(const ModelBytes& bytes) { return Raw(bytes.Text); }

    ModelBytes& Byte(int value) {
        Text += static_cast<char>(value);
        return *this;
    }

    ModelBytes& Short(int value) { return Byte(value >> 8).Byte(value); }

    ModelBytes& Int(std::int64_t value) {
        for (int shift = 24; shift >= 0; shift -= 8)
            Byte(static_cast<int>(value >> shift));
        return *this;
    }

    ModelBytes& Float(float value) { return Int(std::bit_cast<std::uint32_t>(value)); }

    ModelBytes& Floats(std::initializer_list<double> values) {
        for (const double value : values)
            Float(static_cast<float>(value));
        return *this;
    }

    ModelBytes& String(std::string_view text) { return Raw(text).Byte('\n'); }

    ModelBytes& Count(std::int64_t n) { return n >= 1 && n <= 255 ? Byte(static_cast<int>(n)) : Byte(0).Int(n); }

    /// An unknown tag with a block of `size` bytes.
    ModelBytes& Unknown(int tag, int size) { return Byte(tag).Count(size).Raw(std::string(size, 'x')); }

    /// Materials without fields, with the numbers given, in the form of files from 3.02 on.
    ModelBytes& Materials(std::initializer_list<int> numbers) {
        Byte(10);
        for (const int number : numbers)
            Byte(11).Int(number).Byte(0);
        return Byte(0);
    }

    /// A vertex section with one vertex a triple.
    ModelBytes& Vertices(std::initializer_list<double> coordinates) {
        return Byte(26).Int(static_cast<std::int64_t>(coordinates.size() / 3)).Floats(coordinates);
    }

    /// A polygon of material 0, in the form of files from 3.00 on, that stays open for more items.
    ModelBytes& OpenPolygon(std::initializer_list<int> vertices) {
        Byte(30).Byte(31).Short(0);
        for (const int vertex : vertices)
            Corner(vertex);
        return *this;
    }

    ModelBytes& Corner(int vertex) { return Byte(20).Byte(27).Int(vertex).Byte(0); }

    ModelBytes& End() { return Byte(0); }

    const std::string& Bytes() const { return Text; }

  private:
    std::string Text;
};
