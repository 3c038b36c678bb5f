#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

/// The bytes of an image file, put together field by field; every field can be made wrong.
class MadeImage {
  public:
    enum Order { BigEndian, LittleEndian };

    MadeImage(int xSize, int ySize, int zSize, int type = 0x0001, Order order = BigEndian, int dimension = 3)
        : Bytes(512),
          ByteOrder(order),
          RowCount(ySize * zSize) {
        const int fields[] = {474, type, dimension, xSize, ySize, zSize};
        for (int i = 0; i < 6; ++i)
            Set(2 * i, fields[i], 2);
        if (type >> 8 == 1)
            Bytes.resize(512 + RowCount * 8);
    }

    /// Overwrites `size` bytes with a number in the image's byte order.
    void Set(std::size_t place, std::uint32_t number, int size) {
        for (int i = 0; i < size; ++i)
            Bytes[place + i] = static_cast<std::uint8_t>(number >> 8 * (ByteOrder == BigEndian ? size - 1 - i : i));
    }

    void Append(std::initializer_list<int> values, int size = 1) {
        for (const int value : values) {
            Bytes.resize(Bytes.size() + size);
            Set(Bytes.size() - size, static_cast<std::uint32_t>(value), size);
        }
    }

    void SetRowStart(int entry, std::uint32_t start) { Set(512 + 4 * entry, start, 4); }

    void SetRowSize(int entry, std::uint32_t size) { Set(512 + 4 * (RowCount + entry), size, 4); }

    /// Appends the packets of a run-length encoded row and enters it in the tables.
    void AppendRow(int entry, std::initializer_list<int> packets, int size = 1) {
        SetRowStart(entry, static_cast<std::uint32_t>(Bytes.size()));
        SetRowSize(entry, static_cast<std::uint32_t>(packets.size() * size));
        Append(packets, size);
    }

    void WriteTo(const std::filesystem::path& path) const {
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(Bytes.data()), static_cast<std::streamsize>(Bytes.size()));
    }

    std::vector<std::uint8_t> Bytes;

  private:
    Order ByteOrder;
    int RowCount;
};
