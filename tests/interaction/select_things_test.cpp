#include "gooey/toolkit_test.h"
#include "interaction/quad_strips.h"
#include "interaction/selection_test.h"
#include "platform/events.h"
#include "platform/system.h"
#include "store/material_list.h"
#include "store/selection_lists.h"
#include "store/texture_list.h"
#include "views/default_views.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string>

// Clicks and drags in a window, with keys held, as scripts of events.

namespace {

struct Toolkit : ToolkitTest {
    using ToolkitTest::Open;
    using ToolkitTest::Play;
    using ToolkitTest::SetUp;
    using ToolkitTest::TearDown;

    void TestBody() override {}
};

class SelectThingsTest : public SelectionTest {
  protected:
    void SetUp() override {
        SelectionTest::SetUp();
        Windows.SetUp();
        ViewWindow = Toolkit::Open("View", 100, 100, Width, Height);
        ViewWindow->EventFn = [](int device, short value) {
            if (device == gl::LEFTMOUSE && value)
                SelectThings(&Shown, Kind);
        };
        ViewWindow->DrawFn = [] {};
        gl::mmode(gl::MVIEWING);
        Shown = FrontView();
        Kind = SelectKindPolygons;
    }

    void TearDown() override {
        Windows.TearDown();
        SelectionTest::TearDown();
    }

    static void Play(const std::string& script) { ASSERT_EQ(Toolkit::Play("in View\n" + script), 0); }

    /// Selected polygons by letter.
    std::string Selected() const {
        std::string letters;
        for (const auto& [letter, polygon] : Polygons)
            if (polygon->Selected)
                letters += letter;
        return letters;
    }

    static inline View Shown;
    static inline int Kind;
    Window* ViewWindow = nullptr;
    std::map<char, Polygon*> Polygons;

