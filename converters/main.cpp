#include "exports.h"
#include "import_scene.h"
#include "model_file.h"

#include "base/file_replacement.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

// The converter of all formats: which one it is says the name that it is started by, to_Kirvo/NAME or from_Kirvo/NAME.

namespace {

using namespace converters;
namespace fs = std::filesystem;

/// An entry of the menus.
struct Format {
    const char* Name; // of the program
    const char* Label;
    const char* Extension;
    Exporter Write; // null: imports
    bool Binary = false, LevelFiles = false;
};

constexpr Format Formats[] = {
    {"3ds", "3DS", ".3ds", nullptr},
    {"ac3d", "AC3D", ".ac", nullptr},
    {"collada", "COLLADA", ".dae", nullptr},
    {"dxf", "DXF", ".dxf", nullptr},
    {"fbx", "FBX", ".fbx", nullptr},
    {"glb", "glTF, one file (GLB)", ".glb", nullptr},
    {"gltf", "glTF", ".gltf", nullptr},
    {"lwo", "LWO", ".lwo", nullptr},
    {"obj", "OBJ", ".obj", nullptr},
    {"off", "OFF", ".off", nullptr},
    {"ply", "PLY", ".ply", nullptr},
    {"stl", "STL", ".stl", nullptr},
    {"x", "X", ".x", nullptr},
    {"ac3d", "AC3D", ".ac", ExportAc3d},
    {"collada", "COLLADA", ".dae", ExportCollada},
    {"glb", "glTF, one file (GLB)", ".glb", ExportGltf, true, false},
    {"glb_levels", "glTF, one file a level (GLB)", ".glb", ExportGltf, true, true},
    {"gltf", "glTF", ".gltf", ExportGltf},
    {"gltf_levels", "glTF, one file a level", ".gltf", ExportGltf, false, true},
    {"obj", "OBJ", ".obj", ExportObj},
    {"ply", "PLY", ".ply", ExportPly},
    {"stl", "STL", ".stl", ExportStl},
};

std::string TemporaryPrefix() {
    const char* prefix = std::getenv("KIRVO_TEMPORARY");
    return prefix && *prefix ? prefix : "/usr/tmp/Kirvo";
}

char ErrorFile[4096];

// Leaves the text where the program looks for it. Usable in a signal's handler.
void Tell(const char* text) {
    const int file = open(ErrorFile, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file >= 0 && write(file, text, std::strlen(text)) >= 0)
        close(file);
}

[[noreturn]] void EndBySignal(int signal) {
    Tell(signal == SIGXCPU ? "The file takes too long to convert: the time limit is reached"
                           : "The file cannot be converted: it is damaged, or of a kind that is not known");
    _exit(1);
}

double NumberFrom(const char* variable, double otherwise) {
    const char* text = std::getenv(variable);
    const double value = text ? std::atof(text) : 0;
    return value > 0 ? value : otherwise;
}

// What a hostile file can take at most. KIRVO_CONVERTER_MEMORY: megabytes; KIRVO_CONVERTER_SECONDS: of the processor.
void LimitResources() {
    const double machine = static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
    constexpr double megabyte = 1024.0 * 1024.0, usualSeconds = 600;
    const double memory = NumberFrom("KIRVO_CONVERTER_MEMORY", machine / 4 / megabyte) * megabyte;
    const double seconds = NumberFrom("KIRVO_CONVERTER_SECONDS", usualSeconds);
#if !defined(__SANITIZE_ADDRESS__) && !defined(KIRVO_SANITIZED)
    const rlimit memoryLimit = {static_cast<rlim_t>(memory), static_cast<rlim_t>(memory)};
    setrlimit(RLIMIT_AS, &memoryLimit);
#else
    (void)memory;
#endif
    const rlimit timeLimit = {static_cast<rlim_t>(seconds + 1), static_cast<rlim_t>(seconds + 5)};
    setrlimit(RLIMIT_CPU, &timeLimit);
    const rlimit noDump = {0, 0};
    setrlimit(RLIMIT_CORE, &noDump);
    static char stack[65536];
    stack_t alternate = {};
    alternate.ss_sp = stack;
    alternate.ss_size = sizeof stack;
    sigaltstack(&alternate, nullptr);
    struct sigaction action = {};
    action.sa_handler = EndBySignal;
    action.sa_flags = SA_ONSTACK;
    for (const int signal : {SIGXCPU, SIGSEGV, SIGBUS, SIGFPE, SIGABRT, SIGILL})
        sigaction(signal, &action, nullptr);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

std::string ModelDirectory(const std::string& path) {
    const char* directory = std::getenv("KIRVO_MODEL_DIRECTORY");
    if (directory && *directory)
        return directory;
    return fs::path(path).parent_path();
}

std::string Import(const std::string& from, const std::string& to) {
    Model model;
    const std::string directory = ModelDirectory(from);
    if (std::string problem = ImportFile(from, directory, model); !problem.empty())
        return problem;
    return WriteModelFile(to, model, directory);
}

std::string WriteOutput(const std::string& path, const std::string& bytes) {
    FileReplacement file(path.c_str());
    if (file.Stream())
        std::fwrite(bytes.data(), 1, bytes.size(), file.Stream());
    if (file.Stream() && file.Commit())
        return "";
    return path + " cannot be written: " + std::strerror(errno);
}

// Of the model, what was asked for alone.
std::string KeepWanted(Model& model) {
    const char* wanted = std::getenv("KIRVO_OBJECT");
    if (!wanted)
        return "";
    const auto found = std::find_if(model.Objects.begin(), model.Objects.end(),
                                    [&](const Object& object) { return object.Name == wanted; });
    if (found == model.Objects.end())
        return std::string("the model has no object \"") + wanted + "\"";
    Object kept = std::move(*found);
    model.Objects.clear();
    model.Objects.push_back(std::move(kept));
    model.Branches.clear();
    return "";
}

std::string WriteFiles(const Format& format, const Export& task, const fs::path& to) {
    std::vector<OutputFile> files = format.Write(task);
    // What the main file names comes first.
    for (std::size_t i = files.size(); i-- > 0;) {
        const fs::path path = files[i].Name.empty() ? to : to.parent_path() / files[i].Name;
        if (std::string problem = WriteOutput(path, files[i].Bytes); !problem.empty())
            return problem;
        files[i].Bytes.clear();
        files[i].Bytes.shrink_to_fit();
    }
    return "";
}

std::string ExportModel(const Format& format, const std::string& from, const fs::path& to) {
    Model model;
    if (std::string problem = ReadModelFile(from, model); !problem.empty())
        return problem;
    if (std::string problem = KeepWanted(model); !problem.empty())
        return problem;
    const char* level = std::getenv("KIRVO_LEVEL");
    Export task{model,         ImagesOf(model, ModelDirectory(from)),
                to.stem(),     level ? static_cast<std::size_t>(std::max(0, std::atoi(level))) : 0,
                format.Binary, !level && !format.LevelFiles};
    if (!format.LevelFiles)
        return WriteFiles(format, task, to);
    std::size_t levels = 1;
    for (const Object& object : model.Objects)
        levels = std::max(levels, object.Levels.size());
    for (task.Level = 0; task.Level < levels; ++task.Level) {
        fs::path path = to;
        task.Stem = to.stem().string() + "_LOD" + std::to_string(task.Level);
        path.replace_filename(task.Stem + to.extension().string());
        if (std::string problem = WriteFiles(format, task, path); !problem.empty())
            return problem;
    }
    return "";
}

const Format* FormatOf(const fs::path& program) {
    const bool exports = program.parent_path().filename() == "from_Kirvo";
    for (const Format& format : Formats)
        if (program.filename() == format.Name && (format.Write != nullptr) == exports)
            return &format;
    return nullptr;
}

int Answer(const Format& format) {
    std::FILE* file = std::fopen((TemporaryPrefix() + "_init").c_str(), "w");
    if (!file)
        return 1;
    std::fprintf(file, "%s\n%s\n", format.Label, format.Extension);
    return std::fclose(file) == 0 ? 0 : 1;
}

std::string Convert(const Format& format, const std::string& from, const std::string& to) {
    try {
        return format.Write ? ExportModel(format, from, to) : Import(from, to);
    } catch (const std::bad_alloc&) {
        return "The file needs more memory than it may take";
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

} // namespace

int main(int count, char* arguments[]) {
    const Format* format = count > 0 ? FormatOf(arguments[0]) : nullptr;
    if (format && count == 2 && std::strcmp(arguments[1], "KIRVO") == 0)
        return Answer(*format);
    if (!format || count != 3) {
        std::fprintf(stderr, "This is a converter of Kirvo; \"kirvo-file convert IN OUT\" runs it.\n");
        return 2;
    }
    std::snprintf(ErrorFile, sizeof ErrorFile, "%s_error", TemporaryPrefix().c_str());
    LimitResources();
    const std::string problem = Convert(*format, arguments[1], arguments[2]);
    if (problem.empty())
        return 0;
    Tell(problem.c_str());
    return 1;
}
