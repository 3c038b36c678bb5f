#include "gooey/event_loop.h"

#include "gooey/cursors.h"
#include "gooey/event_queue.h"
#include "gooey/gadget.h"
#include "gooey/keyboard_walk.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "base/debug.h"
#include "base/exit.h"

#include "platform/events.h"
#include "platform/system.h"

#include <cctype>
#include <cstdio>
#include <utility>
#include <vector>

int LeftShift = 0, RightShift = 0, LeftAlt = 0, RightAlt = 0, LeftCtrl = 0, RightCtrl = 0;
Window* (*KeysOverDisabled)(const Window* disabled);

namespace {

struct KeyCharacter {
    int Device;
    short Character;
};

constexpr KeyCharacter KeyCharacters[] = {
    {gl::UPARROWKEY, UpCharacter},        {gl::DOWNARROWKEY, DownCharacter}, {gl::LEFTARROWKEY, LeftCharacter},
    {gl::RIGHTARROWKEY, RightCharacter},  {gl::INSERTKEY, InsertCharacter},  {gl::PAGEUPKEY, PageUpCharacter},
    {gl::PAGEDOWNKEY, PageDownCharacter}, {gl::HOMEKEY, HomeCharacter},      {gl::ENDKEY, EndCharacter},
};

struct ModifierKey {
    int Device;
    int& State;
};

const ModifierKey ModifierKeys[] = {
    {gl::LEFTSHIFTKEY, LeftShift}, {gl::RIGHTSHIFTKEY, RightShift}, {gl::LEFTALTKEY, LeftAlt},
    {gl::RIGHTALTKEY, RightAlt},   {gl::LEFTCTRLKEY, LeftCtrl},     {gl::RIGHTCTRLKEY, RightCtrl},
};

/// The character of a key that the graphics layer gives none for; 0 for other devices.
short CharacterOfKey(int device) {
    if (device >= gl::F1KEY && device <= gl::F12KEY)
        return static_cast<short>(F1Character + device - gl::F1KEY);
    for (const KeyCharacter& key : KeyCharacters)
        if (key.Device == device)
            return key.Character;
    return 0;
}

/// The windows whose functions are handling an event, the innermost first: a modal loop may handle others inside one.
struct Handling {
    const Window* Target;
    Handling* Outer;
};

Handling* InnermostHandling = nullptr;
/// Gids of windows to be shut when they have handled their event.
std::vector<int> ShutsThatWait;
/// Special events that were read meanwhile, by loops that know nothing of them.
std::vector<short> SpecialsThatWait;
/// True while a function of a window reads events itself; and the window that got the input meanwhile, 0 for none, -1
/// when it stayed. A drag goes on in the window that it began in, whatever opens and closes under the pointer.
bool InsideHandler = false;
int InputThatWaits = -1;
bool ProgramMustEnd = false;

class HandlingScope {
  public:
    explicit HandlingScope(const Window* window) : Entry{window, InnermostHandling} {
        InnermostHandling = &Entry;
        InsideHandler = true;
    }

    ~HandlingScope() {
        InnermostHandling = Entry.Outer;
        InsideHandler = false;
        if (InputThatWaits >= 0)
            QueueEvent(gl::INPUTCHANGE, static_cast<short>(InputThatWaits));
        InputThatWaits = -1;
        if (InnermostHandling)
            return;
        for (int gid : ShutsThatWait)
            QueueEvent(gl::WINSHUT, static_cast<short>(gid));
        ShutsThatWait.clear();
        for (short value : SpecialsThatWait)
            QueueEvent(GOOEY_SPECIAL, value);
        SpecialsThatWait.clear();
    }

