#include "base/text_lines.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>
#include <strings.h>
#include <vector>

char FileData[1000];
char* RestOfLine = FileData;

namespace {

template <class Character>
Character* SkipBlanks(Character* text) {
    return text + std::strspn(text, " \t");
}

// Reads a number at `text` and moves past it and the blanks around it; false when there is none.
bool TakeFloat(const char*& text, float& value) {
    text = SkipBlanks(text);
    if (*text == '+')
        ++text;
    const auto [end, error] = std::from_chars(text, text + std::strlen(text), value);
    text = SkipBlanks(end);
    return error == std::errc() && std::isfinite(value);
}

} // namespace

int ReadLineFromFile(std::FILE* file) {
    if (!std::fgets(FileData, sizeof FileData, file))
        return 0;
    const std::size_t length = std::strcspn(FileData, "\n");
    const bool carriageReturn = FileData[length] == '\n' && length > 0 && FileData[length - 1] == '\r';
    FileData[carriageReturn ? length - 1 : length] = '\0';
    return 1;
}

int FindLineInFile(std::FILE* file, const char* prefix) {
    while (ReadLineFromFile(file))
        if (std::string_view(FileData).starts_with(prefix)) {
            RestOfLine = FileData + std::strlen(prefix);
            return 1;
        }
    return 0;
}

char* MatchAsciiLine(std::FILE* file, const char* key) {
    const std::size_t length = std::strlen(key);
    if (!ReadLineFromFile(file) || strncasecmp(FileData, key, length) != 0)
        return nullptr;
    char* rest = SkipBlanks(FileData + length);
    return *rest ? rest : nullptr;
}

int ReadAsciiFloats(std::FILE* file, const char* key, float* destination, int count) {
    const char* text = MatchAsciiLine(file, key);
    if (!text)
        return 0;
    std::vector<float> values(count);
    for (int i = 0; i < count; ++i) {
        if (i > 0 && *text++ != ',')
            return 0;
        if (!TakeFloat(text, values[i]))
            return 0;
    }
    std::copy(values.begin(), values.end(), destination);
    return 1;
}

int ReadAsciiToken(std::FILE* file, const char* key, const char* const* words, int count) {
    const char* text = MatchAsciiLine(file, key);
    for (int i = 0; text && i < count; ++i)
        if (strcasecmp(text, words[i]) == 0)
            return i;
    return -1;
}

int AsciiFileError(std::FILE* file) {
    std::fclose(file);
    return 0;
}
