#include "files/inspection.h"

#include "files/file_check.h"
#include "files/inspection_report.h"
#include "files/made_model.h"
#include "files/reader.h"
#include "files/reading.h"
#include "files/upgrade.h"
#include "textures/texture_library.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

class Inspection : public FilesTest {
  protected:
    LoadReport Load(const std::string& path) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        LoadReport report = LoadForInspection(path);
        testing::internal::GetCapturedStdout();
        testing::internal::GetCapturedStderr();
        return report;
    }

    LoadReport LoadModel(const ModelFaults& faults = {}) {
        directory.WriteImage("textures/stone");
        return Load(
            directory.Write("house.kirvo", MadeModel(faults.TextureMissing ? "gone" : "./textures/stone", faults)));
    }

    ModelDirectory directory;
};

std::vector<std::string> Problems(const std::vector<Finding>& findings) {
    std::vector<std::string> problems;
    for (const Finding& finding : findings)
        if (finding.Problem)
            problems.push_back(finding.Text);
    return problems;
}

TEST_F(Inspection, SumsUpWhatAModelHolds) {
    const LoadReport report = LoadModel();
    EXPECT_EQ(report.Error, "");
    EXPECT_EQ(report.Version, 305);
    EXPECT_EQ(report.Reached, report.Size);
    EXPECT_TRUE(report.MissingTextures.empty());

    const ModelSummary model = SummariseModel();
    ASSERT_EQ(model.Information.size(), 1u);
    EXPECT_STREQ(model.Information[0].Label, "Title");
    EXPECT_EQ(model.Information[0].Text, "My house");
    EXPECT_TRUE(model.SceneMode);

    ASSERT_EQ(model.Materials.size(), 2u);
    EXPECT_EQ(model.Materials[0].Name, "Red brick");
    EXPECT_EQ(model.Materials[0].Diffuse[1], 0.2f);
    EXPECT_EQ(model.Materials[0].Polygons, 3u);
    EXPECT_EQ(model.Materials[1].Polygons, 0u);

    ASSERT_EQ(model.Textures.size(), 1u);
    EXPECT_EQ(model.Textures[0].Path, directory.Path("textures/stone"));
    EXPECT_EQ(model.Textures[0].Image.Channels, 3);
    EXPECT_TRUE(model.Textures[0].ClampS);
    EXPECT_FALSE(model.Textures[0].ClampT);
    EXPECT_EQ(model.Textures[0].Polygons, 1u);

    ASSERT_EQ(model.Objects.size(), 2u);
    const ObjectSummary& house = model.Objects[0];
    EXPECT_EQ(house.Name, "house");
    EXPECT_TRUE(house.Current);
    EXPECT_TRUE(house.Billboard);
    EXPECT_EQ(house.Vertices, 8u);
    EXPECT_EQ(house.LooseVertices, 1u);
    EXPECT_EQ(house.Polygons, 3u);
    EXPECT_EQ(house.SubPolygons, 1u);
    EXPECT_EQ(house.Degenerate, 0u);
    EXPECT_EQ(house.Min[0], 0);
    EXPECT_FALSE(std::signbit(house.Min[2]));
    EXPECT_EQ(house.Max[1], 9);
    ASSERT_EQ(house.SubObjects.size(), 2u);
    EXPECT_EQ(house.SubObjects[0].Name, "roof");
    EXPECT_EQ(house.SubObjects[0].Levels, 0u);
    EXPECT_EQ(house.SubObjects[1].Polygons, 2u);
    EXPECT_EQ(house.SubObjects[1].Levels, 1u);
    ASSERT_EQ(house.Lods.size(), 2u);
    EXPECT_EQ(house.Lods[0].Distance, 100);
    EXPECT_EQ(house.Lods[0].Members, std::vector<std::string>{"walls"});
    EXPECT_TRUE(house.Lods[1].Members.empty());

    const struct {
        const char* Name;
        int Depth;
        const char* Object;
        bool Visible;
        double X;
    } branches[] = {{"street", 0, "", true, 0},
                    {"first", 1, "house", true, 1},
                    {"second", 1, "tree", false, -4},
                    {"empty", 0, "", true, 0}};

    ASSERT_EQ(model.Branches.size(), std::size(branches));
    for (std::size_t i = 0; i < std::size(branches); ++i) {
        EXPECT_EQ(model.Branches[i].Name, branches[i].Name);
        EXPECT_EQ(model.Branches[i].Depth, branches[i].Depth);
        EXPECT_EQ(model.Branches[i].Object, branches[i].Object);
        EXPECT_EQ(model.Branches[i].Visible, branches[i].Visible);
        EXPECT_EQ(model.Branches[i].Position[0], branches[i].X);
    }
}

