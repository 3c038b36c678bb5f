#pragma once

#include "gooey/menu.h"

#include <string>

// The models opened or saved last, for the File menu; a file in the home directory keeps them.

inline constexpr int MostRecentFiles = 8;
/// Items from here on stand for recent files, the newest first.
inline constexpr int FirstRecentItem = 326;

/// Puts a model's file at the head of the list.
void NoteRecentFile(const std::string& path);

/// The menu of recent files; what does not exist at the moment is hidden, but stays in the list.
const MenuEntry* RecentFilesMenu();
/// 0 when the menu has something to show, MenuHidden when not.
int RecentFilesCheck();

/// The whole name of the file that an item stands for; "" for other items.
std::string RecentFileOfItem(int item);

/// Reads the list anew when it is next needed.
void ForgetRecentFiles();
