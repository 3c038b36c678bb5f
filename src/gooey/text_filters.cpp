#include "gooey/text_filters.h"

#include "gooey/event_loop.h"

#include <cctype>
#include <cstring>

namespace {

/// Beyond ASCII: neither a control character nor a part of a character.
bool IsPrintableBeyondAscii(int codePoint) {
    return codePoint >= 0xA0 && codePoint != 0xAD && codePoint < 0xE0000 && (codePoint < 0x2028 || codePoint > 0x202E);
}

/// Beyond ASCII: a letter, as far as that can be told by the blocks of punctuation and symbols.
bool IsLetterBeyondAscii(int codePoint) {
    bool latinLetter = codePoint >= 0xC0 && codePoint != 0xD7 && codePoint != 0xF7;
    bool symbol = (codePoint >= 0x2000 && codePoint < 0x2C00) || (codePoint >= 0x3000 && codePoint < 0x3005) ||
                  (codePoint >= 0xE000 && codePoint < 0xF900) || codePoint >= 0xFE00;
    return latinLetter && !symbol;
}

} // namespace

int FPFilter(int& character, int position, const char* text) {
    if (character == ',')
        character = '.';
    if (character == '-')
        return position == 0 && !std::strchr(text, '-');
    if (character == '.')
        return !std::strchr(text, '.');
    return character >= '0' && character <= '9';
}

int PositiveFPFilter(int& character, int position, const char* text) {
    return character != '-' && FPFilter(character, position, text);
}

int AsciiFilter(int& character, int, const char*) {
    return character >= 32 && character <= 126;
}

int PrintableFilter(int& character, int, const char*) {
    int codePoint = CodePointOf(character);
    return codePoint >= 128 ? IsPrintableBeyondAscii(codePoint) : codePoint != 0;
}

int AlphanumericFilter(int& character, int, const char*) {
    int codePoint = CodePointOf(character);
    return codePoint >= 128 ? IsLetterBeyondAscii(codePoint) : codePoint == ' ' || std::isalnum(codePoint);
}
