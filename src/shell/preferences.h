#pragma once

// The preferences window: how files are handled, and the background of the windows.

/// Its last place, screen pixels, and whether there was one; kept with the defaults.
extern int PrefsX, PrefsY, PreferencesOpened;

struct ToolWindow;
extern const ToolWindow PreferencesWindow;

/// The background that new users get, 0x00BBGGRR.
inline constexpr int InitialBackgroundColour = 0x605020;

/// Opens the window, the main window being disabled meanwhile; raises it when it is open.
void SetPreferences();
