#pragma once

#include "model.h"
#include "textures.h"

#include <algorithm>
#include <string_view>

namespace converters {

/// A file that an export makes, by its name beside the exported one ("" for that itself).
struct OutputFile {
    std::string Name, Bytes;
};

/// What an export works on.
struct Export {
    const Model& From;
    std::vector<ExportedImage> Images; // by texture
    std::string Stem;                  // of the exported file's name
    std::size_t Level = 0;             // for formats of one level
    bool Binary = false;
    bool AllLevels = true; // for formats of several
};

using Exporter = std::vector<OutputFile> (*)(const Export& task);

std::vector<OutputFile> ExportObj(const Export& task);
std::vector<OutputFile> ExportPly(const Export& task);
std::vector<OutputFile> ExportStl(const Export& task);
std::vector<OutputFile> ExportGltf(const Export& task);
std::vector<OutputFile> ExportCollada(const Export& task);
std::vector<OutputFile> ExportAc3d(const Export& task);

/// Appends numbers and texts to a growing text, quickly and whatever the user's language.
class TextOutput {
  public:
    TextOutput& operator<<(std::string_view text) {
        Text += text;
        return *this;
    }

    TextOutput& operator<<(char character) {
        Text += character;
        return *this;
    }

    TextOutput& operator<<(double number);
    TextOutput& operator<<(std::size_t number);
    TextOutput& operator<<(int number);
    std::string Text;
};

/// Calls `visit` with each polygon of a placed object that its level shows, grouped by sub-object: begin(sub-object
/// name) comes before the polygons of each.
template <class Begin, class Visit>
void ForShownPolygons(const Object& object, std::size_t level, Begin begin, Visit visit) {
    for (const int member : MembersAt(object, level)) {
        begin(object.SubObjects[static_cast<std::size_t>(member)]);
        // Model files have the polygons sub-object by sub-object.
        auto at = std::lower_bound(object.Polygons.begin(), object.Polygons.end(), member,
                                   [](const Polygon& polygon, int number) { return polygon.SubObject < number; });
        for (; at != object.Polygons.end() && at->SubObject == member; ++at)
            if (at->Corners >= 3)
                visit(*at);
    }
}

} // namespace converters
