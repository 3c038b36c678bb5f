#include "files/inspection.h"
#include "files/made_model.h"
#include "files/reading.h"

#include <sstream>

namespace {

// The examples of the description of model files, which its readers will try first.
class Documentation : public FilesTest {
  protected:
    // The lines of the indented block that follows a heading and begins with these characters.
    std::string Example(const std::string& heading, const std::string& beginning) {
        std::ifstream file(KIRVO_SOURCE_DIR "/docs/model-file.md");
        const std::string indentation = "    ";
        std::string example;
        bool below = false;
        for (std::string line; std::getline(file, line);) {
            below = below || line == heading;
            if (!below)
                continue;
            if (line.starts_with(indentation) && (!example.empty() || line.substr(4).starts_with(beginning)))
                example += line.substr(indentation.size()) + "\n";
            else if (!example.empty())
                break;
        }
        return example;
    }

    ModelSummary Load(const std::string& bytes) {
        testing::internal::CaptureStdout();
        const LoadReport report = LoadForInspection(directory.Write("example.kirvo", bytes));
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(report.Error, "");
        return SummariseModel();
    }

    ModelDirectory directory;
};

// Hexadecimal digits and quoted text; a word that is neither begins a remark, to the end of the line.
std::string BytesOf(const std::string& notation) {
    std::istringstream lines(notation);
    std::string bytes;
    for (std::string line; std::getline(lines, line);) {
        std::size_t i = 0;
        while ((i = line.find_first_not_of(' ', i)) != std::string::npos) {
            if (line[i] == '"') {
                const std::size_t end = line.find('"', i + 1);
                bytes += line.substr(i + 1, end - i - 1);
                i = end + 1;
                continue;
            }
            const std::size_t end = std::min(line.find(' ', i), line.size());
            const std::string word = line.substr(i, end - i);
            if (word.find_first_not_of("0123456789ABCDEF") != std::string::npos)
                break;
            for (std::size_t digit = 0; digit < word.size(); digit += 2)
                bytes += static_cast<char>(std::stoi(word.substr(digit, 2), nullptr, 16));
            i = end;
        }
    }
    return bytes;
}

TEST_F(Documentation, TheSmallestUsefulFileLoads) {
    const std::string bytes = BytesOf(Example("## The smallest useful file", "\"Compatibility"));
    EXPECT_EQ(bytes.size(), 134u);
    const ModelSummary model = Load(bytes);
    ASSERT_EQ(model.Materials.size(), 1u);
    EXPECT_EQ(model.Materials[0].Name, "red");
    EXPECT_EQ(model.Materials[0].Diffuse[0], 1.0f);
    ASSERT_EQ(model.Objects.size(), 1u);
    EXPECT_EQ(model.Objects[0].Name, "triangle");
    EXPECT_EQ(model.Objects[0].Vertices, 3u);
    EXPECT_EQ(model.Objects[0].Polygons, 1u);
    EXPECT_EQ(model.Objects[0].SubObjects[0].Name, "all");
}

TEST_F(Documentation, TheOldestFormLoads) {
    const ModelSummary model = Load("Compatibility: 1.00\n" + Example("## Version 1.00", "Vertices"));
    ASSERT_EQ(model.Materials.size(), 1u);
    EXPECT_EQ(model.Materials[0].Name, "Slate");
    EXPECT_EQ(model.Materials[0].Shininess, 12.5f);
    ASSERT_EQ(model.Objects.size(), 1u);
    EXPECT_EQ(model.Objects[0].Polygons, 1u);
    EXPECT_EQ(model.Objects[0].Min[1], -1);
}

} // namespace
