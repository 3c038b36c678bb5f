#include "files/made_model.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <png.h>

namespace {

class KirvoFile : public testing::Test {
  protected:
    ProgramEnd Run(std::vector<std::string> arguments) {
        // Neither display nor home directory are needed.
        return RunProgram({.Program = KIRVO_FILE_PROGRAM,
                           .Arguments = std::move(arguments),
                           .Name = "",
                           .Directory = directory.Path(""),
                           .Environment = {},
                           .PendingSignal = 0});
    }

    ModelDirectory directory;
};

TEST_F(KirvoFile, TheStatusTellsWhetherAllIsWell) {
    directory.WriteImage("textures/stone");
    directory.Write("good.kirvo", MadeModel("./textures/stone"));
    directory.Write("poor.kirvo", MadeModel("gone"));
    directory.Write("bad.kirvo", MadeModel("gone", {.VertexNumberTooHigh = true}));
    directory.Write("damaged", directory.Read("textures/stone").substr(0, 515));

    const struct {
        std::vector<std::string> Arguments;
        int Status;
        bool Answers, Complains;
    } cases[] = {
        {{"--help"}, 0, true, false},
        {{"info", "--help"}, 0, true, false},
        {{}, 2, false, true},
        {{"frob", "good.kirvo"}, 2, false, true},
        {{"info"}, 2, false, true},
        {{"info", "good.kirvo", "poor.kirvo"}, 2, false, true},
        {{"info", "--force", "good.kirvo"}, 2, false, true},
        {{"info", "--textures"}, 2, false, true},
        {{"info", "good.kirvo"}, 0, true, false},
        {{"info", "textures/stone"}, 0, true, false},
        {{"info", "--", "good.kirvo"}, 0, true, false},
        {{"info", "poor.kirvo"}, 1, true, true},
        {{"info", "bad.kirvo"}, 1, false, true},
        {{"info", "nothing"}, 1, false, true},
        {{"check", "good.kirvo"}, 0, true, false},
        {{"check", "poor.kirvo"}, 1, true, true},
        {{"check", "bad.kirvo"}, 1, true, true},
        {{"check", "nothing"}, 1, true, false},
        {{"check", "textures/stone"}, 0, true, false},
        {{"check", "damaged"}, 1, true, false},
        {{"upgrade", "good.kirvo", "new.kirvo"}, 0, false, false},
        {{"upgrade", "poor.kirvo", "new.kirvo"}, 0, false, true},
        {{"upgrade", "--force", "poor.kirvo", "new.kirvo"}, 0, false, true},
        {{"upgrade", "bad.kirvo", "new.kirvo"}, 1, false, true},
        {{"upgrade", "good.kirvo", "no/place"}, 1, false, true},
        {{"image", "textures/stone", "stone.png"}, 0, false, false},
        {{"image", "damaged", "stone.png"}, 1, false, true},
        {{"image", "good.kirvo", "stone.png"}, 1, false, true},
        {{"image", "textures/stone", "no/place.png"}, 1, false, true},
        {{"font", KIRVO_SOURCE_DIR "/data/fonts/LiberationSans-Regular.ttf", "font"}, 0, false, false},
        {{"font", KIRVO_SOURCE_DIR "/data/fonts/LiberationSans-Regular.ttf", "no/place"}, 1, false, true},
        {{"font", "textures/stone", "font"}, 1, false, true},
        {{"font", "nothing", "font"}, 1, false, true},
    };

    for (const auto& c : cases) {
        const ProgramEnd end = Run(c.Arguments);
        std::string command;
        for (const std::string& argument : c.Arguments)
            command += " " + argument;
        EXPECT_EQ(end.Status, c.Status) << command;
        EXPECT_EQ(!end.Output.empty(), c.Answers) << command << "\n" << end.Output;
        EXPECT_EQ(!end.Errors.empty(), c.Complains) << command << "\n" << end.Errors;
    }
}

TEST_F(KirvoFile, AnswersHoldNothingButTheAnswer) {
    directory.WriteImage("textures/stone");
    directory.Write("good.kirvo", MadeModel("./textures/stone"));
    const auto model = nlohmann::json::parse(Run({"info", "--json", "good.kirvo"}).Output);
    EXPECT_EQ(model["objects"].size(), 2u);
    EXPECT_EQ(nlohmann::json::parse(Run({"check", "good.kirvo", "--json"}).Output)["ok"], true);
    EXPECT_EQ(nlohmann::json::parse(Run({"info", "--json", "textures/stone"}).Output)["kind"], "image");
}

TEST_F(KirvoFile, LooksForImagesInAFurtherDirectory) {
    directory.WriteImage("library/stone");
    directory.Write("good.kirvo", MadeModel("/old/place/stone"));
    EXPECT_EQ(Run({"info", "good.kirvo"}).Status, 1);
    EXPECT_EQ(Run({"info", "good.kirvo", "--textures", "library"}).Status, 0);
}

TEST_F(KirvoFile, APictureKeepsItsPixels) {
    directory.WriteImage("stone");
    ASSERT_EQ(Run({"image", "stone", "stone.png"}).Status, 0);
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&png, directory.Path("stone.png").c_str()));
    EXPECT_EQ(png.width, 2u);
    EXPECT_EQ(png.height, 2u);
    EXPECT_EQ(png.format, static_cast<png_uint_32>(PNG_FORMAT_RGB));
    std::vector<int> expected = {3, 7, 11, 4, 8, 12, 1, 5, 9, 2, 6, 10};
    std::vector<std::uint8_t> pixels(expected.size());
    ASSERT_TRUE(png_image_finish_read(&png, nullptr, pixels.data(), 0, nullptr));
    EXPECT_EQ(std::vector<int>(pixels.begin(), pixels.end()), expected);
}

TEST_F(KirvoFile, WhatItWritesReplacesInOneStepAndFollowsNoPlantedLinks) {
    directory.WriteImage("stone");
    directory.Write("good.kirvo", MadeModel("./stone"));
    directory.Write("victim", "untouched");
    for (const char* planted : {"new.kirvo.unfinished", ".new.kirvo.saving", ".stone.png.saving"})
        std::filesystem::create_symlink("victim", directory.Path(planted));
    const std::vector<std::string> commands[] = {{"upgrade", "good.kirvo", "new.kirvo"},
                                                 {"image", "stone", "stone.png"}};
    for (const std::vector<std::string>& command : commands) {
        const std::string target = directory.Path(command[2]);
        directory.Write(command[2], "old");
        std::filesystem::permissions(target, std::filesystem::perms{0640});
        EXPECT_EQ(Run(command).Status, 0);
        EXPECT_NE(directory.Read(command[2]), "old");
        EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms{0640});
        EXPECT_EQ(directory.Read("victim"), "untouched");
        // A failure leaves what is there.
        const std::string before = directory.Read(command[2]);
        EXPECT_EQ(Run({command[0], "victim", command[2]}).Status, 1);
        EXPECT_EQ(directory.Read(command[2]), before);
    }
}

} // namespace
