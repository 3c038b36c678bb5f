#include "gooey/file_selector.h"
#include "gooey/file_selector_state.h"

#include "gooey/cursors.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/list_gadget.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/text_input.h"
#include "gooey/utf8.h"
#include "gooey/window.h"

#include "platform/system.h"

#include <algorithm>

namespace {

constexpr int ListWidth = 326, ListHeight = 217;

std::string RowText(const FileEntry& entry) {
    return entry.Name + (entry.IsFile ? "" : "/");
}

const FileEntry& EntryOf(const ListRow& row) {
    return *static_cast<const FileEntry*>(row.Record);
}

void EnterDirectory(const FileEntry& entry) {
    ChangeDirectory(std::string(CurrentSelector().Directory) + "/" + entry.Name);
}

void GoUp() {
    std::string directory = CurrentSelector().Directory;
    std::size_t slash = directory.rfind('/');
    if (slash != std::string::npos)
        ChangeDirectory(directory.substr(0, slash));
}

const FileEntry* SelectedEntry() {
    const Gadget* list = CurrentSelector().List;
    int row = ListRowOn(list);
    return row < 0 ? nullptr : &EntryOf(ListRowsOf(list)[static_cast<std::size_t>(row)]);
}

/// Return: into the directory that is selected, else the file is taken.
int ReturnInList(FileSelector& selector) {
    const FileEntry* entry = SelectedEntry();
    if (entry && !entry->IsFile) {
        EnterDirectory(*entry);
        return 1;
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

/// What becomes of a name that a "/" is typed behind: a path.
std::string PathTypedSoFar(const FileSelector& selector) {
    bool isTyped = selector.NameInput && TextIsActive(selector.NameInput) && !WholeTextIsSelected(selector.NameInput);
    return (isTyped ? std::string(selector.Name) : "") + "/";
}

/// Keys that mean the same whether or not a name can be typed.
int CommonKey(FileSelector& selector, int character) {
    switch (character) {
    case '/':
        StartPathEntry(PathTypedSoFar(selector).c_str());
        return 1;
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
    return !forInput && MoveInList(selector.List, character);
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
            SetListRowOn(selector.List, -1);
        return 0;
    }
    if (character != BackspaceCharacter)
        return FindInList(selector.List, character);
    GoUp();
    return 1;
}

void ChooseEntry(const ListRow& row) {
    const FileEntry& entry = EntryOf(row);
    if (entry.IsFile)
        SetSelectorName(entry.Name.c_str());
}

void ClickEntry(const ListRow& row) {
    const FileEntry entry = EntryOf(row);
    if (entry.IsFile)
        SetSelectorName(entry.Name.c_str());
    else
        EnterDirectory(entry);
}

void OpenEntry(const ListRow& row) {
    if (EntryOf(row).IsFile)
        AcceptByKey();
    else
        ClickEntry(row);
}

/// Why there is nothing to see.
std::string TextOfEmptyList() {
    const std::string& error = CurrentSelector().Listing->Error;
    return error.empty() ? "(nothing to show here)" : "This directory cannot be read: " + error;
}

} // namespace

void AddFileList(int x, int y) {
    FileSelector& selector = CurrentSelector();
    selector.List = AddList({.Box = {x, y, ListWidth, ListHeight},
                             .SmallRows = true,
                             .Choose = ChooseEntry,
                             .Click = ClickEntry,
                             .Open = OpenEntry,
                             .TextWhenEmpty = TextOfEmptyList});
    selector.List->KeyFn = KeyInFileList;
    ScrollOf(selector.List).DrawFn = FWDraw;
    ScrollOf(selector.List).DrawContents = nullptr;
}

void FWDraw(int, int, int, int, int, int) {
    // What is drawn into the shown picture would flicker between two retraces.
    if (!(CurrentWindow->Flags & WindowDoubleBuffered))
        gl::gsync();
    DrawListContents(CurrentSelector().List);
}

void SelectName(const std::string& name) {
    const std::vector<FileEntry>& entries = CurrentSelector().Listing->Entries;
    auto named =
        std::find_if(entries.begin(), entries.end(), [&](const FileEntry& entry) { return entry.Name == name; });
    if (named == entries.end())
        return;
    SetListRowOn(CurrentSelector().List, static_cast<int>(named - entries.begin()));
    if (named->IsFile)
        SetSelectorName(name.c_str());
    RedrawCurrentWindow();
}

void ShowListing() {
    const FileSelector& selector = CurrentSelector();
    std::vector<ListRow> rows;
    rows.reserve(selector.Listing->Entries.size());
    for (const FileEntry& entry : selector.Listing->Entries)
        rows.push_back({.Label = RowText(entry), .Record = &entry});
    SetListRows(selector.List, std::move(rows));
}

const char* EndThatFits(const char* text, int width) {
    while (*text && SmallWidth(text) > width)
        NextCodePoint(text);
    return text;
}

void RescanDirectory() {
    FileSelector& selector = CurrentSelector();
    *selector.Listing = ListFiles(selector.Directory, selector.Extension, selector.ShowBackups != 0);
    ShowListing();
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
