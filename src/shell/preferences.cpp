#include "shell/preferences.h"

#include "base/file_names.h"
#include "files/checkpoints.h"
#include "files/writer.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/inc_dec.h"
#include "gooey/keyboard_walk.h"
#include "gooey/label.h"
#include "gooey/manual.h"
#include "gooey/redraw.h"
#include "gooey/slider.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "platform/events.h"
#include "shell/command_line.h"
#include "textures/texture_library.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

int PrefsX, PrefsY, PreferencesOpened;

namespace {

constexpr int WindowWidth = 654, WindowHeight = 275;
constexpr char ManualPage[] = "R_FilePreferences";

constexpr int Margin = 12, ButtonsY = 8;
// The column of what concerns files; the sliders stand right of it.
constexpr int ColumnWidth = 440;
constexpr int FirstCheckY = -32, CheckStep = 29;
constexpr int IntervalX = 220, IntervalWidth = 130, IntervalBelowCheck = 5;
// An input with its label above has its frame outside the place that it is added at.
constexpr int TextureDirX = Margin + 8, TextureDirY = 114;
constexpr int PresetsY = 76, PresetStep = 31, PresetsInRow = 3, PresetGap = 8, PresetHeight = 26;
constexpr int SlidersX = 496, SliderStep = 52, SlidersY = 68, SliderWidth = 26;
constexpr int HeadingX = 496, HeadingY = -22;

constexpr int ShortestInterval = 1, LongestInterval = 120;

// A step of a slider is worth so much of a channel.
constexpr int ChannelStep = 2;
constexpr int SliderRange = 128;

struct Preset {
    const char* Label;
    std::uint32_t Colour;
};

constexpr Preset Presets[] = {
    {"Grey", 0x404040},       {"Black", 0x000000},    {"Cadet blue", InitialBackgroundColour},
    {"Aquamarine", 0x304000}, {"Lavender", 0x604050}, {"Coral", 0x404060},
};

constexpr int PresetCount = std::size(Presets);

// What the window works on; nothing of it holds before it is accepted, but for the colour.
struct Draft {
    int FileBackups, DoAutoLoad, CheckpointTime, MakeCheckpointFiles;
    char TextureDir[MaxFileName];
    std::uint32_t ColourBefore;
    bool Accepted;
    Gadget* Channels[3];
};

Window* Preferences = nullptr;

Draft& TheDraft() {
    return WindowData<Draft>(Preferences);
}

int PositionOf(int channel) {
    const int value = static_cast<int>(DefaultWindowBackground >> (8 * channel) & 0xFF);
    return (value + ChannelStep - 1) / ChannelStep;
}

int ValueAt(int position) {
    return std::min(position * ChannelStep, 0xFF);
}

void SetBackground(std::uint32_t colour) {
    DefaultWindowBackground = colour;
    DirtyAllWindows();
}

void MoveChannel(GadgetArg channel, int, int position) {
    const int shift = 8 * channel.Number;
    const auto value = static_cast<std::uint32_t>(ValueAt(position));
    DefaultWindowBackground = (DefaultWindowBackground & ~(0xFFu << shift)) | value << shift;
}

void ReleaseChannel(GadgetArg, int) {
    DirtyAllWindows();
}

std::uint32_t ShadeOfChannel(GadgetArg channel) {
    return 0xFFu << (8 * channel.Number);
}

void PrintChannel(int x, int y, int width, int position, std::uint32_t colour) {
    PrintSlideSmall(x, y, width, ValueAt(position), colour);
}

void ChoosePreset(int choice) {
    SetBackground(Presets[choice].Colour);
    for (int channel = 0; channel < 3; ++channel)
        ConfigureSlider(TheDraft().Channels[channel], PositionOf(channel), 0);
}

void ChangeChecktime(GadgetArg, int) {
    int& minutes = TheDraft().CheckpointTime;
    minutes = std::clamp(minutes, ShortestInterval, LongestInterval);
}

const char* ChecktimeLabel(GadgetArg) {
    static char text[24];
    std::snprintf(text, sizeof text, "%d mins", TheDraft().CheckpointTime);
    return text;
}

int TDirFilter(int& character, int position, const char* text) {
    if (character == '?') {
        OpenManual(ManualPage);
        return 0;
    }
    return PrintableFilter(character, position, text);
}

void Accept() {
    Draft& draft = TheDraft();
    FileBackups = draft.FileBackups;
    DoAutoLoad = draft.DoAutoLoad;
    CheckpointTime = draft.CheckpointTime;
    MakeCheckpointFiles = draft.MakeCheckpointFiles;
    CopyFileName(TextureDir, draft.TextureDir);
    draft.Accepted = true;
}

void Finish(bool accepted) {
    if (accepted)
        Accept();
    CloseToolWindow(PreferencesWindow);
}

void DoPrefs() {
    Finish(ButtonChoice == 0);
}

void CheckPrefsKey(int device, short value) {
    if (device == gl::KEYBD && (value == ReturnCharacter || value == EscapeCharacter))
        Finish(value == ReturnCharacter);
}

// However the window is closed: without acceptance nothing has changed.
void FreePrefs() {
    const Draft& draft = TheDraft();
    if (!draft.Accepted && DefaultWindowBackground != draft.ColourBefore)
        SetBackground(draft.ColourBefore);
}

void AddFileSettings(Draft& draft) {
    AddCheckBox(Margin, FirstCheckY, 0, 0, nullptr, "Autoload last file when program starts", nullptr,
                &draft.DoAutoLoad);
    AddCheckBox(Margin, FirstCheckY - CheckStep, 0, 0, nullptr, "Create backup files (\".bak\") when saving", nullptr,
                &draft.FileBackups);
    const int intervalY = FirstCheckY - 2 * CheckStep;
    AddCheckBox(Margin, intervalY, 0, 0, nullptr, "Autosave file every", nullptr, &draft.MakeCheckpointFiles);
    AddIncDec(IntervalX, intervalY - IntervalBelowCheck, IntervalWidth, nullptr, ChecktimeLabel, ChangeChecktime,
              &draft.CheckpointTime);
    AddTextInput({.X = TextureDirX,
                  .Y = TextureDirY,
                  .Width = ColumnWidth + 8,
                  .Flags = TextLabelAbove,
                  .Label = "Default texture directory:",
                  .Text = TextureDir,
                  .Buffer = draft.TextureDir,
                  .Size = sizeof draft.TextureDir,
                  .Filter = TDirFilter});
}

void AddPresets() {
    const char* labels[PresetCount];
    int boxes[PresetCount][4];
    constexpr int width = (ColumnWidth - (PresetsInRow - 1) * PresetGap) / PresetsInRow;
    for (int i = 0; i < PresetCount; ++i) {
        labels[i] = Presets[i].Label;
        const int column = i % PresetsInRow, row = i / PresetsInRow;
        const int box[] = {Margin + column * (width + PresetGap), PresetsY - row * PresetStep, width, PresetHeight};
        std::copy(std::begin(box), std::end(box), boxes[i]);
    }
    AddButtons(
        0, 0, 0, ButtonsOfGivenBoxes | ButtonsSmallFont, PresetCount, labels, [] { ChoosePreset(ButtonChoice); },
        nullptr, boxes[0]);
}

void AddColourSettings(Draft& draft) {
    AddText(HeadingX, HeadingY, "Window background", 0);
    static constexpr const char* channels[] = {"R", "G", "B"};
    for (int channel = 0; channel < 3; ++channel)
        draft.Channels[channel] = AddSlider({.X = SlidersX + channel * SliderStep,
                                             .Y = SlidersY,
                                             .Width = SliderWidth,
                                             .Range = SliderRange,
                                             .Flags = SliderSmallFont,
                                             .Position = PositionOf(channel),
                                             .Label = channels[channel],
                                             .Arg = channel,
                                             .Moved = MoveChannel,
                                             .Released = ReleaseChannel,
                                             .Shade = ShadeOfChannel,
                                             .Print = PrintChannel});
    AddPresets();
}

void BuildPreferences() {
    Draft& draft = TheDraft();
    draft.FileBackups = FileBackups;
    draft.DoAutoLoad = DoAutoLoad;
    draft.CheckpointTime = CheckpointTime;
    draft.MakeCheckpointFiles = MakeCheckpointFiles;
    draft.ColourBefore = DefaultWindowBackground;
    AddBackdrop();
    AddFileSettings(draft);
    AddColourSettings(draft);
    static constexpr const char* answers[] = {"OK", "Cancel"};
    SetDefaultButton(AddButtons(0, ButtonsY, WindowWidth, 0, 2, answers, DoPrefs, nullptr, nullptr), 0);
}

} // namespace

const ToolWindow PreferencesWindow = {
    .Title = " Preferences",
    .Handle = &Preferences,
    .Width = WindowWidth,
    .Height = WindowHeight,
    .Place = {.Opened = &PreferencesOpened, .X = &PrefsX, .Y = &PrefsY},
    .DataSize = sizeof(Draft),
    .DisablesMain = true,
    .Build = BuildPreferences,
    .Event = CheckPrefsKey,
    .Close = FreePrefs,
    .ManualPage = ManualPage,
};

void SetPreferences() {
    OpenToolWindow(PreferencesWindow);
}
