// The windows as the layer keeps them: records, stacking, geometry and what lies under a position. Drawing pixels,
// origin at the bottom left of the screen (top-level windows) or of the parent's content (subwindows).
#pragma once

#include "platform/surface.h"
#include "platform/window_rules.h"
#include "platform/windows.h"

#include <memory>
#include <string>
#include <vector>

namespace gl {

struct ScreenWindow {
    int Id = 0;
    ScreenWindow* Parent = nullptr;
    std::vector<ScreenWindow*> Children; // bottom to top
    std::string Title;
    std::string Name;        // the title that it opened with
    WindowRectangle Place{}; // of the content
    // Where program or user put it: a screen that shrinks may show it elsewhere until it grows again.
    WindowRectangle Wanted{};
    SizeRules Rules;
    std::unique_ptr<Surface> Content;
    // Of the frame (top-level windows only): the title strip's picture and whether it must be drawn again.
    std::unique_ptr<Surface> TitleStrip;
    bool TitleStale = true;
    bool CloseBoxPressed = false;
    int Cursor = 0;
    bool CursorHidden = false;
    // Fitted to the screen by its title, and where it was before.
    bool Fitted = false;
    // Aspect and steps give way when it is fitted.
    bool FillsWhenFitted = false;
    WindowRectangle BeforeFit{};
};

// ---- The frame around a top-level window's content: a bevelled border, and the title strip above the content ----
constexpr int FrameBorder = 5;
constexpr int TitleHeight = 22;

// Where a screen position lies in a frame.
enum class FramePart {
    None,
    Content,
    Title,
    CloseBox,
    Left,
    Right,
    Bottom,
    Top,
    BottomLeft,
    BottomRight,
    TopLeft,
    TopRight
};

WindowRectangle OuterRectangle(const WindowRectangle& content);
// The title strip and the close box in it, for the content's rectangle.
WindowRectangle TitleRectangle(const WindowRectangle& content);
WindowRectangle CloseBoxRectangle(const WindowRectangle& content);
FramePart FramePartAt(const WindowRectangle& content, int x, int y);

bool Contains(const WindowRectangle& rectangle, int x, int y);
// The same rectangle in screen pixels.
PixelBox ToPixelBox(const WindowRectangle& rectangle);

// ---- The screen's windows ----
ContentSize ScreenSize();
// The screen has a new size: windows keep their distance from its top and are brought back onto it; those that fit it
// fit it again. Makes the overlay anew.
void ChangeScreenSize(int width, int height);

// The content of a window with these rules that fills the screen as far as it may.
WindowRectangle FittedPlace(const ScreenWindow& window);

// Null for 0 and unknown identifiers.
ScreenWindow* FindScreenWindow(int id);
// Top-level windows, bottom to top; all windows in order of opening.
const std::vector<ScreenWindow*>& StackingOrder();
std::vector<ScreenWindow*> WindowsByAge();

// Makes a window, in front of its neighbours, with the rules' place and size.
ScreenWindow& AddScreenWindow(ScreenWindow* parent, const std::string& title, const SizeRules& rules);
// Removes a window and its subwindows.
void RemoveScreenWindow(ScreenWindow& window);
void RemoveAllScreenWindows();
void RaiseWindow(ScreenWindow& window);
void LowerWindow(ScreenWindow& window);

// The content's rectangle on the screen; the part of it that its parents do not clip away (width 0 when nothing is
// left).
WindowRectangle ScreenPlace(const ScreenWindow& window);
WindowRectangle VisiblePlace(const ScreenWindow& window);
// Moves and resizes the content (size within hard limits only). A top-level window's title is kept on the screen. A new
// size queues REDRAW.
void SetWindowPlace(ScreenWindow& window, WindowRectangle place);

// The top-level window whose frame or content lies there; null for the empty screen.
ScreenWindow* TopWindowAt(int x, int y);
// The innermost window whose content lies there, its top-level window's frame counted as that one.
ScreenWindow* InputWindowAt(int x, int y);

void DamageWindow(const ScreenWindow& window);
void DamageFrame(const ScreenWindow& window);

// Windows were opened, closed, moved or stacked anew since the flag was cleared last: another window may lie under the
// pointer.
extern bool ArrangementChanged;

} // namespace gl
