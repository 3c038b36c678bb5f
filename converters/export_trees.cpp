#include "exports.h"

#include <map>

namespace converters {

namespace {

using Point = std::array<double, 3>;

std::string Xml(const std::string& text) {
    std::string result;
    for (const char character : text) {
        if (character == '&')
            result += "&amp;";
        else if (character == '<')
            result += "&lt;";
        else if (character == '>')
            result += "&gt;";
        else if (character == '"')
            result += "&quot;";
        else if (static_cast<unsigned char>(character) >= ' ')
            result += character;
    }
    return result;
}

int LookOf(const Polygon& polygon) {
    return polygon.Texture >= 0 && polygon.TextureMaterial >= 0 ? polygon.TextureMaterial : polygon.Material;
}

/// Writes a COLLADA file: z is up, polygons are whole, each object once however often it is placed.
class ColladaWriter {
  public:
    explicit ColladaWriter(const Export& task) : Task(task) {}

    std::vector<OutputFile> Write() {
        for (std::size_t i = 0; i < Task.From.Objects.size(); ++i)
            WriteGeometries(i);
        TextOutput text;
        text << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<COLLADA "
                "xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">\n<asset><contributor>"
                "<authoring_tool>Kirvo</authoring_tool></contributor><created>2000-01-01T00:00:00Z</created>"
                "<modified>2000-01-01T00:00:00Z</modified><unit name=\"meter\" meter=\"1\"/>"
                "<up_axis>Z_UP</up_axis></asset>\n";
        WriteLooks(text);
        text << "<library_geometries>\n" << Geometries.Text << "</library_geometries>\n";
        text << "<library_visual_scenes><visual_scene id=\"Scene\" name=\"Scene\">\n";
        WriteNodes(text);
        text << "</visual_scene></library_visual_scenes>\n<scene><instance_visual_scene url=\"#Scene\"/></scene>\n"
                "</COLLADA>\n";
        std::vector<OutputFile> files = {{"", text.Text}};
        for (const ExportedImage& image : Task.Images)
            if (!image.Name.empty())
                files.push_back({image.Name, image.Bytes});
        return files;
    }

  private:
    using Look = std::pair<int, int>; // material, texture

    std::string LookName(const Look& look) {
        const auto known = Looks.try_emplace(look, static_cast<int>(Looks.size())).first;
        return "material" + std::to_string(known->second);
    }

    static void Colour(TextOutput& text, const char* kind, const float (&colour)[3]) {
        text << '<' << kind << "><color>";
        for (const float part : colour)
            text << static_cast<double>(part) << ' ';
        text << "1</color></" << kind << '>';
    }

    void WriteLooks(TextOutput& text) const {
        TextOutput effects, materials, images;
        for (std::size_t i = 0; i < Task.Images.size(); ++i)
            if (!Task.Images[i].Name.empty())
                images << "<image id=\"image" << i << "\"><init_from>" << Xml(Task.Images[i].Name)
                       << "</init_from></image>\n";
        for (const auto& [look, number] : Looks) {
            const Material& from = Task.From.Materials[static_cast<std::size_t>(look.first)];
            const bool textured = look.second >= 0 && !Task.Images[static_cast<std::size_t>(look.second)].Name.empty();
            effects << "<effect id=\"effect" << number << "\"><profile_COMMON>";
            if (textured)
                effects << "<newparam sid=\"surface\"><surface type=\"2D\"><init_from>image" << look.second
                        << "</init_from></surface></newparam><newparam sid=\"sampler\"><sampler2D><source>surface"
                           "</source></sampler2D></newparam>";
            effects << "<technique sid=\"common\"><phong>";
            Colour(effects, "emission", from.Emission);
            Colour(effects, "ambient", from.Ambient);
            if (textured)
                effects << "<diffuse><texture texture=\"sampler\" texcoord=\"UV\"/></diffuse>";
            else
                Colour(effects, "diffuse", from.Diffuse);
            Colour(effects, "specular", from.Specular);
            effects << "<shininess><float>" << static_cast<double>(from.Shininess)
                    << "</float></shininess><transparent opaque=\"A_ONE\"><color>1 1 1 "
                    << static_cast<double>(from.Alpha)
                    << "</color></transparent><transparency><float>1</float></transparency></phong></technique>"
                       "</profile_COMMON></effect>\n";
            materials << "<material id=\"material" << number << "\" name=\"" << Xml(from.Name)
                      << "\"><instance_effect url=\"#effect" << number << "\"/></material>\n";
        }
        if (!images.Text.empty())
            text << "<library_images>\n" << images.Text << "</library_images>\n";
        text << "<library_effects>\n"
             << effects.Text << "</library_effects>\n<library_materials>\n"
             << materials.Text << "</library_materials>\n";
    }