  private:
    Toolkit Windows;
};

TEST_F(SelectThingsTest, ClicksAndBoxesFollowTheModifierKeys) {
    // Three squares of 40 pixels in a row, from pixel 100, 160 and 220 on; rows 150 to 190. B is selected at first.
    for (const auto& [letter, left] : {std::pair{'A', -10.0}, {'B', -4.0}, {'C', 2.0}})
        Polygons[letter] = Upright(left, left + 4, 0, 4, 0);

    const struct {
        const char* Script;
        const char* Selected;
    } cases[] = {
        {"click left 120 170", "A"},
        {"click left 150 170", ""},
        {"move 120 170\npress left\nmove 121 171\nrelease left", "A"},
        {"hold LeftCtrl\nclick left 120 170\nlet LeftCtrl", "AB"},
        {"hold RightCtrl\nclick left 150 170\nlet RightCtrl", "B"},
        {"hold LeftShift\nclick left 120 170\nlet LeftShift", "AB"},
        {"hold RightShift\nclick left 180 170\nlet RightShift", ""},
        {"hold LeftAlt\nclick left 180 170\nlet LeftAlt", ""},
        {"hold RightAlt\nclick left 120 170\nlet RightAlt", "B"},
        {"hold LeftShift\nhold LeftAlt\nclick left 120 170\nlet LeftAlt\nlet LeftShift", "AB"},
        {"drag left 130 160 170 180", "AB"},
        {"drag left 170 180 130 160", "AB"},
        {"drag left 145 160 155 180", ""},
        {"drag left 110 160 115 165", "A"},
        {"drag left 139 120 141 122 ", ""},
        {"hold LeftShift\ndrag left 90 140 300 200\nlet LeftShift", "AC"},
        {"hold LeftAlt\ndrag left 90 140 300 200\nlet LeftAlt", ""},
        {"hold LeftCtrl\ndrag left 210 140 300 200\nlet LeftCtrl", "BC"},
        {"drag left 90 140 9000 9000", "ABC"},
    };

    for (const auto& row : cases) {
        SCOPED_TRACE(row.Script);
        DeselectAllPolygons();
        SetPolygonSelected(CurrentObject(), Polygons['B'], 1);
        CleanUpObject();
        Play(row.Script);
        EXPECT_EQ(Selected(), row.Selected);
        CleanUpObject();
        EXPECT_EQ(Collect(Along<&Polygon::NextSelected>(FirstSelectedPolygon())).size(), std::strlen(row.Selected));
    }
}

TEST_F(SelectThingsTest, TheBandStaysInItsRectangleAndIsSquareOnDemand) {
    static int square;
    ViewWindow->EventFn = [](int device, short value) {
        if (device == gl::LEFTMOUSE && value)
            DragBox(50, 40, 200, 100, square);
    };

    const struct {
        const char* Script;
        int Square, Left, Right, Bottom, Top;
    } cases[] = {
        {"drag left 100 60 180 110", 0, 100, 180, 60, 110}, {"drag left 180 110 100 60", 0, 100, 180, 60, 110},
        {"drag left 100 60 390 290", 0, 100, 249, 60, 139}, {"drag left 100 60 2 2", 0, 50, 100, 40, 60},
        {"drag left 100 60 180 110", 1, 100, 150, 60, 110}, {"drag left 100 100 60 130", 1, 70, 100, 100, 130},
    };

    for (const auto& row : cases) {
        SCOPED_TRACE(row.Script);
        square = row.Square;
        Play(row.Script);
        EXPECT_EQ(DragLeft, row.Left);
        EXPECT_EQ(DragRight, row.Right);
        EXPECT_EQ(DragBottom, row.Bottom);
        EXPECT_EQ(DragTop, row.Top);
    }
}

TEST_F(SelectThingsTest, VerticesAreClickedBoxedAndTakenAway) {
    Kind = SelectKindVertices;
    Polygon* square = Upright(0, 4, 0, 4, 0); // from pixel 200 to 240, rows 150 to 190
    const std::vector<Vertex*> corners = Corners(square);
    const auto selected = [&] {
        std::string digits;
        for (std::size_t i = 0; i < corners.size(); ++i)
            if (corners[i]->Selected)
                digits += std::to_string(i);
        return digits;
    };
    Play("click left 205 155");
    EXPECT_EQ(selected(), "0");
    Play("hold LeftCtrl\nclick left 238 185\nlet LeftCtrl");
    EXPECT_EQ(selected(), "02");
    Play("hold LeftShift\ndrag left 195 145 245 155\nlet LeftShift");
    EXPECT_EQ(selected(), "12");
    Play("hold LeftAlt\nclick left 238 185\nlet LeftAlt");
    EXPECT_EQ(selected(), "1");
    Play("drag left 195 145 245 195");
    EXPECT_EQ(selected(), "0123");

    ViewWindow->EventFn = [](int device, short value) {
        if (device == gl::LEFTMOUSE && value)
            DeselectVertices(&Shown);
    };
    Play("click left 205 155");
    EXPECT_EQ(selected(), "123");
    Play("drag left 195 185 245 195");
    EXPECT_EQ(selected(), "1");
    Play("click left 20 20");
    EXPECT_EQ(selected(), "1");
}

TEST_F(SelectThingsTest, BranchesAreSelectedWithAllTheirPolygonsOnce) {
    Kind = SelectKindScene;
    Upright(0, 2, 0, 4, 0);
    Upright(2, 4, 0, 4, 0);
    ObjectIsolated = 0;
    Branch* branches[2];
    for (int i = 0; i < 2; ++i) {
        branches[i] = AddBranch(Scene(), BranchAsChild);
        branches[i]->Object = CurrentObject();
        branches[i]->Transform = TranslationMatrix(-10 + 6 * i, 0, 0); // from pixel 100 and 160 on
    }
    SceneChangedSize = 1;
    Play("click left 110 170");
    EXPECT_EQ(branches[0]->Selected, 1);
    EXPECT_EQ(branches[1]->Selected, 0);
    EXPECT_EQ(NoSceneSelection, 0);
    Play("hold LeftShift\ndrag left 90 140 300 200\nlet LeftShift");
    EXPECT_EQ(branches[0]->Selected, 0);
    EXPECT_EQ(branches[1]->Selected, 1);
    EXPECT_EQ(NoSceneSelection, 0);
    Play("click left 20 20");
    EXPECT_EQ(branches[1]->Selected, 0);
    EXPECT_EQ(NoSceneSelection, 1);
}

TEST_F(SelectThingsTest, RegionsAreWhatHangsTogetherOrIsShadedAsOne) {
    // Four squares in a row that share corners, from pixel 100 on, each 40 wide, then one apart.
    std::vector<Vertex*> low, high;
    for (int i = 0; i <= 4; ++i) {
        low.push_back(AddVertex(-10 + 4 * i, 0, 0));
        high.push_back(AddVertex(-10 + 4 * i, 0, 4));
    }
    for (int i = 0; i < 4; ++i) {
        Polygon* polygon = PolygonOn({low[i], low[i + 1], high[i + 1], high[i]});
        Polygons[static_cast<char>('A' + i)] = polygon;
        polygon->Lighting = LightingSmooth;
        polygon->LightGroup = i < 2 ? 0 : 1;
    }
    Polygons['D']->Lighting = LightingFaceted;
    Polygons['E'] = Upright(8, 10, 0, 4, 0);
    Play("hold q\nclick left 110 170\nlet q");
    EXPECT_EQ(Selected(), "ABCD");
    Play("hold Tab\nclick left 110 170\nlet Tab");
    EXPECT_EQ(Selected(), "AB");
    Play("hold Tab\nclick left 190 170\nlet Tab");
    EXPECT_EQ(Selected(), "C");
    Play("hold LeftShift\nhold q\nclick left 110 170\nlet q\nlet LeftShift");
    EXPECT_EQ(Selected(), "ABD");

    // What is on no level is not reached, nor what lies behind it.
    SubObject* elsewhere = AddSubObject("Elsewhere");
    UnlinkPolygon(Polygons['B']);
    Polygons['B']->SubObject = elsewhere;
    LinkPolygon(Polygons['B'], nullptr);
    Play("hold q\nclick left 110 170\nlet q");
    EXPECT_EQ(Selected(), "A");
}

TEST_F(SelectThingsTest, MasksLeaveOtherMaterialsAndTexturesAlone) {
    Polygons['A'] = Upright(-10, -6, 0, 4, 0);
    Polygons['B'] = Upright(-4, 0, 0, 4, 0);
    Material* red = NewMaterial();
    Material* blue = NewMaterial();
    Texture* brick = NewTexture();
    Polygons['A']->Material = red;
    Polygons['B']->Material = red;
    Polygons['B']->TextureMaterial = blue;
    Polygons['B']->Texture = brick;

    const struct {
        int MaterialMask, TextureMask;
        Material* Shade;
        Texture* Image;
        int TextureOn;
        const char* Selected;
    } cases[] = {
        {1, 0, red, nullptr, 1, "A"}, {1, 0, red, nullptr, 0, "AB"}, {1, 0, blue, nullptr, 1, "B"},
        {0, 1, red, brick, 1, "B"},   {0, 1, red, nullptr, 1, "A"},  {1, 1, red, brick, 1, ""},
        {1, 1, blue, brick, 1, "B"},
    };

    for (const auto& row : cases) {
        MaskPolygonSelections = row.MaterialMask;
        MaskTextureSelections = row.TextureMask;
        CurrentMaterial() = row.Shade;
        CurrentTexture() = row.Image;
        TextureOn = row.TextureOn;
        Play("drag left 90 140 300 200");
        EXPECT_EQ(Selected(), row.Selected) << &row - cases;
    }
    Play("click left 120 170");
    EXPECT_EQ(Selected(), "") << "a click clears first, whatever it may select";
    CurrentMaterial() = nullptr;
    CurrentTexture() = nullptr;
    for (Polygon* polygon : EveryPolygon(CurrentObject())) {
        polygon->Material = polygon->TextureMaterial = nullptr;
        polygon->Texture = nullptr;
    }
    FreeMaterial(red);
    FreeMaterial(blue);
    FreeTexture(brick);
}

/// A grid of unit squares seen from the top, ten pixels each, with its corner at pixel 200, 150.
class QstripTest : public SelectThingsTest {
  protected:
    static constexpr int Columns = 5, Rows = 4;

