#include "gooey/window.h"

#include "gooey/cursors.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/event_queue.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/misuse.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/window_stack.h"

#include "base/debug.h"
#include "base/memory.h"

#include "platform/capabilities.h"
#include "platform/events.h"
#include "platform/framebuffer.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "platform/windows.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

Window* WindowList = nullptr;
Window* CurrentWindow = nullptr;
std::int32_t MaxWindow = 0;
std::uint32_t DefaultWindowBackground = 0x605020;
int hres = 0, vres = 0;
int ItsARealityEngine = 0, MultiSampling = 0;

void (*WindowInit)() = nullptr;
void (*WindowChange)() = nullptr;
void (*SpecialEvent)(short) = nullptr;
int (*QuitFunction)() = nullptr;

namespace {

bool FirstWindow = true;
bool MultisamplingWanted = true;

void QueueDevices() {
    constexpr int devices[] = {
        gl::KEYBD,        gl::KEYBDTEXT,    gl::WHEELX,        gl::WHEELY,       gl::WINFREEZE,     gl::WINTHAW,
        gl::REDRAWICONIC, gl::WINQUIT,      gl::WINSHUT,       gl::LEFTMOUSE,    gl::MIDDLEMOUSE,   gl::RIGHTMOUSE,
        gl::LEFTARROWKEY, gl::DOWNARROWKEY, gl::RIGHTARROWKEY, gl::UPARROWKEY,   gl::INSERTKEY,     gl::PAGEUPKEY,
        gl::PAGEDOWNKEY,  gl::HOMEKEY,      gl::ENDKEY,        gl::LEFTSHIFTKEY, gl::RIGHTSHIFTKEY, gl::LEFTALTKEY,
        gl::RIGHTALTKEY,  gl::LEFTCTRLKEY,  gl::RIGHTCTRLKEY,  gl::TABKEY,
    };
    for (int device : devices)
        gl::qdevice(device);
    for (int device = gl::F1KEY; device <= gl::F12KEY; ++device)
        gl::qdevice(device);
    for (int button : {gl::LEFTMOUSE, gl::MIDDLEMOUSE, gl::RIGHTMOUSE})
        gl::tie(button, gl::MOUSEX, gl::MOUSEY);
}

void Append(Window* window) {
    Window** link = &WindowList;
    while (*link) {
        window->Prev = *link;
        link = &(*link)->Next;
    }
    *link = window;
}

void Unlink(Window* window) {
    (window->Prev ? window->Prev->Next : WindowList) = window->Next;
    if (window->Next)
        window->Next->Prev = window->Prev;
}

void RequestBuffers(int flags) {
    gl::RGBmode();
    if (flags & WindowDoubleBuffered)
        gl::doublebuffer();
}

/// Asks what the renderer is and whether its multisampling serves; without a useful depth buffer it is given up for
/// good.
void JudgeMultisampling(int flags) {
    if (!ItsARealityEngine) {
        MultiSampling = 0;
        return;
    }
    MultiSampling = gl::getgconfig(gl::GC_MS_SAMPLES) > 1;
    if (std::abs(gl::getgconfig(gl::GC_MS_ZSIZE)) >= 16)
        return;
    MultisamplingWanted = false;
    MultiSampling = 0;
    RequestBuffers(flags);
    gl::zbsize(24);
    gl::stensize(0);
    gl::mssize(0, 0, 0);
    gl::gconfig();
}

void ConfigureBuffers(int flags) {
    RequestBuffers(flags);
    if (FirstWindow) {
        char version[16] = "";
        gl::gversion(version);
        ItsARealityEngine = std::strstr(version, "GL4DRE") != nullptr;
    }
    if (ItsARealityEngine && MultisamplingWanted) {
        gl::zbsize(0);
        gl::stensize(0);
        gl::mssize(16, 24, 0);
    }
    gl::gconfig();
    if (FirstWindow)
        JudgeMultisampling(flags);
    if (MultiSampling)
        gl::multisample(1);
}

/// The two checkerboards and dotted lines of disabled menu items and halftones.
void DefinePatterns() {
    for (int pattern = 1; pattern <= 2; ++pattern) {
        std::uint16_t rows[16];
        for (int row = 0; row < 16; ++row)
            rows[row] = (row + pattern) % 2 ? 0x5555 : 0xAAAA;
        gl::defpattern(pattern, 16, rows);
        gl::deflinestyle(pattern, rows[0]);
    }
}

/// Some child that is neither the window itself nor closing by itself already.
Window* ChildToShut(const Window* parent) {
    for (Window* window = WindowList; window; window = window->Next)
        if (window != parent && window->Parent == parent && !window->Closing)
            return window;
    return nullptr;
}

void ForgetWindow(Window* window) {
    for (Window* other = WindowList; other; other = other->Next)
        if (other->Parent == window)
            other->Parent = nullptr;
    ForgetStackedWindow(window);
    ForgetLockedWindow(window);
    ForgetHandlingWindow(window);
}

} // namespace

void MeasureScreen() {
    hres = gl::getgdesc(gl::GD_XPMAX);
    vres = gl::getgdesc(gl::GD_YPMAX);
}

