#include "shell/slots.h"

#include "files/conversions.h"
#include "files/file_commands.h"
#include "files/file_information.h"
#include "files/file_slots.h"
#include "files/loading_bar.h"
#include "files/merge_window.h"
#include "gooey/manual.h"
#include "gooey/messages.h"
#include "gooey/window.h"
#include "interaction/modes.h"
#include "interaction/query.h"
#include "interaction/selection.h"
#include "materials/default_materials.h"
#include "materials/material_definitions.h"
#include "palettes/material_palette.h"
#include "palettes/texture_gizmo.h"
#include "platform/textures.h"
#include "shell/commands.h"
#include "shell/defaults.h"
#include "shell/interaction_slots.h"
#include "shell/menus.h"
#include "shell/tool_windows.h"
#include "shell/undo_remarks.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/undo.h"
#include "structure/object_operations.h"
#include "structure/structure_slots.h"
#include "textures/picture_preview.h"
#include "textures/texture_changes.h"
#include "textures/texture_definition.h"
#include "textures/texture_file.h"
#include "texturing/manual_placement.h"
#include "tools/creation_guards.h"
#include "tools/polygon_clipboard.h"
#include "tools/polygon_operations.h"
#include "tools/polygon_tools.h"
#include "tools/read_vertices.h"
#include "tools/tablet.h"
#include "tools/vertex_clipboard.h"
#include "views/display_flags.h"
#include "views/grid.h"
#include "views/main_window.h"
#include "views/scene_views.h"
#include "views/viewports.h"

namespace {

// How a new model is shown.
void RestoreDisplayDefaults() {
    Backface = SolidView = WindowLabels = 1;
    MaskTextureSelections = MaskPolygonSelections = 0;
    SelectionsSolid = SelectionsOnTop = ShowVertices = HideVertices = 0;
    GridSnap = MoveWire = 0;
    WorkMode = EditMode = 0;
}

void FillStoreSlots() {
    TheStorageSlots.FreePolygonPaste = FreePolygonPaste;
    TheStorageSlots.FreeVertexPaste = FreeVertexPaste;
    TheStorageSlots.ResetFileInformation = ResetFileInformation;
    TheStorageSlots.RestoreDisplayDefaults = RestoreDisplayDefaults;
    TheStorageSlots.ChangeNoViewports = ChangeNoViewports;
    // The views are the main file's.
    TheSceneSlots.DevalidateSceneViews = [] {
        if (!Mergeing)
            DevalidateSceneViews();
    };
}

void FillMaterialSlots() {
    TheFirstObjectSlots.MakeDefaultMaterials = MakeDefaultMaterials;
    TheFileSlots.RedefineMaterials = NeedMaterialsDefined;
    TheUndoSlots.RedefineMaterials = NeedMaterialsDefined;
    TheMaterialSlots.DirtyModelWindows = DirtyModelWindows;
    TheMaterialSlots.MaterialsRedefined = MaterialsWereRedefined;
    TheMaterialSlots.DrawPaletteSlot = RedrawSweetie;
}

void FillTextureSlots() {
    TheFirstObjectSlots.LoadDefaultTextures = LoadDefaultTextures;
    TheTextureDefinitionSlots.DefineImage = gl::texdef2d;
    MakeFilePicture = MakePicturePreview;
    TheTextureDefinitionSlots.ReadingProgress = ShowTextureProgress;
    TheTextureDefinitionSlots.IsHighEnd = [] { return ItsARealityEngine; };
    TheTextureDefinitionSlots.DirtyTextureGizmo = DirtyTextureGizmo;
    TheTextureChangeSlots.DirtyModelWindows = DirtyModelWindows;
    TheTextureChangeSlots.ChangeTextureSelection = ChangeTextureSelection;
    TheMaterialSlots.ChangeTextureMaterial = ChangeTextureMaterial;
    TheManualPlacementSlots.SelectMaterial = SelectMaterial;
}

void FillSelectionSlots() {
    TheSceneSlots.DeselectScene = [] { SelectScene(nullptr); };
    TheUndoSlots.DeselectEverything = DeselectEverything;
    TheUndoSlots.SnapshotTaken = NoteObjectSnapshot;
    TheSceneSlots.SnapshotTaken = NoteSceneSnapshot;
    RegisterQueries();
}

void FillStructureSlots() {
    TheUndoSlots.DirtyStructureEditor = RedrawObjectWindows;
    TheStructureSlots.AttachSelectedPolys = AttachSelectedPolys;
    TheStructureSlots.APolygonIsSelected = APolygonIsSelected;
    TheStructureSlots.ModelWasRenamed = KeepFileOfThisName;
}

void FillFileSlots() {
    TheFileSlots.TellUser = TellUserS;
    TheFileSlots.AskOkCancel = DoOkCancel;
    TheFileSlots.OpenManual = OpenManual;
    TheFileSlots.OpenMergeWindow = OpenMergeWindow;
    TheFileSlots.WriteDefaults = WriteDefaults;
    TheTabletSlots.WriteDefaults = WriteDefaults;
    TheFileSlots.ReadingProgress = ShowReadingProgress;
    TheVertexFileSlots.ReadingProgress = ShowReadingProgress;
    TheMenuSlots.MakeImportMenu = MakeImportMenu;
    TheMenuSlots.MakeExportMenu = MakeExportMenu;
    TheCommandSlots.DoFileConversion = DoFileConversion;
}

} // namespace

void FillSlots() {
    FillStoreSlots();
    FillInteractionSlots();
    FillMaterialSlots();
    FillTextureSlots();
    FillSelectionSlots();
    FillStructureSlots();
    FillFileSlots();
    RegisterToolWindows();
}
