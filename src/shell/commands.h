#pragma once

#include <span>

// The commands of the model views: what keys and menu entries do.

/// In which work modes a command is valid; bits.
enum CommandModes {
    InVertexMode = 1,
    InPolygonMode = 2,
    InSceneMode = 4,
    InObjectMode = InVertexMode | InPolygonMode,
    InEveryMode = InObjectMode | InSceneMode,
};

/// Whether a command changes the model, or only views and display: the safe ones stay usable while a tool runs.
enum class CommandKind { Action, Safe };

struct Command {
    /// The key, as KEYBD events give it; from FirstMenuCode up a number that menus alone produce.
    int Code;
    /// As the user knows it.
    const char* Name;
    int Modes;
    CommandKind Kind;
    /// Works on KeyView.
    void (*Function)();
};

inline constexpr int FirstMenuCode = 257;

std::span<const Command> AllCommands();

/// The command of a code in one of the modes (a CommandModes bit), or null.
const Command* FindCommand(int code, int mode, CommandKind kind);
/// The CommandModes bit of what is worked on now.
int CurrentCommandMode();

/// Carry out the command of the code that is valid now; 0 when there is none.
int CheckActionKeys(int code);
int DoSafeCommand(int code);

/// The code of a menu's item number; 0 when it has none.
int CodeOfItem(int item);

/// Carries out a menu's item on KeyView: its command, a page of the manual, or a conversion.
void MenuAction(int item);
/// The page of the manual that an item opens; null for others.
const char* ManualPageOfItem(int item);
inline constexpr int ProgramInfoItem = 125;
/// Items from here on are converters'.
inline constexpr int FirstConverterItem = 126;

/// What commands need of modules that come above or beside them; each is skipped when null.
struct CommandSlots {
    void (*DoFileConversion)(int item) = nullptr;
};

extern CommandSlots TheCommandSlots;
