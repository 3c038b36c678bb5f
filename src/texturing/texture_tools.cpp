#include "texturing/texture_tools.h"

#include "gooey/event_loop.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "texturing/texture_application.h"

namespace {

void (*ApplyMapping)();

} // namespace

int BeginTextureTool(const Tool& tool, void (*apply)()) {
    if (!CanApplyTexture())
        return 0;
    BeginTool(tool);
    BeforeToolChange();
    ApplyMapping = apply;
    BeginApplication(ApplyAgain);
    ApplyAgain();
    return 1;
}

void ApplyAgain() {
    if (!ApplyMapping)
        return;
    ApplyMapping();
    AppearanceChanged(CurrentObject());
}

int TextureToolKey(View*, int character) {
    if (character != CtrlCharacter('Z'))
        return 0;
    CancelTool();
    return 1;
}

int TextureToolHoldsWork() {
    return 1;
}

void FinishTextureTool() {
    DeselectEverything();
}

void LeaveTextureTool() {
    ApplyMapping = nullptr;
    EndApplication();
}
