#include "views/view_test.h"

#include "gooey/draw.h"
#include "platform/drawing.h"
#include "platform/windows.h"
#include "store/accessors.h"
#include "store/material_list.h"
#include "store/new_vertices.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/storage.h"
#include "views/capabilities.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/drawing.h"
#include "views/grid.h"
#include "views/kept_drawings.h"
#include "views/markers.h"
#include "views/moves.h"
#include "views/rendering_state.h"
#include "views/traversal.h"
#include "views/view_transform.h"

#include "materials/material_definitions.h"

#include <algorithm>
#include <cstdlib>

Window* ViewTest::TheWindow;
View ViewTest::TheView;

void ViewTest::SetUp() {
    setenv("KIRVO_DISPLAY", "headless:800x600", 1);
    setenv("KIRVO_SCALE", "1", 1);
    EndToolkit();
    InitialiseStorage();
    SolidView = 1;
    for (int* flag : {&HideScene, &HideSubObjects, &Backface, &TextureOn, &OutlinePolygons, &ShowVertices,
                      &SelectionsOnTop, &SelectionsSolid, &MoveWire, &MoveTexture, &WindowLabels, &GridVisible,
                      &GridOnTop, &Moving, &HidingVertices, &StructureEditorIsOpen, &LabelLastNewVertex})
        *flag = 0;
    NoSceneSelection = ObjectIsolated = 1;
    OpenTheWindow();
    CheckKeptDrawings = 1;
    StaleDrawingsFound = 0;
    AddObject("Model", 0, 0);
}

void ViewTest::OpenTheWindow() {
    WindowInit = InitGraphics;
    gl::prefposition(100, 100 + Width - 1, 100, 100 + Height - 1);
    TheWindow = OpenWindow("View", 0, Background, nullptr, nullptr, nullptr, nullptr, 0, nullptr);
    SussGraphicsStuff();
    MaterialsNeedDefining = 1;
}

void ViewTest::TearDown() {
    EXPECT_EQ(StaleDrawingsFound, 0);
    DeleteAllNewVertices();
    ReleaseKeptDrawings();
    ReleaseKeptMarkers();
    ResetStorage();
    WindowInit = nullptr;
    EndToolkit();
}

Material* ViewTest::AddGlow(std::uint32_t colour, float alpha) {
    Material* material = NewMaterial();
    for (int i = 0; i < 3; ++i) {
        material->Emission[i] = static_cast<float>(colour >> 8 * i & 255) / 255;
        material->Ambient[i] = material->Specular[i] = material->Diffuse[i] = 0;
    }
    material->Alpha = alpha;
    AddMaterial(material);
    MaterialsNeedDefining = 1;
    return material;
}

Vertex* ViewTest::AddPoint(double x, double y, double z) {
    return AddVertex(x, y, z);
}

Polygon* ViewTest::AddFace(const std::vector<std::array<double, 3>>& corners, Material* material, Polygon* parent) {
    PolygonBead* beads = nullptr;
    for (const auto& corner : corners)
        AddPolygonBead(beads, AddVertex(corner[0], corner[1], corner[2]));
    Polygon* polygon = AddPolygon(beads, parent);
    polygon->Material = material;
    polygon->Lighting = LightingFaceted;
    return polygon;
}

Polygon* ViewTest::AddFront(double x, double y, double z, double half, Material* material, Polygon* parent) {
    return AddFace({{x - half, y, z - half}, {x + half, y, z - half}, {x + half, y, z + half}, {x - half, y, z + half}},
                   material, parent);
}

Polygon* ViewTest::AddTop(double x, double y, double z, double half, Material* material, Polygon* parent) {
    return AddFace({{x - half, y - half, z}, {x + half, y - half, z}, {x + half, y + half, z}, {x - half, y + half, z}},
                   material, parent);
}

void ViewTest::AddCube(double half, Material* material) {
    for (int axis = 0; axis < 3; ++axis)
        for (const double side : {-half, half}) {
            std::vector<std::array<double, 3>> corners(4);
            for (int corner = 0; corner < 4; ++corner) {
                const bool turned = corner == 1 || corner == 2, far = corner >= 2;
                corners[corner][axis] = side;
                corners[corner][(axis + 1) % 3] = turned ? half : -half;
                corners[corner][(axis + 2) % 3] = far ? half : -half;
            }
            if (side < 0)
                std::reverse(corners.begin(), corners.end());
            AddFace(corners, material);
        }
}

View& ViewTest::LookFrom(int direction, double radius) {
    TheView = {};
    if (direction == Direction3D)
        MakeDefault3dView(&TheView, radius);
    else
        MakeDefault2dView(&TheView, radius, direction);
    return TheView;
}

void ViewTest::Draw(View& view) {
    VanillaView();
    DrawWorkWindow(&view);
}

gl::Picture ViewTest::Shown() {
    gl::Picture picture;
    picture.width = Width;
    picture.height = Height;
    picture.pixels.resize(static_cast<std::size_t>(Width) * Height);
    gl::lrectread(0, 0, Width - 1, Height - 1, picture.pixels.data());
    return picture;
}

std::uint32_t ViewTest::Pixel(int x, int y) {
    std::uint32_t pixel = 0;
    gl::lrectread(x, y, x, y, &pixel);
    return pixel & 0xFFFFFF;
}

std::string ViewTest::Row(int x, int y, int count) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(count));
    gl::lrectread(x, y, x + count - 1, y, pixels.data());
    std::string row;
    for (const std::uint32_t pixel : pixels) {
        const std::uint32_t colour = pixel & 0xFFFFFF;
        row += colour == Background ? '.'
               : colour == 0xFFFFFF ? '#'
               : colour == 0        ? 'X'
               : colour == 0xFF     ? 'R'
               : colour == 0xFF00   ? 'G'
               : colour == 0xFF0000 ? 'B'
                                    : '?';
    }
    return row;
}

long ViewTest::Count(std::uint32_t colour) {
    const gl::Picture picture = Shown();
    return std::count_if(picture.pixels.begin(), picture.pixels.end(),
                         [colour](std::uint32_t pixel) { return (pixel & 0xFFFFFF) == colour; });
}

std::array<double, 2> ViewTest::PlaceOf(const View& view, double x, double y, double z) {
    Matrix whole;
    MultMatrix(view.Transform, view.Projection, whole);
    const double point[4] = {x, y, z, 1};
    double place[4];
    Transform4dCoordinate(point, whole, place);
    return {(place[0] / place[3] + 1) * Width / 2, (place[1] / place[3] + 1) * Height / 2};
}

void ViewTest::Keep(const std::string& name) {
    const char* folder = std::getenv("KIRVO_TEST_PICTURES");
    std::string error;
    if (folder && !gl::WritePng(Shown(), std::string(folder) + "/" + name + ".png", error))
        ADD_FAILURE() << error;
}
