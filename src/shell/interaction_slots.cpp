#include "shell/interaction_slots.h"

#include "gooey/event_loop.h"
#include "interaction/flight.h"
#include "interaction/grid_gizmo.h"
#include "interaction/grid_tools.h"
#include "interaction/input.h"
#include "interaction/manipulation.h"
#include "interaction/modes.h"
#include "interaction/pending_pick.h"
#include "interaction/position_views.h"
#include "interaction/preselection.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_prompt.h"
#include "interaction/work_area_setting.h"
#include "materials/material_definitions.h"
#include "shell/commands.h"
#include "shell/menus.h"
#include "store/scene.h"
#include "store/undo.h"
#include "structure/plant_objects.h"
#include "structure/scene_builder.h"
#include "textures/texture_changes.h"
#include "texturing/three_points.h"
#include "tools/create_sphere.h"
#include "tools/polygon_clipboard.h"
#include "tools/polygon_entry.h"
#include "tools/revolve.h"
#include "tools/spheres.h"
#include "tools/vertex_clipboard.h"
#include "tools/volume_sweep.h"
#include "views/main_window.h"
#include "views/overlays.h"
#include "views/viewports.h"

namespace {

/// The main window is going: what runs in it ends, and nothing of it stays behind.
void EndTools() {
    GiveUpViewPrompt();
    EndGridTool(nullptr, EscapeCharacter);
    ClearControl();
    FreePolyEnterList();
    FreeSpheres();
    FreeSweeper();
    FreeRevolve();
    FreePlantList();
    FreePolygonPaste();
    FreeVertexPaste();
}

void RemakeSweeps() {
    RemakeSweep();
    RemakeRevolve();
}

void RegisterOverlays() {
    RegisterOverlay({OverlayBand::Model, NewSolidOrder, DrawNewSolid});
    RegisterOverlay({OverlayBand::Model, NewSweepOrder, DrawNewSweep});
    RegisterOverlay({OverlayBand::Model, PickedPointsOrder, DrawPickedVertices});
    RegisterOverlay({OverlayBand::Model, RotationAxisOrder, ShowRotationAxis});
    RegisterOverlay({OverlayBand::Model, TexturePointsOrder, DrawTexture3Point});
    RegisterOverlay({OverlayBand::BeforeModel, 10, DrawNewPolygon});
    RegisterOverlay({OverlayBand::Label, 10, DrawHUD});
    RegisterOverlay({OverlayBand::Label, 20, FollowGridSize});
}

} // namespace

void FillInteractionSlots() {
    TheViewportSlots.StartLeftModel = StartLeftModel;
    TheViewportSlots.StartMiddleModel = StartMiddleModel;
    TheViewportSlots.StartRightModel = StartRightModel;
    TheViewportSlots.InputBegins = HidePreselection;
    TheViewportSlots.CheckModelKey = CheckModelKey;
    TheViewportSlots.CheckTab = CheckTab;
    TheViewportSlots.TurnWheel = TurnWheel;

    KeysOverDisabled = ViewportOfPick;

    TheInputSlots.DoActionCommand = CheckActionKeys;
    TheInputSlots.DoSafeCommand = DoSafeCommand;
    TheInputSlots.MenuAction = MenuAction;

    TheMenuSlots.DealWithPulldown = DealWithPulldown;
    TheMainWindowSlots.AddSceneModeMenu = AddSceneModeMenu;
    TheMainWindowSlots.AddSingleObjectMenu = AddSingleObjectMenu;
    TheMainWindowSlots.SetPolygonMode = SetPolygonMode;
    TheMainWindowSlots.SetVertexMode = SetVertexMode;
    TheMainWindowSlots.ChangeObjectIsolation = ChangeObjectIsolation;
    TheMainWindowSlots.FreeTools = EndTools;
    TheMainWindowSlots.InitSpheres = InitSpheres;
    for (auto* slots : {&TheMaterialSlots.DirtySolids, &TheTextureChangeSlots.DirtySolids})
        *slots = DirtySolids;
    for (auto* slots : {&TheMaterialSlots.RemakeSweep, &TheTextureChangeSlots.RemakeSweep})
        *slots = RemakeSweeps;

    TheUndoSlots.DirtyModelWindows = DirtyModelWindows;
    TheSceneSlots.DirtyModelWindows = DirtyModelWindows;
    TheSceneSlots.DirtySceneBuilder = DirtySceneBuilder;

    RegisterOverlays();
}
