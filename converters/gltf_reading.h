#pragma once

#include <string>
#include <unordered_map>

namespace Assimp {
class Importer;
}

namespace converters {

/// What a node of a glTF file is beyond what its reader tells.
struct GltfNote {
    std::string Name;          // of the branch or the sub-object
    std::string Object;        // of the placed object; empty: the branch's
    int Level = -1;            // of a part: the level of detail; -1: a sub-object
    double Distance = 1000000; // up to which the level is shown, metres
    bool Billboard = false, Visible = true;
    bool IsBranch = false; // rather than a part of one
};

/// The levels of detail of a glTF file (extension MSFT_lod), and what Kirvo has written into its extras.
class GltfNotes {
  public:
    /// Looks into the file and has the importer read it with its levels as children of their nodes. A file that is
    /// damaged is left to the importer.
    void Prepare(const std::string& path, Assimp::Importer& importer);

    /// Of a node by its name as the importer gives it: that of a part, or with `branch` that of a branch; or null.
    const GltfNote* Find(const std::string& node, bool branch = false) const;

    bool JoinsFans = false; // triangles with the same first corner were one polygon
    bool KeepsTree = false; // the tree is Kirvo's scene

  private:
    std::unordered_map<std::string, GltfNote> Notes;
};

} // namespace converters
