#include "kirvo_file/commands.h"

#include "base/file_replacement.h"
#include "base/memory.h"
#include "files/file_check.h"
#include "files/file_information.h"
#include "files/inspection.h"
#include "files/inspection_report.h"
#include "files/reader.h"
#include "files/upgrade.h"
#include "kirvo_file/convert.h"
#include "kirvo_file/png_output.h"
#include "store/storage.h"
#include "textures/pictures.h"
#include "textures/texture_library.h"
#include "tools/font_making.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

namespace {

constexpr char Usage[] = "Usage: kirvo-file COMMAND [OPTION]... FILE...\n"
                         "Looks into Kirvo's model files (.kirvo) and texture images without opening a window.\n"
                         "\n"
                         "  info FILE          tells what a model or an image holds\n"
                         "  check FILE         tells every problem of a model or an image\n"
                         "  upgrade IN OUT     writes a model of any version as one of the current version\n"
                         "  image IN OUT.png   writes a texture image as a PNG file\n"
                         "  convert IN OUT     imports or exports, by the extensions; convert --list tells which\n"
                         "  font IN OUT        makes a font for texts of a TrueType, OpenType or Type 1 font\n"
                         "\n"
                         "  --json             info, check: answer in JSON\n"
                         "  --textures DIR     a further directory where a model's images are looked for\n"
                         "  --force            upgrade: also when that loses data of a newer version\n"
                         "  --level N          convert: only that level of detail, 0 being the nearest\n"
                         "  --object NAME      convert: only that object\n"
                         "  --as LABEL         convert: by the converter of that label\n"
                         "  --help             this text\n"
                         "\n"
                         "The exit status is 0 when all is well, 1 when a file cannot be read or written or has\n"
                         "problems, 2 when the command is not understood.\n";

struct Request {
    std::vector<std::string> Files;
    bool Json = false;
    bool Force = false;
    std::FILE* Answer = nullptr;
};

void Complain(const std::string& text) {
    std::fprintf(stderr, "kirvo-file: %s\n", Printable(text).c_str());
}

KirvoFileStatus MisusedBecause(const std::string& text) {
    Complain(text + "; try kirvo-file --help");
    return BadUsage;
}

void Print(const Request& request, const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), request.Answer);
}

bool HasProblem(const std::vector<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(), [](const Finding& finding) { return finding.Problem; });
}

// Loads a model, or complains about what keeps it from being loaded.
bool Load(const std::string& path, LoadReport& report) {
    report = LoadForInspection(path);
    if (report.Error.empty())
        return true;
    for (const Finding& finding : FindProblems(report, {}))
        Complain(path + ": " + finding.Text);
    return false;
}

KirvoFileStatus RunInfo(const Request& request) {
    const std::string& path = request.Files[0];
    ImageSummary image;
    if (SummariseImage(path, image)) {
        Print(request, request.Json ? ImageAsJson(path, image) : ImageAsText(path, image));
        return AllIsWell;
    }
    LoadReport report;
    if (!Load(path, report))
        return FileHasProblems;
    const ModelSummary model = SummariseModel();
    Print(request, request.Json ? ModelAsJson(report, model) : ModelAsText(report, model));
    return report.MissingTextures.empty() && !report.InformationLost ? AllIsWell : FileHasProblems;
}

KirvoFileStatus RunCheck(const Request& request) {
    const std::string& path = request.Files[0];
    std::vector<Finding> findings;
    ImageSummary image;
    if (SummariseImage(path, image)) {
        findings = FindImageProblems(path, image);
    } else {
        const LoadReport report = LoadForInspection(path);
        findings = FindProblems(report, report.Error.empty() ? SummariseModel() : ModelSummary{});
    }
    Print(request, request.Json ? FindingsAsJson(path, findings) : FindingsAsText(path, findings));
    return HasProblem(findings) ? FileHasProblems : AllIsWell;
}

KirvoFileStatus RunUpgrade(const Request& request) {
    const std::string &from = request.Files[0], &to = request.Files[1];
    LoadReport report;
    if (!Load(from, report))
        return FileHasProblems;
    const ModelSummary model = SummariseModel();
    const std::string problem = UpgradeModel(report, to, request.Force ? UpgradeLoss::Accept : UpgradeLoss::Refuse);
    if (!problem.empty()) {
        Complain(to + ": not written: " + problem);
        return FileHasProblems;
    }
    for (const std::string& texture : report.MissingTextures)
        Complain(to + ": texture \"" + texture + "\" was not found; it keeps its name");
    for (const ObjectSummary& object : model.Objects)
        if (object.Degenerate)
            Complain(to + ": object \"" + object.Name + "\": " + std::to_string(object.Degenerate) +
                     " polygons without area were left out");
    return AllIsWell;
}

