#include "reading.h"

#include "support/temporary_directory.h"

#include <fstream>
#include <limits>

namespace {

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

ModelBytes InObject() {
    return ModelBytes("3.05").Materials({0}).Byte(40).String("o");
}

ModelBytes InSubObject() {
    return InObject().Vertices({0, 0, 0, 1, 0, 0, 0, 1, 0}).Byte(41).String("s");
}

ModelBytes InPolygon() {
    return InSubObject().Byte(30);
}

ModelBytes InCorner() {
    return InPolygon().Byte(20);
}

/// An unknown tag whose block is longer than the file.
ModelBytes TooLong(ModelBytes bytes) {
    return bytes.Byte(99).Count(1000).Raw("short");
}

class ReaderErrors : public FilesTest {};

TEST_F(ReaderErrors, EachTroubleHasItsNumber) {
    const struct {
        const char* What;
        ModelBytes Bytes;
        int Number;
    } cases[] = {
        {"empty", ModelBytes(), NotAKirvoFile},
        {"other text", ModelBytes().Raw("Compatible: 3.05\n\1"), NotAKirvoFile},
        {"no number", ModelBytes().Raw("Compatibility: new\n\1"), NotAKirvoFile},
        {"wrong marker", ModelBytes().Raw("Compatibility: 3.05\n\2"), NotAKirvoFile},
        {"version above", ModelBytes("3.06").End(), UnsupportedRevision},
        {"version below", ModelBytes("1.99").End(), UnsupportedRevision},
        {"negative version", ModelBytes("-3.05").End(), UnsupportedRevision},
        {"version out of range", ModelBytes("1e30").End(), UnsupportedRevision},
        {"version beyond all numbers", ModelBytes("1e99").End(), UnsupportedRevision},
        {"version is no number", ModelBytes("nan").End(), UnsupportedRevision},
        {"header only", ModelBytes().Raw("Compatibility: 3.05\n"), UnexpectedEnd},
        {"no end tag", ModelBytes("3.05"), UnexpectedEnd},
        {"cut in an object", InObject(), UnexpectedEnd},
        {"cut in a number", InObject().Byte(44).Byte(0), BadFile},
        {"cut in a string", ModelBytes("3.05").Byte(40).Raw("nam"), BadString},
        {"long name of a sub-object", InObject().Byte(41).String(std::string(128, 'n')), BadString},
        {"long name of an object", ModelBytes("3.05").Byte(40).String(std::string(4096, 'n')), BadString},
        {"long title", ModelBytes("3.05").Byte(60).Byte(12).Count(81).String(std::string(80, 't')), BadString},
        {"more vertices than bytes", InObject().Byte(26).Int(0x7fffffff).Floats({1, 2, 3}), BadFile},
        {"negative number of vertices", InObject().Byte(26).Int(-1).Floats({1, 2, 3}).End().End(), BadFile},
        {"vertex is no number", InObject().Vertices({0, NotANumber, 0}).End().End(), BadVertex},
        {"vertex at infinity", InObject().Vertices({0, 0, -Infinity}).End().End(), BadVertex},
        {"corner at infinity", InCorner().Byte(22).Floats({Infinity, 0, 0}).End(), BadVertex},
        {"texture coordinate", InCorner().Byte(27).Int(0).Byte(23).Floats({0, NotANumber}).End(), BadVertex},
        {"two vertices", InCorner().Byte(27).Int(0).Byte(27).Int(0).End(), BadVertex},
        {"two kinds of vertex", InCorner().Byte(27).Int(0).Byte(22).Floats({0, 0, 0}).End(), BadVertex},
        {"normal before vertex", InCorner().Byte(24).Floats({0, 0, 1}).End(), BadVertex},
        {"texture before vertex", InCorner().Byte(23).Floats({0, 0}).End(), BadVertex},
        {"no vertex section", InObject().Byte(41).String("s").Byte(30).Corner(0), BadVertex},
        {"vertex section of another object",
         InSubObject().End().End().Byte(40).String("p").Byte(41).String("s").Byte(30).Corner(0), BadVertex},
        {"vertex number too high", InPolygon().Corner(3), BadVertexIndex},
        {"vertex number too high for the section now", InSubObject().Vertices({0, 0, 0}).Byte(30).Corner(1),
         BadVertexIndex},
        {"vertex number below 0", InPolygon().Corner(-1), BadVertexIndex},
        {"material number too high", InPolygon().Byte(31).Short(60000).End(), BadMaterialIndex},
        {"material number of none", InPolygon().Byte(31).Short(5).End(), BadPolygonMaterial},
        {"texture material too high", InPolygon().Byte(36).Short(60000).End(), BadMaterialIndex},
        {"no materials at all", ModelBytes("3.05").Byte(40).String("o").Byte(41).String("s").Byte(30).End(),
         BadPolygonMaterial},
        {"negative material", ModelBytes("3.05").Materials({-1}), BadMaterialIndex},
        {"material colour", ModelBytes("3.05").Byte(10).Byte(11).Int(0).Byte(12).Floats({0, 0, Infinity}).End(),
         BadMaterials},
        {"lighting", InPolygon().Byte(32).Byte(3).End(), UnknownLighting},
        {"level of an unknown number",
         InObject()
             .Byte(41)
             .String("s")
             .Byte(45)
             .Int(4)
             .End()
             .Byte(42)
             .String("l")
             .Byte(45)
             .Int(4)
             .Byte(45)
             .Int(5)
             .End(),
         UndefinedSubObject},
        {"level of an unknown name", InSubObject().End().Byte(42).String("l").Byte(41).String("S").End(),
         UndefinedSubObject},
        {"level without sub-objects", InObject().Byte(42).String("l").Byte(45).Int(0).End(), UndefinedSubObject},
        {"level at no distance", InObject().Byte(42).String("l").Byte(43).Floats({NotANumber}).End(), BadLod},
        {"tree of an unknown object", InObject().Byte(44).Int(1).End().Byte(50).String("b").Byte(53).Int(2),
         UnknownTreeObject},
        {"sibling without name", ModelBytes("3.05").Byte(50).String("b").Byte(52).Raw("x"), BadTree},
        {"placement",
         ModelBytes("3.05").Byte(50).String("b").Byte(55).Floats(
             {NotANumber, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}),
         BadTree},
        {"view direction", ModelBytes("3.05").Byte(70).Int(512).Byte(72).Byte(6).End(), BadView},
        {"view zoom", ModelBytes("3.05").Byte(70).Int(512).Byte(76).Floats({NotANumber}).End(), BadView},
        {"skip at the top", TooLong(ModelBytes("3.05")), UnknownData},
        {"skip in materials", TooLong(ModelBytes("3.05").Byte(10)), BadMaterials},
        {"skip in a material", TooLong(ModelBytes("3.05").Byte(10).Byte(11).Int(0)), BadMaterials},
        {"skip in an object", TooLong(InObject()), BadFile},
        {"skip in a sub-object", TooLong(InSubObject()), BadSubObject},
        {"skip in a polygon", TooLong(InPolygon()), BadPolygon},
        {"skip in a corner", TooLong(InCorner()), BadVertex},
        {"skip in a level", TooLong(InObject().Byte(42).String("l")), BadLod},
        {"skip in a tree", TooLong(ModelBytes("3.05").Byte(50).String("b")), BadTree},
        {"skip in a texture", TooLong(ModelBytes("3.05").Byte(80).Int(0).String("t")), BadTexture},
        {"skip in a view", TooLong(ModelBytes("3.05").Byte(70).Int(0)), BadView},
        {"skip backwards", InObject().Byte(99).Count(-5).End().End(), BadFile},
        {"skip a long setting", ModelBytes("3.05").Byte(60).Byte(99).Count(1000), UnexpectedEnd},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.What);
        ASSERT_TRUE(ReadQuietly(ModelBytes("3.05").Materials({0}).Byte(40).String("before").End().End()));
        Object* before = FirstObject();
        Told.clear();
        EXPECT_EQ(ErrorOf(c.Bytes), c.Number);
        EXPECT_EQ(Told, std::vector<std::string>{std::string("Error while reading file:\n\n") + Ferr[c.Number] + "\n"});
        if (c.Number == NotAKirvoFile) {
            EXPECT_EQ(FirstObject(), before);
            EXPECT_EQ(CurrentFile->CurrentObject, before);
        } else {
            EXPECT_FALSE(FirstObject());
            EXPECT_FALSE(FirstMaterial());
            EXPECT_FALSE(CurrentFile->Scene);
        }
    }
}

