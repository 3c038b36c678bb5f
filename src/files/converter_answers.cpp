#include "files/converter_answers.h"

#include "base/directories.h"
#include "base/file_replacement.h"

#include <fstream>
#include <sys/stat.h>

namespace {

constexpr char Header[] = "Kirvo converters 1";

/// What changes when a program does; links are followed. Empty when there is none.
std::string StampOf(const std::string& program) {
    struct stat status;
    if (stat(program.c_str(), &status) != 0)
        return "";
    std::string stamp;
    for (const long long part :
         {static_cast<long long>(status.st_mtim.tv_sec), static_cast<long long>(status.st_mtim.tv_nsec),
          static_cast<long long>(status.st_ctim.tv_sec), static_cast<long long>(status.st_ctim.tv_nsec),
          static_cast<long long>(status.st_size), static_cast<long long>(status.st_ino)})
        stamp += std::to_string(part) + " ";
    return stamp;
}

} // namespace

// Four lines a program: its path, its stamp, label and extension.
ConverterAnswers::ConverterAnswers() {
    if (!*HomeDir)
        return;
    File = std::string(HomeDir) + "/.kirvo_converters";
    std::ifstream file(File, std::ios::binary);
    std::string program;
    if (!std::getline(file, program) || program != Header)
        return;
    for (Known known; std::getline(file, program) && std::getline(file, known.Stamp) &&
                      std::getline(file, known.Answer.Label) && std::getline(file, known.Answer.Extension);)
        Programs[program] = known;
}

ConverterAnswers::~ConverterAnswers() {
    if (!Changed || File.empty())
        return;
    FileReplacement replacement(File.c_str());
    if (!replacement.Stream())
        return;
    std::fprintf(replacement.Stream(), "%s\n", Header);
    for (const auto& [program, known] : Programs)
        if (StampOf(program) == known.Stamp)
            std::fprintf(replacement.Stream(), "%s\n%s\n%s\n%s\n", program.c_str(), known.Stamp.c_str(),
                         known.Answer.Label.c_str(), known.Answer.Extension.c_str());
    replacement.Commit();
}

bool ConverterAnswers::Find(const std::string& program, ConverterAnswer& answer) const {
    const auto found = Programs.find(program);
    if (found == Programs.end() || found->second.Stamp != StampOf(program))
        return false;
    answer = found->second.Answer;
    return true;
}

void ConverterAnswers::Remember(const std::string& program, const ConverterAnswer& answer) {
    // Lines could not hold such a name.
    if (program.find('\n') != std::string::npos)
        return;
    Programs[program] = {StampOf(program), answer};
    Changed = true;
}
