#pragma once

#include <string>
#include <utility>
#include <vector>

namespace converters {

/// Which group of an OBJ file belongs to which object: its reader makes one list of both.
class ObjGroups {
  public:
    void Read(const std::string& path);

    /// Names of the object and of the group that a node of that name stands for; without objects in the file all groups
    /// are those of `fallback`. An empty group: the object itself. To be asked in the order of the nodes: names may
    /// come again.
    std::pair<std::string, std::string> NamesOf(const std::string& node, const std::string& fallback);

  private:
    struct Line {
        std::string Name, Object; // an empty object: it is one
    };

    std::vector<Line> Lines; // in the order of the file
    std::size_t Next = 0;
    bool HasObjects = false;
};

} // namespace converters
