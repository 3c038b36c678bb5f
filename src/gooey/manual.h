#pragma once

// The manual: one HTML file a page, in the directory "manual" of the installation.

/// The page that leads to all others.
inline constexpr char ManualIndex[] = "TutorIndex";

/// Shows a page (null or "": the index) in the user's browser, through the desktop's opener; without one, in a window
/// of the program's own. Tells the user when there is no manual, or no such page.
void OpenManual(const char* page);

/// While the right button is down: offers the page in a menu titled with the label. Labels of 45 characters or more are
/// refused.
void DoManualPage(const char* page, const char* label);

/// Notices that the desktop's opener failed, and shows the page in a window instead. For the main loop, after every
/// pass.
void CheckManualOpener();
