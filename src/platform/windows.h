// The program's windows: internal windows on one screen of the layer's own, which is the content of one desktop window
// or exists in memory only. Coordinates are drawing pixels, origin at the bottom left, y upwards: of the screen for
// top-level windows, of the parent for subwindows. One window is current (winset); drawing and the calls without an
// identifier address it. Without a current window they do nothing. Their buffers and the overlay: framebuffer.h.
#pragma once

#include <string>

namespace gl {

// ---- Placing the next window. What is set here is used up by the next winopen, swinopen or winconstraints. ----

// The rectangle of the window's content, inclusive edges. Wins over every other rule; only the title is kept on the
// screen.
void prefposition(int x1, int x2, int y1, int y2);
// The size of the content; the place is chosen by the layer: where least is covered, on the screen as a whole if it
// fits.
void prefsize(int width, int height);
// Smallest and largest content that the user can make. A window opened with only a minimum opens half as large again.
void minsize(int width, int height);
void maxsize(int width, int height);
// (width - fudge) : (height - fudge) stays x : y when the user resizes.
void keepaspect(int x, int y);
// (width - fudge) and (height - fudge) stay multiples of x and y when the user resizes.
void stepunit(int x, int y);
// Pixels of width and height that aspect and steps do not count: borders, bars, bands of gadgets.
void fudge(int x, int y);
// Gives the rules set since the last opening to the current window: a place or a size takes effect at once, a window
// smaller than the minimum (larger than the maximum) grows (shrinks); aspect and steps bind the user from now on. Rules
// not set are dropped.
void winconstraints();

// ---- Opening, closing, choosing ----

// Opens a top-level window in front of the others, makes it current and returns its identifier, from 1 up, never
// reused. The first one starts the display (see StartDisplay); when that fails the reason goes to the standard error
// stream and the program ends with status 1. A window starts single-buffered; REDRAW is queued when it changes size,
// not for opening.
int winopen(const char* title);
// Opens a subwindow: without frame, inside `parent` and clipped to it, covering it wholly until winposition (or a
// prefposition before, relative to the parent). Closing the parent closes it too. -1 when there is no such parent.
int swinopen(int parent);
// Closes a window and its subwindows and forgets them; the window under the pointer gets the input. When it was
// current, none is current afterwards. Unknown identifiers are ignored.
void winclose(int id);
// Makes a window current; an unknown identifier makes none current.
void winset(int id);
// The current window's identifier; 0 when there is none.
int winget();

// Moves and resizes the current window's content; inclusive edges. Screen pixels, or pixels of the parent for a
// subwindow. A new size queues REDRAW.
void winposition(int x1, int x2, int y1, int y2);
// Moves the current window, keeping its size.
void winmove(int x, int y);
// Brings the current window in front of (sends it behind) its neighbours: all top-level windows, or the parent's
// others.
void winpop();
void winpush();
// The current window's title. A subwindow has one too, by which scripts find it.
void wintitle(const char* title);
// Keeps the program attached to its terminal. The layer never detaches; the call is there for its callers.
void foreground();

// Lower left corner of the current window's content on the screen (also of a subwindow's); its size.
void getorigin(int* x, int* y);
void getsize(int* width, int* height);

// ---- For the layers above and for tests ----

struct WindowRectangle {
    int X, Y, Width, Height;
};

// Opens the display now instead of with the first window: KIRVO_DISPLAY, KIRVO_SCALE. Returns false and the reason in
// `reason` on failure; true when it is open already.
bool StartDisplay(std::string& reason);
// Ends display, windows, queue and script, and returns to the state before the first call. Identifiers start at 1
// again.
void EndDisplay();

// Whether a window is open; its content's rectangle on the screen (all zero when unknown); its title; its parent (0).
bool WindowIsOpen(int id);
WindowRectangle WindowPlace(int id);
const std::string& WindowTitle(int id);
int WindowParent(int id);
// The newest window whose title, blanks at both ends removed, is `title`; if none, the newest that opened with that
// title; if none, the newest whose title begins with it; 0 when there is none.
int FindWindowByTitle(const std::string& title);
// The window whose content lies under a screen position, subwindows first; 0 for frames and the empty screen.
int WindowAt(int x, int y);

// What the user does to a frame, within the window's rules: content size with the top-left corner kept, place of the
// content's lower left corner, fitting the window to the screen and back, its close box.
void ResizeByFrame(int id, int width, int height);
void MoveByFrame(int id, int x, int y);
void ToggleFit(int id);
void PressCloseBox(int id);
// Whether the window, when it fits the screen, fills it whatever its aspect and steps.
void FillWhenFitted(int id, bool fills);
// The place that a window which fits the screen goes back to; false for other windows.
bool PlaceBeforeFit(int id, WindowRectangle& place);

} // namespace gl
