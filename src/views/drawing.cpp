#include "views/drawing.h"

#include "gooey/window.h"
#include "platform/drawing.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "textures/texture_changes.h"
#include "views/capabilities.h"
#include "views/clipping.h"
#include "views/culling.h"
#include "views/display_flags.h"
#include "views/grid.h"
#include "views/kept_drawings.h"
#include "views/labels.h"
#include "views/markers.h"
#include "views/moves.h"
#include "views/overlays.h"
#include "views/polygon_targets.h"
#include "views/rendering_state.h"
#include "views/status_line.h"
#include "views/traversal.h"
#include "views/view_transform.h"
#include "views/work_area.h"

int SpecialDraw;

namespace {

// Packed colours.
constexpr std::uint32_t White = 0xFFFFFFFF, Black = 0xFF000000, Red = 0xFF0000FF;

constexpr int BoxHaloWidth = 3;

/// A list of polygons to be drawn.
class PolygonSource {
  public:
    explicit PolygonSource(const SubObject* subObject) : Owner(subObject) {}

    explicit PolygonSource(const Object* object) : SelectionOf(object) {}

    void DrawForm(PolygonForm form, std::uint32_t colour = 0) const {
        if (Owner)
            DrawKept(Owner, form, colour);
        else
            DrawKeptSelection(SelectionOf, form, colour);
    }

    /// The same clipped in software.
    void DrawClipped(PolygonForm form, bool facingOnly) const {
        ClippedTarget target(facingOnly);
        PolygonDrawer<ClippedTarget> drawer(form, target);
        if (Owner)
            for (const Polygon* polygon : EveryTopPolygon(Owner))
                drawer.Draw(polygon);
        else
            for (const Polygon* polygon : Along<&Polygon::NextSelected>(SelectionOf->FirstSelectedPolygon))
                drawer.Draw(polygon);
    }

  private:
    const SubObject* Owner = nullptr;
    const Object* SelectionOf = nullptr;
};

void DrawForm(const PolygonSource& source, PolygonForm form) {
    if (SpecialDraw)
        source.DrawClipped(form, false);
    else
        source.DrawForm(form);
}

/// Filled, with textures as the display flags say.
void DrawFilled(const PolygonSource& source) {
    BindTexture(nullptr);
    if (!TextureOn || (Moving && !MoveTexture)) {
        DrawForm(source, PolygonForm::Plain);
        return;
    }
    DrawForm(source, PolygonForm::Untextured);
    TextureBlending(1);
    DrawForm(source, PolygonForm::Textured);
    TextureBlending(0);
    GraphicsTarget(false).SetTextureGeneration(false);
    BindTexture(nullptr);
}

/// As lines, `facingOnly`: of the polygons that face the eye.
void DrawLines(const PolygonSource& source, PolygonForm form, std::uint32_t colour, bool facingOnly) {
    if (SpecialDraw) {
        gl::cpack(colour);
        source.DrawClipped(form, facingOnly);
        return;
    }
    gl::facinglines(facingOnly);
    source.DrawForm(facingOnly ? PolygonForm::FacingOutline : form, colour);
    gl::facinglines(false);
}

void BeginFilled() {
    gl::zbuffer(true);
    Blending(1);
    gl::backface(Backface != 0);
}

void DrawLodSolid(const ShownObject& shown) {
    BeginFilled();
    gl::behindlines(OutlinePolygons != 0);
    ForEachShownSubObject(shown, DrawSubObject);
    gl::behindlines(true);
    Blending(0);
}

void DrawOutlines(const ShownObject& shown, std::uint32_t colour) {
    gl::zbuffer(true);
    Blending(0);
    const bool facingOnly = Backface && shown.View->Perspective;
    ForEachShownSubObject(shown, [&](const SubObject* subObject) {
        DrawLines(PolygonSource(subObject), PolygonForm::Outline, colour, facingOnly);
    });
}

void DrawObjectBox(const View* view) {
    // Slightly before polygons that lie in the box's sides.
    Matrix nearer;
    MarkerMatrix(view, IdentityMatrix, nearer);
    MultMatrix(nearer, LoadedProjection(), nearer);
    const ProjectionScope before(nearer);
    gl::zbuffer(true);
    gl::cpack(BackgroundOf(CurrentWindow));
    gl::linewidth(BoxHaloWidth);
    gl::zwritemask(0); // the line in its middle must not be hidden by the halo
    DrawBoundry(ObjectMin(), ObjectMax());
    gl::zwritemask(0xFFFFFFFF);
    gl::linewidth(1);
    gl::cpack(White);
    DrawBoundry(ObjectMin(), ObjectMax());
}

void DrawSelectedPolygons(const ShownObject& shown) {
    if (!FirstSelectedPolygon())
        return;
    if (SelectionsSolid) {
        BeginFilled();
        DrawFilled(PolygonSource(shown.Object));
        Blending(0);
    } else if (!ApplyingTexture)
        DrawSelectedPolygonsWire(shown.View, nullptr, shown.Mode == ShownWire);
}

/// Multiplies the object's placement onto the layer's matrix, unless coordinates are taken through it here.
void MultPlacement(const Matrix& placement) {
    if (!SpecialDraw)
        MultGLMatrix(placement);
}

bool InWorkAreaWindow() {
    return WorkAreaGizmo && CurrentWindow == WorkAreaWindow;
}

/// Draws what it is given.
class DrawingSink : public TraversalSink {
  public:
    DrawingSink() : TraversalSink(Drawing) { NoteDefinitions(); }

