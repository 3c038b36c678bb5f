#pragma once

#include <cstddef>

struct Window;

// Side windows: gizmos, editors, palettes and dialogs that the program opens beside its main window. Each is a constant
// table; opening, raising, remembering its place, disabling and closing happen here, once for all of them.

/// How large a window may become by the user's hand. A size of 0: that rule is not set.
struct ToolWindowRules {
    int LeastWidth = 0, LeastHeight = 0;
    int MostWidth = 0, MostHeight = 0;
    int AspectX = 0, AspectY = 0;
    int StepX = 0, StepY = 0;
    /// Pixels that aspect and steps do not count.
    int FudgeX = 0, FudgeY = 0;
};

/// Where a window was last; each pointer null when that is not kept.
struct ToolWindowPlace {
    /// Flag: the rest holds a place.
    int* Opened = nullptr;
    int* X = nullptr;
    int* Y = nullptr;
    /// Of windows that the user can resize.
    int* Width = nullptr;
    int* Height = nullptr;
    /// X and Y are the upper left corner, not the lower left one.
    bool FromTop = false;
};

struct ToolWindow {
    const char* Title;
    /// The window while it is open, null otherwise; the owner's global.
    Window** Handle;
    /// Of the content when it is opened for the first time; for windows of one size each time.
    int Width = 0, Height = 0;
    /// Gives the size where it hangs on fonts or on what is shown; in place of Width and Height.
    void (*Measure)(int& width, int& height) = nullptr;
    /// Without any rule the window keeps its size.
    ToolWindowRules Rules = {};
    ToolWindowPlace Place = {};
    /// Opened around the pointer when it has no place yet.
    bool AroundPointer = false;
    int Flags = 1; // WindowDoubleBuffered
    std::size_t DataSize = 0;
    /// The handle of the parent; null: the main window.
    Window** Parent = nullptr;
    /// The main window takes no input while this one is open.
    bool DisablesMain = false;
    /// Changes the model: takes no input, and cannot be opened, while a modelling tool runs.
    bool DisabledByTools = false;
    /// Flag of such a window, null or the owner's global: 0 while a tool disables it.
    int* Enabled = nullptr;
    /// A modelling tool begins (1) or has ended (0): for windows that stay usable in part. Called whether it is open or
    /// not.
    void (*ToolRuns)(int runs) = nullptr;
    /// Flag kept with the defaults: the window was open when the program ended, and opens with it again.
    int* OpenAtStart = nullptr;
    /// What to do at start-up in place of OpenToolWindow.
    void (*OpenAgain)() = nullptr;

    /// Adds the gadgets, the window being current.
    void (*Build)() = nullptr;
    void (*Draw)() = nullptr;
    /// What gadgets and the manual have left over.
    void (*Event)(int device, short value) = nullptr;
    void (*Focus)() = nullptr;
    /// The window is going, and still current and known by its handle; its place has been taken down.
    void (*Close)() = nullptr;
    /// It is gone: the handle is null, the main window enabled again.
    void (*Closed)() = nullptr;
    /// Opened by "?", and offered by the right button under the name.
    const char* ManualPage = nullptr;
    const char* ManualName = nullptr;
};

/// Opens the window at its last place, within the screen, and leaves it current; one that is open is raised. Null when
/// a tool disables it.
Window* OpenToolWindow(const ToolWindow& tool);
/// Asks for it to be closed by the dispatcher; nothing when it is not open.
void CloseToolWindow(const ToolWindow& tool);
/// Has it drawn at the end of the pass; nothing when it is not open.
void DirtyToolWindow(const ToolWindow& tool);
int ToolWindowIsOpen(const ToolWindow& tool);

/// Gives an open window the size that its table says now, its upper left corner staying.
void RefitToolWindow(const ToolWindow& tool);

/// A window that tools disable, or that opens at start-up, must be known: once, in the order of opening.
void RegisterToolWindow(const ToolWindow& tool);
/// Disables and enables the registered windows that tools disable, open or not.
void DisableToolWindows();
void EnableToolWindows();
/// Takes down which of the registered windows are open, into their OpenAtStart; opens those that were open at the end
/// of the last run.
void NoteOpenToolWindows();
void OpenUserWindows();
