// Reading of texture images from the page cache.
#include "base/memory.h"
#include "textures/pictures.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int Size = 4096;
constexpr int Channels = 4;

enum class Content {
    Noise, // every value differs from its neighbour: long literal packets
    Runs,  // runs of 1 to 8 values, as in a drawing: very many short packets
    Flat   // whole rows of one value
};

std::uint8_t Value(Content content, std::uint32_t& state, int& left, std::uint8_t previous) {
    state = state * 1664525 + 1013904223;
    if (content == Content::Noise)
        return static_cast<std::uint8_t>(state >> 24);
    if (content == Content::Flat)
        return 128;
    if (left-- > 0)
        return previous;
    left = state >> 29;
    return static_cast<std::uint8_t>(state >> 16);
}

void Put(std::vector<std::uint8_t>& out, std::size_t place, std::uint32_t number, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out[place + i] = static_cast<std::uint8_t>(number >> 8 * (bytes - 1 - i));
}

void Encode(const std::vector<std::uint8_t>& row, std::vector<std::uint8_t>& out) {
    const std::size_t count = row.size();
    for (std::size_t i = 0; i < count;) {
        std::size_t run = 1;
        while (i + run < count && row[i + run] == row[i] && run < 127)
            ++run;
        if (run > 2) {
            out.push_back(static_cast<std::uint8_t>(run));
            out.push_back(row[i]);
            i += run;
            continue;
        }
        std::size_t end = i;
        while (end < count && end - i < 127 &&
               !(end + 2 < count && row[end] == row[end + 1] && row[end] == row[end + 2]))
            ++end;
        out.push_back(static_cast<std::uint8_t>(0x80 | (end - i)));
        out.insert(out.end(), row.begin() + i, row.begin() + end);
        i = end;
    }
    out.push_back(0);
}

// Writes an image to a temporary file, which lives as long as this object.
class TemporaryImage {
  public:
    TemporaryImage(bool runLength, Content content) {
        std::vector<std::uint8_t> bytes(512);
        Put(bytes, 0, 474, 2);
        Put(bytes, 2, runLength ? 0x101 : 0x001, 2);
        Put(bytes, 4, 3, 2);
        Put(bytes, 6, Size, 2);
        Put(bytes, 8, Size, 2);
        Put(bytes, 10, Channels, 2);
        const std::size_t rows = Size * Channels;
        if (runLength)
            bytes.resize(512 + rows * 8);
        std::vector<std::uint8_t> row(Size);
        std::uint32_t state = 1;
        for (std::size_t entry = 0; entry < rows; ++entry) {
            int left = 0;
            std::uint8_t previous = 0;
            for (std::uint8_t& value : row)
                previous = value = Value(content, state, left, previous);
            const std::size_t start = bytes.size();
            if (!runLength) {
                bytes.insert(bytes.end(), row.begin(), row.end());
                continue;
            }
            Encode(row, bytes);
            Put(bytes, 512 + entry * 4, static_cast<std::uint32_t>(start), 4);
            Put(bytes, 512 + (rows + entry) * 4, static_cast<std::uint32_t>(bytes.size() - start), 4);
        }
        const int descriptor = mkstemp(Name.data());
        std::FILE* file = descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
        if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size() || std::fclose(file) != 0) {
            std::perror("image_bench");
            std::exit(1);
        }
        FileSize = bytes.size();
    }

    ~TemporaryImage() { std::remove(Name.c_str()); }

    std::string Name = "/tmp/kirvo-image-XXXXXX";
    std::size_t FileSize = 0;
};

void ReadWholeImage(benchmark::State& state, bool runLength, Content content) {
    const TemporaryImage image(runLength, content);
    for (auto _ : state) {
        int x, y, z;
        std::uint8_t* pixels = ReadImage(image.Name.c_str(), x, y, z);
        if (!pixels)
            state.SkipWithError("the image could not be read");
        else
            Free(pixels);
    }
    state.counters["file MB"] = static_cast<double>(image.FileSize) / 1e6;
}

BENCHMARK_CAPTURE(ReadWholeImage, Verbatim, false, Content::Noise)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(ReadWholeImage, RunLengthNoise, true, Content::Noise)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(ReadWholeImage, RunLengthRuns, true, Content::Runs)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(ReadWholeImage, RunLengthFlat, true, Content::Flat)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
