#include "model_file.h"

#include "files/format.h"
#include "files/primitives.h"

#include <bit>
#include <cerrno>
#include <cstring>

namespace converters {

namespace {

void WriteText(FileWriter& file, int tag, const std::string& text, std::size_t size) {
    WriteFileByte(file, tag);
    WriteFileString(file, text.c_str(), size);
}

template <int N>
void WriteFloats(FileWriter& file, int tag, const float (&values)[N]) {
    WriteFileByte(file, tag);
    WriteFileFloats(file, values, N);
}

void WriteTagged(FileWriter& file, int tag, std::int32_t value) {
    WriteFileByte(file, tag);
    WriteFileInt(file, value);
}

void WriteSetting(FileWriter& file, int number, std::int32_t value) {
    WriteFileByte(file, TagSetting);
    WriteFileByte(file, number);
    WriteFileCount(file, sizeof value);
    WriteFileInt(file, value);
}

void WriteMaterials(FileWriter& file, const Model& model) {
    WriteFileByte(file, TagMaterialSection);
    std::int32_t number = 0;
    for (const Material& material : model.Materials) {
        WriteTagged(file, TagMaterial, number++);
        WriteText(file, TagMaterialName, material.Name, NameSize);
        WriteFloats(file, TagAmbient, material.Ambient);
        WriteFloats(file, TagDiffuse, material.Diffuse);
        WriteFloats(file, TagSpecular, material.Specular);
        WriteFloats(file, TagEmission, material.Emission);
        WriteFloats<1>(file, TagShininess, {material.Shininess});
        WriteFloats<1>(file, TagAlpha, {material.Alpha});
        WriteFileByte(file, TagEnd);
    }
    WriteFileByte(file, TagEnd);
}

void WriteTextures(FileWriter& file, const Model& model, const std::string& directory) {
    std::int32_t number = 0;
    for (const Texture& texture : model.Textures) {
        WriteTagged(file, TagTexture, number++);
        const bool below = !directory.empty() && texture.Path.starts_with(directory + "/");
        WriteFileString(file, (below ? "." + texture.Path.substr(directory.size()) : texture.Path).c_str(),
                        LongNameSize);
        WriteTagged(file, TagClampS, texture.ClampS);
        WriteTagged(file, TagClampT, texture.ClampT);
        WriteFileByte(file, TagEnd);
    }
}

// In one piece: files have millions of them. Its numbers are finite.
void WriteCorner(FileWriter& file, const Corner& corner, bool withNormal, bool withPlace) {
    unsigned char bytes[40];
    unsigned char* at = bytes;
    const auto put = [&at](std::uint32_t number) {
        number = BigEndian(number);
        std::memcpy(at, &number, sizeof number);
        at += sizeof number;
    };
    *at++ = TagCorner;
    *at++ = TagCornerVertex;
    put(corner.Vertex);
    if (withNormal) {
        *at++ = TagCornerNormal;
        for (const float part : corner.Normal)
            put(std::bit_cast<std::uint32_t>(part));
    }
    if (withPlace) {
        *at++ = TagCornerTexture;
        for (const float part : corner.TexCoord)
            put(std::bit_cast<std::uint32_t>(part));
    }
    *at++ = TagEnd;
    file.Put(bytes, static_cast<std::size_t>(at - bytes));
}

void WritePolygon(FileWriter& file, const Object& object, const Polygon& polygon) {
    WriteFileByte(file, TagPolygon);
    WriteFileByte(file, TagPolygonMaterial);
    WriteFileShort(file, polygon.Material);
    WriteFileByte(file, TagLighting);
    WriteFileByte(file, polygon.Lighting);
    if (polygon.Texture >= 0) {
        WriteTagged(file, TagPolygonTexture, polygon.Texture);
        WriteFileByte(file, TagTextureMaterial);
        WriteFileShort(file, polygon.TextureMaterial >= 0 ? polygon.TextureMaterial : polygon.Material);
    }
    if (polygon.LightGroup)
        WriteTagged(file, TagLightGroup, polygon.LightGroup);
    for (std::uint32_t i = 0; i < polygon.Corners; ++i) {
        const Corner& corner = object.Corners[polygon.FirstCorner + i];
        WriteCorner(file, corner, polygon.Lighting == 2, polygon.Texture >= 0);
    }
    WriteFileByte(file, TagEnd);
}

void WriteSubObjects(FileWriter& file, const Object& object) {
    std::vector<std::vector<const Polygon*>> members(object.SubObjects.size());
    for (const Polygon& polygon : object.Polygons)
        members[static_cast<std::size_t>(polygon.SubObject)].push_back(&polygon);
    for (std::size_t i = 0; i < members.size(); ++i) {
        WriteText(file, TagSubObject, object.SubObjects[i], NameSize);
        WriteTagged(file, TagSubObjectIndex, static_cast<std::int32_t>(i));
        for (const Polygon* polygon : members[i])
            WritePolygon(file, object, *polygon);
        WriteFileByte(file, TagEnd);
    }
    for (const Level& level : object.Levels) {
        WriteText(file, TagLod, level.Name, NameSize);
        WriteFloats<1>(file, TagLodDistance, {static_cast<float>(level.Distance)});
        for (const int member : level.Members) {
            WriteTagged(file, TagSubObjectIndex, member);
            WriteTagged(file, TagLodShown, 1);
        }
        WriteFileByte(file, TagEnd);
    }
}

void WriteObject(FileWriter& file, const Object& object) {
    WriteText(file, TagObject, object.Name, LongNameSize);
    WriteTagged(file, TagObjectId, object.Id);
    WriteTagged(file, TagObjectAttributes, object.Billboard);
    WriteTagged(file, TagVertexSection, static_cast<std::int32_t>(object.Vertices.size()));
    for (const auto& vertex : object.Vertices)
        WriteFileFloats(file, vertex.data(), 3);
    WriteSubObjects(file, object);
    WriteFileByte(file, TagEnd);
}

// The branches below one, which stand in no other order than the list's.
void WriteBranches(FileWriter& file, const Model& model, const std::vector<std::vector<int>>& children, int parent) {
    bool first = true;
    for (const int index : children[static_cast<std::size_t>(parent + 1)]) {
        const Branch& branch = model.Branches[static_cast<std::size_t>(index)];
        if (!first)
            WriteFileByte(file, TagNextBranch);
        first = false;
        WriteFileString(file, branch.Name.empty() ? "Unnamed" : branch.Name.c_str(), LongNameSize);
        WriteTagged(file, TagBranchVisible, branch.Visible);
        if (!children[static_cast<std::size_t>(index + 1)].empty()) {
            WriteFileByte(file, TagBranchList);
            WriteBranches(file, model, children, index);
        }
        if (branch.Object >= 0) {
            WriteTagged(file, TagBranchObject, model.Objects[static_cast<std::size_t>(branch.Object)].Id);
            WriteFileByte(file, TagBranchTransform);
            WriteFileReals(file, branch.Transform.data(), 16);
        }
    }
    WriteFileByte(file, TagEndOfBranches);
}

void WriteScene(FileWriter& file, const Model& model) {
    if (model.Branches.empty())
        return;
    std::vector<std::vector<int>> children(model.Branches.size() + 1);
    for (std::size_t i = 0; i < model.Branches.size(); ++i)
        children[static_cast<std::size_t>(model.Branches[i].Parent + 1)].push_back(static_cast<int>(i));
    WriteFileByte(file, TagBranchList);
    WriteBranches(file, model, children, -1);
}

} // namespace

std::string WriteModelFile(const std::string& path, const Model& model, const std::string& directory) {
    if (model.Materials.size() > 65536)
        return "there are more than 65536 materials";
    FileWriter file;
    ClearFileError();
    if (!file.Open(path.c_str()))
        return path + ": " + std::strerror(errno);
    file.Put(CurrentHeader, sizeof CurrentHeader - 1);
    WriteFileByte(file, BodyMarker);
    WriteMaterials(file, model);
    WriteTextures(file, model, directory);
    for (const Object& object : model.Objects)
        WriteObject(file, object);
    WriteScene(file, model);
    if (!model.Objects.empty())
        WriteSetting(file, SettingCurrentObject, model.Objects[0].Id);
    WriteSetting(file, SettingObjectIsolated, !model.SceneMode);
    WriteFileByte(file, TagEnd);
    file.Close();
    return FileError ? std::string("the model file cannot be written: ") + std::strerror(file.Reason()) : "";
}

} // namespace converters
