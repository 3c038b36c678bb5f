#include "reading.h"

#include "files/writer.h"
#include "support/temporary_directory.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

namespace {

std::string ContentsOf(const std::filesystem::path& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class ModelSeeds : public FilesTest {};

// The seeds are made by a program of their own, in another language: the same model in every version.
TEST_F(ModelSeeds, AreReadAndBecomeTheSameFileWhateverTheirVersion) {
    const TemporaryDirectory directory;
    const std::string upgraded = directory.Path() / "upgraded.kirvo";
    std::map<std::string, std::string> written;
    for (const auto& entry : std::filesystem::directory_iterator(KIRVO_SOURCE_DIR "/fuzz/seeds/fuzz_model")) {
        SCOPED_TRACE(entry.path().filename());
        ASSERT_TRUE(ReadQuietly(ContentsOf(entry.path()))) << Ferr[FileErrorNumber];
        ASSERT_TRUE(WriteKirvo(upgraded.c_str()));
        written[entry.path().filename()] = ContentsOf(upgraded);
    }
    EXPECT_GE(written.size(), 12U);
    EXPECT_GT(written["version-3.05"].size(), 1500U);
    EXPECT_EQ(written["version-3.02"], written["version-3.05"]);
    EXPECT_EQ(written["version-3.01"], written["version-3.05"]);
    EXPECT_EQ(written["version-2.00"], written["version-2.50"]);
    // What 3.00 has beside 2.50 is the material that no polygon uses.
    EXPECT_EQ(written["version-3.00"].size(), written["version-2.50"].size() + 75);
}

} // namespace
