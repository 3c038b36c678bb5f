#include "gooey/file_selector.h"
#include "gooey/file_selector_state.h"

#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/messages.h"
#include "gooey/redraw.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"

#include <algorithm>

namespace {

constexpr int LineX = 12, LineY = 316, LineWidth = 326, LineHeight = 29;
constexpr int LabelY = 362;
constexpr int TextX = 20, TextY = 324, TextWidth = 310;
constexpr int ShadeText = 12;
/// The most of a path that a message shows, in pixels.
constexpr int PathInMessage = 400;

GadgetBox LineBox() {
    return {LineX, LineY + CurrentSelector().ExtraHeight, LineWidth, LineHeight};
}

std::string LineText(const FileSelector& selector) {
    return std::string(selector.Directory) + "/*" + selector.Extension;
}

void DrawDirectoryLine(Gadget*) {
    const FileSelector& selector = CurrentSelector();
    FontOf(false).Draw(LineX, LabelY + selector.ExtraHeight, "Directory:", White);
    if (PathIsEntered())
        return;
    GadgetBox box = LineBox();
    SetColour(White);
    DrawLoweredBox(box.X, box.Y, box.Width, box.Height);
    std::string text = LineText(selector);
    FontOf(true).Draw(TextX, TextY + selector.ExtraHeight, EndThatFits(text.c_str(), TextWidth), Colour[ShadeText]);
}

int ClickDirectoryLine(Gadget*) {
    if (PathIsEntered() || !MouseInGadgetBox(LineBox()))
        return 0;
    StartPathEntry(CurrentSelector().Directory);
    return 1;
}

void DescribeDirectoryLine(const Gadget*, GadgetDescription& description) {
    description.Label = "Directory:";
    description.Box = description.Target = LineBox();
    description.Text = PathIsEntered() ? CurrentSelector().Path : LineText(CurrentSelector());
    description.On = PathIsEntered();
}

constexpr GadgetKind DirectoryLineKind = {"text", DescribeDirectoryLine, nullptr, nullptr};

void FollowEnteredPath() {
    std::string path = CurrentSelector().Path;
    EndPathEntry();
    if (!path.empty())
        FollowPath(path);
}

/// Goes to a file's directory, the file's name being taken.
void GoToFile(const std::string& directory, const std::string& name) {
    ChangeDirectory(directory);
    SelectName(name);
    SetSelectorName(name.c_str());
    RedrawCurrentWindow();
}

void GoOn() {
    EnableWindow(CurrentWindow);
}

void TellNotFound(const std::string& path) {
    const char* end = EndThatFits(path.c_str(), PathInMessage);
    std::string text = "There is no file or directory \"" + std::string(end == path.c_str() ? "" : "...") + end + "\"";
    Window* selector = CurrentWindow;
    DisableWindow(selector);
    WindowScope scope(selector);
    DoNotifier(text.c_str(), {selector, GoOn}, selector);
}

} // namespace

void AddDirectoryLine() {
    Gadget* line = AddGadget(DrawDirectoryLine, ClickDirectoryLine, 0);
    line->Kind = &DirectoryLineKind;
}

void AddPathInput() {
    FileSelector& selector = CurrentSelector();
    selector.PathInput = AddTextInput({.X = LineX - 8,
                                       .Y = LineY - 2 + selector.ExtraHeight,
                                       .Width = LineWidth + 8,
                                       .Flags = TextSmallFont,
                                       .Buffer = selector.Path,
                                       .Size = MaxFileName,
                                       .Filter = PrintableFilter,
                                       .Callback = FollowEnteredPath});
    selector.PathInput->Visible = 0;
}

bool PathIsEntered() {
    const FileSelector& selector = CurrentSelector();
    return selector.PathInput && selector.PathInput->Visible && TextIsActive(selector.PathInput);
}

void StartPathEntry(const char* text) {
    FileSelector& selector = CurrentSelector();
    std::string initial = text;
    ChangeText(selector.PathInput, initial.c_str());
    selector.PathInput->Visible = 1;
    ActivateText(selector.PathInput, 0);
    RedrawCurrentWindow();
}

void EndPathEntry() {
    FileSelector& selector = CurrentSelector();
    selector.PathInput->Visible = 0;
    DeactivateText(selector.PathInput);
    if (selector.NameInput)
        ActivateText(selector.NameInput, 0);
    RedrawCurrentWindow();
}

void FollowPath(const std::string& typed) {
    FileSelector& selector = CurrentSelector();
    std::string path = ResolvedPath(selector.Directory, typed);
    if (path.size() < MaxFileName && IsDirectory(path)) {
        ChangeDirectory(path);
        return;
    }
    std::size_t slash = path.rfind('/');
    std::string directory = path.substr(0, slash), name = path.substr(slash + 1);
    bool exists = IsReadableFile(path);
    if (!exists && IsReadableFile(path + selector.Extension)) {
        name += selector.Extension;
        exists = true;
    }
    if (path.size() >= MaxFileName || !IsDirectory(directory) || (!exists && !SelectorSaves(selector))) {
        TellNotFound(path);
        return;
    }
    if (!exists)
        std::replace(name.begin(), name.end(), ' ', '_');
    GoToFile(directory, name);
    if (!SelectorSaves(selector))
        AcceptByKey();
}