    static void Source(TextOutput& text, const std::string& id, const TextOutput& values, std::size_t count,
                       std::size_t parts) {
        text << "<source id=\"" << id << "\"><float_array id=\"" << id << "-array\" count=\"" << count * parts << "\">"
             << values.Text << "</float_array><technique_common><accessor source=\"#" << id << "-array\" count=\""
             << count << "\" stride=\"" << parts << "\">";
        static const char* const points[] = {"X", "Y", "Z"};
        static const char* const places[] = {"S", "T"};
        for (std::size_t i = 0; i < parts; ++i)
            text << "<param name=\"" << (parts == 2 ? places[i] : points[i]) << "\" type=\"float\"/>";
        text << "</accessor></technique_common></source>\n";
    }

    // A geometry for each sub-object, so that their names stay.
    void WriteGeometries(std::size_t index) {
        const Object& object = Task.From.Objects[index];
        std::vector<Geometry>& made = GeometriesOf[static_cast<int>(index)];
        ForShownPolygons(
            object, Task.Level,
            [&](const std::string& name) {
                made.push_back({name, {}});
            },
            [&](const Polygon& polygon) {
                made.back().Polygons[{LookOf(polygon), polygon.Texture}].push_back(&polygon);
            });
        for (std::size_t i = 0; i < made.size(); ++i)
            WriteGeometry(object, made[i], "geometry" + std::to_string(index) + "-" + std::to_string(i));
    }

    struct Geometry {
        std::string Name;
        std::map<Look, std::vector<const Polygon*>> Polygons;
    };

    void WriteGeometry(const Object& object, const Geometry& geometry, const std::string& id) {
        TextOutput positions, normals, places, lists;
        std::size_t positionCount = 0, normalCount = 0, placeCount = 0;
        std::vector<std::size_t> numbers(object.Vertices.size(), ~std::size_t{0});
        for (const auto& [look, polygons] : geometry.Polygons) {
            TextOutput counts, indices;
            for (const Polygon* polygon : polygons) {
                const std::vector<Point> ring = PositionsOf(object, *polygon);
                const Point flat = NormalOf(object, *polygon);
                counts << ring.size() << ' ';
                for (std::size_t i = 0; i < ring.size(); ++i) {
                    const Corner& corner = object.Corners[polygon->FirstCorner + i];
                    std::size_t number = polygon->Parent < 0 ? numbers[corner.Vertex] : ~std::size_t{0};
                    if (number == ~std::size_t{0}) {
                        number = positionCount++;
                        for (const double part : ring[i])
                            positions << part << ' ';
                        if (polygon->Parent < 0)
                            numbers[corner.Vertex] = number;
                    }
                    indices << number << ' ';
                    if (polygon->Lighting == 2 || i == 0) {
                        for (std::size_t axis = 0; axis < 3; ++axis)
                            normals << (polygon->Lighting == 2 ? static_cast<double>(corner.Normal[axis]) : flat[axis])
                                    << ' ';
                        ++normalCount;
                    }
                    indices << normalCount - 1 << ' ';
                    if (look.second >= 0) {
                        places << static_cast<double>(corner.TexCoord[0]) << ' '
                               << static_cast<double>(corner.TexCoord[1]) << ' ';
                        indices << placeCount++ << ' ';
                    }
                }
            }
            const std::string name = LookName(look);
            lists << "<polylist count=\"" << polygons.size() << "\" material=\"" << name
                  << "\"><input semantic=\"VERTEX\" source=\"#" << id
                  << "-vertices\" offset=\"0\"/><input semantic=\"NORMAL\" source=\"#" << id
                  << "-normals\" offset=\"1\"/>";
            if (look.second >= 0)
                lists << "<input semantic=\"TEXCOORD\" source=\"#" << id << "-places\" offset=\"2\" set=\"0\"/>";
            lists << "<vcount>" << counts.Text << "</vcount><p>" << indices.Text << "</p></polylist>\n";
        }
        Geometries << "<geometry id=\"" << id << "\" name=\"" << Xml(geometry.Name) << "\"><mesh>\n";
        Source(Geometries, id + "-positions", positions, positionCount, 3);
        Source(Geometries, id + "-normals", normals, normalCount, 3);
        if (placeCount)
            Source(Geometries, id + "-places", places, placeCount, 2);
        Geometries << "<vertices id=\"" << id << "-vertices\"><input semantic=\"POSITION\" source=\"#" << id
                   << "-positions\"/></vertices>\n"
                   << lists.Text << "</mesh></geometry>\n";
    }