Window* OpenWindow(const char* title, int flags, std::uint32_t background, void (*focusFn)(), void (*drawFn)(),
                   void (*eventFn)(int, short), void (*closeFn)(), std::size_t dataSize, Window* parent) {
    if (InputChangePending) {
        // The window at hand need not be the one under the pointer: a handler may work in another.
        const int input = gl::InputWindow();
        if (CurrentWindow)
            gl::qenter(gl::INPUTCHANGE, static_cast<short>(input ? input : CurrentWindow->Gid));
        InputChangePending = 0;
    }
    if (DeveloperBuild && !WindowList)
        gl::foreground();

    Window* window = static_cast<Window*>(AllocateZeros(sizeof(Window)));
    const bool inside = (flags & WindowInParent) && parent;
    window->Gid = inside ? gl::swinopen(parent->Gid) : gl::winopen(title);
    if (inside)
        gl::wintitle(title);
    if (window->Gid > MaxWindow)
        MaxWindow = window->Gid;
    Append(window);
    SetWindow(window);

    ConfigureBuffers(flags);
    if (background == 0xFFFFFFFF)
        background = CrazyColours ? RandomColour() : 0xFFFFFF;
    window->Background = background;
    ClearWindow();
    if (flags & WindowDoubleBuffered)
        gl::swapbuffers();

    if (FirstWindow) {
        QueueDevices();
        InitFonts();
        MeasureScreen();
    }
    DefineBusyCursor();
    DefinePatterns();

    window->Title = CopyOfString(title);
    window->Parent = parent;
    window->Data = AllocateZeros(dataSize);
    window->Flags = flags;
    window->FocusFn = focusFn;
    window->DrawFn = drawFn;
    window->EventFn = eventFn;
    window->CloseFn = closeFn;
    gl::getorigin(&window->X, &window->Y);
    gl::getsize(&window->Width, &window->Height);
    window->Resized = 1;
    window->Crazy = CrazyColours;
    if (WindowInit)
        WindowInit();
    else
        gl::mmode(gl::MVIEWING);
    gl::qenter(gl::REDRAW, static_cast<short>(window->Gid));
    FirstWindow = false;
    return window;
}

void CloseWindow(Window* window) {
    if (!window)
        return;
    QueueEvent(gl::WINSHUT, static_cast<short>(window->Gid));
    window->Closing = 1;
    window->Disabled = 1;
}

void CloseCurrentWindow() {
    CloseWindow(CurrentWindow);
}

void ShutWindow(Window* window) {
    if (!window)
        return;
    if ((window->Flags & WindowConfirmsShut) && QuitFunction && !QuitFunction())
        return;
    while (Window* child = ChildToShut(window)) {
        ShutWindow(child);
        // A child that refuses holds its parent open.
        if (WindowIsOpen(child))
            return;
    }
    {
        WindowScope scope(window);
        if (window->CloseFn)
            window->CloseFn();
        if (window->Data)
            Free(window->Data);
        FreeGooeyList(window->Gadgets);
        if (window->Title)
            Free(window->Title);
    }
    int gid = window->Gid;
    gl::winclose(gid);
    Unlink(window);
    PurgeWindowEvents(gid);
    ForgetWindow(window);
    if (CurrentWindow == window)
        SetWindow(nullptr);
    Free(window);
}

void CloseAllWindows() {
    while (Window* window = WindowList) {
        ShutWindow(window);
        // QuitFunction may refuse.
        if (WindowList == window)
            return;
    }
}

void DisableWindow(Window* window) {
    if (!window)
        return;
    for (Window* child = WindowList; child; child = child->Next)
        if (child != window && child->Parent == window)
            DisableWindow(child);
    if (window->Disabled < 0) {
        window->Disabled = 0;
        return;
    }
    WindowScope scope(window);
    if (++window->Disabled == 1)
        Busy();
}

void EnableWindow(Window* window) {
    if (!window)
        return;
    for (Window* child = WindowList; child; child = child->Next)
        if (child != window && child->Parent == window)
            EnableWindow(child);
    if (window->Disabled <= 0)
        return;
    WindowScope scope(window);
    if (--window->Disabled == 0)
        Unbusy();
}

int WindowIsOpen(const Window* window) {
    for (const Window* open = WindowList; open; open = open->Next)
        if (open == window)
            return 1;
    return 0;
}

Window* FindWindowById(int id) {
    if (id > MaxWindow || id < 1) {
        std::fprintf(stderr, "Tried to find window %d\a\n", id);
        return nullptr;
    }
    for (Window* window = WindowList; window; window = window->Next)
        if (window->Gid == id)
            return window;
    std::fprintf(stderr, "Couldn't find window %d\n", id);
    return nullptr;
}

void UpdateWindowGeometry() {
    if (!CurrentWindow)
        return;
    int width, height;
    gl::getorigin(&CurrentWindow->X, &CurrentWindow->Y);
    gl::getsize(&width, &height);
    if (width == CurrentWindow->Width && height == CurrentWindow->Height)
        return;
    CurrentWindow->Width = width;
    CurrentWindow->Height = height;
    CurrentWindow->Resized = 1;
}

void EndToolkit() {
    auto quitFunction = std::exchange(QuitFunction, nullptr);
    CloseAllWindows();
    QuitFunction = quitFunction;
    FreeEventQueue();
    gl::EndDisplay();
    FirstWindow = true;
    MultisamplingWanted = true;
    MaxWindow = 0;
    InputChangePending = 1;
}
