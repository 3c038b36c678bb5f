// Every gadget of the toolkit in one window, for people who write new tools: how it looks, how it is added, what it
// calls. Each section is a function that adds its gadgets and leaves a note in the status line when one is used.

#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/file_selector.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/gadget_commands.h"
#include "gooey/inc_dec.h"
#include "gooey/information_window.h"
#include "gooey/label.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/pull_down.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/slider.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"
#include "gooey/window.h"

#include "platform/drawing.h"
#include "platform/events.h"
#include "platform/windows.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>

namespace {

constexpr int GalleryWidth = 900, GalleryHeight = 595;
constexpr int LeftColumn = 16, RightColumn = 400, CompositeColumn = 640;

std::string Note = "Press something";

void DrawNote() {
    SetColour(White);
    DrawLoweredBox(8, 8, CurrentWindow->Width - 16, 29);
    SmallText(18, 18, Note.c_str(), White);
}

void Say(const std::string& note) {
    Note = note;
    DirtyCurrentWindow();
}

/// The title of a section with an etched line under it, anchored to the top edge.
struct Section {
    const char* Title;
    int X, Y, Width;
};

constexpr Section Sections[] = {
    {"Buttons", LeftColumn, -65, 356},         {"Check boxes", LeftColumn, -279, 356},
    {"Text inputs", LeftColumn, -361, 356},    {"Sliders", RightColumn, -65, 204},
    {"Inc/dec boxes", RightColumn, -279, 204}, {"Labels and boxes", RightColumn, -401, 204},
    {"A list", CompositeColumn, -65, 244},     {"Windows", CompositeColumn, -361, 244},
};

void DrawSections() {
    for (const Section& section : Sections) {
        int y = CurrentWindow->Height + section.Y;
        SetColour(White);
        SmallText(section.X, y, section.Title, LightGrey);
        DrawLine(section.X, y - 6, section.X + section.Width - 1, y - 6, 3);
        DrawLine(section.X, y - 7, section.X + section.Width - 1, y - 7, 10);
    }
}

// ---- Buttons

int Mode = 0, Axis = -1, Icon = 1;

void DrawShape(int shape) {
    float x = static_cast<float>(ButtonX + ButtonW / 2), y = static_cast<float>(ButtonY + ButtonH / 2);
    if (shape == 0)
        gl::circ(x, y, 10);
    else if (shape == 1)
        gl::circf(x, y, 10);
    else
        gl::rectfi(ButtonX + 12, ButtonY + 12, ButtonX + ButtonW - 13, ButtonY + ButtonH - 13);
}

void AddButtonSection() {
    static const char* const modes[] = {"Polygon", "Vertex", "Scene"};
    static const char* const axes[] = {"x-y", "x-z", "y-z"};
    static const char* const repeats[] = {"Hold me"};
    static const char* const choices[] = {"Reset", "Done"};
    static int repeated = 0;

    AddButtons(
        LeftColumn, -119, 0, ButtonsOfTextWidth, 3, modes,
        [] { Say("A row of buttons, bound to a variable: " + std::string(modes[Mode])); }, &Mode, nullptr);
    AddButtons(
        LeftColumn, -157, 0, ButtonsOfTextWidth | ButtonsSmallFont, 3, axes,
        [] { Say("The small font: " + std::string(axes[Axis])); }, &Axis, nullptr);
    AddButtons(
        LeftColumn, -195, 90, ButtonsOfGivenWidth | ButtonsSmallFont | ButtonsAutoRepeat, 1, repeats,
        [] {
            Say("Repeats while held: " + std::to_string(++repeated));
            RedrawCurrentWindow();
        },
        nullptr, nullptr);
    const int stackStep[] = {38};
    AddButtons(
        LeftColumn + 264, -195, 92, ButtonsOfTextWidth | ButtonsStacked | ButtonsSmallFont, 2, choices,
        [] { Say("Stacked, centred in a width: " + std::string(choices[ButtonChoice])); }, nullptr, stackStep);
    const int boxes[] = {LeftColumn, -248, 40, 40, LeftColumn + 48, -248, 40, 40, LeftColumn + 96, -248, 40, 40};
    AddButtons(
        0, 0, 0, ButtonsOfGivenBoxes, 3, nullptr,
        [] {
            if (ButtonChoice < 0)
                DrawShape(-1 - ButtonChoice);
            else
                Say("A face drawn by the owner: number " + std::to_string(ButtonChoice));
        },
        &Icon, boxes);
}

// ---- Check boxes

int ShowGrid = 1, GridOnTop = 0, Snap = 1;

void AddCheckSection() {
    auto told = [](GadgetArg arg) { Say("Flag " + std::to_string(arg.Number) + " was toggled"); };
    AddCheckBox(LeftColumn, -321, 0, 0, 0, "Show grid", told, &ShowGrid);
    AddCheckBox(GooeyRight + 8, -321, 0, 0, 1, "On top", told, &GridOnTop);
    AddCheckBox(GooeyRight + 8, -319, 0, CheckSmallFont, 2, "Grid snap", told, &Snap);
}

// ---- Text inputs

char Name[64], Size[16], Directory[4096];

void AddTextSection() {
    AddTextInput({.X = LeftColumn,
                  .Y = -415,
                  .Width = 356,
                  .Label = "Name:",
                  .Text = "A hut on stilts",
                  .Buffer = Name,
                  .Size = sizeof Name,
                  .Filter = PrintableFilter,
                  .Callback = [] { Say("Any character; Return was pressed: " + std::string(Name)); }});
    AddTextInput({.X = LeftColumn,
                  .Y = -459,
                  .Width = 200,
                  .Flags = TextSmallFont | TextReportsChanges,
                  .Label = "Size (m):",
                  .Text = "1.5",
                  .Buffer = Size,
                  .Size = sizeof Size,
                  .Filter = FPFilter,
                  .Callback = [] { Say("Numbers alone, told of every change: " + std::string(Size)); }});
    AddTextInput({.X = LeftColumn + 8,
                  .Y = -519,
                  .Width = 364,
                  .Flags = TextSmallFont | TextLabelAbove,
                  .Label = "Texture directory:",
                  .Text = "/usr/share/textures",
                  .Buffer = Directory,
                  .Size = sizeof Directory,
                  .Filter = AsciiFilter,
                  .Callback = [] { Say("The label above: " + std::string(Directory)); }});
}

// ---- Sliders

Gadget* Mixers[3];

int MixerPosition(int channel) {
    return GadgetData<Slider>(Mixers[channel]).Position;
}

std::uint32_t MixedColour() {
    std::uint32_t colour = 0;
    for (int channel = 0; channel < 3; ++channel)
        colour |= static_cast<std::uint32_t>(MixerPosition(channel) * 255 / 100) << 8 * channel;
    return colour;
}

void AddSliderSection() {
    static const char* const names[] = {"R", "G", "B"};
    static const int positions[] = {80, 55, 20};
    auto moved = [](GadgetArg arg, int from, int to) {
        Say(std::string(names[arg.Number]) + " moved from " + std::to_string(from) + " to " + std::to_string(to));
    };
    auto shade = [](GadgetArg arg) { return 0xFFu << 8 * arg.Number; };
    for (int channel = 0; channel < 3; ++channel)
        Mixers[channel] = AddSlider({.X = RightColumn + 8 + 46 * channel,
                                     .Y = -225,
                                     .Width = 22,
                                     .Range = 100,
                                     .Flags = SliderSmallFont,
                                     .Position = positions[channel],
                                     .Label = names[channel],
                                     .Arg = channel,
                                     .Moved = moved,
                                     .Shade = shade,
                                     .Print = PrintSlideSmall});
    Kirvo_AddGadget(
        [] {
            int y = CurrentWindow->Height - 229;
            SetColour(White);
            DrawLoweredBox(RightColumn + 150, y, 54, 124);
            gl::cpack(MixedColour());
            gl::rectfi(RightColumn + 154, y + 4, RightColumn + 199, y + 119);
        },
        nullptr);
}

// ---- Inc/dec boxes

int Sides = 4, Minutes = 15;

void AddIncDecSection() {
    AddIncDec(
        RightColumn, -323, 120, nullptr, nullptr,
        [](GadgetArg, int delta) {
            Sides = Sides < 3 ? 3 : Sides;
            Say("Changed by " + std::to_string(delta) + ", never below 3");
        },
        &Sides);
    auto format = [](GadgetArg) {
        static char text[24];
        std::snprintf(text, sizeof text, "%d mins", Minutes);
        return static_cast<const char*>(text);
    };
    AddIncDec(
        RightColumn, -361, 160, nullptr, format, [](GadgetArg, int) { Say("A text of the owner's"); }, &Minutes);
}

// ---- Labels and boxes

void AddLabelSection() {
    AddText(RightColumn, -439, "White, normal font", 1);
    AddDimText(RightColumn, -463, "Dim, normal font", 1);
    AddText(RightColumn, -483, "White, small;", 0);
    AddDimText(GooeyRight, -483, "dim, small", 0);
    Kirvo_AddGadget(
        [] {
            int y = CurrentWindow->Height - 539;
            SetColour(White);
            DrawRaisedBox(RightColumn, y, 62, 38);
            DrawLoweredBox(RightColumn + 71, y, 62, 38);
            DrawFrame(RightColumn + 142, y, 62, 38, ShadeFull);
        },
        nullptr);
}

// ---- Menus: the bar, and the same by the right button

int ThreeViews = 1;

std::int32_t ThreeViewsTicked() {
    return SimpleMenuCheck(ThreeViews);
}

std::int32_t NeverToBeChosen() {
    return MenuDisabled;
}

constexpr int ToggleViews = 31;

const MenuEntry Directions[] = {
    {"Top", MenuEntryItem, 11, 'T', nullptr, nullptr},
    {"Front", MenuEntryItem, 12, 'F', nullptr, nullptr},
    {"Left", MenuEntryLast, 13, 'L', nullptr, nullptr},
};

const MenuEntry ViewMenu[] = {
    {"View", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Look from", MenuEntrySeparated, 0, 0, Directions, nullptr},
    {"Three views", MenuEntryItem, ToggleViews, '.', nullptr, ThreeViewsTicked},
    {"Greyed", MenuEntryLast, 32, 0, nullptr, NeverToBeChosen},
};

const MenuEntry HelpMenu[] = {
    {"Help", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"About...", MenuEntryLast, 41, 0, nullptr, nullptr},
};

const MenuEntry* const MenuBar[] = {ViewMenu, HelpMenu, nullptr};

void MenuChosen(int id) {
    if (id == ToggleViews)
        ThreeViews = !ThreeViews;
    if (id == 41)
        ShowProgramInfo();
    Say("Menu entry " + std::to_string(id) + " was chosen");
}

void GalleryEvent(int device, short value) {
    if (device != gl::RIGHTMOUSE || !value)
        return;
    if (const int id = DoPopup(ViewMenu))
        MenuChosen(id);
}

// ---- A list in a scroll window

constexpr int RowHeight = 20, RowCount = 40;

void DrawRows(int x, int y, int width, int height, int hOffset, int vOffset) {
    ClipScope clip(x, y, width, height);
    DrawBox(x, y, width, height, ShadeLowered);
    for (int row = vOffset / RowHeight; row < RowCount && row * RowHeight < vOffset + height; ++row)
        SmallText(x + 6 - hOffset, y + height + vOffset - RowHeight * (row + 1) + 5,
                  ("Row " + std::to_string(row + 1) + ": drawn only where it shows").c_str(), White);
}

constexpr int ListWidth = 244, ListHeight = 240, ListTop = 88;

/// A scroll window is placed from below: this one is moved with the window's top edge.
void PlaceList(Gadget* gadget) {
    ConfigureScroll(gadget, CompositeColumn, CurrentWindow->Height - ListTop - ListHeight, ListWidth, ListHeight, 300,
                    RowCount * RowHeight);
}

void AddListSection() {
    AddScrollWindow({.X = CompositeColumn,
                     .Y = CurrentWindow->Height - ListTop - ListHeight,
                     .Width = ListWidth,
                     .Height = ListHeight,
                     .Flags = ScrollHorizontal | ScrollVertical | ScrollBorder,
                     .ContentWidth = 300,
                     .ContentHeight = RowCount * RowHeight,
                     .StepX = 10,
                     .StepY = RowHeight,
                     .Configure = PlaceList,
                     .Draw = DrawRows});
}

// ---- Windows of the toolkit's own

char SubObjectName[64] = "Roof";

struct Opener {
    const char* Label;
    void (*Open)();
};

const Opener Openers[] = {
    {"Message", [] { TellUserS("Some textures could not be found.\n\nClick on Continue to go on without them."); }},
    {"Question",
     [] { DoOkCancel("Delete all textures?", [](int ok) { Say(ok ? "Answered OK" : "Answered Cancel"); }); }},
    {"Notifier",
     [] {
         DoNotifier("That name is taken!", {CurrentWindow, nullptr}, CurrentWindow);
     }},
    {"Prompt",
     [] {
         DoTextInput(
             "Enter name of new sub object:", SubObjectName, sizeof SubObjectName,
             [](const TextPromptContinuations& next) {
                 Say("Named " + std::string(SubObjectName));
                 WindowCall(next.Close);
             },
             CurrentWindow);
     }},
    {"Open file",
     [] {
         DoFileSelector(
             FileToOpen, nullptr, nullptr, nullptr,
             [](int, const char* directory, const char* name) {
                 Say("Chosen: " + std::string(directory) + " / " + name);
             },
             nullptr);
     }},
    {"Save file",
     [] {
         DoFileSelector(
             FileToSave, nullptr, "shed.kirvo", ".kirvo",
             [](int, const char*, const char* name) { Say("To be saved as " + std::string(name)); }, nullptr);
     }},
};

void AddWindowSection() {
    static const char* labels[std::size(Openers)];
    static int boxes[4 * std::size(Openers)];
    for (int i = 0; i < static_cast<int>(std::size(Openers)); ++i) {
        labels[i] = Openers[i].Label;
        const int box[] = {CompositeColumn + 126 * (i % 2), -415 - 38 * (i / 2), 118, 30};
        std::copy(std::begin(box), std::end(box), boxes + 4 * i);
    }
    AddButtons(
        0, 0, 0, ButtonsOfGivenBoxes | ButtonsSmallFont, static_cast<int>(std::size(Openers)), labels,
        [] { Openers[ButtonChoice].Open(); }, nullptr, boxes);
}

} // namespace

int main() {
    InstallGadgetCommands();
    gl::prefsize(GalleryWidth, GalleryHeight);
    gl::minsize(GalleryWidth, GalleryHeight);
    OpenWindow("Gallery", WindowDoubleBuffered, 0, nullptr, nullptr, GalleryEvent, nullptr, 0, nullptr);
    MainWindow = CurrentWindow;
    AddBackdrop();
    AddPullDownMenu(MenuBar, MenuChosen);
    Kirvo_AddGadget(DrawSections, nullptr);
    Kirvo_AddGadget(DrawNote, nullptr);
    AddButtonSection();
    AddCheckSection();
    AddTextSection();
    AddSliderSection();
    AddIncDecSection();
    AddLabelSection();
    AddListSection();
    AddWindowSection();
    while (CheckEvents() != -1) {
        PopInfoWindow();
        PopMessageWindows();
    }
    CloseAllWindows();
    return 0;
}
