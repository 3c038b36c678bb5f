#include "base/palette_file.h"

#include "base/file_replacement.h"
#include "base/text_lines.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

int WritePaletteFile(const char* name, const char* kind, const char* header,
                     const std::function<void(std::FILE*)>& writeEntries) {
    FileReplacement file(name);
    if (file.Stream()) {
        std::fprintf(file.Stream(), "%s1.00\n\n\n", header);
        writeEntries(file.Stream());
        if (file.Commit())
            return 1;
    }
    const int error = errno;
    std::fprintf(stderr, "Couldn't write %s file %s\nReason: %s\n", kind, name, std::strerror(error));
    errno = error;
    return 0;
}

std::string OnOneLine(const char* key, const char* text) {
    std::string line(text, strnlen(text, sizeof FileData - 1 - std::strlen(key)));
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

bool FindNextEntry(std::FILE* file, const char* key) {
    if (!std::feof(file) && std::string_view(FileData).starts_with(key)) {
        RestOfLine = FileData + std::strlen(key);
        return true;
    }
    return FindLineInFile(file, key);
}