    void TakeObject(const ShownObject& shown) override {
        const bool placed = DoObjectTransform != 0;
        if (placed && !BoxIsInView(shown.View, shown.ToEye, ObjectMin(), ObjectMax()))
            return;
        gl::pushmatrix();
        MultPlacement(shown.Placement);
        gl::clockwisefronts(IsMirroring(shown.ToEye));
        if (shown.Lod)
            DrawLevel(shown);
        if (shown.Mode != ShownBox) {
            if (!placed || !InWorkAreaWindow())
                DrawVertices(shown);
            if (!placed)
                DrawSelectedPolygons(shown);
        }
        gl::zbuffer(false);
        gl::backface(false);
        gl::clockwisefronts(false);
        Blending(0);
        gl::popmatrix();
    }

  private:
    static void DrawLevel(const ShownObject& shown) {
        switch (shown.Mode) {
        case ShownSolid:
            DrawLodSolid(shown);
            if (OutlinePolygons)
                DrawOutlines(shown, Black);
            break;
        case ShownWire:
            DrawOutlines(shown, White);
            break;
        case ShownBox:
            DrawObjectBox(shown.View);
            break;
        default:
            break;
        }
    }
};

/// What a view's label says.
const char* ShownName() {
    const char* name = ObjectIsolated ? ObjectName() : Scene()->Name;
    return name ? name : "";
}

void DrawGridOf(View* view) {
    DrawGrid(view, ShownGridSteps(), ShownGridIndex());
}

void DrawBehindModel(View* view) {
    SetLighting();
    cls(BackgroundOf(CurrentWindow));
    if (GridVisible && !GridOnTop) {
        gl::zbuffer(view->Perspective != 0);
        DrawGridOf(view);
        gl::zbuffer(false);
    }
}

void DrawOverModel(View* view) {
    SetUpView(view, 0);
    if (GridVisible && GridOnTop) {
        gl::zbuffer(false);
        DrawGridOf(view);
    }
    DrawOverlays(OverlayBand::Model, view);
    SetUpView(view, 1);
    DrawOverlays(OverlayBand::BeforeModel, view);
    LabelWindow(view, BackgroundOf(CurrentWindow), ShownName());
    DrawOverlays(OverlayBand::Label, view);
}

} // namespace

void SussSpecialDraw() {
    SpecialDraw = WorkAreaClips() && !ClipPlanesAvailable;
}

void DrawWorkWindow(View* view) {
    SussSpecialDraw();
    if (!Moving)
        BusyStatus();
    Subpixelling(1);
    if (ItsAVGX)
        DoSubDivide = view->Perspective;
    SetUpView(view, 0);
    DrawBehindModel(view);
    ClipPlanesOn();
    DrawingSink sink;
    TraverseView(view, sink);
    ClipPlanesOff();
    DrawOverModel(view);
    if (ItsAVGX)
        DoSubDivide = 0;
    Subpixelling(0);
    LimitKeptDrawings();
}

void DrawScene(View* view) {
    DrawingSink sink;
    TraverseScene(view, sink);
}

void DrawSingleObject(View* view, int mode, const Matrix* matrix) {
    DrawingSink sink;
    TraverseSingleObject(view, mode, nullptr, matrix, sink);
}

void DrawSubObject(SubObject* subObject) {
    DrawFilled(PolygonSource(subObject));
}

void DrawSelectedPolygonsWire(View* view, const Matrix* matrix, int wire) {
    Blending(0);
    gl::pushmatrix();
    gl::zbuffer(!SelectionsOnTop);
    if (!SelectionsOnTop) {
        SetUpView(view, 1);
        if (matrix)
            MultPlacement(*matrix);
    }
    DrawLines(PolygonSource(CurrentObject()), PolygonForm::SelectedOutline, wire ? Red : White, false);
    gl::popmatrix();
}

void DrawBoundry(const double* min, const double* max) {
    double corners[8][3];
    for (int corner = 0; corner < 8; ++corner) {
        for (int axis = 0; axis < 3; ++axis)
            corners[corner][axis] = (corner & 4 >> axis ? min : max)[axis];
        if (SpecialDraw && DoObjectTransform) {
            Matrix placement;
            FloatMatrixToReal(ObjectTransformation, placement);
            TransformPoint(corners[corner], placement, corners[corner]);
        }
    }
    for (const int top : {0, 4}) {
        gl::bgnclosedline();
        for (const int corner : {0, 1, 3, 2})
            gl::v3d(corners[top + corner]);
        gl::endclosedline();
    }
    for (int corner = 0; corner < 4; ++corner) {
        gl::bgnline();
        gl::v3d(corners[corner]);
        gl::v3d(corners[corner + 4]);
        gl::endline();
    }
}
