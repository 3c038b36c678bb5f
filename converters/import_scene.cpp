#include "import_scene.h"

#include "gltf_reading.h"
#include "obj_groups.h"
#include "textures.h"

#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <unordered_map>

namespace converters {

namespace {

namespace fs = std::filesystem;

/// Tells how far the reading is in the file that the program looks at.
class Progress : public Assimp::ProgressHandler {
  public:
    bool Update(float part) override {
        const char* prefix = std::getenv("KIRVO_TEMPORARY");
        const int percent = std::clamp(static_cast<int>(part * 100), 0, 100);
        if (!prefix || part < 0 || percent == Last)
            return true;
        Last = percent;
        if (std::FILE* file = std::fopen((std::string(prefix) + "_progress").c_str(), "w")) {
            std::fprintf(file, "%d\n", percent);
            std::fclose(file);
        }
        return true;
    }

  private:
    int Last = -1;
};

struct PositionHash {
    std::size_t operator()(const std::array<float, 3>& position) const {
        std::uint64_t hash = 0;
        for (const float part : position) {
            std::uint32_t bits;
            const float clean = part + 0.0F; // 0 and -0 are one place
            std::memcpy(&bits, &clean, sizeof bits);
            hash = (hash ^ bits) * 0x9E3779B97F4A7C15ULL;
            hash ^= hash >> 29;
        }
        return static_cast<std::size_t>(hash);
    }
};

/// Gives positions numbers, the same ones the same; quicker than the standard containers for millions.
class PositionTable {
  public:
    explicit PositionTable(std::vector<std::array<float, 3>>& positions) : Positions(positions) {}

    /// So many positions are about to come, if no two are the same.
    void Expect(std::size_t count) {
        std::size_t size = 1024;
        while (size < (Positions.size() + count) * 2)
            size *= 2;
        Positions.reserve(Positions.size() + count);
        if (size > Slots.size())
            Grow(size);
    }

    std::uint32_t NumberOf(const std::array<float, 3>& position) {
        if ((Positions.size() + 1) * 2 > Slots.size())
            Grow(std::max<std::size_t>(1024, Slots.size() * 2));
        std::uint32_t& slot = SlotOf(position);
        if (slot == Empty) {
            slot = static_cast<std::uint32_t>(Positions.size());
            Positions.push_back(position);
        }
        return slot;
    }

  private:
    static constexpr std::uint32_t Empty = 0xFFFFFFFF;

    std::uint32_t& SlotOf(const std::array<float, 3>& position) {
        std::size_t place = PositionHash()(position) & (Slots.size() - 1);
        while (Slots[place] != Empty && Positions[Slots[place]] != position)
            place = (place + 1) & (Slots.size() - 1);
        return Slots[place];
    }

    void Grow(std::size_t size) {
        Slots.assign(size, Empty);
        for (std::uint32_t i = 0; i < Positions.size(); ++i)
            SlotOf(Positions[i]) = i;
    }

    std::vector<std::array<float, 3>>& Positions;
    std::vector<std::uint32_t> Slots;
};

std::string Clean(const char* text) {
    std::string name = text;
    for (char& character : name)
        if (static_cast<unsigned char>(character) < ' ')
            character = ' ';
    return name.substr(0, 120);
}

Place PlaceOf(const aiMatrix4x4& m) {
    return {m.a1, m.b1, m.c1, m.d1, m.a2, m.b2, m.c2, m.d2, m.a3, m.b3, m.c3, m.d3, m.a4, m.b4, m.c4, m.d4};
}

/// From y up to z up.
constexpr Place StandUp = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};
constexpr Place LieDown = {1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1};

bool IsIdentity(const Place& place) {
    for (std::size_t i = 0; i < 16; ++i)
        if (std::abs(place[i] - Identity[i]) > 1e-6)
            return false;
    return true;
}

/// Formats whose readers leave z up.
bool HasZUp(const std::string& extension) {
    static const char* const known[] = {".ply", ".stl", ".off"};
    return std::find(std::begin(known), std::end(known), extension) != std::end(known);
}

class Builder {
  public:
    Builder(const aiScene& scene, std::string file, std::string directory, Model& model)
        : Scene(scene),
          File(std::move(file)),
          Directory(std::move(directory)),
          To(model) {}

