#include "gooey/pictures.h"
#include "gooey/toolkit_test.h"

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/inc_dec.h"
#include "gooey/label.h"
#include "gooey/redraw.h"
#include "gooey/slider.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"

#include "platform/drawing.h"
#include "platform/scripts.h"

#include <cstdlib>

using namespace std::string_literals;

namespace {

const char* const Labels[] = {"Grid", "Align", "Offset"};
const char* const OtherLabels[] = {"Twist", "Tilt"};
const char* const RepeatLabels[] = {"Repeat"};
int Zero, One;
int Number;
int Checked[5];
char Texts[5][60];

void DrawFace() {
    if (ButtonChoice >= 0)
        return;
    gl::circf(static_cast<float>(ButtonX + ButtonW / 2), static_cast<float>(ButtonY + ButtonH / 2),
              static_cast<float>(ButtonH / 4));
}

const char* Minutes(GadgetArg) {
    return "15 mins";
}

std::uint32_t ShadeOfRed(GadgetArg) {
    return Red;
}

/// A window's gadgets, and what is done to them before the picture is taken.
struct Scene {
    const char* Name;
    int Width, Height;
    void (*Build)();
    const char* Script;
};

void BuildButtons() {
    AddButtons(12, 90, 0, 0, 3, Labels, nullptr, &One, nullptr);
    AddButtons(12, 50, 0, ButtonsSmallFont, 3, Labels, nullptr, &Number, nullptr);
    AddButtons(12, 10, 0, ButtonsSmallFont | ButtonsNarrow, 2, OtherLabels, nullptr, nullptr, nullptr);
    AddButtons(GooeyRight + 8, 10, 70, ButtonsOfGivenWidth | ButtonsSmallFont, 1, RepeatLabels, nullptr, nullptr,
               nullptr);
    const int boxes[] = {-110, 10, 44, 44, -56, 10, 44, 44};
    AddButtons(0, 0, 0, ButtonsOfGivenBoxes, 2, nullptr, DrawFace, &Zero, boxes);
}

void BuildChecks() {
    AddCheckBox(12, 50, 0, 0, 0, "Show grid", nullptr, &Checked[0]);
    AddCheckBox(GooeyRight + 16, 50, 0, 0, 0, "Grid on top", nullptr, &Checked[1]);
    AddCheckBox(12, 14, 0, CheckSmallFont, 0, "Edit scene", nullptr, &Checked[2]);
    AddCheckBox(GooeyRight + 16, 14, 0, CheckSmallFont, 0, "Grid snap", nullptr, &Checked[3]);
    AddCheckBox(GooeyRight + 16, 14, 0, CheckSmallFont | CheckBlack, 0, "Black", nullptr, &Checked[4]);
}

void BuildTexts() {
    AddTextInput({.X = 4,
                  .Y = 158,
                  .Width = 330,
                  .Label = "Name:",
                  .Text = "A hut on stilts",
                  .Buffer = Texts[0],
                  .Size = 60,
                  .Filter = PrintableFilter});
    AddTextInput({.X = 4,
                  .Y = 110,
                  .Width = 330,
                  .Flags = TextSmallFont,
                  .Label = "Offset:",
                  .Text = "-1.25",
                  .Buffer = Texts[1],
                  .Size = 60});
    AddTextInput({.X = 340, .Y = 158, .Width = 140, .Text = "12.5", .Buffer = Texts[2], .Size = 60});
    Gadget* edited = AddTextInput({.X = 340,
                                   .Y = 110,
                                   .Width = 140,
                                   .Text = "Gr\xC3\xB6\xC3\x9F"
                                           "e",
                                   .Buffer = Texts[3],
                                   .Size = 60,
                                   .Filter = PrintableFilter});
    AddTextInput({.X = 12,
                  .Y = 12,
                  .Width = 330,
                  .Flags = TextLabelAbove | TextSmallFont,
                  .Label = "Default texture directory:",
                  .Text = "/usr/people/kirvo/textures/stones/granite/rough/weathered",
                  .Buffer = Texts[4],
                  .Size = 60,
                  .Filter = PrintableFilter});
    ActivateText(edited, 0);
}

void BuildIncDecs() {
    AddIncDec(12, 12, 120, 0, nullptr, nullptr, &Number);
    AddIncDec(150, 12, 140, 0, Minutes, nullptr, &Number);
}

void BuildSliders() {
    AddSlider({.X = 30, .Y = 40, .Width = 24, .Range = 100, .Position = 30, .Label = "R", .Print = PrintSlide});
    AddSlider({.X = 80,
               .Y = 40,
               .Width = 24,
               .Range = 100,
               .Flags = SliderSmallFont,
               .Position = 100,
               .Label = "Red",
               .Shade = ShadeOfRed,
               .Print = PrintSlideSmall});
    AddSlider({.X = 130,
               .Y = 40,
               .Width = 24,
               .Range = 100,
               .Position = 60,
               .Label = "G",
               .Shade = ShadeOfRed,
               .Print = PrintSlide});
    AddSlider({.X = 180, .Y = 40, .Width = 24, .Range = 100});
}

void BuildLabels() {
    AddText(12, 70, "1 square = 20 cm", 1);
    AddDimText(12, 44, "Selected: 12 polygons, \xC3\xA4\xC3\xB6\xC3\xBC", 1);
    AddText(12, 24, "Small text: ,;gjpqy()[]", 0);
    AddDimText(GooeyRight + 12, 24, "dim", 0);
    Kirvo_AddGadget(
        [] {
            SetColour(White);
            DrawRaisedBox(250, 50, 40, 30);
            DrawLoweredBox(300, 50, 40, 30);
            DrawFrame(350, 50, 40, 30, ShadeFull);
            gl::cpack(Black);
            DrawMenuText(262, 12, "Menu font");
        },
        nullptr);
}

const Scene Scenes[] = {
    {"buttons", 400, 136, BuildButtons, "move 1 1"},
    {"button-pressed", 400, 136, BuildButtons, "move 40 100\npress left"},
    {"button-pressed-selected", 400, 136, BuildButtons, "move 120 100\npress left"},
    {"button-face-pressed", 400, 136, BuildButtons, "move 360 30\npress left"},
    {"checks", 400, 90, BuildChecks, "move 1 1"},
    {"checks-toggled", 400, 90, BuildChecks, "click left 20 60\nclick left 20 20"},
    {"texts", 500, 210, BuildTexts, "move 1 1"},
    {"text-selection", 500, 210, BuildTexts, "move 1 1\nkey Shift+Left Shift+Left Shift+Left"},
    {"text-scrolled", 500, 210, BuildTexts, "click left 300 30\nkey End"},
    {"incdecs", 310, 50, BuildIncDecs, "move 1 1"},
    {"incdec-pressed", 310, 50, BuildIncDecs, "move 120 24\npress left"},
    {"sliders", 230, 200, BuildSliders, "move 1 1"},
    {"slider-moved", 230, 200, BuildSliders, "move 42 80\npress left\nmove 42 120"},
    {"labels", 400, 96, BuildLabels, "move 1 1"},
};

} // namespace

