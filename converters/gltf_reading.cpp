#include "gltf_reading.h"

#include "files/file_contents.h"

#include <assimp/DefaultIOSystem.h>
#include <assimp/Importer.hpp>
#include <assimp/MemoryIOWrapper.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace converters {

namespace {

using nlohmann::json;

constexpr std::uint32_t BinaryMagic = 0x46546C67, JsonChunk = 0x4E4F534A;
constexpr std::size_t HeaderSize = 12, ChunkHeaderSize = 8;
/// Names that the importer is given; no file has them by chance.
constexpr char Prefix[] = "kirvo:node:";

/// The files that lie on the disk, but for one that lies in memory.
class OneInMemory : public Assimp::DefaultIOSystem {
  public:
    OneInMemory(std::string path, std::string bytes) : Path(std::move(path)), Bytes(std::move(bytes)) {}

    Assimp::IOStream* Open(const char* file, const char* mode) override {
        if (Path != file)
            return DefaultIOSystem::Open(file, mode);
        return new Assimp::MemoryIOStream(reinterpret_cast<const std::uint8_t*>(Bytes.data()), Bytes.size(), false);
    }

    void Close(Assimp::IOStream* stream) override { delete stream; }

  private:
    std::string Path, Bytes;
};

std::uint32_t NumberAt(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    if (at + sizeof number <= bytes.size())
        std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

void PutNumber(std::string& bytes, std::size_t at, std::size_t number) {
    const auto value = static_cast<std::uint32_t>(number);
    std::memcpy(bytes.data() + at, &value, sizeof value);
}

/// Where the JSON text of a file lies.
struct Span {
    std::size_t From = 0, Size = 0;
    bool Binary = false;
};

Span JsonOf(const std::string& bytes) {
    if (NumberAt(bytes, 0) != BinaryMagic)
        return {0, bytes.size(), false};
    const std::size_t size = NumberAt(bytes, HeaderSize), from = HeaderSize + ChunkHeaderSize;
    if (NumberAt(bytes, HeaderSize + 4) != JsonChunk || bytes.size() < from || bytes.size() - from < size)
        return {0, 0, true};
    return {from, size, true};
}

std::string WithJson(const std::string& bytes, const Span& span, std::string text) {
    if (!span.Binary)
        return text;
    text.append((4 - text.size() % 4) % 4, ' ');
    std::string result = bytes.substr(0, span.From) + text + bytes.substr(span.From + span.Size);
    PutNumber(result, 8, result.size());
    PutNumber(result, HeaderSize, text.size());
    return result;
}

json Member(const json& object, const char* name) {
    return object.is_object() && object.contains(name) ? object[name] : json();
}

template <class Value>
Value ValueOf(const json& object, const char* name, Value otherwise) {
    const json member = Member(object, name);
    try {
        return member.is_null() ? otherwise : member.get<Value>();
    } catch (const json::exception&) {
        return otherwise;
    }
}

} // namespace

void GltfNotes::Prepare(const std::string& path, Assimp::Importer& importer) {
    FileContents contents(path.c_str(), HeaderSize);
    if (!contents.IsOpen() || !contents.ReadAll())
        return;
    const std::string bytes(reinterpret_cast<const char*>(contents.Bytes()), contents.Size());
    const Span span = JsonOf(bytes);
    json document = json::parse(bytes.begin() + static_cast<std::ptrdiff_t>(span.From),
                                bytes.begin() + static_cast<std::ptrdiff_t>(span.From + span.Size), nullptr, false);
    if (!document.is_object())
        return;
    const json used = Member(document, "extensionsUsed");
    JoinsFans = used.is_array() && std::find(used.begin(), used.end(), "FB_ngon_encoding") != used.end();
    if (!Member(document, "nodes").is_array())
        return;
    json& nodes = document["nodes"];
    bool changed = false;
    const auto rename = [&](std::size_t index) -> GltfNote& {
        const std::string name = Prefix + std::to_string(index);
        GltfNote& note = Notes[name];
        if (note.Name.empty())
            note.Name = ValueOf<std::string>(nodes[index], "name", "");
        nodes[index]["name"] = name;
        changed = true;
        return note;
    };
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (!nodes[i].is_object())
            continue;
        const json own = Member(Member(nodes[i], "extras"), "kirvo");
        const auto distances = ValueOf<std::vector<double>>(own, "distances", {});
        if (own.is_object() && own.contains("subObject")) {
            const std::string name = ValueOf<std::string>(own, "subObject", "");
            rename(i).Name = name;
        } else if (own.is_object() && own.contains("object")) {
            GltfNote& note = rename(i);
            note.IsBranch = true;
            note.Object = ValueOf<std::string>(own, "object", "");
            note.Billboard = ValueOf<bool>(own, "billboard", false);
            note.Visible = ValueOf<bool>(own, "visible", true);
            KeepsTree = KeepsTree || ValueOf<bool>(own, "scene", false);
            if (!distances.empty())
                note.Distance = distances[0];
        }
        const json levels = Member(Member(Member(nodes[i], "extensions"), "MSFT_lod"), "ids");
        if (!levels.is_array() || levels.empty())
            continue;
        GltfNote& note = rename(i);
        note.IsBranch = true;
        // Without distances: each level reaches twice as far as the one before.
        if (distances.empty())
            note.Distance = 100;
        double distance = note.Distance;
        int level = 0;
        for (const json& id : levels) {
            if (!id.is_number_unsigned() || id.get<std::size_t>() >= nodes.size() || id.get<std::size_t>() == i)
                continue;
            const auto index = id.get<std::size_t>();
            ++level;
            distance *= 2;
            GltfNote& part = rename(index);
            part.Level = level;
            part.Distance = static_cast<std::size_t>(level) < distances.size()
                                ? distances[static_cast<std::size_t>(level)]
                                : distance;
            nodes[i]["children"].push_back(index);
        }
        nodes[i]["extensions"].erase("MSFT_lod");
    }
    if (changed)
        importer.SetIOHandler(new OneInMemory(path, WithJson(bytes, span, document.dump())));
}

const GltfNote* GltfNotes::Find(const std::string& node, bool branch) const {
    const auto found = Notes.find(node);
    return found != Notes.end() && found->second.IsBranch == branch ? &found->second : nullptr;
}

} // namespace converters
