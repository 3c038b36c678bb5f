#include "exports.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace converters {

namespace {

using Point = std::array<double, 3>;

template <class Number>
void Put(std::string& bytes, Number number) {
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof raw);
}

template <class Number>
void PutText(std::string& text, Number number) {
    char digits[40];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, end);
}

// A name that stands in a line of words.
std::string Word(const std::string& name) {
    std::string word = name.empty() ? "Unnamed" : name;
    for (char& character : word)
        if (static_cast<unsigned char>(character) <= ' ')
            character = '_';
    return word;
}

/// The meshes of a scene in one list of vertices, placed.
class PlacedMesh {
  public:
    PlacedMesh(const Object& object, const Place& place)
        : Shape(object),
          Where(place),
          Mirrored(Determinant(place) < 0),
          Numbers(object.Vertices.size(), None) {}

    /// The numbers of a polygon's corners, in the order in which it is seen from its front; `add` makes a vertex.
    template <class Add>
    const std::vector<std::size_t>& CornersOf(const Polygon& polygon, Add add) {
        Ring.clear();
        if (polygon.Parent >= 0) {
            for (const Point& point : PositionsOf(Shape, polygon))
                Ring.push_back(add(Transformed(point, Where)));
        } else {
            for (std::uint32_t i = 0; i < polygon.Corners; ++i) {
                const std::uint32_t vertex = Shape.Corners[polygon.FirstCorner + i].Vertex;
                if (Numbers[vertex] == None) {
                    const auto& at = Shape.Vertices[vertex];
                    Numbers[vertex] = add(Transformed({at[0], at[1], at[2]}, Where));
                }
                Ring.push_back(Numbers[vertex]);
            }
        }
        if (Mirrored)
            std::reverse(Ring.begin(), Ring.end());
        return Ring;
    }

    bool IsMirrored() const { return Mirrored; }

  private:
    static constexpr std::size_t None = ~std::size_t{0};
    const Object& Shape;
    const Place& Where;
    bool Mirrored;
    std::vector<std::size_t> Numbers;
    std::vector<std::size_t> Ring;
};

/// Writes an OBJ file; y is up there.
class ObjWriter {
  public:
    explicit ObjWriter(const Export& task) : Task(task) { Text.Text.reserve(SizeGuess()); }

    std::vector<OutputFile> Write() {
        Text << "# Kirvo\nmtllib " << Word(Task.Stem) << ".mtl\n";
        for (const Placed& placed : PlacedObjects(Task.From))
            WriteObject(placed);
        std::vector<OutputFile> files = {{"", std::move(Text.Text)}, {Word(Task.Stem) + ".mtl", Materials()}};
        for (const ExportedImage& image : Task.Images)
            if (!image.Name.empty())
                files.push_back({image.Name, image.Bytes});
        return files;
    }

  private:
    std::size_t SizeGuess() const {
        std::size_t size = 1000;
        for (const Object& object : Task.From.Objects)
            size += object.Vertices.size() * 40 + object.Corners.size() * 16;
        return size;
    }

    void WriteVector(const char* kind, double x, double y, double z) {
        Text << kind;
        PutText(Text.Text, static_cast<float>(x));
        Text << ' ';
        PutText(Text.Text, static_cast<float>(z));
        Text << ' ';
        PutText(Text.Text, static_cast<float>(-y + 0.0));
        Text << '\n';
    }

    void WriteObject(const Placed& placed) {
        const Object& object = Task.From.Objects[static_cast<std::size_t>(placed.Object)];
        PlacedMesh mesh(object, placed.Transform);
        Place turning = Identity;
        const bool turns = placed.Transform != Identity;
        if (turns && Inverse(placed.Transform, turning))
            turning = Transposed(turning);
        NormalNumbers.assign(object.Vertices.size(), {});
        Text << "o " << Word(placed.Name) << '\n';
        ForShownPolygons(
            object, Task.Level, [&](const std::string& name) { Text << "g " << Word(name) << '\n'; },
            [&](const Polygon& polygon) { WritePolygon(object, polygon, mesh, placed, turning); });
    }

