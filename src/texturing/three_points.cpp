#include "texturing/three_points.h"

#include "geometry/vectors.h"
#include "interaction/bar_gadgets.h"
#include "interaction/grid_gizmo.h"
#include "interaction/picking.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/walks.h"
#include "texturing/mappings.h"
#include "texturing/texture_tools.h"
#include "views/grid.h"
#include "views/labels.h"
#include "views/moves.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int BarText = 171;
constexpr std::int16_t Status[] = {170, 90, 98, 100, 99, 0};

constexpr int LatticeRepeats = 6;
constexpr std::uint32_t LatticeColour = 0xFF0000FF, HandleColour = 0xFFFFFFFF, HandleHeart = 0xFF000000;
/// Half sides of a point's square and its outline, pixels.
constexpr double HeartSize = 2.5, OutlineSize = 3;

/// The frame is shown.
int ThreePointActive;
/// Model space: where the texture begins, where it has been repeated once across, and once upwards.
double ThreePoints[3][3];
/// From model space to that of the grid where the tool began.
Matrix ThreePointMatrix;

/// A frame without area leaves everything as it is.
void MapThem() {
    ThreePointMap map;
    if (!map.Make(ThreePoints, ThreePointMatrix))
        return;
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        MapThreePoints(polygon, map, ThreePointMatrix);
}

class FrameDrag : public ViewDrag {
  public:
    FrameDrag(View* view, int point) : ViewDrag(view), Number(point) {
        std::copy_n(&ThreePoints[0][0], 9, &Before[0][0]);
    }

  protected:
    bool Step() override {
        double point[3];
        if (!GridPointUnderPointer(Dragged, point) || std::equal(point, point + 3, ThreePoints[Number]))
            return false;
        for (int axis = 0; axis < 3; ++axis) {
            const double way = point[axis] - ThreePoints[Number][axis];
            // The first point takes the others along.
            for (int other = 0; other < 3; ++other)
                if (other == Number || Number == 0)
                    ThreePoints[other][axis] += way;
        }
        std::copy_n(point, 3, ThreePoints[Number]);
        ApplyAgain();
        return true;
    }

    bool Cancel() override {
        std::copy_n(&Before[0][0], 9, &ThreePoints[0][0]);
        ApplyAgain();
        return true;
    }

  private:
    const int Number;
    double Before[3][3];
};

void DragFrame(View* view) {
    double point[3];
    if (!GridPointUnderPointer(view, point))
        return;
    int nearest = 0;
    double distance = std::numeric_limits<double>::max();
    for (int i = 0; i < 3; ++i)
        if (const double away = DistanceBetweenCoords(point, ThreePoints[i]); away < distance) {
            nearest = i;
            distance = away;
        }
    if (distance < OneGridSquare() / 2)
        FrameDrag(view, nearest).Run();
}

void PlaceFrame() {
    const Matrix& grid = ObjectView(0).GridMatrix;
    ThreePointMatrix = MatrixInverse(grid);
    const double square = OneGridSquare();
    const double start[3][3] = {{0, 0, 0}, {square, 0, 0}, {0, square, 0}};
    for (int i = 0; i < 3; ++i)
        TransformCoordinate(start[i], grid, ThreePoints[i]);
}

void LeaveThreePoints() {
    ThreePointActive = 0;
    LeaveTextureTool();
}

void BuildBar() {
    AddBarText(BarText);
}

const MenuEntry Menu[] = {
    {"3 point project", MenuEntryTitle, 0, 0, nullptr, nullptr},
    TextureDoneEntry,
    LastSettingsEntry,
};

const Tool ThreePointTool = {
    .Left = DragFrame,
    .Menu = Menu,
    .Key = TextureToolKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .ManualPage = "R_TextureThreePoints",
    .Done = FinishTextureTool,
    .HoldsWork = TextureToolHoldsWork,
    .Leave = LeaveThreePoints,
    .FreezeSmallViewports = true,
};

void DrawHandle(double pixel) {
    const auto heart = static_cast<float>(HeartSize * pixel), outline = static_cast<float>(OutlineSize * pixel);
    gl::cpack(HandleHeart);
    gl::rectf(-heart, -heart, heart, heart);
    gl::cpack(HandleColour);
    gl::linewidth(2);
    gl::rect(-outline, -outline, outline, outline);
    gl::linewidth(1);
}

/// Seven lines from one side of the lattice to the other; `steps` leads from line to line, `way` along one repeat.
void DrawLines(const double* corner, const double* step, const double* way) {
    for (int line = 0; line <= LatticeRepeats; ++line) {
        double from[3], to[3];
        for (int axis = 0; axis < 3; ++axis) {
            from[axis] = corner[axis] + line * step[axis];
            to[axis] = from[axis] + LatticeRepeats * way[axis];
        }
        gl::bgnline();
        gl::v3d(from);
        gl::v3d(to);
        gl::endline();
    }
}

} // namespace

void ApplyTexture3Point() {
    PlaceFrame();
    if (!BeginTextureTool(ThreePointTool, MapThem))
        return;
    ThreePointActive = 1;
    DisableGridGizmo();
}

void DrawTexture3Point(View* view) {
    if (!ThreePointActive)
        return;
    double u[3], v[3], corner[3];
    for (int axis = 0; axis < 3; ++axis) {
        u[axis] = ThreePoints[1][axis] - ThreePoints[0][axis];
        v[axis] = ThreePoints[2][axis] - ThreePoints[0][axis];
        corner[axis] = ThreePoints[0][axis] - 2 * (u[axis] + v[axis]);
    }
    gl::cpack(LatticeColour);
    DrawLines(corner, u, v);
    DrawLines(corner, v, u);
    for (const auto& point : ThreePoints)
        DrawDeRotated(view, point, DrawHandle);
}
