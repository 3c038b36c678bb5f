#include "files/primitives.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <limits>

namespace {

/// Reals are moved through a buffer of this many.
constexpr int MostReals = 16;

/// The next `n` numbers of `size` bytes, or null with BadFile recorded.
const unsigned char* Take(FileCursor& file, int n, std::size_t size) {
    if (FileError)
        return nullptr;
    const std::size_t bytes = static_cast<std::size_t>(n) * size;
    if (n < 0 || file.Left() < bytes) {
        SetError(BadFile);
        return nullptr;
    }
    const unsigned char* start = file.At;
    file.At += bytes;
    return start;
}

float Storable(double value) {
    if (std::isnan(value))
        return 0;
    constexpr double limit = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -limit, limit));
}

template <class Number>
int WriteNumbers(FileWriter& file, const Number* values, int n) {
    for (int i = 0; i < n; ++i)
        WriteFileInt(file, std::bit_cast<std::int32_t>(Storable(values[i])));
    return !FileError;
}

} // namespace

int ReadFileShort(FileCursor& file, int& destination) {
    const unsigned char* bytes = Take(file, 1, 2);
    if (!bytes)
        return 0;
    destination = bytes[0] * 256 + bytes[1];
    return 1;
}

int ReadFileInts(FileCursor& file, std::int32_t* destination, int n) {
    const unsigned char* bytes = Take(file, n, 4);
    if (!bytes)
        return 0;
    for (int i = 0; i < n; ++i)
        destination[i] = static_cast<std::int32_t>(LoadBigEndian(bytes + 4 * i));
    return 1;
}

int ReadFileFloats(FileCursor& file, float* destination, int n) {
    const unsigned char* bytes = Take(file, n, 4);
    if (!bytes)
        return 0;
    for (int i = 0; i < n; ++i)
        destination[i] = LoadFloat(bytes + 4 * i);
    return 1;
}

int ReadFileReals(FileCursor& file, double* destination, int n) {
    if (n > MostReals)
        FatalFileError("Tried to read too many reals...");
    float values[MostReals];
    if (!ReadFileFloats(file, values, n))
        return 0;
    std::copy(values, values + n, destination);
    return 1;
}

int ReadFileMatrix(FileCursor& file, Matrix& destination) {
    for (int row = 0; row < 4; ++row)
        if (!ReadFileReals(file, destination[row], 4))
            return 0;
    return 1;
}

int ReadFileString(FileCursor& file, char* destination, std::size_t size) {
    if (FileError)
        return 0;
    const std::size_t reach = std::min(file.Left(), size);
    const void* newline = std::memchr(file.At, '\n', reach);
    if (!newline) {
        SetError(BadString);
        return 0;
    }
    const auto length = static_cast<std::size_t>(static_cast<const unsigned char*>(newline) - file.At);
    std::memcpy(destination, file.At, length);
    destination[length] = '\0';
    file.At += length + 1;
    return 1;
}

int ReadFileCount(FileCursor& file, std::int32_t& destination) {
    int first;
    if (!ReadFileByte(file, first))
        return 0;
    if (first == 0)
        return ReadFileInts(file, &destination, 1);
    destination = first;
    return 1;
}

int SkipFileBytes(FileCursor& file, std::int32_t n) {
    if (FileError)
        return 0;
    if (n < 0 || static_cast<std::size_t>(n) > file.Left()) {
        SetError(UnexpectedEnd);
        return 0;
    }
    file.At += n;
    return 1;
}

int SkipFileBlock(FileCursor& file) {
    std::int32_t size;
    return ReadFileCount(file, size) && SkipFileBytes(file, size);
}

int FileWriter::Open(const char* name) {
    return Start(std::fopen(name, "wb"));
}

int FileWriter::Open(int descriptor) {
    const int own = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    return own >= 0 && Start(fdopen(own, "wb"));
}

int FileWriter::Start(std::FILE* file) {
    File = file;
    if (!File)
        return 0;
    // The buffer of the stream would only copy once more.
    std::setvbuf(File, nullptr, _IONBF, 0);
    Buffer = std::make_unique_for_overwrite<unsigned char[]>(BufferSize);
    Used = 0;
    FailureNumber = 0;
    return 1;
}

void FileWriter::Close() {
    if (!File)
        return;
    Flush();
    if (std::fclose(File) != 0)
        Fail();
    File = nullptr;
    Buffer.reset();
}

void FileWriter::Fail() {
    if (!FailureNumber)
        FailureNumber = errno;
    SetError(WriteFailed);
}

void FileWriter::Flush() {
    if (!FileError && Used && std::fwrite(Buffer.get(), 1, Used, File) != Used)
        Fail();
    Used = 0;
}

/// False when nothing is left to be put into the buffer: writing failed, or `bytes` were too many and went past it.
bool FileWriter::MakeRoom(const void* bytes, std::size_t n) {
    Flush();
    if (FileError)
        return false;
    if (n <= BufferSize)
        return true;
    if (std::fwrite(bytes, 1, n, File) != n)
        Fail();
    return false;
}

int WriteFileInts(FileWriter& file, const std::int32_t* values, int n) {
    for (int i = 0; i < n; ++i)
        WriteFileInt(file, values[i]);
    return !FileError;
}

int WriteFileFloats(FileWriter& file, const float* values, int n) {
    return WriteNumbers(file, values, n);
}

int WriteFileReals(FileWriter& file, const double* values, int n) {
    if (n > MostReals)
        FatalFileError("Tried to write too many reals...");
    return WriteNumbers(file, values, n);
}

int WriteFileMatrix(FileWriter& file, const Matrix& matrix) {
    for (int row = 0; row < 4; ++row)
        WriteFileReals(file, matrix[row], 4);
    return !FileError;
}

int WriteFileString(FileWriter& file, const char* text, std::size_t size) {
    const std::size_t length = strnlen(text, size - 1);
    for (std::size_t start = 0; start < length;) {
        const void* newline = std::memchr(text + start, '\n', length - start);
        const std::size_t end = newline ? static_cast<std::size_t>(static_cast<const char*>(newline) - text) : length;
        file.Put(text + start, end - start);
        if (newline)
            WriteFileByte(file, ' ');
        start = end + (newline ? 1 : 0);
    }
    return WriteFileByte(file, '\n');
}

int WriteFileCount(FileWriter& file, std::int32_t count) {
    if (count >= 1 && count <= 255)
        return WriteFileByte(file, count);
    WriteFileByte(file, 0);
    return WriteFileInt(file, count);
}
