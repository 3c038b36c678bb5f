#include "tools/sweep_drawing.h"

#include "gooey/gadget_skeleton.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/work_polygons.h"
#include "tools/sweep.h"
#include "views/display_flags.h"
#include "views/moves.h"
#include "views/rendering_state.h"

#include <algorithm>

namespace {

/// What a recording of the mesh hangs on beside the mesh.
enum Form { Lines = 1, Textured = 2, FormLightings = 4 };

/// Draws with normals and texture coordinates as its form says. Colour, material and texture are bound by the caller.
struct SweepPen {
    const Sweep& Swept;
    const int Lighting;
    const bool Texture;

    void DrawCell(int row, int column) const {
        const SweepCell& cell = CellOf(Swept, row, column);
        const double* corners[4];
        CornersOf(Swept, row, column, corners);
        const bool reversed = Swept.InsideOut && !Swept.DoubleSided;
        gl::bgnpolygon();
        if (Lighting == LightingFaceted)
            gl::n3f(cell.Normal);
        for (int i = 0; i < 4; ++i) {
            const int corner = reversed ? 3 - i : i;
            if (Texture) {
                float coordinates[2];
                TextureAtCorner(Swept, row, column, corner, coordinates);
                gl::t2f(coordinates);
            }
            if (Lighting == LightingSmooth)
                gl::n3f(cell.Corners[corner]);
            gl::v3d(corners[corner]);
        }
        gl::endpolygon();
    }

    void DrawCells() const {
        for (int row = 1; row <= RowsOf(Swept); ++row)
            for (int column = 1; column <= ColumnsOf(Swept); ++column)
                DrawCell(row, column);
    }

    void DrawCaps() const {
        ForEveryWorkPoly(Swept.Caps, [&](const WorkPoly* cap) {
            float normal[3] = {cap->Normal[0], cap->Normal[1], cap->Normal[2]};
            gl::bgnpolygon();
            gl::n3f(normal);
            for (const WorkPolyBead* bead = cap->FirstBead; bead; bead = bead->Next) {
                if (Texture)
                    gl::t2f(bead->TexCoord);
                gl::v3d(bead->Position);
            }
            gl::endpolygon();
        });
    }

    void DrawLines() const {
        const int rows = RowsOf(Swept), columns = ColumnsOf(Swept);
        for (int row = 1; row <= rows + 1; ++row) {
            gl::bgnline();
            for (int column = 1; column <= columns; ++column)
                gl::v3d(CellOf(Swept, row, column).Start);
            gl::v3d(CellOf(Swept, row, columns).End);
            gl::endline();
        }
        for (int column = 1; column <= columns + 1; ++column) {
            gl::bgnline();
            for (int row = 1; row <= rows + 1; ++row)
                gl::v3d(column > columns ? CellOf(Swept, row, columns).End : CellOf(Swept, row, column).Start);
            gl::endline();
        }
    }
};

/// Records the mesh in a form unless that is what is kept.
template <class Draw>
void Keep(Sweep& sweep, int form, Draw draw) {
    if (!sweep.Drawing.IsEmpty() && sweep.DrawingForm == form)
        return;
    sweep.Drawing.Record(draw);
    sweep.DrawingForm = form;
}

} // namespace

void DrawSweepMesh(Sweep& sweep) {
    RemakeSweepMesh(sweep);
    if (!HasMesh(sweep))
        return;
    if (Moving && MoveWire) {
        gl::cpack(White);
        const SweepPen pen = {sweep, LightingUnlit, false};
        Keep(sweep, Lines, [&] { pen.DrawLines(); });
        sweep.Drawing.Draw();
        return;
    }
    const bool textured = SweepIsTextured(sweep) && TextureOn && (MoveTexture || !Moving);
    const SweepPen pen = {sweep, CurrentLighting, textured};
    if (CurrentLighting == LightingUnlit && CurrentMaterial())
        gl::cpack(CurrentMaterial()->PackedColour);
    else
        BindMaterial(CurrentMaterial());
    if (textured) {
        TextureBlending(1);
        BindTexture(CurrentTexture());
    }
    gl::backface(!sweep.DoubleSided);
    Keep(sweep, (textured ? Textured : 0) + FormLightings * CurrentLighting, [&] { pen.DrawCells(); });
    sweep.Drawing.Draw();
    BindMaterial(CurrentMaterial());
    pen.DrawCaps();
    gl::backface(false);
    if (textured) {
        BindTexture(nullptr);
        TextureBlending(0);
    }
}
