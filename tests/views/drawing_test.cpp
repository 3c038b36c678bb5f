// Views show the model as they should, pixel by pixel.
#include "views/view_test.h"

#include "base/memory.h"
#include "geometry/vectors.h"
#include "platform/textures.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/new_vertices.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "store/texture_list.h"
#include "textures/texture_changes.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/drawing.h"
#include "views/grid.h"
#include "views/labels.h"
#include "views/markers.h"
#include "views/moves.h"
#include "views/overlays.h"
#include "views/polygon_forms.h"
#include "views/traversal.h"
#include "views/view_transform.h"

#include <cmath>
#include <functional>

namespace {

constexpr std::uint32_t Red = 0xFF, Green = 0xFF00, Blue = 0xFF0000, White = 0xFFFFFF;
constexpr int Top = 0, Bottom = 1, Left = 2, Right = 3, Front = 4, Back = 5;

using Point = std::array<double, 3>;
using Place = std::array<double, 2>;

class Drawing : public ViewTest {};

/// The middle of an area between straight edges.
Place MiddleOf(const std::vector<Place>& corners) {
    double area = 0, x = 0, y = 0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Place &a = corners[i], &b = corners[(i + 1) % corners.size()];
        const double cross = a[0] * b[1] - b[0] * a[1];
        area += cross;
        x += (a[0] + b[0]) * cross;
        y += (a[1] + b[1]) * cross;
    }
    return {x / (3 * area), y / (3 * area)};
}

/// The middle of the pixels of a colour; a pixel's own middle is half a pixel from its corner.
Place MiddleOfPixels(const gl::Picture& picture, std::uint32_t colour) {
    double x = 0, y = 0, count = 0;
    for (int row = 0; row < picture.height; ++row)
        for (int column = 0; column < picture.width; ++column)
            if ((picture.at(column, row) & 0xFFFFFF) == colour) {
                x += column + 0.5;
                y += row + 0.5;
                ++count;
            }
    return {x / count, y / count};
}

TEST_F(Drawing, PutsPointsWhereGeometryHasThem) {
    constexpr double radius = 5, distance = 0.9 * radius / 0.36397023426620234, toRadians = 0.017453292519943295;
    const double pixels2D = Height / 2.0 / radius, pixels3D = Height / 2.0 / 0.36397023426620234;
    const auto from3D = [&](const Point& p) {
        const double yaw = 45 * toRadians, pitch = 15 * toRadians;
        const double x = p[0] * std::cos(yaw) - p[1] * std::sin(yaw);
        const double y = p[0] * std::sin(yaw) + p[1] * std::cos(yaw);
        const double away = y * std::cos(pitch) - p[2] * std::sin(pitch) + distance;
        const double up = y * std::sin(pitch) + p[2] * std::cos(pitch);
        return Place{Width / 2.0 + x / away * pixels3D, Height / 2.0 + up / away * pixels3D};
    };
    const auto from2D = [&](double x, double y) {
        return Place{Width / 2.0 + x * pixels2D, Height / 2.0 + y * pixels2D};
    };

    const struct {
        int Direction;
        std::function<Place(const Point&)> Project;
    } cases[] = {
        {Top, [&](const Point& p) { return from2D(p[0], p[1]); }},
        {Bottom, [&](const Point& p) { return from2D(p[0], -p[1]); }},
        {Left, [&](const Point& p) { return from2D(-p[1], p[2]); }},
        {Right, [&](const Point& p) { return from2D(p[1], p[2]); }},
        {Front, [&](const Point& p) { return from2D(p[0], p[2]); }},
        {Back, [&](const Point& p) { return from2D(-p[0], p[2]); }},
        {Direction3D, from3D},
    };

    const std::vector<Point> corners = {{-1.13, -2.21, -1.3}, {2.6, 1.9, -0.9}, {-0.7, 0.6, 2.35}};
    AddFace(corners, AddGlow(Red));
    for (const auto& one : cases) {
        std::vector<Place> places;
        for (int i = 0; i < 3; ++i)
            places.push_back(one.Project(corners[i]));
        Draw(LookFrom(one.Direction, radius));
        const Place expected = MiddleOf(places), found = MiddleOfPixels(Shown(), Red);
        EXPECT_NEAR(found[0], expected[0], 0.1) << one.Direction;
        EXPECT_NEAR(found[1], expected[1], 0.1) << one.Direction;
    }
}

