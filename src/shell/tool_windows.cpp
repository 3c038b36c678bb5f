#include "shell/tool_windows.h"

#include "files/merge_window.h"
#include "gooey/tool_window.h"
#include "interaction/grid_gizmo.h"
#include "palettes/material_palette.h"
#include "palettes/texture_gizmo.h"
#include "shell/preferences.h"
#include "structure/object_browser.h"
#include "structure/scene_builder.h"
#include "structure/structure_editor.h"
#include "tools/revolve.h"
#include "tools/text_generator.h"

void RegisterToolWindows() {
    static const ToolWindow* const windows[] = {
        &SceneBuilderWindow, &ObjectBrowserWindow, &StructureEditorWindow, &PreferencesWindow, &MaterialPaletteWindow,
        &TextureGizmoWindow, &TextGeneratorWindow, &RevolveWindow,         &GridWindow,
    };
    for (const ToolWindow* window : windows)
        RegisterToolWindow(*window);
    // It opens on a file that was read only.
    RegisterToolWindow(MergeWindow);
}
