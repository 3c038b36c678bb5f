#include "files/legacy_reader.h"

#include "base/directories.h"
#include "files/file_errors.h"
#include "files/file_slots.h"
#include "store/accessors.h"
#include "store/integrity.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/storage.h"
#include "store/walks.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

const std::string Square = "Vertices (v1.000000)\n"
                           "Count: 4\n"
                           "0 0 0\n"
                           "1 0 0\n"
                           "1 0 1\n"
                           "0 0 1\n";

const std::string TwoPolygons = "Polygons (v1.000000)\n"
                                "Count: 2\n"
                                " Material:1 Shading:2 Sides:4 - Vertices 0 1 2 3 \n"
                                " Material:0 Shading:0 Sides:3 - Vertices 2 1 0 \n";

const std::string TwoMaterials = "Materials (v1.000000)\n"
                                 "Count: 2\n"
                                 "Material 0: Red brick\n"
                                 "RA:0.1 GA:0.2 BA:0.3\n"
                                 "RD:0.4 GD:0.5 BD:0.6\n"
                                 "RS:0.7 GS:0.8 BS:0.9\n"
                                 "Shine: 12.5\n"
                                 "Material 1: Slate\n"
                                 "RA:0 GA:0 BA:0\n"
                                 "RD:1 GD:1 BD:1\n"
                                 "RS:0 GS:0 BS:0\n"
                                 "Shine: 0\n";

class LegacyReader : public testing::Test {
  protected:
    LegacyReader() {
        InitialiseStorage();
        CopyFileName(FileName, "house.kirvo");
        Read("");
    }

    ~LegacyReader() override {
        PointToMerge(0);
        ResetStorage();
        TheFileSlots = {};
        FileName[0] = '\0';
    }

    static void Parse(const std::string& body) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(body.data());
        FileCursor file{bytes, bytes + body.size()};
        ReadKirvo100(file);
    }

    // The number of the error, or -1 when all is well.
    static int Read(const std::string& body) {
        ClearFileError();
        Parse(body);
        CheckIntegrity();
        return FileError ? FileErrorNumber : -1;
    }

    // Newest first, as the store keeps them.
    static std::vector<Polygon*> Polygons() {
        std::vector<Polygon*> polygons;
        for (Polygon* polygon : EveryPolygon(CurrentObject()))
            polygons.push_back(polygon);
        return polygons;
    }

    static std::vector<std::array<double, 3>> Corners(const Polygon* polygon) {
        std::vector<std::array<double, 3>> corners;
        for (const PolygonBead* bead : EveryBead(polygon)) {
            const double* p = bead->Vertex->Position;
            corners.push_back({p[0], p[1], p[2]});
        }
        return corners;
    }
};

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t place = text.find(what);
    EXPECT_NE(place, std::string::npos) << what;
    return place == std::string::npos ? text : text.replace(place, what.size(), with);
}

TEST_F(LegacyReader, ReadsAWholeModel) {
    static int timesDefined;
    timesDefined = 0;
    TheFileSlots.RedefineMaterials = [] { ++timesDefined; };
    EXPECT_EQ(Read(Square + TwoPolygons + TwoMaterials), -1);
    EXPECT_STREQ(ObjectName(), "house");
    EXPECT_EQ(FirstObject()->Next, nullptr);
    EXPECT_EQ(timesDefined, 1);
    EXPECT_EQ(CurrentLighting, LightingFaceted);
    EXPECT_EQ(ConnectionsOK(), 0);
    EXPECT_EQ(SelectedLod(), FirstLod());

    Material* brick = FirstMaterial();
    Material* slate = brick->Next;
    EXPECT_EQ(CurrentMaterial(), brick);
    EXPECT_STREQ(brick->Name, "Red brick");
    EXPECT_STREQ(slate->Name, "Slate");
    EXPECT_EQ(slate->Next, nullptr);
    const float colours[] = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f, 0.7f, 0.8f, 0.9f};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(brick->Ambient[i], colours[i]);
        EXPECT_EQ(brick->Diffuse[i], colours[3 + i]);
        EXPECT_EQ(brick->Specular[i], colours[6 + i]);
    }
    EXPECT_EQ(brick->Shininess, 12.5f);

    const auto polygons = Polygons();
    ASSERT_EQ(polygons.size(), 2u);
    EXPECT_EQ(polygons[1]->Lighting, LightingSmooth);
    EXPECT_EQ(polygons[1]->Material, slate);
    EXPECT_EQ(Corners(polygons[1]), (std::vector<std::array<double, 3>>{{0, 0, 0}, {1, 0, 0}, {1, -1, 0}, {0, -1, 0}}));
    EXPECT_EQ(polygons[0]->Lighting, LightingUnlit);
    EXPECT_EQ(polygons[0]->Material, brick);
    EXPECT_EQ(Corners(polygons[0]), (std::vector<std::array<double, 3>>{{1, -1, 0}, {1, 0, 0}, {0, 0, 0}}));
    EXPECT_EQ(polygons[0]->SubObject, FirstSubObject());
}

