#include "shell/commands.h"

#include "gooey/event_loop.h"
#include "gooey/menu.h"
#include "shell/menu_walk.h"
#include "shell/menus.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <set>
#include <string>

namespace {

constexpr int Modes[] = {InVertexMode, InPolygonMode, InSceneMode};

const Command* AnyCommand(int code, int mode) {
    const Command* action = FindCommand(code, mode, CommandKind::Action);
    return action ? action : FindCommand(code, mode, CommandKind::Safe);
}

/// What KEYBD events give for a shortcut as a menu shows it; 0 for what no key stands for.
int KeyOfShortcut(int shortcut) {
    if (shortcut == DoubleClickShortcut || shortcut == ShiftLeftMouseShortcut || shortcut == ShiftMiddleMouseShortcut)
        return 0;
    return shortcut < 0 ? CtrlCharacter(static_cast<char>(-shortcut)) : std::tolower(shortcut);
}

struct Bar {
    const MenuEntry* const* Menus;
    int Modes;
};

const Bar Bars[] = {{ObjectMenus, InVertexMode | InPolygonMode}, {SceneMenus, InSceneMode}};

/// Calls visit(entry, modes of its bar) for every entry that is a command.
template <class Visit>
void ForEveryCommandEntry(Visit visit) {
    for (const Bar& bar : Bars)
        ForEveryEntryOf(bar.Menus, [&](const MenuEntry& entry) {
            if (entry.Id && entry.Id != ProgramInfoItem && !ManualPageOfItem(entry.Id))
                visit(entry, bar.Modes);
        });
}

TEST(Commands, NoTwoShareACodeInAMode) {
    for (const int mode : Modes) {
        std::map<int, std::string> names;
        for (const Command& command : AllCommands()) {
            const bool valid = command.Modes & mode;
            EXPECT_TRUE(!valid || names.emplace(command.Code, command.Name).second)
                << command.Name << " and " << names[command.Code] << " in mode " << mode;
        }
    }
}

TEST(Commands, EveryMenuEntryLeadsToTheCommandThatItNames) {
    // Entries whose menu says the rest.
    const std::map<int, std::string> fullNames = {
        {37, "Create vertices freehand"},
        {47, "Create polygons freehand"},
        {89, "Query vertices of the scene"},
        {55, "Mirror in X"},
        {56, "Mirror in Y"},
        {57, "Mirror in Z"},
        {58, "Mirror in the input grid"},
    };
    const auto fullName = [&](const MenuEntry& entry) -> std::string {
        if (const auto found = fullNames.find(entry.Id); found != fullNames.end())
            return found->second;
        std::string label = entry.Label;
        const bool polygons = entry.Id >= 63 && entry.Id <= 73, object = entry.Id >= 92 && entry.Id <= 102;
        if (!polygons && !object)
            return label;
        // "Centralise" begins a word of its own there.
        if (label[0] == 'C')
            label[0] = 'c';
        return (polygons ? "Align polygons: " : "Align object: ") + label;
    };
    ForEveryCommandEntry([&](const MenuEntry& entry, int modes) {
        bool found = false;
        for (const int mode : Modes)
            if (const Command* command = modes & mode ? AnyCommand(CodeOfItem(entry.Id), mode) : nullptr)
                // What Edit does depends on the mode.
                found |= (entry.Id >= 19 && entry.Id <= 24) || command->Name == fullName(entry);
        EXPECT_TRUE(found) << entry.Label << " (" << entry.Id << ")";
    });
}

TEST(Commands, EveryShownShortcutWorks) {
    ForEveryCommandEntry([&](const MenuEntry& entry, int modes) {
        const int key = KeyOfShortcut(entry.Shortcut);
        if (!key)
            return;
        bool same = false;
        for (const int mode : Modes) {
            const Command* byKey = modes & mode ? AnyCommand(key, mode) : nullptr;
            const Command* byMenu = modes & mode ? AnyCommand(CodeOfItem(entry.Id), mode) : nullptr;
            same |= byKey && byMenu && byKey->Function == byMenu->Function && std::string(byKey->Name) == byMenu->Name;
        }
        EXPECT_TRUE(same) << entry.Label << ", key " << key;
    });
}

TEST(Commands, EveryCommandCanBeReached) {
    std::set<int> ofMenus;
    ForEveryCommandEntry([&](const MenuEntry& entry, int) { ofMenus.insert(CodeOfItem(entry.Id)); });
    // Moving is in the menus by its key.
    ofMenus.insert({271, 281});
    for (const Command& command : AllCommands())
        EXPECT_TRUE(command.Code < FirstMenuCode || ofMenus.contains(command.Code)) << command.Name;
}

TEST(Commands, KeysThatAreNoneInAModeDoNothing) {
    EXPECT_EQ(AnyCommand(BackspaceCharacter, InSceneMode), nullptr);
    EXPECT_EQ(AnyCommand(ReturnCharacter, InPolygonMode), nullptr);
    EXPECT_EQ(AnyCommand(ReturnCharacter, InVertexMode), nullptr);
    EXPECT_EQ(CodeOfItem(10), 0);
    EXPECT_EQ(CodeOfItem(0), 0);
    EXPECT_EQ(CodeOfItem(-1), 0);
    EXPECT_EQ(AnyCommand(0, InPolygonMode), nullptr);
}

} // namespace
