#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct Gadget;
struct GadgetItem;

/// Bits of Window::Flags.
inline constexpr int WindowDoubleBuffered = 1;
/// Shutting the window must be confirmed by QuitFunction.
inline constexpr int WindowConfirmsShut = 2;
/// The window lies inside its parent's.
inline constexpr int WindowInParent = 4;

/// Window::Disabled with this value exempts the window from the next DisableWindow.
inline constexpr int WindowExemptFromDisabling = -1;

/// A window of the program. Window coordinates are whole pixels from its bottom-left corner, y upwards; screen
/// coordinates likewise from the screen's. Made by OpenWindow, freed by ShutWindow.
struct Window {
    Window* Next;
    Window* Prev;
    /// Shut, disabled and enabled together with its children; may be null.
    Window* Parent;
    /// The graphics layer's identifier, 1 and up.
    std::int32_t Gid;
    char* Title;
    /// Called when the window gets the input.
    void (*FocusFn)();
    /// Draws the whole window and swaps its buffers; null: the gadgets are drawn.
    void (*DrawFn)();
    /// Receives every event that neither the dispatcher nor a gadget consumes.
    void (*EventFn)(int device, short value);
    /// Called while the window is shut, before anything of it is freed.
    void (*CloseFn)();
    Gadget* Gadgets;
    /// Where a walk with Tab stands, and the button that Return presses (see keyboard_walk.h); either may be null, and
    /// gone meanwhile.
    Gadget* Walked;
    const Gadget* DefaultButton;
    /// Private block of the size given to OpenWindow; null for size 0.
    void* Data;
    /// 0x00BBGGRR; 0 stands for DefaultWindowBackground.
    std::uint32_t Background;
    std::int32_t X, Y;
    std::int32_t Width, Height;
    std::int32_t Flags;
    /// Non-zero: the window takes no input. Disabling nests.
    std::int32_t Disabled;
    /// CrazyColours when the window opened: its gadgets draw in random colours.
    std::int32_t Crazy;
    std::int32_t Dirty;
    /// CloseWindow was called; the window is shut when its WINSHUT event is read.
    std::int32_t Closing;
    /// Set at open and when the size changes, cleared after each redraw.
    std::int32_t Resized;
    std::int16_t Cursor;
    /// The cursor to go back to when the window is no longer busy.
    std::int16_t SavedCursor;
    /// Lists what the window itself draws and the user can click or drag, for reports and scripts, the window being
    /// current; null: nothing. Set by the owner.
    void (*ItemsFn)(std::vector<GadgetItem>& items);
};

/// All windows in opening order.
extern Window* WindowList;
/// The window that drawing and gadget calls address, and that has the input between two events; may be null.
extern Window* CurrentWindow;
/// The largest Gid handed out so far.
extern std::int32_t MaxWindow;
/// The background of windows that have none of their own, 0x00BBGGRR; a preference.
extern std::uint32_t DefaultWindowBackground;

/// What the window is cleared to, 0x00BBGGRR.
inline std::uint32_t BackgroundOf(const Window* window) {
    return window->Background ? window->Background : DefaultWindowBackground;
}

/// The largest x and y of the screen, in pixels; they follow the desktop window, measured at every event.
extern int hres, vres;
void MeasureScreen();
/// What the renderer can do; set when the first window opens.
extern int ItsARealityEngine, MultiSampling;

/// Runs at the end of every OpenWindow, the new window being current; null when unset.
extern void (*WindowInit)();
/// Runs after every change of the input window (CurrentWindow, possibly null); null when unset.
extern void (*WindowChange)();
/// Receives the value of every GOOEY_SPECIAL event; null when unset.
extern void (*SpecialEvent)(short value);
/// Asked before the program ends and before a window with WindowConfirmsShut is shut: non-zero agrees. Null agrees.
extern int (*QuitFunction)();

/// Opens a window where the placement just set (gl::prefposition, gl::prefsize) says and leaves it current.
/// `background` -1 is white, or a random colour under CrazyColours. Any function may be null; `dataSize` bytes of zeros
/// are kept in Data. The title is copied.
Window* OpenWindow(const char* title, int flags, std::uint32_t background, void (*focusFn)(), void (*drawFn)(),
                   void (*eventFn)(int device, short value), void (*closeFn)(), std::size_t dataSize, Window* parent);

/// The window's private block, which OpenWindow was given sizeof(T) for.
template <class T>
T& WindowData(const Window* window) {
    return *static_cast<T*>(window->Data);
}

/// Asks for the window to be shut by the dispatcher; from now on it takes no input. Safe from the window's own
/// functions.
void CloseWindow(Window* window);
void CloseCurrentWindow();

/// Shuts the window and, first, its children, at once; nothing happens when QuitFunction refuses. Null does nothing.
void ShutWindow(Window* window);
void CloseAllWindows();

/// Disables the window and its children: no input, busy cursor. Each call needs one EnableWindow.
void DisableWindow(Window* window);
void EnableWindow(Window* window);

/// 1 while the window is in WindowList: for code that calls back into its owner, which may have shut it.
int WindowIsOpen(const Window* window);

/// The window with this Gid; null, after a message on the standard error stream, when there is none.
Window* FindWindowById(int id);

/// Reads the current window's place and size from the graphics layer; a new size sets Resized.
void UpdateWindowGeometry();

/// Shuts all windows without asking, ends the display and forgets what the first window set up, so that the next window
/// starts everything anew.
void EndToolkit();
