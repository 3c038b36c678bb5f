#include "interaction/view_menus.h"

#include "gooey/event_loop.h"
#include "interaction/preselection.h"
#include "platform/desktop_place.h"
#include "store/view_record.h"
#include "views/display_flags.h"
#include "views/main_window.h"

namespace {

template <int& Flag>
std::int32_t Ticks() {
    return SimpleMenuCheck(Flag);
}

std::int32_t SwapViewsCheck() {
    return NoViewports == 1 ? MenuDisabled : 0;
}

std::int32_t ThreeViewsCheck() {
    return SimpleMenuCheck(NoViewports > 1);
}

std::int32_t TextureCheck() {
    return TextureAvailable ? SimpleMenuCheck(TextureOn) : MenuHidden;
}

std::int32_t WireframeCheck() {
    return SimpleMenuCheck(!SolidView);
}

std::int32_t FillDesktopCheck() {
    return SimpleMenuCheck(!FloatOnDesktop) | (gl::ScreenIsOnDesktop() ? 0 : MenuDisabled);
}

const MenuEntry DirectionMenu[] = {
    {"Top", MenuEntryItem, 25, 'T', nullptr, nullptr},       {"Front", MenuEntryItem, 26, 'F', nullptr, nullptr},
    {"Left", MenuEntrySeparated, 27, 'L', nullptr, nullptr}, {"Under", MenuEntryItem, 28, 'U', nullptr, nullptr},
    {"Back", MenuEntryItem, 29, 'B', nullptr, nullptr},      {"Right", MenuEntryLast, 30, 'R', nullptr, nullptr},
};

} // namespace

const MenuEntry ViewMenu[] = {
    {"View", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"2d", MenuEntryItem, 0, 0, DirectionMenu, nullptr},
    {"3d", MenuEntrySeparated, 31, '3', nullptr, nullptr},
    {"Swap views", MenuEntryItem, 32, 'W', nullptr, SwapViewsCheck},
    {"Three views", MenuEntryItem, 33, '.', nullptr, ThreeViewsCheck},
    {"Set working area", MenuEntrySeparated, 34, ',', nullptr, nullptr},
    {"Set rotation centre", MenuEntryItem, 35, ShiftMiddleMouseShortcut, nullptr, nullptr},
    {"Reset rotation centre", MenuEntryLast, 36, EndCharacter, nullptr, nullptr},
};

const MenuEntry SettingsMenu[] = {
    {"Settings", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Backface", MenuEntryItem, 107, '\t', nullptr, Ticks<Backface>},
    {"Texture", MenuEntryItem, 108, -'T', nullptr, TextureCheck},
    {"Wireframe", MenuEntryItem, 109, -'W', nullptr, WireframeCheck},
    {"Outline polygons", MenuEntryItem, 111, 0, nullptr, Ticks<OutlinePolygons>},
    {"Show all vertices", MenuEntrySeparated, 112, 0, nullptr, Ticks<ShowVertices>},
    {"Selected things on top", MenuEntryItem, 110, 0, nullptr, Ticks<SelectionsOnTop>},
    {"Selected things solid", MenuEntrySeparated, 113, 0, nullptr, Ticks<SelectionsSolid>},
    {"Singlebuffer when still", MenuEntryItem, 114, 0, nullptr, Ticks<SingleWhenStill>},
    {"Wireframe when moving", MenuEntryItem, 115, 0, nullptr, Ticks<MoveWire>},
    {"Texture when moving", MenuEntrySeparated, 116, 0, nullptr, Ticks<MoveTexture>},
    {"Window labels", MenuEntryItem, 117, 0, nullptr, Ticks<WindowLabels>},
    {"Fill the desktop window", MenuEntryItem, 17, 0, nullptr, FillDesktopCheck},
    {"Show what is pointed at", MenuEntryItem, 122, 0, nullptr, Ticks<ShowPointedAt>},
    {"Fast updates", MenuEntrySeparated, 118, 0, nullptr, Ticks<FastUpdates>},
    {"User preferences", MenuEntryLast, 119, 0, nullptr, nullptr},
};

int KeyOfItem(const MenuEntry* table, int item) {
    for (const MenuEntry* entry = table; item > 0; ++entry) {
        if (entry->Id == item)
            return entry->Shortcut;
        if (entry->Kind == MenuEntryLast)
            break;
    }
    return 0;
}
