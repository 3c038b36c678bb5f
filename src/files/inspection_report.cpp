#include "files/inspection_report.h"

#include "textures/filters.h"
#include "textures/image_file.h"

#include <algorithm>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

// Text

class TextReport {
  public:
    __attribute__((format(printf, 3, 4))) void Line(int indentation, const char* format, ...) {
        // A scene may be deeper than any line is wide.
        constexpr int DeepestIndentation = 30;
        Text.append(2 * std::min(indentation, DeepestIndentation), ' ');
        va_list arguments, again;
        va_start(arguments, format);
        va_copy(again, arguments);
        std::string line(std::vsnprintf(nullptr, 0, format, arguments), '\0');
        std::vsnprintf(line.data(), line.size() + 1, format, again);
        va_end(again);
        va_end(arguments);
        Text += Printable(std::move(line)) + "\n";
    }

    std::string Take() { return std::move(Text); }

  private:
    std::string Text;
};

std::string VersionText(int version) {
    const std::string hundredths = std::to_string(version % 100);
    return std::to_string(version / 100) + (version % 100 < 10 ? ".0" : ".") + hundredths;
}

std::string Join(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

std::string Count(std::size_t count, const char* thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string StorageText(const ImageSummary& image) {
    if (image.Format)
        return image.Format;
    std::string text = image.Storage == ImageVerbatim    ? "verbatim"
                       : image.Storage == ImageRunLength ? "run-length encoded"
                                                         : "unknown storage " + std::to_string(image.Storage);
    if (image.BytesPerValue != 1)
        text += ", " + std::to_string(image.BytesPerValue) + " bytes a value";
    if (image.LittleEndian)
        text += ", low byte first";
    return text;
}

std::string ImageText(const ImageSummary& image) {
    return std::to_string(image.Width) + " x " + std::to_string(image.Height) + ", " +
           Count(image.Channels, "channel") + ", " + StorageText(image);
}

void AddMaterials(TextReport& report, const ModelSummary& model) {
    report.Line(0, "Materials: %zu", model.Materials.size());
    for (const MaterialSummary& material : model.Materials)
        report.Line(1, "%s: diffuse %.7g %.7g %.7g, alpha %.7g, shininess %.7g; %s", material.Name.c_str(),
                    material.Diffuse[0], material.Diffuse[1], material.Diffuse[2], material.Alpha, material.Shininess,
                    Count(material.Polygons, "polygon").c_str());
}

void AddTextures(TextReport& report, const LoadReport& load, const ModelSummary& model) {
    report.Line(0, "Textures: %zu", model.Textures.size());
    for (const TextureSummary& texture : model.Textures) {
        std::vector<std::string> settings;
        if (texture.MinFilter != FilterDefault)
            settings.push_back(std::string("minified ") + FilterName(texture.MinFilter));
        if (texture.MagFilter != FilterDefault)
            settings.push_back(std::string("magnified ") + FilterName(texture.MagFilter));
        if (texture.ClampS)
            settings.emplace_back("clamped in s");
        if (texture.ClampT)
            settings.emplace_back("clamped in t");
        if (texture.Fast)
            settings.emplace_back("fast");
        report.Line(1, "%s: %s%s%s; %s", texture.Path.c_str(), ImageText(texture.Image).c_str(),
                    settings.empty() ? "" : "; ", Join(settings).c_str(), Count(texture.Polygons, "polygon").c_str());
    }
    for (const std::string& path : load.MissingTextures)
        report.Line(1, "%s: not found", path.c_str());
}

void AddObject(TextReport& report, const ObjectSummary& object) {
    std::vector<std::string> kind;
    if (object.Current)
        kind.emplace_back("current");
    if (object.Billboard)
        kind.emplace_back("billboard");
    report.Line(1, "%s%s%s%s", object.Name.c_str(), kind.empty() ? "" : " (", Join(kind).c_str(),
                kind.empty() ? "" : ")");
    report.Line(2, "%s, %s%s", Count(object.Vertices, object.Vertices == 1 ? "vertex" : "vertice").c_str(),
                Count(object.Polygons, "polygon").c_str(),
                object.SubPolygons ? (" (" + Count(object.SubPolygons, "sub-polygon") + " among them)").c_str() : "");
    if (object.Vertices)
        report.Line(2, "from (%.7g, %.7g, %.7g) to (%.7g, %.7g, %.7g) m", object.Min[0], object.Min[1], object.Min[2],
                    object.Max[0], object.Max[1], object.Max[2]);
    for (const SubObjectSummary& subObject : object.SubObjects)
        report.Line(2, "sub-object %s: %s", subObject.Name.c_str(), Count(subObject.Polygons, "polygon").c_str());
    for (const LodSummary& lod : object.Lods)
        report.Line(2, "level of detail %s, up to %.7g m: %s", lod.Name.c_str(), lod.Distance,
                    lod.Members.empty() ? "nothing" : Join(lod.Members).c_str());
}

void AddScene(TextReport& report, const ModelSummary& model) {
    report.Line(
        0, "Scene: %s%s", model.Branches.empty() ? "none" : "", // the count only where there is one
        model.Branches.empty()
            ? ""
            : (std::to_string(model.Branches.size()) + (model.Branches.size() == 1 ? " branch" : " branches")).c_str());
    for (const BranchSummary& branch : model.Branches) {
        const char* hidden = branch.Visible ? "" : ", hidden";
        if (branch.Object.empty())
            report.Line(1 + branch.Depth, "%s (group)%s", branch.Name.c_str(), hidden);
        else
            report.Line(1 + branch.Depth, "%s: object %s at (%.7g, %.7g, %.7g) m%s", branch.Name.c_str(),
                        branch.Object.c_str(), branch.Position[0], branch.Position[1], branch.Position[2], hidden);
    }
}

// JSON

std::string Dump(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

// A single-precision number with as many digits as it has, not those of the double next to it.
double Tidy(float value) {
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, value);
    double tidy = value;
    std::from_chars(text, written.ptr, tidy);
    return tidy;
}

Json ColourJson(const float (&colour)[3]) {
    return {Tidy(colour[0]), Tidy(colour[1]), Tidy(colour[2])};
}

Json PointJson(const double (&point)[3]) {
    return {point[0], point[1], point[2]};
}

Json ToJson(const ImageSummary& image) {
    if (image.Format)
        return {
            {"width", image.Width}, {"height", image.Height}, {"channels", image.Channels}, {"format", image.Format}};
    Json storage = image.Storage == ImageVerbatim    ? Json("verbatim")
                   : image.Storage == ImageRunLength ? Json("run-length")
                                                     : Json(image.Storage);
    return {{"width", image.Width},          {"height", image.Height},
            {"channels", image.Channels},    {"bytesPerValue", image.BytesPerValue},
            {"storage", std::move(storage)}, {"byteOrder", image.LittleEndian ? "little" : "big"}};
}

Json ToJson(const MaterialSummary& material) {
    return {{"name", material.Name},
            {"ambient", ColourJson(material.Ambient)},
            {"diffuse", ColourJson(material.Diffuse)},
            {"specular", ColourJson(material.Specular)},
            {"emission", ColourJson(material.Emission)},
            {"shininess", Tidy(material.Shininess)},
            {"alpha", Tidy(material.Alpha)},
            {"polygons", material.Polygons}};
}

Json ToJson(const TextureSummary& texture) {
    return {{"path", texture.Path},
            {"image", ToJson(texture.Image)},
            {"minFilter", FilterName(texture.MinFilter)},
            {"magFilter", FilterName(texture.MagFilter)},
            {"clampS", texture.ClampS},
            {"clampT", texture.ClampT},
            {"fast", texture.Fast},
            {"polygons", texture.Polygons}};
}

Json ToJson(const SubObjectSummary& subObject) {
    return {{"name", subObject.Name}, {"polygons", subObject.Polygons}};
}

Json ToJson(const LodSummary& lod) {
    return {{"name", lod.Name}, {"distance", Tidy(static_cast<float>(lod.Distance))}, {"members", lod.Members}};
}

// A flat list, each branch with its depth: nested lists could be deeper than a program that reads them can bear.
Json ToJson(const BranchSummary& branch) {
    Json json = {{"name", branch.Name}, {"depth", branch.Depth}, {"visible", branch.Visible}};
    if (!branch.Object.empty()) {
        json["object"] = branch.Object;
        json["position"] = PointJson(branch.Position);
    }
    return json;
}

Json ToJson(const InformationLine& line) {
    return {{"label", line.Label}, {"text", line.Text}};
}

Json ToJson(const ObjectSummary& object);

template <class Summary>
Json ListJson(const std::vector<Summary>& summaries) {
    Json list = Json::array();
    for (const Summary& summary : summaries)
        list.push_back(ToJson(summary));
    return list;
}

Json ToJson(const ObjectSummary& object) {
    return {{"name", object.Name},
            {"current", object.Current},
            {"billboard", object.Billboard},
            {"vertices", object.Vertices},
            {"looseVertices", object.LooseVertices},
            {"polygons", object.Polygons},
            {"subPolygons", object.SubPolygons},
            {"degeneratePolygons", object.Degenerate},
            {"min", PointJson(object.Min)},
            {"max", PointJson(object.Max)},
            {"subObjects", ListJson(object.SubObjects)},
            {"levelsOfDetail", ListJson(object.Lods)}};
}

} // namespace

std::string Printable(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f')
            c = '?';
    return text;
}

std::string ModelAsText(const LoadReport& load, const ModelSummary& model) {
    TextReport report;
    report.Line(0, "%s: model, version %s, %llu bytes", load.Path.c_str(), VersionText(load.Version).c_str(),
                static_cast<unsigned long long>(load.Size));
    for (const InformationLine& line : model.Information)
        report.Line(0, "%s: %s", line.Label, line.Text.c_str());
    if (model.PublicDomain)
        report.Line(0, "The file is public domain.");
    AddMaterials(report, model);
    AddTextures(report, load, model);
    report.Line(0, "Objects: %zu", model.Objects.size());
    for (const ObjectSummary& object : model.Objects)
        AddObject(report, object);
    AddScene(report, model);
    if (load.InformationLost)
        report.Line(0, "The file also holds data that only a newer version knows.");
    return report.Take();
}

std::string ModelAsJson(const LoadReport& load, const ModelSummary& model) {
    return Dump({{"file", load.Path},
                 {"kind", "model"},
                 {"version", VersionText(load.Version)},
                 {"bytes", load.Size},
                 {"information", ListJson(model.Information)},
                 {"publicDomain", model.PublicDomain},
                 {"newerData", load.InformationLost},
                 {"materials", ListJson(model.Materials)},
                 {"textures", ListJson(model.Textures)},
                 {"missingTextures", load.MissingTextures},
                 {"objects", ListJson(model.Objects)},
                 {"sceneMode", model.SceneMode},
                 {"scene", ListJson(model.Branches)}});
}

std::string ImageAsText(const std::string& path, const ImageSummary& image) {
    TextReport report;
    report.Line(0, "%s: image, %s", path.c_str(), ImageText(image).c_str());
    return report.Take();
}

std::string ImageAsJson(const std::string& path, const ImageSummary& image) {
    Json json = {{"file", path}, {"kind", "image"}};
    json.update(ToJson(image));
    return Dump(json);
}

std::string FindingsAsText(const std::string& path, const std::vector<Finding>& findings) {
    TextReport report;
    std::size_t problems = 0;
    for (const Finding& finding : findings) {
        report.Line(0, "%s: %s: %s", path.c_str(), finding.Problem ? "problem" : "note", finding.Text.c_str());
        problems += finding.Problem;
    }
    report.Line(0, "%s: %s", path.c_str(), problems ? Count(problems, "problem").c_str() : "all is well");
    return report.Take();
}

std::string FindingsAsJson(const std::string& path, const std::vector<Finding>& findings) {
    Json problems = Json::array(), notes = Json::array();
    for (const Finding& finding : findings)
        (finding.Problem ? problems : notes).push_back(finding.Text);
    const bool ok = problems.empty();
    return Dump({{"file", path}, {"ok", ok}, {"problems", std::move(problems)}, {"notes", std::move(notes)}});
}
