#pragma once

#include "store/view_record.h"

#include <cstddef>

// The numbers of the model file format, which readers and writer share. A file is a line of text, a marker byte and a
// stream of one-byte tags, each followed by data whose form the tag fixes; tag 0 ends a context. All numbers are
// big-endian.

inline constexpr char HeaderPrefix[] = "Compatibility:";
inline constexpr char CurrentHeader[] = "Compatibility: 3.05\n";
inline constexpr int BodyMarker = 1;

/// Version numbers in hundredths.
enum FileVersionNumber : int {
    LegacyTextVersion = 100,    // a text file, read by ReadKirvo100
    OldestBinaryVersion = 200,  // the oldest that the tagged form has
    WideMaterialsVersion = 300, // polygons name materials by a short; texture settings lose their byte counts
    NewAxesVersion = 301,       // before: y points up the screen and has to be turned
    IntMaterialsVersion = 302,  // materials carry an int as their number
    CurrentFileVersion = 305
};

/// Bytes that the reader takes of a string, its newline left out, plus one for the closing null.
inline constexpr std::size_t HeaderLineSize = 200;
inline constexpr std::size_t NameSize = 128;      // materials, sub-objects, levels of detail
inline constexpr std::size_t LongNameSize = 4096; // objects, branches, image paths

/// Tags, in all contexts.
enum FileTag : int {
    TagEnd = 0,

    TagMaterialSection = 10,
    TagMaterial = 11,
    TagAmbient = 12,
    TagDiffuse = 13,
    TagSpecular = 14,
    TagEmission = 15,
    TagShininess = 16,
    TagAlpha = 17,
    TagMaterialName = 18,

    TagCorner = 20,
    TagCornerPosition = 22, // older files
    TagCornerTexture = 23,
    TagCornerNormal = 24,
    TagCornerIgnored = 25,
    TagVertexSection = 26,
    TagCornerVertex = 27,

    TagPolygon = 30,
    TagPolygonMaterial = 31,
    TagLighting = 32,
    TagPolygonNormal = 33,
    TagPolygonTexture = 34,
    TagTextureMaterial = 36,
    TagLightGroup = 37,
    TagPolygonFlags = 38,

    TagObject = 40,
    TagSubObject = 41, // in a level of detail of an older file: a member by name
    TagLod = 42,
    TagLodDistance = 43,
    TagObjectId = 44,
    TagSubObjectIndex = 45,
    TagGridIndex = 46,
    TagGridSteps = 47,
    TagObjectAttributes = 48,
    TagLodShown = 49,

    TagBranchList = 50,
    TagEndOfBranches = 51,
    TagNextBranch = 52,
    TagBranchObject = 53,
    TagBranchTransform = 55,
    TagBranchVisible = 56,
    TagBranchCollapsed = 57,

    TagSetting = 60,
    TagShortTexture = 61, // older files
    TagTextureDirectory = 62,

    TagView = 70,
    TagPerspective = 71,
    TagDirection = 72,
    TagViewMatrix = 73,
    TagProjection = 74,
    TagGridMatrix = 75,
    TagZoom = 76,
    TagCentre = 77,

    TagTexture = 80,
    TagMinFilter = 81,
    TagMagFilter = 82,
    TagFast = 83,
    TagClampBoth = 84, // older files
    TagClampS = 85,
    TagClampT = 86
};

/// File settings, by the number that follows TagSetting.
enum FileSettingNumber : int {
    SettingCurrentObject = 3,
    SettingSceneGridIndex = 6,
    SettingSceneGridSteps = 7,
    SettingNoViewports = 8,
    SettingObjectIsolated = 9,
    SettingCreateId = 10,
    SettingPublicDomain = 11,
    SettingTitle = 12,
    SettingAuthor = 13,
    SettingCompany = 14,
    SettingContact = 15,
    SettingComment1 = 16,
    SettingComment2 = 17,
    SettingComment3 = 18,
    SettingComment4 = 19,
    SettingFileDirectory = 20,
    SettingHideSubObjects = 21,
    SettingHideScene = 22
};

/// The places of views, by the number that follows TagView. A range holds one view for each direction or viewport.
enum ViewIdentifier : int {
    ViewDefaultObject2D = 0,
    ViewDefaultObject3D = 61,
    ViewObject = 256,
    ViewDefaultScene2D = 512,
    ViewDefaultScene3D = 573,
    ViewScene = 768
};

/// The place of the current file's views that an identifier names; null when it names none. For an identifier of an
/// object view there must be a current object.
View* ViewPlace(int identifier);

/// True for the identifiers of the views that belong to the scene, not to an object.
inline bool IsSceneView(int identifier) {
    return identifier >= ViewDefaultScene2D;
}
