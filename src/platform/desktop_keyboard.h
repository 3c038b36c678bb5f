// From the desktop's key and text events to devices and characters. A key-down comes before the text that it causes,
// with the same time stamp; text may also come alone (dead keys, input methods), and not every key-down causes one.
#pragma once

#include <SDL_events.h>

#include <set>

namespace gl {

class DesktopKeyboard {
  public:
    // Before each event of any kind: what a key-down left open is settled unless its text comes now.
    void BeforeEvent(const SDL_Event& event);
    void TakeKey(const SDL_KeyboardEvent& key);
    void TakeText(const SDL_TextInputEvent& text);
    // Nothing more is there for now.
    void AfterEvents();
    // The keyboard belongs to someone else: held keys are forgotten.
    void Forget();

  private:
    void SettleOpenKey();

    // A key pressed with right Alt (which may be AltGr): what it types without a text event, and when it came.
    char32_t OpenCharacter = 0;
    Uint32 OpenTime = 0;
    // The key-down that already typed its character: the text of the same moment is not typed again.
    bool TextIsTyped = false;
    Uint32 TypedTime = 0;
    std::set<SDL_Scancode> Held;
};

} // namespace gl
