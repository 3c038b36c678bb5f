#include "files/converters.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/memory.h"
#include "base/trusted_places.h"
#include "files/converter_answers.h"
#include "files/converter_processes.h"

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <fstream>
#include <memory>
#include <strings.h>
#include <unistd.h>
#include <vector>

Converter* ImportList;
Converter* ExportList;

namespace {

constexpr std::size_t LongestAnswer = 99;
/// A program that does not answer within this time is none of ours, seconds.
constexpr double LongestProbe = 5;

// Reads one line of at most LongestAnswer characters; what is longer is cut.
std::string ReadAnswerLine(std::istream& file) {
    std::string line;
    std::getline(file, line);
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n'))
        line.pop_back();
    return line.substr(0, LongestAnswer);
}

// Asks a program what it converts. Gives an empty label when it is no converter; false when it did not get to answer.
bool Ask(const std::string& program, ConverterFolder& folder, ConverterAnswer& answer) {
    if (!folder.Problem().empty())
        return false;
    unlink(folder.AnswerFile().c_str());
    const ConverterEnd end = RunConverter({program, {"KIRVO"}, "", LongestProbe}, folder, nullptr);
    if (end.NotStarted || end.TookTooLong)
        return false;
    std::ifstream file(folder.AnswerFile(), std::ios::binary);
    answer.Label = ReadAnswerLine(file);
    answer.Extension = ReadAnswerLine(file);
    if (answer.Label.empty() || answer.Extension.empty())
        answer = {};
    unlink(folder.AnswerFile().c_str());
    return true;
}

char* CopyOfExtension(const std::string& answer) {
    if (answer.starts_with('*'))
        return nullptr;
    return CopyOfString((answer.starts_with('.') ? answer : "." + answer).c_str());
}

void AddConverter(Converter*& list, const std::string& program, const ConverterAnswer& answer) {
    auto* converter = static_cast<Converter*>(Allocate(sizeof(Converter)));
    if (!converter)
        return;
    *converter = {list, CopyOfString(program.c_str()), CopyOfString(answer.Label.c_str()),
                  CopyOfExtension(answer.Extension)};
    list = converter;
}

// The entries of a directory in alphabetical order, hidden ones left out.
std::vector<std::string> EntriesOf(const std::string& directory) {
    dirent** entries = nullptr;
    const int count = scandir(directory.c_str(), &entries, nullptr, alphasort);
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
        if (entries[i]->d_name[0] != '.')
            names.emplace_back(entries[i]->d_name);
        std::free(entries[i]);
    }
    std::free(entries);
    return names;
}

/// The probing of one start, with what is shared by all probes.
class Prober {
  public:
    ConverterAnswer AnswerOf(const std::string& program) {
        ConverterAnswer answer;
        if (Known.Find(program, answer))
            return answer;
        if (!Folder)
            Folder = std::make_unique<ConverterFolder>();
        if (Ask(program, *Folder, answer))
            Known.Remember(program, answer);
        return answer;
    }

  private:
    ConverterAnswers Known;
    std::unique_ptr<ConverterFolder> Folder;
};

void FindConvertersIn(const std::string& place, Converter*& list, Prober& prober) {
    const std::string directory = std::string(KirvoDir) + "/" + place;
    std::string reason;
    const std::vector<std::string> names = EntriesOf(directory);
    if (names.empty())
        return;
    if (!InstallationIsTrusted(place, &reason)) {
        Trace("Converters in %s are not used: %s\n", directory.c_str(), reason.c_str());
        return;
    }
    for (const std::string& name : names) {
        const std::string program = directory + "/" + name;
        if (!InstallationIsTrusted(place + "/" + name, &reason)) {
            Trace("Converter %s is not used: %s\n", program.c_str(), reason.c_str());
            continue;
        }
        const ConverterAnswer answer = prober.AnswerOf(program);
        if (!answer.Label.empty())
            AddConverter(list, program, answer);
    }
}

Converter* TakeGreatest(Converter*& list) {
    Converter** greatest = &list;
    for (Converter** link = &list; *link; link = &(*link)->Next)
        if (strcasecmp((*link)->Label, (*greatest)->Label) > 0)
            greatest = link;
    Converter* taken = *greatest;
    *greatest = taken->Next;
    return taken;
}

void SortConverters(Converter*& list) {
    Converter* sorted = nullptr;
    while (list) {
        Converter* greatest = TakeGreatest(list);
        greatest->Next = sorted;
        sorted = greatest;
    }
    list = sorted;
}

void FreeList(Converter*& list) {
    while (list) {
        Converter* next = list->Next;
        Free(list->Program);
        Free(list->Label);
        if (list->Extension)
            Free(list->Extension);
        Free(list);
        list = next;
    }
}

} // namespace

void FindConverters() {
    FreeConverters();
    Prober prober;
    FindConvertersIn("converters/to_Kirvo", ImportList, prober);
    FindConvertersIn("converters/from_Kirvo", ExportList, prober);
    SortConverters(ImportList);
    SortConverters(ExportList);
}

void FreeConverters() {
    FreeList(ImportList);
    FreeList(ExportList);
}

Converter* FindConverter(Converter* list, const char* extension) {
    for (; list; list = list->Next)
        if (list->Extension && strcasecmp(list->Extension, extension) == 0)
            return list;
    return nullptr;
}

const char* ExtensionOf(const char* path) {
    const char* name = std::strrchr(path, '/');
    name = name ? name + 1 : path;
    const char* dot = std::strrchr(name, '.');
    return dot && dot != name ? dot : "";
}