    static Place Transposed(const Place& place) {
        Place result = Identity;
        for (std::size_t row = 0; row < 3; ++row)
            for (std::size_t column = 0; column < 3; ++column)
                result[row * 4 + column] = place[column * 4 + row];
        return result;
    }

    void WritePolygon(const Object& object, const Polygon& polygon, PlacedMesh& mesh, const Placed&,
                      const Place& turning) {
        const int material =
            polygon.Texture >= 0 && polygon.TextureMaterial >= 0 ? polygon.TextureMaterial : polygon.Material;
        const std::vector<std::size_t> ring = mesh.CornersOf(polygon, [&](const Point& at) {
            WriteVector("v ", at[0], at[1], at[2]);
            return ++Vertices;
        });
        const bool smooth = polygon.Lighting == 2, textured = polygon.Texture >= 0;
        Places.clear();
        Normals.clear();
        for (std::uint32_t k = 0; k < polygon.Corners; ++k) {
            const std::uint32_t i = mesh.IsMirrored() ? polygon.Corners - 1 - k : k;
            const Corner& corner = object.Corners[polygon.FirstCorner + i];
            if (textured) {
                Text << "vt ";
                PutText(Text.Text, corner.TexCoord[0]);
                Text << ' ';
                PutText(Text.Text, corner.TexCoord[1]);
                Text << '\n';
                Places.push_back(++TextureCorners);
            }
            if (smooth)
                Normals.push_back(NormalNumber(corner, turning));
        }
        UseMaterial(material, polygon.Texture);
        Text << 'f';
        for (std::size_t i = 0; i < ring.size(); ++i) {
            Text << ' ' << ring[i];
            if (textured || smooth)
                Text << '/';
            if (textured)
                Text << Places[i];
            if (smooth)
                Text << '/' << Normals[i];
        }
        Text << '\n';
    }

    std::size_t NormalNumber(const Corner& corner, const Place& turning) {
        auto& known = NormalNumbers[corner.Vertex];
        const std::array<float, 3> normal = {corner.Normal[0], corner.Normal[1], corner.Normal[2]};
        if (known.second && known.first == normal)
            return known.second;
        Point turned = Transformed({normal[0], normal[1], normal[2]}, turning);
        const double length = std::hypot(turned[0], turned[1], turned[2]);
        for (double& part : turned)
            part = length > 0 ? part / length : 0;
        WriteVector("vn ", turned[0], turned[1], turned[2]);
        known = {normal, ++AllNormals};
        return AllNormals;
    }

    // A material for each pair of material and texture: the format has the image in the material.
    void UseMaterial(int material, int texture) {
        const std::pair<int, int> pair = {material, texture};
        if (Current == pair)
            return;
        Current = pair;
        if (std::find(Used.begin(), Used.end(), pair) == Used.end())
            Used.push_back(pair);
        Text << "usemtl " << MaterialName(pair) << '\n';
    }

    std::string MaterialName(const std::pair<int, int>& pair) const {
        const std::string name = Word(Task.From.Materials[static_cast<std::size_t>(pair.first)].Name);
        return pair.second < 0 ? name : name + "_" + std::to_string(pair.second + 1);
    }

    std::string Materials() const {
        TextOutput text;
        for (const auto& pair : Used) {
            const Material& material = Task.From.Materials[static_cast<std::size_t>(pair.first)];
            text << "newmtl " << MaterialName(pair) << '\n';
            const auto colour = [&](const char* name, const float(&parts)[3]) {
                text << name << ' ' << static_cast<double>(parts[0]) << ' ' << static_cast<double>(parts[1]) << ' '
                     << static_cast<double>(parts[2]) << '\n';
            };
            colour("Ka", material.Ambient);
            colour("Kd", material.Diffuse);
            colour("Ks", material.Specular);
            colour("Ke", material.Emission);
            text << "Ns " << static_cast<double>(material.Shininess) << "\nd " << static_cast<double>(material.Alpha)
                 << "\nillum 2\n";
            if (pair.second >= 0 && !Task.Images[static_cast<std::size_t>(pair.second)].Name.empty())
                text << "map_Kd " << Task.Images[static_cast<std::size_t>(pair.second)].Name << '\n';
            text << '\n';
        }
        return text.Text;
    }

