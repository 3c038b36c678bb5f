#include "files/writer.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/file_names.h"
#include "base/file_replacement.h"
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
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>
#include <sys/stat.h>

int FileBackups = 1;

namespace {

constexpr char BackupExtension[] = ".bak";
/// When the name with that one cannot be used; still the name of a backup.
constexpr char OtherBackupExtension[] = ".2.bak";

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

/// The whole main file. 0 when writing failed.
int WriteModel(FileWriter& file) {
    Object* remembered = CurrentObject();
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

// Saving

void Tell(const std::string& text) {
    if (TheFileSlots.TellUser)
        TheFileSlots.TellUser(text.c_str());
}

std::string NameIn(const char* path) {
    char *directory, *name;
    SplitFileName(path, directory, name);
    return name;
}

void TellThatFileCannotBeCreated(const char* fileName, const std::string& whereOldVersionIs = "") {
    const std::string reason = std::strerror(errno);
    Tell("Couldn't write file:  " + NameIn(fileName) + "\n\nreason: " + reason + whereOldVersionIs);
}

/// What became of a save.
struct SaveResult {
    enum { Saved, NotCreated, NotWritten, NotKept } Outcome = Saved;

    /// Why the file was not created or not written.
    int Reason = 0;
    /// Whether a previous version is at stake.
    bool Replaces = false;
    /// Why the previous version is not kept as a backup; 0 when it is, or need not be.
    int BackupFailure = 0;
    /// What was appended to its name instead; null: it is not kept.
    const char* OtherBackup = nullptr;
};

void KeepBackup(FileReplacement& replacement, SaveResult& result) {
    if (replacement.KeepOldVersion(BackupExtension))
        return;
    result.BackupFailure = errno;
    if (replacement.KeepOldVersion(OtherBackupExtension))
        result.OtherBackup = OtherBackupExtension;
}

/// What is done with the version that a save replaces.
enum class OldVersion { Lost, Backup, Foreign };

SaveResult Save(const char* fileName, OldVersion oldVersion) {
    FileReplacement replacement(fileName);
    SaveResult result;
    result.Replaces = replacement.Replaces();
    if (!replacement.Stream()) {
        result.Outcome = SaveResult::NotCreated;
        result.Reason = errno;
        return result;
    }
    result.Outcome = SaveResult::NotWritten;
    if (!WriteKirvoInto(replacement.Stream()) || !replacement.Finish()) {
        result.Reason = errno;
        return result;
    }
    if (oldVersion == OldVersion::Backup)
        KeepBackup(replacement, result);
    if (oldVersion == OldVersion::Foreign && result.Replaces &&
        !replacement.KeepOldVersionAs(FreeNameForForeignVersion(fileName))) {
        result.Outcome = SaveResult::NotKept;
        result.Reason = errno;
        return result;
    }
    if (!replacement.PutInPlace()) {
        result.Reason = errno;
        return result;
    }
    result.Outcome = SaveResult::Saved;
    return result;
}

constexpr char OldVersionStays[] = "\n\nThe previous version of the file is unchanged.";

void TellWhatFailed(const char* fileName, const SaveResult& result) {
    const std::string name = NameIn(fileName), stays = result.Replaces ? OldVersionStays : "";
    switch (result.Outcome) {
    case SaveResult::NotCreated:
        errno = result.Reason;
        TellThatFileCannotBeCreated(fileName, stays);
        return;
    case SaveResult::NotWritten:
        Tell("Couldn't save file:  " + name + "\n\nreason: " + std::strerror(result.Reason) +
             (result.Replaces ? stays : "\n\nThe work is not saved."));
        return;
    case SaveResult::NotKept:
        Tell("Couldn't save file:  " + name +
             "\n\nThe version of the other program could not be kept beside it.\n\nreason: " +
             std::strerror(result.Reason) + "\n\nSave the work under another name.");
        return;
    case SaveResult::Saved:
        if (result.BackupFailure)
            Tell("Saved file:  " + name + "\n\nThe previous version could not be kept as " + name + BackupExtension +
                 ".\n\nreason: " + std::strerror(result.BackupFailure) +
                 (result.OtherBackup ? "\n\nIt is kept as " + name + result.OtherBackup + "." : ""));
        return;
    }
}

int SaveAndTell(const char* fileName, OldVersion oldVersion) {
    const SaveResult result = Save(fileName, oldVersion);
    TellWhatFailed(fileName, result);
    return result.Outcome == SaveResult::Saved;
}

} // namespace

int WriteKirvo(const char* fileName) {
    FileWriter file;
    if (!file.Open(fileName)) {
        TellThatFileCannotBeCreated(fileName);
        return 0;
    }
    return WriteModel(file);
}

int WriteKirvoInto(std::FILE* stream) {
    FileWriter file;
    if (!file.Open(fileno(stream)))
        return 0;
    if (WriteModel(file))
        return 1;
    // Without a reason of the system's it is the model that does not fit the file's numbers.
    errno = file.Reason() ? file.Reason() : EOVERFLOW;
    return 0;
}

int SaveModelFile(const char* fileName) {
    return SaveAndTell(fileName, FileBackups ? OldVersion::Backup : OldVersion::Lost);
}

int SaveOverForeignFile(const char* fileName) {
    return SaveAndTell(fileName, OldVersion::Foreign);
}

std::string FreeNameForForeignVersion(const std::string& fileName) {
    namespace fs = std::filesystem;
    constexpr std::size_t longestPart = 200; // room for what is appended
    std::error_code error;
    const fs::path place = fs::weakly_canonical(fileName, error);
    const fs::path directory = error ? fs::path(fileName).parent_path() : place.parent_path();
    const fs::path name = (error ? fs::path(fileName) : place).filename();
    const std::string start = name.stem().string().substr(0, longestPart) + "-other";
    for (int number = 1;; ++number) {
        const fs::path free =
            directory / (start + (number == 1 ? "" : "-" + std::to_string(number)) + KirvoExtension + BackupExtension);
        struct stat status;
        if (lstat(free.c_str(), &status) != 0)
            return free;
    }
}
