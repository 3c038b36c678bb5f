#include "gooey/file_selector.h"
#include "gooey/file_selector_state.h"

#include "gooey/cursors.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/text_input.h"
#include "gooey/utf8.h"

#include "platform/events.h"
#include "platform/system.h"

#include <algorithm>

namespace {

constexpr int ListX = 12, ListY = 91, ListWidth = 326, ListHeight = 217;
constexpr int RowHeight = 19, RowBarHeight = 17;
constexpr int RowX = 16;
/// The baseline of the first row, without the extra height and the scrolling.
constexpr int FirstBaseline = 289;
constexpr int ScrollStep = 2;
constexpr int ShadeRow = 12, ShadeEmpty = 8;
constexpr long DoubleClickTicks = 50;

int RowCount(const FileSelector& selector) {
    return static_cast<int>(selector.Listing->Entries.size());
}

int BaselineOf(const FileSelector& selector, int row) {
    return FirstBaseline + selector.ExtraHeight + selector.RowOffset - RowHeight * row;
}

std::string RowText(const FileEntry& entry) {
    return entry.Name + (entry.IsFile ? "" : "/");
}

/// The row under the pointer; -1: none.
int RowUnderPointer(const FileSelector& selector) {
    if (!MouseInBox(ListX, ListY + selector.ExtraHeight, ListWidth, ListHeight) || MouseX >= ListX + 306)
        return -1;
    int below = BaselineOf(selector, 0) + RowHeight - 3 - MouseY;
    int row = below / RowHeight;
    return below >= 0 && row < RowCount(selector) ? row : -1;
}

void EnterDirectory(const FileEntry& entry) {
    ChangeDirectory(std::string(CurrentSelector().Directory) + "/" + entry.Name);
}

/// The row whose name begins with what was typed.
int RowOfPrefix(const FileSelector& selector) {
    const std::vector<FileEntry>& entries = selector.Listing->Entries;
    auto found = std::find_if(entries.begin(), entries.end(),
                              [&](const FileEntry& entry) { return selector.Typed->Begins(entry.Name.c_str()); });
    return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
}

void FindTyped(int character) {
    FileSelector& selector = CurrentSelector();
    selector.Typed->Add(character);
    int row = RowOfPrefix(selector);
    if (row < 0)
        gl::ringbell();
    else
        SelectRow(row);
}

void GoUp() {
    std::string directory = CurrentSelector().Directory;
    std::size_t slash = directory.rfind('/');
    if (slash != std::string::npos)
        ChangeDirectory(directory.substr(0, slash));
}

/// Return: into the directory that is selected, else the file is taken.
int ReturnInList(FileSelector& selector) {
    if (selector.SelectedRow >= 0) {
        FileEntry entry = selector.Listing->Entries[static_cast<std::size_t>(selector.SelectedRow)];
        if (!entry.IsFile) {
            EnterDirectory(entry);
            return 1;
        }
    }
    if (selector.NameInput && TextIsActive(selector.NameInput))
        return 0;
    if (selector.Name[0])
        AcceptByKey();
    return 1;
}

int Paste(const FileSelector& selector) {
    std::string text = gl::ClipboardText();
    text.erase(std::min(text.find_first_of("\r\n"), text.size()));
    bool isPath = text.find('/') != std::string::npos || text.starts_with('~');
    if (text.empty() || (selector.NameInput && !isPath))
        return 0;
    FollowPath(text);
    return 1;
}

/// Keys that mean the same whether or not a name can be typed.
int CommonKey(FileSelector& selector, int character) {
    switch (character) {
    case '/':
    case '~': {
        const char text[] = {static_cast<char>(character), '\0'};
        StartPathEntry(text);
        return 1;
    }
    case CtrlCharacter('L'):
        StartPathEntry(selector.Directory);
        return 1;
    case CtrlCharacter('V'):
        return Paste(selector);
    case ReturnCharacter:
        return ReturnInList(selector);
    case EscapeCharacter:
        if (selector.NameInput && TextIsActive(selector.NameInput) && selector.Name[0])
            return 0;
        CloseCurrentWindow();
        return 1;
    default:
        break;
    }
    bool forInput = selector.NameInput && (character == HomeCharacter || character == EndCharacter);
    int row = selector.SelectedRow;
    if (forInput || !MoveRowByKey(character, RowsPerPage(selector.List, RowHeight), RowCount(selector), row))
        return 0;
    if (row >= 0)
        SelectRow(row);
    return 1;
}

/// The keys that do not belong to an input: before any input of the window gets them.
int KeyInFileList(Gadget*, int character) {
    FileSelector& selector = CurrentSelector();
    if (PathIsEntered()) {
        if (character != EscapeCharacter || selector.Path[0])
            return 0;
        EndPathEntry();
        return 1;
    }
    if (CommonKey(selector, character))
        return 1;
    if (selector.NameInput) {
        // Typing a name goes on from the list: Return saves then.
        if (CodePointOf(character))
            selector.SelectedRow = -1;
        return 0;
    }
    if (character == BackspaceCharacter)
        GoUp();
    else if (CodePointOf(character))
        FindTyped(character);
    else
        return 0;
    return 1;
}

void ListFileRows(const Gadget* gadget, std::vector<GadgetItem>& items) {
    const FileSelector& selector = CurrentSelector();
    const ScrollWindow& s = ScrollOf(gadget);
    RowRange rows = VisibleRows(gadget, RowHeight, RowCount(selector));
    for (int row = rows.First; row < rows.Last; ++row) {
        int bottom = s.InnerY + s.InnerH + s.VOffset - RowHeight * (row + 1);
        int top = std::min(bottom + RowHeight, s.InnerY + s.InnerH);
        bottom = std::max(bottom, s.InnerY);
        items.push_back({RowText(selector.Listing->Entries[static_cast<std::size_t>(row)]),
                         {s.InnerX, bottom, s.InnerW, top - bottom}});
    }
}

void DrawRow(const FileSelector& selector, int row, int width) {
    int baseline = BaselineOf(selector, row);
    std::string text = " " + RowText(selector.Listing->Entries[static_cast<std::size_t>(row)]);
    bool selected = row == selector.SelectedRow;
    if (selected)
        DrawBox(RowX, baseline - 3, width, RowBarHeight, ShadeRow);
    SmallText(RowX, baseline, text.c_str(), Colour[selected ? ShadeLowered : ShadeRow]);
}

/// Why there is nothing to see.
void DrawEmptyList(const FileSelector& selector) {
    std::string text = " This directory cannot be read: " + selector.Listing->Error;
    if (!selector.Listing->Error.empty())
        SmallText(RowX, BaselineOf(selector, 0), text.c_str(), Colour[ShadeRow]);
    else
        SmallText(RowX, BaselineOf(selector, 0), " (nothing to show here)", Colour[ShadeEmpty]);
}

} // namespace

