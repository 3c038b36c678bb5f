#include "palettes/texture_menus.h"

#include "base/slots.h"
#include "gooey/button.h"
#include "gooey/manual.h"
#include "gooey/menu.h"
#include "palettes/texture_gizmo.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "textures/filters.h"
#include "textures/texture_changes.h"
#include "textures/texture_commands.h"
#include "textures/texture_definition.h"
#include "textures/texture_file.h"
#include "textures/texture_lock.h"
#include "textures/texture_usage.h"
#include "texturing/cylinder.h"
#include "texturing/manual_placement.h"
#include "texturing/painting.h"
#include "texturing/projections.h"
#include "texturing/strip_texture.h"
#include "texturing/texture_application.h"
#include "texturing/three_points.h"
#include "views/viewports.h"

namespace {

enum TextureItem : std::int16_t {
    ManualItem = 122,
    LoadItem = 326,
    ReplaceItem,
    LoadPaletteItem,
    SavePaletteItem,
    SaveDefaultItem,
    LoadOnNewItem,
    DeleteItem,
    DeleteUnusedItem,
    DeleteAllItem,
    PaintingItem,
    PlanarItem,
    CubicItem,
    CylindricalItem,
    ThreePointItem,
    EnvironmentItem,
    QstripItem,
    ManuallyItem,
    FindItem,
    FirstMinFilterItem,
    FirstMagFilterItem = FirstMinFilterItem + 8,
    FastItem = FirstMagFilterItem + 5,
    ClampXItem,
    ClampYItem,
    LockItem
};

/// In the order of their entries.
constexpr float MinFilters[] = {FilterDefault,     FilterPoint,        FilterBilinear,       FilterBicubic,
                                FilterMipmapPoint, FilterMipmapLinear, FilterMipmapBilinear, FilterMipmapTrilinear};
constexpr float MagFilters[] = {FilterDefault, FilterPoint, FilterBilinear, FilterBicubic, FilterSharpen};

// ---- What entries show

bool Usable() {
    return CurrentTexture() && !TextureGizmoIsDisabled();
}

std::int32_t NeedsTexture() {
    return Usable() ? 0 : MenuDisabled;
}

std::int32_t LoadOnNewCheck() {
    return SimpleMenuCheck(LoadTexturesOnNew) | NeedsTexture();
}

template <float Texture::*Filter, int Index>
std::int32_t FilterCheck() {
    const float token = Filter == &Texture::MinFilter ? MinFilters[Index] : MagFilters[Index];
    return Usable() ? SimpleMenuCheck(CurrentTexture()->*Filter == token) : MenuHasTickBox | MenuDisabled;
}

template <std::int32_t Texture::*Flag>
std::int32_t FlagCheck() {
    return Usable() ? SimpleMenuCheck(CurrentTexture()->*Flag) : MenuHasTickBox | MenuDisabled;
}

std::int32_t LockCheck() {
    return SimpleMenuCheck(KeepTexturesInPlace) | (TextureGizmoIsDisabled() ? MenuDisabled : 0);
}

// ---- The menus

constexpr MenuEntry FileMenu[] = {
    {"File", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Load texture", MenuEntryItem, LoadItem, 0, nullptr, nullptr},
    {"Replace current texture", MenuEntrySeparated, ReplaceItem, 0, nullptr, NeedsTexture},
    {"Load palette", MenuEntryItem, LoadPaletteItem, 0, nullptr, nullptr},
    {"Save palette", MenuEntrySeparated, SavePaletteItem, 0, nullptr, NeedsTexture},
    {"Save as default palette", MenuEntryItem, SaveDefaultItem, 0, nullptr, NeedsTexture},
    {"Load default palette on new", MenuEntrySeparated, LoadOnNewItem, 0, nullptr, LoadOnNewCheck},
    {"Delete selected texture", MenuEntryItem, DeleteItem, 0, nullptr, NeedsTexture},
    {"Delete unused textures", MenuEntryItem, DeleteUnusedItem, 0, nullptr, NeedsTexture},
    {"Delete all textures", MenuEntryLast, DeleteAllItem, 0, nullptr, NeedsTexture},
};

constexpr MenuEntry ApplyMenu[] = {
    {"Apply", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Painting", MenuEntryItem, PaintingItem, 0, nullptr, NeedsTexture},
    {"Planar", MenuEntryItem, PlanarItem, 0, nullptr, NeedsTexture},
    {"3 point projection", MenuEntryItem, ThreePointItem, 0, nullptr, NeedsTexture},
    {"Cubic", MenuEntryItem, CubicItem, 0, nullptr, NeedsTexture},
    {"Cylindrical", MenuEntrySeparated, CylindricalItem, 0, nullptr, NeedsTexture},
    {"Environment map", MenuEntryItem, EnvironmentItem, 0, nullptr, NeedsTexture},
    {"Apply to Qstrip", MenuEntryItem, QstripItem, 0, nullptr, NeedsTexture},
    {"Apply manually", MenuEntryLast, ManuallyItem, 0, nullptr, NeedsTexture},
};

constexpr MenuEntry FindMenu[] = {
    {"Find", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Selected polygon's texture", MenuEntryLast, FindItem, 0, nullptr, NeedsTexture},
};

template <int Index>
constexpr MenuEntry MinFilterEntry(const char* label, MenuKind kind = MenuEntryItem) {
    return {label, kind, FirstMinFilterItem + Index, 0, nullptr, FilterCheck<&Texture::MinFilter, Index>};
}

template <int Index>
constexpr MenuEntry MagFilterEntry(const char* label, MenuKind kind = MenuEntryItem) {
    return {label, kind, FirstMagFilterItem + Index, 0, nullptr, FilterCheck<&Texture::MagFilter, Index>};
}

constexpr MenuEntry MinFilterMenu[] = {
    MinFilterEntry<0>("Default"),         MinFilterEntry<1>("Point"),
    MinFilterEntry<2>("Bilinear"),        MinFilterEntry<3>("Bicubic"),
    MinFilterEntry<4>("Mipmap point"),    MinFilterEntry<5>("Mipmap linear"),
    MinFilterEntry<6>("Mipmap bilinear"), MinFilterEntry<7>("Mipmap trilinear", MenuEntryLast),
};

constexpr MenuEntry MagFilterMenu[] = {
    MagFilterEntry<0>("Default"),
    MagFilterEntry<1>("Point"),
    MagFilterEntry<2>("Bilinear"),
    MagFilterEntry<3>("Bicubic"),
    MagFilterEntry<4>("Sharpen", MenuEntryLast),
};

constexpr MenuEntry AttributesMenu[] = {
    {"Attributes", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Minification filter", MenuEntryItem, 0, 0, MinFilterMenu, nullptr},
    {"Magnification filter", MenuEntrySeparated, 0, 0, MagFilterMenu, nullptr},
    {"Low colour accuracy (faster)", MenuEntryItem, FastItem, 0, nullptr, FlagCheck<&Texture::Fast>},
    {"Clamp X", MenuEntryItem, ClampXItem, 0, nullptr, FlagCheck<&Texture::ClampS>},
    {"Clamp Y", MenuEntrySeparated, ClampYItem, 0, nullptr, FlagCheck<&Texture::ClampT>},
    {"Keep textures in place when moving", MenuEntryLast, LockItem, 0, nullptr, LockCheck},
};

constexpr MenuEntry HelpMenu[] = {
    {"Help", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Read manual", MenuEntryLast, ManualItem, '?', nullptr, nullptr},
};

// ---- What they do

void DefineAnew(Texture* texture) {
    WorkSaved = 0;
    DefineTexture(texture);
    DirtyModelWindows();
    DirtyTextureGizmo();
    TextureAppChange();
}

void SetFilter(float Texture::*filter, float token) {
    Texture* texture = CurrentTexture();
    if (!texture || texture->*filter == token)
        return;
    texture->*filter = token;
    DefineAnew(texture);
}

void Toggle(std::int32_t Texture::*flag) {
    Texture* texture = CurrentTexture();
    if (!texture)
        return;
    texture->*flag = !(texture->*flag);
    DefineAnew(texture);
}

struct ItemAction {
    TextureItem Item;
    void (*Do)();
};

constexpr ItemAction Actions[] = {
    {ManualItem, [] { OpenManual(TextureGizmoPage); }},
    {LoadItem, LoadTexture},
    {ReplaceItem, ReplaceTexture},
    {LoadPaletteItem, LoadTexturePalette},
    {SavePaletteItem, SaveTexturePalette},
    {SaveDefaultItem, [] { SaveDefaultTextures(); }},
    {LoadOnNewItem, [] { LoadTexturesOnNew = !LoadTexturesOnNew; }},
    {DeleteItem, DoTextureDelete},
    {DeleteUnusedItem, DeleteUnusedTextures},
    {DeleteAllItem, DeleteAllTextures},
    {PaintingItem, StartPainting},
    {PlanarItem, ProjectPlanar},
    {CubicItem, ProjectCubic},
    {CylindricalItem, ApplyTextureCylinder},
    {ThreePointItem, ApplyTexture3Point},
    {EnvironmentItem, ApplyEnvironmentMap},
    {QstripItem, ApplyTextureToQstrip},
    {ManuallyItem, ApplyTextureManually},
    {FindItem, FindPolygonsTexture},
    {FastItem, [] { Toggle(&Texture::Fast); }},
    {ClampXItem, [] { Toggle(&Texture::ClampS); }},
    {ClampYItem, [] { Toggle(&Texture::ClampT); }},
    {LockItem, [] { KeepTexturesInPlace = !KeepTexturesInPlace; }},
};

} // namespace

const MenuEntry* const TextureMenus[] = {FileMenu, ApplyMenu, FindMenu, AttributesMenu, HelpMenu, nullptr};

void HandleTextureMenu(int item) {
    if (item >= FirstMinFilterItem && item < FirstMagFilterItem)
        SetFilter(&Texture::MinFilter, MinFilters[item - FirstMinFilterItem]);
    else if (item >= FirstMagFilterItem && item < FastItem)
        SetFilter(&Texture::MagFilter, MagFilters[item - FirstMagFilterItem]);
    else
        for (const ItemAction& action : Actions)
            if (action.Item == item)
                action.Do();
}

void ChangeTexturesButton() {
    ChangeTextures(static_cast<TextureChange>(ButtonChoice));
}

void AdjustTextureButton() {
    if (ButtonChoice == 0)
        AdjustTexture();
    else
        RemoveTextures();
}
