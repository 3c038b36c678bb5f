#include "files/recent_files.h"

#include "base/directories.h"
#include "base/file_replacement.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <utility>
#include <vector>

namespace {

/// In the home directory: a path a line, the newest first.
constexpr const char* ListName = "/.kirvo_recent";
/// Bytes of a label; longer paths lose their beginning.
constexpr std::size_t LongestLabel = 64;

std::optional<std::vector<std::string>> Files;
std::array<std::string, MostRecentFiles> Labels;
std::array<MenuEntry, MostRecentFiles> Menu;

std::string NameOfList() {
    return std::string(HomeDir) + ListName;
}

std::vector<std::string>& TheFiles() {
    if (!Files) {
        Files.emplace();
        std::ifstream list(NameOfList());
        for (std::string path; Files->size() < MostRecentFiles && std::getline(list, path);)
            if (path.starts_with('/'))
                Files->push_back(path);
    }
    return *Files;
}

/// The user is not told when the list cannot be written: nothing of the work depends on it.
void Write() {
    FileReplacement list(NameOfList().c_str());
    if (!list.Stream())
        return;
    for (const std::string& path : TheFiles())
        std::fprintf(list.Stream(), "%s\n", path.c_str());
    list.Commit();
}

bool Exists(int number) {
    const auto& files = TheFiles();
    std::error_code ignored;
    return static_cast<std::size_t>(number) < files.size() &&
           std::filesystem::is_regular_file(files[static_cast<std::size_t>(number)], ignored);
}

template <int Number>
std::int32_t Check() {
    return Exists(Number) ? 0 : MenuHidden;
}

template <int... Numbers>
constexpr auto ChecksOf(std::integer_sequence<int, Numbers...>) {
    return std::array<std::int32_t (*)(), sizeof...(Numbers)>{Check<Numbers>...};
}

constexpr auto Checks = ChecksOf(std::make_integer_sequence<int, MostRecentFiles>());

/// The path, from the home directory where it lies in there, with its beginning cut where it is long.
std::string LabelOf(const std::string& path) {
    const std::string home = std::string(HomeDir) + "/";
    std::string label = home.size() > 1 && path.starts_with(home) ? "~/" + path.substr(home.size()) : path;
    if (label.size() > LongestLabel) {
        std::size_t cut = label.size() - LongestLabel;
        // Not inside a character of several bytes.
        while (cut < label.size() && (static_cast<unsigned char>(label[cut]) & 0xC0) == 0x80)
            ++cut;
        label = "..." + label.substr(cut);
    }
    return label;
}

} // namespace

void NoteRecentFile(const std::string& path) {
    std::error_code error;
    const std::string whole = std::filesystem::absolute(path, error).lexically_normal().string();
    if (error || whole.find('\n') != std::string::npos)
        return;
    ForgetRecentFiles(); // another program may have added to it
    auto& files = TheFiles();
    if (!files.empty() && files.front() == whole)
        return;
    std::erase(files, whole);
    files.insert(files.begin(), whole);
    files.resize(std::min<std::size_t>(files.size(), MostRecentFiles));
    Write();
    RecentFilesMenu();
}

const MenuEntry* RecentFilesMenu() {
    const auto& files = TheFiles();
    for (std::size_t i = 0; i < MostRecentFiles; ++i) {
        Labels[i] = i < files.size() ? LabelOf(files[i]) : "";
        Menu[i] = {.Label = Labels[i].c_str(),
                   .Kind = i + 1 == MostRecentFiles ? MenuEntryLast : MenuEntryItem,
                   .Id = static_cast<std::int16_t>(FirstRecentItem + i),
                   .Shortcut = 0,
                   .Submenu = nullptr,
                   .Check = Checks[i]};
    }
    return Menu.data();
}

int RecentFilesCheck() {
    for (int i = 0; i < MostRecentFiles; ++i)
        if (Exists(i))
            return 0;
    return MenuHidden;
}

std::string RecentFileOfItem(int item) {
    const auto& files = TheFiles();
    const int number = item - FirstRecentItem;
    return number >= 0 && static_cast<std::size_t>(number) < files.size() ? files[static_cast<std::size_t>(number)]
                                                                          : "";
}

void ForgetRecentFiles() {
    Files.reset();
}
