#include "kirvo_file/convert.h"

#include "base/directories.h"
#include "base/file_replacement.h"
#include "base/trusted_places.h"
#include "files/converter_processes.h"
#include "files/converters.h"
#include "files/inspection.h"
#include "files/inspection_report.h"
#include "files/writer.h"
#include "store/storage.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <strings.h>

namespace {

namespace fs = std::filesystem;

struct Conversion {
    fs::path From, To;
    std::string Label; // of the converter that is wanted; empty: by extension
};

KirvoFileStatus Fail(const std::string& text) {
    std::fprintf(stderr, "kirvo-file: %s\n", Printable(text).c_str());
    return FileHasProblems;
}

KirvoFileStatus Misused(const std::string& text) {
    std::fprintf(stderr, "kirvo-file: %s; try kirvo-file --help\n", Printable(text).c_str());
    return BadUsage;
}

bool HasConverters(const std::string& directory) {
    std::error_code error;
    return fs::is_directory(directory + "/converters", error);
}

// Neither a home directory nor an installation elsewhere is needed.
void FindInstallation() {
    if (const char* home = std::getenv("HOME"))
        CopyFileName(HomeDir, home);
    const char* named = std::getenv("KIRVOHOME");
    CopyFileName(KirvoDir, named && HasConverters(named) ? named : DirectoryOfRunningProgram().c_str());
    FindConverters();
}

void ListConverters(const Converter* list, const char* what, std::FILE* answer) {
    for (; list; list = list->Next)
        std::fprintf(answer, "%s  %-8s %s\n", what, list->Extension ? list->Extension : "*", list->Label);
}

Converter* Choose(Converter* list, const fs::path& file, const std::string& label) {
    if (label.empty())
        return FindConverter(list, ExtensionOf(file.c_str()));
    for (; list; list = list->Next)
        if (strcasecmp(list->Label, label.c_str()) == 0)
            return list;
    return nullptr;
}

bool IsModel(const fs::path& file) {
    return strcasecmp(ExtensionOf(file.c_str()), KirvoExtension) == 0;
}

// The model as one of the current version, which converters read. Gives why that failed, nothing on success.
std::string BringUpToDate(fs::path& model, ConverterFolder& folder) {
    std::ifstream file(model, std::ios::binary);
    std::string line;
    std::getline(file, line);
    if (line == "Compatibility: 3.05")
        return "";
    InitialiseStorage();
    const LoadReport report = LoadForInspection(model);
    if (!report.Error.empty())
        return report.Error;
    model = folder.NewExportFile();
    return WriteKirvo(model.c_str()) ? "" : "it cannot be brought up to date";
}

// Puts a finished file into its place, on whatever disk that is.
std::string PutInPlace(const fs::path& finished, const fs::path& to) {
    FileReplacement file(to.c_str());
    errno = file.Stream() ? 0 : errno;
    std::ifstream from(finished, std::ios::binary);
    char block[64 * 1024];
    while (file.Stream() && from.read(block, sizeof block).gcount() > 0)
        std::fwrite(block, 1, static_cast<std::size_t>(from.gcount()), file.Stream());
    if (file.Stream() && !from.bad() && from.eof() && file.Commit())
        return "";
    return errno ? std::strerror(errno) : "it cannot be written";
}

std::string Import(const Converter& converter, const fs::path& from, const fs::path& to, const fs::path& directory,
                   ConverterFolder& folder) {
    const fs::path made = folder.NewImportFile();
    const std::string problem = ConvertFile(converter.Program, from, made, directory, folder);
    return problem.empty() ? PutInPlace(made, to) : problem;
}

std::string Export(const Converter& converter, fs::path from, const fs::path& to, const fs::path& directory,
                   ConverterFolder& folder) {
    std::error_code error;
    const bool replaces = fs::exists(to, error);
    std::string problem = BringUpToDate(from, folder);
    if (problem.empty())
        problem = ConvertFile(converter.Program, from, to, directory, folder);
    // Some converters make files of other names beside it.
    if (problem == NothingMade && converter.Program && std::strstr(converter.Program, "_levels"))
        return "";
    if (!problem.empty() && !replaces)
        fs::remove(to, error);
    return problem;
}

std::string Convert(const Conversion& wanted, ConverterFolder& folder) {
    const Converter *import = nullptr, *exporter = nullptr;
    if (!IsModel(wanted.From) && !(import = Choose(ImportList, wanted.From, IsModel(wanted.To) ? wanted.Label : "")))
        return wanted.From.string() + ": there is no converter that imports such files";
    if (!IsModel(wanted.To) && !(exporter = Choose(ExportList, wanted.To, wanted.Label)))
        return wanted.To.string() + ": there is no converter that exports such files";
    if (!import && !exporter)
        return "both are model files; \"upgrade\" copies those";
    fs::path model = wanted.From;
    if (import) {
        model = exporter ? fs::path(folder.NewImportFile()) : wanted.To;
        if (const std::string problem = Import(*import, wanted.From, model, model.parent_path(), folder);
            !problem.empty())
            return wanted.From.string() + ": " + problem;
    }
    if (!exporter)
        return "";
    const std::string problem = Export(*exporter, model, wanted.To, model.parent_path(), folder);
    return problem.empty() ? "" : wanted.To.string() + ": " + problem;
}

// Fills the conversion; gives what is wrong with the arguments.
std::string ReadConversion(const std::vector<std::string>& arguments, Conversion& wanted) {
    std::vector<std::string> files;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (optionsEnded || !argument.starts_with("--")) {
            files.push_back(argument);
        } else if (argument == "--") {
            optionsEnded = true;
        } else if (argument == "--level" || argument == "--object" || argument == "--as") {
            if (++i == arguments.size())
                return argument + " needs a value";
            const std::string& value = arguments[i];
            if (argument == "--level" && (value.empty() || value.find_first_not_of("0123456789") != std::string::npos))
                return "--level needs a number from 0 on";
            if (argument == "--as")
                wanted.Label = value;
            else
                setenv(argument == "--level" ? "KIRVO_LEVEL" : "KIRVO_OBJECT", value.c_str(), 1);
        } else {
            return "convert has no option " + argument;
        }
    }
    if (files.size() != 2)
        return "convert needs two files";
    std::error_code error;
    wanted.From = fs::absolute(files[0], error).lexically_normal();
    wanted.To = fs::absolute(files[1], error).lexically_normal();
    return "";
}

} // namespace

KirvoFileStatus RunConvert(const std::vector<std::string>& arguments, std::FILE* answer) {
    if (arguments.size() == 1 && arguments[0] == "--list") {
        FindInstallation();
        ListConverters(ImportList, "import", answer);
        ListConverters(ExportList, "export", answer);
        return AllIsWell;
    }
    Conversion wanted;
    if (const std::string mistake = ReadConversion(arguments, wanted); !mistake.empty())
        return Misused(mistake);
    if (const std::string why = WhyNoFile(wanted.From); !why.empty())
        return Fail(wanted.From.string() + ": " + why);
    FindInstallation();
    ConverterFolder folder;
    if (!folder.Problem().empty())
        return Fail(folder.Problem());
    const std::string problem = Convert(wanted, folder);
    return problem.empty() ? AllIsWell : Fail(problem);
}
