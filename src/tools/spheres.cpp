#include "tools/spheres.h"

#include "platform/drawing.h"
#include "platform/matrices.h"
#include "tools/sphere_meshes.h"

#include <algorithm>
#include <list>

namespace {

constexpr int DepthOfNone = 5;
constexpr std::size_t KeptMeshes = 5;

/// The one used last comes first.
std::list<SphereMesh> SphereList;

/// Gives the vertices of one sphere to the graphics layer.
struct SpherePen {
    bool Flat, Textured;

    void Vertex(const double* point, const float* texCoord) const {
        if (Textured)
            gl::t2f(texCoord);
        if (Flat)
            gl::v2d(point);
        else
            gl::v3d(point);
    }

    void SmoothVertex(const double* point, const float* texCoord) const {
        gl::n3d(point);
        Vertex(point, texCoord);
    }

    void Smooth(const SphereStrip& strip) const {
        gl::bgntmesh();
        for (const int start : {0, 1})
            SmoothVertex(strip.Start[start], strip.StartTexCoord[start]);
        for (const SphereNode& node : strip.Nodes)
            SmoothVertex(node.Point, node.TexCoord);
        gl::endtmesh();
    }

    void Faceted(const SphereStrip& strip) const {
        ForEveryTriangle(strip, [&](SphereCorner a, SphereCorner b, SphereCorner c, const SphereNode& node) {
            gl::bgnpolygon();
            gl::n3f(node.Normal);
            for (const SphereCorner& corner : {a, b, c})
                Vertex(corner.Point, corner.TexCoord);
            gl::endpolygon();
        });
    }

    /// There in zigzag, back along the lower row.
    void Wire(const SphereStrip& strip) const {
        gl::bgnline();
        for (const int start : {0, 1})
            Vertex(strip.Start[start], strip.StartTexCoord[start]);
        for (const SphereNode& node : strip.Nodes)
            Vertex(node.Point, node.TexCoord);
        for (int i = static_cast<int>(strip.Nodes.size()) - 3; i >= 0; i -= 2)
            Vertex(strip.Nodes[i].Point, strip.Nodes[i].TexCoord);
        Vertex(strip.Start[0], strip.StartTexCoord[0]);
        gl::endline();
    }
};

int UsableDepth(int depth) {
    return depth < LeastSphereDepth ? DepthOfNone : std::min(depth, MostSphereDepth);
}

} // namespace

void InitSpheres() {
    FreeSpheres();
}

void FreeSpheres() {
    SphereList.clear();
}

long SpherePolygons(int flags, int depth) {
    return static_cast<long>(depth) * depth * (flags & SphereDome ? 12 : 20);
}

const SphereMesh& KeptSphereMesh(int flags, int depth) {
    depth = UsableDepth(depth);
    const bool dome = flags & SphereDome, textured = flags & SphereTextureCoordinates;
    const auto found = std::find_if(SphereList.begin(), SphereList.end(), [&](const SphereMesh& mesh) {
        return mesh.Depth == depth && mesh.Dome == dome && mesh.Textured == textured;
    });
    if (found != SphereList.end()) {
        SphereList.splice(SphereList.begin(), SphereList, found);
    } else {
        if (SphereList.size() == KeptMeshes)
            SphereList.pop_back();
        SphereList.push_front(BuildSphereMesh(depth, dome, textured));
    }
    return SphereList.front();
}

void DrawSphere(float x, float y, float z, float radius, int flags, int depth) {
    const SphereMesh& mesh = KeptSphereMesh(flags, depth);
    const int style = flags & SphereStyles;
    if (style == SphereHidden)
        return;
    gl::pushmatrix();
    gl::translate(x, y, z);
    if (flags & SphereZUp)
        gl::rot(90, 'x');
    gl::scale(radius, radius, radius);
    const SpherePen pen = {(flags & SphereFlat) != 0, (flags & SphereTextureCoordinates) != 0};
    for (const SphereFace& face : mesh.Faces)
        for (const SphereStrip& strip : face.Strips)
            if (style == SphereSmooth)
                pen.Smooth(strip);
            else if (style == SphereFaceted)
                pen.Faceted(strip);
            else
                pen.Wire(strip);
    gl::popmatrix();
}