TEST_F(Drawing, LaysDecalsOnTheirPolygonWithoutFighting) {
    // All in one plane, slanted so that depths differ everywhere.
    const auto slanted = [](double half) {
        return std::vector<Point>{
            {-half, -half, -half}, {half, -half / 3, -half}, {half, half, half}, {-half, half / 3, half}};
    };
    Material* behind = AddGlow(Blue);
    AddFront(0, 1.5, 0, 1.2, behind);
    Polygon* wall = AddFace(slanted(1.2), AddGlow(Red));
    Polygon* window = AddFace(slanted(0.6), AddGlow(Green), wall);
    AddFace(slanted(0.3), AddGlow(White), window);
    View& view = LookFrom(Front, 3);
    for (int turn = 0; turn < 5; ++turn) {
        MultMatrix(YawMatrix(5 + turn), view.ViewMatrix, view.ViewMatrix);
        Draw(view);
        const Place middle = PlaceOf(view, 0, 0, 0), rim = PlaceOf(view, 0.8, 0.8 / 3, 0),
                    frame = PlaceOf(view, 0.45, 0.15, 0);
        for (int i = -6; i <= 6; ++i) {
            EXPECT_EQ(Pixel(static_cast<int>(middle[0]) + i, static_cast<int>(middle[1]) + i), White);
            EXPECT_EQ(Pixel(static_cast<int>(rim[0]) + i / 2, static_cast<int>(rim[1]) + i), Red);
            EXPECT_EQ(Pixel(static_cast<int>(frame[0]) - i / 3, static_cast<int>(frame[1]) + i), Green);
        }
    }
    // What lies behind is hidden even where it is drawn later.
    EXPECT_EQ(Row(Width / 2 - 7, Height / 2, 14), std::string(14, '#'));
    Keep("decals");
}

TEST_F(Drawing, OutlinesOfABoxShowThreeFacesWithBackfaceOn) {
    AddCube(1, AddGlow(Red));
    SolidView = 0;
    View& view = LookFrom(Direction3D, 3);
    // The eye is at the front, above and to the side: the far lower corner is the one that only back faces have.
    const auto edgeShows = [&](const Point& a, const Point& b) {
        int white = 0;
        for (int i = 1; i < 20; ++i) {
            Place p = PlaceOf(view, a[0] + (b[0] - a[0]) * i / 20, a[1] + (b[1] - a[1]) * i / 20,
                              a[2] + (b[2] - a[2]) * i / 20);
            bool hit = false;
            for (int dx = -1; dx <= 1; ++dx)
                hit |= Pixel(static_cast<int>(p[0]) + dx, static_cast<int>(p[1])) == White;
            white += hit;
        }
        return white > 17;
    };
    for (const int backface : {0, 1}) {
        Backface = backface;
        Draw(view);
        int edges = 0;
        for (int axis = 0; axis < 3; ++axis)
            for (int k = 0; k < 4; ++k) {
                Point a, b;
                a[axis] = -1;
                b[axis] = 1;
                a[(axis + 1) % 3] = b[(axis + 1) % 3] = k & 1 ? 1 : -1;
                a[(axis + 2) % 3] = b[(axis + 2) % 3] = k & 2 ? 1 : -1;
                edges += edgeShows(a, b);
            }
        EXPECT_EQ(edges, backface ? 9 : 12);
    }
    const long facing = (Draw(view), Count(White));
    OutlinePolygons = SolidView = 1;
    Draw(view);
    EXPECT_NEAR(static_cast<double>(Count(0)), static_cast<double>(facing), 25) << "the same lines in black";
    SolidView = 0;
    Draw(LookFrom(Front, 3));
    EXPECT_NEAR(static_cast<double>(Count(White)), 4 * 100, 2) << "in 2D views all faces";
}

