#pragma once

struct MenuEntry;
struct Converter;

// Import and export by the File menu: its submenus, and what their entries do.

/// Identifiers of the submenus' entries: of the first import, and of the first export.
inline constexpr int FirstImportItem = 126;
inline constexpr int FirstExportItem = 226;

/// The submenus, made on the first call and kept; null when there are no converters.
const MenuEntry* MakeImportMenu();
const MenuEntry* MakeExportMenu();

/// One entry a converter, with a copy of its label and identifiers from `firstItem` on; null for an empty list.
MenuEntry* GenerateConverterMenu(const Converter* list, int firstItem);
void FreeCMenu(MenuEntry* menu);

/// Releases the submenus and the converters: when the main window has closed.
void EndConversions();

/// Carries out an entry: lets the user choose a file to import, after the question about unsaved work, or to export to.
void DoFileConversion(int item);

/// The file selector's choice.
void DoImport(int mode, const char* directory, const char* name);
void DoExport(int mode, const char* directory, const char* name);

/// Whether a file of this path is one that a converter imports, by its extension.
bool CanBeImported(const char* path);

/// Imports a file (a full path) by the converter of its extension, after the question about unsaved work; tells the
/// user when there is none. For files dropped on the window.
void ImportByName(const char* path);

/// Shows the text of a converter's error file, at most 1000 characters, and removes it. 1 when there was one, also an
/// empty one.
int ConversionError(const char* errorFile);
