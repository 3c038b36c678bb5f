#include "gooey/toolkit_test.h"
#include "support/temporary_directory.h"
#include "textures/made_picture.h"

#include "gooey/file_selector.h"
#include "gooey/report.h"
#include "platform/snapshots.h"
#include "textures/picture_preview.h"

namespace {

/// Rows of one colour above rows of another, each as bytes of a pixel.
Bytes TwoColoured(int width, int height, int kind, const Bytes& above, const Bytes& below) {
    std::vector<Bytes> rows;
    for (int y = 0; y < height; ++y) {
        Bytes row;
        for (int x = 0; x < width; ++x)
            for (std::uint8_t value : y < height / 2 ? above : below)
                row.push_back(value);
        rows.push_back(row);
    }
    return MadePng(width, height, 8, kind, rows);
}

class PicturePreviews : public ToolkitTest {
  protected:
    TemporaryDirectory Files;

    std::string Make(const std::string& name, const Bytes& bytes) const {
        const std::string path = std::string(Files.Path()) + "/" + name;
        WriteBytes(path, bytes);
        return path;
    }

    void TearDown() override {
        MakeFilePicture = nullptr;
        ToolkitTest::TearDown();
    }
};

} // namespace

TEST_F(PicturePreviews, ReduceEveryKindOfPicture) {
    const Bytes colours = TwoColoured(256, 64, PNG_COLOR_TYPE_RGB, {255, 128, 0}, {0, 0, 200});

    struct Case {
        const char* Name;
        Bytes File;
        int Width, Height;
        std::uint32_t Top, Bottom;
        const char* Description;
    };

    const Case cases[] = {
        {"colours", colours, 128, 32, 0x0080FF, 0xC80000, "256 x 64 x 3"},
        {"small", TwoColoured(2, 4, PNG_COLOR_TYPE_RGB, {1, 2, 3}, {4, 5, 6}), 2, 4, 0x030201, 0x060504, "2 x 4 x 3"},
        {"thin", TwoColoured(1000, 2, PNG_COLOR_TYPE_GRAY, {200}, {100}), 128, 1, 0x969696, 0x969696, "1000 x 2 x 1"},
        {"clear", TwoColoured(2, 2, PNG_COLOR_TYPE_RGBA, {255, 0, 0, 0}, {255, 0, 0, 255}), 2, 2, 0x606060, 0x0000FF,
         "2 x 2 x 4"},
        {"grey", TwoColoured(2, 2, PNG_COLOR_TYPE_GRAY_ALPHA, {80, 255}, {80, 0}), 2, 2, 0x505050, 0x606060,
         "2 x 2 x 2"},
        {"cut", Bytes(colours.begin(), colours.begin() + 60), 0, 0, 0, 0, "cannot be read"},
        {"none", {'n', 'o'}, 0, 0, 0, 0, ""},
    };
    for (const Case& test : cases) {
        const FilePicture picture = MakePicturePreview(Make(test.Name, test.File).c_str());
        EXPECT_EQ(picture.Width, test.Width) << test.Name;
        EXPECT_EQ(picture.Height, test.Height) << test.Name;
        EXPECT_EQ(picture.Description, test.Description);
        ASSERT_EQ(picture.Pixels.size(), static_cast<std::size_t>(test.Width * test.Height)) << test.Name;
        if (test.Height > 1) {
            EXPECT_EQ(picture.Pixels.back(), test.Top) << test.Name;
        }
        if (test.Height) {
            EXPECT_EQ(picture.Pixels.front(), test.Bottom) << test.Name;
        }
    }
}

TEST_F(PicturePreviews, FollowTheFileThatIsSelected) {
    Make("a.png", TwoColoured(64, 64, PNG_COLOR_TYPE_RGB, {255, 0, 0}, {0, 255, 0}));
    Make("b.png", TwoColoured(300, 200, PNG_COLOR_TYPE_RGB, {0, 0, 255}, {255, 255, 0}));
    MakeFilePicture = MakePicturePreview;
    Window* owner = Open("Owner", 20, 20, 200, 200);
    DoFileSelector(FileToOpen | FileShowsPicture, Files.Path().c_str(), "a.png", nullptr, nullptr, owner);
    Settle();
    const auto preview = [] {
        for (const GadgetView& gadget : GadgetsOf(FileSelectorWindow))
            if (gadget.Description.Label == "Preview")
                return gadget.Description;
        return GadgetDescription();
    };
    const auto topColour = [&] {
        const GadgetBox box = preview().Box;
        return gl::WindowPicture(FileSelectorWindow->Gid).at(box.X + box.Width / 2, box.Y + box.Height / 2 + 20) &
               0xFFFFFF;
    };
    Play("in \"Open file...\"\nbutton a.png");
    EXPECT_EQ(preview().Text, "64 x 64 x 3");
    EXPECT_EQ(topColour(), 0x0000FFu);
    Play("in \"Open file...\"\nwait 100\nbutton b.png");
    EXPECT_EQ(preview().Text, "300 x 200 x 3");
    EXPECT_EQ(topColour(), 0xFF0000u);
}