TEST_F(Drawing, ShowsBodiesFromOutsideUpToTheirSilhouette) {
    // What faces away is of another colour.
    const Point apex = {0, 0, 1}, corners[4] = {{-2, -2, 0}, {2, -2, 0}, {2, 2, 0}, {-2, 2, 0}};
    std::array<Polygon*, 4> sides;
    for (std::size_t i = 0; i < sides.size(); ++i)
        sides[i] = AddFace({corners[i], corners[(i + 1) % 4], apex}, AddGlow(Red));
    Material *outside = AddGlow(Green), *inside = AddGlow(Blue);
    View& view = LookFrom(Direction3D, 3);
    for (int turn = 0; turn < 8; ++turn) {
        MultMatrix(YawMatrix(5), view.ViewMatrix, view.ViewMatrix);
        Matrix toEye;
        MultMatrix(view.ViewMatrix, p90, toEye);
        for (std::size_t i = 0; i < sides.size(); ++i) {
            double eye[3],
                normal[3] = {corners[i][0] + corners[(i + 1) % 4][0], corners[i][1] + corners[(i + 1) % 4][1], 8};
            TransformPoint(apex.data(), toEye, eye);
            Rotate3d(normal, toEye, normal);
            sides[i]->Material = Dot(eye, normal) < 0 ? outside : inside;
        }
        EveryAppearanceChanged();
        Draw(view);
        EXPECT_GT(Count(Green), 1000);
        EXPECT_EQ(Count(Blue), 0) << turn;
    }
}

TEST_F(Drawing, ShowsTheGridOnPolygonsInItsPlane) {
    AddTop(0, 0, 0, 8, AddGlow(Red));
    View& view = LookFrom(Direction3D, 10);
    FitGrid(10, GridIndex(), GridSteps());
    GridVisible = 1;
    for (int turn = 0; turn < 5; ++turn) {
        MultMatrix(YawMatrix(7), view.ViewMatrix, view.ViewMatrix);
        GridOnTop = 1;
        Draw(view);
        const long uncovered = Count(Red);
        GridOnTop = 0;
        Draw(view);
        EXPECT_NEAR(static_cast<double>(Count(Red)), static_cast<double>(uncovered), 0.005 * uncovered);
    }
    Keep("grid_on_polygon");
}

TEST_F(Drawing, MarksVerticesWithThreePixels) {
    Vertex* loose = AddPoint(0.4, 0.3, 0.2);
    AddFront(-1.2, 0, -1, 0.3, AddGlow(Blue));
    for (const double zoom : {0.25, 1.0, 3.0}) {
        View& flat = LookFrom(Front, 3);
        flat.Zoom = zoom;
        Draw(flat);
        EXPECT_EQ(Count(White), 8) << "a frame of 3 pixels about a dark heart";
        EXPECT_EQ(Count(0), 1);
    }
    for (const double distance : {2.0, 9.0, 40.0}) {
        View& view = LookFrom(Direction3D, 3);
        view.ViewMatrix[3][1] = distance;
        Draw(view);
        EXPECT_EQ(Count(White), 8) << distance;
    }
    View& view = LookFrom(Front, 3);
    Draw(view);
    const Place place = PlaceOf(view, 0.4, 0.3, 0.2), found = MiddleOfPixels(Shown(), White);
    EXPECT_NEAR(found[0], place[0], 0.51);
    EXPECT_NEAR(found[1], place[1], 0.51);
    ShowVertices = 1;
    Draw(view);
    EXPECT_EQ(Count(White), 5 * 8);
    loose->Selected = FirstPolygon()->Beads->Vertex->Selected = 1;
    VertexSelectionChanged() = 1;
    Draw(view);
    EXPECT_EQ(Count(White), 3 * 8);
    EXPECT_EQ(Count(Red), 2 * 8);
    ShowVertices = 0;
    Draw(view);
    EXPECT_EQ(Count(White), 0);
    EXPECT_EQ(Count(Red), 2 * 8);
    loose->Selected = 0;
    VertexSelectionChanged() = 1;
    AddNewVertex(1, 0, 1);
    AddNewVertex(1.2, 2, 1.3);
    AddFront(1.2, 1, 1.2, 0.4, AddGlow(Green)); // hides the newest, were it not always seen
    LabelLastNewVertex = 1;
    Draw(view);
    Keep("markers");
    const Place newest = PlaceOf(view, 1.2, 2, 1.3);
    EXPECT_NE(Pixel(static_cast<int>(newest[0]), static_cast<int>(newest[1])), Green);
    EXPECT_GT(Count(White), 3 * 8 + 40) << "the label";
}