    std::string Build(ObjGroups& groups, const GltfNotes& notes) {
        Groups = &groups;
        Notes = &notes;
        std::string extension = fs::path(File).extension();
        for (char& c : extension)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        GroupsAreObjects = extension == ".ac";
        NumbersParts = extension == ".gltf" || extension == ".glb";
        Stand = HasZUp(extension) ? Identity : StandUp;
        Place root = PlaceOf(Scene.mRootNode->mTransformation);
        // What was made with z up and laid down by the reader is left as it was made.
        const Place upright = Product(root, StandUp);
        if (!HasZUp(extension) && !IsIdentity(root) && std::abs(root[5]) < 1e-6 && std::abs(root[10]) < 1e-6 &&
            root[6] < 0 && root[9] > 0) {
            Stand = Identity;
            root = upright;
        }
        Unstand = Stand == StandUp ? LieDown : Identity;
        AddMaterials();
        if (extension == ".obj" || extension == ".ply" || extension == ".stl" || extension == ".off")
            AddGrouped();
        else
            AddNode(*Scene.mRootNode, -1, Stand == Identity ? root : Product(Product(Unstand, root), Stand), true);
        PlaceAll();
        for (std::size_t i = 0; i < To.Objects.size(); ++i)
            To.Objects[i].Id = static_cast<std::int32_t>(i);
        bool any = false;
        for (const Object& object : To.Objects)
            any = any || !object.Vertices.empty();
        return any ? "" : "it holds no polygons, lines or points";
    }

  private:
    void AddMaterials() {
        for (unsigned i = 0; i < Scene.mNumMaterials; ++i) {
            const aiMaterial& from = *Scene.mMaterials[i];
            Material material;
            aiString name;
            material.Name = from.Get(AI_MATKEY_NAME, name) == aiReturn_SUCCESS && name.length
                                ? Clean(name.C_Str())
                                : "Material" + std::to_string(i + 1);
            SetColours(from, material);
            MaterialOf.push_back(NumberOf(material));
            TextureOf.push_back(AddTexture(from));
        }
        if (To.Materials.empty()) {
            To.Materials.push_back({.Name = "Grey", .Diffuse = {0.6F, 0.6F, 0.6F}});
            MaterialOf.push_back(0);
            TextureOf.push_back(-1);
        }
    }

    // Some readers make a material of each mesh; those that are the same become one.
    std::int32_t NumberOf(const Material& material) {
        std::string key = material.Name + '\n';
        for (const float* colour : {material.Ambient, material.Diffuse, material.Specular, material.Emission})
            key.append(reinterpret_cast<const char*>(colour), 3 * sizeof(float));
        key.append(reinterpret_cast<const char*>(&material.Shininess), sizeof(float));
        key.append(reinterpret_cast<const char*>(&material.Alpha), sizeof(float));
        const auto [found, isNew] = KnownMaterials.try_emplace(key, static_cast<std::int32_t>(To.Materials.size()));
        if (isNew)
            To.Materials.push_back(material);
        return found->second;
    }

    static bool GetColour(const aiMaterial& from, const char* key, unsigned type, unsigned index, float (&to)[3]) {
        aiColor4D colour;
        if (from.Get(key, type, index, colour) != aiReturn_SUCCESS)
            return false;
        const float parts[] = {colour.r, colour.g, colour.b};
        for (int i = 0; i < 3; ++i)
            to[i] = std::isfinite(parts[i]) ? std::clamp(parts[i], 0.0F, 1.0F) : 0;
        return true;
    }

