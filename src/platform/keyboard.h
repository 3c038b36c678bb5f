// Keys: their names, devices and characters, and what typing one means while Ctrl or Alt is held.
#pragma once

#include <string>

namespace gl {

struct Key {
    const char* Name;   // as scripts write it
    int Device;         // 0: the key is no device
    char32_t Character; // what it types by itself, 0: nothing
};

// The named key, case counting; null for a name that is not known.
const Key* FindKey(const std::string& name);
// The device of the key that types a character without modifiers (lower case); 0: none.
int DeviceOfCharacter(char32_t character);

// The modifiers that change what a key types.
struct Modifiers {
    bool Ctrl = false, Alt = false;
};

// Those that are held now.
Modifiers HeldModifiers();
// What the key that types `character` by itself sends while modifiers are held: with Ctrl letters and [ \ ] ^ _ become
// control codes; otherwise the character.
char32_t WithModifiers(char32_t character, Modifiers modifiers);

// The characters of a UTF-8 text; bytes that belong to none are left out.
std::u32string CharactersOf(const std::string& text);

} // namespace gl