TEST_F(ReaderErrors, OnlyAnUnsupportedRevisionIsToldInSpiteOfTheCaller) {
    FileErrorOk = 1;
    EXPECT_EQ(ErrorOf(ModelBytes("3.05")), UnexpectedEnd);
    EXPECT_TRUE(Told.empty());
    EXPECT_EQ(ErrorOf(ModelBytes("3.06")), UnsupportedRevision);
    EXPECT_EQ(Told.size(), 1U);
}

TEST_F(ReaderErrors, AMissingFileLeavesEverythingAsItWas) {
    Object* before = CurrentObject();
    EXPECT_FALSE(ReadKirvo("/nowhere/at/all.kirvo"));
    EXPECT_EQ(FileErrorNumber, FileNotFound);
    EXPECT_TRUE(FileError);
    EXPECT_TRUE(Told.empty());
    EXPECT_EQ(CurrentObject(), before);
}

TEST_F(ReaderErrors, FilesAreReadAsMemoryIs) {
    const TemporaryDirectory directory;
    const std::string name = directory.Path() / "model.kirvo";
    std::ofstream(name, std::ios::binary) << InObject().End().End().Bytes();
    testing::internal::CaptureStdout();
    EXPECT_TRUE(ReadKirvo(name.c_str()));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Object: o\n");
    EXPECT_STREQ(CurrentObject()->Name, "o");

    EXPECT_FALSE(ReadKirvo(directory.Path().c_str()));
    EXPECT_EQ(FileErrorNumber, NotAKirvoFile);
    std::ofstream(name, std::ios::trunc);
    EXPECT_FALSE(ReadKirvo(name.c_str()));
    EXPECT_EQ(FileErrorNumber, NotAKirvoFile);
    EXPECT_STREQ(CurrentObject()->Name, "o");
}

