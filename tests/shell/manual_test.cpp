#include "gooey/event_loop.h"
#include "gooey/menu.h"
#include "shell/commands.h"
#include "shell/menu_walk.h"
#include "shell/menus.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path Source = KIRVO_SOURCE_DIR;
const fs::path Manual = Source / "manual";

std::string TextOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What the first group of the pattern matches, wherever the pattern is found.
std::vector<std::string> AllMatches(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> matches;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
        matches.push_back((*at)[1]);
    return matches;
}

/// The pages that can be reached from one, it included.
std::set<std::string> ReachableFrom(const std::string& page) {
    std::set<std::string> reached;
    std::vector<std::string> waiting = {page};
    while (!waiting.empty()) {
        const std::string name = waiting.back();
        waiting.pop_back();
        if (!reached.insert(name).second)
            continue;
        for (const std::string& link : AllMatches(TextOf(Manual / name), "href=\"([^\"#:]+\\.html)"))
            waiting.push_back(link);
    }
    return reached;
}

TEST(Manual, HasNoDeadLinksAndNoLostPages) {
    std::set<std::string> pages;
    for (const auto& entry : fs::directory_iterator(Manual))
        if (entry.path().extension() == ".html")
            pages.insert(entry.path().filename());
    for (const std::string& page : pages)
        for (const std::string& target : AllMatches(TextOf(Manual / page), "(?:href|src)=\"([^\"#:]+)"))
            EXPECT_TRUE(fs::exists(Manual / target)) << page << " leads to " << target;
    for (const char* index : {"ReferenceIndex.html", "TutorIndex.html"})
        EXPECT_EQ(ReachableFrom(index), pages) << "from " << index;
}

TEST(Manual, ShowsEveryPictureAndDescribesIt) {
    std::set<std::string> shown;
    for (const auto& entry : fs::directory_iterator(Manual)) {
        if (entry.path().extension() != ".html")
            continue;
        for (const std::string& image : AllMatches(TextOf(entry.path()), "(<img[^>]*>)")) {
            EXPECT_NE(image.find("alt=\""), std::string::npos) << entry.path() << ": " << image;
            for (const std::string& picture : AllMatches(image, "src=\"([^\"]+)\""))
                shown.insert(picture);
        }
    }
    if (!fs::exists(Manual / "pictures"))
        return;
    for (const auto& entry : fs::directory_iterator(Manual / "pictures"))
        EXPECT_TRUE(shown.count("pictures/" + entry.path().filename().string())) << entry.path() << " is on no page";
}

TEST(Manual, HasThePagesThatTheProgramOpens) {
    for (const auto& entry : fs::recursive_directory_iterator(Source / "src")) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h")
            continue;
        for (const std::string& page : AllMatches(
                 TextOf(entry.path()), "\"((?:[RT]_[A-Za-z-]+|TutorIndex|ReferenceIndex|WhatsNew|LastMinute))\""))
            EXPECT_TRUE(fs::exists(Manual / (page + ".html"))) << entry.path() << " opens " << page;
    }
}

/// A shortcut with a letter has two forms; a page that gives the other one has its reader look for it in vain.
TEST(Manual, GivesShortcutsAsTheMenusShowThem) {
    std::set<std::string> shown;
    for (const MenuEntry* const* bar : {ObjectMenus, SceneMenus})
        ForEveryEntryOf(bar, [&](const MenuEntry& entry) {
            if (entry.Shortcut < 0)
                shown.insert(std::string("Alt+") + static_cast<char>(-entry.Shortcut));
        });
    for (const auto& entry : fs::directory_iterator(Manual)) {
        if (entry.path().extension() != ".html")
            continue;
        for (const std::string& shortcut : AllMatches(TextOf(entry.path()), "\\b((?:Ctrl|Alt)\\+[A-Z])\\b"))
            EXPECT_TRUE(shown.count(shortcut)) << entry.path() << ": " << shortcut;
    }
}

// ---- The table of keys

std::string KeyName(int code) {
    static const std::map<int, std::string> names = {
        {BackspaceCharacter, "Backspace"},
        {TabCharacter, "Tab"},
        {ReturnCharacter, "Return"},
        {EscapeCharacter, "Escape"},
        {DeleteCharacter, "Delete"},
        {PageUpCharacter, "Page Up"},
        {PageDownCharacter, "Page Down"},
        {HomeCharacter, "Home"},
        {EndCharacter, "End"},
        {InsertCharacter, "Insert"},
        {' ', "Space"},
        {UpCharacter, "Up"},
        {DownCharacter, "Down"},
        {LeftCharacter, "Left"},
        {RightCharacter, "Right"},
    };
    if (const auto name = names.find(code); name != names.end())
        return name->second;
    if (code >= CtrlCharacter('A') && code <= CtrlCharacter('Z'))
        return std::string("Alt+") + static_cast<char>(code - CtrlCharacter('A') + 'A');
    return std::string(1, static_cast<char>(std::toupper(code)));
}

std::string WhereValid(int modes) {
    switch (modes) {
    case InVertexMode:
        return "vertices";
    case InPolygonMode:
        return "polygons";
    case InSceneMode:
        return "scene";
    case InObjectMode:
        return "object";
    default:
        return "everywhere";
    }
}

std::string TableOfKeys() {
    std::string table = "<tr><th>Key</th><th>Does</th><th>Where</th></tr>\n";
    for (const Command& command : AllCommands())
        if (command.Code < FirstMenuCode && command.Function)
            table += "<tr><td><kbd>" + KeyName(command.Code) + "</kbd></td><td>" + command.Name + "</td><td>" +
                     WhereValid(command.Modes) + "</td></tr>\n";
    return table;
}

/// The page of keys lists those of the command table, and no others. KIRVO_ACCEPT_REFERENCES brings it up to date.
TEST(Manual, ListsTheKeysOfTheCommands) {
    const fs::path page = Manual / "R_Keys.html";
    const std::string begin = "<!-- commands: from the command table -->\n", end = "<!-- end of commands -->";
    std::string text = TextOf(page);
    const std::size_t from = text.find(begin) + begin.size(), to = text.find(end);
    ASSERT_LE(from, to);
    ASSERT_NE(to, std::string::npos);
    if (std::getenv("KIRVO_ACCEPT_REFERENCES"))
        std::ofstream(page, std::ios::binary) << text.replace(from, to - from, TableOfKeys());
    else
        EXPECT_EQ(text.substr(from, to - from), TableOfKeys())
            << "KIRVO_ACCEPT_REFERENCES=1 ./test -R Manual brings manual/R_Keys.html up to date";
}

} // namespace
