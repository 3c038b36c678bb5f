#include "materials/materials_file.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/palette_file.h"
#include "base/text_lines.h"
#include "gooey/file_selector.h"
#include "gooey/palette_selection.h"
#include "materials/material_definitions.h"
#include "store/accessors.h"
#include "store/material_list.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

Material* LoadedMaterials;

namespace {

using MaterialList = LinkedList<&Material::Next, &Material::Prev>;

constexpr char Header[] = "Kirvo materials version ";
constexpr char NameKey[] = "Material: ";
constexpr char ShininessKey[] = "Shine:";
constexpr char AlphaKey[] = "Alpha: ";

struct ColourLine {
    const char* Key;
    float (Material::*Colour)[3];
};

constexpr ColourLine ColourLines[] = {{"Ambient:", &Material::Ambient},
                                      {"Diffuse:", &Material::Diffuse},
                                      {"Specular:", &Material::Specular},
                                      {"Emissive:", &Material::Emission}};

// Reading

/// Fills in what follows the name; 0 when a line is not the one that must come.
int ReadProperties(std::FILE* file, Material* material) {
    for (const ColourLine& line : ColourLines)
        if (!ReadAsciiFloats(file, line.Key, material->*line.Colour, 3))
            return 0;
    return ReadAsciiFloats(file, ShininessKey, &material->Shininess, 1) &&
           ReadAsciiFloats(file, AlphaKey, &material->Alpha, 1);
}

void ReadEntries(std::FILE* file) {
    Material* last = nullptr;
    for (bool found = FindLineInFile(file, NameKey); found;) {
        Material* material = NewMaterial();
        RenameMaterial(material, RestOfLine);
        if (ReadProperties(file, material)) {
            MaterialList::Append(LoadedMaterials, last, material);
            found = FindLineInFile(file, NameKey);
        } else {
            FreeMaterial(material);
            found = FindNextEntry(file, NameKey);
        }
    }
}

// Writing

/// Two decimals and a full stop, whatever the user's locale; the reader takes finite numbers only.
std::string Number(float value) {
    constexpr float Largest = std::numeric_limits<float>::max();
    const float finite = std::isnan(value) ? 0 : std::clamp(value, -Largest, Largest);
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, finite, std::chars_format::fixed, 2).ptr;
    return std::string(text, end);
}

int WholeNumber(float value) {
    constexpr float Largest = 1e9f;
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, -Largest, Largest));
}

void WriteMaterial(std::FILE* file, const Material* material) {
    std::fprintf(file, "%s%s\n", NameKey, OnOneLine(NameKey, material->Name).c_str());
    for (const ColourLine& line : ColourLines) {
        const float(&colour)[3] = material->*line.Colour;
        std::fprintf(file, "%s%s,%s,%s\n", line.Key, Number(colour[0]).c_str(), Number(colour[1]).c_str(),
                     Number(colour[2]).c_str());
    }
    std::fprintf(file, "%s%d\n", ShininessKey, WholeNumber(material->Shininess));
    std::fprintf(file, "%s%s\n\n\n", AlphaKey, Number(material->Alpha).c_str());
}

constexpr PaletteFiles MaterialFiles = {MaterialsExtension,
                                        ReadMaterialsFile,
                                        MergeLoadedMaterials,
                                        WriteMaterialsFile,
                                        "There are no materials in this file:",
                                        "Couldn't write material file"};

} // namespace

int ReadMaterialsFile(const char* name) {
    FreeLoadedMaterials();
    std::FILE* file = std::fopen(name, "r");
    if (!file)
        return 0;
    // Naming a material counts as a change of the model, which these are not part of.
    const int workSaved = WorkSaved;
    if (FindLineInFile(file, Header))
        ReadEntries(file);
    WorkSaved = workSaved;
    std::fclose(file);
    return LoadedMaterials != nullptr;
}

int WriteMaterialsFile(const char* name) {
    Trace("Writing materials as: %s\n", name);
    return WritePaletteFile(name, "material", Header, [](std::FILE* file) {
        for (const Material* material : Along<&Material::Next>(FirstMaterial()))
            WriteMaterial(file, material);
    });
}

void FreeLoadedMaterials() {
    for (Material* material : Along<&Material::Next>(LoadedMaterials))
        FreeMaterial(material);
    LoadedMaterials = nullptr;
}

void MergeLoadedMaterials() {
    for (const Material* loaded : Along<&Material::Next>(LoadedMaterials))
        if (!FindMaterial(loaded)) {
            Material* material = NewMaterial();
            CopyMaterial(material, loaded);
            AddMaterial(material);
        }
    FreeLoadedMaterials();
    MaterialsNeedDefining = 1;
}

const char* DefaultMaterialsFile() {
    static std::string name;
    name = std::string(HomeDir) + "/default" + MaterialsExtension;
    return name.c_str();
}

int SaveDefaultMaterials() {
    return WriteMaterialsFile(DefaultMaterialsFile());
}

void LoadMaterialPalette() {
    DoFileSelector(
        FileToOpen, FilePath, nullptr, MaterialsExtension,
        [](int, const char* directory, const char* name) { LoadPaletteFile(MaterialFiles, directory, name); }, nullptr);
}

void SaveMaterialPalette() {
    DoFileSelector(
        FileToSave, FilePath, nullptr, MaterialsExtension,
        [](int, const char* directory, const char* name) { SavePaletteFile(MaterialFiles, directory, name); }, nullptr);
}