void AddFileList(int x, int y) {
    FileSelector& selector = CurrentSelector();
    selector.List = AddScrollWindow({.X = x,
                                     .Y = y,
                                     .Width = ListWidth,
                                     .Height = ListHeight,
                                     .Flags = ScrollVertical | ScrollBorder,
                                     .ContentWidth = ListWidth,
                                     .ContentHeight = ListHeight,
                                     .StepY = ScrollStep,
                                     .Configure = FWConfigure,
                                     .Draw = FWDraw});
    ScrollOf(selector.List).ListItems = ListFileRows;
    selector.List->KeyFn = KeyInFileList;
}

void FWConfigure(Gadget* gadget) {
    ConfigureScroll(gadget, -1, -1, ListWidth, ListHeight, ListWidth, RowCount(CurrentSelector()) * RowHeight);
}

void FWDraw(int innerX, int innerY, int innerW, int innerH, int, int vOffset) {
    FileSelector& selector = CurrentSelector();
    selector.RowOffset = vOffset;
    // What is drawn into the shown picture would flicker between two retraces.
    if (!(CurrentWindow->Flags & WindowDoubleBuffered))
        gl::gsync();
    ClipScope clip(innerX, innerY, innerW, innerH);
    DrawBox(innerX, innerY, innerW, innerH, ShadeLowered);
    if (selector.Listing->Entries.empty())
        DrawEmptyList(selector);
    RowRange rows = VisibleRows(selector.List, RowHeight, RowCount(selector));
    for (int row = rows.First; row < rows.Last; ++row)
        DrawRow(selector, row, innerW);
}

void SelectRow(int row) {
    FileSelector& selector = CurrentSelector();
    const FileEntry& entry = selector.Listing->Entries[static_cast<std::size_t>(row)];
    selector.SelectedRow = row;
    if (entry.IsFile)
        SetSelectorName(entry.Name.c_str());
    ShowRow(selector.List, RowHeight, row);
    RedrawCurrentWindow();
}

void SelectName(const std::string& name) {
    const std::vector<FileEntry>& entries = CurrentSelector().Listing->Entries;
    for (std::size_t row = 0; row < entries.size(); ++row)
        if (entries[row].Name == name) {
            SelectRow(static_cast<int>(row));
            return;
        }
}

void ClickFileList() {
    FileSelector& selector = CurrentSelector();
    int row = RowUnderPointer(selector);
    if (row < 0)
        return;
    long now = ClockTicks(), since = now - selector.LastClickTime;
    selector.LastClickTime = now;
    if (row == selector.SelectedRow) {
        FileEntry entry = selector.Listing->Entries[static_cast<std::size_t>(row)];
        if (!entry.IsFile)
            EnterDirectory(entry);
        else if (since < DoubleClickTicks)
            AcceptByKey();
        return;
    }
    FileEntry entry = selector.Listing->Entries[static_cast<std::size_t>(row)];
    SelectRow(row);
    if (!entry.IsFile)
        EnterDirectory(entry);
}

const char* EndThatFits(const char* text, int width) {
    while (*text && SmallWidth(text) > width)
        NextCodePoint(text);
    return text;
}

void RescanDirectory() {
    FileSelector& selector = CurrentSelector();
    *selector.Listing = ListFiles(selector.Directory, selector.Extension, selector.ShowBackups != 0);
    selector.SelectedRow = -1;
    if ((selector.Mode & FilePurposeBits) == FileToOpen)
        selector.Name[0] = '\0';
}

void RefreshSelector() {
    Busy();
    RescanDirectory();
    ScrollOf(CurrentSelector().List).VOffset = 0;
    RedrawCurrentWindow();
    Unbusy();
}

void ChangeDirectory(const std::string& directory) {
    FileSelector& selector = CurrentSelector();
    if (CopyFileName(selector.Directory, directory.c_str()))
        RefreshSelector();
    else
        gl::ringbell();
}
