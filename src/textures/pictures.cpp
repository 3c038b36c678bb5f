#include "textures/pictures.h"

#include "base/regular_file.h"
#include "textures/image_file.h"
#include "textures/jpeg_picture.h"
#include "textures/picture_problems.h"

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace {

/// The frame of a JPEG file may follow after pictures in small and profiles of the camera's.
constexpr std::size_t HeaderBytes = 1 << 18;
constexpr std::uint64_t LargestFile = std::uint64_t{1} << 30;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// The beginning of a file, at most that many bytes of it; nothing when it cannot be read.
std::vector<std::uint8_t> ReadBytes(const char* name, std::uint64_t most) {
    std::uint64_t size = 0;
    const std::unique_ptr<std::FILE, CloseFile> file(OpenRegularFile(name, size));
    if (!file)
        return {};
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::min(size, most)));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    return bytes;
}

bool StartsWith(const std::uint8_t* bytes, std::size_t count, const char* start, std::size_t size) {
    return count >= size && std::memcmp(bytes, start, size) == 0;
}

PictureFormat FormatOf(const std::uint8_t* bytes, std::size_t count) {
    if (StartsWith(bytes, count, "\x89PNG\r\n\x1a\n", 8))
        return PictureFormat::Png;
    if (StartsWith(bytes, count, "\xFF\xD8\xFF", 3))
        return PictureFormat::Jpeg;
    if (StartsWith(bytes, count, "\x01\xDA", 2) || StartsWith(bytes, count, "\xDA\x01", 2))
        return PictureFormat::Image;
    return PictureFormat::None;
}

/// Kinds of image that people try, by how their files begin.
constexpr struct {
    const char* Start;
    std::size_t Size;
    const char* Name;
} ForeignFormats[] = {{"GIF8", 4, "GIF"},  {"BM", 2, "BMP"},         {"II*\0", 4, "TIFF"}, {"MM\0*", 4, "TIFF"},
                      {"RIFF", 4, "WebP"}, {"8BPS", 4, "Photoshop"}, {"DDS ", 4, "DDS"},   {"#?RADIANCE", 10, "HDR"},
                      {"<svg", 4, "SVG"},  {"<?xml", 5, "SVG"}};

std::string WhyNoImage(const std::uint8_t* bytes, std::size_t count) {
    for (const auto& format : ForeignFormats)
        if (StartsWith(bytes, count, format.Start, format.Size))
            return std::string(format.Name) + " images cannot be read. Save it as PNG or JPEG.";
    return FileIsNoImage;
}

/// The work that several threads share: which picture is next, and those that wait to be handed over.
class PictureQueue {
  public:
    explicit PictureQueue(const std::vector<std::string>& names) : Names(names), Results(names.size()) {}

    /// What each thread does until nothing is left.
    void Work() {
        std::unique_lock lock(Guard);
        for (;;) {
            RoomForMore.wait(lock, [this] { return Next == Names.size() || Next < HandedOver + MostAhead; });
            if (Next == Names.size())
                return;
            Result& result = Results[Next];
            const char* name = Names[Next++].c_str();
            lock.unlock();
            result.Problem = ReadPicture(name, result.Block);
            lock.lock();
            result.IsReady = true;
            SomethingIsReady.notify_one();
        }
    }

    struct Result {
        PixelBlock Block;
        std::string Problem;
        bool IsReady = false;
    };

    /// The next one, in the order of the names.
    Result Take() {
        std::unique_lock lock(Guard);
        SomethingIsReady.wait(lock, [this] { return Results[HandedOver].IsReady; });
        Result result = std::move(Results[HandedOver++]);
        lock.unlock();
        RoomForMore.notify_all();
        return result;
    }

  private:
    static constexpr std::size_t MostAhead = 32;

    const std::vector<std::string>& Names;
    std::vector<Result> Results;
    std::size_t Next = 0, HandedOver = 0;
    std::mutex Guard;
    std::condition_variable SomethingIsReady, RoomForMore;
};

} // namespace

PictureFormat ReadPictureSize(const char* name, PictureSize& size) {
    const std::vector<std::uint8_t> bytes = ReadBytes(name, HeaderBytes);
    switch (const PictureFormat format = FormatOf(bytes.data(), bytes.size())) {
    case PictureFormat::Image:
        if (ImageFile* image = OpenImageForRead(name)) {
            size = {image->XSize, image->YSize, image->ZSize};
            CloseImage(image);
            return format;
        }
        return PictureFormat::None;
    case PictureFormat::Png:
        return ReadPngSize(bytes.data(), bytes.size(), size) ? format : PictureFormat::None;
    case PictureFormat::Jpeg:
        if (ReadJpegSize(bytes.data(), bytes.size(), size))
            return format;
        // What precedes the frame may be longer still.
        if (bytes.size() == HeaderBytes) {
            const std::vector<std::uint8_t> all = ReadBytes(name, LargestFile);
            if (ReadJpegSize(all.data(), all.size(), size))
                return format;
        }
        return PictureFormat::None;
    case PictureFormat::None:
        break;
    }
    return PictureFormat::None;
}

int IsAnImageFile(const char* name) {
    PictureSize size;
    return ReadPictureSize(name, size) != PictureFormat::None;
}

std::string DecodePicture(const std::uint8_t* bytes, std::size_t count, PixelBlock& block) {
    switch (FormatOf(bytes, count)) {
    case PictureFormat::Png:
        return DecodePng(bytes, count, block);
    case PictureFormat::Jpeg:
        return DecodeJpeg(bytes, count, block);
    default:
        return WhyNoImage(bytes, count);
    }
}

std::string ReadPicture(const char* name, PixelBlock& block) {
    const std::vector<std::uint8_t> start = ReadBytes(name, 16);
    if (start.empty())
        return FileIsNoImage;
    if (FormatOf(start.data(), start.size()) == PictureFormat::Image)
        return ReadImageFile(name, block);
    if (FormatOf(start.data(), start.size()) == PictureFormat::None)
        return WhyNoImage(start.data(), start.size());
    const std::vector<std::uint8_t> bytes = ReadBytes(name, LargestFile);
    return DecodePicture(bytes.data(), bytes.size(), block);
}

std::uint8_t* ReadImage(const char* name, int& xSize, int& ySize, int& zSize) {
    PictureSize size;
    if (ReadPictureSize(name, size) == PictureFormat::None)
        return nullptr;
    xSize = size.Width;
    ySize = size.Height;
    zSize = size.Channels;
    PixelBlock block;
    if (!ReadPicture(name, block).empty())
        return nullptr;
    xSize = block.Width;
    ySize = block.Height;
    zSize = block.Channels;
    return block.Release();
}

void ReadPictures(const std::vector<std::string>& names,
                  const std::function<void(std::size_t, PixelBlock&, const std::string&)>& take) {
    // Handing a name to a thread and back costs more than finding out that there is no such file.
    std::vector<std::string> there;
    std::vector<bool> isThere;
    for (const std::string& name : names) {
        isThere.push_back(access(name.c_str(), F_OK) == 0);
        if (isThere.back())
            there.push_back(name);
    }
    PictureQueue queue(there);
    const std::size_t processors = std::max(std::thread::hardware_concurrency(), 1u);
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < std::min(processors, there.size()); ++i)
        threads.emplace_back([&queue] { queue.Work(); });
    for (std::size_t i = 0; i < names.size(); ++i) {
        PictureQueue::Result result;
        if (isThere[i])
            result = queue.Take();
        else
            result.Problem = ReadPicture(names[i].c_str(), result.Block);
        take(i, result.Block, result.Problem);
    }
}
