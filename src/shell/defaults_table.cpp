#include "shell/defaults_table.h"

#include "base/directories.h"
#include "files/checkpoints.h"
#include "files/merge_window.h"
#include "files/writer.h"
#include "gooey/draw.h"
#include "gooey/window.h"
#include "interaction/grid_gizmo.h"
#include "interaction/position_gizmo.h"
#include "interaction/preselection.h"
#include "interaction/ruler.h"
#include "interaction/work_area_gizmo.h"
#include "materials/default_materials.h"
#include "palettes/colour_mixing.h"
#include "palettes/material_editor.h"
#include "palettes/material_palette.h"
#include "palettes/texture_gizmo.h"
#include "shell/command_line.h"
#include "shell/desktop_place.h"
#include "shell/preferences.h"
#include "shell/remembered_places.h"
#include "store/view_record.h"
#include "structure/object_browser.h"
#include "structure/scene_builder.h"
#include "structure/structure_editor.h"
#include "textures/texture_file.h"
#include "textures/texture_library.h"
#include "textures/texture_lock.h"
#include "texturing/manual_placement.h"
#include "texturing/strip_texture.h"
#include "tools/amalgamation.h"
#include "tools/create_sphere.h"
#include "tools/dimensions.h"
#include "tools/n_gons.h"
#include "tools/polygon_tools.h"
#include "tools/revolve.h"
#include "tools/tablet.h"
#include "tools/tablet_alignment.h"
#include "tools/text_generator.h"
#include "tools/volume_sweep.h"
#include "views/display_flags.h"
#include "views/grid.h"
#include "views/main_window.h"

#include <type_traits>

