#pragma once

#include <string>
#include <unordered_map>
#include <utility>

namespace converters {

/// Which group of an OBJ file belongs to which object: its reader makes one list of both.
class ObjGroups {
  public:
    void Read(const std::string& path);

    /// Names of the object and of the group that a node of that name stands for; without objects in the file all groups
    /// are those of `fallback`. An empty group: the object itself.
    std::pair<std::string, std::string> NamesOf(const std::string& node, const std::string& fallback) const;

  private:
    std::unordered_map<std::string, std::string> ObjectOf; // of a group
    bool HasObjects = false;
};

} // namespace converters
