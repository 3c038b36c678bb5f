#include "support/played_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

#ifdef __SANITIZE_ADDRESS__
constexpr bool Sanitized = true;
#else
constexpr bool Sanitized = false;
#endif

constexpr double MostSeconds = 2, MostMegabytes = 300;

/// Shown, changed, taken back and saved.
constexpr char Use[] = "wait 2\nmenu Edit \"Select all\"\nmenu Polygon Reversal \"Reverse polygons\"\nwait 2\n"
                       "menu Edit Undo\nwait 2\nmenu File Save\nwait 2\necho saved\n";

/// The folder of fuzz/make_hostile_models.py: each file of less than a megabyte asks for as much work as it can in one
/// way, and each way once took minutes, or gigabytes.
class HostileFiles : public testing::Test {
  protected:
    HostileFiles() : program(KIRVO_PROGRAM, "home") {
        // The window is small: filling pixels is work of the graphics processor's.
        program.Display = "headless:400x300";
    }

    PlayedProgram program;
};

TEST_F(HostileFiles, NoneTakesMuchTimeOrMemory) {
    const fs::path folder = program.Home() / "hostile";
    const std::string make = "python3 '" KIRVO_SOURCE_DIR "/fuzz/make_hostile_models.py' '" + folder.string() + "'";
    ASSERT_EQ(std::system(make.c_str()), 0);
    int files = 0;
    for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
        SCOPED_TRACE(file.path().filename().string());
        fs::rename(file.path(), program.Home() / "model.kirvo");
        const ProgramEnd end = program.Play(Use, "model");
        EXPECT_EQ(end.Status, 0) << end.Errors;
        EXPECT_NE(end.Output.find("saved\n"), std::string::npos);
        if (!Sanitized) {
            EXPECT_LT(end.Seconds, MostSeconds);
            EXPECT_LT(end.Megabytes, MostMegabytes);
        }
        ++files;
    }
    EXPECT_GT(files, 20);
}

TEST_F(HostileFiles, ATreeOfAnyDepthIsReported) {
    constexpr int depth = 100'000;
    std::ofstream file(program.Home() / "deep.kirvo", std::ios::binary);
    file << "Compatibility: 3.05\n\1";
    for (int i = 0; i < depth; ++i)
        file << "2b\n"; // a list of branches begins, and the name of its first
    file << std::string(depth, '3') << '\0';
    file.close();
    const ProgramEnd end = program.Play("report deep.json\n", "deep");
    EXPECT_EQ(end.Status, 0) << end.Errors;
    // Writing it takes no memory that grows with the square of the depth; its reader here is no recursion either.
    nlohmann::json report = program.Json("deep.json");
    int found = -1;
    for (const nlohmann::json* branch = &report["scene"]; branch; ++found) {
        const nlohmann::json& children = (*branch)["children"];
        branch = children.empty() ? nullptr : &children[0];
    }
    EXPECT_EQ(found, depth);
}

} // namespace
