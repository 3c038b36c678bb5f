#include "platform/desktop_keyboard.h"

#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/input.h"
#include "platform/keyboard.h"

#include <SDL_keyboard.h>

#include <algorithm>
#include <iterator>

namespace gl {

namespace {

// Keys that act by their place or function, whatever the layout says. The keypad's depend on Num Lock.
struct PlacedKey {
    SDL_Scancode Scancode;
    const char* Name; // see keyboard.h
};

const PlacedKey PlacedKeys[] = {
    {SDL_SCANCODE_LSHIFT, "LeftShift"}, {SDL_SCANCODE_RSHIFT, "RightShift"}, {SDL_SCANCODE_LCTRL, "LeftCtrl"},
    {SDL_SCANCODE_RCTRL, "RightCtrl"},  {SDL_SCANCODE_LALT, "LeftAlt"},      {SDL_SCANCODE_RALT, "RightAlt"},
};

struct FunctionKey {
    SDL_Keycode Symbol;
    const char* Name;
};

const FunctionKey FunctionKeys[] = {
    {SDLK_RETURN, "Return"},
    {SDLK_KP_ENTER, "Return"},
    {SDLK_ESCAPE, "Escape"},
    {SDLK_BACKSPACE, "Backspace"},
    {SDLK_TAB, "Tab"},
    {SDLK_DELETE, "Delete"},
    {SDLK_INSERT, "Insert"},
    {SDLK_HOME, "Home"},
    {SDLK_END, "End"},
    {SDLK_PAGEUP, "PageUp"},
    {SDLK_PAGEDOWN, "PageDown"},
    {SDLK_UP, "Up"},
    {SDLK_DOWN, "Down"},
    {SDLK_LEFT, "Left"},
    {SDLK_RIGHT, "Right"},
    {SDLK_F1, "F1"},
    {SDLK_F2, "F2"},
    {SDLK_F3, "F3"},
    {SDLK_F4, "F4"},
    {SDLK_F5, "F5"},
    {SDLK_F6, "F6"},
    {SDLK_F7, "F7"},
    {SDLK_F8, "F8"},
    {SDLK_F9, "F9"},
    {SDLK_F10, "F10"},
    {SDLK_F11, "F11"},
    {SDLK_F12, "F12"},
};

// The keypad without Num Lock.
const FunctionKey KeypadKeys[] = {
    {SDLK_KP_PERIOD, "Delete"}, {SDLK_KP_0, "Insert"}, {SDLK_KP_1, "End"},   {SDLK_KP_2, "Down"},
    {SDLK_KP_3, "PageDown"},    {SDLK_KP_4, "Left"},   {SDLK_KP_6, "Right"}, {SDLK_KP_7, "Home"},
    {SDLK_KP_8, "Up"},          {SDLK_KP_9, "PageUp"},
};

template <typename Table, typename Wanted, typename Member>
const char* NameIn(const Table& table, Wanted wanted, Member member) {
    const auto found =
        std::find_if(std::begin(table), std::end(table), [&](const auto& entry) { return entry.*member == wanted; });
    return found == std::end(table) ? nullptr : found->Name;
}

// The named key that was pressed or released; null for keys that type characters.
const Key* NamedKey(const SDL_Keysym& key) {
    const char* name = NameIn(PlacedKeys, key.scancode, &PlacedKey::Scancode);
    if (!name)
        name = NameIn(FunctionKeys, key.sym, &FunctionKey::Symbol);
    if (!name && !(key.mod & KMOD_NUM))
        name = NameIn(KeypadKeys, key.sym, &FunctionKey::Symbol);
    return name ? FindKey(name) : nullptr;
}

// The character of a key without modifiers. Layouts of other scripts give commands by the key's place.
char32_t PlainCharacter(const SDL_Keysym& key) {
    if (key.sym >= ' ' && key.sym < 127)
        return static_cast<char32_t>(key.sym);
    if (key.scancode >= SDL_SCANCODE_A && key.scancode <= SDL_SCANCODE_Z)
        return U'a' + static_cast<char32_t>(key.scancode - SDL_SCANCODE_A);
    return 0;
}

bool IsHeld(int device) {
    return DeviceValue(device) != 0;
}

} // namespace

void DesktopKeyboard::SettleOpenKey() {
    if (OpenCharacter == 0)
        return;
    CharacterTyped(OpenCharacter);
    OpenCharacter = 0;
}

void DesktopKeyboard::BeforeEvent(const SDL_Event& event) {
    if (event.type != SDL_TEXTINPUT || event.text.timestamp != OpenTime)
        SettleOpenKey();
}

void DesktopKeyboard::AfterEvents() {
    SettleOpenKey();
}

void DesktopKeyboard::Forget() {
    Held.clear();
    OpenCharacter = 0;
    TextIsTyped = false;
}

void DesktopKeyboard::TakeKey(const SDL_KeyboardEvent& event) {
    const bool pressed = event.type == SDL_KEYDOWN;
    const Key* named = NamedKey(event.keysym);
    const bool modifier = NameIn(PlacedKeys, event.keysym.scancode, &PlacedKey::Scancode) != nullptr;
    const bool again = pressed && !Held.insert(event.keysym.scancode).second;
    if (!pressed)
        Held.erase(event.keysym.scancode);
    const char32_t plain = named ? 0 : PlainCharacter(event.keysym);
    const int device = named ? named->Device : DeviceOfCharacter(plain);
    // Only keys that have no character are told again; the others' characters are.
    if (!again || (named && !modifier && named->Character == 0))
        KeyDeviceChanged(device, pressed);
    if (!pressed)
        return;
    TextIsTyped = false;
    if (named) {
        if (named->Character != 0) {
            CharacterTyped(WithModifiers(named->Character, HeldModifiers()));
            TextIsTyped = true;
            TypedTime = event.timestamp;
        }
        return;
    }
    if (plain == 0)
        return;
    const bool ctrl = IsHeld(LEFTCTRLKEY) || IsHeld(RIGHTCTRLKEY);
    // Ctrl with right Alt is how some desktops tell AltGr.
    const bool perhapsAltGr = IsHeld(RIGHTALTKEY) && !IsHeld(LEFTALTKEY);
    if (perhapsAltGr) {
        OpenCharacter = WithModifiers(plain, HeldModifiers());
        OpenTime = event.timestamp;
    } else if (ctrl || IsHeld(LEFTALTKEY)) {
        CharacterTyped(WithModifiers(plain, HeldModifiers()));
        TextIsTyped = true;
        TypedTime = event.timestamp;
    }
}

void DesktopKeyboard::TakeText(const SDL_TextInputEvent& event) {
    // Typed already, as a command or by name.
    if (TextIsTyped && event.timestamp == TypedTime)
        return;
    if (IsHeld(LEFTALTKEY) || ((IsHeld(LEFTCTRLKEY) || IsHeld(RIGHTCTRLKEY)) && OpenCharacter == 0))
        return;
    OpenCharacter = 0;
    for (char32_t character : CharactersOf(event.text))
        CharacterTyped(character);
}

} // namespace gl
