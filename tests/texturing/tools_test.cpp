#include "interaction/views_test.h"

#include "base/memory.h"
#include "gooey/messages.h"
#include "interaction/grid_gizmo.h"
#include "interaction/picking.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/pools.h"
#include "store/texture_list.h"
#include "textures/texture_changes.h"
#include "texturing/cylinder.h"
#include "texturing/manual_placement.h"
#include "texturing/mappings.h"
#include "texturing/painting.h"
#include "texturing/projections.h"
#include "texturing/strip_texture.h"
#include "texturing/texture_application.h"
#include "texturing/three_points.h"
#include "views/display_flags.h"

#include <cmath>

namespace {

class TextureTools : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        Grey = NewTextureOf("grey.rgb", 1);
        Wide = NewTextureOf("wide.rgb", 2);
        CurrentTexture() = Grey;
        TextureOn = 0;
        Show(0);
        AddSquare(2);
        Select(AddSquare(0));
    }

    void TearDown() override {
        for (Window* window : {ManualTexture, StripTexture})
            if (window)
                CloseWindow(window);
        ViewsTest::TearDown();
    }

    static Texture* NewTextureOf(const char* name, float aspect) {
        Texture* texture = NewTexture();
        texture->FileName = CopyOfString(name);
        texture->Aspect = aspect;
        AddTextureToList(texture);
        return texture;
    }

    /// Two metres wide, on the ground from x on; neighbours share vertices.
    static Polygon* AddSquare(double x) {
        const auto at = [](double px, double py) {
            for (Vertex* vertex : EveryVertex(CurrentObject()))
                if (vertex->Position[0] == px && vertex->Position[1] == py)
                    return vertex;
            return AddVertex(px, py, 0);
        };
        PolygonBead* beads = nullptr;
        for (Vertex* vertex : {at(x, 0), at(x + 2, 0), at(x + 2, 2), at(x, 2)})
            AddPolygonBead(beads, vertex);
        return AddPolygon(beads, nullptr);
    }

    static void Select(Polygon* polygon) {
        DeselectEverything();
        SetPolygonSelected(CurrentObject(), polygon, 1);
        CleanUpObject();
    }

    static std::string Ground(double x, double y) {
        const WindowScope scope(Viewport[0]);
        const double place[3] = {x, y, 0};
        double pixel[3] = {};
        Calc2dOf(&Shown(), place, pixel);
        return At(static_cast<int>(std::lround(pixel[0])), static_cast<int>(std::lround(pixel[1])));
    }

    /// The one at the origin and its neighbour, as they are now.
    static Polygon* SquareAt(double x) {
        for (Polygon* polygon : EveryPolygon(CurrentObject()))
            if (polygon->Beads->Vertex->Position[0] == x)
                return polygon;
        return nullptr;
    }

    static Polygon* First() { return SquareAt(0); }

    static Polygon* Next() { return SquareAt(2); }

    static std::vector<float> Coordinates() {
        std::vector<float> all;
        for (const PolygonBead* bead : EveryBead(First()))
            all.insert(all.end(), bead->TexCoord, bead->TexCoord + 2);
        return all;
    }

    static void ExpectCoordinates(const std::vector<double>& expected) {
        const std::vector<float> found = Coordinates();
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_NEAR(found[i], expected[i], 1e-5) << "number " << i;
    }

    static bool WasTold() {
        if (!MessageWindow)
            return false;
        Play(std::string("in \"") + MessageWindow->Title + "\"\nbutton \"Continue\"");
        return true;
    }

    Texture *Grey, *Wide;
};

