#include "shell/tool_windows.h"

#include "gooey/tool_window.h"
#include "shell/preferences.h"

void RegisterToolWindows() {
    static const ToolWindow* const windows[] = {
        &PreferencesWindow,
    };
    for (const ToolWindow* window : windows)
        RegisterToolWindow(*window);
}