TEST_F(Drawing, LabelsThatAreAlmostZeroHaveNoSign) {
    View& view = LookFrom(Front, 3);
    LabelLastNewVertex = 1;
    AddNewVertex(-1, 0, 0);
    Draw(view);
    const gl::Picture zero = Shown();
    NewVertices->Position[2] = -2e-20;
    Draw(view);
    EXPECT_EQ(gl::DifferingPixels(Shown(), zero, 0, nullptr), 0);
}

TEST_F(Drawing, HidesVerticesBehindTheGrid) {
    AddPoint(0, 0, 1);
    AddPoint(0.5, 0, -1);
    View& view = LookFrom(Direction3D, 3);
    HidingVertices = 1;
    Draw(view);
    EXPECT_EQ(Count(White), 8);
    const Place above = PlaceOf(view, 0, 0, 1);
    EXPECT_NEAR(MiddleOfPixels(Shown(), White)[1], above[1], 2) << "the one on the eye's side";
}

TEST_F(Drawing, MarksSelectionsAsTheFlagsSay) {
    Material* plain = AddGlow(Green);
    Polygon* chosen = AddFront(-1, 0, 0, 0.5, plain);
    AddFront(1, 0, 0, 0.5, plain);
    AddFront(-1, -1, 0, 0.7, plain); // before the chosen one
    chosen->Selected = 1;
    PolygonSelectionChanged() = 1;
    View& view = LookFrom(Front, 3);
    Draw(view);
    EXPECT_EQ(Count(White), 0) << "hidden";
    SelectionsOnTop = 1;
    Draw(view);
    EXPECT_NEAR(static_cast<double>(Count(White)), 4 * 50, 2);
    ApplyingTexture = 1;
    Draw(view);
    EXPECT_EQ(Count(White), 0);
    ApplyingTexture = 0;
    SolidView = 0;
    Draw(view);
    EXPECT_NEAR(static_cast<double>(Count(Red)), 4 * 50, 2) << "over outlines, in red";
    EXPECT_NEAR(static_cast<double>(Count(White)), 4 * 50 + 4 * 70, 4);
    SelectionsSolid = SolidView = 1;
    Draw(view);
    EXPECT_NEAR(static_cast<double>(Count(Green)), 50 * 50, 300) << "alone filled";
    EXPECT_GT(Count(White), 4 * 50);
}

TEST_F(Drawing, BlendsTransparentMaterials) {
    AddFront(0, 0, 0, 1, AddGlow(Blue));
    AddFront(0, -1, 0, 1, AddGlow(Red, 0.5F));
    Draw(LookFrom(Front, 3));
    // New polygons come first: the transparent one hides what is behind it, over the background.
    const std::uint32_t mixed = Pixel(Width / 2, Height / 2);
    EXPECT_NEAR(static_cast<double>(mixed & 255), (0x10 + 0xFF) / 2.0, 1);
    EXPECT_NEAR(static_cast<double>(mixed >> 16), 0x40 / 2.0, 1);
}

