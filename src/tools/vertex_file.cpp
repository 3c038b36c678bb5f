#include "tools/vertex_file.h"

#include "base/regular_file.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>

namespace {

/// Of the file in memory at a time. Coordinates further behind the beginning of a line are not looked for.
constexpr std::size_t BlockSize = 1 << 20;
constexpr std::size_t MostLetters = 64;
constexpr char Comment = '#';
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

bool Separates(char c) {
    return c == ' ' || c == '\t' || c == ',' || c == ';' || c == '\v' || c == '\f' || c == '\0';
}

bool EndsLine(char c) {
    return c == '\n' || c == '\r';
}

const char* EndOfLine(const char* text, const char* end) {
    return std::find_if(text, end, EndsLine);
}

class Parser {
  public:
    Parser(VertexFile& file, int dimensions) : File(file), Dimensions(static_cast<std::size_t>(dimensions)) {}

    /// Takes the lines that end in the text; returns how much of it that was. With `all` the rest is a line, too.
    std::size_t Take(std::string_view text, bool all) {
        const char *const begin = text.data(), *const end = begin + text.size();
        const char* line = begin;
        if (InRest) {
            line = EndOfLine(line, end);
            InRest = line == end && !all;
        }
        while (!InRest && line < end) {
            const char* const next = EndOfLine(line, end);
            if (next == end && !all && line != begin)
                return static_cast<std::size_t>(line - begin); // to be completed
            if (next != line)
                TakeLine(line, next);
            InRest = next == end && !all; // a line that is longer than all that is in memory
            line = std::min(next + 1, end);
        }
        return text.size();
    }

  private:
    void TakeLine(const char* text, const char* end) {
        std::array<double, 3> place = {0, 0, 0};
        for (std::size_t i = 0; i < Dimensions; ++i) {
            text = std::find_if_not(text, end, Separates);
            if (i == 0 && (text == end || *text == Comment))
                return;
            const char* const number = text;
            text = std::find_if(text, end, [](char c) { return Separates(c) || c == Comment; });
            if (!ReadNumber({number, static_cast<std::size_t>(text - number)}, place[i])) {
                ++File.UnreadableLines;
                return;
            }
        }
        File.Places.push_back(place);
    }

    /// Beyond the range of single precision nothing can be drawn.
    static bool ReadNumber(std::string_view text, double& number) {
        char copy[MostLetters];
        if (const std::size_t exponent = text.find_first_of("dD"); exponent < MostLetters) {
            // As programs for calculations write numbers of double precision.
            text = {copy, text.copy(copy, sizeof copy)};
            copy[exponent] = 'e';
        }
        if (text.starts_with('+') && !text.starts_with("+-"))
            text.remove_prefix(1);
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        if (stop != end || text.empty())
            return false;
        if (error == std::errc::result_out_of_range && (text.find("e-") < text.size() || text.find("E-") < text.size()))
            number = 0;
        else if (error != std::errc())
            return false;
        return std::fabs(number) <= std::numeric_limits<float>::max();
    }

    VertexFile& File;
    const std::size_t Dimensions;
    /// What comes belongs to a line that has been taken already.
    bool InRest = false;
};

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

VertexFile Failure(const char* path, int error) {
    VertexFile failed;
    failed.Error = std::string(path) + ": " + (error ? std::strerror(error) : "This is not a file");
    return failed;
}

} // namespace

VertexFile ReadVertexFile(const char* path, int dimensions, int (*progress)(double part)) {
    std::uint64_t size = 0;
    errno = 0;
    const std::unique_ptr<std::FILE, CloseFile> file(OpenRegularFile(path, size));
    if (!file)
        return Failure(path, errno);
    VertexFile read;
    Parser parser(read, dimensions);
    std::string block(BlockSize, '\0');
    std::size_t filled = 0;
    std::uint64_t total = 0;
    for (bool all = false, first = true; !all; first = false) {
        errno = 0;
        const std::size_t got = std::fread(block.data() + filled, 1, BlockSize - filled, file.get());
        if (std::ferror(file.get()))
            return Failure(path, errno);
        filled += got;
        total += got;
        all = std::feof(file.get()) != 0;
        size = std::max(size, total + 1); // it may grow meanwhile
        std::string_view text(block.data(), filled);
        if (first && text.starts_with(ByteOrderMark))
            text.remove_prefix(ByteOrderMark.size());
        const std::size_t taken = filled - text.size() + parser.Take(text, all);
        std::copy(block.begin() + static_cast<std::ptrdiff_t>(taken),
                  block.begin() + static_cast<std::ptrdiff_t>(filled), block.begin());
        filled -= taken;
        if (!all && progress && progress(static_cast<double>(total) / static_cast<double>(size))) {
            VertexFile given;
            given.Cancelled = true;
            return given;
        }
    }
    return read;
}
