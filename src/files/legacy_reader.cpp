#include "files/legacy_reader.h"

#include "base/directories.h"
#include "base/file_names.h"
#include "files/file_errors.h"
#include "files/file_slots.h"
#include "files/reading_progress.h"
#include "files/text_scanner.h"
#include "store/accessors.h"
#include "store/duplicates.h"
#include "store/material_list.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/sorting.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "store/walks.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

// A name must fit a material of the current version.
constexpr std::size_t LongestMaterialName = 127;

/// The reading of one file. Every step gives false after it has recorded an error.
class LegacyReader {
  public:
    explicit LegacyReader(FileCursor& file) : File(file), Body({reinterpret_cast<const char*>(file.At), file.Left()}) {}

    ~LegacyReader() { File.At = File.End - Body.BytesLeft(); }

    bool Read();

  private:
    /// Checks a section's header line and reads the line with its count.
    bool BeginSection(std::string_view header, const char* name, int& count);

    bool ReadVertices(int count);
    bool ReadPolygons(int count);
    bool ReadPolygon();
    bool ReadCorners(int count, PolygonBead*& beads);
    bool ReadMaterials(int count);
    /// False with no error recorded when a field does not parse: that ends the section, and keeps what it has.
    bool ReadMaterial(Material* material);
    bool ReadMaterialName(Material* material);
    bool ReadColour(const char* red, const char* green, const char* blue, float* colour);
    bool ReadFinite(const char* pattern, float& value);
    bool GivePolygonsTheirMaterials();

    FileCursor& File;
    TextScanner Body;
    std::vector<Vertex*> VertexNumberTable;
    std::vector<Material*> MaterialNumberTable;
};

bool Fail(FileErrorCode error) {
    SetError(error);
    return false;
}

bool IsIndexOf(int number, std::size_t count) {
    return number >= 0 && static_cast<std::size_t>(number) < count;
}

// The line that names a material. Outside a section it is left over from one that ended early, and starts none.
bool IsMaterialLine(std::string_view line) {
    int number;
    return TextScanner(line).Scan("Material ", number, ":");
}

bool LegacyReader::Read() {
    static constexpr struct {
        std::string_view Start; // of the header line; whatever else a line starts with is passed over
        const char* Header;
        bool (LegacyReader::*Section)(int count);
    } sections[] = {
        {"Ver", "Vertices (v", &LegacyReader::ReadVertices},
        {"Pol", "Polygons (v", &LegacyReader::ReadPolygons},
        {"Mat", "Materials (v", &LegacyReader::ReadMaterials},
    };

    for (std::string_view line; Body.TakeLine(line);) {
        if (IsMaterialLine(line))
            continue;
        for (const auto& section : sections) {
            int count;
            if (line.starts_with(section.Start) &&
                !(BeginSection(line, section.Header, count) && (this->*section.Section)(count)))
                return false;
        }
    }
    return GivePolygonsTheirMaterials();
}

bool LegacyReader::BeginSection(std::string_view header, const char* name, int& count) {
    float version;
    std::string_view line;
    return (TextScanner(header).Scan(name, version) && version == 1.0f && Body.TakeLine(line) &&
            TextScanner(line).Scan("Count: ", count) && count >= 0) ||
           Fail(BadFile);
}

bool LegacyReader::ReadVertices(int count) {
    constexpr std::size_t ShortestLine = 6; // "0 0 0" and its end
    VertexNumberTable.clear();
    VertexNumberTable.reserve(std::min<std::size_t>(count, Body.BytesLeft() / ShortestLine + 1));
    for (int i = 0; i < count; ++i) {
        NoteParsingProgress(Body.BytesLeft());
        if (FileError)
            return false;
        std::string_view line;
        float x, y, z;
        if (!Body.TakeLine(line) || !TextScanner(line).Scan(x, y, z))
            return Fail(BadFile);
        if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z))
            return Fail(BadVertex);
        // The y axis of that time pointed up.
        VertexNumberTable.push_back(AddVertex(x, -z, y));
    }
    return true;
}

