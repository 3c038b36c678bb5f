#include "base/directories.h"
#include "files/reading.h"
#include "support/run_program.h"
#include "support/temporary_directory.h"
#include "views/display_flags.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

const fs::path Kept = fs::path(KIRVO_SOURCE_DIR) / "examples";

std::string BytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The examples as the program makes them now.
class Examples : public FilesTest {
  protected:
    static void SetUpTestSuite() {
        Made = new TemporaryDirectory;
        const ProgramEnd end = RunProgram({KIRVO_MAKE_EXAMPLES, {Made->Path()}, "", "/", {}, 0});
        ASSERT_EQ(end.Status, 0) << end.Errors;
    }

    static void TearDownTestSuite() { delete Made; }

    static inline TemporaryDirectory* Made;
};

TEST_F(Examples, AreKeptAsTheyAreMade) {
    int compared = 0;
    for (const auto& entry : fs::recursive_directory_iterator(Made->Path())) {
        if (entry.is_directory() || entry.path().stem() == "terrain")
            continue;
        const fs::path name = fs::relative(entry.path(), Made->Path());
        EXPECT_TRUE(BytesOf(entry.path()) == BytesOf(Kept / name)) << name << " differs: see examples/README.md";
        ++compared;
    }
    for (const auto& entry : fs::directory_iterator(Kept / "textures"))
        EXPECT_TRUE(fs::exists(Made->Path() / "textures" / entry.path().filename())) << entry.path();
    EXPECT_GT(compared, 30);
}

TEST_F(Examples, AreWholeModels) {
    struct Counts {
        int Objects, Placed, Billboards, Levels, Decals, LeastPolygons, MostPolygons;
    };

    const struct {
        const char* Name;
        Counts Expected;
    } cases[] = {{"village", {16, 249, 5, 32, 103, 3000, 8000}},
                 {"vehicle", {1, 0, 0, 2, 0, 2000, 5000}},
                 {"house", {1, 0, 0, 1, 0, 21, 21}},
                 {"terrain", {1, 0, 0, 1, 0, 100000, 100000}}};

    for (const auto& c : cases) {
        CopyFileName(FilePath, Made->Path().c_str());
        EXPECT_EQ(ReadQuietly(BytesOf(Made->Path() / (std::string(c.Name) + ".kirvo"))), 1) << c.Name;
        EXPECT_EQ(InformationLost + TexturesMissing, 0) << c.Name << Warned;
        Counts counts{};
        for (Object* object : EveryObject(*CurrentFile)) {
            ++counts.Objects;
            counts.Billboards += object->Attributes & ObjectIsBillboard;
            for ([[maybe_unused]] const Lod* lod : EveryLod(object))
                ++counts.Levels;
            for (const Polygon* polygon : EveryPolygon(object)) {
                ++counts.LeastPolygons;
                counts.Decals += polygon->Parent != nullptr;
                const float* plain = polygon->Material->Diffuse;
                EXPECT_FALSE(polygon->Texture && std::min({plain[0], plain[1], plain[2]}) == 1)
                    << object->Name << " is white where textures are not shown";
            }
        }
        for (const Branch* branch : EveryBranch(Scene()))
            counts.Placed += branch->Object != nullptr;
        EXPECT_EQ(counts.Objects, c.Expected.Objects) << c.Name;
        EXPECT_EQ(counts.Placed, c.Expected.Placed) << c.Name;
        EXPECT_EQ(counts.Billboards, c.Expected.Billboards) << c.Name;
        EXPECT_EQ(counts.Levels, c.Expected.Levels) << c.Name;
        EXPECT_EQ(counts.Decals, c.Expected.Decals) << c.Name;
        EXPECT_GE(counts.LeastPolygons, c.Expected.LeastPolygons) << c.Name;
        EXPECT_LE(counts.LeastPolygons, c.Expected.MostPolygons) << c.Name;
        EXPECT_TRUE(ObjectIsolated ? ObjectView(0).Valid : SceneView[0].Valid) << c.Name;
    }
    FilePath[0] = '\0';
}

} // namespace
