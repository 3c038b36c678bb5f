#pragma once

#include <cstdint>

struct Gadget;

// The main window: menus and mode controls above, the viewports, the status line below.

/// Its last place and size, screen pixels, and whether there was one; kept with the defaults.
extern int MainX, MainY, MainW, MainH;
extern int MainWindowOpened;
/// Flag: that place fits the screen, and the place that the user goes back to from there.
extern int MainWindowFitted;
extern int MainFreeX, MainFreeY, MainFreeW, MainFreeH;
/// A preference that is off at first: with it off, on a desktop, the window fills the screen, aspect or not, until the
/// user places it by hand; a double click on its title goes back to that. And the flag that it was placed by hand last.
extern int FloatOnDesktop, MainPlacedByHand;

/// What the mode buttons show: polygons (0) or vertices (1).
extern int EditMode;

/// What the main window needs of the layers above; each is skipped when null.
struct MainWindowSlots {
    Gadget* (*AddSceneModeMenu)() = nullptr;
    Gadget* (*AddSingleObjectMenu)() = nullptr;
    void (*SetPolygonMode)() = nullptr;
    void (*SetVertexMode)() = nullptr;
    void (*ChangeObjectIsolation)() = nullptr;
    void (*InitSpheres)() = nullptr;
    /// Runs when the window closes: the tools give back what they keep.
    void (*FreeTools)() = nullptr;
    /// Stops what a view manipulation queued; runs at every change of the input window.
    void (*InputWindowChanged)() = nullptr;
};

extern MainWindowSlots TheMainWindowSlots;

/// Opens the main window and its viewports, the first window of the program; finds out what the graphics can do. Ends
/// the program when they cannot do enough.
void OpenMainWindow();
/// Draws its strip, the borders of the viewports and the status line, and places the viewports.
void DrawMain();
/// Puts the main drawing gadget into the current window's list.
Gadget* AddMainDrawing();
/// Its close function: remembers its place.
void CloseMainWindow();

/// Fills the screen, or goes back to the size before, as FloatOnDesktop now says. Nothing without a desktop.
void FollowFloatOnDesktop();

/// The model's name as title, with "*" while work is unsaved.
void ChangeWindowTitle();
/// The same if that has changed since; for the main loop, after every pass.
void UpdateWindowTitle();

/// Shows the hints of the view that has the input if they have changed with it; for the main loop, likewise.
void UpdateStatusLine();

/// The toolkit's callbacks: the input window has changed; a GOOEY_SPECIAL event came.
void ChangeWindow();
void HandleSpecialEvents(short value);