    static void SetColours(const aiMaterial& from, Material& material) {
        for (float& part : material.Diffuse)
            part = 0.6F;
        if (!GetColour(from, AI_MATKEY_BASE_COLOR, material.Diffuse))
            GetColour(from, AI_MATKEY_COLOR_DIFFUSE, material.Diffuse);
        float ambient[3] = {0, 0, 0};
        if (!GetColour(from, AI_MATKEY_COLOR_AMBIENT, ambient) || (ambient[0] + ambient[1] + ambient[2] == 0))
            std::copy(material.Diffuse, material.Diffuse + 3, ambient);
        std::copy(ambient, ambient + 3, material.Ambient);
        float roughness = -1;
        if (from.Get(AI_MATKEY_ROUGHNESS_FACTOR, roughness) == aiReturn_SUCCESS && roughness >= 0) {
            const float smooth = 1 - std::clamp(roughness, 0.0F, 1.0F);
            material.Shininess = smooth * smooth * 128;
            std::fill(material.Specular, material.Specular + 3, smooth * 0.5F);
        } else {
            std::fill(material.Specular, material.Specular + 3, 0.0F);
            float shininess = 0;
            if (from.Get(AI_MATKEY_SHININESS, shininess) == aiReturn_SUCCESS && std::isfinite(shininess))
                material.Shininess = std::clamp(shininess, 0.0F, 128.0F);
            GetColour(from, AI_MATKEY_COLOR_SPECULAR, material.Specular);
        }
        GetColour(from, AI_MATKEY_COLOR_EMISSIVE, material.Emission);
        float opacity = 1;
        if (from.Get(AI_MATKEY_OPACITY, opacity) == aiReturn_SUCCESS && opacity >= 0 && opacity <= 1)
            material.Alpha = opacity;
    }

    int AddTexture(const aiMaterial& from) {
        aiString path;
        if (from.GetTexture(aiTextureType_BASE_COLOR, 0, &path) != aiReturn_SUCCESS &&
            from.GetTexture(aiTextureType_DIFFUSE, 0, &path) != aiReturn_SUCCESS)
            return -1;
        std::string found;
        if (const aiTexture* embedded = Scene.GetEmbeddedTexture(path.C_Str())) {
            const std::string name = fs::path(File).stem().string() + "_" + std::to_string(To.Textures.size() + 1);
            const auto [kept, isNew] = Kept.try_emplace(embedded);
            if (isNew)
                kept->second = KeepEmbeddedImage(*embedded, Directory, name);
            found = kept->second;
        } else {
            found = FindImage(path.C_Str(), fs::path(File).parent_path(), Directory);
        }
        if (found.empty())
            return -1;
        for (std::size_t i = 0; i < To.Textures.size(); ++i)
            if (To.Textures[i].Path == found)
                return static_cast<int>(i);
        int clamp = aiTextureMapMode_Wrap;
        Texture texture{found, false, false};
        if (from.Get(AI_MATKEY_MAPPINGMODE_U_DIFFUSE(0), clamp) == aiReturn_SUCCESS)
            texture.ClampS = clamp == aiTextureMapMode_Clamp;
        if (from.Get(AI_MATKEY_MAPPINGMODE_V_DIFFUSE(0), clamp) == aiReturn_SUCCESS)
            texture.ClampT = clamp == aiTextureMapMode_Clamp;
        To.Textures.push_back(texture);
        return static_cast<int>(To.Textures.size()) - 1;
    }

    std::array<float, 3> Position(const aiVector3D& from) const {
        const aiVector3D v = Stand == StandUp ? aiVector3D(from.x, -from.z, from.y) : from;
        std::array<float, 3> position = {v.x, v.y, v.z};
        for (float& part : position)
            part = std::isfinite(part) ? part : 0;
        return position;
    }

    // The polygons of one mesh as a sub-object of an object. What has less than three corners leaves its vertices.
    void AddMesh(Object& object, PositionTable& places, unsigned index, int subObject) {
        const aiMesh& mesh = *Scene.mMeshes[index];
        std::vector<std::uint32_t> numbers(mesh.mNumVertices);
        // Where polygons share no vertices there are a quarter as many places, or fewer.
        places.Expect(mesh.mNumVertices >= mesh.mNumFaces * 3U ? mesh.mNumVertices / 4 : mesh.mNumVertices);
        for (unsigned i = 0; i < mesh.mNumVertices; ++i)
            numbers[i] = places.NumberOf(Position(mesh.mVertices[i]));
        const std::size_t look = std::min<std::size_t>(mesh.mMaterialIndex, MaterialOf.size() - 1);
        const std::int32_t material = MaterialOf[look];
        const int texture = TextureOf[look];
        object.Polygons.reserve(object.Polygons.size() + mesh.mNumFaces);
        object.Corners.reserve(object.Corners.size() + mesh.mNumFaces * std::size_t{4});
        const bool joins = Notes->JoinsFans;
        for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
            Ring.assign(mesh.mFaces[i].mIndices, mesh.mFaces[i].mIndices + mesh.mFaces[i].mNumIndices);
            // Triangles of a fan that stood for one polygon.
            while (joins && i + 1 < mesh.mNumFaces && Ring.size() >= 3 && mesh.mFaces[i + 1].mNumIndices == 3 &&
                   mesh.mFaces[i + 1].mIndices[0] == Ring[0] && mesh.mFaces[i + 1].mIndices[1] == Ring.back())
                Ring.push_back(mesh.mFaces[++i].mIndices[2]);
            AddPolygon(object, mesh, numbers, material, texture, subObject);
        }
    }

