#include "shell/command_line.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/directories.h"
#include "support/temporary_directory.h"

namespace {

namespace fs = std::filesystem;

class CommandLine : public testing::Test {
  protected:
    void SetUp() override {
        std::ofstream(place.Path() / "house.kirvo") << "model";
        std::ofstream(place.Path() / "plain") << "no model";
        fs::create_directory(place.Path() / "my models");
        std::ofstream(place.Path() / "my models/a b.kirvo") << "model";
        fs::current_path(place.Path());
        CopyFileName(HomeDir, "/home/of/user");
    }

    void TearDown() override {
        fs::current_path("/");
        DoAutoLoad = 1;
    }

    // What is current afterwards, as "path|name", when the defaults file named /last/last.kirvo.
    std::string After(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "Kirvo");
        std::vector<char*> pointers;
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        CopyFileName(FilePath, "/last");
        CopyFileName(FileName, "last.kirvo");
        testing::internal::CaptureStderr();
        CheckArgs(static_cast<int>(pointers.size()), pointers.data());
        errors = testing::internal::GetCapturedStderr();
        return std::string(FilePath) + "|" + FileName;
    }

    TemporaryDirectory place;
    std::string errors;
};

TEST_F(CommandLine, NamesTheModelFile) {
    const std::string here = place.Path();

    const struct {
        std::string Argument, Current;
    } cases[] = {
        {"house", here + "|house.kirvo"},
        {"house.kirvo", here + "|house.kirvo"},
        {"./house", here + "|house.kirvo"},
        {here + "/house", here + "|house.kirvo"},
        {"my models/a b", here + "/my models|a b.kirvo"},
    };

    for (const auto& c : cases) {
        EXPECT_EQ(After({c.Argument}), c.Current);
        EXPECT_EQ(errors, "");
    }
}

TEST_F(CommandLine, AFileThatIsNotThereLeavesTheLastOne) {
    for (const std::string argument : {"nothing", "plain", "", "house.kirvo/"}) {
        EXPECT_EQ(After({argument}), "/last|last.kirvo");
        EXPECT_EQ(errors, "Kirvo: there is no model file \"" + argument + "\"\n");
    }
    EXPECT_EQ(After({std::string(MaxFileName, 'x')}), "/last|last.kirvo");
}

TEST_F(CommandLine, WithoutAFileTheLastOneDependsOnAutoLoad) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"house", "house"}, std::vector<std::string>{"nothing"}}) {
        DoAutoLoad = 1;
        EXPECT_EQ(After(arguments), "/last|last.kirvo");
        DoAutoLoad = 0;
        EXPECT_EQ(After(arguments), "/home/of/user|");
    }
}

} // namespace