TEST_F(LegacyReader, TheFormIsFree) {
    const std::string bodies[] = {
        // Fields on lines of their own.
        Square +
            "Polygons (v1.0)\nCount: 2\n"
            "Material:1\nShading:2\nSides:4 - Vertices 0 1 2 3\n"
            "Material: 0\nShading: 0\nSides: 3-Vertices\n2\n1\n0\n" +
            TwoMaterials,
        // Lines that belong to no section, and more on a line than is asked for.
        "made by hand\n\n" + Replaced(Square, "1 0 1\n", "  1.0 0e5\t+1 and more\n") + "# polygons\n" + TwoPolygons +
            "\n" + TwoMaterials + "rest",
        // Sections in another order.
        TwoMaterials + Square + TwoPolygons,
        // No newline at the end.
        Square + TwoPolygons + TwoMaterials.substr(0, TwoMaterials.size() - 1),
    };
    for (const std::string& body : bodies)
        for (const bool carriageReturns : {false, true}) {
            std::string text = body;
            if (carriageReturns)
                for (std::size_t i = 0; (i = text.find('\n', i)) != std::string::npos; i += 2)
                    text.insert(i, "\r");
            ASSERT_EQ(Read(text), -1) << text;
            const auto polygons = Polygons();
            ASSERT_EQ(polygons.size(), 2u) << text;
            EXPECT_EQ(Corners(polygons[1]).size(), 4u);
            EXPECT_EQ(Corners(polygons[1])[2], (std::array<double, 3>{1, -1, 0}));
            EXPECT_STREQ(polygons[0]->Material->Name, "Red brick");
            EXPECT_STREQ(polygons[1]->Material->Name, "Slate");
        }
}

TEST_F(LegacyReader, OldAxesBecomeNew) {
    EXPECT_EQ(Read("Vertices (v1.0)\nCount: 1\n1 2 3\n"), -1);
    const double* p = FirstVertex()->Position;
    EXPECT_EQ(p[0], 1);
    EXPECT_EQ(p[1], -3);
    EXPECT_EQ(p[2], 2);
    EXPECT_EQ(FirstPolygon(), nullptr);
}

TEST_F(LegacyReader, CoordinatesAreSinglePrecision) {
    EXPECT_EQ(Read("Vertices (v1.0)\nCount: 1\n0.1 1e-50 -3.4e38\n"), -1);
    EXPECT_EQ(FirstVertex()->Position[0], static_cast<double>(0.1f));
    EXPECT_EQ(FirstVertex()->Position[1], static_cast<double>(3.4e38f));
    EXPECT_EQ(FirstVertex()->Position[2], 0.0);
}

TEST_F(LegacyReader, CoincidentVerticesAreMerged) {
    const std::string vertices = "Vertices (v1.0)\nCount: 6\n0 0 0\n1 0 0\n1 0 1\n0 0 0\n1 0 1\n0 0 1\n";
    const std::string polygons = "Polygons (v1.0)\nCount: 2\n"
                                 " Material:0 Shading:1 Sides:3 - Vertices 0 1 2 \n"
                                 " Material:0 Shading:1 Sides:3 - Vertices 3 4 5 \n";
    EXPECT_EQ(Read(vertices + polygons + TwoMaterials), -1);
    int count = 0;
    for ([[maybe_unused]] Vertex* vertex : EveryVertex(CurrentObject()))
        ++count;
    EXPECT_EQ(count, 4);
}

TEST_F(LegacyReader, DamagedMaterialsEndTheirSectionWithoutError) {
    const struct {
        const char* What;
        const char* With;
        std::vector<const char*> Names;
    } cases[] = {
        {"Count: 2", "Count: 2000000000", {"Red brick", "Slate", "Unnamed"}},
        {"Count: 2", "Count: 1", {"Red brick"}},
        {"Count: 2", "Count: 0", {}},
        {"Material 1: Slate", "Material : Slate", {"Red brick", "Unnamed"}},
        {"Material 1: Slate", "Material 1:", {"Red brick", ""}},
        {"Material 0: Red brick\n", "Material 0:\t  Red brick \n", {"Red brick ", "Slate"}},
        {"RD:0.4", "RX:0.4", {"Red brick"}},
        {"RD:0.4", "RD:nan", {"Red brick"}},
        {"RD:0.4", "RD:1e99", {"Red brick"}},
        {"Shine: 12.5", "Shine: bright", {"Red brick"}},
    };

    for (const auto& c : cases) {
        EXPECT_EQ(Read(Square + Replaced(TwoMaterials, c.What, c.With)), -1) << c.With;
        std::vector<std::string> names;
        for (const Material* material : Along<&Material::Next>(FirstMaterial()))
            names.push_back(material->Name);
        EXPECT_EQ(names, std::vector<std::string>(c.Names.begin(), c.Names.end())) << c.With;
    }
    // What had been read of a material before the damage stays.
    EXPECT_EQ(Read(Replaced(TwoMaterials, "GD:0.5", "GD:?")), -1);
    EXPECT_EQ(FirstMaterial()->Ambient[2], 0.3f);
    EXPECT_EQ(FirstMaterial()->Diffuse[0], 0.4f);
    EXPECT_EQ(FirstMaterial()->Diffuse[1], 0.1f);
}