    void AddPolygon(Object& object, const aiMesh& mesh, const std::vector<std::uint32_t>& numbers,
                    std::int32_t material, int texture, int subObject) {
        Polygon polygon;
        polygon.FirstCorner = static_cast<std::uint32_t>(object.Corners.size());
        polygon.Material = polygon.TextureMaterial = material;
        polygon.SubObject = subObject;
        polygon.Texture = mesh.mTextureCoords[0] ? texture : -1;
        for (const unsigned index : Ring) {
            if (index >= mesh.mNumVertices)
                continue;
            Corner corner;
            corner.Vertex = numbers[index];
            if (object.Corners.size() > polygon.FirstCorner && object.Corners.back().Vertex == corner.Vertex)
                continue;
            if (mesh.mNormals) {
                const auto normal = Position(mesh.mNormals[index]);
                std::copy(normal.begin(), normal.end(), corner.Normal);
            }
            if (polygon.Texture >= 0) {
                const aiVector3D& at = mesh.mTextureCoords[0][index];
                corner.TexCoord[0] = std::isfinite(at.x) ? at.x : 0;
                corner.TexCoord[1] = std::isfinite(at.y) ? at.y : 0;
            }
            object.Corners.push_back(corner);
        }
        while (object.Corners.size() > polygon.FirstCorner + 1 &&
               object.Corners.back().Vertex == object.Corners[polygon.FirstCorner].Vertex)
            object.Corners.pop_back();
        polygon.Corners = static_cast<std::uint32_t>(object.Corners.size()) - polygon.FirstCorner;
        const bool hasArea = polygon.Corners >= 3 && SetLighting(object, polygon, mesh.mNormals != nullptr);
        if (hasArea)
            object.Polygons.push_back(polygon);
        else
            object.Corners.resize(polygon.FirstCorner);
    }

    // Faceted where the corners' normals are the polygon's. False when it has no area.
    static bool SetLighting(const Object& object, Polygon& polygon, bool hasNormals) {
        double normal[3] = {0, 0, 0};
        const Corner* corners = &object.Corners[polygon.FirstCorner];
        for (std::uint32_t i = 0; i < polygon.Corners; ++i) {
            const auto& a = object.Vertices[corners[i].Vertex];
            const auto& b = object.Vertices[corners[i + 1 < polygon.Corners ? i + 1 : 0].Vertex];
            normal[0] += (static_cast<double>(a[1]) - b[1]) * (static_cast<double>(a[2]) + b[2]);
            normal[1] += (static_cast<double>(a[2]) - b[2]) * (static_cast<double>(a[0]) + b[0]);
            normal[2] += (static_cast<double>(a[0]) - b[0]) * (static_cast<double>(a[1]) + b[1]);
        }
        const double length = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
        if (!(length > 1e-30))
            return false;
        polygon.Lighting = 1;
        for (std::uint32_t i = 0; hasNormals && i < polygon.Corners; ++i) {
            const float* n = corners[i].Normal;
            const double size = std::sqrt(static_cast<double>(n[0]) * n[0] + n[1] * n[1] + n[2] * n[2]);
            if (size > 0 && (n[0] * normal[0] + n[1] * normal[1] + n[2] * normal[2]) / (length * size) < 0.9999)
                polygon.Lighting = 2;
        }
        return true;
    }

