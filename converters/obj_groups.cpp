#include "obj_groups.h"

#include "files/file_contents.h"

#include <cstring>
#include <string_view>

namespace converters {

namespace {

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r"), last = text.find_last_not_of(" \t\r");
    return first == std::string_view::npos ? "" : text.substr(first, last - first + 1);
}

} // namespace

void ObjGroups::Read(const std::string& path) {
    FileContents contents(path.c_str(), 16);
    if (!contents.IsOpen() || !contents.ReadAll())
        return;
    const auto* at = reinterpret_cast<const char*>(contents.Bytes());
    const char* end = at + contents.Size();
    std::string object;
    while (at < end) {
        const auto* newline = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        const char* next = newline ? newline : end;
        if (next - at > 2 && (at[1] == ' ' || at[1] == '\t') && (*at == 'o' || *at == 'g')) {
            const std::string name(Trimmed({at + 2, static_cast<std::size_t>(next - at - 2)}));
            if (*at == 'o') {
                object = name;
                HasObjects = true;
                Lines.push_back({name, ""});
            } else {
                Lines.push_back({name, object});
            }
        }
        at = next + 1;
    }
}

std::pair<std::string, std::string> ObjGroups::NamesOf(const std::string& node, const std::string& fallback) {
    const bool unnamed = node.empty() || node == "defaultobject" || node == "default";
    std::size_t place = Next;
    while (place < Lines.size() && Lines[place].Name != node)
        ++place;
    const bool found = place < Lines.size();
    if (found)
        Next = place + 1;
    if (!HasObjects)
        return {fallback, unnamed || !found ? "" : node};
    if (!found || Lines[place].Object.empty())
        return {unnamed ? fallback : node, ""};
    return {Lines[place].Object, node};
}

} // namespace converters
