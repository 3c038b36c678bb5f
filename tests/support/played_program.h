#pragma once

#include "support/run_program.h"
#include "support/temporary_directory.h"

#include <nlohmann/json_fwd.hpp>

#include <chrono>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// The program in an installation and a home of its own, played by scripts without a display. It starts in Directory(),
/// where relative names of a script lead.
class PlayedProgram {
  public:
    /// `program` is the built program, or another that takes scripts as it does. It starts in the directory of that
    /// name beside its installation, which may be its home.
    explicit PlayedProgram(std::filesystem::path program, std::string directory = "work place");

    std::filesystem::path Directory() const { return place.Path() / directory; }

    std::filesystem::path Home() const { return place.Path() / "home"; }

    std::filesystem::path Installation() const { return place.Path() / "Kirvo"; }

    /// Plays the script of a file to its end, with a model opened at the start unless it is "".
    ProgramEnd PlayFile(const std::filesystem::path& script, const std::string& model = "");
    /// The same for a text, which becomes the file "script" beside the working directory.
    ProgramEnd Play(const std::string& script, const std::string& model = "");

    /// Puts the converters that were built beside the program into the installation.
    void UseConverters();

    /// Added to the environment of every start.
    std::vector<std::pair<std::string, std::string>> Environment;
    std::string Display = "headless:1000x700";
    /// When it is killed without warning; 0: never.
    std::chrono::milliseconds KillAfter{0};

    /// A report or any other JSON file that a script has written in Directory().
    nlohmann::json Json(const std::string& name) const;
    /// The report on a model file in Directory(), from a run of its own.
    nlohmann::json ReportOn(const std::string& model);

  private:
    TemporaryDirectory place;
    std::filesystem::path program;
    std::string directory;
};

/// Where `found` is not as `expected` says, with the path to each place, one a line; "" when it is. Of an object only
/// the members that `expected` has are compared, numbers to a thousandth. An array is compared item by item; when
/// `expected` is {"count": N}, its length; {"any": X}: some item is X; {"none": X}: no item is.
std::string Differences(const nlohmann::json& expected, const nlohmann::json& found, const std::string& path = "");
