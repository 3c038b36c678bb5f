#include "files/inspection.h"

#include "base/directories.h"
#include "files/file_errors.h"
#include "files/file_information.h"
#include "files/reader.h"
#include "geometry/boxes.h"
#include "store/accessors.h"
#include "store/normals.h"
#include "store/storage.h"
#include "store/walks.h"
#include "textures/image_file.h"
#include "textures/pictures.h"
#include "textures/texture_library.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unordered_map>

namespace {

namespace fs = std::filesystem;

std::vector<std::string> TexturesNotFound;

// How often each material, texture or sub-object is used, and each vertex, in one walk over the polygons.
using UseCounts = std::unordered_map<const void*, std::size_t>;

std::vector<InformationLine> SummariseInformation() {
    const InformationLine lines[] = {
        {"Title", FileTitle},      {"Author", FileAuthor},    {"Company", FileCompany},  {"Contact", FileContact},
        {"Comment", FileComment1}, {"Comment", FileComment2}, {"Comment", FileComment3}, {"Comment", FileComment4},
    };
    std::vector<InformationLine> present;
    for (const InformationLine& line : lines)
        if (!line.Text.empty())
            present.push_back(line);
    return present;
}

MaterialSummary SummariseMaterial(const Material* material, std::size_t polygons) {
    MaterialSummary summary{};
    summary.Name = material->Name;
    std::copy(material->Ambient, material->Ambient + 3, summary.Ambient);
    std::copy(material->Diffuse, material->Diffuse + 3, summary.Diffuse);
    std::copy(material->Specular, material->Specular + 3, summary.Specular);
    std::copy(material->Emission, material->Emission + 3, summary.Emission);
    summary.Shininess = material->Shininess;
    summary.Alpha = material->Alpha;
    summary.Polygons = polygons;
    return summary;
}

TextureSummary SummariseTexture(const Texture* texture, std::size_t polygons) {
    TextureSummary summary{};
    summary.Path = texture->FileName;
    SummariseImage(summary.Path, summary.Image);
    summary.MinFilter = texture->MinFilter;
    summary.MagFilter = texture->MagFilter;
    summary.ClampS = texture->ClampS;
    summary.ClampT = texture->ClampT;
    summary.Fast = texture->Fast;
    summary.Polygons = polygons;
    return summary;
}

bool IsDegenerate(Polygon* polygon) {
    int corners = 0;
    for (const PolygonBead* bead = polygon->Beads; bead && corners < 3; bead = bead->Next)
        ++corners;
    return corners < 3 || !GeneratePolygonNormal(polygon);
}

void CountPolygons(Object* object, ObjectSummary& summary, UseCounts& uses) {
    for (Polygon* polygon : EveryPolygon(object)) {
        ++summary.Polygons;
        summary.SubPolygons += polygon->Parent != nullptr;
        summary.Degenerate += IsDegenerate(polygon);
        ++uses[polygon->SubObject];
        ++uses[polygon->Material];
        if (polygon->Texture) {
            ++uses[polygon->Texture];
            if (polygon->TextureMaterial != polygon->Material)
                ++uses[polygon->TextureMaterial];
        }
    }
}

void CountVertices(const Object* object, ObjectSummary& summary) {
    std::size_t used = 0;
    for (Vertex* vertex : EveryVertex(object)) {
        vertex->Mark = 0;
        ++summary.Vertices;
    }
    for (const Polygon* polygon : EveryPolygon(object))
        for (const PolygonBead* bead : EveryBead(polygon))
            if (bead->Vertex->Mark == 0) {
                bead->Vertex->Mark = 1;
                ++used;
            }
    summary.LooseVertices = summary.Vertices - used;
    if (summary.Vertices == 0)
        return;
    EmptyBox(summary.Min, summary.Max);
    for (const Vertex* vertex : EveryVertex(object))
        GrowBox(summary.Min, summary.Max, vertex->Position);
    // A zero without the sign that turning the axes gives it.
    for (double* corner : {summary.Min, summary.Max})
        for (int axis = 0; axis < 3; ++axis)
            corner[axis] += 0.0;
}

ObjectSummary SummariseObject(Object* object, UseCounts& uses) {
    ObjectSummary summary{};
    summary.Name = object->Name;
    summary.Current = object == MainFile.CurrentObject;
    summary.Billboard = object->Attributes & ObjectIsBillboard;
    CountVertices(object, summary);
    CountPolygons(object, summary, uses);
    UseCounts levels;
    for (const Lod* lod : EveryLod(object)) {
        LodSummary level{lod->Name, lod->Distance, {}};
        for (const LodBead* bead : EveryLodBead(lod)) {
            level.Members.emplace_back(bead->SubObject->Name);
            ++levels[bead->SubObject];
        }
        summary.Lods.push_back(std::move(level));
    }
    for (const SubObject* subObject : EverySubObject(object))
        summary.SubObjects.push_back({subObject->Name, uses[subObject], levels[subObject]});
    return summary;
}

BranchSummary SummariseBranch(const Branch* branch, int depth) {
    BranchSummary summary{};
    summary.Name = branch->Name ? branch->Name : "Unnamed";
    summary.Depth = depth;
    summary.Object = branch->Object ? branch->Object->Name : "";
    summary.Visible = branch->Visible;
    summary.HasChildren = branch->FirstChild;
    for (int axis = 0; axis < 3; ++axis)
        summary.Position[axis] = branch->Transform[3][axis] + 0.0;
    return summary;
}

std::vector<BranchSummary> SummariseScene() {
    std::vector<BranchSummary> branches;
    if (!MainFile.Scene)
        return branches;
    std::vector<const Branch*> enclosing;
    for (const Branch* branch = MainFile.Scene->FirstChild; branch;) {
        branches.push_back(SummariseBranch(branch, static_cast<int>(enclosing.size())));
        if (branch->FirstChild) {
            enclosing.push_back(branch);
            branch = branch->FirstChild;
            continue;
        }
        while (!branch->Next && !enclosing.empty()) {
            branch = enclosing.back();
            enclosing.pop_back();
        }
        branch = branch->Next;
    }
    return branches;
}

} // namespace