  private:
    Handling Entry;
};

/// The pointer's position follows a button event as two events of its own.
void ReadButtonPosition() {
    short x = 0, y = 0;
    int device = ReadEvent(x);
    if (device != gl::MOUSEX) {
        if (DeveloperBuild)
            std::fprintf(stderr, "Bad queue, MOUSEX expected, got %d\n", device);
        return;
    }
    device = ReadEvent(y);
    if (device != gl::MOUSEY) {
        if (DeveloperBuild)
            std::fprintf(stderr, "Bad queue, MOUSEY expected, got %d\n", device);
        return;
    }
    if (!CurrentWindow)
        return;
    UpdateWindowGeometry();
    MouseX = x - CurrentWindow->X;
    MouseY = y - CurrentWindow->Y;
}

void ChangeInputWindow(int gid) {
    if (InsideHandler) {
        InputThatWaits = gid;
        return;
    }
    Window* window = gid ? FindWindowById(gid) : nullptr;
    SetWindow(window);
    if (window) {
        SetCursor(window->Cursor);
        if (window->FocusFn)
            window->FocusFn();
    }
    if (WindowChange)
        WindowChange();
}

int EndProgram() {
    FreeEventQueue();
    // The loop inside the handler is told now, the dispatcher when the handler has returned.
    ProgramMustEnd = InnermostHandling != nullptr;
    return -1;
}

int ShutByEvent(int gid) {
    Window* window = FindWindowById(gid);
    if (window && HandlingEventIn(window)) {
        ShutsThatWait.push_back(gid);
        return 1;
    }
    ShutWindow(window);
    return WindowList ? 1 : EndProgram();
}

short CharacterWithModifiers(short character) {
    if ((LeftCtrl || RightCtrl) && character >= 1 && character <= 31)
        return static_cast<short>(character + CtrlACharacter - 1);
    if ((LeftAlt || RightAlt) && character > 0 && character < 128 && std::isalpha(character))
        return static_cast<short>(CtrlCharacter(static_cast<char>(std::toupper(character))));
    return character;
}

void Key(int& device, short& value) {
    short character = value ? CharacterOfKey(device) : 0;
    for (const ModifierKey& key : ModifierKeys)
        if (key.Device == device)
            key.State = value;
    if (!character)
        return;
    device = gl::KEYBD;
    value = character;
    ReadMousePos();
}

/// The character that a UTF-16 unit completes; 0 after the first half of a pair.
int CompleteCharacter(short unit) {
    static int firstHalf = 0;
    int code = static_cast<unsigned short>(unit);
    if (code >= 0xD800 && code < 0xDC00) {
        firstHalf = code;
        return 0;
    }
    int first = firstHalf;
    firstHalf = 0;
    if (code < 0xDC00 || code >= 0xE000)
        return code;
    return first ? 0x10000 + ((first - 0xD800) << 10) + (code - 0xDC00) : 0;
}

/// Offers the event to the window's gadgets. 1 when one consumed it.
int CheckGadgets(Gadget* gadgets, int device, short value) {
    switch (device) {
    case gl::LEFTMOUSE:
        return value && CheckGooeyClick(gadgets);
    case gl::KEYBD:
        return value && CheckGooeyKey(gadgets, value);
    case gl::KEYBDTEXT: {
        int codePoint = CompleteCharacter(value);
        return codePoint && CheckGooeyKey(gadgets, TextCharacter(codePoint));
    }
    case gl::WHEELX:
        ReadMousePos();
        return CheckGooeyWheel(gadgets, value, 0);
    case gl::WHEELY:
        ReadMousePos();
        return CheckGooeyWheel(gadgets, 0, value);
    default:
        return 0;
    }
}

bool BelongsTo(const Window* window, const Window* owner) {
    while (window && window != owner)
        window = window->Parent;
    return window && owner;
}

/// The dialog that a disabled window waits for, or the main one: the newest that takes input; null when there is none.
Window* LiveDialog(const Window* disabled) {
    bool ofAll = MainWindow && MainWindow->Disabled > 0;
    Window* live = nullptr;
    for (Window* window = WindowList; window; window = window->Next)
        if (!window->Disabled && !window->Closing && (ofAll || BelongsTo(window, disabled)))
            live = window;
    return live;
}

/// Whose event it is. Keys typed beside an open dialog are meant for it.
Window* TargetOf(int device) {
    bool isKey = device == gl::KEYBD || device == gl::KEYBDTEXT;
    bool beside = CurrentWindow ? CurrentWindow->Disabled > 0 : MainWindow && MainWindow->Disabled > 0;
    if (!isKey || !beside)
        return CurrentWindow;
    Window* const dialog = LiveDialog(CurrentWindow);
    return dialog || !KeysOverDisabled ? dialog : KeysOverDisabled(CurrentWindow);
}

void DispatchTo(Window* window, int device, short value) {
    HandlingScope handling(window);
    const short key = device == gl::KEYBD ? value : short{0};
    if (device == gl::LEFTMOUSE && value)
        EndWalk(window);
    if (key && KeyInWalk(window, key))
        return;
    if (window->Gadgets && CheckGadgets(window->Gadgets, device, value))
        return;
    if (key && WindowIsOpen(window) && BeginWalk(window, key))
        return;
    // A gadget that did not consume the event may have shut the window all the same.
    if (WindowIsOpen(window) && window->EventFn)
        window->EventFn(device, value);
}

void Dispatch(int device, short value) {
    switch (device) {
    case gl::REDRAW:
    case gl::INPUTCHANGE:
    case gl::WINQUIT:
    case gl::WINSHUT:
    case gl::WINFREEZE:
    case gl::WINTHAW:
    case gl::REDRAWICONIC:
    case GOOEY_DIRTY:
        return;
    case GOOEY_SPECIAL:
        if (SpecialEvent) {
            HandlingScope handling(nullptr);
            SpecialEvent(value);
        }
        return;
    default:
        break;
    }
    Window* window = TargetOf(device);
    if (!window || window->Disabled || window->Closing)
        return;
    if (window == CurrentWindow) {
        DispatchTo(window, device, value);
        return;
    }
    WindowScope scope(window);
    ReadMousePos();
    DispatchTo(window, device, value);
}

} // namespace

