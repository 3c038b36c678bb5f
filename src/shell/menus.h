#pragma once

struct Gadget;
struct MenuEntry;

// The program's menus, one line an entry. Item numbers are those that DealWithPulldown gets.

/// The bars of the main window, null-terminated: of object mode and of scene mode.
extern const MenuEntry* const ObjectMenus[];
extern const MenuEntry* const SceneMenus[];

/// What the bars need of the modules that come above or beside them; each is skipped when null.
struct MenuSlots {
    const MenuEntry* (*MakeImportMenu)() =
        nullptr; // the import converters, null when there are none; kept by its maker
    const MenuEntry* (*MakeExportMenu)() = nullptr; // the export converters, likewise
    void (*DealWithPulldown)(int id) = nullptr;     // carries out an item of a bar
};

extern MenuSlots TheMenuSlots;

/// Hangs the converters' menus into the File menu. The bars do it when they are added.
void AddImportsAndExports();

/// Add a bar to the current window.
Gadget* AddSingleObjectMenu();
Gadget* AddSceneModeMenu();