    const Export& Task;
    TextOutput Text;
    std::size_t Vertices = 0, TextureCorners = 0, AllNormals = 0;
    std::vector<std::size_t> Places, Normals;
    std::vector<std::pair<std::array<float, 3>, std::size_t>> NormalNumbers;
    std::pair<int, int> Current = {-1, -1};
    std::vector<std::pair<int, int>> Used;
};

} // namespace

TextOutput& TextOutput::operator<<(double number) {
    PutText(Text, static_cast<float>(number));
    return *this;
}

TextOutput& TextOutput::operator<<(std::size_t number) {
    PutText(Text, number);
    return *this;
}

TextOutput& TextOutput::operator<<(int number) {
    PutText(Text, number);
    return *this;
}

std::vector<OutputFile> ExportObj(const Export& task) {
    return ObjWriter(task).Write();
}

std::vector<OutputFile> ExportPly(const Export& task) {
    std::string vertices, faces;
    std::size_t vertexCount = 0, faceCount = 0;
    for (const Placed& placed : PlacedObjects(task.From)) {
        const Object& object = task.From.Objects[static_cast<std::size_t>(placed.Object)];
        PlacedMesh mesh(object, placed.Transform);
        ForShownPolygons(
            object, task.Level, [](const std::string&) {},
            [&](const Polygon& polygon) {
                const auto& ring = mesh.CornersOf(polygon, [&](const Point& at) {
                    for (const double part : at)
                        Put(vertices, static_cast<float>(part));
                    return vertexCount++;
                });
                Put(faces, static_cast<std::uint32_t>(ring.size()));
                for (const std::size_t number : ring)
                    Put(faces, static_cast<std::uint32_t>(number));
                ++faceCount;
            });
    }
    std::string header = "ply\nformat binary_little_endian 1.0\ncomment Kirvo\nelement vertex " +
                         std::to_string(vertexCount) +
                         "\nproperty float x\nproperty float y\nproperty float z\nelement face " +
                         std::to_string(faceCount) + "\nproperty list uint int vertex_indices\nend_header\n";
    return {{"", header + vertices + faces}};
}

std::vector<OutputFile> ExportStl(const Export& task) {
    std::string bytes = "Kirvo";
    bytes.resize(84, ' '); // 80 of comment, then the number of triangles
    std::uint32_t count = 0;
    std::vector<std::uint32_t> triangles;
    bool isFan;
    for (const Placed& placed : PlacedObjects(task.From)) {
        const Object& object = task.From.Objects[static_cast<std::size_t>(placed.Object)];
        const bool mirrored = Determinant(placed.Transform) < 0;
        ForShownPolygons(
            object, task.Level, [](const std::string&) {},
            [&](const Polygon& polygon) {
                std::vector<Point> ring = PositionsOf(object, polygon);
                for (Point& point : ring)
                    point = Transformed(point, placed.Transform);
                if (mirrored)
                    std::reverse(ring.begin(), ring.end());
                Triangulate(ring, triangles, isFan);
                for (std::size_t i = 0; i + 2 < triangles.size(); i += 3) {
                    const Point &a = ring[triangles[i]], &b = ring[triangles[i + 1]], &c = ring[triangles[i + 2]];
                    Point normal;
                    for (std::size_t axis = 0; axis < 3; ++axis) {
                        const std::size_t u = (axis + 1) % 3, v = (axis + 2) % 3;
                        normal[axis] = (b[u] - a[u]) * (c[v] - a[v]) - (b[v] - a[v]) * (c[u] - a[u]);
                    }
                    const double length = std::hypot(normal[0], normal[1], normal[2]);
                    for (const double part : normal)
                        Put(bytes, static_cast<float>(length > 0 ? part / length : 0));
                    for (const Point* point : {&a, &b, &c})
                        for (const double part : *point)
                            Put(bytes, static_cast<float>(part));
                    Put(bytes, std::uint16_t{0});
                    ++count;
                }
            });
    }
    std::memcpy(bytes.data() + 80, &count, sizeof count);
    return {{"", bytes}};
}

} // namespace converters
