#pragma once

#include "files/file_errors.h"
#include "geometry/matrices.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

// The primitive encodings of a model file, read from memory and written through a buffer. Every primitive returns 1 on
// success; once an error is recorded it does nothing and returns 0. Numbers are big-endian, strings end with a newline,
// a real is a double stored as a float, and a count of 1 to 255 is one byte, any other one a zero byte and an int.

/// How far a file that lies in memory has been read.
struct FileCursor {
    const unsigned char* At = nullptr;
    const unsigned char* End = nullptr;

    std::size_t Left() const { return static_cast<std::size_t>(End - At); }
};

inline std::uint32_t BigEndian(std::uint32_t number) {
    return std::endian::native == std::endian::little ? __builtin_bswap32(number) : number;
}

inline std::uint32_t LoadBigEndian(const unsigned char* bytes) {
    std::uint32_t number;
    std::memcpy(&number, bytes, sizeof number);
    return BigEndian(number);
}

inline float LoadFloat(const unsigned char* bytes) {
    return std::bit_cast<float>(LoadBigEndian(bytes));
}

/// At the end of the file: UnexpectedEnd.
inline int ReadFileByte(FileCursor& file, int& destination) {
    if (FileError)
        return 0;
    if (file.At == file.End) {
        SetError(UnexpectedEnd);
        return 0;
    }
    destination = *file.At++;
    return 1;
}

/// 0 to 65535. Too little left here and in the following four: BadFile.
int ReadFileShort(FileCursor& file, int& destination);
int ReadFileInts(FileCursor& file, std::int32_t* destination, int n);
int ReadFileFloats(FileCursor& file, float* destination, int n);
/// More than 16 at once end the program.
int ReadFileReals(FileCursor& file, double* destination, int n);
int ReadFileMatrix(FileCursor& file, Matrix& destination);

/// Reads through the next newline, which is dropped. BadString when the file ends first or the string does not fit with
/// a closing null.
int ReadFileString(FileCursor& file, char* destination, std::size_t size);

template <std::size_t Size>
int ReadFileString(FileCursor& file, char (&destination)[Size]) {
    return ReadFileString(file, destination, Size);
}

int ReadFileCount(FileCursor& file, std::int32_t& destination);

/// Fewer than n bytes left, or a negative n: UnexpectedEnd.
int SkipFileBytes(FileCursor& file, std::int32_t n);

/// A count, then that many bytes.
int SkipFileBlock(FileCursor& file);

/// A file that is being written. What is written stands in the buffer until it is full or the file is closed; a failure
/// then is recorded as WriteFailed.
class FileWriter {
  public:
    FileWriter() = default;
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    ~FileWriter() { Close(); }

    /// Creates or empties the file. 0, with errno set, when that fails.
    int Open(const char* name);

    /// Writes to a file that is open already and stays its owner's. 0, with errno set, when that fails.
    int Open(int descriptor);

    /// Writes what is left and closes the file. Does nothing when no file is open.
    void Close();

    /// The system's number of the reason why writing failed; 0 when it did not.
    int Reason() const { return FailureNumber; }

    int Put(const void* bytes, std::size_t n) {
        if (FileError)
            return 0;
        if (n > BufferSize - Used && !MakeRoom(bytes, n))
            return FileError ? 0 : 1;
        std::memcpy(Buffer.get() + Used, bytes, n);
        Used += n;
        return 1;
    }

  private:
    static constexpr std::size_t BufferSize = std::size_t{1} << 18;

    int Start(std::FILE* file);
    void Fail();
    void Flush();
    bool MakeRoom(const void* bytes, std::size_t n);

    std::FILE* File = nullptr;
    std::unique_ptr<unsigned char[]> Buffer;
    std::size_t Used = 0;
    int FailureNumber = 0;
};

inline int WriteFileByte(FileWriter& file, int value) {
    const auto byte = static_cast<unsigned char>(value);
    return file.Put(&byte, 1);
}

inline int WriteFileShort(FileWriter& file, int value) {
    const unsigned char bytes[2] = {static_cast<unsigned char>(value >> 8), static_cast<unsigned char>(value)};
    return file.Put(bytes, sizeof bytes);
}

int WriteFileInts(FileWriter& file, const std::int32_t* values, int n);

inline int WriteFileInt(FileWriter& file, std::int32_t value) {
    const std::uint32_t number = BigEndian(static_cast<std::uint32_t>(value));
    return file.Put(&number, sizeof number);
}

/// Readers refuse numbers that are not finite, so none is written: the nearest finite one stands in.
int WriteFileFloats(FileWriter& file, const float* values, int n);
/// More than 16 at once end the program.
int WriteFileReals(FileWriter& file, const double* values, int n);
int WriteFileMatrix(FileWriter& file, const Matrix& matrix);

/// At most `size` - 1 characters are written, so that a reader with a buffer of that size takes it; a newline in the
/// text is written as a blank.
int WriteFileString(FileWriter& file, const char* text, std::size_t size);

int WriteFileCount(FileWriter& file, std::int32_t count);
