#include "platform/keyboard.h"

#include "platform/event_queue.h"
#include "platform/events.h"

#include <algorithm>
#include <iterator>

namespace gl {

namespace {

const Key Keys[] = {
    {"Space", 0, ' '},
    {"Return", 0, 13},
    {"Escape", 0, 27},
    {"Backspace", 0, 8},
    {"Tab", TABKEY, 9},
    {"Delete", 0, 127},
    {"Insert", INSERTKEY, 0},
    {"Home", HOMEKEY, 0},
    {"End", ENDKEY, 0},
    {"PageUp", PAGEUPKEY, 0},
    {"PageDown", PAGEDOWNKEY, 0},
    {"Up", UPARROWKEY, 0},
    {"Down", DOWNARROWKEY, 0},
    {"Left", LEFTARROWKEY, 0},
    {"Right", RIGHTARROWKEY, 0},
    {"F1", F1KEY, 0},
    {"F2", F2KEY, 0},
    {"F3", F3KEY, 0},
    {"F4", F4KEY, 0},
    {"F5", F5KEY, 0},
    {"F6", F6KEY, 0},
    {"F7", F7KEY, 0},
    {"F8", F8KEY, 0},
    {"F9", F9KEY, 0},
    {"F10", F10KEY, 0},
    {"F11", F11KEY, 0},
    {"F12", F12KEY, 0},
    {"LeftShift", LEFTSHIFTKEY, 0},
    {"RightShift", RIGHTSHIFTKEY, 0},
    {"LeftCtrl", LEFTCTRLKEY, 0},
    {"RightCtrl", RIGHTCTRLKEY, 0},
    {"LeftAlt", LEFTALTKEY, 0},
    {"RightAlt", RIGHTALTKEY, 0},
};

} // namespace

const Key* FindKey(const std::string& name) {
    const Key* found = std::find_if(std::begin(Keys), std::end(Keys), [&](const Key& key) { return key.Name == name; });
    return found == std::end(Keys) ? nullptr : found;
}

int DeviceOfCharacter(char32_t character) {
    if (character == 'q')
        return QKEY;
    return character == 9 ? TABKEY : 0;
}

Modifiers HeldModifiers() {
    return {DeviceValue(LEFTCTRLKEY) != 0 || DeviceValue(RIGHTCTRLKEY) != 0,
            DeviceValue(LEFTALTKEY) != 0 || DeviceValue(RIGHTALTKEY) != 0};
}

char32_t WithModifiers(char32_t character, Modifiers modifiers) {
    const bool letter = (character >= 'a' && character <= 'z') || (character >= '@' && character <= '_');
    return modifiers.Ctrl && letter && character != '@' ? (character & 0x1F) : character;
}

std::u32string CharactersOf(const std::string& text) {
    std::u32string characters;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const int length = lead < 0x80 ? 1 : lead >> 5 == 6 ? 2 : lead >> 4 == 14 ? 3 : lead >> 3 == 30 ? 4 : 0;
        if (length == 0 || i + static_cast<std::size_t>(length) > text.size()) {
            i++;
            continue;
        }
        char32_t character = length == 1 ? lead : lead & (0x7F >> length);
        bool whole = true;
        for (int j = 1; j < length; j++) {
            const auto next = static_cast<unsigned char>(text[i + static_cast<std::size_t>(j)]);
            whole = whole && next >> 6 == 2;
            character = character << 6 | (next & 0x3F);
        }
        i += whole ? static_cast<std::size_t>(length) : 1;
        if (whole)
            characters.push_back(character);
    }
    return characters;
}

} // namespace gl