KirvoFileStatus RunImage(const Request& request) {
    const std::string &from = request.Files[0], &to = request.Files[1];
    constexpr int MostChannels = 4;
    if (!IsAnImageFile(from.c_str())) {
        const std::string reason = WhyNoFile(from);
        Complain(from + ": " + (reason.empty() ? "no texture image" : reason));
        return FileHasProblems;
    }
    int width, height, channels;
    std::uint8_t* pixels = ReadImage(from.c_str(), width, height, channels);
    std::string problem;
    if (!pixels)
        problem = from + ": the image is damaged";
    else if (channels > MostChannels)
        problem = from + ": " + std::to_string(channels) + " channels; a PNG file can have no more than 4";
    else if (const std::string reason = WritePng(to, pixels, width, height, channels); !reason.empty())
        problem = to + ": " + reason;
    if (pixels)
        Free(pixels);
    if (problem.empty())
        return AllIsWell;
    Complain(problem);
    return FileHasProblems;
}

KirvoFileStatus RunFont(const Request& request) {
    const std::string &from = request.Files[0], &to = request.Files[1];
    const auto font = std::make_unique<Font>();
    std::string problem = WhyNoFile(from);
    if (problem.empty())
        problem = MakeFont(from.c_str(), *font);
    if (!problem.empty()) {
        Complain(from + ": " + problem);
        return FileHasProblems;
    }
    const std::string bytes = FontFileOf(*font);
    FileReplacement file(to.c_str());
    if (file.Stream())
        std::fwrite(bytes.data(), 1, bytes.size(), file.Stream());
    if (file.Stream() && file.Commit())
        return AllIsWell;
    Complain(to + ": " + std::strerror(errno));
    return FileHasProblems;
}

struct Command {
    const char* Name;
    std::size_t Files;
    bool TakesJson, TakesForce, TakesTextures;
    KirvoFileStatus (*Run)(const Request& request);
};

constexpr Command Commands[] = {
    {"info", 1, true, false, true, RunInfo},       {"check", 1, true, false, true, RunCheck},
    {"upgrade", 2, false, true, true, RunUpgrade}, {"image", 2, false, false, false, RunImage},
    {"font", 2, false, false, false, RunFont},
};

const Command* FindCommand(const std::string& name) {
    const auto found = std::find_if(std::begin(Commands), std::end(Commands),
                                    [&](const Command& command) { return name == command.Name; });
    return found == std::end(Commands) ? nullptr : found;
}

// Fills the request from what follows the command's name; gives what is wrong with it, nothing when it is right.
std::string ReadArguments(const std::vector<std::string>& arguments, const Command& command, Request& request) {
    bool optionsEnded = false;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (optionsEnded || !argument.starts_with("--"))
            request.Files.push_back(argument);
        else if (argument == "--")
            optionsEnded = true;
        else if (argument == "--json" && command.TakesJson)
            request.Json = true;
        else if (argument == "--force" && command.TakesForce)
            request.Force = true;
        else if (argument != "--textures" || !command.TakesTextures)
            return std::string(command.Name) + " has no option " + argument;
        else if (++i == arguments.size() || !CopyFileName(TextureDir, arguments[i].c_str()))
            return "--textures needs a directory";
    }
    if (request.Files.size() == command.Files)
        return "";
    return std::string(command.Name) + " needs " + (command.Files == 1 ? "one file" : "two files");
}

} // namespace

KirvoFileStatus RunKirvoFile(const std::vector<std::string>& arguments, std::FILE* answer) {
    if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
        std::fputs(Usage, answer);
        return AllIsWell;
    }
    if (arguments.empty()) {
        std::fputs(Usage, stderr);
        return BadUsage;
    }
    if (arguments[0] == "convert")
        return RunConvert({arguments.begin() + 1, arguments.end()}, answer);
    const Command* command = FindCommand(arguments[0]);
    if (!command)
        return MisusedBecause("there is no command " + arguments[0]);
    Request request;
    request.Answer = answer;
    const std::string mistake = ReadArguments(arguments, *command, request);
    if (!mistake.empty())
        return MisusedBecause(mistake);
    InitialiseStorage();
    TheStorageSlots.ResetFileInformation = ResetFileInformation;
    return command->Run(request);
}
