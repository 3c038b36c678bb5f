// Makes the example models and their images: make_examples DIRECTORY [village|vehicle|house|terrain ...], all of them
// when none is named. The same program always makes the same files.
#include "house.h"
#include "model_builder.h"
#include "terrain.h"
#include "textures.h"
#include "vehicle.h"
#include "village.h"

#include "base/directories.h"
#include "files/file_information.h"
#include "files/writer.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "views/grid.h"
#include "views/scene_views.h"

#include <cstdio>
#include <cstring>
#include <filesystem>

namespace {

struct Example {
    const char* Name;
    const char* Title;
    const char* Comment;
    bool IsScene;
    int Viewports;
    void (*Build)();
};

void BuildVehicleAlone() {
    BuildVehicle("Car");
    SaveView(false, {{0, 0, 0.6}, 7.4, 228, 15, 0});
}

const Example Examples[] = {
    {"village", "A village", "Placed objects with levels of detail, billboards, decals", true, 1, BuildVillage},
    {"vehicle", "A small car", "One object of several parts, smooth, with transparent glass", false, 3,
     BuildVehicleAlone},
    {"house", "A house", "To put textures on", false, 1, BuildHouse},
    {"terrain", "A mountain range", "100,000 triangles, covered by height and slope", false, 1, BuildTerrain},
};

/// What would differ from one machine to another, and what the reader of the file sees first.
void Describe(const Example& example) {
    constexpr int sameEverywhere = 1;
    ResetFileInformation();
    FileCreateId = sameEverywhere;
    FilePublicDomain = 1;
    std::snprintf(FileTitle, FileInformationSize, "%s", example.Title);
    std::snprintf(FileAuthor, FileInformationSize, "Kirvo");
    std::snprintf(FileComment1, FileInformationSize, "%s", example.Comment);
    ObjectIsolated = !example.IsScene;
    NoViewports = example.Viewports;
}

bool Make(const Example& example, const std::string& directory) {
    ResetStorage();
    DevalidateSceneViews();
    example.Build();
    Describe(example);
    const std::string path = directory + "/" + example.Name + KirvoExtension;
    if (WriteKirvo(path.c_str()))
        return true;
    std::fprintf(stderr, "%s cannot be written\n", path.c_str());
    return false;
}

bool IsWanted(const Example& example, int argumentCount, char* const arguments[]) {
    for (int i = 2; i < argumentCount; ++i)
        if (std::strcmp(arguments[i], example.Name) == 0)
            return true;
    return argumentCount == 2;
}

} // namespace

int main(int argumentCount, char* arguments[]) {
    if (argumentCount < 2) {
        std::fprintf(stderr, "Usage: make_examples DIRECTORY [village|vehicle|house|terrain ...]\n");
        return 1;
    }
    const std::string directory = arguments[1];
    std::error_code ignored;
    std::filesystem::create_directories(directory + "/textures", ignored);
    InitialiseStorage();
    // The name that the files carry, wherever they are made.
    CopyFileName(FilePath, "examples");
    if (!WriteTextures(directory + "/textures"))
        return 1;
    for (const Example& example : Examples)
        if (IsWanted(example, argumentCount, arguments)) {
            if (example.Build == BuildTerrain && !WriteTerrainTexture(directory + "/textures"))
                return 1;
            if (!Make(example, directory))
                return 1;
        }
    return 0;
}
