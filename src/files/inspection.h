#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Looking into files without a window: what a model or an image file holds. Works on the main file of the store, which
// must have been initialised.

struct MaterialSummary {
    std::string Name;
    float Ambient[3], Diffuse[3], Specular[3], Emission[3];
    float Shininess, Alpha;
    std::size_t Polygons; // that use it, textured or not
};

struct ImageSummary {
    int Width, Height, Channels;
    int BytesPerValue;
    int Storage; // an ImageStorage, if the file is sound
    bool LittleEndian;
    const char* Format; // "PNG" or "JPEG", which have no such storage; null for others
};

struct TextureSummary {
    std::string Path; // where the image was found
    ImageSummary Image;
    float MinFilter, MagFilter;
    bool ClampS, ClampT, Fast;
    std::size_t Polygons;
};

struct SubObjectSummary {
    std::string Name;
    std::size_t Polygons; // with sub-polygons
    std::size_t Levels;   // that it is a member of
};

struct LodSummary {
    std::string Name;
    double Distance; // metres
    std::vector<std::string> Members;
};

struct ObjectSummary {
    std::string Name;
    bool Current, Billboard;
    std::size_t Vertices, LooseVertices, Polygons, SubPolygons; // Polygons counts the sub-polygons too
    std::size_t Degenerate;                                     // polygons of less than three corners or without area
    double Min[3], Max[3];                                      // metres; both 0 without vertices
    std::vector<SubObjectSummary> SubObjects;
    std::vector<LodSummary> Lods;
};

struct BranchSummary {
    std::string Name;
    int Depth;          // 0 below the root
    std::string Object; // empty for a group
    bool Visible, HasChildren;
    double Position[3]; // of the object, scene space
};

struct InformationLine {
    const char* Label; // "Title"
    std::string Text;
};

/// What a model file holds, after it has been loaded.
struct ModelSummary {
    std::vector<InformationLine> Information; // those that are not empty
    bool PublicDomain;
    std::vector<MaterialSummary> Materials;
    std::vector<TextureSummary> Textures;
    std::vector<ObjectSummary> Objects;
    std::vector<BranchSummary> Branches; // of the scene, each before what hangs below it
    bool SceneMode;                      // the file opens on its scene rather than on an object
};

/// How reading a file went.
struct LoadReport {
    std::string Path;
    std::uint64_t Size = 0;    // bytes
    std::uint64_t Reached = 0; // how far reading came
    int Version = 0;           // hundredths; 0 when it is not known
    bool InformationLost = false;
    std::vector<std::string> MissingTextures; // as the file names them
    std::string Error;                        // empty when the file was loaded
};

/// Why there is no ordinary file of this name; nothing when there is one.
std::string WhyNoFile(const std::string& path);

/// Loads a model file of any version into the emptied main file, as the program does, but silently.
LoadReport LoadForInspection(const std::string& path);

/// Sums up the main file. Linear in its size.
ModelSummary SummariseModel();

/// Sums up an image file. False when the file is none.
bool SummariseImage(const std::string& path, ImageSummary& image);
