#include "base/debug.h"
#include "support/played_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path ScriptDirectory = fs::path(KIRVO_SOURCE_DIR) / "tests/scripts";
const fs::path ModelsForScripts = fs::path(KIRVO_SOURCE_DIR) / "tests/models";

/// Every script of tests/scripts has beside it NAME.expect.json, which says what must come out:
///   "uses"     files and directories that are put into the working directory first, by their paths from the top of the
///              source
///   "model"    opened at the start: one of those, or one of tests/models (without it: a new model)
///   "converters" true: those that were built are installed
///   "reports"  NAME of a report that the script writes: what it says, as far as Differences() compares
///   "files"    NAME of a model file that is left: what a report on it says; null: there is none
///   "pictures" names of pictures that must have been made
///   "different" pairs of pictures that must not look the same
///   "output", "errors": the whole text of the streams; without them none is expected. What tells of the reading of a
///              file is left out.
struct NamedScript {
    std::string Name;
};

void PrintTo(const NamedScript& script, std::ostream* stream) {
    *stream << script.Name;
}

std::vector<NamedScript> AllScripts() {
    std::vector<NamedScript> scripts;
    for (const auto& entry : fs::directory_iterator(ScriptDirectory))
        if (entry.path().extension() == ".kscript")
            scripts.push_back({entry.path().stem()});
    std::sort(scripts.begin(), scripts.end(), [](const auto& a, const auto& b) { return a.Name < b.Name; });
    return scripts;
}

/// Output without the lines that name each object and texture as it is read, and without a developer build's word that
/// no memory was lost.
std::string WithoutReading(const std::string& output) {
    std::istringstream lines(output);
    std::string rest;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("Object: ") && !line.starts_with("Texture: ") &&
            line != "Memory analysis: As clean as a whistle!" && line != "Memory analysis: Squeaky clean!")
            rest += line + "\n";
    return rest;
}

std::string BytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Scripts : public testing::TestWithParam<NamedScript> {};

TEST_P(Scripts, LeaveWhatIsExpected) {
    const std::string name = GetParam().Name;
    std::ifstream file(ScriptDirectory / (name + ".expect.json"));
    ASSERT_TRUE(file) << "there is no " << name << ".expect.json";
    const json expected = json::parse(file);

    PlayedProgram program(KIRVO_PROGRAM);
    const json uses = expected.value("uses", json::array());
    for (const std::string used : uses)
        fs::copy(fs::path(KIRVO_SOURCE_DIR) / used, program.Directory() / fs::path(used).filename(),
                 fs::copy_options::recursive);
    const std::string model = expected.value("model", "");
    if (!model.empty() && !fs::exists(program.Directory() / model))
        fs::copy(ModelsForScripts / model, program.Directory());

    if (expected.value("converters", false))
        program.UseConverters();
    const ProgramEnd end = program.PlayFile(ScriptDirectory / (name + ".kscript"), model);
    ASSERT_EQ(end.Status, 0) << end.Errors << end.Output;
    EXPECT_EQ(WithoutReading(end.Output), WithoutReading(expected.value("output", "")));
    if (DeveloperBuild) // traces stand between, and among them what kept drawings find
        EXPECT_EQ(end.Errors.find("out of date"), std::string::npos) << end.Errors;
    else
        EXPECT_EQ(end.Errors, expected.value("errors", ""));

    const json reports = expected.value("reports", json::object()), files = expected.value("files", json::object());
    for (const auto& [report, contents] : reports.items())
        EXPECT_EQ(Differences(contents, program.Json(report)), "") << report;
    for (const auto& [saved, contents] : files.items()) {
        ASSERT_EQ(fs::exists(program.Directory() / saved), !contents.is_null()) << saved;
        if (!contents.is_null()) {
            EXPECT_EQ(Differences(contents, program.ReportOn(saved)), "") << saved;
        }
    }
    const json pictures = expected.value("pictures", json::array());
    for (const std::string picture : pictures)
        EXPECT_TRUE(fs::exists(program.Directory() / picture)) << picture;
    const json different = expected.value("different", json::array());
    for (const json& pair : different)
        EXPECT_NE(BytesOf(program.Directory() / pair[0]), BytesOf(program.Directory() / pair[1])) << pair;
}

/// The last model of one run is that of the next, whatever its names are made of.
TEST(Restart, OpensTheLastModelAgain) {
    PlayedProgram program(KIRVO_PROGRAM);
    fs::copy(ModelsForScripts / "box.kirvo", program.Directory() / "a box.kirvo");
    ASSERT_EQ(program.Play("in \"a box\"\nmenu File Quit\n", "a box").Status, 0);
    ASSERT_EQ(program.Play("report again.json\n").Status, 0);
    EXPECT_EQ(
        Differences({{"file", {{"name", "a box.kirvo"}, {"path", program.Directory()}}}}, program.Json("again.json")),
        "");
}

/// Whatever of them runs a tool at the end.
TEST(Restart, OpensTheSideWindowsAgain) {
    PlayedProgram program(KIRVO_PROGRAM);
    fs::copy(ModelsForScripts / "box.kirvo", program.Directory());
    ASSERT_EQ(program
                  .Play("in \"Subview 0\"\nmove 20 20\nkey k o\nin \"Object browser\"\nplace 40 60\nresize 300 90\n"
                        "in \"Object Structure\"\nmenu \"LOD\" \"Set switching distances\"\nin box\nquit\n",
                        "box")
                  .Status,
              0);
    ASSERT_EQ(program.Play("report again.json\n").Status, 0);
    const json again = program.Json("again.json");
    EXPECT_EQ(Differences({{"tool", nullptr},
                           {"windows", {{"any", {{"title", " Object browser"}, {"x", 40}, {"height", 90}}}}}},
                          again) +
                  Differences({{"windows", {{"any", {{"title", " Object Structure"}}}}}}, again) +
                  Differences({{"windows", {{"none", {{"title", " Lod Setup "}}}}}}, again),
              "");
}

INSTANTIATE_TEST_SUITE_P(All, Scripts, testing::ValuesIn(AllScripts()), [](const auto& info) {
    std::string name = info.param.Name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
});

} // namespace
