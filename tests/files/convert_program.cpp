#include "files/inspection.h"
#include "files/made_model.h"
#include "files/reading.h"
#include "store/storage.h"
#include "store/walks.h"
#include "support/run_program.h"

#include <cmath>
#include <fstream>
#include <set>

namespace {

/// What comes back of a model that has gone out.
struct Returned {
    double Area = 0;
    std::size_t Polygons = 0, Levels = 0, Branches = 0, Textures = 0;
    std::set<std::string> Objects, SubObjects;
};

class Convert : public FilesTest {
  protected:
    ProgramEnd Run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "convert");
        return RunProgram({.Program = KIRVO_FILE_PROGRAM,
                           .Arguments = std::move(arguments),
                           .Name = "",
                           .Directory = directory.Path(""),
                           .Environment = {{"HOME", directory.Path("")}},
                           .PendingSignal = 0});
    }

    // Of polygons that the nearest level shows, as often as they are placed.
    Returned LookAt(const std::string& model) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const LoadReport report = LoadForInspection(model);
        testing::internal::GetCapturedStderr();
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(report.Error, "");
        EXPECT_TRUE(report.MissingTextures.empty()) << model << ": " << report.MissingTextures[0];
        Returned found;
        for (const Object* object : EveryObject(MainFile)) {
            found.Objects.insert(object->Name);
            for (const SubObject* subObject : EverySubObject(object))
                found.SubObjects.insert(subObject->Name);
            for ([[maybe_unused]] const Lod* lod : EveryLod(object))
                ++found.Levels;
            for (const LodBead* bead : EveryLodBead(object->FirstLod))
                for (const Polygon* polygon : EveryPolygon(object))
                    if (polygon->SubObject == bead->SubObject) {
                        ++found.Polygons;
                        found.Area += AreaOf(polygon);
                    }
        }
        for ([[maybe_unused]] const Texture* texture : Along<&Texture::Next>(MainFile.FirstTexture))
            ++found.Textures;
        if (MainFile.Scene)
            for ([[maybe_unused]] const Branch* branch : EveryBranch(MainFile.Scene->FirstChild))
                ++found.Branches;
        return found;
    }

    static double AreaOf(const Polygon* polygon) {
        double sum[3] = {0, 0, 0};
        for (const PolygonBead* bead : EveryBead(polygon)) {
            const double *a = bead->Vertex->Position, *b = NextInRing(polygon, bead)->Vertex->Position;
            for (int axis = 0; axis < 3; ++axis)
                sum[axis] += a[(axis + 1) % 3] * b[(axis + 2) % 3] - a[(axis + 2) % 3] * b[(axis + 1) % 3];
        }
        return std::hypot(sum[0], sum[1], sum[2]) / 2;
    }

    ModelDirectory directory;
};

const std::string Vehicle = KIRVO_SOURCE_DIR "/examples/vehicle.kirvo";

TEST_F(Convert, WhatGoesOutComesBack) {
    const Returned original = LookAt(Vehicle);

    const struct {
        const char* Extension;
        bool KeepsPolygons, KeepsSubObjects, KeepsLevels, KeepsTextures;
    } formats[] = {
        {"obj", true, true, false, true}, {"ply", true, false, false, false}, {"stl", false, false, false, false},
        {"gltf", true, true, true, true}, {"glb", true, true, true, true},    {"dae", true, true, false, true},
        {"ac", true, true, false, true},
    };

    for (const auto& format : formats) {
        const std::string file = std::string("out.") + format.Extension, back = file + ".kirvo";
        ProgramEnd end = Run({Vehicle, file});
        ASSERT_EQ(end.Status, 0) << file << end.Errors;
        end = Run({file, back});
        ASSERT_EQ(end.Status, 0) << file << end.Errors;
        const Returned returned = LookAt(directory.Path(back));
        EXPECT_NEAR(returned.Area, original.Area, original.Area * 1e-4) << file;
        if (format.KeepsPolygons) {
            EXPECT_NEAR(static_cast<double>(returned.Polygons), static_cast<double>(original.Polygons),
                        static_cast<double>(original.Polygons) * 0.03)
                << file;
        }
        if (format.KeepsSubObjects) {
            for (const std::string& name : returned.SubObjects)
                EXPECT_EQ(original.SubObjects.count(name), 1u) << file << ": " << name;
        }
        if (format.KeepsLevels) {
            EXPECT_EQ(returned.Levels, original.Levels) << file;
        }
        if (format.KeepsTextures) {
            EXPECT_GT(returned.Textures, original.Textures / 2) << file;
        }
    }
}

TEST_F(Convert, AFailureIsOneLineAndLeavesNothing) {
    directory.Write("bad.glb", std::string("glTF\2\0\0\0\xFF\xFF\xFF\x7F", 12));
    directory.Write("bad.obj", "v 1 2 3\nf 1 2 900000000\n");
    directory.Write("bad.stl", "");
    directory.Write("bad.fbx", "Kaydara FBX Binary  \x00\x1a\x00 nothing more");
    directory.Write("bad.kirvo", "Compatibility: 3.05\nrubbish");
    directory.Write("text.txt", "text");
    const std::vector<std::string> cases[] = {
        {"bad.glb", "out.kirvo"}, {"bad.obj", "out.kirvo"},  {"bad.stl", "out.kirvo"},
        {"bad.fbx", "out.kirvo"}, {"text.txt", "out.kirvo"}, {"missing.obj", "out.kirvo"},
        {"bad.kirvo", "out.obj"}, {Vehicle, "out.xyz"},      {"--object", "Nobody", Vehicle, "out.obj"},
    };
    for (const auto& arguments : cases) {
        const ProgramEnd end = Run(arguments);
        EXPECT_EQ(end.Status, 1) << arguments[0];
        EXPECT_EQ(std::count(end.Errors.begin(), end.Errors.end(), '\n'), 1) << end.Errors;
        EXPECT_FALSE(std::filesystem::exists(directory.Path(arguments.back()))) << arguments[0];
    }
    EXPECT_EQ(Run({"one"}).Status, 2);
}

TEST_F(Convert, LevelsBecomeFiles) {
    ASSERT_EQ(Run({"--as", "glTF, one file a level (GLB)", Vehicle, "out.glb"}).Status, 0);
    EXPECT_TRUE(std::filesystem::exists(directory.Path("out_LOD0.glb")));
    EXPECT_TRUE(std::filesystem::exists(directory.Path("out_LOD1.glb")));
    EXPECT_GT(std::filesystem::file_size(directory.Path("out_LOD0.glb")),
              std::filesystem::file_size(directory.Path("out_LOD1.glb")));
}

} // namespace
