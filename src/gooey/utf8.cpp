#include "gooey/utf8.h"

#include <cstring>

namespace {

constexpr int Replacement = 0xFFFD;

/// Bytes that a character with this first byte has; 0 when no character begins so.
int LengthByFirstByte(unsigned char first) {
    return first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

bool IsScalar(int codePoint) {
    return codePoint > 0 && codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
}

} // namespace

int NextCodePoint(const char*& text) {
    auto byte = [&text](int i) { return static_cast<unsigned char>(text[i]); };
    if (!byte(0))
        return 0;
    static constexpr int smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    int length = LengthByFirstByte(byte(0));
    int codePoint = length == 1 ? byte(0) : byte(0) & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            length = 0;
            break;
        }
        codePoint = codePoint << 6 | (byte(i) & 0x3F);
    }
    if (length == 0 || codePoint < smallest[length] || !IsScalar(codePoint)) {
        ++text;
        return Replacement;
    }
    text += length;
    return codePoint;
}

int CharactersIn(const char* text) {
    int count = 0;
    while (NextCodePoint(text))
        ++count;
    return count;
}

std::size_t ByteOfCharacter(const char* text, int character) {
    const char* at = text;
    while (character-- > 0 && NextCodePoint(at)) {
    }
    return static_cast<std::size_t>(at - text);
}

std::string EncodeCodePoint(int codePoint) {
    if (!IsScalar(codePoint))
        return "";
    auto continuation = [codePoint](int shift) { return static_cast<char>(0x80 | (codePoint >> shift & 0x3F)); };
    if (codePoint < 0x80)
        return {static_cast<char>(codePoint)};
    if (codePoint < 0x800)
        return {static_cast<char>(0xC0 | codePoint >> 6), continuation(0)};
    if (codePoint < 0x10000)
        return {static_cast<char>(0xE0 | codePoint >> 12), continuation(6), continuation(0)};
    return {static_cast<char>(0xF0 | codePoint >> 18), continuation(12), continuation(6), continuation(0)};
}

std::size_t WholeCharactersWithin(const char* text, std::size_t bytes) {
    const char* at = text;
    const char* end = text;
    while (NextCodePoint(at) && static_cast<std::size_t>(at - text) <= bytes)
        end = at;
    return static_cast<std::size_t>(end - text);
}