    void SetUp() override {
        SelectThingsTest::SetUp();
        AddGrid(Rows, Columns);
        CleanUpObject();
        Shown.ViewMatrix = PitchMatrix(90);
        Shown.Direction = 0;
    }

    /// The square in a column and a row.
    static Polygon* At(int column, int row) {
        const View before = Shown;
        return PickAt(before, 200 + 10 * column + 5, 150 + 10 * row + 5);
    }

    static void StripClick(int column, int row) {
        Play("hold LeftShift\nhold LeftCtrl\nclick left " + std::to_string(205 + 10 * column) + " " +
             std::to_string(155 + 10 * row) + "\nlet LeftCtrl\nlet LeftShift");
    }

    static std::vector<Polygon*> Strip() {
        return Collect(Along<&Polygon::NextSelected>(CurrentObject()->FirstSelectedPolygon));
    }
};

TEST_F(QstripTest, RunsFromTheSelectedSquareOverOppositeEdges) {
    StripClick(1, 1);
    EXPECT_EQ(At(1, 1)->Selected, 1) << "with nothing selected a click selects";
    StripClick(4, 1);
    EXPECT_EQ(Strip(), (std::vector<Polygon*>{At(1, 1), At(2, 1), At(3, 1), At(4, 1)}));
    EXPECT_EQ(PolygonSelectionChanged(), 0);
    EXPECT_EQ(LastSelectionWasQstrip, 1);

    static std::vector<std::vector<Vertex*>> quads;
    quads.clear();
    FeedBackQstrip(
        [](PolygonBead* b0, PolygonBead* b1, PolygonBead* b2, PolygonBead* b3, void* argument) {
            EXPECT_EQ(argument, &quads);
            quads.push_back({b0->Vertex, b1->Vertex, b2->Vertex, b3->Vertex});
        },
        &quads);
    ASSERT_EQ(quads.size(), 4U);
    for (std::size_t i = 1; i < quads.size(); ++i) {
        EXPECT_EQ(quads[i][0], quads[i - 1][3]);
        EXPECT_EQ(quads[i][1], quads[i - 1][2]);
    }

    // The strip stays the start of the next one, and only one way leads there: the same again.
    StripClick(4, 1);
    EXPECT_EQ(Strip().size(), 4U);
    StripClick(1, 3);
    EXPECT_EQ(Strip(), (std::vector<Polygon*>{At(1, 1), At(1, 2), At(1, 3)}));
    const long rings = gl::RingsHeard();
    StripClick(3, 3);
    EXPECT_EQ(gl::RingsHeard(), rings + 1);
    EXPECT_EQ(At(1, 1)->Selected, 1);
    CleanUpObject();
    EXPECT_EQ(Strip(), std::vector<Polygon*>{At(1, 1)}) << "without a strip the first alone stays selected";
}

TEST_F(QstripTest, TriesTheNextEdgeWithEachClickOnTheSameTarget) {
    // A ring of eight squares upright around a column: two ways lead to the far side.
    ResetStorage();
    std::vector<Vertex*> low, high;
    for (int i = 0; i < 8; ++i) {
        const double angle = i * 45 * DegreesToRadians;
        low.push_back(AddVertex(10 * std::cos(angle), 10 * std::sin(angle), 0));
        high.push_back(AddVertex(10 * std::cos(angle), 10 * std::sin(angle), 5));
    }
    std::vector<Polygon*> ring;
    for (int i = 0; i < 8; ++i)
        ring.push_back(PolygonOn({low[i], low[(i + 1) % 8], high[(i + 1) % 8], high[i]}));
    CleanUpObject();
    SetPolygonSelected(CurrentObject(), ring[0], 1);
    const std::vector<Polygon*> forwards(ring.begin(), ring.begin() + 4);
    const std::vector<Polygon*> backwards{ring[0], ring[7], ring[6], ring[5], ring[4], ring[3]};
    std::vector<std::vector<Polygon*>> strips;
    for (int click = 0; click < 4; ++click) {
        SelectQstrip(ring[3]);
        strips.push_back(Strip());
    }
    EXPECT_NE(strips[0], strips[1]);
    for (const auto& strip : strips)
        EXPECT_TRUE(strip == forwards || strip == backwards);
    EXPECT_EQ(strips[0], strips[2]);
    EXPECT_EQ(strips[1], strips[3]);
}

TEST_F(QstripTest, NeedsOneQuadrilateralAndAnother) {
    Polygon* triangle = AddFace({{-5, 0, 0}, {-1, 0, 0}, {-5, 4, 0}});
    CleanUpObject();
    const auto told = [this] {
        for (Window* window = WindowList; window; window = window->Next)
            if (std::strcmp(window->Title, "View") != 0) {
                ShutWindow(window);
                CurrentWindow = ViewWindow;
                return true;
            }
        return false;
    };
    SetPolygonSelected(CurrentObject(), triangle, 1);
    SelectQstrip(At(0, 0));
    EXPECT_TRUE(told());
    EXPECT_EQ(triangle->Selected, 1);
    DeselectAllPolygons();
    SetPolygonSelected(CurrentObject(), At(0, 0), 1);
    SelectQstrip(triangle);
    EXPECT_TRUE(told());
    const long rings = gl::RingsHeard();
    SelectQstrip(nullptr);
    EXPECT_EQ(gl::RingsHeard(), rings + 1);
    SetPolygonSelected(CurrentObject(), At(1, 0), 1);
    SelectQstrip(At(4, 0));
    EXPECT_TRUE(told()) << "two are selected";
    EXPECT_EQ(At(4, 0)->Selected, 0);
}

TEST_F(QstripTest, ManySquaresOnOneAnotherNeedNoMoreTimeThanOnce) {
    // The strip leads nowhere: with two squares at every step there would be 2^60 ways to find that out.
    ResetStorage();
    std::vector<Vertex*> low, high;
    for (int i = 0; i <= 60; ++i) {
        low.push_back(AddVertex(i, 0, 0));
        high.push_back(AddVertex(i, 1, 0));
    }
    for (int i = 0; i < 60; ++i)
        for (int copy = 0; copy < 2; ++copy)
            PolygonOn({low[i], low[i + 1], high[i + 1], high[i]});
    Polygon* apart = AddFace({{0, 5, 0}, {1, 5, 0}, {1, 6, 0}, {0, 6, 0}});
    CleanUpObject();
    Polygon* first = low[0]->Beads->Polygon;
    SetPolygonSelected(CurrentObject(), first, 1);
    SelectQstrip(apart);
    EXPECT_EQ(apart->Selected, 0);
    EXPECT_EQ(first->Selected, 1);
}

TEST_F(SelectThingsTest, SetsFollowTheLevelTheMasksAndEachOther) {
    Polygons['A'] = Upright(-10, -6, 0, 4, 0);
    Polygons['B'] = Upright(-4, 0, 0, 4, 0, nullptr);
    Polygons['S'] = Upright(-3, -1, 1, 3, 0, Polygons['B']);
    SelectedLod();
    SubObject* elsewhere = AddSubObject("Elsewhere"); // on no level
    Polygons['E'] = Upright(8, 10, 0, 4, 0);
    Vertex* loose = AddVertex(0, 0, 20);
    CleanUpObject();

    SelectAllPolygons();
    EXPECT_EQ(Selected(), "AB") << "top-level polygons of the level";
    SelectVerticesFromPolygons();
    CleanUpObject();
    EXPECT_EQ(Collect(Along<&Vertex::NextInSubset>(FirstSelectedVertex())).size(), 8U);
    DeselectAllPolygons();
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(Corners(Polygons['A'])[0]->Selected, 1);
    SelectPolygonsFromVertices();
    EXPECT_EQ(Selected(), "AB");
    SelectSubObject(elsewhere);
    EXPECT_EQ(Selected(), "E");
    EXPECT_EQ(SelectedSubObject(), elsewhere);
    for (const PolygonBead* bead : EveryBead(Polygons['E']))
        SetVertexSelected(CurrentObject(), bead->Vertex, 1);
    DeselectAllPolygons();
    SelectPolygonsFromVertices();
    EXPECT_EQ(Selected(), "AB") << "not of sub-objects that are not seen";

    SelectAllVertices();
    CleanUpObject();
    EXPECT_EQ(Collect(Along<&Vertex::NextInSubset>(FirstSelectedVertex())).size(), 9U);
    EXPECT_EQ(loose->Selected, 1);
    DeselectEverything();
    CleanUpObject();
    EXPECT_EQ(FirstSelectedVertex(), nullptr);
    EXPECT_EQ(FirstSelectedPolygon(), nullptr);

    // In scene mode every object is deselected.
    SelectAllPolygons();
    AddObject("Second", 0, 0);
    Polygon* other = Upright(0, 1, 0, 1, 0);
    SelectedLod();
    SetPolygonSelected(CurrentObject(), other, 1);
    DeselectAllPolygons();
    EXPECT_EQ(other->Selected, 0);
    EXPECT_EQ(Selected(), "AB");
    ObjectIsolated = 0;
    DeselectAllPolygons();
    EXPECT_EQ(Selected(), "");
}

} // namespace