TEST_F(TextureTools, EachFollowsTheChoiceAndIsOneUndoStep) {
    struct Case {
        const char* Name;
        void (*Start)();
        bool Selects; // everything again at the end
    };

    const Case cases[] = {{"three points", ApplyTexture3Point, true}, {"cylinder", ApplyTextureCylinder, true},
                          {"planar", ProjectPlanar, false},           {"cubic", ProjectCubic, false},
                          {"painting", StartPainting, true},          {"manually", ApplyTextureManually, false},
                          {"strip", ApplyTextureToQstrip, true}};

    enum End { Done, Cancel, UndoKey, Ends };

    for (const Case& tool : cases)
        for (int end = 0; end < Ends; ++end) {
            SCOPED_TRACE(std::string(tool.Name) + ", end " + std::to_string(end));
            if (end == UndoKey && (tool.Start == ProjectPlanar || tool.Start == ProjectCubic))
                continue;
            CurrentTexture() = Grey;
            TextureOn = 0;
            Select(First());
            if (tool.Start == ApplyTextureToQstrip)
                SelectQstrip(Next());
            tool.Start();
            Settle();
            ASSERT_TRUE(SystemBusy());
            EXPECT_TRUE(ApplyingTexture && TextureOn);
            EXPECT_EQ(First()->Texture, Grey);
            CurrentTexture() = Wide;
            TextureAppChange();
            EXPECT_EQ(First()->Texture, Wide);
            EXPECT_EQ(First()->TextureMaterial, CurrentMaterial());
            if (end == UndoKey)
                InView("move 20 20\nkey Ctrl+Z");
            else
                Button(end == Done ? "Done" : "Cancel");
            Settle();
            EXPECT_FALSE(SystemBusy() || ApplyingTexture || AppChangeCallback || ManualTexture || StripTexture);
            CheckIntegrity();
            CleanUpObject();
            if (end == Done) {
                EXPECT_EQ(First()->Texture, Wide);
                EXPECT_EQ(FirstSelectedPolygon() == nullptr, tool.Selects);
                Undo();
            }
            EXPECT_EQ(First()->Texture, nullptr);
        }
}

TEST_F(TextureTools, TheFrameOfThreePointsIsDragged) {
    const double g = OneGridSquare();
    GridSnap = 1;
    ApplyTexture3Point();
    Settle();
    EXPECT_TRUE(GridGizmoDisabled);
    ExpectCoordinates({0, 0, 2 / g, 0, 2 / g, 2 / g, 0, 2 / g});
    InView("drag left" + Ground(0, 0) + Ground(g, 0));
    ExpectCoordinates({-1, 0, 2 / g - 1, 0, 2 / g - 1, 2 / g, -1, 2 / g});
    // The second point is now two squares from the origin: dragged away by one, the image gets twice as wide.
    InView("drag left" + Ground(2 * g, 0) + Ground(3 * g, 0));
    ExpectCoordinates({-0.5, 0, 1 / g - 0.5, 0, 1 / g - 0.5, 2 / g, -0.5, 2 / g});
    const std::vector<float> before = Coordinates();
    InView("move" + Ground(g, g) + "\npress left\nmove" + Ground(0, 3 * g) + "\nkey Escape\nrelease left");
    EXPECT_EQ(Coordinates(), before);
    // Far from every point, and into one line with the others, nothing changes.
    InView("drag left" + Ground(-2 * g, -2 * g) + Ground(0, 0));
    EXPECT_EQ(Coordinates(), before);
    Button("Done");
    EXPECT_FALSE(GridGizmoDisabled);
}

TEST_F(TextureTools, TheCylinderTakesPositiveNumbersOnly) {
    ApplyTextureCylinder();
    Settle();
    // The middle of the square is on the axis: its corners lie at odd multiples of 45 degrees.
    ExpectCoordinates({5, 0, -1, 0, 1, 0, 3, 0});
    Play("in \"Loading file...\"\nfield \"Repeat (around cylinder)\" \"4\"\nfield \"Stretch (upwards)\" \"0\"");
    ExpectCoordinates({2.5, 0, -0.5, 0, 0.5, 0, 1.5, 0});
    Button("Cancel");
}

