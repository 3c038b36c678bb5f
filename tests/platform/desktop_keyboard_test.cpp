// Key and text events as the desktop sends them, and what becomes of them.
#include "headless_screen.h"

#include "platform/desktop_keyboard.h"

#include <cstring>

using namespace gl;

namespace {

class Typing : public HeadlessScreen {
  protected:
    void SetUp() override {
        HeadlessScreen::SetUp();
        for (int device : {KEYBD, KEYBDTEXT, LEFTCTRLKEY, RIGHTALTKEY, LEFTALTKEY, UPARROWKEY, TABKEY})
            qdevice(device);
        Events();
    }

    void Key(bool pressed, SDL_Scancode scancode, SDL_Keycode symbol, bool repeat = false, int modifiers = 0) {
        SDL_Event event{};
        event.type = pressed ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.timestamp = ++Now;
        event.key.repeat = repeat ? 1 : 0;
        event.key.keysym.scancode = scancode;
        event.key.keysym.sym = symbol;
        event.key.keysym.mod = static_cast<Uint16>(modifiers);
        Keyboard.BeforeEvent(event);
        Keyboard.TakeKey(event.key);
    }

    void Text(const char* text, bool ofLastKey = true) {
        SDL_Event event{};
        event.type = SDL_TEXTINPUT;
        event.text.timestamp = ofLastKey ? Now : ++Now;
        std::strncpy(event.text.text, text, sizeof event.text.text - 1);
        Keyboard.BeforeEvent(event);
        Keyboard.TakeText(event.text);
    }

    std::vector<QueueEvent> Seen() {
        Keyboard.AfterEvents();
        return Events();
    }

    DesktopKeyboard Keyboard;
    Uint32 Now = 100;
};

using Expected = std::vector<QueueEvent>;

TEST_F(Typing, PlainKeysTypeTheirText) {
    Key(true, SDL_SCANCODE_Q, SDLK_a); // a French layout
    Text("a");
    Key(false, SDL_SCANCODE_Q, SDLK_a);
    EXPECT_EQ(Seen(), (Expected{{KEYBD, 'a'}}));
    Text("\xC3\xA9", false); // a dead key's outcome, without a key-down
    EXPECT_EQ(Seen(), (Expected{{KEYBDTEXT, 0xE9}}));
}

TEST_F(Typing, RepeatsTypeAgainAndModifiersDoNotRepeat) {
    Key(true, SDL_SCANCODE_LCTRL, SDLK_LCTRL);
    Key(true, SDL_SCANCODE_LCTRL, SDLK_LCTRL, true);
    Key(false, SDL_SCANCODE_LCTRL, SDLK_LCTRL);
    EXPECT_EQ(Seen(), (Expected{{LEFTCTRLKEY, 1}, {LEFTCTRLKEY, 0}}));
    Key(true, SDL_SCANCODE_UP, SDLK_UP);
    Key(true, SDL_SCANCODE_UP, SDLK_UP, true);
    EXPECT_EQ(Seen(), (Expected{{UPARROWKEY, 1}, {UPARROWKEY, 1}}));
}

TEST_F(Typing, CtrlMakesControlCodesOfTheLayoutsLetters) {
    Key(true, SDL_SCANCODE_LCTRL, SDLK_LCTRL);
    Key(true, SDL_SCANCODE_Q, SDLK_a);
    Key(true, SDL_SCANCODE_1, SDLK_1);
    Text("1"); // comes although Ctrl is held
    EXPECT_EQ(Seen(), (Expected{{LEFTCTRLKEY, 1}, {KEYBD, 1}, {KEYBD, '1'}}));
}

TEST_F(Typing, LeftAltGivesTheLetterOnce) {
    Key(true, SDL_SCANCODE_LALT, SDLK_LALT);
    Key(true, SDL_SCANCODE_O, SDLK_o);
    Text("o");
    EXPECT_EQ(Seen(), (Expected{{LEFTALTKEY, 1}, {KEYBD, 'o'}}));
}

TEST_F(Typing, RightAltIsAltOrAltGrAsTheTextTells) {
    Key(true, SDL_SCANCODE_RALT, SDLK_RALT);
    Seen();
    Key(true, SDL_SCANCODE_Q, SDLK_q);
    Text("@");
    EXPECT_EQ(Seen(), (Expected{{KEYBD, '@'}})) << "AltGr";
    Key(true, SDL_SCANCODE_O, SDLK_o);
    EXPECT_EQ(Seen(), (Expected{{KEYBD, 'o'}})) << "Alt without text";
    Key(true, SDL_SCANCODE_P, SDLK_p);
    Text("p");
    EXPECT_EQ(Seen(), (Expected{{KEYBD, 'p'}})) << "Alt with text";
}

TEST_F(Typing, NamedKeysTypeTheirCodesOnce) {
    Key(true, SDL_SCANCODE_RETURN, SDLK_RETURN);
    Key(true, SDL_SCANCODE_KP_ENTER, SDLK_KP_ENTER);
    Key(true, SDL_SCANCODE_TAB, SDLK_TAB);
    Text("\t"); // some input methods send it
    Key(true, SDL_SCANCODE_DELETE, SDLK_DELETE);
    EXPECT_EQ(Seen(), (Expected{{KEYBD, 13}, {KEYBD, 13}, {TABKEY, 1}, {KEYBD, 9}, {KEYBD, 127}}));
}

TEST_F(Typing, TheKeypadFollowsNumLock) {
    Key(true, SDL_SCANCODE_KP_8, SDLK_KP_8, false, KMOD_NUM);
    Text("8");
    Key(true, SDL_SCANCODE_KP_8, SDLK_KP_8);
    EXPECT_EQ(Seen(), (Expected{{KEYBD, '8'}, {UPARROWKEY, 1}}));
}

TEST_F(Typing, OtherScriptsGiveCommandsByTheKeysPlace) {
    Key(true, SDL_SCANCODE_LCTRL, SDLK_LCTRL);
    Key(true, SDL_SCANCODE_S, 0x44B); // the letter on that key of a Russian layout
    EXPECT_EQ(Seen(), (Expected{{LEFTCTRLKEY, 1}, {KEYBD, 19}}));
}

} // namespace
