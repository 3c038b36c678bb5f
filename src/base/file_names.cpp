#include "base/file_names.h"

#include <cstring>
#include <string>
#include <string_view>

void SplitFileName(const char* path, char*& directory, char*& name) {
    static std::string buffer;
    std::string parts = path;
    const std::size_t slash = parts.rfind('/');
    // Without a "/" the directory is the empty text at the very end of the buffer.
    if (slash != std::string::npos)
        parts[slash] = '\0';
    buffer.swap(parts);
    directory = slash == std::string::npos ? buffer.data() + buffer.size() : buffer.data();
    name = slash == std::string::npos ? buffer.data() : buffer.data() + slash + 1;
}

int CopyFileName(char* destination, std::size_t capacity, const char* text) {
    const std::size_t length = std::strlen(text);
    if (length >= capacity)
        return 0;
    std::memmove(destination, text, length + 1);
    return 1;
}

int AddExtension(char* name, std::size_t capacity, const char* extension) {
    if (!extension || std::string_view(name).ends_with(extension))
        return 1;
    const std::size_t length = std::strlen(name);
    return CopyFileName(name + length, capacity - length, extension);
}

void ChopOffKirvo(char* name) {
    const std::string_view text = name;
    constexpr std::string_view extension = KirvoExtension;
    if (text.size() > extension.size() && text.ends_with(extension))
        name[text.size() - extension.size()] = '\0';
}
