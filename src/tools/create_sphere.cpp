#include "tools/create_sphere.h"

#include "geometry/vectors.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/inc_dec.h"
#include "gooey/label.h"
#include "gooey/message_table.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/bar_gadgets.h"
#include "interaction/grid_gizmo.h"
#include "interaction/picking.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/polygon_editing.h"
#include "tools/creation_guards.h"
#include "tools/grid_points.h"
#include "tools/sphere_creation.h"
#include "tools/sphere_meshes.h"
#include "tools/spheres.h"
#include "views/display_flags.h"
#include "views/moves.h"
#include "views/rendering_state.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstdio>

int NewSphereDepth = 3;

namespace {

constexpr int BarText = 123, TextureText = 124;

/// The tool runs.
int SolidMode;
double SolidCentre[3];
/// 0 until one has been dragged out.
double SolidRadius;
/// The object's, before the solid made the views reach farther.
double RadiusWithoutSolid;
int SphereTextured;
/// In the tool bar, while it is there.
Gadget* PolygonCount;

int TexturesSphere() {
    return SphereTextured && TextureAvailable && CurrentTexture();
}

void UpdateSolidRadius(double objectRadius) {
    ObjectRadius() = objectRadius;
    for (int axis = 2; axis >= 0; --axis)
        for (const double side : {-1.0, 1.0}) {
            double point[3] = {SolidCentre[0], SolidCentre[1], SolidCentre[2]};
            point[axis] += side * SolidRadius;
            ChangeObjectRadius(point);
        }
}

/// From the middle to the radius.
class SolidDrag : public ViewDrag {
  public:
    SolidDrag(View* view, const double* centre)
        : ViewDrag(view),
          FormerRadius(SolidRadius),
          FormerReach(ObjectRadius()) {
        std::copy_n(SolidCentre, 3, FormerCentre);
        std::copy_n(centre, 3, SolidCentre);
    }

  private:
    bool Step() override {
        double point[3];
        if (!GridPointUnderPointer(Dragged, point))
            return false;
        SolidRadius = DistanceBetweenCoords(SolidCentre, point);
        UpdateSolidRadius(RadiusWithoutSolid);
        return true;
    }

    bool Cancel() override {
        std::copy_n(FormerCentre, 3, SolidCentre);
        SolidRadius = FormerRadius;
        ObjectRadius() = FormerReach;
        return true;
    }

    const double FormerRadius, FormerReach;
    double FormerCentre[3];
};

void SolidCreateLeft(View* view) {
    double centre[3];
    if (GridPointUnderPointer(view, centre))
        SolidDrag(view, centre).Run();
}

const char* PolygonCountText() {
    static char text[40];
    std::snprintf(text, sizeof text, "= %ld polygons", SpherePolygons(0, NewSphereDepth));
    return text;
}

void ChangeSphereSides(GadgetArg, int) {
    NewSphereDepth = std::clamp(NewSphereDepth, LeastSphereDepth, MostSphereDepth);
    SetText(PolygonCount, PolygonCountText());
    RedrawWindow(MainWindow); // while the button is held
    if (SolidRadius != 0)
        RedrawModelWindowsBeside();
}

void ChangeSphereTexture(GadgetArg) {
    DirtyModelWindows();
}

void SphereToolItems() {
    constexpr int depthWidth = 76, gap = 4;
    AddBarText(BarText);
    AddIncDec(GooeyRight, BarIncDecY, depthWidth, 0, nullptr, ChangeSphereSides, &NewSphereDepth);
    const int left = GooeyRight;
    PolygonCount = AddText(left, BarTextY - 2, PolygonCountText(), 0);
    GooeyRight = left + FontOf(true).Width("= 000000 polygons") + gap;
    if (TextureAvailable)
        AddCheckBox(GooeyRight, BarCheckY, 0, CheckSmallFont, 0, msg(TextureText), ChangeSphereTexture,
                    &SphereTextured);
}

void CreateNewSphere() {
    if (SolidRadius == 0)
        return;
    DisableWindow(MainWindow);
    ObjectRadius() = RadiusWithoutSolid; // the snapshot keeps it
    BeforeToolChange();
    AddSphereToModel(SolidCentre, SolidRadius, NewSphereDepth, TexturesSphere());
    EnableWindow(MainWindow);
}

void LeaveSphere() {
    SolidMode = 0;
    SolidRadius = 0;
    PolygonCount = nullptr;
    if (!ToolHasChanged())
        ObjectRadius() = RadiusWithoutSolid;
}

const MenuEntry SolidMenu[] = {
    {"Create solid", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Done", MenuEntrySeparated, 1, ' ', nullptr, nullptr},
    GridControlEntry,
    MaterialsEntry,
    ViewEntry,
    LastSettingsEntry,
};

constexpr std::int16_t Status[] = {86, 98, 0};

const Tool SphereTool = {
    .Left = SolidCreateLeft,
    .Menu = SolidMenu,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = SphereToolItems,
    .ManualPage = "R_Sphere",
    .Done = CreateNewSphere,
    .Leave = LeaveSphere,
};

void DrawNewSphere() {
    int flags = SphereZUp | (CurrentLighting == LightingFaceted ? SphereFaceted : SphereSmooth);
    const bool wire = Moving && MoveWire;
    const bool textured = !wire && TexturesSphere() && TextureOn && (MoveTexture || !Moving);
    if (wire) {
        gl::cpack(White);
        flags = SphereZUp | SphereWire;
    } else {
        BindMaterial(CurrentMaterial());
    }
    if (textured) {
        TextureBlending(1);
        BindTexture(CurrentTexture());
        flags |= SphereTextureCoordinates;
    }
    const double* c = SolidCentre;
    DrawSphere(static_cast<float>(c[0]), static_cast<float>(c[1]), static_cast<float>(c[2]),
               static_cast<float>(SolidRadius), flags, NewSphereDepth);
    if (textured) {
        BindTexture(nullptr);
        TextureBlending(0);
    }
}

} // namespace

void CreateSphere() {
    if (!CreationInObjectMode() || !PolygonCreationAllowed())
        return;
    DeselectEverything();
    ShowVertices = 0;
    ShowGrid(1);
    SolidRadius = 0;
    RadiusWithoutSolid = ObjectRadius();
    SolidMode = 1;
    BeginTool(SphereTool);
    DirtyOnTextureChange = DirtyOnLightingChange = DirtyOnMaterialChange = 1;
}

void DrawNewSolid(View*) {
    if (!SolidMode || SolidRadius == 0)
        return;
    gl::zbuffer(true);
    gl::backface(true);
    Blending(1);
    DrawNewSphere();
    Blending(0);
    gl::backface(false);
    gl::zbuffer(false);
}

void DirtySolids() {
    if (SolidMode)
        DirtyModelWindows();
}
