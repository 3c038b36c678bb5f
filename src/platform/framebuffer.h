// The buffers of the current window: how many there are, which one drawing goes to, and the overlay's drawing mode.
#pragma once

#include <cstdint>

namespace gl {

// What drawing goes to (drawmode).
enum DrawMode {
    NORMALDRAW = 0, // the window's colour buffers
    PUPDRAW = 1,    // the overlay, in indexed colours, over everything
    CURSORDRAW = 2, // nothing is drawn; mapcolor sets the colours of cursors
};

// What getgconfig can be asked.
enum ConfigurationInquiry {
    GC_MS_SAMPLES = 1,  // samples a pixel that were granted; 0 without multisampling
    GC_MS_ZSIZE = 2,    // depth bits of the multisample buffer; 0 without multisampling
    GC_ZSIZE = 3,       // depth bits of the ordinary buffer
    GC_STENSIZE = 4,    // stencil bits
    GC_DOUBLEBUFFER = 5 // 1 with two colour buffers
};

// Requests, which gconfig makes effective for the current window.
void RGBmode();
void doublebuffer();
void singlebuffer();
void zbsize(int bits);
void stensize(int bits);
void mssize(int samples, int depthBits, int stencilBits);
void gconfig();
int getgconfig(int what);
// Multisampling on or off for what is drawn from now on; nothing where it was not granted.
void multisample(bool on);

// Shows the back buffer of the current window; nothing with one buffer.
void swapbuffers();
// On: drawing in a double-buffered window goes to the shown (front) buffer, so that it is seen at once; off, the state
// of a new window: to the hidden (back) buffer. A window with one buffer always draws to the shown one.
void frontbuffer(bool on);
// Which buffer is written: BCKBUFFER or FRNTBUFFER.
int getbuffer();
constexpr int BCKBUFFER = 1, FRNTBUFFER = 2;

// Pending drawing goes to the buffers now.
void gflush();

// Where drawing goes from now on in the current window. In PUPDRAW drawing keeps the window's coordinates, matrices and
// screen mask but lands in the overlay, in the index that color sets; there is no depth, lighting or texture.
void drawmode(int mode);
int getdrawmode();
// The index that drawing in PUPDRAW writes, 0 to 255; 0 erases.
void color(int index);
int getcolor();
// The colour of an index of the overlay (in PUPDRAW) or of the cursors (in CURSORDRAW); components 0 to 255. What was
// drawn in that index changes with it.
void mapcolor(int index, int red, int green, int blue);
void getmcolor(int index, short* red, short* green, short* blue);

// Between fullscrn and endfullscrn drawing covers the whole screen: the viewport and the screen mask are the screen,
// and pixel coordinates count from its bottom-left corner (ortho2 over it). endfullscrn restores the window's own. Only
// the overlay is drawn to meanwhile.
void fullscrn();
void endfullscrn();

} // namespace gl
