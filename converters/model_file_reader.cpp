#include "model_file.h"

#include "files/file_contents.h"
#include "files/format.h"
#include "files/primitives.h"

#include <charconv>
#include <string_view>

namespace converters {

namespace {

constexpr int DeepestNesting = 10000;

// Reads the items of a context; `item` gives false for a tag that it does not know, which is skipped.
template <class Item>
void ReadItems(FileCursor& file, Item item) {
    for (int tag; ReadFileByte(file, tag) && tag != TagEnd;)
        if (!item(tag) && !SkipFileBlock(file))
            SetError(UnknownData);
}

std::string ReadText(FileCursor& file) {
    char text[LongNameSize];
    return ReadFileString(file, text) ? text : "";
}

std::int32_t ReadInt(FileCursor& file) {
    std::int32_t value = 0;
    ReadFileInts(file, &value, 1);
    return value;
}

/// Reads the body of one model file.
class Reader {
  public:
    Reader(FileCursor& file, Model& model) : File(file), To(model) {}

    void Read() {
        ReadItems(File, [&](int tag) { return ReadTopItem(tag); });
    }

  private:
    bool ReadTopItem(int tag) {
        switch (tag) {
        case TagMaterialSection:
            ReadItems(File, [&](int item) { return item == TagMaterial && ReadMaterial(); });
            return true;
        case TagTextureDirectory:
            ReadText(File);
            return true;
        case TagSetting:
            ReadSetting();
            return true;
        case TagTexture:
            ReadTexture();
            return true;
        case TagObject:
            ReadObject();
            return true;
        case TagBranchList:
            ReadBranches(-1, 0);
            return true;
        case TagView:
            ReadView();
            return true;
        default:
            return false;
        }
    }

    bool ReadMaterial() {
        ReadInt(File);
        Material material;
        ReadItems(File, [&](int tag) {
            switch (tag) {
            case TagAmbient:
                return ReadFileFloats(File, material.Ambient, 3) != 0;
            case TagDiffuse:
                return ReadFileFloats(File, material.Diffuse, 3) != 0;
            case TagSpecular:
                return ReadFileFloats(File, material.Specular, 3) != 0;
            case TagEmission:
                return ReadFileFloats(File, material.Emission, 3) != 0;
            case TagShininess:
                return ReadFileFloats(File, &material.Shininess, 1) != 0;
            case TagAlpha:
                return ReadFileFloats(File, &material.Alpha, 1) != 0;
            case TagMaterialName:
                material.Name = ReadText(File);
                return true;
            default:
                return false;
            }
        });
        To.Materials.push_back(material);
        return true;
    }

    void ReadSetting() {
        int number;
        std::int32_t size;
        if (!ReadFileByte(File, number) || !ReadFileCount(File, size))
            return;
        const FileCursor start = File;
        if (!SkipFileBytes(File, size))
            return;
        if (number == SettingFileDirectory && size > 0)
            To.Directory.assign(reinterpret_cast<const char*>(start.At), static_cast<std::size_t>(size) - 1);
    }

    void ReadTexture() {
        ReadInt(File);
        Texture texture;
        texture.Path = ReadText(File);
        ReadItems(File, [&](int tag) {
            float filter;
            switch (tag) {
            case TagMinFilter:
            case TagMagFilter:
                return ReadFileFloats(File, &filter, 1) != 0;
            case TagFast:
                ReadInt(File);
                return true;
            case TagClampS:
                texture.ClampS = texture.ClampT = ReadInt(File) != 0;
                return true;
            case TagClampT:
                texture.ClampT = ReadInt(File) != 0;
                return true;
            default:
                return false;
            }
        });
        To.Textures.push_back(texture);
    }

    void ReadView() {
        ReadInt(File);
        ReadItems(File, [&](int tag) {
            int byte;
            Matrix matrix;
            double reals[3];
            switch (tag) {
            case TagPerspective:
            case TagDirection:
                return ReadFileByte(File, byte) != 0;
            case TagViewMatrix:
            case TagProjection:
            case TagGridMatrix:
                return ReadFileMatrix(File, matrix) != 0;
            case TagZoom:
                return ReadFileReals(File, reals, 1) != 0;
            case TagCentre:
                return ReadFileReals(File, reals, 3) != 0;
            default:
                return false;
            }
        });
    }