TEST_F(TextureTools, ProjectionsFollowTheGizmoAndTheProportions) {
    const double g = OneGridSquare();
    ProjectPlanar();
    Settle();
    ExpectCoordinates({0, 0, 2 / g, 0, 2 / g, 2 / g, 0, 2 / g});
    CurrentTexture() = Wide;
    TextureAppChange();
    ExpectCoordinates({0, 0, 2 / g, 0, 2 / g, 4 / g, 0, 4 / g});
    Play("in \"Position gizmo\"\nbutton \"Translate\"\nfield \"X:\" \"" + std::to_string(g) + "\"");
    ExpectCoordinates({-1, 0, 2 / g - 1, 0, 2 / g - 1, 4 / g, -1, 4 / g});
    Button("Done");
}

TEST_F(TextureTools, PaintingTurnsAndWantsOneQuadrilateral) {
    StartPainting();
    Settle();
    Button("Rotate");
    ExpectCoordinates({0.99, 0, 0.99, 0.99, 0, 0.99, 0, 0});
    Button("Done");
    Select(First());
    SetPolygonSelected(CurrentObject(), Next(), 1);
    StartPainting();
    EXPECT_TRUE(WasTold());
    EXPECT_FALSE(SystemBusy());
}

TEST_F(TextureTools, CornersArePlacedByHand) {
    ApplyTextureManually();
    Settle();
    const std::vector<float> start = Coordinates();
    EXPECT_EQ(std::count(start.begin(), start.end(), 0), 4);
    EXPECT_EQ(std::count(start.begin(), start.end(), 1), 4);
    const auto inWindow = [](const std::string& script) { Play("in \"Adjust texture\"\n" + script); };
    inWindow("field \"Texture (x,y) =\" \"0.5 , 0.25\"");
    EXPECT_FLOAT_EQ(First()->Beads->TexCoord[0], 0.5F);
    EXPECT_FLOAT_EQ(First()->Beads->TexCoord[1], 0.25F);
    inWindow("field \"Texture (x,y) =\" \"0.7\"");
    EXPECT_FLOAT_EQ(First()->Beads->TexCoord[0], 0.5F);
    inWindow("button \"Reset to start\"");
    EXPECT_EQ(Coordinates(), start);
    inWindow("click left \"item:point 1\"\npress left\nmove 200 200\nkey Escape\nrelease left");
    EXPECT_EQ(Coordinates(), start);
    inWindow("drag left \"item:point 1\" 200 200");
    EXPECT_NE(Coordinates(), start);
    // What is being placed goes away.
    DeletePolygon(First(), 0);
    CleanUpObject();
    inWindow(
        "drag left 200 200 220 220\nbutton \"Fit to window\"\nbutton \"Reset to start\"\nfield \"Texture (x,y) =\" "
        "\"1 , 1\"");
    CurrentTexture() = Wide;
    TextureAppChange();
    EXPECT_EQ(Next()->Texture, nullptr);
    Button("Done");
    CheckIntegrity();
}

TEST_F(TextureTools, OnlyWhatHasCoordinatesIsAdjusted) {
    AdjustTexture();
    EXPECT_TRUE(WasTold());
    ApplyEnvironmentMap();
    EXPECT_EQ(First()->Flags, PolygonGeneratesTexture);
    AdjustTexture();
    EXPECT_TRUE(WasTold());
    EXPECT_FALSE(SystemBusy());

    StartPainting();
    Button("Done");
    Select(First());
    First()->Flags = 0;
    CurrentTexture() = Wide;
    AdjustTexture();
    Settle();
    EXPECT_EQ(CurrentTexture(), Grey);
    // A click on another polygon goes on with that one, if it has a texture.
    Next()->Texture = Wide;
    Play("in \"Adjust texture\"\nplace 700 10");
    InView("click left" + Ground(3, 1));
    EXPECT_EQ(FirstSelectedPolygon(), Next());
    EXPECT_EQ(CurrentTexture(), Wide);
    Button("Cancel");
    EXPECT_EQ(First()->Texture, Grey);
}

} // namespace