/// Four texels: red and green below, blue and white above.
Texture* AddSquares(int number, bool clamped) {
    Texture* texture = NewTexture();
    texture->FileName = nullptr;
    texture->GLId = number;
    const std::uint8_t image[] = {0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0};
    const float wrap = clamped ? gl::TX_CLAMP : gl::TX_REPEAT;
    const float list[] = {gl::TX_MINFILTER, gl::TX_POINT, gl::TX_MAGFILTER, gl::TX_POINT, gl::TX_WRAP_S, wrap,
                          gl::TX_WRAP_T,    wrap,         gl::TX_NULL};
    gl::texdef2d(number, 3, 2, 2, image, 0, list);
    return texture;
}

void Cover(Polygon* polygon, Texture* texture, float reach) {
    polygon->Texture = texture;
    polygon->TextureMaterial = polygon->Material;
    int corner = 0;
    for (PolygonBead* bead : EveryBead(polygon)) {
        bead->TexCoord[0] = corner == 1 || corner == 2 ? reach : 0;
        bead->TexCoord[1] = corner >= 2 ? reach : 0;
        ++corner;
    }
    AppearanceChanged(polygon);
}

TEST_F(Drawing, TexturesPolygons) {
    Material* white = AddGlow(White);
    Texture *repeated = AddSquares(901, false), *clamped = AddSquares(902, true);
    Polygon* wall = AddFront(0, 0, 0, 2, white);
    Cover(wall, repeated, 1);
    AddFront(0, -1, 0, 0.2, AddGlow(Red)); // untextured, before it
    View& view = LookFrom(Front, 3);
    Draw(view);
    EXPECT_EQ(Pixel(150, 100), White) << "textures are off";
    TextureOn = TextureAvailable = 1;
    Draw(view);
    Keep("textures");
    const auto quarters = [] { return Row(150, 100, 1) + Row(250, 100, 1) + Row(150, 200, 1) + Row(250, 200, 1); };
    EXPECT_EQ(quarters() + Row(200, 150, 1), "RGB#R");
    Cover(wall, repeated, 2);
    Draw(view);
    EXPECT_EQ(Row(125, 75, 1) + Row(175, 75, 1) + Row(225, 75, 1) + Row(275, 75, 1), "RGRG");
    Cover(wall, clamped, 2);
    Draw(view);
    EXPECT_EQ(Row(125, 75, 1) + Row(175, 75, 1) + Row(225, 75, 1) + Row(275, 75, 1), "RGGG");
    wall->Flags |= PolygonGeneratesTexture;
    AppearanceChanged(wall);
    Draw(view);
    EXPECT_EQ(Count(Blue) + Count(Green) + Count(White) > 0, true) << "the sphere map is somewhere";
    const std::uint32_t reflected = Pixel(150, 100);
    EXPECT_EQ(Pixel(152, 102), reflected) << "a flat mirror far away shows one place";
    wall->Flags = 0;
    AppearanceChanged(wall);
    Moving = 1;
    Draw(view);
    EXPECT_EQ(Pixel(150, 100), White) << "not while moving";
    MoveTexture = 1;
    Draw(view);
    EXPECT_EQ(Row(125, 75, 1) + Row(225, 75, 1), "RG");
    FreeTexture(repeated);
    wall->Texture = nullptr;
    AppearanceChanged(wall);
    FreeTexture(clamped);
}

TEST_F(Drawing, TexturesDecalsOfPlainPolygons) {
    TextureOn = TextureAvailable = 1;
    Texture* texture = AddSquares(903, true);
    Polygon* wall = AddFront(0, 0, 0, 2, AddGlow(Red));
    Cover(AddFront(0, 0, 0, 1, AddGlow(White), wall), texture, 1);
    Draw(LookFrom(Front, 3));
    EXPECT_EQ(Row(125, 150, 1) + Row(180, 170, 1) + Row(220, 170, 1) + Row(220, 130, 1), "RB#G");
    FreeTexture(texture);
}

