#include "reading.h"

#include "base/directories.h"
#include "base/exit.h"
#include "base/memory.h"
#include "files/primitives.h"
#include "files/writer.h"
#include "store/clean_up.h"
#include "store/material_list.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/structure_editing.h"
#include "store/texture_list.h"
#include "support/exactly.h"
#include "support/temporary_directory.h"
#include "textures/texture_library.h"
#include "views/display_flags.h"

#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/resource.h>

namespace {

class Writer : public FilesTest {
  protected:
    Writer() : File(Directory.Path() / "model.kirvo") {
        CopyFileName(FilePath, "/models");
        CopyFileName(TextureDir, "/images");
        SceneGridIndex = SceneGridSteps = 1;
        HideScene = HideSubObjects = 0;
        NoViewports = 1;
        FileBackups = 1;
    }

    ~Writer() override { *FilePath = *TextureDir = '\0'; }

    static std::string ContentsOf(const std::string& name) {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string Written() {
        EXPECT_TRUE(WriteKirvo(File.c_str()));
        return ContentsOf(File);
    }

    TemporaryDirectory Directory;
    std::string File;
};

void AddNamedTexture(const char* name) {
    Texture* texture = NewTexture();
    texture->FileName = CopyOfString(name);
    AddTextureToList(texture);
}

Polygon* AddTriangle(std::initializer_list<Vertex*> vertices, Polygon* parent = nullptr) {
    PolygonBead* beads = nullptr;
    for (Vertex* vertex : vertices)
        AddPolygonBead(beads, vertex);
    return AddPolygon(beads, parent);
}

/// What follows the objects when nothing was set: settings and the end.
ModelBytes Settings() {
    ModelBytes bytes;
    const auto setting = [&](int number, int value) { bytes.Byte(60).Byte(number).Byte(4).Int(value); };
    for (const int number : {3, 6, 7, 8, 21, 22})
        setting(number, number == 6 || number == 7 || number == 8);
    setting(10, MachineIdentifier());
    setting(11, 0);
    for (int number = 12; number <= 19; ++number)
        bytes.Byte(60).Byte(number).Byte(1).String("");
    setting(9, 1);
    return bytes.End();
}

TEST_F(Writer, AnObjectWithoutAnything) {
    AddObject("bare", 0, 0);
    ModelBytes expected("3.05");
    expected.Byte(10).Byte(0).Byte(62).String("/images").Byte(60).Byte(20).Byte(8).String("/models");
    expected.Byte(40).String("bare").Byte(44).Int(0).Byte(48).Int(0).Byte(46).Int(1).Byte(47).Int(1);
    expected.Byte(26).Int(0).Byte(41).String("SubObject1").Byte(45).Int(0).Byte(0);
    expected.Byte(42).String("Lod1").Byte(43).Float(1000000.0F).Byte(45).Int(0).Byte(49).Int(1).Byte(0).Byte(0);
    EXPECT_EQ(Written(), expected.Raw(Settings()).Bytes());
}

TEST_F(Writer, EverythingThatAFileHolds) {
    Material* material = NewMaterial();
    RenameMaterial(material, "Brick");
    AddMaterial(NewMaterial());
    AddMaterial(material);
    for (const char* name : {"/models/textures/a.rgb", "/images/b.rgb", "/modelsx/c.rgb"})
        AddNamedTexture(name);
    Texture* texture = FirstTexture();
    texture->MinFilter = 291;
    texture->Fast = texture->ClampT = 1;

    AddObject("second", 1, 0);
    Object* object = AddObject("House", 1, 0); // comes first
    object->Attributes = ObjectIsBillboard;
    object->GridIndex = 4;
    object->View[1].Valid = 1;
    object->View[1].Direction = 5;
    object->View[1].Zoom = 2;
    SubObject* walls = AddSubObject("walls");
    Vertex* a = AddVertex(0, 0, 0);
    Vertex* b = AddVertex(2, 0, 0);
    Vertex* c = AddVertex(0, 2, 0);
    Polygon* unlit = AddTriangle({a, b, c});
    unlit->Material = material;
    unlit->Lighting = LightingUnlit;
    unlit->Flags = PolygonIsSub;
    Polygon* child = AddTriangle({c, b, a}, unlit);
    child->Lighting = LightingFaceted;
    child->LightGroup = 3;
    Polygon* grandchild = AddTriangle({a, c, b}, child);
    grandchild->Material = FirstMaterial();
    grandchild->TextureMaterial = material;
    grandchild->Texture = texture->Next;
    grandchild->Lighting = LightingSmooth;
    grandchild->Beads->TexCoord[1] = 0.5F;
    AddSubObject("roof");
    Lod* lod = AddLod("far");
    lod->Distance = 12.5;
    AddLodBead(walls)->Shown = 0;
    Branch* first = AddBranch(Scene(), BranchAsChild);
    first->Name = CopyOfString("street");
    Branch* second = AddBranch(first, BranchAsSibling);
    second->Object = object;
    second->Transform[3][0] = 7;
    Branch* below = AddBranch(first, BranchAsChild);
    below->Name = CopyOfString("lamp");
    below->Visible = 0;
    first->Collapsed = 1;
    DefaultScene3D = View{};
    DefaultScene3D.Valid = DefaultScene3D.Perspective = DefaultScene3D.HasCentre = 1;
    DefaultScene3D.Centre[2] = 3;
    ObjectIsolated = 0;

    ModelBytes expected("3.05");
    const auto fieldsOfMaterial = [&](int number, const char* name) {
        expected.Byte(11).Int(number).Byte(18).String(name).Byte(12).Floats({0, 0, 0}).Byte(13).Floats({.1, .1, .1});
        expected.Byte(14).Floats({1, 1, 1}).Byte(15).Floats({0, 0, 0}).Byte(16).Floats({64}).Byte(17).Floats({1}).End();
    };
    const auto view = [&](int identifier, int perspective, int direction, float zoom) -> ModelBytes& {
        expected.Byte(70).Int(identifier).Byte(71).Byte(perspective).Byte(72).Byte(direction);
        for (int tag = 73; tag <= 75; ++tag)
            expected.Byte(tag).Floats({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        return expected.Byte(76).Float(zoom);
    };
    expected.Byte(10);
    fieldsOfMaterial(0, "Unnamed");
    fieldsOfMaterial(1, "Brick");
    expected.End().Byte(62).String("/images").Byte(60).Byte(20).Byte(8).String("/models");
    const auto textureRecord = [&](int number, const char* path, int set) {
        expected.Byte(80).Int(number).String(path).Byte(81).Floats({set * 291.0}).Byte(82).Floats({0});
        expected.Byte(83).Int(set).Byte(85).Int(0).Byte(86).Int(set).End();
    };
    textureRecord(0, "./textures/a.rgb", 1);
    textureRecord(1, "./b.rgb", 0);
    textureRecord(2, "/modelsx/c.rgb", 0);

    expected.Byte(40).String("House").Byte(44).Int(0).Byte(48).Int(1);
    view(257, 0, 5, 2).End();
    expected.Byte(46).Int(4).Byte(47).Int(1);
    expected.Vertices({0, 2, 0, 2, 0, 0, 0, 0, 0}); // newest first: c, b, a
    expected.Byte(41).String("roof").Byte(45).Int(0).End().Byte(41).String("walls").Byte(45).Int(1);
    expected.Byte(30).Byte(31).Short(1).Byte(32).Byte(0).Corner(2).Corner(1).Corner(0);
    expected.Byte(30).Byte(31).Short(0).Byte(32).Byte(1).Byte(33).Floats({0, 0, -1}).Byte(37).Int(3).Byte(38).Byte(2);
    expected.Corner(0).Corner(1).Corner(2);
    expected.Byte(30).Byte(31).Short(0).Byte(32).Byte(2).Byte(34).Int(1).Byte(36).Short(1).Byte(38).Byte(2);
    for (const int corner : {2, 0, 1})
        expected.Byte(20)
            .Byte(27)
            .Int(corner)
            .Byte(24)
            .Floats({0, 0, -1})
            .Byte(23)
            .Floats({0, corner == 2 ? 0.5 : 0})
            .End();
    expected.End().End().End().End();
    expected.Byte(42).String("far").Byte(43).Floats({12.5}).Byte(45).Int(1).Byte(49).Int(0).End().End();

    expected.Byte(40).String("second").Byte(44).Int(1).Byte(48).Int(0).Byte(46).Int(1).Byte(47).Int(1).Vertices({});
    expected.Byte(41).String("SubObject1").Byte(45).Int(0).End();
    expected.Byte(42).String("Lod1").Byte(43).Floats({1e6}).Byte(45).Int(0).Byte(49).Int(1).End().End();

    expected.Byte(50).String("street").Byte(56).Int(1).Byte(57).Int(1);
    expected.Byte(50).String("lamp").Byte(56).Int(0).Byte(57).Int(0).Byte(51);
    expected.Byte(52).String("Unnamed").Byte(56).Int(1).Byte(57).Int(0).Byte(53).Int(0).Byte(55);
    expected.Floats({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 0, 0, 1}).Byte(51);
    view(573, 1, 0, 0).Byte(77).Floats({0, 0, 3}).End();
    std::string settings = Settings().Bytes();
    settings[settings.size() - 2] = 0; // ObjectIsolated
    expected.Raw(settings);

    const std::string written = Written();
    EXPECT_EQ(written, expected.Bytes());
    EXPECT_EQ(CurrentObject(), object);
    EXPECT_EQ(unlit->Flags, 0);
    EXPECT_EQ(Written(), written); // writing changes nothing that is written
}

TEST_F(Writer, NothingThatAReaderWouldRefuse) {
    Material* material = NewMaterial();
    RenameMaterial(material, (std::string(100, 'm') + "\n" + std::string(100, 'n')).c_str());
    material->Diffuse[1] = std::nanf("");
    AddMaterial(material);
    AddObject("o", 0, 0);
    AddVertex(1e300, -1e300, std::nan(""));
    ASSERT_TRUE(ReadQuietly(Written())) << Ferr[FileErrorNumber];
    EXPECT_EQ(std::string(FirstMaterial()->Name), std::string(100, 'm') + " " + std::string(26, 'n'));
    EXPECT_EQ(FirstMaterial()->Diffuse[1], 0);
    EXPECT_EQ(FirstVertex()->Position[0], std::numeric_limits<float>::max());
    EXPECT_EQ(FirstVertex()->Position[1], -std::numeric_limits<float>::max());
    EXPECT_EQ(FirstVertex()->Position[2], 0);
}

TEST_F(Writer, LongTextsHaveCountsOfFiveBytes) {
    AddObject("o", 0, 0);
    const std::string path = "/" + std::string(300, 'd');
    CopyFileName(FilePath, path.c_str());
    const ModelBytes expected = ModelBytes().Byte(60).Byte(20).Byte(0).Int(302).String(path);
    EXPECT_NE(Written().find(expected.Bytes()), std::string::npos);
}

TEST_F(Writer, ASaveKeepsWhatWasThere) {
    AddObject("o", 0, 0);
    std::ofstream(File) << "old";
    EXPECT_TRUE(SaveModelFile(File.c_str()));
    EXPECT_EQ(ContentsOf(File + ".bak"), "old");
    EXPECT_EQ(ContentsOf(File), Written());
    FileBackups = 0;
    std::ofstream(File) << "new";
    EXPECT_TRUE(SaveModelFile(File.c_str()));
    EXPECT_EQ(ContentsOf(File + ".bak"), "old");
}

TEST_F(Writer, WhatCannotBeCreatedIsTold) {
    AddObject("o", 0, 0);
    EXPECT_FALSE(SaveModelFile((File + "/sub/model.kirvo").c_str()));
    EXPECT_EQ(Told, std::vector<std::string>{"Couldn't write file:  model.kirvo\n\nreason: No such file or directory"});
}

TEST_F(Writer, AFailedSaveSaysWhereThePreviousVersionIs) {
    AddObject("o", 0, 0);
    std::filesystem::create_symlink("/dev/full", File);
    EXPECT_FALSE(SaveModelFile(File.c_str()));
    const std::string couldNot = "Couldn't save file:  model.kirvo\n\nreason: ";
    EXPECT_EQ(Told.back(), couldNot + "No space left on device\n\nThe work is not saved.");

    std::filesystem::remove(File);
    std::ofstream(File) << "old";
    for (int i = 0; i < 30000; ++i)
        AddVertex(i, 0, 0);
    signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small = {100000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_FALSE(SaveModelFile(File.c_str()));
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(Told.back(), couldNot + "File too large\n\nThe previous version of the file is unchanged.");
    EXPECT_EQ(ContentsOf(File), "old");
    EXPECT_FALSE(std::filesystem::exists(File + ".bak"));

    std::filesystem::create_directories(File + ".bak/full");
    EXPECT_TRUE(SaveModelFile(File.c_str()));
    EXPECT_EQ(Told.back(), "Saved file:  model.kirvo\n\nThe previous version could not be kept as model.kirvo.bak.\n\n"
                           "reason: Is a directory\n\nIt is kept as model.kirvo.2.bak.");
    const std::string saved = ContentsOf(File);
    EXPECT_EQ(saved, Written());
    EXPECT_EQ(ContentsOf(File + ".2.bak"), "old");
    EXPECT_EQ(Told.size(), 3U);
}

TEST_F(Writer, AFullDiskIsAnErrorWithoutAMessage) {
    AddObject("o", 0, 0);
    for (int vertices = 0; vertices < 2; ++vertices) {
        EXPECT_FALSE(WriteKirvo("/dev/full"));
        EXPECT_EQ(FileErrorNumber, WriteFailed);
        // Now too long for the buffer: the error comes in the middle, not only at the end.
        for (int i = 0; i < 30000; ++i)
            AddVertex(i, 0, 0);
    }
    EXPECT_TRUE(Told.empty());
}

TEST_F(Writer, AMaterialNumberThatDoesNotFitIsAnErrorNotAnotherMaterial) {
    AddObject("o", 0, 0);
    Vertex *a = AddVertex(0, 0, 0), *b = AddVertex(1, 0, 0), *c = AddVertex(0, 1, 0);
    PolygonBead* beads = nullptr;
    for (Vertex* vertex : {a, b, c})
        AddPolygonBead(beads, vertex);
    Polygon* polygon = AddPolygon(beads, nullptr);
    for (int i = 0; i <= 65536; ++i) {
        polygon->Material = NewMaterial();
        AddMaterial(polygon->Material);
    }
    EXPECT_FALSE(WriteKirvo(File.c_str()));
    EXPECT_EQ(FileErrorNumber, WriteFailed);
    polygon->Material = polygon->Material->Prev;
    EXPECT_TRUE(WriteKirvo(File.c_str()));
}

TEST_F(Writer, AFailedReadDoesNotStopAWrite) {
    EXPECT_EQ(ErrorOf(ModelBytes("3.05")), UnexpectedEnd);
    AddObject("o", 0, 0);
    EXPECT_TRUE(ReadQuietly(Written()));
}

using WriterDeathTest = Writer;

TEST_F(WriterDeathTest, TooManyRealsAreFatal) {
    double values[17] = {};

    EXPECT_EXIT(
        {
            FileWriter file;
            WriteFileReals(file, values, 17);
        },
        testing::ExitedWithCode(0), "Kirvo:Tried to write too many reals\\.\\.\\.\a\n");
    EXPECT_EXIT(
        {
            FileCursor file = {};
            ReadFileReals(file, values, 17);
        },
        testing::ExitedWithCode(0), "Kirvo:Tried to read too many reals\\.\\.\\.\a\n");
}

} // namespace
