#include "support/played_program.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

// What the installed program has beside itself; a link to the source serves.
constexpr const char* InstalledDirectories[] = {"manual", "data", "examples"};

constexpr double Tolerance = 0.001;

bool HasOnly(const json& object, const char* member) {
    return object.is_object() && object.size() == 1 && object.contains(member);
}

bool Contains(const json& array, const json& expected) {
    return std::any_of(array.begin(), array.end(),
                       [&](const json& item) { return Differences(expected, item).empty(); });
}

std::string Differ(const std::string& path, const std::string& expected, const json& found) {
    return path + ": expected " + expected + ", found " + found.dump() + "\n";
}

std::string ArrayDifferences(const json& expected, const json& found, const std::string& path) {
    if (HasOnly(expected, "count") && found.size() != expected["count"])
        return Differ(path, expected["count"].dump() + " items", found);
    if (HasOnly(expected, "any") && !Contains(found, expected["any"]))
        return Differ(path, "an item like " + expected["any"].dump(), found);
    if (HasOnly(expected, "none") && Contains(found, expected["none"]))
        return Differ(path, "no item like " + expected["none"].dump(), found);
    if (expected.is_object())
        return "";
    if (expected.size() != found.size())
        return Differ(path, expected.dump(), found);
    std::string differences;
    for (std::size_t i = 0; i < expected.size(); ++i)
        differences += Differences(expected[i], found[i], path + "[" + std::to_string(i) + "]");
    return differences;
}

} // namespace

PlayedProgram::PlayedProgram(fs::path built, std::string startsIn)
    : program(std::move(built)),
      directory(std::move(startsIn)) {
    for (const fs::path& made : {Directory(), Home(), Installation()})
        fs::create_directory(made);
    fs::create_symlink(program, Installation() / "Kirvo");
    for (const char* name : InstalledDirectories)
        if (const fs::path source = fs::path(KIRVO_SOURCE_DIR) / name; fs::exists(source))
            fs::create_directory_symlink(source, Installation() / name);
    fs::create_directory_symlink(KIRVO_FONTS, Installation() / "fonts");
}

void PlayedProgram::UseConverters() {
    fs::create_directory_symlink(program.parent_path() / "converters", Installation() / "converters");
}

ProgramEnd PlayedProgram::PlayFile(const fs::path& script, const std::string& model) {
    ProgramStart start;
    start.Program = Installation() / "Kirvo";
    if (!model.empty())
        start.Arguments = {model};
    start.Directory = Directory();
    start.KillAfter = KillAfter;
    start.Environment = {{"HOME", Home()}, {"KIRVO_DISPLAY", Display}, {"KIRVO_SCRIPT", script}};
    for (const char* passedOn : {"LIBGL_ALWAYS_SOFTWARE", "ASAN_OPTIONS", "PATH"})
        if (const char* value = std::getenv(passedOn))
            start.Environment.emplace_back(passedOn, value);
    start.Environment.insert(start.Environment.end(), Environment.begin(), Environment.end());
    ProgramEnd end = RunProgram(start);
    // The program itself ends with 0 after such a signal.
    if (end.Errors.find("Segmentation violation") != std::string::npos)
        end.Status = 128 + SIGSEGV;
    else if (end.Errors.find("Bus error") != std::string::npos)
        end.Status = 128 + SIGBUS;
    return end;
}

ProgramEnd PlayedProgram::Play(const std::string& script, const std::string& model) {
    const fs::path file = place.Path() / "script";
    std::ofstream(file) << script;
    return PlayFile(file, model);
}

json PlayedProgram::Json(const std::string& name) const {
    std::ifstream file(Directory() / name);
    if (!file)
        throw std::runtime_error("there is no " + name);
    return json::parse(file);
}

json PlayedProgram::ReportOn(const std::string& model) {
    const ProgramEnd end = Play("report \"report of a file.json\"\n", model);
    if (end.Status != 0)
        throw std::runtime_error("cannot report on " + model + ": " + end.Errors);
    return Json("report of a file.json");
}

std::string Differences(const json& expected, const json& found, const std::string& path) {
    if (found.is_array() && (expected.is_array() || expected.is_object()))
        return ArrayDifferences(expected, found, path);
    if (expected.is_object() && found.is_object()) {
        std::string differences;
        for (const auto& [name, value] : expected.items()) {
            const std::string place = path.empty() ? name : path + "." + name;
            differences +=
                found.contains(name) ? Differences(value, found[name], place) : Differ(place, value.dump(), "nothing");
        }
        return differences;
    }
    if (expected.is_number() && found.is_number())
        return std::abs(expected.get<double>() - found.get<double>()) <= Tolerance
                   ? ""
                   : Differ(path, expected.dump(), found);
    return expected == found ? "" : Differ(path, expected.dump(), found);
}