    void ReadObject() {
        Object& object = To.Objects.emplace_back();
        object.Name = ReadText(File);
        ReadItems(File, [&](int tag) {
            switch (tag) {
            case TagVertexSection:
                ReadVertices(object);
                return true;
            case TagSubObject:
                ReadSubObject(object);
                return true;
            case TagLod:
                ReadLevel(object);
                return true;
            case TagObjectId:
                object.Id = ReadInt(File);
                return true;
            case TagGridIndex:
            case TagGridSteps:
                ReadInt(File);
                return true;
            case TagObjectAttributes:
                object.Billboard = ReadInt(File) & 1;
                return true;
            case TagView:
                ReadView();
                return true;
            default:
                return false;
            }
        });
    }

    void ReadVertices(Object& object) {
        const std::int32_t count = ReadInt(File);
        if (FileError || count < 0 || File.Left() / 12 < static_cast<std::size_t>(count)) {
            SetError(BadFile);
            return;
        }
        object.Vertices.resize(static_cast<std::size_t>(count));
        for (auto& vertex : object.Vertices)
            ReadFileFloats(File, vertex.data(), 3);
    }

    void ReadSubObject(Object& object) {
        const auto number = static_cast<std::int32_t>(object.SubObjects.size());
        object.SubObjects.push_back(ReadText(File));
        ReadItems(File, [&](int tag) {
            if (tag == TagPolygon)
                ReadPolygon(object, number, -1, 0);
            else if (tag == TagSubObjectIndex)
                ReadInt(File);
            else
                return false;
            return true;
        });
    }

    void ReadPolygon(Object& object, std::int32_t subObject, std::int32_t parent, int depth) {
        if (depth > DeepestNesting)
            SetError(BadPolygon);
        const std::size_t index = object.Polygons.size();
        Polygon polygon;
        polygon.SubObject = subObject;
        polygon.Parent = parent;
        polygon.FirstCorner = static_cast<std::uint32_t>(object.Corners.size());
        object.Polygons.push_back(polygon);
        ReadItems(File, [&](int tag) {
            int number;
            float normal[3];
            switch (tag) {
            case TagCorner:
                // Corners stand before sub-polygons.
                if (object.Corners.size() != polygon.FirstCorner + polygon.Corners)
                    SetError(BadPolygon);
                ReadCorner(object);
                ++polygon.Corners;
                return true;
            case TagPolygon:
                object.Polygons[index] = polygon;
                ReadPolygon(object, subObject, static_cast<std::int32_t>(index), depth + 1);
                return true;
            case TagPolygonMaterial:
                if (ReadFileShort(File, number))
                    polygon.Material = number;
                return true;
            case TagTextureMaterial:
                if (ReadFileShort(File, number))
                    polygon.TextureMaterial = number;
                return true;
            case TagLighting:
                if (ReadFileByte(File, number))
                    polygon.Lighting = static_cast<std::uint8_t>(number);
                return true;
            case TagPolygonNormal:
                return ReadFileFloats(File, normal, 3) != 0;
            case TagPolygonTexture:
                polygon.Texture = ReadInt(File);
                return true;
            case TagLightGroup:
                polygon.LightGroup = ReadInt(File);
                return true;
            case TagPolygonFlags:
                return ReadFileByte(File, number) != 0;
            default:
                return false;
            }
        });
        object.Polygons[index] = polygon;
    }

    void ReadCorner(Object& object) {
        Corner corner;
        bool placed = false;
        ReadItems(File, [&](int tag) {
            switch (tag) {
            case TagCornerVertex: {
                const std::int32_t number = ReadInt(File);
                placed = number >= 0 && static_cast<std::size_t>(number) < object.Vertices.size();
                corner.Vertex = static_cast<std::uint32_t>(number);
                return true;
            }
            case TagCornerTexture:
                return ReadFileFloats(File, corner.TexCoord, 2) != 0;
            case TagCornerNormal:
                return ReadFileFloats(File, corner.Normal, 3) != 0;
            default:
                return false;
            }
        });
        if (!placed)
            SetError(BadVertexIndex);
        object.Corners.push_back(corner);
    }

