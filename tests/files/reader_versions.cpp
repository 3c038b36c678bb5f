#include "reading.h"

#include "store/clean_up.h"

#include <array>
#include <cmath>
#include <filesystem>

namespace {

using Point = std::array<double, 3>;

Point PositionOf(const Vertex* vertex) {
    return {vertex->Position[0], vertex->Position[1], vertex->Position[2]};
}

/// The positions of a polygon's corners in ring order.
std::vector<Point> CornersOf(const Polygon* polygon) {
    std::vector<Point> corners;
    for (const PolygonBead* bead : EveryBead(polygon))
        corners.push_back(PositionOf(bead->Vertex));
    return corners;
}

/// A model of any version from 2.00 on: two materials of which the second is used, one triangle with a normal, and a
/// scene with one branch that moves the object by (1, 2, 3).
ModelBytes ModelOfVersion(const char* version) {
    const double number = std::stod(version);
    const auto materialNumber = [&](ModelBytes& bytes, int value) -> ModelBytes& {
        return number < 3.0 ? bytes.Byte(value) : bytes.Short(value);
    };
    ModelBytes bytes(version);
    bytes.Byte(10);
    for (int i = 0; i < 2; ++i) {
        bytes.Byte(11);
        number < 3.02 ? bytes.Byte(i + 3) : bytes.Int(i + 3);
        bytes.Byte(18).String(i ? "used" : "unused").End();
    }
    bytes.End();
    bytes.Byte(40).String("model").Byte(44).Int(7);
    bytes.Vertices({0, 0, 0, 1, 2, 3, 4, 5, 7});
    bytes.Byte(41).String("part").Byte(30).Byte(31);
    materialNumber(bytes, 4).Byte(32).Byte(1).Byte(33).Floats({1, 2, 3});
    bytes.Corner(0).Corner(1).Corner(2).End().End();
    bytes.Byte(61).Count(2).Raw("xx"); // unknown inside an object
    bytes.End();
    bytes.Byte(50).String("place").Byte(53).Int(7).Byte(55);
    bytes.Floats({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}).Byte(51);
    return bytes.End();
}

class Versions : public FilesTest {};

TEST_F(Versions, EachIsReadWithItsOwnWidthsAndAxes) {
    struct Case {
        const char* Version;
        bool DropsUnused;
        bool OldAxes;
    };

    const Case cases[] = {{"2.00", true, true},   {"2.50", true, true},   {"2.99", true, true},
                          {"3.00", false, true},  {"3.01", false, false}, {"3.02", false, false},
                          {"3.04", false, false}, {"3.05", false, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Version);
        ASSERT_TRUE(ReadQuietly(ModelOfVersion(c.Version))) << Ferr[FileErrorNumber];
        EXPECT_NE(Warned, "");
        EXPECT_TRUE(InformationLost);

        const auto materials = ListOf<&Material::Next>(FirstMaterial());
        ASSERT_EQ(materials.size(), c.DropsUnused ? 1U : 2U);
        EXPECT_STREQ(materials.back()->Name, "used");
        EXPECT_EQ(CurrentMaterial(), materials.front());

        const Polygon* polygon = FirstPolygon();
        ASSERT_TRUE(polygon);
        EXPECT_EQ(polygon->Material, materials.back());
        const Point turned = {1, -3, 2}, same = {1, 2, 3};
        EXPECT_EQ(CornersOf(polygon)[1], c.OldAxes ? turned : same);
        EXPECT_EQ((Point{polygon->Normal[0], polygon->Normal[1], polygon->Normal[2]}), c.OldAxes ? turned : same);

        const Branch* branch = Scene()->FirstChild;
        ASSERT_TRUE(branch);
        EXPECT_EQ(branch->Object, CurrentObject());
        const Matrix& m = branch->Transform;
        EXPECT_EQ((Point{m[3][0], m[3][1], m[3][2]}), c.OldAxes ? turned : same);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                EXPECT_EQ(m[i][j], i == j) << i << j; // turning on both sides leaves the identity
    }
}

TEST_F(Versions, TheHeaderLineIsTakenAsLooselyAsItEverWas) {
    for (const char* line : {"Compatibility: 3.05\n", "Compatibility:3.05\n", "Compatibility: \t +3.059 and more\n"}) {
        SCOPED_TRACE(line);
        EXPECT_TRUE(ReadQuietly(ModelBytes().Raw(line).Byte(1).End()));
        EXPECT_EQ(FileVersion, 305);
    }
    const std::string longest = "Compatibility: 2.00" + std::string(180, ' '); // 199 bytes are the whole line
    EXPECT_TRUE(ReadQuietly(ModelBytes().Raw(longest).Byte(1).End()));
    EXPECT_EQ(FileVersion, 200);
}

TEST_F(Versions, OldMatricesAreTurnedOnBothSides) {
    ModelBytes bytes("3.00");
    bytes.Byte(70).Int(768).Byte(73).Floats({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    bytes.Byte(77).Floats({1, 2, 3}).Byte(76).Floats({2.5}).End().End();
    ASSERT_TRUE(ReadQuietly(bytes));
    const Matrix expected = {{{1, -3, 2, 4}, {-9, 11, -10, 8}, {5, -7, 6, 12}, {13, -15, 14, 16}}};
    EXPECT_EQ(SceneView[0].ViewMatrix, expected);
    EXPECT_EQ(SceneView[0].Centre[1], 2); // points and zoom keep their axes
    EXPECT_EQ(SceneView[0].Zoom, 2.5);
}

TEST_F(Versions, CornersWithPositionsOfTheirOwn) {
    for (const bool oldAxes : {true, false}) {
        ModelBytes bytes(oldAxes ? "3.00" : "3.02");
        bytes.Byte(10).Byte(11);
        oldAxes ? bytes.Byte(0) : bytes.Int(0);
        bytes.End().End();
        bytes.Byte(40).String("o").Byte(41).String("s").Byte(30).Byte(31).Short(0);
        for (int i = 0; i < 3; ++i)
            bytes.Byte(20).Byte(22).Floats({i * 1.0, i * i * 2.0, 3}).Byte(24).Floats({1, 2, 3}).Byte(25).Int(9).End();
        bytes.End().End().End().End();
        ASSERT_TRUE(ReadQuietly(bytes));
        EXPECT_EQ(CornersOf(FirstPolygon())[2], oldAxes ? (Point{2, -3, 8}) : (Point{2, 8, 3}));
        EXPECT_EQ(FirstPolygon()->Beads->Normal[1], oldAxes ? -3 : 2);
        EXPECT_EQ(ListOf<&Vertex::Next>(FirstVertex()).size(), 3U);
    }
}

TEST_F(Versions, VertexSectionsInsideSubObjectsStartTheNumbersAfresh) {
    ModelBytes bytes("3.05");
    bytes.Materials({0}).Byte(40).String("o").Vertices({0, 0, 0, 1, 0, 0, 0, 1, 0, 5, 5, 5});
    bytes.Byte(41).String("a").OpenPolygon({0, 1, 2}).End().End();
    bytes.Byte(41).String("b").Vertices({0, 0, 9, 1, 0, 9, 0, 1, 9}).OpenPolygon({0, 1, 2}).End().End();
    bytes.Byte(41).String("c").OpenPolygon({2, 1, 0}).End().End();
    bytes.End().End();
    ASSERT_TRUE(ReadQuietly(bytes));
    EXPECT_EQ(CornersOf(SubObjectNamed("a")->FirstPolygon)[0][2], 0);
    EXPECT_EQ(CornersOf(SubObjectNamed("b")->FirstPolygon)[0][2], 9);
    EXPECT_EQ(CornersOf(SubObjectNamed("c")->FirstPolygon)[2][2], 9);
}

TEST_F(Versions, ListsComeOutInTheFilesOrderOrSorted) {
    ModelBytes bytes("3.05");
    bytes.Materials({0});
    for (const char* name : {"b", "C", "a"})
        bytes.Byte(40).String(name).Byte(44).Int(name[0]).End();
    bytes.Byte(40).String("d").Byte(44).Int(-5).Vertices({0, 0, 0, 1, 0, 0, 0, 1, 0, 7, 7, 7});
    bytes.Byte(41).String("y").OpenPolygon({0, 1, 2}).Byte(37).Int(1).End();
    bytes.OpenPolygon({0, 2, 1}).Byte(37).Int(2).OpenPolygon({0, 1, 2}).Byte(37).Int(3).End();
    bytes.OpenPolygon({0, 1, 2}).Byte(37).Int(4).End().End().End();
    bytes.Byte(41).String("x").End();
    bytes.Byte(42).String("far").Byte(43).Floats({-200}).Byte(41).String("x").End();
    bytes.Byte(42).String("near").Byte(43).Floats({10}).Byte(41).String("y").End();
    bytes.End().Byte(60).Byte(3).Count(4).Int(-5).End();
    ASSERT_TRUE(ReadQuietly(bytes));

    std::string objects;
    for (const Object* object : EveryObject(*CurrentFile))
        objects += object->Name;
    EXPECT_EQ(objects, "abCd");
    EXPECT_STREQ(CurrentObject()->Name, "d");

    std::string subObjects, groups, siblings, children;
    for (const SubObject* subObject : EverySubObject(CurrentObject()))
        subObjects += subObject->Name;
    EXPECT_EQ(subObjects, "xy");
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        groups += std::to_string(polygon->LightGroup);
    EXPECT_EQ(groups, "1234");
    for (const Polygon* polygon : EveryTopPolygon(SubObjectNamed("y")))
        siblings += std::to_string(polygon->LightGroup);
    EXPECT_EQ(siblings, "12");
    for (const Polygon* child : EveryChild(SubObjectNamed("y")->FirstPolygon->NextSibling)) {
        children += std::to_string(child->LightGroup);
        EXPECT_EQ(child->Parent, SubObjectNamed("y")->FirstPolygon->NextSibling);
        EXPECT_EQ(child->SubObject, SubObjectNamed("y"));
    }
    EXPECT_EQ(children, "34");
    EXPECT_EQ(FirstVertex()->Position[0], 0);

    const auto lods = ListOf<&Lod::Next>(FirstLod());
    ASSERT_EQ(lods.size(), 2U);
    EXPECT_STREQ(lods[0]->Name, "near");
    EXPECT_EQ(lods[1]->Distance, 200);
    EXPECT_EQ(SelectedLod(), lods[0]);
    EXPECT_STREQ(SelectedSubObject()->Name, "y") << "what is made next is to be seen";
    EXPECT_FALSE(ConnectionsOK());
    EXPECT_TRUE(WorkSaved);
}

TEST_F(Versions, LevelsNameTheirMembersByNumberOrName) {
    ModelBytes bytes("3.05");
    bytes.Byte(40).String("o");
    bytes.Byte(41).String("a").Byte(45).Int(5).End().Byte(41).String("b").Byte(45).Int(9).End();
    bytes.Byte(42).String("l").Byte(49).Int(0).Byte(41).String("a").Byte(45).Int(9).Byte(49).Int(0).Byte(41).String(
        "b");
    bytes.End().End().End();
    ASSERT_TRUE(ReadQuietly(bytes));
    std::string members;
    for (const LodBead* bead : EveryLodBead(FirstLod()))
        members += std::string(bead->SubObject->Name) + (bead->Shown ? "+" : "-");
    EXPECT_EQ(members, "a+b-b+"); // a switch before any member is ignored
}

TEST_F(Versions, UnknownTagsAreSkippedInEveryContext) {
    const int unknown = 99;
    ModelBytes bytes("3.05");
    bytes.Unknown(unknown, 300).Byte(10).Unknown(unknown, 3).Byte(11).Int(0).Unknown(unknown, 1).End().End();
    bytes.Byte(80).Int(0).String("nowhere.rgb").Unknown(unknown, 2).End();
    bytes.Byte(40).String("o").Unknown(unknown, 255).Vertices({0, 0, 0, 1, 0, 0, 0, 1, 0});
    bytes.Byte(41).String("s").Unknown(unknown, 256).OpenPolygon({0, 1}).Unknown(unknown, 0);
    bytes.Byte(20).Unknown(unknown, 4).Byte(27).Int(2).Unknown(unknown, 4).End().End().End();
    bytes.Byte(42).String("l").Unknown(unknown, 4).End();
    bytes.Byte(70).Int(61).Unknown(unknown, 4).End().End();
    bytes.Byte(50).String("b").Unknown(unknown, 4).Byte(51).End();
    ASSERT_TRUE(ReadQuietly(bytes)) << Ferr[FileErrorNumber];
    EXPECT_EQ(Warned, "Warning: texture nowhere.rgb not found\n"
                      "Kirvo warning: Information lost!\a\n"
                      "This file was created with a more recent version\n"
                      "of the Kirvo modelling software, information\n"
                      "was discarded when the file was loaded...\n");
    EXPECT_EQ(CornersOf(FirstPolygon()).size(), 3U);
    EXPECT_EQ(Asked, std::vector<std::string>{"Some textures could not be found.\n\n"
                                              "Click on Ok to read the manual on how to correct this problem."});
}

TEST_F(Versions, SettingsAreTakenAndUnknownOnesSkippedSilently) {
    ModelBytes bytes("3.05");
    const auto setting = [&](int number, int value) { bytes.Byte(60).Byte(number).Count(4).Int(value); };
    setting(6, 11);
    setting(7, 12);
    bytes.Byte(60).Byte(77).Count(300).Raw(std::string(300, 'x'));
    bytes.Byte(60).Byte(20).Count(5).String("/tmp");
    bytes.Byte(60).Byte(12).Count(6).String("Title").Byte(60).Byte(19).Count(1).String(std::string(79, 'c'));
    setting(10, -3);
    setting(11, 1);
    bytes.Byte(40).String("o").End().Byte(50).String("b").Byte(51);
    setting(9, 0);
    setting(8, 3);
    bytes.End();
    NoViewports = 1;
    ASSERT_TRUE(ReadQuietly(bytes)) << Ferr[FileErrorNumber];
    EXPECT_FALSE(InformationLost);
    EXPECT_EQ(SceneGridIndex, 11);
    EXPECT_EQ(SceneGridSteps, 12);
    EXPECT_STREQ(FileTitle, "Title");
    EXPECT_EQ(std::string(FileComment4), std::string(79, 'c'));
    EXPECT_EQ(FileCreateId, -3);
    EXPECT_EQ(FilePublicDomain, 1);
    EXPECT_EQ(ObjectIsolated, 0);
    EXPECT_EQ(NoViewports, 3);
    NoViewports = 1;

    static int changes;
    changes = 0;
    TheStorageSlots.ChangeNoViewports = [] { ++changes; };
    ASSERT_TRUE(ReadQuietly(bytes));
    EXPECT_EQ(changes, 1); // the windows are changed by the views, not behind their back
    EXPECT_EQ(NoViewports, 1);
}

TEST_F(Versions, AFileWithoutInformationBelongsToThisMachine) {
    ModelBytes bytes("3.05");
    bytes.Byte(60).Byte(10).Count(4).Int(-3);
    ASSERT_TRUE(ReadQuietly(ModelBytes(bytes).End()));
    EXPECT_EQ(FileCreateId, MachineIdentifier());
    ASSERT_TRUE(ReadQuietly(ModelBytes(bytes).Byte(60).Byte(13).Count(2).String("a").End()));
    EXPECT_EQ(FileCreateId, -3);
    EXPECT_TRUE(FileIsLocked());
}

TEST_F(Versions, MergingLeavesTheMainFileAndTheSceneAlone) {
    ASSERT_TRUE(ReadQuietly(ModelOfVersion("3.05")));
    Object* object = CurrentObject();
    Material* material = CurrentMaterial();
    ModelBytes bytes("3.05");
    bytes.Materials({0}).Byte(60).Byte(6).Count(4).Int(21).Byte(60).Byte(12).Count(300).Raw(std::string(300, 't'));
    bytes.Byte(70).Int(768).Byte(76).Floats({4}).End();
    bytes.Byte(40).String("merged").Byte(44).Int(3).Byte(70).Int(257).Byte(76).Floats({4}).End().End();
    bytes.Byte(50).String("b").Byte(53).Int(3).Byte(51).End();
    SceneGridIndex = 5;
    WorkSaved = 0;
    PointToMerge(1);
    ASSERT_TRUE(ReadQuietly(bytes)) << Ferr[FileErrorNumber];
    EXPECT_STREQ(CurrentObject()->Name, "merged");
    EXPECT_EQ(ObjectView(1).Zoom, 4);
    EXPECT_TRUE(ObjectView(1).Valid && ObjectView(1).Stale);
    EXPECT_EQ(Scene()->FirstChild->Object, CurrentObject());
    PointToMerge(0);
    EXPECT_EQ(CurrentObject(), object);
    EXPECT_EQ(CurrentMaterial(), material);
    EXPECT_EQ(SceneGridIndex, 5);
    EXPECT_STREQ(FileTitle, "");
    EXPECT_FALSE(SceneView[0].Valid);
    EXPECT_FALSE(WorkSaved);
}

TEST_F(Versions, TheSceneTreeKeepsItsShape) {
    ModelBytes bytes("3.05");
    bytes.Byte(40).String("o").Byte(44).Int(1).End();
    bytes.Byte(50).String("a").Byte(50).String("a1").Byte(56).Int(0).Byte(52).String("a2").Byte(50).String("a21");
    bytes.Byte(53).Int(1).Byte(51).Byte(51).Byte(57).Int(1).Byte(52).String("b").Byte(51).End();
    ASSERT_TRUE(ReadQuietly(bytes));
    std::string shape;
    for (const Branch* branch : EveryBranch(Scene()))
        shape += std::string(branch->Name) + (branch->Visible ? "" : "!") + (branch->Collapsed ? "-" : "") +
                 (branch->Object ? "o " : " ");
    EXPECT_EQ(shape, "Scene a- a1! a2 a21o b ");
    EXPECT_EQ(Scene()->FirstChild->Parent, Scene());
}

TEST_F(Versions, ViewsGoWhereTheirIdentifiersSay) {
    const struct {
        int Identifier;
        View* Place;
    } sceneViews[] = {
        {512, &DefaultScene2D[0]}, {517, &DefaultScene2D[5]}, {573, &DefaultScene3D}, {770, &SceneView[2]}};

    ModelBytes bytes("3.05");
    const auto view = [&](int identifier) {
        bytes.Byte(70).Int(identifier).Byte(71).Byte(1).Byte(72).Byte(5).Byte(76).Floats({identifier + 0.5}).End();
    };
    view(0); // there is no object yet
    bytes.Byte(40).String("o");
    for (const int identifier : {0, 5, 61, 256, 258})
        view(identifier);
    for (const int identifier : {-1, 6, 60, 259, 511, 518, 767, 771})
        view(identifier);
    bytes.End();
    for (const auto& sceneView : sceneViews)
        view(sceneView.Identifier);
    ASSERT_TRUE(ReadQuietly(bytes.End()));
    EXPECT_EQ(DefaultObject2D(0).Zoom, 0.5);
    EXPECT_EQ(DefaultObject2D(5).Zoom, 5.5);
    EXPECT_EQ(DefaultObject3D().Zoom, 61.5);
    EXPECT_EQ(ObjectView(0).Zoom, 256.5);
    EXPECT_EQ(ObjectView(2).Zoom, 258.5);
    EXPECT_FALSE(ObjectView(1).Valid);
    for (const auto& sceneView : sceneViews) {
        EXPECT_EQ(sceneView.Place->Zoom, sceneView.Identifier + 0.5);
        EXPECT_TRUE(sceneView.Place->Valid && sceneView.Place->Stale && sceneView.Place->Perspective);
        EXPECT_EQ(sceneView.Place->Direction, 5);
        EXPECT_FALSE(sceneView.Place->HasCentre);
    }
    EXPECT_FALSE(DefaultScene2D[1].Valid);
}

TEST_F(Versions, AThreeDViewKeepsAGridThatWasAlignedByHand) {
    ModelBytes bytes("3.05");
    bytes.Byte(40).String("o").Byte(70).Int(61).Byte(71).Byte(1).Byte(72).Byte(255).End().End();
    ASSERT_TRUE(ReadQuietly(bytes.End()));
    EXPECT_EQ(DefaultObject3D().Direction, 255);
}

TEST_F(Versions, AnObjectAlwaysHasAGroupAndALevel) {
    ASSERT_TRUE(ReadQuietly(ModelBytes("3.05").Byte(40).String("bare").End().End()));
    EXPECT_STREQ(CurrentObject()->FirstSubObject->Name, "SubObject1");
    EXPECT_STREQ(CurrentObject()->FirstLod->Name, "Lod1");
    EXPECT_EQ(CurrentObject()->SelectedLod, CurrentObject()->FirstLod);
    ASSERT_TRUE(ReadQuietly(ModelBytes("3.05").End()));
    EXPECT_STREQ(CurrentObject()->Name, "Unnamed");
}

TEST_F(Versions, APolygonWithoutAMaterialTakesTheFirstOne) {
    ModelBytes bytes("2.00");
    bytes.Byte(10).Byte(11).Byte(1).End().Byte(11).Byte(0).End().End();
    bytes.Byte(40).String("o").Byte(41).String("s").Byte(30).End().End().End().End();
    ASSERT_TRUE(ReadQuietly(bytes));
    ASSERT_TRUE(FirstMaterial());
    EXPECT_EQ(FirstPolygon()->Material, FirstMaterial());
}

TEST_F(Versions, MaterialsOfEverySectionAreKeptInTheOrderOfTheirNumbers) {
    ModelBytes bytes("3.05");
    const auto material = [&](int number, const char* name) {
        bytes.Byte(11).Int(number).Byte(18).String(name).Byte(16).Floats({number / 2.0}).End();
    };
    bytes.Byte(10);
    material(100000, "far");
    material(2, "two");
    material(0, "zero");
    material(2, "two again");
    bytes.End().Byte(10);
    material(1, "one");
    bytes.End().End();
    ASSERT_TRUE(ReadQuietly(bytes));
    std::string names;
    for (const Material* m : Along<&Material::Next>(FirstMaterial()))
        names += std::string(m->Name) + "/";
    EXPECT_EQ(names, "zero/two/two again/far/one/");
    EXPECT_EQ(FirstMaterial()->Next->Shininess, 1.0F);
    EXPECT_EQ(FirstMaterial()->Next->Alpha, 1.0F); // absent fields keep a new material's values
}

} // namespace