TEST_F(ReaderErrors, EveryCutShortFileFailsAndLeavesNothing) {
    ModelBytes bytes = InSubObject();
    bytes.OpenPolygon({0, 1, 2}).OpenPolygon({2, 1, 0}).End().End().Byte(45).Int(1).End();
    bytes.Byte(42).String("l").Byte(45).Int(1).Byte(49).Int(1).End().Byte(70).Int(61).Byte(77).Floats({1, 2, 3}).End();
    bytes.End().Byte(50).String("b").Byte(50).String("c").Byte(51).Byte(52).String("d").Byte(51);
    bytes.Byte(60).Byte(12).Count(2).String("t").Byte(60).Byte(6).Count(4).Int(3).End();
    ASSERT_TRUE(ReadQuietly(bytes)) << Ferr[FileErrorNumber];
    const std::string whole = bytes.Bytes();
    const std::size_t headerLength = whole.find('\n') + 1;
    for (std::size_t length = headerLength; length < whole.size(); ++length) {
        EXPECT_FALSE(ReadQuietly(whole.substr(0, length))) << length;
        EXPECT_FALSE(FirstObject()) << length;
    }
}

TEST_F(ReaderErrors, DeepNestingIsReadAndReleased) {
    constexpr int depth = 200000;
    ModelBytes polygons = InSubObject();
    for (int i = 0; i < depth; ++i)
        polygons.Byte(30);
    ModelBytes closed = polygons;
    for (int i = 0; i < depth + 3; ++i)
        closed.End();
    ASSERT_TRUE(ReadQuietly(closed)) << Ferr[FileErrorNumber];
    EXPECT_EQ(ListOf<&Polygon::Next>(FirstPolygon()).size(), static_cast<std::size_t>(depth));
    EXPECT_EQ(ErrorOf(polygons), UnexpectedEnd);

    ModelBytes tree("3.05");
    for (int i = 0; i < depth; ++i)
        tree.Byte(50).Byte('\n');
    ModelBytes closedTree = tree;
    for (int i = 0; i < depth; ++i)
        closedTree.Byte(51);
    ASSERT_TRUE(ReadQuietly(closedTree.End())) << Ferr[FileErrorNumber];
    EXPECT_EQ(ErrorOf(tree), UnexpectedEnd);
}

// Were any of these looked for one by one, reading would take hours.
TEST_F(ReaderErrors, LongListsAreReadWithoutSearchingThem) {
    constexpr int many = 100000;
    ModelBytes bytes("3.05");
    for (int i = 0; i < many; ++i)
        bytes.Byte(10).End();
    bytes.Byte(40).String("o");
    for (int i = 0; i < many; ++i)
        bytes.Byte(41).String(std::to_string(i)).Byte(45).Int(i).End();
    bytes.Byte(42).String("l");
    for (int i = 0; i < many; ++i)
        bytes.Byte(45).Int(many - 1 - i).Byte(41).String(std::to_string(i));
    bytes.End().End();
    for (int i = 0; i < many / 10; ++i)
        bytes.Byte(40).String("p").Byte(44).Int(i).End();
    bytes.Byte(50).String("b");
    for (int i = 0; i < many; ++i)
        bytes.Byte(52).String("").Byte(53).Int(i % (many / 10));
    ASSERT_TRUE(ReadQuietly(bytes.Byte(51).End())) << Ferr[FileErrorNumber];
    EXPECT_EQ(ListOf<&Branch::Next>(Scene()->FirstChild).size(), many + 1U);
}

} // namespace
