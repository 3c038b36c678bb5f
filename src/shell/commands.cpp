#include "shell/commands.h"

#include "base/slots.h"
#include "files/file_commands.h"
#include "files/file_information_window.h"
#include "files/recent_files.h"
#include "gooey/event_loop.h"
#include "gooey/event_queue.h"
#include "gooey/information_window.h"
#include "gooey/manual.h"
#include "interaction/grid_gizmo.h"
#include "interaction/input.h"
#include "interaction/modes.h"
#include "interaction/preselection.h"
#include "interaction/query.h"
#include "interaction/rotation_centre.h"
#include "interaction/selection.h"
#include "interaction/view_commands.h"
#include "interaction/work_area_setting.h"
#include "palettes/material_palette.h"
#include "palettes/texture_gizmo.h"
#include "platform/events.h"
#include "shell/preferences.h"
#include "shell/undo_remarks.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/undo.h"
#include "structure/object_browser.h"
#include "structure/object_operations.h"
#include "structure/plant_objects.h"
#include "structure/scene_builder.h"
#include "structure/scene_clipboard.h"
#include "structure/scene_operations.h"
#include "structure/scene_positioning.h"
#include "structure/structure_editor.h"
#include "tools/alignment.h"
#include "tools/amalgamation.h"
#include "tools/create_sphere.h"
#include "tools/create_vertices.h"
#include "tools/dimensions.h"
#include "tools/make_sub_polygons.h"
#include "tools/move.h"
#include "tools/n_gons.h"
#include "tools/peak.h"
#include "tools/polygon_clipboard.h"
#include "tools/polygon_copies.h"
#include "tools/polygon_operations.h"
#include "tools/polygon_tools.h"
#include "tools/raise_walls.h"
#include "tools/read_vertices.h"
#include "tools/revolve.h"
#include "tools/slicing.h"
#include "tools/tablet.h"
#include "tools/text_generator.h"
#include "tools/vertex_clipboard.h"
#include "tools/vertex_operations.h"
#include "tools/vertex_query.h"
#include "tools/volume_sweep.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/main_window.h"

CommandSlots TheCommandSlots;

