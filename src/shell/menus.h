#pragma once

struct Gadget;
struct MenuEntry;

// The program's menus, one line an entry. Item numbers are those that DealWithPulldown gets.

/// The bars of the main window, null-terminated: of object mode and of scene mode.
extern const MenuEntry* const ObjectMenus[];
extern const MenuEntry* const SceneMenus[];

/// What the bars need of the modules that come above or beside them; each is skipped when null.
struct MenuSlots {
    /// The import converters, null when there are none; kept by its maker. The export converters likewise.
    const MenuEntry* (*MakeImportMenu)() = nullptr;
    const MenuEntry* (*MakeExportMenu)() = nullptr;
    /// Carries out an item of a bar.
    void (*DealWithPulldown)(int id) = nullptr;
};

extern MenuSlots TheMenuSlots;

/// Hangs the converters' menus into the File menu. The bars do it when they are added.
void AddImportsAndExports();

/// Add a bar to the current window.
Gadget* AddSingleObjectMenu();
Gadget* AddSceneModeMenu();
