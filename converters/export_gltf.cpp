#include "exports.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstring>
#include <limits>
#include <map>

namespace converters {

namespace {

using nlohmann::json;

constexpr int ArrayBuffer = 34962, ElementBuffer = 34963, Float = 5126, UnsignedInt = 5125;
/// Half of the angle that the screen's height spans where coverages are computed.
constexpr double HalfAngleTangent = 0.414213562; // of 45 degrees

/// Corners that are told apart only by what stands behind their vertex, a chain a vertex.
struct KnownCorner {
    std::array<float, 5> Rest; // normal, place on the texture
    std::uint32_t Number, Next;
};

constexpr std::uint32_t NoCorner = std::numeric_limits<std::uint32_t>::max();

/// What is drawn with one material and texture.
struct Primitive {
    std::vector<float> Positions, Normals, TexCoords;
    std::vector<std::uint32_t> Indices;
    std::vector<std::uint32_t> FirstKnown; // by vertex
    std::vector<KnownCorner> Known;
    std::uint32_t LastFirst = NoCorner;
};

class GltfWriter {
  public:
    explicit GltfWriter(const Export& task) : Task(task) {
        Document["asset"] = {{"version", "2.0"}, {"generator", "Kirvo"}};
        Document["extensionsUsed"] = json::array({"FB_ngon_encoding"});
    }

    std::vector<OutputFile> Write() {
        WriteNodes();
        if (!Buffer.empty())
            Document["buffers"] = json::array({{{"byteLength", 0}}});
        std::vector<OutputFile> files(1);
        WriteImages(files);
        if (!Buffer.empty())
            Document["buffers"][0]["byteLength"] = Buffer.size();
        if (Task.Binary) {
            files[0].Bytes = Packed();
            return files;
        }
        if (!Buffer.empty()) {
            Document["buffers"][0]["uri"] = Escaped(Task.Stem + ".bin");
            files.push_back({Task.Stem + ".bin", Buffer});
        }
        files[0].Bytes = Dump(1);
        return files;
    }

  private:
    std::string Dump(int indent) const { return Document.dump(indent, ' ', false, json::error_handler_t::replace); }

    static std::string Escaped(const std::string& name) {
        static const char digits[] = "0123456789ABCDEF";
        std::string uri;
        for (const char character : name) {
            const auto byte = static_cast<unsigned char>(character);
            if (std::isalnum(byte) || std::strchr("-_.~", character))
                uri += character;
            else
                uri += {'%', digits[byte >> 4], digits[byte & 15]};
        }
        return uri;
    }

    // ---- the buffer
    int AddView(const void* bytes, std::size_t size, int target) {
        Buffer.append((4 - Buffer.size() % 4) % 4, '\0');
        json view = {{"buffer", 0}, {"byteOffset", Buffer.size()}, {"byteLength", size}};
        if (target)
            view["target"] = target;
        Buffer.append(static_cast<const char*>(bytes), size);
        return Append("bufferViews", view);
    }

    int Append(const char* list, const json& item) {
        Document[list].push_back(item);
        return static_cast<int>(Document[list].size()) - 1;
    }

    int AddFloats(const std::vector<float>& values, std::size_t parts, bool withBounds) {
        json accessor = {{"bufferView", AddView(values.data(), values.size() * sizeof(float), ArrayBuffer)},
                         {"componentType", Float},
                         {"count", values.size() / parts},
                         {"type", parts == 2 ? "VEC2" : "VEC3"}};
        if (withBounds) {
            std::vector<float> low(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(parts)), high = low;
            for (std::size_t i = 0; i < values.size(); ++i) {
                low[i % parts] = std::min(low[i % parts], values[i]);
                high[i % parts] = std::max(high[i % parts], values[i]);
            }
            accessor["min"] = low;
            accessor["max"] = high;
        }
        return Append("accessors", accessor);
    }

