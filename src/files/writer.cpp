#include "files/writer.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/file_names.h"
#include "files/fields.h"
#include "files/file_information.h"
#include "files/file_slots.h"
#include "files/format.h"
#include "files/primitives.h"
#include "files/scene_writer.h"
#include "files/settings.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/storage.h"
#include "store/walks.h"
#include "textures/texture_library.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

int FileBackups = 1;

namespace {

void WriteHeader(FileWriter& file) {
    file.Put(CurrentHeader, sizeof CurrentHeader - 1);
    WriteFileByte(file, BodyMarker);
}

void WriteMaterials(FileWriter& file) {
    WriteFileByte(file, TagMaterialSection);
    std::int32_t number = 0;
    for (Material* material : Along<&Material::Next>(FirstMaterial())) {
        material->Index = number++;
        WriteFileByte(file, TagMaterial);
        WriteFileInt(file, material->Index);
        WriteFileByte(file, TagMaterialName);
        WriteFileString(file, material->Name, NameSize);
        FieldWriter fields(file);
        MaterialFields(fields, *material);
        WriteFileByte(file, TagEnd);
    }
    WriteFileByte(file, TagEnd);
}

// Settings

void WriteStringSetting(FileWriter& file, int number, const char* text, std::size_t size) {
    WriteFileByte(file, TagSetting);
    WriteFileByte(file, number);
    WriteFileCount(file, static_cast<std::int32_t>(strnlen(text, size - 1) + 1));
    WriteFileString(file, text, size);
}

void WriteIntSetting(FileWriter& file, int number, std::int32_t value) {
    WriteFileByte(file, TagSetting);
    WriteFileByte(file, number);
    WriteFileCount(file, sizeof value);
    WriteFileInt(file, value);
}

void WriteSettings(FileWriter& file) {
    CurrentObjectNumber = ObjectId();
    for (const FileSetting& setting : FileSettings())
        if (setting.Line)
            WriteStringSetting(file, setting.Number, setting.Line, FileInformationSize);
        else
            WriteIntSetting(file, setting.Number, *setting.Value);
}

// Textures

/// The path of an image as seen from `directory`, beginning with a "."; empty when it does not lie there.
std::string PathBelow(const char* directory, std::string_view path) {
    if (!*directory || !path.starts_with(directory))
        return "";
    const std::string_view rest = path.substr(std::strlen(directory));
    // Not a directory whose name merely begins with the other's.
    return rest.starts_with('/') ? "." + std::string(rest) : "";
}

std::string PathToWrite(const char* fileName) {
    std::string path = PathBelow(FilePath, fileName);
    if (path.empty())
        path = PathBelow(TextureDir, fileName);
    return path.empty() ? fileName : path;
}

void WriteTextures(FileWriter& file) {
    WriteFileByte(file, TagTextureDirectory);
    WriteFileString(file, TextureDir, LongNameSize);
    WriteStringSetting(file, SettingFileDirectory, FilePath, LongNameSize);
    std::int32_t number = 0;
    for (Texture* texture : Along<&Texture::Next>(FirstTexture())) {
        texture->Index = number++;
        WriteFileByte(file, TagTexture);
        WriteFileInt(file, texture->Index);
        const std::string path = PathToWrite(texture->FileName);
        Trace("Wrote texture as:%s\n", path.c_str());
        WriteFileString(file, path.c_str(), LongNameSize);
        FieldWriter fields(file);
        TextureFields(fields, *texture);
        WriteFileByte(file, TagEnd);
    }
}

// Objects

void WriteVertices(FileWriter& file) {
    WriteFileByte(file, TagVertexSection);
    std::int32_t count = 0;
    for (Vertex* vertex : Along<&Vertex::Next>(FirstVertex()))
        vertex->Mark = count++;
    WriteFileInt(file, count);
    for (const Vertex* vertex : Along<&Vertex::Next>(FirstVertex()))
        WriteFileReals(file, vertex->Position, 3);
}

void WriteMaterialNumber(FileWriter& file, int tag, const Material* material) {
    const int number = material ? material->Index : 0;
    // A number cut to what a short holds would give the polygon another material.
    if (number > std::numeric_limits<std::uint16_t>::max())
        SetError(WriteFailed);
    WriteFileByte(file, tag);
    WriteFileShort(file, number);
}

void WriteCorner(FileWriter& file, const Polygon* polygon, const PolygonBead* bead) {
    WriteFileByte(file, TagCorner);
    WriteFileByte(file, TagCornerVertex);
    WriteFileInt(file, bead->Vertex->Mark);
    if (polygon->Lighting == LightingSmooth) {
        WriteFileByte(file, TagCornerNormal);
        WriteFileFloats(file, bead->Normal, 3);
    }
    if (polygon->Texture) {
        WriteFileByte(file, TagCornerTexture);
        WriteFileFloats(file, bead->TexCoord, 2);
    }
    WriteFileByte(file, TagEnd);
}

/// All of a polygon that stands before its sub-polygons.
void WritePolygonStart(FileWriter& file, Polygon* polygon) {
    polygon->Flags &= static_cast<std::uint8_t>(~PolygonIsSub);
    if (polygon->Parent)
        polygon->Flags |= PolygonIsSub;
    WriteFileByte(file, TagPolygon);
    WriteMaterialNumber(file, TagPolygonMaterial, polygon->Material);
    WriteFileByte(file, TagLighting);
    WriteFileByte(file, polygon->Lighting);
    if (polygon->Lighting == LightingFaceted) {
        WriteFileByte(file, TagPolygonNormal);
        WriteFileFloats(file, polygon->Normal, 3);
    }
    if (polygon->Texture) {
        WriteFileByte(file, TagPolygonTexture);
        WriteFileInt(file, polygon->Texture->Index);
        WriteMaterialNumber(file, TagTextureMaterial,
                            polygon->TextureMaterial ? polygon->TextureMaterial : polygon->Material);
    }
    if (polygon->LightGroup) {
        WriteFileByte(file, TagLightGroup);
        WriteFileInt(file, polygon->LightGroup);
    }
    if (polygon->Flags) {
        WriteFileByte(file, TagPolygonFlags);
        WriteFileByte(file, polygon->Flags);
    }
    for (const PolygonBead* bead : EveryBead(polygon))
        WriteCorner(file, polygon, bead);
}

/// A top-level polygon with all its sub-polygons inside it.
void WritePolygon(FileWriter& file, Polygon* top) {
    // Not a recursion: no nesting is too deep.
    WritePolygonStart(file, top);
    for (Polygon* polygon = top;;) {
        if (polygon->FirstChild) {
            polygon = polygon->FirstChild;
        } else {
            WriteFileByte(file, TagEnd);
            while (polygon != top && !polygon->NextSibling) {
                polygon = polygon->Parent;
                WriteFileByte(file, TagEnd);
            }
            if (polygon == top)
                return;
            polygon = polygon->NextSibling;
        }
        WritePolygonStart(file, polygon);
    }
}

void WriteSubObjects(FileWriter& file) {
    std::int32_t number = 0;
    for (SubObject* subObject : Along<&SubObject::Next>(FirstSubObject())) {
        subObject->Index = number++;
        WriteFileByte(file, TagSubObject);
        WriteFileString(file, subObject->Name, NameSize);
        FieldWriter(file).Int(TagSubObjectIndex, subObject->Index);
        for (Polygon* polygon : EveryTopPolygon(subObject))
            WritePolygon(file, polygon);
        WriteFileByte(file, TagEnd);
    }
}

void WriteLods(FileWriter& file) {
    FieldWriter fields(file);
    for (const Lod* lod : Along<&Lod::Next>(FirstLod())) {
        WriteFileByte(file, TagLod);
        WriteFileString(file, lod->Name, NameSize);
        fields.Real(TagLodDistance, lod->Distance);
        for (const LodBead* bead : EveryLodBead(lod)) {
            fields.Int(TagSubObjectIndex, bead->SubObject->Index);
            fields.Int(TagLodShown, bead->Shown);
        }
        WriteFileByte(file, TagEnd);
    }
}

/// The current object.
void WriteObject(FileWriter& file) {
    CleanUpObject();
    WriteFileByte(file, TagObject);
    WriteFileString(file, ObjectName(), LongNameSize);
    FieldWriter fields(file);
    ObjectIdentityFields(fields, *CurrentObject());
    WriteObjectViews(file);
    ObjectGridFields(fields, *CurrentObject());
    WriteVertices(file);
    WriteSubObjects(file);
    WriteLods(file);
    WriteFileByte(file, TagEnd);
}

void WriteObjects(FileWriter& file) {
    std::int32_t number = 0;
    for (Object* object : Along<&Object::Next>(FirstObject())) {
        CurrentObject() = object;
        object->Id = number++;
        WriteObject(file);
    }
}

void TellThatFileCannotBeCreated(const char* fileName) {
    const std::string reason = std::strerror(errno);
    char *directory, *name;
    SplitFileName(fileName, directory, name);
    if (TheFileSlots.TellUser)
        TheFileSlots.TellUser(("Couldn't write file:  " + std::string(name) + "\n\nreason: " + reason).c_str());
}

} // namespace

int WriteKirvo(const char* fileName) {
    Object* remembered = CurrentObject();
    FileWriter file;
    if (!file.Open(fileName)) {
        TellThatFileCannotBeCreated(fileName);
        return 0;
    }
    ClearFileError();
    WriteHeader(file);
    WriteMaterials(file);
    WriteTextures(file);
    WriteObjects(file);
    WriteSceneTree(file);
    CurrentObject() = remembered;
    WriteSceneViews(file);
    WriteSettings(file);
    WriteFileByte(file, TagEnd);
    file.Close();
    return !FileError;
}

int SaveModelFile(const char* fileName) {
    if (FileBackups)
        std::rename(fileName, (std::string(fileName) + ".bak").c_str());
    return WriteKirvo(fileName);
}
