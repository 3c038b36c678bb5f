#include "files/file_check.h"

#include "base/memory.h"
#include "files/format.h"
#include "textures/pictures.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr std::size_t MostMaterials = 65536; // polygons name them by 16 bits
constexpr int MostChannels = 4;              // that a texture has a use for

__attribute__((format(printf, 1, 2))) std::string Text(const char* format, ...) {
    va_list arguments, again;
    va_start(arguments, format);
    va_copy(again, arguments);
    std::string text(std::vsnprintf(nullptr, 0, format, arguments), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
    return text;
}

class Findings {
  public:
    void Problem(std::string text) { List.push_back({true, std::move(text)}); }

    void Note(std::string text) { List.push_back({false, std::move(text)}); }

    std::vector<Finding> Take() { return std::move(List); }

  private:
    std::vector<Finding> List;
};

bool IsColour(const float (&colour)[3]) {
    for (const float component : colour)
        if (component < 0 || component > 1)
            return false;
    return true;
}

void CheckMaterials(const ModelSummary& model, Findings& findings) {
    if (model.Materials.size() > MostMaterials)
        findings.Problem(
            Text("%zu materials: polygons of a file can name no more than %zu", model.Materials.size(), MostMaterials));
    for (const MaterialSummary& material : model.Materials) {
        if (!IsColour(material.Ambient) || !IsColour(material.Diffuse) || !IsColour(material.Specular) ||
            !IsColour(material.Emission) || material.Alpha < 0 || material.Alpha > 1)
            findings.Note(Text("material \"%s\": a colour or its alpha lies outside 0 to 1", material.Name.c_str()));
        if (material.Polygons == 0)
            findings.Note(Text("material \"%s\" is used by no polygon", material.Name.c_str()));
    }
}

void CheckTextures(const LoadReport& report, const ModelSummary& model, Findings& findings) {
    for (const std::string& path : report.MissingTextures)
        findings.Problem(Text("texture \"%s\": no such image; its polygons show squares instead", path.c_str()));
    const auto isMissing = [&](const std::string& path) {
        return std::find(report.MissingTextures.begin(), report.MissingTextures.end(), path) !=
               report.MissingTextures.end();
    };
    for (const TextureSummary& texture : model.Textures) {
        for (const Finding& finding :
             isMissing(texture.Path) ? std::vector<Finding>() : FindImageProblems(texture.Path, texture.Image))
            findings.Problem(Text("texture \"%s\": %s", texture.Path.c_str(), finding.Text.c_str()));
        if (texture.Polygons == 0)
            findings.Note(Text("texture \"%s\" is used by no polygon", texture.Path.c_str()));
    }
}

void CheckObject(const ObjectSummary& object, Findings& findings) {
    const char* name = object.Name.c_str();
    if (object.Degenerate)
        findings.Problem(
            Text("object \"%s\": of %zu polygons, %zu without area, lost when the object is drawn or saved", name,
                 object.Polygons, object.Degenerate));
    if (object.LooseVertices)
        findings.Note(Text("object \"%s\": %zu of %zu vertices belong to no polygon", name, object.LooseVertices,
                           object.Vertices));
    if (object.Polygons == 0) {
        findings.Note(Text("object \"%s\" has no polygons", name));
        return;
    }
    for (const SubObjectSummary& subObject : object.SubObjects) {
        if (subObject.Polygons == 0)
            findings.Note(Text("object \"%s\": sub-object \"%s\" has no polygons", name, subObject.Name.c_str()));
        else if (subObject.Levels == 0)
            findings.Note(
                Text("object \"%s\": sub-object \"%s\" belongs to no level of detail", name, subObject.Name.c_str()));
    }
    for (const LodSummary& lod : object.Lods)
        if (lod.Members.empty())
            findings.Note(Text("object \"%s\": level of detail \"%s\" shows nothing", name, lod.Name.c_str()));
}

} // namespace

std::vector<Finding> FindProblems(const LoadReport& report, const ModelSummary& model) {
    Findings findings;
    const auto reached = static_cast<unsigned long long>(report.Reached);
    const auto size = static_cast<unsigned long long>(report.Size);
    if (!report.Error.empty()) {
        findings.Problem(reached ? Text("%s (at byte %llu of %llu)", report.Error.c_str(), reached, size)
                                 : report.Error);
        return findings.Take();
    }
    if (report.Version < CurrentFileVersion)
        findings.Note(Text("version %d.%02d is older than the current one, %d.%02d", report.Version / 100,
                           report.Version % 100, CurrentFileVersion / 100, CurrentFileVersion % 100));
    if (report.InformationLost)
        findings.Problem("holds data that only a newer version knows; it is lost when the file is saved");
    if (report.Reached < report.Size)
        findings.Problem(Text("%llu bytes follow the end of the model", size - reached));
    CheckMaterials(model, findings);
    CheckTextures(report, model, findings);
    for (const ObjectSummary& object : model.Objects)
        CheckObject(object, findings);
    for (const BranchSummary& branch : model.Branches)
        if (branch.Object.empty() && !branch.HasChildren)
            findings.Note(Text("scene: branch \"%s\" places no object and holds no branches", branch.Name.c_str()));
    return findings.Take();
}

std::vector<Finding> FindImageProblems(const std::string& path, const ImageSummary& image) {
    Findings findings;
    if (image.Channels > MostChannels)
        findings.Problem(Text("%d channels, of which a texture can have %d", image.Channels, MostChannels));
    int width, height, channels;
    if (std::uint8_t* pixels = ReadImage(path.c_str(), width, height, channels))
        Free(pixels);
    else
        findings.Problem("the image is damaged");
    return findings.Take();
}