    // ---- materials
    int MaterialOf(int material, int texture) {
        const auto known = Materials.find({material, texture});
        if (known != Materials.end())
            return known->second;
        const Material& from = Task.From.Materials[static_cast<std::size_t>(material)];
        const float smooth = std::sqrt(std::clamp(from.Shininess, 0.0F, 128.0F) / 128);
        json colour = {{"baseColorFactor", {from.Diffuse[0], from.Diffuse[1], from.Diffuse[2], from.Alpha}},
                       {"metallicFactor", 0},
                       {"roughnessFactor", 1 - smooth}};
        if (texture >= 0 && !Task.Images[static_cast<std::size_t>(texture)].Name.empty())
            colour["baseColorTexture"] = {{"index", TextureOf(texture)}};
        json result = {{"name", from.Name}, {"pbrMetallicRoughness", colour}, {"emissiveFactor", from.Emission}};
        if (from.Alpha < 1)
            result["alphaMode"] = "BLEND";
        return Materials[{material, texture}] = Append("materials", result);
    }

    int TextureOf(int texture) {
        const auto known = Textures.find(texture);
        if (known != Textures.end())
            return known->second;
        const Texture& from = Task.From.Textures[static_cast<std::size_t>(texture)];
        const auto wrap = [](bool clamp) { return clamp ? 33071 : 10497; };
        const int sampler = Append("samplers", {{"wrapS", wrap(from.ClampS)}, {"wrapT", wrap(from.ClampT)}});
        const int image = Append("images", {{"name", Task.Images[static_cast<std::size_t>(texture)].Name}});
        ImageOf[texture] = image;
        return Textures[texture] = Append("textures", {{"source", image}, {"sampler", sampler}});
    }

    void WriteImages(std::vector<OutputFile>& files) {
        for (const auto& [texture, image] : ImageOf) {
            const ExportedImage& from = Task.Images[static_cast<std::size_t>(texture)];
            json& to = Document["images"][static_cast<std::size_t>(image)];
            if (Task.Binary) {
                to["bufferView"] = AddView(from.Bytes.data(), from.Bytes.size(), 0);
                to["mimeType"] = "image/png";
            } else {
                to["uri"] = Escaped(from.Name);
                files.push_back({from.Name, from.Bytes});
            }
        }
    }

    // ---- meshes
    std::uint32_t CornerNumber(Primitive& to, std::uint32_t vertex, const std::array<double, 3>& at,
                               const std::array<float, 3>& normal, const float (&place)[2], bool textured) {
        const std::array<float, 5> rest = {normal[0], normal[1], normal[2], textured ? place[0] : 0,
                                           textured ? place[1] : 0};
        if (vertex != NoCorner) {
            for (std::uint32_t known = to.FirstKnown[vertex]; known != NoCorner; known = to.Known[known].Next)
                if (to.Known[known].Rest == rest)
                    return to.Known[known].Number;
        }
        const auto number = static_cast<std::uint32_t>(to.Positions.size() / 3);
        if (vertex != NoCorner) {
            to.Known.push_back({rest, number, to.FirstKnown[vertex]});
            to.FirstKnown[vertex] = static_cast<std::uint32_t>(to.Known.size()) - 1;
        }
        // From z up to y up.
        for (const double part : {at[0], at[2], -at[1]})
            to.Positions.push_back(static_cast<float>(part));
        for (const float part : {normal[0], normal[2], -normal[1]})
            to.Normals.push_back(part);
        if (textured)
            to.TexCoords.insert(to.TexCoords.end(), {place[0], 1 - place[1]});
        return number;
    }

    void AddPolygon(const Object& object, const Polygon& polygon, Primitive& to) {
        const auto ring = PositionsOf(object, polygon);
        const auto flat = NormalOf(object, polygon);
        to.FirstKnown.resize(object.Vertices.size(), NoCorner);
        std::vector<std::uint32_t>& numbers = Numbers;
        numbers.clear();
        for (std::uint32_t i = 0; i < polygon.Corners; ++i) {
            const Corner& corner = object.Corners[polygon.FirstCorner + i];
            std::array<float, 3> normal = {corner.Normal[0], corner.Normal[1], corner.Normal[2]};
            if (polygon.Lighting != 2 || (normal[0] == 0 && normal[1] == 0 && normal[2] == 0))
                normal = {static_cast<float>(flat[0]), static_cast<float>(flat[1]), static_cast<float>(flat[2])};
            // Raised corners are no others'.
            const std::uint32_t vertex = polygon.Parent < 0 ? corner.Vertex : NoCorner;
            numbers.push_back(CornerNumber(to, vertex, ring[i], normal, corner.TexCoord, polygon.Texture >= 0));
        }
        bool isFan;
        Triangulate(ring, Triangles, isFan);
        // Neighbours with the same first corner would be taken for one polygon.
        const std::size_t turn = isFan && numbers[0] == to.LastFirst ? 1 : 0;
        for (std::size_t i = 0; i + 2 < Triangles.size(); i += 3) {
            std::uint32_t corners[3];
            for (std::size_t k = 0; k < 3; ++k)
                corners[k] = numbers[(Triangles[i + k] + turn) % numbers.size()];
            if (!isFan && corners[0] == to.LastFirst)
                std::rotate(corners, corners + 1, corners + 3);
            to.Indices.insert(to.Indices.end(), corners, corners + 3);
            to.LastFirst = corners[0];
        }
    }