TEST_F(Inspection, FindsEveryProblem) {
    const struct {
        ModelFaults Faults;
        std::vector<std::string> Problems;
    } cases[] = {
        {{}, {}},
        {{.TextureMissing = true}, {"texture \"gone\": no such image; its polygons show squares instead"}},
        {{.NewerData = true}, {"holds data that only a newer version knows; it is lost when the file is saved"}},
        {{.PolygonWithoutArea = true},
         {"object \"house\": of 5 polygons, 2 without area, lost when the object is drawn or saved"}},
        {{.BytesBehindTheEnd = true}, {"4 bytes follow the end of the model"}},
    };

    for (const auto& c : cases) {
        const LoadReport report = LoadModel(c.Faults);
        EXPECT_EQ(Problems(FindProblems(report, SummariseModel())), c.Problems);
    }
    const ModelFaults all = {
        .TextureMissing = true, .NewerData = true, .PolygonWithoutArea = true, .BytesBehindTheEnd = true};
    const LoadReport report = LoadModel(all);
    EXPECT_EQ(Problems(FindProblems(report, SummariseModel())).size(), 4u);
}

TEST_F(Inspection, SaysWhereReadingStopped) {
    const LoadReport report = LoadModel({.VertexNumberTooHigh = true});
    EXPECT_EQ(report.Error, "Bad vertex index");
    const std::string bytes = directory.Read("house.kirvo");
    // Just behind the number, which is the only 8 that follows the tag of a corner.
    const std::size_t number = bytes.find(std::string("\x1b\0\0\0\x08", 5));
    EXPECT_EQ(report.Reached, number + 5);
    EXPECT_EQ(Problems(FindProblems(report, {})),
              std::vector<std::string>{"Bad vertex index (at byte " + std::to_string(number + 5) + " of " +
                                       std::to_string(bytes.size()) + ")"});

    const struct {
        std::string Bytes, Error;
    } cases[] = {
        {"", "Not a Kirvo file"},
        {"no model\n", "Not a Kirvo file"},
        {"Compatibility: 3.06\n\1",
         "Unsupported file revision. You need a newer version of Kirvo to read that file..."},
        {"Compatibility: 1.00\nVertices (v1.0)\nCount: 1\n1 2\n", "Bad file (at byte 49 of 49)"},
    };

    for (const auto& c : cases)
        EXPECT_EQ(Problems(FindProblems(Load(directory.Write("bad", c.Bytes)), {})), std::vector<std::string>{c.Error});
    EXPECT_EQ(Load(directory.Path("nothing")).Error, "No such file or directory");
    EXPECT_EQ(Load(directory.Path("")).Error, "Is a directory");
    EXPECT_EQ(Load("/dev/null").Error, "not an ordinary file");
}

TEST_F(Inspection, FindsDamagedImages) {
    const LoadReport report = LoadModel();
    fs::resize_file(directory.Path("textures/stone"), 520);
    EXPECT_EQ(Problems(FindProblems(report, SummariseModel())),
              std::vector<std::string>{"texture \"" + directory.Path("textures/stone") + "\": the image is damaged"});

    MadeImage image(1, 1, 5);
    image.Append({1, 2, 3, 4, 5});
    image.WriteTo(directory.Path("five"));
    ImageSummary summary;
    ASSERT_TRUE(SummariseImage(directory.Path("five"), summary));
    EXPECT_EQ(Problems(FindImageProblems(directory.Path("five"), summary)),
              std::vector<std::string>{"5 channels, of which a texture can have 4"});
    EXPECT_FALSE(SummariseImage(directory.Path("house.kirvo"), summary));
}