    int SubObjectOf(Object& object, const std::string& name) {
        for (std::size_t i = 0; i < object.SubObjects.size(); ++i)
            if (object.SubObjects[i] == name)
                return static_cast<int>(i);
        object.SubObjects.push_back(name);
        return static_cast<int>(object.SubObjects.size()) - 1;
    }

    static void CloseObject(Object& object) {
        if (!object.Levels.empty() || object.SubObjects.empty())
            return;
        Level level{"Lod1", 1000000, {}};
        for (std::size_t i = 0; i < object.SubObjects.size(); ++i)
            level.Members.push_back(static_cast<int>(i));
        object.Levels.push_back(level);
    }

    // Files without a tree: objects and their groups as the file names them.
    void AddGrouped() {
        std::map<std::string, std::size_t> objects;
        std::vector<std::unique_ptr<PositionTable>> tables;
        std::vector<std::size_t> order;
        const std::string stem = fs::path(File).stem();
        const auto add = [&](const aiNode& node, const auto& self) -> void {
            const auto [objectName, groupName] = Groups->NamesOf(node.mName.C_Str(), stem);
            for (unsigned i = 0; i < node.mNumMeshes; ++i) {
                auto found = objects.find(objectName);
                if (found == objects.end()) {
                    found = objects.emplace(objectName, Pending.size()).first;
                    Pending.push_back(std::make_unique<Object>());
                    Pending.back()->Name = Clean(objectName.c_str());
                    tables.push_back(std::make_unique<PositionTable>(Pending.back()->Vertices));
                }
                Object& object = *Pending[found->second];
                AddMesh(object, *tables[found->second], node.mMeshes[i],
                        SubObjectOf(object, groupName.empty() ? "SubObject1" : Clean(groupName.c_str())));
            }
            for (unsigned i = 0; i < node.mNumChildren; ++i)
                self(*node.mChildren[i], self);
        };
        add(*Scene.mRootNode, add);
        for (auto& object : Pending) {
            CloseObject(*object);
            if (Pending.size() > 1)
                To.Branches.push_back({object->Name, -1, static_cast<int>(To.Objects.size()), Identity, true});
            To.Objects.push_back(std::move(*object));
        }
    }

    // Children that are parts of the node's own object: sub-objects and levels of detail.
    bool IsPart(const aiNode& node) const { return Notes->Find(node.mName.C_Str()) != nullptr; }

    struct PartMesh {
        unsigned Mesh;
        std::string SubObject;
    };

    // Meshes of a node that have names of their own are its parts; of one name they differ in their materials only.
    std::string PartName(const aiNode& node, unsigned index) const {
        const auto nameOf = [&](unsigned i) {
            std::string name = Scene.mMeshes[node.mMeshes[i]]->mName.C_Str();
            const std::size_t dash = name.rfind('-');
            const bool numbered = NumbersParts && dash != std::string::npos &&
                                  name.find_first_not_of("0123456789", dash + 1) == std::string::npos;
            return numbered ? name.substr(0, dash) : name;
        };
        for (unsigned i = 0; i < node.mNumMeshes; ++i)
            if (nameOf(i) != nameOf(index))
                return nameOf(index);
        return "";
    }

    // A group of nothing but meshes that are not placed by themselves.
    bool IsGroupObject(const aiNode& node) const {
        if (!GroupsAreObjects || node.mNumMeshes || node.mNumChildren == 0 || &node == Scene.mRootNode)
            return false;
        for (unsigned i = 0; i < node.mNumChildren; ++i)
            if (node.mChildren[i]->mNumChildren || !node.mChildren[i]->mTransformation.IsIdentity())
                return false;
        return true;
    }