    // A sub-object of an object, once however often it is placed; -1 when it shows nothing.
    int MeshOf(int objectIndex, int subObject) {
        const auto known = Meshes.find({objectIndex, subObject});
        if (known != Meshes.end())
            return known->second;
        const Object& object = Task.From.Objects[static_cast<std::size_t>(objectIndex)];
        std::map<std::pair<int, int>, Primitive> primitives;
        auto at = std::lower_bound(object.Polygons.begin(), object.Polygons.end(), subObject,
                                   [](const Polygon& polygon, int number) { return polygon.SubObject < number; });
        for (; at != object.Polygons.end() && at->SubObject == subObject; ++at)
            if (at->Corners >= 3)
                AddPolygon(
                    object, *at,
                    primitives[{at->Texture >= 0 && at->TextureMaterial >= 0 ? at->TextureMaterial : at->Material,
                                at->Texture}]);
        json list = json::array();
        for (const auto& [look, primitive] : primitives) {
            json attributes = {{"POSITION", AddFloats(primitive.Positions, 3, true)},
                               {"NORMAL", AddFloats(primitive.Normals, 3, false)}};
            if (look.second >= 0)
                attributes["TEXCOORD_0"] = AddFloats(primitive.TexCoords, 2, false);
            const int indices = Append(
                "accessors", {{"bufferView", AddView(primitive.Indices.data(),
                                                     primitive.Indices.size() * sizeof(std::uint32_t), ElementBuffer)},
                              {"componentType", UnsignedInt},
                              {"count", primitive.Indices.size()},
                              {"type", "SCALAR"}});
            list.push_back({{"attributes", attributes},
                            {"indices", indices},
                            {"material", MaterialOf(look.first, look.second)},
                            {"extensions", {{"FB_ngon_encoding", json::object()}}}});
        }
        int mesh = -1;
        if (!list.empty())
            mesh = Append("meshes",
                          {{"name", object.SubObjects[static_cast<std::size_t>(subObject)]}, {"primitives", list}});
        return Meshes[{objectIndex, subObject}] = mesh;
    }

    // ---- nodes
    static double RadiusOf(const Object& object) {
        double radius = 0;
        for (const auto& vertex : object.Vertices)
            radius = std::max(radius, std::hypot(static_cast<double>(vertex[0]), vertex[1], vertex[2]));
        return radius;
    }

    // What a level shows: a node for each sub-object, so that their names stay.
    json PartsOf(int objectIndex, std::size_t level) {
        const Object& object = Task.From.Objects[static_cast<std::size_t>(objectIndex)];
        json parts = json::array();
        for (const int member : MembersAt(object, level)) {
            const std::string& name = object.SubObjects[static_cast<std::size_t>(member)];
            json node = {{"name", name}, {"extras", {{"kirvo", {{"subObject", name}}}}}};
            const int mesh = MeshOf(objectIndex, member);
            if (mesh < 0)
                continue;
            node["mesh"] = mesh;
            parts.push_back(Append("nodes", node));
        }
        return parts;
    }

