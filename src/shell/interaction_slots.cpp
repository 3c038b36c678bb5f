#include "shell/interaction_slots.h"

#include "interaction/flight.h"
#include "interaction/input.h"
#include "interaction/manipulation.h"
#include "interaction/modes.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_prompt.h"
#include "shell/commands.h"
#include "shell/menus.h"
#include "store/scene.h"
#include "store/undo.h"
#include "tools/polygon_entry.h"
#include "views/main_window.h"
#include "views/overlays.h"
#include "views/viewports.h"

namespace {

/// The main window is going: what runs in it ends, and nothing of it stays behind.
void EndTools() {
    EndViewPrompt();
    ClearControl();
    FreePolyEnterList();
}

void RegisterOverlays() {
    RegisterOverlay({OverlayBand::BeforeModel, 10, DrawNewPolygon});
    RegisterOverlay({OverlayBand::Label, 10, DrawHUD});
}

} // namespace

void FillInteractionSlots() {
    TheViewportSlots.StartLeftModel = StartLeftModel;
    TheViewportSlots.StartMiddleModel = StartMiddleModel;
    TheViewportSlots.StartRightModel = StartRightModel;
    TheViewportSlots.CheckModelKey = CheckModelKey;
    TheViewportSlots.CheckTab = CheckTab;
    TheViewportSlots.TurnWheel = TurnWheel;

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

    TheUndoSlots.DirtyModelWindows = DirtyModelWindows;
    TheSceneSlots.DirtyModelWindows = DirtyModelWindows;

    RegisterOverlays();
}