    void WriteInstances(TextOutput& text, int object) {
        const std::vector<Geometry>& geometries = GeometriesOf[object];
        for (std::size_t i = 0; i < geometries.size(); ++i) {
            if (geometries[i].Polygons.empty())
                continue;
            text << "<instance_geometry url=\"#geometry" << object << '-' << i << "\" name=\""
                 << Xml(geometries[i].Name) << "\"><bind_material><technique_common>";
            for (const auto& [look, polygons] : geometries[i].Polygons)
                text << "<instance_material symbol=\"" << LookName(look) << "\" target=\"#" << LookName(look)
                     << "\"><bind_vertex_input semantic=\"UV\" input_semantic=\"TEXCOORD\" input_set=\"0\"/>"
                        "</instance_material>";
            text << "</technique_common></bind_material></instance_geometry>";
        }
    }

    void WriteNode(TextOutput& text, const std::string& name, int object, const Place& place) {
        text << "<node id=\"node" << Nodes++ << "\" name=\"" << Xml(name) << "\"><matrix>";
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t column = 0; column < 4; ++column)
                text << place[column * 4 + row] << ' ';
        text << "</matrix>";
        if (object >= 0)
            WriteInstances(text, object);
    }

    void WriteBranches(TextOutput& text, const std::vector<std::vector<int>>& children, int parent,
                       const Place& above) {
        for (const int index : children[static_cast<std::size_t>(parent + 1)]) {
            const Branch& branch = Task.From.Branches[static_cast<std::size_t>(index)];
            // Nodes move what hangs on them, branches do not.
            const Place place = branch.Object >= 0 ? branch.Transform : above;
            Place back = Identity;
            if (!Inverse(above, back))
                back = Identity;
            WriteNode(text, branch.Name, branch.Object, Product(place, back));
            WriteBranches(text, children, index, place);
            text << "</node>\n";
        }
    }

    void WriteNodes(TextOutput& text) {
        const Model& model = Task.From;
        const bool hasScene = std::any_of(model.Branches.begin(), model.Branches.end(),
                                          [](const Branch& branch) { return branch.Object >= 0; });
        if (!hasScene) {
            for (const Placed& placed : PlacedObjects(model)) {
                WriteNode(text, placed.Name, placed.Object, placed.Transform);
                text << "</node>\n";
            }
            return;
        }
        std::vector<std::vector<int>> children(model.Branches.size() + 1);
        for (std::size_t i = 0; i < model.Branches.size(); ++i)
            children[static_cast<std::size_t>(model.Branches[i].Parent + 1)].push_back(static_cast<int>(i));
        WriteBranches(text, children, -1, Identity);
    }

    const Export& Task;
    TextOutput Geometries;
    std::map<Look, int> Looks;
    std::map<int, std::vector<Geometry>> GeometriesOf;
    int Nodes = 0;
};

/// Writes an AC3D file: y is up, polygons are whole; placed objects are groups, sub-objects the meshes in them.
class Ac3dWriter {
  public:
    explicit Ac3dWriter(const Export& task) : Task(task) {}

    std::vector<OutputFile> Write() {
        Text << "AC3Db\n";
        for (const Material& material : Task.From.Materials)
            WriteMaterial(material);
        const std::vector<Placed> placed = PlacedObjects(Task.From);
        Text << "OBJECT world\nkids " << placed.size() << '\n';
        for (const Placed& one : placed)
            WriteObject(one);
        std::vector<OutputFile> files = {{"", Text.Text}};
        for (const ExportedImage& image : Task.Images)
            if (!image.Name.empty())
                files.push_back({image.Name, image.Bytes});
        return files;
    }

