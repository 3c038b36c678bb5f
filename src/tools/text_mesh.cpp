#include "tools/text_mesh.h"

#include "store/duplicates.h"
#include "store/polygon_editing.h"
#include "tools/fonts.h"

#include <initializer_list>
#include <utility>

namespace {

struct LetterMaker {
    const Matrix& Placement;
    double Left; // of the letter, font units

    void AddRing(PolygonLighting lighting, std::initializer_list<std::pair<GlyphPoint, double>> corners) const {
        PolygonBead* beads = nullptr;
        for (const auto& [point, depth] : corners) {
            double place[3] = {Left + point.X, point.Y, depth};
            TransformCoordinate(place, Placement, place);
            AddPolygonBead(beads, AddVertex(place[0], place[1], place[2]));
        }
        AddPolygon(beads, nullptr)->Lighting = lighting;
    }

    void AddFace(const Glyph& glyph, double depth, bool reversed) const {
        for (const GlyphTriangle& triangle : glyph.Triangles) {
            const GlyphPoint *p = triangle.Points, &second = p[reversed ? 2 : 1], &third = p[reversed ? 1 : 2];
            AddRing(LightingFaceted, {{p[0], depth}, {second, depth}, {third, depth}});
        }
    }

    void AddWalls(const Glyph& glyph) const {
        for (const GlyphEdge& edge : glyph.Edges) {
            const GlyphPoint* p = edge.Points;
            AddRing(edge.Smooth ? LightingSmooth : LightingFaceted,
                    {{p[0], -LetterDepth}, {p[1], -LetterDepth}, {p[1], LetterDepth}, {p[0], LetterDepth}});
        }
    }
};

} // namespace

void AddTextToModel(const Font& font, const char* text, bool solid, const Matrix& placement) {
    LetterMaker maker = {placement, -TextWidth(font, text) / 2};
    for (; *text; ++text) {
        const Glyph& glyph = GlyphOf(font, *text);
        maker.AddFace(glyph, solid ? LetterDepth : 0, false);
        if (solid) {
            maker.AddWalls(glyph);
            maker.AddFace(glyph, -LetterDepth, true);
        }
        maker.Left += glyph.Advance;
    }
    DeleteDuplicateVertices();
}
