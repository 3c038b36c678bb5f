#include "reading.h"
#include "store/objects.h"

namespace {

std::vector<double> Parts;
double CancelAt;

int NotePart(double part) {
    Parts.push_back(part);
    return part > CancelAt;
}

class ReadingProgress : public FilesTest {
  protected:
    ReadingProgress() {
        Parts.clear();
        CancelAt = 2;
        TheFileSlots.ReadingProgress = NotePart;
    }

    /// A model of some hundred kilobytes whose polygons or vertices are most of it.
    static std::string LargeModel(const char* version, bool polygons) {
        ModelBytes model(version);
        if (std::string(version) == "1.00")
            return LargeOldModel();
        model.Byte(10).Byte(11).Int(0).End().End();
        model.Byte(40).String("o");
        const int count = polygons ? 3 : 30000;
        model.Byte(26).Int(count);
        for (int i = 0; i < count; ++i)
            model.Floats({static_cast<double>(i), static_cast<double>(i % 7), static_cast<double>(i % 3)});
        model.Byte(41).String("s");
        for (int i = 0; polygons && i < 20000; ++i)
            model.OpenPolygon({0, 1, 2}).End();
        return model.End().End().End().Bytes();
    }

    static std::string LargeOldModel() {
        std::string text = "Compatibility: 1.00\nVertices (v1.0)\nCount: 30000\n";
        for (int i = 0; i < 30000; ++i)
            text += std::to_string(i) + " 2.5 3.5\n";
        return text;
    }
};

TEST_F(ReadingProgress, RisesFromNothingToAll) {
    for (const bool polygons : {false, true})
        for (const char* version : {"3.05", "1.00"}) {
            Parts.clear();
            ASSERT_TRUE(ReadQuietly(LargeModel(version, polygons))) << Ferr[FileErrorNumber];
            EXPECT_GE(Parts.size(), 6U);
            EXPECT_EQ(Parts.front(), 0);
            EXPECT_EQ(Parts.back(), 1);
            for (std::size_t i = 1; i < Parts.size(); ++i) {
                EXPECT_GT(Parts[i], Parts[i - 1]);
                EXPECT_LT(Parts[i] - Parts[i - 1], 0.6);
            }
        }
}

TEST_F(ReadingProgress, ACancelledReadLeavesAnEmptyStore) {
    for (const char* version : {"3.05", "1.00"}) {
        Told.clear();
        Parts.clear();
        CancelAt = 0.5;
        EXPECT_FALSE(ReadQuietly(LargeModel(version, true)));
        EXPECT_EQ(FileErrorNumber, ReadCancelled);
        EXPECT_EQ(Parts.back(), 1); // the bar goes away
        EXPECT_EQ(MainFile.FirstObject, nullptr);
        EXPECT_EQ(Told,
                  std::vector<std::string>{"Error while reading file:\n\n" + std::string(Ferr[ReadCancelled]) + "\n"});
    }
}

} // namespace
