#include "shell/menus.h"

#include "files/recent_files.h"
#include "gooey/event_loop.h"
#include "gooey/menu.h"
#include "gooey/pull_down.h"
#include "gooey/window.h"
#include "interaction/view_menus.h"
#include "store/accessors.h"
#include "views/display_flags.h"

#include <algorithm>
#include <iterator>
#include <string_view>

MenuSlots TheMenuSlots;

namespace {

// ---- What an entry shows beside its label, asked at each opening

std::int32_t HiddenUnless(bool shown) {
    return shown ? 0 : MenuHidden;
}

std::int32_t BillboardCheck() {
    return SimpleMenuCheck(ObjectAttributes() & ObjectIsBillboard);
}

std::int32_t TexturePaletteCheck() {
    return HiddenUnless(TextureAvailable);
}

std::int32_t HasImports();
std::int32_t HasExports();

// ---- The menus

MenuEntry FileMenu[] = {
    {"File", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Open", MenuEntryItem, 11, -'O', nullptr, nullptr},
    {"Save", MenuEntryItem, 12, -'S', nullptr, nullptr},
    {"Save as", MenuEntrySeparated, 13, 0, nullptr, nullptr},
    {"Recent files", MenuEntrySeparated, 0, 0, nullptr, RecentFilesCheck},
    {"Import", MenuEntryItem, 0, 0, nullptr, HasImports},
    {"Export", MenuEntrySeparated, 0, 0, nullptr, HasExports},
    {"New", MenuEntryItem, 14, 0, nullptr, nullptr},
    {"Merge", MenuEntrySeparated, 15, 0, nullptr, nullptr},
    {"About this file...", MenuEntrySeparated, 16, 0, nullptr, nullptr},
    {"Quit", MenuEntryLast, 18, 0, nullptr, nullptr},
};

const MenuEntry EditMenu[] = {
    {"Edit", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Undo", MenuEntrySeparated, 19, -'Z', nullptr, nullptr},
    {"Cut", MenuEntryItem, 20, -'X', nullptr, nullptr},
    {"Copy", MenuEntryItem, 21, -'C', nullptr, nullptr},
    {"Paste", MenuEntrySeparated, 22, -'V', nullptr, nullptr},
    {"Move selection", MenuEntrySeparated, 23, 'X', nullptr, nullptr},
    {"Select all", MenuEntryLast, 24, -'A', nullptr, nullptr},
};

const MenuEntry JoinMenu[] = {
    {"Join selected vertices", MenuEntryItem, 43, -'J', nullptr, nullptr},
    {"Amalgamate object", MenuEntryItem, 44, 0, nullptr, nullptr},
    {"Delete duplicate vertices", MenuEntryLast, 45, 0, nullptr, nullptr},
};

const MenuEntry VertexMenu[] = {
    {"Vertex", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Vertex creation", MenuEntryHeading, 0, 0, nullptr, nullptr},
    {"Create freehand", MenuEntryItem, 37, 0, nullptr, nullptr},
    {"Create with digitising tablet", MenuEntryItem, 38, 0, nullptr, nullptr},
    {"Read coordinates from text file", MenuEntryItem, 39, 0, nullptr, nullptr},
    {"Vertex editing", MenuEntryHeading, 0, 0, nullptr, nullptr},
    {"Query vertices", MenuEntryItem, 41, 0, nullptr, nullptr},
    {"Delete unused vertices", MenuEntryItem, 40, 0, nullptr, nullptr},
    {"Stick vertices to grid", MenuEntryItem, 42, 0, nullptr, nullptr},
    {"Join", MenuEntryLast, 0, 0, JoinMenu, nullptr},
};

const MenuEntry MirrorMenu[] = {
    {"Axis", MenuEntryTitle, 0, 0, nullptr, nullptr},       {"X", MenuEntryItem, 55, 0, nullptr, nullptr},
    {"Y", MenuEntryItem, 56, 0, nullptr, nullptr},          {"Z", MenuEntryItem, 57, 0, nullptr, nullptr},
    {"Input grid", MenuEntryLast, 58, 0, nullptr, nullptr},
};

const MenuEntry SolidsMenu[] = {
    {"Sphere", MenuEntryItem, 59, 0, nullptr, nullptr},
    {"Solid of revolution", MenuEntryLast, 60, 0, nullptr, nullptr},
};

const MenuEntry PolygonAlignMenu[] = {
    {"Centralise", MenuEntryItem, 63, 0, nullptr, nullptr},
    {"Centralise +Z", MenuEntrySeparated, 64, 0, nullptr, nullptr},
    {"+X", MenuEntryItem, 65, 0, nullptr, nullptr},
    {"Centre in X", MenuEntryItem, 66, 0, nullptr, nullptr},
    {"-X", MenuEntrySeparated, 67, 0, nullptr, nullptr},
    {"+Y", MenuEntryItem, 68, 0, nullptr, nullptr},
    {"Centre in Y", MenuEntryItem, 69, 0, nullptr, nullptr},
    {"-Y", MenuEntrySeparated, 70, 0, nullptr, nullptr},
    {"+Z", MenuEntryItem, 71, 0, nullptr, nullptr},
    {"Centre in Z", MenuEntryItem, 72, 0, nullptr, nullptr},
    {"-Z", MenuEntryLast, 73, 0, nullptr, nullptr},
};

const MenuEntry ReversalMenu[] = {
    {"Reverse polygons", MenuEntryItem, 74, 0, nullptr, nullptr},
    {"Make double sided", MenuEntryLast, 75, 0, nullptr, nullptr},
};

const MenuEntry PolygonMenu[] = {
    {"Polygon", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Polygon creation", MenuEntryHeading, 0, 0, nullptr, nullptr},
    {"Connect vertices to make polygons", MenuEntryItem, 46, 0, nullptr, nullptr},
    {"Create freehand", MenuEntryItem, 47, -'F', nullptr, nullptr},
    {"Create n-gons", MenuEntryItem, 48, -'N', nullptr, nullptr},
    {"Volume sweep", MenuEntryItem, 62, -'E', nullptr, nullptr},
    {"Mirror selected polygons", MenuEntryItem, 0, 0, MirrorMenu, nullptr},
    {"Solids", MenuEntryItem, 0, 0, SolidsMenu, nullptr},
    {"Text", MenuEntryItem, 61, 0, nullptr, nullptr},
    {"Polygon editing", MenuEntryHeading, 0, 0, nullptr, nullptr},
    {"Delete (leave vertices)", MenuEntryItem, 49, '\b', nullptr, nullptr},
    {"Align", MenuEntryItem, 0, 0, PolygonAlignMenu, nullptr},
    {"Reversal", MenuEntryItem, 0, 0, ReversalMenu, nullptr},
    {"Peak centre", MenuEntryItem, 50, 0, nullptr, nullptr},
    {"Raise walls", MenuEntryItem, 51, 0, nullptr, nullptr},
    {"Slice with grid", MenuEntrySeparated, 52, 0, nullptr, nullptr},
    {"Make subpolygon", MenuEntryItem, 53, PageDownCharacter, nullptr, nullptr},
    {"Return to normal", MenuEntryLast, 54, PageUpCharacter, nullptr, nullptr},
};

const MenuEntry AttributeMenu[] = {
    {"Billboard", MenuEntryLast, 91, 0, nullptr, BillboardCheck},
};

const MenuEntry ObjectAlignMenu[] = {
    {"Centralise", MenuEntryItem, 92, 0, nullptr, nullptr},
    {"Centralise +Z", MenuEntrySeparated, 93, 0, nullptr, nullptr},
    {"+X", MenuEntryItem, 94, 0, nullptr, nullptr},
    {"Centre in X", MenuEntryItem, 95, 0, nullptr, nullptr},
    {"-X", MenuEntrySeparated, 96, 0, nullptr, nullptr},
    {"+Y", MenuEntryItem, 97, 0, nullptr, nullptr},
    {"Centre in Y", MenuEntryItem, 98, 0, nullptr, nullptr},
    {"-Y", MenuEntrySeparated, 99, 0, nullptr, nullptr},
    {"+Z", MenuEntryItem, 100, 0, nullptr, nullptr},
    {"Centre in Z", MenuEntryItem, 101, 0, nullptr, nullptr},
    {"-Z", MenuEntryLast, 102, 0, nullptr, nullptr},
};

const MenuEntry ObjectMenu[] = {
    {"Object", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Object browser", MenuEntryItem, 76, 'O', nullptr, nullptr},
    {"Object structure (LOD switching)", MenuEntrySeparated, 77, 'K', nullptr, nullptr},
    {"New object", MenuEntryItem, 79, 0, nullptr, nullptr},
    {"Rename object", MenuEntryItem, 80, 0, nullptr, nullptr},
    {"Delete object", MenuEntryItem, 78, 0, nullptr, nullptr},
    {"Make a copy of this object", MenuEntryItem, 81, 0, nullptr, nullptr},
    {"Delete everything except this object", MenuEntrySeparated, 82, 0, nullptr, nullptr},
    {"Object dimensions", MenuEntryItem, 83, 0, nullptr, nullptr},
    {"Object attributes", MenuEntryItem, 0, 0, AttributeMenu, nullptr},
    {"Align object", MenuEntryLast, 0, 0, ObjectAlignMenu, nullptr},
};

const MenuEntry SceneMenu[] = {
    {"Scene", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Add object on grid", MenuEntryItem, 84, '\r', nullptr, nullptr},
    {"Plant current object", MenuEntryItem, 85, -'P', nullptr, nullptr},
    {"Replace object in scene", MenuEntrySeparated, 86, 0, nullptr, nullptr},
    {"New scene", MenuEntryItem, 87, 0, nullptr, nullptr},
    {"Centralise scene", MenuEntryLast, 88, 0, nullptr, nullptr},
};

const MenuEntry QueryMenu[] = {
    {"Query", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Query objects", MenuEntryItem, 90, 'Q', nullptr, nullptr},
    {"Query vertices", MenuEntryLast, 89, 0, nullptr, nullptr},
};

const MenuEntry ObjectGizmoMenu[] = {
    {"Gizmos", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Grid control", MenuEntryItem, 103, 'G', nullptr, nullptr},
    {"Material palette", MenuEntryItem, 104, 'M', nullptr, nullptr},
    {"Texture palette", MenuEntryLast, 105, 'E', nullptr, TexturePaletteCheck},
};

const MenuEntry SceneGizmoMenu[] = {
    {"Gizmos", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Object browser", MenuEntryItem, 76, 'O', nullptr, nullptr},
    {"Grid control", MenuEntryItem, 103, 'G', nullptr, nullptr},
    {"Scene builder", MenuEntryLast, 106, 'C', nullptr, nullptr},
};

const MenuEntry HelpMenu[] = {
    {"Help", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Tutorials", MenuEntryItem, 120, 0, nullptr, nullptr},
    {"Reference section", MenuEntrySeparated, 121, 0, nullptr, nullptr},
    {"What's new in this version?", MenuEntryItem, 123, 0, nullptr, nullptr},
    {"Last minute additions...", MenuEntrySeparated, 124, 0, nullptr, nullptr},
    {"About...", MenuEntryLast, 125, 0, nullptr, nullptr},
};

/// The File menu's entry of that label.
MenuEntry& FileEntry(std::string_view label) {
    return *std::find_if(std::begin(FileMenu), std::end(FileMenu),
                         [&](const MenuEntry& entry) { return entry.Label == label; });
}

std::int32_t HasImports() {
    return HiddenUnless(FileEntry("Import").Submenu);
}

std::int32_t HasExports() {
    return HiddenUnless(FileEntry("Export").Submenu);
}

} // namespace

const MenuEntry* const ObjectMenus[] = {FileMenu,   EditMenu,        ViewMenu,     VertexMenu, PolygonMenu,
                                        ObjectMenu, ObjectGizmoMenu, SettingsMenu, HelpMenu,   nullptr};

const MenuEntry* const SceneMenus[] = {FileMenu,       EditMenu,     ViewMenu, SceneMenu, QueryMenu,
                                       SceneGizmoMenu, SettingsMenu, HelpMenu, nullptr};

void AddImportsAndExports() {
    MenuEntry& imports = FileEntry("Import");
    MenuEntry& exports = FileEntry("Export");
    imports.Submenu = TheMenuSlots.MakeImportMenu ? TheMenuSlots.MakeImportMenu() : nullptr;
    exports.Submenu = TheMenuSlots.MakeExportMenu ? TheMenuSlots.MakeExportMenu() : nullptr;
    FileEntry("Recent files").Submenu = RecentFilesMenu();
    // The separator follows the last of the two that is shown.
    imports.Kind = imports.Submenu && !exports.Submenu ? MenuEntrySeparated : MenuEntryItem;
}

/// Files come and go while the bar is shown.
static Gadget* AddMainMenus(const MenuEntry* const* menus) {
    AddImportsAndExports();
    Gadget* bar = AddPullDownMenu(menus, TheMenuSlots.DealWithPulldown);
    BuildMenusAtOpening(bar);
    return bar;
}

Gadget* AddSingleObjectMenu() {
    return AddMainMenus(ObjectMenus);
}

Gadget* AddSceneModeMenu() {
    return AddMainMenus(SceneMenus);
}
