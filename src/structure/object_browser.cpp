#include "structure/object_browser.h"

#include "base/debug.h"
#include "gooey/event_loop.h"
#include "gooey/label.h"
#include "gooey/list_gadget.h"
#include "gooey/manual.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/modes.h"
#include "interaction/view_menus.h"
#include "platform/events.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"
#include "structure/object_operations.h"
#include "structure/structure_windows.h"

#include <algorithm>
#include <cctype>
#include <strings.h>

Window* ObjectBrowser;
int ObjectBrowserX, ObjectBrowserY, ObjectBrowserH, ObjectBrowserOpened;
int ObjectBrowserOpen;

namespace {

constexpr int Width = 300, Height = 122, LeastHeight = 50, MostHeight = 900;
constexpr char ManualPage[] = "R_ObjectBrowser";

int ObjectBrowserEnabled = 1;

constexpr MenuEntry ObjectsMenu[] = {
    {"Objects", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"New object", MenuEntryItem, 1, InsertCharacter, nullptr, nullptr},
    {"Delete object", MenuEntryItem, 2, DeleteCharacter, nullptr, nullptr},
    {"Rename object", MenuEntrySeparated, 3, 'N', nullptr, nullptr},
    {"Help", MenuEntryLast, 4, '?', nullptr, nullptr},
};

bool NameComesFirst(const ListRow& a, const ListRow& b) {
    return strcasecmp(a.Label.c_str(), b.Label.c_str()) < 0;
}

/// By name: undoing moves an object to the head of the file's list, but not what the user is looking at.
void FillRows(std::vector<ListRow>& rows) {
    const Object* current = CurrentObject();
    for (const Object* object : EveryObject(*CurrentFile))
        rows.push_back({.Label = object->Name, .Record = object, .On = object == current});
    if (!std::is_sorted(rows.begin(), rows.end(), NameComesFirst))
        std::stable_sort(rows.begin(), rows.end(), NameComesFirst);
}

void ChooseObject(const ListRow& row) {
    for (Object* object : EveryObject(*CurrentFile))
        if (object == row.Record)
            CurrentObject() = object;
    if (ObjectIsolated)
        DirtyAllWindows();
    DirtyWindow(ObjectBrowser);
    DirtyWindow(StructureEditor);
}

void ClickObject(const ListRow& row) {
    Trace("Checking object list\n");
    Trace("Clicked on %s\n", row.Label.c_str());
    ChooseObject(row);
}

/// The object is looked at by itself.
void OpenObject(const ListRow& row) {
    ChooseObject(row);
    if (!ObjectIsolated)
        ChangeObjectIsolation();
}

void ClickBeside() {
    Trace("Checking object list\n");
}

GadgetBox PlaceOfList() {
    return {0, 0, CurrentWindow->Width, CurrentWindow->Height};
}

void TakeKey(int character) {
    switch (character < 128 ? std::tolower(character) : character) {
    case '?':
        OpenManual(ManualPage);
        break;
    case 'n':
        RenameObject();
        break;
    case DeleteCharacter:
        ChuckObjectAway();
        break;
    case InsertCharacter:
        CreateNewObject();
        break;
    case CtrlCharacter('Z'):
        Undo();
        break;
    default:
        break;
    }
}

void TakeEvent(int device, short value) {
    if (device == gl::KEYBD)
        TakeKey(value);
    else if (device == gl::RIGHTMOUSE && value)
        TakeKey(KeyOfItem(ObjectsMenu, DoPopup(ObjectsMenu)));
}

void Build() {
    AddBackdrop();
    AddList({.Box = {0, 0, Width, Height},
             .Place = PlaceOfList,
             .Keys = ListKeys::Always,
             .Fill = FillRows,
             .Choose = ChooseObject,
             .Click = ClickObject,
             .Open = OpenObject,
             .ClickBeside = ClickBeside});
}

} // namespace

const ToolWindow ObjectBrowserWindow = {
    .Title = " Object browser",
    .Handle = &ObjectBrowser,
    .Width = Width,
    .Height = Height,
    .Rules = {.LeastWidth = Width, .LeastHeight = LeastHeight, .MostWidth = Width, .MostHeight = MostHeight},
    .Place = {.Opened = &ObjectBrowserOpened, .X = &ObjectBrowserX, .Y = &ObjectBrowserY, .Height = &ObjectBrowserH},
    .DisabledByTools = true,
    .Enabled = &ObjectBrowserEnabled,
    .OpenAtStart = &ObjectBrowserOpen,
    .Build = Build,
    .Event = TakeEvent,
    .ManualPage = ManualPage,
};

void OpenObjectBrowser() {
    OpenToolWindow(ObjectBrowserWindow);
}