TEST_F(Inspection, TheReportsSayTheSame) {
    const LoadReport report = LoadModel();
    const ModelSummary model = SummariseModel();
    const std::string text = ModelAsText(report, model);
    for (const char* part : {": model, version 3.05, ", "\nTitle: My house\n", "\n  Red brick: diffuse 0.8 0.2 0.1, ",
                             "\n  unused ?[31m: ", "minified Mipmap linear, clamped in s; 1 polygon\n",
                             "\n  house (current, billboard)\n    8 vertices, 3 polygons (1 sub-polygon among them)\n",
                             "\n    level of detail near, up to 100 m: walls\n", "\nScene: 4 branches\n",
                             "\n    second: object tree at (-4, 2, 3) m, hidden\n  empty (group)\n"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "\nin\n" << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\033'), 0);
    ModelSummary free = model;
    free.PublicDomain = !model.PublicDomain;
    constexpr char told[] = "The file is public domain.";
    EXPECT_NE((ModelAsText(report, free).find(told) == std::string::npos), text.find(told) == std::string::npos);

    const auto json = nlohmann::json::parse(ModelAsJson(report, model));
    EXPECT_EQ(json["version"], "3.05");
    EXPECT_EQ(json["materials"][0]["diffuse"], nlohmann::json({0.8, 0.2, 0.1}));
    EXPECT_EQ(json["materials"][1]["name"], "unused \033[31m");
    EXPECT_EQ(json["textures"][0]["minFilter"], "Mipmap linear");
    EXPECT_EQ(json["objects"][0]["subPolygons"], 1);
    EXPECT_EQ(json["objects"][0]["levelsOfDetail"][0]["members"], nlohmann::json({"walls"}));
    EXPECT_EQ(json["scene"][2]["position"], nlohmann::json({-4, 2, 3}));

    const LoadReport poor = LoadModel({.TextureMissing = true});
    const std::vector<Finding> findings = FindProblems(poor, SummariseModel());
    const auto checked = nlohmann::json::parse(FindingsAsJson("x", findings));
    EXPECT_EQ(checked["ok"], false);
    EXPECT_EQ(checked["problems"].size(), 1u);
    EXPECT_EQ(checked["problems"].size() + checked["notes"].size(), findings.size());
    EXPECT_EQ(nlohmann::json::parse(FindingsAsJson("x", {{false, "\xff"}}))["ok"], true);
}

TEST_F(Inspection, ADeepSceneIsSummedUpQuickly) {
    constexpr int Depth = 200000;
    ModelBytes model("3.05");
    for (int i = 0; i < Depth; ++i)
        model.Byte(50).String("b");
    for (int i = 0; i < Depth; ++i)
        model.Byte(51);
    const LoadReport report = Load(directory.Write("deep", model.End().Bytes()));
    ASSERT_EQ(report.Error, "");
    const ModelSummary summary = SummariseModel();
    ASSERT_EQ(summary.Branches.size(), static_cast<std::size_t>(Depth));
    EXPECT_EQ(summary.Branches.back().Depth, Depth - 1);
    // The picture of the tree stays within a page.
    EXPECT_LT(ModelAsText(report, summary).size(), std::size_t{Depth} * 100);
}

class Upgrade : public Inspection {
  protected:
    std::string UpgradeTo(const LoadReport& report, const std::string& name, UpgradeLoss loss = UpgradeLoss::Refuse) {
        return UpgradeModel(report, directory.Path(name), loss);
    }
};

TEST_F(Upgrade, WritesTheCurrentVersion) {
    const LoadReport old = Load(directory.Write("old.kirvo", "Compatibility: 1.00\n"
                                                             "Vertices (v1.0)\nCount: 3\n0 0 0\n1 0 0\n0 0 1\n"
                                                             "Polygons (v1.0)\nCount: 1\n"
                                                             " Material:0 Shading:1 Sides:3 - Vertices 0 1 2 \n"
                                                             "Materials (v1.0)\nCount: 1\nMaterial 0: Slate\n"));
    ASSERT_EQ(old.Error, "");
    EXPECT_EQ(UpgradeTo(old, "new.kirvo"), "");
    const LoadReport now = Load(directory.Path("new.kirvo"));
    EXPECT_EQ(now.Error, "");
    EXPECT_EQ(now.Version, 305);
    const ModelSummary model = SummariseModel();
    ASSERT_EQ(model.Objects.size(), 1u);
    EXPECT_EQ(model.Objects[0].Name, "old");
    EXPECT_EQ(model.Objects[0].Polygons, 1u);
    EXPECT_EQ(model.Materials[0].Name, "Slate");
    EXPECT_EQ(Problems(FindProblems(now, model)), std::vector<std::string>{});
}

TEST_F(Upgrade, ImagesAreFoundFromTheNewPlace) {
    for (const char* target : {"again.kirvo", "elsewhere/house.kirvo"}) {
        fs::create_directories(directory.Path("elsewhere"));
        EXPECT_EQ(UpgradeTo(LoadModel(), target), "");
        const LoadReport report = Load(directory.Path(target));
        EXPECT_TRUE(report.MissingTextures.empty()) << target;
        EXPECT_EQ(SummariseModel().Textures.at(0).Path, directory.Path("textures/stone"));
    }
    // Beside its images a model names them so that both can be moved; elsewhere, in full.
    EXPECT_NE(directory.Read("elsewhere/house.kirvo").find(directory.Path("textures/stone\n")), std::string::npos);
    EXPECT_EQ(directory.Read("again.kirvo").find(directory.Path("textures")), std::string::npos);
    EXPECT_NE(directory.Read("again.kirvo").find("./textures/stone\n"), std::string::npos);
}

TEST_F(Upgrade, LosesNothingUnlessTold) {
    const LoadReport report = LoadModel({.NewerData = true});
    EXPECT_NE(UpgradeTo(report, "new.kirvo"), "");
    EXPECT_FALSE(fs::exists(directory.Path("new.kirvo")));
    EXPECT_EQ(UpgradeTo(report, "new.kirvo", UpgradeLoss::Accept), "");
    EXPECT_TRUE(fs::exists(directory.Path("new.kirvo")));
}

TEST_F(Upgrade, MissingTexturesKeepTheirNamesAndTheirPolygons) {
    const LoadReport report = LoadModel({.TextureMissing = true});
    EXPECT_EQ(report.MissingTextures.size(), 1u);
    const std::vector<TextureSummary> before = SummariseModel().Textures;
    ASSERT_EQ(before.size(), 1u);
    EXPECT_GT(before[0].Polygons, 0u);
    EXPECT_EQ(UpgradeTo(report, "new.kirvo"), "");
    const LoadReport again = Load(directory.Path("new.kirvo"));
    EXPECT_EQ(again.MissingTextures, report.MissingTextures);
    const std::vector<TextureSummary> after = SummariseModel().Textures;
    ASSERT_EQ(after.size(), 1u);
    EXPECT_EQ(after[0].Path, before[0].Path);
    EXPECT_EQ(after[0].Polygons, before[0].Polygons);
}

TEST_F(Upgrade, InPlaceKeepsPermissionsAndLinks) {
    LoadModel();
    fs::permissions(directory.Path("house.kirvo"), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(directory.Path("house.kirvo"), directory.Path("link.kirvo"));
    const std::string before = directory.Read("house.kirvo");
    EXPECT_EQ(UpgradeTo(Load(directory.Path("link.kirvo")), "link.kirvo"), "");
    EXPECT_TRUE(fs::is_symlink(directory.Path("link.kirvo")));
    EXPECT_NE(directory.Read("house.kirvo"), before);
    EXPECT_EQ(fs::status(directory.Path("house.kirvo")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Upgrade, AFailureLeavesNothingBehind) {
    const LoadReport report = LoadModel();
    EXPECT_EQ(UpgradeTo(report, "no/such/place"), "No such file or directory");
    EXPECT_EQ(UpgradeTo(report, ""), "it is not an ordinary file");
    ASSERT_EQ(mkfifo(directory.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(UpgradeTo(report, "pipe"), "it is not an ordinary file");
    EXPECT_TRUE(fs::is_fifo(directory.Path("pipe")));
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory.Path("")))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"house.kirvo", "pipe", "textures"}));
}

} // namespace