  private:
    static std::string Quoted(std::string name) {
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '"' || static_cast<unsigned char>(c) < ' '; }, '_');
        return "\"" + name + "\"";
    }

    void Colour(const char* name, const float (&colour)[3]) {
        Text << name;
        for (const float part : colour)
            Text << ' ' << static_cast<double>(part);
    }

    void WriteMaterial(const Material& material) {
        Text << "MATERIAL " << Quoted(material.Name);
        Colour(" rgb", material.Diffuse);
        Colour("  amb", material.Ambient);
        Colour("  emis", material.Emission);
        Colour("  spec", material.Specular);
        Text << "  shi " << static_cast<int>(material.Shininess) << "  trans "
             << 1.0 - static_cast<double>(material.Alpha) << '\n';
    }

    // A mesh has one image: of each sub-object one mesh a texture.
    void WriteObject(const Placed& placed) {
        const Object& object = Task.From.Objects[static_cast<std::size_t>(placed.Object)];
        std::vector<std::pair<std::string, std::map<int, std::vector<const Polygon*>>>> meshes;
        ForShownPolygons(
            object, Task.Level,
            [&](const std::string& name) {
                meshes.push_back({name, {}});
            },
            [&](const Polygon& polygon) { meshes.back().second[polygon.Texture].push_back(&polygon); });
        std::size_t kids = 0;
        for (const auto& [name, parts] : meshes)
            kids += parts.size();
        Text << "OBJECT group\nname " << Quoted(placed.Name) << "\nkids " << kids << '\n';
        for (const auto& [name, parts] : meshes)
            for (const auto& [texture, polygons] : parts)
                WriteMesh(object, placed, name, texture, polygons);
    }

    void WriteMesh(const Object& object, const Placed& placed, const std::string& name, int texture,
                   const std::vector<const Polygon*>& polygons) {
        TextOutput vertices, surfaces;
        std::size_t count = 0;
        std::vector<std::size_t> numbers(object.Vertices.size(), ~std::size_t{0});
        const bool mirrored = Determinant(placed.Transform) < 0;
        for (const Polygon* polygon : polygons) {
            const std::vector<Point> ring = PositionsOf(object, *polygon);
            surfaces << "SURF 0x" << (polygon->Lighting == 2 ? 1 : 0) << "0\nmat " << LookOf(*polygon) << "\nrefs "
                     << ring.size() << '\n';
            for (std::size_t k = 0; k < ring.size(); ++k) {
                const std::size_t i = mirrored ? ring.size() - 1 - k : k;
                const Corner& corner = object.Corners[polygon->FirstCorner + i];
                std::size_t number = polygon->Parent < 0 ? numbers[corner.Vertex] : ~std::size_t{0};
                if (number == ~std::size_t{0}) {
                    number = count++;
                    const Point at = Transformed(ring[i], placed.Transform);
                    vertices << at[0] << ' ' << at[2] << ' ' << -at[1] + 0.0 << '\n';
                    if (polygon->Parent < 0)
                        numbers[corner.Vertex] = number;
                }
                surfaces << number << ' ' << static_cast<double>(corner.TexCoord[0]) << ' '
                         << static_cast<double>(corner.TexCoord[1]) << '\n';
            }
        }
        Text << "OBJECT poly\nname " << Quoted(name) << '\n';
        if (texture >= 0 && !Task.Images[static_cast<std::size_t>(texture)].Name.empty())
            Text << "texture " << Quoted(Task.Images[static_cast<std::size_t>(texture)].Name) << '\n';
        Text << "numvert " << count << '\n'
             << vertices.Text << "numsurf " << polygons.size() << '\n'
             << surfaces.Text << "kids 0\n";
    }

    const Export& Task;
    TextOutput Text;
};

} // namespace

std::vector<OutputFile> ExportCollada(const Export& task) {
    return ColladaWriter(task).Write();
}

std::vector<OutputFile> ExportAc3d(const Export& task) {
    return Ac3dWriter(task).Write();
}

} // namespace converters