namespace {

constexpr DefaultsEntry Flag(const char* key, int& value) {
    return {.Key = key, .Form = DefaultsForm::Flag, .Values = {&value}};
}

/// Of a flag that most files know nothing of.
constexpr DefaultsEntry FlagWhenSet(const char* key, int& value) {
    return {.Key = key, .Form = DefaultsForm::Flag, .Values = {&value}, .WrittenIf = &value};
}

constexpr DefaultsEntry Integer(const char* key, int& value, const DefaultsRange* range = nullptr) {
    return {.Key = key, .Form = DefaultsForm::Integer, .Values = {&value}, .Range = range};
}

constexpr DefaultsEntry Place(const char* key, int& opened, int& x, int& y) {
    return {.Key = key, .Form = DefaultsForm::Position, .Values = {&x, &y}, .Opened = &opened, .WrittenIf = &opened};
}

constexpr DefaultsEntry Place(const char* key, int& opened, int& x, int& y, int& height) {
    return {.Key = key,
            .Form = DefaultsForm::PositionAndHeight,
            .Values = {&x, &y, &height},
            .Opened = &opened,
            .WrittenIf = &opened};
}

constexpr DefaultsEntry Place(const char* key, int& opened, int& x, int& y, int& width, int& height) {
    return {.Key = key,
            .Form = DefaultsForm::PositionAndSize,
            .Values = {&x, &y, &width, &height},
            .Opened = &opened,
            .WrittenIf = &opened};
}

constexpr DefaultsEntry Three(const char* key, int& a, int& b, int& c) {
    return {.Key = key, .Form = DefaultsForm::ThreeIntegers, .Values = {&a, &b, &c}};
}

constexpr DefaultsEntry Four(const char* key, int& a, int& b, int& c, int& d) {
    return {.Key = key, .Form = DefaultsForm::FourIntegers, .Values = {&a, &b, &c, &d}};
}

constexpr DefaultsEntry Letter(const char* key, int& a, int& b) {
    return {.Key = key, .Form = DefaultsForm::Letter, .Values = {&a, &b}};
}

constexpr DefaultsEntry Word(const char* key, char (&text)[MaxFileName]) {
    return {.Key = key, .Form = DefaultsForm::Word, .Text = text};
}

// The background colour is kept as a number of 32 bits.
static_assert(sizeof DefaultWindowBackground == sizeof(int));
int& BackgroundColour = reinterpret_cast<int&>(DefaultWindowBackground);

constexpr DefaultsRange CircleSidesRange{3, 256, 4};
constexpr DefaultsRange SphereDepthRange{1, 32, 3};
constexpr DefaultsRange CheckpointTimeRange{1, 120, 15};
constexpr DefaultsRange RulerSizeRange{0, 1, 0};

const DefaultsEntry Table[] = {
    /*  0 */ Flag("CrazyColours", CrazyColours),
    /*  1 */ Place("MainWindowPosition", MainWindowOpened, MainX, MainY, MainW, MainH),
    /*  2 */
    Place("SceneBuilderWindow", SceneBuilderOpened, SceneBuilderX, SceneBuilderY, SceneBuilderW, SceneBuilderH),
    /*  3 */ Place("MaterialPalette", MaterialPaletteOpened, MatpalX, MatpalY, MatpalW, MatpalH),
    /*  4 */ Place("MaterialEditor", MaterialEditorOpened, MateditX, MateditY),
    /*  5 */ Place("StructureEditor", StructureEditorOpened, StructX, StructY),
    /*  6 */ Place("GridGizmo", GridGizmoOpened, GridX, GridY),
    /*  7 */ Place("OffsetGizmo1", OffsetGizmoOpened, OffsetX, OffsetY),
    /*  8 */ Place("RulerGizmo", RulerGizmoOpened, RulerX, RulerY),
    /*  9 */
    {.Key = "RulerSize",
     .Form = DefaultsForm::Integer,
     .Values = {&RulerSize},
     .WrittenIf = &RulerGizmoOpened,
     .Range = &RulerSizeRange},
    /* 10 */ Place("Tablet", TabletOpened, TabletX, TabletY),
    /* 11 */ Place("Dimension", DimensionsOpened, DimensionX, DimensionY),
    /* 12 */ Place("ObjectBrowser", ObjectBrowserOpened, ObjectBrowserX, ObjectBrowserY, ObjectBrowserH),
    /* 13 */ Place("TextureGizmo", TextureGizmoOpened, TextureX, TextureY, TextureW, TextureH),
    /* 14 */ Place("PreferencesWindow", PreferencesOpened, PrefsX, PrefsY),
    /* 15 */ Place("AmalgamateWindow", AmalgamateOpened, AmalgamateX, AmalgamateY),
    /* 16 */ Place("RevolveWindow1", RevolveOpened, RevolveX, RevolveY, RevolveW, RevolveH),
    /* 17 */ Place("MergeWindow", MergeOpened, MergeX, MergeY, MergeW, MergeH),
    /* 18 */ Place("WorkAreaWindow1", WorkAreaOpened, WorkAreaX, WorkAreaY, WorkAreaW, WorkAreaH),
    /* 19 */ Place("SweeperWindow1", SweeperOpened, SweeperX, SweeperY, SweeperW, SweeperH),
    /* 20 */ Place("TextGeneratorWindow", TextGeneratorOpened, TextGenX, TextGenY),
    /* 21 */ Place("ManualTextureWindow", ManualTextureOpened, ManTexX, ManTexY, ManTexW, ManTexH),
    /* 22 */ Place("QstripTextureWindow", QstripTextureOpened, QTexX, QTexY, QTexW, QTexH),
    /* 23 */ Flag("SoundEffects", SoundEffects),
    /* 24 */ Flag("WindowLabels", WindowLabels),
    /* 25 */ Flag("OutlinePolygons", OutlinePolygons),
    /* 26 */ Flag("SolidView", SolidView),
    /* 27 */ Flag("FastUpdates", FastUpdates),
    // These two have always been exchanged in the file.
    /* 28 */ Flag("SelectionsSolid", MoveWire),
    /* 29 */ Flag("MoveWire", SelectionsSolid),
    /* 30 */ Flag("SingleWhenStill", SingleWhenStill),
    /* 31 */ Flag("TextureOn", TextureOn),
    /* 32 */ Flag("MoveTexture", MoveTexture),
    /* 33 */ Flag("BackFace", Backface),
    /* 34 */ Flag("ShowGrid", GridVisible),
    /* 35 */ Flag("GridOnTop", GridOnTop),
    /* 36 */ Flag("GridSnap", GridSnap),
    /* 37 */ Flag("HideVertices", HideVertices),
    /* 38 */ Flag("LodScale", LodScale),
    /* 39 */ Flag("MatEditGang", MatEditGang),
    /* 40 */ Three("Mixer", SpectrumY, MixerX, MixerY),
    /* 41 */ Flag("Checkpoints", MakeCheckpointFiles),
    /* 42 */ Integer("CircleSides", CircleSides, &CircleSidesRange),
    /* 43 */ Integer("NewSphereDepth", NewSphereDepth, &SphereDepthRange),
    /* 44 */ Integer("TestVar", TestVar),
    /* 45 */ Integer("BackgroundColour", BackgroundColour),
    /* 46 */ Flag("LoadMaterialsOnNew", LoadMaterialsOnNew),
    /* 47 */ Flag("LoadTexturesOnNew", LoadTexturesOnNew),
    /* 48 */ Flag("DoAutoLoad", DoAutoLoad),
    /* 49 */ Flag("SceneBuilderOpen", SceneBuilderOpen),
    /* 50 */ Flag("GridOpen", GridOpen),
    /* 51 */ Flag("PaletteOpen", PaletteOpen),
    /* 52 */ Flag("ObjectBrowserOpen", ObjectBrowserOpen),
    /* 53 */ Flag("StructureOpen", StructureOpen),
    /* 54 */ Flag("TextureGizmoOpen", TextureGizmoOpen),
    /* 55 */ Four("TabletAlign1", AlignAX1, AlignAY1, AlignAX2, AlignAY2),
    /* 56 */ Four("TabletAlign2", AlignBX1, AlignBY1, AlignBX2, AlignBY2),
    /* 57 */ Four("TabletCentre", AlignCX1, AlignCY1, AlignCX2, AlignCY2),
    /* 58 */ Integer("TabletRotation", TabletRotation),
    /* 59 */ Letter("EnterMethod", EnterMethodA, EnterMethodB),
    /* 60 */ Integer("NoViewports", NoViewports),
    /* 61 */ Integer("CheckpointTime", CheckpointTime, &CheckpointTimeRange),
    /* 62 */ Word("FilePath", FilePath),
    /* 63 */ Word("FileName", FileName),
    /* 64 */ Flag("FileBackups", FileBackups),
    /* 65 */ Word("TextureDir", TextureDir),
};

constexpr DefaultsRun WritingOrder[] = {
    {0, 0},   {45, 45}, {1, 22},  {55, 58}, {59, 59}, {40, 40}, {60, 61}, {42, 44},
    {62, 63}, {65, 65}, {23, 38}, {64, 64}, {39, 39}, {41, 41}, {46, 54},
};

// How the desktop shows the screen, and how a main window that fits it goes back.
const DefaultsEntry AddedTable[] = {
    Place("DesktopWindow", DesktopPlaceKnown, DesktopX, DesktopY, DesktopW, DesktopH),
    Flag("DesktopMaximised", DesktopMaximised),
    FlagWhenSet("FloatOnDesktop", FloatOnDesktop),
    FlagWhenSet("HidePointedAt", HidePointedAt),
    FlagWhenSet("KeepTexturesInPlace", KeepTexturesInPlace),
    FlagWhenSet("MainWindowPlacedByHand", MainPlacedByHand),
    Place("MainWindowBeforeFit", MainWindowFitted, MainFreeX, MainFreeY, MainFreeW, MainFreeH),
};

} // namespace

const std::span<const DefaultsEntry> DefaultsTable = Table;
const std::span<const DefaultsEntry> AddedDefaultsTable = AddedTable;
const std::span<const DefaultsRun> DefaultsWritingOrder = WritingOrder;

int NumberCount(DefaultsForm form) {
    switch (form) {
    case DefaultsForm::Integer:
        return 1;
    case DefaultsForm::Position:
        return 2;
    case DefaultsForm::PositionAndHeight:
    case DefaultsForm::ThreeIntegers:
        return 3;
    case DefaultsForm::PositionAndSize:
    case DefaultsForm::FourIntegers:
        return 4;
    default:
        return 0;
    }
}
