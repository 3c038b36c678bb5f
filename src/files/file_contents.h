#pragma once

#include <cstddef>

/// A file that is read into memory. Nothing is reported: a part that cannot be read is as if it were not there.
class FileContents {
  public:
    /// Opens the file and reads its first bytes, at least `head` of them if it has as many. What is no ordinary file
    /// has none.
    FileContents(const char* name, std::size_t head);
    FileContents(const FileContents&) = delete;
    FileContents& operator=(const FileContents&) = delete;
    ~FileContents();

    bool IsOpen() const { return Descriptor >= 0; }

    /// Reads the rest of the file, unless the read is cancelled. False when there is no memory for it.
    bool ReadAll();

    const unsigned char* Bytes() const { return Block; }

    /// How many bytes have been read.
    std::size_t Size() const { return Used; }

  private:
    bool ReadUpTo(std::size_t size);

    int Descriptor;
    std::size_t FileSize = 0;
    unsigned char* Block = nullptr;
    std::size_t Used = 0;
};