bool LegacyReader::ReadPolygons(int count) {
    if (!Mergeing)
        CurrentMaterial() = nullptr;
    for (int i = 0; i < count; ++i)
        if (!ReadPolygon())
            return false;
    return true;
}

bool LegacyReader::ReadPolygon() {
    NoteParsingProgress(Body.BytesLeft());
    if (FileError)
        return false;
    int material, shading, sides;
    if (!Body.Scan(" Material:", material, " Shading:", shading, " Sides:", sides, " - Vertices ") || sides < 0)
        return Fail(BadFile);
    if (shading < LightingUnlit || shading > LightingSmooth)
        return Fail(UnknownLighting);
    PolygonBead* beads = nullptr;
    if (!ReadCorners(sides, beads)) {
        DeletePolygonBeadList(beads, 0);
        return false;
    }
    CurrentLighting = shading;
    Polygon* polygon = AddPolygon(beads, nullptr);
    polygon->Material = nullptr;
    polygon->Mark = material;
    return true;
}

bool LegacyReader::ReadCorners(int count, PolygonBead*& beads) {
    for (int i = 0; i < count; ++i) {
        int number;
        if (!Body.Scan(number, " "))
            return Fail(BadFile);
        if (!IsIndexOf(number, VertexNumberTable.size()))
            return Fail(BadVertexIndex);
        AddPolygonBead(beads, VertexNumberTable[number]);
    }
    return true;
}

bool LegacyReader::ReadMaterials(int count) {
    MaterialNumberTable.clear();
    bool more = true;
    for (int i = 0; i < count && more; ++i) {
        Material* material = NewMaterial();
        AddMaterial(material);
        MaterialNumberTable.push_back(material);
        more = ReadMaterial(material);
    }
    if (!Mergeing)
        CurrentMaterial() = FirstMaterial();
    return !FileError;
}

bool LegacyReader::ReadMaterial(Material* material) {
    return ReadMaterialName(material) && ReadColour(" RA:", " GA:", " BA:", material->Ambient) &&
           ReadColour(" RD:", " GD:", " BD:", material->Diffuse) &&
           ReadColour(" RS:", " GS:", " BS:", material->Specular) && ReadFinite(" Shine: ", material->Shininess) &&
           Body.Scan(" ");
}

bool LegacyReader::ReadMaterialName(Material* material) {
    int number;
    std::string_view name;
    if (!Body.Scan(" Material ", number, ":") || !Body.TakeLine(name))
        return false;
    name.remove_prefix(std::min(name.find_first_not_of(" \t"), name.size()));
    if (name.size() > LongestMaterialName)
        return Fail(BadString);
    RenameMaterial(material, std::string(name).c_str());
    return true;
}

bool LegacyReader::ReadColour(const char* red, const char* green, const char* blue, float* colour) {
    return ReadFinite(red, colour[0]) && ReadFinite(green, colour[1]) && ReadFinite(blue, colour[2]);
}

bool LegacyReader::ReadFinite(const char* pattern, float& value) {
    float read;
    if (!Body.Scan(pattern, read) || !std::isfinite(read))
        return false;
    value = read;
    return true;
}

bool LegacyReader::GivePolygonsTheirMaterials() {
    for (Polygon* polygon : EveryPolygon(CurrentObject())) {
        if (!IsIndexOf(polygon->Mark, MaterialNumberTable.size()))
            return Fail(BadPolygonMaterial);
        polygon->Material = MaterialNumberTable[polygon->Mark];
    }
    return true;
}

} // namespace

void ReadKirvo100(FileCursor& file) {
    ResetStorage();
    std::string name = FileName;
    ChopOffKirvo(name.data());
    AddObject(name.c_str(), 1, 0);
    if (!FileError && LegacyReader(file).Read()) {
        DeleteDuplicateVertices();
        SortObject();
        SelectLod(FirstLod());
        ConnectionsOK() = 0;
        if (TheFileSlots.RedefineMaterials)
            TheFileSlots.RedefineMaterials();
    }
    CurrentLighting = LightingFaceted;
}