TEST_F(Drawing, TheFlatAxesAreWholeAtTheirCorner) {
    WindowLabels = 1;
    Draw(LookFrom(Front, 3));
    WindowLabels = 0;
    EXPECT_EQ(Row(15, 16, 4), ".###");
    EXPECT_EQ(Row(15, 17, 4) + Row(15, 18, 4) + Row(15, 19, 4), ".#...#...#..");
}

// The texels that are cut out are less transparent than this glass.
TEST_F(Drawing, ShowsTransparentPolygonsUnderTexturedDecals) {
    TextureOn = TextureAvailable = 1;
    Texture* texture = AddSquares(905, true);
    AddFront(0, 1, 0, 2, AddGlow(Red));
    Polygon* pane = AddFront(0, 0, 0, 2, AddGlow(White, 0.2f));
    Cover(AddFront(0, 0, 0, 1, AddGlow(White), pane), texture, 1);
    Draw(LookFrom(Front, 3));
    EXPECT_NEAR(Pixel(125, 150) >> 8 & 0xFF, 51, 2);
    EXPECT_EQ(Row(180, 170, 1), "B");
    FreeTexture(texture);
}

TEST_F(Drawing, SelectsLevelsAndMembersInTheStructureEditor) {
    Material *near = AddGlow(Red), *far = AddGlow(Green);
    SelectedLod();
    AddFront(0, 0, 0, 1, near);
    AddSubObject("Other");
    AddFront(0, -1, 0, 1, far);
    View& view = LookFrom(Front, 3);
    Draw(view);
    EXPECT_GT(Count(Red), 0);
    EXPECT_EQ(Count(Green), 0) << "not in the level";
    LodBead* member = AddLodBead(SelectedSubObject());
    Draw(view);
    EXPECT_GT(Count(Green), 0);
    member->Shown = 0;
    HideSubObjects = 1;
    Draw(view);
    EXPECT_GT(Count(Green), 0) << "the editor is closed";
    StructureEditorIsOpen = 1;
    Draw(view);
    EXPECT_EQ(Count(Green), 0);
    SelectedLod() = nullptr;
    Draw(view);
    EXPECT_EQ(Count(Red), 0);
}

TEST_F(Drawing, LabelsViews) {
    AddCube(1, AddGlow(Red));
    for (const int labelled : {0, 1}) {
        WindowLabels = labelled;
        for (const int direction : {Top, Bottom, Left, Right, Front, Back, Direction3D}) {
            Draw(LookFrom(direction, 3));
            EXPECT_EQ(Count(White) > 40, labelled) << direction;
            if (labelled)
                Keep("label" + std::to_string(direction));
        }
    }
}

// Letters become narrower and names are cut off; the kind of view is seen always.
TEST_F(Drawing, LabelsEndWithinTheView) {
    WindowLabels = 1;
    std::string umlauts;
    for (int i = 0; i < 300; ++i)
        umlauts += "\xC3\xB6";
    for (const std::string& name : {std::string("a name that fits the view in narrow letters only"),
                                    std::string(300, 'm'), umlauts, std::string(300, '\xFF')}) {
        Free(ObjectName());
        ObjectName() = CopyOfString(name.c_str());
        std::vector<std::string> labels;
        for (const int direction : {Top, Front}) {
            Draw(LookFrom(direction, 3));
            std::string label;
            for (int y = Height - 32; y < Height - 8; ++y) {
                EXPECT_EQ(Row(Width - 8, y, 8), "........") << name;
                label += Row(0, y, Width);
            }
            labels.push_back(label);
            Keep("long label");
        }
        EXPECT_NE(labels[0], labels[1]) << name;
    }
}

/// Counts what is bound.
struct CountingTarget {
    void SetMaterial(const Material*) { ++Materials; }

    void SetTexture(const Texture*) { ++Textures; }

