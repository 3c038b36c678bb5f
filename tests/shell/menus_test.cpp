#include "gooey/menu.h"
#include "shell/menu_walk.h"
#include "shell/menus.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "views/display_flags.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

std::string Titles(const MenuEntry* const* bar) {
    std::string titles;
    for (; *bar; ++bar) {
        EXPECT_EQ((*bar)->Kind, MenuEntryTitle);
        titles += (titles.empty() ? "" : ", ") + std::string((*bar)->Label);
    }
    return titles;
}

/// The entry of a bar that has this label, in submenus too.
const MenuEntry& Entry(const MenuEntry* const* bar, const std::string& label) {
    static const MenuEntry none{};
    const MenuEntry* found = &none;
    ForEveryEntryOf(bar, [&](const MenuEntry& entry) {
        if (entry.Label == label)
            found = &entry;
    });
    return *found;
}

int CheckOf(const char* label) {
    return Entry(ObjectMenus, label).Check();
}

TEST(Menus, BarsShowWhatTheirModeNeeds) {
    EXPECT_EQ(Titles(ObjectMenus), "File, Edit, View, Vertex, Polygon, Object, Gizmos, Settings, Help");
    EXPECT_EQ(Titles(SceneMenus), "File, Edit, View, Scene, Query, Gizmos, Settings, Help");
}

TEST(Menus, AnItemNumberMeansOneThingAndAShortcutToo) {
    for (const MenuEntry* const* bar : {ObjectMenus, SceneMenus}) {
        std::map<int, std::string> labels;
        std::map<int, int> shortcuts;
        ForEveryEntryOf(bar, [&](const MenuEntry& entry) {
            EXPECT_TRUE(!entry.Id || labels.emplace(entry.Id, entry.Label).second) << entry.Label;
            EXPECT_TRUE(!entry.Shortcut || shortcuts.emplace(entry.Shortcut, entry.Id).second) << entry.Label;
            // What can be chosen has a number, all else has none.
            const bool canBeChosen = entry.Kind != MenuEntryTitle && entry.Kind != MenuEntryHeading && !entry.Submenu &&
                                     std::string(entry.Label) != "Import" && std::string(entry.Label) != "Export" &&
                                     std::string(entry.Label) != "Recent files";
            EXPECT_EQ(entry.Id != 0, canBeChosen) << entry.Label;
        });
    }
}

TEST(Menus, TickBoxesFollowTheirFlags) {
    struct Case {
        const char* Label;
        int& Flag;
        int Ticked;
    };

    for (const Case& example : {Case{"Backface", Backface, 1},
                                {"Texture", TextureOn, 1},
                                {"Wireframe", SolidView, 0},
                                {"Outline polygons", OutlinePolygons, 1},
                                {"Show all vertices", ShowVertices, 1},
                                {"Selected things on top", SelectionsOnTop, 1},
                                {"Selected things solid", SelectionsSolid, 1},
                                {"Singlebuffer when still", SingleWhenStill, 1},
                                {"Wireframe when moving", MoveWire, 1},
                                {"Texture when moving", MoveTexture, 1},
                                {"Window labels", WindowLabels, 1},
                                {"Fast updates", FastUpdates, 1}}) {
        const int before = example.Flag;
        for (const int value : {0, 1}) {
            example.Flag = value;
            EXPECT_EQ(CheckOf(example.Label), MenuHasTickBox | (value == example.Ticked ? MenuTicked : 0))
                << example.Label << " with " << value;
        }
        example.Flag = before;
    }
    TextureAvailable = 0;
    EXPECT_EQ(CheckOf("Texture"), MenuHidden);
    EXPECT_EQ(CheckOf("Texture palette"), MenuHidden);
    TextureAvailable = 1;

    NoViewports = 1;
    EXPECT_EQ(CheckOf("Three views"), MenuHasTickBox);
    EXPECT_EQ(CheckOf("Swap views"), MenuDisabled);
    NoViewports = 3;
    EXPECT_EQ(CheckOf("Three views"), MenuHasTickBox | MenuTicked);
    EXPECT_EQ(CheckOf("Swap views"), 0);
    NoViewports = 1;

    ObjectAttributes() = ObjectIsBillboard;
    EXPECT_EQ(CheckOf("Billboard"), MenuHasTickBox | MenuTicked);
    ObjectAttributes() = 0;
    EXPECT_EQ(CheckOf("Billboard"), MenuHasTickBox);
    ResetStorage();
}

const MenuEntry Converters[] = {{"Other format", MenuEntryLast, 126, 0, nullptr, nullptr}};

TEST(Menus, ConvertersHangInTheFileMenu) {
    const auto make = []() -> const MenuEntry* { return Converters; };
    for (const bool imports : {false, true})
        for (const bool exports : {false, true}) {
            TheMenuSlots.MakeImportMenu = imports ? +make : nullptr;
            TheMenuSlots.MakeExportMenu = exports ? +make : nullptr;
            AddImportsAndExports();
            EXPECT_EQ(CheckOf("Import"), imports ? 0 : MenuHidden);
            EXPECT_EQ(CheckOf("Export"), exports ? 0 : MenuHidden);
            EXPECT_EQ(Entry(ObjectMenus, "Import").Submenu, imports ? Converters : nullptr);
            EXPECT_EQ(Entry(ObjectMenus, "Import").Kind,
                      imports && !exports ? int(MenuEntrySeparated) : int(MenuEntryItem));
        }
    TheMenuSlots = {};
    AddImportsAndExports();
}

} // namespace