TEST_F(LegacyReader, ErrorsHaveTheirNumbers) {
    const std::string all = Square + TwoPolygons + TwoMaterials;

    const struct {
        const char* What;
        std::string With;
        int Error;
    } cases[] = {
        {"Vertices (v1", "Vertices (v2", BadFile},
        {"Vertices (v1", "Vertices (v", BadFile},
        {"Vertices (v1.000000)", "Verse", BadFile},
        {"Polygons (v1.000000)", "Polygons (vnan)", BadFile},
        {"Materials (v1", "Materials (v1.5", BadFile},
        {"Count: 4\n", "", BadFile},
        {"Count: 4", "Count: four", BadFile},
        {"Count: 4", "Count: -4", BadFile},
        {"Count: 4", "Count: 5", BadFile},
        {"Count: 4", "Count: 2147483647", BadFile},
        {"Count: 4", "Count: 99999999999999999999", BadFile},
        {"Count: 4", "Count: 3", BadVertexIndex},
        {"1 0 1\n", "1 0\n", BadFile},
        {"1 0 1\n", "\n", BadFile},
        {"1 0 1\n", "1 0 x\n", BadFile},
        {"1 0 1\n", "1 nan 1\n", BadVertex},
        {"1 0 1\n", "inf 0 1\n", BadVertex},
        {"1 0 1\n", "1 0 -1e39\n", BadVertex},
        {"1 0 1\n", "1 0 1e999\n", BadVertex},
        {"Count: 2\n Material", "Count: 3\n Material", BadFile},
        {"Count: 2\n Material", "Count: 2147483647\n Material", BadFile},
        {"Count: 2\n Material", "Count: 2\n Metal", BadFile},
        {"Shading:2", "Shading:3", UnknownLighting},
        {"Shading:2", "Shading:-1", UnknownLighting},
        {"Shading:2", "Shading:258", UnknownLighting},
        {"Shading:2", "Shading:", BadFile},
        {"Sides:4", "Sides:-4", BadFile},
        {"Sides:4", "Sides:5", BadFile},
        {"Sides:4", "Sides:2147483647", BadFile},
        {"0 1 2 3", "0 1 2 4", BadVertexIndex},
        {"0 1 2 3", "-1 1 2 3", BadVertexIndex},
        {"0 1 2 3", "0 1 2 4294967296", BadVertexIndex},
        {"Material:1", "Material:2", BadPolygonMaterial},
        {"Material:1", "Material:-1", BadPolygonMaterial},
        {"Material:1", "Material:4294967296", BadPolygonMaterial},
        // Polygons whose material was lost with the rest of its section, or with all of it.
        {"RD:0.4", "RX:0.4", BadPolygonMaterial},
        {"Materials (v", "Nothing (v", BadPolygonMaterial},
        {"Slate", std::string(128, 'x'), BadString},
        {"Slate", std::string(127, 'x'), -1},
    };

    for (const auto& c : cases)
        EXPECT_EQ(Read(Replaced(all, c.What, c.With)), c.Error) << c.What << " -> " << c.With;
    EXPECT_EQ(Read(TwoPolygons + Square + TwoMaterials), BadVertexIndex);
}

TEST_F(LegacyReader, EveryCutEndsWell) {
    const std::string all = Square + TwoPolygons + TwoMaterials;
    for (std::size_t size = 0; size < all.size(); ++size) {
        const int error = Read(all.substr(0, size));
        EXPECT_TRUE(error == -1 || error == BadFile || error == BadVertexIndex || error == BadPolygonMaterial)
            << size << ": " << error;
    }
}

TEST_F(LegacyReader, AnErrorBeforeKeepsTheBodyUnread) {
    SetError(UnexpectedEnd);
    Parse(Square);
    EXPECT_EQ(FirstVertex(), nullptr);
    EXPECT_EQ(FileErrorNumber, UnexpectedEnd);
}

TEST_F(LegacyReader, MergingLeavesTheMainFileAlone) {
    EXPECT_EQ(Read(Square + TwoPolygons + TwoMaterials), -1);
    Material* current = CurrentMaterial();
    PointToMerge(1);
    EXPECT_EQ(Read(Square + TwoPolygons + TwoMaterials), -1);
    EXPECT_EQ(CurrentMaterial(), current);
    EXPECT_NE(FirstMaterial(), current);
    for (const Polygon* polygon : Polygons())
        EXPECT_TRUE(polygon->Material == FirstMaterial() || polygon->Material == FirstMaterial()->Next);
    ResetStorage();
    PointToMerge(0);
    EXPECT_EQ(Polygons().size(), 2u);
}

} // namespace