    void ReadLevel(Object& object) {
        Level level;
        level.Name = ReadText(File);
        ReadItems(File, [&](int tag) {
            float distance = 0;
            switch (tag) {
            case TagLodDistance:
                ReadFileFloats(File, &distance, 1);
                level.Distance = distance;
                return true;
            case TagSubObjectIndex: {
                const std::int32_t member = ReadInt(File);
                if (member < 0 || static_cast<std::size_t>(member) >= object.SubObjects.size())
                    SetError(UndefinedSubObject);
                level.Members.push_back(member);
                return true;
            }
            case TagLodShown:
                ReadInt(File);
                return true;
            default:
                return false;
            }
        });
        object.Levels.push_back(level);
    }

    int NewBranch(int parent) {
        To.Branches.push_back({ReadText(File), parent, -1, Identity, true});
        return static_cast<int>(To.Branches.size()) - 1;
    }

    int ObjectOfId(std::int32_t id) const {
        for (std::size_t i = 0; i < To.Objects.size(); ++i)
            if (To.Objects[i].Id == id)
                return static_cast<int>(i);
        return -1;
    }

    void ReadBranches(int parent, int depth) {
        if (depth > DeepestNesting)
            SetError(BadTree);
        int branch = NewBranch(parent);
        for (int tag; ReadFileByte(File, tag) && tag != TagEndOfBranches;) {
            Branch& current = To.Branches[static_cast<std::size_t>(branch)];
            if (tag == TagBranchList)
                ReadBranches(branch, depth + 1);
            else if (tag == TagNextBranch)
                branch = NewBranch(parent);
            else if (tag == TagBranchObject)
                current.Object = ObjectOfId(ReadInt(File));
            else if (tag == TagBranchTransform)
                ReadFileReals(File, current.Transform.data(), 16);
            else if (tag == TagBranchVisible)
                current.Visible = ReadInt(File) != 0;
            else if (tag == TagBranchCollapsed)
                ReadInt(File);
            else if (!SkipFileBlock(File))
                SetError(BadTree);
        }
    }

    FileCursor& File;
    Model& To;
};

// Numbers that lead nowhere are as if they were not there.
void Repair(Model& model) {
    if (model.Materials.empty())
        model.Materials.push_back({.Name = "Grey"});
    const auto materials = static_cast<std::int32_t>(model.Materials.size());
    const auto textures = static_cast<std::int32_t>(model.Textures.size());
    for (Object& object : model.Objects)
        for (Polygon& polygon : object.Polygons) {
            if (polygon.Material >= materials)
                polygon.Material = 0;
            if (polygon.TextureMaterial >= materials)
                polygon.TextureMaterial = polygon.Material;
            if (polygon.Texture >= textures || polygon.Texture < 0)
                polygon.Texture = -1;
        }
}

} // namespace

std::string ReadModelFile(const std::string& path, Model& model) {
    FileContents contents(path.c_str(), HeaderLineSize);
    if (!contents.IsOpen())
        return path + " cannot be read";
    if (!contents.ReadAll())
        return path + " does not fit into memory";
    FileCursor file = {contents.Bytes(), contents.Bytes() + contents.Size()};
    const std::string_view text(reinterpret_cast<const char*>(file.At), std::min(file.Left(), HeaderLineSize));
    const std::size_t end = text.find('\n');
    const std::string_view prefix = "Compatibility: ";
    float version = 0;
    if (end == std::string_view::npos || !text.starts_with(prefix) ||
        std::from_chars(text.data() + prefix.size(), text.data() + end, version).ec != std::errc())
        return path + " is no model file";
    if (version < 3.015F || version > 3.055F)
        return path + " is a model file of another version; \"kirvo-file upgrade\" makes it a current one";
    file.At += end + 1;
    ClearFileError();
    int marker = 0;
    if (ReadFileByte(file, marker) && marker == BodyMarker)
        Reader(file, model).Read();
    if (FileError || marker != BodyMarker)
        return path + ": " + Ferr[FileError ? FileErrorNumber : static_cast<int>(NotAKirvoFile)];
    Repair(model);
    return "";
}

} // namespace converters
