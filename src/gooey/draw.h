#pragma once

#include <cstdint>

// Drawing in window pixels, origin at the bottom-left corner: a ramp of 16 shades of one colour, and the bevelled boxes
// drawn from it. Packed colours are 0x00BBGGRR.

/// Shades of the ramp: black (0) to the colour itself (15).
extern std::uint32_t Colour[16];

inline constexpr int ShadeBlack = 0;
inline constexpr int ShadeLowered = 4;
inline constexpr int ShadeNeutral = 6;
inline constexpr int ShadeRaised = 11;
inline constexpr int ShadePressed = 12;
inline constexpr int ShadeFull = 15;

/// Windows opened while this is set draw their gadgets in random colours; a preference.
extern int CrazyColours;

/// Fills the ramp from black to the colour.
void SetColour(std::uint32_t rgb);

/// A colour at random that is never dark: no channel is 0, and one at least has its top bit set.
std::uint32_t RandomColour();

/// A line between two pixels, both included.
void DrawLine(int x1, int y1, int x2, int y2, int shade);
/// The outline of a rectangle, and a filled one; nothing when a side is 0.
void DrawFrame(int x, int y, int width, int height, int shade);
void DrawBox(int x, int y, int width, int height, int shade);

/// A bevel of 4 pixels lit from the top, alone and with the face inside.
void DrawRaisedBorder(int x, int y, int width, int height);
void DrawRaisedBox(int x, int y, int width, int height);
/// DrawRaisedBox with a face of another shade.
void DrawRaisedBoxOf(int x, int y, int width, int height, int faceShade);
/// A sunken bevel of 3 pixels and a black frame inside it, alone and with the face inside.
void DrawLoweredBorder(int x, int y, int width, int height);
void DrawLoweredBox(int x, int y, int width, int height);

/// The tick of check boxes and menus in a square of `size` pixels at (x, y), in the present colour.
void DrawTick(double x, double y, double size);

/// Decimal text of an integer; the buffer needs 12 bytes.
void itoa(int value, char* buffer);

/// Drawing within a rectangle of the current window, whose corner is (x, y): coordinates stay those of the window and
/// whole numbers address pixel centres.
void SetViewport(int x, int y, int width, int height);
/// Plain pixel drawing over the whole current window.
void VanillaView();

/// Limits drawing to a rectangle of the window for the length of a scope, within the limits that hold already.
class ClipScope {
  public:
    ClipScope(int x, int y, int width, int height);
    ~ClipScope();
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;

  private:
    int X, Y, Width, Height;
};

/// Sends drawing to what the user sees (1) or to the back buffer again (0); nothing in a window with one buffer.
void FrontBuffer(int on);
/// Non-zero while drawing goes to what the user sees.
int GetFrontBuffer();

/// Gives the current window one buffer or two.
void MakeDoubleBuffer();
void MakeSingleBuffer();
