#include "tools/sphere_creation.h"

#include "store/accessors.h"
#include "store/duplicates.h"
#include "store/polygon_editing.h"
#include "tools/sphere_meshes.h"
#include "tools/spheres.h"

#include <cstring>

namespace {

struct NewSphere {
    const double* Centre;
    double Radius;
    bool Textured;

    void ProcessSphereVertex(PolygonBead*& beads, const SphereCorner& corner) const {
        const double* point = corner.Point; // the sphere's y axis becomes the model's z axis
        PolygonBead* bead =
            AddPolygonBead(beads, AddVertex(Centre[0] + Radius * point[0], Centre[1] - Radius * point[2],
                                            Centre[2] + Radius * point[1]));
        if (Textured)
            std::memcpy(bead->TexCoord, corner.TexCoord, sizeof bead->TexCoord);
    }

    void GenerateSpherePoly(const SphereCorner& a, const SphereCorner& b, const SphereCorner& c) const {
        PolygonBead* beads = nullptr;
        for (const SphereCorner& corner : {a, b, c})
            ProcessSphereVertex(beads, corner);
        Polygon* polygon = AddPolygon(beads, nullptr);
        if (Textured) {
            polygon->Texture = CurrentTexture();
            polygon->TextureMaterial = CurrentMaterial();
        }
    }
};

} // namespace

void AddSphereToModel(const double* centre, double radius, int depth, bool textured) {
    const SphereMesh& mesh = KeptSphereMesh(textured ? SphereTextureCoordinates : 0, depth);
    const NewSphere sphere = {centre, radius, textured};
    for (const SphereFace& face : mesh.Faces)
        for (const SphereStrip& strip : face.Strips)
            ForEveryTriangle(strip, [&](const SphereCorner& a, const SphereCorner& b, const SphereCorner& c,
                                        const SphereNode&) { sphere.GenerateSpherePoly(a, b, c); });
    FreeSpheres();
    DeleteDuplicateVertices();
}