namespace {

constexpr auto Action = CommandKind::Action;
constexpr auto Safe = CommandKind::Safe;

template <int Operation>
void DoFile() {
    DoFileOperation(Operation);
}

template <int Axis>
void Mirror() {
    MirrorPolygons(KeyView, Axis);
}

template <int How>
void AlignSelected() {
    AlignPolygons(How);
}

template <int How>
void AlignWhole() {
    AlignObject(How);
}

template <int Direction>
void ShowFrom() {
    SetDefaultView(KeyView, Direction);
}

void ShowIn3d() {
    Show3dView(KeyView);
}

template <int& Flag>
void Show() {
    ToggleShown(Flag);
}

template <int& Flag>
void Switch() {
    Toggle(Flag);
}

void Digitise() {
    DigitiseVertices(0, nullptr);
}

void FitToModel() {
    FitView(KeyView);
}

void Slice() {
    SlicePolygons(KeyView);
}

void StickToGrid() {
    StickVerticesToGrid(KeyView);
}

void SelectWholeScene() {
    SelectScene(Scene());
}

void CopyPartOfScene() {
    CopyScene(1);
}

void PasteIntoScene() {
    PasteScene(0, 0);
}

void MovePartOfScene() {
    MoveScene(1);
}

void ResetCentre() {
    ResetRotationCentre(KeyView);
}

/// The way of the window's close box, with its question about unsaved work.
void Quit() {
    QueueEvent(gl::WINQUIT, 0);
}

void TogglePointedAt() {
    ShowPointedAt = !ShowPointedAt;
    HidePointedAt = !ShowPointedAt;
}

void ToggleFillDesktop() {
    FloatOnDesktop = !FloatOnDesktop;
    FollowFloatOnDesktop();
}

void OpenTheManual() {
    OpenManual(nullptr);
}

constexpr int Key(char letter) {
    return letter;
}

constexpr int Ctrl(char letter) {
    return CtrlCharacter(letter);
}

// clang-format off: one command a line.
const Command Commands[] = {
    // Valid in every mode
    {Key('i'), "Object information", InEveryMode, Action, ShowObjectInfo},
    {Key('k'), "Object structure (LOD switching)", InEveryMode, Action, OpenStructureEditor},
    {Key('o'), "Object browser", InEveryMode, Action, OpenObjectBrowser},
    {Key('p'), "Polygon mode", InEveryMode, Action, SetPolygonMode},
    {Key('q'), "Query objects", InEveryMode, Action, QuerySceneObjects},
    {Key('s'), "Edit scene", InEveryMode, Action, ChangeObjectIsolation},
    {Key('v'), "Vertex mode", InEveryMode, Action, SetVertexMode},
    {PageUpCharacter, "Return to normal", InEveryMode, Action, PopPolygon},
    {PageDownCharacter, "Make subpolygon", InEveryMode, Action, PushPolygon},
    {Ctrl('E'), "Volume sweep", InEveryMode, Action, DoVolumeSweep},
    {Ctrl('F'), "Create polygons freehand", InEveryMode, Action, CreatePolysFreehand},
    {Ctrl('J'), "Join selected vertices", InEveryMode, Action, JoinVertices},
    {Ctrl('N'), "Create n-gons", InEveryMode, Action, CreateCircularPolys},
    {Ctrl('O'), "Open", InEveryMode, Action, DoFile<FileOpen>},
    {Ctrl('P'), "Plant current object", InEveryMode, Action, PlantObject},
    {Ctrl('S'), "Save", InEveryMode, Action, DoFile<FileSave>},
    {257, "Save as", InEveryMode, Action, DoFile<FileSaveAs>},
    {258, "New", InEveryMode, Action, DoFile<FileNew>},
    {259, "Merge", InEveryMode, Action, DoFile<FileMerge>},
    {260, "About this file...", InEveryMode, Action, ShowFileComment},
    {262, "Quit", InEveryMode, Action, Quit},
    {264, "Create vertices freehand", InEveryMode, Action, CreateVerticesOnGrid},
    {265, "Create with digitising tablet", InEveryMode, Action, Digitise},
    {266, "Read coordinates from text file", InEveryMode, Action, ReadVerticesFromFile},
    {270, "Delete unused vertices", InEveryMode, Action, DeleteUnusedVertices},
    {271, "Move vertices", InEveryMode, Action, MoveVertices},
    {272, "Query vertices", InEveryMode, Action, Query_AdjustVertices},
    {273, "Stick vertices to grid", InEveryMode, Action, StickToGrid},
    {274, "Amalgamate object", InEveryMode, Action, AmalgamateVertices},
    {275, "Delete duplicate vertices", InEveryMode, Action, MergeDuplicateVertices},
    {276, "Connect vertices to make polygons", InEveryMode, Action, CreatePolysByConnecting},
    {277, "Delete (leave vertices)", InEveryMode, Action, DeletePolygons},
    {281, "Move polygons", InEveryMode, Action, MovePolygons},
    {282, "Raise walls", InEveryMode, Action, LiftPolygons},
    {283, "Peak centre", InEveryMode, Action, PeakPolygons},
    {284, "Reverse polygons", InEveryMode, Action, ReversePolygons},
    {285, "Make double sided", InEveryMode, Action, DoublePolygons},
    {286, "Slice with grid", InEveryMode, Action, Slice},
    {287, "Sphere", InEveryMode, Action, CreateSphere},
    {288, "Solid of revolution", InEveryMode, Action, DoRevolve},
    {289, "Text", InEveryMode, Action, OpenTextGenerator},
    {290, "Mirror in X", InEveryMode, Action, Mirror<MirrorX>},
    {291, "Mirror in Y", InEveryMode, Action, Mirror<MirrorY>},
    {292, "Mirror in Z", InEveryMode, Action, Mirror<MirrorZ>},
    {293, "Mirror in the input grid", InEveryMode, Action, Mirror<MirrorGrid>},
    {294, "Align polygons: centralise", InEveryMode, Action, AlignSelected<AlignCentre>},
    {295, "Align polygons: centralise +Z", InEveryMode, Action, AlignSelected<AlignStanding>},
    {296, "Align polygons: +X", InEveryMode, Action, AlignSelected<AlignLowX>},
    {297, "Align polygons: centre in X", InEveryMode, Action, AlignSelected<AlignMiddleX>},
    {298, "Align polygons: -X", InEveryMode, Action, AlignSelected<AlignHighX>},
    {299, "Align polygons: +Y", InEveryMode, Action, AlignSelected<AlignLowY>},
    {300, "Align polygons: centre in Y", InEveryMode, Action, AlignSelected<AlignMiddleY>},
    {301, "Align polygons: -Y", InEveryMode, Action, AlignSelected<AlignHighY>},
    {302, "Align polygons: +Z", InEveryMode, Action, AlignSelected<AlignLowZ>},
    {303, "Align polygons: centre in Z", InEveryMode, Action, AlignSelected<AlignMiddleZ>},
    {304, "Align polygons: -Z", InEveryMode, Action, AlignSelected<AlignHighZ>},
    {305, "New object", InEveryMode, Action, CreateNewObject},
    {306, "Delete object", InEveryMode, Action, ChuckObjectAway},
    {307, "Rename object", InEveryMode, Action, RenameObject},
    {308, "Make a copy of this object", InEveryMode, Action, MakeCopyOfObject},
    {309, "Delete everything except this object", InEveryMode, Action, DeleteAllButObject},
    {310, "Object dimensions", InEveryMode, Action, SetObjectDimensions},
    {311, "Billboard", InEveryMode, Action, ToggleBillboard},
    {312, "Align object: centralise", InEveryMode, Action, AlignWhole<AlignCentre>},
    {313, "Align object: centralise +Z", InEveryMode, Action, AlignWhole<AlignStanding>},
    {314, "Align object: +X", InEveryMode, Action, AlignWhole<AlignLowX>},
    {315, "Align object: centre in X", InEveryMode, Action, AlignWhole<AlignMiddleX>},
    {316, "Align object: -X", InEveryMode, Action, AlignWhole<AlignHighX>},
    {317, "Align object: +Y", InEveryMode, Action, AlignWhole<AlignLowY>},
    {318, "Align object: centre in Y", InEveryMode, Action, AlignWhole<AlignMiddleY>},
    {319, "Align object: -Y", InEveryMode, Action, AlignWhole<AlignHighY>},
    {320, "Align object: +Z", InEveryMode, Action, AlignWhole<AlignLowZ>},
    {321, "Align object: centre in Z", InEveryMode, Action, AlignWhole<AlignMiddleZ>},
    {322, "Align object: -Z", InEveryMode, Action, AlignWhole<AlignHighZ>},
    {323, "Add object on grid", InEveryMode, Action, AddSceneObject},
    {324, "Replace object in scene", InEveryMode, Action, ReplaceObjectInScene},
    {325, "New scene", InEveryMode, Action, ResetScene},
    {326, "Centralise scene", InEveryMode, Action, CentraliseScene},
    {327, "Query vertices of the scene", InEveryMode, Action, QuerySceneVertices},

    // Different from mode to mode
    {BackspaceCharacter, "Delete unused vertices", InVertexMode, Action, DeleteUnusedVertices},
    {BackspaceCharacter, "Delete (leave vertices)", InPolygonMode, Action, DeletePolygons},
    {DeleteCharacter, "Delete unused vertices", InVertexMode, Action, DeleteUnusedVertices},
    {DeleteCharacter, "Delete (leave vertices)", InPolygonMode, Action, DeletePolygons},
    {ReturnCharacter, "Add object on grid", InSceneMode, Action, AddSceneObject},
    {Key('x'), "Move vertices", InVertexMode, Action, MoveVertices},
    {Key('x'), "Move polygons", InPolygonMode, Action, MovePolygons},
    {Key('x'), "Move part of the scene", InSceneMode, Action, MovePartOfScene},
    {Ctrl('A'), "Select all vertices", InVertexMode, Action, SelectAllVertices},
    {Ctrl('A'), "Select all polygons", InPolygonMode, Action, SelectAllPolygons},
    {Ctrl('A'), "Select the whole scene", InSceneMode, Action, SelectWholeScene},
    {Ctrl('C'), "Copy vertices", InVertexMode, Action, CopyVertices},
    {Ctrl('C'), "Copy polygons", InPolygonMode, Action, CopyPolygons},
    {Ctrl('C'), "Copy part of the scene", InSceneMode, Action, CopyPartOfScene},
    {Ctrl('V'), "Paste vertices", InVertexMode, Action, PasteVertices},
    {Ctrl('V'), "Paste polygons", InPolygonMode, Action, PastePolygons},
    {Ctrl('V'), "Paste into the scene", InSceneMode, Action, PasteIntoScene},
    {Ctrl('X'), "Cut vertices", InVertexMode, Action, CutVertices},
    {Ctrl('X'), "Cut polygons", InPolygonMode, Action, CutPolygons},
    {Ctrl('X'), "Cut part of the scene", InSceneMode, Action, CutScene},
    {Ctrl('Z'), "Undo", InObjectMode, Action, UndoObjectAction},
    {Ctrl('Z'), "Undo in the scene", InSceneMode, Action, UndoSceneAction},

    // Views
    {Key('t'), "Top", InEveryMode, Safe, ShowFrom<0>},
    {Key('u'), "Under", InEveryMode, Safe, ShowFrom<1>},
    {Key('l'), "Left", InEveryMode, Safe, ShowFrom<2>},
    {Key('r'), "Right", InEveryMode, Safe, ShowFrom<3>},
    {Key('f'), "Front", InEveryMode, Safe, ShowFrom<4>},
    {Key('b'), "Back", InEveryMode, Safe, ShowFrom<5>},
    {Key('3'), "3d", InEveryMode, Safe, ShowIn3d},
    {Key('w'), "Swap views", InEveryMode, Safe, SwapLargeView},
    {Key('.'), "Three views", InEveryMode, Safe, ToggleThreeViews},
    {Key(','), "Set working area", InEveryMode, Safe, DoWorkArea},
    {263, "Set rotation centre", InEveryMode, Safe, SetRotationCentre},
    {EndCharacter, "Reset rotation centre", InEveryMode, Safe, ResetCentre},
    {HomeCharacter, "Fit view", InEveryMode, Safe, FitToModel},

    // Windows
    {Key('?'), "Manual", InEveryMode, Safe, OpenTheManual},
    {Key('c'), "Scene builder", InEveryMode, Safe, OpenSceneBuilder},
    {Key('e'), "Texture palette", InEveryMode, Safe, OpenTextureGizmo},
    {Key('g'), "Grid control", InEveryMode, Safe, OpenGridGizmo},
    {Key('m'), "Material palette", InEveryMode, Safe, OpenMaterialPalette},
    {337, "User preferences", InEveryMode, Safe, SetPreferences},

    // How models are shown
    {TabCharacter, "Backface", InEveryMode, Safe, Show<Backface>},
    {Ctrl('T'), "Texture", InEveryMode, Safe, Show<TextureOn>},
    {Ctrl('W'), "Wireframe", InEveryMode, Safe, Show<SolidView>},
    {328, "Selected things on top", InEveryMode, Safe, Show<SelectionsOnTop>},
    {329, "Outline polygons", InEveryMode, Safe, Show<OutlinePolygons>},
    {330, "Show all vertices", InEveryMode, Safe, Show<ShowVertices>},
    {331, "Window labels", InEveryMode, Safe, Show<WindowLabels>},
    {332, "Fast updates", InEveryMode, Safe, Switch<FastUpdates>},
    {401, "Fill the desktop window", InEveryMode, Safe, ToggleFillDesktop},
    {402, "Show what is pointed at", InEveryMode, Safe, TogglePointedAt},
    {333, "Wireframe when moving", InEveryMode, Safe, Switch<MoveWire>},
    {334, "Selected things solid", InEveryMode, Safe, Show<SelectionsSolid>},
    {335, "Singlebuffer when still", InEveryMode, Safe, ToggleSingleBuffer},
    {336, "Texture when moving", InEveryMode, Safe, Switch<MoveTexture>},
};

// clang-format on

void CarryOut(const Command& command) {
    const bool undoes = command.Function == UndoObjectAction || command.Function == UndoSceneAction;
    if (command.Kind == Action && !undoes)
        BeginAction(command.Name);
    command.Function();
    EndAction();
}

int CarryOut(int code, CommandKind kind) {
    const Command* command = FindCommand(code, CurrentCommandMode(), kind);
    if (command)
        CarryOut(*command);
    return command != nullptr;
}

} // namespace

std::span<const Command> AllCommands() {
    return Commands;
}

int CurrentCommandMode() {
    return !ObjectIsolated ? InSceneMode : WorkMode ? InVertexMode : InPolygonMode;
}

const Command* FindCommand(int code, int mode, CommandKind kind) {
    for (const Command& command : Commands)
        if (command.Code == code && command.Kind == kind && (command.Modes & mode))
            return &command;
    return nullptr;
}

int CheckActionKeys(int code) {
    return CarryOut(code, Action);
}

int DoSafeCommand(int code) {
    return CarryOut(code, Safe);
}

void MenuAction(int item) {
    if (item >= FirstRecentItem)
        OpenModelByName(RecentFileOfItem(item));
    else if (item >= FirstConverterItem)
        CallSlot(TheCommandSlots.DoFileConversion, item);
    else if (item == ProgramInfoItem)
        ShowProgramInfo();
    else if (const char* page = ManualPageOfItem(item))
        OpenManual(page);
    else
        DoModelAction(CodeOfItem(item));
}