    void ShowObject(json& node, int objectIndex, bool visible, bool inScene) {
        const Object& object = Task.From.Objects[static_cast<std::size_t>(objectIndex)];
        json extras = {
            {"object", object.Name}, {"billboard", object.Billboard}, {"visible", visible}, {"scene", inScene}};
        json parts = PartsOf(objectIndex, Task.AllLevels ? 0 : Task.Level);
        for (const json& part : parts)
            node["children"].push_back(part);
        std::vector<double> distances;
        for (const Level& level : object.Levels)
            distances.push_back(level.Distance);
        if (!distances.empty())
            extras["distances"] =
                Task.AllLevels ? distances : std::vector<double>{distances[std::min(Task.Level, distances.size() - 1)]};
        if (Task.AllLevels && object.Levels.size() > 1) {
            json ids = json::array(), coverages = json::array();
            const double radius = RadiusOf(object);
            for (std::size_t level = 0; level < object.Levels.size(); ++level) {
                coverages.push_back(std::min(1.0, radius / (std::max(distances[level], 1e-6) * HalfAngleTangent)));
                if (level == 0)
                    continue;
                json lower = {{"name", object.Name + "_" + object.Levels[level].Name}};
                const json lowerParts = PartsOf(objectIndex, level);
                if (!lowerParts.empty())
                    lower["children"] = lowerParts;
                ids.push_back(Append("nodes", lower));
            }
            node["extensions"]["MSFT_lod"]["ids"] = ids;
            node["extras"]["MSFT_screencoverage"] = coverages;
            if (Document["extensionsUsed"].size() == 1)
                Document["extensionsUsed"].push_back("MSFT_lod");
        }
        node["extras"]["kirvo"] = extras;
    }

    static json MatrixOf(const Place& place) {
        constexpr Place lie = {1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1};
        constexpr Place stand = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};
        // Rows of rows, as the format wants columns of columns.
        return Product(Product(stand, place), lie);
    }

    void WriteNodes() {
        const Model& model = Task.From;
        json roots = json::array();
        const bool hasScene = std::any_of(model.Branches.begin(), model.Branches.end(),
                                          [](const Branch& branch) { return branch.Object >= 0; });
        if (!hasScene) {
            for (std::size_t i = 0; i < model.Objects.size(); ++i) {
                json node = {{"name", model.Objects[i].Name}};
                ShowObject(node, static_cast<int>(i), true, false);
                roots.push_back(Append("nodes", node));
            }
        } else {
            WriteScene(roots);
        }
        Document["scenes"] = json::array({{{"nodes", roots}}});
        Document["scene"] = 0;
    }

    void WriteScene(json& roots) {
        const std::vector<Branch>& branches = Task.From.Branches;
        std::vector<int> nodes(branches.size());
        // What a branch hands on to those below it: nodes move what hangs on them, branches do not.
        std::vector<Place> handedOn(branches.size(), Identity);
        for (std::size_t i = 0; i < branches.size(); ++i) {
            const Branch& branch = branches[i];
            json node = {{"name", branch.Name}};
            const Place above = branch.Parent < 0 ? Identity : handedOn[static_cast<std::size_t>(branch.Parent)];
            Place back = Identity, place = branch.Object >= 0 ? branch.Transform : above;
            if (!Inverse(above, back))
                back = Identity;
            if (place != above)
                node["matrix"] = MatrixOf(Product(place, back));
            handedOn[i] = place;
            if (branch.Object >= 0)
                ShowObject(node, branch.Object, branch.Visible, true);
            nodes[i] = Append("nodes", node);
            if (branch.Parent < 0)
                roots.push_back(nodes[i]);
            else
                Document["nodes"][static_cast<std::size_t>(nodes[static_cast<std::size_t>(branch.Parent)])]["children"]
                    .push_back(nodes[i]);
        }
    }

    // ---- the binary form
    static void PutNumber(std::string& bytes, std::size_t number) {
        const auto value = static_cast<std::uint32_t>(number);
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }

    std::string Packed() {
        std::string text = Dump(-1);
        text.append((4 - text.size() % 4) % 4, ' ');
        Buffer.append((4 - Buffer.size() % 4) % 4, '\0');
        std::string bytes = "glTF";
        PutNumber(bytes, 2);
        PutNumber(bytes, 20 + text.size() + (Buffer.empty() ? 0 : 8 + Buffer.size()));
        PutNumber(bytes, text.size());
        bytes += "JSON" + text;
        if (!Buffer.empty()) {
            PutNumber(bytes, Buffer.size());
            bytes.append("BIN\0", 4);
            bytes += Buffer;
        }
        return bytes;
    }

    const Export& Task;
    json Document;
    std::string Buffer;
    std::map<std::pair<int, int>, int> Materials, Meshes;
    std::map<int, int> Textures, ImageOf;
    std::vector<std::uint32_t> Triangles, Numbers;
};

} // namespace

std::vector<OutputFile> ExportGltf(const Export& task) {
    return GltfWriter(task).Write();
}

} // namespace converters