class GadgetPictures : public ToolkitTest, public testing::WithParamInterface<int> {
  protected:
    /// The dispatcher does not come back while a button is held: the picture is taken by the script in that loop.
    static void Take(const Scene& scene, int flags, const std::string& name);
};

namespace {

std::string PictureName;
Window* PictureWindow;

gl::ScriptResult TakePicture(gl::ScriptCall&) {
    ExpectPicture(PictureWindow, PictureName);
    // Drawing everything anew, as when the window is resized in the midst of a drag, changes nothing.
    RedrawWindow(PictureWindow);
    ExpectPicture(PictureWindow, PictureName);
    return gl::ScriptResult::Done;
}

} // namespace

void GadgetPictures::Take(const Scene& scene, int flags, const std::string& name) {
    Zero = 0;
    One = 1;
    Number = 2;
    for (int i = 0; i < 5; ++i)
        Checked[i] = i % 2 == 0;
    PictureName = name;
    PictureWindow = Open("Picture", 100, 100, scene.Width, scene.Height, flags);
    scene.Build();
    gl::AddScriptCommand("picture", TakePicture);
    Play("in Picture\n"s + scene.Script + "\npicture\nrelease left");
    CloseAllWindows();
}

TEST_P(GadgetPictures, AreAsAccepted) {
    UseScale(GetParam());
    for (const Scene& scene : Scenes)
        Take(scene, WindowDoubleBuffered, scene.Name + "@"s + std::to_string(GetParam()));
}

TEST_P(GadgetPictures, AreTheSameInAWindowWithOneBuffer) {
    UseScale(GetParam());
    for (const Scene& scene : Scenes)
        if (!std::getenv("KIRVO_ACCEPT_REFERENCES"))
            Take(scene, 0, scene.Name + "@"s + std::to_string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Scale, GadgetPictures, testing::Values(1, 2));