    // The meshes of one level: of the node itself, and of the children that stand for its sub-objects.
    void CollectMeshes(const aiNode& node, std::vector<PartMesh>& meshes) const {
        for (unsigned i = 0; i < node.mNumMeshes; ++i)
            meshes.push_back({node.mMeshes[i], PartName(node, i)});
        if (IsGroupObject(node))
            for (unsigned i = 0; i < node.mNumChildren; ++i)
                for (unsigned k = 0; k < node.mChildren[i]->mNumMeshes; ++k)
                    meshes.push_back({node.mChildren[i]->mMeshes[k], node.mChildren[i]->mName.C_Str()});
        for (unsigned i = 0; i < node.mNumChildren; ++i) {
            const GltfNote* note = Notes->Find(node.mChildren[i]->mName.C_Str());
            if (note && note->Level < 0)
                for (unsigned k = 0; k < node.mChildren[i]->mNumMeshes; ++k)
                    meshes.push_back({node.mChildren[i]->mMeshes[k], note->Name});
        }
    }

    int ObjectOf(const aiNode& node, const std::string& name) {
        std::vector<std::vector<PartMesh>> levels(1);
        std::vector<double> distances = {1000000};
        const GltfNote* own = Notes->Find(node.mName.C_Str(), true);
        CollectMeshes(node, levels[0]);
        for (unsigned i = 0; i < node.mNumChildren; ++i) {
            const GltfNote* note = Notes->Find(node.mChildren[i]->mName.C_Str());
            if (!note || note->Level < 0)
                continue;
            levels.emplace_back();
            distances.push_back(note->Distance);
            CollectMeshes(*node.mChildren[i], levels.back());
        }
        if (own)
            distances[0] = own->Distance;
        if (std::all_of(levels.begin(), levels.end(), [](const auto& level) { return level.empty(); }))
            return -1;
        std::string key;
        for (const auto& level : levels) {
            for (const PartMesh& part : level)
                key += std::to_string(part.Mesh) + " ";
            key += "|";
        }
        if (const auto found = Known.find(key); found != Known.end())
            return found->second;
        auto object = std::make_unique<Object>();
        object->Name = own && !own->Object.empty() ? own->Object : name;
        object->Billboard = own && own->Billboard;
        PositionTable table(object->Vertices);
        std::map<std::pair<unsigned, std::string>, int> done;
        for (std::size_t i = 0; i < levels.size(); ++i) {
            Level level{"Lod" + std::to_string(i + 1), distances[i], {}};
            for (const PartMesh& part : levels[i]) {
                const auto meshKey = std::make_pair(part.Mesh, part.SubObject);
                auto known = done.find(meshKey);
                if (known == done.end()) {
                    // Meshes without a name of their own stand in one sub-object a level.
                    std::string subObject =
                        part.SubObject.empty() ? "SubObject" + std::to_string(i + 1) : part.SubObject;
                    known = done.emplace(meshKey, SubObjectOf(*object, Clean(subObject.c_str()))).first;
                    AddMesh(*object, table, part.Mesh, known->second);
                }
                if (std::find(level.Members.begin(), level.Members.end(), known->second) == level.Members.end())
                    level.Members.push_back(known->second);
            }
            object->Levels.push_back(level);
        }
        std::stable_sort(object->Levels.begin(), object->Levels.end(),
                         [](const Level& a, const Level& b) { return a.Distance < b.Distance; });
        To.Objects.push_back(std::move(*object));
        Known[key] = static_cast<int>(To.Objects.size()) - 1;
        return static_cast<int>(To.Objects.size()) - 1;
    }

    void AddNode(const aiNode& first, int parentOfFirst, const Place& placeOfFirst, bool isRoot) {
        struct Waiting {
            const aiNode* Node;
            int Parent;
            Place Transform;
        };

        // Not a recursion: no nesting is too deep.
        std::vector<Waiting> waiting = {{&first, parentOfFirst, placeOfFirst}};
        while (!waiting.empty()) {
            const Waiting now = waiting.back();
            waiting.pop_back();
            const GltfNote* own = Notes->Find(now.Node->mName.C_Str(), true);
            std::string name = own && !own->Name.empty() ? own->Name : Clean(now.Node->mName.C_Str());
            int branch = now.Parent;
            const int object = ObjectOf(*now.Node, name.empty() ? fs::path(File).stem().string() : name);
            // The root that a reader adds is no part of the model.
            if (now.Node != &first || !isRoot || object >= 0) {
                To.Branches.push_back({name, now.Parent, object, now.Transform, !own || own->Visible});
                branch = static_cast<int>(To.Branches.size()) - 1;
            }
            for (unsigned i = now.Node->mNumChildren; i-- > 0;) {
                const aiNode& child = *now.Node->mChildren[i];
                if (IsPart(child) || IsGroupObject(*now.Node))
                    continue;
                const Place own2 = PlaceOf(child.mTransformation);
                const Place local = Stand == Identity ? own2 : Product(Product(Unstand, own2), Stand);
                waiting.push_back({&child, branch, Product(local, now.Transform)});
            }
        }
        DropEmptyBranches();
    }