int KeepQueueHappy(int& device, short& value) {
    if (ProgramMustEnd || EndAsked())
        return -1;
    InputChangePending = 1;
    UpdateWindowLock();
    if (!EventsPending())
        return 0;
    device = ReadEvent(value);
    switch (device) {
    case gl::LEFTMOUSE:
    case gl::MIDDLEMOUSE:
    case gl::RIGHTMOUSE:
        ReadButtonPosition();
        break;
    case gl::INPUTCHANGE:
        ChangeInputWindow(value);
        break;
    case gl::REDRAW:
        RedrawWindow(FindWindowById(value));
        break;
    case gl::WINSHUT:
        return ShutByEvent(value);
    case gl::WINQUIT:
        if (!QuitFunction || QuitFunction())
            return EndProgram();
        break;
    case GOOEY_DIRTY:
        break;
    case GOOEY_SPECIAL:
        if (InsideHandler)
            SpecialsThatWait.push_back(value);
        break;
    case gl::KEYBD:
        value = CharacterWithModifiers(value);
        break;
    default:
        Key(device, value);
        break;
    }
    return 1;
}

int CheckEvents() {
    // A handler may run the dispatcher itself: the input changes in there, and the handler goes on as before.
    const bool calledByHandler = std::exchange(InsideHandler, false);
    int result = 0;
    gl::sginap(1);
    int device = 0;
    short value = 0;
    while (int state = KeepQueueHappy(device, value)) {
        result |= state;
        if (result == -1)
            break;
        Dispatch(device, value);
    }
    if (result == 1)
        RedrawDirtyWindows();
    if (!calledByHandler)
        ProgramMustEnd = false;
    InsideHandler = calledByHandler;
    return result;
}

int HandlingEventIn(const Window* window) {
    for (const Handling* handling = InnermostHandling; handling; handling = handling->Outer)
        for (const Window* busy = handling->Target; busy; busy = busy->Parent)
            if (busy == window)
                return 1;
    return 0;
}

void ForgetHandlingWindow(const Window* window) {
    for (Handling* handling = InnermostHandling; handling; handling = handling->Outer)
        if (handling->Target == window)
            handling->Target = nullptr;
    std::erase(ShutsThatWait, window->Gid);
    if (InputThatWaits == window->Gid)
        InputThatWaits = 0;
}

int ModalLoopMustEnd() {
    return ProgramMustEnd || EndAsked() || !ShutsThatWait.empty();
}