std::string WhyNoFile(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error)
        return error.message();
    return fs::is_directory(status) ? std::strerror(EISDIR) : fs::is_regular_file(status) ? "" : "not an ordinary file";
}

LoadReport LoadForInspection(const std::string& path) {
    LoadReport report;
    report.Path = path;
    std::error_code error;
    const fs::path full = fs::absolute(path, error);
    if (!CopyFileName(FilePath, full.parent_path().c_str()) || !CopyFileName(FileName, full.filename().c_str())) {
        report.Error = std::strerror(ENAMETOOLONG);
        return report;
    }
    report.Error = WhyNoFile(path);
    if (!report.Error.empty())
        return report;
    report.Size = fs::file_size(full, error);
    TexturesNotFound.clear();
    TextureNotFoundSlot = [](const char* name) { TexturesNotFound.emplace_back(name); };
    FileVersion = 0;
    errno = 0;
    const int loaded = ReadKirvo(path.c_str());
    const int reason = errno;
    TextureNotFoundSlot = nullptr;
    report.MissingTextures.swap(TexturesNotFound);
    report.Version = FileVersion;
    report.Reached = FileReached;
    report.InformationLost = InformationLost;
    // The header line is at fault as a whole.
    if (!loaded && (FileErrorNumber == NotAKirvoFile || FileErrorNumber == UnsupportedRevision))
        report.Reached = 0;
    if (!loaded)
        report.Error = FileErrorNumber == FileNotFound && reason ? std::strerror(reason) : Ferr[FileErrorNumber];
    return report;
}

ModelSummary SummariseModel() {
    ModelSummary summary{};
    UseCounts uses;
    summary.Information = SummariseInformation();
    summary.PublicDomain = FilePublicDomain;
    for (Object* object : EveryObject(MainFile))
        summary.Objects.push_back(SummariseObject(object, uses));
    for (const Material* material : Along<&Material::Next>(MainFile.FirstMaterial))
        summary.Materials.push_back(SummariseMaterial(material, uses[material]));
    for (const Texture* texture : Along<&Texture::Next>(MainFile.FirstTexture))
        summary.Textures.push_back(SummariseTexture(texture, uses[texture]));
    summary.Branches = SummariseScene();
    summary.SceneMode = !ObjectIsolated;
    return summary;
}

bool SummariseImage(const std::string& path, ImageSummary& summary) {
    PictureSize size;
    const PictureFormat format = ReadPictureSize(path.c_str(), size);
    if (format == PictureFormat::Png || format == PictureFormat::Jpeg) {
        summary = {size.Width, size.Height, size.Channels, 1, 0, false, format == PictureFormat::Png ? "PNG" : "JPEG"};
        return true;
    }
    ImageFile* image = OpenImageForRead(path.c_str());
    if (!image)
        return false;
    summary = {
        image->XSize, image->YSize, image->ZSize, image->Type & 0xff, image->Type >> 8, ImageIsLittleEndian(image),
        nullptr};
    CloseImage(image);
    return true;
}