    void SetTextureGeneration(bool) { ++Generations; }

    void SetDepthWrites(bool) {}

    void SetColourWrites(bool) {}

    void Fill(const Polygon*, const Material*, bool) { ++Fills; }

    void Outline(const Polygon*) {}

    int Materials = 0, Textures = 0, Generations = 0, Fills = 0;
};

TEST_F(Drawing, BindsOnlyWhatDiffers) {
    Material* material = AddGlow(Red);
    Texture* texture = AddSquares(904, false);
    for (int i = 0; i < 6; ++i)
        Cover(AddFront(i, 0, 0, 0.5, material), texture, 1);
    CountingTarget target;
    PolygonDrawer<CountingTarget> drawer(PolygonForm::Textured, target);
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        drawer.Draw(polygon);
    EXPECT_EQ((std::array{target.Fills, target.Materials, target.Textures, target.Generations}),
              (std::array{6, 1, 1, 1}));
    FreeTexture(texture);
}

std::vector<std::string> Calls;

TEST_F(Drawing, DrawsOverlaysInTheirOrder) {
    RegisterOverlay({OverlayBand::Label, 0, [](View*) { Calls.push_back("label"); }});
    RegisterOverlay({OverlayBand::Model, QueryHighlightOrder, [](View*) { Calls.push_back("query"); }});
    RegisterOverlay({OverlayBand::BeforeModel, 0, [](View*) { Calls.push_back("before"); }});
    RegisterOverlay({OverlayBand::Model, NewSolidOrder, [](View*) { Calls.push_back("solid"); }});
    Calls.clear();
    Draw(LookFrom(Front, 3));
    EXPECT_EQ(Calls, (std::vector<std::string>{"solid", "query", "before", "label"}));
}

double PixelSize;

TEST_F(Drawing, DrawsWhatFacesTheScreenAtAPoint) {
    for (const int direction : {Front, Direction3D}) {
        View& view = LookFrom(direction, 3);
        Draw(view);
        const double point[3] = {0.5, 0.7, -0.2};
        DrawDeRotated(&view, point, [](double pixel) { PixelSize = pixel; });
        double eye[3];
        TransformPoint(point, view.Transform, eye);
        const double perPixel = (direction == Front ? 1 : eye[2]) / (view.Projection[0][0] * Width / 2);
        EXPECT_DOUBLE_EQ(PixelSize, perPixel);
    }
}

TEST_F(Drawing, ShowsModelsOfAnySize) {
    Material* material = AddGlow(Red);
    const auto showsAnything = [](double radius) {
        for (const int direction : {Top, Front, Direction3D}) {
            Draw(LookFrom(direction, radius));
            if (Count(Background) == static_cast<long>(Width) * Height)
                return false;
        }
        return true;
    };
    EXPECT_FALSE(showsAnything(ObjectRadius())) << "nothing is there";
    AddPoint(0, 0, 0);
    EXPECT_TRUE(showsAnything(ObjectRadius())) << "a point";
    AddFront(0, 0, 0, 1, material);
    EXPECT_TRUE(showsAnything(ObjectRadius())) << "a flat thing";
    AddTop(0, 0, 0, 10000, material);
    for (int i = 0; i < 10; ++i)
        AddTop(5000 + i * 0.02, 5000, 1, 0.005, AddGlow(Green));
    EXPECT_TRUE(showsAnything(ObjectRadius())) << "ten kilometres";
    // A centimetre fills half of the window when the view is zoomed in on it.
    View& view = LookFrom(Top, ObjectRadius());
    view.Zoom = ObjectRadius() / 0.01;
    view.ViewMatrix = TranslationMatrix(-5000, -5000, 0);
    MultMatrix(view.ViewMatrix, PitchMatrix(90), view.ViewMatrix);
    Draw(view);
    EXPECT_NEAR(static_cast<double>(Count(Green)), 150 * 150, 5 * 150);
    Keep("centimetre");
}

} // namespace