    // Cameras, lights and bones place nothing.
    void DropEmptyBranches() {
        std::vector<char> needed(To.Branches.size(), 0);
        for (std::size_t i = To.Branches.size(); i-- > 0;) {
            needed[i] = needed[i] || To.Branches[i].Object >= 0;
            if (needed[i] && To.Branches[i].Parent >= 0)
                needed[static_cast<std::size_t>(To.Branches[i].Parent)] = 1;
        }
        std::vector<int> renumbered(To.Branches.size(), -1);
        std::vector<Branch> kept;
        for (std::size_t i = 0; i < To.Branches.size(); ++i) {
            if (!needed[i])
                continue;
            renumbered[i] = static_cast<int>(kept.size());
            Branch branch = To.Branches[i];
            branch.Parent = branch.Parent < 0 ? -1 : renumbered[static_cast<std::size_t>(branch.Parent)];
            kept.push_back(branch);
        }
        To.Branches.swap(kept);
    }

    // A single object that is placed once needs no scene.
    void PlaceAll() {
        if (To.Objects.size() == 1 && !Notes->KeepsTree &&
            std::count_if(To.Branches.begin(), To.Branches.end(), [](const Branch& b) { return b.Object >= 0; }) == 1) {
            for (const Branch& branch : To.Branches)
                if (branch.Object >= 0 && !IsIdentity(branch.Transform))
                    Bake(To.Objects[0], branch.Transform);
            To.Branches.clear();
        }
        To.SceneMode = !To.Branches.empty();
    }

    static void Bake(Object& object, const Place& place) {
        for (auto& vertex : object.Vertices) {
            const auto moved = Transformed({vertex[0], vertex[1], vertex[2]}, place);
            vertex = {static_cast<float>(moved[0]), static_cast<float>(moved[1]), static_cast<float>(moved[2])};
        }
        if (Determinant(place) < 0)
            for (const Polygon& polygon : object.Polygons)
                std::reverse(object.Corners.begin() + polygon.FirstCorner,
                             object.Corners.begin() + polygon.FirstCorner + polygon.Corners);
    }

    const aiScene& Scene;
    std::string File, Directory;
    Model& To;
    ObjGroups* Groups = nullptr;
    const GltfNotes* Notes = nullptr;
    Place Stand = StandUp, Unstand = LieDown;
    std::vector<std::int32_t> MaterialOf; // by material of the scene
    std::vector<int> TextureOf;           // likewise
    std::map<std::string, std::int32_t> KnownMaterials;
    std::map<const aiTexture*, std::string> Kept;
    bool GroupsAreObjects = false, NumbersParts = false;
    std::vector<unsigned> Ring;
    std::vector<std::unique_ptr<Object>> Pending;
    std::map<std::string, int> Known;
};

} // namespace

std::string ImportFile(const std::string& path, const std::string& directory, Model& model) {
    // Never released: the process ends soon, and millions of polygons take long to be given back one by one.
    static Assimp::Importer& importer = *new Assimp::Importer;
    importer.SetProgressHandler(new Progress); // the importer's from here on
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
    GltfNotes notes;
    ObjGroups groups;
    std::string extension = fs::path(path).extension();
    for (char& c : extension)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (extension == ".gltf" || extension == ".glb")
        notes.Prepare(path, importer);
    if (extension == ".obj")
        groups.Read(path);
    const aiScene* scene = importer.ReadFile(path, 0);
    if (!scene || !scene->mRootNode)
        return *importer.GetErrorString() ? importer.GetErrorString() : "the file cannot be read";
    return Builder(*scene, path, directory, model).Build(groups, notes);
}

} // namespace converters
